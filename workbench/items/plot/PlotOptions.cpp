// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlotOptions.h"

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

QVariantMap PlotOptions::toMap() const
{
    return {{QStringLiteral("Sticks"), sticks},
            {QStringLiteral("Crosses"), crosses},
            {QStringLiteral("Labels"), labels},
            {QStringLiteral("Legend"), legend},
            {QStringLiteral("ContourLowest"), contours.lowest},
            {QStringLiteral("ContourFactor"), contours.factor},
            {QStringLiteral("ContourCount"), contours.count}};
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
    return options;
}

} // namespace Workbench
