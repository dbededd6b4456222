// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

/// The host's item model over a plug-in's table: a plug-in brackets changes of its rows by these.
class WrTableModel : public WrObject<QObject> {
public:
    using WrObject::WrObject;

    void beginResetModel() const { send(HostContract::beginResetModel); }
    void endResetModel() const { send(HostContract::endResetModel); }
};
