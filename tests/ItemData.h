// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "data/ExperimentalSpectrum.h"
#include "items/plot/NmrData.h"

#include <QUuid>
#include <QVariantMap>

using namespace Qt::StringLiterals;

/// Parts of the descriptions from which items are made.
inline QUuid id(int number)
{
    return QUuid(u"{00000000-0000-0000-0000-%1}"_s.arg(number, 12, 10, QChar(u'0')));
}

inline QVariantMap peak(int number, const QString &label, double f2, double f1, double height)
{
    const QVariant place = QVariant::fromValue(DoubleVector{f2, f1});
    return {{u"ID"_s, id(number)}, {u"PeakLabel"_s, label}, {u"Pos"_s, place}, {u"Height"_s, height}};
}

/// 13C points from `first` down by 10 ppm; with rows of 1H from 9 down by 3 ppm where `columns` are given.
inline QVariantMap spectrum(double first, const DoubleVector &values, const QVariantList &peaks = {}, int columns = 0)
{
    const int size = columns > 0 ? columns : int(values.size());
    Workbench::ExperimentalSpectrum made{{}, {{u"13C"_s, 100, 0, first, -10, size}}, values};
    if (columns > 0)
        made.dimensions.push_back({u"1H"_s, 400, 0, 9, -3, int(values.size()) / columns});
    QVariantMap map = toEntryMap(made);
    map.insert(u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}});
    return map;
}

inline QVariantMap atom(int element, double x, double y, double z, const QList<int> &bonds = {})
{
    return {{u"El"_s, element}, {u"X"_s, x}, {u"Y"_s, y}, {u"Z"_s, z}, {u"NB.Num"_s, QVariant::fromValue(bonds)}};
}
