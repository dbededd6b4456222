// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <limits>
#include <optional>
#include <stdexcept>
#include <vector>

namespace Workbench {

/// A site whose calculated shift is held against measured lines.
struct ComparedSite {
    QString name;
    QStringList labels; ///< by which a peak list may call it
    double shielding = 0; ///< isotropic, ppm
    int nuclei = 1;
    int lines = 1; ///< that it would give if its symmetry were not known
    QStringList commonLabels = {}; ///< of the file, which other sites may bear too
};

struct MeasuredLine {
    double shift = 0; ///< ppm
    std::optional<double> count; ///< nuclei, relative to those of the other lines
    QStringList sites; ///< labels of the sites that the line was assigned to
};

/// A line names a site that there is not, or it is not clear which.
class UnknownSite : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Lines at one place that name the same sites are one, which counts as often as it was listed unless all were listed
/// equally often; what lines count themselves adds up. Of each, `from` tells which of the lines it was made of.
std::vector<MeasuredLine> mergedLines(const std::vector<MeasuredLine> &lines,
                                      std::vector<std::vector<int>> *from = nullptr);

/// Which lines belong to which sites.
struct LinePairing {
    enum class Mode {
        Assigned, ///< every line names its sites
        Equal, ///< by order, as many lines as sites or as atoms
        Overlap, ///< several sites a line
        Unmatched, ///< more lines than sites: some are left out
    };
    static constexpr int mostUnmatched = 1000; ///< that a user may ask for
    struct Options {
        std::optional<double> slope = -1.0; ///< of the shift over the shielding; none: fitted along
        int unmatched = 0; ///< lines that may be left out where there are more than sites
        std::optional<double> reference = std::nullopt; ///< ppm; none: fitted along
        /// Of the reference beside the sites, each of which has 1: the squared ratio of a site's error to its own.
        double referenceWeight = std::numeric_limits<double>::infinity();
    };

    Mode mode = Mode::Equal; ///< of the lines that name no site, unless all do
    int assignedLines = 0; ///< lines that name their sites
    bool byCounts = false; ///< nuclei of the lines have fixed the overlap
    std::vector<std::vector<int>>
        linesOf; ///< by site; empty for a site without a line, several where each atom has one
    std::vector<int> leftOut; ///< lines

    /// Lines that name sites go there; one that alone has a label of several sites goes to all of them. The others go
    /// to the sites that are left, so that the sum of squared differences, each site once, is least at the reference
    /// (and with what that differs from the one expected, where it has a weight), or at the best one: by order where
    /// the numbers are equal; else sites sorted by shift are cut into groups, one a line. Given the counts of these
    /// lines, groups have these numbers of nuclei up to a common factor; groups then need not be neighbours where the
    /// sites' own numbers differ. Lines that name sites and have counts share the factor, and take more sites where
    /// they name too few. Throws UnknownSite, or std::runtime_error when lines are too many or counts cannot be met.
    static LinePairing of(const std::vector<ComparedSite> &sites, const std::vector<MeasuredLine> &lines,
                          const Options &options);

    /// "equal", "overlap by counts", "2 assigned, overlap"…
    QString text() const;
};

} // namespace Workbench
