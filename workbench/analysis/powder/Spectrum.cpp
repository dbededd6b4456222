// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Spectrum.h"

#include "analysis/powder/Lattice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <stdexcept>

namespace Workbench::Powder {

namespace {

/// An axis in Hz, ascending.
struct Hertz {
    double first, step;
    bool descending; ///< the caller's

    Hertz(const Axis &axis, double larmor)
        : first(std::min(axis.first, axis.last) * larmor),
          step(std::abs(axis.step()) * larmor),
          descending(axis.last < axis.first)
    {
    }
};

std::vector<PowderPattern> patterns(const Site &site, const Conditions &conditions)
{
    std::vector<PowderPattern> found;
    for (const Transition &transition : transitions(site, conditions))
        found.emplace_back(transition, conditions);
    return found;
}

/// Of all intensities, Hz.
std::pair<double, double> limits(const std::vector<std::vector<PowderPattern>> &patterns)
{
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (const auto &site : patterns) {
        for (const PowderPattern &pattern : site) {
            const auto [first, last] = pattern.limits();
            low = std::min(low, first);
            high = std::max(high, last);
        }
    }
    return {low, high};
}

double sumOfMagnitudes(std::span<const double> values)
{
    // Several sums: one would wait for each addition.
    std::array<double, 8> sums{};
    const size_t whole = values.size() - values.size() % sums.size();
    for (size_t i = 0; i < whole; i += sums.size()) {
        for (size_t k = 0; k < sums.size(); ++k)
            sums[k] += std::abs(values[i + k]);
    }
    for (size_t i = whole; i < values.size(); ++i)
        sums[0] += std::abs(values[i]);
    return std::accumulate(sums.begin(), sums.end(), 0.0);
}

double relative(std::span<const double> difference, std::span<const double> curve)
{
    const double area = sumOfMagnitudes(curve);
    return area > 0 ? sumOfMagnitudes(difference) / area : 0;
}

class SiteComputation {
public:
    SiteComputation(const std::vector<PowderPattern> &patterns, const Broadening &broadening, double width,
                    const Accuracy &accuracy, const Progress &progress)
        : m_patterns(patterns), m_broadening(broadening), m_width(width), m_accuracy(accuracy), m_progress(progress)
    {
    }

    SiteCurve compute() const
    {
        SiteCurve result;
        if (m_accuracy.directions > 0) {
            const size_t rows = rowsForDirections(m_accuracy.directions);
            m_broadening.apply(average(rows, 0, 1), result.values);
            result.directions = directionCount(rows);
        } else {
            converge(result);
        }
        return result;
    }

private:
    FrequencyGrid average(size_t rows, double done, double part) const
    {
        FrequencyGrid grid = m_broadening.grid();
        const double share = part / double(m_patterns.size());
        for (const PowderPattern &pattern : m_patterns) {
            const Progress progress =
                m_progress ? [&](double inner) { return m_progress(done + share * inner); } : Progress();
            pattern.addTo(grid, rows, progress);
            done += share;
        }
        return grid;
    }

    void converge(SiteCurve &result) const
    {
        size_t rows = leastRows;
        for (const PowderPattern &pattern : m_patterns)
            rows = std::max(rows, pattern.rowsForFirstTry(m_width, m_accuracy.tolerance));
        rows = std::min(rows, mostRows / 2);
        FrequencyGrid coarse = average(rows, 0, 0.2);
        std::vector<double> difference;
        double growth = 2;
        for (;;) {
            const size_t before = rows;
            rows = std::min(size_t(std::ceil(growth * double(rows))), mostRows);
            FrequencyGrid fine = average(rows, 0.2, 0.8);
            m_broadening.apply(fine, result.values, &coarse, &difference);
            // The error falls with the square of the number of rows.
            const double ratio = double(rows) / double(before);
            result.estimatedError = relative(difference, result.values) / (ratio * ratio - 1);
            result.directions = directionCount(rows);
            if (result.estimatedError <= m_accuracy.tolerance || rows == mostRows)
                return;
            growth = std::clamp(1.1 * std::sqrt(result.estimatedError / m_accuracy.tolerance), 1.4, 3.0);
            coarse = std::move(fine);
        }
    }

