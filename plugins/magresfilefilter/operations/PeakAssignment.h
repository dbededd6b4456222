// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"
#include "support/WrMainScene.h"
#include "synthesis/MagresSpecParams.h"

namespace Magres {

/// Notes in the molecule item's map which peaks of an entry belong to which atoms, so that the host can link them;
/// notes of an earlier state of the entry go. Nothing happens when the molecule is not on the page.
///
/// The notes are the list "NMRAssignments", one map per dimension: "Origin" (the entry's QUuid), "Nucleus" ({"Isotope",
/// "Name"}), "SpecType" (0 1D, 1 2D) and "Shifts", a list with one map per peak: "Nums" (the atoms' positions in the
/// file, from 0), "ACount" (how many), "Value" (ppm), "Value.Method" ("MAGRES"), "Value.Error" (0) and "AssignedPeaks"
/// (a list with the peak's QUuid).
void assignPeaks(const WrMainScene &scene, const MagresData &data, const MagresSpecParams &parameters,
                 const QUuid &entry);

} // namespace Magres
