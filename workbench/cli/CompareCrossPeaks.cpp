// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CompareCrossPeaks.h"

#include "analysis/comparison/Agreement.h"
#include "analysis/comparison/CrossPeakPairing.h"
#include "analysis/comparison/NucleusComparison.h"
#include "analysis/comparison/PeakComparison.h"
#include "analysis/comparison/UniqueSites.h"
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/CompareOutputs.h"
#include "cli/ComparisonOptions.h"
#include "cli/OptionValues.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "data/Error.h"
#include "data/Nuclides.h"
#include "data/NumberText.h"
#include "formats/ExperimentFile.h"
#include "formats/TableExport.h"
#include "items/plot/NmrData.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

namespace Workbench {
namespace {

constexpr const char *dimensionNames[] = {"F2", "F1"};

/// Cross peaks that the space group maps onto each other.
struct CrossPeak {
    QString sites[2]; ///< F2, F1
    int peaks = 0;
    PlanePoint calculated{}; ///< ppm, at the references of the simulation
};

struct Plan {
    SimulateOptions spectrum;
    UniqueSites::Options sites;
    QString experiment;
    std::optional<double> sigma[2];
    std::optional<double> reference[2]; ///< ppm, where it is not to be found
    std::vector<ReferenceSet> sets;
    int unmatched = 0;
    bool ignoresLabels = false;
};

/// Slope, error and reference of a dimension.
void takeScale(const CommandLine &line, const QStringList &nuclei, Plan &plan)
{
    const auto slopes = valuesByNucleus(line, "slope", nuclei), sigmas = valuesByNucleus(line, "sigma", nuclei),
               references = valuesByNucleus(line, "reference", nuclei);
    plan.sets = parseReferenceSets(line, nuclei);
    for (int d = 0; d < 2; ++d) {
        DimensionOptions &dimension = plan.spectrum.dimension[d];
        const QString &nucleus = dimension.nucleus;
        if (slopes.contains(nucleus))
            dimension.slope = OptionValues::number(QStringLiteral("--slope"), slopes[nucleus]);
        if (references.contains(nucleus))
            plan.reference[d] = OptionValues::number(QStringLiteral("--reference"), references[nucleus]);
        fillFrom(plan.sets, nucleus, plan.reference[d], dimension.slope);
        plan.sigma[d] = sigmas.contains(nucleus) ? OptionValues::positive(QStringLiteral("--sigma"), sigmas[nucleus])
                                                 : usualError(nucleus);
        if (!plan.sigma[d])
            throw UsageError(Texts::tr("option --sigma: the error of calculated shifts of %1 is needed, as in "
                                       "--sigma %1=5: differences of both dimensions are weighed by it")
                                 .arg(nucleus));
    }
}

Plan parsePlan(const CommandLine &line)
{
    Plan plan;
    plan.experiment = singleExperiment(line);
    SimulateOptions &spectrum = plan.spectrum;
    spectrum.twoDimensional = true;
    spectrum.dimension[0].nucleus = OptionValues::nucleus(QStringLiteral("--nucleus"), required(line, "nucleus"));
    spectrum.dimension[1].nucleus = OptionValues::nucleus(QStringLiteral("--nucleus-f1"), line.value("nucleus-f1"));
    if (line.has("correlation"))
        spectrum.correlation = OptionValues::choice(QStringLiteral("--correlation"), line.value("correlation"),
                                                    {QStringLiteral("strongest"), QStringLiteral("rss")});
    plan.sites = {parseSymmetryTolerance(line), parseAveraging(line)};
    spectrum.averaging = int(plan.sites.averaging);
    QStringList nuclei{spectrum.dimension[0].nucleus, spectrum.dimension[1].nucleus};
    nuclei.removeDuplicates();
    takeScale(line, nuclei, plan);
    plan.ignoresLabels = line.has("ignore-labels");
    if (line.has("unmatched"))
        plan.unmatched =
            OptionValues::count(QStringLiteral("--unmatched"), line.value("unmatched"), LinePairing::mostUnmatched, 0);
    return plan;
}

/// The sites of one dimension by the labels that peaks have. Where sites share a label, the positions of peaks tell.
class LabelledSites {
public:
    /// Positions are `reference` + `slope` · shielding, ppm.
    LabelledSites(const CrystalStructure &structure, const std::vector<UniqueSite> &sites, double reference,
                  double slope)
    {
        for (const UniqueSite &site : sites) {
            const Candidate candidate{site.name, reference + slope * site.shielding.value_or(0)};
            for (int atom : site.atoms)
                for (const QString &label : structure.atoms[std::size_t(atom)].labels)
                    m_sites[label].push_back(candidate);
        }
    }

