// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/GaussianFactors.h"

#include <algorithm>
#include <cmath>

namespace Magres {
namespace {

/// Where exp(-ln 2 t^2) is below half the smallest double by far: exp(-750) is about 2^-1082.
constexpr double certainlyZero = 32.9;

double distanceInHalfWidths(double x, double position, double width)
{
    return 2.0 * (x - position) / width;
}

double factor(double x, double position, double width)
{
    const double t = distanceInHalfWidths(x, position, width);
    return std::exp(-0.69314718056 * (t * t));
}

/// First index of [0, points) for which the condition, false before it and true from it on, holds.
template <class Condition>
std::size_t firstIndex(std::size_t points, Condition holds)
{
    std::size_t low = 0;
    std::size_t high = points;
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (holds(middle))
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

} // namespace

bool isGaussianRegular(double position, double width, const SpectrumAxis &axis)
{
    return std::isfinite(position) && std::isfinite(width) && width > 0.0 && std::isfinite(axis.first)
        && std::isfinite(axis.step);
}

GaussianFactors::GaussianFactors(double position, double width, const SpectrumAxis &axis, std::size_t points,
                                 bool cutToWindow, const double *like)
    : m_cut(cutToWindow)
{
    std::size_t end = points;
    if (m_cut) {
        // The distance is monotone in the index, rounding included. This bounds where exponentials are needed at all.
        const double direction = axis.step < 0.0 ? -1.0 : 1.0;
        const auto rising = [&](std::size_t i) {
            return direction * distanceInHalfWidths(axis.at(std::ptrdiff_t(i)), position, width);
        };
        m_begin = firstIndex(points, [&](std::size_t i) { return rising(i) > -certainlyZero; });
        end = firstIndex(points, [&](std::size_t i) { return rising(i) >= certainlyZero; });
    }
    end = std::max(end, m_begin);
    m_size = end - m_begin;
    m_loweredOffset = (m_size + 4 * vectorSize) / vectorSize * vectorSize;
    m_storage.resize(2 * m_loweredOffset);
    m_offset = vectorSize + (placeInVector(like) + m_begin + vectorSize - placeInVector(m_storage.data())) % vectorSize;
    for (std::size_t i = m_begin; i < end; ++i) {
        const double value = factor(axis.at(std::ptrdiff_t(i)), position, width);
        double *raised = m_storage.data() + (m_offset + i - m_begin);
        raised[0] = value * raising;
        raised[m_loweredOffset] = value * lowering;
    }
    if (m_cut) {
        for (; m_size != 0 && m_storage[m_offset + m_size - 1] == 0.0; --m_size) { }
        for (; m_size != 0 && m_storage[m_offset] == 0.0; --m_size) {
            ++m_begin;
            ++m_offset;
        }
    }
    const double *first = raisedFrom(m_begin);
    m_peak = m_begin + std::size_t(std::max_element(first, first + m_size) - first);
}

} // namespace Magres
