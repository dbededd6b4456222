// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ranking/RankTable.h"

#include <QAbstractTableModel>

namespace Workbench {

/// A ranking as a table to look at, best first.
class RankModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Rows that have something to say, in any order.
    void setRows(std::vector<RankRow> rows, const RankLayout &layout, const QString &singleNucleus);
    const std::vector<RankRow> &rows() const { return m_rows; }
    const RankLayout &layout() const { return m_layout; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Column {
        QString title;
        QString tip;
        std::function<QVariant(const RankRow &)> value; ///< text, or a number
        int decimals = -1; ///< -1: three significant digits
    };
    void createColumns(const QString &singleNucleus);

    std::vector<RankRow> m_rows;
    RankLayout m_layout;
    QList<Column> m_columns;
};

} // namespace Workbench
