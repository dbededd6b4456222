// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/MagresSpecParams.h"

#include "parameters/MapConversion.h"

#include <QSettings>

#include <cmath>

namespace Magres {
namespace {

QVariant rangeValue(const std::array<double, 2> &range)
{
    return QVariant::fromValue(DoubleVector(range.begin(), range.end()));
}

QList<int> toInts(const QList<bool> &flags)
{
    return QList<int>(flags.begin(), flags.end());
}

QList<bool> toFlags(const QList<int> &numbers)
{
    QList<bool> flags;
    for (int number : numbers)
        flags.append(number != 0);
    return flags;
}

double numberOf(const QVariantMap &perNucleus, const QString &nucleus, double fallBack)
{
    const double value = perNucleus.value(nucleus, fallBack).toDouble();
    return std::isfinite(value) ? value : fallBack;
}

} // namespace

double MagresSpecParams::referenceOf(const QString &nucleus) const
{
    return numberOf(ref, nucleus, 100.0);
}

double MagresSpecParams::slopeOf(const QString &nucleus) const
{
    return numberOf(slope, nucleus, -1.0);
}

double MagresSpecParams::lineWidthOf(const QString &nucleus, int dimension) const
{
    return numberOf(lw, nucleus, dimension == 0 ? 30.0 : 1.0);
}

QVariantHash MagresSpecParams::toMap() const
{
    QVariantHash map{{QStringLiteral("magresDataId"), magresDataId},
                     {QStringLiteral("corr"), corr},
                     {QStringLiteral("qShift"), QVariant::fromValue(toInts(qShift))},
                     {QStringLiteral("nucF1"), nucF1},
                     {QStringLiteral("nucF2"), nucF2},
                     {QStringLiteral("slope"), slope},
                     {QStringLiteral("ref"), ref},
                     {QStringLiteral("lw"), lw},
                     {QStringLiteral("avIdx"), avIdx},
                     {QStringLiteral("freq"), freq},
                     {QStringLiteral("pts"), pts},
                     {QStringLiteral("ptsF2"), ptsF2},
                     {QStringLiteral("ptsF1"), ptsF1},
                     {QStringLiteral("specType"), specType}};
    if (RangeF2User)
        map.insert(QStringLiteral("RangeF2User"), true);
    map.insert(QStringLiteral("RangeF2"), rangeValue(RangeF2));
    if (isTwoD()) {
        map.insert(QStringLiteral("RangeF1"), rangeValue(RangeF1));
        if (RangeF1User)
            map.insert(QStringLiteral("RangeF1User"), true);
    }
    return map;
}

void MagresSpecParams::fromMap(const QVariantHash &map)
{
    magresDataId = map.value(QStringLiteral("magresDataId")).toUuid();
    corr = map.value(QStringLiteral("corr"), 0).toInt();
    qShift = toFlags(map.value(QStringLiteral("qShift")).value<QList<int>>());
    nucF1 = map.value(QStringLiteral("nucF1"), QStringLiteral("13C")).toString();
    nucF2 = map.value(QStringLiteral("nucF2"), QStringLiteral("1H")).toString();
    slope = map.value(QStringLiteral("slope")).toMap();
    ref = map.value(QStringLiteral("ref")).toMap();
    lw = map.value(QStringLiteral("lw")).toMap();
    avIdx = map.value(QStringLiteral("avIdx"), 0).toInt();
    freq = map.value(QStringLiteral("freq"), 600.0).toDouble();
    pts = map.value(QStringLiteral("pts"), 8192).toInt();
    ptsF2 = map.value(QStringLiteral("ptsF2"), 1024).toInt();
    ptsF1 = map.value(QStringLiteral("ptsF1"), 512).toInt();
    specType = map.value(QStringLiteral("specType"), 0).toInt();
    RangeF2User = map.value(QStringLiteral("RangeF2User"), false).toBool();
    RangeF1User = map.value(QStringLiteral("RangeF1User"), false).toBool();
    // The ranges are written together: a valid one for F2 stands for a valid pair.
    if (copyExactly(map.value(QStringLiteral("RangeF2")).value<DoubleVector>(), RangeF2) && isTwoD())
        copyExactly(map.value(QStringLiteral("RangeF1")).value<DoubleVector>(), RangeF1);
}

void MagresSpecParams::loadSettings(const QSettings &settings)
{
    const auto value = [&settings](const char *key, const QVariant &fallBack) {
        return settings.value(QLatin1String("magresPlugin/") + QLatin1String(key), fallBack);
    };
    nucF1 = value("nucF1", QString()).toString();
    nucF2 = value("nucF2", QString()).toString();
    slope = value("slope", QVariantMap()).toMap();
    ref = value("ref", QVariantMap()).toMap();
    lw = value("lw", QVariantMap()).toMap();
    freq = value("freq", 600.0).toDouble();
    // Not a power of two, so that a fresh installation is offered the 8192 of a point count that is not in the list.
    pts = value("pts", 8129).toInt();
    ptsF2 = value("ptsF2", 1024).toInt();
    ptsF1 = value("ptsF1", 256).toInt();
    avIdx = value("avIdx", 0).toInt();
    specType = value("specType", 0).toInt();
    corr = value("correlation", 0).toInt();
}

void MagresSpecParams::saveSettings(QSettings &settings) const
{
    const auto setValue = [&settings](const char *key, const QVariant &value) {
        const QString name = QLatin1String("magresPlugin/") + QLatin1String(key);
        // Settings to which anything is written are flushed to their file, changed or not.
        if (settings.value(name) != value)
            settings.setValue(name, value);
    };
    setValue("nucF1", nucF1);
    setValue("nucF2", nucF2);
    setValue("slope", slope);
    setValue("ref", ref);
    setValue("lw", lw);
    setValue("freq", freq);
    setValue("pts", pts);
    setValue("ptsF1", ptsF1);
    setValue("ptsF2", ptsF2);
    setValue("avIdx", avIdx);
    setValue("specType", specType);
    setValue("correlation", corr);
}

} // namespace Magres
