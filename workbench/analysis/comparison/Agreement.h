// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/LinePairing.h"

namespace Workbench {

/// How a sum of squares compares with the errors that are expected.
struct ChiSquare {
    double value = 0;
    int degreesOfFreedom = 0;
    /// Of a value as large or larger by chance; none without degrees of freedom.
    std::optional<double> p;

    static ChiSquare of(double value, int degreesOfFreedom);
    /// "p = 0.012", "p < 0.0001"; empty where there is none.
    QString pText() const;
};

/// One site and what was measured of it.
struct SitePair {
    int site = 0;
    std::vector<int> lines;
    double calculated = 0; ///< ppm, reference + slope · shielding
    double measured = 0; ///< ppm, mean of the lines
    double difference() const { return calculated - measured; }
};

/// Sites against measured lines, once it is settled which belong together.
struct Agreement {
    struct Options {
        std::optional<double> slope = -1.0; ///< none: fitted
        std::optional<double> reference; ///< ppm; none: the mean, weighted with the nuclei of the sites
    };

    double reference = 0;
    double slope = -1;
    std::vector<SitePair> pairs; ///< of the sites that have lines, as these are ordered
    double rmsd = 0; ///< ppm; each site counts once
    double largest = 0; ///< the difference of largest magnitude, with its sign
    /// Least sum of squared differences, each site once, ppm²: about the plain mean where the reference is free, which
    /// the shown reference is not quite when numbers of nuclei differ. Only the least sum follows the χ² distribution.
    double leastSquares = 0;
    /// Mean of measured - slope · calculated shielding, each site once, ppm, and the mean shielding.
    double plainReference = 0;
    double meanShielding = 0;
    int degreesOfFreedom = 0;

    /// Throws std::runtime_error when no site has a line.
    static Agreement of(const std::vector<ComparedSite> &sites, const std::vector<MeasuredLine> &lines,
                        const std::vector<std::vector<int>> &linesOf, const Options &options);

    /// Against an error of every site, ppm.
    ChiSquare chiSquare(double sigma) const;
};

/// How well periodic calculations usually meet measured shifts, root mean square, ppm; none for other nuclei. 1H, 13C,
/// 15N and 17O of molecular crystals, GIPAW with PBE.
std::optional<double> usualError(const QString &nucleus);

} // namespace Workbench
