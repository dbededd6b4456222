// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <vector>

namespace Workbench {

/// A site of which both are known, ppm.
struct ShiftPoint {
    double shielding = 0; ///< calculated
    double shift = 0; ///< measured
};

/// What a straight line through points is made of: their means, and sums of products of the differences from these.
struct ShiftMoments {
    double points = 0;
    double shielding = 0, shift = 0;
    double squares = 0; ///< of shieldings
    double products = 0;

    static ShiftMoments of(const std::vector<ShiftPoint> &points)
    {
        const double n = double(points.size());
        ShiftMoments moments;
        moments.points = n;
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

    /// Of least squares, with the reference where it is known; `fallback` for points that tell none.
    double slope(double fallback, std::optional<double> reference = std::nullopt) const
    {
        // About the point through which the line goes in any case: the mean, or no shielding.
        const double xx = squares + (reference ? points * shielding * shielding : 0);
        const double xy = products + (reference ? points * shielding * (shift - *reference) : 0);
        return xx > 0 ? xy / xx : fallback;
    }
    double reference(double slope) const { return shift - slope * shielding; }
};

} // namespace Workbench
