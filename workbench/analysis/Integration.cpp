// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/Integration.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

double integral(std::span<const double> values, double from, double to)
{
    if (values.size() < 2 || !std::isfinite(from) || !std::isfinite(to))
        return 0;
    const double last = double(values.size()) - 1;
    const double begin = std::clamp(std::min(from, to), 0.0, last), end = std::clamp(std::max(from, to), 0.0, last);
    const auto value = [&](size_t i) { return std::isfinite(values[i]) ? values[i] : 0.0; };
    const auto at = [&](double point) {
        const size_t i = std::min(size_t(point), values.size() - 2);
        const double part = point - double(i);
        return value(i) * (1 - part) + value(i + 1) * part;
    };
    double area = 0;
    for (double point = begin; point < end;) {
        const double next = std::min(std::floor(point) + 1, end);
        area += 0.5 * (at(point) + at(next)) * (next - point);
        point = next;
    }
    return area;
}

} // namespace Workbench
