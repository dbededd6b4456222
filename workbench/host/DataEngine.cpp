// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/DataEngine.h"

namespace Workbench {

bool DataEngine::insert(const QVariantMap &map)
{
    const QUuid id = map.value(QStringLiteral("ID")).toUuid();
    if (id.isNull())
        return false;
    m_maps.insert(id, map);
    Q_EMIT changed();
    return true;
}

void DataEngine::remove(const QUuid &id)
{
    if (m_maps.remove(id))
        Q_EMIT changed();
}

void DataEngine::setMaps(const QHash<QUuid, QVariantMap> &maps)
{
    m_maps = maps;
    Q_EMIT changed();
}

} // namespace Workbench

#include "moc_DataEngine.cpp"
