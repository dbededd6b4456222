// SPDX-License-Identifier: BSD-3-Clause
#include "StubPlugin.h"

class GoodStub : public StubPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.toran.IPlugin/1.0" FILE "good.json")
};

#include "goodstub.moc"
