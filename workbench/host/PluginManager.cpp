// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/PluginManager.h"

#include "host/FileFilterRegistry.h"
#include "support/IPlugin_v1_4.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QLibrary>
#include <QMenu>
#include <QPluginLoader>

namespace Workbench {

namespace {

const QString interfaceFamily = QStringLiteral("org.toran.IPlugin/1.");

/// What is wrong with the metadata embedded in a library, before any of its code runs; empty when it can be used.
QString metadataFault(const QJsonObject &embedded)
{
    const QString interface = embedded.value(QLatin1String("IID")).toString();
    if (interface.isEmpty())
        return PluginManager::tr("it is not a Qt plug-in");
    if (!interface.startsWith(interfaceFamily))
        return PluginManager::tr("its interface is \"%1\", expected \"%2x\"").arg(interface, interfaceFamily);
    const QJsonObject metadata = embedded.value(QLatin1String("MetaData")).toObject();
    QStringList missing;
    for (const char *key : {"id", "name", "version", "dependencies"}) {
        if (!metadata.contains(QLatin1String(key)))
            missing.append(QLatin1String(key));
    }
    if (!missing.isEmpty())
        return PluginManager::tr("its metadata lacks %1").arg(missing.join(QLatin1String(", ")));
    return {};
}

/// The dependencies as the metadata states them, for the message about a refusal: "TORAN 3.1.6227, Qt 6.5".
QString statedDependencies(const QJsonObject &metadata)
{
    QStringList list;
    for (const auto &entry : metadata.value(QLatin1String("dependencies")).toArray()) {
        QStringList numbers;
        for (const auto &number : entry[QLatin1String("version")].toArray())
            numbers.append(QString::number(number.toInt()));
        list.append(entry[QLatin1String("name")].toString() + u' ' + numbers.join(u'.'));
    }
    return list.join(QLatin1String(", "));
}

/// Any version of the interface will do: the later ones only add to it.
IPlugin *pluginInterface(QObject *object)
{
    if (auto *latest = qobject_cast<IPlugin_v1_4 *>(object))
        return latest;
    if (auto *v1_3 = qobject_cast<IPlugin_v1_3 *>(object))
        return v1_3;
    if (auto *v1_2 = qobject_cast<IPlugin_v1_2 *>(object))
        return v1_2;
    if (auto *v1_1 = qobject_cast<IPlugin_v1_1 *>(object))
        return v1_1;
    return qobject_cast<IPlugin *>(object);
}

QString shownName(QObject *object, const IPlugin *plugin)
{
    const auto *latest = qobject_cast<IPlugin_v1_4 *>(object);
    return latest ? latest->display_name() : plugin->name();
}

} // namespace

PluginManager::PluginManager(FileFilterRegistry *filters, QMenu *pluginMenu, QObject *parent)
    : QObject(parent), m_filters(filters), m_menu(pluginMenu)
{
}

QString PluginManager::defaultDirectory()
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QString beside = program.filePath(QStringLiteral("plugins"));
    const QString installed = program.filePath(QStringLiteral(WORKBENCH_INSTALLED_PLUGINS));
    return QDir::cleanPath(QDir(beside).exists() ? beside : installed);
}

void PluginManager::loadDirectory(const QString &directory)
{
    const QDir dir(directory);
    if (!dir.exists()) {
        m_failures.append({directory, tr("there is no such directory")});
        return;
    }
    for (const QString &name : dir.entryList(QDir::Files, QDir::Name)) {
        if (QLibrary::isLibrary(name))
            load(dir.absoluteFilePath(name));
    }
}

void PluginManager::load(const QString &file)
{
    QPluginLoader loader(file);
    // An unreadable or foreign file has no metadata either; the loader's own text says more then.
    const QJsonObject embedded = loader.metaData();
    if (const QString fault = metadataFault(embedded); !fault.isEmpty()) {
        m_failures.append({file, embedded.isEmpty() && !loader.errorString().isEmpty() ? loader.errorString() : fault});
        return;
    }
    const qsizetype menuEntries = m_menu ? m_menu->actions().size() : 0;
    QObject *object = nullptr;
    try {
        object = loader.instance();
        if (!object) {
            m_failures.append({file, loader.errorString()});
            return;
        }
        IPlugin *plugin = pluginInterface(object);
        const QJsonObject metadata = embedded.value(QLatin1String("MetaData")).toObject();
        if (!plugin || !plugin->setMetaData(metadata)) {
            m_failures.append({file,
                               plugin ? tr("it refuses its own metadata, which state that it depends on %1")
                                            .arg(statedDependencies(metadata))
                                      : tr("its object does not have the interface that its metadata name")});
            takeBack(object, menuEntries);
            return;
        }
        const auto [major, minor] = plugin->version();
        m_plugins.append({file, shownName(object, plugin), QStringLiteral("%1.%2").arg(major).arg(minor),
                          plugin->description(), object});
    } catch (const std::exception &error) {
        m_failures.append({file, QString::fromUtf8(error.what())});
        takeBack(object, menuEntries);
    }
}

IPlugin_v1_3 *PluginManager::itemMaker(int itemType, const QString &pluginId) const
{
    IPlugin_v1_3 *first = nullptr;
    for (const Plugin &plugin : m_plugins) {
        IPlugin_v1_3 *maker = qobject_cast<IPlugin_v1_4 *>(plugin.object);
        if (!maker)
            maker = qobject_cast<IPlugin_v1_3 *>(plugin.object);
        if (!maker || !maker->canCreateItem(itemType))
            continue;
        if (maker->id() == pluginId)
            return maker;
        if (!first)
            first = maker;
    }
    return first;
}

void PluginManager::takeBack(QObject *object, qsizetype menuEntries)
{
    m_filters->removePluginFilter(object);
    while (m_menu && m_menu->actions().size() > menuEntries)
        m_menu->removeAction(m_menu->actions().constLast());
    // The library itself stays loaded: what Qt's type system took from it cannot be taken back.
    delete object;
}

} // namespace Workbench

#include "moc_PluginManager.cpp"
