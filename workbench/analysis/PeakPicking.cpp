// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/PeakPicking.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Workbench {

namespace PeakPicking {

namespace {

constexpr size_t partCount = 64;
constexpr size_t leastPart = 8; // points
constexpr size_t mostPeaks = 10000; // no spectrum has more; noise without a threshold may
constexpr double lowest = -std::numeric_limits<double>::infinity();

struct Vertex {
    double offset = 0; ///< points from the middle one
    double height = 0;
};

/// Of the parabola through three even points, the middle one the highest.
Vertex vertex(double left, double middle, double right)
{
    const double curvature = left - 2 * middle + right;
    if (!std::isfinite(curvature) || curvature >= 0)
        return {0, middle};
    const double offset = std::clamp(0.5 * (left - right) / curvature, -0.5, 0.5);
    return {offset, middle - 0.25 * (left - right) * offset};
}

/// Mean, and deviation from the straight line through the part.
Noise partNoise(std::span<const double> part)
{
    const double n = double(part.size());
    double sum = 0, moment = 0;
    for (size_t i = 0; i < part.size(); ++i) {
        sum += part[i];
        moment += part[i] * (double(i) - 0.5 * (n - 1));
    }
    const double mean = sum / n;
    const double slope = moment / (n * (n * n - 1) / 12);
    double squares = 0;
    for (size_t i = 0; i < part.size(); ++i) {
        const double rest = part[i] - mean - slope * (double(i) - 0.5 * (n - 1));
        squares += rest * rest;
    }
    return {mean, std::sqrt(squares / (n - 2))};
}

double valueAt(std::span<const double> values, size_t i)
{
    return i < values.size() && std::isfinite(values[i]) ? values[i] : lowest;
}

double threshold(std::span<const double> values, const Noise &noise, const Options &options)
{
    double highest = 0;
    for (double value : values) {
        if (std::isfinite(value))
            highest = std::max(highest, value - noise.baseline);
    }
    // A spectrum without any noise has maxima of rounding errors.
    return std::max({options.noiseFactor * noise.deviation, options.leastHeight * highest, 1e-9 * highest});
}

struct Maximum {
    size_t first = 0; ///< of a flat top
    size_t last = 0;
    double value = 0;
    double prominence = 0;
};

/// How far one must at least go down from each maximum before it goes higher. One pass per direction: a stack holds the
/// maxima that nothing higher has followed yet, each with the lowest point since. Of equal ones the last keeps its full
/// prominence, or the highest of all would have that of the noise on its top.
void measureProminence(std::span<const double> values, std::vector<Maximum> &maxima)
{
    std::vector<double> saddleLeft(maxima.size()), saddleRight(maxima.size());
    const auto sweep = [&](bool forward, std::vector<double> &saddles) {
        struct Open {
            double value;
            double lowestSince;
        };
        std::vector<Open> open;
        double low = std::numeric_limits<double>::infinity();
        size_t next = 0;
        for (size_t step = 0; step < values.size(); ++step) {
            const size_t i = forward ? step : values.size() - 1 - step;
            low = std::min(low, std::isfinite(values[i]) ? values[i] : low);
            const size_t m = forward ? next : maxima.size() - 1 - next;
            if (next == maxima.size() || i != (forward ? maxima[m].first : maxima[m].last))
                continue;
            ++next;
            const auto isPassed = [&](double value) {
                return value < maxima[m].value || (forward && value == maxima[m].value);
            };
            while (!open.empty() && isPassed(open.back().value)) {
                low = std::min(low, open.back().lowestSince);
                open.pop_back();
            }
            saddles[m] = low;
            open.push_back({maxima[m].value, low});
            low = maxima[m].value;
        }
    };
    sweep(true, saddleLeft);
    sweep(false, saddleRight);
    for (size_t m = 0; m < maxima.size(); ++m)
        maxima[m].prominence = maxima[m].value - std::max(saddleLeft[m], saddleRight[m]);
}

std::vector<Maximum> maximaOf(std::span<const double> values, double least)
{
    std::vector<Maximum> maxima;
    for (size_t i = 0; i < values.size(); ++i) {
        const double value = valueAt(values, i);
        if (!(value >= least) || !(i == 0 || valueAt(values, i - 1) < value))
            continue;
        size_t last = i;
        while (valueAt(values, last + 1) == value)
            ++last;
        // A line cut off at either end has no known top.
        if (i > 0 && last + 1 < values.size() && valueAt(values, last + 1) < value)
            maxima.push_back({i, last, value});
        i = last;
    }
    return maxima;
}

/// Of peaks nearer than the least distance the highest stays.
template <typename Peak, typename IsNear>
void thinOut(std::vector<Peak> &peaks, IsNear isNear)
{
    std::stable_sort(peaks.begin(), peaks.end(), [](const Peak &a, const Peak &b) { return a.height > b.height; });
    if (peaks.size() > mostPeaks)
        peaks.resize(mostPeaks);
    std::vector<Peak> kept;
    for (const Peak &peak : peaks) {
        if (std::none_of(kept.begin(), kept.end(), [&](const Peak &other) { return isNear(peak, other); }))
            kept.push_back(peak);
    }
    peaks = std::move(kept);
}

/// A matrix, or one row, by column and row.
struct Field {
    std::span<const double> values;
    int columns;
    int rows;

