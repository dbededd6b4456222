// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"

#include "cli/CliErrors.h"
#include "cli/MessageLog.h"
#include "cli/OutputOptions.h"
#include "cli/PrivateSettings.h"
#include "cli/RankCommand.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "cli/SpinSystemCommand.h"
#include "data/Elision.h"
#include "host/HostApplication.h"
#include "host/PluginManager.h"
#include "formats/OutputFiles.h"
#include "formats/TableExport.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"

#include <QApplication>
#include <QFileInfo>

#include <cstdio>

namespace Workbench {

namespace {

constexpr OptionSpec experimentSpec{
    "experiment", "EXP",
    "Experimental peak list: comma-separated text, one peak a line, position[,height] in 1D and "
    "position,position_f1[,height] in 2D, in ppm. A header line and # comments are allowed. Or a spectrum, of which "
    "the "
    "peaks are picked: CSV ppm,intensity, JCAMP-DX or a Bruker folder. Required."};
constexpr OptionSpec outputSpec{"o", "OUT",
                                "Output file; its suffix chooses the format: .csv (data points), .json (axes, peaks, "
                                "parameters), .jdx or .dx (JCAMP-DX, 1D only), .png, .svg or .pdf "
                                "(the plot). May be given more than once.",
                                true};
constexpr OptionSpec pageSpec{
    "o", "PAGE",
    "Output file; its suffix chooses the format: .png, .svg, .pdf, or .magresdoc for a document that the window opens. "
    "May be given more than once. Required.",
    true};
constexpr OptionSpec formatSpec{"format", "text|csv|json", "Format of the table. Default: text."};

std::vector<OptionSpec> withSimulateOptions(std::vector<OptionSpec> options)
{
    const std::vector<OptionSpec> &simulate = SimulateOptions::specs();
    options.insert(options.end(), simulate.begin(), simulate.end());
    return options;
}

/// The peaks as a table, largest shift first as the plug-in sorted them.
QString peakTable(const Simulation &simulation)
{
    const QVariantHash parameters = simulation.parameters();
    const bool plane = parameters.value(QStringLiteral("specType")).toInt() == 1;
    QStringList titles{QStringLiteral("Labels"),
                       QStringLiteral("%1, ppm").arg(parameters.value(QStringLiteral("nucF2")).toString())};
    if (plane)
        titles.append(QStringLiteral("%1, ppm").arg(parameters.value(QStringLiteral("nucF1")).toString()));
    titles.append(QStringLiteral("Height"));
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

void reportLineWidths(const Simulation &simulation, bool onStandardError)
{
    const QString text = QStringLiteral("Line width: %1\n").arg(simulation.lineWidths());
    onStandardError ? printError(text) : printOut(text);
}

CommandRun prepareTable(const CommandLine &line)
{
    const auto isotopes = parseIsotopes(line);
    const QString formatName = line.has("format") ? line.value("format") : QStringLiteral("text");
    const auto format = TableExport::formatOfName(formatName);
    if (!format)
        throw UsageError(QStringLiteral("option --format: \"%1\" is not one of: text, csv, json").arg(formatName));
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        simulation.readFile(file, isotopes);
        printOut(QString::fromUtf8(TableExport::write(simulation.table().content(), *format)));
    });
}

CommandRun prepareSimulate(const CommandLine &line)
{
    required(line, "nucleus");
    const SimulateOptions options = SimulateOptions::parse(line);
    const OutputOptions outputs(line.values("o"), OutputOptions::Spectrum);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        simulation.readFile(file, options.isotopes);
        simulation.run(options);
        outputs.write(host, simulation);
        reportLineWidths(simulation, !outputs.isEmpty());
        if (outputs.isEmpty())
            printOut(peakTable(simulation));
    });
}

/// What `fit` and `rmsd` have in common: simulation and experiment in one stack.
void stackWithExperiment(Simulation &simulation, const QString &file, const SimulateOptions &options,
                         const QString &experiment)
{
    if (!QFileInfo::exists(experiment))
        throw CommandError(QStringLiteral("%1: there is no such file").arg(experiment));
    simulation.readFile(file, options.isotopes);
    simulation.run(options);
    simulation.addExperiment(experiment);
}

CommandRun prepareFit(const CommandLine &line)
{
    required(line, "nucleus");
    const QString experiment = required(line, "experiment");
    const SimulateOptions options = SimulateOptions::parse(line);
    const OutputOptions outputs(line.values("o"), OutputOptions::Spectrum);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        stackWithExperiment(simulation, file, options, experiment);
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
    const SimulateOptions options = SimulateOptions::parse(line);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        stackWithExperiment(simulation, file, options, experiment);
        printOut(simulation.rmsd() + u'\n');
    });
}

CommandRun prepareRender(const CommandLine &line)
{
    required(line, "o");
    const bool withSpectrum = line.has("nucleus");
    for (const OptionSpec &option : SimulateOptions::specs()) {
        if (!withSpectrum && line.has(option.name) && option.name != std::string_view(isotopeSpec().name)) {
            throw UsageError(QStringLiteral("option %1 needs --nucleus: without it no spectrum is drawn")
                                 .arg(CommandLine::shown(option.name)));
        }
    }
    const SimulateOptions options = SimulateOptions::parse(line);
    const OutputOptions outputs(line.values("o"), OutputOptions::Page);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        simulation.readFile(file, options.isotopes);
        if (withSpectrum)
            simulation.run(options);
        outputs.write(host, simulation);
        if (withSpectrum)
            reportLineWidths(simulation, true);
    });
}

