// SPDX-License-Identifier: BSD-3-Clause
#include "DivisionLimit.h"

#include "numerics/InstructionSet.h"

namespace Bench {

void divide(double numerator, const double *x, double *quotients, std::size_t count)
{
    switch (Magres::fastestInstructionSet()) {
#if defined(MAGRES_X86_VARIANTS)
    case Magres::InstructionSet::Avx512:
        return Avx512::divide(numerator, x, quotients, count);
    case Magres::InstructionSet::Avx2:
        return Avx2::divide(numerator, x, quotients, count);
#endif
    default:
        return Baseline::divide(numerator, x, quotients, count);
    }
}

} // namespace Bench
