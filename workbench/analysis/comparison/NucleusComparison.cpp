// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/NucleusComparison.h"

#include "data/Error.h"
#include "data/Nuclides.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

std::vector<ComparedSite> comparedSites(const CrystalStructure &structure, const std::vector<UniqueSite> &sites)
{
    std::vector<ComparedSite> compared;
    for (const UniqueSite &site : sites) {
        ComparedSite result{site.name, {}, 0, site.nuclei(), site.lines, {}};
        for (int atom : site.atoms) {
            const CrystalAtom &member = structure.atoms[std::size_t(atom)];
            if (!member.shielding)
                fail(Texts::tr("atom %1 has no shielding").arg(structure.name(atom)));
            result.labels.append(structure.name(atom));
            for (const QString &label : member.labels) {
                if (label != member.element) // which says no more than the nucleus
                    result.commonLabels.append(label);
            }
        }
        // A label that the site's atoms share with no others.
        result.labels.append(withoutMultiplicity(result.name));
        result.shielding = *site.shielding;
        compared.push_back(std::move(result));
    }
    return compared;
}

namespace {

/// Pairs are sought at what is known of the reference, as the likelihood counts it.
LinePairing::Options pairingOptions(const NucleusMeasurement &measurement, const std::vector<ComparedSite> &sites)
{
    LinePairing::Options options{measurement.scale.slope, measurement.unmatched, measurement.scale.reference};
    if (const auto &set = measurement.calibration; set && !options.reference) {
        double shielding = 0; // mean
        for (const ComparedSite &site : sites)
            shielding += site.shielding / double(sites.size());
        options.reference = set->reference;
        if (measurement.sigma)
            options.referenceWeight = *measurement.sigma * *measurement.sigma / set->lineVariance(shielding);
    }
    return options;
}

} // namespace

NucleusComparison NucleusComparison::of(const CrystalStructure &structure, const UniqueSites &unique,
                                        const NucleusMeasurement &measurement)
{
    NucleusComparison result;
    result.nucleus = measurement.nucleus;
    result.atoms = unique.ofElement(Nuclides::element(measurement.nucleus));
    if (result.atoms.empty())
        fail(Texts::tr("there is no site of %1").arg(measurement.nucleus));
    result.sites = comparedSites(structure, result.atoms);
    result.pairing = LinePairing::of(result.sites, measurement.lines, pairingOptions(measurement, result.sites));
    result.agreement = Agreement::of(result.sites, measurement.lines, result.pairing.linesOf, measurement.scale);
    if (measurement.sigma)
        result.chiSquare = result.agreement.chiSquare(*measurement.sigma);
    return result;
}

NucleusComparison NucleusComparison::ofPlaces(const CrystalStructure &structure, const UniqueSites &unique,
                                              NucleusMeasurement &measurement)
{
    NucleusMeasurement places = measurement;
    places.lines = mergedLines(measurement.lines);
    if (places.lines.size() == measurement.lines.size())
        return of(structure, unique, measurement);
    std::optional<NucleusComparison> listed;
    try {
        listed = of(structure, unique, measurement);
        if (listed->pairing.mode == LinePairing::Mode::Equal)
            return *listed;
    } catch (const std::exception &) {
        // What lines of their own cannot be, places may.
    }
    try {
        NucleusComparison result = of(structure, unique, places);
        measurement = std::move(places);
        return result;
    } catch (const std::exception &) {
        if (listed)
            return *listed;
    }
    const bool isCounted = std::any_of(measurement.lines.begin(), measurement.lines.end(),
                                       [](const MeasuredLine &line) { return line.count.has_value(); });
    for (MeasuredLine &place : places.lines) {
        if (!isCounted) // in a column, which says why it cannot be met
            place.count.reset();
    }
    measurement = std::move(places);
    return of(structure, unique, measurement);
}

QString placesNote(const QString &nucleus, std::size_t lines, std::size_t places)
{
    return places == lines
        ? QString()
        : Texts::tr("%1: the %2 lines lie at %3 places, which were compared").arg(nucleus).arg(lines).arg(places);
}

std::optional<double> NucleusComparison::logLikelihood(const NucleusMeasurement &measurement, double factor) const
{
    if (!measurement.sigma)
        return std::nullopt;
    ReferencePrior prior{measurement.window, {}};
    if (const auto &calibration = measurement.calibration) {
        const double error = std::sqrt(calibration->lineVariance(agreement.meanShielding));
        prior.gaussian = ReferencePrior::Gaussian{calibration->reference, error};
    }
    return Workbench::logLikelihood(
        {int(agreement.pairs.size()), agreement.leastSquares, agreement.plainReference, *measurement.sigma * factor},
        prior);
}

} // namespace Workbench
