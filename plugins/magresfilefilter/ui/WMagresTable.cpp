// SPDX-License-Identifier: BSD-3-Clause
#include "ui/WMagresTable.h"

#include "reading/ParameterTable.h"
#include "ui/SettingsScope.h"

#include <QIcon>
#include <QMenu>
#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// A column. Everything about it stands here and nowhere else.
struct Column {
    enum Content { Always, Shielding, Efg };

    int code; ///< documents and host settings know the column by it
    const char *key; ///< of its value in a row
    const char *header; ///< translated; %1 stands for eta
    int digits; ///< decimals; -1: not a number
    Content content; ///< what a row of the table must have for the column to be there
};

constexpr int labelsCode = 1;
constexpr int couplingCode = 7;
constexpr Column allColumns[] = {
    {0, "type", QT_TRANSLATE_NOOP("WMagresTable", "Element"), -1, Column::Always},
    {labelsCode, "labels", QT_TRANSLATE_NOOP("WMagresTable", "Labels"), -1, Column::Always},
    {2, "iso", QT_TRANSLATE_NOOP("WMagresTable", "Iso, ppm"), 3, Column::Shielding},
    {3, "aniso", QT_TRANSLATE_NOOP("WMagresTable", "Aniso, ppm"), 3, Column::Shielding},
    {4, "assym", "%1", 2, Column::Shielding},
    {5, "eq", QT_TRANSLATE_NOOP("WMagresTable", "eQ"), 3, Column::Efg},
    {6, "qassym", QT_TRANSLATE_NOOP("WMagresTable", "%1(Q)"), 2, Column::Efg},
    {couplingCode, "Cq", QT_TRANSLATE_NOOP("WMagresTable", "Cq, MHz"), 3, Column::Efg},
};

constexpr QChar eta(0x03B7);

/// Null for a code that no column has.
const Column *columnOf(int code)
{
    const auto found = std::find_if(std::begin(allColumns), std::end(allColumns),
                                    [code](const Column &column) { return column.code == code; });
    return found == std::end(allColumns) ? nullptr : found;
}

} // namespace

WMagresTable::WMagresTable(Magres::MagresCommands &commands) : m_commands(&commands), m_plugin(commands.object())
{
}

WMagresTable::WMagresTable(Magres::MagresCommands &commands, Magres::MagresData &data)
    : m_commands(&commands), m_plugin(commands.object()), m_dataId(data.ID)
{
    show(data);
    m_rowsAreNew = true;
}

WMagresTable::~WMagresTable() = default;

void WMagresTable::tableItem_init(QGraphicsWidget *item, QAbstractItemView *view, QAbstractItemModel *model)
{
    WTableItemImpl::tableItem_init(item, view, model);
    offerContextMenu();
    if (!std::exchange(m_rowsAreNew, false))
        return reload();
    hostModel().beginResetModel();
    hostModel().endResetModel();
}

void WMagresTable::offerContextMenu()
{
    m_contextMenu = std::make_unique<QMenu>();
    QAction *section = m_contextMenu->addSection(tr("MAGRES"));
    section->setIcon(commands() ? commands()->icon() : QIcon());
    QAction *create = m_contextMenu->addAction(tr("Create spectrum..."));
    create->setObjectName(QStringLiteral("Create spectrum...")); // in every language
    connect(create, &QAction::triggered, this, &WMagresTable::createSpectrum);
    connect(m_contextMenu->addAction(tr("Set Quadrupolar Isotope...")), &QAction::triggered, this,
            &WMagresTable::setQuadIsotope);
    hostItem().typeCntxtMenu(m_contextMenu.get());
}

QVariantMap WMagresTable::tableItem_toMap() const
{
    return {{QStringLiteral("DataID"), m_dataId}};
}

void WMagresTable::tableItem_fromMap(const QVariantMap &map)
{
    m_dataId = map.value(QStringLiteral("DataID")).toUuid();
    reload();
}

