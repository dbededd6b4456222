// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/IPlugin.h"

#include <QVariantList>

class IPlugin_v1_1 : public IPlugin {
public:
    virtual QVariantList command_line_options() const = 0;
    virtual void reserved7() = 0;
};

Q_DECLARE_INTERFACE(IPlugin_v1_1, "org.toran.IPlugin/1.1")
