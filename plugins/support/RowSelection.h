// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QItemSelectionModel>

#include <algorithm>

/// Selects these rows, whole, and no others. Qt takes time by the square of the number of ranges that come and go, so
/// rows that follow each other are one range, and what was selected goes first.
inline void selectWholeRows(QItemSelectionModel *selectionModel, QList<int> rows)
{
    const QAbstractItemModel *model = selectionModel->model();
    std::sort(rows.begin(), rows.end());
    QItemSelection selection;
    for (qsizetype last = 0; last < rows.size(); ++last) {
        const int first = rows[last];
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.select(model->index(first, 0), model->index(rows[last], model->columnCount() - 1));
    }
    selectionModel->clearSelection();
    selectionModel->select(selection, QItemSelectionModel::Select);
}
