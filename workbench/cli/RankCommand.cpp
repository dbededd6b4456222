// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/OptionValues.h"
#include "cli/OutputOptions.h"
#include "cli/PrivateSettings.h"
#include "cli/ProgressLine.h"
#include "cli/RankMeasurement.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "analysis/comparison/PoolProbabilities.h"
#include "data/NumberText.h"
#include "data/ReaderText.h"
#include "formats/OutputFiles.h"
#include "data/Error.h"
#include "data/Language.h"
#include "ranking/RankCrew.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <iostream>
#include <string>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace Workbench {

namespace {

constexpr int mostWorkers = 1024;
constexpr const char *workerName = "rank-worker";

/// The options of the line that a worker needs, in a form in which values may begin with a dash.
QStringList workerArguments(const CommandLine &line)
{
    QStringList arguments{QLatin1String(workerName)};
    for (const OptionSpec &option : RankPlan::specs()) {
        if (!option.value && line.has(option.name))
            arguments.append(CommandLine::shown(option.name));
        for (const QString &value : option.value ? line.values(option.name) : QStringList())
            arguments.append(CommandLine::shown(option.name) + u'=' + value);
    }
    return arguments;
}

/// The files of the command line and those of lists, one name a line.
QStringList candidateFiles(const CommandLine &line)
{
    QStringList files = line.positional();
    for (const QString &name : line.values("files-from")) {
        QFile list(name);
        const bool isOpen = name == u"-" ? list.open(stdin, QIODevice::ReadOnly) : list.open(QIODevice::ReadOnly);
        if (!isOpen)
            throw CommandError(Texts::tr("%1: %2").arg(name, list.errorString()));
        while (!list.atEnd()) {
            QByteArray file = list.readLine();
            while (file.endsWith('\n') || file.endsWith('\r'))
                file.chop(1);
            if (!file.isEmpty())
                files.append(QString::fromUtf8(file));
        }
    }
    if (files.isEmpty())
        throw UsageError(Texts::tr("FILE is missing"));
    OutputOptions::refuseInputs(line.values("o"), files);
    return files;
}

/// Energies of structures in kJ/mol, by the names under which a file gives them: "NAME ENERGY", "NAME,ENERGY" or
/// "NAME;ENERGY" a line, either of them in quotes where it has separators of its own. Energies may have decimal commas.
class Energies {
public:
    Energies(const QString &fileName, double temperature) : m_fileName(fileName), m_temperature(temperature)
    {
        constexpr qint64 largest = 256 << 20;
        const QByteArray text = ReaderText::readText(fileName, largest);
        bool isFirst = true;
        for (ReaderText::Lines lines(ReaderText::view(text)); lines.next();) {
            const QString content = withoutComment(ReaderText::decoded(lines.line()));
            if (content.isEmpty())
                continue;
            QString name;
            const auto energy = parse(content, name);
            if (std::exchange(isFirst, false) && !energy && isHeader(content))
                continue;
            if (!energy)
                fail(
                    fileName, lines.number(),
                    Texts::tr("expected a structure and its energy, as in c1.magres,-12.5 or c1.magres;-12,5, found %1")
                        .arg(ReaderText::excerpt(lines.line())));
            if (m_values.contains(name))
                fail(fileName, lines.number(), Texts::tr("%1 has an energy already").arg(name));
            m_values.insert(name, *energy);
        }
    }

    /// At the end of RankRow::basis.
    QString basis() const { return QStringLiteral("; temperature=%1").arg(m_temperature, 0, 'g', 10); }

    /// By the whole name, the file's name, or that without its suffix. A name is that of one file.
    std::vector<double> logWeights(const QStringList &files) const
    {
        std::vector<double> weights;
        QHash<QString, QString> fileOf; // by name
        for (const QString &file : files) {
            const QString name = nameOf(file);
            if (fileOf.contains(name))
                throw CommandError(
                    Texts::tr("%1: \"%2\" may be %3 or %4").arg(m_fileName, name, fileOf.value(name), file));
            fileOf.insert(name, file);
            weights.push_back(boltzmannWeights({m_values.value(name)}, m_temperature).front());
        }
        return weights;
    }

private:
    QString nameOf(const QString &file) const
    {
        for (const QString &name : {file, QFileInfo(file).fileName(), QFileInfo(file).completeBaseName()}) {
            if (m_values.contains(name))
                return name;
        }
        throw CommandError(Texts::tr("%1: there is no energy of %2").arg(m_fileName, file));
    }

    static QString withoutComment(const QString &line)
    {
        static const QRegularExpression comment(QStringLiteral("^((?:\"[^\"]*\"|[^\"#])*)#.*$"));
        return QString(line).replace(comment, QStringLiteral("\\1")).trimmed();
    }

