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

MainView::MainView(MainScene *scene, QWidget *parent) : QGraphicsView(scene, parent), m_scene(scene)
{
    setAccessibleName(tr("Workspace"));
    // A bar that comes and goes would change the width to be filled.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setFrameShape(NoFrame);
    scene->setLayout(MainScene::Layout::Workspace);
    connect(scene, &MainScene::itemsChanged, this, &MainView::placeHints);
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

bool MainView::isPagePreview() const
{
    return m_scene->layout() == MainScene::Layout::Pages;
}

void MainView::setPagePreview(bool preview)
{
    m_scene->setLayout(preview ? MainScene::Layout::Pages : MainScene::Layout::Workspace);
    fitWidth();
    fillWindow();
}

void MainView::fillWindow()
{
    // The workspace does not grow with the zoom, which is for a closer look.
    if (!isPagePreview())
        m_scene->setWorkspaceSize(QSizeF(viewport()->width(), maximumViewportSize().height()));
}

void MainView::setHints(QWidget *hints)
{
    m_hints = hints;
    m_hints->setParent(viewport());
    placeHints();
}

void MainView::placeHints()
{
    if (!m_hints)
        return;
    m_hints->setVisible(m_scene->documentItems().isEmpty());
    m_hints->move((viewport()->width() - m_hints->width()) / 2,
                  std::max(0, (viewport()->height() - m_hints->height()) / 2));
}

void MainView::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    fillWindow();
    placeHints();
}

void MainView::fitWidth()
{
    const double scale = isPagePreview() ? viewport()->width() / (PageLayout::pageWidth + 2 * PageLayout::gap) : 1.0;
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
    if (!isPagePreview()) {
        painter->fillRect(rect, palette().color(QPalette::Window));
        return;
    }
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

#include "moc_MainView.cpp"
