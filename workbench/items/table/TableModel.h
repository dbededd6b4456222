// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QPointer>
#include <QUuid>

namespace Workbench {

/// Shows a plug-in's table object, which is reached by name only, as an item model. A table object that offers too
/// little, or is deleted, shows as an empty table.
class TableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit TableModel(QObject *table, QObject *parent = nullptr);

    /// Null for no table. The model does not own it.
    void setTable(QObject *table);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// The column's code, and its decimal places, -1 for text. -1 as well for a column that there is not.
    int columnCode(int column) const;
    int columnDigits(int column) const;
    QUuid rawId(const QModelIndex &index) const;

    /// What a plug-in brackets its changes with. Calls may be nested; an end without a begin is ignored.
    Q_INVOKABLE void beginResetModel();
    Q_INVOKABLE void endResetModel();

private:
    /// A number as one reads it: no negative zero, and a dash for what means nothing. The plug-in's cells stay.
    QString shownNumber(const QModelIndex &index, const QString &text) const;
    int columnValue(int column, const char *key) const;
    void readShape();

    QPointer<QObject> m_table;
    // Asked for at every cell, and the same from one reset to the next.
    int m_rowCount = 0;
    int m_columnCount = 0;
    QVariantList m_columns;
    int m_resetDepth = 0;
};

} // namespace Workbench
