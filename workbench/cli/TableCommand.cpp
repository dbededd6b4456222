// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "formats/TableExport.h"
#include "items/table/TableItem.h"
#include "data/Error.h"

namespace Workbench {

namespace {

CommandRun prepareTable(const CommandLine &line)
{
    const auto isotopes = parseIsotopes(line);
    const QString formatName = line.has("format") ? line.value("format") : QStringLiteral("text");
    const auto format = TableExport::formatOfName(formatName);
    if (!format)
        throw UsageError(Texts::tr("option --format: \"%1\" is not one of: text, csv, json").arg(formatName));
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        simulation.readFile(file, isotopes);
        printOut(QString::fromUtf8(TableExport::write(simulation.table().content(), *format)));
    });
}

} // namespace

Command tableCommand()
{
    return {
        "table",
        "FILE [options]",
        "Prints the table of NMR parameters of a file.",
        "One row per label: shieldings in ppm, quadrupolar coupling constants in MHz. csv and json have full "
        "precision.",
        {{"format", "text|csv|json", "Format of the table. Default: text."}, isotopeSpec()},
        prepareTable,
    };
}

} // namespace Workbench
