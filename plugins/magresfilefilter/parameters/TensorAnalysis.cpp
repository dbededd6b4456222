// SPDX-License-Identifier: BSD-3-Clause
#include "parameters/TensorAnalysis.h"

#include <algorithm>
#include <cmath>

namespace Magres {
namespace {

double cubeRoot(double x)
{
    constexpr double third = 0.3333333333333333;
    return x < 0.0 ? -std::pow(-x, third) : std::pow(x, third);
}

} // namespace

std::optional<CubicRoots> solveCubic(const std::array<double, 4> &coefficients)
{
    const auto [a, b, c, d] = coefficients;
    if (a == 0.0 || d == 0.0)
        return std::nullopt;

    const double B = b / a;
    const double C = c / a;
    const double D = d / a;
    const double Q = (3.0 * C - B * B) / 9.0;
    const double R = ((9.0 * C - 2.0 * (B * B)) * B - 27.0 * D) / 54.0;
    const double discriminant = Q * Q * Q + R * R;
    const double s = B / 3.0;

    if (discriminant > 0.0) { // one real root
        const double root = std::sqrt(discriminant);
        const double S = cubeRoot(R + root);
        const double T = cubeRoot(R - root);
        const double re = -((S + T) * 0.5 + s);
        const double im = std::sqrt(3.0) * (S - T) * 0.5;
        return CubicRoots{{S + T - s, re, re}, {0.0, im, -im}};
    }
    if (discriminant == 0.0) {
        const double r = cubeRoot(R);
        return CubicRoots{{2.0 * r - s, -(r + s), -(r + s)}, {}};
    }
    constexpr double twoPi = 6.283185307179586;
    constexpr double fourPi = 12.566370614359172;
    const double theta = std::acos(R / std::sqrt(-Q * -Q * -Q));
    const double k = 2.0 * std::sqrt(-Q);
    return CubicRoots{{k * std::cos(theta / 3.0) - s, k * std::cos((theta + twoPi) / 3.0) - s,
                       k * std::cos((theta + fourPi) / 3.0) - s},
                      {}};
}

PrincipalValues principalValues(const Tensor &tensor)
{
    const auto &[m00, m01, m02, m10, m11, m12, m20, m21, m22] = tensor;
    // det(M - x 1), the characteristic polynomial.
    const std::optional<CubicRoots> roots = solveCubic(
        {-1.0, m11 + m00 + m22, m10 * m01 - m00 * m11 + m02 * m20 + m21 * m12 - m22 * m00 - m22 * m11,
         m12 * m01 * m20 - m02 * m11 * m20 + m02 * m10 * m21 - m12 * m00 * m21 - m01 * m10 * m22 + m00 * m11 * m22});
    if (!roots)
        return std::nullopt;

    std::array<double, 3> values = roots->re;
    const double mean = (values[0] + values[1] + values[2]) / 3.0;
    const auto distance = [mean](double value) { return std::abs(value - mean); };
    // Insertion sort: stable, and no trouble with not-a-number, which std::sort would not forgive.
    for (int i = 1; i < 3; ++i)
        for (int k = i; k > 0 && distance(values[k - 1]) > distance(values[k]); --k)
            std::swap(values[k - 1], values[k]);
    return values;
}

} // namespace Magres
