// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>

class QCPAxis;
class QMouseEvent;
class QPainter;
class QWheelEvent;

namespace Workbench {

class NmrPlot;
class PlotContent;

/// Zooming and moving over a plot by the mouse: the wheel zooms at the cursor (over an axis that axis alone), with
/// Shift it scales the intensity; dragging marks what is to be seen, with Shift or the middle button it moves the
/// spectrum. Nothing leads beyond the full range.
class PlotNavigation {
public:
    explicit PlotNavigation(NmrPlot *plot) : m_plot(plot) { }

    void press(const QMouseEvent *event);
    /// True when the plot has to be painted.
    bool move(const QMouseEvent *event);
    /// Ends the drag. True when there was one, and not a mere click.
    bool release();
    void cancel();
    bool wheel(const QWheelEvent *event);

    /// All ppm axes about their middle.
    void zoom(double factor);
    /// Along an axis by a part of its range, to higher ppm for positive parts.
    void pan(QCPAxis *axis, double part);

    /// What is being marked.
    void paint(QPainter *painter) const;

private:
    enum class Drag { None, Pressed, Zooming, Moving };

    QRectF marked() const;
    void zoomTo(const QRectF &pixels) const;
    void zoomAxis(QCPAxis *axis, double factor, double centre) const;
    void setRange(QCPAxis *axis, double lower, double upper) const;
    void pan(const QPointF &pixels) const;

    NmrPlot *m_plot;
    Drag m_drag = Drag::None;
    bool m_moves = false; ///< a drag that is coming would move
    QPointF m_pressed;
    QPointF m_last;
};

} // namespace Workbench
