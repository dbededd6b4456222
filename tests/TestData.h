// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"

/// A further atom, whose label is its element and number, at the origin.
inline Magres::MagresAtom &addAtom(Magres::MagresData &data, const QByteArray &element, int number)
{
    Magres::MagresAtom &atom = data.atoms.emplaceBack();
    atom.type = element;
    atom.labels = {element + QByteArray::number(number)};
    atom.No = number;
    atom.recordNo = qint32(data.atoms.size()) - 1;
    return atom;
}
