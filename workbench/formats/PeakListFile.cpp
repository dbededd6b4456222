// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/PeakListFile.h"

#include "data/ReaderText.h"
#include "formats/TextReader.h"
#include "support/MetaTypes.h"

#include <QList>
#include <QUuid>

namespace Workbench {

namespace PeakListFile {

std::vector<Peak> parse(const QByteArray &text, const QString &source, int dimensions)
{
    ReadOptions options;
    options.dimensions = dimensions;
    Measurement measurement = TextReader::parse(text, source, options);
    auto *list = std::get_if<MeasuredPeaks>(&measurement);
    if (!list)
        ReaderText::fail(source, Texts::tr("this is a spectrum, a list of peaks was expected"));
    if (list->dimensions != dimensions)
        ReaderText::fail(source,
                         dimensions == 1
                             ? Texts::tr("this is a list of 2D peaks, expected \"position[,height]\"")
                             : Texts::tr("this is a list of 1D peaks, expected \"position,position_f1[,height]\""));
    return std::move(list->peaks);
}

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
