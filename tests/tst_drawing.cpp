// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "ItemData.h"
#include "Shapes.h"
#include "items/molecule/ElementStyle.h"
#include "items/molecule/MoleculeView.h"
#include "items/plot/AgreementPlot.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PeakEditor.h"
#include "items/plot/PlotContent.h"

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

/// Carbon in the middle, oxygen bonded to it, nitrogen behind, hydrogen in front. No symmetry.
Molecule molecule()
{
    Molecule made;
    made.atoms = {
        {6, {0, 0, 0}, true}, {8, {1.5f, 0.25f, -0.5f}, true}, {7, {-0.5f, 1, -2}, true}, {1, {0.25f, -0.5f, 2}, true}};
    made.bonds = {{0, 1}};
    return made;
}

MoleculeView viewOf(const Molecule &shown)
{
    MoleculeView view;
    view.setMolecule(shown);
    view.setArea({0, 0, 400, 300});
    view.setRotation({}, 1);
    return view;
}

QStringList drawn(const MoleculeView &view)
{
    return Shapes::of({400, 300}, [&](QPainter *painter) { view.paint(painter); });
}

bool isNear(const QPointF &a, const QPointF &b, double distance = 0.05)
{
    return QLineF(a, b).length() <= distance;
}

/// The shapes of a plot of 600 by 400 pixels.
QStringList drawn(NmrItem &item)
{
    item.resize(600, 400);
    item.plot()->setGeometry(0, 0, 600, 400);
    item.plot()->content();
    item.plot()->replot();
    return Shapes::of({600, 400}, [&](QPainter *painter) { item.plot()->paintTo(painter, QRectF(0, 0, 600, 400)); });
}

/// The places of a shape on the plot's axes; an ellipse or a path has one.
QPolygonF places(const QString &shape, const QCPAxis *x, const QCPAxis *y)
{
    QPolygonF found;
    QList<double> numbers;
    for (const QString &word : shape.split(u' ').mid(1)) {
        bool isNumber = false;
        const double number = word.toDouble(&isNumber);
        if (isNumber)
            numbers.append(number);
    }
    for (qsizetype i = 0; i + 1 < numbers.size(); i += 2)
        found.append({x->pixelToCoord(numbers[i]), y->pixelToCoord(numbers[i + 1])});
    return found;
}

/// Empty when the shapes of that beginning lie there, each at its place.
QString difference(const QStringList &shapes, const QString &beginning, const QCPAxis *x, const QCPAxis *y,
                   const QList<QPolygonF> &expected)
{
    QList<QPolygonF> found;
    for (const QString &shape : shapes)
        if (shape.startsWith(beginning))
            found.append(places(shape, x, y));
    const auto near = [&](const QPointF &a, const QPointF &b) {
        return std::abs(a.x() - b.x()) <= 2e-3 * x->range().size()
            && std::abs(a.y() - b.y()) <= 4e-3 * y->range().size();
    };
    const bool same =
        std::equal(found.begin(), found.end(), expected.begin(), expected.end(), [&](const auto &a, const auto &b) {
            return std::equal(a.begin(), a.end(), b.begin(), b.end(), near);
        });
    QString text;
    QDebug(&text) << beginning << found << "instead of" << expected;
    return same ? QString() : text;
}

} // namespace

