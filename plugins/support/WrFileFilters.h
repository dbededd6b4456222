// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

/// The host's registry of file filters.
class WrFileFilters : public WrObject<QObject> {
public:
    using WrObject::WrObject;

    void addPluginFilter(QObject *filter) const { send(HostContract::addPluginFilter, filter); }
};
