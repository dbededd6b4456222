// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/PeakListFile.h"

#include "support/MetaTypes.h"

#include <QList>
#include <QUuid>

namespace Workbench {

namespace PeakListFile {

QVariantMap toPeakMap(const std::vector<Peak> &peaks)
{
    QVariantList list;
    for (const Peak &peak : peaks) {
        list.append(QVariantMap{{QStringLiteral("ID"), QUuid::createUuid()},
                                {QStringLiteral("Pos"), QVariant::fromValue(DoubleVector{peak.f2, peak.f1})},
                                {QStringLiteral("Height"), peak.height},
                                {QStringLiteral("peakType"), 1},
                                {QStringLiteral("PeakLabel"), peak.label}});
    }
    return {{QStringLiteral("PeakList"), list},
            {QStringLiteral("ID"), QUuid::createUuid()},
            {QStringLiteral("PosUnits"), QVariant::fromValue(QList<int>{3, 3, 1})}};
}

} // namespace PeakListFile

} // namespace Workbench