    double at(int column, int row) const
    {
        const bool inside = column >= 0 && column < columns && row >= 0 && row < rows;
        return inside ? valueAt(values, size_t(row) * size_t(columns) + size_t(column)) : lowest;
    }
};

struct Cell {
    int column;
    int row;

    bool operator==(const Cell &) const = default;
};

/// The highest of the cell and its neighbours.
Cell uphill(const Field &field, const Cell &cell)
{
    Cell best = cell;
    for (int dr = -1; dr <= 1; ++dr) {
        for (int dc = -1; dc <= 1; ++dc) {
            if (field.at(cell.column + dc, cell.row + dr) > field.at(best.column, best.row))
                best = {cell.column + dc, cell.row + dr};
        }
    }
    return best;
}

std::optional<Cell> summitCell(const Field &field, double column, double row, double reachColumns, double reachRows)
{
    const auto bound = [](double x, int size) { return int(std::clamp(std::round(x), 0.0, size - 1.0)); };
    if (field.columns < 1 || field.rows < 1 || !std::isfinite(column) || !std::isfinite(row))
        return std::nullopt;
    std::optional<Cell> best;
    const int lastRow = bound(row + reachRows, field.rows), lastColumn = bound(column + reachColumns, field.columns);
    for (int r = bound(row - reachRows, field.rows); r <= lastRow; ++r) {
        for (int c = bound(column - reachColumns, field.columns); c <= lastColumn; ++c) {
            const double value = field.at(c, r);
            if (value > (best ? field.at(best->column, best->row) : lowest) && uphill(field, {c, r}) == Cell{c, r})
                best = Cell{c, r};
        }
    }
    if (best)
        return best;
    Cell cell{bound(column, field.columns), bound(row, field.rows)};
    for (Cell next = uphill(field, cell); !(next == cell); next = uphill(field, cell))
        cell = next;
    return field.at(cell.column, cell.row) > lowest ? std::optional(cell) : std::nullopt;
}

} // namespace

Noise noise(std::span<const double> values)
{
    const size_t length = std::max(leastPart, values.size() / partCount);
    std::vector<Noise> parts;
    for (size_t first = 0; first + length <= values.size(); first += length) {
        const Noise part = partNoise(values.subspan(first, length));
        if (std::isfinite(part.deviation))
            parts.push_back(part);
    }
    if (parts.empty())
        return {};
    std::sort(parts.begin(), parts.end(), [](const Noise &a, const Noise &b) { return a.deviation < b.deviation; });
    parts.resize((parts.size() + 3) / 4);
    Noise result{0, parts[parts.size() / 2].deviation};
    for (const Noise &part : parts)
        result.baseline += part.baseline / double(parts.size());
    return result;
}

std::vector<Peak> pick(std::span<const double> values, const Options &options)
{
    const Noise ground = noise(values);
    const double least = threshold(values, ground, options);
    if (!(least > 0))
        return {};
    std::vector<Maximum> maxima = maximaOf(values, ground.baseline + least);
    measureProminence(values, maxima);
    // Overlapping lines share a high saddle: the noise alone decides whether it is one.
    const double leastProminence = std::max(options.noiseFactor * ground.deviation, 1e-6 * least);
    std::vector<Peak> peaks;
    for (const Maximum &maximum : maxima) {
        if (maximum.prominence < leastProminence)
            continue;
        Peak peak{0.5 * double(maximum.first + maximum.last), maximum.value - ground.baseline};
        if (maximum.first == maximum.last) {
            const Vertex top = vertex(values[maximum.first - 1], maximum.value, values[maximum.first + 1]);
            peak = {peak.point + top.offset, top.height - ground.baseline};
        }
        peaks.push_back(peak);
    }
    thinOut(peaks, [&](const Peak &a, const Peak &b) { return std::abs(a.point - b.point) < options.leastDistance; });
    std::sort(peaks.begin(), peaks.end(), [](const Peak &a, const Peak &b) { return a.point < b.point; });
    return peaks;
}

std::vector<Peak2D> pick2D(std::span<const double> values, int columns, const Options &options)
{
    const int rows = columns > 0 ? int(values.size() / size_t(columns)) : 0;
    const Noise ground = noise(values);
    const double least = threshold(values, ground, options);
    std::vector<Peak2D> peaks;
    if (!(least > 0))
        return peaks;
    const auto at = [&](int column, int row) { return valueAt(values, size_t(row) * columns + column); };
    for (int row = 1; row + 1 < rows; ++row) {
        for (int column = 1; column + 1 < columns; ++column) {
            const double value = at(column, row);
            if (!(value - ground.baseline >= least))
                continue;
            // Of equal neighbours the first one is the maximum.
            bool highest = true;
            for (int dr = -1; dr <= 1 && highest; ++dr) {
                for (int dc = -1; dc <= 1 && highest; ++dc) {
                    const bool before = dr < 0 || (dr == 0 && dc < 0);
                    const double other = at(column + dc, row + dr);
                    highest = (dr == 0 && dc == 0) || (before ? other < value : other <= value);
                }
            }
            if (!highest)
                continue;
            const Vertex along = vertex(at(column - 1, row), value, at(column + 1, row));
            const Vertex across = vertex(at(column, row - 1), value, at(column, row + 1));
            peaks.push_back(
                {column + along.offset, row + across.offset, along.height + across.height - value - ground.baseline});
        }
    }
    thinOut(peaks, [&](const Peak2D &a, const Peak2D &b) {
        return std::hypot(a.column - b.column, a.row - b.row) < options.leastDistance;
    });
    return peaks;
}

std::optional<Peak> summit(std::span<const double> values, double point, double reach)
{
    const Field field{values, int(values.size()), 1};
    const auto cell = summitCell(field, point, 0, reach, 0);
    if (!cell)
        return std::nullopt;
    const Vertex top = vertex(field.at(cell->column - 1, 0), field.at(cell->column, 0), field.at(cell->column + 1, 0));
    return Peak{cell->column + top.offset, top.height - noise(values).baseline};
}

std::optional<Peak2D> summit2D(std::span<const double> values, int columns, double column, double row,
                               double reachColumns, double reachRows)
{
    const Field field{values, columns, columns > 0 ? int(values.size() / size_t(columns)) : 0};
    const auto cell = summitCell(field, column, row, reachColumns, reachRows);
    if (!cell)
        return std::nullopt;
    const auto [c, r] = *cell;
    const double value = field.at(c, r);
    const Vertex along = vertex(field.at(c - 1, r), value, field.at(c + 1, r));
    const Vertex across = vertex(field.at(c, r - 1), value, field.at(c, r + 1));
    return Peak2D{c + along.offset, r + across.offset, along.height + across.height - value - noise(values).baseline};
}

} // namespace PeakPicking

} // namespace Workbench
