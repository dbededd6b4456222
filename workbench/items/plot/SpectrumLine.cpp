// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/SpectrumLine.h"

#include "items/plot/Decimation.h"

#include <cmath>

namespace Workbench {

namespace {

// Points drawn at a stroke: the rasteriser's time grows with the square of a dense stroke's length.
constexpr qsizetype strokeLength = 48;

} // namespace

std::span<const double> SpectrumLine::values() const
{
    return m_data.isEmpty() ? std::span<const double>() : std::span<const double>(m_data.first());
}

void SpectrumLine::setTrace(const SpectrumAxis &axis, const QList<DoubleVector> &data)
{
    m_axis = axis;
    m_data = data;
    setValueBounds(values());
}

double SpectrumLine::heightAt(double ppm) const
{
    const double point = (ppm - m_axis.first) / m_axis.step;
    const qint64 last = qint64(values().size()) - 1;
    if (last < 0 || !std::isfinite(point))
        return placed(0);
    const auto at = [&](double p) { return values()[qint64(std::clamp(p, 0.0, double(last)))]; };
    const double height = std::max(at(std::floor(point)), at(std::ceil(point)));
    return placed(std::isfinite(height) ? height : 0.0);
}

QCPRange SpectrumLine::getKeyRange(bool &found, QCP::SignDomain) const
{
    found = !values().empty();
    return found ? QCPRange(m_axis.last(), m_axis.first) : QCPRange();
}

void SpectrumLine::draw(QCPPainter *painter)
{
    if (!keyAxis() || !valueAxis() || values().empty())
        return;
    const QCPRange visible = keyAxis()->range();
    // Clamped as doubles: a range far away must not overflow the integers.
    const auto point = [&](double ppm) {
        return std::clamp((ppm - m_axis.first) / m_axis.step, -1.0, double(values().size()));
    };
    const QRect area = keyAxis()->axisRect()->rect();
    const int pixels = keyAxis()->orientation() == Qt::Horizontal ? area.width() : area.height();
    const bool vectors = painter->modes().testFlag(QCPPainter::pmVectorized);
    const auto points = Decimation::envelope(values(), qint64(std::floor(point(visible.upper))),
                                             qint64(std::ceil(point(visible.lower))), vectors ? 4 * pixels : pixels);
    QPolygonF line;
    line.reserve(qsizetype(points.size()));
    for (const QPointF &p : points)
        line.append(coordsToPixels(m_axis.ppm(p.x()), placed(p.y())));
    applyDefaultAntialiasingHint(painter);
    QPen pen = mPen;
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    for (qsizetype i = 0; i + 1 < line.size(); i += strokeLength)
        painter->drawPolyline(line.constData() + i, int(std::min(strokeLength + 1, line.size() - i)));
}

void SpectrumLine::drawLegendIcon(QCPPainter *painter, const QRectF &rect) const
{
    applyDefaultAntialiasingHint(painter);
    painter->setPen(mPen);
    painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
}

} // namespace Workbench

#include "moc_SpectrumLine.cpp"
