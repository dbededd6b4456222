// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "data/Spectrum.h"

#include <QPointF>

namespace Workbench {
class NmrItem;
class WMainWindow;
} // namespace Workbench

/// A user's mouse over the plot of a spectrum in the window. Places are pixels of the plot.
class PlotUser {
public:
    PlotUser(Workbench::WMainWindow &window, Workbench::NmrItem *item) : m_window(window), m_item(item) { }

    /// The top of a peak, which must be in sight.
    QPointF topOf(const Workbench::SpectrumPeak &peak) const;
    void click(const QPointF &at, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) const;
    void move(const QPointF &to, Qt::MouseButtons held = {}, Qt::KeyboardModifiers modifiers = {}) const;
    void drag(const QPointF &from, const QPointF &to, Qt::KeyboardModifiers modifiers = {}) const;

private:
    QPoint inViewport(const QPointF &pixel) const;
    QPoint inWindow(const QPointF &pixel) const;

    Workbench::WMainWindow &m_window;
    Workbench::NmrItem *m_item;
};
