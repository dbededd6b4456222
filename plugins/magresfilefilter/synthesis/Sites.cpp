// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/Sites.h"

#include "parameters/Nuclei.h"
#include "parameters/TensorIndex.h"

namespace Magres {

double ShiftRule::shift(double isotropicShielding, const MagresTensor *efg) const
{
    double result = isotropicShielding * slope + reference;
    if (withQuadShift && efg)
        result += efg->secondOrderQuadShift(nucleus, quadrupoleMoment, frequency, 1);
    return result;
}

ShiftRule shiftRule(const MagresSpecParams &parameters, int dimension, const NuclearProperties &properties)
{
    const QString &name = dimension == 0 ? parameters.nucF2 : parameters.nucF1;
    const QByteArray nucleus = name.toLatin1();
    return {nucleus,
            parameters.referenceOf(name),
            parameters.slopeOf(name),
            parameters.quadShift(dimension),
            spectrometerFrequency(nucleus, parameters.freq),
            properties.quadrupoleMoment(nucleus)};
}

QList<Site> sitesOf(const MagresData &data, const QByteArray &nucleus)
{
    const QByteArray element = elementOf(nucleus);
    const TensorIndex shieldings(data.shieldings);
    const TensorIndex efgs(data.EFG);
    QList<Site> sites;
    for (const MagresAtom *atom : atomsInFileOrder(data))
        if (atom->type == element)
            sites.append({atom, shieldings.find(atom->labels, atom->No), efgs.find(atom->labels, atom->No)});
    return sites;
}

} // namespace Magres
