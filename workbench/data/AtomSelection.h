// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QVariantMap>

namespace Workbench {

/// The message by which linked items tell one another which atoms are selected: {"type": 22, "data": list of atom
/// positions, 0-based, in the order of the file}.
namespace AtomSelection {

inline constexpr int messageType = 22;

inline QVariantMap toMessage(const QSet<int> &atoms)
{
    QList<int> sorted(atoms.cbegin(), atoms.cend());
    std::sort(sorted.begin(), sorted.end());
    return {{QStringLiteral("type"), messageType},
            {QStringLiteral("data"), QVariantList(sorted.cbegin(), sorted.cend())}};
}

inline bool isMessage(const QVariantMap &message)
{
    return message.value(QStringLiteral("type")).toInt() == messageType;
}

/// Entries that are no integers are left out.
inline QSet<int> fromMessage(const QVariantMap &message)
{
    QSet<int> atoms;
    const QVariant data = message.value(QStringLiteral("data"));
    for (const QVariant &value : data.canConvert<QVariantList>() ? data.toList() : QVariantList{data}) {
        bool isNumber = false;
        const int atom = value.toInt(&isNumber);
        if (isNumber)
            atoms.insert(atom);
    }
    return atoms;
}

} // namespace AtomSelection

} // namespace Workbench
