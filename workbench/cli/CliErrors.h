// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stdexcept>

namespace Workbench {

/// The exit statuses of all commands.
enum ExitStatus { ExitDone = 0, ExitFailed = 1, ExitWrongUsage = 2, ExitSomeFailed = 3 };

/// The command line is wrong; the text names the option or argument.
class UsageError : public std::runtime_error {
public:
    explicit UsageError(const QString &message) : std::runtime_error(message.toStdString()) { }
};

/// The operation failed.
class CommandError : public std::runtime_error {
public:
    explicit CommandError(const QString &message) : std::runtime_error(message.toStdString()) { }
};

} // namespace Workbench
