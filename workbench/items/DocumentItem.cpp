// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/DocumentItem.h"

#include "data/Elision.h"
#include "items/ItemPicture.h"
#include "items/SaveDialog.h"

#include <QClipboard>
#include <QCursor>
#include <QFileInfo>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneResizeEvent>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPaintEngine>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScopedValueRollback>

#include <algorithm>

namespace Workbench {

namespace {

constexpr qreal titleHeight = 22;
constexpr qreal gripSize = 13;
constexpr qreal frameWidth = 2; // room for the frame of the current item
const QSizeF smallestSize(120, 80);

// The page is white whatever the desktop's palette.
const QColor frameColor(0xb8, 0xbe, 0xc6);
const QColor currentFrameColor(0x1f, 0x6f, 0xb5);
const QColor titleBarColor(0xf1, 0xf3, 0xf6);
const QColor modeColor(0xd7, 0xee, 0xd9);
const QColor modeTextColor(0x1b, 0x4d, 0x1f);
const QColor titleColor(0x24, 0x2c, 0x36);

/// The lower right corner of the current item, above its content, by which it is resized.
class ResizeGrip : public QGraphicsItem {
public:
    explicit ResizeGrip(DocumentItem *item) : QGraphicsItem(item), m_item(item)
    {
        setZValue(1);
        setCursor(Qt::SizeFDiagCursor);
        setVisible(false);
    }

    QRectF boundingRect() const override { return QRectF(-gripSize, -gripSize, gripSize, gripSize); }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *widget) override
    {
        if (DocumentItem::isPageOutput(painter, widget))
            return;
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(currentFrameColor);
        painter->drawPolygon(QPolygonF{{0, 0}, {-gripSize, 0}, {0, -gripSize}});
    }

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override
    {
        event->setAccepted(event->button() == Qt::LeftButton);
        m_geometryAtPress = m_item->geometry();
    }

    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override
    {
        const QPointF moved = event->scenePos() - event->buttonDownScenePos(Qt::LeftButton);
        const QSizeF size = m_geometryAtPress.size() + QSizeF(moved.x(), moved.y());
        m_item->resize(size.expandedTo(smallestSize));
    }

    void mouseReleaseEvent(QGraphicsSceneMouseEvent *) override
    {
        if (m_item->geometry() != m_geometryAtPress)
            Q_EMIT m_item->geometryEdited(m_geometryAtPress, m_item->geometry());
    }

private:
    DocumentItem *m_item;
    QRectF m_geometryAtPress;
};

} // namespace

DocumentItem::DocumentItem(const QUuid &id, QGraphicsItem *parent)
    : QGraphicsWidget(parent), m_id(id.isNull() ? QUuid::createUuid() : id)
{
    m_grip = new ResizeGrip(this);
    m_noteBar = new NoteBar(this);
    m_noteBar->setZValue(1); // on a small item it covers the content
    m_noteBar->setResized([this] { layOut(); });
    m_noteBar->setVisible(false);
    setFlag(ItemClipsChildrenToShape);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(smallestSize);
}

DocumentItem::~DocumentItem() = default;

void DocumentItem::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    update();
    Q_EMIT titleChanged();
}

QString DocumentItem::title() const
{
    return m_givenName.isEmpty() ? sourcedTitle() : m_givenName;
}

QString DocumentItem::sourcedTitle() const
{
    return m_source.isEmpty() ? m_title : QStringLiteral("%1 \u2013 %2").arg(m_source, m_title);
}

void DocumentItem::setSource(const QString &source)
{
    m_source = source;
    update();
    Q_EMIT titleChanged();
}

void DocumentItem::setGivenName(const QString &name)
{
    m_givenName = name;
    update();
    Q_EMIT titleChanged();
}

void DocumentItem::setMode(const QString &mode)
{
    m_mode = mode;
    update();
}

void DocumentItem::setNotes(const QList<ItemNote> &notes)
{
    m_noteBar->setNotes(notes);
    showNotes();
    Q_EMIT notesChanged();
}

void DocumentItem::setDoubts(const QStringList &doubts)
{
    if (doubts == m_doubts)
        return;
    m_doubts = doubts;
    Q_EMIT doubtsChanged();
}

void DocumentItem::setOnPaper(bool onPaper, bool withNotes)
{
    m_noteBar->setOnPaper(onPaper);
    m_notesWanted = !onPaper || withNotes;
    showNotes();
}

void DocumentItem::showNotes()
{
    m_noteBar->setVisible(m_notesWanted && !notes().isEmpty());
    layOut();
}

