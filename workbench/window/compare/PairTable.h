// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/PeakComparison.h"

#include <QTreeWidget>

namespace Workbench {

/// The pairs of a comparison, a row for each site and for each line that was left out. The line of a row can be dragged
/// onto another site, or moved there with Alt and the arrow keys; Enter asks for a menu, Delete frees the line.
class PairTable : public QTreeWidget {
    Q_OBJECT
public:
    enum Column { Site, Calculated, Measured, Difference, How };

    explicit PairTable(QWidget *parent = nullptr);

    /// Keeps the current row. Null: empties the table.
    void setComparison(const PeakComparison *comparison);

    /// Of a row; -1 and empty for none.
    static int siteOf(const QTreeWidgetItem *row);
    static std::vector<int> linesOf(const QTreeWidgetItem *row);
    QTreeWidgetItem *rowOfSite(int site) const;
    /// What a drop does; the place in the viewport.
    void dropOnRow(const QMimeData &dragged, const QPoint &place);

Q_SIGNALS:
    void lineMoved(const std::vector<int> &lines, int from, int to);
    void lineFreed(const std::vector<int> &lines);
    void menuWanted(QTreeWidgetItem *row, const QPoint &globalPos);
    void reported(const QString &text);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QList<QTreeWidgetItem *> &rows) const override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void moveLine(const QTreeWidgetItem *from, const QTreeWidgetItem *to);
    void askForMenu(QTreeWidgetItem *row);
};

} // namespace Workbench
