// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresAtom.h"

namespace Magres {

/// Fills the `bonds` of every atom from covalent radii: two atoms are bonded when their distance is below 1.1 times the
/// sum of the radii. Atoms of unknown elements are never bonded. The list must be in file order. The time
/// grows with the number of atoms, as long as they lie no denser than in matter.
void detectBonds(QList<MagresAtom> &atoms);

} // namespace Magres
