// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/SpectrumReader.h"

#include "formats/BrukerPeakList.h"
#include "formats/BrukerReader.h"
#include "formats/CsdmFile.h"
#include "formats/ForeignFormats.h"
#include "formats/JcampReader.h"
#include "data/ReaderText.h"
#include "formats/SimpsonReader.h"
#include "formats/TextReader.h"

#include <QFileInfo>

namespace Workbench {

Measurement readMeasurement(const QString &path, const ReadOptions &options)
{
    constexpr qint64 enough = 1 << 16; // to tell one format from another
    if (BrukerReader::recognises(path))
        return BrukerReader::read(path);
    const QByteArray start = ReaderText::readStart(path, enough);
    if (const QString refusal = ForeignFormats::refusal(path, start); !refusal.isEmpty())
        ReaderText::fail(path, refusal);
    if (QFileInfo(path).isDir())
        return BrukerReader::read(path); // which says what is missing
    if (JcampReader::recognises(start))
        return JcampReader::read(path, options);
    if (CsdmFile::recognises(start))
        return CsdmFile::read(path, options);
    if (SimpsonReader::recognises(start))
        return SimpsonReader::read(path, options);
    if (BrukerPeakList::recognises(start))
        return BrukerPeakList::read(path);
    if (start.contains('\0')) {
        ReaderText::fail(path,
                         Texts::tr("this is no measurement that can be read: expected a Bruker folder or its file "
                                   "1r or 2rr, JCAMP-DX, CSDM, SIMPSON or text with ppm and intensity"));
    }
    return TextReader::read(path, options);
}

ExperimentalSpectrum openExperimentalSpectrum(const QString &path, const ReadOptions &options)
{
    Measurement measurement = readMeasurement(path, options);
    if (auto *peaks = std::get_if<MeasuredPeaks>(&measurement))
        ReaderText::fail(path, Texts::tr("a spectrum was expected. %1").arg(peaks->notes.value(0)));
    return std::move(std::get<ExperimentalSpectrum>(measurement));
}

} // namespace Workbench
