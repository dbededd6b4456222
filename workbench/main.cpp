// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/ComparisonOptions.h"
#include "data/Error.h"
#include "data/Language.h"
#include "window/WMainWindow.h"
#include "window/WindowApplication.h"
#include "window/compare/CompareCommands.h"

#include <QApplication>
#include <QFile>
#include <QTimer>

#include <optional>

namespace Workbench {

namespace {

constexpr const char *version = WORKBENCH_VERSION;

QString commandList()
{
    QString text = Texts::tr("Commands (magres-workbench COMMAND --help tells more):\n");
    for (const Command &command : commands()) {
        if (command.isInternal)
            continue;
        text += QStringLiteral("  magres-workbench %1 %2\n      %3\n")
                    .arg(QLatin1String(command.name), QLatin1String(command.usage), QLatin1String(command.summary));
    }
    return text;
}

QString programHelp()
{
    return Texts::tr("Usage: magres-workbench [FILE]...\n       magres-workbench COMMAND FILE [options]\n\n"
                     "Opens files in a window, or runs a command without one.\n\n%1\nOptions:\n%2")
        .arg(commandList(), CommandLine::help(programOptions()));
}

bool hasDisplay()
{
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(name))
            return true;
    }
    return false;
}

/// Newer Qt says four lines about a locale that is not installed, such as a login from another machine brings along,
/// and goes on in UTF-8, which is all that is needed here.
class LocaleSilence {
public:
    LocaleSilence() { s_usual = qInstallMessageHandler(pass); }
    ~LocaleSilence() { qInstallMessageHandler(s_usual); }
    Q_DISABLE_COPY_MOVE(LocaleSilence)

private:
    static void pass(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (!message.startsWith(QLatin1String("Detected locale")))
            s_usual(type, context, message);
    }
    static inline QtMessageHandler s_usual = nullptr;
};

int runWindow(const QStringList &files, const ProgramStart &start)
{
    const QApplication application(start.argc, start.argv);
    const Language language(start.language);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/workbench/icon.svg")));
    WindowApplication host;
    host.loadPlugins(start.pluginDirectory);
    for (const QString &set : start.referenceSets)
        host.window().compareCommands()->useReferenceSet(set);
    host.window().show();
    if (!files.isEmpty())
        QTimer::singleShot(0, &host.window(), [&] { host.window().openFiles(files); });
    return QApplication::exec();
}

/// The index of the command's name, passing over the program's own options; -1 when there is no command.
qsizetype commandIndex(const QStringList &arguments)
{
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == u"--plugin-path" || arguments[i] == u"--language" || arguments[i] == u"--reference-set")
            ++i;
        else if (!arguments[i].startsWith(u'-'))
            return findCommand(arguments[i]) ? i : -1;
    }
    return -1;
}

int run(const QStringList &arguments, int argc, char **argv)
{
    ProgramStart start{argc, argv, {}, languageOf(arguments), {}};
    const qsizetype index = commandIndex(arguments);
    QStringList files;
    {
        // What is said here takes an application to be translated; window and commands have one of their own kind.
        std::optional<LocaleSilence> silence(std::in_place);
        const QCoreApplication application(argc, argv);
        silence.reset();
        const Language language(start.language);
        try {
            const CommandLine line(programOptions(), index < 0 ? arguments : arguments.first(index));
            if (line.has("help") || line.has("version")) {
                printOut(line.has("help") ? programHelp()
                                          : QStringLiteral("magres-workbench %1\n").arg(QLatin1String(version)));
                return ExitDone;
            }
            start.pluginDirectory = line.value("plugin-path");
            start.referenceSets = line.values("reference-set");
            if (index >= 0 && !start.referenceSets.isEmpty())
                throw UsageError(Texts::tr("option --reference-set: it goes behind the command"));
            parseReferenceSets(line, {});
            files = line.positional();
        } catch (const UsageError &error) {
            throw UsageError(QString::fromUtf8(error.what()) + u'\n' + programHelp());
        }
        if (index < 0 && !hasDisplay()) {
            throw CommandError(Texts::tr("there is no display to open a window on.") + u'\n' + commandList().trimmed());
        }
    }
    if (index < 0)
        return runWindow(files, start);
    return runCommand(*findCommand(arguments[index]), arguments.mid(index + 1), start);
}

} // namespace

} // namespace Workbench

int main(int argc, char **argv)
{
    using namespace Workbench;
    QCoreApplication::setOrganizationName(QStringLiteral("magres-workbench"));
    QCoreApplication::setApplicationName(QStringLiteral("magres-workbench"));
    QCoreApplication::setApplicationVersion(QLatin1String(version));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.magres_tools.workbench"));
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    try {
        return run(arguments, argc, argv);
    } catch (const UsageError &error) {
        printError(QStringLiteral("magres-workbench: %1\n").arg(QString::fromUtf8(error.what()).trimmed()));
        return ExitWrongUsage;
    } catch (const std::exception &error) {
        printError(QStringLiteral("magres-workbench: %1\n").arg(QString::fromUtf8(error.what())));
        return ExitFailed;
    }
}
