// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CommandLine.h"
#include "formats/ReferenceSet.h"

#include <functional>

namespace Workbench {

class HostApplication;
class MessageLog;
class Simulation;

/// What a command needs to start an application.
struct ProgramStart {
    int &argc;
    char **argv;
    QString pluginDirectory; ///< empty: the default
    QString language; ///< empty: the system's
    QStringList referenceSets; ///< with which a window starts; files
};

/// What a command does when its arguments are right; returns the exit status.
using CommandRun = std::function<int(const ProgramStart &)>;

/// A run inside a headless host with private settings, in a directory of their own. Nothing is drawn, which takes as
/// long as all the rest of a short run, unless `run` tells the scene so first.
CommandRun headless(std::function<void(HostApplication &, MessageLog &)> run, const QString &settingsWithin = {});

/// A command of the program. Its arguments are understood, and refused, before a host is started.
struct Command {
    /// Positional arguments.
    enum Files { None, One, Several, AnyNumber };

    const char *name;
    /// What follows the program's and the command's name.
    const char *usage;
    const char *summary;
    const char *details;
    std::vector<OptionSpec> options;
    /// Throws UsageError; the line has as many positional arguments as `files` says.
    CommandRun (*prepare)(const CommandLine &line);
    Files files = One;
    /// Not for users, and not listed.
    bool isInternal = false;
};

/// The commands, each in the file of its name.
Command tableCommand();
Command simulateCommand();
Command fitCommand();
Command rmsdCommand();
Command experimentCommand();
Command renderCommand();
Command spinSystemCommand();
Command powderCommand();
Command rankCommand();
Command compareCommand();
Command calibrateCommand();
Command averageCommand();
/// The workers of `rank`, started by the program itself.
Command rankWorkerCommand();
/// For the shell and for who packs the program.
Command completeCommand();
Command manualPagesCommand();

/// Options that more than one command has.
const OptionSpec &experimentOption();
const OptionSpec &peaksOption();
const OptionSpec &spectrumOutputOption();
/// These, and all of SimulateOptions.
std::vector<OptionSpec> withSimulateOptions(std::vector<OptionSpec> options);

/// What peaksOption() says.
bool wantsPeaksOfFile(const CommandLine &line);
/// The path itself, or that of the list of peaks beside its data. Nothing there is an error.
QString existingExperiment(const QString &path, bool peaksOfFile);

/// The line widths that a spectrum was made with.
void reportLineWidths(const Simulation &simulation, bool onStandardError);

/// Says on standard error where a reference set was calculated otherwise than the file.
void warnOfMethods(const std::vector<ReferenceSet> &sets, const QString &file);

/// What was assumed in reading a measured file, to standard error.
void reportNotes(const QString &path, const QStringList &notes);

/// The value of an option without which the command cannot be. Throws UsageError.
QString required(const CommandLine &line, const char *option);

const std::vector<Command> &commands();
const Command *findCommand(const QString &name);

/// Options of the program without a command.
const std::vector<OptionSpec> &programOptions();

/// Options that every command has.
const std::vector<OptionSpec> &commonOptions();

/// Runs the command headless with the arguments after its name; returns the program's exit status. Needs that there is
/// no application object yet.
int runCommand(const Command &command, const QStringList &arguments, ProgramStart start);

/// The value of the option "--language" wherever it stands before "--"; empty without one. Throws UsageError for a
/// language in which there are no texts.
QString languageOf(const QStringList &arguments);

/// For users on a terminal: text to standard output. Throws CommandError when it cannot be written.
void printOut(const QString &text);
void printError(const QString &text);

} // namespace Workbench
