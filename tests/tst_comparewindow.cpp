// SPDX-License-Identifier: BSD-3-Clause
#include "WindowTest.h"

#include "document/DocumentState.h"
#include "formats/DocumentFile.h"
#include "items/plot/AgreementPlot.h"
#include "window/PowderCommands.h"
#include "window/compare/CompareCommands.h"
#include "window/compare/ComparePanel.h"
#include "window/compare/PairTable.h"
#include "window/compare/RankDialog.h"
#include "window/compare/RankModel.h"

/// The comparison as a user of the window meets it.
class TestCompareWindow : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        clear();
        window().compareCommands()->setRankProgram(built(u"magres-workbench"));
        panel().hide();
        panel().followReferenceSets();
    }

    void namesOfListsTellTheNucleus()
    {
        // What a list says of itself is not asked.
        window().openFiles(
            {sample(u"candidates/candidate-3.magres"_s), m_files.write("list.txt", "1H: 9.1, 6.8, 2.1\n")});
        command(u"Compare"_s)->trigger();
        QCOMPARE(linesOf(&panel())[2], u"&Nucleus: ([1H: 1H]) &Average: [no groups: no groups, CH3, XH3]"_s);
        clear();
        openPanel(u"candidates/candidate-3.magres"_s, m_files.write("list-1H.csv", "position\n9.1\n6.8\n2.1\n"));
        auto *nucleus = panel().findChild<QComboBox *>(u"compareNucleus"_s);
        nucleus->setCurrentText(u"13C"_s);
        Q_EMIT nucleus->activated(nucleus->currentIndex());
        open(u"acetic-acid.magres"_s);
        QCOMPARE(nucleus->currentText(), u"13C"_s); // the user's choice stays
    }

    void showsThePairsOfTheCommandLine()
    {
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        // Numbers of the guide, which the command prints.
        QCOMPARE(rows(),
                 (QStringList{u"C25 ×4|170.27|170.11|0.16|"_s, u"C1 ×4|153.35|154.27|-0.92|"_s,
                              u"C13 ×4|133.69|134.45|-0.76|"_s, u"C9 ×4|124.03|124.18|-0.15|"_s,
                              u"C17 ×4|121.69|121.75|-0.06|"_s, u"C21 ×4|116.96|116.80|0.16|"_s,
                              u"C5 ×4|115.49|115.22|0.27|"_s, u"C29 ×4|24.00|22.71|1.29|"_s}));
        QApplication::processEvents();
        QCOMPARE(linesOf(&panel()),
                 (QStringList{u"S&tructure: [candidate-3: candidate-3]"_s,
                              u"&Measured: [paracetamol-13C.csv: paracetamol-13C.csv]"_s,
                              u"&Nucleus: ([13C: 13C]) &Average: [no groups: no groups, CH3, XH3]"_s,
                              u"&Reference: [fitted: fitted, fixed] ([172.56 ppm: -100000.00 to 100000.00 by 0.5])"_s,
                              u"S&lope: [fixed: fixed, fitted] [-1.0000: -10.0000 to 10.0000 by 0.01]"_s,
                              u"&Error σ: [2.20 ppm: 0.00 to 10000.00 by 0.1] Leave &out: [0: 0 to 1000]"_s,
                              u"Pairing: <b>equal</b>; 8 lines, 8 sites in P2_1/c (14)<br>Reference <b>172.56 ppm</b> "
                              "(fitted), slope -1 (fixed)<br>RMSD <b>0.64 ppm</b>; largest difference 1.29 (C29 ×4), "
                              "RMSD without it 0.44<br>χ² 0.67, 7 degrees of freedom, <b>p = 0.999</b>"_s}));
        // Sorted as numbers; what has none stands at one end.
        const auto sorted = [this](int by, Qt::SortOrder order) {
            table().sortByColumn(by, order);
            QStringList texts;
            for (int row = 0; row < 8; ++row)
                texts.append(column(row, PairTable::Site).section(u' ', 0, 0));
            return texts.join(u' ');
        };
        QCOMPARE(sorted(PairTable::Difference, Qt::AscendingOrder), u"C1 C13 C9 C17 C21 C25 C5 C29"_s);
        QCOMPARE(sorted(PairTable::Measured, Qt::AscendingOrder), u"C29 C5 C21 C17 C9 C13 C1 C25"_s);
        QCOMPARE(sorted(PairTable::Site, Qt::DescendingOrder), u"C9 C5 C29 C25 C21 C17 C13 C1"_s);
        sorted(PairTable::Calculated, Qt::DescendingOrder);
        // The errors that are known of the nucleus are too small by far.
        QStringList told;
        for (double sigma : {0.25, 0.35, 0.45, 0.0}) {
            panel().findChild<QDoubleSpinBox *>(u"compareSigma"_s)->setValue(sigma);
            told.append(panel().summary().section(u"<br>"_s, 3));
        }
        // 0.67 · (2.2 / σ)²
        QCOMPARE(told,
                 (QStringList{u"χ² 51.94, 7 degrees of freedom, <b>p &lt; 0.0001</b>: <b>fits badly</b>"_s,
                              u"χ² 26.50, 7 degrees of freedom, <b>p = 0.00041</b>: <b>fits badly</b>"_s,
                              u"χ² 16.03, 7 degrees of freedom, <b>p = 0.0248</b>"_s, QString()}));
    }

    void pairsAreChangedByHand()
    {
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        const QStringList before = rows();
        const QByteArray start = state();
        const int steps = history().count();
        select(0);
        QTest::keyClick(&table(), Qt::Key_Down, Qt::AltModifier);
        // Two lines have changed places: the second of them by itself.
        QCOMPARE(column(0, PairTable::Measured), u"154.27"_s);
        QCOMPARE(column(1, PairTable::Measured), u"170.11"_s);
        QCOMPARE(column(1, PairTable::How), u"assigned"_s);
        QCOMPARE(column(0, PairTable::How), QString());
        QCOMPARE(panel().summary().split(u"<br>"_s),
                 (QStringList{u"Pairing: <b>1 assigned, equal</b>; 8 lines, 8 sites in P2_1/c (14)"_s,
                              u"Reference <b>172.56 ppm</b> (fitted), slope -1 (fixed)"_s,
                              u"RMSD <b>8.21 ppm</b> (paired automatically: 0.64); largest difference -16.76 (C1 ×4), "
                              "RMSD without it 5.58"_s,
                              u"χ² 111.43, 7 degrees of freedom, <b>p &lt; 0.0001</b>: <b>fits badly</b>"_s}));
        QCOMPARE(said(), u"C1 ×4: line at 170.11 ppm; RMSD 8.21 ppm"_s);
        QCOMPARE(history().undoText(), u"Pair C1 ×4 by Hand"_s);
        QCOMPARE(PairTable::siteOf(table().currentItem()), PairTable::siteOf(table().topLevelItem(1)));
        QCOMPARE(history().count(), steps + 1);
        const QStringList byHand = rows();
        const QByteArray changed = state();
        QVERIFY(changed != start);

        // Onto a third site by the mouse: what comes free goes on from there.
        drag(1, 4);
        QCOMPARE(column(4, PairTable::Measured), u"170.11"_s);
        QCOMPARE(column(0, PairTable::Measured), u"154.27"_s);
        history().undo();
        QCOMPARE(shownRows(), byHand);
        QVERIFY(state() == changed);
        history().undo();
        QCOMPARE(shownRows(), before);
        QVERIFY(state() == start);
        history().redo();
        QCOMPARE(shownRows(), byHand);

        const QString path = m_files.path("pairs.magresdoc");
        QVERIFY(window().document()->saveTo(path));
        window().document()->newDocument();
        window().openFiles({path});
        panel().open();
        QCOMPARE(rows(), byHand);

        select(1);
        QTest::keyClick(&table(), Qt::Key_Delete);
        QCOMPARE(rows(), before);
        QCOMPARE(history().undoText(), u"Pair Line Automatically"_s);
        QTest::keyClick(&table(), Qt::Key_Delete);
        QCOMPARE(said(), u"This line finds its site by itself already"_s);
        // Beyond the ends there is no site; a line goes up as it goes down.
        const int last = history().index();
        select(0);
        QTest::keyClick(&table(), Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(history().index(), last);
        select(1);
        QTest::keyClick(&table(), Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(column(0, PairTable::Measured), u"154.27"_s);
        QCOMPARE(history().undoText(), u"Pair C25 ×4 by Hand"_s);
        select(0);
        QTest::keyClick(&table(), Qt::Key_Enter);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QCOMPARE(menu->actions()[0]->text(), u"Line of C25 ×4"_s);
        QCOMPARE(menu->activeAction()->text(), u"154.27 ppm"_s);
        entry(menu, u"Pair All Automatically"_s)->trigger();
        menu->close();
        QCOMPARE(rows(), before);
        QCOMPARE(history().undoText(), u"Pair All Automatically"_s);
        QVERIFY(scene().documentItems().size() == 3);
    }

    void sitesShareALine()
    {
        const QString list = m_files.write("few.csv", "position\n170.1\n154.3\n134.5\n120\n22.7\n");
        openPanel(u"candidates/candidate-3.magres"_s, list);
        QVERIFY(panel().summary().contains(u"<b>overlap</b>; 5 lines, 8 sites"));
        QCOMPARE(tip("compareResult"),
                 u"Fewer lines than sites: neighbouring sites share a line so that the sum of squared differences is "
                 "least"_s);
        QCOMPARE(rows().filter(u"120.00"_s).size(), 4);
        QCOMPARE(column(3, PairTable::How), u"shared"_s);
        // Its other sites stay with a line that gets one more.
        drag(2, 3);
        QCOMPARE(column(3, PairTable::Measured), u"134.50"_s);
        QCOMPARE(column(2, PairTable::Measured), u"134.50"_s);
        QCOMPARE(rows().filter(u"120.00"_s).size(), 3);
        // By the menu: the line at 120 ppm again.
        select(3);
        QTest::keyClick(&table(), Qt::Key_Return);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QCOMPARE(entriesOf(menu),
                 u"/; [ ] 170.10 ppm; [ ] 154.30 ppm; [x] 134.50 ppm; [ ] 120.00 ppm; [ ] 22.70 ppm; /; Pair This "
                 "Line &Automatically Del; Pair A&ll Automatically"_s);
        entry(menu, u"120.00 ppm"_s)->trigger();
        menu->close();
        QCOMPARE(column(3, PairTable::Measured), u"120.00"_s);
    }

    void moreLinesThanSites()
    {
        const QString list =
            m_files.write("many.csv", "position\n170.1\n160\n154.3\n134.5\n124.2\n121.8\n116.8\n115.2\n22.7\n");
        openPanel(u"candidates/candidate-3.magres"_s, list);
        QVERIFY(panel().summary().contains(u"9 lines were measured, but the structure has only 8 sites"));
        QVERIFY(rows().isEmpty());
        panel().findChild<QSpinBox *>(u"compareUnmatched"_s)->setValue(1);
        QTRY_COMPARE(rows().size(), 9);
        QCOMPARE(rows().filter(u"left out"_s), QStringList{u"–||160.00||left out"_s});
        QVERIFY2(panel().summary().endsWith(u"<br>1 line(s) left out"), qPrintable(panel().summary()));
        QCOMPARE(tip("compareResult"),
                 u"More lines than sites: some are left out so that the sum of squares is least"_s);
        drag(0, 8);
        QCOMPARE(said(), u"Lines are put onto sites; Delete lets a line find its site by itself"_s);
        select(8);
        QTest::keyClick(&table(), Qt::Key_Return);
        QCOMPARE(entriesOf(QApplication::activePopupWidget()),
                 u"/; (Pair This Line &Automatically Del); (Pair A&ll Automatically)"_s);
        QApplication::activePopupWidget()->close();
        // A line that was left out can be given to a site.
        drag(8, 1);
        QCOMPARE(column(1, PairTable::Measured), u"160.00"_s);
        QVERIFY(rows().filter(u"left out"_s).constFirst().contains(u"154.30"));
    }

    void namesThatTheStructureHasNot()
    {
        const QString list = m_files.write("named.csv", "position,label\n170.1,Q7\n22.7,C29\n");
        openPanel(u"candidates/candidate-3.magres"_s, list);
        QVERIFY(panel().summary().contains(u"&quot;Q7&quot;"));
        QVERIFY(panel().summary().endsWith(u"<br><a href=\"free\">Pair all automatically</a>"));
        Q_EMIT panel().findChild<QLabel *>(u"compareResult"_s)->linkActivated(u"free"_s);
        QCOMPARE(rows().size(), 8);
        history().undo();
        QTRY_VERIFY(rows().isEmpty());
        // Sites without a line have none to give.
        window().openFiles({m_files.write("one.csv", "position,label\n22.7,C29\n170,C25\n")});
        panel().showMeasurement(data()->activeEntryId());
        QCOMPARE(rows().filter(u"no line"_s).size(), 6);
        QCOMPARE(tip("compareResult"), u"Every line names its sites"_s);
        drag(1, 0);
        QCOMPARE(said(), u"This site has no line that could be moved"_s);
    }

    void aRowLightsAtomsAndPeaks()
    {
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        select(7);
        const auto *item = qobject_cast<MoleculeItem *>(scene().currentTableItem()->linkedItems().value(0));
        QVERIFY(item);
        // The methyl carbons are the last of the carbons in the file.
        QStringList atoms;
        for (int row : item->selectedAtoms())
            atoms.append(scene().currentTableItem()->model()->index(row, 1).data().toString());
        atoms.sort();
        QCOMPARE(atoms.join(u' '), u"C29 C30 C31 C32"_s);
        const auto *agreement = panel().findChild<AgreementPlot *>();
        QVERIFY(agreement && agreement->isVisible());
        const QSet<QUuid> lit = scene().currentNmrItem()->plot()->litPeaks();
        QCOMPARE(lit.size(), 4);
        for (const SpectrumPeak &peak : measured().peaks)
            QCOMPARE(lit.contains(peak.id), peak.f2 == 22.71);
        // Who selects other atoms keeps them, whatever the panel does then.
        const_cast<MoleculeItem *>(item)->setSelectedAtoms({0});
        panel().findChild<QDoubleSpinBox *>(u"compareSigma"_s)->setValue(1);
        QTRY_VERIFY(panel().summary().contains(u"χ² 3.2"));
        QCOMPARE(item->selectedAtoms(), QSet<int>{0});
    }

    void unequalCountsNameTheWayOn()
    {
        open(u"paracetamol.magres"_s);
        createSpectrum();
        window().openFiles({m_files.write("few.csv", "position\n170.1\n154.3\n22.7\n")});
        QString text, more;
        m_dialogs.expect(u"Error"_s, [&](QDialog *dialog) {
            text = qobject_cast<QMessageBox *>(dialog)->text();
            more = qobject_cast<QMessageBox *>(dialog)->informativeText();
            dialog->accept();
        });
        command(u"Auto Reference"_s)->trigger();
        QVERIFY2(text.endsWith(u"The MAGRES spectrum has 32 compound peaks and the experimental spectrum has 3"),
                 qPrintable(text));
        QVERIFY2(more.startsWith(u"Compare pairs any numbers"), qPrintable(more));
    }

    void filesAreRankedAsByTheCommand()
    {
        window().openFiles({sample(u"paracetamol-13C.csv"_s), sample(u"paracetamol-1H.csv"_s)});
        RankDialog &dialog = *window().compareCommands()->rankDialog();
        window().compareCommands()->openRanking();
        // The lists say of which nucleus they are; one of each is chosen to begin with.
        auto *list = dialog.findChild<QTreeWidget *>(u"rankMeasurements"_s);
        QApplication::processEvents();
        QCOMPARE(linesOf(&dialog),
                 (QStringList{u"([13C: 13C]) [2.20: 0.00 to 10000.00 by 0.1]"_s,
                              u"([1H: 1H]) [0.33: 0.00 to 10000.00 by 0.1]"_s,
                              u"Candidates: the 0 structure(s) of the page <Of the &Page> <&Files...> <F&older...>"_s,
                              u"&Average: [no groups: no groups, CH3, XH3] &Leave out lines: [0: 0 to 1000] "
                              "[ ] &Ignore the assignment of lines to sites"_s,
                              u"<&Rank> (<&Cancel>) (<&Save Table...>) <Close>"_s}));
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(list->topLevelItem(i)->checkState(0), Qt::Checked);
            QCOMPARE(qobject_cast<QComboBox *>(list->itemWidget(list->topLevelItem(i), 1))->currentText(),
                     i ? u"1H"_s : u"13C"_s);
        }
        dialog.findChild<QComboBox *>(u"rankAveraging"_s)->setCurrentIndex(1);
        dialog.setFolder(sample(u"candidates"_s));
        QCOMPARE(part<QLabel>(&dialog, "rankCandidates")->text(),
                 u"Candidates: 10 file(s) in "_s + sample(u"candidates"_s));
        QSignalSpy ranked(&dialog, &RankDialog::ranked);
        const qsizetype items = scene().documentItems().size();
        dialog.start();
        QCOMPARE(linesOf(&dialog).last(), u"(<&Rank>) <&Cancel> (<&Save Table...>) <Close>"_s);
        QVERIFY(dialog.isRunning() && dialog.status() == u"Ranking...");
        QVERIFY(ranked.wait(60000));
        QCOMPARE(linesOf(&dialog).last(), u"<&Rank> (<&Cancel>) <&Save Table...> <Close>"_s);
        QCOMPARE(
            dialog.status(),
            u"10 structure(s). Probabilities are relative to this pool: they say nothing about structures that are "
            "not in it"_s);
        QCOMPARE(scene().documentItems().size(), items);

        QDir candidates(sample(u"candidates"_s));
        QStringList files;
        for (const QString &name : candidates.entryList({u"*.magres"_s}))
            files.append(candidates.absoluteFilePath(name));
        const QByteArray printed = m_files.run("rank --format csv --average ch3 --experiment 13C=" SAMPLES
                                               "/paracetamol-13C.csv --experiment 1H=" SAMPLES "/paracetamol-1H.csv",
                                               files);
        QCOMPARE(m_files.status, 0);
        // To the last digit; the lists count equal lines where the command has lines of their own.
        QByteArray shown = RankTable::write(dialog.model()->rows(), dialog.model()->layout(), TableExport::Format::Csv);
        const auto numbers = [](const QByteArray &csv) {
            QList<QByteArrayList> all;
            for (const QByteArray &line : csv.trimmed().split('\n'))
                all.append(line.split(','));
            return all;
        };
        const auto own = numbers(shown), theirs = numbers(printed);
        QCOMPARE(own.size(), 11);
        QCOMPARE(own.first(), theirs.first());
        for (qsizetype row = 1; row < own.size(); ++row) {
            for (qsizetype i = 0; i < own[row].size(); ++i) {
                const QByteArray &name = own.first()[i];
                if (!name.contains("lines"))
                    QVERIFY2(own[row][i] == theirs[row][i], name + ": " + own[row][i] + " " + theirs[row][i]);
            }
        }

        // The chosen type is that of a name without suffix.
        const std::tuple<const char *, const char *, const char *> tables[] = {
            {"r.csv", "r.csv", "rank,file,"},
            {"r.json", "r.json", "{\n    \"rows\""},
            {"r.txt", "r.txt", "Rank  Probability"},
            {"bare", "bare.json", "{\n    \"rows\""}};
        for (const auto &[typed, name, start] : tables) {
            m_dialogs.expect(u"Save Table"_s, [this, typed = typed](QDialog *saving) {
                auto *chooser = qobject_cast<QFileDialog *>(saving);
                chooser->selectNameFilter(u"JSON (*.json)"_s);
                chooser->selectFile(m_files.path(typed));
                saving->accept();
            });
            part<QPushButton>(&dialog, "rankSave")->click();
            QCOMPARE(dialog.status(), m_files.path(name) + u" is written"_s);
            QVERIFY2(m_files.read(name).startsWith(start), m_files.read(name));
        }
        QCOMPARE(m_files.read("r.csv"), shown);

        // A click opens the structure beside the measurement, once.
        auto *table = dialog.findChild<QTableView *>(u"ranking"_s);
        QCOMPARE(table->model()->index(0, 0).data().toString(), u"candidate-3.magres"_s);
        for (int i = 0; i < 2; ++i)
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                              table->visualRect(table->model()->index(0, 0)).center());
        QCOMPARE(scene().documentItems().size(), items + 2);
        QVERIFY(panel().isVisible());
        QVERIFY2(panel().comparison(), qPrintable(panel().summary()));
        dialog.close();
    }

    void rankingsNeedAnswers()
    {
        const QStringList lists{sample(u"paracetamol-13C.csv"_s), m_files.write("b-13C.csv", "position\n170\n"),
                                m_files.write("c.csv", "position\n7\n"), sample(u"paracetamol-1H.csv"_s)};
        RankDialog &dialog = *window().compareCommands()->rankDialog();
        dialog.usePage();
        dialog.followDocument();
        dialog.show();
        window().openFiles(lists);
        QCoreApplication::processEvents(); // follows by itself
        auto *list = dialog.findChild<QTreeWidget *>(u"rankMeasurements"_s);
        const auto row = [&](int i) { return list->topLevelItem(i); };
        const auto nucleus = [&](int i) { return qobject_cast<QComboBox *>(list->itemWidget(row(i), 1)); };
        const auto sigma = [&](int i) { return qobject_cast<QDoubleSpinBox *>(list->itemWidget(row(i), 2)); };
        QStringList offered;
        for (int i = 0; i < 4; ++i)
            offered.append(u"%1 %2 %3 %4"_s.arg(row(i)->checkState(0))
                               .arg(row(i)->text(0), nucleus(i)->currentText(), sigma(i)->text()));
        QCOMPARE(offered,
                 (QStringList{u"2 paracetamol-13C.csv: 32 line(s) 13C 2.20"_s, u"0 b-13C.csv: 1 line(s) 13C 2.20"_s,
                              u"0 c.csv: 1 line(s)  not known"_s, u"2 paracetamol-1H.csv: 28 line(s) 1H 0.33"_s}));
        const auto status = [&] {
            dialog.start();
            return dialog.status();
        };
        QCOMPARE(status(), u"There is no structure on the page"_s);
        row(2)->setCheckState(0, Qt::Checked);
        QCOMPARE(status(), u"Of which nucleus is c.csv? Choose it in the list"_s);
        nucleus(2)->setCurrentText(u"17O"_s);
        sigma(2)->setValue(0);
        QCOMPARE(status(), u"Several nuclei are weighed by their errors: give the σ of each"_s);
        row(1)->setCheckState(0, Qt::Checked);
        QCOMPARE(status(), u"Two measurements are of 13C: choose one of them"_s);
        for (int i : {0, 1, 2, 3})
            row(i)->setCheckState(0, Qt::Unchecked);
        QCOMPARE(status(), u"Choose a measurement in the list"_s);
        sigma(3)->setValue(0.4);
        dialog.followDocument(); // what was chosen stays
        QCOMPARE(row(3)->checkState(0), Qt::Unchecked);
        QCOMPARE(nucleus(2)->currentText() + sigma(2)->text() + sigma(3)->text(), u"17Onot known0.40"_s);
        dialog.setFolder(m_files.path(""));
        QCOMPARE(dialog.status(), u"There is no calculation in "_s + m_files.path(""));
        // What has gone cannot be ranked by.
        row(3)->setCheckState(0, Qt::Checked);
        history().undo();
        QCoreApplication::processEvents();
        QCOMPARE(list->topLevelItemCount(), 3);
        QCOMPARE(status(), u"Choose a measurement in the list"_s);
        dialog.close();
    }

    void structuresOfThePageAreRanked()
    {
        QStringList files;
        for (const char *name : {"1", "3", "5"})
            files.append(sample(u"candidates/candidate-%1.magres"_s.arg(QLatin1String(name))));
        window().openFiles(files);
        createSpectrum();
        open(u"paracetamol-13C.csv"_s);
        window().compareCommands()->openRanking();
        RankDialog &dialog = *window().compareCommands()->rankDialog();
        dialog.usePage();
        QSignalSpy ranked(&dialog, &RankDialog::ranked);
        dialog.start();
        QVERIFY(ranked.wait(30000));
        const auto &rows = dialog.model()->rows();
        QCOMPARE(rows.size(), 3U);
        QVERIFY(rows[0].file.contains(u"candidate-3"));
        QCOMPARE(QString::number(*rows[0].rmsd, 'f', 2), u"0.64"_s);
        // A click shows that one.
        auto *table = dialog.findChild<QTableView *>(u"ranking"_s);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->visualRect(table->model()->index(0, 0)).center());
        QVERIFY(panel().summary().contains(u"RMSD <b>0.64 ppm</b>"));
        QVERIFY(scene().currentTableItem()->title().contains(u"candidate-3"));
        // So does a click in the ranking of their folder, and opens no second one.
        dialog.setFiles(files);
        dialog.start();
        QVERIFY(ranked.wait(30000));
        const auto opened = scene().documentItems().size();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->visualRect(table->model()->index(1, 0)).center());
        QVERIFY(!scene().currentTableItem()->title().contains(u"candidate-3"));
        QCOMPARE(scene().documentItems().size(), opened);
        table->setFocus();
        QTest::keySequence(table, QKeySequence::Copy);
        const QStringList copied = QGuiApplication::clipboard()->text().split(u'\n');
        QVERIFY(copied[0].startsWith(u"Rank\tStructure\tRMSD 13C\tReference 13C\t"));
        QVERIFY2(copied[1].startsWith(u"2\t%1\t"_s.arg(table->model()->index(1, 0).data().toString())),
                 qPrintable(copied[1]));
        QCOMPARE(copied.size(), 3);
        QTest::keySequence(table, QKeySequence::SelectAll);
        QTest::keySequence(table, QKeySequence::Copy);
        QCOMPARE(QGuiApplication::clipboard()->text().count(u'\n'), table->model()->rowCount() + 1);
        dialog.usePage();
        // What is cancelled at once has no rows, and can be started again.
        dialog.start();
        dialog.cancel();
        QCOMPARE(dialog.model()->rowCount(), 0);
        QVERIFY(!dialog.isRunning());
        dialog.start();
        QVERIFY(ranked.wait(30000));
        QCOMPARE(dialog.model()->rowCount(), 3);
        dialog.close();
    }

    void rankingsOfOtherNucleiHaveTheirColumns()
    {
        RankModel model;
        std::vector<RankRow> made(3);
        for (std::size_t i = 0; i < 3; ++i) {
            RankRow &row = made[i];
            row.file = u"/a/%1.magres"_s.arg(i);
            row.rmsd = 2.5 - double(i);
            row.parts = {{}};
            row.parts[0].rmsd = 2.5 - double(i);
            row.parts[0].reference = 170.126 + double(i);
            row.parts[0].pairing = u"overlap"_s;
            row.chiSquare = 7.5;
            row.degreesOfFreedom = int(i) * 3;
            row.p = 0.00012345;
            row.probability = 0.25 * double(i);
            row.wideProbability = 0.126;
            row.fit = u"bad"_s;
        }
        const QString bare = made[0].file;
        made[0] = RankRow();
        made[0].file = bare;
        made[0].fail(std::runtime_error("no atoms"));
        model.setRows(made, {{QString()}}, u"29Si"_s);
        const auto text = [&](int row, int role) {
            QStringList cells{model.headerData(row, Qt::Vertical, Qt::DisplayRole).toString()};
            for (int i = 0; i < model.columnCount(); ++i)
                cells.append(model.data(model.index(row, i), role).toString());
            return cells.join(u'|');
        };
        QStringList titles;
        for (int i = 0; i < model.columnCount(); ++i)
            titles.append(model.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString());
        QCOMPARE(titles.join(u'|'),
                 u"Structure|RMSD 29Si|Reference 29Si|Pairing 29Si|χ²/dof|p|Probability|with 1.5 σ|Fit"_s);
        QStringList cells;
        for (int row = 0; row < 3; ++row)
            cells += {text(row, Qt::DisplayRole), text(row, Qt::ToolTipRole), text(row, Qt::TextAlignmentRole)};
        // The least difference first, what failed last; numbers to the right (130), texts to the left.
        QCOMPARE(cells,
                 (QStringList{u"1|2.magres|0.50|172.13|overlap|1.25|0.000123|||bad"_s, u"1|/a/2.magres||||||||"_s,
                              u"1|129|130|130|129|130|130|129|129|129"_s,
                              u"2|1.magres|1.50|171.13|overlap|2.50|0.000123|||bad"_s, u"2|/a/1.magres||||||||"_s,
                              u"2|129|130|130|129|130|130|129|129|129"_s, u"–|0.magres||||||||no atoms"_s,
                              u"–"_s + u"|no atoms"_s.repeated(9), u"–"_s + u"|129"_s.repeated(9)}));
        // Of several nuclei, each says how well it fits by itself.
        made[1].parts.push_back(made[1].parts[0]);
        made[1].parts[1].chiSquare = 5;
        made[1].parts[1].degreesOfFreedom = 4;
        made[1].parts[1].p = 0.287;
        model.setRows({made[1]}, {{u"29Si"_s, u"1H"_s}}, {});
        QCOMPARE(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), u"Probability"_s);
        QCOMPARE(model.headerData(6, Qt::Horizontal, Qt::DisplayRole), u"χ²/dof 29Si"_s);
        QCOMPARE(text(0, Qt::DisplayRole),
                 u"1|1.magres|||1.50|171.13|overlap|||1.50|171.13|overlap|1.25|0.287|2.50|0.000123|bad"_s);
        model.setRows(std::vector<RankRow>(2), {{u"13C"_s}}, {});
        const int columns = model.columnCount();
        model.setRows(std::vector<RankRow>(2), {{u"13C"_s, u"1H"_s}}, {});
        QVERIFY(model.columnCount() > columns);
        model.setRows(std::vector<RankRow>(3), {{u"13C"_s, u"1H"_s}}, {});
        QCOMPARE(model.rowCount(), 3);
    }

    void aRankingOfFilesCanBeCancelled()
    {
        window().openFiles({sample(u"paracetamol.magres"_s), sample(u"paracetamol-13C.csv"_s)});
        RankDialog &dialog = *window().compareCommands()->rankDialog();
        window().compareCommands()->openRanking();
        auto *list = dialog.findChild<QTreeWidget *>(u"rankMeasurements"_s);
        list->topLevelItem(0)->setCheckState(0, Qt::Checked);
        qobject_cast<QComboBox *>(list->itemWidget(list->topLevelItem(0), 1))->setCurrentText(u"13C"_s);
        dialog.setFolder(sample(u"candidates"_s));
        QSignalSpy ranked(&dialog, &RankDialog::ranked);
        dialog.start();
        dialog.cancel();
        QVERIFY(!ranked.isEmpty() || ranked.wait(10000));
        QVERIFY(!dialog.isRunning());
        QVERIFY(dialog.model()->rowCount() < 10);
        QVERIFY2(dialog.status().startsWith(u"Cancelled: "), qPrintable(dialog.status()));
        dialog.close();
    }

    /// How it is compared belongs to the measurement: undone, saved, and its own for each.
    void optionsStayWithTheMeasurement()
    {
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        auto *sigma = panel().findChild<QDoubleSpinBox *>(u"compareSigma"_s);
        auto *unmatched = panel().findChild<QSpinBox *>(u"compareUnmatched"_s);
        auto *slope = panel().findChild<QComboBox *>(u"compareSlopeKind"_s);
        auto *reference = panel().findChild<QComboBox *>(u"compareReferenceKind"_s);
        auto *averaging = panel().findChild<QComboBox *>(u"compareAveraging"_s);
        const auto choose = [](QComboBox *box, int index) {
            box->setCurrentIndex(index);
            Q_EMIT box->activated(index);
        };
        const auto shown = [&] {
            QCoreApplication::processEvents();
            return u"%1|%2|%3|%4|%5|%6"_s.arg(sigma->value())
                .arg(unmatched->value())
                .arg(slope->currentText(), reference->currentText(), averaging->currentText(), panel().summary());
        };
        const QString atFirst = shown();
        const QByteArray start = state();
        const int steps = history().index();
        sigma->setValue(1);
        sigma->setValue(1.1);
        sigma->setValue(1.25); // one step
        unmatched->setValue(2);
        choose(slope, 1);
        choose(averaging, 1);
        const QString fitted = panel().summary();
        choose(reference, 1); // starts with what was fitted
        const auto rmsd = [](const QString &text) { return text.section(u"RMSD <b>"_s, 1).section(u"</b>"_s, 0, 0); };
        QVERIFY(rmsd(fitted).endsWith(u"ppm") && rmsd(panel().summary()) == rmsd(fitted));
        QCOMPARE(history().index(), steps + 5);
        const QString changed = shown();
        QVERIFY(changed != atFirst && changed.startsWith(u"1.25|2|fitted|fixed|CH3|"));
        const QByteArray document = state();

        // Another measurement has its own; the first one's come back with it.
        const QUuid first = scene().currentNmrItem()->nmrData()->activeEntryId();
        open(u"paracetamol-1H.csv"_s);
        panel().showMeasurement(scene().currentNmrItem()->nmrData()->activeEntryId());
        QVERIFY2(shown().startsWith(u"0.33|0|fixed|fitted|no groups|"), qPrintable(shown()));
        panel().showMeasurement(first);
        QCOMPARE(shown(), changed);
        history().undo(); // of the second list

        QStringList undone;
        for (int i = 0; i < 5; ++i) {
            undone.append(history().undoText());
            history().undo();
        }
        QCOMPARE(undone.join(u"; "_s),
                 u"Comparison: Reference; Comparison: Averaging; Comparison: Slope; Comparison: Lines Left Out; "
                 "Comparison: Error σ"_s);
        QCOMPARE(shown(), atFirst);
        QVERIFY(state() == start);
        for (int i = 0; i < 5; ++i)
            history().redo();
        QCOMPARE(shown(), changed);

        scene().removeAll();
        QBuffer file;
        file.setData(document);
        file.open(QIODevice::ReadOnly);
        DocumentState::restore(DocumentFile::read(file), scene(), m_host->documentData(), &m_host->plugins());
        command(u"Compare"_s)->trigger();
        QCOMPARE(shown(), changed);

        // What is set for two measurements of one plot is undone one by one.
        const QUuid second = data()->addEntry(data()->entry(first), u"again"_s);
        for (const QUuid &entry : {first, second}) {
            panel().showMeasurement(entry);
            unmatched->setValue(1);
        }
        history().undo();
        for (const auto &[entry, leftOut] : {std::pair(first, 1), std::pair(second, 2)}) {
            panel().showMeasurement(entry);
            QCOMPARE(unmatched->value(), leftOut);
        }
    }

    void aReferenceSetIsTheStart()
    {
        const QString set = m_files.path("set.json");
        m_files.run("calibrate " SAMPLES "/paracetamol.magres=" SAMPLES
                    "/paracetamol-13C.csv --nucleus 13C -o @set.json");
        QCOMPARE(m_files.status, 0);
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        window().compareCommands()->useReferenceSet(set);
        QVERIFY2(QRegularExpression(u"^13C: new spectra and comparisons start with reference 1[0-9.]{5} ppm and slope "
                                    "-[01]\\.[0-9]{4} \\(.+\\)$"_s)
                     .match(said())
                     .hasMatch(),
                 qPrintable(said()));
        QCOMPARE(panel().findChild<QComboBox *>(u"compareSlopeKind"_s)->currentText(), u"of the set"_s);
        QVERIFY(!panel().findChild<QDoubleSpinBox *>(u"compareSlope"_s)->isEnabled());
        QCOMPARE(panel().findChild<QComboBox *>(u"compareReferenceKind"_s)->currentText(), u"of the set"_s);
        const double reference = panel().findChild<QDoubleSpinBox *>(u"compareReference"_s)->value();
        const QByteArray printed =
            m_files.run("compare " SAMPLES "/candidates/candidate-3.magres --experiment 13C=" SAMPLES
                        "/paracetamol-13C.csv --reference-set @set.json --format json");
        const QJsonObject nucleus = QJsonDocument::fromJson(printed)[u"nuclei"_s].toArray().at(0).toObject();
        QVERIFY(std::abs(nucleus[u"reference"_s].toDouble() - reference) < 0.005);
        QVERIFY(panel().summary().contains(
            u"RMSD <b>%1 ppm</b>"_s.arg(QString::number(nucleus[u"rmsd"_s].toDouble(), 'f', 2))));
        // So does the plug-in's dialog.
        double offered = 0;
        m_dialogs.expect(u"MAGRES parameters"_s, [&](QDialog *dialog) {
            for (const QDoubleSpinBox *box : dialog->findChildren<QDoubleSpinBox *>())
                offered = std::abs(box->value() - reference) < 0.01 ? box->value() : offered;
            dialog->reject();
        });
        accept(u"Interrupted"_s);
        command(u"Create Spectrum"_s)->trigger();
        QVERIFY(offered > 0);
        // And the one for powder spectra.
        m_dialogs.expect(u"Powder Spectrum"_s, [&](QDialog *dialog) {
            QCOMPARE(part<QComboBox>(dialog, "nucleus")->currentText(), u"13C"_s);
            offered = part<QDoubleSpinBox>(dialog, "reference")->value();
            dialog->reject();
        });
        window().powderCommands()->create();
        QVERIFY2(std::abs(offered - reference) < 0.01, qPrintable(QString::number(offered)));
        accept(u"pairs.txt is no reference set"_s);
        window().compareCommands()->useReferenceSet(m_files.write("pairs.txt", "no set"));
    }

    void aReferenceSetOfAnotherMethodIsTold()
    {
        const auto withCode = [&](const QByteArray &name, const QByteArray &code) {
            QFile file(sample(u"paracetamol.magres"_s));
            QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            return m_files.write(
                name, text.insert(text.indexOf('\n') + 1, "[calculation]\ncalc_code " + code + "\n[/calculation]\n"));
        };
        withCode("one.magres", "ONE");
        m_files.run("calibrate @one.magres=" SAMPLES "/paracetamol-13C.csv --nucleus 13C -o @one.json");
        QCOMPARE(m_files.status, 0);
        window().compareCommands()->useReferenceSet(m_files.path("one.json"));
        QFile::remove(m_files.path("one.json")); // it is kept whole
        const QString doubt = u"calculated with TWO, but the reference set of 13C with ONE"_s;
        for (const auto &[code, isDoubtful] : {std::pair("ONE", false), std::pair("TWO", true)}) {
            window().openFiles({withCode(code + QByteArray(".magres"), code), sample(u"paracetamol-13C.csv"_s)});
            command(u"Compare"_s)->trigger();
            QCOMPARE(panel().findChild<QComboBox *>(u"compareSlopeKind"_s)->currentText(), u"of the set"_s);
            QCOMPARE(panel().summary().contains(doubt), isDoubtful);
            m_dialogs.expect(u"MAGRES parameters"_s, [](QDialog *dialog) { dialog->accept(); });
            command(u"Create Spectrum"_s)->trigger();
            QStringList notes;
            for (const ItemNote &note : scene().currentNmrItem()->notes())
                notes.append(note.text);
            QCOMPARE(notes.join(u'\n').contains(doubt), isDoubtful);
            scene().removeAll();
        }
        QAction *forget = window().compareCommands()->forgetSetsAction();
        QVERIFY(forget->isEnabled());
        forget->trigger();
        QVERIFY(!forget->isEnabled());
        window().openFiles({m_files.path("TWO.magres"), sample(u"paracetamol-13C.csv"_s)});
        QCOMPARE(panel().findChild<QComboBox *>(u"compareSlopeKind"_s)->currentText(), u"fixed"_s);
    }

