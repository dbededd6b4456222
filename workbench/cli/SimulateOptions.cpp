// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/SimulateOptions.h"

#include "cli/CliErrors.h"
#include "cli/ComparisonOptions.h"
#include "cli/OptionValues.h"
#include "data/Nuclides.h"
#include "data/Error.h"

namespace Workbench {

namespace {

/// The options of one dimension; those of F1 end in "-f1".
struct DimensionNames {
    const char *nucleus;
    const char *reference;
    const char *slope;
    const char *lineWidth;
    const char *points;
    const char *range;
    const char *quadrupolarShift;
};

constexpr DimensionNames names[2] = {
    {"nucleus", "reference", "slope", "linewidth", "points", "range", "quad-shift"},
    {"nucleus-f1", "reference-f1", "slope-f1", "linewidth-f1", "points-f1", "range-f1", "quad-shift-f1"},
};

template <typename Value, typename Parse>
std::optional<Value> optional(const CommandLine &line, const char *option, Parse parse)
{
    if (!line.has(option))
        return std::nullopt;
    return parse(CommandLine::shown(option), line.value(option));
}

DimensionOptions parseDimension(const CommandLine &line, const DimensionNames &name)
{
    DimensionOptions dimension;
    if (line.has(name.nucleus))
        dimension.nucleus = OptionValues::nucleus(CommandLine::shown(name.nucleus), line.value(name.nucleus));
    dimension.reference = optional<double>(line, name.reference, OptionValues::number);
    dimension.slope = optional<double>(line, name.slope, OptionValues::number);
    dimension.lineWidth = optional<double>(line, name.lineWidth, OptionValues::positive);
    dimension.points = optional<int>(line, name.points, OptionValues::points);
    dimension.range = optional<std::pair<double, double>>(line, name.range, OptionValues::range);
    dimension.quadrupolarShift = line.has(name.quadrupolarShift);
    return dimension;
}

/// Options that mean nothing in a 1D spectrum are refused: silently ignored ones would mislead.
void refuseTwoDimensionalOptions(const CommandLine &line)
{
    const DimensionNames &f1 = names[1];
    for (const char *option :
         {f1.nucleus, f1.reference, f1.slope, f1.lineWidth, f1.points, f1.range, f1.quadrupolarShift, "correlation"}) {
        if (line.has(option)) {
            throw UsageError(Texts::tr("option %1 needs a 2D spectrum (give --nucleus-f1 or --dims 2)")
                                 .arg(CommandLine::shown(option)));
        }
    }
}

template <typename Value>
void refuseContradiction(const std::optional<Value> &f2, const std::optional<Value> &f1, const char *option)
{
    if (f2 && f1 && *f2 != *f1) {
        throw UsageError(Texts::tr("options --%1 and --%1-f1 differ, but both dimensions have the same nucleus and "
                                   "a nucleus has one %1")
                             .arg(QLatin1String(option)));
    }
}

/// One value serves both.
void share(std::optional<double> &f2, std::optional<double> &f1)
{
    if (!f2)
        f2 = f1;
    if (!f1)
        f1 = f2;
}

void checkNuclei(const SimulateOptions &options)
{
    for (int d = 0; d < 2; ++d) {
        const QString &nucleus = options.dimension[d].nucleus;
        if (!nucleus.isEmpty() && !Nuclides::table().contains(nucleus)) {
            const QStringList known = Nuclides::table().isotopes(Nuclides::element(nucleus));
            throw UsageError(
                Texts::tr("option %1: \"%2\" is not an NMR nucleus%3")
                    .arg(CommandLine::shown(names[d].nucleus), nucleus,
                         known.isEmpty()
                             ? QString()
                             : Texts::tr("; those of the element are %1").arg(known.join(QLatin1String(", ")))));
        }
    }
}

} // namespace

const OptionSpec &isotopeSpec()
{
    static constexpr OptionSpec spec{"isotope", "El=NUC",
                                     "Quadrupolar isotope of an element, such as O=17O; may be given for several "
                                     "elements. Default: the only one, or "
                                     "the most abundant.",
                                     true};
    return spec;
}

const std::vector<OptionSpec> &SimulateOptions::specs()
{
    static const std::vector<OptionSpec> list{
        {"nucleus", "NUC", "Observed nucleus of the direct dimension F2, such as 13C."},
        {"nucleus-f1", "NUC",
         "Nucleus of the indirect dimension F1; makes the spectrum a 2D one. Default with --dims 2: 1H."},
        {"dims", "1|2", "Dimensions of the spectrum. Default: 2 when --nucleus-f1 is given, else 1."},
        {"frequency", "MHZ", "Spectrometer frequency of 1H in MHz. Default: 600."},
        {"reference", "PPM",
         "Reference of the shielding-to-shift line: shift = reference + slope * shielding. Default: 100."},
        {"slope", "X", "Slope of that line. Default: -1."},
        {"linewidth", "HZ",
         "Line width in Hz, full width at half height. Default: 30; in 2D at least two points of the axis."},
        {"points", "N", "Number of points, a power of two from 128 to 67108864. Default: 8192, in 2D 1024."},
        {"range", "FROM:TO", "Spectral range in ppm, such as 200:-20. Default: the range of the data and a margin."},
        {"quad-shift", nullptr, "Add the second-order quadrupolar shift (2H, 6Li and 14N). Default: off."},
        {"reference-f1", "PPM", "As --reference, for F1. In a homonuclear 2D spectrum one serves both. Default: 100."},
        {"slope-f1", "X", "As --slope, for F1. Default: -1."},
        {"linewidth-f1", "HZ", "As --linewidth, for F1. Default: 1, but at least two points of the axis."},
        {"points-f1", "N", "As --points, for F1. Default: 256."},
        {"range-f1", "FROM:TO", "As --range, for F1. Default: the range of the data and a margin."},
        {"quad-shift-f1", nullptr, "As --quad-shift, for F1. Default: off."},
        {"average", "none|ch3|xh3",
         "Groups of three hydrogens averaged to one site: none, ch3 (on carbon) or xh3 (on any atom). Default: none."},
        {"correlation", "strongest|rss",
         "Partner of each F2 site in 2D: strongest (largest dipolar coupling within 3 Angstrom) or rss (height from "
         "the "
         "root sum square of all couplings). Default: strongest."},
        referenceSetOption(),
        isotopeSpec(),
    };
    return list;
}

QMap<QString, QString> parseIsotopes(const CommandLine &line)
{
    QMap<QString, QString> isotopes;
    for (const QString &text : line.values("isotope")) {
        const auto [element, nucleus] = OptionValues::isotope(QStringLiteral("--isotope"), text);
        const QStringList offered = Nuclides::table().quadrupolarIsotopes(element);
        if (!offered.contains(nucleus)) {
            throw UsageError(Texts::tr("option --isotope: %1 is not a quadrupolar isotope of %2 (%3)")
                                 .arg(nucleus, element,
                                      offered.isEmpty() ? Texts::tr("it has none")
                                                        : Texts::tr("it has %1").arg(offered.join(u", "))));
        }
        if (isotopes.contains(element) && isotopes.value(element) != nucleus)
            throw UsageError(Texts::tr("option --isotope names two isotopes of %1").arg(element));
        isotopes.insert(element, nucleus);
    }
    return isotopes;
}

SimulateOptions SimulateOptions::parse(const CommandLine &line)
{
    for (const OptionSpec &option : specs()) {
        const auto given = line.values(option.name).size();
        if (given > 1 && !option.repeatable)
            throw UsageError(Texts::tr("option %1 is given %2 times").arg(CommandLine::shown(option.name)).arg(given));
    }
    SimulateOptions options;
    for (int d = 0; d < 2; ++d)
        options.dimension[d] = parseDimension(line, names[d]);
    DimensionOptions &f2 = options.dimension[0], &f1 = options.dimension[1];

    options.twoDimensional = line.has("nucleus-f1");
    if (line.has("dims")) {
        options.twoDimensional = OptionValues::choice(QStringLiteral("--dims"), line.value("dims"),
                                                      {QStringLiteral("1"), QStringLiteral("2")})
            == 1;
    }
    if (!options.twoDimensional)
        refuseTwoDimensionalOptions(line);
    else if (f1.nucleus.isEmpty())
        f1.nucleus = QStringLiteral("1H");

    if (line.has("frequency"))
        options.frequency = OptionValues::positive(QStringLiteral("--frequency"), line.value("frequency"));
    if (line.has("average")) {
        options.averaging =
            OptionValues::choice(QStringLiteral("--average"), line.value("average"),
                                 {QStringLiteral("none"), QStringLiteral("ch3"), QStringLiteral("xh3")});
    }
    if (line.has("correlation")) {
        options.correlation = OptionValues::choice(QStringLiteral("--correlation"), line.value("correlation"),
                                                   {QStringLiteral("strongest"), QStringLiteral("rss")});
    }
    options.isotopes = parseIsotopes(line);
    checkNuclei(options);
    if (options.homonuclear()) {
        refuseContradiction(f2.reference, f1.reference, "reference");
        refuseContradiction(f2.slope, f1.slope, "slope");
        refuseContradiction(f2.lineWidth, f1.lineWidth, "linewidth");
        share(f2.reference, f1.reference);
        share(f2.slope, f1.slope);
    }
    QStringList nuclei{f2.nucleus, f1.nucleus};
    nuclei.removeAll(QString());
    options.sets = parseReferenceSets(line, nuclei);
    for (DimensionOptions &dimension : options.dimension)
        fillFrom(options.sets, dimension.nucleus, dimension.reference, dimension.slope);
    return options;
}

} // namespace Workbench
