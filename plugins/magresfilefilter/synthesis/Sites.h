// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"
#include "parameters/NuclearProperties.h"
#include "synthesis/MagresSpecParams.h"

namespace Magres {

/// How the sites of one dimension's nucleus get their chemical shifts.
struct ShiftRule {
    QByteArray nucleus;
    double reference = 0.0; // ppm
    double slope = 0.0;
    bool withQuadShift = false;
    double frequency = 0.0; // of the nucleus, MHz
    double quadrupoleMoment = 0.0; // fm^2

    /// ppm: slope * shielding + reference, plus the second-order quadrupolar shift if that is asked for and there is an
    /// EFG tensor.
    double shift(double isotropicShielding, const MagresTensor *efg) const;
};

/// The rule of dimension 0 (F2) or 1 (F1).
ShiftRule shiftRule(const MagresSpecParams &parameters, int dimension, const NuclearProperties &properties);

/// An atom of the observed element with its tensors; null where the file has none.
struct Site {
    const MagresAtom *atom = nullptr;
    const MagresTensor *shielding = nullptr;
    const MagresTensor *efg = nullptr;
};

/// In file order. The sites refer to the data.
QList<Site> sitesOf(const MagresData &data, const QByteArray &nucleus);

} // namespace Magres
