// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/MeasurementFormats.h"

#include "data/Error.h"
#include "formats/BrukerPeakList.h"
#include "formats/BrukerReader.h"
#include "formats/CsdmFile.h"
#include "formats/JcampExport.h"
#include "formats/JcampReader.h"
#include "formats/SimpsonReader.h"
#include "formats/SpectrumExport.h"
#include "formats/TextReader.h"

#include <algorithm>

namespace Workbench {

using namespace Qt::StringLiterals;

namespace {

/// JSON and XML that none of the formats is: no table, whatever numbers stand in it.
bool isMarkup(const QByteArray &start)
{
    return start.startsWith('{') || start.startsWith("<?xml") || start.startsWith("<!");
}

} // namespace

const std::vector<MeasurementFormat> &measurementFormats()
{
    using Path = const QString &;
    using Start = const QByteArray &;
    using Options = const ReadOptions &;
    static const std::vector<MeasurementFormat> list{
        {u"Bruker"_s,
         {},
         {},
         {u"1r"_s, u"2rr"_s, u"procs"_s, u"proc2s"_s},
         [](Path path, Start) { return BrukerReader::recognises(path); },
         [](Path path, Options) { return Measurement(BrukerReader::read(path)); }},
        {u"JCAMP-DX"_s,
         {u"jdx"_s, u"dx"_s, u"jcamp"_s, u"jcm"_s},
         u"chemical/x-jcamp-dx"_s,
         {},
         [](Path, Start start) { return JcampReader::recognises(start); },
         [](Path path, Options options) { return Measurement(JcampReader::read(path, options)); },
         JcampExport::write,
         Texts::tr("JCAMP-DX"),
         2},
        {u"CSDM"_s,
         {u"csdf"_s, u"csdfe"_s},
         u"application/json"_s,
         {},
         [](Path, Start start) { return CsdmFile::recognises(start); },
         [](Path path, Options options) { return Measurement(CsdmFile::read(path, options)); },
         CsdmFile::write,
         Texts::tr("CSDM")},
        {u"SIMPSON"_s,
         {u"spe"_s},
         {},
         {},
         [](Path, Start start) { return SimpsonReader::recognises(start); },
         [](Path path, Options options) { return Measurement(SimpsonReader::read(path, options)); }},
        {u"Bruker peak list"_s,
         {},
         u"application/xml"_s,
         {u"peaklist.xml"_s},
         [](Path, Start start) { return BrukerPeakList::recognises(start); },
         [](Path path, Options) { return Measurement(BrukerPeakList::read(path)); }},
        {u"JSON"_s,
         {u"json"_s},
         u"application/json"_s,
         {},
         nullptr,
         nullptr,
         SpectrumExport::writeJson,
         Texts::tr("axes, peaks, parameters")},
        {u"text"_s,
         {u"csv"_s, u"txt"_s, u"tsv"_s, u"asc"_s, u"dat"_s},
         u"text/csv"_s,
         {},
         [](Path, Start start) { return !start.contains('\0') && !isMarkup(start.trimmed()); },
         [](Path path, Options options) { return TextReader::read(path, options); },
         SpectrumExport::writeCsv,
         Texts::tr("data points")},
    };
    return list;
}

const QStringList &suffixesToWrite()
{
    static const QStringList list = [] {
        QStringList all;
        for (const MeasurementFormat &format : measurementFormats())
            all += format.write ? format.suffixes.first(format.written) : QStringList();
        all.sort();
        return all;
    }();
    return list;
}

const MeasurementFormat *formatToWrite(const QString &suffix)
{
    const auto &all = measurementFormats();
    const auto found = std::find_if(all.begin(), all.end(), [&](const MeasurementFormat &format) {
        return format.write && format.suffixes.first(format.written).contains(suffix);
    });
    return found == all.end() ? nullptr : &*found;
}

} // namespace Workbench
