// SPDX-License-Identifier: BSD-3-Clause
#include "fitting/PeakPairing.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace Magres {
namespace {

/// The mean of term(experimental - simulated) over all pairs.
template <typename Term>
double weightedMean(const QList<double> &simulated, const QList<double> &experimental, const QList<double> &heights,
                    Term term)
{
    QList<std::pair<double, double>> weighted; // position, height
    weighted.reserve(simulated.size());
    for (qsizetype i = 0; i < simulated.size(); ++i)
        weighted.append({simulated[i], heights[i]});
    // Stable sorts stand positions that are not numbers.
    std::stable_sort(weighted.begin(), weighted.end(), [](const auto &a, const auto &b) { return a.first > b.first; });
    QList<double> measured = experimental;
    std::stable_sort(measured.begin(), measured.end(), std::greater<>());

    double sum = 0.0;
    double weights = 0.0;
    for (qsizetype i = 0; i < weighted.size(); ++i) {
        const auto [position, height] = weighted[i];
        sum += term(measured[i] - position) * std::abs(height);
        weights += std::abs(height);
    }
    return sum / weights;
}

} // namespace

double pairedOffset(const QList<double> &simulated, const QList<double> &experimental, const QList<double> &heights)
{
    return weightedMean(simulated, experimental, heights, [](double d) { return d; });
}

double pairedRmsd(const QList<double> &simulated, const QList<double> &experimental, const QList<double> &heights)
{
    return std::sqrt(weightedMean(simulated, experimental, heights, [](double d) { return d * d; }));
}

} // namespace Magres
