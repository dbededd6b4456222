// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ComparisonReport.h"

#include "data/NumberText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace Workbench {
namespace {

QString ppm(double value)
{
    return QString::number(value, 'f', 2);
}

/// Largest shift first, as spectra are read.
std::vector<SitePair> sortedPairs(const Agreement &agreement)
{
    std::vector<SitePair> pairs = agreement.pairs;
    std::stable_sort(pairs.begin(), pairs.end(),
                     [](const SitePair &a, const SitePair &b) { return a.calculated > b.calculated; });
    return pairs;
}

/// Whether other sites share a line of this one.
bool sharesLine(const NucleusComparison &comparison, const SitePair &pair)
{
    return std::any_of(
        comparison.agreement.pairs.begin(), comparison.agreement.pairs.end(), [&](const SitePair &other) {
            return other.site != pair.site
                && std::find_first_of(pair.lines.begin(), pair.lines.end(), other.lines.begin(), other.lines.end())
                != pair.lines.end();
        });
}

/// The sites without a line, in the order of the file.
std::vector<std::size_t> sitesWithout(const NucleusComparison &comparison)
{
    std::vector<std::size_t> sites;
    for (std::size_t site = 0; site < comparison.sites.size(); ++site)
        if (comparison.pairing.linesOf[site].empty())
            sites.push_back(site);
    return sites;
}

double calculatedShift(const NucleusComparison &comparison, std::size_t site)
{
    return comparison.agreement.reference + comparison.agreement.slope * comparison.sites[site].shielding;
}

QString scaleText(const NucleusComparison &comparison, const NucleusMeasurement &measurement)
{
    const bool isGiven = measurement.scale.reference.has_value();
    return QStringLiteral("Reference %1 ppm (%2), slope %3 (%4)")
        .arg(ppm(comparison.agreement.reference), isGiven ? QStringLiteral("given") : QStringLiteral("fitted"),
             QString::number(comparison.agreement.slope, 'g', 6),
             measurement.scale.slope ? QStringLiteral("given") : QStringLiteral("fitted"));
}

QString lineTexts(const std::vector<int> &lines, const NucleusMeasurement &measurement)
{
    QStringList texts;
    for (int line : lines)
        texts.append(ppm(measurement.lines[std::size_t(line)].shift));
    return texts.join(QStringLiteral(", "));
}

QByteArray field(const QString &value)
{
    QByteArray text = value.toUtf8();
    if (text.contains(',') || text.contains('"') || text.contains('\n'))
        text = '"' + text.replace('"', "\"\"") + '"';
    return text;
}

QByteArray exactly(double value)
{
    QByteArray text;
    NumberText::append17(text, value);
    return text;
}

/// σ, χ², degrees of freedom and p; empty where they are not known.
QByteArray chiSquareFields(const NucleusComparison &comparison, const NucleusMeasurement &measurement)
{
    if (!comparison.chiSquare)
        return ",,,";
    const ChiSquare &chiSquare = *comparison.chiSquare;
    return exactly(*measurement.sigma) + ',' + exactly(chiSquare.value) + ','
        + QByteArray::number(chiSquare.degreesOfFreedom) + ',' + (chiSquare.p ? exactly(*chiSquare.p) : QByteArray());
}

} // namespace

QStringList ComparisonReport::atomNames(const UniqueSite &site) const
{
    QStringList names;
    for (int atom : site.atoms)
        names.append(structure.name(atom));
    return names;
}

QByteArray ComparisonReport::write(TableExport::Format format) const
{
    return format == TableExport::Format::Csv ? csv() : format == TableExport::Format::Json ? json() : text();
}

QByteArray ComparisonReport::text() const
{
    QString text;
    for (std::size_t i = 0; i < comparisons.size(); ++i) {
        const NucleusComparison &comparison = comparisons[i];
        const NucleusMeasurement &measurement = measurements[i];
        const Agreement &agreement = comparison.agreement;
        text += i > 0 ? QStringLiteral("\n") : QString();
        text += QStringLiteral("%1: %2 lines, %3 sites%4. Pairing: %5\n")
                    .arg(comparison.nucleus, QString::number(measurement.lines.size()),
                         QString::number(comparison.sites.size()),
                         spaceGroup.isEmpty() ? QString() : QStringLiteral(" in %1").arg(spaceGroup),
                         comparison.pairing.text());
        text += scaleText(comparison, measurement) + QStringLiteral("\n\n");
        std::vector<QStringList> cells;
        const SitePair *worst = nullptr;
        const std::vector<SitePair> pairs = sortedPairs(agreement);
        for (const SitePair &pair : pairs) {
            const ComparedSite &site = comparison.sites[std::size_t(pair.site)];
            cells.push_back({site.name, QString::number(site.nuclei), ppm(pair.calculated), ppm(pair.measured),
                             ppm(pair.difference()),
                             sharesLine(comparison, pair) ? QStringLiteral("shared") : QString()});
            if (!worst || std::abs(pair.difference()) > std::abs(worst->difference()))
                worst = &pair;
        }
        text += TableExport::alignedText({QStringLiteral("Site"), QStringLiteral("Nuclei"),
                                          QStringLiteral("Calculated, ppm"), QStringLiteral("Measured, ppm"),
                                          QStringLiteral("Difference, ppm"), QStringLiteral("Line")},
                                         cells);
        text += QStringLiteral("\nRMSD %1 ppm, largest difference %2 ppm (%3)\n")
                    .arg(ppm(agreement.rmsd), ppm(agreement.largest), comparison.sites[std::size_t(worst->site)].name);
        if (const auto &chiSquare = comparison.chiSquare; chiSquare && chiSquare->p)
            text += QStringLiteral("χ² %1 with %2 degrees of freedom, %3, for σ = %4 ppm\n")
                        .arg(QString::number(chiSquare->value, 'f', 2), QString::number(chiSquare->degreesOfFreedom),
                             chiSquare->pText(), QString::number(*measurement.sigma));
        if (!comparison.pairing.leftOut.empty())
            text += QStringLiteral("Left out: the lines at %1 ppm\n")
                        .arg(lineTexts(comparison.pairing.leftOut, measurement));
        QStringList without;
        for (std::size_t site : sitesWithout(comparison))
            without.append(comparison.sites[site].name);
        if (!without.isEmpty())
            text += QStringLiteral("Without a line: %1\n").arg(without.join(QStringLiteral(", ")));
    }
    return text.toUtf8();
}

