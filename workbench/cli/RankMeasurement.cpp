// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/RankMeasurement.h"

#include "cli/CliErrors.h"
#include "cli/MessageLog.h"
#include "cli/Simulation.h"
#include "host/DataEngine.h"
#include "data/Elision.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "data/NumberText.h"
#include "items/DocumentItem.h"
#include "items/plot/NmrData.h"
#include "data/Error.h"

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

} // namespace

RankMeasurement::RankMeasurement(HostApplication &host, MessageLog &log, const SimulateOptions &options,
                                 const Experiment &experiment)
    : m_host(host), m_log(log), m_options(options), m_experiment(experiment)
{
    m_host.scene().setDrawn(false);
}

RankRow RankMeasurement::measure(const QString &file)
{
    RankRow row;
    row.file = file;
    try {
        compare(file, row);
    } catch (const std::exception &error) {
        row.dimensions.clear();
        // The plug-in's general advice stands before the cause.
        row.message = elided(QString::fromUtf8(error.what()).section(QStringLiteral("\n\n"), -1).simplified());
        if (row.message.isEmpty())
            row.message = Texts::tr("failed without a message");
    }
    emptyDocument();
    return row;
}

void RankMeasurement::compare(const QString &file, RankRow &row)
{
    Simulation simulation(m_host, m_log);
    simulation.readFile(file, m_options.isotopes);
    simulation.runForPeaks(m_options);
    row.simulatedPeaks = int(simulation.peaks().size());
    const std::vector<double> before = references(simulation, m_options);
    const QUuid experiment = simulation.addExperiment(m_experiment);
    row.experimentalPeaks = int(simulation.data().spectrum(experiment).peaks.size());

    simulation.fitReference();
    const std::vector<double> after = references(simulation, m_options);
    const std::vector<double> rmsd = rmsds(simulation, experiment, int(after.size()));
    row.rmsd = overall(rmsd, simulation);
    for (std::size_t d = 0; d < after.size(); ++d)
        row.dimensions.push_back({after[d], after[d] - before[d], rmsd[d]});
}

void RankMeasurement::emptyDocument()
{
    for (DocumentItem *item : m_host.scene().documentItems()) {
        m_host.scene().detach(item);
        delete item;
    }
    DataEngine &data = m_host.documentData();
    for (const QUuid &id : data.ids())
        data.remove(id);
    m_log.takeInformation();
    m_log.takeErrors();
}

} // namespace Workbench
