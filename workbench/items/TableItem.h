// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/DocumentItem.h"

class QTableView;
class TableModel;

/// A plug-in's table on the page: a table view in the window, ruled text on paper. Owns the plug-in's table object.
class TableItem : public DocumentItem {
    Q_OBJECT

public:
    /// A null id becomes a new one.
    explicit TableItem(QObject *table, const QUuid &id = {}, QGraphicsItem *parent = nullptr);
    ~TableItem() override;

    QObject *table() const { return m_table; }
    QTableView *view() const { return m_view; }
    TableModel *model() const { return m_model; }

    /// The size at which every row and column shows.
    QSizeF fullSize() const;
    /// The width at which every column shows in an item of this height, beside the scroll bar if that takes one.
    double fullWidth(double height) const;

    /// Code and decimal places of the column in a section of the header, -1 for none.
    Q_INVOKABLE int colId(qint8 section);
    Q_INVOKABLE int colDigits(qint8 section);
    /// The plug-in's own entries for the context menu.
    Q_INVOKABLE void typeCntxtMenu(QMenu *menu);

    void receiveMessage(const QVariantMap &message) override;

    /// Rules, header and as many rows as fit.
    void paintTable(QPainter *painter, const QRectF &area) const;

protected:
    void layoutContent(const QRectF &content) override;
    void fillContextMenu(QMenu *menu) override;

private:
    void fitColumns();

    QPointer<QObject> m_table;
    TableModel *m_model;
    QTableView *m_view;
    QGraphicsWidget *m_proxy;
};
