// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CompareCrossPeaks.h"

#include "analysis/comparison/Agreement.h"
#include "analysis/comparison/CrossPeakPairing.h"
#include "analysis/comparison/UniqueSites.h"
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/ComparisonOptions.h"
#include "cli/OptionValues.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "data/Error.h"
#include "data/NumberText.h"
#include "formats/ExperimentFile.h"
#include "formats/OutputFiles.h"
#include "formats/TableExport.h"
#include "items/plot/NmrData.h"

#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

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
    int unmatched = 0;
    TableExport::Format format = TableExport::Format::Text;
    QString output;
};

Plan parsePlan(const CommandLine &line)
{
    for (const char *option : {"reference", "reference-set", "ignore-labels"}) {
        if (line.has(option))
            throw UsageError(Texts::tr("option %1 goes with one dimension alone").arg(CommandLine::shown(option)));
    }
    Plan plan;
    plan.experiment = required(line, "experiment");
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
    const auto slopes = valuesByNucleus(line, "slope", nuclei), sigmas = valuesByNucleus(line, "sigma", nuclei);
    for (int d = 0; d < 2; ++d) {
        DimensionOptions &dimension = spectrum.dimension[d];
        if (slopes.contains(dimension.nucleus))
            dimension.slope = OptionValues::number(QStringLiteral("--slope"), slopes[dimension.nucleus]);
        plan.sigma[d] = sigmas.contains(dimension.nucleus)
            ? OptionValues::positive(QStringLiteral("--sigma"), sigmas[dimension.nucleus])
            : usualError(dimension.nucleus);
        if (!plan.sigma[d])
            throw UsageError(Texts::tr("option --sigma: the error of calculated shifts of %1 is needed, as in "
                                       "--sigma %1=5: differences of both dimensions are weighed by it")
                                 .arg(dimension.nucleus));
    }
    if (line.has("unmatched"))
        plan.unmatched =
            OptionValues::count(QStringLiteral("--unmatched"), line.value("unmatched"), LinePairing::mostUnmatched);
    const QStringList outputs = line.values("o");
    if (outputs.size() > 1)
        throw UsageError(Texts::tr("option -o: cross peaks are written to one file"));
    plan.output = outputs.value(0);
    const QString suffix = QFileInfo(plan.output).suffix().toLower();
    const QString name = line.has("format")         ? line.value("format")
        : plan.output.isEmpty() || suffix == u"txt" ? QStringLiteral("text")
                                                    : suffix;
    const auto format = TableExport::formatOfName(name);
    if (!format)
        throw UsageError(
            Texts::tr("the table of cross peaks cannot be written as \"%1\": txt, csv and json can be").arg(name));
    plan.format = *format;
    return plan;
}

/// The sites of a peak's label, which names the atoms of F2 and then those of F1.
void nameSites(const QString &label, const QHash<QString, QString> &siteOf, CrossPeak &peak)
{
    QStringList sites;
    for (const QString &atom : label.split(u',')) {
        const QString site = siteOf.value(atom, atom);
        if (sites.isEmpty() || sites.constLast() != site)
            sites.append(site);
    }
    peak.sites[0] = sites.constFirst();
    peak.sites[1] = sites.mid(sites.size() > 1 ? 1 : 0).join(u',');
}

