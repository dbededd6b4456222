// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/IPlugin_v1_2.h"

class IPlugin_v1_3 : public IPlugin_v1_2 {
public:
    /// A new item, owned by the caller; null when canCreateItem() says no.
    virtual QObject *createItem(int itemType) = 0;
};

Q_DECLARE_INTERFACE(IPlugin_v1_3, "org.toran.IPlugin/1.3")
