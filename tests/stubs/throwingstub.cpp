// SPDX-License-Identifier: BSD-3-Clause
#include "StubPlugin.h"

class ThrowingStub : public StubPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.toran.IPlugin/1.0" FILE "good.json")
public:
    ThrowingStub() { throw std::runtime_error("the constructor of the stub fails"); }
};

#include "throwingstub.moc"
