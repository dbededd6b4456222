// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/ContourLines.h"

namespace Workbench {

ContourLines::ContourLines(QCPAxis *f2, QCPAxis *f1) : QCPAbstractPlottable(f2, f1)
{
    setSelectable(QCP::stNone);
}

double ContourLines::selectTest(const QPointF &, bool, QVariant *) const
{
    return -1;
}

QCPRange ContourLines::bounds(bool &found, bool vertical) const
{
    QRectF box;
    for (const Level &level : m_levels) {
        for (const QPolygonF &line : level.lines)
            box = box.isNull() ? line.boundingRect() : box.united(line.boundingRect());
    }
    found = !box.isNull();
    return vertical ? QCPRange(box.top(), box.bottom()) : QCPRange(box.left(), box.right());
}

QCPRange ContourLines::getKeyRange(bool &found, QCP::SignDomain) const
{
    return bounds(found, false);
}

QCPRange ContourLines::getValueRange(bool &found, QCP::SignDomain, const QCPRange &) const
{
    return bounds(found, true);
}

void ContourLines::draw(QCPPainter *painter)
{
    applyDefaultAntialiasingHint(painter);
    painter->setBrush(Qt::NoBrush);
    for (const Level &level : std::as_const(m_levels)) {
        painter->setPen(level.negative ? m_negativePen : mPen);
        for (QPolygonF line : level.lines) {
            for (QPointF &p : line)
                p = coordsToPixels(p.x(), p.y());
            painter->drawPolyline(line);
        }
    }
}

void ContourLines::drawLegendIcon(QCPPainter *painter, const QRectF &rect) const
{
    applyDefaultAntialiasingHint(painter);
    painter->setPen(mPen);
    painter->setBrush(Qt::NoBrush);
    painter->drawEllipse(rect.adjusted(4, 4, -4, -4));
}

} // namespace Workbench

#include "moc_ContourLines.cpp"
