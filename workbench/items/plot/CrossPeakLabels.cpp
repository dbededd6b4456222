// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/CrossPeakLabels.h"

#include "items/plot/LabelPlacement.h"

#include <QHash>

#include <cmath>

namespace Workbench {

namespace {

constexpr double crossSize = 3; // pixels from the middle
constexpr double largestPeak = 20; // pixels from the middle that are kept clear of labels
constexpr double labelDistances[] = {2, 8, 14}; // pixels, the first one with room
constexpr int crossFontSize = 10;

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

QList<CrossPeakLabels::Place> CrossPeakLabels::places() const
{
    if (!m_f2 || !m_f1)
        return {};
    const QRectF area(m_f2->axisRect()->rect());
    QList<Place> places;
    QHash<QPoint, qsizetype> placeAt;
    // Equivalent sites differ in the last digits, on whichever side of a pixel's edge.
    const auto known = [&](const QPointF &at, const QColor &color) -> qsizetype {
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                const qsizetype i = placeAt.value(at.toPoint() + QPoint(dx, dy), -1);
                if (i >= 0 && QLineF(places[i].at, at).length() < SharedLabel::distance && places[i].color == color)
                    return i;
            }
        }
        return -1;
    };
    for (const auto &[peak, color] : m_marks) {
        const QPointF at(m_f2->coordToPixel(peak.f2), m_f1->coordToPixel(peak.f1));
        if (!area.contains(at))
            continue;
        qsizetype i = known(at, color);
        if (i < 0) {
            i = places.size();
            places.append({at, peakArea(peak, at), color, {}});
            placeAt.insert(at.toPoint(), i);
        }
        places[i].shared.add(peak.id, peak.label);
    }
    return places;
}

QList<CrossPeakLabels::PlacedLabel> CrossPeakLabels::placedLabels(const QList<Place> &places) const
{
    if (!m_labelsVisible || places.isEmpty())
        return {};
    const QRectF area(m_f2->axisRect()->rect());
    const QFontMetricsF metrics(PlotStyle::font(crossFontSize));
    std::vector<QRectF> taken;
    for (const Place &place : places)
        taken.push_back(place.area);
    QList<PlacedLabel> labels;
    for (const Place &place : places) {
        if (!place.shared.hasName())
            continue;
        const QSizeF size(metrics.horizontalAdvance(place.shared.text()) + 2, metrics.height());
        std::optional<QRectF> found;
        for (double distance : labelDistances) {
            if (!found)
                found = LabelPlacement::beside(place.area, size, distance, area, taken);
        }
        if (found) {
            taken.push_back(*found);
            labels.append({*found, place.shared});
        }
    }
    return labels;
}

QList<LabelArea> CrossPeakLabels::areas() const
{
    QList<LabelArea> areas;
    for (const PlacedLabel &label : placedLabels(places()))
        areas.append({label.area, label.shared.peaks(), label.shared.fullText()});
    return areas;
}

QStringList CrossPeakLabels::visibleTexts() const
{
    QStringList texts;
    for (const PlacedLabel &label : placedLabels(places()))
        texts.append(label.shared.text());
    return texts;
}

void CrossPeakLabels::draw(QCPPainter *painter)
{
    const QList<Place> drawn = places();
    painter->setAntialiasing(true);
    for (const Place &place : m_crossesVisible ? drawn : QList<Place>()) {
        const QPointF at = place.at;
        painter->setPen(QPen(place.color, 0.8));
        painter->drawLine(QLineF(at.x() - crossSize, at.y(), at.x() + crossSize, at.y()));
        painter->drawLine(QLineF(at.x(), at.y() - crossSize, at.x(), at.y() + crossSize));
    }
    painter->setFont(PlotStyle::font(crossFontSize));
    painter->setPen(Qt::black);
    for (const PlacedLabel &label : placedLabels(drawn))
        painter->drawText(label.area, Qt::AlignCenter, label.shared.text());
}

} // namespace Workbench

#include "moc_CrossPeakLabels.cpp"
