// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <vector>

namespace Workbench {

using PlanePoint = std::array<double, 2>; ///< F2, F1

/// Calculated cross peaks paired with measured ones, both coordinates at once.
struct CrossPeakPairing {
    struct Options {
        PlanePoint sigma{1, 1}; ///< ppm: the units in which differences of either dimension count
        bool oneReference = false; ///< both dimensions are of one nucleus
        int unmatched = 0; ///< measured peaks that may be left out where there are more than calculated ones
        std::array<std::optional<double>, 2> offset; ///< ppm, where it is known; else it is found
        std::vector<int> assigned; ///< the measured peak of each calculated one, -1 where none is known; empty: none is
    };

    std::vector<int> lineOf; ///< the measured peak of each calculated one; -1 where only assigned ones were measured
    std::vector<int> leftOut; ///< measured peaks
    PlanePoint offset{}; ///< measured less calculated, ppm, mean of all pairs

    /// Assigned pairs stand. Each other measured peak gets at least one of the other calculated ones, so that the sum
    /// of squares is least at the best offsets. Positions in ppm. Throws std::runtime_error when more were measured
    /// than calculated.
    static CrossPeakPairing of(const std::vector<PlanePoint> &calculated, const std::vector<PlanePoint> &measured,
                               const Options &options);
};

} // namespace Workbench
