// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlacedTrace.h"
#include "data/Spectrum.h"

namespace Workbench {

/// Peaks without a curve: a stick at each position, as high as the peak, on a base line.
class PeakSticks : public PlacedTrace {
    Q_OBJECT

public:
    using PlacedTrace::PlacedTrace;

    void setPeaks(const QList<SpectrumPeak> &peaks);

    /// The top of the highest stick there, the base line where there is none.
    double heightAt(double ppm) const override;
    QCPRange getKeyRange(bool &found, QCP::SignDomain domain = QCP::sdBoth) const override;

protected:
    bool isEmpty() const override { return m_peaks.isEmpty(); }
    void draw(QCPPainter *painter) override;
    void drawLegendIcon(QCPPainter *painter, const QRectF &rect) const override;

private:
    QList<SpectrumPeak> m_peaks;
};

} // namespace Workbench
