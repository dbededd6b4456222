// SPDX-License-Identifier: BSD-3-Clause
#include "host/DataEngine.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/NucleusTables.h"
#include "host/PageLayout.h"
#include "host/WMainWindow.h"
#include "items/MoleculeItem.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"
#include "items/NmrPlot.h"
#include "items/TableItem.h"
#include "items/TableModel.h"
#include "support/HostContract.h"
#include "support/MetaTypes.h"

#include <QGraphicsView>
#include <QUndoStack>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QHash<QString, const QMetaObject *> &hostObjects()
{
    static const QHash<QString, const QMetaObject *> objects{
        {u"mainWindow"_s, &WMainWindow::staticMetaObject},
        {u"mainScene"_s, &MainScene::staticMetaObject},
        {u"dataEngine"_s, &DataEngine::staticMetaObject},
        {u"nmrDataTables"_s, &NucleusTables::staticMetaObject},
        {u"fileFilters"_s, &FileFilterRegistry::staticMetaObject},
        {u"nmrItem"_s, &NmrItem::staticMetaObject},
        {u"nmrData"_s, &NmrData::staticMetaObject},
        {u"nmrPlot"_s, &NmrPlot::staticMetaObject},
        {u"molItem"_s, &MoleculeItem::staticMetaObject},
        {u"tableItem"_s, &TableItem::staticMetaObject},
        {u"tableModel"_s, &TableModel::staticMetaObject},
    };
    return objects;
}

QVariantMap spectrumMap(int points2, int points1)
{
    QList<int> length(8, 1);
    length[0] = points2;
    length[1] = points1;
    const DoubleVector points(size_t(points2) * points1, 1.0);
    DoubleVector frequencies(8, 400.0), widths(8, 0.0), references(8, 0.0);
    widths[0] = widths[1] = 4000;
    const QVariantMap info{{u"SpectrometerFrequencies"_s, QVariant::fromValue(frequencies)},
                           {u"SW"_s, QVariant::fromValue(widths)},
                           {u"SpectrumRef"_s, QVariant::fromValue(references)}};
    return {{u"Length"_s, QVariant::fromValue(length)},
            {u"DataPoints"_s, QVariant::fromValue(QList<DoubleVector>{points, points})},
            {u"SpecInfo"_s, info}};
}

} // namespace

