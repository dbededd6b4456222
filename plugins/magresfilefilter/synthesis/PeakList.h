// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"
#include "reading/MagresData.h"
#include "synthesis/MagresSpecParams.h"

namespace Magres {

/// The peaks of the spectrum that the parameters describe: one per site of nucF2 in 1D, one per correlated pair of
/// sites in 2D, in file order of the F2 sites, with the averaged peaks of XH3 groups behind. Throws TPluginError when a
/// site of an observed nucleus has no shielding, or one that gives no finite shift.
QList<SpectrumPeak> makePeaks(const MagresData &data, const MagresSpecParams &parameters,
                              const NuclearProperties &properties);

/// By F2 position, descending, then by F1 position, descending; equal peaks keep their order.
void sortPeaks(QList<SpectrumPeak> &peaks);

} // namespace Magres
