// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/SpectrumRemarks.h"
#include "cli/Commands.h"

#include "cli/CliErrors.h"
#include "cli/ComparisonOptions.h"
#include "cli/MessageLog.h"
#include "cli/OptionValues.h"
#include "cli/PrivateSettings.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "document/PageExport.h"
#include "formats/BrukerPeakList.h"
#include "formats/MeasurementFormats.h"
#include "host/HostApplication.h"
#include "host/PluginManager.h"
#include "host/MainScene.h"
#include "items/plot/NmrData.h"
#include "data/Error.h"
#include "data/Language.h"

#include <QApplication>
#include <QFileInfo>

#include <cstdio>

namespace Workbench {

namespace {

/// A file that no plug-in takes may be the fault of a plug-in that did not load.
void printPluginFailures(const HostApplication &host)
{
    for (const PluginManager::Failure &failure : host.plugins().failures()) {
        printError(Texts::tr("magres-workbench: plug-in %1 is not loaded: %2\n").arg(failure.file, failure.reason));
    }
}

} // namespace

CommandRun headless(std::function<void(HostApplication &, MessageLog &)> run, const QString &settingsWithin)
{
    return [=](const ProgramStart &start) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        const PrivateSettings settings(settingsWithin);
        const QApplication application(start.argc, start.argv);
        const Language language(start.language);
        MessageLog log;
        HostApplication host;
        host.scene().setDrawn(false);
        host.loadPlugins(start.pluginDirectory);
        try {
            run(host, log);
        } catch (...) {
            printPluginFailures(host);
            throw;
        }
        return ExitDone;
    };
}

void warnOfMethods(const std::vector<ReferenceSet> &sets, const QString &file)
{
    for (const ReferenceSet &set : sets) {
        const QString warning = methodWarning(set, file);
        if (!warning.isEmpty())
            printError(Texts::tr("magres-workbench: %1\n").arg(warning));
    }
}

void reportNotes(const QString &path, const QStringList &notes)
{
    for (const QString &note : notes)
        printError(Texts::tr("%1: %2\n").arg(path, note));
}

QString required(const CommandLine &line, const char *option)
{
    if (!line.has(option))
        throw UsageError(Texts::tr("option %1 is required").arg(CommandLine::shown(option)));
    return line.value(option);
}

void printOut(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    if (std::fwrite(bytes.constData(), 1, bytes.size(), stdout) != std::size_t(bytes.size())
        || std::fflush(stdout) != 0)
        throw CommandError(Texts::tr("standard output cannot be written"));
}

void printError(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, bytes.size(), stderr);
}

const OptionSpec &experimentOption()
{
    static constexpr OptionSpec option{
        "experiment", "EXP",
        "Experimental peak list: text, one peak a line, position[,height] in 1D and position,position_f1[,height] in "
        "2D, in ppm, or peaklist.xml. Or a spectrum, of which the peaks are picked: text with ppm and intensity, "
        "JCAMP-DX, CSDM, SIMPSON or a Bruker folder. `magres-workbench experiment EXP` shows how a file is understood. "
        "Required."};
    return option;
}

const OptionSpec &peaksOption()
{
    static constexpr OptionSpec option{"peaks", "picked|file",
                                       "Peaks of a Bruker folder: those that are picked from its spectrum here, or "
                                       "those in its peaklist.xml. Default: "
                                       "picked."};
    return option;
}

bool wantsPeaksOfFile(const CommandLine &line)
{
    const QStringList sources{QStringLiteral("picked"), QStringLiteral("file")};
    return line.has("peaks") && OptionValues::choice(CommandLine::shown("peaks"), line.value("peaks"), sources) == 1;
}

QString existingExperiment(const QString &path, bool peaksOfFile)
{
    if (!QFileInfo::exists(path))
        throw CommandError(Texts::tr("%1: there is no such file").arg(path));
    return peaksOfFile ? BrukerPeakList::beside(path) : path;
}

const OptionSpec &spectrumOutputOption()
{
    static const QByteArray description = [] {
        QStringList formats;
        for (const MeasurementFormat &format : measurementFormats()) {
            if (format.write)
                formats.append(QStringLiteral(".%1 (%2)").arg(format.suffixes.constFirst(), format.content));
        }
        formats.append(QStringLiteral(".%1 (the plot)").arg(PageExport::suffixes().join(QLatin1String(", ."))));
        return QStringLiteral("Output file; its suffix chooses the format: %1. May be given more than once.")
            .arg(formats.join(QLatin1String(", ")))
            .toUtf8();
    }();
    static const OptionSpec option{"o", "OUT", description.constData(), true};
    return option;
}

std::vector<OptionSpec> withSimulateOptions(std::vector<OptionSpec> options)
{
    const std::vector<OptionSpec> &simulate = SimulateOptions::specs();
    options.insert(options.end(), simulate.begin(), simulate.end());
    return options;
}

void reportLineWidths(const Simulation &simulation, bool onStandardError)
{
    const QString text = Texts::tr("Line width: %1\n").arg(simulation.lineWidths());
    onStandardError ? printError(text) : printOut(text);
    if (const QString note = simulation.averagingNote(); !note.isEmpty())
        printError(Texts::tr("Note: %1\n").arg(note));
    for (const SpectrumRemark &remark : remarksOn(simulation.data().stackEntry(simulation.entry())))
        printError(Texts::tr("Note: %1\n").arg(remark.text));
}

} // namespace Workbench
