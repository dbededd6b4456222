// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Kernels.h"

#include <atomic>
#include <vector>

namespace Workbench::Powder {

std::span<const Kernels *const> supportedKernels()
{
    static const std::vector<const Kernels *> supported = [] {
        std::vector<const Kernels *> found{&baseline::kernels};
#if defined(POWDER_X86)
        if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
            found.push_back(&avx2::kernels);
        if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq")
            && __builtin_cpu_supports("avx512vl"))
            found.push_back(&avx512::kernels);
#endif
        return found;
    }();
    return supported;
}

namespace {

std::atomic<const Kernels *> &chosen()
{
    static std::atomic<const Kernels *> kernels = supportedKernels().back();
    return kernels;
}

} // namespace

const Kernels &kernels()
{
    return *chosen();
}

void useKernels(const Kernels &kernels)
{
    chosen() = &kernels;
}

} // namespace Workbench::Powder
