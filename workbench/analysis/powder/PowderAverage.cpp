// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/PowderAverage.h"

#include "analysis/powder/Kernels.h"
#include "analysis/powder/Lattice.h"
#include "analysis/powder/Trigonometry.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>
#include <tuple>

namespace Workbench::Powder {

namespace {

constexpr size_t mostSteps = 16384;
constexpr size_t mostCells = size_t(1) << 24; // of bins and sidebands: 128 MB

/// The form seen from an octant, where coordinates are positive.
FrequencyForm mirrored(const FrequencyForm &form, const Octant &octant)
{
    FrequencyForm result = form;
    for (Form *f : {&result.quadratic, &result.coupling}) {
        (*f)[3] *= octant.x * octant.y;
        (*f)[4] *= octant.x;
        (*f)[5] *= octant.y;
    }
    return result;
}

/// The frequency in bins instead of Hz.
FrequencyForm scaled(const FrequencyForm &form, double start, double step)
{
    FrequencyForm result = form;
    result.constant = (form.constant - start) / step;
    result.quartic /= step;
    for (double &element : result.quadratic)
        element /= step;
    return result;
}

/// Bins that a triangle in the last one reaches beyond it.
constexpr size_t overhang = 3;

/// From second differences to what they are of. `stride` numbers stand in each bin.
void sumTwice(std::vector<double> &bins, size_t count, size_t stride)
{
    if (stride == 1) {
        double slope = 0, height = 0;
        for (size_t b = 0; b < count; ++b)
            bins[b] = height += slope += bins[b];
        return;
    }
    std::vector<double> slope(stride), height(stride);
    for (size_t b = 0; b < count; ++b) {
        double *row = bins.data() + b * stride;
        for (size_t k = 0; k < stride; ++k) {
            slope[k] += row[k];
            height[k] += slope[k];
            row[k] = height[k];
        }
    }
}

/// Bins that hold integrals over hats become values at their places, to the fourth order. `stride` numbers stand in
/// each bin.
void sharpen(std::vector<double> &bins, size_t count, size_t stride)
{
    constexpr double part = 1.0 / 12;
    if (stride == 1) {
        double before = 0;
        for (size_t b = 0; b < count; ++b) {
            const double here = bins[b], next = b + 1 < count ? bins[b + 1] : 0;
            bins[b] = here - part * (before - 2 * here + next);
            before = here;
        }
        return;
    }
    std::vector<double> before(stride, 0.0);
    for (size_t b = 0; b < count; ++b) {
        for (size_t k = 0; k < stride; ++k) {
            const double here = bins[b * stride + k];
            const double next = b + 1 < count ? bins[(b + 1) * stride + k] : 0;
            bins[b * stride + k] = here - part * (before[k] - 2 * here + next);
            before[k] = here;
        }
    }
}

/// Bins from the lowest to the highest value of a function on the sphere. One bin alone when the function is constant.
struct Bins {
    double start = 0; ///< place of the first
    double step = 1;
    size_t count = 1;
    size_t points = 0; ///< of the grid in a bin; 0: no whole number
    bool isLine = false;
    bool isWhole = true; ///< nothing lies beyond the first or the last
};

Bins binsFor(double low, double high, const FrequencyGrid &grid, size_t sidebands)
{
    const double scale = std::max(std::abs(low), std::abs(high));
    Bins bins;
    if (!(high - low > 1e-6 * grid.step() && high - low > 1e-12 * scale)) {
        bins.start = 0.5 * (low + high);
        bins.isLine = true;
        return bins;
    }
    // Narrow patterns are resolved as well as wide ones.
    bins.step = double(grid.coarseness()) * grid.step();
    bins.points = grid.coarseness();
    if (bins.step > (high - low) / 16) {
        bins.step = (high - low) / 16;
        bins.points = 0;
    }
    if (sidebands == 1) {
        const double margin = 4 * bins.step;
        bins.isWhole = low >= grid.first() - margin && high <= grid.last() + margin;
        low = std::max(low, grid.first() - margin);
        high = std::max(low + bins.step, std::min(high, grid.last() + margin));
    }
    if (const double least = (high - low) * double(sidebands) / double(mostCells); bins.step < least) {
        bins.step = least;
        bins.points = 0;
    }
    bins.start = low - 2 * bins.step;
    bins.count = size_t((high - low) / bins.step) + 5;
    return bins;
}

/// By how much the mean of what is in the bins falls short of the right one, Hz. Flat triangles move the mean a
/// little, and the whole pattern is put back by that.
double shiftToMean(const Bins &bins, const std::vector<double> &values, size_t stride, double mean)
{
    if (!bins.isWhole)
        return 0;
    double area = 0, moment = 0;
    for (size_t b = 0; b < bins.count; ++b) {
        const auto row = values.begin() + ptrdiff_t(b * stride);
        const double sum = std::accumulate(row, row + ptrdiff_t(stride), 0.0);
        area += sum;
        moment += sum * double(b);
    }
    return area > 0 ? mean - (bins.start + moment / area * bins.step) : 0;
}

/// Lines at the places of bins.
void addBins(FrequencyGrid &grid, const Bins &bins, double start, const double *values, size_t stride, double weight)
{
    if (bins.points > 0)
        return grid.add(start, bins.points, bins.count, values, stride, weight);
    for (size_t b = 0; b < bins.count; ++b)
        grid.add(start + double(b) * bins.step, weight * values[b * stride]);
}

void reportRow(const Progress &progress, size_t row, size_t rows)
{
    if (progress && !progress(1 - double(rows - row) * double(rows - row) / (double(rows) * double(rows))))
        throw Stopped();
}

SidebandRange sidebandRange(double low, double high, double rate)
{
    // Beyond the extreme frequency intensities fall off as Bessel functions do when their order exceeds the argument,
    // over a width that grows with its cube root.
    const double reach = std::max(-low, high) / rate;
    if (!(reach < double(mostSteps))) {
        throw std::invalid_argument("The spinning is so slow that there are more than " + std::to_string(mostSteps)
                                    + " sidebands: compute the static spectrum");
    }
    long root = 0;
    while (double(root * root * root) < reach)
        ++root;
    const long margin = 3 * root + 3;
    SidebandRange range;
    range.first = long(std::floor(low / rate)) - margin;
    const long last = long(std::ceil(high / rate)) + margin;
    range.steps = transformSize(size_t(last - range.first + 1));
    if (range.steps > mostSteps) {
        throw std::invalid_argument("The spinning is so slow that there are more than " + std::to_string(mostSteps)
                                    + " sidebands: compute the static spectrum");
    }
    // Both sides get what is left over.
    range.first -= (long(range.steps) - (last - range.first + 1)) / 2;
    return range;
}

} // namespace

namespace {

/// Lagrange polynomials of the points -2 ... 3, at t.
std::array<double, 6> shares(double t)
{
    const double a = t + 2, b = t + 1, c = t, d = t - 1, e = t - 2, f = t - 3;
    const double ab = a * b, cd = c * d, ef = e * f;
    return {(b * cd * ef) / -120, (a * cd * ef) / 24,  (ab * d * ef) / -12,
            (ab * c * ef) / 12,   (ab * cd * f) / -24, (ab * cd * e) / 120};
}

} // namespace

void FrequencyGrid::add(double frequency, double weight)
{
    add(frequency, 1, 1, &weight, 1, 1);
}

void FrequencyGrid::add(double first, size_t spacing, size_t count, const double *values, size_t stride, double weight)
{
    const double position = (first - m_first) / m_step;
    if (!(std::abs(position) < 1e15))
        return;
    const double below = std::floor(position);
    std::array<double, 6> part = shares(position - below);
    for (double &share : part)
        share *= weight;
    const ptrdiff_t start = ptrdiff_t(below) - 2;
    if (spacing == 1 && stride == 1 && start >= 0 && start + ptrdiff_t(count) + 5 <= ptrdiff_t(m_values.size())) {
        double *at = m_values.data() + start;
        const auto [a, b, c, d, e, f] = part;
        const ptrdiff_t last = ptrdiff_t(count) - 1;
        const auto atEnd = [&](ptrdiff_t i) {
            for (ptrdiff_t k = 0; k < 6; ++k)
                at[i] += i - k >= 0 && i - k <= last ? part[size_t(k)] * values[i - k] : 0;
        };
        for (ptrdiff_t i = 0; i < std::min<ptrdiff_t>(5, last + 6); ++i)
            atEnd(i);
        for (ptrdiff_t i = 5; i <= last; ++i)
            at[i] += a * values[i] + b * values[i - 1] + c * values[i - 2] + d * values[i - 3] + e * values[i - 4]
                + f * values[i - 5];
        for (ptrdiff_t i = std::max<ptrdiff_t>(5, last + 1); i < last + 6; ++i)
            atEnd(i);
        return;
    }
    for (size_t i = 0; i < count; ++i) {
        const ptrdiff_t place = ptrdiff_t(below) + ptrdiff_t(i * spacing);
        if (place < 2 || place + 4 > ptrdiff_t(m_values.size()))
            continue;
        double *at = m_values.data() + (place - 2);
        const double value = values[i * stride];
        for (size_t k = 0; k < part.size(); ++k)
            at[k] += part[k] * value;
    }
}

PowderPattern::PowderPattern(const Transition &transition, const Conditions &conditions)
    : m_weight(transition.weight),
      m_rate(conditions.rotation == Rotation::MagicAngle ? conditions.rate : 0),
      m_form(transition.form),
      m_centres(conditions.rotation == Rotation::Static ? transition.form : spinningMean(transition.form))
{
    std::tie(m_low, m_high) = extremes(m_centres);
    if (m_rate > 0) {
        const auto [low, high] = modulationExtremes(m_form);
        m_sidebands = sidebandRange(low, high, m_rate);
    }
}

std::pair<double, double> PowderPattern::limits() const
{
    const long last = m_sidebands.first + long(m_sidebands.steps) - 1;
    return {m_low + m_rate * double(m_sidebands.first), m_high + m_rate * double(last)};
}

size_t PowderPattern::rowsForFirstTry(double width, double tolerance) const
{
    // Found by trying: a triangle's curvature, which wide lines hide, and sidebands against the steps of their
    // directions.
    const double curvature = m_centres.quartic != 0 ? 1.7 : 0.9;
    const double centres = std::min(0.1 * std::sqrt((m_high - m_low) / width), curvature) / std::sqrt(tolerance);
    const double sidebands = m_rate > 0 ? std::min(0.35, 0.021 / std::sqrt(tolerance)) * double(m_sidebands.steps) : 0;
    return size_t(std::clamp(std::max(centres, sidebands), double(leastRows), double(mostRows) / 2));
}

void PowderPattern::addTo(FrequencyGrid &grid, size_t rows, const Progress &progress) const
{
    const size_t count = std::clamp(rows, leastRows, mostRows);
    if (m_rate > 0)
        addSidebands(grid, count, progress);
    else
        addCentres(grid, count, progress);
}

void PowderPattern::addCentres(FrequencyGrid &grid, size_t rows, const Progress &progress) const
{
    const Kernels &loops = kernels();
    const Bins bins = binsFor(m_low, m_high, grid, 1);
    if (bins.isLine) {
        grid.add(bins.start, m_weight);
        return;
    }
    std::vector<double> values(bins.count + overhang);
    const FrequencyForm inBins = scaled(m_centres, bins.start, bins.step);
    const double limit = double(bins.count) - 1e-3;
    LatticeRows lattice(rows);
    struct Row {
        std::vector<double> places, slopes;
    };
    std::array<std::array<Row, 2>, octants.size()> found;
    std::array<FrequencyForm, octants.size()> forms;
    for (size_t i = 0; i < octants.size(); ++i) {
        forms[i] = mirrored(inBins, octants[i]);
        for (Row &row : found[i]) {
            row.places.resize(rows + 1);
            row.slopes.resize(rows + 1);
        }
    }
    size_t index = 0;
    do {
        const LatticeRows::Row &row = lattice.row();
        for (size_t i = 0; i < octants.size(); ++i) {
            Row &here = found[i][index % 2], &before = found[i][1 - index % 2];
            loops.frequencies(&forms[i], limit, row.count, row.x.data(), row.y.data(), row.z.data(),
                              here.places.data());
            if (index == 0)
                continue;
            loops.addTriangles(row.count + 1, before.places.data(), here.places.data(), lattice.up().data(),
                               lattice.down().data(), before.slopes.data(), here.slopes.data(), values.data());
            loops.addCorners(row.count + 1, before.places.data(), before.slopes.data(), values.data());
        }
        reportRow(progress, index++, rows);
    } while (lattice.advance());
    // The pole.
    for (auto &rowsOfOctant : found) {
        Row &last = rowsOfOctant[rows % 2];
        loops.addCorners(1, last.places.data(), last.slopes.data(), values.data());
    }
    sumTwice(values, bins.count, 1);
    // What was cut off lies in the outermost bins.
    values.front() = values.back() = 0;
    sharpen(values, bins.count, 1);
    addBins(grid, bins, bins.start + shiftToMean(bins, values, 1, mean(m_centres)), values.data(), 1, m_weight);
}

void PowderPattern::addSidebands(FrequencyGrid &grid, size_t rows, const Progress &progress) const
{
    const Kernels &loops = kernels();
    const size_t steps = m_sidebands.steps;
    const Bins bins = binsFor(m_low, m_high, grid, steps);
    std::vector<double> values((bins.count + overhang) * steps);
    // A pattern that is a line lies in the one bin that it has.
    const FrequencyForm inBins = scaled(m_centres, bins.start, bins.step);
    const double limit = bins.isLine ? 0 : double(bins.count) - 1e-3;

    const auto table = TwiddleTable::shared(steps);
    const Twiddles twiddles = table->twiddles();
    std::vector<double> work(4 * (steps * laneCount + arrayGap));
    struct Row {
        std::vector<double> centres; ///< in bins
        std::vector<double> weights; ///< of the sidebands, vertex by vertex
        std::vector<double> slopes; ///< that change at the vertices, sideband by sideband
    };
    std::array<Row, 2> found;
    for (Row &row : found) {
        row.centres.resize(rows + 1);
        row.weights.resize((rows + 1 + laneCount) * steps);
        row.slopes.resize((rows + 1) * steps);
    }
    std::vector<double> sum(steps);
    struct Corner {
        Row &row;
        size_t j;
    };
    const auto addTriangle = [&](Corner a, Corner b, Corner c, double part) {
        const double corners[] = {a.row.centres[a.j], b.row.centres[b.j], c.row.centres[c.j]};
        const auto weights = [steps](Corner corner) { return &corner.row.weights[corner.j * steps]; };
        const auto slopes = [steps](Corner corner) { return &corner.row.slopes[corner.j * steps]; };
        loops.addWeightedTriangle(corners, part / 3, steps, weights(a), weights(b), weights(c), slopes(a), slopes(b),
                                  slopes(c), sum.data(), values.data());
    };
    const auto addCorner = [&](Corner a) {
        if (!bins.isLine) // whose triangles have no slopes
            loops.addWeightedCorner(a.row.centres[a.j], steps, &a.row.slopes[a.j * steps], values.data());
    };
    // Octant by octant, so that no more than two rows are kept: many directions times many sidebands are much.
    for (size_t i = 0; i < octants.size(); ++i) {
        const FrequencyForm form = mirrored(m_form, octants[i]), centreForm = mirrored(inBins, octants[i]);
        const Progress ofOctant = progress
            ? [&](double inner) { return progress((double(i) + inner) / double(octants.size())); }
            : Progress();
        LatticeRows lattice(rows, laneCount);
        size_t index = 0;
        do {
            const LatticeRows::Row &row = lattice.row();
            Row &here = found[index % 2];
            loops.frequencies(&centreForm, limit, row.count, row.x.data(), row.y.data(), row.z.data(),
                              here.centres.data());
            for (size_t j = 0; j < row.count; j += laneCount) {
                loops.sidebands(&form, m_rate, &twiddles, &row.x[j], &row.y[j], &row.z[j], work.data(),
                                &here.weights[j * steps]);
            }
            Row &before = found[1 - index % 2];
            const size_t count = row.count + 1;
            for (size_t j = 0; index > 0 && j + 1 < count; ++j) {
                addTriangle({before, j}, {before, j + 1}, {here, j}, lattice.up()[j]);
                addCorner({before, j});
                if (j + 2 < count)
                    addTriangle({before, j + 1}, {here, j}, {here, j + 1}, lattice.down()[j]);
            }
            if (index > 0)
                addCorner({before, count - 1});
            reportRow(ofOctant, index++, rows);
        } while (lattice.advance());
        addCorner({found[rows % 2], 0}); // the pole
    }

    sumTwice(values, bins.count, steps);
    if (!bins.isLine)
        sharpen(values, bins.count, steps);
    const auto place = [&](size_t i) {
        const long turns = long(steps), sideband = m_sidebands.first + long(i);
        return size_t((sideband % turns + turns) % turns);
    };
    const auto offset = [&](size_t i) { return m_rate * double(m_sidebands.first + long(i)); };
    // Sidebands do not move the mean, but for those that are too weak to be told from others.
    double bands = 0;
    for (size_t i = 0; i < steps; ++i) {
        for (size_t b = 0; b < bins.count; ++b)
            bands += offset(i) * values[b * steps + place(i)];
    }
    const double start = bins.start - bands + (bins.isLine ? 0 : shiftToMean(bins, values, steps, mean(m_centres)));
    for (size_t i = 0; i < steps; ++i) {
        if (bins.isLine)
            grid.add(start + offset(i), m_weight * values[place(i)]);
        else
            addBins(grid, bins, start + offset(i), values.data() + place(i), steps, m_weight);
    }
}

} // namespace Workbench::Powder
