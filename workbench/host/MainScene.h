// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsScene>
#include <QGraphicsWidget>
#include <QPointer>
#include <QUuid>
#include <QVariantMap>

class QUndoStack;

namespace Workbench {

class DataEngine;
class DocumentItem;
class NmrItem;
class TableItem;

/// The document: a stack of A4 pages with molecule, table and NMR items, and the custom data of plug-ins behind them.
/// One item is active: the one last made or clicked, or reached with the Tab key. It has the keyboard. The NMR item
/// that was active last is the current one, and so is the table. Enter, the menu key and Shift+F10 open the active
/// item's menu.
class MainScene : public QGraphicsScene {
    Q_OBJECT
public:
    explicit MainScene(DataEngine *data, QObject *parent = nullptr);
    ~MainScene() override;

    // What plug-ins call by name.
    Q_INVOKABLE QGraphicsWidget *createMolItem(const QRectF &rect, const QVariantMap &description, const bool activate);
    /// One spectrum entry from the data map.
    Q_INVOKABLE QGraphicsWidget *createNMRItem(const QRectF &rect, const QVariantMap &data, const bool activate);
    /// Beside the molecule made last when that place is free, else below everything. The item owns the table object.
    Q_INVOKABLE QGraphicsWidget *addCustomTableItem(QObject *table, bool activate);
    /// Kept with the document under the map's "ID", and with no item in particular.
    Q_INVOKABLE void setCustomData(QVariantMap map, QGraphicsWidget *item);
    Q_INVOKABLE void delCustomData(QUuid id, QGraphicsWidget *item);
    /// The next free place for a spectrum, below everything.
    Q_INVOKABLE QRectF getEmptyRect() const;

    /// A document that is never drawn goes without what only looks need.
    void setDrawn(bool drawn) { m_drawn = drawn; }
    bool isDrawn() const { return m_drawn; }

    /// Where a file that is read now puts its molecule.
    QRectF emptyStructureRect() const;

    QList<DocumentItem *> documentItems() const;
    /// The document item that holds this graphics item; null when none does.
    static DocumentItem *documentItemOf(QGraphicsItem *item);
    QRectF usedRect() const;
    int pageCount() const;

    QGraphicsWidget *activeItem() const { return m_active; }
    void setActiveItem(QGraphicsWidget *item);
    /// Null when there is none.
    NmrItem *currentNmrItem() const;
    TableItem *currentTableItem() const;

    /// Opens the item's context menu as the keyboard does: at the item, on its first entry.
    void openMenu(DocumentItem *item);

    QUndoStack *undoStack() const { return m_undoStack; }
    /// Puts the item on the page, or takes it off and leaves it to the caller.
    void attach(DocumentItem *item);
    void detach(DocumentItem *item);
    /// Puts a new item there. It becomes the current one of its kind, not the active one.
    void addNew(DocumentItem *item, const QRectF &rect) { place(item, rect, false); }
    /// Deletes all items, without undo, and forgets the undo steps.
    void removeAll();
    /// To be called when an item has got another place.
    void updatePages();

Q_SIGNALS:
    void activeItemChanged(QGraphicsWidget *item);
    void itemAdded(DocumentItem *item);

protected:
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;

private:
    QGraphicsWidget *place(DocumentItem *item, const QRectF &rect, bool activate);
    bool isFree(const QRectF &rect) const;
    /// Another one of the same kind takes the place of the current one that goes.
    template <typename Item>
    void replaceCurrent(QPointer<Item> &current, const DocumentItem *going) const;
    void showInViews(const DocumentItem *item) const;

    DataEngine *m_data;
    QUndoStack *m_undoStack;
    QPointer<QGraphicsWidget> m_active;
    QPointer<NmrItem> m_currentNmr;
    QPointer<TableItem> m_currentTable;
    QPointer<DocumentItem> m_lastMolecule;
    QRectF m_lastStructureRow;
    bool m_drawn = true;
};

} // namespace Workbench
