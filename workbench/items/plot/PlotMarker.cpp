// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlotMarker.h"

#include "items/plot/NmrPlot.h"
#include "items/plot/PlotContent.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace Workbench {

namespace {

constexpr double pixelsPerDoubling = 60;
const QColor markingColor(0x5a, 0x2d, 0x82);

} // namespace

void PlotMarker::setMode(Mode mode)
{
    m_mode = mode;
    m_drag = Drag::None;
    m_plot->setCursor(mode == Mode::None ? Qt::ArrowCursor : Qt::CrossCursor);
}

bool PlotMarker::press(const QMouseEvent *event)
{
    PlotContent *content = m_plot->content();
    if (event->button() != Qt::LeftButton || !content)
        return false;
    m_pressed = m_last = event->position();
    if (m_mode != Mode::None) {
        m_marks = true;
        m_drag = Drag::Pressed;
        return true;
    }
    const bool takesHold =
        event->modifiers().testFlag(Qt::ControlModifier) && content->mainRect()->rect().contains(m_pressed.toPoint());
    m_entry = takesHold ? content->traceAt(m_pressed) : QUuid();
    if (m_entry.isNull())
        return false;
    m_marks = false;
    m_scales = event->modifiers().testFlag(Qt::ShiftModifier);
    m_before = m_plot->options().traces.value(m_entry);
    m_heightPerPixel = content->traceHeightPerPixel();
    m_drag = Drag::Pressed;
    return true;
}

bool PlotMarker::move(const QMouseEvent *event)
{
    if (m_drag == Drag::None || !m_plot->content())
        return false;
    if ((event->position() - m_pressed).manhattanLength() >= QApplication::startDragDistance())
        m_drag = Drag::Moving;
    m_last = event->position();
    if (m_drag == Drag::Moving && !m_marks)
        moveTrace(m_last);
    return true;
}

bool PlotMarker::release()
{
    const bool dragged = m_drag == Drag::Moving && m_plot->content();
    const bool mine = m_drag != Drag::None && (m_marks || dragged);
    m_drag = Drag::None;
    if (dragged && m_marks)
        mark();
    return mine;
}

void PlotMarker::moveTrace(const QPointF &pixel)
{
    const double up = m_pressed.y() - pixel.y();
    TraceStyle style = m_before;
    if (m_scales)
        style.scale = std::clamp(m_before.scale * std::pow(2.0, up / pixelsPerDoubling), 1e-4, 1e6);
    else
        style.offset = m_before.offset + up * m_heightPerPixel;
    PlotOptions options = m_plot->options();
    options.traces.insert(m_entry, style);
    m_plot->setOptions(options);
}

QPointF PlotMarker::place(const QPointF &pixel) const
{
    const PlotContent *content = m_plot->content();
    const QList<QCPAxis *> axes = content->ppmAxes();
    const QRect area = content->mainRect()->rect();
    const double x = std::clamp(pixel.x(), double(area.left()), double(area.right()));
    const double y = std::clamp(pixel.y(), double(area.top()), double(area.bottom()));
    return {axes[0]->pixelToCoord(x),
            axes.size() > 1 ? axes[1]->pixelToCoord(y) : (y - area.top()) / std::max(1, area.height())};
}

void PlotMarker::mark()
{
    PlotOptions options = m_plot->options();
    const QPointF from = place(m_pressed), to = place(m_last);
    const bool one = m_plot->content()->ppmAxes().size() == 1;
    if (m_mode == Mode::Integral && one) {
        options.integrals.append({m_plot->activeEntry(), std::max(from.x(), to.x()), std::min(from.x(), to.x())});
    } else if (m_mode == Mode::Distance) {
        options.distances.append({from, one ? QPointF(to.x(), from.y()) : to});
    }
    m_plot->setOptions(options);
}

void PlotMarker::paint(QPainter *painter) const
{
    const PlotContent *content = m_plot->content();
    if (m_drag != Drag::Moving || !m_marks || !content)
        return;
    const QRectF area(content->mainRect()->rect());
    painter->setPen(QPen(markingColor, 1.2));
    if (m_mode == Mode::Integral) {
        QColor band = markingColor;
        band.setAlpha(40);
        painter->setBrush(band);
        painter->drawRect(QRectF(QPointF(m_pressed.x(), area.top()), QPointF(m_last.x(), area.bottom())) & area);
    } else {
        const bool one = content->ppmAxes().size() == 1;
        painter->drawLine(m_pressed, one ? QPointF(m_last.x(), m_pressed.y()) : m_last);
    }
}

} // namespace Workbench
