// SPDX-License-Identifier: BSD-3-Clause
#include "reading/MoleculeDescription.h"

#include "parameters/ElementTable.h"
#include "support/MetaTypes.h"

namespace Magres {
namespace {

QVariantMap atomDescription(const MagresAtom &atom)
{
    QVariantMap map{{QStringLiteral("El"), atomicNumber(atom.type)},
                    {QStringLiteral("X"), atom.pos[0]},
                    {QStringLiteral("Y"), atom.pos[1]},
                    {QStringLiteral("Z"), atom.pos[2]},
                    {QStringLiteral("nH"), 0}};
    if (!atom.bonds.isEmpty()) {
        const QList<int> singleBonds(atom.bonds.size(), 1);
        map.insert(QStringLiteral("NB.Num"), QVariant::fromValue(atom.bonds));
        map.insert(QStringLiteral("NB.Conn"), QVariant::fromValue(singleBonds));
    }
    return map;
}

} // namespace

QVariantMap moleculeDescription(const MagresData &data)
{
    QVariantList atoms;
    atoms.reserve(data.atoms.size());
    for (const MagresAtom &atom : data.atoms)
        atoms.append(atomDescription(atom));
    QVariantMap description{{QStringLiteral("ID"), QUuid::createUuid()}, {QStringLiteral("Atoms"), atoms}};
    if (data.lattice.size() == 9) {
        const DoubleVector lattice(data.lattice.begin(), data.lattice.end());
        description.insert(QStringLiteral("CrystallographicData"),
                           QVariantMap{{QStringLiteral("Lattice"), QVariant::fromValue(lattice)}});
    }
    return description;
}

} // namespace Magres
