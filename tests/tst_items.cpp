// SPDX-License-Identifier: BSD-3-Clause
#include "items/AtomSelection.h"
#include "items/ContourLines.h"
#include "items/Contours.h"
#include "items/Decimation.h"
#include "items/LabelPlacement.h"
#include "items/MoleculeItem.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"
#include "items/NmrPlot.h"
#include "items/PeakLabelBand.h"
#include "items/StackedTraces.h"
#include "items/TableItem.h"
#include "items/TableModel.h"

#include <QAbstractItemModelTester>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMenu>
#include <QPicture>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// What a plug-in's table object offers, over two columns of given rows.
class StubTable : public QObject {
    Q_OBJECT

public:
    QList<QPair<QString, double>> rows{{u"C"_s, 1.5}, {u"H"_s, -2.25}};
    QGraphicsWidget *item = nullptr;
    QAbstractItemView *view = nullptr;
    QAbstractItemModel *model = nullptr;
    int inits = 0;
    QList<QVariantMap> messages;

    Q_INVOKABLE void tableItem_init(QGraphicsWidget *i, QAbstractItemView *v, QAbstractItemModel *m)
    {
        ++inits;
        item = i;
        view = v;
        model = m;
    }
    Q_INVOKABLE QString tableItem_objectTitle() { return u"Rows"_s; }
    Q_INVOKABLE void tableItem_onLMessage(QVariantMap message)
    {
        messages.append(message);
        // As a plug-in does whose selection follows: it reports whole rows.
        QMetaObject::invokeMethod(item, "sendMessage", Q_ARG(QVariant, AtomSelection::toMessage({0, 1})));
    }
    Q_INVOKABLE int tableModel_rowCount() { return int(rows.size()); }
    Q_INVOKABLE int tableModel_columnCount() { return 2; }
    Q_INVOKABLE QVariantList tableModel_columns()
    {
        return {QVariantMap{{u"Type"_s, 0}, {u"Digits"_s, -1}}, QVariantMap{{u"Type"_s, 7}, {u"Digits"_s, 3}}};
    }
    Q_INVOKABLE QVariant tableModel_data(QModelIndex index, int role)
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        const auto &row = rows.at(index.row());
        return index.column() == 0 ? QVariant(row.first) : QVariant(row.second);
    }
    Q_INVOKABLE QVariant tableModel_headerData(int section, Qt::Orientation orientation, int role)
    {
        return role == Qt::DisplayRole && orientation == Qt::Horizontal ? QVariant(u"Column %1"_s.arg(section))
                                                                        : QVariant();
    }

    void replaceRows(const QList<QPair<QString, double>> &newRows)
    {
        QMetaObject::invokeMethod(model, "beginResetModel");
        rows = newRows;
        QMetaObject::invokeMethod(model, "endResetModel");
    }
};

/// Keeps what it receives.
class Listener : public DocumentItem {
public:
    Listener() : DocumentItem({}) { }
    void receiveMessage(const QVariantMap &message) override { received.append(message); }
    QList<QVariantMap> received;
};

QVariantMap atom(int element, double x, double y, double z, const QList<int> &bonds = {})
{
    QVariantMap map{{u"El"_s, element}, {u"X"_s, x}, {u"Y"_s, y}, {u"Z"_s, z}};
    if (!bonds.isEmpty())
        map.insert(u"NB.Num"_s, QVariant::fromValue(bonds));
    return map;
}

QVariantMap water()
{
    return {{u"ID"_s, QUuid::createUuid()},
            {u"Atoms"_s,
             QVariantList{atom(8, 0, 0, 0, {1, 2}), atom(1, 0.76, 0.59, 0, {0}), atom(1, -0.76, 0.59, 0, {0})}}};
}

QVariant vector8(double first, double second, double rest)
{
    DoubleVector values(8, rest);
    values[0] = first;
    values[1] = second;
    return QVariant::fromValue(values);
}

QVariantMap peak(const QString &label, double f2, double f1, double height = 1)
{
    return {{u"PeakLabel"_s, label}, {u"Pos"_s, QVariant::fromValue(DoubleVector{f2, f1})}, {u"Height"_s, height}};
}

