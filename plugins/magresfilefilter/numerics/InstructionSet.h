// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <array>

// A kernel is plain loops in a source of its own, which CMake compiles once per instruction set (magres_add_kernels):
// the compiler makes vectors of them, and the namespace named MAGRES_INSTRUCTION_SET keeps the variants apart. Every
// variant gives the same bits: + - * / are rounded as written, never contracted, and fused operations are called by
// name.
//
// Such a source must not call inline functions or templates of any header, the standard library's included: the linker
// keeps one copy of those for the whole program, and it might be the one that only some processors can run. The test
// kernels_define_nothing_shared watches over that.

namespace Magres {

/// What a numerical kernel is compiled for.
enum class InstructionSet {
    Baseline, ///< what every processor of the platform has (SSE2 on x86-64)
    Avx2, ///< AVX2 with fused multiply-add
    Avx512, ///< AVX-512F
};

inline constexpr std::array instructionSets = {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512};

/// Whether this processor, and this build, can run the variant.
bool isSupported(InstructionSet set);

/// The widest supported one; found once per process.
InstructionSet fastestInstructionSet();

} // namespace Magres
