// SPDX-License-Identifier: BSD-3-Clause
// Compiled once per instruction set: numerics/InstructionSet.h says what such a source must not do.
#include "synthesis/LineShapeKernels.h"

namespace Magres::MAGRES_INSTRUCTION_SET {
namespace {

void addLorentzian(const LinePeak &peak, double width, const double *x, double *__restrict data, std::size_t count)
{
    const double position = peak.positionF2;
    const double height = peak.height;
    for (std::size_t i = 0; i < count; ++i) {
        const double t = 2.0 * (x[i] - position) / width;
        data[i] += height / (1.0 + t * t);
    }
}

#if defined(__FMA__) || defined(__ARM_FEATURE_FMA)

// The quotient of a constant divisor, from its reciprocal, correctly rounded: with y = 1/h rounded to nearest and a
// first quotient q that is one of the two doubles next to d/h, q + (d - q h) y, each step fused, is d/h rounded to
// nearest (P. Markstein, IBM J. Res. Dev. 34 (1990) 111, doi:10.1147/rd.341.0111). The first quotient is that good
// because it is formed from the reciprocal to twice the precision, which leaves little more than its final rounding as
// error. Halving the width instead of doubling the distance changes no bit.
void addLorentzianByReciprocal(const LinePeak &peak, double width, const double *x, double *__restrict data,
                               std::size_t count)
{
    const double position = peak.positionF2;
    const double height = peak.height;
    const double halfWidth = 0.5 * width;
    const double high = 1.0 / halfWidth;
    const double low = __builtin_fma(-halfWidth, high, 1.0) / halfWidth;
    for (std::size_t i = 0; i < count; ++i) {
        const double distance = x[i] - position;
        const double q = __builtin_fma(distance, high, distance * low);
        const double t = __builtin_fma(__builtin_fma(q, -halfWidth, distance), high, q);
        data[i] += height / (1.0 + t * t);
    }
}

#else

constexpr auto addLorentzianByReciprocal = nullptr;

#endif

template <std::size_t Terms>
void addScaled(const ScaledValues *terms, double *__restrict data, std::size_t count)
{
    static_assert(Terms >= 1 && Terms <= 4);
    constexpr std::size_t last = Terms - 1;
    const ScaledValues first = terms[0];
    const ScaledValues second = terms[last < 1 ? last : 1];
    const ScaledValues third = terms[last < 2 ? last : 2];
    const ScaledValues fourth = terms[last];
    for (std::size_t i = 0; i < count; ++i) {
        double sum = data[i] + first.factor * first.values[i];
        if constexpr (Terms > 1)
            sum += second.factor * second.values[i];
        if constexpr (Terms > 2)
            sum += third.factor * third.values[i];
        if constexpr (Terms > 3)
            sum += fourth.factor * fourth.values[i];
        data[i] = sum;
    }
}

} // namespace

const LineShapeKernels lineShapeKernels = {
    addLorentzian, addLorentzianByReciprocal, {addScaled<1>, addScaled<2>, addScaled<3>, addScaled<4>}};

} // namespace Magres::MAGRES_INSTRUCTION_SET