/// 1H at 600 MHz over 10..0 ppm; 2D with the same in F1. `points` holds n2 * n1 values.
QVariantMap entryMap(int n2, int n1, const DoubleVector &points, const QVariantList &peaks = {})
{
    const QVariantMap nucleus{{u"Name"_s, u"H"_s}, {u"Isotope"_s, 1}};
    const double second = n1 > 1 ? 1 : 0;
    const QVariantMap info{{u"SpectrometerFrequencies"_s, vector8(600, n1 > 1 ? 600 : 400, 400)},
                           {u"SW"_s, vector8(6000, 6000 * second, 0)},
                           {u"SpectrumRef"_s, vector8(3000, 3000 * second, 0)},
                           {u"Nucleides"_s, QVariantList{nucleus, nucleus}}};
    return {{u"Length"_s, QVariant::fromValue(QList<int>{n2, n1, 1, 1, 1, 1, 1, 1})},
            {u"DataPoints"_s, QVariant::fromValue(QList<DoubleVector>{points, DoubleVector(points.size(), 0.0)})},
            {u"SpecInfo"_s, info},
            {u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}}}};
}

DoubleVector onePoint(int size, int at, double height = 1)
{
    DoubleVector points(size, 0.0);
    points[at] = height;
    return points;
}

/// The box of all pixels that are not white.
QRect inkBox(const QImage &image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

QImage blank(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

} // namespace

class tst_Items : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // --- table

    void tableModelKeepsTheRulesOfModels()
    {
        StubTable table;
        TableModel model(&table);
        table.model = &model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.index(1, 1).data().toDouble(), -2.25);
        QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), u"Column 1"_s);
        QVERIFY(model.index(0, 1).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
        QVERIFY(model.index(0, 0).data(Qt::TextAlignmentRole).toInt() & Qt::AlignLeft);

        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        table.replaceRows({{u"N"_s, 3.0}});
        QCOMPARE(resets.count(), 1);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.index(0, 0).data().toString(), u"N"_s);
        model.endResetModel(); // without a begin
        QCOMPARE(resets.count(), 1);
        QVERIFY(!model.data(model.index(5, 0)).isValid());
    }

    void tableObjectThatOffersNothingIsAnEmptyTable()
    {
        QObject bare;
        TableModel model(&bare);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(model.columnCount(), 0);
        QCOMPARE(model.columnCode(0), -1);

        auto table = std::make_unique<StubTable>();
        model.setTable(table.get());
        QCOMPARE(model.rowCount(), 2);
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        table.reset();
        QCOMPARE(resets.count(), 1);
        QCOMPARE(model.rowCount(), 0);
    }

    void tableItemServesItsTable()
    {
        auto *table = new StubTable;
        QPointer<StubTable> guard(table);
        {
            TableItem item(table);
            item.resize(300, 200);
            QCOMPARE(table->inits, 1);
            QCOMPARE(table->item, &item);
            QCOMPARE(table->view, item.view());
            QCOMPARE(table->model, item.view()->model());
            QCOMPARE(item.title(), u"Rows"_s);
            QCOMPARE(item.table(), table);

            int code = 0;
            int digits = 0;
            QVERIFY(QMetaObject::invokeMethod(&item, "colId", Q_RETURN_ARG(int, code), Q_ARG(qint8, qint8(1))));
            QVERIFY(QMetaObject::invokeMethod(&item, "colDigits", Q_RETURN_ARG(int, digits), Q_ARG(qint8, qint8(1))));
            QCOMPARE(code, 7);
            QCOMPARE(digits, 3);
            QCOMPARE(item.colId(2), -1);
            QCOMPARE(item.colId(-1), -1);

            auto *menu = new QMenu;
            QAction *action = menu->addAction(u"Create spectrum..."_s);
            QVERIFY(QMetaObject::invokeMethod(&item, "typeCntxtMenu", Q_ARG(QMenu *, menu)));
            QVERIFY(item.contextMenu()->actions().contains(action));
            delete menu;
            QVERIFY(!item.contextMenu()->actions().contains(action));
        }
        QVERIFY2(!guard, "the item owns its table");
    }

    void paperShowsTheRowsThatFitAndCountsTheOthers()
    {
        auto *table = new StubTable;
        TableItem item(table);
        table->replaceRows(QList<QPair<QString, double>>(50, {u"C"_s, 1.0}));
        QImage image = blank({400, 400});
        QPainter painter(&image);
        item.paintTable(&painter, QRectF(0, 0, 400, 200));
        painter.end();
        const QRect ink = inkBox(image);
        QVERIFY(ink.bottom() < 200);
        QVERIFY2(ink.bottom() > 150, "rows as far as the area goes");
        item.resize(item.fullSize());
        QCOMPARE(item.view()->verticalHeader()->length(), 50 * item.view()->rowHeight(0));
        QVERIFY(item.contentRect().height() >= 51 * item.view()->rowHeight(0));
    }

    // --- links and selection

    void messagesGoBothWaysAndDoNotComeBack()
    {
        auto *table = new StubTable;
        TableItem tableItem(table);
        MoleculeItem molecule(water());
        QVERIFY(QMetaObject::invokeMethod(&tableItem, "linkObject", Q_ARG(QObject *, &molecule)));
        tableItem.linkObject(&molecule); // again: still one link
        tableItem.linkObject(nullptr);
        QCOMPARE(tableItem.linkedItems().size(), 1);

        tableItem.sendMessage(AtomSelection::toMessage({1, 2, 7, -1}));
        QCOMPARE(molecule.selectedAtoms(), (QSet<int>{1, 2}));
        tableItem.sendMessage(QVariantMap{{u"type"_s, 5}, {u"data"_s, QVariantList{0}}});
        QCOMPARE(molecule.selectedAtoms(), (QSet<int>{1, 2}));

        // The table answers with its whole row, which must not overwrite what the user selected.
        molecule.setSelectedAtoms({1});
        molecule.sendMessage(AtomSelection::toMessage({1}));
        QCOMPARE(table->messages.size(), 1);
        QCOMPARE(table->messages.first(), (QVariantMap{{u"type"_s, 22}, {u"data"_s, QVariantList{1}}}));
        QCOMPARE(molecule.selectedAtoms(), QSet<int>{1});
    }

    void deletedItemsAreNoLongerLinked()
    {
        MoleculeItem molecule(water());
        auto listener = std::make_unique<Listener>();
        molecule.linkObject(listener.get());
        listener.reset();
        molecule.sendMessage(AtomSelection::toMessage({0}));
        QVERIFY(molecule.linkedItems().isEmpty());
    }

    void clickSelectsAtoms()
    {
        QGraphicsScene scene(0, 0, 320, 320);
        QGraphicsView view(&scene);
        view.resize(340, 340);
        auto *molecule = new MoleculeItem(water());
        auto *listener = new Listener;
        scene.addItem(molecule);
        scene.addItem(listener);
        molecule->setGeometry(0, 0, 300, 300);
        listener->setGeometry(0, 310, 10, 10);
        molecule->linkObject(listener);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const auto click = [&](int atomIndex, Qt::KeyboardModifiers modifiers = {}) {
            const QPointF pos = molecule->mapToScene(molecule->atomPosition(atomIndex));
            QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, view.mapFromScene(pos));
        };
        click(1);
        QCOMPARE(molecule->selectedAtoms(), QSet<int>{1});
        click(2, Qt::ControlModifier);
        QCOMPARE(molecule->selectedAtoms(), (QSet<int>{1, 2}));
        click(1, Qt::ControlModifier);
        QCOMPARE(molecule->selectedAtoms(), QSet<int>{2});
        click(0);
        QCOMPARE(molecule->selectedAtoms(), QSet<int>{0});
        QCOMPARE(listener->received.size(), 4);
        QCOMPARE(AtomSelection::fromMessage(listener->received.at(1)), (QSet<int>{1, 2}));

        // A drag turns the molecule and leaves the selection alone.
        const QPointF before = molecule->atomPosition(1);
        const QPoint start = view.mapFromScene(QPointF(40, 280));
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, start);
        QTest::mouseMove(view.viewport(), start + QPoint(60, -20));
        QTest::mouseMove(view.viewport(), start + QPoint(90, -40));
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, start + QPoint(90, -40));
        QVERIFY(QLineF(before, molecule->atomPosition(1)).length() > 5);
        QCOMPARE(molecule->selectedAtoms(), QSet<int>{0});
    }

    // --- molecule

    void moleculeKeepsItsMap()
    {
        QVariantMap map = water();
        MoleculeItem molecule(map);
        QCOMPARE(molecule.property("id").toUuid(), map.value(u"ID"_s).toUuid());
        QCOMPARE(molecule.molMap(), map);
        molecule.setSelectedAtoms({1});
        map.insert(u"Assignments"_s, QVariantList{1, u"x"_s});
        QVERIFY(QMetaObject::invokeMethod(&molecule, "setMolMap", Q_ARG(QVariantMap, map)));
        QCOMPARE(molecule.molMap(), map);
        QCOMPARE(molecule.selectedAtoms(), QSet<int>{1});
        QVERIFY(!MoleculeItem({}).id().isNull());
    }

    void damagedDescriptionsAreDrawnAsFarAsTheyGo_data()
    {
        const double nan = std::nan("");
        QTest::addColumn<QVariantMap>("description");
        QTest::newRow("nothing") << QVariantMap();
        QTest::newRow("atoms are text") << QVariantMap{{u"Atoms"_s, u"none"_s}};
        const auto withAtom = [](const QVariant &bad) {
            QVariantMap map = water();
            map.insert(u"Atoms"_s, map.value(u"Atoms"_s).toList() << bad);
            return map;
        };
        QTest::newRow("NaN") << withAtom(atom(6, nan, 0, 0, {0}));
        QTest::newRow("infinite") << withAtom(atom(6, 0, HUGE_VAL, 0));
        QTest::newRow("huge") << withAtom(atom(6, 0, 0, -1e300, {0}));
        QTest::newRow("no position") << withAtom(QVariantMap{{u"El"_s, 6}});
        QTest::newRow("bonds to nowhere") << withAtom(atom(6, 1, 1, 1, {99, -3, 3, 0}));
        QTest::newRow("unknown element") << withAtom(atom(-7, 1, 1, 1));
        QTest::newRow("on top of another") << withAtom(atom(6, 0, 0, 0, {0}));
        const auto withLattice = [](const DoubleVector &lattice) {
            QVariantMap map = water();
            map.insert(u"CrystallographicData"_s, QVariantMap{{u"Lattice"_s, QVariant::fromValue(lattice)}});
            return map;
        };
        QTest::newRow("zero lattice") << withLattice(DoubleVector(9, 0.0));
        QTest::newRow("parallel lattice") << withLattice({3, 0, 0, 3, 0, 0, 3, 0, 0});
        QTest::newRow("NaN lattice") << withLattice(DoubleVector(9, nan));
        QTest::newRow("short lattice") << withLattice({1, 2});
    }

    void damagedDescriptionsAreDrawnAsFarAsTheyGo()
    {
        QFETCH(QVariantMap, description);
        MoleculeItem molecule(description);
        molecule.resize(200, 200);
        QImage image = blank({200, 200});
        QPainter painter(&image);
        molecule.paint(&painter, nullptr, nullptr);
        painter.end();
        const QVariant atoms = description.value(u"Atoms"_s);
        if (atoms.typeId() != QMetaType::QVariantList)
            return;
        // The water is there, fitted and told apart by its atoms.
        for (int i = 0; i < 3; ++i)
            QVERIFY(molecule.contentRect().contains(molecule.atomPosition(i)));
        QVERIFY(QLineF(molecule.atomPosition(1), molecule.atomPosition(2)).length() > 20);
    }

    // --- NMR data

    void axesFollowTheFrequencies()
    {
        const Spectrum spectrum = Spectrum::fromMap(entryMap(8192, 1, DoubleVector(8192, 0.0)));
        QCOMPARE(spectrum.dimensions(), 1);
        // (3000 + 3000) Hz over 600.003 MHz, and -6000 / 8192 / 600.003.
        QVERIFY(std::abs(spectrum.axes[0].first - 9.99995) < 1e-7);
        QVERIFY(std::abs(spectrum.axes[0].step - -0.00122069702) < 1e-11);
        QCOMPARE(spectrum.axes[0].label(), u"¹H chemical shift / ppm"_s);

        const Spectrum square = Spectrum::fromMap(entryMap(4, 2, {1, 2, 3, 4, 5, 6, 7, 8}));
        QCOMPARE(square.dimensions(), 2);
        QCOMPARE(square.axes[1].size, 2);
        QCOMPARE(square.real()[1 * 4 + 2], 7.0);
    }

    void pointsAreSharedNotCopied()
    {
        NmrData data;
        const QVariantMap map = entryMap(16, 1, DoubleVector(16, 1.0));
        const QUuid id = data.addEntry(map, {});
        const QVariant held = map.value(u"DataPoints"_s);
        const auto *points = static_cast<const QList<DoubleVector> *>(held.constData());
        QCOMPARE(data.spectrum(id).real().data(), points->first().data());
    }

    void nucleusNames_data()
    {
        QTest::addColumn<QVariantMap>("nucleus");
        QTest::addColumn<QString>("expected");
        QTest::newRow("symbol and number") << QVariantMap{{u"Name"_s, u"C"_s}, {u"Isotope"_s, 13}} << u"¹³C"_s;
        QTest::newRow("nucleus as name") << QVariantMap{{u"Name"_s, u"27Al"_s}} << u"²⁷Al"_s;
        QTest::newRow("nucleus twice") << QVariantMap{{u"Name"_s, u"H"_s}, {u"Isotope"_s, u"1H"_s}} << u"¹H"_s;
        QTest::newRow("nothing") << QVariantMap() << QString();
    }

    void nucleusNames()
    {
        QFETCH(QVariantMap, nucleus);
        QFETCH(QString, expected);
        QVariantMap map = entryMap(8, 1, DoubleVector(8, 0.0));
        QVariantMap info = map.value(u"SpecInfo"_s).toMap();
        info.insert(u"Nucleides"_s, QVariantList{nucleus});
        map.insert(u"SpecInfo"_s, info);
        QCOMPARE(Spectrum::fromMap(map).axes[0].nucleus(), expected);
    }

    void parametersAreFoundInBothPlaces()
    {
        using Parameters = QMap<QString, QVariantHash>;
        const QVariantHash hash{{u"freq"_s, 500.0}};
        const auto original = [](const QVariant &value) { return QVariantMap{{u"OriginalParameters"_s, value}}; };
        const QVariant held = QVariant::fromValue(Parameters{{u"magres"_s, hash}});
        const QVariantMap fresh{{u"SpecInfo"_s, original(held)}};
        const QVariantMap updated{{u"SpecInfo"_s, original(QVariant())}, {u"RawData"_s, fresh}};
        const QVariantMap plain{{u"SpecInfo"_s, original(QVariantMap{{u"magres"_s, hash}})}};

        NmrData data;
        QObject *object = &data;
        for (const QVariantMap &map : {fresh, updated, plain}) {
            const QUuid id = data.addEntry(map, {});
            QVariantHash found;
            QVERIFY(QMetaObject::invokeMethod(object, "entryOrigParams", Q_RETURN_ARG(QVariantHash, found),
                                              Q_ARG(QUuid, id), Q_ARG(QString, u"magres"_s)));
            QCOMPARE(found, hash);
            QVERIFY(data.entryOrigParams(id, u"bruker"_s).isEmpty());

            const QVariantHash changed{{u"freq"_s, 600.0}};
            data.setEntryOrigParams(id, u"magres"_s, changed);
            QCOMPARE(data.entryOrigParams(id, u"magres"_s), changed);
        }
        QVERIFY(data.entryOrigParams(QUuid::createUuid(), u"magres"_s).isEmpty());
        QCOMPARE(object->property("entryIds").value<QList<QUuid>>().size(), 3);
        QCOMPARE(object->property("activeEntryId").toUuid(), data.entryIds().first());
    }

    void entriesComeAndGo()
    {
        NmrData data;
        QSignalSpy changes(&data, &NmrData::entryChanged);
        const QUuid a = data.addEntry(entryMap(8, 1, DoubleVector(8, 0.0), {peak(u"a"_s, 1, 0)}), u"a"_s);
        const QUuid b = QUuid::createUuid();
        data.insertSpectrum(b, entryMap(8, 1, DoubleVector(8, 0.0)));
        QCOMPARE(data.entryIds(), (QList<QUuid>{a, b}));
        QCOMPARE(changes.count(), 0);
        QCOMPARE(data.entryPeakList(a).value(u"PeakList"_s).toList().size(), 1);

        data.insertSpectrum(a, entryMap(16, 1, DoubleVector(16, 0.0)));
        QCOMPARE(changes.count(), 1);
        QCOMPARE(data.spectrum(a).axes[0].size, 16);
        QCOMPARE(data.entryName(a), u"a"_s);

        data.setActiveEntryId(QUuid::createUuid());
        QCOMPARE(data.activeEntryId(), a);
        data.removeEntry(a);
        QCOMPARE(data.activeEntryId(), b);
        data.removeEntry(b);
        QVERIFY(data.activeEntryId().isNull());
        QVERIFY(data.spectrum(b).isEmpty());
    }

    void damagedEntriesShowANote_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char *name, const QString &key, const QVariant &value) {
            QTest::newRow(name) << key << value;
        };
        row("no length", u"Length"_s, {});
        row("length is text", u"Length"_s, u"8"_s);
        row("overflowing length", u"Length"_s, QVariant::fromValue(QList<int>{INT_MAX, INT_MAX}));
        row("negative length", u"Length"_s, QVariant::fromValue(QList<int>{-8, -1}));
        row("too few points", u"DataPoints"_s, QVariant::fromValue(QList<DoubleVector>{DoubleVector(7)}));
        row("points of another type", u"DataPoints"_s, QVariantList{1, 2});
        row("no description", u"SpecInfo"_s, {});
        row("frequencies missing", u"SpecInfo"_s, QVariantMap{{u"SW"_s, vector8(1, 1, 1)}});
        row("no width", u"SpecInfo"_s,
            QVariantMap{{u"SpectrometerFrequencies"_s, vector8(600, 1, 1)},
                        {u"SW"_s, vector8(0, 0, 0)},
                        {u"SpectrumRef"_s, vector8(0, 0, 0)}});
    }

    void damagedEntriesShowANote()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        QVariantMap map = entryMap(8, 1, DoubleVector(8, 0.0));
        QVERIFY(!Spectrum::fromMap(map).isEmpty());
        map.insert(key, value);
        NmrItem item;
        item.resize(300, 200);
        const QUuid id = item.nmrData()->addEntry(map, {});
        QVERIFY(item.nmrData()->spectrum(id).isEmpty());
        QVERIFY(!item.nmrData()->spectrum(id).note.isEmpty());
        QImage image = blank({300, 200});
        QPainter painter(&image);
        item.plot()->paintTo(&painter, QRectF(0, 0, 300, 200));
        painter.end();
        QVERIFY2(!inkBox(image).isEmpty(), "the note");
    }

    // --- plots

    void envelopeKeepsExtremes()
    {
        DoubleVector values(100000, 0.0);
        quint32 state = 7;
        for (double &v : values) {
            state = state * 1664525u + 1013904223u;
            v = double(state >> 8) / double(1 << 24) - 0.5;
        }
        values[12345] = 40;
        values[77777] = -30;
        values[500] = std::nan("");
        const auto points = Decimation::envelope(values, -5, 1000000, 300);
        QVERIFY(points.size() <= 4 * 300);
        QVERIFY(std::is_sorted(points.begin(), points.end(), [](auto a, auto b) { return a.x() < b.x(); }));
        const auto [low, high] =
            std::minmax_element(points.begin(), points.end(), [](auto a, auto b) { return a.y() < b.y(); });
        QCOMPARE(*high, QPointF(12345, 40));
        QCOMPARE(*low, QPointF(77777, -30));
        QCOMPARE(points.front().x(), 0.0);
        QCOMPARE(points.back().x(), 99999.0);
        QCOMPARE(Decimation::envelope(values, 10, 20, 300).size(), size_t(11));
        QVERIFY(Decimation::envelope(values, 20, 10, 300).empty());
    }

    void blockMaximaKeepEveryPeak()
    {
        constexpr int width = 103;
        constexpr int height = 57;
        for (int at : {0, width - 1, 5 * width + 50, height * width - 1, 30 * width + 1}) {
            DoubleVector matrix(width * height, 0.0);
            matrix[at] = -8; // a negative peak is one as well
            matrix[1] = std::nan("");
            const auto grid = Decimation::blockMaxima(matrix, width, {0, width - 1}, {0, height - 1}, 10, 10);
            QVERIFY(grid.columns <= 10 && grid.rows <= 10);
            const auto cell = std::min_element(grid.cells.begin(), grid.cells.end());
            QCOMPARE(*cell, -8.0);
            const int index = int(cell - grid.cells.begin());
            const double x = grid.firstColumn + (index % grid.columns) * grid.columnStep;
            const double y = grid.firstRow + (index / grid.columns) * grid.rowStep;
            QVERIFY(std::abs(x - at % width) <= grid.columnStep / 2);
            QVERIFY(std::abs(y - at / width) <= grid.rowStep / 2);
        }
        const auto projections = Decimation::projections(DoubleVector{1, 5, 3, -1, -2, 9}, 3);
        QCOMPARE(projections.columns, (DoubleVector{1, 5, 9}));
        QCOMPARE(projections.rows, (DoubleVector{5, 9}));
    }

    void contourOfAGaussianIsItsCircle()
    {
        constexpr int size = 121;
        constexpr double centre = 60.3;
        constexpr double sigma = 15;
        DoubleVector values;
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x)
                values.push_back(std::exp(-(std::pow(x - centre, 2) + std::pow(y - centre, 2)) / (2 * sigma * sigma)));
        }
        for (double level : {0.1, 0.5, 0.9}) {
            const auto lines = Contours::lines(values, size, size, level);
            QCOMPARE(lines.size(), size_t(1));
            QVERIFY(lines.front().isClosed());
            const double radius = sigma * std::sqrt(-2 * std::log(level));
            for (const QPointF &p : lines.front())
                QVERIFY(std::abs(std::hypot(p.x() - centre, p.y() - centre) - radius) < 0.02);
        }
        QVERIFY(Contours::lines(values, size, size, 2.0).empty());
    }

    void contoursAtBordersAndSaddles()
    {
        const auto slope = Contours::lines(DoubleVector{0, 1, 2, 0, 1, 2, 0, 1, 2}, 3, 3, 0.5);
        QCOMPARE(slope.size(), size_t(1));
        QVERIFY(!slope.front().isClosed());
        QCOMPARE(slope.front().boundingRect(), QRectF(0.5, 0, 0, 2));
        // Two summits in opposite corners: apart when the middle lies below the level, joined when above.
        const auto apart = Contours::lines(DoubleVector{1, 0, 0, 1}, 2, 2, 0.6);
        const auto joined = Contours::lines(DoubleVector{1, 0, 0, 1}, 2, 2, 0.4);
        QCOMPARE(apart.size(), size_t(2));
        QCOMPARE(joined.size(), size_t(2));
        const auto length = [](const QPolygonF &line) { return QLineF(line.first(), line.last()).length(); };
        QVERIFY(std::abs(length(apart[0]) - 0.4 * M_SQRT2) < 1e-12);
        QVERIFY(std::abs(length(joined[0]) - 0.4 * M_SQRT2) < 1e-12);
        QVERIFY(apart[0].boundingRect().contains(QPointF(0.2, 0.2))
                || apart[1].boundingRect().contains(QPointF(0.2, 0.2)));
        QVERIFY(joined[0].boundingRect().contains(QPointF(0.8, 0.2))
                || joined[1].boundingRect().contains(QPointF(0.8, 0.2)));
        QVERIFY(Contours::lines(DoubleVector{1, 2}, 2, 1, 1.5).empty());
    }

    void levelsFollowTheLargestMagnitude()
    {
        const auto levels = Contours::levels(DoubleVector{0, 10, -4}, 0.1, 2, 10);
        QCOMPARE(levels, (std::vector<double>{1, -1, 2, -2, 4, 8}));
        QVERIFY(Contours::levels(DoubleVector(5, 0.0), 0.1, 2, 10).empty());
    }

    void labelsKeepTheirDistance()
    {
        const auto placed = LabelPlacement::spread({50, 50, 51, 90, 99}, 10, 5, 95);
        for (size_t i = 1; i < placed.size(); ++i)
            QVERIFY(placed[i] - placed[i - 1] >= 10 - 1e-9);
        QVERIFY(placed.front() >= 5 && placed.back() <= 95);
        QVERIFY(std::abs((placed[0] + placed[1] + placed[2]) / 3 - 151.0 / 3) < 1e-9); // about their own mean
        QCOMPARE(LabelPlacement::spread({20, 40}, 10, 0, 100), (std::vector<double>{20, 40}));
    }

    void tracesRunToTheRightWithFallingShift()
    {
        NmrItem item;
        item.resize(500, 300);
        item.nmrData()->addEntry(entryMap(1000, 1, onePoint(1000, 250), {peak(u"H1"_s, 7.5, 0), peak(u"H2"_s, 7.5, 0)}),
                                 {});
        auto *traces = dynamic_cast<StackedTraces *>(item.plot()->content());
        QVERIFY(traces);
        QImage image = blank({500, 300});
        QPainter painter(&image);
        item.plot()->paintTo(&painter, QRectF(image.rect()));
        painter.end();
        const QCPAxis *ppm = item.plot()->xAxis;
        QVERIFY(ppm->coordToPixel(9) < ppm->coordToPixel(1));
        QCOMPARE(ppm->label(), u"¹H chemical shift / ppm"_s);
        // The narrow peak, a quarter of the way from 10 to 0 ppm, reaches up to its height.
        const int x = qRound(ppm->coordToPixel(7.5));
        const int top = qRound(item.plot()->yAxis->coordToPixel(0.9));
        const QRect around(x - 2, top, 5, 1);
        QVERIFY(!inkBox(image.copy(around)).isEmpty());
        QVERIFY(inkBox(image.copy(around.translated(12, 0))).isEmpty());
        QCOMPARE(traces->labelBand()->visibleTexts(), QStringList{u"H1,H2  7.50"_s});
    }

    void manyPeakLabelsLeaveOutTheLowest()
    {
        QVariantList peaks;
        DoubleVector points(4000, 0.0);
        for (int i = 0; i < 100; ++i) {
            points[20 + 39 * i] = i == 70 ? 9 : 1;
            peaks.append(peak(u"P%1"_s.arg(i), 9.99995 - (20 + 39 * i) * 0.0024999875, 0));
        }
        NmrItem item;
        item.resize(400, 300);
        item.nmrData()->addEntry(entryMap(4000, 1, points, peaks), {});
        auto *traces = dynamic_cast<StackedTraces *>(item.plot()->content());
        QPicture picture;
        QPainter painter(&picture);
        item.plot()->paintTo(&painter, QRectF(0, 0, 400, 300));
        const QStringList texts = traces->labelBand()->visibleTexts();
        QVERIFY(texts.size() > 10 && texts.size() < 60);
        QVERIFY(std::any_of(texts.begin(), texts.end(), [](const QString &t) { return t.startsWith(u"P70 "); }));
    }

    void mapsRunToTheLeftAndDown()
    {
        NmrItem item;
        item.resize(500, 400);
        // One summit at row 16 of 64 and column 96 of 128: 7.5 ppm in F1 and 2.5 ppm in F2, near enough.
        DoubleVector points;
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 128; ++x)
                points.push_back(std::exp(-std::pow((x - 96) / 4.0, 2) - std::pow((y - 16) / 4.0, 2)));
        }
        item.nmrData()->addEntry(entryMap(128, 64, points, {peak(u"H1,H2"_s, 2.5, 7.5)}), {});
        QVERIFY(item.plot()->content());
        QImage image = blank({500, 400});
        QPainter painter(&image);
        item.plot()->paintTo(&painter, QRectF(image.rect()));
        painter.end();
        QVERIFY(item.plot()->xAxis->coordToPixel(9) < item.plot()->xAxis->coordToPixel(1));
        QVERIFY(item.plot()->yAxis->coordToPixel(9) > item.plot()->yAxis->coordToPixel(1));

        ContourLines *contours = nullptr;
        for (int i = 0; i < item.plot()->plottableCount(); ++i) {
            if (auto *found = qobject_cast<ContourLines *>(item.plot()->plottable(i)))
                contours = found;
        }
        QVERIFY(contours);
        QVERIFY(contours->levels().size() >= 5);
        for (const auto &level : contours->levels()) {
            QCOMPARE(level.lines.size(), 1);
            QVERIFY(level.lines.first().isClosed());
            const QPointF middle = level.lines.first().boundingRect().center();
            QVERIFY(QLineF(middle, QPointF(2.5, 7.5)).length() < 0.02);
        }
    }

    void plotsKeepTheirSizeAtEveryResolution()
    {
        NmrItem item;
        item.nmrData()->addEntry(entryMap(1000, 1, onePoint(1000, 250), {peak(u"H1"_s, 7.5, 0)}), {});
        QRect boxes[2];
        for (int i = 0; i < 2; ++i) {
            QImage image = blank({400, 300});
            image.setDotsPerMeterX(i ? 47244 : 3780); // 1200 and 96 dpi
            image.setDotsPerMeterY(i ? 47244 : 3780);
            QPainter painter(&image);
            item.plot()->paintTo(&painter, QRectF(20, 20, 350, 250));
            painter.end();
            boxes[i] = inkBox(image);
        }
        QCOMPARE(boxes[1], boxes[0]);
        QVERIFY(boxes[0].width() > 300 && boxes[0].height() > 200);
    }

    void plotFollowsItsData()
    {
        NmrItem item;
        item.resize(400, 300);
        const QUuid id = item.nmrData()->addEntry(entryMap(100, 1, onePoint(100, 25)), {});
        QVERIFY(item.plot()->content());
        item.plot()->xAxis->setRange(4, 6);
        item.nmrData()->insertSpectrum(id, entryMap(100, 1, onePoint(100, 50)));
        QVERIFY(item.plot()->content());
        QCOMPARE(item.plot()->xAxis->range().upper, 6.0); // an edit keeps what one looks at
        QVERIFY(QMetaObject::invokeMethod(item.plot(), "fullReset"));
        QVERIFY(item.plot()->content());
        QVERIFY(item.plot()->xAxis->range().upper > 9.9);
        item.nmrData()->insertSpectrum(id, entryMap(10, 10, DoubleVector(100, 1.0)));
        QVERIFY(item.plot()->content());
        QVERIFY(item.title().contains(u"2D"_s));
        item.nmrData()->removeEntry(id);
        QVERIFY(!item.plot()->content());
    }
};

QTEST_MAIN(tst_Items)
#include "tst_items.moc"
