// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CommandLine.h"
#include "formats/ReferenceSet.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace Workbench {

/// One spectrum dimension as the user wants it; what is not set is left to the plug-in.
struct DimensionOptions {
    QString nucleus;
    std::optional<double> reference; ///< ppm
    std::optional<double> slope;
    std::optional<double> lineWidth; ///< Hz
    std::optional<int> points;
    std::optional<std::pair<double, double>> range; ///< ppm
    bool quadrupolarShift = false;
};

/// The options that `simulate`, `fit`, `rmsd` and `render` share.
struct SimulateOptions {
    /// F2, then F1.
    DimensionOptions dimension[2];
    bool twoDimensional = false;
    double frequency = 600; ///< of 1H, MHz
    int averaging = 0; ///< none, CH3, all XH3
    int correlation = 0; ///< strongest dipolar coupling, root sum square
    QMap<QString, QString> isotopes; ///< element → quadrupolar isotope
    std::vector<ReferenceSet> sets; ///< that references and slopes were taken from

    bool homonuclear() const { return twoDimensional && dimension[0].nucleus == dimension[1].nucleus; }

    static const std::vector<OptionSpec> &specs();

    /// Throws UsageError.
    static SimulateOptions parse(const CommandLine &line);
};

/// The `--isotope El=NUC` options. Throws UsageError when NUC is no isotope of El with spin above 1/2.
QMap<QString, QString> parseIsotopes(const CommandLine &line);
const OptionSpec &isotopeSpec();

} // namespace Workbench
