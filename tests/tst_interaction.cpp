// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"
#include "WorkbenchUser.h"

#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/MainView.h"
#include "host/PluginManager.h"
#include "host/WMainWindow.h"
#include "items/ContourMap.h"
#include "items/CrossPeakLabels.h"
#include "items/MoleculeItem.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"
#include "items/NmrPlot.h"
#include "items/PlotContent.h"
#include "items/TableItem.h"

#include <QApplication>
#include <QLabel>
#include <QSettings>
#include <QStatusBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

const Inputs carbon{{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 172.4}};
const Inputs map{{"fCbDims", u"2D Spectrum"_s}, {"fCbNucF2", u"13C"_s},  {"fSpCSRefF2", 172.4}, {"fSpLwF2", 150.0},
                 {"fCbNucF1", u"1H"_s},         {"fSpCSRefF1", 30.5},     {"fSpLwF1", 100.0}};

} // namespace

/// Mouse and keyboard over the items, with the built plug-in's spectra in them.
class tst_Interaction : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QCoreApplication::setOrganizationName(u"magres-tests"_s);
        m_host = std::make_unique<HostApplication>(false);
        m_host->plugins().load(QStringLiteral(PLUGIN_FILE));
        window().show();
        QVERIFY(QTest::qWaitForWindowExposed(&window()));
        window().activateWindow();
    }

    void init()
    {
        scene().undoStack()->clear();
        for (DocumentItem *item : scene().documentItems()) {
            scene().detach(item);
            delete item;
        }
        QSettings().clear();
        window().openFiles({sample("paracetamol.magres")});
    }

    void cleanupTestCase() { m_host.reset(); }

    void peaksAreEditedByHand_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("twoDimensional");
        QTest::newRow("1D") << u"paracetamol-13C-affn.jdx"_s << false;
        QTest::newRow("2D") << u"paracetamol-hetcor-bruker"_s << true;
    }
    void peaksAreEditedByHand()
    {
        QFETCH(QString, file);
        QFETCH(bool, twoDimensional);
        makeSpectrum(twoDimensional ? map : carbon);
        window().openFiles({sample(file.toLatin1())});
        QTest::keyClick(window().view(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        const SpectrumPeak peak = measured().peaks.first();
        const auto same = [&](const SpectrumPeak &p) { return p.f2 == peak.f2 && p.f1 == peak.f1; };
        const auto count = [&] { return std::count_if(measured().peaks.begin(), measured().peaks.end(), same); };
        const qsizetype all = measured().peaks.size(), sites = count();
        const QPointF at = markOf(peak);

        click(at, Qt::ControlModifier);
        QCOMPARE(count(), sites + 1);
        QTest::keyClick(window().view(), Qt::Key_Delete);
        QCOMPARE(measured().peaks.size(), all - sites);
        QVERIFY(spectrum()->scene()); // the peak went, not the item
        // A click some pixels beside the top finds it again.
        click(at + QPointF(3, twoDimensional ? 3 : 20));
        QCOMPARE(measured().peaks.size(), all - sites + 1);
        const SpectrumPeak added = measured().peaks.last();
        QVERIFY(std::abs(added.f2 - peak.f2) < 0.02 && std::abs(added.f1 - peak.f1) < 0.02);
        QVERIFY(std::abs(added.height - peak.height) < 0.01 * peak.height);

        const double moved = f2At(markOf(added) + QPointF(25, 0));
        drag(markOf(added), markOf(added) + QPointF(25, 0), Qt::ShiftModifier);
        QVERIFY(isOnPixel(measured().peaks.last().f2, moved));
        QCOMPARE(measured().peaks.last().id, added.id);
        click(markOf(measured().peaks.last()), {}, Qt::RightButton);
        QCOMPARE(measured().peaks.size(), all - sites);
        QVERIFY(window().statusBar()->currentMessage().contains(u"%1 measured"_s.arg(all - sites)));

        QTest::keyClick(window().view(), Qt::Key_Escape);
        click(at + QPointF(3, 3));
        QCOMPARE(measured().peaks.size(), all - sites);
        for (int step = 0; step < 5; ++step)
            scene().undoStack()->undo();
        QCOMPARE(measured().peaks.size(), all);
        QCOMPARE(count(), sites);
    }

    void simulatedPeaksAreNotEdited()
    {
        makeSpectrum(carbon);
        const QVariantMap before = data()->entry(data()->activeEntryId());
        QTest::keyClick(window().view(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(window().statusBar()->currentMessage().contains(u"cannot be edited"_s));
        click(markOf(data()->shownSpectrum().peaks.first()) + QPointF(15, 0));
        QCOMPARE(data()->entry(data()->activeEntryId()), before);
    }

    void peaksArePickedAndCounted()
    {
        makeSpectrum(carbon);
        window().openFiles({sample("paracetamol-13C-affn.jdx")});
        const qsizetype all = measured().peaks.size();
        m_dialogs.expect(u"Pick peaks"_s, [=](QDialog *dialog) {
            QVERIFY(part<QLabel>(dialog, "result")->text().contains(u"%1 measured"_s.arg(all)));
            fill(dialog, {{"leastHeight", 95.0}});
            press(dialog, QDialogButtonBox::Ok);
        });
        choose(window(), spectrum(), {u"Pic&k Peaks..."_s});
        QVERIFY(measured().peaks.size() < all && !measured().peaks.isEmpty());
        m_dialogs.expect(u"Pick peaks"_s, [](QDialog *dialog) {
            fill(dialog, {{"countSites", false}});
            press(dialog, QDialogButtonBox::Ok);
        });
        choose(window(), spectrum(), {u"Pic&k Peaks..."_s});
        QVERIFY(measured().peaks.size() < all);
        choose(window(), spectrum(), {u"&Count Equivalent Sites"_s});
        QCOMPARE(measured().peaks.size(), all);
    }

    void peaksAtomsAndRowsAreSelectedTogether_data()
    {
        QTest::addColumn<Inputs>("inputs");
        QTest::newRow("1D") << carbon;
        QTest::newRow("2D") << map;
    }
    void peaksAtomsAndRowsAreSelectedTogether()
    {
        QFETCH(Inputs, inputs);
        makeSpectrum(inputs);
        const SpectrumPeak peak = data()->shownSpectrum().peaks.first();
        click(markOf(peak));
        QVERIFY(spectrum()->plot()->litPeaks().contains(peak.id));
        QStringList labels;
        for (const QModelIndex &row : table()->view()->selectionModel()->selectedRows(1))
            labels += row.data().toString().split(u", "_s);
        for (const QString &label : peak.label.split(u','))
            QVERIFY2(labels.contains(label), qPrintable(peak.label + u": "_s + labels.join(u' ')));
        const QSet<int> atoms = molecule()->selectedAtoms();
        QVERIFY(!atoms.isEmpty() && atoms.size() < 40);

        click(QPointF(spectrum()->plot()->content()->mainRect()->rect().bottomLeft()) + QPointF(4, -40));
        QVERIFY(molecule()->selectedAtoms().isEmpty() && spectrum()->plot()->litPeaks().isEmpty());
        table()->view()->selectRow(table()->view()->model()->rowCount() - 1); // no carbon, no hydrogen
        QVERIFY(spectrum()->plot()->litPeaks().isEmpty() && !molecule()->selectedAtoms().isEmpty());
        // An edit makes other peaks; taking it back brings these back, with their atoms.
        m_dialogs.expect(u"MAGRES parameters"_s, [](QDialog *dialog) { press(dialog, QDialogButtonBox::Ok); });
        choose(window(), spectrum(), {u"MAGRES"_s, u"Edit Spectrum..."_s});
        QVERIFY(data()->shownSpectrum().peaks.first().id != peak.id);
        scene().undoStack()->undo();
        molecule()->sendMessage(QVariantMap{{u"type"_s, 22}, {u"data"_s, QVariantList(atoms.begin(), atoms.end())}});
        QVERIFY(spectrum()->plot()->litPeaks().contains(peak.id));
    }

    void mouseZoomsAndMoves()
    {
        makeSpectrum(carbon);
        const QPointF at(200, 120);
        const auto range = [&] { return spectrum()->plot()->xAxis->range(); };
        const QCPRange full = range();
        scene().setActiveItem(molecule());
        wheel(at);
        QCOMPARE(range(), full); // scrolls the page
        scene().setActiveItem(spectrum());
        const double ppm = f2At(at);
        wheel(at);
        QVERIFY(std::abs(range().size() * 1.25 - full.size()) < 1e-9 && isOnPixel(f2At(at), ppm));
        const QCPRange heights = spectrum()->plot()->yAxis->range();
        wheel(at, Qt::ShiftModifier);
        QVERIFY(std::abs(spectrum()->plot()->yAxis->range().size() * 1.25 - heights.size()) < 1e-9 * heights.size());
        QTest::qWait(20); // other numbers at the axis take other room
        const double from = f2At({150, 100}), to = f2At({300, 100});
        drag({150, 100}, {300, 100});
        QVERIFY(isOnPixel(range().upper, from, 4) && isOnPixel(range().lower, to, 4));
        const double held = f2At({200, 100});
        drag({200, 100}, {230, 110}, Qt::ShiftModifier);
        QVERIFY(isOnPixel(f2At({230, 100}), held));
        QTest::keyClick(window().view(), Qt::Key_Home);
        QCOMPARE(range(), full);
    }

    void removedEntryDoesNotComeBack()
    {
        makeSpectrum(carbon);
        const QUuid entry = data()->activeEntryId();
        const QVariantMap held = data()->entry(entry);
        data()->removeEntry(entry);
        data()->insertSpectrum(entry, held);
        QVERIFY(data()->entryIds().isEmpty());
        scene().undoStack()->undo();
        data()->insertSpectrum(entry, held);
        QCOMPARE(data()->entryIds(), QList<QUuid>{entry});
    }

    void contoursAndLabelsOfMaps()
    {
        makeSpectrum(map);
        const auto *shown = dynamic_cast<ContourMap *>(spectrum()->plot()->content());
        const QStringList texts = shown->labels()->visibleTexts();
        QVERIFY(!texts.isEmpty());
        QCOMPARE(QSet<QString>(texts.begin(), texts.end()).size(), texts.size());
        const double lowest = spectrum()->plot()->options().contours.lowest;
        m_dialogs.expect(u"Contour levels"_s, [](QDialog *dialog) {
            fill(dialog, {{"lowestLevel", 20.0}});
            press(dialog, QDialogButtonBox::Cancel);
        });
        choose(window(), spectrum(), {u"Contour Levels..."_s});
        QCOMPARE(spectrum()->plot()->options().contours.lowest, lowest);
        QTest::keyClick(window().view(), Qt::Key_Plus);
        QCOMPARE(spectrum()->plot()->options().contours.lowest, lowest / 1.25);
    }

private:
    WMainWindow &window() const { return m_host->window(); }
    MainScene &scene() const { return m_host->scene(); }
    NmrItem *spectrum() const { return scene().currentNmrItem(); }
    NmrData *data() const { return spectrum()->nmrData(); }
    TableItem *table() const { return scene().currentTableItem(); }
    MoleculeItem *molecule() const { return qobject_cast<MoleculeItem *>(scene().documentItems().first()); }
    const Spectrum &measured() const { return data()->spectrum(data()->entryIds().last()); }
    static QString sample(const char *name) { return QStringLiteral(SAMPLE_DIRECTORY "/") + QLatin1String(name); }
    double f2At(const QPointF &pixel) const { return spectrum()->plot()->xAxis->pixelToCoord(pixel.x()); }

    /// To the pixel; of a range `zoom` times as large.
    bool isOnPixel(double ppm, double expected, double zoom = 1) const
    {
        return std::abs(ppm - expected) <= zoom * std::abs(f2At({1, 0}) - f2At({0, 0}));
    }
    void makeSpectrum(const Inputs &inputs)
    {
        m_dialogs.expect(u"MAGRES parameters"_s, [=](QDialog *dialog) {
            fill(dialog, inputs);
            press(dialog, QDialogButtonBox::Ok);
        });
        choose(window(), table(), {u"Create spectrum..."_s});
        QVERIFY(spectrum());
        QVERIFY(spectrum()->plot()->content());
        window().view()->centerOn(spectrum());
        window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window()));
    }
    /// Pixels of the plot, a little below the top of the peak.
    QPointF markOf(const SpectrumPeak &peak) const
    {
        for (const PeakMark &mark : spectrum()->plot()->content()->peakMarks())
            if (mark.peak.id == peak.id)
                return mark.top;
        userFailed(u"The peak is not in sight"_s);
        return {};
    }
    QPoint inViewport(const QPointF &pixel) const
    {
        return window().view()->mapFromScene(spectrum()->mapToScene(spectrum()->contentRect().topLeft() + pixel));
    }
    QPoint inWindow(const QPointF &pixel) const
    {
        return window().view()->viewport()->mapTo(&window(), inViewport(pixel));
    }
    void click(const QPointF &pixel, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        window().view()->centerOn(spectrum()->mapToScene(spectrum()->contentRect().topLeft() + pixel));
        QTest::mouseClick(window().windowHandle(), button, modifiers, inWindow(pixel));
        // Two clicks are no double click.
        QTest::qWait(QApplication::doubleClickInterval() + 20);
    }
    void drag(const QPointF &from, const QPointF &to, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mousePress(window().windowHandle(), Qt::LeftButton, modifiers, inWindow(from));
        for (double part : {0.5, 1.0})
            moveTo(from + part * (to - from), modifiers);
        QTest::mouseRelease(window().windowHandle(), Qt::LeftButton, modifiers, inWindow(to));
    }
    void moveTo(const QPointF &pixel, Qt::KeyboardModifiers modifiers)
    {
        QWidget *viewport = window().view()->viewport();
        const QPoint at = inViewport(pixel);
        QMouseEvent event(QEvent::MouseMove, at, viewport->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, modifiers);
        QApplication::sendEvent(viewport, &event);
    }
    void wheel(const QPointF &pixel, Qt::KeyboardModifiers modifiers = {})
    {
        QWidget *viewport = window().view()->viewport();
        const QPoint at = inViewport(pixel);
        QWheelEvent event(at, viewport->mapToGlobal(at), {}, {0, 120}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(viewport, &event);
    }

    QTemporaryDir m_settings;
    std::unique_ptr<HostApplication> m_host;
    ModalAnswers m_dialogs;
};

QTEST_MAIN(tst_Interaction)
#include "tst_interaction.moc"
