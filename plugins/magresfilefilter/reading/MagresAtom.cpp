// SPDX-License-Identifier: BSD-3-Clause
#include "reading/MagresAtom.h"

#include "parameters/MapConversion.h"

#include <cmath>

namespace Magres {

QVariantMap MagresAtom::toMap() const
{
    return {{QStringLiteral("type"), type},
            {QStringLiteral("labels"), labelsToStrings(labels)},
            {QStringLiteral("No"), No},
            {QStringLiteral("recordNo"), recordNo},
            {QStringLiteral("pos"), QVariant::fromValue(DoubleVector(pos.begin(), pos.end()))},
            {QStringLiteral("bonds"), QVariant::fromValue(bonds)}};
}

void MagresAtom::fromMap(const QVariantMap &map)
{
    type = map.value(QStringLiteral("type")).toByteArray();
    labels = labelsFromStrings(map.value(QStringLiteral("labels")));
    No = map.value(QStringLiteral("No")).toInt();
    recordNo = map.value(QStringLiteral("recordNo")).toInt();
    pos = {};
    copyExactly(map.value(QStringLiteral("pos")).value<DoubleVector>(), pos);
    bonds = map.value(QStringLiteral("bonds")).value<QList<qint32>>();
}

double atomDistance(const MagresAtom &a, const MagresAtom &b)
{
    const double dx = a.pos[0] - b.pos[0];
    const double dy = a.pos[1] - b.pos[1];
    const double dz = a.pos[2] - b.pos[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

} // namespace Magres
