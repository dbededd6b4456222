// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/HostApplication.h"

#include "host/FileFilterRegistry.h"
#include "host/MainScene.h"
#include "host/NucleusTables.h"
#include "host/PluginManager.h"
#include "host/UndoRecorder.h"
#include "host/WMainWindow.h"
#include "support/MetaTypes.h"

#include <QApplication>

HostApplication::HostApplication(bool headless)
    : m_tables(std::make_unique<NucleusTables>()),
      m_filters(std::make_unique<FileFilterRegistry>()),
      m_window(std::make_unique<WMainWindow>(m_filters.get())),
      m_plugins(std::make_unique<PluginManager>(m_filters.get(), m_window->nmrContextMenu()))
{
    registerSharedMetaTypes();
    qApp->setProperty("isHeadless", headless);
    qApp->setProperty("fileFilters", QVariant::fromValue<QObject *>(m_filters.get()));
    qApp->setProperty("nmrDataTables", QVariant::fromValue<QObject *>(m_tables.get()));
    m_window->setPluginManager(m_plugins.get());
    if (!headless)
        new UndoRecorder(m_window->scene());
}

HostApplication::~HostApplication()
{
    // The plug-ins' items go with the window, then the plug-ins themselves, while their menus can still be deleted. One
    // that was refused and lives on must not find what is gone.
    m_window.reset();
    for (const PluginManager::Plugin &plugin : m_plugins->plugins())
        delete plugin.object;
    for (const char *name : {"fileFilters", "nmrDataTables"})
        qApp->setProperty(name, QVariant());
}

void HostApplication::loadPlugins(const QString &directory)
{
    m_plugins->loadDirectory(directory.isEmpty() ? PluginManager::defaultDirectory() : directory);
}

MainScene &HostApplication::scene() const
{
    return *m_window->scene();
}
