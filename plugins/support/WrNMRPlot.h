// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

/// The plot of an NMR item.
class WrNMRPlot : public WrObject<QObject> {
public:
    using WrObject::WrObject;

    void fullReset() const { send(HostContract::fullReset); }
};