void DocumentItem::layOut()
{
    m_grip->setPos(rect().bottomRight());
    m_noteBar->setPos(frameWidth, titleHeight + 1);
    m_noteBar->setRoom(QSizeF(rect().width() - 2 * frameWidth, rect().height() / 3));
    layoutContent(contentRect());
    update();
}

void DocumentItem::setCurrent(bool current)
{
    m_current = current;
    m_grip->setVisible(current);
    update();
}

QRectF DocumentItem::contentRect() const
{
    // Notes on a small item cover its content rather than push it out.
    const double notesHeight = m_noteBar->isVisibleTo(this) ? std::min(m_noteBar->height(), rect().height() / 3) : 0;
    return rect().adjusted(frameWidth, titleHeight + 1 + notesHeight, -frameWidth, -frameWidth);
}

QList<DocumentItem *> DocumentItem::linkedItems() const
{
    QList<DocumentItem *> items;
    for (const auto &item : m_linked) {
        if (item)
            items.append(item);
    }
    return items;
}

void DocumentItem::setLinkedItems(const QList<DocumentItem *> &items)
{
    for (DocumentItem *linked : linkedItems()) {
        if (!items.contains(linked))
            linked->m_linked.removeAll(this);
    }
    m_linked.clear();
    for (DocumentItem *item : items) {
        if (m_linked.contains(item))
            continue;
        m_linked.append(item);
        if (!item->m_linked.contains(this))
            item->m_linked.append(this);
    }
}

void DocumentItem::linkObject(QObject *object)
{
    auto *other = qobject_cast<DocumentItem *>(object);
    if (!other || other == this || m_linked.contains(other))
        return;
    m_linked.append(other);
    other->m_linked.append(this);
}

void DocumentItem::sendMessage(QVariant message)
{
    const QVariantMap map = message.toMap();
    for (const QPointer<DocumentItem> &item : QList<QPointer<DocumentItem>>(m_linked))
        sendMessageTo(item, map);
}

void DocumentItem::sendMessageTo(DocumentItem *item, const QVariantMap &message)
{
    const QScopedValueRollback sending(m_sending, true);
    if (item && !item->m_sending)
        item->receiveMessage(message, this);
}

void DocumentItem::receiveMessage(const QVariantMap &, const DocumentItem *)
{
}

QMenu *DocumentItem::contextMenu()
{
    if (!m_menu)
        m_menu = std::make_unique<QMenu>();
    m_menu->clear();
    for (const ItemNote &note : notes()) {
        if (note.run)
            m_menu->addAction(note.action, this, note.run)->setToolTip(note.text);
    }
    m_menu->addSeparator();
    fillContextMenu(m_menu.get());
    if (!m_menu->isEmpty())
        fillPictureMenu(m_menu->addMenu(tr("Picture")));
    for (const auto &menu : std::as_const(m_pluginMenus)) {
        if (!menu)
            continue;
        if (!m_menu->isEmpty())
            m_menu->addSeparator();
        m_menu->addActions(menu->actions());
    }
    return m_menu.get();
}

void DocumentItem::fillPictureMenu(QMenu *menu)
{
    connect(menu->addAction(tr("Copy")), &QAction::triggered, this, &DocumentItem::copyPicture);
    connect(menu->addAction(tr("Save...")), &QAction::triggered, this, &DocumentItem::savePicture);
    connect(menu->addAction(tr("Print...")), &QAction::triggered, this, &DocumentItem::printPicture);
}

QWidget *DocumentItem::viewWindow() const
{
    return scene() && !scene()->views().isEmpty() ? scene()->views().constFirst()->window() : nullptr;
}

void DocumentItem::copyPicture()
{
    try {
        QGuiApplication::clipboard()->setMimeData(ItemPicture::mimeData(*this));
        Q_EMIT reported(tr("The picture is on the clipboard"));
    } catch (const std::exception &error) {
        Q_EMIT reported(QString::fromUtf8(error.what()));
    }
}

void DocumentItem::savePicture()
{
    // One item goes into slides and notes before it goes to print.
    QStringList filters = filtersOf(pictureTypes());
    std::reverse(filters.begin(), filters.end());
    const QPointer<DocumentItem> stillThere(this);
    const QString name = askForFileToSave(viewWindow(), tr("Save Picture"), QString(), filters);
    if (name.isEmpty() || !stillThere)
        return;
    try {
        ItemPicture::save(*this, name);
        Q_EMIT reported(tr("%1 is written").arg(name));
    } catch (const std::exception &error) {
        QMessageBox::critical(viewWindow(), tr("%1 cannot be written").arg(QFileInfo(name).fileName()),
                              elided(QString::fromUtf8(error.what())));
    }
}

