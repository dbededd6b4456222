// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace Workbench {

/// An option as a command declares it.
struct OptionSpec {
    const char *name;
    /// Name of the value in the help; null for a switch.
    const char *value;
    const char *description;
    bool repeatable = false;
};

/// A command's arguments, taken apart but not yet understood. Long options are `--name VALUE` or `--name=VALUE`, names
/// of one letter are `-n VALUE`.
class CommandLine {
public:
    /// Throws UsageError for options that are not in the list, for missing values, and for options given twice that are
    /// not repeatable.
    CommandLine(const std::vector<OptionSpec> &options, const QStringList &arguments);

    bool has(const char *option) const { return m_values.contains(QLatin1String(option)); }
    /// The last value; empty when the option is not given.
    QString value(const char *option) const;
    QStringList values(const char *option) const { return m_values.value(QLatin1String(option)); }
    const QStringList &positional() const { return m_positional; }

    /// As the user writes it: "--points", "-o".
    static QString shown(const char *option);

    /// The options with their descriptions, wrapped to the width of a terminal.
    static QString help(const std::vector<OptionSpec> &options);

private:
    QHash<QString, QStringList> m_values;
    QStringList m_positional;
};

} // namespace Workbench