    const std::vector<PowderPattern> &m_patterns;
    const Broadening &m_broadening;
    double m_width;
    const Accuracy &m_accuracy;
    const Progress &m_progress;
};

} // namespace

void check(const LineShape &shape)
{
    for (double width : {shape.lorentzian, shape.gaussian}) {
        if (!(width >= 0 && width <= 1e9))
            throw std::invalid_argument("A line width must be between 0 and 1000000000 Hz");
    }
}

void check(const Axis &axis)
{
    if (!(axis.points >= 2 && axis.points <= mostPoints))
        throw std::invalid_argument("The number of points must be between 2 and " + std::to_string(mostPoints));
    if (!std::isfinite(axis.first) || !std::isfinite(axis.last) || std::abs(axis.first) > 1e9
        || std::abs(axis.last) > 1e9)
        throw std::invalid_argument("The range must lie between -1000000000 and 1000000000 ppm");
    const double scale = std::max(std::abs(axis.first), std::abs(axis.last));
    if (!(std::abs(axis.step()) > 1e-9 * scale))
        throw std::invalid_argument(axis.first == axis.last
                                        ? "The range is empty"
                                        : "The range is too narrow for so many points so far from 0 ppm");
}

size_t rowsForDirections(double directions)
{
    return std::clamp(size_t(std::ceil(std::sqrt(std::max(directions - 1, 0.0) / 2))), leastRows, mostRows);
}

std::optional<Spectrum> spectrum(std::span<const Site> sites, const Conditions &conditions, const LineShape &shape,
                                 const Axis &axis, const Accuracy &accuracy, const Progress &progress)
{
    check(conditions);
    check(shape);
    check(axis);
    if (!(accuracy.directions >= 0 && accuracy.directions <= mostDirections))
        throw std::invalid_argument("The number of orientations must be between 1 and 10000000");
    if (accuracy.directions == 0 && !(accuracy.tolerance > 0 && accuracy.tolerance < 1))
        throw std::invalid_argument("The tolerance must be between 0 and 1");
    for (const Site &site : sites)
        check(site, conditions);
    std::vector<std::vector<PowderPattern>> found;
    for (const Site &site : sites)
        found.push_back(patterns(site, conditions));
    Spectrum result;
    result.axis = axis;
    result.sum.assign(axis.points, 0.0);
    if (sites.empty())
        return result;
    const Hertz hertz(axis, conditions.larmor);
    const auto [low, high] = limits(found);
    const Broadening broadening(hertz.first, hertz.step, axis.points, shape, low, high);
    const double width = std::max(fullWidth(shape), hertz.step);
    try {
        for (size_t i = 0; i < sites.size(); ++i) {
            const Progress part = progress
                ? [&](double inner) { return progress((double(i) + inner) / double(sites.size())); }
                : Progress();
            SiteCurve curve = SiteComputation(found[i], broadening, width, accuracy, part).compute();
            const double scale = sites[i].multiplicity * conditions.larmor;
            for (double &value : curve.values)
                value *= scale;
            if (hertz.descending)
                std::reverse(curve.values.begin(), curve.values.end());
            for (size_t j = 0; j < axis.points; ++j)
                result.sum[j] += curve.values[j];
            result.converged = result.converged && curve.estimatedError <= accuracy.tolerance;
            result.sites.push_back(std::move(curve));
        }
    } catch (const Stopped &) {
        return std::nullopt;
    }
    return result;
}

std::optional<Axis> fittingAxis(std::span<const Site> sites, const Conditions &conditions, const LineShape &shape,
                                size_t points, const Progress &progress)
{
    check(conditions);
    check(shape);
    if (sites.empty())
        throw std::invalid_argument("There are no sites");
    std::vector<std::vector<PowderPattern>> found;
    for (const Site &site : sites) {
        check(site, conditions);
        found.push_back(patterns(site, conditions));
    }
    const auto [low, high] = limits(found);
    // The wings of a Lorentzian fall below 0.1 % at 16 widths, those of a pattern as wide as w / (2 pi x^2) does
    // against a thousandth of its mean height.
    const double wings = std::sqrt(160 * shape.lorentzian * (high - low));
    const double margin = std::max({16.5 * shape.lorentzian + 2 * shape.gaussian + wings, 0.02 * (high - low), 1.0});
    Axis axis;
    axis.first = (high + margin) / conditions.larmor;
    axis.last = (low - margin) / conditions.larmor;
    axis.points = 4096;
    Accuracy rough;
    rough.tolerance = 0.03; // wings and edges alone matter
    const auto preview = spectrum(sites, conditions, shape, axis, rough, progress);
    if (!preview)
        return std::nullopt;
    const double threshold = 1e-3 * *std::max_element(preview->sum.begin(), preview->sum.end());
    const auto above = [&](double value) { return value >= threshold; };
    const auto begin = preview->sum.begin(), end = preview->sum.end();
    const auto first = std::find_if(begin, end, above);
    const auto last = std::find_if(preview->sum.rbegin(), preview->sum.rend(), above).base();
    Axis fitting;
    fitting.points = points;
    fitting.first = axis.at(size_t(std::max<ptrdiff_t>(first - begin - 2, 0)));
    fitting.last = axis.at(size_t(std::min<ptrdiff_t>(last - begin + 1, ptrdiff_t(axis.points) - 1)));
    // Lines without any width need some room as well.
    const double centre = 0.5 * (fitting.first + fitting.last);
    const double least = std::max(2 / conditions.larmor, 4e-9 * std::abs(centre) * double(points));
    if (fitting.first - fitting.last < least) {
        fitting.first = centre + 0.5 * least;
        fitting.last = centre - 0.5 * least;
    }
    check(fitting);
    return fitting;
}

} // namespace Workbench::Powder
