// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/DataEngine.h"

bool DataEngine::insert(const QVariantMap &map)
{
    const QUuid id = map.value(QStringLiteral("ID")).toUuid();
    if (id.isNull())
        return false;
    m_maps.insert(id, map);
    return true;
}
