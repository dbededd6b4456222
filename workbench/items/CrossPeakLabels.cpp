// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CrossPeakLabels.h"

#include "items/LabelPlacement.h"
#include "items/PlotContent.h"

#include <cmath>

namespace {

constexpr double crossSize = 3; // pixels from the middle
constexpr double largestPeak = 20; // pixels from the middle that are kept clear of labels
constexpr double labelDistance = 2;
constexpr int longestLabel = 24;

} // namespace

CrossPeakLabels::CrossPeakLabels(QCustomPlot *plot, QCPAxis *f2, QCPAxis *f1)
    : QCPAbstractItem(plot), m_f2(f2), m_f1(f1)
{
    setSelectable(false);
    setClipAxisRect(f2->axisRect());
    setClipToAxisRect(true);
}

void CrossPeakLabels::addPeaks(const QList<SpectrumPeak> &peaks, const QColor &crossColor)
{
    for (const SpectrumPeak &peak : peaks)
        m_marks.append({peak, crossColor});
    std::stable_sort(m_marks.begin(), m_marks.end(),
                     [](const Mark &a, const Mark &b) { return std::abs(a.peak.height) > std::abs(b.peak.height); });
}

double CrossPeakLabels::selectTest(const QPointF &, bool, QVariant *) const
{
    return -1;
}

QRectF CrossPeakLabels::peakArea(const SpectrumPeak &peak, const QPointF &at) const
{
    const auto halfSize = [](QCPAxis *axis, double ppm, double width) {
        const double pixels = std::abs(axis->coordToPixel(ppm + width) - axis->coordToPixel(ppm));
        return std::isfinite(pixels) ? std::clamp(pixels, crossSize, largestPeak) : crossSize;
    };
    const QPointF half(halfSize(m_f2, peak.f2, peak.widthF2), halfSize(m_f1, peak.f1, peak.widthF1));
    return QRectF(at - half, at + half);
}

void CrossPeakLabels::draw(QCPPainter *painter)
{
    if (!m_f2 || !m_f1)
        return;
    const QRectF area(m_f2->axisRect()->rect());
    std::vector<QRectF> taken;
    QList<std::pair<QRectF, QString>> labels;
    painter->setAntialiasing(true);
    for (const auto &[peak, color] : std::as_const(m_marks)) {
        const QPointF at(m_f2->coordToPixel(peak.f2), m_f1->coordToPixel(peak.f1));
        if (!area.contains(at))
            continue;
        taken.push_back(peakArea(peak, at));
        if (!peak.label.isEmpty())
            labels.append({taken.back(), peak.label});
        painter->setPen(QPen(color, 0.8));
        painter->drawLine(QLineF(at.x() - crossSize, at.y(), at.x() + crossSize, at.y()));
        painter->drawLine(QLineF(at.x(), at.y() - crossSize, at.x(), at.y() + crossSize));
    }
    const QFont font = PlotStyle::font(10);
    const QFontMetricsF metrics(font);
    painter->setFont(font);
    for (const auto &[peak, label] : std::as_const(labels)) {
        const QString text = label.size() > longestLabel ? label.left(longestLabel - 1) + QChar(0x2026) : label;
        const QSizeF size(metrics.horizontalAdvance(text) + 2, metrics.height());
        if (const auto place = LabelPlacement::beside(peak, size, labelDistance, area, taken)) {
            taken.push_back(*place);
            painter->setPen(Qt::black);
            painter->drawText(*place, Qt::AlignCenter, text);
        }
    }
}
