// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/LineShapes.h"

#include "synthesis/GaussianFactors.h"
#include "synthesis/LineShapeKernels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Magres {
namespace {

/// Magnitudes between which quotients, their remainders and all numbers on the way are normal and exact as far as the
/// division by a reciprocal needs it. Distances of such coordinates are zero or above 2^-853.
bool isTame(double coordinate)
{
    const double magnitude = std::abs(coordinate);
    return coordinate == 0.0 || (magnitude >= 0x1p-800 && magnitude <= 0x1p800);
}

bool isTameWidth(double width)
{
    return width >= 0x1p-100 && width <= 0x1p100;
}

} // namespace

const LineShapeKernels &lineShapeKernels(InstructionSet set)
{
    switch (set) {
#if defined(MAGRES_X86_VARIANTS)
    case InstructionSet::Avx512:
        return Avx512::lineShapeKernels;
    case InstructionSet::Avx2:
        return Avx2::lineShapeKernels;
#endif
    default:
        return Baseline::lineShapeKernels;
    }
}

void addLorentzians(InstructionSet set, std::span<const LinePeak> peaks, double width, const SpectrumAxis &axis,
                    std::span<double> data)
{
    // Points and data of a block stay in the first-level cache while all peaks pass over them.
    constexpr std::size_t blockSize = 1024;
    const LineShapeKernels &kernels = lineShapeKernels(set);
    std::array<double, blockSize> x;
    for (std::size_t begin = 0; begin < data.size(); begin += blockSize) {
        const std::size_t count = std::min(blockSize, data.size() - begin);
        for (std::size_t i = 0; i < count; ++i)
            x[i] = axis.at(std::ptrdiff_t(begin + i));
        const bool tame = kernels.addLorentzianByReciprocal && isTameWidth(width)
            && std::all_of(x.begin(), x.begin() + std::ptrdiff_t(count), isTame);
        for (const LinePeak &peak : peaks) {
            const auto add =
                tame && isTame(peak.positionF2) ? kernels.addLorentzianByReciprocal : kernels.addLorentzian;
            add(peak, width, x.data(), data.data() + begin, count);
        }
    }
}

void addLorentzians(std::span<const LinePeak> peaks, double width, const SpectrumAxis &axis, std::span<double> data)
{
    addLorentzians(fastestInstructionSet(), peaks, width, axis, data);
}

