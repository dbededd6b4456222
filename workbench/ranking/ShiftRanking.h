// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/NucleusComparison.h"
#include "ranking/RankTable.h"

namespace Workbench {

/// What structures are ranked by: the shifts of any number of nuclei.
struct ShiftRanking {
    /// The plug-in's start where nobody gives a reference, ppm.
    static constexpr double usualReference = 100;

    std::vector<NucleusMeasurement> measurements; ///< with references that are free
    std::vector<double> startReferences; ///< ppm, one for each, from which offsets count
    UniqueSites::Options sites;

    /// Fills the row in; where this throws (std::runtime_error), the row is to fail().
    void compare(const CrystalStructure &structure, RankRow &row) const;
    /// On what the numbers hang: RankRow::basis.
    QString basis() const;
    /// Where places were compared in place of the lines, for whom reads the ranking.
    QStringList notesOn(const std::vector<RankRow> &rows) const;
    /// Of a single nucleus: without a name.
    RankLayout layout() const;

private:
    void takeSingle(const CrystalStructure &structure, const NucleusComparison &comparison,
                    const NucleusMeasurement &measurement, RankRow &row) const;
};

} // namespace Workbench
