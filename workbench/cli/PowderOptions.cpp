// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/PowderOptions.h"

#include "data/Error.h"
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/OptionValues.h"
#include "data/Nuclides.h"

namespace Workbench {

namespace {

constexpr double highestFrequency = 10000; // MHz, of 1H: several times what any magnet reaches

QString nucleusOption(const CommandLine &line)
{
    const QString shown = CommandLine::shown("nucleus");
    const QString nucleus = OptionValues::nucleus(shown, required(line, "nucleus"));
    if (!Nuclides::table().contains(nucleus))
        throw UsageError(Texts::tr("option %1: \"%2\" is not an NMR nucleus").arg(shown, nucleus));
    return nucleus;
}

void takeRotation(const CommandLine &line, PowderSettings &settings)
{
    if (line.has("static") && line.has("mas"))
        throw UsageError(Texts::tr("options --static and --mas contradict each other"));
    if (line.has("static"))
        settings.rotation = Powder::Rotation::Static;
    if (!line.has("mas") || line.value("mas") == QLatin1String("infinite"))
        return;
    settings.rotation = Powder::Rotation::MagicAngle;
    settings.rate = OptionValues::number(CommandLine::shown("mas"), line.value("mas"));
    if (settings.rate == 0)
        throw UsageError(Texts::tr("option --mas: a rate of 0 is a sample at rest; give --static"));
    if (!(settings.rate > 0 && settings.rate <= 1e7)) {
        throw UsageError(Texts::tr("option --mas: \"%1\" is not a rate between 0 and 10000000 Hz, or \"infinite\"")
                             .arg(line.value("mas")));
    }
}

double width(const CommandLine &line, const char *option, double fallback)
{
    if (!line.has(option))
        return fallback;
    const double value = OptionValues::number(CommandLine::shown(option), line.value(option));
    if (!(value >= 0 && value <= 1e9)) {
        throw UsageError(Texts::tr("option %1: \"%2\" is not a width between 0 and 1000000000 Hz")
                             .arg(CommandLine::shown(option), line.value(option)));
    }
    return value;
}

} // namespace

const std::vector<OptionSpec> &powderSpecs()
{
    static const std::vector<OptionSpec> list{
        {"nucleus", "NUC", "Observed nucleus, such as 27Al. Required."},
        {"frequency", "MHZ", "Spectrometer frequency of 1H in MHz. Default: that of the experiment, else 600."},
        {"mas", "HZ|infinite",
         "Spinning rate at the magic angle: with sidebands, or so fast that there are none. Default: infinite."},
        {"static", nullptr, "The sample is at rest."},
        {"site", "LABEL",
         "Only this site, by the label of one of its atoms. May be given several times. Default: all sites.", true},
        {"reference", "PPM",
         "Reference of the shielding-to-shift line: shift = reference + slope * shielding, for tensors as a whole. "
         "Default: 100."},
        {"slope", "X", "Slope of that line. Default: -1."},
        {"linewidth", "HZ", "Lorentzian broadening in Hz, full width at half height. Default: 30."},
        {"gaussian", "HZ", "Gaussian broadening in Hz, full width at half height. Default: 0."},
        {"points", "N", "Number of points, 2 to 4194304. Default: 8192."},
        {"range", "FROM:TO",
         "Spectral range in ppm, such as 200:-20; first and last point. Default: all that is above 0.1 % of the "
         "highest "
         "point."},
        {"orientations", "N",
         "Orientations of the crystallites, up to 10000000. Default: as many as bring the curve within 0.1 % (of its "
         "area) of the converged one; about 1 % where horns of axial sites are much sharper than the pattern is wide."},
    };
    return list;
}

PowderSettings parsePowderConditions(const CommandLine &line)
{
    PowderSettings settings;
    settings.nucleus = nucleusOption(line);
    if (line.has("frequency")) {
        settings.protonFrequency = OptionValues::positive(CommandLine::shown("frequency"), line.value("frequency"));
        if (settings.protonFrequency < 1 || settings.protonFrequency > highestFrequency) {
            throw UsageError(Texts::tr("option --frequency: \"%1\" is not a 1H frequency from 1 to %2 MHz")
                                 .arg(line.value("frequency"))
                                 .arg(highestFrequency));
        }
    }
    takeRotation(line, settings);
    settings.shape.lorentzian = width(line, "linewidth", settings.shape.lorentzian);
    settings.shape.gaussian = width(line, "gaussian", settings.shape.gaussian);
    return settings;
}

PowderSettings parsePowder(const CommandLine &line)
{
    PowderSettings settings = parsePowderConditions(line);
    for (const QString &name : line.values("site"))
        settings.labels.append(withoutMultiplicity(name));
    if (line.has("reference"))
        settings.reference = OptionValues::number(CommandLine::shown("reference"), line.value("reference"));
    if (line.has("slope"))
        settings.slope = OptionValues::number(CommandLine::shown("slope"), line.value("slope"));
    if (line.has("points")) {
        settings.points =
            OptionValues::count(CommandLine::shown("points"), line.value("points"), int(Powder::mostPoints), 2);
    }
    if (line.has("range")) {
        settings.range = OptionValues::range(CommandLine::shown("range"), line.value("range"));
        for (double end : {settings.range->first, settings.range->second}) {
            if (!(std::abs(end) < 1e6)) {
                throw UsageError(Texts::tr("option --range: %1 ppm is as far as the frequency itself").arg(end));
            }
        }
    }
    if (line.has("orientations"))
        settings.directions = OptionValues::count(CommandLine::shown("orientations"), line.value("orientations"),
                                                  int(Powder::mostDirections));
    return settings;
}

} // namespace Workbench
