// SPDX-License-Identifier: BSD-3-Clause
#include "data/ExperimentalSpectrum.h"
#include "data/AtomSelection.h"
#include "items/plot/ContourLines.h"
#include "items/plot/Contours.h"
#include "items/plot/Decimation.h"
#include "items/plot/LabelPlacement.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PeakLabelBand.h"
#include "items/plot/StackedTraces.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"

#include <QtTest>
#include <QtWidgets>

#include <cmath>
#include <functional>
#include <map>
#include <random>
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

QVariantMap peak(const QString &label, double f2, double f1 = 0)
{
    return {{u"PeakLabel"_s, label}, {u"Pos"_s, QVariant::fromValue(DoubleVector{f2, f1})}, {u"Height"_s, 1.0}};
}

/// 1H at 600 MHz over 10..0 ppm; 2D with the same in F1. `points` holds n2 * n1 values.
QVariantMap entryMap(int n2, int n1, const DoubleVector &points, const QVariantList &peaks = {})
{
    ExperimentalSpectrum spectrum{{}, {{u"1H"_s, 600, 0, 10, -10.0 / n2, n2}}, points};
    if (n1 > 1)
        spectrum.dimensions.push_back({u"1H"_s, 600, 0, 10, -10.0 / n1, n1});
    QVariantMap map = toEntryMap(spectrum);
    map.insert(u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}});
    return map;
}

/// A Gaussian of height 1 there; the distance at which it has fallen to 1/e is that many points.
DoubleVector summit(int columns, int rows, double column, double row, double width)
{
    DoubleVector points;
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x)
            points.push_back(std::exp(-std::pow((x - column) / width, 2) - std::pow((y - row) / width, 2)));
    return points;
}

/// The box of all pixels that are not white.
QRect inkBox(const QImage &image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                box |= QRect(x, y, 1, 1);
    return box;
}

/// What is drawn on white paper of that size and resolution.
QImage drawn(const QSize &size, const std::function<void(QPainter *)> &draw, int dotsPerMeter = 3780)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    QPainter painter(&image);
    draw(&painter);
    return image;
}

