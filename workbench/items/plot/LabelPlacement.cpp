// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/LabelPlacement.h"

#include <algorithm>

namespace Workbench {

namespace LabelPlacement {

std::vector<double> spread(const std::vector<double> &wanted, double spacing, double low, double high)
{
    // With i * spacing taken off, "at least spacing apart" reads "not falling": isotonic regression by pooling adjacent
    // violators.
    struct Pool {
        double sum;
        int count;
        double mean() const { return sum / count; }
    };
    std::vector<Pool> pools;
    for (size_t i = 0; i < wanted.size(); ++i) {
        pools.push_back({wanted[i] - double(i) * spacing, 1});
        while (pools.size() > 1 && pools[pools.size() - 2].mean() > pools.back().mean()) {
            const Pool last = pools.back();
            pools.pop_back();
            pools.back().sum += last.sum;
            pools.back().count += last.count;
        }
    }
    const double highest = std::max(low, high - spacing * (double(wanted.size()) - 1));
    std::vector<double> placed;
    placed.reserve(wanted.size());
    for (const Pool &pool : pools) {
        for (int k = 0; k < pool.count; ++k)
            placed.push_back(std::clamp(pool.mean(), low, highest) + double(placed.size()) * spacing);
    }
    return placed;
}

std::optional<QRectF> beside(const QRectF &what, const QSizeF &size, double distance, const QRectF &area,
                             const std::vector<QRectF> &taken)
{
    const QRectF around = what.adjusted(-distance, -distance, distance, distance);
    const double left = around.left() - size.width();
    const double above = around.top() - size.height();
    const double centreX = around.center().x() - size.width() / 2;
    const double centreY = around.center().y() - size.height() / 2;
    const QPointF corners[] = {
        {around.right(), centreY},
        {centreX, above},
        {centreX, around.bottom()},
        {left, centreY},
        {around.right(), above},
        {around.right(), around.bottom()},
        {left, above},
        {left, around.bottom()},
    };
    for (const QPointF &corner : corners) {
        const QRectF place(corner, size);
        const auto overlaps = [&](const QRectF &other) { return other.intersects(place); };
        if (area.contains(place) && std::none_of(taken.begin(), taken.end(), overlaps))
            return place;
    }
    return std::nullopt;
}

} // namespace LabelPlacement

} // namespace Workbench
