// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/Lattice.h"

namespace Workbench {

/// Whether some operation of a space group, other than the translations of the lattice, may map each atom onto one of
/// its element within the tolerance (Angstrom). True more easily than the full search for the group would say: it
/// spares crystals that have none the search.
bool mayHaveSymmetry(const CrystalStructure &structure, const Lattice &lattice, double tolerance);

} // namespace Workbench
