// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlotOptions.h"

#include <QPointF>

class QMouseEvent;
class QPainter;

namespace Workbench {

class NmrPlot;

/// What a user does to single spectra of a plot and marks in it by the mouse: with Ctrl a spectrum is dragged up or
/// down, with Ctrl and Shift it is made higher or lower; in the modes of integrals and distances a drag marks one.
class PlotMarker {
public:
    enum class Mode { None, Integral, Distance };

    explicit PlotMarker(NmrPlot *plot) : m_plot(plot) { }

    void setMode(Mode mode);
    Mode mode() const { return m_mode; }

    /// Each says whether the event was its own.
    bool press(const QMouseEvent *event);
    bool move(const QMouseEvent *event);
    bool release();
    void cancel() { m_drag = Drag::None; }

    /// What is being marked.
    void paint(QPainter *painter) const;

private:
    enum class Drag { None, Pressed, Moving };

    QPointF place(const QPointF &pixel) const;
    void moveTrace(const QPointF &pixel);
    void mark();

    NmrPlot *m_plot;
    Mode m_mode = Mode::None;
    Drag m_drag = Drag::None;
    bool m_marks = false; ///< the drag marks something, and does not move a spectrum
    bool m_scales = false;
    QUuid m_entry;
    TraceStyle m_before;
    double m_heightPerPixel = 0; ///< in units of a trace's offset
    QPointF m_pressed;
    QPointF m_last;
};

} // namespace Workbench
