// SPDX-License-Identifier: BSD-3-Clause
#include "support/WTableItemImpl.h"

#include "support/RowSelection.h"

#include <set>

void WTableItemImpl::tableItem_init(QGraphicsWidget *item, QAbstractItemView *view, QAbstractItemModel *model)
{
    m_hostItem = WrTableItem(item);
    m_hostModel = WrTableModel(model);
    m_view = view;
    if (view && view->selectionModel())
        connect(view->selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
                SLOT(onSelectionChanged()));
    if (model)
        connect(model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QList<int>)), this, SLOT(onDataChanged()));
}

QVariant WTableItemImpl::tableItem_itemChange(int, const QVariant &value)
{
    return value;
}

QList<int> WTableItemImpl::selectedRows() const
{
    if (!m_view || !m_view->selectionModel())
        return {};
    std::set<int> rows;
    for (const QItemSelectionRange &range : m_view->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.insert(row);
    return QList<int>(rows.begin(), rows.end());
}

void WTableItemImpl::selectRows(const QList<int> &rows)
{
    if (!m_view || !m_view->selectionModel() || !m_view->model())
        return;
    selectWholeRows(m_view->selectionModel(), rows);
    if (!rows.isEmpty())
        m_view->scrollTo(m_view->model()->index(rows.first(), 0));
}

#include "moc_WTableItemImpl.cpp"
