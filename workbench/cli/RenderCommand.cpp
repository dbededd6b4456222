// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/OutputOptions.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "data/Error.h"

namespace Workbench {

namespace {

CommandRun prepareRender(const CommandLine &line)
{
    required(line, "o");
    const bool withSpectrum = line.has("nucleus");
    for (const OptionSpec &option : SimulateOptions::specs()) {
        if (!withSpectrum && line.has(option.name) && option.name != std::string_view(isotopeSpec().name)) {
            throw UsageError(Texts::tr("option %1 needs --nucleus: without it no spectrum is drawn")
                                 .arg(CommandLine::shown(option.name)));
        }
    }
    const SimulateOptions options = SimulateOptions::parse(line);
    const OutputOptions outputs(line.values("o"), OutputOptions::Page);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        host.scene().setDrawn(outputs.areDrawn());
        Simulation simulation(host, log);
        simulation.readFile(file, options.isotopes);
        warnOfMethods(options.sets, file);
        if (withSpectrum)
            simulation.run(options);
        outputs.write(host, simulation);
        if (withSpectrum)
            reportLineWidths(simulation, true);
    });
}

} // namespace

Command renderCommand()
{
    return {
        "render",
        "FILE -o PAGE [options]",
        "Draws the document page: molecule, table and spectrum.",
        "The spectrum is simulated when --nucleus is given.",
        withSimulateOptions(
            {{"o", "PAGE",
              "Output file; its suffix chooses the format: .png, .svg, .pdf, or .magresdoc for a document that the "
              "window opens. May be given more than once. Required.",
              true}}),
        prepareRender,
    };
}

} // namespace Workbench
