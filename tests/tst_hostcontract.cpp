// SPDX-License-Identifier: BSD-3-Clause
#include "host/DataEngine.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "host/HostWindow.h"
#include "host/MainScene.h"
#include "host/NucleusTables.h"
#include "host/PageLayout.h"
#include "window/WMainWindow.h"
#include "data/ExperimentalSpectrum.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"
#include "support/HostContract.h"

#include <QtTest>
#include <QtWidgets>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

const QHash<QByteArray, const QMetaObject *> hostObjects{{"mainWindow", &HostWindow::staticMetaObject},
                                                         {"mainScene", &MainScene::staticMetaObject},
                                                         {"dataEngine", &DataEngine::staticMetaObject},
                                                         {"nmrDataTables", &NucleusTables::staticMetaObject},
                                                         {"fileFilters", &FileFilterRegistry::staticMetaObject},
                                                         {"nmrItem", &NmrItem::staticMetaObject},
                                                         {"nmrData", &NmrData::staticMetaObject},
                                                         {"nmrPlot", &NmrPlot::staticMetaObject},
                                                         {"molItem", &MoleculeItem::staticMetaObject},
                                                         {"tableItem", &TableItem::staticMetaObject},
                                                         {"tableModel", &TableModel::staticMetaObject}};

QVariantMap spectrumMap(int dimensions)
{
    ExperimentalSpectrum spectrum;
    for (int d = 0; d < dimensions; ++d)
        spectrum.dimensions.push_back({u"1H"_s, 400, 0, 10, -0.5, 16});
    spectrum.data.resize(dimensions == 2 ? 256 : 16);
    return toEntryMap(spectrum);
}

} // namespace

/// The host side of what plug-ins call by name: a renamed method fails here and not at a user's desk.
class TestHostContract : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_host = std::make_unique<HostApplication>(); }
    void cleanup() { m_host.reset(); }

    void methodsExist()
    {
        for (const HostMethod *method : HostContract::methods) {
            QByteArrayList arguments;
            for (size_t i = 0; i < method->argumentCount(); ++i)
                arguments.append(method->arguments[i]);
            const QByteArray signature =
                QMetaObject::normalizedSignature(method->name + ('(' + arguments.join(',')) + ')');
            const QMetaObject *meta = hostObjects.value(method->object);
            QVERIFY2(meta, method->object);
            const int index = meta->indexOfMethod(signature);
            QVERIFY2(index >= 0, method->object + ('.' + signature));
            QCOMPARE(meta->method(index).typeName(), *method->result ? method->result : "void");
            QCOMPARE(meta->method(index).access(), QMetaMethod::Public);
        }
    }

    void propertiesExist()
    {
        for (const auto &[object, property, type] :
             {std::tuple("mainWindow", "language", "QString"), std::tuple("mainWindow", "nmrContextMenu", "QMenu*"),
              std::tuple("nmrData", "entryIds", "QList<QUuid>"), std::tuple("nmrData", "activeEntryId", "QUuid"),
              std::tuple("nmrItem", "id", "QUuid"), std::tuple("molItem", "id", "QUuid"),
              std::tuple("tableItem", "id", "QUuid")}) {
            const QMetaObject *meta = hostObjects.value(object);
            QCOMPARE(meta->property(meta->indexOfProperty(property)).typeName(), type);
        }
    }

    void objectsAreFoundByName()
    {
        QMainWindow *window = nullptr;
        for (QWidget *widget : QApplication::allWidgets())
            if (widget->objectName() == u"mainWindow")
                window = qobject_cast<QMainWindow *>(widget);
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
        const Nuclides &nuclides = Nuclides::table();
        QCOMPARE(nuclides.isotopes(u"Cu"_s), (QStringList{u"63Cu"_s, u"65Cu"_s}));
        QCOMPARE(nuclides.quadrupolarIsotopes(u"H"_s), QStringList{u"2H"_s});
    }

    /// Items must neither overlap nor cross the edge of a page, however many there are.
    void itemsFindFreePlaces()
    {
        MainScene &scene = m_host->scene();
        for (int i = 0; i < 4; ++i) {
            scene.createMolItem(scene.emptyStructureRect(), {}, false);
            scene.addCustomTableItem(new QObject, false);
            scene.createNMRItem(scene.getEmptyRect(), spectrumMap(1 + i % 2), true);
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
