// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsWidget>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace Workbench {

class DataEngine;
class FileFilterRegistry;
class HostWindow;
class MainScene;
class NucleusTables;
class PluginManager;

/// All host objects, found by plug-ins where the contract says: properties of the application, children of the main
/// window. Needs a QApplication, and there is one host in a process.
class HostApplication {
public:
    /// Headless: nothing is drawn, no question is asked, and changes cannot be undone.
    HostApplication();
    virtual ~HostApplication();
    HostApplication(const HostApplication &) = delete;
    HostApplication &operator=(const HostApplication &) = delete;

    /// From the default directory when none is given.
    void loadPlugins(const QString &directory = QString());

    struct ReadResult {
        QObject *filter = nullptr; ///< the plug-in that read the file
        QList<QGraphicsWidget *> items;
        QStringList warnings; ///< of what is doubtful in the file, whole sentences
    };
    /// Reads the file into the document through the filter that takes it, or a repaired copy of it where its writer is
    /// known to go astray. Throws std::exception with a text for the
    /// user; the document is then as before.
    ReadResult readFile(const QString &fileName);

    HostWindow &hostWindow() const { return *m_window; }
    MainScene &scene() const;
    DataEngine &documentData() const;
    FileFilterRegistry &fileFilters() const { return *m_filters; }
    PluginManager &plugins() const { return *m_plugins; }

protected:
    /// With a window that is shown.
    explicit HostApplication(std::unique_ptr<HostWindow> window, bool headless = false);

private:
    std::unique_ptr<NucleusTables> m_tables;
    std::unique_ptr<FileFilterRegistry> m_filters;
    std::unique_ptr<HostWindow> m_window;
    std::unique_ptr<PluginManager> m_plugins;
};

} // namespace Workbench
