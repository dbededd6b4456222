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
// (addTerms). The loops are nested for the caches: peaks in batches whose factors fit, rows of the plane a few at a
// time, groups of four peaks over these rows (addGaussians, addGaussianRows, addGaussianRow).

/// One peak of a batch: a factor per axis, and the columns whose product with the row's factor may differ from zero.
struct GaussianPeak {
    GaussianFactors columns;
    GaussianFactors rows;
    double height;
    std::size_t begin; // of the columns that matter, as of the row visited last
    std::size_t end;
};

/// Fits the columns to a row's factor. Rows follow each other, so the ends move little.
void fitColumns(GaussianPeak &peak, double rowFactor)
{
    // Half of what makes the product round to zero, so that it does so also where a factor is off in its last place.
    const double least = 0.25 * (0x1p-1074 / std::abs(rowFactor));
    const GaussianFactors &columns = peak.columns;
    const auto matters = [&](std::size_t i) { return columns.at(i) >= least; };
    const std::size_t middle = columns.peakIndex();
    peak.begin = std::min(peak.begin, middle);
    while (peak.begin < middle && !matters(peak.begin))
        ++peak.begin;
    while (peak.begin > columns.begin() && matters(peak.begin - 1))
        --peak.begin;
    peak.end = std::max(peak.end, middle);
    while (peak.end > middle && !matters(peak.end - 1))
        --peak.end;
    while (peak.end < columns.end() && matters(peak.end))
        ++peak.end;
}

/// What a peak adds to a row: factor times its factors of the columns [begin, end).
struct RowTerm {
    double factor;
    const GaussianPeak *peak;
    std::size_t begin;
    std::size_t end;
};

/// Adds up to four terms, from one end of any to the next with those that have these columns, in their order.
void addTerms(const LineShapeKernels &kernels, std::span<const RowTerm> terms, double *row)
{
    std::array<std::size_t, 8> ends{};
    for (std::size_t i = 0; i < terms.size(); ++i) {
        ends[2 * i] = terms[i].begin;
        ends[2 * i + 1] = terms[i].end;
    }
    std::sort(ends.begin(), ends.end());
    for (std::size_t i = 0; i + 1 < ends.size(); ++i) {
        const std::size_t begin = ends[i];
        const std::size_t end = ends[i + 1];
        std::array<ScaledValues, 4> present;
        std::size_t count = 0;
        for (const RowTerm &term : terms) {
            if (term.begin <= begin && term.end >= end)
                present[count++] = {term.factor, term.peak->columns.from(begin)};
        }
        if (begin < end && count > 0)
            kernels.addScaled[count - 1](present.data(), row + begin, end - begin);
    }
}

/// The term over whole vectors of the row, as far as the row reaches: the zeros that come in cost less than odd ends
/// do.
RowTerm widened(RowTerm term, std::span<const double> row)
{
    constexpr std::size_t size = GaussianFactors::vectorSize;
    const std::size_t place = GaussianFactors::placeInVector(row.data());
    term.begin -= std::min(term.begin, (place + term.begin) % size);
    term.end = std::min(row.size(), term.end + (size - (place + term.end) % size) % size);
    return term;
}

/// `peaks`: at most four.
void addGaussianRow(const LineShapeKernels &kernels, std::span<GaussianPeak *> peaks, std::size_t index,
                    std::span<double> row)
{
    std::array<RowTerm, 4> terms;
    std::size_t count = 0;
    for (GaussianPeak *peak : peaks) {
        if (!peak->rows.contains(index))
            continue;
        const double factor = peak->rows.at(index) * peak->height;
        if (peak->columns.isCutToWindow()) {
            if (factor == 0.0)
                continue;
            fitColumns(*peak, factor);
        }
        if (peak->begin < peak->end)
            terms[count++] = widened({factor, peak, peak->begin, peak->end}, row);
    }
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
            const std::size_t begin = columns.begin();
            const std::size_t end = columns.end();
            batch.push_back({std::move(columns), std::move(lines), next->height, begin, end});
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
