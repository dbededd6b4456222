// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/Spectrum.h"

#include "items/CustomPlot.h"

/// One spectrum of a stack, as a plot shows it.
struct PlotEntry {
    QString name;
    Spectrum spectrum;
    QColor color;
    bool active = false;

    /// A mere peak list, without a curve.
    bool isPeakList() const { return spectrum.isEmpty(); }
};

/// What fills an NMR plot: it builds its axes and curves in the plot's empty layout. The plot is cleared before the
/// content goes.
class PlotContent {
public:
    virtual ~PlotContent() = default;

    /// All axes to the full range of the data.
    virtual void resetRanges() = 0;
    /// The ranges that a user can change, to keep them while the content is built anew.
    virtual QList<QCPRange> ranges() const = 0;
    virtual void setRanges(const QList<QCPRange> &) = 0;
    /// Whether the ranges are a user's and no longer the full ones.
    bool isZoomed() const { return ranges() != m_fullRanges; }
    /// Adjusts to the sizes that the layout gave; true when it has to be made again.
    virtual bool fitLayout() { return false; }
    /// Called before each drawing, when the sizes are final.
    virtual void prepare() { }

protected:
    /// The present ranges are the full ones.
    void noteFullRanges() { m_fullRanges = ranges(); }

private:
    QList<QCPRange> m_fullRanges;
};

/// Black on white in sizes of the page, whatever the desktop's palette and fonts.
namespace PlotStyle {

/// Sizes in pixels: points would follow the resolution of the paint device.
QFont font(int pixelSize, bool bold = false);
/// The colour of the n-th spectrum of a stack.
QColor entryColor(int n);
void setUpAxis(QCPAxis *axis, const QString &label);
/// As many numbers as the axis has room for.
void fitTicks(QCPAxis *axis);
/// A line only: no ticks, numbers and label.
void setUpPlainAxis(QCPAxis *axis);
/// The names of the plottables in a row, that of the emphasised one in bold.
QCPLegend *makeLegend(QCustomPlot *plot, const QList<QCPAbstractPlottable *> &plottables,
                      const QCPAbstractPlottable *emphasised);

} // namespace PlotStyle