QByteArray ComparisonReport::csv() const
{
    QByteArray csv = "nucleus,pairing,site,atoms,nuclei,shielding,calculated,measured,difference,reference,slope,"
                     "rmsd,largest_difference,sigma,chi2,dof,p\n";
    for (std::size_t i = 0; i < comparisons.size(); ++i) {
        const NucleusComparison &comparison = comparisons[i];
        const Agreement &agreement = comparison.agreement;
        const QByteArray start = comparison.nucleus.toUtf8() + ',' + field(comparison.pairing.text()) + ',';
        const QByteArray end = ',' + exactly(agreement.reference) + ',' + exactly(agreement.slope) + ','
            + exactly(agreement.rmsd) + ',' + exactly(agreement.largest) + ','
            + chiSquareFields(comparison, measurements[i]) + '\n';
        const auto siteFields = [&](std::size_t index) {
            const ComparedSite &site = comparison.sites[index];
            return start + field(site.name) + ',' + field(atomNames(comparison.atoms[index]).join(u' ')) + ','
                + QByteArray::number(site.nuclei) + ',' + exactly(site.shielding) + ',';
        };
        for (const SitePair &pair : sortedPairs(agreement))
            csv += siteFields(std::size_t(pair.site)) + exactly(pair.calculated) + ',' + exactly(pair.measured) + ','
                + exactly(pair.difference()) + end;
        for (std::size_t site : sitesWithout(comparison))
            csv += siteFields(site) + exactly(calculatedShift(comparison, site)) + ",," + end;
        for (int line : comparison.pairing.leftOut)
            csv += start + ",,,,," + exactly(measurements[i].lines[std::size_t(line)].shift) + ',' + end;
    }
    return csv;
}

QByteArray ComparisonReport::json() const
{
    QJsonArray nuclei;
    for (std::size_t i = 0; i < comparisons.size(); ++i) {
        const NucleusComparison &comparison = comparisons[i];
        const NucleusMeasurement &measurement = measurements[i];
        const Agreement &agreement = comparison.agreement;
        QJsonArray pairs, without, leftOut;
        const auto siteObject = [&](std::size_t index) {
            const ComparedSite &site = comparison.sites[index];
            return QJsonObject{
                {QStringLiteral("site"), site.name},
                {QStringLiteral("atoms"), QJsonArray::fromStringList(atomNames(comparison.atoms[index]))},
                {QStringLiteral("nuclei"), site.nuclei},
                {QStringLiteral("shielding"), site.shielding},
                {QStringLiteral("calculated"), calculatedShift(comparison, index)}};
        };
        for (const SitePair &pair : sortedPairs(agreement)) {
            QJsonArray lines;
            for (int line : pair.lines)
                lines.append(measurement.lines[std::size_t(line)].shift);
            QJsonObject object = siteObject(std::size_t(pair.site));
            object.insert(QStringLiteral("calculated"), pair.calculated);
            object.insert(QStringLiteral("measured"), pair.measured);
            object.insert(QStringLiteral("difference"), pair.difference());
            object.insert(QStringLiteral("lines"), lines);
            object.insert(QStringLiteral("shared"), sharesLine(comparison, pair));
            pairs.append(object);
        }
        for (std::size_t site : sitesWithout(comparison))
            without.append(siteObject(site));
        for (int line : comparison.pairing.leftOut)
            leftOut.append(measurement.lines[std::size_t(line)].shift);
        QJsonObject object{{QStringLiteral("nucleus"), comparison.nucleus},
                           {QStringLiteral("pairing"), comparison.pairing.text()},
                           {QStringLiteral("lines"), qint64(measurement.lines.size())},
                           {QStringLiteral("sites"), qint64(comparison.sites.size())},
                           {QStringLiteral("reference"), agreement.reference},
                           {QStringLiteral("referenceIsGiven"), measurement.scale.reference.has_value()},
                           {QStringLiteral("slope"), agreement.slope},
                           {QStringLiteral("slopeIsGiven"), measurement.scale.slope.has_value()},
                           {QStringLiteral("rmsd"), agreement.rmsd},
                           {QStringLiteral("largestDifference"), agreement.largest},
                           {QStringLiteral("pairs"), pairs},
                           {QStringLiteral("without"), without},
                           {QStringLiteral("leftOut"), leftOut}};
        if (const auto &chiSquare = comparison.chiSquare) {
            object.insert(QStringLiteral("sigma"), *measurement.sigma);
            object.insert(QStringLiteral("chi2"), chiSquare->value);
            object.insert(QStringLiteral("dof"), chiSquare->degreesOfFreedom);
            if (chiSquare->p)
                object.insert(QStringLiteral("p"), *chiSquare->p);
        }
        nuclei.append(object);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("file"), file},
                                     {QStringLiteral("spaceGroup"), spaceGroup},
                                     {QStringLiteral("nuclei"), nuclei}})
        .toJson();
}

} // namespace Workbench