private:
    ComparePanel &panel() { return *window().compareCommands()->panel(); }
    PairTable &table() { return *panel().pairs(); }
    QString tip(const char *name) { return part<QWidget>(&panel(), name)->toolTip(); }
    const Spectrum &measured() { return scene().currentNmrItem()->nmrData()->stack().entries.last().spectrum; }

    void openPanel(const QString &structure, const QString &list)
    {
        window().openFiles({sample(structure), list});
        command(u"Compare"_s)->trigger();
        // Carbon comes first of what the structure has, unless the list's name says something else.
        auto *nucleus = panel().findChild<QComboBox *>(u"compareNucleus"_s);
        QCOMPARE(nucleus->currentText(), list.contains(u"1H") ? u"1H"_s : u"13C"_s);
    }

    QString column(int row, int column) { return table().topLevelItem(row)->text(column); }
    QStringList rows()
    {
        QStringList texts;
        for (int row = 0; row < table().topLevelItemCount(); ++row) {
            QStringList cells;
            for (int i = PairTable::Site; i <= PairTable::How; ++i)
                cells.append(column(row, i));
            texts.append(cells.join(u'|'));
        }
        return texts;
    }
    /// When the panel has followed.
    QStringList shownRows()
    {
        QCoreApplication::processEvents();
        return rows();
    }
    void select(int row)
    {
        table().setFocus();
        table().setCurrentItem(table().topLevelItem(row));
    }
    /// As the mouse does: the view sees what is dropped and where.
    void drag(int from, int to)
    {
        QMimeData dragged;
        dragged.setData(u"application/x-magres-workbench-line"_s, QByteArray::number(from));
        const QPoint place = table().visualItemRect(table().topLevelItem(to)).center();
        table().dropOnRow(dragged, place);
    }
};

QTEST_MAIN(TestCompareWindow)
#include "tst_comparewindow.moc"