std::vector<CrossPeak> uniquePeaks(const QList<SpectrumPeak> &peaks, const CrystalStructure &structure,
                                   const UniqueSites &unique)
{
    QHash<QString, QString> siteOf;
    for (const UniqueSite &site : unique.sites)
        for (int atom : site.atoms)
            siteOf.insert(structure.name(atom), siteName(structure, site));
    std::vector<CrossPeak> all;
    for (const SpectrumPeak &peak : peaks) {
        CrossPeak named;
        nameSites(peak.label, siteOf, named);
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

/// One dimension of the pairs: each of its sites once, at the mean of what was measured of it.
Agreement agreementOf(const std::vector<CrossPeak> &peaks, const std::vector<PlanePoint> &measured,
                      const CrossPeakPairing &pairing, std::size_t d, std::optional<double> offset)
{
    std::vector<ComparedSite> sites;
    std::vector<MeasuredLine> lines;
    std::vector<std::vector<int>> linesOf;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        auto known = std::find_if(sites.begin(), sites.end(),
                                  [&](const ComparedSite &site) { return site.name == peaks[i].sites[d]; });
        if (known == sites.end()) {
            ComparedSite site;
            site.name = peaks[i].sites[d];
            site.shielding = peaks[i].calculated[d];
            site.nuclei = 0;
            known = sites.insert(sites.end(), site);
            linesOf.emplace_back();
        }
        known->nuclei += peaks[i].peaks;
        linesOf[std::size_t(known - sites.begin())].push_back(int(lines.size()));
        lines.push_back({measured[std::size_t(pairing.lineOf[i])][d], {}, {}});
    }
    Agreement::Options options;
    options.slope = 1; // the positions are shifts already
    options.reference = offset;
    return Agreement::of(sites, lines, linesOf, options);
}

struct Report {
    QString file;
    Plan plan;
    QString spaceGroup;
    std::vector<CrossPeak> peaks;
    std::vector<PlanePoint> measured;
    CrossPeakPairing pairing;
    Agreement agreement[2];
    double reference[2] = {0, 0}; ///< of the simulation

    QString mode() const
    {
        return !pairing.leftOut.empty()       ? QStringLiteral("unmatched")
            : peaks.size() == measured.size() ? QStringLiteral("equal")
                                              : QStringLiteral("overlap");
    }
    double calculated(std::size_t i, std::size_t d) const { return peaks[i].calculated[d] + agreement[d].reference; }
    double measuredAt(std::size_t i, std::size_t d) const { return measured[std::size_t(pairing.lineOf[i])][d]; }

    QByteArray text() const;
    QByteArray csv() const;
    QByteArray json() const;
    QByteArray write() const
    {
        return plan.format == TableExport::Format::Csv ? csv()
            : plan.format == TableExport::Format::Json ? json()
                                                       : text();
    }
};

QString ppmText(double value)
{
    constexpr double half = 0.005; // of the last digit; a zero has no sign
    return QString::number(std::abs(value) < half ? 0.0 : value, 'f', 2);
}

QByteArray Report::text() const
{
    const auto &dimension = plan.spectrum.dimension;
    QString text = QStringLiteral("%1-%2: %3 cross peaks measured, %4 of the structure%5. Pairing: %6\n\n")
                       .arg(dimension[0].nucleus, dimension[1].nucleus, QString::number(measured.size()),
                            QString::number(peaks.size()),
                            spaceGroup.isEmpty() ? QString() : QStringLiteral(" in %1").arg(spaceGroup), mode());
    std::vector<QStringList> cells;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
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
        const ChiSquare chiSquare = agreement[d].chiSquare(*plan.sigma[d]);
        text += QStringLiteral("%1 (%2): reference %3 ppm (fitted), %4 sites, RMSD %5 ppm, largest difference %6 ppm, "
                               "χ² %7 with %8 degrees of freedom%9\n")
                    .arg(QLatin1String(dimensionNames[d]), dimension[d].nucleus,
                         ppmText(reference[d] + agreement[d].reference), QString::number(agreement[d].pairs.size()),
                         ppmText(agreement[d].rmsd), ppmText(agreement[d].largest), ppmText(chiSquare.value),
                         QString::number(chiSquare.degreesOfFreedom),
                         chiSquare.p ? QStringLiteral(", p = %1").arg(*chiSquare.p, 0, 'g', 3) : QString());
    }
    for (int line : pairing.leftOut)
        text += QStringLiteral("Left out: %1, %2 ppm\n")
                    .arg(ppmText(measured[std::size_t(line)][0]), ppmText(measured[std::size_t(line)][1]));
    return text.toUtf8();
}

QByteArray Report::csv() const
{
    QByteArray csv = "pairing,site_f2,site_f1,peaks,calculated_f2,measured_f2,calculated_f1,measured_f1\n";
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        csv += mode().toUtf8();
        for (const QString &site : peaks[i].sites)
            csv += ",\"" + site.toUtf8().replace('"', "\"\"") + '"';
        csv += ',' + QByteArray::number(peaks[i].peaks);
        for (std::size_t d = 0; d < 2; ++d) {
            for (double value : {calculated(i, d), measuredAt(i, d)}) {
                csv += ',';
                NumberText::append17(csv, value);
            }
        }
        csv += '\n';
    }
    return csv;
}