    /// The label itself where no site has it.
    QString name(const QString &label, double position) const
    {
        const auto found = m_sites.constFind(label);
        if (found == m_sites.constEnd())
            return label;
        return std::min_element(found->begin(), found->end(),
                                [&](const Candidate &a, const Candidate &b) {
                                    return std::abs(a.position - position) < std::abs(b.position - position);
                                })
            ->name;
    }

private:
    struct Candidate {
        QString name;
        double position;
    };
    QHash<QString, std::vector<Candidate>> m_sites;
};

/// A peak's label names the atoms of F2 and then those of F1.
std::vector<CrossPeak> uniquePeaks(const QList<SpectrumPeak> &peaks, const std::vector<LabelledSites> &sites)
{
    std::vector<CrossPeak> all;
    for (const SpectrumPeak &peak : peaks) {
        CrossPeak named;
        const QStringList atoms = peak.label.split(u',');
        named.sites[0] = sites[0].name(atoms.constFirst(), peak.f2);
        named.sites[1] = sites[1].name(atoms.constLast(), peak.f1);
        auto known = std::find_if(all.begin(), all.end(), [&](const CrossPeak &other) {
            return other.sites[0] == named.sites[0] && other.sites[1] == named.sites[1];
        });
        if (known == all.end())
            known = all.insert(all.end(), named);
        ++known->peaks;
        // The mean so far.
        known->calculated[0] += (peak.f2 - known->calculated[0]) / known->peaks;
        known->calculated[1] += (peak.f1 - known->calculated[1]) / known->peaks;
    }
    return all;
}

/// The atoms and sites that a label may name, with the names of their sites.
QMultiHash<QString, QString> namesOfSites(const CrystalStructure &structure, const UniqueSites &unique)
{
    QMultiHash<QString, QString> names;
    for (const UniqueSite &site : unique.sites) {
        const QString &own = site.name;
        names.insert(own, own);
        for (int atom : site.atoms) {
            QStringList of = structure.atoms[std::size_t(atom)].labels;
            of.append(structure.name(atom));
            for (const QString &name : std::as_const(of)) {
                if (!names.contains(name, own))
                    names.insert(name, own);
            }
        }
    }
    return names;
}

/// "C1-H1", "C1,H1", "H1/C1"; names may have a dash of their own.
QStringList namedIn(const QString &label, const QMultiHash<QString, QString> &siteOf)
{
    static const QRegularExpression dash(QStringLiteral("[-\u2013\u2014>\u2192]+"));
    QStringList names;
    for (const QString &name : assignedSites(label))
        names += siteOf.contains(name) ? QStringList{name} : name.split(dash, Qt::SkipEmptyParts);
    return names;
}

/// Peaks at one place that name the same sites are one. A list may name a place as often as equivalent atoms give it.
std::vector<MeasuredPeak> mergedPeaks(const std::vector<MeasuredPeak> &peaks,
                                      const QMultiHash<QString, QString> &siteOf)
{
    using Place = std::tuple<double, double, QStringList>;
    std::set<Place> places;
    std::vector<MeasuredPeak> merged;
    for (const MeasuredPeak &peak : peaks) {
        QStringList sites;
        for (const QString &name : namedIn(peak.label, siteOf))
            sites.append(siteOf.contains(name) ? siteOf.value(name) : name);
        sites.sort();
        if (places.emplace(peak.f2, peak.f1, sites).second)
            merged.push_back(peak);
    }
    return merged;
}

/// The measured peak of each calculated one whose sites its label names; -1 for the others.
std::vector<int> assignedPeaks(const std::vector<MeasuredPeak> &measured, const std::vector<CrossPeak> &peaks,
                               const QMultiHash<QString, QString> &siteOf)
{
    std::vector<int> lineOf(peaks.size(), -1);
    for (std::size_t k = 0; k < measured.size(); ++k) {
        const QStringList names = namedIn(measured[k].label, siteOf);
        if (names.isEmpty())
            continue;
        const QString place =
            QStringLiteral("%1, %2 ppm").arg(measured[k].f2, 0, 'g', 8).arg(measured[k].f1, 0, 'g', 8);
        for (const QString &name : names) {
            if (!siteOf.contains(name))
                throw CommandError(Texts::tr("the cross peak at %1 is assigned to \"%2\", but the structure has no "
                                             "such site (--ignore-labels pairs without names)")
                                       .arg(place, name));
        }
        std::vector<std::size_t> found, mirrored;
        for (std::size_t i = 0; i < peaks.size(); ++i) {
            const auto isNamed = [&](std::size_t d, qsizetype name) {
                return siteOf.contains(names[name], peaks[i].sites[d]);
            };
            // A name for each coordinate: no peak of a site with itself but by the same name twice.
            bool inOrder = false, inOtherOrder = false;
            for (qsizetype a = 0; a < names.size(); ++a) {
                for (qsizetype b = a + 1; b < names.size(); ++b) {
                    inOrder |= isNamed(0, a) && isNamed(1, b);
                    inOtherOrder |= isNamed(0, b) && isNamed(1, a);
                }
            }
            const bool byOne = names.size() == 1 && (isNamed(0, 0) || isNamed(1, 0));
            if (inOrder || byOne)
                found.push_back(i);
            else if (inOtherOrder)
                mirrored.push_back(i);
        }
        // F1 may well stand first, but where a peak and its mirror image are both there, the order tells which is
        // meant.
        const std::vector<std::size_t> asNamed = found;
        for (std::size_t i : mirrored) {
            if (std::none_of(asNamed.begin(), asNamed.end(), [&](std::size_t other) {
                    return peaks[other].sites[0] == peaks[i].sites[1] && peaks[other].sites[1] == peaks[i].sites[0];
                }))
                found.push_back(i);
        }
        if (found.empty() || (names.size() == 1 && found.size() > 1))
            throw CommandError(Texts::tr("the cross peak at %1 is assigned to \"%2\", but the structure has %3 cross "
                                         "peaks of that name (--ignore-labels pairs without names)")
                                   .arg(place, measured[k].label)
                                   .arg(found.size()));
        for (std::size_t i : found) {
            if (lineOf[i] >= 0)
                throw CommandError(Texts::tr("two cross peaks, at %1 and %2 ppm of F2, are assigned to %3 and %4")
                                       .arg(measured[std::size_t(lineOf[i])].f2)
                                       .arg(measured[k].f2)
                                       .arg(peaks[i].sites[0], peaks[i].sites[1]));
            lineOf[i] = int(k);
        }
    }
    return lineOf;
}

/// One dimension of the pairs, or both where they are of one nucleus: each site once, at the mean of what was measured
/// of it.
NucleusComparison comparisonOf(const std::vector<CrossPeak> &peaks, const std::vector<PlanePoint> &measured,
                               const CrossPeakPairing &pairing, std::initializer_list<std::size_t> dimensions,
                               std::optional<double> offset)
{
    NucleusComparison result;
    std::vector<MeasuredLine> lines;
    const auto add = [&](const CrossPeak &peak, std::size_t d, double shift) {
        auto known = std::find_if(result.sites.begin(), result.sites.end(),
                                  [&](const ComparedSite &site) { return site.name == peak.sites[d]; });
        if (known == result.sites.end()) {
            ComparedSite site;
            site.name = peak.sites[d];
            site.shielding = peak.calculated[d];
            site.nuclei = 0;
            known = result.sites.insert(result.sites.end(), site);
            result.pairing.linesOf.emplace_back();
        }
        known->nuclei += peak.peaks;
        result.pairing.linesOf[std::size_t(known - result.sites.begin())].push_back(int(lines.size()));
        lines.push_back({shift, {}, {}});
    };
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        for (std::size_t d : pairing.lineOf[i] < 0 ? std::initializer_list<std::size_t>{} : dimensions)
            add(peaks[i], d, measured[std::size_t(pairing.lineOf[i])][d]);
    }
    Agreement::Options options;
    options.slope = 1; // the positions are shifts already
    options.reference = offset;
    result.agreement = Agreement::of(result.sites, lines, result.pairing.linesOf, options);
    return result;
}

/// How the pairs were found, by the names that one dimension has for it.
LinePairing modeOf(const std::vector<int> &assigned, const CrossPeakPairing &pairing, std::size_t measured)
{
    LinePairing mode;
    std::vector<char> isAssigned(measured);
    int freePeaks = 0;
    for (int line : assigned) {
        if (line >= 0)
            isAssigned[std::size_t(line)] = true;
        else
            ++freePeaks;
    }
    mode.assignedLines = int(std::count(isAssigned.begin(), isAssigned.end(), char(true)));
    const int freeLines = int(measured) - mode.assignedLines;
    mode.mode = freeLines == 0     ? LinePairing::Mode::Assigned
        : !pairing.leftOut.empty() ? LinePairing::Mode::Unmatched
        : freePeaks == freeLines   ? LinePairing::Mode::Equal
                                   : LinePairing::Mode::Overlap;
    mode.leftOut = pairing.leftOut;
    return mode;
}

struct Report {
    QString file;
    Plan plan;
    QString spaceGroup;
    std::vector<CrossPeak> peaks;
    std::vector<PlanePoint> measured;
    CrossPeakPairing pairing;
    std::vector<NucleusComparison> comparisons; ///< F2 and F1
    /// Of both dimensions where they are of one nucleus: they share sites, errors and reference, so that χ² counts a
    /// site once.
    std::optional<Agreement> together;
    double reference[2] = {0, 0}; ///< of the simulation

