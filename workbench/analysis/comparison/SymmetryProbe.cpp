// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/SymmetryProbe.h"

#include "analysis/comparison/Lattice.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace Workbench {
namespace {

/// Rows: what a rotation makes of a, b and c, in units of these.
using Rotation = std::array<std::array<int, 3>, 3>;

template <typename Factor>
Vector3 combined(const LatticeVectors &vectors, const std::array<Factor, 3> &factors)
{
    Vector3 sum{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            sum[axis] += factors[i] * vectors[i][axis];
    return sum;
}

/// The rotations that leave a reduced lattice what it is, about within the length `slack`. In a reduced cell their
/// elements are -1, 0 and 1.
std::vector<Rotation> rotationsOf(const LatticeVectors &cell, double slack)
{
    std::array<std::vector<std::array<int, 3>>, 3> images; // of each vector, by its length
    for (int i = 0; i < 27; ++i) {
        const std::array<int, 3> image{i / 9 - 1, i / 3 % 3 - 1, i % 3 - 1};
        const double size = length(combined(cell, image));
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (std::abs(size - length(cell[axis])) <= slack)
                images[axis].push_back(image);
    }
    const auto hasAngle = [&](const std::array<int, 3> &u, const std::array<int, 3> &v, std::size_t i, std::size_t j) {
        return std::abs(dot(combined(cell, u), combined(cell, v)) - dot(cell[i], cell[j]))
            <= slack * (length(cell[i]) + length(cell[j]));
    };
    std::vector<Rotation> rotations;
    for (const auto &a : images[0])
        for (const auto &b : images[1]) {
            if (!hasAngle(a, b, 0, 1))
                continue;
            for (const auto &c : images[2])
                if (hasAngle(a, c, 0, 2) && hasAngle(b, c, 1, 2))
                    rotations.push_back({a, b, c});
        }
    return rotations;
}

/// Atoms by element, in units of the cell.
class Motif {
public:
    Motif(const CrystalStructure &structure, const Lattice &lattice, double slack)
        : m_cell(lattice.reduced()), m_slack(slack)
    {
        std::map<QString, std::vector<Vector3>> elements;
        for (const CrystalAtom &atom : structure.atoms)
            elements[atom.element].push_back(lattice.reducedFractional(atom.position));
        for (auto &[element, positions] : elements)
            m_elements.push_back(std::move(positions));
        // Few atoms of an element leave few translations to try, and fail soonest.
        std::stable_sort(m_elements.begin(), m_elements.end(),
                         [](const auto &a, const auto &b) { return a.size() < b.size(); });
    }

    bool isKeptBy(const Rotation &rotation) const
    {
        const std::vector<Vector3> &rarest = m_elements.front();
        const Vector3 turned = combined(rotation, rarest.front());
        for (std::size_t i = 0; i < rarest.size(); ++i) {
            const bool isIdentity = i == 0 && rotation == Rotation{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
            const Vector3 shift{rarest[i][0] - turned[0], rarest[i][1] - turned[1], rarest[i][2] - turned[2]};
            if (!isIdentity && isKeptBy(rotation, shift))
                return true;
        }
        return false;
    }

private:
    static Vector3 combined(const Rotation &rotation, const Vector3 &position)
    {
        Vector3 sum{};
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t axis = 0; axis < 3; ++axis)
                sum[axis] += position[i] * rotation[i][axis];
        return sum;
    }

    bool isKeptBy(const Rotation &rotation, const Vector3 &shift) const
    {
        return std::all_of(m_elements.begin(), m_elements.end(), [&](const std::vector<Vector3> &positions) {
            return std::all_of(positions.begin(), positions.end(), [&](const Vector3 &position) {
                Vector3 image = combined(rotation, position);
                for (std::size_t axis = 0; axis < 3; ++axis)
                    image[axis] += shift[axis];
                return std::any_of(positions.begin(), positions.end(),
                                   [&](const Vector3 &other) { return areSame(image, other); });
            });
        });
    }

    bool areSame(const Vector3 &a, const Vector3 &b) const
    {
        Vector3 between{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double f = a[axis] - b[axis];
            between[axis] = f - std::round(f);
        }
        return length(Workbench::combined(m_cell, between)) <= m_slack;
    }

    LatticeVectors m_cell;
    double m_slack;
    std::vector<std::vector<Vector3>> m_elements;
};

} // namespace

bool mayHaveSymmetry(const CrystalStructure &structure, const Lattice &lattice, double tolerance)
{
    const auto isPlaced = [](const CrystalAtom &atom) { return std::isfinite(length(atom.position)); };
    if (structure.atoms.empty() || !std::all_of(structure.atoms.begin(), structure.atoms.end(), isPlaced))
        return true;
    // An atom and the one that fixes the translation may each be off by the tolerance, the cell by as much.
    const double slack = 4 * tolerance;
    const Motif motif(structure, lattice, slack);
    const std::vector<Rotation> rotations = rotationsOf(lattice.reduced(), slack);
    return std::any_of(rotations.begin(), rotations.end(),
                       [&](const Rotation &rotation) { return motif.isKeptBy(rotation); });
}

} // namespace Workbench
