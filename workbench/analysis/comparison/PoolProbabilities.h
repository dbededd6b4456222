// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <vector>

namespace Workbench {

/// What is known of a shift reference before the spectrum is looked at.
struct ReferencePrior {
    double window = 20; ///< ppm: anywhere in a range of this width
    /// A calibration's reference and its standard error, ppm: a normal distribution in place of the window.
    struct Gaussian {
        double mean = 0;
        double error = 0;
    };
    std::optional<Gaussian> gaussian;
};

/// What one nucleus of a structure says.
struct Evidence {
    int sites = 0;
    double leastSquares = 0; ///< about the mean of the differences, ppm²
    double meanReference = 0; ///< mean of measured - slope · shielding, ppm
    double sigma = 1; ///< error of a site, ppm
};

/// The probability density of the measured shifts, given the structure, with every reference counted by the prior. For
/// a window W: -((n-1)/2) ln(2πσ²) - ½ ln n - SSR/(2σ²) - ln W, which takes the window to be wide.
double logLikelihood(const Evidence &evidence, const ReferencePrior &prior);

/// Of the members of a pool, given that one of them is right. `logWeights` of the priors need no common scale. Members
/// that are not finite get 0; a pool without any finite one gives zeros.
std::vector<double> poolProbabilities(const std::vector<double> &logLikelihoods, const std::vector<double> &logWeights);

/// Boltzmann's weights, as logarithms. Energies in kJ/mol, temperature in K.
std::vector<double> boltzmannWeights(const std::vector<double> &energies, double temperature);

} // namespace Workbench
