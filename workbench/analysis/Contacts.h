// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/MoleculePacking.h"

#include <QString>

namespace Workbench {

/// An atom near another one, in whichever cell.
struct Contact {
    AtomImage image;
    double distance = 0; ///< Angstrom
};

/// The atoms nearest to one, images in other cells included, by distance. None farther than `reach` (Angstrom), and no
/// more than `most`.
std::vector<Contact> nearestContacts(const Molecule &molecule, int atom, double reach, size_t most);

/// Of two nuclei at a distance in Angstrom: -mu0 hbar gamma_a gamma_b / (8 pi^2 r^3), Hz. 0 where a gyromagnetic ratio
/// is not known.
double dipolarCoupling(const QString &a, const QString &b, double distance);

/// The nucleus of an element whose couplings one would measure: the most abundant of spin 1/2, else the most abundant;
/// empty for an element without NMR nuclei.
QString usualNucleus(const QString &element);

} // namespace Workbench
