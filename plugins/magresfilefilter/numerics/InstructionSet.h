// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <array>

namespace Magres {

/// What a numerical kernel is compiled for. Every variant of a kernel gives the same bits.
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
