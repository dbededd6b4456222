// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/KernelLoops.h"

#include <span>

namespace Workbench::Powder {

/// For the widest instruction set of this processor.
const Kernels &kernels();

/// Every one that this processor can run, the plainest first; all give the same bits.
std::span<const Kernels *const> supportedKernels();

/// Makes kernels() the given one, for tests and measurements.
void useKernels(const Kernels &kernels);

} // namespace Workbench::Powder
