// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/ComparisonOptions.h"
#include "cli/MessageLog.h"
#include "cli/OutputOptions.h"
#include "cli/PowderOptions.h"
#include "cli/ProgressLine.h"
#include "cli/Simulation.h"
#include "data/SpectrumEntry.h"
#include "document/PageExport.h"
#include "formats/CsdmFile.h"
#include "formats/OutputFiles.h"
#include "formats/PowderExport.h"
#include "formats/SpectrumExport.h"
#include "formats/SpectrumReader.h"
#include "formats/TableExport.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"

#include "data/Error.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <numeric>

namespace Workbench {

namespace {

struct PowderJob {
    QString file;
    QString experiment; ///< empty: none
    PowderSettings settings;
    bool knowsField = false; ///< the user gave the frequency
    std::vector<ReferenceSet> sets; ///< that the reference was taken from
    bool fit = false;
    bool fitScale = false;
    bool tripleQuantum = false;
    bool sitesCsv = false;
};

/// What is written: curves over one axis, or the plane of a 2D spectrum.
struct PowderResult {
    const PowderSites &sites;
    const PowderSettings &settings;
    std::optional<Powder::Spectrum> spectrum; ///< of one dimension
    ExperimentalSpectrum shown; ///< the sum, or the plane
    std::optional<ExperimentalSpectrum> experiment;
    QString name; ///< "berlinite, 27Al powder"
};

QString fixed(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

QString siteTable(const PowderSites &sites)
{
    const bool isQuadrupolar = sites.conditions.spin > 0.75;
    QStringList titles{QStringLiteral("Site"), QStringLiteral("Nuclei"), QStringLiteral("Shift, ppm")};
    if (isQuadrupolar)
        titles += {QStringLiteral("Cq, MHz"), QStringLiteral("eta"), QStringLiteral("QIS, ppm")};
    titles += {QStringLiteral("Centre, ppm"), QStringLiteral("Span, ppm"), QStringLiteral("Breadth, ppm")};
    std::vector<QStringList> cells;
    for (const PowderSite &site : sites.sites) {
        const Powder::SiteValues &values = site.values;
        QStringList row{site.name, QString::number(site.nuclei), fixed(values.shift, 3)};
        if (isQuadrupolar)
            row += {fixed(values.coupling, 4), fixed(values.asymmetry, 4), fixed(values.quadrupolarShift, 3)};
        row += {fixed(values.centre, 3), fixed(values.span, 3), fixed(values.breadth, 3)};
        cells.push_back(row);
    }
    return TableExport::alignedText(titles, cells);
}

QString tripleQuantumTable(const PowderSites &sites)
{
    std::vector<QStringList> cells;
    for (const PowderSite &site : sites.sites) {
        const Powder::TripleQuantumPosition position = Powder::tripleQuantumPosition(site.values);
        cells.push_back({site.name, fixed(position.f1, 3), fixed(position.f2, 3)});
    }
    return TableExport::alignedText(
               {QStringLiteral("Site"), QStringLiteral("delta1 (F1), ppm"), QStringLiteral("delta2 (F2), ppm")}, cells)
        + QStringLiteral("Triple quantum, sheared; F1 is scaled so that a shift alone is the same in both dimensions: "
                         "delta1 = shift - 10/17 QIS,\ndelta2 = shift + QIS (centre of gravity).\n");
}

QString conditionsText(const PowderSites &sites, const PowderSettings &settings)
{
    const QString spinning = settings.rotation == Powder::Rotation::Static ? QStringLiteral("static")
        : settings.rotation == Powder::Rotation::MagicAngle ? QStringLiteral("MAS at %1 Hz").arg(settings.rate)
                                                            : QStringLiteral("MAS, infinite rate");
    return QStringLiteral(
               "%1 at %2 MHz (1H: %3 MHz), %4; Lorentzian %5 Hz, Gaussian %6 Hz; reference %7 ppm, slope %8\n")
        .arg(sites.nucleus, fixed(sites.conditions.larmor, 4))
        .arg(settings.protonFrequency)
        .arg(spinning)
        .arg(settings.shape.lorentzian)
        .arg(settings.shape.gaussian)
        .arg(settings.reference)
        .arg(settings.slope);
}

void printNotes(const QStringList &notes)
{
    for (const QString &note : notes)
        printError(Texts::tr("Note: %1\n").arg(note));
}

/// On the page, as a stack: measured spectrum, sum, sites. Gives the entry of the sum.
QUuid showOnPage(const PowderResult &result, MainScene &scene)
{
    const QVariantMap sum = toEntryMap(result.shown);
    auto *item = qobject_cast<NmrItem *>(scene.createNMRItem(scene.getEmptyRect(), sum, true));
    if (!item)
        throw CommandError(Texts::tr("the spectrum cannot be put on a page"));
    NmrData &data = *item->nmrData();
    const QUuid entry = data.entryIds().constFirst();
    data.setEntryName(entry, result.name);
    const auto &sites = result.sites.sites;
    if (result.spectrum && sites.size() > 1 && sites.size() <= mostSiteCurves) {
        for (size_t i = 0; i < sites.size(); ++i) {
            const auto curve = powderCurve(result.sites, result.spectrum->axis, result.spectrum->sites[i].values, {});
            data.addEntry(toEntryMap(curve), sites[i].name);
        }
    }
    if (result.experiment)
        data.addEntry(toEntryMap(*result.experiment), result.experiment->title);
    return entry;
}

void writeOne(const PowderResult &result, const QString &suffix, QIODevice &device, HostApplication &host)
{
    SpectrumEntry entry;
    entry.data = toEntryMap(result.shown);
    entry.spectrum = Spectrum::fromMap(entry.data);
    entry.name = result.name;
    if (suffix == u"json") {
        device.write(QJsonDocument(result.spectrum
                                       ? PowderExport::json(result.sites, result.settings, &*result.spectrum)
                                       : PowderExport::tripleQuantumJson(result.sites, result.settings, result.shown))
                         .toJson());
    } else if (suffix == u"csdf") {
        device.write(CsdmFile::written(result.shown));
    } else if (PageExport::formatOfSuffix(suffix)) {
        NmrItem *item = host.scene().currentNmrItem();
        PageExport::writePlot(*item, device, *PageExport::formatOfSuffix(suffix));
    } else {
        SpectrumExport::write(entry, suffix, device);
    }
}

/// Where --sites-csv puts the curves of the sites beside NAME.csv.
QString sitesNameOf(const QString &csvName)
{
    return csvName.chopped(4) + QStringLiteral(".sites.csv");
}

void writeOutputs(const PowderResult &result, const QStringList &fileNames, bool sitesCsv, HostApplication &host)
{
    const bool anyPicture = std::any_of(fileNames.begin(), fileNames.end(), [](const QString &name) {
        return PageExport::formatOfSuffix(OutputOptions::suffixOf(name)).has_value();
    });
    if (anyPicture)
        showOnPage(result, host.scene());
    OutputFiles files;
    for (const QString &fileName : fileNames) {
        const QString suffix = OutputOptions::suffixOf(fileName);
        writeOne(result, suffix, files.open(fileName), host);
        if (sitesCsv && suffix == u"csv")
            PowderExport::writeSitesCsv(result.sites, *result.spectrum, files.open(sitesNameOf(fileName)));
    }
    files.commit();
}

ExperimentalSpectrum measuredSpectrum(const PowderJob &job, const PowderSites &sites)
{
    if (!QFileInfo::exists(job.experiment))
        throw CommandError(Texts::tr("%1: there is no such file").arg(job.experiment));
    ReadOptions options;
    options.dimensions = 1;
    options.frequency[0] = sites.conditions.larmor;
    ExperimentalSpectrum measured = openExperimentalSpectrum(job.experiment, options);
    if (measured.dimensions.size() != 1)
        throw CommandError(Texts::tr("%1: a spectrum of one dimension was expected").arg(job.experiment));
    SpectrumDimension &axis = measured.dimensions.front();
    if (!axis.nucleus.isEmpty() && axis.nucleus != sites.nucleus) {
        throw CommandError(
            QStringLiteral("%1: this is a spectrum of %2, not of %3").arg(job.experiment, axis.nucleus, sites.nucleus));
    }
    axis.nucleus = sites.nucleus;
    if (axis.frequency <= 0)
        axis.frequency = sites.conditions.larmor;
    orient(measured, job.experiment);
    measured.title = QFileInfo(job.experiment).fileName();
    printNotes(measured.notes);
    return measured;
}

/// The last digit of the value is one of its error's first two.
QString withError(const Powder::FittedValue &fitted, double value)
{
    const int decimals = fitted.error > 0 ? std::clamp(1 - int(std::floor(std::log10(fitted.error))), 0, 9) : 4;
    return QStringLiteral("%1 +- %2").arg(fixed(value, decimals), fixed(fitted.error, decimals));
}

QString fitText(const PowderFit &found, const PowderJob &job)
{
    const Powder::SpectrumFit &fit = found.fit;
    QString text = QStringLiteral("Reference: %1 ppm\n").arg(withError(fit.reference, found.settings.reference));
    if (job.settings.shape.lorentzian > 0)
        text += QStringLiteral("Lorentzian: %1 Hz\n").arg(withError(fit.lorentzian, fit.lorentzian.value));
    if (job.settings.shape.gaussian > 0)
        text += QStringLiteral("Gaussian: %1 Hz\n").arg(withError(fit.gaussian, fit.gaussian.value));
    if (job.fitScale)
        text += QStringLiteral("Factor on Cq: %1\n").arg(withError(fit.scale, fit.scale.value));
    text += QStringLiteral("Deviation: %1 % of the highest point (standard deviation of the points), %2 steps\n")
                .arg(fixed(100 * fit.deviation, 3))
                .arg(fit.steps);
    return text + QStringLiteral("Errors are standard errors for points that err independently.\n");
}

Powder::Progress progressOf(ProgressLine &line, const QString &what)
{
    return [&line, what](double part) {
        line.show(int(100 * part), 100, what);
        return true;
    };
}

void noteEmptyRange(const Powder::Spectrum &spectrum)
{
    const Powder::Axis &axis = spectrum.axis;
    const double area = std::abs(axis.step()) * std::accumulate(spectrum.sum.begin(), spectrum.sum.end(), 0.0);
    if (area < 1e-3) {
        printNotes({QStringLiteral("less than a thousandth of a nucleus lies between %1 and %2 ppm")
                        .arg(axis.first)
                        .arg(axis.last)});
    }
}

void runPowder(const PowderJob &job, const OutputOptions &outputs, HostApplication &host, MessageLog &log)
{
    Simulation simulation(host, log);
    simulation.readFile(job.file, {});
    const CrystalStructure structure = simulation.structure();
    warnOfMethods(job.sets, job.file);
    PowderSettings settings = job.settings;
    PowderSites sites = PowderSites::of(structure, settings);
    if (job.tripleQuantum && (sites.conditions.spin < 1 || std::fmod(2 * sites.conditions.spin, 2) == 0))
        throw CommandError(
            QStringLiteral("%1 has no triple-quantum transition: its spin is not a half-integer one above 1/2")
                .arg(sites.nucleus));
    ProgressLine line;
    std::optional<ExperimentalSpectrum> measured;
    if (!job.experiment.isEmpty()) {
        measured = measuredSpectrum(job, sites);
        if (!job.knowsField && !otherField(sites, *measured).isEmpty()) {
            settings.protonFrequency = protonFrequencyOf(sites.nucleus, measured->dimensions.front().frequency);
            sites = PowderSites::of(structure, settings);
            printNotes({QStringLiteral("the frequency is that of %1").arg(measured->title)});
        }
        if (const QString other = otherField(sites, *measured); !other.isEmpty())
            printNotes({other});
    }
    QString report;
    if (job.fit) {
        const auto found = fitPowder(sites, settings, *measured, job.fitScale, progressOf(line, QStringLiteral("fit")));
        line.clear();
        report = fitText(*found, job);
        if (!found->fit.converged)
            sites.notes.append(QStringLiteral("the fit has not converged"));
        settings = found->settings;
        const QStringList notes = sites.notes;
        sites = PowderSites::of(structure, settings);
        if (!found->fit.converged)
            sites.notes.append(notes.constLast());
    }
    printNotes(sites.notes);
    const QString what = job.tripleQuantum ? QStringLiteral("%1 3QMAS") : QStringLiteral("%1 powder");
    PowderResult result{
        sites, settings, {},
        {},    measured, QFileInfo(job.file).completeBaseName() + QStringLiteral(", ") + what.arg(sites.nucleus)};
    if (job.tripleQuantum) {
        if (!outputs.isEmpty())
            result.shown = tripleQuantumSpectrum(sites, settings);
    } else if (!outputs.isEmpty()) {
        result.spectrum = powderSpectrum(sites, settings, progressOf(line, QStringLiteral("powder average")));
        line.clear();
        noteEmptyRange(*result.spectrum);
        if (const QString few = tooFewPoints(sites, result.spectrum->axis, settings.shape); !few.isEmpty())
            printNotes({few});
        if (!result.spectrum->converged)
            printNotes({QStringLiteral("%1 orientations were not enough for the curve to converge")
                            .arg(Powder::mostDirections)});
        result.shown = powderCurve(sites, result.spectrum->axis, result.spectrum->sum,
                                   QStringLiteral("%1, %2").arg(QFileInfo(job.file).fileName(), sites.nucleus));
    }
    if (!outputs.isEmpty())
        writeOutputs(result, outputs.fileNames(), job.sitesCsv, host);
    printOut(conditionsText(sites, settings) + siteTable(sites)
             + (job.tripleQuantum ? tripleQuantumTable(sites) : QString()) + report + sites.limits() + u'\n');
}

/// Each from a reference set, unless an option says it.
void takeReference(const CommandLine &line, PowderJob &job)
{
    PowderSettings &settings = job.settings;
    job.sets = parseReferenceSets(line, {settings.nucleus});
    std::optional<double> reference, slope;
    if (line.has("reference"))
        reference = settings.reference;
    if (line.has("slope"))
        slope = settings.slope;
    fillFrom(job.sets, settings.nucleus, reference, slope);
    settings.reference = reference.value_or(settings.reference);
    settings.slope = slope.value_or(settings.slope);
}

CommandRun preparePowder(const CommandLine &line)
{
    PowderJob job;
    job.file = line.positional().constFirst();
    job.settings = parsePowder(line);
    takeReference(line, job);
    job.knowsField = line.has("frequency");
    job.experiment = line.value("experiment");
    job.fit = line.has("fit");
    job.fitScale = line.has("fit-scale");
    job.tripleQuantum = line.has("mqmas");
    job.sitesCsv = line.has("sites-csv");
    const OutputOptions outputs(line.values("o"), OutputOptions::Spectrum);
    if (job.fitScale && !job.fit)
        throw UsageError(Texts::tr("option --fit-scale needs --fit"));
    if (job.fit && job.experiment.isEmpty())
        throw UsageError(Texts::tr("option --fit needs --experiment"));
    if (job.tripleQuantum && job.settings.rotation != Powder::Rotation::InfiniteRate)
        throw UsageError(Texts::tr("option --mqmas: ridges are those of infinitely fast spinning; leave out %1")
                             .arg(line.has("static") ? QStringLiteral("--static") : QStringLiteral("--mas")));
    if (job.tripleQuantum && (job.fit || !job.experiment.isEmpty()))
        throw UsageError(Texts::tr("option --experiment: the ridges of --mqmas are not compared with a spectrum"));
    if (job.sitesCsv) {
        const QStringList names = line.values("o");
        const bool anyCsv = std::any_of(names.begin(), names.end(),
                                        [](const QString &name) { return OutputOptions::suffixOf(name) == u"csv"; });
        if (!anyCsv || job.tripleQuantum)
            throw UsageError(Texts::tr("option --sites-csv needs a 1D spectrum as -o NAME.csv"));
        QStringList all = names;
        for (const QString &name : names) {
            if (OutputOptions::suffixOf(name) == u"csv")
                all.append(sitesNameOf(name));
        }
        const OutputOptions apart(all, OutputOptions::Spectrum);
        OutputOptions::refuseInputs(all, {job.file, job.experiment});
    }
    return headless([=](HostApplication &host, MessageLog &log) {
        host.scene().setDrawn(outputs.areDrawn());
        runPowder(job, outputs, host, log);
    });
}

std::vector<OptionSpec> options()
{
    std::vector<OptionSpec> list = powderSpecs();
    list.push_back(referenceSetOption());
    list.push_back({"experiment", "EXP", "A measured spectrum, stacked in pictures and fitted to by --fit."});
    list.push_back(
        {"fit", nullptr,
         "Moves the reference and the widths that are not 0 to the least squares of the curve, and shows the "
         "spectrum with them."});
    list.push_back({"fit-scale", nullptr, "With --fit: one factor on all Cq as well."});
    list.push_back({"mqmas", nullptr,
                    "Positions in a sheared triple-quantum MAS spectrum; -o then gives the 2D spectrum with ridges."});
    list.push_back({"sites-csv", nullptr, "Beside each NAME.csv a NAME.sites.csv with one column for each site."});
    list.push_back(
        {"o", "OUT",
         "Output file; its suffix chooses the format: .csv (ppm,intensity; 1D or 2D points), .json (axis and "
         "values of the sites), .jdx or .dx (JCAMP-DX), .csdf, .png, .svg or .pdf (the plot). May be "
         "given more than once.",
         true});
    return list;
}

} // namespace

Command powderCommand()
{
    return {
        "powder",
        "FILE --nucleus NUC [options] [-o OUT]...",
        "Computes the powder line shapes of a nucleus: shift anisotropy and quadrupole coupling, static or spinning.",
        "Sites are those of the space group, with their multiplicity; a spectrum's area is one per nucleus, in ppm. "
        "The\n"
        "values of the sites are printed. Half-integer spins: the central transition, to second order. Integer spins: "
        "all\n"
        "transitions, to first order.\n\n"
        "Example:\n"
        "  magres-workbench powder x.magres --nucleus 17O --frequency 800 --mas 20000 --reference 287 -o 17O.png",
        options(),
        preparePowder,
    };
}

} // namespace Workbench
