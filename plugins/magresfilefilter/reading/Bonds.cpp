// SPDX-License-Identifier: BSD-3-Clause
#include "reading/Bonds.h"

#include "reading/BondCriterion.h"
#include "reading/NeighbourGrid.h"
#include "reading/Vectors.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Magres {
namespace {

/// All bonded pairs, each once.
std::vector<std::pair<qint32, qint32>> bondedPairs(const QList<MagresAtom> &atoms)
{
    std::vector<std::pair<qint32, qint32>> pairs;
    const BondCriterion criterion(atoms);
    if (criterion.longest() < 0.0)
        return pairs;
    NeighbourGrid grid(1.001 * std::sqrt(criterion.longest()), std::size_t(atoms.size()));
    for (qint32 i = 0; i < atoms.size(); ++i) {
        if (criterion.longest(criterion.kind(i)) >= 0.0)
            grid.insert(i, atoms[i].pos);
    }
    const MagresAtom *atom = atoms.constData();
    grid.visitPairs([&](qint32 i, qint32 j) {
        if (squaredDistance(atom[i].pos, atom[j].pos) <= criterion.limit(criterion.kind(i), criterion.kind(j)))
            pairs.emplace_back(i, j);
    });
    return pairs;
}

} // namespace

void detectBonds(QList<MagresAtom> &atoms)
{
    const auto pairs = bondedPairs(std::as_const(atoms));
    std::vector<qint32> degrees(std::size_t(atoms.size()), 0);
    for (const auto &[i, j] : pairs) {
        ++degrees[std::size_t(i)];
        ++degrees[std::size_t(j)];
    }
    MagresAtom *atom = atoms.data();
    for (std::size_t i = 0; i < degrees.size(); ++i) {
        atom[i].bonds.clear();
        atom[i].bonds.reserve(degrees[i]);
    }
    for (const auto &[i, j] : pairs) {
        atom[i].bonds.append(j);
        atom[j].bonds.append(i);
    }
    for (std::size_t i = 0; i < degrees.size(); ++i)
        std::sort(atom[i].bonds.begin(), atom[i].bonds.end());
}

} // namespace Magres
