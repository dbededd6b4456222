// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlotContent.h"

namespace Workbench {

class PeakLabelBand;
class PlacedTrace;
class PlotMarks;

/// One-dimensional spectra: a single one as it is, several one above the other or on one base line, each scaled to its
/// highest point and as the user wants. Peak lists without a curve stand there as sticks, and so do, in a stack, the
/// peaks that lie beyond their curve's end: a spectrum whose reference was changed need not have been computed where
/// its peaks are now.
class StackedTraces : public PlotContent {
public:
    /// `entries` holds at least one spectrum; all have one dimension or are peak lists.
    StackedTraces(QCustomPlot *plot, const QList<PlotEntry> &entries, const PlotOptions &options);

    void resetRanges() override;
    /// The shifts, and the intensities in units of their full range, which edits change.
    QList<QCPRange> ranges() const override;
    void setRanges(const QList<QCPRange> &ranges) override;
    bool fitLayout() override;

    QCPAxisRect *mainRect() const override { return m_axisRect; }
    QList<QCPAxis *> ppmAxes() const override { return {m_ppm}; }
    QList<PeakMark> peakMarks(const QUuid &entry = {}) const override;
    QPointF markPlace(const QUuid &entry, double f2, double f1) const override;
    double heightAt(const QUuid &entry, const QPointF &pixel) const override;
    QList<LabelArea> labelAreas() const override;
    QString readOut(const QPointF &pixel) const override;
    QUuid traceAt(const QPointF &pixel) const override;
    double traceHeightPerPixel() const override;

    /// Makes the spectra higher or lower, each about its own base line.
    void scaleIntensity(double factor);

    PeakLabelBand *labelBand() const { return m_band; }
    PlotMarks *marks() const { return m_marks; }

private:
    struct Trace {
        PlotEntry entry;
        PlacedTrace *line;
        PlacedTrace *beyond; ///< the peaks beyond the line's end; null when there are none
        PlacedTrace *sticks; ///< at the peaks on the line; null when they are not shown
    };

    void addTraces(const QList<PlotEntry> &entries, const PlotOptions &options);
    PlacedTrace *addSticks(const PlotEntry &entry, const PlacedTrace *line);
    void setZoom(double zoom);
    void placeLabels();
    const Trace *find(const QUuid &entry) const;
    double topAt(const Trace &trace, double ppm) const;
    PlacedTrace *makeTrace(const PlotEntry &entry) const;
    /// Null when no peak is beyond.
    PlacedTrace *makeSticksBeyond(const PlotEntry &entry, PlacedTrace *trace, double scale, double offset) const;

    QCPAxisRect *m_axisRect;
    QCPAxis *m_ppm;
    QCPAxis *m_intensity;
    PeakLabelBand *m_band;
    QList<Trace> m_traces; ///< one per entry
    QCPRange m_fullIntensity;
    bool m_labelled = false;
    double m_zoom = 1; ///< of the spectra of a stack, beyond their common height
    QCPRange m_values; ///< of all traces before the user moved any
    double m_unit = 1.0; ///< height of an unscaled trace
    PlotMarks *m_marks = nullptr;
};

} // namespace Workbench
