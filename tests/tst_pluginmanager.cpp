// SPDX-License-Identifier: BSD-3-Clause
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "host/WMainWindow.h"
#include "items/DocumentItem.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Loads real libraries of every kind of fitness.
class TestPluginManager : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Once: a library that is loaded stays loaded, and its object would be the first host's.
    void initTestCase()
    {
        m_host = std::make_unique<HostApplication>(true);
        m_host->loadPlugins(QStringLiteral(STUB_DIRECTORY));
    }
    void cleanupTestCase() { m_host.reset(); }

    void failuresAreData_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QString>("reason");
        QTest::newRow("refuses its metadata") << "otherqtstub"
                                              << "Qt 6.4";
        QTest::newRow("no metadata") << "emptystub"
                                     << "lacks id, name, version, dependencies";
        QTest::newRow("another interface") << "foreignstub"
                                           << "org.example.Something/1.0";
        QTest::newRow("constructor throws") << "throwingstub"
                                            << "the constructor of the stub fails";
        QTest::newRow("no library at all") << "broken"
                                           << "broken";
    }
    void failuresAreData()
    {
        QFETCH(QString, library);
        QFETCH(QString, reason);
        int found = 0;
        for (const PluginManager::Failure &failure : m_host->plugins().failures()) {
            if (!failure.file.contains(library))
                continue;
            ++found;
            QVERIFY2(failure.reason.contains(reason), qPrintable(failure.reason));
        }
        QCOMPARE(found, 1);
    }

    void onlyTheGoodOneIsUsed()
    {
        QCOMPARE(m_host->plugins().plugins().size(), 1);
        const PluginManager::Plugin &plugin = m_host->plugins().plugins().constFirst();
        QCOMPARE(plugin.name, u"Stub"_s);
        QCOMPARE(plugin.version, u"1.2"_s);
        // What the refused ones had registered is gone again.
        QCOMPARE(m_host->fileFilters().filters(), QList<QObject *>{plugin.object});
        QCOMPARE(m_host->window().nmrContextMenu()->actions().size(), 1);
        QCOMPARE(m_host->fileFilters().nameFilters(), QStringList{u"Stub files (*.stub)"_s});
    }

    void missingDirectory()
    {
        const qsizetype before = m_host->plugins().failures().size();
        m_host->plugins().loadDirectory(u"/no/such/directory"_s);
        QCOMPARE(m_host->plugins().failures().size(), before + 1);
        QCOMPARE(m_host->plugins().failures().constLast().file, u"/no/such/directory"_s);
    }

    void readFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("items");
        QTest::addColumn<QString>("message");
        QTest::newRow("read") << QByteArray("stub data") << 1 << QString();
        QTest::newRow("fails after making an item") << QByteArray("stub-fail") << 0 << "the stub fails on purpose";
        QTest::newRow("no filter takes it") << QByteArray("other") << 0 << "Stub files (*.stub)";
        QTest::newRow("empty") << QByteArray() << 0 << "is empty";
    }
    void readFile()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, items);
        QFETCH(QString, message);
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(content);
        file.close();
        const qsizetype before = m_host->scene().documentItems().size();
        QString shown;
        try {
            m_host->window().readFile(file.fileName());
        } catch (const std::exception &error) {
            shown = QString::fromUtf8(error.what());
        }
        QCOMPARE(shown.isEmpty(), message.isEmpty());
        QVERIFY2(shown.contains(message), qPrintable(shown));
        QCOMPARE(m_host->scene().documentItems().size() - before, items);
    }

private:
    std::unique_ptr<HostApplication> m_host;
};

QTEST_MAIN(TestPluginManager)
#include "tst_pluginmanager.moc"
