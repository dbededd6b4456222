// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/TensorAnalysis.h"

#include <QByteArrayList>
#include <QVariantMap>

namespace Magres {

/// One shielding (ppm) or electric-field-gradient (atomic units) tensor. It belongs to the atom with the same label and
/// index, never to one at the same list position.
struct MagresTensor {
    QByteArrayList labels; ///< the reader makes exactly one
    qint32 No = 0; ///< index within the label
    Tensor tensor{}; ///< as read, not symmetrised
    PrincipalValues principalValues;

    MagresTensor() = default;
    MagresTensor(const QByteArrayList &labels, qint32 No, const Tensor &tensor);

    /// A third of the trace.
    double iso() const;
    /// Anisotropy zz - (xx + yy) / 2 in Haeberlen order; 0 without principal values, like all that follow.
    double aniso() const;
    /// Asymmetry (yy - xx) / (zz - iso). Infinite or not a number for an isotropic tensor.
    double assym() const;
    /// |Vzz|, atomic units.
    double eq() const;
    /// Quadrupolar asymmetry (|Vxx| - |Vyy|) / |Vzz|, from 0 to 1 for a traceless tensor.
    double qassym() const;
    /// Quadrupolar coupling constant e Q Vzz / h, MHz, unsigned as |Vzz| is. Quadrupole moment in fm^2.
    double Cq(double quadrupoleMoment) const;
    /// Second-order quadrupolar shift of the m-1 <-> m transition of a spin-1 nucleus, ppm; 0 for other isotopes than
    /// "2H", "6Li" and "14N". Quadrupole moment of the isotope in fm^2, its spectrometer frequency in MHz.
    double secondOrderQuadShift(const QByteArray &isotope, double quadrupoleMoment, double frequencyMHz, int m) const;

    QVariantMap toMap() const;
    void fromMap(const QVariantMap &map);
};

} // namespace Magres

Q_DECLARE_TYPEINFO(Magres::MagresTensor, Q_RELOCATABLE_TYPE);
