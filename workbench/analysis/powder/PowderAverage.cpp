// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/PowderAverage.h"

#include "analysis/powder/Kernels.h"
#include "analysis/powder/Lattice.h"
#include "analysis/powder/Trigonometry.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

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

/// Bins that hold integrals over their width become values at their middles, to the fourth order. `stride` numbers
/// stand in each bin.
void sharpen(std::vector<double> &bins, size_t count, size_t stride)
{
    std::vector<double> before(stride, 0.0);
    for (size_t b = 0; b < count; ++b) {
        for (size_t k = 0; k < stride; ++k) {
            const double here = bins[b * stride + k];
            const double next = b + 1 < count ? bins[(b + 1) * stride + k] : 0;
            bins[b * stride + k] = here - (before[k] - 2 * here + next) / 24;
            before[k] = here;
        }
    }
}

/// Bins from the lowest to the highest value of a function on the sphere. One bin alone when the function is constant.
struct Bins {
    double start = 0; ///< lower edge
    double step = 1;
    size_t count = 1;
    bool isLine = false;
};

Bins binsFor(const FrequencyForm &form, const FrequencyGrid &grid, size_t sidebands, bool clip)
{
    auto [low, high] = extremes(form);
    const double scale = std::max(std::abs(low), std::abs(high));
    Bins bins;
    if (!(high - low > 1e-6 * grid.step() && high - low > 1e-12 * scale)) {
        bins.start = 0.5 * (low + high);
        bins.isLine = true;
        return bins;
    }
    // Narrow patterns are resolved as well as wide ones.
    bins.step = std::min(grid.step(), (high - low) / 16);
    if (clip) {
        const double margin = 4 * grid.step();
        low = std::max(low, grid.first() - margin);
        high = std::max(low + bins.step, std::min(high, grid.last() + margin));
    }
    bins.step = std::max(bins.step, (high - low) * double(sidebands) / double(mostCells));
    bins.start = low - 2 * bins.step;
    bins.count = size_t((high - low) / bins.step) + 5;
    return bins;
}

void reportRow(const Progress &progress, size_t row, size_t rows)
{
    if (progress && !progress(1 - double(rows - row) * double(rows - row) / (double(rows) * double(rows))))
        throw Stopped();
}

void addStatic(FrequencyGrid &grid, const FrequencyForm &form, size_t rows, double weight, const Progress &progress)
{
    const Kernels &loops = kernels();
    const Bins bins = binsFor(form, grid, 1, true);
    if (bins.isLine) {
        grid.add(bins.start, weight);
        return;
    }
    std::vector<double> values(bins.count);
    const FrequencyForm inBins = scaled(form, bins.start, bins.step);
    const double limit = double(bins.count) - 1e-3;
    LatticeRows lattice(rows);
    std::array<std::array<std::vector<double>, 2>, octants.size()> frequencies;
    std::array<FrequencyForm, octants.size()> forms;
    for (size_t i = 0; i < octants.size(); ++i) {
        forms[i] = mirrored(inBins, octants[i]);
        for (auto &row : frequencies[i])
            row.resize(rows + 1);
    }
    size_t index = 0;
    do {
        const LatticeRows::Row &row = lattice.row();
        for (size_t i = 0; i < octants.size(); ++i) {
            double *here = frequencies[i][index % 2].data();
            loops.frequencies(&forms[i], limit, row.count, row.x.data(), row.y.data(), row.z.data(), here);
            if (index > 0) {
                loops.addTriangles(row.count + 1, frequencies[i][1 - index % 2].data(), here, lattice.up().data(),
                                   lattice.down().data(), values.data());
            }
        }
        reportRow(progress, index++, rows);
    } while (lattice.advance());
    // What was cut off lies in the outermost bins.
    values.front() = values.back() = 0;
    sharpen(values, bins.count, 1);
    for (size_t b = 0; b < bins.count; ++b) {
        if (values[b] != 0)
            grid.add(bins.start + (double(b) + 0.5) * bins.step, weight * values[b]);
    }
}

