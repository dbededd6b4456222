// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PeakSticks.h"

#include <algorithm>

namespace Workbench {

void PeakSticks::setPeaks(const QList<SpectrumPeak> &peaks)
{
    m_peaks = peaks;
    std::vector<double> heights;
    for (const SpectrumPeak &peak : peaks)
        heights.push_back(peak.height);
    setValueBounds(heights);
}

double PeakSticks::heightAt(double ppm) const
{
    double highest = 0;
    for (const SpectrumPeak &peak : m_peaks) {
        if (peak.f2 == ppm)
            highest = std::max(highest, peak.height);
    }
    return placed(highest);
}

QCPRange PeakSticks::getKeyRange(bool &found, QCP::SignDomain) const
{
    found = !m_peaks.isEmpty();
    if (!found)
        return {};
    const auto [lowest, highest] = std::minmax_element(
        m_peaks.cbegin(), m_peaks.cend(), [](const SpectrumPeak &a, const SpectrumPeak &b) { return a.f2 < b.f2; });
    // A stick on the frame would not be seen, and a single one spans no range at all.
    const double room = std::max(0.04 * (highest->f2 - lowest->f2), 0.5);
    return {lowest->f2 - room, highest->f2 + room};
}

void PeakSticks::draw(QCPPainter *painter)
{
    if (!keyAxis() || !valueAxis())
        return;
    applyDefaultAntialiasingHint(painter);
    QPen basePen = mPen;
    basePen.setWidthF(mPen.widthF() * 0.6);
    painter->setPen(basePen);
    const QCPRange visible = keyAxis()->range();
    painter->drawLine(coordsToPixels(visible.upper, placed(0)), coordsToPixels(visible.lower, placed(0)));
    QPen stickPen = mPen;
    stickPen.setCapStyle(Qt::FlatCap);
    painter->setPen(stickPen);
    for (const SpectrumPeak &peak : std::as_const(m_peaks)) {
        if (visible.contains(peak.f2))
            painter->drawLine(coordsToPixels(peak.f2, placed(0)), coordsToPixels(peak.f2, placed(peak.height)));
    }
}

void PeakSticks::drawLegendIcon(QCPPainter *painter, const QRectF &rect) const
{
    applyDefaultAntialiasingHint(painter);
    painter->setPen(mPen);
    const double bottom = rect.bottom() - 2;
    painter->drawLine(QLineF(rect.left() + 2, bottom, rect.right() - 2, bottom));
    for (double part : {0.3, 0.7}) {
        const double x = rect.left() + part * rect.width();
        painter->drawLine(QLineF(x, bottom, x, rect.top() + (part < 0.5 ? 2 : 6)));
    }
}

} // namespace Workbench

#include "moc_PeakSticks.cpp"