QByteArray Report::json() const
{
    QJsonArray pairs, leftOut, dimensions;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        pairs.append(QJsonObject{{QStringLiteral("sites"), QJsonArray{peaks[i].sites[0], peaks[i].sites[1]}},
                                 {QStringLiteral("peaks"), peaks[i].peaks},
                                 {QStringLiteral("calculated"), QJsonArray{calculated(i, 0), calculated(i, 1)}},
                                 {QStringLiteral("measured"), QJsonArray{measuredAt(i, 0), measuredAt(i, 1)}}});
    }
    for (int line : pairing.leftOut)
        leftOut.append(QJsonArray{measured[std::size_t(line)][0], measured[std::size_t(line)][1]});
    for (std::size_t d = 0; d < 2; ++d) {
        const ChiSquare chiSquare = agreement[d].chiSquare(*plan.sigma[d]);
        QJsonObject object{{QStringLiteral("nucleus"), plan.spectrum.dimension[d].nucleus},
                           {QStringLiteral("reference"), reference[d] + agreement[d].reference},
                           {QStringLiteral("rmsd"), agreement[d].rmsd},
                           {QStringLiteral("largestDifference"), agreement[d].largest},
                           {QStringLiteral("sigma"), *plan.sigma[d]},
                           {QStringLiteral("chi2"), chiSquare.value},
                           {QStringLiteral("dof"), chiSquare.degreesOfFreedom}};
        if (chiSquare.p)
            object.insert(QStringLiteral("p"), *chiSquare.p);
        dimensions.append(object);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("file"), file},
                                     {QStringLiteral("spaceGroup"), spaceGroup},
                                     {QStringLiteral("pairing"), mode()},
                                     {QStringLiteral("dimensions"), dimensions},
                                     {QStringLiteral("pairs"), pairs},
                                     {QStringLiteral("leftOut"), leftOut}})
        .toJson();
}

void note(const QString &text)
{
    printError(Texts::tr("magres-workbench compare: %1\n").arg(text));
}

} // namespace

CommandRun prepareCompareCrossPeaks(const CommandLine &line)
{
    const Plan plan = parsePlan(line);
    const auto isotopes = parseIsotopes(line);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        const QStringList nuclei{plan.spectrum.dimension[0].nucleus, plan.spectrum.dimension[1].nucleus};
        const MeasuredPeaks measured = ExperimentFile::peaks(plan.experiment, nuclei);
        for (const QString &text : measured.notes)
            note(QStringLiteral("%1: %2").arg(plan.experiment, text));
        Report report;
        report.file = file;
        report.plan = plan;
        for (const MeasuredPeak &peak : measured.peaks)
            report.measured.push_back({peak.f2, peak.f1});
        Simulation simulation(host, log);
        simulation.readFile(file, isotopes);
        simulation.runForPeaks(plan.spectrum);
        const QVariantMap references = simulation.parameters().value(QStringLiteral("ref")).toMap();
        const CrystalStructure structure = simulation.structure();
        const UniqueSites unique = UniqueSites::of(structure, plan.sites);
        for (const QString &warning : unique.warnings)
            note(warning);
        report.spaceGroup = unique.spaceGroup;
        report.peaks = uniquePeaks(simulation.data().spectrum(simulation.entry()).peaks, structure, unique);
        std::vector<PlanePoint> calculated;
        for (const CrossPeak &peak : report.peaks)
            calculated.push_back(peak.calculated);
        const bool oneReference = plan.spectrum.homonuclear();
        report.pairing = CrossPeakPairing::of(calculated, report.measured,
                                              {{*plan.sigma[0], *plan.sigma[1]}, oneReference, plan.unmatched});
        for (std::size_t d = 0; d < 2; ++d) {
            report.reference[d] = references.value(nuclei[qsizetype(d)]).toDouble();
            report.agreement[d] = agreementOf(report.peaks, report.measured, report.pairing, d,
                                              oneReference ? std::optional(report.pairing.offset[d]) : std::nullopt);
        }
        if (plan.output.isEmpty())
            return printOut(QString::fromUtf8(report.write()));
        OutputFiles files;
        files.open(plan.output).write(report.write());
        files.commit();
    });
}

} // namespace Workbench
