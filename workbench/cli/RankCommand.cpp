// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/OptionValues.h"
#include "cli/PrivateSettings.h"
#include "cli/ProgressLine.h"
#include "cli/RankMeasurement.h"
#include "cli/RankWorkers.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "formats/OutputFiles.h"
#include "data/Error.h"
#include "data/Language.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace Workbench {

namespace {

constexpr int mostWorkers = 1024;
constexpr const char *workerName = "rank-worker";

/// What both `rank` and its workers are given.
std::vector<OptionSpec> measurementOptions()
{
    return withSimulateOptions({experimentOption()});
}

/// The options of the line that a worker needs, in a form in which values may begin with a dash.
QStringList workerArguments(const CommandLine &line)
{
    QStringList arguments{QLatin1String(workerName)};
    for (const OptionSpec &option : measurementOptions()) {
        if (!option.value && line.has(option.name))
            arguments.append(CommandLine::shown(option.name));
        for (const QString &value : option.value ? line.values(option.name) : QStringList())
            arguments.append(CommandLine::shown(option.name) + u'=' + value);
    }
    return arguments;
}

Experiment readExperiment(const CommandLine &line, const SimulateOptions &options)
{
    QStringList nuclei{options.dimension[0].nucleus};
    if (options.twoDimensional)
        nuclei.append(options.dimension[1].nucleus);
    const QString path = line.value("experiment");
    if (!QFileInfo::exists(path))
        throw CommandError(Texts::tr("%1: there is no such file").arg(path));
    return Experiment(path, nuclei);
}

void refuseRepeated(const QStringList &files)
{
    QSet<QString> seen;
    for (const QString &file : files) {
        const QString path = QFileInfo(file).absoluteFilePath();
        if (seen.contains(path))
            throw UsageError(Texts::tr("\"%1\" is given twice").arg(file));
        seen.insert(path);
    }
}

/// Where the table goes and in which form.
class RankOutput {
public:
    explicit RankOutput(const CommandLine &line) : m_fileName(line.value("o"))
    {
        const QString suffix = QFileInfo(m_fileName).suffix().toLower();
        const bool known = suffix == u"csv" || suffix == u"json";
        const QString name = line.has("format") ? line.value("format") : known ? suffix : QStringLiteral("text");
        const auto format = TableExport::formatOfName(name);
        if (!format)
            throw UsageError(Texts::tr("option --format: \"%1\" is not one of: text, csv, json").arg(name));
        m_format = *format;
    }

    /// Before the long work. What is open and not committed vanishes.
    void check() const
    {
        if (!m_fileName.isEmpty())
            OutputFiles().open(m_fileName);
    }

