// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"

#include "cli/CliErrors.h"
#include "cli/OptionValues.h"
#include "cli/OutputOptions.h"
#include "data/Elision.h"
#include "data/Error.h"
#include "data/Language.h"

#include <QCoreApplication>

#include <optional>
#include <string_view>

namespace Workbench {

namespace {

constexpr OptionSpec pluginPathOption{"plugin-path", "DIR", "Directory of the plug-ins. Default: beside the program."};
constexpr OptionSpec languageOption{"language", "en|de", "Language of the texts. Default: the system's."};

QString usageOf(const Command &command)
{
    return QStringLiteral("magres-workbench %1 %2").arg(QLatin1String(command.name), QLatin1String(command.usage));
}

QString helpOf(const Command &command)
{
    return Texts::tr("Usage: %1\n\n%2\n%3\n\nOptions:\n%4%5")
        .arg(usageOf(command), QLatin1String(command.summary), QLatin1String(command.details),
             CommandLine::help(command.options), CommandLine::help(commonOptions()));
}

void checkFiles(const Command &command, const QStringList &files)
{
    const bool isNeeded = command.files == Command::One || command.files == Command::Several;
    if (isNeeded && files.isEmpty())
        throw UsageError(Texts::tr("FILE is missing"));
    const qsizetype most = command.files == Command::None ? 0 : command.files == Command::One ? 1 : files.size();
    if (files.size() > most)
        throw UsageError(Texts::tr("expected one FILE, found \"%1\" as well").arg(files[most]));
}

/// Whatever the command line names may be a file that is read: FILE, the value of an option, or either side of
/// 13C=FILE.
void checkOutputs(const std::vector<OptionSpec> &options, const CommandLine &line)
{
    QStringList named = line.positional();
    for (const OptionSpec &option : options) {
        if (option.value && option.name != std::string_view("o"))
            named += line.values(option.name);
    }
    QStringList inputs = named;
    for (const QString &text : std::as_const(named)) {
        for (qsizetype at = text.indexOf(u'='); at >= 0; at = text.indexOf(u'=', at + 1))
            inputs += {text.left(at), text.mid(at + 1)};
    }
    const QStringList outputs = line.values("o");
    if (outputs.contains(u"-"))
        throw UsageError(Texts::tr("option -o: expected the name of a file, found \"-\""));
    OutputOptions::refuseInputs(outputs, inputs);
}

/// Nothing when the help is all that was asked for.
std::optional<CommandRun> prepared(const Command &command, const QStringList &arguments, ProgramStart &start)
{
    // Wrong usage is told in the user's language, which takes an application; the run has one of its own kind.
    const QCoreApplication application(start.argc, start.argv);
    const Language language(start.language);
    std::vector<OptionSpec> options = command.options;
    options.insert(options.end(), commonOptions().begin(), commonOptions().end());
    try {
        const CommandLine line(options, arguments);
        if (line.has("help")) {
            printOut(helpOf(command));
            return std::nullopt;
        }
        checkFiles(command, line.positional());
        checkOutputs(options, line);
        if (line.has("plugin-path"))
            start.pluginDirectory = line.value("plugin-path");
        return command.prepare(line);
    } catch (const UsageError &error) {
        throw UsageError(QString::fromUtf8(error.what())
                         + Texts::tr("\nUsage: %1\nSee magres-workbench %2 --help")
                               .arg(usageOf(command), QLatin1String(command.name)));
    }
}

} // namespace

const std::vector<OptionSpec> &programOptions()
{
    static const std::vector<OptionSpec> list{
        pluginPathOption,
        languageOption,
        {"reference-set", "SET.json",
         "Reference and slope with which spectra and comparisons of a nucleus start in the window, from a set that "
         "calibrate has written. Kept for the next time. May be given for several nuclei.",
         true},
        {"version", nullptr, "Show the version."},
        {"help", nullptr, "Show this help."},
    };
    return list;
}

const std::vector<OptionSpec> &commonOptions()
{
    static const std::vector<OptionSpec> list{
        pluginPathOption,
        languageOption,
        {"help", nullptr, "Show this help."},
    };
    return list;
}

const std::vector<Command> &commands()
{
    static const std::vector<Command> list{
        tableCommand(),  simulateCommand(),   fitCommand(),        rmsdCommand(),      experimentCommand(),
        renderCommand(), compareCommand(),    rankCommand(),       calibrateCommand(), averageCommand(),
        powderCommand(), spinSystemCommand(), rankWorkerCommand(), completeCommand(),  manualPagesCommand(),
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

QString languageOf(const QStringList &arguments)
{
    const QString option = CommandLine::shown("language");
    for (qsizetype i = 0; i < arguments.size() && arguments[i] != u"--"; ++i) {
        const bool separate = arguments[i] == option;
        if (!separate && !arguments[i].startsWith(option + u'='))
            continue;
        const QString language = separate ? arguments.value(i + 1) : arguments[i].mid(option.size() + 1);
        OptionValues::choice(option, language, Language::known());
        return language;
    }
    return {};
}

int runCommand(const Command &command, const QStringList &arguments, ProgramStart start)
{
    const QString program = QStringLiteral("magres-workbench %1: ").arg(QLatin1String(command.name));
    try {
        const std::optional<CommandRun> run = prepared(command, arguments, start);
        return run ? (*run)(start) : ExitDone;
    } catch (const UsageError &error) {
        printError(program + QString::fromUtf8(error.what()) + u'\n');
        return ExitWrongUsage;
    } catch (const std::exception &error) {
        printError(program + elided(QString::fromUtf8(error.what())) + u'\n');
        return ExitFailed;
    }
}

} // namespace Workbench
