// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "synthesis/LineShapes.h"

#include <cstdint>
#include <vector>

namespace Magres {

/// Whether a Gaussian's values along the axis are numbers and fall off from the peak, as they do for finite numbers and
/// a positive width.
bool isGaussianRegular(double position, double width, const SpectrumAxis &axis);

/// exp(-ln 2 (2 (x - position) / width)^2) at the points of an axis, either at all of them or only at those of the
/// window outside which it is exactly zero. The window is that of the computed values; only regular Gaussians are cut
/// to it.
class GaussianFactors {
public:
    static constexpr std::size_t vectorSize = 8; ///< doubles, of the widest instruction set
    /// Where in such a vector the address lies, in doubles.
    static std::size_t placeInVector(const double *address)
    {
        return reinterpret_cast<std::uintptr_t>(address) / sizeof(double) % vectorSize;
    }

    /// `like`: the factors lie in vectors as doubles that start at this address do, so that kernels find both aligned.
    GaussianFactors(double position, double width, const SpectrumAxis &axis, std::size_t points, bool cutToWindow,
                    const double *like = nullptr);

    bool isCutToWindow() const { return m_cut; }
    std::size_t begin() const { return m_begin; }
    std::size_t end() const { return m_begin + m_size; }
    std::size_t size() const { return m_size; }
    bool contains(std::size_t i) const { return i - m_begin < m_size; }
    /// The point of the largest value; begin() when there are no values.
    std::size_t peakIndex() const { return m_peak; }

    // Up to a vector less one before the window and after it there are zeros to be read.
    double at(std::size_t i) const { return *from(i); }
    const double *from(std::size_t i) const { return m_storage.data() + (m_offset + i - m_begin); }

private:
    bool m_cut;
    std::size_t m_begin = 0;
    std::size_t m_peak = 0;
    std::size_t m_size = 0;
    std::size_t m_offset = 0; // of the value at m_begin in the storage
    std::vector<double> m_storage;
};

} // namespace Magres