    void write(const std::vector<RankRow> &rows, int dimensions) const
    {
        const QByteArray table = RankTable::write(rows, dimensions, m_format);
        if (m_fileName.isEmpty())
            return printOut(QString::fromUtf8(table));
        OutputFiles files;
        files.open(m_fileName).write(table);
        files.commit();
    }

private:
    QString m_fileName;
    TableExport::Format m_format;
};

/// Prints the table and tells by the exit status whether it is whole.
int finish(std::vector<RankRow> rows, int dimensions, const RankOutput &output)
{
    RankTable::sort(rows);
    output.write(rows, dimensions);
    const auto failed = std::count_if(rows.begin(), rows.end(), [](const RankRow &row) { return row.failed(); });
    if (failed > 0)
        printError(Texts::tr("magres-workbench rank: %1 of %2 files failed\n").arg(failed).arg(rows.size()));
    return failed > 0 ? ExitSomeFailed : ExitDone;
}

CommandRun prepareMerge(const CommandLine &line)
{
    for (const OptionSpec &option : rankCommand().options) {
        const std::string_view name = option.name;
        if (line.has(option.name) && name != "merge" && name != "format" && name != "o")
            throw UsageError(Texts::tr("option %1 means nothing with --merge").arg(CommandLine::shown(option.name)));
    }
    const RankOutput output(line);
    const QStringList parts = line.positional();
    return [=](const ProgramStart &start) {
        const QCoreApplication application(start.argc, start.argv);
        const Language language(start.language);
        const RankTable::Part all = RankTable::merge(parts);
        return finish(all.rows, all.dimensions, output);
    };
}

CommandRun prepareRank(const CommandLine &line)
{
    refuseRepeated(line.positional());
    if (line.has("merge"))
        return prepareMerge(line);
    required(line, "nucleus");
    required(line, "experiment");
    const SimulateOptions options = SimulateOptions::parse(line);
    const RankOutput output(line);
    const int jobs =
        line.has("jobs") ? OptionValues::count(CommandLine::shown("jobs"), line.value("jobs"), mostWorkers) : 1;
    return [=](const ProgramStart &start) {
        // Workers put theirs inside: one that crashes leaves nothing behind.
        const PrivateSettings directory;
        const QCoreApplication application(start.argc, start.argv);
        const Language language(start.language);
        readExperiment(line, options);
        output.check();
        const QStringList files = line.positional();
        RankWorkers::Crew crew;
        ProgressLine progress;
        crew.program = QCoreApplication::applicationFilePath();
        crew.arguments = workerArguments(line);
        if (!start.pluginDirectory.isEmpty())
            crew.arguments.append(QStringLiteral("--plugin-path=") + start.pluginDirectory);
        if (!start.language.isEmpty())
            crew.arguments.append(QStringLiteral("--language=") + start.language);
        crew.arguments.append(QStringLiteral("--settings=") + directory.path());
        crew.workers = jobs;
        crew.dimensions = options.twoDimensional ? 2 : 1;
        crew.progress = [&](int done, const QString &file) { progress.show(done, files.size(), file); };
        crew.chatter = [&](const QByteArray &text) {
            if (!text.isEmpty())
                progress.clear();
            printError(QString::fromUtf8(text));
        };
        std::vector<RankRow> rows = RankWorkers::measure(crew, files);
        progress.clear();
        return finish(std::move(rows), crew.dimensions, output);
    };
}

/// Every file takes and gives back some megabytes: the allocator had better keep them.
void keepMemory()
{
#ifdef __GLIBC__
    constexpr int enough = 256 << 20;
    mallopt(M_TRIM_THRESHOLD, enough);
    mallopt(M_MMAP_THRESHOLD, enough);
    mallopt(M_TOP_PAD, 16 << 20);
#endif
}

CommandRun prepareWorker(const CommandLine &line)
{
    const SimulateOptions options = SimulateOptions::parse(line);
    const auto run = [=](HostApplication &host, MessageLog &log) {
        if (host.fileFilters().filters().isEmpty())
            throw CommandError(Texts::tr("no plug-in with a file filter is loaded"));
        const Experiment experiment = readExperiment(line, options);
        keepMemory();
        RankMeasurement measurement(host, log, options, experiment);
        RankWorkers::serve(measurement, options.twoDimensional ? 2 : 1);
    };
    return headless(run, line.value("settings"));
}

} // namespace

Command rankCommand()
{
    std::vector<OptionSpec> options{
        {"jobs", "N", "Number of worker processes, each with a host of its own. Default: 1."},
        {"format", "text|csv|json", "Format of the table. Default: by the suffix of OUT, else text."},
        {"o", "OUT", "Output file instead of standard output. Nothing is written before all is done."},
        {"merge", nullptr,
         "Join the csv outputs of several runs, given in place of structures, into one table. Only --format and -o go "
         "with it."},
    };
    const std::vector<OptionSpec> more = measurementOptions();
    options.insert(options.end(), more.begin(), more.end());
    Command command;
    command.name = "rank";
    command.usage = "FILE... --experiment EXP --nucleus NUC [--jobs N] [options] [-o OUT]\n"
                    "  magres-workbench rank --merge PART.csv... [--format FORMAT] [-o OUT]";
    command.summary = "Ranks candidate structures by how well their spectra fit an experiment.";
    command.details =
        "Each structure is simulated, its shift reference moved to the experiment (as by fit), and its RMSD taken. "
        "The\n"
        "table lists the smallest RMSD first, with the reference, the offset by which it was moved, and the numbers "
        "of\n"
        "simulated and experimental peaks; structures that failed stand at the end with the reason. In 2D the ranking\n"
        "RMSD is the root mean square of both dimensions' in Hz, given in ppm of F2. Points, ranges and line widths\n"
        "have no bearing on the result. csv and json have full precision.\n"
        "Exit status: 0, 3 when some structures failed, 1 when nothing could be done, 2 wrong usage.\n\n"
        "Examples:\n"
        "  magres-workbench rank candidates/*.magres --nucleus 13C --experiment 13C.csv --jobs 4 -o ranking.csv\n"
        "  magres-workbench rank --merge part-*.csv -o ranking.csv";
    command.options = options;
    command.files = Command::Several;
    command.prepare = prepareRank;
    return command;
}

Command rankWorkerCommand()
{
    Command command;
    command.name = workerName;
    command.usage = "";
    command.summary = "Started by rank.";
    command.details = "";
    command.options = measurementOptions();
    command.options.push_back({"settings", "DIR", "Where the worker's settings go."});
    command.files = Command::None;
    command.prepare = prepareWorker;
    command.isInternal = true;
    return command;
}

} // namespace Workbench
