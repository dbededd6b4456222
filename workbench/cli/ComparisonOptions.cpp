// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ComparisonOptions.h"

#include "data/Error.h"
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/OptionValues.h"
#include "analysis/comparison/PeakComparison.h"
#include "data/Nuclides.h"
#include "formats/BrukerReader.h"
#include "formats/ExperimentFile.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace Workbench {
namespace {

QString knownNucleus(const QString &option, const QString &text)
{
    const QString nucleus = OptionValues::nucleus(option, text);
    if (!Nuclides::table().contains(nucleus))
        throw UsageError(Texts::tr("option %1: \"%2\" is not an NMR nucleus").arg(option, nucleus));
    return nucleus;
}

/// "13C" of "13C=list.csv"; file names may have an equals sign too.
QString nucleusBefore(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^([1-9][0-9]*[A-Z][a-z]?)="));
    return form.match(text).captured(1);
}

std::vector<ComparisonOptions::Nucleus> parseExperiments(const CommandLine &line)
{
    required(line, "experiment");
    const QString given =
        line.has("nucleus") ? knownNucleus(QStringLiteral("--nucleus"), line.value("nucleus")) : QString();
    std::vector<ComparisonOptions::Nucleus> nuclei;
    for (const QString &text : line.values("experiment")) {
        const QString named = nucleusBefore(text);
        ComparisonOptions::Nucleus nucleus;
        nucleus.name = named.isEmpty() ? given : knownNucleus(QStringLiteral("--experiment"), named);
        nucleus.experiment = named.isEmpty() ? text : text.mid(named.size() + 1);
        if (nucleus.name.isEmpty())
            throw UsageError(Texts::tr("option --experiment: \"%1\" names no nucleus, as in 13C=%1").arg(text));
        if (nucleus.experiment.isEmpty())
            throw UsageError(Texts::tr("option --experiment: \"%1\" names no file").arg(text));
        if (std::any_of(nuclei.begin(), nuclei.end(), [&](const auto &other) { return other.name == nucleus.name; }))
            throw UsageError(Texts::tr("option --experiment: %1 is given twice").arg(nucleus.name));
        nuclei.push_back(nucleus);
    }
    const bool isMeasured = given.isEmpty()
        || std::any_of(nuclei.begin(), nuclei.end(), [&](const auto &nucleus) { return nucleus.name == given; });
    if (!isMeasured)
        throw UsageError(Texts::tr("option --nucleus: no experiment is of %1").arg(given));
    return nuclei;
}

} // namespace

QMap<QString, QString> valuesByNucleus(const CommandLine &line, const char *option, const QStringList &nuclei)
{
    QMap<QString, QString> values;
    const QString shown = CommandLine::shown(option);
    for (const QString &text : line.values(option)) {
        const qsizetype equals = text.indexOf(u'=');
        if (equals < 0 && nuclei.size() > 1)
            throw UsageError(Texts::tr("option %1: \"%2\" names no nucleus, as in 13C=170").arg(shown, text));
        const QString nucleus = equals < 0 ? nuclei.value(0) : text.left(equals);
        if (!nuclei.contains(nucleus))
            throw UsageError(Texts::tr("option %1: %2 is not among the nuclei given").arg(shown, nucleus));
        if (values.contains(nucleus))
            throw UsageError(Texts::tr("option %1 is given twice for %2").arg(shown, nucleus));
        values.insert(nucleus, text.mid(equals + 1));
    }
    return values;
}

QString singleExperiment(const CommandLine &line)
{
    const QString text = required(line, "experiment"), named = nucleusBefore(text);
    const QString nucleus = OptionValues::nucleus(QStringLiteral("--nucleus"), required(line, "nucleus"));
    if (const auto given = line.values("experiment").size(); given > 1)
        throw UsageError(
            Texts::tr("option --experiment is given %1 times, but cross peaks and spectra with quadrupolar "
                      "shifts are compared with one measurement")
                .arg(given));
    if (!named.isEmpty() && named != nucleus)
        throw UsageError(Texts::tr("option --experiment: \"%1\" names %2, but --nucleus %3").arg(text, named, nucleus));
    return existingExperiment(named.isEmpty() ? text : text.mid(named.size() + 1), wantsPeaksOfFile(line));
}

