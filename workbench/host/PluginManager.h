// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QMenu;

class IPlugin;
class IPlugin_v1_3;

namespace Workbench {

class FileFilterRegistry;

/// Loads the plug-ins of a directory and keeps what became of each file: a plug-in that cannot be used is a fact to
/// show, never a reason to stop.
class PluginManager : public QObject {
    Q_OBJECT
public:
    struct Plugin {
        QString file;
        QString name;
        QString version;
        QString description; ///< may hold HTML
        QPointer<QObject> object;
    };
    struct Failure {
        QString file;
        QString reason;
    };

    /// What a refused plug-in may have left at the host is taken back from the registry and the menu.
    PluginManager(FileFilterRegistry *filters, QMenu *pluginMenu, QObject *parent = nullptr);

    /// Loads every library of the directory, in the order of their names.
    void loadDirectory(const QString &directory);
    void load(const QString &file);

    const QList<Plugin> &plugins() const { return m_plugins; }
    const QList<Failure> &failures() const { return m_failures; }

    /// The plug-in that makes items of this type: the one with the id if it does, else the first. Null: there is none.
    IPlugin_v1_3 *itemMaker(int itemType, const QString &pluginId = {}) const;

    /// Where the plug-ins lie relative to the program: beside it in a build tree, under lib when installed.
    static QString defaultDirectory();

private:
    void takeBack(QObject *object, qsizetype menuEntries);

    FileFilterRegistry *m_filters;
    QPointer<QMenu> m_menu;
    QList<Plugin> m_plugins;
    QList<Failure> m_failures;
};

} // namespace Workbench
