// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/MagresTensor.h"
#include "reading/MagresAtom.h"

#include <QUuid>

class QSettings;

namespace Magres {

/// The content of one MAGRES file. A plain value: copies are cheap and independent.
///
/// Lists are in file order after reading, but in the order of their keys as texts ("0", "1", "10", …) after fromMap();
/// file order is the order of recordNo. Tensors are tied to atoms by label and index only.
struct MagresData {
    QUuid ID = QUuid::createUuid(); ///< spectra made from this data refer to it
    QUuid molItemID; ///< the molecule item made of the atoms
    QList<double> lattice; ///< vectors a, b, c, each x, y, z, Angstrom; empty without a lattice record
    QList<MagresAtom> atoms;
    QList<MagresTensor> shieldings;
    QList<MagresTensor> EFG;
    bool numberToLabel = true; ///< labels were formed from species and index
    QVariantMap QIso; ///< element symbol -> name of the chosen quadrupolar isotope

    QVariantMap toMap() const;
    void fromMap(const QVariantMap &map);

    /// The chosen isotopes are remembered from one file to the next.
    void loadSettings(const QSettings &settings);
    void saveSettings(QSettings &settings) const;
};

/// Every atom, by increasing recordNo.
QList<const MagresAtom *> atomsInFileOrder(const MagresData &data);

/// The distinct species, in the order of their first atoms in the file.
QByteArrayList elements(const MagresData &data);

} // namespace Magres
