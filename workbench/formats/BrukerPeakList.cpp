// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/BrukerPeakList.h"

#include "formats/BrukerReader.h"
#include "data/ReaderText.h"

#include <QDir>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <cmath>

namespace Workbench {

using ReaderText::fail;
using namespace Qt::StringLiterals;

namespace BrukerPeakList {

namespace {

constexpr qint64 largestFile = 64 << 20;

double number(const QXmlStreamReader &xml, QLatin1StringView name, const QString &source)
{
    const QStringView text = xml.attributes().value(name);
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        fail(source, int(xml.lineNumber()),
             Texts::tr("expected a number for %1 of a peak, found \"%2\"").arg(name, text.left(40).toString()));
    return value;
}

} // namespace

bool recognises(const QByteArray &start)
{
    return start.contains("<PeakList") && start.contains("<?xml");
}

MeasuredPeaks parse(const QByteArray &text, const QString &source)
{
    MeasuredPeaks result;
    result.format = Texts::tr("Bruker peak list");
    int lists = 0, dimensions = 0;
    QXmlStreamReader xml(text);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        lists += xml.name() == "PeakList1D"_L1 || xml.name() == "PeakList2D"_L1;
        const int found = xml.name() == "Peak1D"_L1 ? 1 : xml.name() == "Peak2D"_L1 ? 2 : 0;
        if (found == 0)
            continue;
        if (dimensions != 0 && found != dimensions)
            fail(source, int(xml.lineNumber()), Texts::tr("peaks of one and of two dimensions are mixed"));
        dimensions = found;
        MeasuredPeak peak;
        // The direct dimension is F1 of one and F2 of two dimensions.
        peak.f2 = number(xml, found == 1 ? "F1"_L1 : "F2"_L1, source);
        if (found == 2)
            peak.f1 = number(xml, "F1"_L1, source);
        peak.height = number(xml, "intensity"_L1, source);
        peak.label = xml.attributes().value("annotation"_L1).toString();
        result.peaks.push_back(std::move(peak));
    }
    if (xml.hasError())
        fail(source, int(xml.lineNumber()), xml.errorString());
    if (result.peaks.empty())
        fail(source, Texts::tr("the file holds no peaks"));
    result.dimensions = dimensions;
    if (lists > 1)
        result.notes.append(Texts::tr("The file has %1 lists, their peaks were joined.").arg(lists));
    return result;
}

MeasuredPeaks read(const QString &path)
{
    MeasuredPeaks peaks = parse(ReaderText::readText(path, largestFile), path);
    const BrukerReader::Description description = BrukerReader::describe(path);
    peaks.title = description.title.isEmpty() ? QFileInfo(path).completeBaseName() : description.title;
    for (size_t d = 0; d < size_t(peaks.dimensions); ++d)
        peaks.nuclei[d] = description.nuclei[d];
    return peaks;
}

QString beside(const QString &path)
{
    const QString name = u"peaklist.xml"_s;
    if (QFileInfo(path).fileName() == name)
        return path;
    const QString folder = BrukerReader::dataFolder(path);
    if (folder.isEmpty())
        fail(path, Texts::tr("a Bruker folder was expected, in which %1 lies beside the data").arg(name));
    const QString found = QDir(folder).filePath(name);
    if (!QFileInfo::exists(found))
        fail(path, Texts::tr("there is no %1 beside the data in %2").arg(name, folder));
    return found;
}

} // namespace BrukerPeakList

} // namespace Workbench
