// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/OutputOptions.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "data/Error.h"
#include "items/plot/NmrData.h"

#include <algorithm>

namespace Workbench {

namespace {

/// What `fit` and `rmsd` have in common: simulation and experiment in one stack.
void stackWithExperiment(Simulation &simulation, const QString &file, const SimulateOptions &options,
                         const QString &experiment, bool peaksOfFile)
{
    const QString existing = existingExperiment(experiment, peaksOfFile);
    simulation.readFile(file, options.isotopes);
    warnOfMethods(options.sets, file);
    simulation.run(options);
    simulation.addExperiment(existing);
}

/// Runs a command of the plug-in, which pairs equal numbers of peaks only. Where that is why it fails, the error names
/// the command that pairs any numbers.
QString pairing(Simulation &simulation, QString (Simulation::*command)(), const QString &wayOn)
{
    try {
        return (simulation.*command)();
    } catch (const std::exception &error) {
        const QList<SpectrumEntry> &entries = simulation.data().stack().entries;
        const auto hasOther = [&](const SpectrumEntry &entry) {
            return entry.spectrum.peaks.size() != entries.constFirst().spectrum.peaks.size();
        };
        if (std::none_of(entries.begin(), entries.end(), hasOther))
            throw;
        throw CommandError(QString::fromUtf8(error.what()) + u'\n'
                           + Texts::tr("`%1` pairs different numbers of lines and sites.").arg(wayOn));
    }
}

/// The command that does not mind the numbers.
QString compareCommandFor(const CommandLine &line)
{
    QString text = QStringLiteral("magres-workbench compare %1 --nucleus %2")
                       .arg(line.positional().constFirst(), line.value("nucleus"));
    if (line.has("nucleus-f1"))
        text += QStringLiteral(" --nucleus-f1 ") + line.value("nucleus-f1");
    if (line.has("average"))
        text += QStringLiteral(" --average ") + line.value("average");
    return text + QStringLiteral(" --experiment ") + line.value("experiment");
}

CommandRun prepareFit(const CommandLine &line)
{
    required(line, "nucleus");
    const QString experiment = required(line, "experiment");
    const bool peaksOfFile = wantsPeaksOfFile(line);
    const SimulateOptions options = SimulateOptions::parse(line);
    const OutputOptions outputs(line.values("o"), OutputOptions::Spectrum);
    const QString file = line.positional().constFirst(), wayOn = compareCommandFor(line);
    return headless([=](HostApplication &host, MessageLog &log) {
        host.scene().setDrawn(outputs.areDrawn());
        Simulation simulation(host, log);
        stackWithExperiment(simulation, file, options, experiment, peaksOfFile);
        const QString report = pairing(simulation, &Simulation::autoReference, wayOn);
        outputs.write(host, simulation);
        reportLineWidths(simulation, true);
        printOut(report + u'\n');
    });
}

CommandRun prepareRmsd(const CommandLine &line)
{
    required(line, "nucleus");
    const QString experiment = required(line, "experiment");
    const bool peaksOfFile = wantsPeaksOfFile(line);
    const SimulateOptions options = SimulateOptions::parse(line);
    const QString file = line.positional().constFirst(), wayOn = compareCommandFor(line);
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        stackWithExperiment(simulation, file, options, experiment, peaksOfFile);
        printOut(pairing(simulation, &Simulation::rmsd, wayOn) + u'\n');
    });
}

} // namespace

Command fitCommand()
{
    return {
        "fit",
        "FILE --experiment EXP --nucleus NUC [options] [-o OUT]...",
        "Moves the shift reference of the simulated spectrum to the experiment and prints the report.",
        "The n-th largest simulated shift is compared with the n-th largest experimental one. Outputs show the "
        "spectrum with\nthe new reference.",
        withSimulateOptions({experimentOption(), peaksOption(), spectrumOutputOption()}),
        prepareFit,
    };
}

Command rmsdCommand()
{
    return {
        "rmsd",
        "FILE --experiment EXP --nucleus NUC [options]",
        "Prints the root-mean-square deviation between the simulated spectrum and the experiment.",
        "The n-th largest simulated shift is compared with the n-th largest experimental one, weighted by simulated "
        "height.",
        withSimulateOptions({experimentOption(), peaksOption()}),
        prepareRmsd,
    };
}

} // namespace Workbench
