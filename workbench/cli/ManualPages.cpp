// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ManualPages.h"

#include "cli/Commands.h"
#include "formats/OutputFiles.h"

#include <QCoreApplication>
#include <QDir>

namespace Workbench {

namespace {

/// Text as roff prints it: hyphens that can be copied, nothing taken for a request.
QString roff(QString text)
{
    text.replace(u'\\', QStringLiteral("\\e")).replace(u'-', QStringLiteral("\\-"));
    if (text.startsWith(u'.') || text.startsWith(u'\''))
        text.prepend(QStringLiteral("\\&"));
    return text;
}

QString pageName(const QString &command)
{
    return QStringLiteral("magres-workbench") + (command.isEmpty() ? QString() : u'-' + command);
}

QString head(const QString &name, QString summary)
{
    // Whatis lines begin small and end without a full stop.
    if (summary.endsWith(u'.'))
        summary.chop(1);
    summary[0] = summary[0].toLower();
    return QStringLiteral(".TH %1 1 \"\" \"magres-workbench %2\" \"MAGRES tools\"\n.SH NAME\n%3 \\- %4\n")
        .arg(roff(name.toUpper()), QCoreApplication::applicationVersion(), roff(name), roff(summary));
}

/// Paragraphs; indented lines stay as they are.
QString body(const QString &text)
{
    QString out;
    bool isExample = false;
    for (const QString &line : text.split(u'\n')) {
        const bool indented = line.startsWith(u' ');
        if (indented != isExample)
            out += indented ? QStringLiteral(".PP\n.nf\n") : QStringLiteral(".fi\n.PP\n");
        isExample = indented;
        out += line.isEmpty() ? QStringLiteral(".PP\n") : roff(line) + u'\n';
    }
    return out + (isExample ? QStringLiteral(".fi\n") : QString());
}

QString options(const std::vector<OptionSpec> &specs)
{
    QString out;
    for (const OptionSpec &spec : specs) {
        out += QStringLiteral(".TP\n.B %1%2\n%3\n")
                   .arg(roff(CommandLine::shown(spec.name)),
                        spec.value ? QStringLiteral(" \\fI%1\\fR").arg(roff(QString::fromUtf8(spec.value))) : QString(),
                        roff(QString::fromUtf8(spec.description)));
    }
    return out;
}

/// Usages of several forms go on in lines of their own, with the program's name.
QString synopsis(const QString &usage)
{
    QStringList forms;
    for (const QString &line : usage.split(u'\n'))
        forms.append(roff(line.trimmed()));
    return QStringLiteral(".SH SYNOPSIS\n") + forms.join(QStringLiteral("\n.br\n")) + u'\n';
}

QString commandPage(const Command &command)
{
    const QString name = QLatin1String(command.name);
    return head(pageName(name), QString::fromUtf8(command.summary))
        + synopsis(QStringLiteral("magres-workbench %1 %2").arg(name, QString::fromUtf8(command.usage)))
        + QStringLiteral(".SH DESCRIPTION\n%1\n").arg(roff(QString::fromUtf8(command.summary)))
        + body(QString::fromUtf8(command.details)) + QStringLiteral(".SH OPTIONS\n") + options(command.options)
        + options(commonOptions()) + QStringLiteral(".SH SEE ALSO\n.BR %1 (1)\n").arg(roff(pageName({})));
}

QString programPage()
{
    QString text = head(pageName({}), QStringLiteral("computed NMR parameters of crystals and their spectra"))
        + synopsis(QStringLiteral("magres-workbench [FILE]...\nmagres-workbench COMMAND [options]"))
        + QStringLiteral(".SH DESCRIPTION\n")
        + body(QStringLiteral(
            "Reads the NMR parameters that calculations of periodic systems write to MAGRES files: shows molecules and "
            "tables, simulates 1D and 2D spectra, fits their shift reference to measured ones.\n\n"
            "Files are opened in a window. With a command first, the program does its work without a display."))
        + QStringLiteral(".SH OPTIONS\n") + options(programOptions()) + QStringLiteral(".SH COMMANDS\n");
    QStringList pages;
    for (const Command &command : commands()) {
        if (command.isInternal)
            continue;
        const QString page = roff(pageName(QLatin1String(command.name)));
        text += QStringLiteral(".TP\n.BR %1 (1)\n%2\n").arg(page, roff(QString::fromUtf8(command.summary)));
        pages.append(QStringLiteral(".BR %1 (1)").arg(page));
    }
    return text
        + QStringLiteral(".SH EXIT STATUS\n.TP\n0\ndone\n.TP\n1\nthe operation failed\n.TP\n2\nthe command was wrong\n"
                         ".TP\n3\nsome of several files failed\n.SH SEE ALSO\n%1\n")
              .arg(pages.join(QStringLiteral(",\n")));
}

CommandRun prepareManualPages(const CommandLine &line)
{
    const QDir directory(line.positional().constFirst());
    return [=](const ProgramStart &) {
        directory.mkpath(QStringLiteral("."));
        OutputFiles files;
        const QMap<QString, QByteArray> pages = ManualPages::all();
        for (auto page = pages.cbegin(); page != pages.cend(); ++page)
            files.open(directory.filePath(page.key())).write(page.value());
        files.commit();
        return 0;
    };
}

} // namespace

QMap<QString, QByteArray> ManualPages::all()
{
    QMap<QString, QByteArray> pages;
    const auto add = [&pages](const QString &command, const QString &text) {
        pages.insert(pageName(command) + QStringLiteral(".1"), text.toUtf8());
    };
    add({}, programPage());
    for (const Command &command : commands()) {
        if (!command.isInternal)
            add(QLatin1String(command.name), commandPage(command));
    }
    return pages;
}

Command manualPagesCommand()
{
    Command command;
    command.name = "manual-pages";
    command.usage = "DIR";
    command.summary = "Writes the manual pages.";
    command.details = "";
    command.prepare = prepareManualPages;
    command.isInternal = true;
    return command;
}

} // namespace Workbench
