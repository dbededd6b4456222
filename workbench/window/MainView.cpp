// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/MainView.h"

#include "host/MainScene.h"
#include "host/PageLayout.h"

#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Workbench {

MainView::MainView(MainScene *scene, QWidget *parent) : QGraphicsView(scene, parent)
{
    setObjectName(QStringLiteral("mainView"));
    setRenderHint(QPainter::Antialiasing);
    setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    setTransformationAnchor(AnchorUnderMouse);
    // Drops are for the window: files, wherever they fall.
    setAcceptDrops(false);
}

void MainView::zoom(double factor)
{
    constexpr double smallest = 0.1, largest = 10;
    const double scale = std::clamp(transform().m11() * factor, smallest, largest);
    setTransform(QTransform::fromScale(scale, scale));
}

void MainView::fitPageWidth()
{
    const double scale = viewport()->width() / (PageLayout::pageWidth + 2 * PageLayout::gap);
    // What is at the top stays there.
    const double top = mapToScene(QPoint(0, 0)).y();
    setTransform(QTransform::fromScale(scale, scale));
    verticalScrollBar()->setValue(qRound(top * scale));
}

void MainView::showEvent(QShowEvent *event)
{
    QGraphicsView::showEvent(event);
    // A document begins at its top.
    if (!std::exchange(m_wasShown, true))
        verticalScrollBar()->setValue(verticalScrollBar()->minimum());
}

void MainView::drawBackground(QPainter *painter, const QRectF &rect)
{
    painter->fillRect(rect, QColor(0x8a, 0x90, 0x98));
    painter->fillRect(rect & sceneRect(), Qt::white);
    painter->setPen(QPen(QColor(200, 200, 200), 0, Qt::DashLine));
    const double end = sceneRect().bottom() - 1;
    for (int i = 1; PageLayout::page(i).top() < end; ++i) {
        const double y = PageLayout::page(i).top();
        painter->drawLine(QPointF(0, y), QPointF(PageLayout::pageWidth, y));
    }
}

void MainView::wheelEvent(QWheelEvent *event)
{
    if (!(event->modifiers() & Qt::ControlModifier))
        return QGraphicsView::wheelEvent(event);
    // A notch of the wheel is 120 units.
    zoom(std::pow(1.2, event->angleDelta().y() / 120.0));
    event->accept();
}

} // namespace Workbench
