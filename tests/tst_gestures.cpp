// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "ItemData.h"
#include "Shapes.h"
#include "data/AtomSelection.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/ContourMap.h"
#include "items/plot/CrossPeakLabels.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PeakEditor.h"
#include "items/plot/PeakLabelBand.h"
#include "items/plot/PlotMarks.h"
#include "items/plot/StackedTraces.h"

#include <numeric>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

using Ranges = QList<double>; ///< from, to of F2, then of F1 in two dimensions

QVariantMap peak(int number, double f2, double f1 = 0, double height = 1)
{
    return peak(number, u"X%1"_s.arg(number), f2, f1, height);
}

/// 7 points of 13C from 70 to 10 ppm; in two dimensions 3 of 1H, from 9 to 3 ppm. The points count from 1, row by row.
QVariantMap spectrum(int dimensions, const QVariantList &peaks = {})
{
    DoubleVector values(dimensions == 2 ? 21 : 7);
    std::iota(values.begin(), values.end(), 1);
    return spectrum(70, values, peaks, dimensions == 2 ? 7 : 0);
}

/// A carbon in the middle, oxygen to the right, nitrogen up left and behind, a hydrogen before the carbon. No symmetry.
QVariantMap molecule()
{
    const QVariantList atoms{atom(6, 0, 0, 0), atom(8, 1.4, 0.2, 0.1), atom(7, -0.5, 1.2, -0.8), atom(1, 0.15, 0.1, 2)};
    return {{u"ID"_s, id(900)}, {u"Atoms"_s, atoms}};
}
enum MoleculeAtom { Carbon, Oxygen, Nitrogen, Hydrogen };

/// Mouse and keyboard over one item in a view.
class Stage {
public:
    explicit Stage(DocumentItem *item) : m_item(item)
    {
        m_scene.addItem(item);
        m_view.setFrameShape(QFrame::NoFrame);
        m_view.resize(720, 460);
        m_scene.setSceneRect(0, 0, 720, 460);
        item->setGeometry(10, 10, 700, 440);
        item->setCurrent(true);
        m_view.show();
        QApplication::processEvents();
    }

    /// Of the item's content.
    QPoint at(const QPointF &pixel) const
    {
        return m_view.mapFromScene(m_item->mapToScene(m_item->contentRect().topLeft() + pixel));
    }
    QColor colorAt(const QPointF &pixel) { return m_view.viewport()->grab().toImage().pixelColor(at(pixel)); }
    void key(int key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        m_scene.sendEvent(m_item, &event);
    }
    void wheel(const QPointF &pixel, Qt::KeyboardModifiers modifiers = {})
    {
        const QPoint place = at(pixel);
        QWheelEvent event(place, m_view.viewport()->mapToGlobal(place), {}, {0, 120}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_view.viewport(), &event);
    }
    void click(const QPointF &pixel, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(m_view.viewport(), Qt::LeftButton, modifiers, at(pixel));
        // The next click shall make no double click of it, and nobody wait for that.
        QApplication::setDoubleClickInterval(5);
        QTest::qWait(10);
    }
    void doubleClick(const QPointF &pixel, Qt::MouseButton button)
    {
        QTest::mouseDClick(m_view.viewport(), button, {}, at(pixel));
    }
    /// A key may be pressed before the button comes up.
    void drag(const QPointF &from, const QPointF &to, Qt::KeyboardModifiers modifiers = {}, int heldKey = 0)
    {
        QTest::mousePress(m_view.viewport(), Qt::LeftButton, modifiers, at(from));
        const QPoint end = at(to); // which goes along with an item that moves
        for (const QPoint &step : {at((from + to) / 2), end}) {
            QMouseEvent event(QEvent::MouseMove, step, m_view.viewport()->mapToGlobal(step), Qt::NoButton,
                              Qt::LeftButton, modifiers);
            QApplication::sendEvent(m_view.viewport(), &event);
        }
        if (heldKey)
            key(heldKey);
        QTest::mouseRelease(m_view.viewport(), Qt::LeftButton, modifiers, end);
    }

private:
    QGraphicsScene m_scene;
    QGraphicsView m_view{&m_scene};
    DocumentItem *m_item;
};

/// An item with the spectrum in it, laid out.
struct PlotStage {
    NmrItem *item = new NmrItem;
    Stage stage{item};
    QStringList reports;

    explicit PlotStage(const QVariantMap &entry)
    {
        item->nmrData()->addEntry(entry, u"s"_s);
        QObject::connect(item, &DocumentItem::reported, item, [this](const QString &text) { reports.append(text); });
        layOut();
    }
    QString said() { return std::exchange(reports, {}).join(u" | "_s); }
    void layOut()
    {
        item->plot()->content();
        item->plot()->replot();
    }
    PlotContent *content() const { return item->plot()->content(); }
    QStringList shapes() const
    {
        const QRectF area({}, item->contentRect().size());
        return Shapes::of({696, 415}, [&](QPainter *painter) { item->plot()->paintTo(painter, area); });
    }
    bool isMap() const { return content()->ppmAxes().size() == 2; }
    QPointF pixel(double f2, double f1) const
    {
        const double y = isMap() ? content()->ppmAxes()[1]->coordToPixel(f1) : item->plot()->yAxis->coordToPixel(f1);
        return {content()->ppmAxes()[0]->coordToPixel(f2), y};
    }
    void show(const Ranges &ranges)
    {
        for (qsizetype i = 0; i < content()->ppmAxes().size(); ++i)
            content()->ppmAxes()[i]->setRange(ranges[2 * i], ranges[2 * i + 1]);
        layOut();
    }
    Ranges ranges() const
    {
        Ranges ranges;
        for (const QCPAxis *axis : content()->ppmAxes())
            ranges << axis->range().lower << axis->range().upper;
        return ranges;
    }
    /// How much a user has made the lines higher, or the lowest contour lower.
    double intensity() const
    {
        return isMap() ? 0.05 / item->plot()->options().contours.lowest
                       : content()->fullRanges()[1].size() / content()->ranges()[1].size();
    }
};

