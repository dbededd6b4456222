// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/MeasurementFormats.h"

#include "formats/BrukerPeakList.h"
#include "formats/BrukerReader.h"
#include "formats/CsdmFile.h"
#include "formats/JcampReader.h"
#include "formats/SimpsonReader.h"
#include "formats/TextReader.h"

namespace Workbench {

using namespace Qt::StringLiterals;

const std::vector<MeasurementFormat> &measurementFormats()
{
    using Path = const QString &;
    using Start = const QByteArray &;
    using Options = const ReadOptions &;
    static const std::vector<MeasurementFormat> list{
        {u"Bruker"_s,
         {},
         {u"1r"_s, u"2rr"_s, u"procs"_s, u"proc2s"_s},
         [](Path path, Start) { return BrukerReader::recognises(path); },
         [](Path path, Options) { return Measurement(BrukerReader::read(path)); }},
        {u"JCAMP-DX"_s,
         {u"jdx"_s, u"dx"_s, u"jcamp"_s, u"jcm"_s},
         {},
         [](Path, Start start) { return JcampReader::recognises(start); },
         [](Path path, Options options) { return Measurement(JcampReader::read(path, options)); }},
        {u"CSDM"_s,
         {u"csdf"_s, u"csdfe"_s},
         {},
         [](Path, Start start) { return CsdmFile::recognises(start); },
         [](Path path, Options options) { return Measurement(CsdmFile::read(path, options)); }},
        {u"SIMPSON"_s,
         {u"spe"_s},
         {},
         [](Path, Start start) { return SimpsonReader::recognises(start); },
         [](Path path, Options options) { return Measurement(SimpsonReader::read(path, options)); }},
        {u"Bruker peak list"_s,
         {},
         {u"peaklist.xml"_s},
         [](Path, Start start) { return BrukerPeakList::recognises(start); },
         [](Path path, Options) { return Measurement(BrukerPeakList::read(path)); }},
        {u"text"_s,
         {u"csv"_s, u"txt"_s, u"tsv"_s, u"asc"_s, u"dat"_s},
         {},
         [](Path, Start start) { return !start.contains('\0'); },
         [](Path path, Options options) { return TextReader::read(path, options); }},
    };
    return list;
}

} // namespace Workbench
