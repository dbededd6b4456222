// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlotNavigation.h"

#include "items/plot/NmrPlot.h"
#include "items/plot/PlotContent.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace Workbench {

namespace {

constexpr double wheelFactor = 1.25; // per notch
constexpr double unitsPerNotch = 120;
constexpr double smallestPart = 1e-6; // of the full range
constexpr double smallestMark = 4; // pixels

double coordinate(const QCPAxis *axis, const QPointF &pixel)
{
    return axis->pixelToCoord(axis->orientation() == Qt::Horizontal ? pixel.x() : pixel.y());
}

} // namespace

void PlotNavigation::press(const QMouseEvent *event)
{
    const bool left = event->button() == Qt::LeftButton;
    if (!left && event->button() != Qt::MiddleButton)
        return;
    m_moves = !left || event->modifiers().testFlag(Qt::ShiftModifier);
    m_drag = Drag::Pressed;
    m_pressed = m_last = event->position();
}

bool PlotNavigation::move(const QMouseEvent *event)
{
    if (m_drag == Drag::None || !m_plot->content())
        return false;
    const QPointF pos = event->position();
    if (m_drag == Drag::Pressed && (pos - m_pressed).manhattanLength() >= QApplication::startDragDistance())
        m_drag = m_moves ? Drag::Moving : Drag::Zooming;
    if (m_drag == Drag::Moving)
        pan(pos - m_last);
    if (m_drag != Drag::Pressed)
        m_last = pos;
    return m_drag != Drag::Pressed;
}

bool PlotNavigation::release()
{
    const Drag drag = std::exchange(m_drag, Drag::None);
    if (drag == Drag::Zooming && m_plot->content())
        zoomTo(marked());
    return drag == Drag::Zooming || drag == Drag::Moving;
}

void PlotNavigation::cancel()
{
    m_drag = Drag::None;
}

QRectF PlotNavigation::marked() const
{
    const PlotContent *content = m_plot->content();
    const QRectF area(content->mainRect()->rect());
    QRectF mark = QRectF(m_pressed, m_last).normalized();
    // A drag along one axis of a map means that axis.
    const bool one = content->ppmAxes().size() == 1;
    if (one || mark.height() < smallestMark) {
        mark.setTop(area.top());
        mark.setBottom(area.bottom());
    }
    if (!one && mark.width() < smallestMark) {
        mark.setLeft(area.left());
        mark.setRight(area.right());
    }
    return mark & area;
}

void PlotNavigation::setRange(QCPAxis *axis, double lower, double upper) const
{
    const PlotContent *content = m_plot->content();
    const QList<QCPAxis *> axes = content->ppmAxes();
    const qsizetype i = axes.indexOf(axis);
    if (i < 0 || !std::isfinite(lower) || !std::isfinite(upper))
        return;
    const QCPRange full = content->fullRanges().at(i);
    if (upper - lower < full.size() * smallestPart)
        return;
    axis->setRange(QCPRange(lower, upper).bounded(full.lower, full.upper));
}

void PlotNavigation::zoomTo(const QRectF &pixels) const
{
    if (pixels.width() < smallestMark || pixels.height() < smallestMark)
        return;
    for (QCPAxis *axis : m_plot->content()->ppmAxes()) {
        const double a = coordinate(axis, pixels.topLeft()), b = coordinate(axis, pixels.bottomRight());
        setRange(axis, std::min(a, b), std::max(a, b));
    }
}

void PlotNavigation::zoomAxis(QCPAxis *axis, double factor, double centre) const
{
    const QCPRange range = axis->range();
    setRange(axis, centre + (range.lower - centre) / factor, centre + (range.upper - centre) / factor);
}

void PlotNavigation::zoom(double factor)
{
    for (QCPAxis *axis : m_plot->content() ? m_plot->content()->ppmAxes() : QList<QCPAxis *>())
        zoomAxis(axis, factor, axis->range().center());
}

void PlotNavigation::pan(const QPointF &pixels) const
{
    for (QCPAxis *axis : m_plot->content()->ppmAxes()) {
        const double moved = coordinate(axis, {0, 0}) - coordinate(axis, pixels);
        setRange(axis, axis->range().lower + moved, axis->range().upper + moved);
    }
}

void PlotNavigation::pan(QCPAxis *axis, double part)
{
    const double moved = part * axis->range().size();
    setRange(axis, axis->range().lower + moved, axis->range().upper + moved);
}

bool PlotNavigation::wheel(const QWheelEvent *event)
{
    PlotContent *content = m_plot->content();
    // Some systems turn the wheel sideways while Shift is held.
    const QPoint delta = event->angleDelta();
    const double notches = (delta.y() != 0 ? delta.y() : delta.x()) / unitsPerNotch;
    if (!content || notches == 0)
        return false;
    const double factor = std::pow(wheelFactor, notches);
    const QPointF pos = event->position();
    const QRectF area(content->mainRect()->rect());
    const bool beside =
        pos.y() >= area.top() && pos.y() <= area.bottom() && (pos.x() < area.left() || pos.x() > area.right());
    const bool aboveOrBelow = !beside && !area.contains(pos);
    if (event->modifiers().testFlag(Qt::ShiftModifier) || (beside && content->ppmAxes().size() == 1)) {
        m_plot->scaleIntensity(factor);
        return true;
    }
    for (QCPAxis *axis : content->ppmAxes()) {
        const bool horizontal = axis->orientation() == Qt::Horizontal;
        if (!(beside && horizontal) && !(aboveOrBelow && !horizontal))
            zoomAxis(axis, factor, coordinate(axis, pos));
    }
    return true;
}

void PlotNavigation::paint(QPainter *painter) const
{
    if (m_drag != Drag::Zooming || !m_plot->content())
        return;
    painter->setPen(QPen(QColor(0x1f, 0x6f, 0xb5), 1));
    painter->setBrush(QColor(0x1f, 0x6f, 0xb5, 40));
    painter->drawRect(marked());
}

} // namespace Workbench
