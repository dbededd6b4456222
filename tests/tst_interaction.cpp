// SPDX-License-Identifier: BSD-3-Clause
#include "PlotUser.h"
#include "Shapes.h"
#include "WindowTest.h"

#include "data/Language.h"
#include "data/PeakListEdit.h"
#include "items/plot/ContourMap.h"
#include "items/plot/CrossPeakLabels.h"

const Inputs carbon{{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 172.4}};
const Inputs map{{"fCbDims", u"2D Spectrum"_s}, {"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 172.4}, {"fSpLwF2", 150.0},
                 {"fCbNucF1", u"1H"_s},         {"fSpCSRefF1", 30.5},   {"fSpLwF1", 100.0}};

/// Mouse and keyboard over the items, with the built plug-in's spectra in them.
class tst_Interaction : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QSettings().clear();
        start();
        open(u"paracetamol.magres"_s);
    }

    void peaksOfALineAreEditedByHand() { editPeaks(carbon, u"paracetamol-13C-affn.jdx"_s); }
    void peaksOfAMapAreEditedByHand() { editPeaks(map, u"paracetamol-hetcor-bruker"_s); }

    void windowAndPluginSpeakGerman()
    {
        m_host.reset();
        const Language german(u"de"_s);
        start();
        window().openFiles({sample(u"paracetamol-13C-points.csv"_s), sample(u"paracetamol.magres"_s)});
        QCOMPARE(window().menuBar()->actions().first()->text(), u"&Datei"_s);
        m_dialogs.expect(u"Pulverspektrum"_s, [](QDialog *dialog) {
            const QString shown = linesOf(dialog).join(u' ');
            QVERIFY2(shown.contains(u"An &Messung anpassen"_s), qPrintable(shown));
            QCOMPARE(doubledMnemonics(shown), QString());
            dialog->reject();
        });
        choose(window(), table(), {u"Pulverspektrum erzeugen..."_s});
        m_dialogs.expect(u"MAGRES-Parameter"_s, [](QDialog *dialog) { press(dialog, QDialogButtonBox::Ok); });
        for (QAction *action : window().findChild<QToolBar *>()->actions())
            if (action->text() == u"Spektrum erzeugen"_s)
                action->trigger();
        QCOMPARE(m_dialogs.missing(), QStringList());
        QVERIFY(plot()->plot()->xAxis->label().startsWith(u"Chemische Verschiebung"_s));
        QCOMPARE(doubledMnemonicsOfMenus().join(QString()), QString());
        m_host.reset();
    }

    void countsHaveTheirPlural()
    {
        for (const auto &[language, one, more] : {std::tuple(u"en"_s, u"1 atom selected"_s, u"3 atoms selected"_s),
                                                  std::tuple(u"de"_s, u"1 Atom gewählt"_s, u"3 Atome gewählt"_s),
                                                  std::tuple(u"fr"_s, u"1 atom selected"_s, u"3 atoms selected"_s)}) {
            const Language spoken(language);
            QCOMPARE(QCoreApplication::translate("Workbench::NmrItem", "%n atom(s) selected", nullptr, 1), one);
            QCOMPARE(QCoreApplication::translate("Workbench::NmrItem", "%n atom(s) selected", nullptr, 3), more);
        }
    }

    void peaksArePickedAndCounted()
    {
        makeSpectrum(carbon);
        open(u"paracetamol-13C-affn.jdx"_s);
        const qsizetype all = measured().peaks.size();
        for (const Inputs &inputs : {Inputs{{"leastHeight", 95.0}}, Inputs{{"countSites", false}}}) {
            m_dialogs.expect(u"Pick peaks"_s, [=](QDialog *dialog) {
                QVERIFY(part<QLabel>(dialog, "result")->text().contains(u"%1 measured"_s.arg(all)));
                fill(dialog, inputs);
                press(dialog, QDialogButtonBox::Ok);
            });
            choose(window(), plot(), {u"Pic&k Peaks..."_s});
            QVERIFY(measured().peaks.size() < all && !measured().peaks.isEmpty());
        }
        // Each place keeps its labels.
        const auto labels = [this] {
            QMap<double, QString> found;
            for (const SpectrumPeak &peak : measured().peaks)
                found[peak.f2] = peak.label;
            return found;
        };
        const SpectrumEntry entry = data()->stack().entries.last();
        QHash<QUuid, QString> names;
        for (const SpectrumPeak &peak : entry.spectrum.peaks)
            names[peak.id] = u"C%1"_s.arg(peak.f2);
        data()->setEntryPeaks(entry.id, PeakListEdit::labelled(data()->entryPeakList(entry.id), names), {});
        const QMap<double, QString> before = labels();
        choose(window(), plot(), {u"&Count Equivalent Sites"_s});
        QCOMPARE(measured().peaks.size(), all);
        QCOMPARE(labels(), before);
    }

    void contoursAndLabelsOfMaps()
    {
        makeSpectrum(map);
        const auto *shown = dynamic_cast<ContourMap *>(plot()->plot()->content());
        QCOMPARE(shown->labels()->visibleTexts().size(), 9); // four equivalent molecules: each place once
        const auto lowest = [this] { return plot()->plot()->options().contours.lowest; };
        m_dialogs.expect(u"Contour levels"_s, [=](QDialog *dialog) {
            QCOMPARE(
                linesOf(dialog).join(u"; "_s),
                u"&Lowest level: [5.000 % of the maximum: 0.001 to 99.000]; &Factor between levels: [1.60: 1.05 to "
                "10.00 by 0.1]; &Number of levels: [12: 1 to 50]; <Restore Defaults> <OK> <Cancel>"_s);
            fill(dialog, {{"lowestLevel", 20.0}});
            QCOMPARE(lowest(), 0.2);
            press(dialog, QDialogButtonBox::RestoreDefaults);
            QCOMPARE(lowest(), 0.05);
            fill(dialog, {{"lowestLevel", 20.0}});
            press(dialog, QDialogButtonBox::Cancel);
        });
        choose(window(), plot(), {u"Contour Levels..."_s});
        QTest::keyClick(window().view(), Qt::Key_Plus);
        QCOMPARE(lowest(), 0.05 / 1.25);
    }

    /// Wherever the window has scrolled to, as it does by itself when an atom is clicked.
    void tablesAreWholeOnPaper()
    {
        const auto paper = [this] {
            return Shapes::of(QSize(900, 400),
                              [&](QPainter *painter) { table()->paintPicture(painter, QRectF(0, 0, 900, 400)); });
        };
        const QStringList before = paper();
        table()->resize(200, 300);
        table()->view()->scrollToBottom();
        QScrollBar *columns = table()->view()->horizontalScrollBar();
        columns->setValue(columns->maximum());
        QVERIFY(table()->view()->rowAt(0) > 0 && table()->view()->columnViewportPosition(0) < 0);
        QCOMPARE(paper(), before);
    }

