// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresAtom.h"

namespace Magres {

/// Rejoins molecules that the faces of the unit cell cut apart: tries the 26 neighbouring lattice translations on every
/// molecule and keeps one when the molecule at its new place at least doubles by the bonds it finds there. Takes the
/// atoms in file order with their bonds detected, and leaves the bonds of the result in them. `lattice`: the vectors a,
/// b, c, Angstrom; other than nine values leaves the atoms alone.
///
/// Throws MagresParseError where far more atoms are in each other's way than in any crystal, with some of them moved.
///
/// Positions and bonds are bit for bit those of trying every move on a copy of all atoms and detecting all bonds anew.
void completeMolecules(QList<MagresAtom> &atoms, const QList<double> &lattice);

} // namespace Magres
