// SPDX-License-Identifier: BSD-3-Clause
#include "reading/NearestImage.h"

#include "reading/ImageKernels.h"

#include <algorithm>
#include <optional>

namespace Magres {
namespace {

using Basis = std::array<Position, 3>;

/// What a vector must get shorter by, of its squared length, to count as shorter: more than rounding makes of it, so
/// that no chain of such steps is endless, and far less than matters.
constexpr double noticeable = 1e-12;

bool replaceIfShorter(Position &v, const Position &candidate)
{
    if (!(dot(candidate, candidate) < (1.0 - noticeable) * dot(v, v)))
        return false;
    v = candidate;
    return true;
}

/// Takes from every vector what is nearest to it of the multiples of every other one.
bool reducePairs(Basis &basis)
{
    bool changed = false;
    for (Position &v : basis) {
        for (const Position &by : basis) {
            if (&v != &by)
                changed |= replaceIfShorter(v, plusScaled(v, -std::nearbyint(dot(v, by) / dot(by, by)), by));
        }
    }
    return changed;
}

/// Puts a sum or difference of all three in the place of the longest, if it is shorter.
bool reduceTriple(Basis &basis)
{
    const auto longest = std::max_element(basis.begin(), basis.end(),
                                          [](const Position &a, const Position &b) { return dot(a, a) < dot(b, b); });
    std::swap(*longest, basis[2]);
    const Position longestVector = basis[2];
    bool changed = false;
    for (double first : {-1.0, 1.0}) {
        for (double second : {-1.0, 1.0}) {
            changed |=
                replaceIfShorter(basis[2], plusScaled(plusScaled(longestVector, first, basis[0]), second, basis[1]));
        }
    }
    return changed;
}

/// No vector can be made shorter by adding the others with factors -1, 0, 1, which in three dimensions is what
/// Minkowski's conditions come to. None if that takes longer than any lattice of doubles should.
std::optional<Basis> reduced(Basis basis)
{
    for (int round = 0; round < 10000; ++round) {
        if (!reducePairs(basis) && !reduceTriple(basis))
            return basis;
    }
    return {};
}

/// The product with a face's vector, of that square, beyond which a vector is beyond the face.
double limitOf(double squared)
{
    return (0.5 + noticeable) * squared;
}

/// Rounded to an integer while below 2^51; faster than the library where that is a call.
double roundedQuickly(double x)
{
    constexpr double shift = 0x1.8p52;
    return (x + shift) - shift;
}

} // namespace

const ImageKernels &imageKernels(InstructionSet set)
{
    switch (set) {
#if defined(MAGRES_X86_VARIANTS)
    case InstructionSet::Avx512:
        return Avx512::imageKernels;
    case InstructionSet::Avx2:
        return Avx2::imageKernels;
#endif
    default:
        return Baseline::imageKernels;
    }
}

NearestImage::NearestImage(const QList<double> &lattice)
{
    if (lattice.size() != 9)
        return;
    Basis given;
    double longestGiven = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            given[i][axis] = lattice[qsizetype(3 * i + axis)];
        longestGiven = std::max(longestGiven, dot(given[i], given[i]));
    }
    if (!isFinite(given[0]) || !isFinite(given[1]) || !isFinite(given[2]) || !std::isfinite(longestGiven))
        return;
    const std::optional<Basis> basis = reduced(given);
    if (!basis)
        return;
    m_basis = *basis;
    findFaces();
    double shortest = m_faces[0].squared;
    for (const Face &face : m_faces)
        shortest = std::min(shortest, face.squared);
    // Vectors that lie in a plane leave no more than rounding errors. Those of a long vector come in as often as it
    // takes to make it short.
    constexpr double roomOfAnAtom = 0.1; // Angstrom
    if (!(std::sqrt(shortest) > std::max(roomOfAnAtom, 1e-6 * std::sqrt(longestGiven))))
        return;
    const double volume = dot(m_basis[0], cross(m_basis[1], m_basis[2]));
    for (std::size_t i = 0; i < 3; ++i) {
        m_dual[i] = cross(m_basis[(i + 1) % 3], m_basis[(i + 2) % 3]);
        for (double &component : m_dual[i])
            component /= volume;
        if (!isFinite(m_dual[i]) || !(dot(m_dual[i], m_dual[i]) > 0.0))
            return;
    }
    // Half the shortest lattice vector, less than that for safety.
    m_certainSquared = 0.249 * shortest;
    m_periodic = true;
}

/// The shortest of the sums with factors -1, 0, 1 for each way in which the factors can be odd or even.
void NearestImage::findFaces()
{
    for (unsigned odd = 1; odd < 8; ++odd) {
        Face &face = m_faces[odd - 1];
        for (unsigned signs = 0; signs < 8; ++signs) {
            Position v{};
            for (unsigned i = 0; i < 3; ++i) {
                if (odd >> i & 1)
                    v = plusScaled(v, signs >> i & 1 ? -1.0 : 1.0, m_basis[i]);
            }
            const double squared = dot(v, v);
            if (signs == 0 || squared < face.squared)
                face = {v, squared};
        }
    }
}

Position NearestImage::shortestOfImages(Position v) const
{
    if (!isFinite(v))
        return v;
    const Position f = fractional(v);
    for (std::size_t i = 0; i < 3; ++i) {
        if (const double cells = roundedQuickly(f[i]); cells != 0.0)
            v = plusScaled(v, -cells, m_basis[i]);
    }
    if (dot(v, v) <= m_certainSquared)
        return v;
    // A pass or two; more only where coordinates are so large that the first ones leave rounding errors behind.
    bool beyond = true;
    for (int pass = 0; beyond && pass < 100; ++pass) {
        beyond = false;
        for (const Face &face : m_faces) {
            const double height = dot(v, face.vector);
            if (std::abs(height) > limitOf(face.squared)) {
                v = plusScaled(v, -std::nearbyint(height / face.squared), face.vector);
                beyond = true;
            }
        }
    }
    return v;
}

ImageLattice NearestImage::kernelLattice() const
{
    ImageLattice lattice;
    for (std::size_t i = 0; i < 3; ++i) {
        std::copy(m_basis[i].begin(), m_basis[i].end(), lattice.basis[i]);
        std::copy(m_dual[i].begin(), m_dual[i].end(), lattice.dual[i]);
    }
    lattice.certainSquared = m_certainSquared;
    for (std::size_t i = 0; i < m_faces.size(); ++i) {
        std::copy(m_faces[i].vector.begin(), m_faces[i].vector.end(), lattice.faces[i].vector);
        lattice.faces[i].limit = limitOf(m_faces[i].squared);
    }
    return lattice;
}

// Most vectors are the shortest once whole basis vectors have been taken from them, which the kernels do for several at
// a time. They leave out those that are beyond a face then.
void NearestImage::squaredDistances(InstructionSet set, const Position &from, const PositionColumns &points,
                                    std::span<double> squared) const
{
    const ImageKernels &kernels = imageKernels(set);
    const double *x = points.x.data();
    const double *y = points.y.data();
    const double *z = points.z.data();
    if (!m_periodic) {
        kernels.squaredDistancesAlone(from.data(), x, y, z, squared.data(), squared.size());
        return;
    }
    kernels.squaredDistances(kernelLattice(), from.data(), x, y, z, squared.data(), squared.size());
    for (std::size_t i = 0; i < squared.size(); ++i) {
        if (!std::isnan(squared[i]))
            continue;
        const Position d = shortestOfImages(minus(from, points[i]));
        squared[i] = dot(d, d);
    }
}

} // namespace Magres
