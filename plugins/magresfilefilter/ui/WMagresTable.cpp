// SPDX-License-Identifier: BSD-3-Clause
#include "ui/WMagresTable.h"

#include "reading/ParameterTable.h"
#include "ui/SettingsScope.h"

#include <QIcon>
#include <QMenu>
#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <utility>

namespace {

/// Column codes; documents and host settings know the columns by them.
enum Column { Element = 0, Labels = 1, Iso = 2, Aniso = 3, Asymmetry = 4, Eq = 5, QAsymmetry = 6, Cq = 7 };

const char *rowKey(int column)
{
    switch (column) {
    case Iso:
        return "iso";
    case Aniso:
        return "aniso";
    case Asymmetry:
        return "assym";
    case Eq:
        return "eq";
    case QAsymmetry:
        return "qassym";
    case Cq:
        return "Cq";
    default:
        return "";
    }
}

QVariantMap column(Column code, int digits)
{
    return {{QStringLiteral("Type"), int(code)}, {QStringLiteral("Digits"), digits}, {QStringLiteral("Units"), 0}};
}

constexpr QChar eta(0x03B7);

} // namespace

WMagresTable::WMagresTable(MagresCommands &commands) : m_commands(commands)
{
}

WMagresTable::WMagresTable(MagresCommands &commands, MagresData &data) : m_commands(commands), m_dataId(data.ID)
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
    section->setIcon(m_commands.icon());
    connect(m_contextMenu->addAction(tr("Create spectrum...")), &QAction::triggered, this,
            &WMagresTable::createSpectrum);
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

QString WMagresTable::headerOf(int column)
{
    switch (column) {
    case Element:
        return tr("Element");
    case Labels:
        return tr("Labels");
    case Iso:
        return tr("Iso, ppm");
    case Aniso:
        return tr("Aniso, ppm");
    case Asymmetry:
        return eta;
    case Eq:
        return tr("eQ");
    case QAsymmetry:
        return tr("%1(Q)").arg(eta);
    case Cq:
        return tr("Cq, MHz");
    default:
        return {};
    }
}

QVariant WMagresTable::tableModel_headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    return headerOf(hostItem().colId(section));
}

QVariant WMagresTable::tableModel_data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || index.column() >= m_columns.size())
        return {};
    const QVariantMap row = m_rows[index.row()].toMap();
    const QVariantMap columnMap = m_columns[index.column()].toMap();
    const int code = columnMap.value(QStringLiteral("Type")).toInt();
    if (role == Qt::ToolTipRole && code == Cq) {
        const QString isotope = row.value(QStringLiteral("qIso")).toString();
        return isotope.isEmpty() ? QVariant() : tr("Isotope: %1").arg(isotope);
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    if (code == Element)
        return row.value(QStringLiteral("type")).toString();
    if (code == Labels)
        return row.value(QStringLiteral("labels")).toStringList().join(QStringLiteral(", "));

    const QVariant value = row.value(QLatin1String(rowKey(code)));
    if (!value.isValid() || (code == Cq && value.toDouble() == 0.0))
        return {};
    if (role == Qt::EditRole)
        return value.toDouble();
    return QString::number(value.toDouble(), 'f', columnMap.value(QStringLiteral("Digits")).toInt());
}

QUuid WMagresTable::tableModel_rawId(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    return m_rows[index.row()].toMap().value(QStringLiteral("ID")).toUuid();
}

void WMagresTable::createSpectrum()
{
    m_commands.createSpectrum(m_dataId);
}

void WMagresTable::setQuadIsotope()
{
    const QPointer<WMagresTable> stillThere(this); // the table may be deleted while the dialog is open
    std::optional<MagresData> changed = m_commands.chooseQuadrupolarIsotope(m_dataId);
    if (changed && stillThere)
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
    SettingsScope<MagresData> data;
    data.assign(m_commands.data(m_dataId));
    show(data);
}

void WMagresTable::show(MagresData &data)
{
    Magres::ParameterTable table = Magres::parameterTable(data, m_commands.nuclearProperties());

    hostModel().beginResetModel();
    m_rows = std::move(table.rows);
    m_hasShielding = table.hasShielding;
    m_hasEfg = table.hasEfg;
    m_columns = columns(m_hasShielding, m_hasEfg);
    hostModel().endResetModel();
}

QVariantList WMagresTable::columns(bool withShielding, bool withEfg)
{
    QVariantList list{column(Element, -1), column(Labels, -1)};
    if (withShielding)
        list << column(Iso, 3) << column(Aniso, 3) << column(Asymmetry, 2);
    if (withEfg)
        list << column(Eq, 3) << column(QAsymmetry, 2) << column(Cq, 3);
    return list;
}
