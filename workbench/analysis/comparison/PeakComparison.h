// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/NucleusComparison.h"
#include "data/Spectrum.h"

namespace Workbench {

/// The names of sites in the label of a peak: "C1", "C1,C2", "C1 ×4/C2".
QStringList assignedSites(const QString &label);

/// A structure against the peaks of a spectrum in a document.
struct PeakComparison {
    NucleusMeasurement measurement; ///< with the lines of the peaks
    std::vector<QList<QUuid>> peaks; ///< of each line
    NucleusComparison comparison;
    bool dropsNumbers = false; ///< of peaks at one place, into which the sites do not go

    /// The lines of `measurement` come from the peaks. Peaks at one place are a line that counts as often, where these
    /// counts can be met; else lines of their own, or one line. Throws as NucleusComparison::of().
    static PeakComparison of(const CrystalStructure &structure, const UniqueSites &unique,
                             NucleusMeasurement measurement, const QList<SpectrumPeak> &peaks);

    /// Each peak as a line of its own, as lists have them.
    static std::vector<MeasuredLine> linesOf(const QList<SpectrumPeak> &peaks);

    /// The label of each line whose label changes when these lines are put onto a site by hand, away from the site
    /// `from` (-1: from whichever they have), with what else they were paired with. Lines without a label find sites by
    /// themselves: a line that loses its only site gets the chance of the one that these lines leave.
    std::map<int, QString> labelsAfter(const std::vector<int> &moved, int from, int to) const;

    /// The agreement of all others when the site of the largest difference is left out; none where little would be
    /// left.
    std::optional<Agreement> withoutLargest() const;
    /// The site of the largest difference, -1 for none.
    int largestSite() const;
};

} // namespace Workbench
