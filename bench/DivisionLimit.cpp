// SPDX-License-Identifier: BSD-3-Clause
#include "DivisionLimit.h"

#include "numerics/InstructionSet.h"
#include "numerics/Lanes.h"

namespace Magres::Baseline {
namespace {
#include "DivisionLimit.inc"
} // namespace
} // namespace Magres::Baseline

#if defined(MAGRES_X86_VARIANTS)
#pragma GCC push_options
#pragma GCC target("avx2,fma")
namespace Magres::Avx2 {
namespace {
#include "DivisionLimit.inc"
} // namespace
} // namespace Magres::Avx2
#pragma GCC pop_options

#pragma GCC push_options
#pragma GCC target("avx512f")
namespace Magres::Avx512 {
namespace {
#include "DivisionLimit.inc"
} // namespace
} // namespace Magres::Avx512
#pragma GCC pop_options
#endif

namespace Bench {

void divide(double numerator, const double *x, double *quotients, std::size_t count)
{
    switch (Magres::fastestInstructionSet()) {
#if defined(MAGRES_X86_VARIANTS)
    case Magres::InstructionSet::Avx512:
        return Magres::Avx512::divide(numerator, x, quotients, count);
    case Magres::InstructionSet::Avx2:
        return Magres::Avx2::divide(numerator, x, quotients, count);
#endif
    default:
        return Magres::Baseline::divide(numerator, x, quotients, count);
    }
}

} // namespace Bench