QImage drawn(const QSize &size, NmrItem &item)
{
    item.resize(size);
    return drawn(size, [&](QPainter *painter) { item.plot()->paintTo(painter, QRectF({}, size)); });
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

    void clickSelectsAtoms()
    {
        QGraphicsScene scene(0, 0, 320, 320);
        QGraphicsView view(&scene);
        auto *molecule = new MoleculeItem(water());
        MoleculeItem listener(water());
        scene.addItem(molecule);
        molecule->setGeometry(0, 0, 300, 300);
        molecule->linkObject(&listener);
        view.show();
        const auto click = [&](int atomIndex, Qt::KeyboardModifiers modifiers = {}) {
            const QPointF pos = molecule->mapToScene(molecule->atomPosition(atomIndex));
            QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, view.mapFromScene(pos));
            return molecule->selectedAtoms();
        };
        QCOMPARE(click(1), QSet<int>{1});
        QCOMPARE(click(2, Qt::ControlModifier), (QSet<int>{1, 2}));
        QCOMPARE(click(1, Qt::ControlModifier), QSet<int>{2});
        QCOMPARE(click(0), QSet<int>{0});
        QCOMPARE(listener.selectedAtoms(), QSet<int>{0});
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
            drawn({200, 200}, [&](QPainter *painter) { molecule.paint(painter, nullptr, nullptr); });
            // The water is there, fitted and told apart by its atoms.
            for (int i = 0; i < 3; ++i)
                QVERIFY(molecule.contentRect().contains(molecule.atomPosition(i)));
            QVERIFY(QLineF(molecule.atomPosition(1), molecule.atomPosition(2)).length() > 20);
        }
    }

    // --- NMR data

    void damagedEntriesShowANote()
    {
        for (const auto &[key, value] : std::initializer_list<std::pair<QString, QVariant>>{
                 {u"Length"_s, QVariant::fromValue(QList<int>{INT_MAX, INT_MAX})},
                 {u"Length"_s, QVariant::fromValue(QList<int>{-8, -1})},
                 {u"DataPoints"_s, QVariant::fromValue(QList<DoubleVector>{DoubleVector(7)})},
                 {u"DataPoints"_s, QVariantList{1, 2}},
                 {u"SpecInfo"_s,
                  QVariantMap{{u"SpectrometerFrequencies"_s, QVariant::fromValue(DoubleVector{600})}}}}) {
            QVariantMap map = entryMap(8, 1, DoubleVector(8, 0.0));
            map.insert(key, value);
            NmrItem item;
            const QUuid id = item.nmrData()->addEntry(map, {});
            QVERIFY(item.nmrData()->spectrum(id).isEmpty() && !item.nmrData()->spectrum(id).note.isEmpty());
            QVERIFY2(!inkBox(drawn({300, 200}, item)).isEmpty(), "the note");
        }
    }

    // --- plots

    void envelopeKeepsExtremes()
    {
        DoubleVector values(100000, 0.0);
        std::mt19937 random(7);
        for (double &v : values)
            v = double(random()) / double(random.max()) - 0.5;
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
        QCOMPARE(points.back().x(), 99999.0);
        QCOMPARE(Decimation::envelope(values, 10, 20, 300).size(), size_t(11));
    }

    void blockMaximaKeepEveryPeak()
    {
        constexpr int width = 103, height = 57;
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
        QCOMPARE(Contours::levels(DoubleVector{-1, -8}, 0.25, 2, 1), (Levels{-2}));
        QCOMPARE(Contours::levels(DoubleVector{0, 0}, 0.25, 2, 3), Levels());
    }

    void contourOfAGaussianIsItsCircle()
    {
        constexpr int size = 121;
        const DoubleVector values = summit(size, size, 60.3, 60.3, 21);
        for (double level : {0.1, 0.5, 0.9}) {
            const auto lines = Contours::lines(values, size, size, level);
            QCOMPARE(lines.size(), size_t(1));
            QVERIFY(lines.front().isClosed());
            const double radius = 21 * std::sqrt(-std::log(level));
            for (const QPointF &p : lines.front())
                QVERIFY(std::abs(std::hypot(p.x() - 60.3, p.y() - 60.3) - radius) < 0.02);
        }
        QVERIFY(Contours::lines(values, size, size, 2.0).empty());
        QCOMPARE(Contours::levels(DoubleVector{0, 10, -4}, 0.1, 2, 10), (std::vector<double>{1, -1, 2, -2, 4, 8}));
    }

    void contoursAtBordersAndSaddles()
    {
        const auto slope = Contours::lines(DoubleVector{0, 1, 2, 0, 1, 2, 0, 1, 2}, 3, 3, 0.5);
        QCOMPARE(slope.size(), size_t(1));
        QCOMPARE(slope.front().boundingRect(), QRectF(0.5, 0, 0, 2));
        // Two summits in opposite corners: apart when the middle lies below the level, joined when above.
        for (const auto &[level, x] : {std::pair(0.6, 0.2), std::pair(0.4, 0.8)}) {
            const auto lines = Contours::lines(DoubleVector{1, 0, 0, 1}, 2, 2, level);
            QCOMPARE(lines.size(), size_t(2));
            for (const QPolygonF &line : lines)
                QVERIFY(std::abs(QLineF(line.first(), line.last()).length() - 0.4 * M_SQRT2) < 1e-12);
            QVERIFY(lines[0].boundingRect().contains(QPointF(x, 0.2))
                    || lines[1].boundingRect().contains(QPointF(x, 0.2)));
        }
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
        item.nmrData()->addEntry(
            entryMap(1000, 1, summit(1000, 1, 250, 0, 0.1), {peak(u"H1"_s, 7.5), peak(u"H2"_s, 7.5)}), {});
        const QImage image = drawn({500, 300}, item);
        const QCPAxis *ppm = item.plot()->xAxis;
        QVERIFY(ppm->coordToPixel(9) < ppm->coordToPixel(1));
        QCOMPARE(ppm->label(), u"¹H chemical shift / ppm"_s);
        // The narrow peak, a quarter of the way from 10 to 0 ppm, reaches up to its height.
        const int top = qRound(item.plot()->yAxis->coordToPixel(0.9));
        const QRect around(qRound(ppm->coordToPixel(7.5)) - 2, top, 5, 1);
        QVERIFY(!inkBox(image.copy(around)).isEmpty());
        QVERIFY(inkBox(image.copy(around.translated(12, 0))).isEmpty());
        const auto *traces = dynamic_cast<StackedTraces *>(item.plot()->content());
        QCOMPARE(traces->labelBand()->visibleTexts(), QStringList{u"H1,H2  7.50"_s});
    }

    void mapsRunToTheLeftAndDown()
    {
        NmrItem item;
        // One summit at row 16 of 64 and column 96 of 128: 7.5 ppm in F1 and 2.5 ppm in F2, near enough.
        item.nmrData()->addEntry(entryMap(128, 64, summit(128, 64, 96, 16, 4), {peak(u"H1,H2"_s, 2.5, 7.5)}), {});
        const QImage image = drawn({500, 400}, item);
        QVERIFY(item.plot()->xAxis->coordToPixel(9) < item.plot()->xAxis->coordToPixel(1));
        QVERIFY(item.plot()->yAxis->coordToPixel(9) > item.plot()->yAxis->coordToPixel(1));

        // The colours lie where the peak lies: bluest there, white in the mirrored places.
        const auto blueness = [&](double f2, double f1) {
            const QPoint at(qRound(item.plot()->xAxis->coordToPixel(f2)), qRound(item.plot()->yAxis->coordToPixel(f1)));
            return 255 - qRed(image.pixel(at + QPoint(-6, -3)));
        };
        QVERIFY(blueness(2.5, 7.5) > 50);
        QCOMPARE(blueness(7.5, 7.5), 0);
        QCOMPARE(blueness(2.5, 2.5), 0);

        const auto *contours = item.plot()->findChild<ContourLines *>();
        QVERIFY(contours && contours->levels().size() >= 5);
        for (const auto &level : contours->levels()) {
            QCOMPARE(level.lines.size(), 1);
            QVERIFY(QLineF(level.lines.first().boundingRect().center(), QPointF(2.5, 7.5)).length() < 0.02);
        }
    }

    void plotsKeepTheirSizeAtEveryResolution()
    {
        NmrItem item;
        item.nmrData()->addEntry(entryMap(1000, 1, summit(1000, 1, 250, 0, 0.1), {peak(u"H1"_s, 7.5)}), {});
        const auto box = [&](int dotsPerMeter) {
            const auto draw = [&](QPainter *painter) { item.plot()->paintTo(painter, QRectF(20, 20, 350, 250)); };
            return inkBox(drawn({400, 300}, draw, dotsPerMeter));
        };
        QCOMPARE(box(47244), box(3780)); // 1200 and 96 dpi
        QVERIFY(box(3780).width() > 300 && box(3780).height() > 200);
    }

    void plotFollowsItsData()
    {
        NmrItem item;
        const QUuid id = item.nmrData()->addEntry(entryMap(100, 1, summit(100, 1, 25, 0, 0.1)), {});
        QVERIFY(item.plot()->content());
        item.plot()->xAxis->setRange(4, 6);
        item.nmrData()->insertSpectrum(id, entryMap(100, 1, summit(100, 1, 50, 0, 0.1)));
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
