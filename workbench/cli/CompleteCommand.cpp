// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "data/Nuclides.h"

#include <QFileInfo>

#include <optional>

namespace Workbench {

namespace {

using Specs = std::vector<OptionSpec>;

/// A command line that is being typed; its last word is not finished.
struct Typed {
    const Command *command = nullptr;
    Specs options;
    QStringList files;
    QStringList given; ///< options
    /// What the last word is the value of, if of anything; such a value may follow "--option=" in the same word.
    std::optional<OptionSpec> valueOf;
    QString begun; ///< the part of the last word that candidates replace
    QString before; ///< the part in front of it
};

const OptionSpec *find(const Specs &options, const QString &word)
{
    for (const OptionSpec &option : options) {
        if (word == CommandLine::shown(option.name))
            return &option;
    }
    return nullptr;
}

Typed parse(const QStringList &words)
{
    Typed typed;
    typed.options = programOptions();
    typed.begun = words.constLast();
    QString pending;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const bool isLast = i + 1 == words.size();
        const QString &word = words[i];
        if (!pending.isEmpty()) {
            if (isLast)
                typed.valueOf = *find(typed.options, pending);
            pending.clear();
        } else if (word.startsWith(u'-')) {
            const QString name = word.section(u'=', 0, 0);
            const OptionSpec *option = find(typed.options, name);
            if (isLast && option && option->value && name.size() < word.size()) {
                typed.valueOf = *option;
                typed.before = name + u'=';
                typed.begun = word.mid(typed.before.size());
            } else if (!isLast && option) {
                typed.given.append(name);
                pending = option->value && name == word ? name : QString();
            }
        } else if (!isLast && !typed.command && typed.files.isEmpty() && findCommand(word)) {
            typed.command = findCommand(word);
            typed.options = typed.command->options;
            typed.options.insert(typed.options.end(), commonOptions().begin(), commonOptions().end());
        } else if (!isLast) {
            typed.files.append(word);
        }
    }
    return typed;
}

/// Those of the first file.
QStringList valuesOfFile(HostApplication &host, MessageLog &log, const Typed &typed)
{
    Simulation simulation(host, log);
    simulation.readFile(typed.files.constFirst(), {});
    QStringList values;
    for (const QString &nucleus : simulation.nuclei()) {
        const QString element = Nuclides::element(nucleus);
        if (QLatin1String(typed.valueOf->value) == u"NUC")
            values.append(nucleus);
        else if (Nuclides::table().quadrupolarIsotopes(element).contains(nucleus))
            values.append(element + u'=' + nucleus);
    }
    return values;
}

QStringList choices(const Typed &typed)
{
    if (typed.valueOf)
        return QString::fromUtf8(typed.valueOf->value).split(u'|');
    QStringList words;
    if (typed.begun.startsWith(u'-')) {
        for (const OptionSpec &option : typed.options) {
            const QString shown = CommandLine::shown(option.name);
            if (option.repeatable || !typed.given.contains(shown))
                words.append(shown);
        }
    } else if (!typed.command && typed.files.isEmpty()) {
        for (const Command &command : commands()) {
            if (!command.isInternal)
                words.append(QLatin1String(command.name));
        }
    }
    return words;
}

void print(const Typed &typed, const QStringList &values)
{
    for (const QString &value : values) {
        if (value.startsWith(typed.begun))
            printOut(typed.before + value + u'\n');
    }
}

CommandRun prepareComplete(const CommandLine &line)
{
    const Typed typed = parse(line.positional());
    const QLatin1String value(typed.valueOf ? typed.valueOf->value : "");
    if (value == u"NUC" || value == u"El=NUC") {
        if (typed.files.isEmpty() || !QFileInfo::exists(typed.files.constFirst()))
            return [](const ProgramStart &) { return 0; };
        return headless([=](HostApplication &host, MessageLog &log) { print(typed, valuesOfFile(host, log, typed)); });
    }
    return [=](const ProgramStart &) {
        // A value of one form, such as a number or a file, is not for us to propose.
        if (!typed.valueOf || value.contains(u'|'))
            print(typed, choices(typed));
        return 0;
    };
}

} // namespace

Command completeCommand()
{
    Command command;
    command.name = "complete-words";
    command.usage = "-- WORD...";
    command.summary = "Prints what the last word may become, for the shell.";
    command.details = "The words are those after the program's name. Nothing is printed where files may stand.";
    command.files = Command::Several;
    command.prepare = prepareComplete;
    command.isInternal = true;
    return command;
}

} // namespace Workbench
