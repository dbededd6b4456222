// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ExperimentFile.h"

#include "data/Error.h"
#include "data/SpectrumEntry.h"
#include "formats/PeakListFile.h"
#include "analysis/PeakPicking.h"
#include "formats/MeasurementFormats.h"
#include "formats/SpectrumReader.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <functional>
#include <stdexcept>

namespace Workbench {

namespace ExperimentFile {

namespace {

constexpr double equalShifts = 0.01; // ppm: calculated shifts of equivalent sites differ in the last digits

void checkDimensions(qsizetype found, qsizetype expected, const QString &name)
{
    if (found != expected) {
        fail(Texts::tr("%1 has %2 dimension(s), the spectrum in the plot has %3")
                 .arg(name, QString::number(found), QString::number(expected)));
    }
}

/// A silent file is of the nucleus in the plot; another one is an error.
void matchNucleus(QString &nucleus, const QString &there, const QString &name)
{
    if (nucleus.isEmpty())
        nucleus = there;
    if (!there.isEmpty() && nucleus != there)
        fail(Texts::tr("%1 is a spectrum of %2, the plot shows one of %3").arg(name, nucleus, there));
}

} // namespace

std::vector<MeasuredPeak> pickedPeaks(const ExperimentalSpectrum &measured)
{
    std::vector<MeasuredPeak> peaks;
    const auto &axes = measured.dimensions;
    if (axes.size() == 2) {
        for (const PeakPicking::Peak2D &peak : PeakPicking::pick2D(measured.data, axes[0].points))
            peaks.push_back({axes[0].ppm(peak.column), axes[1].ppm(peak.row), peak.height});
    } else {
        for (const PeakPicking::Peak &peak : PeakPicking::pick(measured.data))
            peaks.push_back({axes[0].ppm(peak.point), 0.0, peak.height});
    }
    return peaks;
}

namespace {

/// For a comparison with spectra of these nuclei in the same magnet: frequencies in MHz, 0 unknown.
ReadOptions optionsFor(const QStringList &nuclei, const std::vector<double> &frequencies)
{
    ReadOptions options;
    options.dimensions = int(nuclei.size());
    if (nuclei.size() == 1)
        options.nucleus = nuclei.constFirst();
    std::copy_n(frequencies.begin(), std::min(frequencies.size(), options.frequency.size()), options.frequency.begin());
    return options;
}

/// What the file says of its frequency goes before what others do.
Measurement readFor(const QString &path, const QStringList &nuclei, const std::vector<double> &frequencies)
{
    const ReadOptions options = optionsFor(nuclei, frequencies);
    try {
        return readMeasurement(path, optionsFor(nuclei, {}));
    } catch (const FrequencyNeeded &) {
        if (!(options.frequency[0] > 0))
            throw;
        return readMeasurement(path, options);
    }
}

/// The measurement, which has to be of these dimensions and nuclei; the frequencies stand in where the file is silent.
Measurement matching(Measurement measurement, const QString &name, const QStringList &nuclei,
                     const std::vector<double> &frequencies)
{
    const ReadOptions options = optionsFor(nuclei, frequencies);
    if (auto *spectrum = std::get_if<ExperimentalSpectrum>(&measurement)) {
        checkDimensions(qsizetype(spectrum->dimensions.size()), nuclei.size(), name);
        for (size_t d = 0; d < spectrum->dimensions.size(); ++d) {
            SpectrumDimension &axis = spectrum->dimensions[d];
            matchNucleus(axis.nucleus, nuclei[qsizetype(d)], name);
            if (!(axis.frequency > 0))
                axis.frequency = options.frequency[d];
        }
    } else {
        auto &peaks = std::get<MeasuredPeaks>(measurement);
        checkDimensions(peaks.dimensions, nuclei.size(), name);
        for (qsizetype d = 0; d < nuclei.size(); ++d)
            matchNucleus(peaks.nuclei[size_t(d)], nuclei[d], name);
    }
    return measurement;
}

} // namespace

QStringList nameFilters()
{
    QStringList patterns;
    for (const MeasurementFormat &format : measurementFormats()) {
        if (!format.read)
            continue;
        for (const QString &suffix : format.suffixes)
            patterns.append(QStringLiteral("*.") + suffix);
        patterns += format.fileNames;
    }
    return {Texts::tr("Spectra and peak lists (%1)").arg(patterns.join(u' '))};
}

bool isExperiment(const QString &path)
{
    const QFileInfo info(path);
    const QString suffix = info.suffix().toLower();
    const auto &formats = measurementFormats();
    return info.isDir() || std::any_of(formats.begin(), formats.end(), [&](const MeasurementFormat &format) {
               return format.read && (format.suffixes.contains(suffix) || format.fileNames.contains(info.fileName()));
           });
}

std::vector<PeakListFile::Peak> countedLike(const QList<SpectrumPeak> &simulated,
                                            std::vector<PeakListFile::Peak> picked)
{
    std::vector<double> sites;
    for (const SpectrumPeak &peak : simulated)
        sites.push_back(peak.f2);
    std::sort(sites.begin(), sites.end(), std::greater<>());
    std::vector<int> multiplicities;
    for (size_t i = 0; i < sites.size(); ++i) {
        if (i == 0 || sites[i - 1] - sites[i] > equalShifts)
            multiplicities.push_back(0);
        ++multiplicities.back();
    }
    if (multiplicities.size() != picked.size())
        return picked;
    std::sort(picked.begin(), picked.end(), [](const auto &a, const auto &b) { return a.f2 > b.f2; });
    std::vector<PeakListFile::Peak> counted;
    for (size_t i = 0; i < picked.size(); ++i)
        counted.insert(counted.end(), size_t(multiplicities[i]), picked[i]);
    return counted;
}

MeasuredPeaks peaks(const QString &path, const QStringList &nuclei)
{
    Measurement measurement = matching(readFor(path, nuclei, {}), QFileInfo(path).fileName(), nuclei, {});
    if (auto *list = std::get_if<MeasuredPeaks>(&measurement))
        return std::move(*list);
    const auto &spectrum = std::get<ExperimentalSpectrum>(measurement);
    MeasuredPeaks picked;
    picked.title = spectrum.title;
    picked.dimensions = int(nuclei.size());
    std::copy_n(nuclei.begin(), nuclei.size(), picked.nuclei.begin());
    picked.peaks = pickedPeaks(spectrum);
    picked.notes = spectrum.notes;
    picked.notes.append(Texts::tr("%1 peaks were picked from the spectrum.").arg(picked.peaks.size()));
    return picked;
}

Experiment open(const QString &path, const Spectrum &beside)
{
    if (beside.isEmpty())
        fail(Texts::tr("there is no spectrum to put %1 beside").arg(QFileInfo(path).fileName()));
    QStringList nuclei;
    std::vector<double> frequencies;
    for (const SpectrumAxis &axis : beside.axes) {
        nuclei.append(axis.isotope());
        frequencies.push_back(axis.frequency);
    }
    return Experiment(path, nuclei, frequencies);
}

QVariantMap read(const QString &path, const Spectrum &beside)
{
    return open(path, beside).beside(beside.peaks);
}

} // namespace ExperimentFile

namespace {
const QString peaksKey = QStringLiteral("Peaks");
} // namespace

Experiment::Experiment(const QString &path, const QStringList &nuclei, const std::vector<double> &frequencies)
    : Experiment(ExperimentFile::readFor(path, nuclei, frequencies), QFileInfo(path).fileName(), nuclei, frequencies)
{
}

Experiment::Experiment(Measurement measurement, const QString &name, const QStringList &nuclei,
                       const std::vector<double> &frequencies)
{
    measurement = ExperimentFile::matching(std::move(measurement), name, nuclei, frequencies);
    if (auto *spectrum = std::get_if<ExperimentalSpectrum>(&measurement))
        take(std::move(*spectrum));
    else
        take(std::get<MeasuredPeaks>(std::move(measurement)));
}

void Experiment::take(MeasuredPeaks measured)
{
    // A peak of several sites stands for as many simulated ones.
    std::vector<PeakListFile::Peak> counted;
    for (const MeasuredPeak &peak : measured.peaks)
        counted.insert(counted.end(), size_t(std::max(peak.count, 1)), peak);
    m_entry = {{peaksKey, PeakListFile::toPeakMap(counted)}};
    if (!measured.nuclei[0].isEmpty())
        m_entry.insert(SpectrumEntry::nucleiKey(), QStringList(measured.nuclei.begin(), measured.nuclei.end()));
    m_notes = measured.notes;
}

void Experiment::take(ExperimentalSpectrum measured)
{
    const auto picked = ExperimentFile::pickedPeaks(measured);
    if (measured.dimensions.size() == 1)
        m_picked = picked;
    m_notes = measured.notes;
    m_entry = toEntryMap(std::move(measured));
    m_entry.insert(peaksKey, PeakListFile::toPeakMap(picked));
}

QVariantMap Experiment::beside(const QList<SpectrumPeak> &simulated) const
{
    if (m_picked.empty())
        return m_entry;
    QVariantMap entry = m_entry;
    entry.insert(peaksKey, PeakListFile::toPeakMap(ExperimentFile::countedLike(simulated, m_picked)));
    return entry;
}

} // namespace Workbench
