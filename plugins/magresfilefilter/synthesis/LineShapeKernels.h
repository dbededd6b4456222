// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "numerics/InstructionSet.h"
#include "synthesis/LineShapes.h"

// What stands behind LineShapes.h, for tests that compare the instruction sets. A set that is given must be supported.

namespace Magres {

void addLorentzians(InstructionSet set, std::span<const LinePeak> peaks, double width, const SpectrumAxis &axis,
                    std::span<double> data);

void addGaussians(InstructionSet set, std::span<const LinePeak> peaks, double widthF2, double widthF1,
                  const SpectrumAxis &axisF2, const SpectrumAxis &axisF1, std::size_t pointsF2, std::span<double> data);

struct ScaledValues {
    double factor;
    const double *values;
};

/// The innermost loops. `data` overlaps nothing that is read.
struct LineShapeKernels {
    /// Adds the Lorentzian of one peak at the points x, dividing twice per point.
    void (*addLorentzian)(const LinePeak &peak, double width, const double *x, double *data, std::size_t count);
    /// The same bits with one division per point, where isTame() of the width and of all coordinates; null without
    /// fused multiply-add.
    void (*addLorentzianByReciprocal)(const LinePeak &peak, double width, const double *x, double *data,
                                      std::size_t count);
    /// data[i] += factor * values[i] for one, two, three or four terms, one after the other.
    void (*addScaled[4])(const ScaledValues *terms, double *data, std::size_t count);
};

// One variant per instruction set, in a namespace of its name.
namespace Baseline {
extern const LineShapeKernels lineShapeKernels;
}
namespace Avx2 {
extern const LineShapeKernels lineShapeKernels;
}
namespace Avx512 {
extern const LineShapeKernels lineShapeKernels;
}

const LineShapeKernels &lineShapeKernels(InstructionSet set);

} // namespace Magres
