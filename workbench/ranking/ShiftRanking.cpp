// SPDX-License-Identifier: GPL-3.0-or-later
#include "ranking/ShiftRanking.h"

#include "data/Elision.h"
#include "data/Error.h"
#include "data/Nuclides.h"
#include "formats/ExperimentFile.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace Workbench {
namespace {

/// A peak that a spectrum would have. The protons of an averaged group make one that is higher than the three.
struct Peak {
    double shift = 0; ///< ppm
    double height = 1;
};

std::vector<Peak> simulatedPeaks(const CrystalStructure &structure, const NucleusMeasurement &measurement,
                                 UniqueSites::Averaging averaging, double reference)
{
    std::vector<Peak> peaks;
    for (const UniqueSite &site :
         UniqueSites::of(structure, {0, averaging}).ofElement(Nuclides::element(measurement.nucleus))) {
        if (site.shielding)
            peaks.push_back(
                {reference + measurement.scale.slope.value_or(-1.0) * *site.shielding, site.nuclei() == 3 ? 4.0 : 1.0});
    }
    std::stable_sort(peaks.begin(), peaks.end(), [](const Peak &a, const Peak &b) { return a.shift > b.shift; });
    return peaks;
}

/// The measured line of each peak, largest shift first; nothing unless they are as many, or as many as the peaks at
/// different places.
std::vector<double> linesOfPeaks(const std::vector<Peak> &peaks, const std::vector<MeasuredLine> &lines)
{
    QList<SpectrumPeak> simulated;
    for (const Peak &peak : peaks) {
        simulated.append(SpectrumPeak());
        simulated.last().f2 = peak.shift;
    }
    std::vector<PeakListFile::Peak> measured(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
        measured[i].f2 = lines[i].shift;
    std::vector<double> shifts;
    for (const PeakListFile::Peak &peak : ExperimentFile::countedLike(simulated, measured))
        shifts.push_back(peak.f2);
    std::stable_sort(shifts.begin(), shifts.end(), std::greater<>());
    return shifts.size() == peaks.size() ? shifts : std::vector<double>();
}

/// Of a single nucleus: the reference and the RMSD of Auto reference and RMSD, where these can be had. They count every
/// peak by its height, and so a methyl group four times.
void takeNumbersOfSpectra(const std::vector<Peak> &peaks, const std::vector<double> &lines, double reference,
                          RankRow &row)
{
    double sum = 0, weights = 0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        sum += peaks[i].height * (lines[i] - peaks[i].shift);
        weights += peaks[i].height;
    }
    const double offset = sum / weights;
    double squares = 0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const double difference = lines[i] - peaks[i].shift - offset;
        squares += peaks[i].height * difference * difference;
    }
    row.parts[0].reference = reference + offset;
    row.parts[0].offset = offset;
    row.parts[0].rmsd = std::sqrt(squares / weights);
}

RankRow::Part partOf(const NucleusComparison &comparison, const NucleusMeasurement &measurement, double reference)
{
    const Agreement &agreement = comparison.agreement;
    RankRow::Part part;
    part.reference = agreement.reference;
    part.offset = agreement.reference - reference;
    part.rmsd = agreement.rmsd;
    part.pairing = comparison.pairing.text();
    part.sites = double(comparison.sites.size());
    part.lines = double(measurement.lines.size());
    part.sigma = measurement.sigma;
    if (const auto &chiSquare = comparison.chiSquare) {
        part.chiSquare = chiSquare->value;
        part.degreesOfFreedom = chiSquare->degreesOfFreedom;
        part.p = chiSquare->p;
    }
    return part;
}

/// What all nuclei say together; nothing where the error of one is not known.
void takeTogether(const std::vector<NucleusComparison> &comparisons,
                  const std::vector<NucleusMeasurement> &measurements, RankRow &row)
{
    constexpr double wide = 1.5;
    double value = 0, logLikelihood = 0, wideLogLikelihood = 0;
    int degreesOfFreedom = 0;
    for (std::size_t i = 0; i < comparisons.size(); ++i) {
        const auto narrowOne = comparisons[i].logLikelihood(measurements[i], 1);
        if (!narrowOne)
            return;
        logLikelihood += *narrowOne;
        wideLogLikelihood += *comparisons[i].logLikelihood(measurements[i], wide);
        value += comparisons[i].chiSquare->value;
        degreesOfFreedom += comparisons[i].chiSquare->degreesOfFreedom;
    }
    const ChiSquare all = ChiSquare::of(value, degreesOfFreedom);
    row.chiSquare = all.value;
    row.degreesOfFreedom = all.degreesOfFreedom;
    row.p = all.p;
    row.logLikelihood = logLikelihood;
    row.wideLogLikelihood = wideLogLikelihood;
    const auto isBad = [](const std::optional<double> &p) { return p && *p < RankTable::smallestP; };
    const bool anyBad = isBad(row.p)
        || std::any_of(row.parts.begin(), row.parts.end(), [&](const RankRow::Part &part) { return isBad(part.p); });
    row.fit = anyBad ? QStringLiteral("bad") : row.p ? QStringLiteral("ok") : QString();
}

