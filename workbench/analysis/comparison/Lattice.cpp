// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/Lattice.h"

#include <spglib.h>

#include <algorithm>
#include <cmath>

namespace Workbench {
namespace {

double dot(const Vector3 &a, const Vector3 &b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector3 cross(const Vector3 &a, const Vector3 &b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector3 combined(const std::array<Vector3, 3> &vectors, const Vector3 &factors)
{
    Vector3 sum{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            sum[axis] += factors[i] * vectors[i][axis];
    return sum;
}

/// The reciprocal vectors without 2 pi; none where there is no volume.
std::optional<std::array<Vector3, 3>> reciprocal(const LatticeVectors &v)
{
    const double volume = dot(v[0], cross(v[1], v[2]));
    const double box = length(v[0]) * length(v[1]) * length(v[2]);
    if (!std::isfinite(box) || !(std::abs(volume) > 1e-6 * box))
        return std::nullopt;
    std::array<Vector3, 3> result{cross(v[1], v[2]), cross(v[2], v[0]), cross(v[0], v[1])};
    for (Vector3 &row : result)
        for (double &element : row)
            element /= volume;
    return result;
}

LatticeVectors niggliCell(const LatticeVectors &vectors)
{
    double columns[3][3]; // spglib has the vectors in columns
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            columns[axis][i] = vectors[i][axis];
    if (spg_niggli_reduce(columns, 1e-5) == 0)
        return vectors;
    LatticeVectors reduced;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            reduced[i][axis] = columns[axis][i];
    return reduced;
}

} // namespace

double length(const Vector3 &vector)
{
    return std::sqrt(dot(vector, vector));
}

std::optional<Lattice> Lattice::of(const LatticeVectors &vectors)
{
    Lattice lattice;
    lattice.m_vectors = vectors;
    const auto inverse = reciprocal(vectors);
    if (!inverse)
        return std::nullopt;
    lattice.m_inverse = *inverse;
    lattice.m_reduced = niggliCell(vectors);
    const auto reducedInverse = reciprocal(lattice.m_reduced);
    if (!reducedInverse)
        return std::nullopt;
    lattice.m_reducedInverse = *reducedInverse;
    return lattice;
}

Vector3 Lattice::fractional(const Vector3 &position) const
{
    return {dot(m_inverse[0], position), dot(m_inverse[1], position), dot(m_inverse[2], position)};
}

Vector3 Lattice::cartesian(const Vector3 &fractional) const
{
    return combined(m_vectors, fractional);
}

Vector3 Lattice::nearestImage(const Vector3 &from, const Vector3 &to) const
{
    const Vector3 between = {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
    Vector3 wrapped;
    for (std::size_t i = 0; i < 3; ++i) {
        const double f = dot(m_reducedInverse[i], between);
        wrapped[i] = f - std::round(f);
    }
    // In a cell whose vectors are as short as can be, the nearest image is at most one cell away from the wrapped one.
    Vector3 nearest{};
    double least = std::numeric_limits<double>::infinity();
    for (int a = -1; a <= 1; ++a)
        for (int b = -1; b <= 1; ++b)
            for (int c = -1; c <= 1; ++c) {
                const Vector3 image = combined(m_reduced, {wrapped[0] + a, wrapped[1] + b, wrapped[2] + c});
                if (const double square = dot(image, image); square < least) {
                    least = square;
                    nearest = image;
                }
            }
    return nearest;
}

double Lattice::distance(const Vector3 &a, const Vector3 &b) const
{
    return length(nearestImage(a, b));
}

} // namespace Workbench
