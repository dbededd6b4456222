// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <QString>

class FileFilterRegistry;
class MainScene;
class NucleusTables;
class PluginManager;
class WMainWindow;

/// All host objects, found by plug-ins where the contract says: properties of the application, children of the main
/// window. Needs a QApplication, and there is one host in a process.
class HostApplication {
public:
    explicit HostApplication(bool headless);
    ~HostApplication();
    HostApplication(const HostApplication &) = delete;
    HostApplication &operator=(const HostApplication &) = delete;

    /// From the default directory when none is given.
    void loadPlugins(const QString &directory = QString());

    WMainWindow &window() const { return *m_window; }
    MainScene &scene() const;
    const NucleusTables &nucleusTables() const { return *m_tables; }
    FileFilterRegistry &fileFilters() const { return *m_filters; }
    PluginManager &plugins() const { return *m_plugins; }

private:
    std::unique_ptr<NucleusTables> m_tables;
    std::unique_ptr<FileFilterRegistry> m_filters;
    std::unique_ptr<WMainWindow> m_window;
    std::unique_ptr<PluginManager> m_plugins;
};
