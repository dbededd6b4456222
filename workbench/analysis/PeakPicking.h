// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <vector>

namespace Workbench {

/// Peaks of measured spectra, found as maxima that stand out of the noise. Plain computation on evenly spaced points.
namespace PeakPicking {

struct Options {
    double noiseFactor = 6; ///< a peak rises so many standard deviations of the noise above its surroundings
    double leastHeight = 0.03; ///< of the highest point above the base line
    double leastDistance = 3; ///< points; of two peaks that are nearer the higher one stays
};

/// Base line and noise of the spectrum: mean and standard deviation in its quietest parts, each part's slope taken
/// off. The quietest quarter counts, so lines may fill most of the spectrum.
struct Noise {
    double baseline = 0;
    double deviation = 0;
};
Noise noise(std::span<const double> values);

struct Peak {
    double point = 0; ///< with its fraction
    double height = 0; ///< above the base line
};
/// In the order of the points. Position and height are those of the parabola through the maximum and its neighbours;
/// where equal points make a flat top the position is its middle. Only maxima count that lie on a saddle lower by the
/// threshold than themselves (their prominence), so that noise on a flank gives no peaks. Values that are not finite
/// are no peaks.
std::vector<Peak> pick(std::span<const double> values, const Options &options = {});

struct Peak2D {
    double column = 0;
    double row = 0;
    double height = 0;
};
/// Maxima among their eight neighbours, refined along rows and along columns, highest first. `values` holds whole rows.
std::vector<Peak2D> pick2D(std::span<const double> values, int columns, const Options &options = {});

/// The peak that a user points at: the highest maximum not farther than `reach` points away, refined as above. On a
/// flank without one, the top that it leads up to. None where there are no finite values.
std::optional<Peak> summit(std::span<const double> values, double point, double reach);
std::optional<Peak2D> summit2D(std::span<const double> values, int columns, double column, double row,
                               double reachColumns, double reachRows);

} // namespace PeakPicking

} // namespace Workbench
