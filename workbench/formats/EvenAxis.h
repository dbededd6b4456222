// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace Workbench {

/// The straight line through positions that were meant to lie evenly.
struct EvenAxis {
    double first = 0.0;
    double step = 0.0;
    bool rounded =
        false; ///< positions lie off the line by more than a quarter of a step, but not more than they are rounded
};

/// The most decimals and digits with which positions are written.
struct Precision {
    int decimals = 0;
    int digits = 0;

    /// A position as it stands in the file.
    void add(std::string_view text);
};

/// None when a position lies farther from the line than a quarter of a step or its rounding: one that is missing or
/// stands there twice shows.
std::optional<EvenAxis> evenAxis(std::span<const double> positions, const Precision &precision);

/// The point whose distance from the one before differs most from the usual one, for positions that are nearly even:
/// one step in ten may differ. 0 for others.
size_t oddPoint(std::span<const double> positions, double &usual);

} // namespace Workbench
