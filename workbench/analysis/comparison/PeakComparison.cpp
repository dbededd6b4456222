// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/PeakComparison.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace Workbench {
namespace {

enum class Counting { Counts, Peaks, Lines };

void takeLines(const QList<SpectrumPeak> &peaks, Counting counting, PeakComparison &result)
{
    std::vector<MeasuredLine> lines;
    std::vector<std::vector<int>> from;
    for (const SpectrumPeak &peak : peaks) {
        from.push_back({int(lines.size())});
        lines.push_back({peak.f2, {}, assignedSites(peak.label)});
    }
    if (counting != Counting::Peaks)
        lines = mergedLines(lines, &from);
    if (counting == Counting::Lines) {
        for (MeasuredLine &line : lines)
            line.count.reset();
    }
    result.measurement.lines = std::move(lines);
    result.peaks.clear();
    for (const std::vector<int> &part : from) {
        result.peaks.emplace_back();
        for (int peak : part)
            result.peaks.back().append(peaks[peak].id);
    }
}

/// The sites that have the line.
std::vector<int> sitesOf(const LinePairing &pairing, int line)
{
    std::vector<int> sites;
    for (int site = 0; site < int(pairing.linesOf.size()); ++site) {
        const std::vector<int> &lines = pairing.linesOf[std::size_t(site)];
        if (std::find(lines.begin(), lines.end(), line) != lines.end())
            sites.push_back(site);
    }
    return sites;
}

} // namespace

QStringList assignedSites(const QString &label)
{
    // "C 1" is an element's symbol and a number.
    static const QRegularExpression between(QStringLiteral("[,;/+&\\s]+")),
        apart(QStringLiteral("(?<![A-Za-z0-9])([A-Z][a-z]?)\\s+(?=\\d)"));
    return withoutMultiplicity(label).replace(apart, QStringLiteral("\\1")).split(between, Qt::SkipEmptyParts);
}

PeakComparison PeakComparison::of(const CrystalStructure &structure, const UniqueSites &unique,
                                  NucleusMeasurement measurement, const QList<SpectrumPeak> &peaks)
{
    PeakComparison result;
    result.measurement = std::move(measurement);
    takeLines(peaks, Counting::Lines, result);
    const bool isCounted = qsizetype(result.peaks.size()) < peaks.size();
    const auto compare = [&](Counting counting) {
        takeLines(peaks, counting, result);
        result.comparison = NucleusComparison::of(structure, unique, result.measurement);
        return result;
    };
    for (Counting counting : {Counting::Counts, Counting::Peaks}) {
        try {
            if (isCounted)
                return compare(counting);
        } catch (const std::exception &) {
            // What one place cannot be, the next way of reading it may.
        }
    }
    result.dropsNumbers = isCounted;
    return compare(Counting::Lines);
}

std::vector<MeasuredLine> PeakComparison::linesOf(const QList<SpectrumPeak> &peaks)
{
    PeakComparison result;
    takeLines(peaks, Counting::Peaks, result);
    return result.measurement.lines;
}

std::map<int, QString> PeakComparison::labelsAfter(const std::vector<int> &moved, int from, int to) const
{
    const LinePairing &pairing = comparison.pairing;
    const auto isMoved = [&](int line) { return std::find(moved.begin(), moved.end(), line) != moved.end(); };
    const auto label = [&](const std::vector<int> &sites) {
        QStringList names;
        for (int site : sites)
            names.append(comparison.sites[std::size_t(site)].labels.constFirst());
        return names.join(QLatin1String(", "));
    };
    bool losesLast = false;
    std::map<int, QString> labels;
    for (int line : pairing.linesOf[std::size_t(to)]) {
        if (isMoved(line))
            continue;
        std::vector<int> sites = sitesOf(pairing, line);
        std::erase(sites, to);
        losesLast |= sites.empty();
        if (!measurement.lines[std::size_t(line)].sites.isEmpty())
            labels[line] = label(sites);
    }
    for (int line : moved) {
        std::vector<int> sites = sitesOf(pairing, line);
        if (losesLast && from >= 0)
            std::erase(sites, from);
        else if (losesLast)
            sites.clear();
        if (std::find(sites.begin(), sites.end(), to) == sites.end())
            sites.push_back(to);
        std::sort(sites.begin(), sites.end());
        labels[line] = label(sites);
    }
    return labels;
}

int PeakComparison::largestSite() const
{
    const auto &pairs = comparison.agreement.pairs;
    const auto found = std::max_element(pairs.begin(), pairs.end(), [](const SitePair &a, const SitePair &b) {
        return std::abs(a.difference()) < std::abs(b.difference());
    });
    return found == pairs.end() ? -1 : found->site;
}

std::optional<Agreement> PeakComparison::withoutLargest() const
{
    const int site = largestSite();
    if (site < 0 || comparison.agreement.degreesOfFreedom < 2)
        return std::nullopt;
    std::vector<std::vector<int>> linesOf = comparison.pairing.linesOf;
    linesOf[std::size_t(site)].clear();
    return Agreement::of(comparison.sites, measurement.lines, linesOf, measurement.scale);
}

} // namespace Workbench
