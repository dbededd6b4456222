// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/SpectrumReader.h"

#include "formats/BrukerReader.h"
#include "formats/CsvSpectrumReader.h"
#include "formats/JcampReader.h"
#include "data/ReaderText.h"

#include <QFile>
#include <QFileInfo>

namespace Workbench {

namespace {

/// Enough to tell one format from another; empty when the file cannot be read.
QByteArray startOf(const QString &path)
{
    constexpr qint64 length = 1 << 16;
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.read(length) : QByteArray();
}

} // namespace

ExperimentalSpectrum openExperimentalSpectrum(const QString &path)
{
    if (BrukerReader::recognises(path))
        return BrukerReader::read(path);
    const QByteArray start = startOf(path);
    if (JcampReader::recognises(start))
        return JcampReader::read(path);
    if (start.contains('\0')) {
        ReaderText::fail(path,
                         ReaderText::tr("this is no spectrum that can be read: expected a Bruker folder or its file "
                                        "1r or 2rr, a JCAMP-DX file or comma-separated text"));
    }
    return CsvSpectrumReader::read(path);
}

} // namespace Workbench
