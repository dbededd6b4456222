// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/IPlugin_v1_3.h"

class IPlugin_v1_4 : public IPlugin_v1_3 {
public:
    /// The name to show to users.
    virtual QString display_name() const = 0;
};

Q_DECLARE_INTERFACE(IPlugin_v1_4, "org.toran.IPlugin/1.4")
