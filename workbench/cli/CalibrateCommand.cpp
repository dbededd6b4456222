// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/ComparisonOptions.h"
#include "cli/OptionValues.h"
#include "cli/Simulation.h"
#include "data/Nuclides.h"
#include "document/PageExport.h"
#include "formats/OutputFiles.h"
#include "formats/TableExport.h"
#include "host/HostApplication.h"
#include "items/plot/AgreementPlot.h"
#include "items/plot/PlotPainting.h"

#include "data/Error.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace Workbench {
namespace {

/// A calculated structure and the lines that were measured of it.
struct Compound {
    QString file;
    QString experiment;
    std::vector<ComparedSite> sites;
    NucleusMeasurement measurement;
    double reference = 0; ///< that its lines give by themselves, ppm
};

/// FILE=EXP. Either name may have an equals sign: the first cut that leaves two files counts.
Compound splitArgument(const QString &argument)
{
    Compound first;
    for (qsizetype at = argument.indexOf(u'='); at >= 0; at = argument.indexOf(u'=', at + 1)) {
        Compound compound;
        compound.file = argument.left(at);
        compound.experiment = argument.mid(at + 1);
        if (compound.file.isEmpty() || compound.experiment.isEmpty())
            continue;
        if (QFileInfo::exists(compound.file) && QFileInfo::exists(compound.experiment))
            return compound;
        if (first.file.isEmpty())
            first = compound;
    }
    if (first.file.isEmpty())
        throw UsageError(QStringLiteral("\"%1\" is not of the form FILE=EXP").arg(argument));
    return first;
}

/// The regression and the pairs that it was made of.
struct Regression {
    ReferenceSet set;
    std::vector<LinePairing> pairings; ///< of each compound
};

/// Of the pairs that compounds have at a line; without a reference each at its own.
Regression regressionAt(const std::vector<Compound> &compounds, double slope, std::optional<double> reference)
{
    Regression result;
    std::vector<ShiftCalibration::Point> points;
    for (const Compound &compound : compounds) {
        try {
            const NucleusMeasurement &measured = compound.measurement;
            result.pairings.push_back(
                LinePairing::of(compound.sites, measured.lines, {slope, measured.unmatched, reference}));
            const Agreement agreement =
                Agreement::of(compound.sites, measured.lines, result.pairings.back().linesOf, {slope, reference});
            for (const SitePair &pair : agreement.pairs) {
                const ComparedSite &site = compound.sites[std::size_t(pair.site)];
                points.push_back({site.shielding, pair.measured});
                result.set.sources.push_back({compound.file, site.name, points.back()});
            }
        } catch (const std::exception &error) {
            throw CommandError(Texts::tr("%1: %2").arg(compound.file, QString::fromUtf8(error.what())));
        }
    }
    result.set.calibration = ShiftCalibration::of(points);
    return result;
}

/// The least squares of all compounds together. Where lines overlap or are left out, the pairs depend on the line, and
/// are sought anew at the one that they give until they stay. It starts from the reference of each compound, since some
/// have too few sites to tell which of their lines are meant.
Regression calibrated(const std::vector<Compound> &compounds)
{
    constexpr int mostTurns = 100;
    constexpr double usualSlope = -1;
    std::vector<std::optional<double>> starts{std::nullopt};
    for (const Compound &compound : compounds)
        starts.push_back(compound.reference);
    std::optional<Regression> best;
    for (const std::optional<double> &start : starts) {
        Regression regression = regressionAt(compounds, usualSlope, start);
        const auto &line = regression.set.calibration;
        bool stays = false;
        for (int turn = 0; turn < mostTurns && !stays && line.slope < 0; ++turn) {
            Regression next = regressionAt(compounds, line.slope, line.reference);
            stays = std::equal(next.pairings.begin(), next.pairings.end(), regression.pairings.begin(),
                               [](const LinePairing &a, const LinePairing &b) { return a.linesOf == b.linesOf; });
            regression = std::move(next);
        }
        // A line that rises would be no calibration.
        const auto key = [](const Regression &each) {
            return std::pair(each.set.calibration.slope >= 0, each.set.calibration.rmse);
        };
        if (!best || key(regression) < key(*best))
            best = std::move(regression);
    }
    return *best;
}

QString withError(double value, double error)
{
    return QStringLiteral("%1 ± %2").arg(QString::number(value, 'f', 4), QString::number(error, 'f', 4));
}

QString report(const Regression &regression, const std::vector<Compound> &compounds, std::vector<double> shieldings)
{
    const ReferenceSet &set = regression.set;
    const std::vector<LinePairing> &pairings = regression.pairings;
    const ShiftCalibration &calibration = set.calibration;
    QString text =
        QStringLiteral("shift = reference + slope · shielding, %1, %2 sites, %3, %4\n\n")
            .arg(set.nucleus, QString::number(calibration.points),
                 compounds.size() == 1 ? QStringLiteral("1 file") : QStringLiteral("%1 files").arg(compounds.size()),
                 set.method.text());
    std::vector<QStringList> rows;
    for (std::size_t i = 0; i < compounds.size(); ++i)
        rows.push_back({compounds[i].file, QString::number(compounds[i].measurement.lines.size()),
                        QString::number(compounds[i].sites.size()), pairings[i].text()});
    text += TableExport::alignedText(
        {QStringLiteral("File"), QStringLiteral("Lines"), QStringLiteral("Sites"), QStringLiteral("Pairing")}, rows);
    QString leftOut;
    for (std::size_t i = 0; i < compounds.size(); ++i) {
        QStringList shifts;
        for (int line : pairings[i].leftOut)
            shifts.append(QString::number(compounds[i].measurement.lines[std::size_t(line)].shift, 'f', 2));
        if (!shifts.isEmpty())
            leftOut += QStringLiteral("Left out: %1, the lines at %2 ppm\n")
                           .arg(compounds[i].file, shifts.join(QLatin1String(", ")));
    }
    text += leftOut.isEmpty() ? QString() : QLatin1Char('\n') + leftOut;
    text +=
        QStringLiteral("\nReference            %1 ppm\n"
                       "Slope                %2\n"
                       "Covariance           %3 ppm\n"
                       "RMSE (n - 2)         %4 ppm\n"
                       "Leave-one-out error  %5 ppm\n\n")
            .arg(withError(calibration.reference, calibration.referenceError),
                 withError(calibration.slope, calibration.slopeError), QString::number(calibration.covariance, 'g', 4),
                 QString::number(calibration.rmse, 'f', 4), QString::number(calibration.leaveOneOut, 'f', 4));
    if (shieldings.empty()) {
        const auto [low, high] =
            std::minmax_element(set.sources.begin(), set.sources.end(),
                                [](const auto &a, const auto &b) { return a.point.shielding < b.point.shielding; });
        shieldings = {low->point.shielding, calibration.meanShielding, high->point.shielding};
    }
    std::vector<QStringList> intervals;
    for (double shielding : shieldings) {
        const ShiftCalibration::Interval interval = calibration.prediction(shielding);
        intervals.push_back({QString::number(shielding, 'f', 2), QString::number(interval.shift, 'f', 2),
                             QString::number(interval.low, 'f', 2), QString::number(interval.high, 'f', 2)});
    }
    return text
        + TableExport::alignedText({QStringLiteral("Shielding, ppm"), QStringLiteral("Shift, ppm"),
                                    QStringLiteral("95 % from"), QStringLiteral("to")},
                                   intervals);
}

/// The whole set as one comparison, for the plot.
NucleusComparison asComparison(const ReferenceSet &set)
{
    NucleusComparison comparison;
    comparison.nucleus = set.nucleus;
    std::vector<MeasuredLine> lines;
    std::vector<std::vector<int>> linesOf;
    for (const ReferenceSet::Source &source : set.sources) {
        comparison.sites.push_back({QStringLiteral("%1 %2").arg(QFileInfo(source.file).completeBaseName(), source.site),
                                    {},
                                    source.point.shielding,
                                    1,
                                    1});
        linesOf.push_back({int(lines.size())});
        lines.push_back({source.point.shift, {}, {}});
    }
    comparison.pairing.linesOf = linesOf;
    comparison.agreement =
        Agreement::of(comparison.sites, lines, linesOf, {set.calibration.slope, set.calibration.reference});
    return comparison;
}

CommandRun prepareCalibrate(const CommandLine &line)
{
    const QString nucleus = OptionValues::nucleus(QStringLiteral("--nucleus"), required(line, "nucleus"));
    if (!Nuclides::table().contains(nucleus))
        throw UsageError(Texts::tr("option --nucleus: \"%1\" is not an NMR nucleus").arg(nucleus));
    std::vector<Compound> compounds;
    QSet<std::pair<QString, QString>> seen;
    for (const QString &argument : line.positional()) {
        compounds.push_back(splitArgument(argument));
        const std::pair paths(QFileInfo(compounds.back().file).absoluteFilePath(),
                              QFileInfo(compounds.back().experiment).absoluteFilePath());
        if (seen.contains(paths))
            throw UsageError(Texts::tr("\"%1\" is given twice").arg(argument));
        seen.insert(paths);
    }
    for (const QString &output : line.values("o")) {
        if (QFileInfo(output).suffix().toLower() != u"json" && !PageExport::formatOfSuffix(QFileInfo(output).suffix()))
            throw UsageError(Texts::tr("option -o: the suffix of \"%1\" is not one of: .json, .%2")
                                 .arg(output, PageExport::suffixes().join(QLatin1String(", ."))));
    }
    std::vector<double> shieldings;
    for (const QString &text : line.values("at"))
        shieldings.push_back(OptionValues::number(QStringLiteral("--at"), text));
    ComparisonOptions options;
    options.sites = {parseSymmetryTolerance(line), parseAveraging(line)};
    if (line.has("unmatched"))
        options.unmatched =
            OptionValues::count(QStringLiteral("--unmatched"), line.value("unmatched"), LinePairing::mostUnmatched, 0);
    const bool mayMix = line.has("mix-methods");
    const QStringList outputs = line.values("o");
    return headless([=](HostApplication &host, MessageLog &log) mutable {
        CommonMethod method;
        bool isMixed = false;
        for (Compound &compound : compounds) {
            options.nuclei.resize(1);
            options.nuclei[0].name = nucleus;
            options.nuclei[0].experiment = compound.experiment;
            QStringList notes;
            compound.measurement = options.read(&notes).front();
            Simulation simulation(host, log);
            simulation.readFile(compound.file, {});
            const CalculationMethod own = CalculationMethod::fromFile(compound.file);
            if (const auto other = method.add(compound.file, own)) {
                if (!mayMix)
                    throw CommandError(Texts::tr("%1: calculated with %2, but %3 with %4 (--mix-methods takes both)")
                                           .arg(compound.file, own.text(), other->file, other->method.text()));
                isMixed = true;
            }
            const CrystalStructure structure = simulation.structure();
            const UniqueSites unique = UniqueSites::of(structure, options.sites);
            const std::size_t listed = compound.measurement.lines.size();
            try {
                const auto comparison = NucleusComparison::ofPlaces(structure, unique, compound.measurement);
                compound.sites = comparison.sites;
                compound.reference = comparison.agreement.reference;
            } catch (const std::exception &error) {
                throw CommandError(Texts::tr("%1: %2").arg(compound.file, QString::fromUtf8(error.what())));
            }
            if (const QString note = placesNote(nucleus, listed, compound.measurement.lines.size()); !note.isEmpty())
                notes.append(QStringLiteral("%1: %2").arg(compound.file, note));
            for (const QString &note : notes)
                printError(Texts::tr("magres-workbench calibrate: %1\n").arg(note));
            for (const QString &warning : unique.warnings)
                printError(Texts::tr("magres-workbench calibrate: %1: %2\n").arg(compound.file, warning));
        }
        Regression regression = calibrated(compounds);
        ReferenceSet &set = regression.set;
        set.nucleus = nucleus;
        set.method = isMixed ? CalculationMethod() : method.method(); // of a mixture nothing is known
        OutputFiles files;
        for (const QString &output : outputs) {
            QIODevice &device = files.open(output);
            const auto picture = PageExport::formatOfSuffix(QFileInfo(output).suffix());
            if (!picture) {
                device.write(set.toJson());
                continue;
            }
            AgreementPlot plot;
            plot.setComparisons({asComparison(set)});
            PageExport::writePicture([&](QPainter *painter, const QRectF &area) { paintPlot(plot, painter, area); },
                                     plot.fullSize(), device, *picture);
        }
        files.commit();
        printOut(report(regression, compounds, shieldings));
    });
}

} // namespace