/// The host side of what plug-ins call by name: a renamed method fails here and not at a user's desk.
class TestHostContract : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_host = std::make_unique<HostApplication>(true); }
    void cleanup() { m_host.reset(); }

    void methodsExist_data()
    {
        QTest::addColumn<QString>("object");
        QTest::addColumn<QByteArray>("signature");
        QTest::addColumn<QByteArray>("result");
        for (const HostMethod *method : HostContract::methods) {
            QByteArrayList arguments;
            for (size_t i = 0; i < method->argumentCount(); ++i)
                arguments.append(method->arguments[i]);
            const QByteArray signature =
                QMetaObject::normalizedSignature(method->name + ('(' + arguments.join(',')) + ')');
            const QByteArray result = *method->result ? method->result : "void";
            QTest::newRow(qPrintable(QLatin1String(method->object) + u'.' + QLatin1String(signature)))
                << QString::fromLatin1(method->object) << signature << result;
        }
    }
    void methodsExist()
    {
        QFETCH(QString, object);
        QFETCH(QByteArray, signature);
        QFETCH(QByteArray, result);
        const QMetaObject *meta = hostObjects().value(object);
        QVERIFY2(meta, "no such host object");
        const int index = meta->indexOfMethod(signature);
        QVERIFY2(index >= 0, "the host object has no such method");
        QCOMPARE(QByteArray(meta->method(index).typeName()), result);
        QCOMPARE(meta->method(index).access(), QMetaMethod::Public);
    }

    void propertiesExist_data()
    {
        QTest::addColumn<QString>("object");
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("language") << "mainWindow" << QByteArray("language") << QByteArray("QString");
        QTest::newRow("menu") << "mainWindow" << QByteArray("nmrContextMenu") << QByteArray("QMenu*");
        QTest::newRow("entries") << "nmrData" << QByteArray("entryIds") << QByteArray("QList<QUuid>");
        QTest::newRow("active entry") << "nmrData" << QByteArray("activeEntryId") << QByteArray("QUuid");
        for (const char *item : {"nmrItem", "molItem", "tableItem"})
            QTest::newRow(item) << QString::fromLatin1(item) << QByteArray("id") << QByteArray("QUuid");
    }
    void propertiesExist()
    {
        QFETCH(QString, object);
        QFETCH(QByteArray, property);
        QFETCH(QByteArray, type);
        const QMetaObject *meta = hostObjects().value(object);
        const int index = meta->indexOfProperty(property);
        QVERIFY(index >= 0);
        QCOMPARE(QByteArray(meta->property(index).typeName()), type);
    }

    void objectsAreFoundByName()
    {
        QMainWindow *window = nullptr;
        for (QWidget *widget : QApplication::allWidgets()) {
            if (widget->objectName() == u"mainWindow")
                window = qobject_cast<QMainWindow *>(widget);
        }
        QVERIFY(window);
        auto *scene = window->findChild<QGraphicsScene *>(u"mainScene"_s);
        QVERIFY(scene);
        QVERIFY(window->findChild<QGraphicsView *>(u"mainView"_s));
        QVERIFY(scene->findChild<QUndoStack *>(u"sceneUndoStack"_s));
        QVERIFY(scene->metaObject()->indexOfSignal("activeItemChanged(QGraphicsWidget*)") >= 0);
        QVERIFY(qApp->property("isHeadless").toBool());
        QVERIFY(qobject_cast<FileFilterRegistry *>(qApp->property("fileFilters").value<QObject *>()));
        QVERIFY(qobject_cast<NucleusTables *>(qApp->property("nmrDataTables").value<QObject *>()));
    }

    void nucleusTables()
    {
        NucleusTables tables;
        QCOMPARE(tables.spin(u"27Al"_s), u"5/2"_s);
        QCOMPARE(tables.quadrupoleMoment(u"17O"_s), -2.558);
        QCOMPARE(tables.naturalAbundance(u"13C"_s), 1.11);
        QCOMPARE(tables.spin(u"12C"_s), QString());
        QCOMPARE(tables.isotopes(u"Cu"_s), (QStringList{u"63Cu"_s, u"65Cu"_s}));
        QCOMPARE(tables.quadrupolarIsotopes(u"H"_s), QStringList{u"2H"_s});
    }

    void customData()
    {
        const QUuid id = QUuid::createUuid();
        const QVariantMap map{{u"ID"_s, id}, {u"x"_s, 1}};
        auto *engine = qobject_cast<DataEngine *>(m_host->window().dataEngine());
        m_host->scene().setCustomData(map, nullptr);
        QCOMPARE(engine->getDataMap(id), map);
        QVERIFY(engine->getDataMap(QUuid::createUuid()).isEmpty());
        m_host->scene().delCustomData(id, nullptr);
        QVERIFY(engine->getDataMap(id).isEmpty());
    }

    void currentNmrItemFollowsTheDocument()
    {
        MainScene &scene = m_host->scene();
        QCOMPARE(m_host->window().getNMRData(), nullptr);
        QCOMPARE(m_host->window().nmrPlot(), nullptr);
        QSignalSpy active(&scene, &MainScene::activeItemChanged);
        auto *first = qobject_cast<NmrItem *>(scene.createNMRItem(scene.getEmptyRect(), spectrumMap(16, 1), true));
        auto *second = qobject_cast<NmrItem *>(scene.createNMRItem(scene.getEmptyRect(), spectrumMap(16, 1), true));
        QCOMPARE(active.size(), 2);
        QCOMPARE(m_host->window().getNMRData(), second->getNMRData());
        scene.removeWithUndo(second);
        QCOMPARE(m_host->window().getNMRData(), first->getNMRData());
        QCOMPARE(scene.documentItems().size(), 1);
        scene.undoStack()->undo();
        QCOMPARE(m_host->window().getNMRData(), second->getNMRData());
        QCOMPARE(scene.documentItems().size(), 2);
    }

    /// Items must neither overlap nor cross the edge of a page, however many there are.
    void itemsFindFreePlaces()
    {
        MainScene &scene = m_host->scene();
        for (int i = 0; i < 4; ++i) {
            scene.createMolItem(scene.emptyStructureRect(), {}, false);
            scene.addCustomTableItem(new QObject, false);
            scene.createNMRItem(scene.getEmptyRect(), spectrumMap(16, i % 2 ? 16 : 1), true);
        }
        const QList<DocumentItem *> items = scene.documentItems();
        QCOMPARE(items.size(), 12);
        for (const DocumentItem *a : items) {
            const QRectF page = PageLayout::page(PageLayout::pageOf(a->geometry().top()));
            QVERIFY(page.contains(a->geometry()));
            for (const DocumentItem *b : items)
                QVERIFY(a == b || !a->geometry().intersects(b->geometry()));
        }
        QVERIFY(scene.pageCount() > 1);
        QVERIFY(scene.sceneRect().contains(scene.usedRect()));
    }

private:
    std::unique_ptr<HostApplication> m_host;
};

QTEST_MAIN(TestHostContract)
#include "tst_hostcontract.moc"
