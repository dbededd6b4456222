// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/ShiftPoint.h"

#include <optional>

namespace Workbench {

/// The line shift = reference + slope · shielding through sites of known compounds, by ordinary least squares of the
/// shifts.
struct ShiftCalibration {
    using Point = ShiftPoint;
    struct Interval {
        double shift = 0;
        double low = 0, high = 0;
    };

    int points = 0;
    double reference = 0;
    double slope = -1;
    double referenceError = 0; ///< standard errors
    double slopeError = 0;
    double covariance = 0; ///< of reference and slope
    double rmse = 0; ///< ppm, with n - 2 degrees of freedom
    double leaveOneOut = 0; ///< ppm: root mean square error of each point predicted by all others
    double meanShielding = 0;

    /// Throws std::runtime_error for fewer than three points, or for shieldings that are all the same.
    static ShiftCalibration of(const std::vector<Point> &points);

    /// By how much the line itself is unsure at a shielding: variance, ppm².
    double lineVariance(double shielding) const;
    /// Where a new site of this shielding is to be expected with the given probability (Student's t).
    Interval prediction(double shielding, double probability = 0.95) const;
};

} // namespace Workbench
