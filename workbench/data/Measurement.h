// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/ExperimentalSpectrum.h"

#include <array>
#include <stdexcept>
#include <variant>

namespace Workbench {

struct MeasuredPeak {
    double f2 = 0.0; ///< ppm
    double f1 = 0.0; ///< ppm; 0 in one dimension
    double height = 1.0;
    QString label = {}; ///< as the file names the peak
    int count = 0; ///< of equivalent sites; 0: the file does not say

    bool operator==(const MeasuredPeak &) const = default;
};

/// A list of peaks as its file gives it.
struct MeasuredPeaks {
    QString title;
    int dimensions = 1;
    std::array<QString, 2> nuclei; ///< F2, F1; empty: the file does not say
    std::vector<MeasuredPeak> peaks; ///< in the order of the file
    QString format;
    QStringList notes; ///< as in ExperimentalSpectrum
};

/// What a measured file holds.
using Measurement = std::variant<ExperimentalSpectrum, MeasuredPeaks>;

/// The positions of a file are frequencies, and it does not say by what they become ppm.
struct FrequencyNeeded : std::runtime_error {
    explicit FrequencyNeeded(const QString &text, int dimensionCount = 1, bool isUnitKnown = true)
        : std::runtime_error(text.toStdString()), dimensions(dimensionCount), unitKnown(isUnitKnown)
    {
    }
    int dimensions;
    bool unitKnown; ///< false: they might be Hz, kHz or even ppm
};

/// What is known of a measurement besides its file, for what the file leaves open.
struct ReadOptions {
    int dimensions = 0; ///< of the spectrum that is looked for; 0: any
    QString nucleus; ///< of the shifts that are looked for in a table with those of several nuclei; empty: all
    QString unit; ///< of positions in plain text: "ppm", "Hz" or "kHz"; empty: as the file says
    std::array<double, 2> frequency{}; ///< MHz, of 0 ppm, F2 and F1: turns Hz into ppm; 0: as the file says
};

} // namespace Workbench
