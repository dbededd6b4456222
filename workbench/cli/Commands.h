// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CommandLine.h"

#include <functional>

class HostApplication;
class MessageLog;

/// What a command does when its arguments are right.
using CommandRun = std::function<void(HostApplication &, MessageLog &)>;

/// A command of the program. Its arguments are understood, and refused, before a host is started.
struct Command {
    const char *name;
    /// What follows the program's and the command's name.
    const char *usage;
    const char *summary;
    const char *details;
    std::vector<OptionSpec> options;
    /// Throws UsageError; the line has exactly one positional argument, the file.
    CommandRun (*prepare)(const CommandLine &line);
};

const std::vector<Command> &commands();
const Command *findCommand(const QString &name);

/// Options that every command has.
const std::vector<OptionSpec> &commonOptions();

/// Runs the command headless with the arguments after its name; returns the program's exit status.
int runCommand(const Command &command, const QStringList &arguments, int argc, char **argv,
               const QString &pluginDirectory);

/// For users on a terminal: text to standard output. Throws CommandError when it cannot be written.
void printOut(const QString &text);
void printError(const QString &text);