    /// Nothing where the line has another form, or a comma that may be a decimal one or not.
    static std::optional<double> parse(const QString &line, QString &name)
    {
        static const QRegularExpression form(
            QStringLiteral("^(?:\"((?:[^\"]|\"\")*)\"|(.*?))([,;\\s]+)(\"?)"
                           "([-+]?(?:[0-9]+[.,]?[0-9]*|[.,][0-9]+)(?:[eE][-+]?[0-9]+)?)\\4$"));
        const auto match = form.match(line);
        const bool isAmbiguous = match.captured(3).contains(u',') && match.captured(4).isEmpty();
        if (!match.hasMatch() || (isAmbiguous && match.captured(5).contains(u',')))
            return std::nullopt;
        name = match.captured(2) + match.captured(1).replace(QLatin1String("\"\""), QLatin1String("\""));
        const QByteArray number = match.captured(5).replace(u',', u'.').toLatin1();
        return NumberText::parse<double>(ReaderText::view(number));
    }

    /// What stands where energies do is none.
    static bool isHeader(const QString &line)
    {
        static const QRegularExpression number(QStringLiteral("[,;\\s\"][-+.\u2212]?[0-9][^,;\\s]*$"));
        return !line.contains(number);
    }

    QString m_fileName;
    double m_temperature;
    QHash<QString, double> m_values;
};

std::optional<Energies> readEnergies(const CommandLine &line)
{
    if (!line.has("energies") && line.has("temperature"))
        throw UsageError(Texts::tr("option --temperature goes with --energies"));
    constexpr double roomTemperature = 298.15;
    const double temperature = line.has("temperature")
        ? OptionValues::positive(QStringLiteral("--temperature"), line.value("temperature"))
        : roomTemperature;
    return line.has("energies") ? std::optional(Energies(line.value("energies"), temperature)) : std::nullopt;
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

    void write(const std::vector<RankRow> &rows, const RankLayout &layout) const
    {
        const QByteArray table = RankTable::write(rows, layout, m_format);
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

void printRankNotes(const QStringList &notes)
{
    for (const QString &note : notes)
        printError(Texts::tr("magres-workbench rank: %1\n").arg(note));
}

/// Prints the table and tells by the exit status whether it is whole.
int finish(std::vector<RankRow> rows, const RankLayout &layout, const RankOutput &output)
{
    RankTable::sort(rows, layout);
    printRankNotes(RankTable::notesOn(rows, layout));
    output.write(rows, layout);
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
        return finish(all.rows, all.layout, output);
    };
}

/// Of the structures that were calculated otherwise than a reference set, as far as that can be seen.
void warnOfRankMethods(const RankPlan &plan, const QStringList &files)
{
    std::vector<ReferenceSet> sets = plan.spectrum ? plan.spectrum->sets : std::vector<ReferenceSet>();
    for (const ComparisonOptions::Nucleus &nucleus : plan.shifts.nuclei) {
        if (nucleus.set)
            sets.push_back(*nucleus.set);
    }
    for (const ReferenceSet &set : sets) {
        QStringList warnings;
        for (const QString &file : files)
            warnings.append(methodWarning(set, file));
        warnings.removeAll(QString());
        printRankNotes(warnings.mid(0, 1));
        if (warnings.size() > 1)
            printRankNotes({QStringLiteral("%1 more files were calculated otherwise").arg(warnings.size() - 1)});
    }
}

std::vector<RankRow> measureAll(const RankCrew::Plan &plan, const QStringList &files)
{
    RankCrew crew(plan, files);
    ProgressLine progress;
    QEventLoop loop;
    QObject::connect(&crew, &RankCrew::fileDone, &loop,
                     [&](int index) { progress.show(crew.done(), files.size(), files[index]); });
    QObject::connect(&crew, &RankCrew::chatter, &loop, [&](const QByteArray &text) {
        if (!text.isEmpty())
            progress.clear();
        printError(QString::fromUtf8(text));
    });
    QObject::connect(&crew, &RankCrew::finished, &loop, &QEventLoop::quit);
    crew.start();
    loop.exec();
    progress.clear();
    if (crew.done() == 0 && !files.isEmpty())
        throw CommandError(crew.startFailure());
    return crew.rows();
}

/// Answers the crew until its input ends.
void serve(const std::function<RankRow(const QString &file)> &measure, const RankLayout &layout)
{
    printOut(QLatin1String(RankCrew::readyLine));
    for (std::string line; std::getline(std::cin, line);) {
        const QByteArray name = QByteArray::fromStdString(line);
        const RankRow row = measure(QString::fromUtf8(QByteArray::fromPercentEncoding(name)));
        printOut(QString::fromUtf8(RankCrew::answer(row, name, layout)));
    }
}

CommandRun prepareRank(const CommandLine &line)
{
    if (line.has("merge")) {
        if (line.positional().isEmpty())
            throw UsageError(Texts::tr("FILE is missing"));
        refuseRepeated(line.positional());
        return prepareMerge(line);
    }
    const RankPlan plan = RankPlan::parse(line);
    if (line.has("energies") && (plan.spectrum || !plan.shifts.nuclei.front().sigma))
        throw UsageError(Texts::tr("option --energies needs the error of calculated shifts (--sigma)"));
    const RankOutput output(line);
    const int jobs =
        line.has("jobs") ? OptionValues::count(CommandLine::shown("jobs"), line.value("jobs"), mostWorkers) : 1;
    const QStringList files = candidateFiles(line);
    refuseRepeated(files);
    const std::optional<Energies> energies = readEnergies(line);
    return [=](const ProgramStart &start) {
        const QCoreApplication application(start.argc, start.argv);
        const Language language(start.language);
        QStringList notes;
        const RankMeasurement measurement(plan, &notes);
        printRankNotes(notes);
        warnOfRankMethods(plan, files);
        output.check();
        const std::vector<double> priors = energies ? energies->logWeights(files) : std::vector<double>();
        // Workers put theirs inside: one that crashes leaves nothing behind.
        const PrivateSettings directory;
        RankCrew::Plan crew;
        crew.program = QCoreApplication::applicationFilePath();
        crew.arguments = workerArguments(line);
        if (!start.pluginDirectory.isEmpty())
            crew.arguments.append(QStringLiteral("--plugin-path=") + start.pluginDirectory);
        if (!start.language.isEmpty())
            crew.arguments.append(QStringLiteral("--language=") + start.language);
        crew.arguments.append(QStringLiteral("--settings=") + directory.path());
        crew.workers = jobs;
        crew.layout = plan.layout();
        std::vector<RankRow> rows = measureAll(crew, files);
        printRankNotes(measurement.notesOn(rows));
        for (std::size_t i = 0; i < priors.size(); ++i)
            rows[i].logPrior = priors[i];
        const QString basis = measurement.basis() + (energies ? energies->basis() : QString());
        for (RankRow &row : rows)
            row.basis = row.failed() ? QString() : basis;
        return finish(std::move(rows), crew.layout, output);
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
    const RankPlan plan = RankPlan::parse(line);
    const auto run = [=](HostApplication &host, MessageLog &log) {
        if (host.fileFilters().filters().isEmpty())
            throw CommandError(Texts::tr("no plug-in with a file filter is loaded"));
        const RankMeasurement measurement(plan);
        keepMemory();
        const auto measure = [&](const QString &file) { return measurement.measure(host, log, file); };
        serve(measure, plan.layout());
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
        {"files-from", "LIST", "A file with the names of structures, one a line; - for standard input.", true},
        {"energies", "LIST",
         "A file with the energy of each structure, one a line: name and energy per formula unit in kJ/mol. They weigh "
         "the probabilities."},
        {"temperature", "K", "Temperature of that weight. Default: 298.15."},
    };
    const std::vector<OptionSpec> more = RankPlan::specs();
    options.insert(options.end(), more.begin(), more.end());
    Command command;
    command.name = "rank";
    command.usage = "FILE... --experiment [NUC=]EXP... [--nucleus NUC] [--jobs N] [options] [-o OUT]\n"
                    "  magres-workbench rank --merge PART.csv... [--format FORMAT] [-o OUT]";
    command.summary = "Ranks candidate structures by how well their shifts fit what was measured.";
    command.details =
        "Of one nucleus, the table lists the smallest RMSD first, with the reference that fits best, its offset from\n"
        "--reference (100 ppm), and the numbers of simulated and experimental peaks; of several nuclei, the highest\n"
        "probability. Lines and sites need not be as many: how they were paired is said. Chi-square per degree of\n"
        "freedom and its p tell whether a structure explains the lines at all (below 0.001 the fit is bad), the\n"
        "probability which of the pool does it best, given that one is right; that with errors half as large again\n"
        "stands beside it. With --nucleus-f1 or --quad-shift spectra are simulated, which need as many peaks as were\n"
        "measured; in 2D the ranking RMSD is the root mean square of both dimensions' in Hz, given in ppm of F2. "
        "Points,\n"
        "ranges and line widths have no bearing on the result. Structures that failed stand at the end with the "
        "reason.\n"
        "csv and json have full precision.\n"
        "Exit status: 0, 3 when structures failed (the table says why), 1 when there is no table, 2 wrong usage.\n\n"
        "Examples:\n"
        "  magres-workbench rank candidates/*.magres --nucleus 13C --experiment 13C.csv --jobs 4 -o ranking.csv\n"
        "  magres-workbench rank candidates/*.magres --experiment 13C=c.csv --experiment 1H=h.csv --average ch3\n"
        "  find pool -name '*.magres' | magres-workbench rank --files-from - --experiment 1H=h.csv -o ranking.csv\n"
        "  magres-workbench rank --merge part-*.csv -o ranking.csv";
    command.options = options;
    command.files = Command::AnyNumber;
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
    command.options = RankPlan::specs();
    command.options.push_back({"settings", "DIR", "Where the worker's settings go."});
    command.files = Command::None;
    command.prepare = prepareWorker;
    command.isInternal = true;
    return command;
}

} // namespace Workbench
