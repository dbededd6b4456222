// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ExperimentFile.h"

#include "data/Error.h"
#include "data/NumberText.h"
#include "formats/PeakListFile.h"
#include "analysis/PeakPicking.h"
#include "formats/BrukerReader.h"
#include "formats/CsvSpectrumReader.h"
#include "data/ReaderText.h"
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
constexpr qsizetype fewestPoints = 32; // of a spectrum without a header
constexpr qint64 largestTextFile = qint64(512) << 20;
const QStringList textSuffixes{QStringLiteral("csv"), QStringLiteral("txt")};
const QStringList spectrumSuffixes{QStringLiteral("jdx"), QStringLiteral("dx"), QStringLiteral("jcamp")};

/// The lines that hold something, their fields apart.
QList<QList<QByteArray>> filledLines(const QByteArray &text)
{
    QList<QList<QByteArray>> filled;
    for (ReaderText::Lines lines(ReaderText::view(text)); lines.next();) {
        const std::string_view line = ReaderText::trimmed(lines.line().substr(0, lines.line().find('#')));
        if (line.empty())
            continue;
        QList<QByteArray> fields = QByteArray(line.data(), qsizetype(line.size())).split(',');
        for (QByteArray &field : fields)
            field = field.trimmed();
        filled.append(fields);
    }
    return filled;
}

std::optional<double> number(const QByteArray &field)
{
    return NumberText::parse<double>({field.constData(), size_t(field.size())});
}

bool isEvenlySpaced(const std::vector<double> &positions)
{
    const double step = (positions.back() - positions.front()) / double(positions.size() - 1);
    for (size_t i = 0; i < positions.size(); ++i) {
        if (std::abs(positions[i] - positions.front() - step * double(i)) > 0.25 * std::abs(step))
            return false;
    }
    return step != 0;
}

/// Whole lines from the start of the text, enough to tell what it is.
QByteArray startOf(const QByteArray &text)
{
    constexpr qsizetype enough = 1 << 20;
    if (text.size() <= enough)
        return text;
    const QByteArray start = text.left(enough);
    return start.left(std::max(start.lastIndexOf('\n'), start.lastIndexOf('\r')));
}

QString massAndSymbol(const SpectrumAxis &axis)
{
    return axis.element.isEmpty() ? QString() : QString::number(axis.massNumber) + axis.element;
}

void checkDimensions(qsizetype found, qsizetype expected, const QString &name)
{
    if (found != expected) {
        fail(Texts::tr("%1 has %2 dimension(s), the spectrum in the plot has %3").arg(name).arg(found).arg(expected));
    }
}

void matchNuclei(ExperimentalSpectrum &measured, const QStringList &nuclei, const QString &name)
{
    for (size_t d = 0; d < measured.dimensions.size(); ++d) {
        const QString &there = nuclei[qsizetype(d)];
        QString &nucleus = measured.dimensions[d].nucleus;
        if (nucleus.isEmpty())
            nucleus = there;
        if (!there.isEmpty() && nucleus != there)
            fail(Texts::tr("%1 is a spectrum of %2, the plot shows one of %3").arg(name, nucleus, there));
    }
}

std::vector<PeakListFile::Peak> pickedPeaks(const ExperimentalSpectrum &measured)
{
    std::vector<PeakListFile::Peak> peaks;
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

bool isText(const QString &path)
{
    return QFileInfo(path).isFile() && textSuffixes.contains(QFileInfo(path).suffix().toLower());
}

} // namespace

QStringList nameFilters()
{
    return {Texts::tr("Spectra and peak lists (*.csv *.txt *.jdx *.dx *.jcamp 1r 2rr)")};
}

bool isExperiment(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return textSuffixes.contains(suffix) || spectrumSuffixes.contains(suffix) || BrukerReader::recognises(path);
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

bool isPeakList(const QByteArray &text, int dimensions)
{
    const QList<QList<QByteArray>> lines = filledLines(text);
    if (lines.isEmpty())
        return true;
    const bool hasHeader = !number(lines.constFirst().constFirst());
    if (hasHeader)
        return !lines.constFirst().constLast().toLower().contains("intensity");
    std::vector<double> positions;
    for (const QList<QByteArray> &fields : lines) {
        const auto position = number(fields.constFirst());
        if (fields.size() != dimensions + 1 || !position)
            return true;
        // Two dimensions come row by row: the first one tells.
        if (dimensions == 2 && positions.size() > 1 && *position == positions.front())
            break;
        positions.push_back(*position);
    }
    return qsizetype(positions.size()) < fewestPoints || !isEvenlySpaced(positions);
}

QVariantMap read(const QString &path, const Spectrum &beside)
{
    if (beside.isEmpty())
        fail(Texts::tr("there is no spectrum to put %1 beside").arg(QFileInfo(path).fileName()));
    QStringList nuclei;
    std::vector<double> frequencies;
    for (const SpectrumAxis &axis : beside.axes) {
        nuclei.append(massAndSymbol(axis));
        frequencies.push_back(axis.frequency);
    }
    return Experiment(path, nuclei, frequencies).beside(beside.peaks);
}

} // namespace ExperimentFile

namespace {
const QString peaksKey = QStringLiteral("Peaks");
} // namespace

Experiment::Experiment(const QString &path, const QStringList &nuclei, const std::vector<double> &frequencies)
{
    using namespace ExperimentFile;
    const auto take = [&](ExperimentalSpectrum measured) {
        const QString name = QFileInfo(path).fileName();
        checkDimensions(qsizetype(measured.dimensions.size()), nuclei.size(), name);
        matchNuclei(measured, nuclei, name);
        // The same nucleus in the same magnet; ppm do not depend on it, Hz would.
        for (size_t d = 0; d < std::min(measured.dimensions.size(), frequencies.size()); ++d)
            if (!(measured.dimensions[d].frequency > 0))
                measured.dimensions[d].frequency = frequencies[d];
        takeSpectrum(std::move(measured));
    };
    if (!isText(path)) {
        take(openExperimentalSpectrum(path));
        return;
    }
    const QByteArray text = ReaderText::readFile(path, largestTextFile);
    if (isPeakList(startOf(text), int(nuclei.size())))
        m_entry = {{peaksKey, PeakListFile::toPeakMap(PeakListFile::parse(text, path, int(nuclei.size())))}};
    else
        take(CsvSpectrumReader::parse(text, path));
}

void Experiment::takeSpectrum(ExperimentalSpectrum measured)
{
    const auto picked = ExperimentFile::pickedPeaks(measured);
    if (measured.dimensions.size() == 1)
        m_picked = picked;
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
