// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/LineShapeKernels.h"

#include "numerics/Lanes.h"

#include <algorithm>
#include <cstdint>

namespace Magres {
namespace {

inline double lorentzian(double x, double position, double height, double width)
{
    const double t = 2.0 * (x - position) / width;
    return height / (1.0 + t * t);
}

} // namespace

namespace Baseline {
namespace {
#include "synthesis/LineShapeKernels.inc"
} // namespace
} // namespace Baseline

#if defined(MAGRES_X86_VARIANTS)
#pragma GCC push_options
#pragma GCC target("avx2,fma")
namespace Avx2 {
namespace {
#include "synthesis/LineShapeKernels.inc"
} // namespace
} // namespace Avx2
#pragma GCC pop_options

#pragma GCC push_options
#pragma GCC target("avx512f")
namespace Avx512 {
namespace {
#include "synthesis/LineShapeKernels.inc"
} // namespace
} // namespace Avx512
#pragma GCC pop_options
#endif

const LineShapeKernels &lineShapeKernels(InstructionSet set)
{
    switch (set) {
#if defined(MAGRES_X86_VARIANTS)
    case InstructionSet::Avx512:
        return Avx512::kernels;
    case InstructionSet::Avx2:
        return Avx2::kernels;
#endif
    default:
        return Baseline::kernels;
    }
}

} // namespace Magres
