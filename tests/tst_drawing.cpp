// SPDX-License-Identifier: BSD-3-Clause
#include "Shapes.h"

#include "items/molecule/ElementStyle.h"
#include "items/molecule/MoleculeItem.h"
#include "items/molecule/MoleculeView.h"

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

/// Points along the x axis, so many Angstrom apart, each bonded to the next one.
Molecule chain(int atoms, float apart)
{
    Molecule made;
    for (int i = 0; i < atoms; ++i) {
        made.atoms.push_back({i % 3 == 0       ? 6
                                  : i % 3 == 1 ? 8
                                               : 7,
                              {apart * float(i % 40), apart * float(i / 40), 0.1f * float(i % 7)},
                              true});
        if (i % 40 > 0)
            made.bonds.push_back({i - 1, i});
    }
    return made;
}

} // namespace

/// The shapes that items are drawn with: which, where, in which order and colour.
class TestDrawing : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        const QString wrong = difference(drawn(view), expected);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
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
        QString wrong = difference(drawn(view), expected);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        // Half the size; what would be thinner than 0.02 Angstrom is not.
        view.setTensors({{{4, 0.1, 0}, flat.axes, true}}, 0.5);
        wrong = difference(drawn(view).filter(u"ellipse #7"_s), u"ellipse #747474:0.8 * 165 171.35 21 1.4 -36.87"_s);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }

    /// Each edge of the cell, of the axis' colour at the first origin; letters beside the corners, away from the
    /// middle.
    void cellEdges_data()
    {
        QTest::addColumn<int>("alongB");
        QTest::newRow("one cell") << 1;
        QTest::newRow("two cells along b") << 2;
    }
    void cellEdges()
    {
        QFETCH(int, alongB);
        Molecule crystal;
        crystal.cell = {QVector3D(-1, -1.2f, 0), QVector3D(2, 0, 0), QVector3D(0.5f, 1.2f, 0),
                        QVector3D(0.25f, -0.5f, 1.5f)};
        crystal.atoms = {{6, (*crystal.cell)[0], true}};
        MoleculeView view = viewOf(crystal);
        view.setPacking({Packing::Contents::Molecules, {1, alongB, 1}});
        const QPointF edges[] = {{140, 0}, {35, -84}, {17.5, 35}}; // pixels
        const QPointF origin = view.atomPosition(0);
        // Total length drawn along each edge of each cell, and how much of it in an axis' colour.
        QList<QLineF> pieces, coloured;
        QPointF letters[4];
        for (const QString &shape : drawn(view)) {
            const QStringList words = shape.split(u' ');
            const auto number = [&](int i) { return words[i].toDouble(); };
            if (words[0] == u"line")
                (words[1].endsWith(u":1.4") ? coloured : pieces).append({number(2), number(3), number(4), number(5)});
            const qsizetype letter =
                QStringList{u"#707882"_s, u"#c62828"_s, u"#2e7d32"_s, u"#1565c0"_s}.indexOf(words.value(2));
            if (words[0] == u"path" && letter >= 0)
                letters[letter] = {number(3), number(4)};
        }
        QCOMPARE(coloured.size(), 3 * 24);
        QCOMPARE(pieces.size(), 24 * 12 * alongB - 3 * 24);
        for (int axis = 0; axis < 3; ++axis) {
            for (int corner = 0; corner < 4 * alongB; ++corner) {
                const QPointF start = origin + edges[(axis + 1) % 3] * (corner & 1)
                    + edges[(axis + 2) % 3] * (corner >> 1 & 1) + edges[1] * (corner >> 2);
                const QPolygonF ends{start, start + edges[axis]};
                const auto isPiece = [&](const QLineF &piece) {
                    const QPointF along = edges[axis] / std::hypot(edges[axis].x(), edges[axis].y());
                    const QPointF from = piece.p1() - start, to = piece.p2() - start;
                    const auto beside = [&](const QPointF &p) {
                        return std::abs(p.x() * along.y() - p.y() * along.x());
                    };
                    const double a = QPointF::dotProduct(from, along), b = QPointF::dotProduct(to, along);
                    return beside(from) < 0.05 && beside(to) < 0.05 && a > -0.1 && b > a
                        && b < QLineF(ends[0], ends[1]).length() + 0.1;
                };
                const QList<QLineF> &those = corner == 0 ? coloured : pieces;
                const auto count = std::count_if(those.begin(), those.end(), isPiece);
                QVERIFY2(count == 24 || count == 48, qPrintable(u"%1 %2: %3"_s.arg(axis).arg(corner).arg(count)));
            }
        }
        const QPointF middle = (edges[0] + edges[1] + edges[2]) / 2;
        for (int i = 0; i < 4; ++i) {
            const QPointF corner = i == 0 ? QPointF() : edges[i - 1];
            const QPointF outward = corner - middle;
            QVERIFY(isNear(letters[i], origin + corner + outward * 9 / std::hypot(outward.x(), outward.y()), 1));
        }
        view.setCellVisible(false);
        QCOMPARE(drawn(view).size(), alongB);
    }

    /// Tilted by 12 and -16 degrees after the longest edge lies to the right and the second longest one upwards;
    /// without a cell by the greatest extents. By numpy, in Angstrom from the first atom.
    void startOrientations()
    {
        const auto positions = [](const MoleculeView &view) {
            QList<QPointF> places;
            const QPointF first = view.atomPosition(0);
            for (int atom = 1; atom < 4; ++atom)
                places.append((view.atomPosition(atom) - first) / 70);
            return places;
        };
        const auto compare = [&](const MoleculeView &view, const QList<QPointF> &expected) {
            for (int i = 0; i < 3; ++i)
                QVERIFY2(isNear(positions(view)[i], {expected[i].x(), -expected[i].y()}, 1e-3),
                         qPrintable(u"%1: %2 %3"_s.arg(i).arg(positions(view)[i].x()).arg(-positions(view)[i].y())));
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
        const Molecule many = chain(301, 1);
        MoleculeView view;
        view.setMolecule(many);
        view.setArea({0, 0, 800, 200});
        view.setRotation({}, 1);
        view.setSelection({17});
        QImage pictures(1600, 400, QImage::Format_RGB32), balls = pictures;
        const auto paint = [&](QPaintDevice *device) {
            QPainter painter(device);
            painter.scale(2, 2);
            view.paint(&painter);
        };
        for (QImage *image : {&pictures, &balls})
            image->fill(Qt::white);
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
        // 1462 and 1463 bonds of two halves each.
        QCOMPARE(drawn(viewOf(chain(1500, 1))).filter(u"line"_s).size(), 4 * 1462);
        QCOMPARE(drawn(viewOf(chain(1501, 1))).filter(u"line"_s).size(), 2 * 1463);
    }

    void elements()
    {
        const auto is = [](int element, const char *symbol, const QColor &color, double radius) {
            return ElementStyle::symbol(element) == QLatin1String(symbol) && ElementStyle::color(element) == color
                && ElementStyle::ballRadius(element) == radius;
        };
        QVERIFY(is(0, "?", 0xa0a0a0, 0.22) && is(1, "H", 0xffffff, 0.22) && is(2, "He", 0xd9ffff, 0.22));
        QVERIFY(is(3, "Li", 0xcc80ff, 0.33) && is(10, "Ne", 0xb3e3f5, 0.33) && is(11, "Na", 0xab5cf2, 0.40));
        QVERIFY(is(18, "Ar", 0x80d1e3, 0.40) && is(19, "K", 0x8f40d4, 0.44) && is(36, "Kr", 0x5cb8d1, 0.44));
        QVERIFY(is(37, "Rb", 0x702eb0, 0.48) && is(54, "Xe", 0x429eb0, 0.48) && is(55, "Cs", 0x57178f, 0.52));
        QVERIFY(is(95, "Am", 0x545cf2, 0.52) && is(96, "Cm", 0xa0a0a0, 0.52) && is(118, "Og", 0xa0a0a0, 0.52));
        QVERIFY(is(119, "?", 0xa0a0a0, 0.52) && is(-1, "?", 0xa0a0a0, 0.22));
    }
};

QTEST_MAIN(TestDrawing)
#include "tst_drawing.moc"
