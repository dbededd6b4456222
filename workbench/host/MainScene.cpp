// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/MainScene.h"

#include "host/DataEngine.h"
#include "host/PageLayout.h"
#include "items/MoleculeItem.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"
#include "items/TableItem.h"

#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QUndoCommand>
#include <QUndoStack>

namespace {

/// While the item is off the page it belongs to the command.
class RemoveItemCommand : public QUndoCommand {
public:
    RemoveItemCommand(MainScene *scene, DocumentItem *item)
        : QUndoCommand(MainScene::tr("Delete %1").arg(item->title())), m_scene(scene), m_item(item)
    {
    }
    ~RemoveItemCommand() override
    {
        if (m_item && !m_item->scene())
            delete m_item;
    }
    void redo() override
    {
        if (m_item)
            m_scene->detach(m_item);
    }
    void undo() override
    {
        if (m_item)
            m_scene->attach(m_item);
    }

private:
    MainScene *m_scene;
    QPointer<DocumentItem> m_item;
};

class MoveItemCommand : public QUndoCommand {
public:
    MoveItemCommand(MainScene *scene, DocumentItem *item, const QRectF &before, const QRectF &after)
        : QUndoCommand(MainScene::tr("Move %1").arg(item->title())), m_scene(scene), m_item(item), m_before(before),
          m_after(after)
    {
    }
    void redo() override { move(m_after); }
    void undo() override { move(m_before); }

private:
    void move(const QRectF &geometry)
    {
        if (m_item)
            m_item->setGeometry(geometry);
        m_scene->updatePages();
    }

    MainScene *m_scene;
    QPointer<DocumentItem> m_item;
    QRectF m_before;
    QRectF m_after;
};

bool isTwoDimensional(const QVariantMap &spectrum)
{
    const auto lengths = spectrum.value(QStringLiteral("Length")).value<QList<int>>();
    return lengths.size() > 1 && lengths[1] > 1;
}

} // namespace

MainScene::MainScene(DataEngine *data, QObject *parent)
    : QGraphicsScene(parent), m_data(data), m_undoStack(new QUndoStack(this))
{
    setObjectName(QStringLiteral("mainScene"));
    m_undoStack->setObjectName(QStringLiteral("sceneUndoStack"));
    // Few and large items that move seldom: an index would only cost.
    setItemIndexMethod(NoIndex);
    updatePages();
}

MainScene::~MainScene()
{
    // The commands own items that are off the page and touch the scene.
    delete m_undoStack;
}

QGraphicsWidget *MainScene::createMolItem(const QRectF &rect, const QVariantMap &description, const bool activate)
{
    const QRectF place_ = rect.isValid() ? rect : emptyStructureRect();
    m_lastStructureRow = QRectF(PageLayout::margin, place_.top(), PageLayout::contentWidth, place_.height());
    m_lastMolecule = new MoleculeItem(description);
    return place(m_lastMolecule, place_, activate);
}

QGraphicsWidget *MainScene::createNMRItem(const QRectF &rect, const QVariantMap &data, const bool activate)
{
    QRectF place_ = rect.isValid() ? rect : getEmptyRect();
    // A map needs more height than a line, and a free place at the end of the document can give it.
    if (isTwoDimensional(data) && isFree(place_))
        place_ = PageLayout::rowBelow(usedRect(), PageLayout::spectrum2DHeight);
    auto *item = new NmrItem;
    item->nmrData()->addEntry(data, tr("Simulated"));
    return place(item, place_, activate);
}

QGraphicsWidget *MainScene::addCustomTableItem(QObject *table, bool activate)
{
    if (!table)
        return nullptr;
    auto *item = new TableItem(table);
    const QRectF beside = PageLayout::tablePart(m_lastStructureRow);
    if (m_lastStructureRow.isEmpty() || !isFree(beside))
        return place(item, PageLayout::rowBelow(usedRect(), PageLayout::structureHeight), activate);
    place(item, beside, activate);
    // A molecule fits into any width, columns do not.
    const double share = PageLayout::moleculeShareBeside(item->fullWidth(beside.height()));
    if (m_lastMolecule && m_lastMolecule->geometry() == PageLayout::moleculePart(m_lastStructureRow)) {
        m_lastMolecule->setGeometry(PageLayout::moleculePart(m_lastStructureRow, share));
        item->setGeometry(PageLayout::tablePart(m_lastStructureRow, share));
    }
    return item;
}

