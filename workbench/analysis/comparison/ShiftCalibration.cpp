// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/ShiftCalibration.h"

#include "analysis/powder/GslErrors.h"
#include "data/Error.h"

#include <gsl/gsl_cdf.h>

#include <algorithm>
#include <cmath>

namespace Workbench {
ShiftCalibration ShiftCalibration::of(const std::vector<Point> &points)
{
    if (points.size() < 3)
        fail(Texts::tr("a calibration takes at least three sites, and there are %1").arg(points.size()));
    const double n = double(points.size());
    const ShiftMoments moments = ShiftMoments::of(points);
    const double meanX = moments.shielding, xx = moments.squares;
    if (!(xx > 1e-12 * (1 + meanX * meanX)))
        fail(Texts::tr("all shieldings are the same: they tell no slope"));

    ShiftCalibration result;
    result.points = int(points.size());
    result.slope = moments.slope(-1.0);
    result.reference = moments.reference(result.slope);
    result.meanShielding = meanX;
    double squares = 0, leftOut = 0;
    for (const Point &p : points) {
        const double residual = p.shift - result.reference - result.slope * p.shielding;
        const double leverage = 1 / n + (p.shielding - meanX) * (p.shielding - meanX) / xx;
        squares += residual * residual;
        // Without this point the line would miss it by so much.
        const double missed = residual / std::max(1 - leverage, 1e-12);
        leftOut += missed * missed / n;
    }
    const double variance = squares / (n - 2);
    result.rmse = std::sqrt(variance);
    result.leaveOneOut = std::sqrt(leftOut);
    result.slopeError = std::sqrt(variance / xx);
    result.referenceError = std::sqrt(variance * (1 / n + meanX * meanX / xx));
    result.covariance = -meanX * variance / xx;
    return result;
}

double ShiftCalibration::lineVariance(double shielding) const
{
    // Written about the mean shielding, where nothing cancels.
    const double distance = shielding - meanShielding;
    return rmse * rmse / points + distance * distance * slopeError * slopeError;
}

ShiftCalibration::Interval ShiftCalibration::prediction(double shielding, double probability) const
{
    returnGslErrors();
    const double t = gsl_cdf_tdist_Pinv((1 + probability) / 2, points - 2);
    const double half = t * std::sqrt(rmse * rmse + lineVariance(shielding));
    const double shift = reference + slope * shielding;
    return {shift, shift - half, shift + half};
}

} // namespace Workbench