private:
    const Spectrum &measured() const { return data()->spectrum(data()->entryIds().last()); }
    double f2At(double x) const { return plot()->plot()->xAxis->pixelToCoord(x); }
    bool isOnPixel(double ppm, double expected, double zoom = 1) const
    {
        return std::abs(ppm - expected) <= zoom * std::abs(f2At(1) - f2At(0));
    }
    PlotUser makeSpectrum(const Inputs &inputs)
    {
        m_dialogs.expect(u"MAGRES parameters"_s, [=](QDialog *dialog) {
            fill(dialog, inputs);
            press(dialog, QDialogButtonBox::Ok);
        });
        choose(window(), table(), {u"Create spectrum..."_s});
        window().view()->centerOn(plot());
        if (window().activateWindow(); !QTest::qWaitForWindowActive(&window()))
            userFailed(u"The window has no keyboard"_s);
        return PlotUser(window(), plot());
    }

    void editPeaks(const Inputs &inputs, const QString &file)
    {
        const PlotUser user = makeSpectrum(inputs);
        QTest::keyClick(window().view(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(window().statusBar()->currentMessage().contains(u"cannot be edited"_s)); // a simulated one
        open(file);
        QTest::keyClick(window().view(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        const SpectrumPeak peak = measured().peaks.first();
        const auto same = [&](const SpectrumPeak &p) { return p.f2 == peak.f2 && p.f1 == peak.f1; };
        const auto count = [&] { return std::count_if(measured().peaks.begin(), measured().peaks.end(), same); };
        const qsizetype all = measured().peaks.size(), sites = count();
        const QPointF at = user.topOf(peak);

        user.click(at, Qt::ControlModifier);
        QCOMPARE(count(), sites + 1);
        QTest::keyClick(window().view(), Qt::Key_Delete);
        QVERIFY(plot() && measured().peaks.size() == all - sites); // the peak goes, not the item
        user.click(at + QPointF(3, 3)); // beside the top, which is found again
        const SpectrumPeak added = measured().peaks.last();
        QVERIFY(std::abs(added.f2 - peak.f2) < 0.02 && std::abs(added.f1 - peak.f1) < 0.02);
        QVERIFY(std::abs(added.height - peak.height) < 0.01 * peak.height);
        const double moved = f2At(user.topOf(added).x() + 25);
        user.drag(user.topOf(added), user.topOf(added) + QPointF(25, 0), Qt::ShiftModifier);
        QVERIFY(isOnPixel(measured().peaks.last().f2, moved));
        user.click(user.topOf(added), {}, Qt::RightButton);
        QVERIFY(window().statusBar()->currentMessage().contains(u"%1 measured"_s.arg(all - sites)));
        history().undo();
        QVERIFY(window().statusBar()->currentMessage().contains(u"%1 measured"_s.arg(all - sites + 1)));
        history().redo();

        QTest::keyClick(window().view(), Qt::Key_Escape);
        user.click(at);
        QCOMPARE(measured().peaks.size(), all - sites);
        for (int step = 0; step < 5; ++step)
            history().undo();
        QVERIFY(measured().peaks.size() == all && count() == sites);
    }
};

QTEST_MAIN(tst_Interaction)
#include "tst_interaction.moc"
