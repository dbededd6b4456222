// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/DocumentItem.h"

#include <QGraphicsScene>
#include <QGraphicsWidget>
#include <QPointer>
#include <QUuid>
#include <QVariantMap>

class QUndoStack;

namespace Workbench {

class DataEngine;
class NmrItem;
class TableItem;
class TableSites;
struct SpectrumEntry;

/// The document: a stack of A4 pages with molecule, table and NMR items, and the custom data of plug-ins behind them.
/// It owns all its items. Whether an item is on the page is a state of it: one that was taken off stays with the
/// document for as long as somebody holds it (ItemHold), as undo steps do, and is deleted after that.
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
    /// One spectrum entry from the data map: an item of its own or, when the current spectrum is a measurement of the
    /// same nuclei that waits for a simulated one, an entry of that item.
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

    /// The file whose data set the spectrum was made from; empty when that is not known.
    QString sourceOf(const SpectrumEntry &entry) const;
    /// What a spectrum is called that a plug-in has made from that file.
    static QString simulatedName(const QString &source);

    /// Where a file that is read now puts its molecule.
    QRectF emptyStructureRect() const;

    /// Those on the page, from the back to the front.
    QList<DocumentItem *> documentItems() const;
    /// On the page or held off it; null when the document has none of this id.
    DocumentItem *item(const QUuid &id) const;
    bool isOnPage(const DocumentItem *item) const;
    /// It comes back to where it was among the others.
    void setOnPage(DocumentItem *item, bool onPage);
    /// For good, without undo.
    void destroy(DocumentItem *item);
    /// The document item that holds this graphics item; null when none does.
    static DocumentItem *documentItemOf(QGraphicsItem *item);
    /// The pages as they are printed, or a workspace in which the items fill the window. Each has places of its own
    /// for the items, and plug-ins know those on the pages only.
    enum class Layout { Pages, Workspace };
    Layout layout() const { return m_layout; }
    void setLayout(Layout layout);
    /// Of the window, pixels.
    void setWorkspaceSize(const QSizeF &size);
    /// Puts what lies in the workspace by hand into its rows again.
    void arrangeAll();
    /// The item's places as they are now.
    DocumentItem::Place placeOf(const DocumentItem &item) const;
    void setPlace(DocumentItem &item, const DocumentItem::Place &place);
    /// Of what the user has moved or resized just now, before that.
    DocumentItem::Place placeBefore(const DocumentItem &item, const QRectF &geometry) const;
    /// To be called when the user has moved or resized the item.
    void notePlacedByHand(DocumentItem &item);

    /// Of all items on the pages.
    QRectF usedRect() const;
    int pageCount() const;

    QGraphicsWidget *activeItem() const { return m_active; }
    void setActiveItem(QGraphicsWidget *item);
    /// Null when there is none.
    NmrItem *currentNmrItem() const;
    TableItem *currentTableItem() const;

    /// Opens the item's context menu as the keyboard does: at the item, on its first entry.
    void openMenu(DocumentItem *item);

    /// What the user works with; null ids where that is nothing.
    struct CurrentItems {
        QUuid active;
        QUuid nmr;
        QUuid table;
    };
    CurrentItems currentItems() const;
    /// Items that are not on the page count as none.
    void setCurrentItems(const CurrentItems &current);

    QUndoStack *undoStack() const { return m_undoStack; }
    TableSites *tableSites() const { return m_tableSites; }
    /// Puts a new item there, which the document owns from now on. It becomes the current one of its kind, not the
    /// active one.
    void addNew(DocumentItem *item, const QRectF &rect) { place(item, rect, false); }
    /// Deletes all items, without undo, and forgets the undo steps.
    void removeAll();
    /// To be called when an item has got another place: puts the others in their rows and makes room.
    void updatePages();

Q_SIGNALS:
    void activeItemChanged(QGraphicsWidget *item);
    void itemAdded(DocumentItem *item);
    /// Items have come onto the page or gone from it.
    void itemsChanged();
    /// The active item, the current spectrum or the current table is another one.
    void currentItemsChanged();

protected:
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;

private:
    friend class ItemHold;
    void hold(const QUuid &id);
    void release(const QUuid &id);
    void adopt(DocumentItem *item);
    /// To be called when an item is no longer on the page.
    void leave(const DocumentItem *item);
    QGraphicsWidget *place(DocumentItem *item, const QRectF &rect, bool activate);
    bool isFree(const QRectF &rect) const;
    /// Another one of the same kind takes the place of the current one that goes.
    template <typename Item>
    void replaceCurrent(QPointer<Item> &current, const DocumentItem *going) const;
    void showInViews(const DocumentItem *item) const;

    void arrange();
    QRectF pageRect(const DocumentItem &item) const;

    /// The item that a new simulated spectrum joins; null when there is none.
    NmrItem *waitingMeasurement(const QVariantMap &data) const;

    DataEngine *m_data;
    Layout m_layout = Layout::Pages;
    QSizeF m_workspaceSize{1000, 700};
    QList<DocumentItem *> m_items; ///< on the page or not, from the back to the front
    QHash<QUuid, int> m_holds; ///< how many hold the item
    QUndoStack *m_undoStack;
    TableSites *m_tableSites;
    QPointer<QGraphicsWidget> m_active;
    QPointer<NmrItem> m_currentNmr;
    QPointer<TableItem> m_currentTable;
    QPointer<DocumentItem> m_lastMolecule;
    QRectF m_lastStructureRow;
    bool m_drawn = true;
};

/// Keeps an item with its document while it is off the page. The scene must outlive it.
class ItemHold {
public:
    ItemHold(MainScene *scene, const QUuid &id) : m_scene(scene), m_id(id) { m_scene->hold(m_id); }
    ~ItemHold() { m_scene->release(m_id); }
    Q_DISABLE_COPY_MOVE(ItemHold)

    MainScene *scene() const { return m_scene; }
    /// Null when the item was destroyed by force.
    DocumentItem *item() const { return m_scene->item(m_id); }

private:
    MainScene *m_scene;
    QUuid m_id;
};

} // namespace Workbench
