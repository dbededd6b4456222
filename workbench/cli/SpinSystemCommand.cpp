// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/ComparisonOptions.h"
#include "cli/OptionValues.h"
#include "cli/PowderOptions.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "host/HostApplication.h"
#include "data/Nuclides.h"
#include "formats/OutputFiles.h"
#include "analysis/SimpsonExperiment.h"
#include "analysis/SpinSystem.h"
#include "data/Error.h"

#include <QFileInfo>

namespace Workbench {

namespace {

/// They mean something in a complete input alone.
constexpr const char *experimentOptions[] = {"frequency", "mas", "static", "linewidth", "gaussian"};

QMap<QString, double> numbersByNucleus(const CommandLine &line, const char *option, const QStringList &nuclei)
{
    QMap<QString, double> numbers;
    const QMap<QString, QString> values = valuesByNucleus(line, option, nuclei);
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        numbers.insert(it.key(), OptionValues::number(CommandLine::shown(option), *it));
    return numbers;
}

SpinSystem::Options optionsOf(const CommandLine &line, std::vector<ReferenceSet> &sets)
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
    options.references = numbersByNucleus(line, "reference", options.nuclei);
    options.slopes = numbersByNucleus(line, "slope", options.nuclei);
    sets = parseReferenceSets(line, options.nuclei);
    const auto given = [](const QMap<QString, double> &values, const QString &nucleus) {
        return values.contains(nucleus) ? std::optional(values[nucleus]) : std::nullopt;
    };
    for (const ReferenceSet &set : sets) {
        auto reference = given(options.references, set.nucleus), slope = given(options.slopes, set.nucleus);
        set.fill(reference, slope);
        options.references[set.nucleus] = *reference;
        options.slopes[set.nucleus] = *slope;
    }
    if (line.has("cutoff"))
        options.cutoff = OptionValues::positive(QStringLiteral("--cutoff"), line.value("cutoff"));
    options.isComplete = line.has("complete");
    return options;
}

/// The experiment of a complete input, in the options of `powder`; nothing when only the spin system is wanted.
std::optional<PowderSettings> experimentOf(const CommandLine &line, const SpinSystem::Options &options)
{
    if (!line.has("complete")) {
        for (const char *option : experimentOptions) {
            if (line.has(option))
                throw UsageError(Texts::tr("option %1 needs --complete").arg(CommandLine::shown(option)));
        }
        return std::nullopt;
    }
    if (options.nuclei.size() > 1)
        throw UsageError(Texts::tr("option --complete: one nucleus is observed, not several"));
    if (!line.has("static") && line.value("mas").isEmpty())
        throw UsageError(Texts::tr("option --complete needs --mas HZ or --static"));
    PowderSettings settings = parsePowderConditions(line);
    settings.labels = options.labels;
    settings.reference = options.references.value(options.nuclei.constFirst(), settings.reference);
    settings.slope = options.slopes.value(options.nuclei.constFirst(), settings.slope);
    return settings;
}

CommandRun prepareSpinSystem(const CommandLine &line)
{
    std::vector<ReferenceSet> sets;
    const SpinSystem::Options options = optionsOf(line, sets);
    const std::optional<PowderSettings> experiment = experimentOf(line, options);
    const QString file = line.positional().constFirst(), output = line.value("o");
    const QString suffix = QFileInfo(output).suffix().toLower();
    const bool isMrsimulator = line.has("format")
        ? OptionValues::choice(QStringLiteral("--format"), line.value("format"),
                               {QStringLiteral("simpson"), QStringLiteral("mrsimulator")})
            == 1
        : suffix == u"json" || suffix == u"mrsim";
    if (isMrsimulator && experiment)
        throw UsageError(Texts::tr("option --complete: it completes an input of SIMPSON, not of mrsimulator"));
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        simulation.readFile(file, {});
        warnOfMethods(sets, file);
        const QVariantMap data = simulation.structureData();
        const SpinSystem system = SpinSystem::fromData(data, options);
        const QString title = QStringLiteral("Spin system of %1").arg(QFileInfo(file).fileName());
        if (isMrsimulator) {
            for (const QString &note : system.notes)
                printError(Texts::tr("Note: %1\n").arg(note));
        }
        QByteArray text = isMrsimulator ? system.mrsimulator(title) : system.simpson(title);
        if (experiment) {
            if (system.sites.size() != 1)
                throw CommandError(
                    QStringLiteral("option --complete computes one site, but there are %1: all spins of "
                                   "an input are computed as one coupled system. Choose one with --atoms")
                        .arg(system.sites.size()));
            text += simpsonExperiment(PowderSites::of(CrystalStructure::fromData(data), *experiment), *experiment);
        }
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
        "Writes the sites of chosen nuclei as a spin system for SIMPSON or mrsimulator.",
        "Shift, quadrupole and dipole lines; the conventions stand at the head of the output. A shift is\n"
        "reference + slope * shielding, for tensors as a whole.\n\n"
        "Example:\n"
        "  magres-workbench spinsystem x.magres --nucleus 13C --nucleus 1H --atoms C1,H3 --reference 13C=170 -o x.in",
        {
            {"nucleus", "NUC", "Nucleus, such as 13C. May be given for several. Required.", true},
            {"atoms", "LABELS", "Labels of the atoms, as in C1,H3. Default: all of the nuclei."},
            {"reference", "NUC=PPM",
             "Reference of a nucleus (the nucleus may be left out when there is one). Default: 100.", true},
            {"slope", "NUC=X", "Slope of a nucleus. Default: -1.", true},
            referenceSetOption(),
            {"cutoff", "A", "Longest distance of a dipole line in Angstrom. Default: 4."},
            {"format", "FORMAT",
             "simpson or mrsimulator: one spin system a site, as JSON, without dipole couplings. Default: simpson, and "
             "mrsimulator for an OUT that ends in .json or .mrsim."},
            {"complete", nullptr,
             "Adds what SIMPSON needs to run the file as it is: the spectrum of one site, as from powder."},
            {"frequency", "MHZ", "With --complete: spectrometer frequency of 1H in MHz. Default: 600."},
            {"mas", "HZ", "With --complete: spinning rate at the magic angle."},
            {"static", nullptr, "With --complete: the sample is at rest."},
            {"linewidth", "HZ", "With --complete: Lorentzian broadening in Hz. Default: 30."},
            {"gaussian", "HZ", "With --complete: Gaussian broadening in Hz. Default: 0."},
            {"o", "OUT", "Output file instead of standard output."},
        },
        prepareSpinSystem,
    };
}

} // namespace Workbench