    QString mode() const { return comparisons[0].pairing.text(); }
    const Agreement &agreement(std::size_t d) const { return comparisons[d].agreement; }
    bool isPaired(std::size_t i) const { return pairing.lineOf[i] >= 0; }
    double calculated(std::size_t i, std::size_t d) const { return peaks[i].calculated[d] + agreement(d).reference; }
    double measuredAt(std::size_t i, std::size_t d) const { return measured[std::size_t(pairing.lineOf[i])][d]; }

    QByteArray text() const;
    QByteArray csv() const;
    QByteArray json() const;
    QByteArray write(TableExport::Format format) const
    {
        return format == TableExport::Format::Csv ? csv() : format == TableExport::Format::Json ? json() : text();
    }
};

QString ppmText(double value)
{
    constexpr double half = 0.005; // of the last digit; a zero has no sign
    return QString::number(std::abs(value) < half ? 0.0 : value, 'f', 2);
}

QString chiSquareText(const Agreement &agreement, double sigma)
{
    const ChiSquare chiSquare = agreement.chiSquare(sigma);
    return QStringLiteral(", χ² %1 with %2 degrees of freedom%3")
        .arg(ppmText(chiSquare.value), QString::number(chiSquare.degreesOfFreedom),
             chiSquare.p ? QStringLiteral(", ") + chiSquare.pText() : QString());
}

void insertChiSquare(QJsonObject &object, const Agreement &agreement, double sigma)
{
    const ChiSquare chiSquare = agreement.chiSquare(sigma);
    object.insert(QStringLiteral("chi2"), chiSquare.value);
    object.insert(QStringLiteral("dof"), chiSquare.degreesOfFreedom);
    if (chiSquare.p)
        object.insert(QStringLiteral("p"), *chiSquare.p);
}

QByteArray Report::text() const
{
    const auto &dimension = plan.spectrum.dimension;
    QString text = QStringLiteral("%1-%2: %3 cross peaks measured, %4 of the structure%5. Pairing: %6\n\n")
                       .arg(dimension[0].nucleus, dimension[1].nucleus, QString::number(measured.size()),
                            QString::number(peaks.size()),
                            spaceGroup.isEmpty() ? QString() : QStringLiteral(" in %1").arg(spaceGroup), mode());
    std::vector<QStringList> cells;
    QStringList without;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        if (!isPaired(i)) {
            without.append(QStringLiteral("%1 and %2").arg(peaks[i].sites[0], peaks[i].sites[1]));
            continue;
        }
        QStringList row{peaks[i].sites[0], peaks[i].sites[1]};
        for (std::size_t d = 0; d < 2; ++d)
            row << ppmText(calculated(i, d)) << ppmText(measuredAt(i, d))
                << ppmText(calculated(i, d) - measuredAt(i, d));
        cells.push_back(row);
    }
    QStringList titles{QStringLiteral("F2 site"), QStringLiteral("F1 site")};
    for (const char *name : dimensionNames)
        for (const char *what : {"calculated", "measured", "difference"})
            titles.append(QStringLiteral("%1 %2").arg(QLatin1String(name), QLatin1String(what)));
    text += TableExport::alignedText(titles, cells) + u'\n';
    for (std::size_t d = 0; d < 2; ++d) {
        text += QStringLiteral("%1 (%2): reference %3 ppm (%7), %4 sites, RMSD %5 ppm, largest difference %6 ppm%8\n")
                    .arg(QLatin1String(dimensionNames[d]), dimension[d].nucleus,
                         ppmText(reference[d] + agreement(d).reference), QString::number(agreement(d).pairs.size()),
                         ppmText(agreement(d).rmsd), ppmText(agreement(d).largest),
                         plan.reference[d] ? QStringLiteral("given") : QStringLiteral("fitted"),
                         together ? QString() : chiSquareText(agreement(d), *plan.sigma[d]));
    }
    if (together)
        text += QStringLiteral("Both (%1): %2 sites%3\n")
                    .arg(dimension[0].nucleus, QString::number(together->pairs.size()),
                         chiSquareText(*together, *plan.sigma[0]));
    for (int line : pairing.leftOut)
        text += QStringLiteral("Left out: %1, %2 ppm\n")
                    .arg(ppmText(measured[std::size_t(line)][0]), ppmText(measured[std::size_t(line)][1]));
    if (!without.isEmpty())
        text += QStringLiteral("Without a line: %1\n").arg(without.join(QStringLiteral("; ")));
    return text.toUtf8();
}