void MainScene::setCustomData(QVariantMap map, QGraphicsWidget *)
{
    if (!m_data->insert(map))
        qWarning("a plug-in's custom data has no valid \"ID\" and was not stored");
}

void MainScene::delCustomData(QUuid id, QGraphicsWidget *)
{
    m_data->remove(id);
}

QRectF MainScene::getEmptyRect() const
{
    return PageLayout::rowBelow(usedRect(), PageLayout::spectrumHeight);
}

QRectF MainScene::emptyStructureRect() const
{
    return PageLayout::moleculePart(PageLayout::rowBelow(usedRect(), PageLayout::structureHeight));
}

QList<DocumentItem *> MainScene::documentItems() const
{
    QList<DocumentItem *> found;
    for (QGraphicsItem *item : items(Qt::AscendingOrder)) {
        if (auto *document = qobject_cast<DocumentItem *>(item->toGraphicsObject()))
            found.append(document);
    }
    return found;
}

DocumentItem *MainScene::documentItemOf(QGraphicsItem *item)
{
    for (; item; item = item->parentItem()) {
        if (auto *document = qobject_cast<DocumentItem *>(item->toGraphicsObject()))
            return document;
    }
    return nullptr;
}

QRectF MainScene::usedRect() const
{
    QRectF used;
    for (const DocumentItem *item : documentItems())
        used |= item->geometry();
    return used;
}

int MainScene::pageCount() const
{
    return PageLayout::pageCount(usedRect());
}

void MainScene::setActiveItem(QGraphicsWidget *item)
{
    if (auto *nmr = qobject_cast<NmrItem *>(item))
        m_currentNmr = nmr;
    if (m_active == item)
        return;
    m_active = item;
    update();
    Q_EMIT activeItemChanged(item);
}

NmrItem *MainScene::currentNmrItem() const
{
    return m_currentNmr;
}

void MainScene::removeWithUndo(DocumentItem *item)
{
    m_undoStack->push(new RemoveItemCommand(this, item));
}

void MainScene::attach(DocumentItem *item)
{
    addItem(item);
    updatePages();
    setActiveItem(item);
}

void MainScene::detach(DocumentItem *item)
{
    removeItem(item);
    if (m_currentNmr == item) {
        m_currentNmr = nullptr;
        for (DocumentItem *other : documentItems()) {
            if (auto *nmr = qobject_cast<NmrItem *>(other))
                m_currentNmr = nmr;
        }
    }
    if (m_active == item)
        setActiveItem(nullptr);
    updatePages();
}

QGraphicsWidget *MainScene::place(DocumentItem *item, const QRectF &rect, bool activate)
{
    addItem(item);
    item->setGeometry(rect);
    connect(item, &DocumentItem::geometryEdited, this, [this, item](const QRectF &before, const QRectF &after) {
        m_undoStack->push(new MoveItemCommand(this, item, before, after));
    });
    updatePages();
    Q_EMIT itemAdded(item);
    // The current NMR item is the one made last, whatever is active.
    if (auto *nmr = qobject_cast<NmrItem *>(item))
        m_currentNmr = nmr;
    if (activate)
        setActiveItem(item);
    return item;
}

bool MainScene::isFree(const QRectF &rect) const
{
    for (const DocumentItem *item : documentItems()) {
        if (item->geometry().intersects(rect))
            return false;
    }
    return true;
}

void MainScene::updatePages()
{
    setSceneRect(QRectF(0, 0, PageLayout::pageWidth, pageCount() * PageLayout::pageHeight));
    update();
}

void MainScene::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    setActiveItem(documentItemOf(itemAt(event->scenePos(), QTransform())));
    QGraphicsScene::mousePressEvent(event);
}

void MainScene::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    DocumentItem *item = documentItemOf(itemAt(event->scenePos(), QTransform()));
    if (!item)
        return QGraphicsScene::contextMenuEvent(event);
    // Plug-ins' menu commands work on the active item, so it must be that before it shows its menu. The menu is the
    // item's wherever the mouse is; widgets inside it would swallow the event.
    setActiveItem(item);
    event->accept();
    sendEvent(item, event);
}
