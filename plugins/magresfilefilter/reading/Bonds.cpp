// SPDX-License-Identifier: BSD-3-Clause
#include "reading/Bonds.h"

#include "parameters/Texts.h"
#include "reading/BondCriterion.h"
#include "reading/MagresParser.h"
#include "reading/NeighbourGrid.h"
#include "reading/Vectors.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Magres {
namespace {

// In the densest crystals of the largest atoms some seventy others lie within a bond's length. Memory grows with the
// square of what is allowed here.
constexpr qint32 mostBonds = 500;

struct BondedPairs {
    std::vector<std::pair<qint32, qint32>> pairs; // each once
    std::vector<qint32> degrees; // of all atoms
};

BondedPairs bondedPairs(const QList<MagresAtom> &atoms)
{
    BondedPairs bonded{{}, std::vector<qint32>(std::size_t(atoms.size()), 0)};
    const BondCriterion criterion(atoms);
    if (criterion.longest() < 0.0)
        return bonded;
    NeighbourGrid grid(1.001 * std::sqrt(criterion.longest()), std::size_t(atoms.size()));
    for (qint32 i = 0; i < atoms.size(); ++i) {
        if (criterion.longest(criterion.kind(i)) >= 0.0)
            grid.insert(i, atoms[i].pos);
    }
    const MagresAtom *atom = atoms.constData();
    const auto count = [&](qint32 i) {
        if (++bonded.degrees[std::size_t(i)] > mostBonds) {
            throw MagresParseError(
                Texts::tr("Atom %1 %2 has more than %3 bonds; are the coordinates in the unit that "
                          "the file states?")
                    .arg(QString::fromLatin1(atom[i].type), QString::number(atom[i].No), QString::number(mostBonds)));
        }
    };
    grid.visitPairs([&](qint32 i, qint32 j) {
        if (squaredDistance(atom[i].pos, atom[j].pos) <= criterion.limit(criterion.kind(i), criterion.kind(j))) {
            count(i);
            count(j);
            bonded.pairs.emplace_back(i, j);
        }
    });
    return bonded;
}

} // namespace

void detectBonds(QList<MagresAtom> &atoms)
{
    const auto [pairs, degrees] = bondedPairs(std::as_const(atoms));
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
