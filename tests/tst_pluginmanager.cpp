// SPDX-License-Identifier: BSD-3-Clause
#include "Built.h"
#include "Failure.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "window/WMainWindow.h"
#include "items/DocumentItem.h"
#include "support/IPlugin_v1_4.h"

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
        m_host->loadPlugins(built(u"../tests/stubs"));
    }
    void cleanupTestCase() { m_host.reset(); }

    void failuresAreData()
    {
        m_host->loadPlugins(u"/no/such/place"_s);
        QStringList found;
        for (const PluginManager::Failure &failure : m_host->plugins().failures())
            found.append(QFileInfo(failure.file).baseName() + u": "_s + failure.reason);
        QVERIFY2(found.value(0).startsWith(u"libbroken: ") && found.takeFirst().size() > 15,
                 qPrintable(found.value(0)));
        QCOMPARE(found,
                 (QStringList{u"libemptystub: its metadata lacks id, name, version, dependencies"_s,
                              u"libforeignstub: its interface is \"org.example.Something/1.0\", "
                              "expected \"org.toran.IPlugin/1.x\""_s,
                              u"libotherqtstub: it refuses its own metadata, which state that it depends on "
                              "Qt 6.4"_s,
                              u"libthrowingstub: the constructor of the stub fails"_s,
                              u"place: there is no such directory"_s}));
    }

    void onlyTheGoodOneIsUsed()
    {
        QCOMPARE(m_host->plugins().plugins().size(), 1);
        const PluginManager::Plugin &plugin = m_host->plugins().plugins().constFirst();
        QCOMPARE(QFileInfo(plugin.file).fileName(), u"libgoodstub.so"_s);
        QCOMPARE(plugin.name, u"Stub"_s);
        QCOMPARE(plugin.version, u"1.2"_s);
        QCOMPARE(plugin.description, u"A <b>stub</b>"_s);
        // What the refused ones had registered is gone again.
        QCOMPARE(m_host->fileFilters().filters(), QList<QObject *>{plugin.object});
        QCOMPARE(m_host->hostWindow().nmrContextMenu()->actions().size(), 1);
        QCOMPARE(m_host->fileFilters().nameFilters(), QStringList{u"Stub files (*.stub)"_s});
        // Items of its kind, whoever has made them.
        QVERIFY(!m_host->plugins().itemMaker(41));
        for (const QString &id : {u"{5e2b3f0c-3a55-4a6a-9c52-6f1c0d0c7a01}"_s, u"another"_s})
            QCOMPARE(m_host->plugins().itemMaker(42, id), qobject_cast<IPlugin_v1_4 *>(plugin.object));
    }

    void readFile()
    {
        const QString other =
            u"File %1 is not of a kind that is known here; files that can be read: Stub files (*.stub)"_s;
        const QString lost =
            u"%1: a MAGRES file begins with a line #$magres-abinitio-v1.0, this one with \"other\": if "
            "the line was lost, put it back"_s;
        QTemporaryDir directory;
        for (const auto &[name, content, items, message] :
             {std::tuple("quartz.1.stub", "stub data", 1, QString()),
              std::tuple("a", "stub-fail", 0, u"the stub fails on purpose"_s), std::tuple("b", "other", 0, other),
              std::tuple("b.MAGRES", "other", 0, lost), std::tuple("c", "", 0, u"File %1 is empty"_s)}) {
            QFile file(directory.filePath(QLatin1String(name)));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) >= 0 && file.flush());
            const qsizetype before = m_host->scene().documentItems().size();
            HostApplication::ReadResult result;
            const QByteArray shown = failure([&] { result = m_host->readFile(file.fileName()); });
            QCOMPARE(QString::fromUtf8(shown), message.contains(u'%') ? message.arg(file.fileName()) : message);
            QCOMPARE(m_host->scene().documentItems().size() - before, items);
            QCOMPARE(result.items.size(), items);
            if (items) {
                QCOMPARE(result.filter, m_host->plugins().plugins().constFirst().object.get());
                QCOMPARE(qobject_cast<DocumentItem *>(result.items[0])->source(), u"quartz.1"_s);
            }
        }
    }

private:
    std::unique_ptr<HostApplication> m_host;
};

QTEST_MAIN(TestPluginManager)
#include "tst_pluginmanager.moc"