QString usageOf(const Command &command)
{
    return QStringLiteral("magres-workbench %1 %2").arg(QLatin1String(command.name), QLatin1String(command.usage));
}

QString helpOf(const Command &command)
{
    return QStringLiteral("Usage: %1\n\n%2\n%3\n\nOptions:\n%4%5")
        .arg(usageOf(command), QLatin1String(command.summary), QLatin1String(command.details),
             CommandLine::help(command.options), CommandLine::help(commonOptions()));
}

/// A file that no plug-in takes may be the fault of a plug-in that did not load.
void printPluginFailures(const HostApplication &host)
{
    for (const PluginManager::Failure &failure : host.plugins().failures()) {
        printError(
            QStringLiteral("magres-workbench: plug-in %1 is not loaded: %2\n").arg(failure.file, failure.reason));
    }
}

void checkFiles(const Command &command, const QStringList &files)
{
    if (command.files != Command::None && files.isEmpty())
        throw UsageError(QStringLiteral("FILE is missing"));
    const qsizetype most = command.files == Command::Several ? files.size() : command.files == Command::One ? 1 : 0;
    if (files.size() > most)
        throw UsageError(QStringLiteral("expected one FILE, found \"%1\" as well").arg(files[most]));
}

} // namespace

CommandRun headless(std::function<void(HostApplication &, MessageLog &)> run, const QString &settingsWithin)
{
    return [=](const ProgramStart &start) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        const PrivateSettings settings(settingsWithin);
        const QApplication application(start.argc, start.argv);
        MessageLog log;
        HostApplication host;
        host.loadPlugins(start.pluginDirectory);
        try {
            run(host, log);
        } catch (...) {
            printPluginFailures(host);
            throw;
        }
        return ExitDone;
    };
}

QString required(const CommandLine &line, const char *option)
{
    if (!line.has(option))
        throw UsageError(QStringLiteral("option %1 is required").arg(CommandLine::shown(option)));
    return line.value(option);
}

const OptionSpec &experimentOption()
{
    return experimentSpec;
}

const std::vector<OptionSpec> &commonOptions()
{
    static const std::vector<OptionSpec> list{
        {"plugin-path", "DIR", "Directory of the plug-ins. Default: beside the program."},
        {"help", nullptr, "Show this help."},
    };
    return list;
}

const std::vector<Command> &commands()
{
    static const std::vector<Command> list{
        {"table",
         "FILE [options]",
         "Prints the table of NMR parameters of a file.",
         "One row per label: shieldings in ppm, quadrupolar coupling constants in MHz. csv and json have full "
         "precision.",
         {formatSpec, isotopeSpec()},
         prepareTable},
        {"simulate", "FILE --nucleus NUC [options] [-o OUT]...", "Simulates a spectrum of a file.",
         "Without -o the peaks are printed as a table. The line widths used are printed as well.",
         withSimulateOptions({outputSpec}), prepareSimulate},
        {"fit", "FILE --experiment EXP --nucleus NUC [options] [-o OUT]...",
         "Moves the shift reference of the simulated spectrum to the experiment and prints the report.",
         "The n-th largest simulated shift is compared with the n-th largest experimental one. Outputs show the "
         "spectrum "
         "with\nthe new reference.",
         withSimulateOptions({experimentSpec, outputSpec}), prepareFit},
        {"rmsd", "FILE --experiment EXP --nucleus NUC [options]",
         "Prints the root-mean-square deviation between the simulated spectrum and the experiment.",
         "The n-th largest simulated shift is compared with the n-th largest experimental one, weighted by simulated "
         "height.",
         withSimulateOptions({experimentSpec}), prepareRmsd},
        {"render", "FILE -o PAGE [options]", "Draws the document page: molecule, table and spectrum.",
         "The spectrum is simulated when --nucleus is given.", withSimulateOptions({pageSpec}), prepareRender},
        spinSystemCommand(),
        rankCommand(),
        rankWorkerCommand(),
    };
    return list;
}

const Command *findCommand(const QString &name)
{
    for (const Command &command : commands()) {
        if (name == QLatin1String(command.name))
            return &command;
    }
    return nullptr;
}

int runCommand(const Command &command, const QStringList &arguments, int argc, char **argv,
               const QString &pluginDirectory)
{
    const QString program = QStringLiteral("magres-workbench %1: ").arg(QLatin1String(command.name));
    try {
        std::vector<OptionSpec> options = command.options;
        options.insert(options.end(), commonOptions().begin(), commonOptions().end());
        const CommandLine line(options, arguments);
        if (line.has("help")) {
            printOut(helpOf(command));
            return ExitDone;
        }
        checkFiles(command, line.positional());
        const CommandRun run = command.prepare(line);
        return run({argc, argv, line.has("plugin-path") ? line.value("plugin-path") : pluginDirectory});
    } catch (const UsageError &error) {
        printError(program + QString::fromUtf8(error.what())
                   + QStringLiteral("\nUsage: %1\nSee magres-workbench %2 --help\n")
                         .arg(usageOf(command), QLatin1String(command.name)));
        return ExitWrongUsage;
    } catch (const std::exception &error) {
        printError(program + elided(QString::fromUtf8(error.what())) + u'\n');
        return ExitFailed;
    }
}

void printOut(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    if (std::fwrite(bytes.constData(), 1, bytes.size(), stdout) != std::size_t(bytes.size())
        || std::fflush(stdout) != 0)
        throw CommandError(QStringLiteral("standard output cannot be written"));
}

void printError(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, bytes.size(), stderr);
}

} // namespace Workbench