void compareRanges(const Ranges &ranges, const Ranges &expected, double tolerance = 1e-9)
{
    QCOMPARE(ranges.size(), expected.size());
    for (qsizetype i = 0; i < ranges.size(); ++i)
        QVERIFY2(std::abs(ranges[i] - expected[i]) <= tolerance * (i < 2 ? 60 : 6),
                 qPrintable(u"%1: %2 instead of %3"_s.arg(i).arg(ranges[i]).arg(expected[i])));
}

} // namespace

/// What gestures do, as tables, on data in which nothing can be mistaken for anything else.
class TestGestures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setDoubleClickInterval(5); }
    void init() { failOnWarningsOfQt(); }

    // --- spectra

    void readOut()
    {
        for (const auto &[dimensions, place, expected] :
             {std::tuple(1, QPointF(30, 2), u"¹³C 30 ppm intensity 5"_s),
              {1, {44, 2}, u"¹³C 44 ppm intensity 4"_s}, // of the nearest point
              {2, {60, 8.9}, u"¹³C 60 ppm ¹H 8.9 ppm intensity 2"_s}, // first, second, third row
              {2, {20, 6}, u"¹³C 20 ppm ¹H 6 ppm intensity 13"_s},
              {2, {56, 4}, u"¹³C 56 ppm ¹H 4 ppm intensity 16"_s},
              {2, {75, 4}, QString()}}) { // beside the plot
            PlotStage plot(spectrum(dimensions));
            const QString text = plot.content()->readOut(plot.pixel(place.x(), place.y())).simplified();
            const QStringList words = text.split(u' '), those = expected.split(u' ');
            QCOMPARE(words.size(), those.size());
            for (qsizetype i = 0; i < words.size(); ++i) {
                const double pixels = i > 2 ? 0.03 : 0.3; // ppm of F1, F2
                const bool same = words[i] == those[i]
                    || (i > 0 && words[i - 1] != u"intensity"
                        && std::abs(words[i].toDouble() - those[i].toDouble()) < pixels && words[i].toDouble() > 0);
                QVERIFY2(same, qPrintable(text));
            }
        }
    }

    /// From 30 to 50 and 5 to 7 ppm; ppm grow to the left and downwards.
    void keys()
    {
        for (const auto &[key, map, mapIntensity, lineIntensity] :
             {std::tuple(Qt::Key_Left, Ranges{32, 52, 5, 7}, 1.0, 1.0),
              {Qt::Key_Right, {28, 48, 5, 7}, 1, 1},
              {Qt::Key_Up, {30, 50, 4.8, 6.8}, 1, 1.25},
              {Qt::Key_Down, {30, 50, 5.2, 7.2}, 1, 0.8},
              {Qt::Key_PageUp, {32, 48, 5.2, 6.8}, 1, 1},
              {Qt::Key_PageDown, {27.5, 52.5, 4.75, 7.25}, 1, 1},
              {Qt::Key_Plus, {30, 50, 5, 7}, 1.25, 1.25},
              {Qt::Key_Minus, {30, 50, 5, 7}, 0.8, 0.8},
              {Qt::Key_Home, {10, 70, 3, 9}, 1, 1}})
            for (int dimensions : {1, 2}) {
                PlotStage plot(spectrum(dimensions));
                plot.show({30, 50, 5, 7});
                plot.stage.key(key);
                compareRanges(plot.ranges(), map.first(2 * dimensions));
                QVERIFY(std::abs(plot.intensity() - (dimensions == 2 ? mapIntensity : lineIntensity)) < 1e-9);
            }
    }

    /// At a place in ppm, or at a height; from 30 to 50 and 5 to 7 ppm.
    void wheel()
    {
        const Qt::KeyboardModifiers none, shift = Qt::ShiftModifier;
        for (const auto &[dimensions, place, modifiers, expected, intensity] :
             {std::tuple(2, QPointF(35, 5.5), none, Ranges{31, 47, 5.1, 6.7}, 1.0),
              {2, {45, 7.2}, none, {33, 49, 5, 7}, 1}, // below
              {2, {29.2, 6.5}, none, {30, 50, 5.3, 6.9}, 1}, // to the right
              {2, {35, 5.5}, shift, {30, 50, 5, 7}, 1.25},
              {1, {45, 3}, none, {33, 49}, 1},
              {1, {50.8, 3}, none, {30, 50}, 1.25}, // to the left
              {1, {45, 3}, shift, {30, 50}, 1.25}}) {
            PlotStage plot(spectrum(dimensions));
            plot.show({30, 50, 5, 7});
            plot.item->setCurrent(false); // the page scrolls
            plot.stage.wheel(plot.pixel(place.x(), place.y()), modifiers);
            compareRanges(plot.ranges(), Ranges{30, 50, 5, 7}.first(2 * dimensions));
            plot.item->setCurrent(true);
            plot.stage.wheel(plot.pixel(place.x(), place.y()), modifiers);
            compareRanges(plot.ranges(), expected, 1e-3); // the mouse is on whole pixels
            QVERIFY(std::abs(plot.intensity() - intensity) < 1e-9);
        }
    }

    /// From 30 to 50 and 5 to 7 ppm.
    void drags()
    {
        const Qt::KeyboardModifiers none, shift = Qt::ShiftModifier;
        for (const auto &[dimensions, from, to, modifiers, expected] :
             {std::tuple(2, QPointF(48, 5.5), QPointF(35, 6.5), none, Ranges{35, 48, 5.5, 6.5}),
              {2, {35, 6}, {48, 6}, none, {35, 48, 5, 7}},
              {2, {40, 5.5}, {40, 6.5}, none, {30, 50, 5.5, 6.5}},
              {2, {48, 5.5}, {40, 6}, shift, {38, 58, 4.5, 6.5}},
              {1, {48, 2}, {35, 3}, none, {35, 48}},
              {1, {48, 2}, {40, 3}, shift, {38, 58}}}) {
            PlotStage plot(spectrum(dimensions));
            plot.show({30, 50, 5, 7});
            plot.stage.drag(plot.pixel(from.x(), from.y()), plot.pixel(to.x(), to.y()), modifiers);
            compareRanges(plot.ranges(), expected, 3e-3);
        }
    }

    /// Atoms of peak 1 in F2: oxygen; of peak 2: carbon and nitrogen.
    void clickOnAPeakSelectsItsAtoms()
    {
        for (int dimensions : {1, 2}) {
            PlotStage plot(spectrum(dimensions, {peak(1, 57, 4), peak(2, 28, 7.5), peak(3, 42, 6)}));
            QVariantMap description = molecule();
            const auto shift = [](int number, const QVariantList &atoms) {
                return QVariantMap{{u"Nums"_s, atoms}, {u"AssignedPeaks"_s, QVariantList{id(number)}}};
            };
            description.insert(u"NMRAssignments"_s,
                               QVariantList{QVariantMap{
                                   {u"Shifts"_s, QVariantList{shift(1, {Oxygen}), shift(2, {Carbon, Nitrogen})}}}});
            MoleculeItem shown(description);
            plot.item->linkObject(&shown);
            // Another structure, whose spectrum is in the plot, too: its atoms have the same numbers.
            description.insert(u"NMRAssignments"_s,
                               QVariantList{QVariantMap{{u"Shifts"_s, QVariantList{shift(3, {Oxygen, Nitrogen})}}}});
            MoleculeItem other(description);
            plot.item->linkObject(&other);
            const auto click = [&](int number, Qt::KeyboardModifiers modifiers = {}, const QPointF &beside = {}) {
                for (const PeakMark &mark : plot.content()->peakMarks())
                    if (mark.peak.id == id(number))
                        plot.stage.click(mark.top + beside, modifiers);
                return shown.selectedAtoms();
            };
            QCOMPARE(click(3), QSet<int>());
            QCOMPARE(other.selectedAtoms(), (QSet<int>{Oxygen, Nitrogen}));
            QCOMPARE(plot.said(), u"2 atom(s) selected"_s);
            QCOMPARE(click(1), QSet<int>{Oxygen});
            QCOMPARE(other.selectedAtoms(), QSet<int>());
            QCOMPARE(click(2, Qt::ControlModifier), (QSet<int>{Oxygen, Carbon, Nitrogen}));
            QCOMPARE(click(1, Qt::ControlModifier), (QSet<int>{Carbon, Nitrogen}));
            QCOMPARE(plot.said(), u"1 atom(s) selected | 3 atom(s) selected | 2 atom(s) selected"_s);
            QCOMPARE(click(1, {}, {-12, 12}), QSet<int>()); // a little beside
            QCOMPARE(plot.said(), QString());
            shown.sendMessage(AtomSelection::toMessage({Nitrogen}));
            QCOMPARE(plot.item->plot()->litPeaks(), QSet<QUuid>{id(2)});
            other.sendMessage(AtomSelection::toMessage({Nitrogen}));
            QCOMPARE(plot.item->plot()->litPeaks(), QSet<QUuid>{id(3)});
        }
    }

    void whereLabelsHaveNoRoomTheLowestPeaksGoWithout()
    {
        QVariantList crowd;
        for (int i = 0; i < 90; ++i)
            crowd.append(peak(i, 70 - i * 0.6, 0, 1 + (i * 37) % 90));
        QVariantMap list{{u"Peaks"_s, QVariantMap{{u"PeakList"_s, crowd}}}};
        PlotStage line(list);
        const QStringList texts = dynamic_cast<StackedTraces *>(line.content())->labelBand()->visibleTexts();
        QVERIFY(texts.size() > 30 && texts.size() < 90);
        QStringList shown, strongest;
        for (const QString &text : texts) // from left to right, from high to low ppm
            shown.append(text.section(u' ', 0, 0));
        for (int i = 0; i < 90; ++i)
            if ((i * 37) % 90 >= 90 - texts.size())
                strongest.append(u"X%1"_s.arg(i));
        QCOMPARE(shown, strongest);
        QVERIFY(line.shapes().filter(u"line #90969e:0.7:3"_s).isEmpty()); // many have no lines down to their peaks
        QCOMPARE(line.shapes().filter(u"line #90969e:0.7 "_s).size(), 2 * texts.size());

        // In a map: as many in a heap as fit around it. The strongest is there, the weakest is not.
        QVariantList heap;
        for (int i = 0; i < 40; ++i)
            heap.append(peak(i, 40 + 0.2 * (i % 5), 6 + 0.06 * (i / 5), 1 + (i * 17) % 40));
        PlotStage map(spectrum(2, heap));
        const QStringList around = dynamic_cast<ContourMap *>(map.content())->labels()->visibleTexts();
        QVERIFY(!around.isEmpty() && around.size() < 40);
        QCOMPARE(around.first(), u"X7"_s); // 1 + 119 % 40 = 40
        QVERIFY(!around.contains(u"X0"_s));
    }

    void spectraAreDragged()
    {
        PlotStage plot(spectrum(1));
        const QUuid first = plot.item->nmrData()->entryIds().first();
        const QUuid second = plot.item->nmrData()->addEntry(spectrum(1), u"t"_s);
        plot.layOut();
        const auto style = [&](const QUuid &entry) { return plot.item->plot()->options().traces.value(entry); };
        const QCPAxis *height = plot.item->plot()->yAxis;
        const double perPixel = height->range().size() / plot.content()->mainRect()->height();
        const QPointF at = plot.pixel(20, 1.12 + 0.5); // in the upper one
        plot.stage.drag(at, at - QPointF(0, 40), Qt::ControlModifier);
        QVERIFY(std::abs(style(second).offset - 40 * perPixel) < 1.5 * perPixel && style(second).scale == 1);
        plot.stage.drag(at, at - QPointF(0, 60), Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(std::abs(style(second).scale - 2) < 0.05);
        QCOMPARE(style(first), TraceStyle());
        QCOMPARE(plot.ranges(), (Ranges{10, 70})); // it was no zoom

        // On one base line both stand at the same height.
        PlotOptions overlaid;
        overlaid.overlay = true;
        plot.item->plot()->setOptions(overlaid);
        plot.layOut();
        const QPointF somewhere = plot.pixel(30, 0.4);
        QCOMPARE(plot.content()->heightAt(first, somewhere), plot.content()->heightAt(second, somewhere));
    }

    /// The points count from 1 at 70 ppm to 7 at 10 ppm: areas of 60 to 40 and of 30 to 10 ppm are as 6 to 12.
    void integralsAndDistancesAreMarked()
    {
        PlotStage plot(spectrum(1));
        const auto marks = [&] {
            plot.layOut();
            return dynamic_cast<StackedTraces *>(plot.content())->marks();
        };
        const auto integrals = [&] {
            const QStringList texts = marks()->integralTexts();
            return QPointF(texts.value(0).toDouble(), texts.value(1).toDouble());
        };
        plot.stage.key(Qt::Key_I);
        QCOMPARE(plot.said(), u"Integrals: drag over the regions; Esc ends. The first one is 1 until another is set"_s);
        plot.stage.drag(plot.pixel(60, 3), plot.pixel(40, 3));
        plot.stage.drag(plot.pixel(10, 3), plot.pixel(30, 3));
        QVERIFY(QLineF(integrals(), {1, 2}).length() < 0.03); // the mouse is on whole pixels
        PlotOptions options = plot.item->plot()->options();
        QCOMPARE(options.integrals.size(), 2);
        QVERIFY(std::abs(options.integrals[1].from - 30) < 0.1 && std::abs(options.integrals[1].to - 10) < 0.1);
        QCOMPARE(options.integrals[1].entry, plot.item->nmrData()->activeEntryId());
        options.integralReference = 1;
        options.referenceValue = 3;
        plot.item->plot()->setOptions(options);
        QVERIFY(QLineF(integrals(), {1.5, 3}).length() < 0.03);
        // The spectrum of the one that is set has gone from the plot: the first one that is there is 1.
        PlotOptions gone = options;
        gone.integrals.append({id(404), 60, 40});
        gone.integralReference = 2;
        plot.item->plot()->setOptions(gone);
        QVERIFY(QLineF(integrals(), {1, 2}).length() < 0.03 && marks()->integralTexts().size() == 2);
        plot.item->plot()->setOptions(options);

        plot.stage.key(Qt::Key_D);
        QCOMPARE(plot.said(), u"Distances: drag from one place to another; Esc ends"_s);
        const QRect area = plot.content()->mainRect()->rect();
        plot.stage.drag({plot.pixel(50, 3).x(), area.top() + area.height() / 4.0},
                        {area.right() + 30.0, area.bottom() + 9.0});
        const DistanceMark distance = plot.item->plot()->options().distances.value(0);
        QVERIFY(std::abs(distance.from.y() - 0.25) < 0.005 && distance.to.y() == distance.from.y());
        QVERIFY(std::abs(distance.from.x() - 50) < 0.1 && std::abs(distance.to.x() - 10) < 0.1);
        const QStringList words = marks()->distanceTexts().value(0).split(u' ');
        QCOMPARE(words.size(), 4);
        QVERIFY(std::abs(words[0].toDouble() - 40) < 0.3 && words[1] == u"ppm,");
        QVERIFY(std::abs(words[2].toDouble() / words[0].toDouble() - 100) < 0.05 && words[3] == u"Hz"); // 100 MHz
        QCOMPARE(plot.ranges(), (Ranges{10, 70}));
        plot.stage.key(Qt::Key_Escape);
        QCOMPARE(plot.reports, QStringList{QString()});
        plot.stage.drag(plot.pixel(48, 2), plot.pixel(35, 3)); // zooms again
        compareRanges(plot.ranges(), {35, 48}, 3e-3);
        QCOMPARE(plot.item->plot()->options().integrals, options.integrals);
    }

    void plotsShareTheirRange()
    {
        PlotStage plot(spectrum(1));
        auto *other = new NmrItem, *proton = new NmrItem;
        other->nmrData()->addEntry(spectrum(2), {});
        ExperimentalSpectrum hydrogen{{}, {{u"1H"_s, 400, 0, 10, -1, 10}}, std::vector<double>(10, 1.0)};
        proton->nmrData()->addEntry(toEntryMap(hydrogen), {});
        for (NmrItem *item : {other, proton}) {
            plot.item->scene()->addItem(item);
            item->resize(300, 200);
            item->plot()->content();
            item->plot()->replot();
        }
        PlotOptions sharing;
        sharing.sharesRange = true;
        for (NmrItem *item : {plot.item, other, proton})
            item->plot()->setOptions(sharing);
        plot.show({30, 50});
        QCOMPARE(other->plot()->xAxis->range(), QCPRange(30, 50));
        QVERIFY(proton->plot()->xAxis->range().upper > 9); // another nucleus
    }

    void labelsLeaveRoomForTheSpectrum()
    {
        QVariantMap crowd = peak(1, 40);
        crowd[u"PeakLabel"_s] = u"C1A,C1B,C1C,C1D,C1E"_s + QString(80, u'x');
        PlotStage plot(spectrum(1, {crowd}));
        QVERIFY(plot.content()->mainRect()->top() <= plot.item->plot()->viewport().height() / 3.0 + 1);
        const QList<LabelArea> labels = plot.content()->labelAreas();
        QCOMPARE(labels.size(), 1);
        QVERIFY(plot.item->plot()->hoverText(labels[0].area.center()).contains(crowd[u"PeakLabel"_s].toString()));
        QVERIFY(plot.item->plot()->hoverText(plot.pixel(40, 2)).contains(crowd[u"PeakLabel"_s].toString()));
        // Its number in any case, and the beginning of its name.
        QCOMPARE(plot.shapes().filter(u"C1A"_s).value(0).section(u' ', 5), u"C1A…  40.0"_s);
        QCOMPARE(plot.shapes().filter(u"line #90969e:0.7:3"_s).size(), 1);
    }

    void axesInHertz()
    {
        PlotStage plot(spectrum(1));
        PlotOptions options;
        options.hertz = true;
        options.distances = {{{50, 0.5}, {40, 0.5}}};
        plot.item->plot()->setOptions(options);
        const ExperimentalSpectrum stronger{{}, {{u"13C"_s, 150, 0, 70, -10, 7}}, std::vector<double>(7, 1.0)};
        const QUuid second = plot.item->nmrData()->addEntry(toEntryMap(stronger), u"t"_s);
        const QUuid list = plot.item->nmrData()->addEntry(
            {{u"Peaks"_s, QVariantMap{{u"PeakList"_s, QVariantList{peak(1, 57)}}}}}, u"p"_s);
        // Those of the active spectrum; a mere peak list has none.
        for (const auto &[active, frequency, distance] :
             {std::tuple(plot.item->nmrData()->activeEntryId(), 100.0, u"10.00 ppm, 1000.0 Hz"_s),
              std::tuple(second, 150.0, u"10.00 ppm, 1500.0 Hz"_s),
              std::tuple(list, 100.0, u"10.00 ppm, 1000.0 Hz"_s)}) {
            plot.item->nmrData()->setActiveEntryId(active);
            plot.layOut();
            QCOMPARE(dynamic_cast<StackedTraces *>(plot.content())->marks()->distanceTexts(), QStringList{distance});
            const QCPAxis *axis = plot.item->plot()->xAxis;
            QVERIFY(axis->label().contains(u"Hz"));
            QVector<double> ticks;
            QVector<QString> labels;
            axis->ticker()->generate(axis->range(), QLocale::c(), u'f', 0, ticks, nullptr, &labels);
            QVERIFY(ticks.size() > 2);
            for (qsizetype i = 0; i < ticks.size(); ++i)
                QVERIFY(std::abs(labels[i].toDouble() - frequency * ticks[i]) < 0.5);
        }
    }

    /// What the editor says at each step; steps of 10 ppm, so that the next top is far.
    void peaksAreEdited()
    {
        PlotStage plot(spectrum(1, {peak(1, 57, 0, 2), peak(2, 28, 0, 5), peak(3, 28, 0, 5)}));
        const auto places = [&] {
            QStringList list;
            for (const SpectrumPeak &one : plot.item->nmrData()->shownSpectrum().peaks)
                list.append(u"%1:%2"_s.arg(one.f2, 0, 'f', 0).arg(one.height, 0, 'f', 1));
            plot.layOut();
            return list.join(u' ');
        };
        const auto top = [&](int i) { return plot.content()->peakMarks()[i].top; };
        PeakEditor *editor = plot.item->peakEditor();
        editor->setActive(true);
        QCOMPARE(
            plot.said(),
            u"Editing the peaks of s: click adds (Shift: right there), drag moves, Delete or right click removes, Ctrl+click counts once more, Esc ends"_s);
        plot.stage.key(Qt::Key_Delete);
        QCOMPARE(plot.said(), u"No peak is chosen: click one first"_s);
        plot.stage.click(top(1) + QPointF(5, -10)); // the mark above the top, nearly beside it
        QCOMPARE(plot.said().replace(QRegularExpression(u"28\\.0+"_s), u"28"_s), u"Peak at 28 ppm, counts 2 times"_s);
        plot.stage.click(top(1), Qt::ControlModifier);
        QCOMPARE(places(), u"57:2.0 28:5.0 28:5.0 28:5.0"_s);
        QVERIFY(plot.said().endsWith(u"counts 3 times. Number of peaks: 4 measured, 0 simulated"_s));
        plot.stage.drag(top(1), {plot.pixel(42.4, 0).x(), top(1).y()}, Qt::ShiftModifier);
        QCOMPARE(places(), u"57:2.0 42:7.0 42:7.0 42:7.0"_s); // of the top of the slope that they are on
        plot.said();
        plot.stage.key(Qt::Key_Backspace);
        QCOMPARE(places(), u"57:2.0"_s);
        QVERIFY(plot.said().endsWith(u" removed. Number of peaks: 1 measured, 0 simulated"_s));
        plot.stage.click(plot.pixel(33.7, 3.1), Qt::ShiftModifier);
        QVERIFY(places().startsWith(u"57:2.0 34:"_s));
        QVERIFY(plot.said().startsWith(u"Peak added at 33."_s));
        plot.stage.click(plot.pixel(33.7, 6), Qt::ShiftModifier); // where there is one: nothing changes
        QCOMPARE(plot.item->nmrData()->shownSpectrum().peaks.size(), 2);
        QVERIFY(plot.said().endsWith(u"ppm already: Ctrl+click its mark to count it once more"_s));
        QVERIFY(!editor->removeAt(top(0) + QPointF(6.5, 0)));
        QVERIFY(!editor->removeAt(top(0) - QPointF(0, 18)));
        QVERIFY(editor->removeAt(top(0) - QPointF(5.5, 11)));
        plot.stage.key(Qt::Key_Escape);
        QCOMPARE(places(), u"34:7.0"_s);
        QCOMPARE(
            plot.said(),
            u"Peak at 57.00 ppm removed. Number of peaks: 1 measured, 0 simulated | Number of peaks: 1 measured, 0 simulated"_s);
        QVERIFY(!editor->isActive());
        // Who edits no longer marks, also afterwards.
        plot.stage.key(Qt::Key_I);
        editor->setActive(true);
        plot.stage.key(Qt::Key_Escape);
        plot.stage.drag(plot.pixel(60, 3), plot.pixel(40, 3));
        QVERIFY(plot.item->plot()->options().integrals.isEmpty());
        compareRanges(plot.ranges(), {40, 60}, 3e-3);
    }

    /// The edited spectrum is the active one, and the title bar says which that is.
    void editorGoesOnWithAnotherSpectrum()
    {
        PlotStage plot(spectrum(1, {peak(1, 57, 0, 2)}));
        NmrData *data = plot.item->nmrData();
        const QUuid first = data->activeEntryId(), second = data->addEntry(spectrum(1), u"t"_s);
        const PeakEditor *editor = plot.item->peakEditor();
        plot.item->peakEditor()->setActive(true);
        plot.layOut();
        plot.stage.click(plot.content()->peakMarks(first).value(0).top - QPointF(0, 5));
        QVERIFY(plot.said().endsWith(u" | Peak at 57.00 ppm"_s));
        data->setActiveEntryId(second);
        QVERIFY(plot.said().startsWith(u"Editing the peaks of t: "_s));
        QCOMPARE(plot.item->mode(), u"Editing peaks: t"_s);
        plot.stage.key(Qt::Key_Delete);
        QCOMPARE(plot.said(), u"No peak is chosen: click one first"_s);
        data->setEntryName(second, u"u"_s);
        QCOMPARE(plot.item->mode(), u"Editing peaks: u"_s);
        data->removeEntry(second);
        QCOMPARE(plot.item->mode(), u"Editing peaks: s"_s);
        data->removeEntry(first);
        QVERIFY(!editor->isActive() && plot.item->mode().isEmpty());
    }

    /// As far as there is room: no further in than a millionth, no further out than all.
    void rangesHaveLimits()
    {
        PlotStage plot(spectrum(2));
        plot.show({30, 50, 5, 7});
        PlotNavigation &navigation = plot.item->plot()->navigation();
        for (int i = 0; i < 200; ++i)
            navigation.zoom(1.25);
        Ranges ranges = plot.ranges();
        QVERIFY(ranges[1] - ranges[0] >= 60e-6 && ranges[1] - ranges[0] < 1.25 * 60e-6);
        QVERIFY(ranges[3] - ranges[2] >= 6e-6 && ranges[3] - ranges[2] < 1.25 * 6e-6);
        for (int i = 0; i < 200; ++i)
            navigation.zoom(0.8);
        compareRanges(plot.ranges(), {10, 70, 3, 9});
        plot.show({30, 50, 5, 7});
        for (int i = 0; i < 3; ++i)
            navigation.pan(plot.content()->ppmAxes()[0], 0.5);
        compareRanges(plot.ranges(), {50, 70, 5, 7}); // as far as the spectrum goes
        for (const auto &[drag, f2, f1] : {std::tuple(QPointF(3, 100), false, true),
                                           {QPointF(100, 3), true, false},
                                           {QPointF(4, 6), true, true},
                                           {QPointF(3, 3), false, false}}) {
            plot.show({30, 50, 5, 7});
            ranges = plot.ranges();
            const QPointF from = plot.pixel(40, 6);
            plot.stage.drag(from, from + drag);
            QCOMPARE(std::abs(plot.ranges()[0] - ranges[0]) > 1, f2);
            QCOMPARE(std::abs(plot.ranges()[2] - ranges[2]) > 0.1, f1);
        }
    }

    /// Esc ends a drag before it ends the editing of peaks; what the drag began on stays as it is and is not clicked.
    void dragsAreGivenUp()
    {
        PlotStage plot(spectrum(1, {peak(1, 57, 0, 2)}));
        plot.show({30, 60});
        const auto giveUp = [&](const QPointF &from, const QPointF &to) {
            plot.said();
            plot.item->plot()->setLitPeaks({id(1)});
            plot.stage.drag(from, to, {}, Qt::Key_Escape);
            compareRanges(plot.ranges(), {30, 60});
            QCOMPARE(plot.item->plot()->litPeaks(), QSet<QUuid>{id(1)});
            const QList<SpectrumPeak> peaks = plot.item->nmrData()->shownSpectrum().peaks;
            QVERIFY(peaks.size() == 1 && peaks[0].f2 == 57);
        };
        const QPointF top = plot.content()->peakMarks()[0].top, empty = plot.pixel(48, 3), other = plot.pixel(35, 4);
        giveUp(empty, other);
        plot.stage.key(Qt::Key_I);
        giveUp(empty, other);
        QVERIFY(plot.item->plot()->options().integrals.isEmpty());
        QCOMPARE(plot.item->plot()->marker().mode(), PlotMarker::Mode::None);
        plot.item->peakEditor()->setActive(true);
        giveUp(top, other);
        giveUp(empty, other);
        QVERIFY(plot.item->peakEditor()->isActive());
        plot.stage.click(other, Qt::ShiftModifier); // the next click is one again
        QCOMPARE(plot.item->nmrData()->shownSpectrum().peaks.size(), 2);
        plot.stage.key(Qt::Key_Escape);
        QVERIFY(!plot.item->peakEditor()->isActive());
    }

    // --- molecule

    /// The hydrogen at (0.15, 0.1, 2), in Angstrom to the right and up from the carbon: turned by 0.12 about the
    /// vertical or the horizontal axis, or as far away as the zoom makes it.
    void moleculeKeysAndWheel()
    {
        for (const auto &[key, hydrogen] : {std::pair(Qt::Key_Left, QPointF(-0.0905, 0.1)),
                                            {Qt::Key_Right, {0.3883, 0.1}},
                                            {Qt::Key_Up, {0.15, 0.3387}},
                                            {Qt::Key_Down, {0.15, -0.1401}},
                                            {Qt::Key_Plus, {0.1875, 0.125}},
                                            {Qt::Key_Minus, {0.12, 0.08}},
                                            {Qt::Key_PageUp, {0.1875, 0.125}},
                                            {Qt::Key_PageDown, {0.12, 0.08}}}) {
            auto *item = new MoleculeItem(molecule());
            Stage stage(item);
            lookAlongZ(*item);
            const auto from = [&](int a, int b) { return item->atomPosition(b) - item->atomPosition(a); };
            const double scale = from(Carbon, Oxygen).x() / 1.4; // pixels per Angstrom
            stage.key(key);
            const QPointF moved = from(Carbon, Hydrogen) / scale;
            QVERIFY2(std::hypot(moved.x() - hydrogen.x(), -moved.y() - hydrogen.y()) < 1e-3,
                     qPrintable(u"%1 %2"_s.arg(moved.x()).arg(-moved.y())));
        }
        auto *item = new MoleculeItem(molecule());
        Stage stage(item);
        for (bool on : {true, false}) {
            stage.key(Qt::Key_N);
            stage.key(on ? Qt::Key_M : Qt::Key_Escape);
            QVERIFY(item->contactsVisible() == on && item->isMeasuring() == on);
        }
        lookAlongZ(*item);
        const auto length = [&] { return QLineF(item->atomPosition(0), item->atomPosition(1)).length(); };
        const double before = length();
        item->setCurrent(false);
        stage.wheel({300, 200});
        QCOMPARE(length(), before);
        item->setCurrent(true);
        stage.wheel({300, 200});
        QVERIFY(std::abs(length() / before - std::pow(1.0015, 120)) < 1e-6);
        stage.key(Qt::Key_Home);
        QVERIFY(item->viewSettings()[u"Rotation"_s] != QVariant::fromValue(DoubleVector{1, 0, 0, 0}));
    }

    void clickTakesTheFrontAtom()
    {
        auto *item = new MoleculeItem(molecule());
        MoleculeItem listener(molecule());
        item->linkObject(&listener);
        Stage stage(item);
        lookAlongZ(*item);
        const QPointF origin = item->contentRect().topLeft();
        const auto click = [&](const QPointF &place, Qt::KeyboardModifiers modifiers = {}) {
            stage.click(place - origin, modifiers);
            return item->selectedAtoms();
        };
        const auto between = [&](double part) {
            return item->atomPosition(Carbon) * (1 - part) + item->atomPosition(Hydrogen) * part;
        };
        QCOMPARE(click(between(0.9)), QSet<int>{Hydrogen});
        QCOMPARE(click(between(-1)), QSet<int>{Carbon}); // where the hydrogen leaves it free
        QCOMPARE(click(item->atomPosition(Oxygen), Qt::ControlModifier), (QSet<int>{Carbon, Oxygen}));
        QCOMPARE(listener.selectedAtoms(), (QSet<int>{Carbon, Oxygen}));
        QCOMPARE(click(item->atomPosition(Oxygen), Qt::ControlModifier), QSet<int>{Carbon});
        QCOMPARE(click(item->contentRect().topRight() + QPointF(-15, 15)), QSet<int>());
        // A drag to the right by 0.01 a pixel: what is in front goes along.
        const double before = item->atomPosition(Hydrogen).x() - item->atomPosition(Carbon).x();
        stage.drag({100, 100}, {130, 100});
        QVERIFY(item->atomPosition(Hydrogen).x() - item->atomPosition(Carbon).x() > before + 5);
        QCOMPARE(item->selectedAtoms(), QSet<int>()); // a drag selects nothing
        // A double click beside the atoms shows it as at first: the left one, neither on the title nor while measuring.
        const auto turned = [&](const QPointF &place, Qt::MouseButton button = Qt::LeftButton) {
            const QVariant rotation = item->viewSettings()[u"Rotation"_s];
            stage.doubleClick(place, button);
            return item->viewSettings()[u"Rotation"_s] != rotation;
        };
        QVERIFY(!turned({48, -12}) && !turned({5, 5}, Qt::RightButton) && !turned(item->atomPosition(Oxygen) - origin));
        stage.key(Qt::Key_M);
        QVERIFY(!turned({5, 5}));
        stage.key(Qt::Key_Escape);
        QVERIFY(turned({5, 5}));
    }

    /// Oxygen, nitrogen, hydrogen, carbon: distance, angle and torsion angle by numpy.
    void clicksMeasure()
    {
        auto *item = new MoleculeItem(molecule());
        Stage stage(item);
        lookAlongZ(*item);
        stage.key(Qt::Key_M);
        const auto click = [&](const QPointF &place) {
            stage.click(place - item->contentRect().topLeft());
            return item->measurements().value(0);
        };
        // The same atom again takes it back: there is nothing to remove.
        for (int again = 0; again < 2; ++again)
            click(item->atomPosition(Oxygen));
        for (const QAction *action : item->contextMenu()->actions())
            QVERIFY(action->text() != u"Remove Measurements" || !action->isEnabled());
        QCOMPARE(click(item->atomPosition(Oxygen)), QString());
        QCOMPARE(click(item->atomPosition(Nitrogen)), u"O2\u2013N3  2.328 \u00c5"_s);
        QCOMPARE(click(item->atomPosition(Hydrogen)), u"O2\u2013N3\u2013H4  47.3\u00b0"_s);
        QCOMPARE(click(item->atomPosition(Carbon) * 2 - item->atomPosition(Hydrogen)),
                 u"O2\u2013N3\u2013H4\u2013C1  -53.3\u00b0"_s);
        click(item->atomPosition(Oxygen));
        click(item->atomPosition(Nitrogen));
        QCOMPARE(item->measurements().size(), 2);
        QVERIFY(item->selectedAtoms().isEmpty());
        stage.key(Qt::Key_Escape);
        click(item->atomPosition(Oxygen));
        QCOMPARE(item->selectedAtoms(), QSet<int>{Oxygen});
        QVERIFY(item->contactsText().contains(u"\tC1\t0 0 0\t1.4177\t"_s));
        // What was measured before stays as it is, also in a document that is opened again.
        for (int again = 0; again < 2; ++again) {
            const QStringList before = item->measurements();
            if (again > 0)
                item->setViewSettings(item->viewSettings());
            else
                stage.key(Qt::Key_M);
            click(item->atomPosition(Nitrogen));
            click(item->atomPosition(Oxygen));
            QCOMPARE(item->measurements().mid(0, before.size()), before);
            QCOMPARE(item->measurements().size(), before.size() + 1);
        }
        // A click beside the atoms, or again onto the last one, ends it. One atom waits for the next with a "?".
        const qsizetype all = item->measurements().size();
        const QPointF beside = item->contentRect().topLeft() + QPointF(5, 5), oxygen = item->atomPosition(Oxygen),
                      nitrogen = item->atomPosition(Nitrogen),
                      carbon = item->atomPosition(Carbon) * 2 - item->atomPosition(Hydrogen);
        for (const QPointF &place : {beside, oxygen, oxygen, carbon, nitrogen, nitrogen, oxygen, beside, carbon})
            click(place);
        QCOMPARE(item->measurements().mid(all), QStringList{u"C1\u2013N3  1.526 \u00c5"_s});
        const auto paint = [&](QPainter *painter) { item->paintPicture(painter, QRectF(0, 0, 696, 415)); };
        QCOMPARE(Shapes::of({696, 415}, paint).filter(u"path - #6d1c83"_s).size(), all + 2);
    }

    // --- any item

    /// The title bar moves it, the grip of the current one resizes it; both are told when the button comes up.
    void itemsAreMovedAndResized()
    {
        auto *item = new MoleculeItem(molecule());
        Stage stage(item);
        item->setGeometry(100, 50, 300, 200); // its content: 296 by 175
        item->setCurrent(false);
        QList<QRectF> edits;
        connect(item, &DocumentItem::geometryEdited,
                [&](const QRectF &before, const QRectF &after) { edits << before << after; });
        stage.drag({48, -2}, {68, 8});
        QCOMPARE(edits, (QList<QRectF>{{100, 50, 300, 200}, {120, 60, 300, 200}}));
        stage.drag({48, 1}, {68, 18}); // below the title: turns the molecule
        stage.drag({294, 173}, {314, 193}); // not current: no grip
        QCOMPARE(edits.size(), 2);
        item->setCurrent(true);
        QCOMPARE(stage.colorAt({295, 174}), QColor(0x1f, 0x6f, 0xb5));
        stage.drag({294, 173}, {324, 163});
        QCOMPARE(edits.mid(2), (QList<QRectF>{{120, 60, 300, 200}, {120, 60, 330, 190}}));
        stage.drag({324, 163}, {-22, -33}); // no smaller than this
        QCOMPARE(item->geometry(), QRectF(120, 60, 120, 80));
    }

private:
    static void lookAlongZ(MoleculeItem &item)
    {
        item.setViewSettings({{u"Rotation"_s, QVariant::fromValue(DoubleVector{1, 0, 0, 0})}, {u"Zoom"_s, 1.0}});
    }
};

QTEST_MAIN(TestGestures)
#include "tst_gestures.moc"
