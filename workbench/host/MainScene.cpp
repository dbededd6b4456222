// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/MainScene.h"

#include "host/DataEngine.h"
#include "host/PageLayout.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"

#include <QApplication>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMenu>
#include <QUndoStack>

namespace Workbench {

namespace {

/// Each may hold a spectrum of before.
constexpr int mostUndoSteps = 100;

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
    m_undoStack->setUndoLimit(mostUndoSteps);
    // Few and large items that move seldom: an index would only cost.
    setItemIndexMethod(NoIndex);
    updatePages();
    connect(this, &QGraphicsScene::focusItemChanged, this, [this](QGraphicsItem *focused) {
        // Without focus, as under an open menu, the active item stays what it is.
        if (DocumentItem *item = documentItemOf(focused))
            setActiveItem(item);
    });
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
    auto *item = new NmrItem({}, m_drawn ? NmrItem::WithPlot : NmrItem::WithoutPlot);
    item->nmrData()->addEntry(data, tr("Simulated"));
    return place(item, place_, activate);
}

QGraphicsWidget *MainScene::addCustomTableItem(QObject *table, bool activate)
{
    if (!table)
        return nullptr;
    auto *item = new TableItem(table, {}, m_drawn ? TableItem::WithView : TableItem::WithoutView);
    const QRectF beside = PageLayout::tablePart(m_lastStructureRow);
    if (m_lastStructureRow.isEmpty() || !isFree(beside))
        return place(item, PageLayout::rowBelow(usedRect(), PageLayout::structureHeight), activate);
    place(item, beside, activate);
    if (!m_drawn)
        return item;
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
    if (auto *table = qobject_cast<TableItem *>(item))
        m_currentTable = table;
    if (m_active == item)
        return;
    if (auto *before = qobject_cast<DocumentItem *>(m_active))
        before->setCurrent(false);
    m_active = item;
    if (auto *document = qobject_cast<DocumentItem *>(item))
        document->setCurrent(true);
    if (item && documentItemOf(focusItem()) != item)
        item->setFocus();
    Q_EMIT activeItemChanged(item);
}

NmrItem *MainScene::currentNmrItem() const
{
    return m_currentNmr;
}

TableItem *MainScene::currentTableItem() const
{
    return m_currentTable;
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
    replaceCurrent(m_currentNmr, item);
    replaceCurrent(m_currentTable, item);
    if (m_active == item)
        setActiveItem(nullptr);
    updatePages();
}

void MainScene::removeAll()
{
    m_undoStack->clear();
    for (DocumentItem *item : documentItems()) {
        detach(item);
        delete item;
    }
    m_lastStructureRow = {};
    updatePages();
}

template <typename Item>
void MainScene::replaceCurrent(QPointer<Item> &current, const DocumentItem *going) const
{
    if (current != going)
        return;
    current = nullptr;
    for (DocumentItem *other : documentItems()) {
        if (auto *same = qobject_cast<Item *>(other))
            current = same;
    }
}

QGraphicsWidget *MainScene::place(DocumentItem *item, const QRectF &rect, bool activate)
{
    addItem(item);
    item->setGeometry(rect);
    if (auto *molecule = qobject_cast<MoleculeItem *>(item)) {
        molecule->setDataSource([data = QPointer<DataEngine>(m_data)](const QUuid &id) {
            return data ? data->getDataMap(id) : QVariantMap();
        });
    }
    updatePages();
    Q_EMIT itemAdded(item);
    // The current NMR item and table are the ones made last, whatever is active.
    if (auto *nmr = qobject_cast<NmrItem *>(item))
        m_currentNmr = nmr;
    if (auto *table = qobject_cast<TableItem *>(item))
        m_currentTable = table;
    if (activate) {
        setActiveItem(item);
        showInViews(item);
    }
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

bool MainScene::focusNextPrevChild(bool next)
{
    QList<DocumentItem *> order = documentItems();
    if (order.isEmpty())
        return QGraphicsScene::focusNextPrevChild(next);
    std::stable_sort(order.begin(), order.end(), [](const DocumentItem *a, const DocumentItem *b) {
        return std::make_pair(a->y(), a->x()) < std::make_pair(b->y(), b->x());
    });
    const qsizetype now = order.indexOf(qobject_cast<DocumentItem *>(m_active));
    const qsizetype from = now < 0 && !next ? 0 : now;
    DocumentItem *item = order.at((from + (next ? 1 : -1) + order.size()) % order.size());
    setActiveItem(item);
    showInViews(item);
    return true;
}

void MainScene::showInViews(const DocumentItem *item) const
{
    for (QGraphicsView *view : views())
        view->ensureVisible(item, 0, 0);
}

void MainScene::openMenu(DocumentItem *item)
{
    setActiveItem(item);
    QMenu *menu = item->contextMenu();
    if (menu->isEmpty() || views().isEmpty())
        return;
    showInViews(item);
    const QGraphicsView *view = views().constFirst();
    const QRect area = view->mapFromScene(item->mapToScene(item->contentRect())).boundingRect();
    const QRect shown = view->viewport()->rect() & area;
    menu->popup(view->viewport()->mapToGlobal(shown.topLeft()));
    const QList<QAction *> actions = menu->actions();
    const auto first = std::find_if(actions.cbegin(), actions.cend(), [](const QAction *action) {
        return action->isEnabled() && action->isVisible() && !action->isSeparator();
    });
    if (first != actions.cend())
        menu->setActiveAction(*first);
}

void MainScene::keyPressEvent(QKeyEvent *event)
{
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isMenu =
        event->key() == Qt::Key_Menu || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    auto *item = qobject_cast<DocumentItem *>(m_active);
    if (item && (isMenu || (isEnter && plain))) {
        event->accept();
        return openMenu(item);
    }
    // Widgets inside of items, too, leave the Tab key to the page.
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        event->setAccepted(focusNextPrevChild(event->key() == Qt::Key_Tab));
        return;
    }
    QGraphicsScene::keyPressEvent(event);
}

void MainScene::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    const bool byKey = event->reason() == QGraphicsSceneContextMenuEvent::Keyboard;
    DocumentItem *item =
        byKey ? qobject_cast<DocumentItem *>(m_active) : documentItemOf(itemAt(event->scenePos(), QTransform()));
    if (!item)
        return QGraphicsScene::contextMenuEvent(event);
    if (byKey) {
        event->accept();
        // Some platforms send the key as well, which has opened the menu already.
        if (!QApplication::activePopupWidget())
            openMenu(item);
        return;
    }
    // Plug-ins' menu commands work on the active item, so it must be that before it shows its menu. The menu is the
    // item's wherever the mouse is; widgets inside it would swallow the event.
    setActiveItem(item);
    event->accept();
    sendEvent(item, event);
}

} // namespace Workbench
