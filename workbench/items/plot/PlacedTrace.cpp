// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlacedTrace.h"

#include <cmath>

namespace Workbench {

PlacedTrace::PlacedTrace(QCPAxis *ppmAxis, QCPAxis *intensityAxis)
    : QCPAbstractPlottable(ppmAxis, intensityAxis), m_bounds(0, 0)
{
    setSelectable(QCP::stNone);
}

void PlacedTrace::setPlacement(double scale, double offset)
{
    m_scale = scale;
    m_offset = offset;
}

void PlacedTrace::setValueBounds(std::span<const double> values)
{
    m_bounds = QCPRange(0, 0);
    for (double value : values) {
        if (std::isfinite(value))
            m_bounds.expand(value);
    }
}

double PlacedTrace::selectTest(const QPointF &, bool, QVariant *) const
{
    return -1;
}

QCPRange PlacedTrace::getValueRange(bool &found, QCP::SignDomain, const QCPRange &) const
{
    found = !isEmpty();
    return QCPRange(placed(m_bounds.lower), placed(m_bounds.upper));
}

} // namespace Workbench

#include "moc_PlacedTrace.cpp"
