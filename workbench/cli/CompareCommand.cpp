// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/CompareCrossPeaks.h"
#include "cli/CompareOutputs.h"
#include "cli/ComparisonOptions.h"
#include "cli/ComparisonReport.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"

#include "data/Error.h"

namespace Workbench {
namespace {

void printNote(const QString &note)
{
    printError(Texts::tr("magres-workbench compare: %1\n").arg(note));
}

NucleusComparison comparedPlaces(const CrystalStructure &structure, const UniqueSites &unique,
                                 NucleusMeasurement &measurement)
{
    try {
        return NucleusComparison::ofPlaces(structure, unique, measurement);
    } catch (const UnknownSite &error) {
        throw CommandError(Texts::tr("%1 (--ignore-labels pairs without names)").arg(QString::fromUtf8(error.what())));
    }
}

CommandRun prepareCompare(const CommandLine &line)
{
    if (line.has("nucleus-f1"))
        return prepareCompareCrossPeaks(line);
    if (line.has("correlation"))
        throw UsageError(Texts::tr("option --correlation goes with --nucleus-f1"));
    const ComparisonOptions options = ComparisonOptions::parse(line);
    const CompareOutputs outputs(line);
    const auto isotopes = parseIsotopes(line);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        QStringList notes;
        ComparisonReport report;
        report.file = file;
        report.measurements = options.read(&notes);
        Simulation simulation(host, log);
        simulation.readFile(file, isotopes);
        report.structure = simulation.structure();
        const UniqueSites unique = UniqueSites::of(report.structure, options.sites);
        report.spaceGroup = unique.spaceGroup;
        notes.append(unique.warnings);
        for (const ComparisonOptions::Nucleus &nucleus : options.nuclei)
            notes.append(nucleus.set ? methodWarning(*nucleus.set, file) : QString());
        for (NucleusMeasurement &measurement : report.measurements) {
            const std::size_t listed = measurement.lines.size();
            report.comparisons.push_back(comparedPlaces(report.structure, unique, measurement));
            notes.append(placesNote(measurement.nucleus, listed, measurement.lines.size()));
        }
        notes.removeAll(QString());
        for (const QString &note : notes)
            printNote(note);
        outputs.write([&](TableExport::Format format) { return report.write(format); }, report.comparisons);
    });
}

} // namespace

Command compareCommand()
{
    std::vector<OptionSpec> options{
        {"format", "text|csv|json", "Format of the table. Default: text."},
        {"o", "OUT",
         "Output file; its suffix chooses the format: .txt, .csv or .json (the table), .png, .svg or .pdf (measured "
         "against calculated, with the differences). May be given more than once.",
         true},
        {"nucleus-f1", "NUC", "Second nucleus of a 2D spectrum: cross peaks are paired, in both coordinates at once."},
        {"correlation", "strongest|rss", "Which cross peaks a 2D spectrum has, as in simulate. Default: strongest."},
        isotopeSpec(),
    };
    const std::vector<OptionSpec> more = ComparisonOptions::specs();
    options.insert(options.end(), more.begin(), more.end());
    return {
        "compare",
        "FILE --experiment [NUC=]EXP... [--nucleus NUC] [options] [-o OUT]...",
        "Pairs measured lines with the sites of a structure and says how well they agree.",
        "Atoms that the space group maps onto each other are one site. How lines and sites were paired is said:\n"
        "  assigned   the peak list names the sites\n"
        "  equal      as many lines as sites, or as atoms: by their order\n"
        "  overlap    fewer lines than sites: neighbouring sites share a line so that the sum of squares is least\n"
        "  unmatched  more lines than sites: some were left out (--unmatched)\n"
        "The reference is that of least squares, each site weighted with its nuclei, unless --reference or\n"
        "--reference-set gives it; the slope is -1 unless --slope gives it, as a number or as \"fit\".\n"
        "With --nucleus-f1, cross peaks are paired so that the sum of squares of both coordinates, each in units of "
        "its\n"
        "nucleus's sigma, is least; each site then counts once in its dimension. A peak that names its two sites, as "
        "in\n"
        "C1-H1, belongs there.\n\n"
        "Example:\n"
        "  magres-workbench compare x.magres --experiment 13C=c.csv --experiment 1H=h.csv --average ch3 -o x.png",
        options,
        prepareCompare,
    };
}

} // namespace Workbench
