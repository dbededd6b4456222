// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

/// What the numbers of a column look like, where no name tells.
namespace Workbench::ColumnValues {

bool areWhole(const std::vector<double> &values);
/// 0, 1, 2… or 1, 2, 3…
bool counts(const std::vector<double> &values, size_t least = 3);
/// The other column is this one times a positive number: Hz and ppm of the same axis.
double commonRatio(const std::vector<double> &numerator, const std::vector<double> &denominator);
/// Whether the positions lie evenly, but for the rounding of their texts.
bool looksEven(const std::vector<double> &positions);
/// One of two coordinates stays while the other one runs, and the run begins again where the first one changes.
bool isGrid(const std::vector<double> &running, const std::vector<double> &staying);
/// The shifts of another form or of a calculation, no heights.
bool areAlike(const std::vector<double> &positions, const std::vector<double> &others);

} // namespace Workbench::ColumnValues
