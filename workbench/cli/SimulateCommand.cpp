// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/OutputOptions.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "data/Error.h"
#include "formats/TableExport.h"
#include "items/plot/NmrData.h"

namespace Workbench {

namespace {

/// The peaks as a table, largest shift first as the plug-in sorted them.
QString peakTable(const Simulation &simulation)
{
    const QVariantHash parameters = simulation.parameters();
    const bool plane = parameters.value(QStringLiteral("specType")).toInt() == 1;
    QStringList titles{Texts::tr("Labels"),
                       QStringLiteral("%1, ppm").arg(parameters.value(QStringLiteral("nucF2")).toString())};
    if (plane)
        titles.append(QStringLiteral("%1, ppm").arg(parameters.value(QStringLiteral("nucF1")).toString()));
    titles.append(Texts::tr("Height"));
    std::vector<QStringList> cells;
    for (const SpectrumPeak &peak : simulation.data().spectrum(simulation.entry()).peaks) {
        QStringList row{peak.label, QString::number(peak.f2, 'f', 3)};
        if (plane)
            row.append(QString::number(peak.f1, 'f', 3));
        row.append(QString::number(peak.height, 'g', 6));
        cells.push_back(row);
    }
    return TableExport::alignedText(titles, cells);
}

CommandRun prepareSimulate(const CommandLine &line)
{
    required(line, "nucleus");
    const SimulateOptions options = SimulateOptions::parse(line);
    const OutputOptions outputs(line.values("o"), OutputOptions::Spectrum);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        host.scene().setDrawn(outputs.areDrawn());
        Simulation simulation(host, log);
        simulation.readFile(file, options.isotopes);
        warnOfMethods(options.sets, file);
        simulation.run(options);
        outputs.write(host, simulation);
        reportLineWidths(simulation, !outputs.isEmpty());
        if (outputs.isEmpty())
            printOut(peakTable(simulation));
    });
}

} // namespace

Command simulateCommand()
{
    return {
        "simulate",
        "FILE --nucleus NUC [options] [-o OUT]...",
        "Simulates a spectrum of a file.",
        "Without -o the peaks are printed as a table. The line widths used are printed as well.",
        withSimulateOptions({spectrumOutputOption()}),
        prepareSimulate,
    };
}

} // namespace Workbench
