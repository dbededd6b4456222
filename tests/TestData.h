// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"

#include <QJsonDocument>

#include <limits>

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

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

inline Magres::MagresAtom atomAt(const char *species, const Magres::Position &position)
{
    Magres::MagresAtom atom;
    atom.type = species;
    atom.pos = position;
    return atom;
}

/// The map form of a record as JSON, with single quotes. "nan" and "inf" stand for the numbers that are none there.
inline QVariantHash hash(QByteArray json)
{
    return QJsonDocument::fromJson(json.replace('\'', '"')).toVariant().toHash();
}
