// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/SpectrumReader.h"

#include "formats/BrukerReader.h"
#include "formats/ForeignFormats.h"
#include "formats/MeasurementFormats.h"
#include "data/ReaderText.h"

#include <QFileInfo>

namespace Workbench {

Measurement readMeasurement(const QString &path, const ReadOptions &options)
{
    constexpr qint64 enough = 1 << 16; // to tell one format from another
    const bool isBruker = BrukerReader::recognises(path); // a folder of raw and processed data is no foreign one
    const QByteArray start = isBruker ? QByteArray() : ReaderText::readStart(path, enough);
    if (const QString refusal = isBruker ? QString() : ForeignFormats::refusal(path, start); !refusal.isEmpty())
        ReaderText::fail(path, refusal);
    if (QFileInfo(path).isDir())
        return BrukerReader::read(path); // which says what is missing
    for (const MeasurementFormat &format : measurementFormats()) {
        if (format.recognises && format.recognises(path, start))
            return format.read(path, options);
    }
    ReaderText::fail(path,
                     Texts::tr("this is no measurement that can be read: expected a Bruker folder or its file "
                               "1r or 2rr, JCAMP-DX, CSDM, SIMPSON or text with ppm and intensity"));
}

ExperimentalSpectrum openExperimentalSpectrum(const QString &path, const ReadOptions &options)
{
    Measurement measurement = readMeasurement(path, options);
    if (auto *peaks = std::get_if<MeasuredPeaks>(&measurement))
        ReaderText::fail(path, Texts::tr("a spectrum was expected. %1").arg(peaks->notes.value(0)));
    return std::move(std::get<ExperimentalSpectrum>(measurement));
}

} // namespace Workbench