void WMagresTable::tableItem_onLMessage(const QVariantMap &message)
{
    if (message.value(QStringLiteral("type")).toInt() != atomSelectionMessage)
        return;
    QSet<int> atoms;
    for (const QVariant &atom : message.value(QStringLiteral("data")).toList())
        atoms.insert(atom.toInt());
    QList<int> rows;
    for (int row = 0; row < int(m_rows.size()); ++row) {
        const QVariantList atomNos = m_rows[row].toMap().value(QStringLiteral("atomNos")).toList();
        if (std::any_of(atomNos.begin(), atomNos.end(), [&](const QVariant &no) { return atoms.contains(no.toInt()); }))
            rows.append(row);
    }
    // The molecule knows its own selection: nothing goes back.
    const QScopedValueRollback guard(m_selectingFromMessage, true);
    selectRows(rows);
}

QVariant WMagresTable::tableModel_headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    const Column *column = columnOf(hostItem().colId(section));
    if (!column)
        return {};
    const QString header = tr(column->header);
    return header.contains(QLatin1String("%1")) ? header.arg(eta) : header;
}

QVariant WMagresTable::tableModel_data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || index.column() >= m_columns.size())
        return {};
    const QVariantMap row = m_rows[index.row()].toMap();
    const Column &column = *columnOf(m_columns[index.column()].toMap().value(QStringLiteral("Type")).toInt());
    if (role == Qt::ToolTipRole && column.code == couplingCode) {
        const QString isotope = row.value(QStringLiteral("qIso")).toString();
        return isotope.isEmpty() ? QVariant() : tr("Isotope: %1").arg(isotope);
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    const QVariant value = row.value(QLatin1String(column.key));
    if (column.code == labelsCode)
        return value.toStringList().join(QStringLiteral(", "));
    if (column.digits < 0)
        return value.toString();
    if (!value.isValid() || (column.code == couplingCode && value.toDouble() == 0.0))
        return {};
    if (role == Qt::EditRole)
        return value.toDouble();
    return QString::number(value.toDouble(), 'f', column.digits);
}

QUuid WMagresTable::tableModel_rawId(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    return m_rows[index.row()].toMap().value(QStringLiteral("ID")).toUuid();
}

void WMagresTable::createSpectrum()
{
    if (commands())
        commands()->createSpectrum(m_dataId);
}

void WMagresTable::setQuadIsotope()
{
    if (!commands())
        return;
    const QPointer<WMagresTable> stillThere(this); // the table may be deleted while the dialog is open
    std::optional<Magres::MagresData> changed = commands()->chooseQuadrupolarIsotope(m_dataId);
    if (changed && stillThere && commands())
        show(*changed);
}

void WMagresTable::onSelectionChanged()
{
    if (m_selectingFromMessage)
        return;
    QVariantList atoms;
    for (int row : selectedRows())
        if (row < m_rows.size())
            atoms += m_rows[row].toMap().value(QStringLiteral("atomNos")).toList();
    hostItem().sendMessage(
        QVariantMap{{QStringLiteral("type"), atomSelectionMessage}, {QStringLiteral("data"), atoms}});
}

void WMagresTable::onDataChanged()
{
    if (view())
        view()->viewport()->update();
}

void WMagresTable::reload()
{
    if (!commands())
        return;
    Magres::SettingsScope<Magres::MagresData> data;
    data.assign(commands()->data(m_dataId));
    show(data);
}

void WMagresTable::show(Magres::MagresData &data)
{
    Magres::ParameterTable table = Magres::parameterTable(data, m_commands->nuclearProperties());

    hostModel().beginResetModel();
    m_rows = std::move(table.rows);
    m_columns.clear();
    for (const Column &column : allColumns)
        if (column.content == Column::Always || (column.content == Column::Shielding && table.hasShielding)
            || (column.content == Column::Efg && table.hasEfg))
            m_columns.append(QVariantMap{{QStringLiteral("Type"), column.code},
                                         {QStringLiteral("Digits"), column.digits},
                                         {QStringLiteral("Units"), 0}});
    hostModel().endResetModel();
}

#include "moc_WMagresTable.cpp"