void DocumentItem::printPicture()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title());
    if (size().width() > size().height())
        printer.setPageOrientation(QPageLayout::Landscape);
    const QPointer<DocumentItem> stillThere(this);
    if (QPrintDialog dialog(&printer, viewWindow()); dialog.exec() != QDialog::Accepted || !stillThere)
        return;
    try {
        ItemPicture::print(*this, printer);
    } catch (const std::exception &error) {
        Q_EMIT reported(QString::fromUtf8(error.what()));
    }
}

void DocumentItem::addContextMenu(QMenu *menu)
{
    if (menu && !m_pluginMenus.contains(menu))
        m_pluginMenus.append(menu);
}

bool DocumentItem::isPageOutput(const QPainter *painter, const QWidget *widget)
{
    const QPaintEngine *engine = painter->paintEngine();
    return !widget || (engine && engine->type() != QPaintEngine::Raster && engine->type() != QPaintEngine::OpenGL2);
}

void DocumentItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *widget)
{
    const bool pageOutput = isPageOutput(painter, widget);
    painter->save();
    painter->fillRect(rect(), Qt::white);
    painter->save();
    painter->setClipRect(contentRect(), Qt::IntersectClip);
    paintContent(painter, contentRect(), pageOutput);
    painter->restore();

    const QRectF bar(rect().topLeft(), QSizeF(rect().width(), titleHeight));
    if (!pageOutput)
        painter->fillRect(bar, titleBarColor);
    painter->setPen(QPen(frameColor, 1));
    painter->drawLine(bar.bottomLeft(), bar.bottomRight());
    const bool marked = m_current && !pageOutput;
    const qreal width = marked ? frameWidth : 1;
    QPen framePen(marked ? currentFrameColor : frameColor, width);
    framePen.setJoinStyle(Qt::MiterJoin);
    painter->setPen(framePen);
    painter->drawRect(rect().adjusted(width / 2, width / 2, -width / 2, -width / 2));

    // Sizes in pixels: points would follow the resolution of the paint device and not the page's scale.
    QFont titleFont = font();
    titleFont.setPixelSize(12);
    titleFont.setBold(true);
    painter->setFont(titleFont);
    painter->setPen(titleColor);
    QRectF textArea = bar.adjusted(8, 0, -8, 0);
    if (!m_mode.isEmpty() && !pageOutput) {
        const QFontMetricsF metrics(titleFont);
        const QString mode = metrics.elidedText(m_mode, Qt::ElideMiddle, textArea.width() / 2);
        const double modeWidth = metrics.horizontalAdvance(mode) + 16;
        const QRectF box(bar.right() - modeWidth - 3, bar.top() + 3, modeWidth, bar.height() - 6);
        painter->fillRect(box, modeColor);
        painter->setPen(modeTextColor);
        painter->drawText(box, Qt::AlignCenter, mode);
        painter->setPen(titleColor);
        textArea.setRight(box.left() - 8);
    }
    const QString text = QFontMetricsF(titleFont).elidedText(title(), Qt::ElideMiddle, textArea.width());
    painter->drawText(textArea, Qt::AlignVCenter | Qt::AlignLeft, text);

    painter->restore();
}

void DocumentItem::paintContent(QPainter *, const QRectF &, bool)
{
}

void DocumentItem::paintPicture(QPainter *painter, const QRectF &area)
{
    paintContent(painter, area, true);
}

void DocumentItem::layoutContent(const QRectF &)
{
}

void DocumentItem::fillContextMenu(QMenu *)
{
}

void DocumentItem::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    QGraphicsWidget::resizeEvent(event);
    layOut();
}

void DocumentItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    QMenu *menu = contextMenu();
    if (menu->isEmpty()) {
        event->ignore();
        return;
    }
    // Not exec(): the item may be deleted by an action of its own menu.
    menu->popup(event->screenPos());
    event->accept();
}

bool DocumentItem::isTitleBar(const QPointF &pos) const
{
    return pos.y() < titleHeight;
}

void DocumentItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    QGraphicsWidget::mousePressEvent(event);
    m_moving = event->button() == Qt::LeftButton && isTitleBar(event->pos());
    m_geometryAtPress = geometry();
    event->setAccepted(event->button() == Qt::LeftButton);
}

void DocumentItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (m_moving)
        setPos(m_geometryAtPress.topLeft() + event->scenePos() - event->buttonDownScenePos(Qt::LeftButton));
}

void DocumentItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    QGraphicsWidget::mouseReleaseEvent(event);
    if (m_moving && geometry() != m_geometryAtPress)
        Q_EMIT geometryEdited(m_geometryAtPress, geometry());
    m_moving = false;
}

} // namespace Workbench

#include "moc_DocumentItem.cpp"
