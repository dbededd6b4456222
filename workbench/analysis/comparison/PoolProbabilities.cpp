// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/PoolProbabilities.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace Workbench {

double logLikelihood(const Evidence &evidence, const ReferencePrior &prior)
{
    const double n = evidence.sites;
    const double variance = evidence.sigma * evidence.sigma;
    // The differences among the sites; what is left to say is where their mean lies.
    const double shape = -(n - 1) / 2 * std::log(2 * std::numbers::pi * variance) - 0.5 * std::log(n)
        - evidence.leastSquares / (2 * variance);
    if (!prior.gaussian)
        return shape - std::log(prior.window);
    const double spread = prior.gaussian->error * prior.gaussian->error + variance / n;
    const double distance = evidence.meanReference - prior.gaussian->mean;
    return shape - 0.5 * std::log(2 * std::numbers::pi * spread) - distance * distance / (2 * spread);
}

std::vector<double> poolProbabilities(const std::vector<double> &logLikelihoods, const std::vector<double> &logWeights)
{
    std::vector<double> result(logLikelihoods.size(), 0.0);
    double largest = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < result.size(); ++i)
        if (const double value = logLikelihoods[i] + logWeights[i]; std::isfinite(value))
            largest = std::max(largest, value);
    double sum = 0;
    for (std::size_t i = 0; i < result.size(); ++i) {
        const double value = logLikelihoods[i] + logWeights[i];
        result[i] = std::isfinite(value) ? std::exp(value - largest) : 0;
        sum += result[i];
    }
    if (sum > 0)
        for (double &probability : result)
            probability /= sum;
    return result;
}

std::vector<double> boltzmannWeights(const std::vector<double> &energies, double temperature)
{
    constexpr double gasConstant = 8.31446261815324e-3; // kJ / (mol K), CODATA 2018
    std::vector<double> weights;
    for (double energy : energies)
        weights.push_back(0.0 - energy / (gasConstant * temperature)); // 0, not -0, for 0
    return weights;
}

} // namespace Workbench
