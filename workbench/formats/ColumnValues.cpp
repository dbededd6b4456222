// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ColumnValues.h"

#include "formats/TextLayout.h"

#include <algorithm>
#include <cmath>

namespace Workbench::ColumnValues {

bool areWhole(const std::vector<double> &values)
{
    return std::all_of(values.begin(), values.end(), [](double v) { return v == std::floor(v); });
}

bool counts(const std::vector<double> &values, size_t least)
{
    if (values.size() < least || (values[0] != 0.0 && values[0] != 1.0))
        return false;
    for (size_t i = 0; i < values.size(); ++i) {
        if (values[i] != values[0] + double(i))
            return false;
    }
    return true;
}

double commonRatio(const std::vector<double> &numerator, const std::vector<double> &denominator)
{
    double xy = 0.0, xx = 0.0;
    for (size_t i = 0; i < numerator.size(); ++i) {
        xy += numerator[i] * denominator[i];
        xx += denominator[i] * denominator[i];
    }
    const double ratio = xx > 0.0 ? xy / xx : 0.0;
    const auto [low, high] = std::minmax_element(denominator.begin(), denominator.end());
    for (size_t i = 0; i < numerator.size(); ++i) {
        if (!(std::abs(numerator[i] - ratio * denominator[i]) <= 1e-3 * ratio * (*high - *low)))
            return 0.0;
    }
    return ratio;
}

bool looksEven(const std::vector<double> &positions)
{
    if (positions.size() < 3)
        return positions.size() == 2 && positions[0] != positions[1];
    const double step = (positions.back() - positions.front()) / double(positions.size() - 1);
    for (size_t i = 0; i < positions.size(); ++i) {
        // Rounded positions lie off by up to half of their last place, which may be several steps.
        if (std::abs(positions[i] - positions.front() - step * double(i)) > 3.0 * std::abs(step))
            return false;
    }
    return step != 0.0;
}

bool isGrid(const std::vector<double> &running, const std::vector<double> &staying)
{
    constexpr std::ptrdiff_t leastRow = 4;
    const auto change =
        std::find_if(staying.begin(), staying.end(), [&](double value) { return value != staying.front(); });
    const std::ptrdiff_t row = change - staying.begin();
    return running.size() >= fewestPoints && change != staying.end() && row >= leastRow
        && running[size_t(row)] == running.front() && looksEven({running.begin(), running.begin() + leastRow});
}

bool areAlike(const std::vector<double> &positions, const std::vector<double> &others)
{
    if (positions.size() < 2)
        return false;
    const auto [low, high] = std::minmax_element(positions.begin(), positions.end());
    const double most = 0.05 * (*high - *low);
    return std::equal(positions.begin(), positions.end(), others.begin(),
                      [&](double a, double b) { return std::abs(a - b) <= most; });
}

} // namespace Workbench::ColumnValues
