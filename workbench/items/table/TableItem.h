// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/TableContent.h"
#include "items/DocumentItem.h"
#include "items/table/RowFilter.h"

class QLabel;
class QLineEdit;
class QTableView;

namespace Workbench {

class TableModel;

/// Which columns a table shows, by their keys: the plug-in's own are shown unless they are hidden, the others only when
/// they were asked for.
struct TableColumns {
    QStringList hidden;
    QStringList shown;
    bool operator==(const TableColumns &) const = default;
};

/// A plug-in's table on the page: a table view under a line that filters its rows in the window, ruled text on paper.
/// Owns the plug-in's table object.
class TableItem : public DocumentItem {
    Q_OBJECT

public:
    /// Without a view the item can neither be drawn nor sized: for documents that nobody looks at.
    enum Looks { WithView, WithoutView };

    /// A null id becomes a new one.
    explicit TableItem(QObject *table, const QUuid &id = {}, Looks looks = WithView, QGraphicsItem *parent = nullptr);
    ~TableItem() override;

    QObject *table() const { return m_table; }
    /// Null for an item without.
    QTableView *view() const { return m_view; }
    TableModel *model() const { return m_model; }

    /// The size at which every row and column shows.
    QSizeF fullSize();
    /// The width at which every column shows in an item of this height, beside the scroll bar if that takes one.
    double fullWidth(double height);

    /// Rows in the plug-in's order; the columns in sight, or all of the plug-in's when nobody looks.
    TableContent content() const;
    /// Of the data sets that the table shows.
    QList<QUuid> sharedDataIds() const;
    /// The plug-in's row maps, in its order.
    QVariantList rowMaps() const;

    /// The selected rows, or all when none is selected, as they are shown and ordered: tab-separated, under the titles.
    QString selectionText() const;
    void copySelection() const;
    /// The plug-in's maps of the selected rows.
    QVariantList selectedRowMaps() const;

    /// Code and decimal places of the column in a section of the header, -1 for none.
    Q_INVOKABLE int colId(qint8 section);
    Q_INVOKABLE int colDigits(qint8 section);
    /// The plug-in's own entries for the context menu.
    Q_INVOKABLE void typeCntxtMenu(QMenu *menu);

    const TableColumns &columns() const { return m_columns; }
    void setColumns(const TableColumns &columns);
    /// By the user: columnsEdited() follows. The last column in sight stays.
    void showColumn(int column, bool shows);
    /// The columns to choose from, each with what it means. Owned by the parent.
    QMenu *createColumnMenu(QWidget *parent);

    /// The line above the rows. A text that is no filter leaves the rows as they are and says what is wrong with it.
    QString filter() const;
    void setFilter(const QString &text);
    void editFilter();
    /// The rows in sight.
    void selectShown();

    QVariantMap viewSettings() const override;
    QVariantMap madeSettings() const override { return {}; }
    void setViewSettings(const QVariantMap &settings) override;

    void receiveMessage(const QVariantMap &message, const DocumentItem *sender) override;

    void paintPicture(QPainter *painter, const QRectF &area) override;
    /// Rules, header and as many rows as fit.
    void paintTable(QPainter *painter, const QRectF &area);

    /// Gives the columns the widths of their contents and the rows their order, if they have not got them yet.
    void ensureFitted();

Q_SIGNALS:
    /// Others than before are in sight.
    void columnsChanged();
    /// The user has chosen other columns.
    void columnsEdited(const TableColumns &before);

protected:
    void layoutContent(const QRectF &content) override;
    void fillContextMenu(QMenu *menu) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;

private:
    void createProxy();
    /// Measuring every cell is worth its time only when somebody looks.
    void fitColumns();
    void fitColumn(int column);
    void fitColumnsLater();
    void hideColumns();
    /// In the order of the view.
    QList<int> shownColumns() const;
    void offerSorting();
    /// By the column of the header's sort indicator. Rows change their places in the view only: for the plug-in, which
    /// knows the view, they keep their numbers.
    void sortRows();
    /// When nobody changes values any more, but before they are seen.
    void sortLater();
    void ensureSorted();
    void readFilter();
    void hideRows();
    /// The model's rows in sight, from top to bottom.
    QList<int> shownRows() const;
    QList<int> selectedRows() const;

    QPointer<QObject> m_table;
    TableModel *m_model;
    QTableView *m_view;
    QGraphicsWidget *m_proxy = nullptr;
    QLineEdit *m_filterLine = nullptr;
    QLabel *m_filterResult = nullptr;
    RowFilter m_filter;
    TableColumns m_columns;
    QVariantMap m_widths; ///< of the columns that the user has made wider or narrower, by key
    bool m_fitting = false;
    bool m_fitted = false;
    bool m_sorted = true;
};

} // namespace Workbench
