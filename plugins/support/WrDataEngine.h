// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

#include <QUuid>

/// The store of the document's data sets.
class WrDataEngine : public WrObject<QObject> {
public:
    using WrObject::WrObject;

    /// Empty for an unknown data set.
    QVariantMap getDataMap(const QUuid &id) const { return call<QVariantMap>(HostContract::getDataMap, id); }
};
