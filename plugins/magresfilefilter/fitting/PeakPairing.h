// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>

namespace Magres {

// Peaks of a simulated and an experimental spectrum are paired by rank of position, in one dimension at a time: largest
// with largest, second largest with second largest. All lists have the same length; positions in ppm. The absolute
// heights of the simulated peaks are the weights. Not a number when there are no peaks or all weights are zero.

/// The weighted mean of experimental minus simulated position, ppm.
double pairedOffset(const QList<double> &simulated, const QList<double> &experimental, const QList<double> &heights);

/// The weighted root-mean-square deviation of the positions, ppm.
double pairedRmsd(const QList<double> &simulated, const QList<double> &experimental, const QList<double> &heights);

} // namespace Magres
