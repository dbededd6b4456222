// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/PlotContent.h"

class PeakLabelBand;
class SpectrumLine;

/// One-dimensional spectra: a single one as it is, several one above the other, each scaled to its highest point.
class StackedTraces : public PlotContent {
public:
    /// `entries` holds at least one spectrum; all have one dimension.
    StackedTraces(QCustomPlot *plot, const QList<PlotEntry> &entries);

    void resetRanges() override;
    QList<QCPRange> ranges() const override;
    void setRanges(const QList<QCPRange> &ranges) override;
    bool fitLayout() override;

    PeakLabelBand *labelBand() const { return m_band; }

private:
    void addTraces(const QList<PlotEntry> &entries);

    QCPAxisRect *m_axisRect;
    QCPAxis *m_ppm;
    QCPAxis *m_intensity;
    PeakLabelBand *m_band;
    QList<SpectrumLine *> m_lines;
};
