// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/structure/CrystalStructure.h"

namespace Workbench {

/// Eigenvalues of the tensor's symmetric part, ascending. The antisymmetric part moves lines only in second order,
/// beyond what solids show.
Vector3 eigenvalues(const Tensor3 &tensor);

/// Of an electric field gradient: |Vzz| >= |Vyy| >= |Vxx|, atomic units.
struct GradientValues {
    double Vxx = 0, Vyy = 0, Vzz = 0;
    Vector3 zAxis{}; ///< of Vzz, a unit vector

    explicit GradientValues(const Tensor3 &gradient);
    /// (Vxx - Vyy) / Vzz, 0 to 1; 0 where there is no gradient.
    double eta() const { return Vzz == 0 ? 0 : (Vxx - Vyy) / Vzz; }
    /// e Q Vzz / h with the sign of Vzz, MHz; quadrupole moment in fm^2.
    double Cq(double quadrupoleMoment) const;
    /// Cq sqrt(1 + eta^2 / 3) without its sign, MHz.
    double quadrupolarProduct(double quadrupoleMoment) const;
};

/// By how much the second-order interaction moves the centre of gravity of the central transition, ppm; half-integer
/// spins from 3/2 on, 0 for others. Product in MHz, Larmor frequency in MHz. A. Samoson, Chem. Phys. Lett. 119
/// (1985) 29.
double quadrupoleInducedShift(double quadrupolarProduct, double larmorFrequency, double spin);

} // namespace Workbench
