// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlotOptions.h"

#include "support/MetaTypes.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

ContourLevels ContourLevels::bounded() const
{
    const auto within = [](double x, double low, double high, double fallBack) {
        return std::isfinite(x) ? std::clamp(x, low, high) : fallBack;
    };
    return {within(lowest, 1e-5, 0.99, ContourLevels().lowest), within(factor, 1.05, 10, ContourLevels().factor),
            std::clamp(count, 1, 50)};
}

namespace {

DoubleVector numbersOf(const QVariant &stored, size_t count)
{
    const auto numbers = stored.value<DoubleVector>();
    const bool good = numbers.size() == count
        && std::all_of(numbers.begin(), numbers.end(), [](double x) { return std::isfinite(x); });
    return good ? numbers : DoubleVector();
}

const QString entryKey = QStringLiteral("Entry");
const QString numbersKey = QStringLiteral("Numbers");

} // namespace

QVariantMap PlotOptions::toMap() const
{
    QVariantList traceList, integralList, distanceList;
    for (auto it = traces.cbegin(); it != traces.cend(); ++it)
        traceList.append(
            QVariantMap{{entryKey, it.key()},
                        {numbersKey, QVariant::fromValue(DoubleVector{it->scale, it->offset, double(it->color)})}});
    for (const IntegralMark &mark : integrals)
        integralList.append(
            QVariantMap{{entryKey, mark.entry}, {numbersKey, QVariant::fromValue(DoubleVector{mark.from, mark.to})}});
    for (const DistanceMark &mark : distances)
        distanceList.append(QVariant::fromValue(DoubleVector{mark.from.x(), mark.from.y(), mark.to.x(), mark.to.y()}));
    return {{QStringLiteral("Overlay"), overlay},
            {QStringLiteral("Hertz"), hertz},
            {QStringLiteral("SharesRange"), sharesRange},
            {QStringLiteral("Traces"), traceList},
            {QStringLiteral("Integrals"), integralList},
            {QStringLiteral("IntegralReference"), integralReference},
            {QStringLiteral("ReferenceValue"), referenceValue},
            {QStringLiteral("Distances"), distanceList},
            {QStringLiteral("Sticks"), sticks},
            {QStringLiteral("Crosses"), crosses},
            {QStringLiteral("Labels"), labels},
            {QStringLiteral("Legend"), legend},
            {QStringLiteral("ContourLowest"), contours.lowest},
            {QStringLiteral("ContourFactor"), contours.factor},
            {QStringLiteral("ContourCount"), contours.count}};
}

void PlotOptions::keepIntegrals(qsizetype count)
{
    integrals.resize(count);
    if (integralReference >= 0 && integralReference < count)
        return;
    integralReference = 0;
    referenceValue = 1;
}

PlotOptions PlotOptions::fromMap(const QVariantMap &map)
{
    PlotOptions options;
    const auto read = [&](const QString &key, auto &value) {
        using Value = std::remove_reference_t<decltype(value)>;
        const QVariant stored = map.value(key);
        if (stored.canConvert<Value>())
            value = stored.value<Value>();
    };
    read(QStringLiteral("Sticks"), options.sticks);
    read(QStringLiteral("Crosses"), options.crosses);
    read(QStringLiteral("Labels"), options.labels);
    read(QStringLiteral("Legend"), options.legend);
    read(QStringLiteral("ContourLowest"), options.contours.lowest);
    read(QStringLiteral("ContourFactor"), options.contours.factor);
    read(QStringLiteral("ContourCount"), options.contours.count);
    options.contours = options.contours.bounded();
    read(QStringLiteral("Overlay"), options.overlay);
    read(QStringLiteral("Hertz"), options.hertz);
    read(QStringLiteral("SharesRange"), options.sharesRange);
    for (const QVariant &stored : map.value(QStringLiteral("Traces")).toList()) {
        const DoubleVector numbers = numbersOf(stored.toMap().value(numbersKey), 3);
        if (!numbers.empty() && numbers[0] > 0)
            options.traces.insert(stored.toMap().value(entryKey).toUuid(), {numbers[0], numbers[1], int(numbers[2])});
    }
    for (const QVariant &stored : map.value(QStringLiteral("Integrals")).toList()) {
        const DoubleVector numbers = numbersOf(stored.toMap().value(numbersKey), 2);
        if (!numbers.empty())
            options.integrals.append({stored.toMap().value(entryKey).toUuid(), numbers[0], numbers[1]});
    }
    for (const QVariant &stored : map.value(QStringLiteral("Distances")).toList()) {
        const DoubleVector numbers = numbersOf(stored, 4);
        if (!numbers.empty())
            options.distances.append({{numbers[0], numbers[1]}, {numbers[2], numbers[3]}});
    }
    read(QStringLiteral("IntegralReference"), options.integralReference);
    read(QStringLiteral("ReferenceValue"), options.referenceValue);
    options.keepIntegrals(options.integrals.size());
    if (!std::isfinite(options.referenceValue) || options.referenceValue == 0)
        options.referenceValue = 1;
    return options;
}

} // namespace Workbench
