// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CommandLine.h"

#include "cli/CliErrors.h"
#include "data/Error.h"

#include <QCommandLineParser>

namespace Workbench {

namespace {

constexpr qsizetype helpWidth = 100;
constexpr qsizetype helpIndent = 26;

QStringList wrapped(const QString &text, qsizetype width)
{
    QStringList lines;
    QString line;
    for (const QString &word : text.split(u' ')) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > width)
            lines.append(std::exchange(line, QString()));
        line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    lines.append(line);
    return lines;
}

} // namespace

CommandLine::CommandLine(const std::vector<OptionSpec> &options, const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const OptionSpec &option : options) {
        parser.addOption(QCommandLineOption(QString::fromUtf8(option.name), QString(),
                                            option.value ? QString::fromUtf8(option.value) : QString()));
    }
    // The parser takes the first argument for the name of the program.
    if (!parser.parse(QStringList{QString()} + arguments))
        throw UsageError(parser.errorText());
    for (const OptionSpec &option : options) {
        const QString name = QString::fromUtf8(option.name);
        if (!parser.isSet(name))
            continue;
        // Options without a value are asked for none: newer Qt complains.
        const QStringList values =
            option.value ? parser.values(name) : QStringList(parser.optionNames().count(name), QString());
        if (values.size() > 1 && !option.repeatable)
            throw UsageError(Texts::tr("option %1 is given %2 times").arg(shown(option.name)).arg(values.size()));
        if (option.value && values.contains(QString()))
            throw UsageError(Texts::tr("option %1 has an empty value").arg(shown(option.name)));
        m_values.insert(name, values);
    }
    m_positional = parser.positionalArguments();
}

QString CommandLine::value(const char *option) const
{
    const QStringList all = values(option);
    return all.isEmpty() ? QString() : all.constLast();
}

QString CommandLine::shown(const char *option)
{
    const QString name = QLatin1String(option);
    return (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
}

QString CommandLine::help(const std::vector<OptionSpec> &options)
{
    QString text;
    for (const OptionSpec &option : options) {
        QString head = QStringLiteral("  ") + shown(option.name);
        if (option.value)
            head += u' ' + QLatin1String(option.value);
        if (head.size() + 2 > helpIndent) {
            text += head + u'\n';
            head.clear();
        }
        for (const QString &line : wrapped(QString::fromUtf8(option.description), helpWidth - helpIndent)) {
            text += head.leftJustified(helpIndent) + line + u'\n';
            head.clear();
        }
    }
    return text;
}

} // namespace Workbench