/// The shapes that items are drawn with: which, where, in which order and colour.
class TestDrawing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarningsOfQt(); }

    // --- molecules, at 70 pixels per Angstrom

    /// From behind to the front; what is behind is paler.
    void ballsAndSticks()
    {
        MoleculeView view = viewOf(molecule());
        view.setSelection({1});
        view.setLabels({u"C1"_s, QString(), u"N3"_s, u"H4"_s});
        view.setLines({{{0, {}}, {3, {}}, u"2.1"_s}, {{1, {}}, {7, {}}, u"?"_s}});
        const QString expected = uR"(
ellipse #aaaec5:1 0#e5e9fe,0.35#98a8fc,1#5e689c 130 101.35 23.1 23.1
path #d2ffffff:2.5 - 130 101.35
path - #000000 130 101.35
ellipse #ffffff:1 #ff9f00 270 153.85 31.5 31.5
ellipse #b07171:1 0#ffd6d6,0.35#ff5959,1#9e3737 270 153.85 23.1 23.1
line #993232:11.9 250.52 157.1 217.5 162.6
line #ff5353:10.3 250.52 157.1 217.5 162.6
line #686868:11.9 184.48 168.1 217.5 162.6
line #aeaeae:10.3 184.48 168.1 217.5 162.6
ellipse #878787:1 0#eaeaea,0.35#acacac,1#6b6b6b 165 171.35 23.1 23.1
path #d2ffffff:2.5 - 165 171.35
path - #000000 165 171.35
ellipse #8c8c8c:0.924 0#ffffff,0.35#ffffff,1#9e9e9e 182.5 206.35 15.4 15.4
path #d2ffffff:2.5 - 182.5 206.35
path - #000000 182.5 206.35
line #8e24aa:1.6:2 165 171.35 182.5 206.35
path #e6ffffff:3 - 173.75 188.85
path - #6d1c83 173.75 188.85)"_s;
        VERIFY_DRAWN(drawn(view), expected);
    }

    /// Semi-axes of 42, 21 and 10.5 pixels, the longest one 0.6 Angstrom; the carbon's ones, 7, 14 and 42, are turned
    /// out of the plane of the screen.
    void tensors()
    {
        const TensorShape flat{
            {4, -2, 1}, {QVector3D(0.8f, 0.6f, 0), QVector3D(-0.6f, 0.8f, 0), QVector3D(0, 0, 1)}, true};
        const TensorShape skewed{
            {-1, 2, 6},
            {QVector3D(0.48f, 0.6f, 0.64f), QVector3D(-0.36f, 0.8f, -0.48f), QVector3D(-0.8f, 0, 0.6f)},
            true};
        MoleculeView view = viewOf(molecule());
        view.setHydrogensVisible(false);
        view.setTensors({skewed, flat, {}, flat}, 1);
        view.setTensorAxesVisible(true);
        view.setSelection({0, 3});
        const QString expected = uR"(
ellipse #aaaec5:1 0#e5e9fe,0.35#98a8fc,1#5e689c 130 101.35 23.1 23.1
ellipse #966868:0.8 0#ffcdcd,0.5#ff5959,1#b33e3e 270 153.85 42 21 -36.87
curve #966868:0.7 25 257.4 137.05 263.7 145.45 276.3 162.25 282.6 170.65
curve #966868:0.7 25 236.4 179.05 253.2 166.45 286.8 141.25 303.6 128.65
curve #966868:0.7 25 282.6 170.65 305.4 140.43 292.8 123.63 257.4 137.05
line #154a9c:1.6 229.68 184.09 310.32 123.61
line #c63d00:1.6:2 285.12 174.01 254.88 133.69
line #154a9c:1.6 270 153.85 270 153.85
line #993232:11.9 250.52 157.1 217.5 162.6
line #ff5353:10.3 250.52 157.1 217.5 162.6
line #686868:11.9 184.48 168.1 217.5 162.6
line #aeaeae:10.3 184.48 168.1 217.5 162.6
ellipse #ffffff:1 #ff9f00 165 171.35 50.4 50.4
ellipse #747474:0.8 0#e6e6e6,0.5#acacac,1#787878 165 171.35 34.17 11.89 2.37
curve #747474:0.7 25 132.05 167.04 141.36 178.15 174.31 182.46 197.95 175.66
curve #747474:0.7 25 131.28 172 146.52 168.08 180.24 167.43 198.72 170.7
curve #747474:0.7 25 168.54 183.31 171.03 177.33 167.49 165.37 161.46 159.39
line #c63d00:1.6:2 160.97 176.39 169.03 166.31
line #154a9c:1.6 171.05 184.79 158.95 157.91
line #154a9c:1.6 205.32 171.35 124.68 171.35)"_s;
        VERIFY_DRAWN(drawn(view), expected);
        // Half the size; what would be thinner than 0.02 Angstrom is not.
        view.setTensors({{{4, 0.1, 0}, flat.axes, true}}, 0.5);
        VERIFY_DRAWN(drawn(view).filter(u"ellipse #7"_s), u"ellipse #747474:0.8 * 165 171.35 21 1.4 -36.87"_s);
    }

    /// Each edge of the cell, of the axis' colour at the first origin; letters beside the corners, away from the
    /// middle.
    void cellEdges()
    {
        for (int alongB : {1, 2}) { // cells
            Molecule crystal;
            crystal.cell = {QVector3D(-1, -1.2f, 0), QVector3D(2, 0, 0), QVector3D(0.5f, 1.2f, 0),
                            QVector3D(0.25f, -0.5f, 1.5f)};
            crystal.atoms = {{6, (*crystal.cell)[0], true}};
            MoleculeView view = viewOf(crystal);
            view.setPacking({Packing::Contents::Molecules, {1, alongB, 1}});
            const QPointF edges[] = {{140, 0}, {35, -84}, {17.5, 35}}; // pixels
            const QPointF origin = view.atomPosition(0);
            QVERIFY(isNear(origin, alongB == 1 ? QPointF(113.55, 174.5) : QPointF(96.05, 216.5))); // all in the middle
            QStringList pens;
            QList<QLineF> pieces[2]; // grey, coloured
            QPointF letters[4];
            for (const QString &shape : drawn(view)) {
                const QStringList words = shape.split(u' ');
                const auto point = [&](int i) { return QPointF(words[i].toDouble(), words[i + 1].toDouble()); };
                if (words[0] == u"line")
                    pieces[words[1].endsWith(u":1.4")].append({point(2), point(4)});
                if (words[0] == u"line" && words[1].endsWith(u":1.4"))
                    pens.append(words[1]);
                const auto letter = u"#707882 #c62828 #2e7d32 #1565c0"_s.split(u' ').indexOf(words.value(2));
                if (words[0] == u"path" && letter >= 0)
                    letters[letter] = point(3);
            }
            QCOMPARE(pieces[1].size(), 3 * 24);
            // The edge that comes forward out of the haze: from the back, and a quarter of the way on; 0.25 at depth 0.
            QCOMPARE((QStringList{pens[0], pens[24], pens[48], pens[54], pens[71]}),
                     u"#d45e5e:1.4 #629e65:1.4 #4d8acf:1.4 #3077c7:1.4 #1565c0:1.4"_s.split(u' '));
            QCOMPARE(pieces[0].size(), 24 * 12 * alongB - 3 * 24);
            for (int axis = 0; axis < 3; ++axis)
                for (int corner = 0; corner < 4 * alongB; ++corner) {
                    const QPointF start = origin + edges[(axis + 1) % 3] * (corner & 1)
                        + edges[(axis + 2) % 3] * (corner >> 1 & 1) + edges[1] * (corner >> 2),
                                  step = edges[axis] / 24;
                    int count = 0; // of 24 on the way to the other end, of each cell
                    for (const QLineF &piece : pieces[corner == 0])
                        for (int i = 0; i < 24; ++i)
                            count += isNear(piece.p1(), start + step * i) && isNear(piece.p2(), start + step * (i + 1));
                    QVERIFY2(count == 24 || count == 48, qPrintable(u"%1 %2: %3"_s.arg(axis).arg(corner).arg(count)));
                }
            const QPointF middle = (edges[0] + edges[1] + edges[2]) / 2;
            for (int i = 0; i < 4; ++i) {
                const QPointF corner = i == 0 ? QPointF() : edges[i - 1];
                const QPointF outward = corner - middle;
                QVERIFY(isNear(letters[i], origin + corner + outward * 9 / std::hypot(outward.x(), outward.y()), 3));
            }
            view.setCellVisible(false);
            QCOMPARE(drawn(view).size(), alongB);
        }
    }

    /// Tilted by 12 and -16 degrees after the longest edge lies to the right and the second longest one upwards;
    /// without a cell by the greatest extents. By numpy, in Angstrom from the first atom.
    void startOrientations()
    {
        const auto compare = [](const MoleculeView &view, const QList<QPointF> &expected) {
            for (int i = 0; i < 3; ++i) {
                const QPointF place = (view.atomPosition(i + 1) - view.atomPosition(0)) / 70;
                QVERIFY2(isNear(place, {expected[i].x(), -expected[i].y()}, 1e-3),
                         qPrintable(u"%1: %2 %3"_s.arg(i).arg(place.x()).arg(-place.y())));
            }
        };
        Molecule crystal;
        crystal.atoms = {{6, {0, 0, 0}, true}, {8, {1, 0, 0}, true}, {7, {0, 1, 0}, true}, {14, {0, 0, 1}, true}};
        crystal.cell = {QVector3D(), QVector3D(2, 0, 0), QVector3D(0, 2.8f, 0), QVector3D(0, 0, 2.4f)};
        MoleculeView view = viewOf(crystal);
        view.resetView();
        compare(view, {{-0.2756, -0.1999}, {0.9613, -0.0573}, {0, 0.9781}}); // a towards the viewer
        view.setMolecule(molecule());
        compare(view, {{-0.3753, 1.5074}, {-2.2446, -0.1127}, {1.9198, -0.215}});
    }

    /// The front one of those that reach there; what is very small is still hit within three pixels.
    void hits()
    {
        Molecule near = molecule();
        near.atoms[3].position *= QVector3D(0.5f, 0.5f, 1);
        MoleculeView view = viewOf(near);
        const QPointF carbon = view.atomPosition(0), oxygen = view.atomPosition(1), hydrogen = view.atomPosition(3);
        const QPointF up(0, -1);
        QCOMPARE(view.atomAt(carbon + 23 * up), 0);
        QCOMPARE(view.atomAt(carbon + 23.2 * up), -1);
        QCOMPARE(view.imageAt(oxygen), (AtomImage{1, {}}));
        QVERIFY(!view.imageAt(carbon + 23.2 * up));
        const QPointF both = carbon + (hydrogen - carbon) * 0.55;
        QCOMPARE(view.atomAt(both), 3);
        view.setHydrogensVisible(false);
        QCOMPARE(view.atomAt(both), 0);
        view.setRotation({0, 0, 1, 0}, 1); // from behind
        view.setHydrogensVisible(true);
        QCOMPARE(view.atomAt(view.atomPosition(0) * 0.45 + view.atomPosition(3) * 0.55), 0);
        view.setArea({0, 0, 60, 60}); // 32 pixels for 2.66 Angstrom
        view.setRotation({}, 1);
        QCOMPARE(view.atomAt(view.atomPosition(3) - 2.9 * up), 3);
        QCOMPARE(view.atomAt(view.atomPosition(3) - 3.1 * up), -1);
    }

    /// Of two whose labels would lie over one another, the front one has its.
    void labelsThatCanBeRead()
    {
        Molecule both;
        both.atoms = {{6, {0, 0, 0}, true}, {8, {0.05f, 0, 1}, true}, {7, {3, 0, 0}, true}};
        MoleculeView view = viewOf(both);
        view.setLabels({u"C1"_s, u"O2"_s, u"N3"_s});
        const QPointF nitrogen = view.atomPosition(2), oxygen = view.atomPosition(1);
        VERIFY_DRAWN(drawn(view).filter(u"path - #000000"_s),
                     filled(u"path - #000000 %1 %2\npath - #000000 %3 %4"_s,
                            {nitrogen.x(), nitrogen.y(), oxygen.x(), oxygen.y()}));
    }

    void sizes()
    {
        MoleculeView view = viewOf(molecule());
        const auto scale = [&] { return (view.atomPosition(1).x() - view.atomPosition(0).x()) / 1.5; };
        const auto place = [&] { return view.atomPosition(0); };
        for (const auto &[area, expected] : {std::pair(QRectF(0, 0, 400, 300), 70.0),
                                             {QRectF(10, 20, 161, 300), 50.0},
                                             {QRectF(10, 20, 400, 110), 40.0},
                                             {QRectF(5, 6, 28, 90), 40.0}}) {
            view.setArea(area);
            QVERIFY2(std::abs(scale() - expected) < 1e-3, qPrintable(u"%1 %2"_s.arg(scale()).arg(expected)));
            if (area.width() > 28) // otherwise there is no room: nothing changes but the place
                QVERIFY(isNear(place(), area.center() + QPointF(-0.5, 0.305) * expected));
        }
        view.setArea({0, 0, 400, 300});
        const QPointF middle(200, 150), before = place() - middle;
        view.zoom(2.5);
        QVERIFY(std::abs(scale() - 175) < 1e-3 && isNear(place(), middle + before * 2.5));
        view.zoom(1e-3);
        QVERIFY(std::abs(scale() - 14) < 1e-3 && std::abs(view.zoomFactor() - 0.2) < 1e-12);
        view.zoom(1e9);
        QCOMPARE(view.zoomFactor(), 30.0);
        const QQuaternion turn(0.6f, 0, 0, 0.8f);
        view.setRotation(turn, 1e5);
        QCOMPARE(view.zoomFactor(), 30.0);
        for (const auto &[rotation, zoom] : {std::pair(QQuaternion(0.6f, 0, 0, 0.83f), 2.0),
                                             {QQuaternion(0, 0, 0, 0), 2.0},
                                             {QQuaternion(1, 0, 0, std::nanf("")), 2.0},
                                             {QQuaternion(), 0.0},
                                             {QQuaternion(), std::nan("")}}) {
            view.setRotation(rotation, zoom);
            QCOMPARE(view.rotation(), turn);
            QCOMPARE(view.zoomFactor(), 30.0);
        }
        view.setRotation({0.603f, 0, 0, 0.804f}, 2); // nearly: mended
        QVERIFY(std::abs(view.rotation().length() - 1) < 1e-6f && view.zoomFactor() == 2);
    }

    /// Many balls are drawn from pictures of each kind, very many with plainer bonds: they look alike.
    void manyBalls()
    {
        const auto chain = [](int atoms) { // rows of 40, an Angstrom apart, each bonded to the next one of its row
            Molecule made;
            for (int i = 0; i < atoms; ++i) {
                const int element = i % 3 == 0 ? 6 : 9 - i % 3;
                made.atoms.push_back({element, {float(i % 40), float(i / 40), 0.1f * float(i % 7)}, true});
                if (i % 40 > 0)
                    made.bonds.push_back({i - 1, i});
            }
            return made;
        };
        MoleculeView view = viewOf(chain(301));
        view.setArea({0, 0, 800, 200});
        view.setSelection({17});
        QImage pictures(1600, 400, QImage::Format_RGB32), balls = pictures;
        const auto paint = [&](QPaintDevice *device) {
            QPainter painter(device);
            painter.scale(2, 2);
            view.paint(&painter);
        };
        pictures.fill(Qt::white);
        balls.fill(Qt::white);
        QImage smaller(400, 100, QImage::Format_RGB32);
        QPainter once(&smaller);
        view.paint(&once); // whose balls are of another size
        once.end();
        paint(&pictures);
        QPicture recorded;
        paint(&recorded);
        QPainter(&balls).drawPicture(0, 0, recorded);
        qint64 different = 0, covered = 0;
        for (int y = 0; y < balls.height(); ++y)
            for (int x = 0; x < balls.width(); ++x) {
                different += std::abs(qGray(balls.pixel(x, y)) - qGray(pictures.pixel(x, y))) > 24;
                covered += qGray(balls.pixel(x, y)) < 250;
            }
        QVERIFY2(different < covered * 6 / 100, qPrintable(u"%1 of %2"_s.arg(different).arg(covered)));
        // 1462 and 1463 bonds of two halves each, as thin as they get.
        for (int atoms : {1500, 1501}) {
            view = viewOf(chain(atoms));
            view.setArea({0, 0, 300, 200});
            const QStringList bonds = drawn(view).filter(u"line"_s);
            QCOMPARE(bonds.filter(u":1.2 "_s).size(), 2 * (atoms - 38));
            QCOMPARE(bonds.filter(u":0.6 "_s).size(), atoms == 1500 ? 2 * 1462 : 0);
        }
    }

    void elements()
    {
        QString all;
        for (int element : {-1, 0, 1, 2, 3, 10, 11, 18, 19, 36, 37, 54, 55, 95, 96, 118, 119})
            all += u"%1 %2 %3, "_s.arg(ElementStyle::symbol(element), ElementStyle::color(element).name())
                       .arg(ElementStyle::ballRadius(element));
        QCOMPARE(
            all,
            u"? #a0a0a0 0.22, ? #a0a0a0 0.22, H #ffffff 0.22, He #d9ffff 0.22, Li #cc80ff 0.33, Ne #b3e3f5 0.33, Na #ab5cf2 0.4, Ar #80d1e3 0.4, K #8f40d4 0.44, Kr #5cb8d1 0.44, Rb #702eb0 0.48, Xe #429eb0 0.48, Cs #57178f 0.52, Am #545cf2 0.52, Cm #a0a0a0 0.52, Og #a0a0a0 0.52, ? #a0a0a0 0.52, "_s);
    }

    // --- plots

    /// Heights by the own scale of each spectrum, one above the other at 1.12; a peak beyond its curve as a dotted
    /// stick.
    void stack()
    {
        NmrItem item;
        const QUuid first = item.nmrData()->addEntry(
            spectrum(70, {1, -2, 5, 3, 0, 7, 2}, {peak(1, u"C1"_s, 50, 0, 5), peak(2, u"C2"_s, 24, 0, 4)}), u"one"_s);
        item.nmrData()->addEntry(spectrum(55, {0, 4, 1}, {peak(3, u"A"_s, 45, 0, 4), peak(4, u"B"_s, 20, 0, 3)}),
                                 u"two"_s);
        const QVariantList peaks{peak(5, {}, 30, 0, 2), peak(6, {}, 30, 0, 1), peak(7, {}, 64, 0, -0.5)};
        item.nmrData()->addEntry({{u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}}}}, u"list"_s);
        PlotOptions options;
        options.sticks = true;
        options.legend = false;
        item.plot()->setOptions(options);
        QStringList all = drawn(item);
        QCPAxis *const &x = item.plot()->xAxis, *const &y = item.plot()->yAxis; // others when the content is another
        QCOMPARE(x->range(), QCPRange(10, 70));
        QVERIFY(x->coordToPixel(70) < x->coordToPixel(10) && y->coordToPixel(1) < y->coordToPixel(0));
        QCOMPARE(x->label(), u"¹³C chemical shift / ppm"_s);
        // Outwards, longer ones at the numbers, of the ppm alone: heights of several spectra have none.
        QStringList ticks, numbers;
        for (const QString &line : all.filter(QRegularExpression(u"^line #000000:(1|0.6) "_s))) {
            const QStringList words = line.split(u' ');
            const QLineF tick(words[2].toDouble(), words[3].toDouble(), words[4].toDouble(), words[5].toDouble());
            if (tick.length() < 20)
                ticks.append(
                    u"%1 %2 %3"_s.arg(words[1]).arg(qRound(std::abs(tick.dx()))).arg(qRound(std::abs(tick.dy()))));
        }
        QCOMPARE(ticks.count(u"#000000:1 0 5"_s), 7);
        ticks.removeDuplicates();
        QCOMPARE(ticks, (QStringList{u"#000000:1 0 5"_s, u"#000000:0.6 0 3"_s}));
        for (const QString &shape : all.filter(QRegularExpression(u"^text #000000 \\S+ \\S+ 0 [0-9]+$"_s)))
            numbers.append(shape.section(u' ', 5));
        std::sort(numbers.begin(), numbers.end());
        QCOMPARE(numbers.join(u' '), u"10 20 30 40 50 60 70"_s);
        QCOMPARE(y->label(), u"Relative intensity"_s);
        QVERIFY(std::abs(y->range().lower + 0.03 * 3.24) < 1e-9 && std::abs(y->range().upper - 1.02 * 3.24) < 1e-9);
        const QPolygonF one{{70, 3 / 9.}, {60, 0}, {50, 7 / 9.}, {40, 5 / 9.}, {30, 2 / 9.}, {20, 1}, {10, 4 / 9.}};
        const QPolygonF two{{55, 1.12}, {45, 2.12}, {35, 1.37}};
        VERIFY_DRAWN(all, u"polyline #0072b2:1 "_s, x, y, {one});
        VERIFY_DRAWN(all, u"polyline #d55e00:1 "_s, x, y, {two});
        VERIFY_DRAWN(all, u"line #960072b2:1.4 "_s, x, y, {{{50, 2 / 9.}, {50, 7 / 9.}}, {{24, 2 / 9.}, {24, 1}}});
        VERIFY_DRAWN(all, u"line #96d55e00:1.4 "_s, x, y, {{{45, 1.12}, {45, 2.12}}, {{20, 1.12}, {20, 1.37}}});
        VERIFY_DRAWN(all, u"line #d55e00:1.4:3 "_s, x, y, {{{20, 1.12}, {20, 2.12}}});
        VERIFY_DRAWN(all, u"line #009e73:1.4 "_s, x, y,
                     {{{30, 2.44}, {30, 3.24}}, {{30, 2.44}, {30, 2.84}}, {{64, 2.44}, {64, 2.24}}});
        VERIFY_DRAWN(all, u"line #009e73:0.84 "_s, x, y, {{{70, 2.44}, {10, 2.44}}});
        // Labels from left to right, each above its peak, with a line down to it. Those of one place share one.
        const double head = item.plot()->axisRect()->top() - 16;
        QString labels, leaders;
        for (const auto &[ppm, words, height] : {std::tuple(64.0, u"#009e73 * %1 -90 64.0"_s, 2.44),
                                                 {50.0, u"#0072b2 * %1 -90 C1  50.0"_s, 7 / 9.},
                                                 {45.0, u"#d55e00 * %1 -90 A  45.0"_s, 2.12},
                                                 {30.0, u"#009e73 * %1 -90 30.0 ×2"_s, 3.24},
                                                 {24.0, u"#0072b2 * %1 -90 C2  24.0"_s, 1.0},
                                                 {20.0, u"#d55e00 * %1 -90 B  20.0"_s, 2.12}}) {
            labels +=
                u"text "_s + QString(words).replace(u'*', QString::number(x->coordToPixel(ppm))).arg(head - 3) + u'\n';
            leaders += filled(
                u"line #90969e:0.7 %1 %2 %1 %3\nline #90969e:0.7 %1 %3 %1 %4\nline #90969e:0.7:3 %1 %4 %1 %5\n"_s,
                {x->coordToPixel(ppm), head, head + 4, head + 13, y->coordToPixel(height) - 2});
        }
        const QStringList texts = all.filter(u"text "_s);
        VERIFY_DRAWN(texts.mid(texts.size() - 6), labels);
        VERIFY_DRAWN(all.filter(u"#90969e"_s), leaders);

        item.plot()->scaleIntensity(0.5); // each about its base line
        all = drawn(item);
        const QPolygonF half{{55, 1.12}, {45, 1.62}, {35, 1.245}};
        VERIFY_DRAWN(all, u"polyline #d55e00:1 "_s, x, y, {half});
        item.plot()->scaleIntensity(2);

        // Twice as high about its own base line, a quarter of its height up, in another colour.
        options.sticks = false;
        options.overlay = options.legend = true;
        options.traces[first] = {2, 0.25, 3};
        options.labels = false;
        item.plot()->setOptions(options);
        all = drawn(item);
        const auto higher = [](QPolygonF line, double scale, double base) {
            for (QPointF &p : line)
                p.setY(scale * p.y() + base);
            return line;
        };
        VERIFY_DRAWN(all, u"polyline #cc79a7:1 "_s, x, y, {higher(one, 2, 0.25 - 4 / 9.)});
        VERIFY_DRAWN(all, u"polyline #d55e00:1 "_s, x, y, {higher(two, 1, -1.12)});
        QStringList names;
        for (const QString &shape : all.filter(u"text "_s))
            names.append(shape.section(u' ', 5));
        QCOMPARE(names.mid(names.size() - 3),
                 (QStringList{u"one"_s, u"two (1 of 2 peaks beyond its range)"_s, u"list"_s}));
        QVERIFY(all.filter(u"#90969e"_s).isEmpty() && all.filter(u"line #96"_s).isEmpty()); // neither labels nor sticks
        item.plot()->scaleIntensity(3);
        all = drawn(item);
        VERIFY_DRAWN(all, u"polyline #cc79a7:1 "_s, x, y, {higher(one, 6, 0.25 - 12 / 9.)});
        VERIFY_DRAWN(all, u"line #d55e00:1.4:3 "_s, x, y, {{{20, 0}, {20, 3}}});
    }

    /// A summit and a hole; lines at 0.3 and 0.6 of the largest height. Straight between points, so they are rhombs.
    void map()
    {
        NmrItem item;
        const DoubleVector points{0, 0, 0, 0, 0, 0,  0, 0, 0, 10, 0, 0, 0, 0, //
                                  0, 0, 0, 0, 0, -5, 0, 0, 0, 0,  0, 0, 0, 1};
        const QVariantList own{peak(1, u"C1,H1"_s, 50, 6, 10), peak(2, u"C2,H2"_s, 20, 3, -5)};
        const QVariantList others{peak(5, {}, 34, 8, 2), peak(6, {}, 62, 1, 4)};
        item.nmrData()->addEntry(spectrum(70, points, own, 7), u"one"_s);
        item.nmrData()->addEntry({{u"Peaks"_s, QVariantMap{{u"PeakList"_s, others}}}}, u"list"_s);
        PlotOptions options;
        options.contours = {0.3, 2, 5};
        options.legend = false;
        item.plot()->setOptions(options);
        const QStringList all = drawn(item);
        const QCPAxis *x = item.plot()->xAxis, *y = item.plot()->yAxis;
        QVERIFY(x->range() == QCPRange(10, 70) && y->range() == QCPRange(0, 9));
        QVERIFY(x->coordToPixel(70) < x->coordToPixel(10) && y->coordToPixel(9) > y->coordToPixel(0));
        const auto rhomb = [](double f2, double f1, double part) {
            const double a = 10 * part, b = 3 * part;
            return QPolygonF{{f2, f1 + b}, {f2 + a, f1}, {f2, f1 - b}, {f2 - a, f1}, {f2, f1 + b}};
        };
        VERIFY_DRAWN(all, u"polyline #0072b2:0.8 "_s, x, y, {rhomb(50, 6, 0.7), rhomb(50, 6, 0.4)});
        VERIFY_DRAWN(all, u"polyline #30b4ff:0.8:2 "_s, x, y, {rhomb(20, 3, 0.4)});
        const auto cross = [](double f2, double f1, double dx, double dy) {
            return QList<QPolygonF>{{{f2 + dx, f1}, {f2 - dx, f1}}, {{f2, f1 - dy}, {f2, f1 + dy}}};
        };
        const double dx = 3 * std::abs(x->pixelToCoord(1) - x->pixelToCoord(0)),
                     dy = 3 * std::abs(y->pixelToCoord(1) - y->pixelToCoord(0));
        VERIFY_DRAWN(all, u"line #303030:0.8 "_s, x, y, cross(50, 6, dx, dy) + cross(20, 3, dx, dy));
        VERIFY_DRAWN(all, u"line #d55e00:0.8 "_s, x, y,
                     cross(62, 1, dx, dy) + cross(34, 8, dx, dy)); // the higher one first
        // The highest of each column above the map, of each row to its left.
        const auto *top = qobject_cast<QCPAxisRect *>(item.plot()->plotLayout()->element(0, 1));
        const auto *left = qobject_cast<QCPAxisRect *>(item.plot()->plotLayout()->element(1, 0));
        QVERIFY(top->bottom() < x->axisRect()->top() && left->right() < x->axisRect()->left());
        const QCPAxis *heightsAbove = top->axis(QCPAxis::atLeft), *heightsBeside = left->axis(QCPAxis::atBottom);
        QCOMPARE(heightsAbove->range(), QCPRange(-0.04, 1.04));
        QVERIFY(heightsAbove->coordToPixel(1) < heightsAbove->coordToPixel(0)); // both away from the map
        QVERIFY(heightsBeside->coordToPixel(1) < heightsBeside->coordToPixel(0));
        VERIFY_DRAWN(all.filter(QRegularExpression(u"^polyline #0072b2:1 "_s)).mid(0, 1), u"poly"_s, x, heightsAbove,
                     {{{70, 0}, {60, 0}, {50, 1}, {40, 0}, {30, 0}, {20, 0}, {10, 0.1}}});
        VERIFY_DRAWN(all.filter(QRegularExpression(u"^polyline #0072b2:1 "_s)).mid(1), u"poly"_s, heightsBeside, y,
                     {{{0, 9}, {1, 6}, {0, 3}, {0.1, 0}}});
        const QStringList sticks = all.filter(QRegularExpression(u"^line #d55e00:1 "_s));
        VERIFY_DRAWN(sticks.mid(0, 2), u"line"_s, x, heightsAbove, {{{34, 0}, {34, 0.5}}, {{62, 0}, {62, 1}}});
        VERIFY_DRAWN(sticks.mid(2), u"line"_s, heightsBeside, y, {{{0, 8}, {0.5, 8}}, {{0, 1}, {1, 1}}});
        // A cell about each point, red below nothing and blue above; ppm grow to the left and downwards.
        QStringList cells(28, u"#ffffff"_s);
        cells[6] = u"#f3f7fc"_s;
        cells[7 + 5] = u"#f3c9c0"_s;
        cells[14 + 2] = u"#86b2e0"_s;
        const QPointF corner(x->coordToPixel(75), y->coordToPixel(-1.5)),
            end(x->coordToPixel(5), y->coordToPixel(10.5));
        VERIFY_DRAWN(
            all.filter(u"image"_s),
            u"image %1 %2 %3 %4 "_s.arg(corner.x()).arg(corner.y()).arg(end.x() - corner.x()).arg(end.y() - corner.y())
                + cells.join(u' '));
        const QStringList texts = all.filter(u",H"_s);
        QCOMPARE(texts.size(), 2);
        QVERIFY(isNear({texts[0].section(u' ', 2, 2).toDouble(), texts[0].section(u' ', 3, 3).toDouble()},
                       {x->coordToPixel(50) + 6, y->coordToPixel(6)}, 2));
        // The projections' sizes are a part of the height, within limits; they lie along the map, a little apart.
        const QCPAxisRect *middle = x->axisRect();
        for (const auto &[height, size] : {std::pair(130, 24), {900, 80}, {400, 64}}) {
            item.plot()->setGeometry(0, 0, 600, height);
            item.plot()->replot();
            QCOMPARE(QSize(left->width(), top->height()), QSize(size, size));
            QCOMPARE(QRect(top->left(), left->top(), top->width(), left->height()), middle->rect());
        }
        QVERIFY(all.filter(u"line #a0a6ae"_s).isEmpty()); // no diagonal between different nuclei
        // Of a part, the points in sight and one more on each side.
        item.plot()->xAxis->setRange(35, 45);
        item.plot()->yAxis->setRange(5, 7);
        const QStringList part = drawn(item).filter(u"image"_s);
        QStringList seen(20, u"#ffffff"_s); // 60 to 20 ppm, 0 to 9 ppm
        seen[5 + 4] = u"#f3c9c0"_s;
        seen[10 + 1] = u"#86b2e0"_s;
        const QPointF from(x->coordToPixel(65), y->coordToPixel(-1.5)), to(x->coordToPixel(15), y->coordToPixel(10.5));
        VERIFY_DRAWN(part,
                     u"image %1 %2 %3 %4 "_s.arg(from.x()).arg(from.y()).arg(to.x() - from.x()).arg(to.y() - from.y())
                         + seen.join(u' '));
        NmrItem protons;
        ExperimentalSpectrum both{
            {}, {{u"1H"_s, 400, 0, 8, -1, 9}, {u"1H"_s, 400, 0, 6, -2, 4}}, DoubleVector(36, 0.0)};
        both.data[13] = 1;
        protons.nmrData()->addEntry(toEntryMap(both), {});
        const QStringList diagonal = drawn(protons).filter(u"line #a0a6ae:0.8:2 "_s);
        QCOMPARE(diagonal.size(), 1);
        const QPolygonF ends = places(diagonal[0], protons.plot()->xAxis, protons.plot()->yAxis);
        for (const QPointF &place : ends)
            QVERIFY(std::abs(place.x() - place.y()) < 0.05);
        QVERIFY(std::abs(std::abs(ends[0].x() - ends[1].x()) - 6) < 0.2);
        // A list alone: room about its peaks, its nuclei at the axes, and no intensity to read out.
        NmrItem alone;
        alone.nmrData()->addEntry({{u"Peaks"_s, QVariantMap{{u"PeakList"_s, others}}},
                                   {SpectrumEntry::nucleiKey(), QStringList{u"13C"_s, u"1H"_s}}},
                                  u"list"_s);
        const QStringList bare = drawn(alone);
        const QCPAxis *f2 = alone.plot()->xAxis, *f1 = alone.plot()->yAxis;
        QVERIFY(isNear({f2->range().lower, f2->range().upper}, {32.88, 63.12}, 1e-9));
        QVERIFY(isNear({f1->range().lower, f1->range().upper}, {0.5, 8.5}, 1e-9));
        QCOMPARE(f2->label() + u", "_s + f1->label(), u"¹³C chemical shift / ppm, ¹H chemical shift / ppm"_s);
        VERIFY_DRAWN(bare, u"line #0072b2:0.8 "_s, f2, f1,
                     cross(62, 1, 3 * f2->range().size() / f2->axisRect()->width(),
                           3 * f1->range().size() / f1->axisRect()->height())
                         + cross(34, 8, 3 * f2->range().size() / f2->axisRect()->width(),
                                 3 * f1->range().size() / f1->axisRect()->height()));
        const QPointF place(f2->coordToPixel(50), f1->coordToPixel(4));
        QVERIFY2(QRegularExpression(u"^¹³C 50\\.\\d* ppm +¹H 4\\.\\d* ppm$"_s)
                     .match(alone.plot()->content()->readOut(place))
                     .hasMatch(),
                 qPrintable(alone.plot()->content()->readOut(place)));
    }

    /// A band under a bracket for an integral, a line between two dots for a distance, with their texts above.
    void marks()
    {
        NmrItem item;
        const QUuid entry = item.nmrData()->addEntry(spectrum(70, {1, 2, 3, 4, 5, 6, 7}), u"one"_s);
        PlotOptions options;
        options.integrals = {{entry, 60, 40}};
        options.distances = {{{55, 0.25}, {35, 0.5}}};
        item.plot()->setOptions(options);
        const QStringList all = drawn(item);
        const QRect area = item.plot()->xAxis->axisRect()->rect();
        const auto x = [&](double ppm) { return item.plot()->xAxis->coordToPixel(ppm); };
        const auto y = [&](double part) { return area.top() + part * area.height(); };
        const double top = area.top();
        const QString integral = filled(
            u"rect - #1c0072b2 %1 %3 %4 %5\npolyline #0072b2:1.2 %1 %6 %1 %7 %2 %7 %2 %6\npath #ffffff:3 - %8 %9\npath - * %8 %9\n"_s,
            {x(60), x(40), top, x(40) - x(60), 1.0 * area.height(), top + 25, top + 20, x(50), top + 11});
        const QString distance = filled(
            u"line #5a2d82:1.2 %1 %2 %3 %4\nellipse #5a2d82:1.2 #5a2d82 %1 %2 2.5 2.5\nellipse #5a2d82:1.2 #5a2d82 %3 %4 2.5 2.5\npath #ffffff:3 - %5 %6\npath - #5a2d82 %5 %6"_s,
            {x(55), y(0.25), x(35), y(0.5), x(45), y(0.375) - 10});
        VERIFY_DRAWN(all.mid(all.size() - 9), integral + distance);
    }

    /// What lies over a plot in the window: lit peaks with their labels, picked ones, the editor's marks, drags.
    void overlays()
    {
        NmrItem item;
        const QVariantList peaks{peak(1, u"C1"_s, 50, 0, 5), peak(2, u"C2"_s, 20, 0, 7)};
        const QUuid entry = item.nmrData()->addEntry(spectrum(70, {1, 2, 5, 3, 0, 7, 2}, peaks), u"one"_s);
        drawn(item);
        NmrPlot *plot = item.plot();
        const auto over = [&](const QString &pattern) {
            return Shapes::of({600, 400}, [&](QPainter *painter) { plot->render(painter); })
                .filter(QRegularExpression(pattern));
        };
        const auto mark = [](const QString &pens, const QPointF &top) { // points at it from above
            return filled(u"polygon "_s + pens + u" %1 %2 %3 %4 %5 %4\n"_s,
                          {top.x(), top.y() - 1, top.x() - 4.5, top.y() - 10, top.x() + 4.5});
        };
        const PeakMark first = plot->content()->peakMarks()[0], second = plot->content()->peakMarks()[1];
        const QPointF label = plot->content()->labelAreas()[0].area.center();
        plot->setLitPeaks({id(1)});
        VERIFY_DRAWN(over(u"ff9f00"_s),
                     filled(u"line #6eff9f00:5 %1 %2 %1 %3\nellipse #ff9f00:2 - %1 %2 5 5\n"
                            "path #ff9f00:1 #3cff9f00 %4 %5"_s,
                            {first.top.x(), first.top.y(), first.foot, label.x(), label.y()}));
        plot->setLitPeaks({});
        const auto mouse = [&](QEvent::Type type, const QPointF &at, Qt::KeyboardModifiers modifiers = {}) {
            QMouseEvent event(type, at, plot->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, modifiers);
            QApplication::sendEvent(plot, &event);
        };
        item.peakEditor()->setActive(true);
        const QString green = u"#ffffff:1 #2e7d32"_s, red = u"#ffffff:1 #d84315"_s;
        mouse(QEvent::MouseButtonPress, second.top - QPointF(0, 5));
        VERIFY_DRAWN(over(u"^polygon"_s), mark(green, first.top) + mark(red, second.top));
        const double beside = plot->xAxis->pixelToCoord(second.top.x() - 60);
        mouse(QEvent::MouseMove, second.top - QPointF(60, 5), Qt::ShiftModifier);
        VERIFY_DRAWN(over(u"^polygon"_s),
                     mark(green, first.top) + mark(red, plot->content()->markPlace(entry, beside, 0)));
        plot->cancelDrag();
        item.peakEditor()->setActive(false);
        const QRectF area(plot->content()->mainRect()->rect());
        const auto drag = [&] {
            mouse(QEvent::MouseButtonPress, {200, 150});
            mouse(QEvent::MouseMove, {260, 180});
            const QStringList shapes = over(u"^(rect #(1f6fb5|5a2d82)|line #5a2d82)"_s);
            plot->cancelDrag();
            return shapes;
        };
        VERIFY_DRAWN(drag(), filled(u"rect #1f6fb5:1 #281f6fb5 200 %1 60 %2"_s, {area.top(), area.height()}));
        plot->marker().setMode(PlotMarker::Mode::Integral);
        VERIFY_DRAWN(drag(), filled(u"rect #5a2d82:1.2 #285a2d82 200 %1 60 %2"_s, {area.top(), area.height()}));
    }

    /// The worst three of four pairs are named, the worst first.
    void agreement()
    {
        NucleusComparison comparison;
        comparison.nucleus = u"13C"_s;
        comparison.agreement.pairs = {{0, {0}, 100, 101}, {2, {1}, 60, 57.5}, {1, {2}, 20, 20.5}, {3, {3}, 40, 39.8}};
        comparison.agreement.rmsd = 1.378;
        comparison.agreement.largest = 2.5;
        comparison.sites.resize(4);
        for (int i = 0; i < 4; ++i)
            comparison.sites[size_t(i)].name = u"C%1"_s.arg(i + 1);
        NucleusComparison second = comparison;
        second.agreement.pairs = {{1, {0}, 5, 5}};
        AgreementPlot plot;
        plot.setComparisons({comparison, second});
        plot.setMarkedSite(1);
        plot.setMarkedSite(2); // instead
        QCOMPARE(plot.fullSize(), QSize(840, 520));
        plot.setGeometry(0, 0, 840, 520);
        plot.replot();
        QStringList ranges;
        for (int rect : {0, 2})
            for (QCPAxis::AxisType type : {QCPAxis::atBottom, QCPAxis::atLeft}) {
                const QCPRange range = plot.axisRect(rect)->axis(type)->range();
                ranges.append(u"%1 %2"_s.arg(range.lower).arg(range.upper));
            }
        QCOMPARE(plot.axisRectCount(), 4);
        QStringList graphs;
        for (int i = 0; i < plot.plottableCount(); ++i) {
            const auto *graph = qobject_cast<QCPGraph *>(plot.plottable(i));
            QString text = QString::number(plot.axisRects().indexOf(graph->keyAxis()->axisRect()));
            for (const QCPGraphData &point : *graph->data())
                text += u" %1:%2"_s.arg(point.key).arg(point.value);
            graphs.append(text
                          + (graph->lineStyle() == QCPGraph::lsNone ? u" points %1"_s.arg(graph->scatterStyle().size())
                                                                    : u" line %1"_s.arg(int(graph->pen().style()))));
        }
        // The shifts above and the differences below, with the line on which they would agree; then the marks.
        QCOMPARE(
            graphs,
            (QStringList{u"0 15.14:15.14 105.86:105.86 line 2"_s, u"2 15.14:0 105.86:0 line 1"_s,
                         u"0 20:20.5 40:39.8 60:57.5 100:101 points 6"_s, u"2 20:-0.5 40:0.2 60:2.5 100:-1 points 6"_s,
                         u"1 4.999:4.999 5.001:5.001 line 2"_s, u"3 4.999:0 5.001:0 line 1"_s, u"1 5:5 points 6"_s,
                         u"3 5:0 points 6"_s, u"0 60:57.5 points 12"_s, u"2 60:2.5 points 12"_s}));
        QCOMPARE(ranges, (QStringList{u"15.14 105.86"_s, u"15.14 105.86"_s, u"15.14 105.86"_s, u"-3.125 3.125"_s}));
        QStringList names;
        for (int i = 0; i < plot.itemCount(); ++i) {
            const auto *name = qobject_cast<QCPItemText *>(plot.item(i));
            names.append(u"%1 %2 %3:%4"_s.arg(plot.axisRects().indexOf(name->position->axisRect()))
                             .arg(name->text())
                             .arg(name->position->key())
                             .arg(name->position->value())
                         + (name->positionAlignment() & Qt::AlignRight ? u" left of it"_s : u" right of it"_s));
        }
        QCOMPARE(names,
                 (QStringList{u"2 C3 60:2.5 right of it"_s, u"2 C1 100:-1 left of it"_s, u"2 C2 20:-0.5 right of it"_s,
                              u"3 C2 5:0 right of it"_s}));
        QCOMPARE(qobject_cast<QCPTextElement *>(plot.plotLayout()->element(0, 1))->text(),
                 u"13C: equal, RMSD 1.38 ppm"_s);
        QVERIFY(plot.axisRect(0)->left() == plot.axisRect(2)->left()
                && plot.axisRect(1)->right() == plot.axisRect(3)->right());
        plot.setMarkedSite(-1);
        QCOMPARE(plot.plottableCount(), 8);
        const auto looks = [](AgreementPlot &shown) { // titles, numbers below, and how high above to how high below
            QStringList texts{qobject_cast<QCPTextElement *>(shown.plotLayout()->element(0, 0))->text()};
            for (int rect : {0, 1})
                texts.append(u"%1 %2 %3"_s
                                 .arg(shown.axisRect(rect)->axis(QCPAxis::atLeft)->label(),
                                      shown.axisRect(rect)->axis(QCPAxis::atBottom)->label())
                                 .arg(shown.axisRect(rect)->axis(QCPAxis::atBottom)->tickLabels()));
            const double part = 1.0 * shown.axisRect(0)->outerRect().height() / shown.axisRect(1)->outerRect().height();
            return texts.join(u'|') + u"|%1"_s.arg(part, 0, 'f', 1);
        };
        AgreementPlot one, compact(AgreementPlot::Compact);
        for (AgreementPlot *shown : {&one, &compact}) {
            shown->setComparisons({comparison});
            shown->replot();
        }
        QCOMPARE(looks(one), u"13C: equal, RMSD 1.38 ppm|Measured, ppm  0|Difference, ppm Calculated, ppm 1|2.0"_s);
        QCOMPARE(looks(compact), u"|Measured  0|Difference Calculated, ppm 1|1.3"_s);
    }
};

QTEST_MAIN(TestDrawing)
#include "tst_drawing.moc"
