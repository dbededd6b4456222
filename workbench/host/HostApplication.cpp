// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/HostApplication.h"

#include "data/Error.h"
#include "data/PrintableText.h"
#include "data/structure/CalculationMethod.h"
#include "formats/MagresCheck.h"
#include "host/FileFilterRegistry.h"
#include "host/HostWindow.h"
#include "host/MainScene.h"
#include "host/NucleusTables.h"
#include "host/PluginManager.h"
#include "items/DocumentItem.h"
#include "support/MetaTypes.h"

#include <QApplication>
#include <QFileInfo>
#include <QGraphicsView>
#include <QTemporaryDir>

#include <optional>

namespace Workbench {

namespace {

constexpr qint64 headLength = 1 << 16;

QByteArray startOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.read(headLength) : QByteArray();
}

/// The file for the plug-in: itself, or a repaired copy of the same name that lasts as long as this does.
class Prepared {
public:
    explicit Prepared(const QString &fileName) : m_fileName(fileName)
    {
        QFile file(fileName);
        if (!MagresCheck::isMagres(startOf(fileName)) || !file.open(QIODevice::ReadOnly))
            return;
        const MagresCheck::Findings findings = MagresCheck::examine(file.readAll());
        m_warnings = findings.warnings;
        if (findings.repaired.isEmpty())
            return;
        m_folder.emplace();
        const QString copyName = m_folder->filePath(QFileInfo(fileName).fileName());
        QFile copy(copyName);
        if (!copy.open(QIODevice::WriteOnly) || copy.write(findings.repaired) != findings.repaired.size()
            || !copy.flush())
            fail(copyName, Texts::tr("the repaired copy cannot be written (%1)").arg(copy.errorString()));
        m_fileName = copyName;
    }

    const QString &fileName() const { return m_fileName; }
    const QStringList &warnings() const { return m_warnings; }

private:
    QString m_fileName;
    QStringList m_warnings;
    std::optional<QTemporaryDir> m_folder;
};

} // namespace

HostApplication::HostApplication() : HostApplication(std::make_unique<HostWindow>(), true)
{
    // Plug-ins look for a view of the scene, shown or not.
    auto *view = new QGraphicsView(m_window->scene(), m_window.get());
    view->setObjectName(QStringLiteral("mainView"));
}

HostApplication::HostApplication(std::unique_ptr<HostWindow> window, bool headless)
    : m_tables(std::make_unique<NucleusTables>()),
      m_filters(std::make_unique<FileFilterRegistry>()),
      m_window(std::move(window)),
      m_plugins(std::make_unique<PluginManager>(m_filters.get(), m_window->nmrContextMenu()))
{
    registerSharedMetaTypes();
    qApp->setProperty("isHeadless", headless);
    qApp->setProperty("fileFilters", QVariant::fromValue<QObject *>(m_filters.get()));
    qApp->setProperty("nmrDataTables", QVariant::fromValue<QObject *>(m_tables.get()));
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

namespace {

/// What the items of a file are called by. Calculations of one name in several folders have that of the folder with it,
/// and a file that is read once more its number.
QString sourceName(const QString &fileName, const QList<DocumentItem *> &others)
{
    const QFileInfo file(fileName);
    const auto isTaken = [&](const QString &name) {
        return std::any_of(others.begin(), others.end(),
                           [&](const DocumentItem *item) { return item->source() == name; });
    };
    QString name = printable(file.completeBaseName());
    if (isTaken(name))
        name = printable(file.absoluteDir().dirName()) + u'/' + name;
    const QString first = name;
    for (int number = 2; isTaken(name); ++number)
        name = QStringLiteral("%1 (%2)").arg(first).arg(number);
    return name;
}

} // namespace

HostApplication::ReadResult HostApplication::readFile(const QString &fileName)
{
    QObject *filter = m_filters->matching(fileName);
    if (!filter) {
        const QByteArray start = startOf(fileName);
        if (MagresCheck::isMagres(start))
            fail(fileName, Texts::tr("no plug-in that reads MAGRES files is loaded"));
        if (QFileInfo(fileName).suffix().toLower() == u"magres")
            fail(fileName, MagresCheck::whyNotMagres(start));
        const QStringList known = m_filters->nameFilters();
        const QString offered = known.isEmpty()
            ? Texts::tr("no plug-in with a file filter is loaded")
            : Texts::tr("files that can be read: %1").arg(known.join(QLatin1String(", ")));
        fail(Texts::tr("File %1 is not of a kind that is known here; %2").arg(fileName, offered));
    }
    const QList<DocumentItem *> before = scene().documentItems();
    try {
        const Prepared prepared(fileName);
        ReadResult result{filter, m_filters->read(filter, prepared.fileName(), scene().emptyStructureRect()),
                          prepared.warnings()};
        const CalculationMethod method = CalculationMethod::fromFile(fileName);
        const QString source = sourceName(fileName, before);
        for (QGraphicsWidget *item : std::as_const(result.items)) {
            if (auto *made = qobject_cast<DocumentItem *>(item)) {
                made->setSource(source);
                made->setMethod(method);
                made->setSourceNote(method.isEmpty() ? QString() : method.text());
            }
        }
        // Which items belong beside each other is known only now that they are linked.
        scene().updatePages();
        return result;
    } catch (...) {
        // A filter that fails half-way leaves nothing on the page.
        for (DocumentItem *item : scene().documentItems()) {
            if (!before.contains(item))
                scene().destroy(item);
        }
        throw;
    }
}

MainScene &HostApplication::scene() const
{
    return *m_window->scene();
}

DataEngine &HostApplication::documentData() const
{
    return *m_window->documentData();
}

} // namespace Workbench

#include "moc_NucleusTables.cpp"
