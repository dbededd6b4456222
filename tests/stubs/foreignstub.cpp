// SPDX-License-Identifier: BSD-3-Clause
#include "StubPlugin.h"

class ForeignStub : public StubPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.Something/1.0" FILE "good.json")
};

#include "foreignstub.moc"