const OptionSpec &referenceSetOption()
{
    static constexpr OptionSpec option{"reference-set", "SET.json",
                                       "Reference and slope of a nucleus from a set that calibrate has written; "
                                       "--reference and --slope replace theirs. "
                                       "May be given for several nuclei.",
                                       true};
    return option;
}

std::vector<ReferenceSet> parseReferenceSets(const CommandLine &line, const QStringList &nuclei)
{
    std::vector<ReferenceSet> sets;
    for (const QString &fileName : line.values("reference-set")) {
        sets.push_back(ReferenceSet::read(fileName));
        const auto isSame = [&](const ReferenceSet &set) { return set.nucleus == sets.back().nucleus; };
        if (std::count_if(sets.begin(), sets.end(), isSame) > 1)
            throw UsageError(Texts::tr("option --reference-set: two sets are of %1").arg(sets.back().nucleus));
        if (!nuclei.isEmpty() && !nuclei.contains(sets.back().nucleus))
            throw UsageError(Texts::tr("option %1: %2 is not among the nuclei given")
                                 .arg(QStringLiteral("--reference-set"), sets.back().nucleus));
    }
    return sets;
}

void fillFrom(const std::vector<ReferenceSet> &sets, const QString &nucleus, std::optional<double> &reference,
              std::optional<double> &slope)
{
    for (const ReferenceSet &set : sets) {
        if (set.nucleus == nucleus)
            set.fill(reference, slope);
    }
}

QString methodWarning(const ReferenceSet &set, const QString &file)
{
    return set.doubtAbout(CalculationMethod::fromFile(file), file);
}

UniqueSites::Averaging parseAveraging(const CommandLine &line)
{
    if (!line.has("average"))
        return UniqueSites::Averaging::None;
    return UniqueSites::Averaging(
        OptionValues::choice(QStringLiteral("--average"), line.value("average"),
                             {QStringLiteral("none"), QStringLiteral("ch3"), QStringLiteral("xh3")}));
}

const OptionSpec &symmetryToleranceOption()
{
    static constexpr OptionSpec option{
        "symmetry-tolerance", "A",
        "By how far atoms may be off a symmetry of the crystal that makes them one site, in Angstrom; 0: every atom is "
        "a site of its own. Default: 0.02."};
    return option;
}

double parseSymmetryTolerance(const CommandLine &line)
{
    if (!line.has("symmetry-tolerance"))
        return UniqueSites::Options().tolerance;
    const QString name = QStringLiteral("--symmetry-tolerance");
    const double value = OptionValues::number(name, line.value("symmetry-tolerance"));
    if (value < 0)
        throw UsageError(Texts::tr("option %1: \"%2\" is below 0").arg(name, line.value("symmetry-tolerance")));
    return value;
}

std::vector<OptionSpec> ComparisonOptions::specs()
{
    return {
        {"experiment", "[NUC=]EXP",
         "Measured lines of a nucleus: a peak list (columns of positions, and if there are any of sites and of counts) "
         "or a spectrum, of which the peaks are picked. May be given for several nuclei, as in 13C=c.csv. Required.",
         true},
        {"nucleus", "NUC", "Nucleus of an experiment that is given without one."},
        peaksOption(),
        {"sigma", "NUC=PPM",
         "Error of calculated shifts, root mean square. Default: 1H 0.33, 13C 2.2, 15N 5.4, 17O 7.2; none for others.",
         true},
        {"reference", "NUC=PPM", "Reference of the shielding-to-shift line (NUC may be left out when there is one).",
         true},
        {"slope", "NUC=X", "Slope of that line. Default: -1.", true},
        referenceSetOption(),
        {"average", "MODE",
         "Groups of three hydrogens averaged to one site: none, ch3 (on carbon) or xh3 (on any atom). Default: none."},
        symmetryToleranceOption(),
        {"unmatched", "N", "So many lines may be left out where more were measured than there are sites. Default: 0."},
        {"ignore-labels", nullptr, "Pair lines that name sites as if they named none."},
    };
}

