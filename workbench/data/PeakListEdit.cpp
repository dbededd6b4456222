// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/PeakListEdit.h"

namespace Workbench {

namespace {

const QString listKey = QStringLiteral("PeakList");
const QString peaksIdKey = QStringLiteral("ID");
const QString positionKey = QStringLiteral("Pos");
const QString heightKey = QStringLiteral("Height");
const QString labelKey = QStringLiteral("PeakLabel");

QVariant position(const PeakListEdit::Place &place)
{
    return QVariant::fromValue(DoubleVector{place.f2, place.f1});
}

bool isOneOf(const QVariant &peak, const QList<QUuid> &which)
{
    return which.contains(peak.toMap().value(peaksIdKey).toUuid());
}

QVariantMap withList(QVariantMap peaks, const QVariantList &list)
{
    peaks.insert(listKey, list);
    if (!peaks.contains(peaksIdKey))
        peaks.insert(peaksIdKey, QUuid::createUuid());
    // Hosts number their units: 3 is ppm.
    if (!peaks.contains(QStringLiteral("PosUnits")))
        peaks.insert(QStringLiteral("PosUnits"), QVariant::fromValue(QList<int>{3, 3, 1}));
    return peaks;
}

} // namespace

namespace PeakListEdit {

QVariantMap added(const QVariantMap &peaks, const Place &place)
{
    QVariantList list = peaks.value(listKey).toList();
    list.append(QVariantMap{{peaksIdKey, QUuid::createUuid()},
                            {positionKey, position(place)},
                            {heightKey, place.height},
                            {QStringLiteral("peakType"), 1},
                            {labelKey, QString()}});
    return withList(peaks, list);
}

QVariantMap moved(const QVariantMap &peaks, const QList<QUuid> &which, const Place &to)
{
    QVariantList list = peaks.value(listKey).toList();
    for (QVariant &peak : list) {
        if (!isOneOf(peak, which))
            continue;
        QVariantMap map = peak.toMap();
        map.insert(positionKey, position(to));
        map.insert(heightKey, to.height);
        peak = map;
    }
    return withList(peaks, list);
}

QVariantMap removed(const QVariantMap &peaks, const QList<QUuid> &which)
{
    QVariantList list = peaks.value(listKey).toList();
    list.removeIf([&](const QVariant &peak) { return isOneOf(peak, which); });
    return withList(peaks, list);
}

QVariantMap labelled(const QVariantMap &peaks, const QHash<QUuid, QString> &labels)
{
    QVariantList list = peaks.value(listKey).toList();
    for (QVariant &peak : list) {
        QVariantMap map = peak.toMap();
        const auto label = labels.constFind(map.value(peaksIdKey).toUuid());
        if (label == labels.constEnd())
            continue;
        map.insert(labelKey, *label);
        peak = map;
    }
    return withList(peaks, list);
}

} // namespace PeakListEdit

} // namespace Workbench
