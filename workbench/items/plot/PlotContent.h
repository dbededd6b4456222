// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlotOptions.h"
#include "data/Spectrum.h"

#include "items/plot/CustomPlot.h"

namespace Workbench {

/// One spectrum of a stack, as a plot shows it.
struct PlotEntry {
    QUuid id;
    QString name;
    Spectrum spectrum;
    QList<SpectrumAxis> axes; ///< of the spectrum; of a peak list those of its nuclei, without points
    QColor color;
    bool active = false;
    bool shown = false; ///< as NmrStack::shown() tells: one of them is

    /// A mere peak list, without a curve.
    bool isPeakList() const { return spectrum.isEmpty(); }
};

/// The one whose axes are those of the plot. There must be entries.
const PlotEntry &shownEntry(const QList<PlotEntry> &entries);

/// A peak where it is drawn.
struct PeakMark {
    QUuid entry;
    SpectrumPeak peak;
    QPointF top; ///< pixels: of the curve there, or of the cross
    double foot = 0.0; ///< pixels: the base line below the top; in two dimensions the cross's own height
};

/// A label as it is drawn, with the peaks that it stands for.
struct LabelArea {
    QRectF area; ///< pixels
    QList<QUuid> peaks;
    QString text; ///< in full, where the label had no room for all of it
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
    const QList<QCPRange> &fullRanges() const { return m_fullRanges; }

    /// Where the spectra are; its axes are the plot's xAxis (F2) and yAxis (F1, or the intensity in one dimension).
    virtual QCPAxisRect *mainRect() const = 0;
    /// The axes in ppm: F2, and F1 in two dimensions.
    virtual QList<QCPAxis *> ppmAxes() const = 0;
    /// Of the entry's peaks that are in sight. All entries' without an id.
    virtual QList<PeakMark> peakMarks(const QUuid &entry = {}) const = 0;
    /// Where a peak of the entry at this position would be drawn.
    virtual QPointF markPlace(const QUuid &entry, double f2, double f1) const = 0;
    /// The height on the scale of the entry's values at which the pixel lies.
    virtual double heightAt(const QUuid &entry, const QPointF &pixel) const = 0;
    virtual QList<LabelArea> labelAreas() const = 0;
    /// The spectrum that the user means who takes hold of the plot there; null for none that can be moved.
    virtual QUuid traceAt(const QPointF &) const { return {}; }
    /// What a pixel is in units of a trace's offset.
    virtual double traceHeightPerPixel() const { return 0.0; }
    /// Position and intensity of the active spectrum there; empty outside of the spectra.
    virtual QString readOut(const QPointF &pixel) const = 0;
    /// Adjusts to the sizes that the layout gave; true when it has to be made again.
    virtual bool fitLayout() { return false; }
    /// Called before each drawing, when the sizes are final.
    virtual void prepare() { }

    /// "7.52 ppm", with as many decimals as pixels of the axis can tell apart.
    static QString ppmText(const QCPAxis *axis, double ppm);

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
/// The colour of the n-th spectrum of a stack: those of M. Okabe and K. Ito (Color Universal Design, 2008) that show on
/// white, told apart by people who do not see red or green.
QColor entryColor(int n);
/// Their names, in the same order.
QStringList colorNames();
void setUpAxis(QCPAxis *axis, const QString &label);
/// Shifts in ppm, or frequencies in Hz where the spectrum has one.
void setUpShiftAxis(QCPAxis *axis, const SpectrumAxis &spectrum, bool hertz);
/// As many numbers as the axis has room for.
void fitTicks(QCPAxis *axis);
/// A line only: no ticks, numbers and label.
void setUpPlainAxis(QCPAxis *axis);
/// The names of the plottables in as many rows as it takes, that of the emphasised one in bold.
QCPLegend *makeLegend(QCustomPlot *plot, const QList<QCPAbstractPlottable *> &plottables,
                      const QCPAbstractPlottable *emphasised);

} // namespace PlotStyle

} // namespace Workbench
