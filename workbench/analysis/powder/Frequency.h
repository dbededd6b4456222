// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/KernelLoops.h"
#include "analysis/powder/Model.h"

#include <utility>
#include <vector>

namespace Workbench::Powder {

/// One transition of a spin. Frequencies in Hz from the reference; A and q of the form are without trace.
struct Transition {
    FrequencyForm form;
    double weight = 1; ///< of a spin's transitions; they add up to 1
};
std::vector<Transition> transitions(const Site &site, const Conditions &conditions);

/// Mean over a period of a rotor at the magic angle, as a function of its axis.
FrequencyForm spinningMean(const FrequencyForm &form);

/// Mean over all directions.
double mean(const FrequencyForm &form);

double valueAt(const FrequencyForm &form, const std::array<double, 3> &direction);

/// Lowest and highest value over all directions.
std::pair<double, double> extremes(const FrequencyForm &form);

/// Lowest and highest difference from the mean over a rotor period, over all directions of the rotor.
std::pair<double, double> modulationExtremes(const FrequencyForm &form);

} // namespace Workbench::Powder
