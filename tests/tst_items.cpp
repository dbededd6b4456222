// SPDX-License-Identifier: BSD-3-Clause
#include "Shapes.h"
#include "data/ExperimentalSpectrum.h"
#include "data/AtomSelection.h"
#include "items/plot/Contours.h"
#include "items/plot/Decimation.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PeakLabelBand.h"
#include "items/plot/StackedTraces.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"

#include <set>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

/// What a plug-in's table object offers, over two columns of given rows.
class StubTable : public QObject {
    Q_OBJECT

public:
    int rows = 2;
    QGraphicsWidget *item = nullptr;
    QList<QVariantMap> messages;

    Q_INVOKABLE void tableItem_init(QGraphicsWidget *i, QAbstractItemView *, QAbstractItemModel *) { item = i; }
    Q_INVOKABLE void tableItem_onLMessage(QVariantMap message)
    {
        messages.append(message);
        // As a plug-in does whose selection follows: it reports whole rows.
        QMetaObject::invokeMethod(item, "sendMessage", Q_ARG(QVariant, AtomSelection::toMessage({0, 1})));
    }
    Q_INVOKABLE int tableModel_rowCount() { return rows; }
    Q_INVOKABLE int tableModel_columnCount() { return 2; }
    Q_INVOKABLE QVariantList tableModel_columns() { return {QVariantMap(), QVariantMap{{u"Type"_s, 7}}}; }
    Q_INVOKABLE QVariant tableModel_data(QModelIndex index, int role)
    {
        return role == Qt::DisplayRole ? QVariant(10 * index.row() + index.column()) : QVariant();
    }
};

QVariantMap atom(int element, double x, double y, double z, const QList<int> &bonds = {})
{
    return {{u"El"_s, element}, {u"X"_s, x}, {u"Y"_s, y}, {u"Z"_s, z}, {u"NB.Num"_s, QVariant::fromValue(bonds)}};
}

QVariantMap water()
{
    const QVariantList atoms{atom(8, 0, 0, 0, {1, 2}), atom(1, 0.76, 0.59, 0, {0}), atom(1, -0.76, 0.59, 0, {0})};
    return {{u"ID"_s, QUuid::createUuid()}, {u"Atoms"_s, atoms}};
}

/// 1H at 600 MHz over 10..0 ppm.
QVariantMap entryMap(const DoubleVector &points, const QVariantList &peaks = {})
{
    const int size = int(points.size());
    QVariantMap map = toEntryMap(ExperimentalSpectrum{{}, {{u"1H"_s, 600, 0, 10, -10.0 / size, size}}, points});
    map.insert(u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}});
    return map;
}

} // namespace

