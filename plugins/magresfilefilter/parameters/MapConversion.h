// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/MetaTypes.h"

#include <QByteArrayList>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <array>

// Conversions between the records and the values of their map form, which documents keep.

namespace Magres {

inline QStringList labelsToStrings(const QByteArrayList &labels)
{
    QStringList strings;
    strings.reserve(labels.size());
    for (const QByteArray &label : labels)
        strings.append(QString::fromLatin1(label));
    return strings;
}

inline QByteArrayList labelsFromStrings(const QVariant &strings)
{
    QByteArrayList labels;
    for (const QString &label : strings.toStringList())
        labels.append(label.toLatin1());
    return labels;
}

/// Copies only when the sizes agree: a value of another length is none.
template <std::size_t Size>
bool copyExactly(const DoubleVector &from, std::array<double, Size> &to)
{
    if (from.size() != Size)
        return false;
    std::copy(from.begin(), from.end(), to.begin());
    return true;
}

} // namespace Magres
