// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/KernelLoops.h"

#include <memory>
#include <vector>

namespace Workbench::Powder {

// Elementary functions made of basic operations alone. Those of the C library come in variants for several processors,
// which differ in the last bit.

/// Relative error below 1e-15 for moderate x; 0 below -700.
double exponential(double x);

/// Relative error below 1e-15.
double arcTangent(double x);

/// The least size not below this one that can be transformed: 2^n, 3 * 2^n or 5 * 2^n, at least 8.
size_t transformSize(size_t least);

/// Cosine and sine of 2 pi i / size.
class TwiddleTable {
public:
    /// `size` is one of those that can be transformed.
    explicit TwiddleTable(size_t size);
    /// Kept for the next caller until a few of other sizes were asked for.
    static std::shared_ptr<const TwiddleTable> shared(size_t size);

    Twiddles twiddles() const { return {m_cosines.size(), m_cosines.data(), m_sines.data()}; }

private:
    std::vector<double> m_cosines, m_sines;
};

} // namespace Workbench::Powder
