// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/OutputOptions.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "data/Error.h"

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

CommandRun prepareFit(const CommandLine &line)
{
    required(line, "nucleus");
    const QString experiment = required(line, "experiment");
    const bool peaksOfFile = wantsPeaksOfFile(line);
    const SimulateOptions options = SimulateOptions::parse(line);
    const OutputOptions outputs(line.values("o"), OutputOptions::Spectrum);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        stackWithExperiment(simulation, file, options, experiment, peaksOfFile);
        const QString report = simulation.autoReference();
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
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        stackWithExperiment(simulation, file, options, experiment, peaksOfFile);
        printOut(simulation.rmsd() + u'\n');
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
