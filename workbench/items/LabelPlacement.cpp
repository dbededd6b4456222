// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/LabelPlacement.h"

#include <algorithm>

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

std::optional<QRectF> beside(const QPointF &point, const QSizeF &size, double distance, const QRectF &area,
                             const std::vector<QRectF> &taken)
{
    const double w = size.width();
    const double h = size.height();
    const double d = distance;
    const QPointF corners[] = {
        {d, -h - d}, {d, -h / 2},      {d, d},           {-w / 2, -h - d},
        {-w / 2, d}, {-w - d, -h - d}, {-w - d, -h / 2}, {-w - d, d},
    };
    for (const QPointF &corner : corners) {
        const QRectF place(point + corner, size);
        const auto overlaps = [&](const QRectF &other) { return other.intersects(place); };
        if (area.contains(place) && std::none_of(taken.begin(), taken.end(), overlaps))
            return place;
    }
    return std::nullopt;
}

} // namespace LabelPlacement
