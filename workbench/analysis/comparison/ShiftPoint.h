// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

namespace Workbench {

/// A site of which both are known, ppm.
struct ShiftPoint {
    double shielding = 0; ///< calculated
    double shift = 0; ///< measured
};

/// What a straight line through points is made of: their means, and sums of products of the differences from these.
struct ShiftMoments {
    double shielding = 0, shift = 0;
    double squares = 0; ///< of shieldings
    double products = 0;

    static ShiftMoments of(const std::vector<ShiftPoint> &points)
    {
        const double n = double(points.size());
        ShiftMoments moments;
        for (const ShiftPoint &p : points) {
            moments.shielding += p.shielding / n;
            moments.shift += p.shift / n;
        }
        for (const ShiftPoint &p : points) {
            const double x = p.shielding - moments.shielding;
            moments.squares += x * x;
            moments.products += x * (p.shift - moments.shift);
        }
        return moments;
    }

    /// Of least squares; `fallback` for points of one shielding.
    double slope(double fallback) const { return squares > 0 ? products / squares : fallback; }
    double reference(double slope) const { return shift - slope * shielding; }
};

} // namespace Workbench
