// SPDX-License-Identifier: BSD-3-Clause
// Compiled once per instruction set: see numerics/InstructionSet.h.
#include "DivisionLimit.h"

namespace Bench::MAGRES_INSTRUCTION_SET {

void divide(double numerator, const double *x, double *__restrict quotients, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        quotients[i] = numerator / x[i];
}

} // namespace Bench::MAGRES_INSTRUCTION_SET
