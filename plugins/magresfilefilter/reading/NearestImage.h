// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "numerics/InstructionSet.h"
#include "reading/Vectors.h"

#include <QList>

#include <array>
#include <span>
#include <vector>

namespace Magres {

struct ImageLattice;

/// Positions, coordinate by coordinate, for what passes over many of them. Angstrom.
struct PositionColumns {
    std::vector<double> x, y, z;

    std::size_t size() const { return x.size(); }
    Position operator[](std::size_t i) const { return {x[i], y[i], z[i]}; }
    void append(const Position &p)
    {
        x.push_back(p[0]);
        y.push_back(p[1]);
        z.push_back(p[2]);
    }
};

/// Vectors between points of a crystal, each taken to the nearest of the periodic images, in cells of any skewness.
///
/// In a skewed cell the nearest image is not among the neighbouring cells, so the lattice is reduced first (Minkowski).
/// Then every face of its Voronoi cell, the points that no lattice point is nearer to than the origin, belongs to a sum
/// of the basis vectors with factors -1, 0, 1 (P. Q. Nguyen, D. Stehle, ACM Trans. Algorithms 5 (2009) 46,
/// doi:10.1145/1597036.1597050), and of the vectors that agree modulo twice the lattice only the shortest can have one:
/// seven pairs of faces. A vector that is beyond a face gets shorter by that lattice vector; one that is beyond none is
/// the shortest (N. Sommer, M. Feder, O. Shalvi, SIAM J. Discrete Math. 23 (2009) 715, doi:10.1137/060676362).
class NearestImage {
public:
    /// `lattice`: a, b, c, Angstrom. Nothing is periodic unless these are nine finite values that span a cell an atom
    /// would fit into, with what doubles can tell of it.
    explicit NearestImage(const QList<double> &lattice);

    bool isPeriodic() const { return m_periodic; }

    /// The shortest of v + i a + j b + l c; v itself when nothing is periodic or v is not finite.
    Position shortest(const Position &v) const
    {
        return !m_periodic || dot(v, v) <= m_certainSquared ? v : shortestOfImages(v);
    }
    /// Angstrom.
    double distance(const Position &a, const Position &b) const
    {
        const Position d = shortest(minus(a, b));
        return std::sqrt(dot(d, d));
    }

    /// Of each point from `from`, squared, Angstrom^2: what distance() gives is the root, bit for bit. As many as
    /// points.
    void squaredDistances(const Position &from, const PositionColumns &points, std::span<double> squared) const
    {
        squaredDistances(fastestInstructionSet(), from, points, squared);
    }
    /// With a set that is supported.
    void squaredDistances(InstructionSet set, const Position &from, const PositionColumns &points,
                          std::span<double> squared) const;

    /// Coordinates in the reduced basis. This and spacing() are for what is periodic.
    Position fractional(const Position &p) const { return {dot(m_dual[0], p), dot(m_dual[1], p), dot(m_dual[2], p)}; }
    /// Distance of the planes between which that fractional coordinate grows by one, Angstrom.
    double spacing(std::size_t axis) const { return 1.0 / std::sqrt(dot(m_dual[axis], m_dual[axis])); }

private:
    Position shortestOfImages(Position v) const;
    ImageLattice kernelLattice() const;
    void findFaces();

    bool m_periodic = false;
    double m_certainSquared = 0.0; // of a length below which every vector is the shortest
    std::array<Position, 3> m_basis{}; // reduced
    std::array<Position, 3> m_dual{};
    struct Face {
        Position vector;
        double squared;
    };
    std::array<Face, 7> m_faces{};
};

} // namespace Magres