QByteArray Report::csv() const
{
    QByteArray csv = "pairing,site_f2,site_f1,peaks,calculated_f2,measured_f2,calculated_f1,measured_f1", end;
    const auto add = [&](const QByteArray &name, double value) {
        csv += ',' + name;
        end += ',';
        NumberText::append17(end, value);
    };
    const auto addChiSquare = [&](const Agreement &of, double sigma, const QByteArray &suffix) {
        const ChiSquare chiSquare = of.chiSquare(sigma);
        add("chi2" + suffix, chiSquare.value);
        add("dof" + suffix, chiSquare.degreesOfFreedom);
        if (chiSquare.p) {
            add("p" + suffix, *chiSquare.p);
        } else {
            csv += ",p" + suffix;
            end += ',';
        }
    };
    for (std::size_t d = 0; d < 2; ++d) {
        const QByteArray suffix = d == 0 ? "_f2" : "_f1";
        add("reference" + suffix, reference[d] + agreement(d).reference);
        add("slope" + suffix, plan.spectrum.dimension[d].slope.value_or(-1));
        add("rmsd" + suffix, agreement(d).rmsd);
        add("largest_difference" + suffix, agreement(d).largest);
        add("sigma" + suffix, *plan.sigma[d]);
        if (!together)
            addChiSquare(agreement(d), *plan.sigma[d], suffix);
    }
    if (together)
        addChiSquare(*together, *plan.sigma[0], {});
    csv += '\n';
    end += '\n';
    const QByteArray start = mode().contains(u',') ? '"' + mode().toUtf8() + '"' : mode().toUtf8();
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        csv += start;
        for (const QString &site : peaks[i].sites)
            csv += ",\"" + site.toUtf8().replace('"', "\"\"") + '"';
        csv += ',' + QByteArray::number(peaks[i].peaks);
        for (std::size_t d = 0; d < 2; ++d) {
            csv += ',';
            NumberText::append17(csv, calculated(i, d));
            csv += ',';
            if (isPaired(i))
                NumberText::append17(csv, measuredAt(i, d));
        }
        csv += end;
    }
    for (int line : pairing.leftOut) {
        csv += start + ",,,,,";
        NumberText::append17(csv, measured[std::size_t(line)][0]);
        csv += ",,";
        NumberText::append17(csv, measured[std::size_t(line)][1]);
        csv += end;
    }
    return csv;
}

