// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/table/TableModel.h"

#include "data/PluginCall.h"

namespace Workbench {

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

int TableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : std::max(0, callPlugin<int>(m_table, "tableModel_rowCount()"));
}

int TableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : std::max(0, callPlugin<int>(m_table, "tableModel_columnCount()"));
}

QVariant TableModel::data(const QModelIndex &index, int role) const
{
    if (!hasIndex(index.row(), index.column(), index.parent()))
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (columnDigits(index.column()) >= 0 ? Qt::AlignRight : Qt::AlignLeft));
    return callPlugin<QVariant>(m_table, "tableModel_data(QModelIndex,int)", index, role);
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section < 0 || section >= (orientation == Qt::Horizontal ? columnCount() : rowCount()))
        return {};
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (columnDigits(section) >= 0 ? Qt::AlignRight : Qt::AlignLeft));
    return callPlugin<QVariant>(m_table, "tableModel_headerData(int,Qt::Orientation,int)", section, orientation, role);
}

int TableModel::columnCode(int column) const
{
    return columnValue(column, "Type");
}

int TableModel::columnDigits(int column) const
{
    return columnValue(column, "Digits");
}

int TableModel::columnValue(int column, const char *key) const
{
    const auto columns = callPlugin<QVariantList>(m_table, "tableModel_columns()");
    if (column < 0 || column >= columns.size())
        return -1;
    bool isNumber = false;
    const int value = columns.at(column).toMap().value(QLatin1String(key)).toInt(&isNumber);
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
    if (m_resetDepth > 0 && --m_resetDepth == 0)
        QAbstractTableModel::endResetModel();
}

} // namespace Workbench
