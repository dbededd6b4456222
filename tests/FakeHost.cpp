// SPDX-License-Identifier: BSD-3-Clause
#include "FakeHost.h"

FakeHost::FakeHost(const QByteArray &without)
    : services(std::make_unique<Crippled<FakeServices>>(without)),
      window(std::make_unique<Crippled<FakeWindow>>(without, services.get())),
      scene(new Crippled<FakeScene>(without, without, services.get(), window.get()))
{
    trace = {};
    qApp->setProperty("isHeadless", true);
    qApp->setProperty("fileFilters", QVariant::fromValue<QObject *>(services.get()));
    qApp->setProperty("nmrDataTables", QVariant::fromValue<QObject *>(services.get()));
}

FakeHost::~FakeHost()
{
    for (const char *name : {"isHeadless", "fileFilters", "nmrDataTables"})
        qApp->setProperty(name, QVariant());
}

#include "moc_FakeHost.cpp"
