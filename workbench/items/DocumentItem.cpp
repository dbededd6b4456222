// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/DocumentItem.h"

#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneResizeEvent>
#include <QMenu>
#include <QPaintEngine>
#include <QPainter>
#include <QScopedValueRollback>

namespace {

constexpr qreal titleHeight = 22;
constexpr qreal cornerSize = 12;
const QSizeF smallestSize(120, 80);

// The page is white whatever the desktop's palette.
const QColor frameColor(0xb8, 0xbe, 0xc6);
const QColor selectedFrameColor(0x1f, 0x6f, 0xb5);
const QColor titleBarColor(0xf1, 0xf3, 0xf6);
const QColor titleColor(0x24, 0x2c, 0x36);

} // namespace

DocumentItem::DocumentItem(const QUuid &id, QGraphicsItem *parent)
    : QGraphicsWidget(parent), m_id(id.isNull() ? QUuid::createUuid() : id)
{
    setFlag(ItemIsSelectable);
    setFlag(ItemClipsChildrenToShape);
    setFocusPolicy(Qt::ClickFocus);
    setMinimumSize(smallestSize);
}

DocumentItem::~DocumentItem() = default;

void DocumentItem::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    update();
    Q_EMIT titleChanged(title);
}

QRectF DocumentItem::contentRect() const
{
    return rect().adjusted(1, titleHeight + 1, -1, -1);
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
    const QScopedValueRollback sending(m_sending, true);
    const QVariantMap map = message.toMap();
    for (const QPointer<DocumentItem> &item : QList<QPointer<DocumentItem>>(m_linked)) {
        if (item && !item->m_sending)
            item->receiveMessage(map);
    }
}

void DocumentItem::receiveMessage(const QVariantMap &)
{
}

QMenu *DocumentItem::contextMenu()
{
    if (!m_menu)
        m_menu = std::make_unique<QMenu>();
    m_menu->clear();
    fillContextMenu(m_menu.get());
    for (const auto &menu : std::as_const(m_pluginMenus)) {
        if (!menu)
            continue;
        if (!m_menu->isEmpty())
            m_menu->addSeparator();
        m_menu->addActions(menu->actions());
    }
    return m_menu.get();
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
    painter->setPen(QPen(isSelected() && !pageOutput ? selectedFrameColor : frameColor, 1));
    painter->drawLine(bar.bottomLeft(), bar.bottomRight());
    painter->drawRect(rect().adjusted(0.5, 0.5, -0.5, -0.5));

    // Sizes in pixels: points would follow the resolution of the paint device and not the page's scale.
    QFont titleFont = font();
    titleFont.setPixelSize(12);
    titleFont.setBold(true);
    painter->setFont(titleFont);
    painter->setPen(titleColor);
    const QRectF textArea = bar.adjusted(8, 0, -8, 0);
    const QString text = QFontMetricsF(titleFont).elidedText(m_title, Qt::ElideMiddle, textArea.width());
    painter->drawText(textArea, Qt::AlignVCenter | Qt::AlignLeft, text);

    if (!pageOutput && isSelected()) {
        painter->setPen(QPen(selectedFrameColor, 1));
        const QPointF corner = rect().bottomRight();
        for (qreal d : {4.0, 8.0})
            painter->drawLine(corner - QPointF(d, 1), corner - QPointF(1, d));
    }
    painter->restore();
}

void DocumentItem::paintContent(QPainter *, const QRectF &, bool)
{
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
    layoutContent(contentRect());
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

QRectF DocumentItem::resizeCorner() const
{
    return QRectF(rect().bottomRight() - QPointF(cornerSize, cornerSize), QSizeF(cornerSize, cornerSize));
}

bool DocumentItem::isFrameArea(const QPointF &pos) const
{
    return pos.y() < titleHeight || resizeCorner().contains(pos);
}

void DocumentItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    QGraphicsWidget::mousePressEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    m_geometryAtPress = geometry();
    if (resizeCorner().contains(event->pos()))
        m_drag = Drag::Resize;
    else if (isFrameArea(event->pos()))
        m_drag = Drag::Move;
    event->accept();
}

void DocumentItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    const QPointF moved = event->scenePos() - event->buttonDownScenePos(Qt::LeftButton);
    if (m_drag == Drag::Move) {
        setPos(m_geometryAtPress.topLeft() + moved);
    } else if (m_drag == Drag::Resize) {
        const QSizeF size = m_geometryAtPress.size() + QSizeF(moved.x(), moved.y());
        resize(size.expandedTo(smallestSize));
    }
}

void DocumentItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    QGraphicsWidget::mouseReleaseEvent(event);
    if (m_drag != Drag::None && geometry() != m_geometryAtPress)
        Q_EMIT geometryEdited(m_geometryAtPress, geometry());
    m_drag = Drag::None;
}
