// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"

#include "cli/CliErrors.h"
#include "data/Elision.h"

namespace Workbench {

namespace {

constexpr OptionSpec pluginPathOption{"plugin-path", "DIR", "Directory of the plug-ins. Default: beside the program."};

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

void checkFiles(const Command &command, const QStringList &files)
{
    if (command.files != Command::None && files.isEmpty())
        throw UsageError(QStringLiteral("FILE is missing"));
    const qsizetype most = command.files == Command::Several ? files.size() : command.files == Command::One ? 1 : 0;
    if (files.size() > most)
        throw UsageError(QStringLiteral("expected one FILE, found \"%1\" as well").arg(files[most]));
}

} // namespace

const std::vector<OptionSpec> &programOptions()
{
    static const std::vector<OptionSpec> list{
        pluginPathOption,
        {"version", nullptr, "Show the version."},
        {"help", nullptr, "Show this help."},
    };
    return list;
}

const std::vector<OptionSpec> &commonOptions()
{
    static const std::vector<OptionSpec> list{
        pluginPathOption,
        {"help", nullptr, "Show this help."},
    };
    return list;
}

const std::vector<Command> &commands()
{
    static const std::vector<Command> list{
        tableCommand(),      simulateCommand(), fitCommand(),         rmsdCommand(),
        experimentCommand(), renderCommand(),   spinSystemCommand(),  rankCommand(),
        rankWorkerCommand(), completeCommand(), manualPagesCommand(),
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

} // namespace Workbench
