// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "numerics/InstructionSet.h"
#include "reading/MagresAtom.h"

// What stands behind detectBonds(), for tests that compare the instruction sets.

namespace Magres {

/// As detectBonds(atoms), in the variant given; it must be supported.
void detectBonds(InstructionSet set, QList<MagresAtom> &atoms);

} // namespace Magres
