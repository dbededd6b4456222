// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/KernelLoops.h"

#include <vector>

namespace Workbench::Powder {

// Elementary functions made of basic operations alone. Those of the C library come in variants for several processors,
// which differ in the last bit.

/// Relative error below 1e-15 for moderate x; 0 below -700.
double exponential(double x);

/// Cosine and sine of 2 pi i / size.
class TwiddleTable {
public:
    /// `size` is a power of two.
    explicit TwiddleTable(size_t size);

    Twiddles twiddles() const { return {m_cosines.size(), m_cosines.data(), m_sines.data()}; }
    const std::vector<double> &cosines() const { return m_cosines; }

private:
    std::vector<double> m_cosines, m_sines;
};

} // namespace Workbench::Powder
