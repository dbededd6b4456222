// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/Lattice.h"

#include <optional>
#include <span>

namespace Workbench {

/// All that a cell of a column may need, of one atom or unique site.
struct SiteValues {
    const CrystalAtom &atom;
    const Lattice *lattice = nullptr;
    int multiplicity = 1; ///< atoms of the site in the cell
    double reference = 0; ///< ppm, of the shifts
    double slope = -1;
    double quadrupoleMoment = 0; ///< fm^2, of the chosen isotope
    double spin = 0;
    double larmorFrequency = 0; ///< MHz, of the chosen isotope
};

/// A column that the table can have besides its own.
struct SiteColumn {
    /// On what its values rest besides the tensor and the position of the atom.
    enum class Basis { Tensor, Scale, Isotope, Field, Symmetry };

    const char *name; ///< as options have it
    const char *title; ///< with the unit
    const char *explanation; ///< formula and convention, one sentence; to be translated as one of Texts
    int digits; ///< behind the point, in text
    Basis basis;
    /// None where the site has no such value.
    std::optional<double> (*value)(const SiteValues &site);
};

/// Every such column, in the order in which they are offered.
std::span<const SiteColumn> siteColumns();

/// Null for a name that is none's.
const SiteColumn *siteColumn(const QString &name);

} // namespace Workbench
