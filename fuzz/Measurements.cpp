// SPDX-License-Identifier: GPL-3.0-or-later
#include "Targets.h"

#include "formats/BrukerPeakList.h"
#include "formats/BrukerReader.h"
#include "formats/CsdmFile.h"
#include "formats/ExperimentFile.h"
#include "formats/JcampReader.h"
#include "formats/SimpsonReader.h"
#include "formats/TextReader.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <stdexcept>

using namespace Workbench;

namespace {

const QString source = QStringLiteral("input");

void checkSound(const ExperimentalSpectrum &spectrum)
{
    std::size_t points = 1;
    for (const SpectrumDimension &axis : spectrum.dimensions) {
        points *= std::size_t(axis.points);
        Fuzz::require(axis.step < 0.0 && std::isfinite(axis.first) && std::isfinite(axis.width),
                      "an axis of no shifts");
    }
    Fuzz::require(points == spectrum.data.size(), "points and axes differ");
    for (double value : spectrum.data)
        Fuzz::require(std::isfinite(value), "a point that is no number");
}

/// Reads, once for each number of dimensions that may be looked for, and puts what was read beside a simulated
/// spectrum.
template <typename Read>
void useMeasurement(Read read)
{
    ReadOptions options;
    options.frequency = {400.0, 100.0};
    for (options.dimensions = 1; options.dimensions <= 2; ++options.dimensions) {
        try {
            Measurement measurement = read(std::as_const(options));
            if (const auto *spectrum = std::get_if<ExperimentalSpectrum>(&measurement)) {
                checkSound(*spectrum);
                CsdmFile::parse(CsdmFile::written(*spectrum), source);
            } else {
                for (const MeasuredPeak &peak : std::get<MeasuredPeaks>(measurement).peaks)
                    Fuzz::require(std::isfinite(peak.f2) && std::isfinite(peak.f1) && std::isfinite(peak.height),
                                  "a peak without numbers");
            }
            Experiment(std::move(measurement), source, QStringList(options.dimensions, QString()), {400.0, 100.0})
                .beside(QList<SpectrumPeak>(1));
        } catch (const std::runtime_error &) {
        }
    }
}

} // namespace

void Fuzz::brukerPeaks(QByteArrayView bytes)
{
    useMeasurement([&](const ReadOptions &) { return BrukerPeakList::parse(bytes.toByteArray(), source); });
}

void Fuzz::csdm(QByteArrayView bytes)
{
    useMeasurement([&](const ReadOptions &options) { return CsdmFile::parse(bytes.toByteArray(), source, options); });
}

void Fuzz::jcamp(QByteArrayView bytes)
{
    useMeasurement(
        [&](const ReadOptions &options) { return JcampReader::parse(bytes.toByteArray(), source, options); });
}

void Fuzz::simpson(QByteArrayView bytes)
{
    useMeasurement(
        [&](const ReadOptions &options) { return SimpsonReader::parse(bytes.toByteArray(), source, options); });
}

void Fuzz::text(QByteArrayView bytes)
{
    useMeasurement([&](const ReadOptions &options) { return TextReader::parse(bytes.toByteArray(), source, options); });
}

// The files of a data set follow each other, with the file separator of ASCII between them.
void Fuzz::bruker(QByteArrayView bytes)
{
    static const QTemporaryDir folder;
    const QString processed = folder.filePath(QStringLiteral("pdata/1/"));
    QDir().mkpath(processed);
    for (const QString &name : {folder.filePath(QStringLiteral("acqus")), folder.filePath(QStringLiteral("acqu2s")),
                                processed + QStringLiteral("procs"), processed + QStringLiteral("proc2s"),
                                processed + QStringLiteral("2rr"), processed + QStringLiteral("1r")}) {
        const bool rest = name.endsWith(QStringLiteral("1r"));
        const qsizetype end = rest ? -1 : bytes.indexOf('\x1c');
        const QByteArrayView content = end < 0 ? bytes : bytes.first(end);
        bytes = end < 0 ? QByteArrayView() : bytes.sliced(end + 1);
        QFile file(name);
        if (content.isEmpty())
            file.remove();
        else if (file.open(QIODevice::WriteOnly))
            file.write(content.data(), content.size());
    }
    useMeasurement([&](const ReadOptions &) { return BrukerReader::read(folder.path()); });
}
