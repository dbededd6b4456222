// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/MainScene.h"

#include "data/Nuclides.h"
#include "host/DataEngine.h"
#include "host/PageLayout.h"
#include "host/TableSites.h"
#include "host/WorkspaceLayout.h"
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
    : QGraphicsScene(parent), m_data(data), m_undoStack(new QUndoStack(this)), m_tableSites(new TableSites(this, data))
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
    // The commands release the items that they hold off the page.
    delete m_undoStack;
    for (DocumentItem *item : QList<DocumentItem *>(m_items)) {
        if (!isOnPage(item))
            delete item;
    }
    // The others go with the base class, which is too late to hear of them.
    for (DocumentItem *item : std::as_const(m_items))
        disconnect(item, &QObject::destroyed, this, nullptr);
}

QGraphicsWidget *MainScene::createMolItem(const QRectF &rect, const QVariantMap &description, const bool activate)
{
    const QRectF place_ = rect.isValid() ? rect : emptyStructureRect();
    m_lastStructureRow = QRectF(PageLayout::margin, place_.top(), PageLayout::contentWidth, place_.height());
    m_lastMolecule = new MoleculeItem(description);
    return place(m_lastMolecule, place_, activate);
}

QString MainScene::simulatedName(const QString &source)
{
    return source.isEmpty() ? tr("Simulated") : tr("%1, simulated").arg(source);
}

QGraphicsWidget *MainScene::createNMRItem(const QRectF &rect, const QVariantMap &data, const bool activate)
{
    const QString source = sourceOf({{}, {}, data, {}});
    const QString name = simulatedName(source);
    if (NmrItem *measured = waitingMeasurement(data)) {
        measured->nmrData()->setActiveEntryId(measured->nmrData()->addEntry(data, name));
        if (activate)
            setActiveItem(measured);
        return measured;
    }
    QRectF place_ = rect.isValid() ? rect : getEmptyRect();
    // A map needs more height than a line, and a free place at the end of the document can give it.
    if (isTwoDimensional(data) && isFree(place_))
        place_ = PageLayout::rowBelow(usedRect(), PageLayout::spectrum2DHeight);
    auto *item = new NmrItem({}, m_drawn ? NmrItem::WithPlot : NmrItem::WithoutPlot);
    item->nmrData()->addEntry(data, name);
    item->setSource(source);
    return place(item, place_, activate);
}

NmrItem *MainScene::waitingMeasurement(const QVariantMap &data) const
{
    if (!m_currentNmr || !isOnPage(m_currentNmr))
        return nullptr;
    const NmrData &stack = *m_currentNmr->nmrData();
    const Spectrum simulated = Spectrum::fromMap(data);
    if (stack.entryIds().size() != 1 || stack.isSimulated(stack.entryIds().constFirst())
        || !SpectrumEntry{{}, {}, data, {}}.isSimulated())
        return nullptr;
    const QUuid id = stack.entryIds().constFirst();
    const QStringList nuclei = stack.stackEntry(id).nuclei();
    if (nuclei.size() != simulated.dimensions())
        return nullptr;
    for (int d = 0; d < simulated.dimensions(); ++d) {
        const QString nucleus = simulated.axes[d].isotope();
        // Where the data are silent, the name may tell.
        const bool fits = nuclei[d].isEmpty() ? !Nuclides::table().namesOtherThan(nucleus, stack.entryName(id))
                                              : nuclei[d] == nucleus;
        if (!fits)
            return nullptr;
    }
    return m_currentNmr;
}

