// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/structure/CrystalStructure.h"

namespace Workbench {

/// Atoms that give one line: those that the space group maps onto each other.
struct UniqueSite {
    QString element;
    QString name; ///< "C1", or "C1 ×4" for a site of several atoms
    std::vector<int> atoms; ///< positions in CrystalStructure::atoms, ascending
    int shown = 0; ///< whose tensors stand for the site: the first atom that lacks none which another one has
    int lines = 0; ///< peaks without symmetry: the atoms, where an averaged XH3 group counts as one
    std::optional<double> shielding; ///< isotropic, ppm, mean over the atoms that have one

    int nuclei() const { return int(atoms.size()); }
};

/// "C1" of "C1 ×4"; so in a text that names several sites.
QString withoutMultiplicity(QString names);

struct UniqueSites {
    /// Which XH3 groups turn fast enough to give one line.
    enum class Averaging { None, Ch3, Xh3 };
    struct Options {
        double tolerance = 0.02; ///< of positions, Angstrom; 0: every atom is a site of its own
        Averaging averaging = Averaging::None;
        bool operator==(const Options &) const = default;
    };

    std::vector<UniqueSite> sites; ///< by their first atoms, in the order of the file
    QString spaceGroup; ///< "P2_1/c (14)"; empty where it was not looked for or found
    QStringList warnings;

    /// Isotropic shieldings of one site spread by no more than this, ppm.
    static constexpr double mostSpread = 0.5;
    /// Field gradients, |Vzz| √(1 + η²/3), of one site differ by no more than this part of the largest.
    static constexpr double mostGradientSpread = 0.05;

    /// The search for symmetry takes the square of the number of atoms; beyond this it is not begun.
    static constexpr int mostAtoms = 3000;

    /// With a lattice by its space group (spglib: A. Togo, I. Tanaka, arXiv:1808.01590), without one by equal tensors.
    /// Atoms that the space group calls equal but whose shieldings differ by more than mostSpread stay apart, with a
    /// warning: a calculation that has not the symmetry of its positions is to be looked at. So is one whose field
    /// gradients differ; those atoms stay together.
    static UniqueSites of(const CrystalStructure &structure, const Options &options);

    std::vector<UniqueSite> ofElement(const QString &element) const;
};

} // namespace Workbench