namespace {

// How a 2D spectrum is made. A Gaussian of two dimensions is the product of one factor per column and one per row, so
// two exponentials per peak and axis point stand for one per point of the plane (GaussianFactors). Far from the peak
// the product is exactly zero, and those points are left alone: each axis keeps the window of its own factors, and
// within it a row keeps the columns where the product with the row's factor can be more than zero (fitColumns). What is
// left are sums of scaled pieces of rows, which the kernels add four peaks at a time, so that a point is loaded and
// stored once for four terms; still one after the other in the order of the peaks, for the bits of the plain loop
// (addTerms). Products that would be subnormal are left out where they cannot change a sum (absorbs): multiplying them
// takes a processor longer than all others together. The loops are nested for the caches: peaks in batches whose
// factors fit, rows of the plane a few at a time, groups of four peaks over these rows (addGaussians, addGaussianRows,
// addGaussianRow).

/// Columns of a row, [begin, end).
struct Columns {
    std::size_t begin;
    std::size_t end;
};

/// One peak of a batch: a factor per axis, and what of the columns matters to the row visited last.
struct GaussianPeak {
    GaussianFactors columns;
    GaussianFactors rows;
    double height;
    Columns reached; ///< the product with the row's factor may differ from zero
    Columns normal; ///< it may be 2^-1022 or more, which is part of these
};

/// Fits the window to where the columns' factors, raised, are at least so much. Rows follow each other, so the ends
/// move little.
void fitColumns(Columns &window, const GaussianFactors &columns, double raisedLeast)
{
    const auto matters = [&](std::size_t i) { return columns.isAtLeast(raisedLeast, i); };
    const std::size_t middle = columns.peakIndex();
    window.begin = std::min(window.begin, middle);
    while (window.begin < middle && !matters(window.begin))
        ++window.begin;
    while (window.begin > columns.begin() && matters(window.begin - 1))
        --window.begin;
    window.end = std::max(window.end, middle);
    while (window.end > middle && !matters(window.end - 1))
        --window.end;
    while (window.end < columns.end() && matters(window.end))
        ++window.end;
}

void fitColumns(GaussianPeak &peak, double rowFactor)
{
    const double factor = std::abs(rowFactor);
    // 2^-1076, raised: half of what makes the product round to zero, so that it does so also where a factor is off in
    // its last place.
    fitColumns(peak.reached, peak.columns, 0x1p-976 / factor);
    fitColumns(peak.normal, peak.columns, 0x1p-922 / factor);
}

/// Whether products below 2^-1022 can be left out: added to such values they are less than half of the last place.
bool absorbs(std::span<const double> values)
{
    return std::all_of(values.begin(), values.end(), [](double value) { return value >= 0x1p-968; });
}

/// What a peak adds to a row: factor times its factors of the columns.
struct RowTerm {
    double factor;
    const GaussianPeak *peak;
    Columns columns;
};

/// Adds up to four terms, from one end of any to the next with those that have these columns, in their order.
void addTerms(const LineShapeKernels &kernels, std::span<const RowTerm> terms, double *row)
{
    std::array<std::size_t, 8> ends{};
    for (std::size_t i = 0; i < terms.size(); ++i) {
        ends[2 * i] = terms[i].columns.begin;
        ends[2 * i + 1] = terms[i].columns.end;
    }
    std::sort(ends.begin(), ends.end());
    for (std::size_t i = 0; i + 1 < ends.size(); ++i) {
        const std::size_t begin = ends[i];
        const std::size_t end = ends[i + 1];
        std::array<ScaledValues, 4> present;
        std::size_t count = 0;
        for (const RowTerm &term : terms) {
            if (term.columns.begin <= begin && term.columns.end >= end)
                present[count++] = term.peak->columns.scaledFrom(begin, term.factor);
        }
        if (begin < end && count > 0)
            kernels.addScaled[count - 1](present.data(), row + begin, end - begin);
    }
}

/// The columns of whole vectors of the row, as far as the row reaches: the zeros that come in cost less than odd ends
/// do.
Columns widened(Columns columns, std::span<const double> row)
{
    constexpr std::size_t size = GaussianFactors::vectorSize;
    const std::size_t place = GaussianFactors::placeInVector(row.data());
    return {columns.begin - std::min(columns.begin, (place + columns.begin) % size),
            std::min(row.size(), columns.end + (size - (place + columns.end) % size) % size)};
}

/// `peaks`: at most four.
void addGaussianRow(const LineShapeKernels &kernels, std::span<GaussianPeak *> peaks, std::size_t index,
                    std::span<double> row)
{
    std::array<RowTerm, 4> terms;
    std::size_t count = 0;
    bool isAbsorbed = true;
    for (GaussianPeak *peak : peaks) {
        if (!peak->rows.contains(index))
            continue;
        const double factor = peak->rows.at(index) * peak->height;
        if (peak->columns.isCutToWindow()) {
            if (factor == 0.0)
                continue;
            fitColumns(*peak, factor);
        }
        const Columns &reached = peak->reached;
        const Columns &normal = peak->normal;
        if (reached.begin == reached.end)
            continue;
        terms[count++] = {factor, peak, reached};
        // Sums of what is positive stay as large as they are before the first term.
        isAbsorbed = isAbsorbed && factor > 0.0 && absorbs(row.subspan(reached.begin, normal.begin - reached.begin))
            && absorbs(row.subspan(normal.end, reached.end - normal.end));
    }
    for (RowTerm &term : std::span(terms).first(count))
        term.columns = isAbsorbed ? term.peak->normal : widened(term.columns, row);
    addTerms(kernels, std::span(terms).first(count), row.data());
}

/// Adds the peaks to rows from `firstRow` on. Four peaks at a time pass over all rows, so that their factors stay in
/// the first-level cache and the rows in the second-level one.
void addGaussianRows(const LineShapeKernels &kernels, std::span<GaussianPeak> peaks, std::size_t firstRow,
                     std::size_t pointsF2, std::span<double> rows)
{
    const std::size_t rowCount = rows.size() / pointsF2;
    std::array<GaussianPeak *, 4> group;
    std::size_t count = 0;
    const auto addGroup = [&] {
        for (std::size_t row = 0; row < rowCount; ++row)
            addGaussianRow(kernels, std::span(group).first(count), firstRow + row,
                           rows.subspan(row * pointsF2, pointsF2));
        count = 0;
    };
    for (GaussianPeak &peak : peaks) {
        if (peak.rows.end() <= firstRow || peak.rows.begin() >= firstRow + rowCount)
            continue;
        group[count++] = &peak;
        if (count == group.size())
            addGroup();
    }
    addGroup();
}

} // namespace

void addGaussians(InstructionSet set, std::span<const LinePeak> peaks, double widthF2, double widthF1,
                  const SpectrumAxis &axisF2, const SpectrumAxis &axisF1, std::size_t pointsF2, std::span<double> data)
{
    if (pointsF2 == 0)
        return;
    constexpr std::size_t batchSize = std::size_t(1) << 17; // factors, 1 MiB
    constexpr std::size_t rowsAtOnce = 8;
    const LineShapeKernels &kernels = lineShapeKernels(set);
    const std::size_t rows = data.size() / pointsF2;
    std::vector<GaussianPeak> batch;
    for (auto next = peaks.begin(); next != peaks.end();) {
        batch.clear();
        for (std::size_t factors = 0; next != peaks.end() && factors < batchSize; ++next) {
            // Zero and skipped is the same only if nothing in the product can be NaN.
            const bool cut = std::isfinite(next->height) && isGaussianRegular(next->positionF2, widthF2, axisF2)
                && isGaussianRegular(next->positionF1, widthF1, axisF1);
            GaussianFactors columns(next->positionF2, widthF2, axisF2, pointsF2, cut, data.data());
            GaussianFactors lines(next->positionF1, widthF1, axisF1, rows, cut);
            factors += columns.size() + lines.size();
            const Columns all = {columns.begin(), columns.end()};
            batch.push_back({std::move(columns), std::move(lines), next->height, all, all});
        }
        for (std::size_t row = 0; row < rows; row += rowsAtOnce) {
            const std::size_t count = std::min(rowsAtOnce, rows - row);
            addGaussianRows(kernels, batch, row, pointsF2, data.subspan(row * pointsF2, count * pointsF2));
        }
    }
}

void addGaussians(std::span<const LinePeak> peaks, double widthF2, double widthF1, const SpectrumAxis &axisF2,
                  const SpectrumAxis &axisF1, std::size_t pointsF2, std::span<double> data)
{
    addGaussians(fastestInstructionSet(), peaks, widthF2, widthF1, axisF2, axisF1, pointsF2, data);
}

} // namespace Magres
