// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/OptionValues.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "host/DataEngine.h"
#include "host/HostApplication.h"
#include "data/Nuclides.h"
#include "formats/OutputFiles.h"
#include "analysis/SpinSystem.h"
#include "data/PluginCall.h"
#include "items/table/TableItem.h"
#include "data/Error.h"

#include <QFileInfo>

namespace Workbench {

namespace {

/// "NUC=PPM", or the number alone for a single nucleus.
QMap<QString, double> byNucleus(const CommandLine &line, const char *option, const QStringList &nuclei)
{
    QMap<QString, double> values;
    const QString shown = CommandLine::shown(option);
    for (const QString &text : line.values(option)) {
        const qsizetype equals = text.indexOf(u'=');
        if (equals < 0 && nuclei.size() > 1)
            throw UsageError(Texts::tr("option %1: \"%2\" names no nucleus, as in 13C=170").arg(shown, text));
        const QString nucleus = equals < 0 ? nuclei.constFirst() : text.left(equals);
        if (!nuclei.contains(nucleus))
            throw UsageError(Texts::tr("option %1: %2 is not among the nuclei given").arg(shown, nucleus));
        values.insert(nucleus, OptionValues::number(shown, text.mid(equals + 1)));
    }
    return values;
}

SpinSystem::Options optionsOf(const CommandLine &line)
{
    required(line, "nucleus");
    SpinSystem::Options options;
    for (const QString &text : line.values("nucleus")) {
        const QString nucleus = OptionValues::nucleus(QStringLiteral("--nucleus"), text);
        if (!Nuclides::table().contains(nucleus))
            throw UsageError(Texts::tr("option --nucleus: \"%1\" is not an NMR nucleus").arg(nucleus));
        if (options.nuclei.contains(nucleus))
            throw UsageError(Texts::tr("option --nucleus: %1 is given twice").arg(nucleus));
        options.nuclei.append(nucleus);
    }
    options.labels = line.value("atoms").split(u',', Qt::SkipEmptyParts);
    options.references = byNucleus(line, "reference", options.nuclei);
    options.slopes = byNucleus(line, "slope", options.nuclei);
    if (line.has("cutoff"))
        options.cutoff = OptionValues::positive(QStringLiteral("--cutoff"), line.value("cutoff"));
    return options;
}

CommandRun prepareSpinSystem(const CommandLine &line)
{
    const SpinSystem::Options options = optionsOf(line);
    const QString file = line.positional().constFirst(), output = line.value("o");
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        simulation.readFile(file, {});
        const auto ids = callPlugin<QList<QUuid>>(simulation.table().table(), "tableItem_sharedDataIds()");
        const QVariantMap data = host.documentData().getDataMap(ids.value(0));
        const SpinSystem system = SpinSystem::fromData(data, options);
        const QByteArray text = system.simpson(QStringLiteral("Spin system of %1").arg(QFileInfo(file).fileName()));
        if (output.isEmpty())
            return printOut(QString::fromUtf8(text));
        OutputFiles files;
        files.open(output).write(text);
        files.commit();
    });
}

} // namespace

Command spinSystemCommand()
{
    return {
        "spinsystem",
        "FILE --nucleus NUC... [options] [-o OUT]",
        "Writes the sites of chosen nuclei as a spin system for SIMPSON.",
        "Shift, quadrupole and dipole lines; the conventions stand at the head of the output. An isotropic shift is\n"
        "reference + slope * shielding, as in a spectrum.\n\n"
        "Example:\n"
        "  magres-workbench spinsystem x.magres --nucleus 13C --nucleus 1H --atoms C1,H3 --reference 13C=170 -o x.in",
        {
            {"nucleus", "NUC", "Nucleus, such as 13C. May be given for several. Required.", true},
            {"atoms", "LABELS", "Labels of the atoms, as in C1,H3. Default: all of the nuclei."},
            {"reference", "NUC=PPM",
             "Reference of a nucleus (the nucleus may be left out when there is one). Default: 100.", true},
            {"slope", "NUC=X", "Slope of a nucleus. Default: -1.", true},
            {"cutoff", "A", "Longest distance of a dipole line in Angstrom. Default: 4."},
            {"o", "OUT", "Output file instead of standard output."},
        },
        prepareSpinSystem,
    };
}

} // namespace Workbench
