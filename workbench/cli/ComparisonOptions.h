// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/NucleusComparison.h"
#include "cli/CommandLine.h"
#include "formats/ReferenceSet.h"

namespace Workbench {

/// How structures are compared with measured lines, as the user wants it.
struct ComparisonOptions {
    struct Nucleus {
        QString name;
        QString experiment; ///< file or folder
        std::optional<double> reference; ///< ppm
        std::optional<double> slope;
        bool fitsSlope = false;
        std::optional<double> sigma; ///< ppm
        double window = 20; ///< ppm
        std::optional<ReferenceSet> set;
    };

    std::vector<Nucleus> nuclei; ///< in the order given, each once
    UniqueSites::Options sites;
    int unmatched = 0;
    bool ignoresLabels = false;

    static std::vector<OptionSpec> specs();
    /// Throws UsageError; std::runtime_error for sets that cannot be read.
    static ComparisonOptions parse(const CommandLine &line);

    /// Reads the experiments; what was assumed in doing so goes to `notes`. Errors name the file.
    std::vector<NucleusMeasurement> read(QStringList *notes) const;
};

/// The `--reference-set` options: one set a nucleus. Throws UsageError for two of one nucleus, and for sets of others
/// than these nuclei, unless there are none.
std::vector<ReferenceSet> parseReferenceSets(const CommandLine &line, const QStringList &nuclei);
/// What is not given of a nucleus comes from its set, if there is one.
void fillFrom(const std::vector<ReferenceSet> &sets, const QString &nucleus, std::optional<double> &reference,
              std::optional<double> &slope);
const OptionSpec &referenceSetOption();
/// The only `--experiment` where whole spectra are compared, with or without the nucleus of its F2 before it. Throws
/// UsageError; std::runtime_error when there is no such file.
QString singleExperiment(const CommandLine &line);

/// One line for each set that another method of calculation was used for than for this file; empty when all agree.
QString methodWarning(const ReferenceSet &set, const QString &file);

/// Values of an option that is "NUC=VALUE", or the value alone for a single nucleus. Throws UsageError.
QMap<QString, QString> valuesByNucleus(const CommandLine &line, const char *option, const QStringList &nuclei);

/// The `--average` option: none, ch3, xh3.
UniqueSites::Averaging parseAveraging(const CommandLine &line);
const OptionSpec &symmetryToleranceOption();
/// 0 switches the search for symmetry off.
double parseSymmetryTolerance(const CommandLine &line);

} // namespace Workbench
