// SPDX-License-Identifier: BSD-3-Clause
#include "host/DataEngine.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "host/HostWindow.h"
#include "host/MainScene.h"
#include "host/NucleusTables.h"
#include "host/PageLayout.h"
#include "host/WorkspaceLayout.h"
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

/// "left,top width×height", to a tenth.
QString text(const QRectF &rect)
{
    const auto number = [](double value) { return QString::number(std::round(10 * value) / 10 + 0.0); };
    return rect.isNull()
        ? u"-"_s
        : number(rect.left()) + u',' + number(rect.top()) + u' ' + number(rect.width()) + u'×' + number(rect.height());
}

template <typename Items>
QStringList places(const Items &items)
{
    QStringList texts;
    for (const QGraphicsWidget *item : items)
        texts.append(text(item->geometry()));
    return texts;
}

/// A table that is wide however it is drawn.
class WideTable : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE int tableModel_rowCount() { return 2; }
    Q_INVOKABLE int tableModel_columnCount() { return 40; }
    Q_INVOKABLE QVariantList tableModel_columns() { return QVariantList(40, QVariantMap()); }
};

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

    void rowsOfPages()
    {
        using namespace PageLayout;
        const auto below = [](double bottom, double height) {
            return text(rowBelow(bottom ? QRectF(100, 20, 50, bottom - 20) : QRectF(), height));
        };
        QCOMPARE(below(0, 340), u"38,38 717.7×340"_s);
        QCOMPARE(below(320, 340), u"38,334 717.7×340"_s);
        // The margin at the foot of a page of 1122.5 is kept to the last bit.
        QCOMPARE(below(730.5, 340), u"38,744.5 717.7×340"_s);
        QCOMPARE(below(730.6, 340), u"38,1160.5 717.7×340"_s);
        QCOMPARE(below(1122.5, 200), u"38,1160.5 717.7×200"_s);
        QCOMPARE(below(1150, 200), u"38,1164 717.7×200"_s);
        QCOMPARE(below(2400, 1046.4), u"38,3405.5 717.7×1046.4"_s);
        const QRectF row(10, 20, 500, 300);
        QCOMPARE(text(moleculePart(row)) + u' ' + text(tablePart(row)), u"10,20 200×300 224,20 286×300"_s);
        QCOMPARE(text(moleculePart(row, 0.3)) + u' ' + text(tablePart(row, 0.3)), u"10,20 150×300 174,20 336×300"_s);
        QList<double> shares;
        for (double width : {0.0, 100.0, 434.79, 900.0})
            shares.append(std::round(1000 * moleculeShareBeside(width)) / 1000);
        QCOMPARE(shares, (QList<double>{0.4, 0.4, 0.375, 0.25}));
        QList<int> pages;
        for (double bottom : {0.0, 30.0, 1122.5, 1122.6, 2245.0, 2246.0})
            pages.append(pageCount(QRectF(0, 10, bottom, bottom - 10)));
        QCOMPARE(pages, (QList<int>{1, 1, 1, 2, 2, 3}));
        QVERIFY(pageOf(-5) == 0 && pageOf(1122.4) == 0 && pageOf(1122.5) == 1 && page(2).top() == 2245);
    }

    void rowsOfTheWindow()
    {
        using WorkspaceLayout::Row;
        const auto placed = [](const QList<Row> &rows, const QSizeF &window) {
            QStringList texts;
            for (const WorkspaceLayout::Place &place : WorkspaceLayout::place(rows, window))
                texts += {text(place.left), text(place.right)};
            return texts.join(u' ');
        };
        const Row both{Row::Structure, 500}, line{Row::Spectrum}, plane{Row::Map};
        // What is left over is shared 1 : 1.2 : 1.6.
        QCOMPARE(placed({both, line, plane}, {1000, 1324}),
                 u"6,6 482×340 494,6 500×340 - 6,352 988×380 - 6,738 988×580"_s);
        QCOMPARE(placed({both, line, plane}, {1000, 300}),
                 u"6,6 482×240 494,6 500×240 - 6,252 988×260 - 6,518 988×420"_s);
        QCOMPARE(placed({{Row::Structure, 10}}, {1000, 500}), u"6,6 586.8×488 598.8,6 395.2×488"_s);
        QCOMPARE(placed({{Row::Structure, 900}}, {300, 500}), u"6,6 134.4×488 146.4,6 327.6×488"_s);
        QCOMPARE(placed({{Row::Structure, 500, true, false}}, {1000, 500}), u"6,6 988×488 -"_s);
        // A window may be narrower than its rows.
        QCOMPARE(placed({{Row::Structure, 500, false, true}, line}, {400, 540}), u"- 6,6 468×250 - 6,262 468×272"_s);
    }

    void itemsOfThePages()
    {
        MainScene &scene = m_host->scene();
        scene.createMolItem({}, {}, false);
        scene.addCustomTableItem(new QObject, false);
        scene.createNMRItem({}, spectrumMap(1), false);
        scene.createNMRItem({}, spectrumMap(2), false); // a map is higher
        scene.createMolItem({}, {}, false);
        scene.addCustomTableItem(new WideTable, false); // takes from the molecule what it may
        scene.addCustomTableItem(new QObject, false); // no molecule is without a table
        const QStringList expected{u"38,38 287.1×340"_s,     u"339.1,38 416.6×340"_s,  u"38,392 717.7×360"_s,
                                   u"38,1160.5 717.7×560"_s, u"38,1734.5 179.4×340"_s, u"231.4,1734.5 524.3×340"_s,
                                   u"38,2283 717.7×340"_s};
        QCOMPARE(places(scene.documentItems()), expected);
        QCOMPARE(text(scene.sceneRect()), u"0,0 793.7×3367.5"_s);
    }

    void itemsOfTheWindow()
    {
        MainScene &scene = m_host->scene();
        scene.setWorkspaceSize({800, 600});
        scene.setLayout(MainScene::Layout::Workspace);
        QCOMPARE(text(scene.sceneRect()), u"0,0 800×600"_s);
        QList<DocumentItem *> items; // of the front row last
        const auto keep = [&](QGraphicsWidget *item) {
            items.append(qobject_cast<DocumentItem *>(item));
            return items.last();
        };
        keep(scene.createNMRItem({}, spectrumMap(2), false));
        keep(scene.createNMRItem({}, spectrumMap(1), false));
        keep(scene.createMolItem({}, {}, false));
        keep(scene.addCustomTableItem(new WideTable, false))->linkObject(items[2]);
        keep(scene.addCustomTableItem(new QObject, false));
        scene.setWorkspaceSize({1000, 1310}); // 120 beyond what they need
        const double unit = 120 / 4.8;
        const double structure = 240 + unit, line = 260 + 1.2 * unit, map = 420 + 1.6 * unit;
        const auto row = [](double top, double height) { return text({6, top, 988, height}); };
        const QString left = text({6, 6, 290.4, structure}), right = text({302.4, 6, 691.6, structure});
        const double second = 12 + structure, third = second + structure + 6, last = third + map + 6;
        const QStringList all{row(third, map), row(last, line), left, right, row(second, structure)};
        QCOMPARE(places(items), all);
        QCOMPARE(text(scene.sceneRect()), u"0,0 1000×1310"_s);
        // What is put away or put by hand leaves its room to the others.
        items[0]->setVisible(false);
        scene.updatePages();
        items[1]->setGeometry({70, 80, 900, 1400});
        scene.notePlacedByHand(*items[1]);
        QCOMPARE(places(items).mid(1),
                 (QStringList{u"70,80 900×1400"_s, u"6,6 290.4×646"_s, u"302.4,6 691.6×646"_s, u"6,658 988×646"_s}));
        QCOMPARE(text(scene.sceneRect()), u"0,0 1000×1486"_s);
        QCOMPARE(text(items[1]->place().workspace), u"70,80 900×1400"_s);
        QCOMPARE(text(scene.placeOf(*items[1]).page), u"38,612 717.7×360"_s);
        scene.setOnPage(items[3], false);
        QCOMPARE(places(QList{items[2], items[4]}), (QStringList{u"6,6 988×646"_s, u"6,658 988×646"_s}));
        scene.setOnPage(items[3], true);
        items[0]->setVisible(true);
        scene.arrangeAll();
        QCOMPARE(places(items), all);
        scene.setLayout(MainScene::Layout::Pages);
        QCOMPARE(text(items[1]->geometry()), u"38,612 717.7×360"_s);
    }

private:
    std::unique_ptr<HostApplication> m_host;
};

QTEST_MAIN(TestHostContract)
#include "tst_hostcontract.moc"
