// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPolygonF>

#include <span>
#include <vector>

namespace Workbench {

/// The lines of equal height in a matrix of values, by marching squares with linear interpolation: W. E. Lorensen and
/// H. E. Cline, Comput. Graph. 1987, 21, 163, doi:10.1145/37402.37422, in two dimensions. At saddles the mean of the
/// four corners decides.
namespace Contours {

/// Each line is joined as far as it goes; a closed one ends with its first point. Coordinates are columns (x) and rows
/// (y). Nothing for fewer than two rows or columns. All values must be finite.
std::vector<QPolygonF> lines(std::span<const double> values, int columns, int rows, double level);

/// Heights from `lowest` times the largest magnitude upwards, each `factor` times the one before, for positive and
/// (negated) for negative values, as far as the values reach; at most `count` of each sign.
std::vector<double> levels(std::span<const double> values, double lowest, double factor, int count);

} // namespace Contours

} // namespace Workbench
