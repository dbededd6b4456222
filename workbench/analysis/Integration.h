// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace Workbench {

/// The area under a trace between two places, in either order, given in points with their fractions; the trace is
/// straight between its points and ends at the first and the last one. Values that are not finite count as 0.
double integral(std::span<const double> values, double from, double to);

} // namespace Workbench
