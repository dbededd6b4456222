// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/structure/CrystalStructure.h"

#include <optional>

namespace Workbench {

/// A crystal lattice that one can measure in: fractional coordinates and nearest images, however skewed its cell is.
class Lattice {
public:
    /// None for vectors that span no volume or are not finite.
    static std::optional<Lattice> of(const LatticeVectors &vectors);

    /// In units of a, b, c, not brought into the cell.
    Vector3 fractional(const Vector3 &position) const;
    Vector3 cartesian(const Vector3 &fractional) const;
    /// The shortest vector, Angstrom, from `from` to `to` or one of its images.
    Vector3 nearestImage(const Vector3 &from, const Vector3 &to) const;
    double distance(const Vector3 &a, const Vector3 &b) const;
    const LatticeVectors &vectors() const { return m_vectors; }

private:
    using Matrix = std::array<Vector3, 3>;

    LatticeVectors m_vectors{};
    Matrix m_inverse{}; ///< rows: a*, b*, c*
    LatticeVectors m_reduced{}; ///< the Niggli cell
    Matrix m_reducedInverse{};
};

double length(const Vector3 &vector);

} // namespace Workbench