class tst_Items : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // --- table

    void tableModelKeepsTheRulesOfModels()
    {
        QObject bare; // offers nothing: an empty table
        TableModel model(&bare);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.columnCount(), 0);
        auto table = std::make_unique<StubTable>();
        model.setTable(table.get());
        QCOMPARE(model.index(1, 1).data(), 11);
        QCOMPARE(model.columnCode(1), 7);
        QCOMPARE(model.columnCode(2), -1);

        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        model.beginResetModel();
        --table->rows;
        model.endResetModel();
        model.endResetModel(); // without a begin
        QCOMPARE(resets.count(), 1);
        QCOMPARE(model.rowCount(), 1);
        QVERIFY(!model.data(model.index(5, 0)).isValid());
        table.reset();
        QCOMPARE(resets.count(), 2);
        QCOMPARE(model.rowCount(), 0);
    }

    // --- links and selection

    void messagesGoBothWaysAndDoNotComeBack()
    {
        auto *table = new StubTable;
        TableItem tableItem(table);
        MoleculeItem molecule(water());
        tableItem.linkObject(&molecule);
        tableItem.linkObject(&molecule); // again: still one link
        tableItem.linkObject(std::make_unique<MoleculeItem>(water()).get()); // gone at once
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

    // --- molecule

    void damagedDescriptionsAreDrawnAsFarAsTheyGo()
    {
        const double nan = std::nan("");
        for (const QVariantMap &bad : {atom(6, nan, 0, 0, {0}), atom(6, 0, 0, -1e300, {0}), QVariantMap{{u"El"_s, 6}},
                                       atom(6, 1, 1, 1, {99, -3, 3, 0}), atom(-7, 1, 1, 1), atom(6, 0, 0, 0, {0})}) {
            QVariantMap description = water();
            description[u"Atoms"_s] = description.value(u"Atoms"_s).toList() << bad;
            const QVariant lattice = QVariant::fromValue(DoubleVector{3, 0, 0, 3, 0, 0, nan, 0, 0});
            description[u"CrystallographicData"_s] = QVariantMap{{u"Lattice"_s, lattice}};
            MoleculeItem molecule(description);
            molecule.resize(200, 200);
            Shapes::of({200, 200}, [&](QPainter *painter) { molecule.paint(painter, nullptr, nullptr); });
            // The water is there, fitted and told apart by its atoms.
            for (int i = 0; i < 3; ++i)
                QVERIFY(molecule.contentRect().contains(molecule.atomPosition(i)));
            QVERIFY(QLineF(molecule.atomPosition(1), molecule.atomPosition(2)).length() > 20);
        }
    }

    // --- NMR data

    void damagedEntriesShowANote()
    {
        QVariantMap map = entryMap(DoubleVector(8, 0.0));
        map[u"DataPoints"_s] = QVariantList{1, 2};
        NmrItem item;
        item.nmrData()->addEntry(map, {});
        item.resize(600, 200);
        const QStringList drawn =
            Shapes::of({600, 200}, [&](QPainter *painter) { item.plot()->paintTo(painter, QRectF(0, 0, 600, 200)); });
        QVERIFY2(!drawn.filter(u"The spectrum has no data points"_s).isEmpty(), qPrintable(drawn.join(u'\n')));
    }

    // --- plots

    /// Against the plainest way, on numbers at random: groups of 20 points, blocks of 3 by 2 and less at the ends.
    void decimationKeepsWhatEveryPartHas()
    {
        std::mt19937 random(11);
        DoubleVector values(1100);
        for (double &v : values)
            v = random() % 9 == 0 ? std::nan("") : double(random() % 2001) / 1000 - 1;
        std::vector<QPointF> expected;
        for (int group = 0; group < 50; ++group) {
            int low = -1, high = -1, first = -1, last = -1;
            for (int i = 70 + 20 * group; i < 90 + 20 * group; ++i) {
                if (std::isnan(values[i]))
                    continue;
                first = first < 0 ? i : first;
                last = i;
                low = low < 0 || values[i] < values[low] ? i : low;
                high = high < 0 || values[i] > values[high] ? i : high;
            }
            for (int i : std::set<int>{first, low, high, last})
                expected.emplace_back(i, values[i]);
        }
        QVERIFY(Decimation::envelope(values, 70, 1069, 50) == expected);
        QCOMPARE(Decimation::envelope(DoubleVector(100, 1.0), -7, 40, 10).size(), size_t(2 * 10)); // more than 4 each
        QCOMPARE(Decimation::envelope(DoubleVector(100, 1.0), 60, 140, 10).size(), size_t(40)); // each of them
        QVERIFY(Decimation::envelope(values, 20, 19, 10).empty());
        // Of groups that do not divide the number of points, and beyond both ends.
        values[1] = 40;
        values[1098] = -30;
        values[1099] = 0;
        const auto all = Decimation::envelope(values, -5, 1000000, 30);
        const auto [low, high] =
            std::minmax_element(all.begin(), all.end(), [](auto a, auto b) { return a.y() < b.y(); });
        QVERIFY(std::is_sorted(all.begin(), all.end(), [](auto a, auto b) { return a.x() < b.x(); }));
        QVERIFY(*high == QPointF(1, 40) && *low == QPointF(1098, -30) && all.back() == QPointF(1099, 0));
        QVERIFY(all.size() <= 4 * 30);

        constexpr int width = 13;
        for (int top : {0, 2}) {
            const auto grid = Decimation::blockMaxima({values.data(), 13 * 12}, width, {1, 11}, {top, top + 6}, 4, 4);
            QCOMPARE(QSize(grid.columns, grid.rows), QSize(4, 4));
            QVERIFY(grid.firstColumn == 2 && grid.columnStep == 3 && grid.firstRow == top + 0.5 && grid.rowStep == 2);
            for (int row = 0; row < 4; ++row)
                for (int column = 0; column < 4; ++column) {
                    double largest = 0;
                    for (int y = top + 2 * row; y <= std::min(top + 6, top + 2 * row + 1); ++y)
                        for (int x = 1 + 3 * column; x <= std::min(11, 3 + 3 * column); ++x)
                            if (std::abs(values[y * width + x]) > std::abs(largest))
                                largest = values[y * width + x];
                    QCOMPARE(grid.cell(column, row), largest);
                }
        }
        QCOMPARE(Decimation::blockMaxima(values, width, {5, 4}, {0, 3}, 4, 4).columns, 0);
        const auto projections = Decimation::projections(DoubleVector{1, 5, 3, -1, -2, 9}, 3);
        QCOMPARE(projections.columns, (DoubleVector{1, 5, 9}));
        QCOMPARE(projections.rows, (DoubleVector{5, 9}));
    }

    /// A line has a point on each edge of the grid that the level crosses, and goes from edge to edge of a square.
    void contoursCrossEdgesOnce()
    {
        std::mt19937 random(3);
        for (int round = 0; round < 40; ++round) {
            const int columns = 5 + round % 4, rows = 4 + round % 3;
            DoubleVector values(size_t(columns * rows));
            for (double &v : values)
                v = double(random() % 1000) + 0.25;
            const double level = 400 + 5 * round;
            std::map<std::pair<int, int>, int> crossings; // of places in thousandths: how many lines should be there
            const auto at = [](const QPointF &p) { return std::pair(qRound(1e3 * p.x()), qRound(1e3 * p.y())); };
            const auto edge = [&](int x, int y, int dx, int dy) {
                const double a = values[y * columns + x], b = values[(y + dy) * columns + x + dx];
                if ((a >= level) != (b >= level))
                    ++crossings[at(QPointF(x, y) + QPointF(dx, dy) * ((level - a) / (b - a)))];
            };
            for (int y = 0; y < rows; ++y)
                for (int x = 0; x < columns; ++x) {
                    if (x + 1 < columns)
                        edge(x, y, 1, 0);
                    if (y + 1 < rows)
                        edge(x, y, 0, 1);
                }
            for (const QPolygonF &line : Contours::lines(values, columns, rows, level)) {
                const auto isEnd = [&](const QPointF &p) {
                    return p.x() == 0 || p.y() == 0 || p.x() == columns - 1 || p.y() == rows - 1;
                };
                QVERIFY(line.isClosed() || (isEnd(line.first()) && isEnd(line.last())));
                for (qsizetype i = line.isClosed() ? 1 : 0; i < line.size(); ++i)
                    --crossings[at(line[i])];
                for (qsizetype i = 1; i < line.size(); ++i) {
                    const QPointF middle = (line[i] + line[i - 1]) / 2, step = line[i] - line[i - 1];
                    const QRectF square(std::floor(middle.x()), std::floor(middle.y()), 1, 1);
                    QVERIFY(square.contains(line[i]) && square.contains(line[i - 1]) && !step.isNull());
                }
            }
            for (const auto &[place, left] : crossings)
                QCOMPARE(left, 0);
        }
        using Levels = std::vector<double>;
        QCOMPARE(Contours::levels(DoubleVector{0, 8, -2}, 0.25, 2, 10), (Levels{2, 4})); // neither 8 nor -2 itself
        QCOMPARE(Contours::levels(DoubleVector{0, 3, -8}, 0.25, 2, 2), (Levels{2, -2, -4}));
        QCOMPARE(Contours::levels(DoubleVector{0, 10, -4}, 0.1, 2, 10), (Levels{1, -1, 2, -2, 4, 8}));
        QCOMPARE(Contours::levels(DoubleVector{-1, -8}, 0.25, 2, 1), (Levels{-2}));
        QCOMPARE(Contours::levels(DoubleVector{0, 0}, 0.25, 2, 3), Levels());
    }

    /// Two summits in opposite corners: apart when the middle lies below the level, joined when above.
    void contoursAtSaddles()
    {
        for (const auto &[level, x] : {std::pair(0.6, 0.2), std::pair(0.4, 0.8)}) {
            const auto lines = Contours::lines(DoubleVector{1, 0, 0, 1}, 2, 2, level);
            QCOMPARE(lines.size(), size_t(2));
            for (const QPolygonF &line : lines)
                QVERIFY(std::abs(QLineF(line.first(), line.last()).length() - 0.4 * M_SQRT2) < 1e-12);
            QVERIFY(lines[0].boundingRect().contains(QPointF(x, 0.2))
                    || lines[1].boundingRect().contains(QPointF(x, 0.2)));
        }
    }

    void plotsKeepTheirSizeAtEveryResolution()
    {
        DoubleVector line(1000);
        line[250] = 1;
        NmrItem item;
        const QVariantMap peak{{u"PeakLabel"_s, u"H1"_s}, {u"Pos"_s, QVariant::fromValue(DoubleVector{7.5, 0})}};
        QVariantMap other = peak;
        other[u"PeakLabel"_s] = u"H2"_s;
        item.nmrData()->addEntry(entryMap(line, {peak, other}), {});
        const auto box = [&](int dotsPerMeter) { // of all pixels that are not white
            QImage image(400, 300, QImage::Format_RGB32);
            image.fill(Qt::white);
            image.setDotsPerMeterX(dotsPerMeter);
            image.setDotsPerMeterY(dotsPerMeter);
            item.plot()->paintTo(std::make_unique<QPainter>(&image).get(), QRectF(20, 20, 350, 250));
            QRect ink;
            for (int i = 0; i < 400 * 300; ++i)
                if (image.pixel(i % 400, i / 400) != qRgb(255, 255, 255))
                    ink |= QRect(i % 400, i / 400, 1, 1);
            return ink;
        };
        QCOMPARE(box(47244), box(3780)); // 1200 and 96 dpi
        QVERIFY(box(3780).width() > 300 && box(3780).height() > 200);
        const auto *traces = dynamic_cast<StackedTraces *>(item.plot()->content());
        QCOMPARE(traces->labelBand()->visibleTexts(), QStringList{u"H1,H2  7.50"_s});
    }

    void plotFollowsItsData()
    {
        NmrItem item;
        const QUuid id = item.nmrData()->addEntry(entryMap({1, 2, 3}), {});
        QVERIFY(item.plot()->content());
        item.plot()->xAxis->setRange(4, 6);
        item.nmrData()->insertSpectrum(id, entryMap({3, 2, 1}));
        QVERIFY(item.plot()->content());
        QCOMPARE(item.plot()->xAxis->range().upper, 6.0); // an edit keeps what one looks at
        QVERIFY(QMetaObject::invokeMethod(item.plot(), "fullReset") && item.plot()->content());
        QVERIFY(item.plot()->xAxis->range().upper > 9.9);
        item.nmrData()->removeEntry(id);
        QVERIFY(!item.plot()->content());
    }
};

QTEST_MAIN(tst_Items)
#include "tst_items.moc"
