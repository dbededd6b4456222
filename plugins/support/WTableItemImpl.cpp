// SPDX-License-Identifier: BSD-3-Clause
#include "support/WTableItemImpl.h"

#include <QItemSelectionModel>

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
    const QAbstractItemModel *model = m_view->model();
    // Qt takes time by the square of the number of ranges, and compares new ones with those that are selected: rows
    // that follow each other are one, and nothing is selected any more.
    QItemSelection selection;
    for (qsizetype last = 0; last < rows.size(); ++last) {
        const int first = rows[last];
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.select(model->index(first, 0), model->index(rows[last], model->columnCount() - 1));
    }
    m_view->selectionModel()->clearSelection();
    m_view->selectionModel()->select(selection, QItemSelectionModel::Select);
    if (!rows.isEmpty())
        m_view->scrollTo(model->index(rows.first(), 0));
}
