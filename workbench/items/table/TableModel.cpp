// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/table/TableModel.h"

#include "data/Error.h"
#include "data/PluginCall.h"

namespace Workbench {

namespace {

/// Codes of columns, as plug-ins give them.
enum Column { Anisotropy = 3, Asymmetry = 4, Gradient = 5, GradientAsymmetry = 6 };
/// What a column of parameters means, by its code; empty for a code that is not known here.
QString meaning(int code)
{
    switch (code) {
    case 0:
        return TableModel::tr("Chemical element");
    case 1:
        return TableModel::tr("The sites' labels in the file");
    case 2:
        return TableModel::tr("Isotropic shielding, ppm\n(σ₁₁ + σ₂₂ + σ₃₃) / 3");
    case 3:
        return TableModel::tr("Anisotropy of the shielding, signed, ppm\nσzz − (σxx + σyy) / 2\n"
                              "with |σzz − iso| ≥ |σxx − iso| ≥ |σyy − iso|");
    case 4:
        return TableModel::tr("Asymmetry of the shielding, 0 to 1\n(σyy − σxx) / (σzz − iso)");
    case 5:
        return TableModel::tr("Magnitude of the largest component of the electric field gradient, atomic units\n|Vzz|");
    case 6:
        return TableModel::tr("Asymmetry of the electric field gradient, 0 to 1\n(|Vxx| − |Vyy|) / |Vzz|");
    case 7:
        return TableModel::tr("Quadrupolar coupling constant, MHz, of the isotope in the cell's tooltip\n"
                              "|Vzz| · Q · 2.3489 with Q in fm²: the sign is that of Q");
    default:
        return {};
    }
}

QString withoutNegativeZero(const QString &text)
{
    return text.startsWith(u'-') && text.toDouble() == 0 ? text.mid(1) : text;
}

} // namespace

TableModel::TableModel(QObject *table, QObject *parent) : QAbstractTableModel(parent)
{
    setTable(table);
}

void TableModel::setTable(QObject *table)
{
    beginResetModel();
    if (m_table)
        disconnect(m_table, &QObject::destroyed, this, nullptr);
    m_table = table;
    if (table) {
        connect(table, &QObject::destroyed, this, [this] {
            beginResetModel();
            endResetModel();
        });
    }
    endResetModel();
}

void TableModel::readShape()
{
    m_rowCount = std::max(0, callPlugin<int>(m_table, "tableModel_rowCount()"));
    m_columnCount = std::max(0, callPlugin<int>(m_table, "tableModel_columnCount()"));
    m_columns = callPlugin<QVariantList>(m_table, "tableModel_columns()");
    m_sites.reset();
    m_atoms.clear();
}

int TableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rowCount;
}

int TableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columnCount + (m_offersSites ? int(siteColumns().size()) : 0);
}

QVariant TableModel::data(const QModelIndex &index, int role) const
{
    if (!hasIndex(index.row(), index.column(), index.parent()))
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (isNumeric(index.column()) ? Qt::AlignRight : Qt::AlignLeft));
    if (const SiteColumn *column = siteColumnAt(index.column()))
        return siteData(index.row(), *column, role);
    const QVariant value = callPlugin<QVariant>(m_table, "tableModel_data(QModelIndex,int)", index, role);
    return role == Qt::DisplayRole && value.isValid() && columnDigits(index.column()) >= 0
        ? shownNumber(index, value.toString())
        : value;
}

QString TableModel::shownNumber(const QModelIndex &index, const QString &text) const
{
    // The asymmetry of a tensor without anisotropy is that of its rounding errors.
    const int code = columnCode(index.column());
    const int deciding = code == Asymmetry ? Anisotropy : code == GradientAsymmetry ? Gradient : -1;
    for (int column = 0; deciding >= 0 && column < m_columnCount; ++column) {
        if (columnCode(column) != deciding)
            continue;
        const QModelIndex other = index.siblingAtColumn(column);
        const auto shown =
            callPlugin<QVariant>(m_table, "tableModel_data(QModelIndex,int)", other, int(Qt::DisplayRole));
        if (shown.isValid() && shown.toString().toDouble() == 0)
            return QStringLiteral("\u2013");
    }
    return withoutNegativeZero(text);
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section < 0 || section >= (orientation == Qt::Horizontal ? columnCount() : rowCount()))
        return {};
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (isNumeric(section) ? Qt::AlignRight : Qt::AlignLeft));
    if (const SiteColumn *column = orientation == Qt::Horizontal ? siteColumnAt(section) : nullptr) {
        return role == Qt::DisplayRole ? QVariant(QString::fromUtf8(column->title))
            : role == Qt::ToolTipRole  ? QVariant(Texts::tr(column->explanation))
                                       : QVariant();
    }
    const auto own =
        callPlugin<QVariant>(m_table, "tableModel_headerData(int,Qt::Orientation,int)", section, orientation, role);
    if (orientation == Qt::Horizontal && role == Qt::ToolTipRole && !own.isValid())
        return meaning(columnCode(section));
    return own;
}