ComparisonOptions ComparisonOptions::parse(const CommandLine &line)
{
    ComparisonOptions options;
    options.nuclei = parseExperiments(line);
    QStringList names;
    for (const Nucleus &nucleus : options.nuclei)
        names.append(nucleus.name);
    const auto references = valuesByNucleus(line, "reference", names), slopes = valuesByNucleus(line, "slope", names),
               sigmas = valuesByNucleus(line, "sigma", names), windows = valuesByNucleus(line, "window", names);
    const std::vector<ReferenceSet> sets = parseReferenceSets(line, names);
    for (Nucleus &nucleus : options.nuclei) {
        const QString &name = nucleus.name;
        if (references.contains(name))
            nucleus.reference = OptionValues::number(QStringLiteral("--reference"), references[name]);
        nucleus.fitsSlope = slopes.value(name) == u"fit";
        if (slopes.contains(name) && !nucleus.fitsSlope)
            nucleus.slope = OptionValues::number(QStringLiteral("--slope"), slopes[name]);
        nucleus.sigma =
            sigmas.contains(name) ? OptionValues::positive(QStringLiteral("--sigma"), sigmas[name]) : usualError(name);
        if (windows.contains(name))
            nucleus.window = OptionValues::positive(QStringLiteral("--window"), windows[name]);
        for (const ReferenceSet &set : sets) {
            if (set.nucleus == name)
                nucleus.set = set;
        }
    }
    options.sites = {parseSymmetryTolerance(line), parseAveraging(line)};
    if (line.has("unmatched"))
        options.unmatched =
            OptionValues::count(QStringLiteral("--unmatched"), line.value("unmatched"), LinePairing::mostUnmatched, 0);
    options.ignoresLabels = line.has("ignore-labels");
    if (wantsPeaksOfFile(line)) {
        const auto isFolder = [](const Nucleus &nucleus) { return BrukerReader::recognises(nucleus.experiment); };
        // Beside a folder may stand a list of another nucleus; the only experiment has to be one, or says why not.
        const bool anyFolder = std::any_of(options.nuclei.begin(), options.nuclei.end(), isFolder);
        for (Nucleus &nucleus : options.nuclei) {
            if (!anyFolder || isFolder(nucleus))
                nucleus.experiment = existingExperiment(nucleus.experiment, true);
        }
    }
    return options;
}

std::vector<NucleusMeasurement> ComparisonOptions::read(QStringList *notes) const
{
    std::vector<NucleusMeasurement> measurements;
    for (const Nucleus &nucleus : nuclei) {
        if (!QFileInfo::exists(nucleus.experiment))
            throw CommandError(Texts::tr("%1: there is no such file").arg(nucleus.experiment));
        const MeasuredPeaks measured = ExperimentFile::peaks(nucleus.experiment, {nucleus.name});
        if (measured.peaks.empty())
            throw CommandError(Texts::tr("%1: there are no lines").arg(nucleus.experiment));
        NucleusMeasurement result;
        result.nucleus = nucleus.name;
        for (const MeasuredPeak &peak : measured.peaks) {
            result.lines.push_back({peak.f2, peak.count > 0 ? std::optional<double>(peak.count) : std::nullopt,
                                    ignoresLabels ? QStringList() : assignedSites(peak.label)});
        }
        for (const QString &note : measured.notes)
            notes->append(QStringLiteral("%1: %2").arg(nucleus.experiment, note));
        std::optional<double> slope = nucleus.slope;
        result.scale.reference = nucleus.reference;
        if (nucleus.set)
            nucleus.set->fill(result.scale.reference, slope);
        result.scale.slope = nucleus.fitsSlope ? std::nullopt : std::optional(slope.value_or(-1.0));
        result.unmatched = unmatched;
        result.sigma = nucleus.sigma;
        result.window = nucleus.window;
        // What is known of a set's reference goes with its slope.
        if (nucleus.set && !nucleus.slope && !nucleus.fitsSlope && !nucleus.reference)
            result.calibration = nucleus.set->calibration;
        measurements.push_back(std::move(result));
    }
    return measurements;
}

} // namespace Workbench
