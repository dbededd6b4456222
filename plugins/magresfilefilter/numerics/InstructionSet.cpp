// SPDX-License-Identifier: BSD-3-Clause
#include "numerics/InstructionSet.h"

#include <algorithm>

namespace Magres {

bool isSupported(InstructionSet set)
{
    switch (set) {
    case InstructionSet::Baseline:
        return true;
#if defined(MAGRES_X86_VARIANTS)
    case InstructionSet::Avx2:
        return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    case InstructionSet::Avx512:
        return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("fma");
#endif
    default:
        return false;
    }
}

InstructionSet fastestInstructionSet()
{
    static const InstructionSet fastest = *std::find_if(instructionSets.rbegin(), instructionSets.rend(), isSupported);
    return fastest;
}

} // namespace Magres
