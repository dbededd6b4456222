// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/JsonValues.h"

#include "support/MetaTypes.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QUuid>

#include <cmath>

namespace Workbench {

namespace {

template <typename Container>
QJsonArray arrayOf(const Container &values)
{
    QJsonArray array;
    for (const auto &value : values)
        array.append(toJson(value));
    return array;
}

template <typename Map>
QJsonObject objectOf(const Map &map)
{
    QJsonObject object;
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        object.insert(it.key(), toJson(it.value()));
    return object;
}

} // namespace

QJsonValue toJson(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (type == QMetaType::fromType<QVariantMap>())
        return objectOf(value.toMap());
    if (type == QMetaType::fromType<QVariantHash>())
        return objectOf(value.toHash());
    if (type == QMetaType::fromType<QVariantList>()) {
        QJsonArray array;
        for (const QVariant &element : value.toList())
            array.append(toJson(element));
        return array;
    }
    if (type == QMetaType::fromType<QStringList>())
        return arrayOf(value.toStringList());
    if (type == QMetaType::fromType<QList<int>>())
        return arrayOf(value.value<QList<int>>());
    if (type == QMetaType::fromType<DoubleVector>())
        return arrayOf(value.value<DoubleVector>());
    if (type == QMetaType::fromType<QUuid>())
        return value.toUuid().toString();
    if (type == QMetaType::fromType<double>() && !std::isfinite(value.toDouble()))
        return {};
    return QJsonValue::fromVariant(value);
}

} // namespace Workbench
