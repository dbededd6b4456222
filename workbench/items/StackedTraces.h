// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/PlotContent.h"

class PeakLabelBand;
class PlacedTrace;

/// One-dimensional spectra: a single one as it is, several one above the other, each scaled to its highest point. Peak
/// lists without a curve stand there as sticks, and so do, in a stack, the peaks that lie beyond their curve's end: a
/// spectrum whose reference was changed need not have been computed where its peaks are now.
class StackedTraces : public PlotContent {
public:
    /// `entries` holds at least one spectrum; all have one dimension or are peak lists.
    StackedTraces(QCustomPlot *plot, const QList<PlotEntry> &entries);

    void resetRanges() override;
    QList<QCPRange> ranges() const override;
    void setRanges(const QList<QCPRange> &ranges) override;
    bool fitLayout() override;

    PeakLabelBand *labelBand() const { return m_band; }

private:
    void addTraces(const QList<PlotEntry> &entries);
    PlacedTrace *makeTrace(const PlotEntry &entry) const;
    /// Null when no peak is beyond.
    PlacedTrace *makeSticksBeyond(const PlotEntry &entry, PlacedTrace *trace, double offset) const;

    QCPAxisRect *m_axisRect;
    QCPAxis *m_ppm;
    QCPAxis *m_intensity;
    PeakLabelBand *m_band;
    QList<PlacedTrace *> m_traces; ///< one per entry
};
