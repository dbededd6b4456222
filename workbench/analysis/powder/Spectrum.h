// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/Broadening.h"
#include "analysis/powder/Model.h"

#include <span>

namespace Workbench::Powder {

struct Accuracy {
    double tolerance = 1e-3; ///< integral of the absolute difference from the converged curve, as a part of the area
    double directions = 0; ///< how many are averaged over, up to 10^7; 0: as many as the tolerance takes
};

struct SiteCurve {
    std::vector<double> values; ///< per ppm; the area is the site's multiplicity, less what lies off the axis
    double directions = 0; ///< over how many the average went
    double estimatedError = 0; ///< as the tolerance; 0 where the number of directions was given
};

struct Spectrum {
    Axis axis;
    std::vector<double> sum;
    std::vector<SiteCurve> sites; ///< in the order given
    bool converged = true; ///< false when the most directions did not reach the tolerance for every site
};

inline constexpr size_t mostPoints = size_t(1) << 22;
inline constexpr double mostDirections = 1e7;

/// Throws std::invalid_argument with what is wrong about the input; nothing when the progress function asked to stop.
std::optional<Spectrum> spectrum(std::span<const Site> sites, const Conditions &conditions, const LineShape &shape,
                                 const Axis &axis, const Accuracy &accuracy = {}, const Progress &progress = {});

/// The axis, the larger ppm first, that holds everything above 0.1 % of the highest point.
std::optional<Axis> fittingAxis(std::span<const Site> sites, const Conditions &conditions, const LineShape &shape,
                                size_t points, const Progress &progress = {});

/// Throws std::invalid_argument where widths make no sense.
void check(const LineShape &shape);
void check(const Axis &axis);

/// How many rows of triangles give so many directions.
size_t rowsForDirections(double directions);

} // namespace Workbench::Powder