int TableModel::columnCode(int column) const
{
    return columnValue(column, "Type");
}

int TableModel::columnDigits(int column) const
{
    return columnValue(column, "Digits");
}

QString TableModel::columnKey(int column) const
{
    if (const SiteColumn *site = siteColumnAt(column))
        return QLatin1String(site->name);
    const int code = columnCode(column);
    return code >= 0 ? QString::number(code) : QStringLiteral("#%1").arg(column);
}

int TableModel::columnOfKey(const QString &key) const
{
    for (int column = 0; column < columnCount(); ++column) {
        if (columnKey(column) == key)
            return column;
    }
    return -1;
}

const SiteColumn *TableModel::siteColumnAt(int column) const
{
    const int place = column - m_columnCount;
    return m_offersSites && place >= 0 && place < int(siteColumns().size()) ? &siteColumns()[std::size_t(place)]
                                                                            : nullptr;
}

QStringList TableModel::rowKeys(int column) const
{
    if (const SiteColumn *site = siteColumnAt(column))
        return {QLatin1String(site->name)};
    switch (columnCode(column)) {
    case 0:
        return {QStringLiteral("type")};
    case 1:
        return {QStringLiteral("labels"), QStringLiteral("atomNos")};
    case 2:
        return {QStringLiteral("iso")};
    case Anisotropy:
        return {QStringLiteral("aniso")};
    case Asymmetry:
        return {QStringLiteral("assym")};
    case Gradient:
        return {QStringLiteral("eq")};
    case GradientAsymmetry:
        return {QStringLiteral("qassym")};
    case 7:
        return {QStringLiteral("Cq"), QStringLiteral("qIso")};
    default:
        return {};
    }
}

bool TableModel::isNumeric(int column) const
{
    return siteColumnAt(column) || columnDigits(column) >= 0;
}

void TableModel::offerSiteColumns()
{
    if (m_offersSites)
        return;
    beginInsertColumns({}, m_columnCount, m_columnCount + int(siteColumns().size()) - 1);
    m_offersSites = true;
    endInsertColumns();
}

void TableModel::setSiteSource(const SiteSource &source)
{
    m_siteSource = source;
    forgetSites();
}

void TableModel::forgetSites()
{
    m_sites.reset();
    m_atoms.clear();
    if (m_offersSites && m_rowCount > 0)
        Q_EMIT dataChanged(index(0, m_columnCount), index(m_rowCount - 1, columnCount() - 1));
}

const SiteTable *TableModel::sites() const
{
    if (!m_sites)
        m_sites = m_siteSource ? m_siteSource() : nullptr;
    return m_sites->get();
}

int TableModel::atomOfRow(int row) const
{
    if (m_atoms.empty()) {
        for (const QVariant &map : callPlugin<QVariantList>(m_table, "tableModel_rows()"))
            m_atoms.push_back(m_sites->get()->atomOfRow(map.toMap()));
    }
    return row < int(m_atoms.size()) ? m_atoms[std::size_t(row)] : -1;
}

std::optional<double> TableModel::siteValue(int row, const SiteColumn &column) const
{
    const int atom = sites() ? atomOfRow(row) : -1;
    return atom < 0 ? std::nullopt : sites()->value(column, atom);
}

QVariant TableModel::siteData(int row, const SiteColumn &column, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)
        return {};
    const std::optional<double> value = siteValue(row, column);
    if (!value)
        return {};
    if (role == Qt::ToolTipRole)
        return sites()->basis(column, atomOfRow(row));
    const QString text = QString::number(*value, 'f', column.digits);
    return role == Qt::EditRole ? QVariant(*value) : withoutNegativeZero(text);
}

int TableModel::columnValue(int column, const char *key) const
{
    if (column < 0 || column >= m_columns.size())
        return -1;
    bool isNumber = false;
    const int value = m_columns.at(column).toMap().value(QLatin1String(key)).toInt(&isNumber);
    return isNumber ? value : -1;
}

QUuid TableModel::rawId(const QModelIndex &index) const
{
    return callPlugin<QUuid>(m_table, "tableModel_rawId(QModelIndex)", index);
}

void TableModel::beginResetModel()
{
    if (m_resetDepth++ == 0)
        QAbstractTableModel::beginResetModel();
}

void TableModel::endResetModel()
{
    if (m_resetDepth == 0 || --m_resetDepth > 0)
        return;
    readShape();
    QAbstractTableModel::endResetModel();
}

} // namespace Workbench

#include "moc_TableModel.cpp"
