// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/Agreement.h"
#include "analysis/comparison/PoolProbabilities.h"
#include "analysis/comparison/ShiftCalibration.h"
#include "analysis/comparison/UniqueSites.h"

namespace Workbench {

/// What was measured of one nucleus, and how it is held against structures.
struct NucleusMeasurement {
    QString nucleus;
    std::vector<MeasuredLine> lines;
    Agreement::Options scale;
    int unmatched = 0; ///< lines that may be left out
    std::optional<double> sigma; ///< error of a calculated shift, ppm; none where it is not known
    double window = 20; ///< ppm, where the reference may lie
    /// Knows the reference beforehand, in place of the window; `scale` then has its slope.
    std::optional<ShiftCalibration> calibration;
};

/// One structure against the lines of one nucleus.
struct NucleusComparison {
    QString nucleus;
    std::vector<UniqueSite> atoms; ///< of each site
    std::vector<ComparedSite> sites;
    LinePairing pairing;
    Agreement agreement;
    std::optional<ChiSquare> chiSquare; ///< where the error is known

    /// Throws std::runtime_error when there is no such site, one has no shielding, or lines and sites cannot be paired.
    static NucleusComparison of(const CrystalStructure &structure, const UniqueSites &unique,
                                const NucleusMeasurement &measurement);

    /// The same of lists that may name a place as often as equivalent atoms would give it, which other structures have
    /// fewer of. Unless the lines are as many as the sites or atoms, each place is a line that counts as often, where
    /// these counts can be met; else the lines are taken as they stand, or each place once. The measurement then has
    /// what was compared. Likelihoods stay comparable: they count sites, not lines.
    static NucleusComparison ofPlaces(const CrystalStructure &structure, const UniqueSites &unique,
                                      NucleusMeasurement &measurement);

    /// Of the lines, with errors `factor` times as large as the measurement says; none where it does not.
    std::optional<double> logLikelihood(const NucleusMeasurement &measurement, double factor) const;
};

/// That places were compared in place of the lines; empty where they are as many.
QString placesNote(const QString &nucleus, std::size_t lines, std::size_t places);

/// The sites of an element as they are compared. Throws as NucleusComparison::of().
std::vector<ComparedSite> comparedSites(const CrystalStructure &structure, const std::vector<UniqueSite> &sites);

} // namespace Workbench