QString MainScene::sourceOf(const SpectrumEntry &entry) const
{
    const QUuid dataId = entry.dataId();
    for (const DocumentItem *item : m_items) {
        const auto *table = qobject_cast<const TableItem *>(item);
        if (table && !dataId.isNull() && table->sharedDataIds().contains(dataId))
            return table->source();
    }
    return {};
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
    if (m_lastMolecule && pageRect(*m_lastMolecule) == PageLayout::moleculePart(m_lastStructureRow)) {
        setPlace(*m_lastMolecule, {PageLayout::moleculePart(m_lastStructureRow, share), {}});
        setPlace(*item, {PageLayout::tablePart(m_lastStructureRow, share), {}});
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
    std::copy_if(m_items.cbegin(), m_items.cend(), std::back_inserter(found),
                 [this](const DocumentItem *item) { return isOnPage(item); });
    return found;
}

DocumentItem *MainScene::item(const QUuid &id) const
{
    const auto it =
        std::find_if(m_items.cbegin(), m_items.cend(), [&](const DocumentItem *item) { return item->id() == id; });
    return it == m_items.cend() ? nullptr : *it;
}

bool MainScene::isOnPage(const DocumentItem *item) const
{
    return item->scene() == this;
}

void MainScene::adopt(DocumentItem *item)
{
    m_items.append(item);
    // By whatever deletes it.
    connect(item, &QObject::destroyed, this, [this, item, id = item->id()] {
        m_items.removeOne(item);
        m_holds.remove(id);
    });
}

void MainScene::hold(const QUuid &id)
{
    ++m_holds[id];
}

void MainScene::release(const QUuid &id)
{
    const auto it = m_holds.find(id);
    if (it == m_holds.end() || --*it > 0)
        return;
    m_holds.erase(it);
    if (DocumentItem *gone = item(id); gone && !isOnPage(gone))
        delete gone;
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
        used |= pageRect(*item);
    return used;
}

QRectF MainScene::pageRect(const DocumentItem &item) const
{
    return m_layout == Layout::Pages ? item.geometry() : item.place().page;
}

DocumentItem::Place MainScene::placeOf(const DocumentItem &item) const
{
    return placeBefore(item, item.geometry());
}

DocumentItem::Place MainScene::placeBefore(const DocumentItem &item, const QRectF &geometry) const
{
    DocumentItem::Place place = item.place();
    if (m_layout == Layout::Pages)
        place.page = geometry;
    return place;
}

void MainScene::setPlace(DocumentItem &item, const DocumentItem::Place &place)
{
    item.setPlace(place);
    if (m_layout == Layout::Pages)
        item.setGeometry(place.page);
    updatePages();
}

void MainScene::notePlacedByHand(DocumentItem &item)
{
    DocumentItem::Place place = placeOf(item);
    if (m_layout == Layout::Workspace)
        place.workspace = item.geometry();
    setPlace(item, place);
}

void MainScene::setLayout(Layout layout)
{
    if (layout == m_layout)
        return;
    for (DocumentItem *item : std::as_const(m_items))
        item->setPlace(placeOf(*item));
    m_layout = layout;
    // Also those that an undo may bring back.
    for (DocumentItem *item : std::as_const(m_items)) {
        item->setOnPaper(layout == Layout::Pages);
        if (layout == Layout::Pages)
            item->setGeometry(item->place().page);
    }
    updatePages();
}

void MainScene::setWorkspaceSize(const QSizeF &size)
{
    if (m_workspaceSize == size)
        return;
    m_workspaceSize = size;
    if (m_layout == Layout::Workspace)
        updatePages();
}

void MainScene::arrangeAll()
{
    for (DocumentItem *item : documentItems()) {
        DocumentItem::Place place = placeOf(*item);
        place.workspace = {};
        item->setPlace(place);
    }
    updatePages();
}

void MainScene::arrange()
{
    struct Content {
        MoleculeItem *molecule = nullptr;
        DocumentItem *other = nullptr;
    };
    QList<WorkspaceLayout::Row> rows;
    QList<Content> contents;
    const auto flows = [](const DocumentItem *item) { return item->place().workspace.isEmpty() && item->isVisible(); };
    QSet<const DocumentItem *> beside;
    const QList<DocumentItem *> all = documentItems();
    for (DocumentItem *item : all) {
        auto *molecule = qobject_cast<MoleculeItem *>(item);
        auto *table = qobject_cast<TableItem *>(item);
        if ((!molecule && !table) || !flows(item) || beside.contains(item))
            continue;
        Content content{molecule, table};
        for (DocumentItem *linked : molecule ? molecule->linkedItems() : QList<DocumentItem *>()) {
            auto *candidate = qobject_cast<TableItem *>(linked);
            if (!content.other && candidate && isOnPage(candidate) && flows(candidate) && !beside.contains(candidate))
                content.other = candidate;
        }
        beside.insert(content.other);
        auto *shown = qobject_cast<TableItem *>(content.other);
        const double width = shown && m_drawn ? shown->fullWidth(m_workspaceSize.height() / 2) : 0;
        rows.append({WorkspaceLayout::Row::Structure, width, molecule != nullptr, shown != nullptr});
        contents.append(content);
    }
    for (DocumentItem *item : all) {
        auto *nmr = qobject_cast<NmrItem *>(item);
        if (!nmr || !flows(nmr))
            continue;
        const bool map = nmr->nmrData()->shownEntry().axes().size() == 2;
        rows.append({map ? WorkspaceLayout::Row::Map : WorkspaceLayout::Row::Spectrum, 0, false, false});
        contents.append({nullptr, nmr});
    }
    const QList<WorkspaceLayout::Place> places = WorkspaceLayout::place(rows, m_workspaceSize);
    for (qsizetype i = 0; i < places.size(); ++i) {
        if (contents[i].molecule)
            contents[i].molecule->setGeometry(places[i].left);
        if (contents[i].other)
            contents[i].other->setGeometry(places[i].right);
    }
    for (DocumentItem *item : all) {
        if (!flows(item))
            item->setGeometry(item->place().workspace);
    }
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
    Q_EMIT currentItemsChanged();
}

NmrItem *MainScene::currentNmrItem() const
{
    return m_currentNmr;
}

TableItem *MainScene::currentTableItem() const
{
    return m_currentTable;
}

MainScene::CurrentItems MainScene::currentItems() const
{
    const auto id = [](const auto &item) {
        const auto *document = qobject_cast<const DocumentItem *>(item);
        return document ? document->id() : QUuid();
    };
    return {id(m_active.data()), id(m_currentNmr.data()), id(m_currentTable.data())};
}

void MainScene::setCurrentItems(const CurrentItems &current)
{
    const auto onPage = [this](const QUuid &id) {
        DocumentItem *found = item(id);
        return found && isOnPage(found) ? found : nullptr;
    };
    setActiveItem(onPage(current.active));
    m_currentNmr = qobject_cast<NmrItem *>(onPage(current.nmr));
    m_currentTable = qobject_cast<TableItem *>(onPage(current.table));
    Q_EMIT currentItemsChanged();
}

void MainScene::setOnPage(DocumentItem *item, bool onPage)
{
    if (onPage == isOnPage(item))
        return;
    if (!onPage) {
        removeItem(item);
        return leave(item);
    }
    addItem(item);
    const auto above = std::find_if(m_items.cbegin() + m_items.indexOf(item) + 1, m_items.cend(),
                                    [this](const DocumentItem *other) { return isOnPage(other); });
    if (above != m_items.cend())
        item->stackBefore(*above);
    updatePages();
    Q_EMIT itemsChanged();
}

void MainScene::leave(const DocumentItem *item)
{
    replaceCurrent(m_currentNmr, item);
    replaceCurrent(m_currentTable, item);
    if (m_active == item)
        setActiveItem(nullptr);
    updatePages();
    Q_EMIT itemsChanged();
}

void MainScene::destroy(DocumentItem *item)
{
    setOnPage(item, false);
    delete item;
}

void MainScene::removeAll()
{
    m_undoStack->clear();
    for (DocumentItem *item : QList<DocumentItem *>(m_items))
        destroy(item);
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
    adopt(item);
    addItem(item);
    item->setPlace({rect, item->place().workspace});
    item->setGeometry(rect);
    item->setOnPaper(m_layout == Layout::Pages);
    if (auto *molecule = qobject_cast<MoleculeItem *>(item)) {
        molecule->setDataSource([data = QPointer<DataEngine>(m_data)](const QUuid &id) {
            return data ? data->getDataMap(id) : QVariantMap();
        });
    }
    if (auto *table = qobject_cast<TableItem *>(item))
        connect(table, &TableItem::columnsChanged, this, &MainScene::updatePages);
    updatePages();
    Q_EMIT itemAdded(item);
    // The current NMR item and table are the ones made last, whatever is active.
    if (auto *nmr = qobject_cast<NmrItem *>(item))
        m_currentNmr = nmr;
    if (auto *table = qobject_cast<TableItem *>(item))
        m_currentTable = table;
    Q_EMIT itemsChanged();
    Q_EMIT currentItemsChanged();
    if (activate) {
        setActiveItem(item);
        showInViews(item);
    }
    return item;
}

bool MainScene::isFree(const QRectF &rect) const
{
    for (const DocumentItem *item : documentItems()) {
        if (pageRect(*item).intersects(rect))
            return false;
    }
    return true;
}

void MainScene::updatePages()
{
    if (m_layout == Layout::Pages) {
        setSceneRect(QRectF(0, 0, PageLayout::pageWidth, pageCount() * PageLayout::pageHeight));
    } else {
        arrange();
        QRectF shown(QPointF(0, 0), m_workspaceSize);
        for (const DocumentItem *item : documentItems())
            shown |= item->geometry().adjusted(0, 0, 0, WorkspaceLayout::gap);
        setSceneRect(shown);
    }
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

#include "moc_MainScene.cpp"
