// SPDX-License-Identifier: BSD-3-Clause
#include "reading/MagresData.h"

#include <QSet>
#include <QSettings>

#include <algorithm>

namespace Magres {
namespace {

const QString isotopesKey = QStringLiteral("magresPlugin/QIso");

template <typename Record>
QVariantMap listToMap(const QList<Record> &list)
{
    QVariantMap map;
    for (qsizetype i = 0; i < list.size(); ++i)
        map.insert(QString::number(i), list[i].toMap());
    return map;
}

/// In the order of the keys as texts.
template <typename Record>
QList<Record> listFromMap(const QVariant &value)
{
    const QVariantMap map = value.toMap();
    QList<Record> list;
    list.reserve(map.size());
    for (const QVariant &entry : map)
        list.emplaceBack().fromMap(entry.toMap());
    return list;
}

} // namespace

QVariantMap MagresData::toMap() const
{
    return {{QStringLiteral("ID"), ID},
            {QStringLiteral("molItemID"), molItemID},
            {QStringLiteral("lattice"), QVariant::fromValue(lattice)},
            {QStringLiteral("numberToLabel"), numberToLabel},
            {QStringLiteral("QIso"), QIso},
            {QStringLiteral("atoms"), listToMap(atoms)},
            {QStringLiteral("shieldings"), listToMap(shieldings)},
            {QStringLiteral("EFG"), listToMap(EFG)}};
}

void MagresData::fromMap(const QVariantMap &map)
{
    ID = map.value(QStringLiteral("ID")).toUuid();
    molItemID = map.value(QStringLiteral("molItemID")).toUuid();
    lattice = map.value(QStringLiteral("lattice")).value<QList<double>>();
    numberToLabel = map.value(QStringLiteral("numberToLabel")).toBool();
    QIso = map.value(QStringLiteral("QIso")).toMap();
    atoms = listFromMap<MagresAtom>(map.value(QStringLiteral("atoms")));
    shieldings = listFromMap<MagresTensor>(map.value(QStringLiteral("shieldings")));
    EFG = listFromMap<MagresTensor>(map.value(QStringLiteral("EFG")));
}

void MagresData::loadSettings(const QSettings &settings)
{
    QIso = settings.value(isotopesKey).toMap();
}

void MagresData::saveSettings(QSettings &settings) const
{
    if (!QIso.isEmpty() && settings.value(isotopesKey) != QIso)
        settings.setValue(isotopesKey, QIso);
}

QList<const MagresAtom *> atomsInFileOrder(const MagresData &data)
{
    QList<const MagresAtom *> atoms;
    atoms.reserve(data.atoms.size());
    for (const MagresAtom &atom : data.atoms)
        atoms.append(&atom);
    std::stable_sort(atoms.begin(), atoms.end(),
                     [](const MagresAtom *a, const MagresAtom *b) { return a->recordNo < b->recordNo; });
    return atoms;
}

QByteArrayList elements(const MagresData &data)
{
    QByteArrayList symbols;
    QSet<QByteArray> seen;
    for (const MagresAtom *atom : atomsInFileOrder(data)) {
        if (!seen.contains(atom->type)) {
            seen.insert(atom->type);
            symbols.append(atom->type);
        }
    }
    return symbols;
}

} // namespace Magres
