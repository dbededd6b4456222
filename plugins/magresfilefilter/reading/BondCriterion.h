// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresAtom.h"

#include <vector>

namespace Magres {

/// Which pairs of the given atoms are bonded, as a limit on the squared distance per pair of species.
///
/// Two atoms whose covalent radii sum up to R are bonded at the distance D when R > D || 0.1 * R > |D - R|. In floating
/// point that expression is monotone in the squared distance under the root, because rounded sum, difference and root
/// are. So there is one largest double for which it holds, and comparing with that gives the expression's own answer
/// for every pair: NaN and infinity included, which compare false.
class BondCriterion {
public:
    /// Looks the radius of every atom up.
    explicit BondCriterion(const QList<MagresAtom> &atoms);

    /// A small number that atoms of equal radius share; atoms of unknown radius have kind 0.
    int kind(qsizetype atom) const { return m_kinds[std::size_t(atom)]; }

    /// Largest squared distance (Angstrom^2) of a bonded pair of these kinds; -1 when such atoms are never bonded.
    double limit(int kindA, int kindB) const
    {
        return m_limits[std::size_t(kindA) * m_longest.size() + std::size_t(kindB)];
    }

    /// The largest of the kind's limits; -1 when an atom of it is never bonded.
    double longest(int kind) const { return m_longest[std::size_t(kind)]; }
    /// The largest of all limits.
    double longest() const;

    /// Largest double d for which atoms of the squared distance d are bonded, given the sum of their radii (positive).
    static double largestSquaredDistance(double radiusSum);

private:
    std::vector<int> m_kinds;
    std::vector<double> m_limits;
    std::vector<double> m_longest;
};

} // namespace Magres