/// One line.
QString messageOf(const QStringList &warnings)
{
    if (warnings.size() < 2)
        return elided(warnings.join(QString()));
    return Texts::tr("%1 (and %2 more)").arg(elided(warnings.constFirst())).arg(warnings.size() - 1);
}

/// Of each line among the nuclei of all; the same for lists that say it by counts and by lines of their own.
std::vector<double> sharesOf(const std::vector<MeasuredLine> &lines)
{
    const bool isTold = std::all_of(lines.begin(), lines.end(), [](const MeasuredLine &line) { return line.count; });
    double sum = 0;
    std::vector<double> shares;
    for (const MeasuredLine &line : lines) {
        shares.push_back(isTold ? *line.count : 1.0);
        sum += shares.back();
    }
    for (double &share : shares)
        share /= sum;
    return shares;
}

} // namespace

RankLayout ShiftRanking::layout() const
{
    RankLayout layout;
    for (const NucleusMeasurement &measurement : measurements)
        layout.nuclei.append(measurements.size() == 1 ? QString() : measurement.nucleus);
    return layout;
}

void ShiftRanking::compare(const CrystalStructure &structure, RankRow &row) const
{
    const UniqueSites unique = UniqueSites::of(structure, sites);
    std::vector<NucleusComparison> comparisons;
    std::vector<RankRow::Part> parts;
    std::vector<NucleusMeasurement> compared = measurements;
    for (std::size_t i = 0; i < measurements.size(); ++i) {
        comparisons.push_back(NucleusComparison::ofPlaces(structure, unique, compared[i]));
        parts.push_back(partOf(comparisons[i], compared[i], startReferences[i]));
    }
    row.parts = std::move(parts);
    row.message = messageOf(unique.warnings);
    takeTogether(comparisons, compared, row);
    if (comparisons.size() == 1)
        takeSingle(structure, comparisons[0], compared[0], row);
    RankTable::checkNumbers(row, layout());
}

QString ShiftRanking::basis() const
{
    const auto number = [](double value) { return QString::number(value, 'g', 10); };
    QStringList entries;
    for (std::size_t n = 0; n < measurements.size(); ++n) {
        const NucleusMeasurement &measurement = measurements[n];
        const auto add = [&](const char *name, const QString &value) {
            entries.append(QStringLiteral("%1 %2=%3").arg(measurement.nucleus, QLatin1String(name), value));
        };
        QStringList lines;
        const std::vector<MeasuredLine> places = mergedLines(measurement.lines);
        const std::vector<double> shares = sharesOf(places);
        for (std::size_t i = 0; i < places.size(); ++i)
            lines.append(
                QStringLiteral("%1 %2 %3")
                    .arg(QString::number(places[i].shift, 'g', 17), places[i].sites.join(u','), number(shares[i])));
        add("lines", RankTable::digest(lines));
        add("reference", number(startReferences[n]));
        add("slope", number(measurement.scale.slope.value_or(-1)));
        if (const auto &set = measurement.calibration) {
            add("set",
                RankTable::digest({number(set->reference), number(set->slope), number(set->referenceError),
                                   number(set->slopeError), number(set->covariance)}));
        } else {
            add("window", number(measurement.window));
        }
        add("unmatched", QString::number(measurement.unmatched));
    }
    constexpr const char *averagings[] = {"none", "ch3", "xh3"};
    entries.append(QStringLiteral("average=") + QLatin1String(averagings[int(sites.averaging)]));
    entries.append(QStringLiteral("tolerance=") + number(sites.tolerance));
    return entries.join(QLatin1String("; "));
}

QStringList ShiftRanking::notesOn(const std::vector<RankRow> &rows) const
{
    QStringList notes;
    for (std::size_t i = 0; i < measurements.size(); ++i) {
        QStringList files;
        double places = 0;
        for (const RankRow &row : rows) {
            const double lines = row.failed() ? 0 : row.parts[i].lines.value_or(0);
            if (lines == 0 || lines == double(measurements[i].lines.size()))
                continue;
            places = lines;
            files.append(row.file);
        }
        if (files.isEmpty())
            continue;
        const QString note = placesNote(measurements[i].nucleus, measurements[i].lines.size(), std::size_t(places));
        notes.append(files.size() == 1 ? Texts::tr("%1: %2").arg(files[0], note)
                                       : Texts::tr("%1 and %2 more: %3").arg(files[0]).arg(files.size() - 1).arg(note));
    }
    return notes;
}

void ShiftRanking::takeSingle(const CrystalStructure &structure, const NucleusComparison &comparison,
                              const NucleusMeasurement &measurement, RankRow &row) const
{
    const auto peaks = simulatedPeaks(structure, measurement, sites.averaging, startReferences[0]);
    const auto lines = linesOfPeaks(peaks, measurement.lines);
    const LinePairing &pairing = comparison.pairing;
    if (!lines.empty() && pairing.mode == LinePairing::Mode::Equal && pairing.assignedLines == 0 && !pairing.byCounts)
        takeNumbersOfSpectra(peaks, lines, startReferences[0], row);
    row.rmsd = row.parts[0].rmsd;
    row.simulatedPeaks = double(peaks.size());
    row.experimentalPeaks = double(lines.empty() ? measurement.lines.size() : lines.size());
}

} // namespace Workbench
