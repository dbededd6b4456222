// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/ComparisonOptions.h"
#include "cli/ComparisonReport.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "document/PageExport.h"
#include "formats/OutputFiles.h"
#include "formats/TableExport.h"
#include "items/plot/AgreementPlot.h"
#include "items/plot/PlotPainting.h"

#include "data/Error.h"

#include <QFileInfo>

namespace Workbench {
namespace {

void printNote(const QString &note)
{
    printError(Texts::tr("magres-workbench compare: %1\n").arg(note));
}

/// Where a comparison goes: standard output unless a table or a picture has a file.
struct CompareOutputs {
    TableExport::Format format = TableExport::Format::Text;
    QStringList fileNames;

    explicit CompareOutputs(const CommandLine &line) : fileNames(line.values("o"))
    {
        const QString name = line.has("format") ? line.value("format") : QStringLiteral("text");
        const auto known = TableExport::formatOfName(name);
        if (!known)
            throw UsageError(Texts::tr("option --format: \"%1\" is not one of: text, csv, json").arg(name));
        format = *known;
        for (const QString &fileName : fileNames) {
            if (!tableFormat(fileName) && !PageExport::formatOfSuffix(QFileInfo(fileName).suffix()))
                throw UsageError(Texts::tr("option -o: the suffix of \"%1\" is not one of: .txt, .csv, .json, .%2")
                                     .arg(fileName, PageExport::suffixes().join(QLatin1String(", ."))));
        }
    }

    static std::optional<TableExport::Format> tableFormat(const QString &fileName)
    {
        const QString suffix = QFileInfo(fileName).suffix().toLower();
        return suffix == u"txt" ? TableExport::Format::Text
            : suffix == u"text" ? std::nullopt
                                : TableExport::formatOfName(suffix);
    }

    void write(const ComparisonReport &report) const
    {
        OutputFiles files;
        bool hasTable = false;
        for (const QString &fileName : fileNames) {
            QIODevice &device = files.open(fileName);
            if (const auto table = tableFormat(fileName)) {
                device.write(report.write(*table));
                hasTable = true;
                continue;
            }
            AgreementPlot plot;
            plot.setComparisons(report.comparisons);
            PageExport::writePicture([&](QPainter *painter, const QRectF &area) { paintPlot(plot, painter, area); },
                                     plot.fullSize(), device,
                                     *PageExport::formatOfSuffix(QFileInfo(fileName).suffix()));
        }
        files.commit();
        if (!hasTable)
            printOut(QString::fromUtf8(report.write(format)));
    }
};

CommandRun prepareCompare(const CommandLine &line)
{
    const ComparisonOptions options = ComparisonOptions::parse(line);
    const CompareOutputs outputs(line);
    const auto isotopes = parseIsotopes(line);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        QStringList notes;
        ComparisonReport report;
        report.file = file;
        report.measurements = options.read(&notes);
        for (NucleusMeasurement &measurement : report.measurements) {
            // A set that is known is not fitted.
            if (measurement.calibration)
                measurement.scale.reference = measurement.calibration->reference;
        }
        Simulation simulation(host, log);
        simulation.readFile(file, isotopes);
        report.structure = simulation.structure();
        const UniqueSites unique = UniqueSites::of(report.structure, options.sites);
        report.spaceGroup = unique.spaceGroup;
        notes.append(unique.warnings);
        for (const ComparisonOptions::Nucleus &nucleus : options.nuclei)
            notes.append(nucleus.set ? methodWarning(*nucleus.set, file) : QString());
        for (const NucleusMeasurement &measurement : report.measurements)
            report.comparisons.push_back(NucleusComparison::of(report.structure, unique, measurement));
        notes.removeAll(QString());
        for (const QString &note : notes)
            printNote(note);
        outputs.write(report);
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
        "--reference-set gives it; the slope is -1 unless --slope gives it, as a number or as \"fit\".\n\n"
        "Example:\n"
        "  magres-workbench compare x.magres --experiment 13C=c.csv --experiment 1H=h.csv --average ch3 -o x.png",
        options,
        prepareCompare,
    };
}

} // namespace Workbench