QByteArray Report::json() const
{
    QJsonArray pairs, without, leftOut, dimensions;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const QJsonArray sites{peaks[i].sites[0], peaks[i].sites[1]};
        if (!isPaired(i)) {
            without.append(sites);
            continue;
        }
        pairs.append(QJsonObject{{QStringLiteral("sites"), sites},
                                 {QStringLiteral("peaks"), peaks[i].peaks},
                                 {QStringLiteral("calculated"), QJsonArray{calculated(i, 0), calculated(i, 1)}},
                                 {QStringLiteral("measured"), QJsonArray{measuredAt(i, 0), measuredAt(i, 1)}}});
    }
    for (int line : pairing.leftOut)
        leftOut.append(QJsonArray{measured[std::size_t(line)][0], measured[std::size_t(line)][1]});
    for (std::size_t d = 0; d < 2; ++d) {
        QJsonObject object{{QStringLiteral("nucleus"), plan.spectrum.dimension[d].nucleus},
                           {QStringLiteral("reference"), reference[d] + agreement(d).reference},
                           {QStringLiteral("referenceIsGiven"), plan.reference[d].has_value()},
                           {QStringLiteral("slope"), plan.spectrum.dimension[d].slope.value_or(-1)},
                           {QStringLiteral("rmsd"), agreement(d).rmsd},
                           {QStringLiteral("largestDifference"), agreement(d).largest},
                           {QStringLiteral("sigma"), *plan.sigma[d]}};
        if (!together)
            insertChiSquare(object, agreement(d), *plan.sigma[d]);
        dimensions.append(object);
    }
    QJsonObject whole{{QStringLiteral("file"), file},      {QStringLiteral("spaceGroup"), spaceGroup},
                      {QStringLiteral("pairing"), mode()}, {QStringLiteral("dimensions"), dimensions},
                      {QStringLiteral("pairs"), pairs},    {QStringLiteral("without"), without},
                      {QStringLiteral("leftOut"), leftOut}};
    if (together)
        insertChiSquare(whole, *together, *plan.sigma[0]);
    return QJsonDocument(whole).toJson();
}

