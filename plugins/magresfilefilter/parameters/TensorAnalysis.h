// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <array>
#include <optional>

namespace Magres {

/// A 3x3 matrix, row-major: xx, xy, xz, yx, yy, yz, zx, zy, zz. Not necessarily symmetric.
using Tensor = std::array<double, 9>;

/// Haeberlen order: index 0 is yy, the value closest to the mean, 1 is xx, 2 is zz, the value farthest from it.
/// None for a matrix whose determinant is exactly zero.
using PrincipalValues = std::optional<std::array<double, 3>>;

struct CubicRoots {
    std::array<double, 3> re{};
    std::array<double, 3> im{};
};

/// Roots of a x^3 + b x^2 + c x + d for the coefficients [a, b, c, d], in closed form (Cardano; trigonometric for three
/// real roots: NIST Digital Library of Mathematical Functions, section 1.11(iii)). None when a or d is exactly zero.
std::optional<CubicRoots> solveCubic(const std::array<double, 4> &coefficients);

/// The real parts of the eigenvalues, by increasing distance from their mean. Values at equal distance keep the order
/// in which solveCubic() gives them.
PrincipalValues principalValues(const Tensor &tensor);

} // namespace Magres
