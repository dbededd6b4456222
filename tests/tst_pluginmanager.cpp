// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "window/WMainWindow.h"
#include "items/DocumentItem.h"

#include <QtTest>

using namespace Workbench;
using namespace Qt::StringLiterals;

/// Loads real libraries of every kind of fitness.
class TestPluginManager : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Once: a library that is loaded stays loaded, and its object would be the first host's.
    void initTestCase()
    {
        m_host = std::make_unique<HostApplication>();
        m_host->loadPlugins(QStringLiteral(STUB_DIRECTORY));
    }
    void cleanupTestCase() { m_host.reset(); }

    void failuresAreData()
    {
        QCOMPARE(m_host->plugins().failures().size(), 5);
        for (const auto &[library, reason] :
             {std::pair("otherqtstub", "Qt 6.4"), // refuses its metadata
              std::pair("emptystub", "lacks id, name, version, dependencies"),
              std::pair("foreignstub", "org.example.Something/1.0"),
              std::pair("throwingstub", "the constructor of the stub fails"), std::pair("broken", "broken")}) {
            QString found;
            for (const PluginManager::Failure &failure : m_host->plugins().failures())
                if (failure.file.contains(QLatin1String(library)))
                    found += failure.reason;
            QVERIFY2(found.contains(QLatin1String(reason)), qPrintable(found));
        }
    }

    void onlyTheGoodOneIsUsed()
    {
        QCOMPARE(m_host->plugins().plugins().size(), 1);
        const PluginManager::Plugin &plugin = m_host->plugins().plugins().constFirst();
        QCOMPARE(plugin.name, u"Stub"_s);
        QCOMPARE(plugin.version, u"1.2"_s);
        // What the refused ones had registered is gone again.
        QCOMPARE(m_host->fileFilters().filters(), QList<QObject *>{plugin.object});
        QCOMPARE(m_host->hostWindow().nmrContextMenu()->actions().size(), 1);
        QCOMPARE(m_host->fileFilters().nameFilters(), QStringList{u"Stub files (*.stub)"_s});
    }

    void readFile()
    {
        for (const auto &[content, items, message] :
             {std::tuple("stub data", 1, ""), std::tuple("stub-fail", 0, "the stub fails on purpose"),
              std::tuple("other", 0, "Stub files (*.stub)"), std::tuple("", 0, "is empty")}) {
            QTemporaryFile file;
            QVERIFY(file.open() && file.write(content) >= 0 && file.flush());
            const qsizetype before = m_host->scene().documentItems().size();
            const QByteArray shown = failure([&] { m_host->readFile(file.fileName()); });
            QVERIFY2(shown.contains(message) && shown.isEmpty() == (items == 1), shown);
            QCOMPARE(m_host->scene().documentItems().size() - before, items);
        }
    }

private:
    std::unique_ptr<HostApplication> m_host;
};

QTEST_MAIN(TestPluginManager)
#include "tst_pluginmanager.moc"