void note(const QString &text)
{
    printError(Texts::tr("magres-workbench compare: %1\n").arg(text));
}

} // namespace

CommandRun prepareCompareCrossPeaks(const CommandLine &line)
{
    const Plan plan = parsePlan(line);
    const CompareOutputs outputs(line);
    const auto isotopes = parseIsotopes(line);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        const QStringList nuclei{plan.spectrum.dimension[0].nucleus, plan.spectrum.dimension[1].nucleus};
        MeasuredPeaks measured = ExperimentFile::peaks(plan.experiment, nuclei);
        for (const QString &text : measured.notes)
            note(QStringLiteral("%1: %2").arg(plan.experiment, text));
        for (const ReferenceSet &set : plan.sets) {
            if (const QString warning = methodWarning(set, file); !warning.isEmpty())
                note(warning);
        }
        Report report;
        report.file = file;
        report.plan = plan;
        Simulation simulation(host, log);
        simulation.readFile(file, isotopes);
        simulation.runForPeaks(plan.spectrum);
        const QVariantMap references = simulation.parameters().value(QStringLiteral("ref")).toMap();
        const CrystalStructure structure = simulation.structure();
        const UniqueSites unique = UniqueSites::of(structure, plan.sites);
        for (const QString &warning : unique.warnings)
            note(warning);
        report.spaceGroup = unique.spaceGroup;
        std::vector<LabelledSites> sites;
        for (std::size_t d = 0; d < 2; ++d) {
            report.reference[d] = references.value(nuclei[qsizetype(d)]).toDouble();
            sites.emplace_back(structure, unique.ofElement(Nuclides::element(nuclei[qsizetype(d)])),
                               report.reference[d], plan.spectrum.dimension[d].slope.value_or(-1));
        }
        report.peaks = uniquePeaks(simulation.data().spectrum(simulation.entry()).peaks, sites);
        std::vector<PlanePoint> calculated;
        for (const CrossPeak &peak : report.peaks)
            calculated.push_back(peak.calculated);
        const QMultiHash<QString, QString> siteOf = namesOfSites(structure, unique);
        for (MeasuredPeak &peak : measured.peaks)
            peak.label = plan.ignoresLabels ? QString() : peak.label;
        const std::size_t listed = measured.peaks.size();
        measured.peaks = mergedPeaks(measured.peaks, siteOf);
        if (const QString text = placesNote(nuclei.join(u'-'), listed, measured.peaks.size()); !text.isEmpty())
            note(text);
        for (const MeasuredPeak &peak : measured.peaks)
            report.measured.push_back({peak.f2, peak.f1});
        CrossPeakPairing::Options options;
        options.sigma = {*plan.sigma[0], *plan.sigma[1]};
        options.oneReference = plan.spectrum.homonuclear();
        options.unmatched = plan.unmatched;
        for (std::size_t d = 0; d < 2; ++d) {
            if (plan.reference[d])
                options.offset[d] = *plan.reference[d] - report.reference[d];
        }
        options.assigned.assign(report.peaks.size(), -1);
        if (!plan.ignoresLabels)
            options.assigned = assignedPeaks(measured.peaks, report.peaks, siteOf);
        report.pairing = CrossPeakPairing::of(calculated, report.measured, options);
        for (std::size_t d = 0; d < 2; ++d) {
            const bool isKnown = options.oneReference || plan.reference[d];
            NucleusComparison comparison =
                comparisonOf(report.peaks, report.measured, report.pairing, {d},
                             isKnown ? std::optional(report.pairing.offset[d]) : std::nullopt);
            const LinePairing mode = modeOf(options.assigned, report.pairing, report.measured.size());
            comparison.pairing.mode = mode.mode;
            comparison.pairing.assignedLines = mode.assignedLines;
            comparison.pairing.leftOut = mode.leftOut;
            comparison.nucleus = QStringLiteral("%1, %2").arg(QLatin1String(dimensionNames[d]), nuclei[qsizetype(d)]);
            report.comparisons.push_back(std::move(comparison));
        }
        if (options.oneReference)
            report.together =
                comparisonOf(report.peaks, report.measured, report.pairing, {0, 1}, options.offset[0]).agreement;
        outputs.write([&](TableExport::Format format) { return report.write(format); }, report.comparisons);
    });
}

} // namespace Workbench
