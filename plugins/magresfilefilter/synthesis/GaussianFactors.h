// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "synthesis/LineShapeKernels.h"
#include "synthesis/LineShapes.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace Magres {

/// Whether a Gaussian's values along the axis are numbers and fall off from the peak, as they do for finite numbers and
/// a positive width.
bool isGaussianRegular(double position, double width, const SpectrumAxis &axis);

/// exp(-ln 2 (2 (x - position) / width)^2) at the points of an axis, either at all of them or only at those of the
/// window outside which it is exactly zero. The window is that of the computed values; only regular Gaussians are cut
/// to it.
///
/// Numbers below 2^-1022, of which the ends of a window consist, take a processor some hundred times as long to
/// multiply as others do. So each value is kept twice, raised and lowered by a power of two, and of a product one
/// factor is raised and the other lowered: what is rounded is the same product.
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

    double at(std::size_t i) const { return *raisedFrom(i) * lowering; }
    /// Whether the value is raisedLeast / raising or more.
    bool isAtLeast(double raisedLeast, std::size_t i) const { return *raisedFrom(i) >= raisedLeast; }
    /// A factor and values from a point on, whose products are those of the factor given and of the values. Up to a
    /// vector less one before the window and after it there are zeros to be read.
    ScaledValues scaledFrom(std::size_t i, double factor) const
    {
        // With so small a factor, products of values below 2^-200 are zero.
        if (std::abs(factor) < 0x1p-800)
            return {factor * raising, raisedFrom(i) + m_loweredOffset};
        return {factor * lowering, raisedFrom(i)};
    }

    static constexpr double raising = 0x1p+100;
    static constexpr double lowering = 0x1p-100;

private:
    const double *raisedFrom(std::size_t i) const { return m_storage.data() + (m_offset + i - m_begin); }

    bool m_cut;
    std::size_t m_begin = 0;
    std::size_t m_peak = 0;
    std::size_t m_size = 0;
    std::size_t m_offset = 0; // of the value at m_begin in the storage
    std::vector<double> m_storage; // the raised values, then the lowered ones
    std::size_t m_loweredOffset = 0; // of the one in the storage from the other
};

} // namespace Magres
