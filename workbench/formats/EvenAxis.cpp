// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/EvenAxis.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Workbench {

namespace {

/// Half a unit in the last place of a number that was written with so many decimals, or so many digits in all.
double rounding(double value, const Precision &precision)
{
    const double fixed = std::pow(10.0, -precision.decimals);
    const double significant =
        value == 0.0 ? 0.0 : std::pow(10.0, std::floor(std::log10(std::abs(value))) + 1.0 - precision.digits);
    return 0.51 * std::max(fixed, significant);
}

/// Least squares.
EvenAxis lineThrough(std::span<const double> positions)
{
    const double n = double(positions.size()), middle = 0.5 * (n - 1.0);
    double sum = 0.0, moment = 0.0;
    for (size_t i = 0; i < positions.size(); ++i) {
        sum += positions[i];
        moment += positions[i] * (double(i) - middle);
    }
    const double step = moment / (n * (n * n - 1.0) / 12.0);
    return {sum / n - step * middle, step, true};
}

} // namespace

void Precision::add(std::string_view text)
{
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    const size_t point = mantissa.find_first_of(".,");
    const size_t first = std::min(mantissa.find_first_of("123456789"), mantissa.size());
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    digits = std::max(digits, int(std::count_if(mantissa.begin() + std::ptrdiff_t(first), mantissa.end(), isDigit)));
    // The decimals of a power of ten say nothing; its digits do.
    if (mantissa.size() != text.size())
        decimals = 300;
    else if (point != std::string_view::npos)
        decimals = std::max(decimals, int(mantissa.size() - point - 1));
}

std::optional<EvenAxis> evenAxis(std::span<const double> positions, const Precision &precision)
{
    if (positions.size() < 2)
        return {};
    const auto fits = [&](const EvenAxis &axis, bool roundingAllowed) {
        const double tolerance = 0.25 * std::abs(axis.step);
        for (size_t i = 0; i < positions.size(); ++i) {
            const double off = std::abs(positions[i] - (axis.first + axis.step * double(i)));
            // The line itself is off by little: with more, a point that is missing would pass for rounding.
            if (!(off <= tolerance)
                && !(roundingAllowed && off <= 0.05 * std::abs(axis.step) + rounding(positions[i], precision)))
                return false;
        }
        return axis.step != 0.0;
    };
    const EvenAxis direct{positions.front(), (positions.back() - positions.front()) / double(positions.size() - 1)};
    if (fits(direct, false))
        return direct;
    const EvenAxis fitted = lineThrough(positions);
    return fits(fitted, true) ? std::optional(fitted) : std::nullopt;
}

size_t oddPoint(std::span<const double> positions, double &usual)
{
    if (positions.size() < 3)
        return 0;
    std::vector<double> steps(positions.size() - 1);
    for (size_t i = 0; i < steps.size(); ++i)
        steps[i] = positions[i + 1] - positions[i];
    std::vector<double> sorted = steps;
    std::nth_element(sorted.begin(), sorted.begin() + std::ptrdiff_t(sorted.size() / 2), sorted.end());
    usual = sorted[sorted.size() / 2];
    const auto isOdd = [&](double step) { return !(std::abs(step - usual) <= 0.3 * std::abs(usual)); };
    const auto odd = std::count_if(steps.begin(), steps.end(), isOdd);
    if (usual == 0.0 || odd * 10 > std::ptrdiff_t(steps.size()))
        return 0;
    const auto worst = std::max_element(steps.begin(), steps.end(),
                                        [&](double a, double b) { return std::abs(a - usual) < std::abs(b - usual); });
    return size_t(1 + (worst - steps.begin()));
}

} // namespace Workbench
