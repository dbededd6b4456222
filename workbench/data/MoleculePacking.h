// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Molecule.h"

namespace Workbench {

/// How much of a crystal is shown.
struct Packing {
    enum class Contents {
        Molecules, ///< atoms where the description has them
        Cell ///< atoms brought into the cell, those on its faces, edges and corners at each of them
    };

    Contents contents = Contents::Molecules;
    std::array<int, 3> cells{1, 1, 1}; ///< along a, b, c

    bool operator==(const Packing &) const = default;
};

/// An atom of a molecule, moved by whole cells from where the molecule has it.
struct AtomImage {
    int atom = 0;
    std::array<int, 3> cell{};

    bool operator==(const AtomImage &) const = default;
};

/// A molecule repeated through its crystal.
struct PackedMolecule {
    static constexpr size_t mostAtoms = 50000;

    Molecule molecule; ///< what is drawn, about its own middle; its cell is the first one
    std::vector<AtomImage> images; ///< of each of its atoms
    std::vector<int> first; ///< by the atom of the original: its image that comes first, -1 for none
    std::array<int, 3> cells{1, 1, 1}; ///< less than wanted where there would be too many atoms
    QVector3D shift; ///< from the original's coordinates to these

    /// Without a cell, the molecule as it is. Bonds between images are those of pairs as near as some pair of the same
    /// elements that has a bond in the original.
    static PackedMolecule of(const Molecule &original, const Packing &packing);
};

} // namespace Workbench
