// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/IPlugin_v1_1.h"

class IPlugin_v1_2 : public IPlugin_v1_1 {
public:
    /// The plug-in's UUID in braces, as its metadata has it.
    virtual QString id() const = 0;
    /// Whether createItem() makes items of this type code.
    virtual bool canCreateItem(int itemType) const = 0;
    virtual void *reserved10() = 0;
};

Q_DECLARE_INTERFACE(IPlugin_v1_2, "org.toran.IPlugin/1.2")
