// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PeakSticks.h"

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
    QCPRange keys;
    for (qsizetype i = 0; i < m_peaks.size(); ++i) {
        if (i == 0)
            keys = QCPRange(m_peaks[i].f2, m_peaks[i].f2);
        keys.expand(m_peaks[i].f2);
    }
    // A stick on the frame would not be seen, and a single one spans no range at all.
    const double room = std::max(0.04 * keys.size(), 0.5);
    return found ? QCPRange(keys.lower - room, keys.upper + room) : keys;
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