Command calibrateCommand()
{
    Command command{
        "calibrate",
        "FILE=EXP... --nucleus NUC [options] [-o SET.json]...",
        "Fits reference and slope of a nucleus to compounds whose lines are known.",
        "Ordinary least squares of the measured shifts on the calculated shieldings, each unique site once. Files "
        "that\n"
        "were calculated by different codes, functionals or cut-offs are not put together. The set that is written\n"
        "serves --reference-set of other commands.\n\n"
        "Example:\n"
        "  magres-workbench calibrate alanine.magres=ala.csv urea.magres=urea.csv --nucleus 13C -o 13C.json -o 13C.png",
        {
            {"nucleus", "NUC", "Nucleus, such as 13C. Required."},
            {"o", "OUT", "Output file: .json (the set), or .png, .svg, .pdf (the plot). May be given more than once.",
             true},
            {"at", "PPM",
             "Shielding at which the interval for a new site is printed. May be given more than once. Default: the "
             "ends and the mean of the set.",
             true},
            {"mix-methods", nullptr, "Put files together that were calculated by different methods."},
            {"average", "MODE", "Groups of three hydrogens averaged to one site: none, ch3 or xh3. Default: none."},
            symmetryToleranceOption(),
            {"unmatched", "N", "So many lines of a compound may be left out. Default: 0."},
        },
        prepareCalibrate,
    };
    command.files = Command::Several;
    return command;
}

} // namespace Workbench
