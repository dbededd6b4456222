// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArrayList>
#include <QList>
#include <QVariantMap>

#include <array>

namespace Magres {

/// A point or vector in Cartesian coordinates, Angstrom.
using Position = std::array<double, 3>;

/// One atom of a MAGRES file.
struct MagresAtom {
    QByteArray type; ///< species, that is the element symbol, as the file has it
    QByteArrayList labels; ///< the reader makes exactly one
    qint32 No = 0; ///< index within the label, as the file has it
    qint32 recordNo = 0; ///< position in the file's atom list, from 0
    Position pos{}; ///< Angstrom
    QList<qint32> bonds; ///< recordNo of every bonded atom, ascending

    QVariantMap toMap() const;
    void fromMap(const QVariantMap &map);
};

/// Angstrom; no periodic images.
double atomDistance(const MagresAtom &a, const MagresAtom &b);

} // namespace Magres

Q_DECLARE_TYPEINFO(Magres::MagresAtom, Q_RELOCATABLE_TYPE);
