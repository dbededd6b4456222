// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "synthesis/Sites.h"

#include <vector>

namespace Magres {

/// The three hydrogen atoms of an XH3 group, in file order.
using Xh3Group = QList<const MagresAtom *>;

/// A group for every centre atom with exactly three hydrogens bonded to it, in file order of the centres: carbon only,
/// or any element but hydrogen. None for other modes. The groups refer to the data.
QList<Xh3Group> xh3Groups(const MagresData &data, AveragingMode mode);

/// Averages the peaks of a 1D spectrum, group by group: all peaks that carry a label of the group give way to one at
/// the end of the list, with the labels of the group's atoms, at the mean of the positions, 1.0 + the sum of the
/// heights high. In 1D every site has its peak, so that this mean is that of the sites too, where no two share a label.
QList<SpectrumPeak> averagedSitePeaks(const QList<SpectrumPeak> &peaks, const QList<Xh3Group> &groups);

/// Averages cross peaks in one dimension (0 is F2, 1 is F1), group by group. The peaks that carry a label of the group
/// in that dimension are merged where their labels in the other dimension agree; the merged peak lies at the mean shift
/// of the group's atoms, not of the peaks: not every atom of the group need have a cross peak with that partner, and
/// yet they all move through the same places. The merged peak
/// carries all of the group's atoms. `shifts`: of `sites`, the sites of that dimension, ppm.
QList<SpectrumPeak> averagedCrossPeaks(const QList<SpectrumPeak> &peaks, const QList<Xh3Group> &groups, int dimension,
                                       const QList<Site> &sites, const std::vector<double> &shifts);

} // namespace Magres
