// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlotMarks.h"

#include "analysis/Integration.h"
#include "data/Error.h"

#include <QPainterPath>

#include <cmath>
#include <optional>

namespace Workbench {

namespace {

constexpr int markFontSize = 11;
constexpr double bracketDepth = 5; // pixels
const QColor distanceColor(0x5a, 0x2d, 0x82);

/// The area over the region, in units of intensity and ppm; of a peak list the sum of its heights.
double areaOf(const Spectrum &spectrum, const IntegralMark &mark)
{
    if (!spectrum.isEmpty()) {
        const SpectrumAxis &axis = spectrum.axes.first();
        const auto point = [&](double ppm) { return (ppm - axis.first) / axis.step; };
        return integral(spectrum.real(), point(mark.from), point(mark.to)) * std::abs(axis.step);
    }
    double sum = 0;
    for (const SpectrumPeak &peak : spectrum.peaks)
        sum += peak.f2 <= mark.from && peak.f2 >= mark.to ? peak.height : 0;
    return sum;
}

} // namespace

PlotMarks::PlotMarks(QCustomPlot *plot, QCPAxis *f2, QCPAxis *f1, const QList<PlotEntry> &entries,
                     const QList<SpectrumAxis> &axes, const PlotOptions &options)
    : QCPAbstractItem(plot), m_f2(f2), m_f1(f1), m_distances(options.distances), m_axes(axes)
{
    setSelectable(false);
    setClipAxisRect(f2->axisRect());
    setClipToAxisRect(true);
    setLayer(QStringLiteral("overlay"));
    if (f1)
        return;
    const auto entryOf = [&](const IntegralMark &mark) {
        return std::find_if(entries.cbegin(), entries.cend(), [&](const PlotEntry &e) { return e.id == mark.entry; });
    };
    // Where the spectrum of the one that is set is not here, the first one that is here is 1.
    std::optional<double> unit;
    for (qsizetype i = 0; i < options.integrals.size(); ++i) {
        const IntegralMark &mark = options.integrals[i];
        const bool isSet = i == options.integralReference;
        if (const auto entry = entryOf(mark); entry != entries.cend() && (isSet || !unit))
            unit = areaOf(entry->spectrum, mark) / (isSet ? options.referenceValue : 1);
    }
    for (const IntegralMark &mark : options.integrals) {
        const auto entry = entryOf(mark);
        if (entry == entries.cend())
            continue;
        const double value = areaOf(entry->spectrum, mark) / *unit;
        m_regions.append({mark.from, mark.to,
                          std::isfinite(value) ? QString::number(value, 'f', 2) : QString(QChar(0x2013)),
                          entry->color});
    }
}

double PlotMarks::selectTest(const QPointF &, bool, QVariant *) const
{
    return -1;
}

QString PlotMarks::distanceText(const SpectrumAxis &axis, double ppm)
{
    const QString shift = Texts::tr("%1 ppm").arg(std::abs(ppm), 0, 'f', std::abs(ppm) < 10 ? 3 : 2);
    return axis.frequency > 0 ? Texts::tr("%1, %2 Hz").arg(shift).arg(std::abs(ppm) * axis.frequency, 0, 'f', 1)
                              : shift;
}

QStringList PlotMarks::integralTexts() const
{
    QStringList texts;
    for (const Region &region : m_regions)
        texts.append(region.text);
    return texts;
}

QStringList PlotMarks::distanceTexts() const
{
    QStringList texts;
    for (const DistanceMark &mark : m_distances) {
        const QPointF between = mark.to - mark.from;
        QString text = distanceText(m_axes.value(0), between.x());
        if (m_f1)
            text = QStringLiteral("F2 ") + text + QStringLiteral("; F1 ") + distanceText(m_axes.value(1), between.y());
        texts.append(text);
    }
    return texts;
}

QPointF PlotMarks::pixel(const QPointF &place) const
{
    const QRect area = m_f2->axisRect()->rect();
    return {m_f2->coordToPixel(place.x()),
            m_f1 ? m_f1->coordToPixel(place.y()) : area.top() + place.y() * area.height()};
}

void PlotMarks::drawText(QCPPainter *painter, const QPointF &centre, const QString &text, const QColor &color) const
{
    const QFont font = PlotStyle::font(markFontSize, true);
    QPainterPath path;
    path.addText(centre - QFontMetricsF(font).tightBoundingRect(text).center(), font, text);
    painter->strokePath(path, QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->fillPath(path, color);
}

void PlotMarks::draw(QCPPainter *painter)
{
    if (!m_f2)
        return;
    painter->setAntialiasing(true);
    const QRectF area(m_f2->axisRect()->rect());
    for (const Region &region : std::as_const(m_regions)) {
        const double left = m_f2->coordToPixel(region.from), right = m_f2->coordToPixel(region.to);
        QColor band = region.color;
        band.setAlpha(28);
        painter->fillRect(QRectF(QPointF(left, area.top()), QPointF(right, area.bottom())), band);
        const double y = area.top() + 20;
        painter->setPen(QPen(region.color, 1.2));
        painter->drawPolyline(QPolygonF{QPointF(left, y + bracketDepth), QPointF(left, y), QPointF(right, y),
                                        QPointF(right, y + bracketDepth)});
        drawText(painter, {(left + right) / 2, y - 9}, region.text, region.color.darker(120));
    }
    const QStringList texts = distanceTexts();
    for (qsizetype i = 0; i < m_distances.size(); ++i) {
        const QPointF from = pixel(m_distances[i].from), to = pixel(m_distances[i].to);
        painter->setPen(QPen(distanceColor, 1.2));
        painter->setBrush(distanceColor);
        painter->drawLine(from, to);
        for (const QPointF &end : {from, to})
            painter->drawEllipse(end, 2.5, 2.5);
        // Beside the line, inside the plot.
        const double half = QFontMetricsF(PlotStyle::font(markFontSize, true)).horizontalAdvance(texts[i]) / 2 + 4;
        QPointF centre = (from + to) / 2 - QPointF(0, 10);
        if (area.width() > 2 * half)
            centre.setX(std::clamp(centre.x(), area.left() + half, area.right() - half));
        drawText(painter, centre, texts[i], distanceColor);
    }
}

} // namespace Workbench

#include "moc_PlotMarks.cpp"
