// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/RankMeasurement.h"

#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/MessageLog.h"
#include "cli/Simulation.h"
#include "host/DataEngine.h"
#include "data/Elision.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "data/Nuclides.h"
#include "data/NumberText.h"
#include "items/DocumentItem.h"
#include "items/plot/NmrData.h"
#include "data/Error.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <functional>

namespace Workbench {

namespace {

std::vector<double> references(const Simulation &simulation, const SimulateOptions &options)
{
    const QVariantMap byNucleus = simulation.parameters().value(QStringLiteral("ref")).toMap();
    std::vector<double> values;
    for (int d = 0; d < (options.twoDimensional ? 2 : 1); ++d)
        values.push_back(byNucleus.value(options.dimension[d].nucleus).toDouble());
    return values;
}

/// The deviation between two peak lists: the n-th largest position of the one against that of the other, weighted by
/// simulated height.
double pairedRmsd(const QList<SpectrumPeak> &simulated, const QList<SpectrumPeak> &measured, double SpectrumPeak::*at)
{
    std::vector<std::pair<double, double>> weighted; // position, weight
    for (const SpectrumPeak &peak : simulated)
        weighted.push_back({peak.*at, std::abs(peak.height)});
    std::stable_sort(weighted.begin(), weighted.end(), [](const auto &a, const auto &b) { return a.first > b.first; });
    std::vector<double> positions;
    for (const SpectrumPeak &peak : measured)
        positions.push_back(peak.*at);
    std::stable_sort(positions.begin(), positions.end(), std::greater<>());
    if (positions.size() != weighted.size())
        return std::nan("");
    double sum = 0, weights = 0;
    for (std::size_t i = 0; i < weighted.size(); ++i) {
        const double difference = positions[i] - weighted[i].first;
        sum += difference * difference * weighted[i].second;
        weights += weighted[i].second;
    }
    return std::sqrt(sum / weights);
}

/// The numbers of the plug-in's RMSD report, one a line: "RMSD: 1.25 ppm".
std::vector<double> reportedRmsds(const QString &report)
{
    static const QRegularExpression line(QStringLiteral("^RMSD[^:\\n]*: (\\S+) "), QRegularExpression::MultilineOption);
    std::vector<double> values;
    for (auto match = line.globalMatch(report); match.hasNext();) {
        const QByteArray number = match.next().captured(1).toLatin1();
        values.push_back(NumberText::parse<double>({number.constData(), size_t(number.size())}).value_or(std::nan("")));
    }
    return values;
}

/// The report has six digits. The same deviation with all its digits counts where the plug-in's own confirms it;
/// otherwise the plug-in's stands as it is printed.
double confirmed(double own, double reported)
{
    constexpr double half = 5.1e-6; // of the sixth digit, relative
    constexpr double nothing = 1e-9; // ppm; deviations of equal lists are rounding
    const bool same = std::abs(own - reported) <= half * std::abs(reported)
        || (std::abs(own) < nothing && std::abs(reported) < nothing);
    return same ? own : reported;
}

std::vector<double> rmsds(Simulation &simulation, const QUuid &experiment, int dimensions)
{
    const std::vector<double> reported = reportedRmsds(simulation.rmsd());
    if (int(reported.size()) != dimensions)
        throw CommandError(Texts::tr("the plug-in's report of the RMSD is not understood"));
    const QList<SpectrumPeak> &simulated = simulation.data().spectrum(simulation.entry()).peaks;
    const QList<SpectrumPeak> &measured = simulation.data().spectrum(experiment).peaks;
    std::vector<double> values;
    for (int d = 0; d < dimensions; ++d) {
        const double own = pairedRmsd(simulated, measured, d == 0 ? &SpectrumPeak::f2 : &SpectrumPeak::f1);
        values.push_back(confirmed(own, reported[std::size_t(d)]));
        if (!std::isfinite(values.back()))
            throw CommandError(Texts::tr("the RMSD is not a number"));
    }
    return values;
}

/// Both dimensions in one number: the root mean square of the deviations in Hz, given in ppm of F2, so that a deviation
/// counts by how far it moves a line.
double overall(const std::vector<double> &rmsd, const Simulation &simulation)
{
    if (rmsd.size() == 1)
        return rmsd[0];
    const auto frequencies = simulation.data()
                                 .entry(simulation.entry())
                                 .value(QStringLiteral("SpecInfo"))
                                 .toMap()
                                 .value(QStringLiteral("SpectrometerFrequencies"))
                                 .value<DoubleVector>();
    if (frequencies.size() < 2 || !(frequencies[0] > 0) || !(frequencies[1] > 0))
        throw CommandError(Texts::tr("the spectrum has no frequencies"));
    const double inF2 = rmsd[1] * frequencies[1] / frequencies[0];
    return std::sqrt((rmsd[0] * rmsd[0] + inF2 * inF2) / 2);
}

void emptyDocument(HostApplication &host, MessageLog &log)
{
    host.scene().removeAll();
    DataEngine &data = host.documentData();
    for (const QUuid &id : data.ids())
        data.remove(id);
    log.takeInformation();
    log.takeErrors();
}

double startReference(const ComparisonOptions::Nucleus &nucleus)
{
    return nucleus.reference.value_or(nucleus.set ? nucleus.set->calibration.reference : ShiftRanking::usualReference);
}

} // namespace

std::vector<OptionSpec> RankPlan::specs()
{
    std::vector<OptionSpec> options = ComparisonOptions::specs();
    options.push_back({"window", "NUC=PPM",
                       "Range in which the reference of a nucleus may lie, for the probabilities. Default: 20.", true});
    for (const OptionSpec &option : SimulateOptions::specs()) {
        const bool isThere = std::any_of(options.begin(), options.end(), [&](const OptionSpec &other) {
            return std::string_view(other.name) == option.name;
        });
        if (!isThere)
            options.push_back(option);
    }
    return options;
}

RankPlan RankPlan::parse(const CommandLine &line)
{
    RankPlan plan;
    plan.isotopes = parseIsotopes(line);
    if (line.has("nucleus-f1") || line.has("quad-shift") || line.value("dims") == u"2") {
        plan.experiment = singleExperiment(line);
        for (const char *option : {"sigma", "window", "unmatched", "ignore-labels", "symmetry-tolerance"}) {
            if (line.has(option))
                throw UsageError(
                    QStringLiteral("option %1 goes with shifts of 1D spectra alone").arg(CommandLine::shown(option)));
        }
        plan.spectrum = SimulateOptions::parse(line);
        return plan;
    }
    plan.shifts = ComparisonOptions::parse(line);
    // Options of spectra have no bearing on shifts, but wrong values are still wrong.
    const bool isPlain = plan.shifts.nuclei.size() == 1 && !line.value("reference").contains(u'=')
        && !line.value("slope").contains(u'=') && line.value("slope") != u"fit";
    if (isPlain)
        SimulateOptions::parse(line);
    for (const ComparisonOptions::Nucleus &nucleus : plan.shifts.nuclei) {
        if (nucleus.fitsSlope)
            throw UsageError(Texts::tr("option --slope: a slope fitted to each structure would hide how it fits"));
        if (plan.shifts.nuclei.size() > 1 && !nucleus.sigma)
            throw UsageError(Texts::tr("option --sigma: the error of calculated shifts of %1 is needed, as in "
                                       "--sigma %1=5")
                                 .arg(nucleus.name));
    }
    return plan;
}

RankLayout RankPlan::layout() const
{
    RankLayout layout;
    if (spectrum)
        return {{QString()}, spectrum->twoDimensional};
    for (const ComparisonOptions::Nucleus &nucleus : shifts.nuclei)
        layout.nuclei.append(shifts.nuclei.size() == 1 ? QString() : nucleus.name);
    return layout;
}

RankMeasurement::RankMeasurement(const RankPlan &plan, QStringList *notes) : m_plan(plan)
{
    QStringList all;
    if (const auto &spectrum = m_plan.spectrum) {
        if (!QFileInfo::exists(m_plan.experiment))
            throw CommandError(Texts::tr("%1: there is no such file").arg(m_plan.experiment));
        QStringList nuclei{spectrum->dimension[0].nucleus};
        if (spectrum->twoDimensional)
            nuclei.append(spectrum->dimension[1].nucleus);
        m_experiment.emplace(m_plan.experiment, nuclei);
        for (const QString &note : m_experiment->notes())
            all.append(QStringLiteral("%1: %2").arg(m_plan.experiment, note));
    } else {
        m_shifts.measurements = m_plan.shifts.read(&all);
        m_shifts.sites = m_plan.shifts.sites;
        // A reference that is given is where the offset counts from; it is free all the same.
        for (NucleusMeasurement &measurement : m_shifts.measurements)
            measurement.scale.reference.reset();
        for (const ComparisonOptions::Nucleus &nucleus : m_plan.shifts.nuclei)
            m_shifts.startReferences.push_back(startReference(nucleus));
    }
    if (notes)
        notes->append(all);
}

QString RankMeasurement::basis() const
{
    if (!m_plan.spectrum)
        return m_shifts.basis();
    const SimulateOptions &options = *m_plan.spectrum;
    QStringList nuclei, entries, others, lines;
    for (int d = 0; d < (options.twoDimensional ? 2 : 1); ++d) {
        const DimensionOptions &dimension = options.dimension[d];
        nuclei.append(dimension.nucleus);
        entries.append(QStringLiteral("%1 reference=%2")
                           .arg(dimension.nucleus)
                           .arg(dimension.reference.value_or(ShiftRanking::usualReference)));
        entries.append(QStringLiteral("%1 slope=%2").arg(dimension.nucleus).arg(dimension.slope.value_or(-1)));
        if (dimension.quadrupolarShift)
            others.append(dimension.nucleus + QStringLiteral(" quad-shift"));
    }
    for (const MeasuredPeak &peak : ExperimentFile::peaks(m_plan.experiment, nuclei).peaks)
        lines.append(QStringLiteral("%1 %2 %3").arg(peak.f2, 0, 'g', 17).arg(peak.f1, 0, 'g', 17).arg(peak.count));
    entries.prepend(QStringLiteral("%1 lines=%2").arg(nuclei.join(u'-'), RankTable::digest(lines)));
    entries.append(QStringLiteral("average=%1").arg(options.averaging));
    entries.append(QStringLiteral("correlation=%1").arg(options.correlation));
    entries.append(QStringLiteral("frequency=%1").arg(options.frequency));
    return (entries + others).join(QLatin1String("; "));
}

RankRow RankMeasurement::measure(HostApplication &host, MessageLog &log, const QString &file) const
{
    RankRow row;
    row.file = file;
    try {
        m_experiment ? compareSpectra(host, log, row) : compareShifts(host, log, row);
    } catch (const std::exception &error) {
        row.fail(error);
    }
    emptyDocument(host, log);
    return row;
}

void RankMeasurement::compareShifts(HostApplication &host, MessageLog &log, RankRow &row) const
{
    Simulation simulation(host, log);
    simulation.readFile(row.file, m_plan.isotopes);
    m_shifts.compare(simulation.structure(), row);
}

void RankMeasurement::compareSpectra(HostApplication &host, MessageLog &log, RankRow &row) const
{
    const SimulateOptions &options = *m_plan.spectrum;
    Simulation simulation(host, log);
    simulation.readFile(row.file, m_plan.isotopes);
    simulation.runForPeaks(options);
    row.simulatedPeaks = double(simulation.peaks().size());
    const std::vector<double> before = references(simulation, options);
    const QUuid experiment = simulation.addExperiment(*m_experiment);
    row.experimentalPeaks = double(simulation.data().spectrum(experiment).peaks.size());

    simulation.fitReference();
    const std::vector<double> after = references(simulation, options);
    const std::vector<double> rmsd = rmsds(simulation, experiment, int(after.size()));
    row.rmsd = overall(rmsd, simulation);
    for (std::size_t d = 0; d < after.size(); ++d) {
        row.parts.emplace_back();
        row.parts.back().reference = after[d];
        row.parts.back().offset = after[d] - before[d];
        row.parts.back().rmsd = rmsd[d];
    }
    RankTable::checkNumbers(row, m_plan.layout());
}

} // namespace Workbench