void addSpinning(FrequencyGrid &grid, const FrequencyForm &form, double rate, size_t rows, double weight,
                 const Progress &progress)
{
    const Kernels &loops = kernels();
    const FrequencyForm average = spinningMean(form);
    const SidebandRange range = sidebandRange(form, rate);
    const size_t steps = range.steps;
    const Bins bins = binsFor(average, grid, steps, false);
    std::vector<double> values(bins.count * steps);
    const FrequencyForm inBins = scaled(average, bins.start, bins.step);
    const double limit = double(bins.count) - 1e-3;

    const TwiddleTable table(steps);
    const Twiddles twiddles = table.twiddles();
    std::vector<double> work(4 * steps * laneCount);
    LatticeRows lattice(rows, laneCount);
    struct Row {
        std::vector<double> centres; ///< in bins
        std::vector<double> weights; ///< of the sidebands, vertex by vertex
    };
    std::array<std::array<Row, 2>, octants.size()> found;
    std::array<FrequencyForm, octants.size()> forms, centreForms;
    for (size_t i = 0; i < octants.size(); ++i) {
        forms[i] = mirrored(form, octants[i]);
        centreForms[i] = mirrored(inBins, octants[i]);
        for (Row &row : found[i]) {
            row.centres.resize(rows + 1);
            row.weights.resize((rows + 1 + laneCount) * steps);
        }
    }
    std::vector<double> profile(bins.count);
    const auto addTriangle = [&](const double *centres, double part, const double *w0, const double *w1,
                                 const double *w2) {
        if (bins.isLine) {
            const double share = part / 3;
            loops.addProfile(steps, 1, &share, w0, w1, w2, values.data());
            return;
        }
        const auto [low, high] = std::minmax({centres[0], centres[1], centres[2]});
        const size_t first = size_t(low), count = size_t(high) - first + 1;
        const double row[] = {centres[0] - double(first), centres[1] - double(first)};
        const double next[] = {centres[2] - double(first)};
        const double up[] = {part / 3};
        std::fill_n(profile.begin(), count, 0.0);
        loops.addTriangles(2, row, next, up, nullptr, profile.data());
        loops.addProfile(steps, count, profile.data(), w0, w1, w2, values.data() + first * steps);
    };
    size_t index = 0;
    do {
        const LatticeRows::Row &row = lattice.row();
        for (size_t i = 0; i < octants.size(); ++i) {
            Row &here = found[i][index % 2];
            loops.frequencies(&centreForms[i], limit, row.count, row.x.data(), row.y.data(), row.z.data(),
                              here.centres.data());
            for (size_t j = 0; j < row.count; j += laneCount) {
                loops.sidebands(&forms[i], rate, &twiddles, &row.x[j], &row.y[j], &row.z[j], work.data(),
                                &here.weights[j * steps]);
            }
            if (index == 0)
                continue;
            const Row &before = found[i][1 - index % 2];
            const size_t count = row.count + 1;
            for (size_t j = 0; j + 1 < count; ++j) {
                const double *w = &before.weights[j * steps], *v = &here.weights[j * steps];
                const double upper[] = {before.centres[j], before.centres[j + 1], here.centres[j]};
                addTriangle(upper, lattice.up()[j], w, w + steps, v);
                if (j + 2 < count) {
                    const double lower[] = {before.centres[j + 1], here.centres[j], here.centres[j + 1]};
                    addTriangle(lower, lattice.down()[j], w + steps, v, v + steps);
                }
            }
        }
        reportRow(progress, index++, rows);
    } while (lattice.advance());

    if (!bins.isLine)
        sharpen(values, bins.count, steps);
    for (size_t i = 0; i < steps; ++i) {
        const long sideband = range.first + long(i);
        const size_t place = size_t(sideband) & (steps - 1);
        const double shift = rate * double(sideband);
        for (size_t b = 0; b < bins.count; ++b) {
            const double value = values[b * steps + place];
            if (value == 0)
                continue;
            const double centre = bins.isLine ? bins.start : bins.start + (double(b) + 0.5) * bins.step;
            grid.add(centre + shift, weight * value);
        }
    }
}

} // namespace

void FrequencyGrid::add(double frequency, double weight)
{
    const double position = (frequency - m_first) / m_step;
    const double below = std::floor(position);
    if (!(below >= 2 && below + 4 <= double(m_values.size())))
        return;
    const double t = position - below;
    double *at = m_values.data() + size_t(below) - 2;
    // Lagrange polynomials of the points -2 ... 3.
    const double a = t + 2, b = t + 1, c = t, d = t - 1, e = t - 2, f = t - 3;
    const double ab = a * b, cd = c * d, ef = e * f;
    at[0] += weight * (b * cd * ef) / -120;
    at[1] += weight * (a * cd * ef) / 24;
    at[2] += weight * (ab * d * ef) / -12;
    at[3] += weight * (ab * c * ef) / 12;
    at[4] += weight * (ab * cd * f) / -24;
    at[5] += weight * (ab * cd * e) / 120;
}

SidebandRange sidebandRange(const FrequencyForm &form, double rate)
{
    const auto [low, high] = modulationExtremes(form);
    // Beyond the extreme frequency intensities fall off as Bessel functions do when their order exceeds the argument, over
    // a width that grows with its cube root.
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
    range.steps = 8;
    while (long(range.steps) < last - range.first + 1)
        range.steps *= 2;
    if (range.steps > mostSteps) {
        throw std::invalid_argument("The spinning is so slow that there are more than " + std::to_string(mostSteps)
                                    + " sidebands: compute the static spectrum");
    }
    // Both sides get what is left over.
    range.first -= (long(range.steps) - (last - range.first + 1)) / 2;
    return range;
}

std::pair<double, double> patternLimits(const Transition &transition, const Conditions &conditions)
{
    if (conditions.rotation == Rotation::Static)
        return extremes(transition.form);
    auto limits = extremes(spinningMean(transition.form));
    if (conditions.rotation == Rotation::MagicAngle) {
        const auto [low, high] = modulationExtremes(transition.form);
        // Sidebands just outside may still be seen.
        limits.first += low - 3 * conditions.rate;
        limits.second += high + 3 * conditions.rate;
    }
    return limits;
}

void addPowderPattern(FrequencyGrid &grid, const Transition &transition, const Conditions &conditions, size_t rows,
                      double weight, const Progress &progress)
{
    const size_t count = std::clamp(rows, leastRows, mostRows);
    const double part = weight * transition.weight;
    switch (conditions.rotation) {
    case Rotation::Static:
        addStatic(grid, transition.form, count, part, progress);
        break;
    case Rotation::InfiniteRate:
        addStatic(grid, spinningMean(transition.form), count, part, progress);
        break;
    case Rotation::MagicAngle:
        addSpinning(grid, transition.form, conditions.rate, count, part, progress);
        break;
    }
}

} // namespace Workbench::Powder
