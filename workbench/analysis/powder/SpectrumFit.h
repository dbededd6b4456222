// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/Spectrum.h"

namespace Workbench::Powder {

/// A measured spectrum, its points in any order.
struct Measured {
    std::vector<double> ppm;
    std::vector<double> intensity;
};

/// What of the calculated spectrum may move. The intensity always does.
struct FitChoice {
    bool reference = true;
    bool lorentzian = true;
    bool gaussian = false;
    bool scale = false; ///< one factor on all quadrupole couplings
};

/// By how much the shifts may move, ppm.
struct Moves {
    double from = -50;
    double to = 50;
};

struct FittedValue {
    double value = 0;
    double error = 0; ///< standard error; 0 where it was not fitted
};

struct SpectrumFit {
    FittedValue reference; ///< what is to be added to all shifts, ppm
    FittedValue lorentzian; ///< Hz
    FittedValue gaussian; ///< Hz
    FittedValue scale; ///< of the couplings
    double intensity = 0; ///< measured intensity per calculated nucleus and ppm
    double deviation = 0; ///< standard deviation of the points, in units of the highest measured one
    int steps = 0;
    bool converged = false;
    std::vector<double> curve; ///< at the measured points, in measured intensity
};

/// Least squares over all points, each of the same weight, by the method of Levenberg and Marquardt. The reference is
/// first looked for among the moves, and widths that may move among all that the points can show. Standard errors
/// count every point as independent. Throws std::invalid_argument with what is wrong about the input; nothing when the
/// progress function asked to stop.
std::optional<SpectrumFit> fitSpectrum(std::span<const Site> sites, const Conditions &conditions,
                                       const LineShape &shape, const Measured &measured, const FitChoice &choice,
                                       const Moves &moves = {}, const Progress &progress = {});

} // namespace Workbench::Powder
