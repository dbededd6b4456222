// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/PageLayout.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace PageLayout {

int pageOf(double y)
{
    return std::max(0, static_cast<int>(std::floor(y / pageHeight)));
}

QRectF page(int index)
{
    return QRectF(0, index * pageHeight, pageWidth, pageHeight);
}

QRectF rowBelow(const QRectF &used, double height)
{
    if (used.isEmpty())
        return QRectF(margin, margin, contentWidth, height);
    const int index = pageOf(used.bottom());
    double top = std::max(used.bottom() + gap, index * pageHeight + margin);
    if (top + height > (index + 1) * pageHeight - margin)
        top = (index + 1) * pageHeight + margin;
    return QRectF(margin, top, contentWidth, height);
}

QRectF moleculePart(const QRectF &row, double share)
{
    return QRectF(row.left(), row.top(), row.width() * share, row.height());
}

double moleculeShareBeside(double tableWidth)
{
    return std::clamp(1 - (tableWidth + gap) / contentWidth, leastMoleculeShare, moleculeShare);
}

QRectF tablePart(const QRectF &row, double share)
{
    return row.adjusted(row.width() * share + gap, 0, 0, 0);
}

int pageCount(const QRectF &used)
{
    return used.isEmpty() ? 1 : pageOf(used.bottom() - 1e-6) + 1;
}

} // namespace PageLayout

} // namespace Workbench
