// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Spectrum.h"

#include "analysis/powder/Lattice.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace Workbench::Powder {

namespace {

/// An axis in Hz, ascending.
struct Hertz {
    double first, step;
    bool descending; ///< the caller's

    Hertz(const Axis &axis, double larmor) :
        first(std::min(axis.first, axis.last) * larmor),
        step(std::abs(axis.step()) * larmor),
        descending(axis.last < axis.first)
    {
    }
};

std::pair<double, double> limits(std::span<const Transition> transitions, const Conditions &conditions)
{
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (const Transition &transition : transitions) {
        const auto [first, last] = patternLimits(transition, conditions);
        low = std::min(low, first);
        high = std::max(high, last);
    }
    return {low, high};
}

double distance(std::span<const double> a, std::span<const double> b)
{
    double difference = 0, area = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        difference += std::abs(a[i] - b[i]);
        area += std::abs(b[i]);
    }
    return area > 0 ? difference / area : 0;
}

class SiteComputation {
public:
    SiteComputation(const Site &site, const Conditions &conditions, const LineShape &shape, const Axis &axis,
                    const Accuracy &accuracy, const Progress &progress) :
        m_conditions(conditions),
        m_accuracy(accuracy),
        m_progress(progress),
        m_transitions(transitions(site, conditions)),
        m_hertz(axis, conditions.larmor),
        m_width(std::max(fullWidth(shape), m_hertz.step)),
        m_limits(limits(m_transitions, conditions)),
        m_broadening(m_hertz.first, m_hertz.step, axis.points, shape, m_limits.first, m_limits.second)
    {
    }

    SiteCurve compute(double multiplicity) const
    {
        SiteCurve result;
        if (m_accuracy.directions > 0) {
            const size_t rows = rowsForDirections(m_accuracy.directions);
            m_broadening.apply(average(rows, 0, 1), result.values);
            result.directions = directionCount(rows);
        } else {
            converge(result);
        }
        const double scale = multiplicity * m_conditions.larmor;
        for (double &value : result.values)
            value *= scale;
        if (m_hertz.descending)
            std::reverse(result.values.begin(), result.values.end());
        return result;
    }

private:
    FrequencyGrid average(size_t rows, double done, double part) const
    {
        FrequencyGrid grid = m_broadening.grid();
        const double share = part / double(m_transitions.size());
        for (const Transition &transition : m_transitions) {
            const Progress progress
                = m_progress ? [&](double inner) { return m_progress(done + share * inner); } : Progress();
            addPowderPattern(grid, transition, m_conditions, rows, 1, progress);
            done += share;
        }
        return grid;
    }

    void converge(SiteCurve &result) const
    {
        size_t rows = leastRows;
        for (const Transition &transition : m_transitions)
            rows = std::max(rows, rowsForFirstTry(transition, m_conditions, m_width, m_accuracy.tolerance));
        FrequencyGrid coarse = average(std::min(rows, mostRows / 2), 0, 0.2);
        std::vector<double> coarseCurve;
        for (;;) {
            rows = std::min(2 * rows, mostRows);
            const FrequencyGrid fine = average(rows, 0.2, 0.8);
            m_broadening.apply(fine, result.values, &coarse, &coarseCurve);
            // The error falls with the square of the number of rows, so that of the finer curve is a third.
            result.estimatedError = distance(coarseCurve, result.values) / 3;
            result.directions = directionCount(rows);
            if (result.estimatedError <= m_accuracy.tolerance || rows == mostRows)
                return;
            coarse = fine;
        }
    }

    const Conditions &m_conditions;
    const Accuracy &m_accuracy;
    const Progress &m_progress;
    std::vector<Transition> m_transitions;
    Hertz m_hertz;
    double m_width;
    std::pair<double, double> m_limits;
    Broadening m_broadening;
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
        throw std::invalid_argument("The range is empty");
}

size_t rowsForDirections(double directions)
{
    return std::clamp(size_t(std::ceil(std::sqrt(std::max(directions - 1, 0.0) / 2))), leastRows, mostRows);
}

size_t rowsForFirstTry(const Transition &transition, const Conditions &conditions, double width, double tolerance)
{
    const bool spinning = conditions.rotation != Rotation::Static;
    const auto [low, high] = extremes(spinning ? spinningMean(transition.form) : transition.form);
    double rows = 4;
    if (conditions.rotation == Rotation::MagicAngle)
        rows = 0.5 * double(sidebandRange(transition.form, conditions.rate).steps);
    rows = std::max(rows, 0.5 * std::sqrt((high - low) / (width * tolerance * 100)) * 2);
    return size_t(std::clamp(rows, double(leastRows), double(mostRows) / 2));
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
    Spectrum result;
    result.axis = axis;
    result.sum.assign(axis.points, 0.0);
    try {
        for (size_t i = 0; i < sites.size(); ++i) {
            const Progress part = progress
                ? [&](double inner) { return progress((double(i) + inner) / double(sites.size())); }
                : Progress();
            const SiteComputation computation(sites[i], conditions, shape, axis, accuracy, part);
            result.sites.push_back(computation.compute(sites[i].multiplicity));
            result.converged = result.converged && result.sites.back().estimatedError <= accuracy.tolerance;
            for (size_t j = 0; j < axis.points; ++j)
                result.sum[j] += result.sites.back().values[j];
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
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (const Site &site : sites) {
        check(site, conditions);
        const auto [first, last] = limits(transitions(site, conditions), conditions);
        low = std::min(low, first);
        high = std::max(high, last);
    }
    // The wings of a Lorentzian fall below 0.1 % at 16 widths.
    const double margin = std::max({16.5 * shape.lorentzian + 2 * shape.gaussian, 0.02 * (high - low), 1.0});
    Axis axis;
    axis.first = (high + margin) / conditions.larmor;
    axis.last = (low - margin) / conditions.larmor;
    axis.points = 4096;
    Accuracy rough;
    rough.tolerance = 0.02;
    const auto preview = spectrum(sites, conditions, shape, axis, rough, progress);
    if (!preview)
        return std::nullopt;
    const double threshold = 1e-3 * *std::max_element(preview->sum.begin(), preview->sum.end());
    const auto above = [&](double value) { return value >= threshold; };
    const auto begin = preview->sum.begin(), end = preview->sum.end();
    const auto first = std::find_if(begin, end, above);
    const auto last = std::find_if(preview->sum.rbegin(), preview->sum.rend(), above).base();
    Axis found;
    found.points = points;
    found.first = axis.at(size_t(std::max<ptrdiff_t>(first - begin - 2, 0)));
    found.last = axis.at(size_t(std::min<ptrdiff_t>(last - begin + 1, ptrdiff_t(axis.points) - 1)));
    check(found);
    return found;
}

} // namespace Workbench::Powder
