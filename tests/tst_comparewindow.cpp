// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"
#include "Program.h"

#include "data/AtomSelection.h"
#include "document/DocumentState.h"
#include "formats/DocumentFile.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/table/TableItem.h"
#include "window/DocumentController.h"
#include "window/WMainWindow.h"
#include "window/WindowApplication.h"
#include "window/WorkBar.h"
#include "window/compare/CompareCommands.h"
#include "window/compare/ComparePanel.h"
#include "window/compare/PairTable.h"
#include "window/compare/RankDialog.h"
#include "window/compare/RankModel.h"

#include <QtTest>
#include <QtWidgets>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

QString sample(const QString &name)
{
    return QStringLiteral(SAMPLES "/") + name;
}

} // namespace

/// The comparison as a user of the window meets it.
class TestCompareWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QCoreApplication::setOrganizationName(u"tests"_s);
        QCoreApplication::setApplicationName(u"compare"_s);
        m_host = std::make_unique<WindowApplication>();
        m_host->loadPlugins(QStringLiteral(PLUGIN_DIRECTORY));
        window().compareCommands()->setRankProgram(QStringLiteral(WORKBENCH_PROGRAM));
        window().show();
        QVERIFY(QTest::qWaitForWindowExposed(&window()));
    }

    void cleanupTestCase() { m_host.reset(); }

    void init()
    {
        panel().hide();
        scene().removeAll();
        QSettings().clear();
        panel().followReferenceSets();
    }

    void cleanup() { QCOMPARE(m_dialogs.missing(), QStringList()); }

    void namesOfListsTellTheNucleus()
    {
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-1H.csv"_s));
        auto *nucleus = panel().findChild<QComboBox *>(u"compareNucleus"_s);
        nucleus->setCurrentText(u"13C"_s);
        Q_EMIT nucleus->activated(nucleus->currentIndex());
        window().openFiles({sample(u"acetic-acid.magres"_s)});
        QCOMPARE(nucleus->currentText(), u"13C"_s); // the user's choice stays
    }

    void commandsSayWhyTheyAreGrey()
    {
        QAction *compare = command(u"Compare"_s), *rank = command(u"Rank Structures"_s);
        QVERIFY(!compare->isEnabled() && compare->toolTip().contains(u"open a MAGRES file first"));
        window().openFiles({sample(u"paracetamol.magres"_s)});
        QVERIFY(!compare->isEnabled() && compare->toolTip().contains(u"add a spectrum or a peak list"));
        QVERIFY(!rank->isEnabled());
        window().openFiles({sample(u"paracetamol-13C.csv"_s)});
        QVERIFY(compare->isEnabled() && rank->isEnabled());
    }

    void showsThePairsOfTheCommandLine()
    {
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        // Numbers of the guide, which the command prints.
        QCOMPARE(rows().size(), 8);
        QCOMPARE(rows().first(), u"C25 ×4|170.27|170.11|0.16|"_s);
        QCOMPARE(rows().last(), u"C29 ×4|24.00|22.71|1.29|"_s);
        for (const char *text : {"<b>equal</b>; 8 lines, 8 sites in P2_1/c (14)", "<b>172.56 ppm</b> (fitted)",
                                 "RMSD <b>0.64 ppm</b>", "1.29 (C29 ×4)", "χ² 0.67, 7 degrees of freedom"})
            QVERIFY2(panel().summary().contains(QString::fromUtf8(text)), qPrintable(panel().summary()));
        // Without the site that is farthest off, the others agree better.
        QVERIFY(panel().summary().contains(u"RMSD without it 0.4"));
    }

    void pairsAreChangedByHand()
    {
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        const QStringList before = rows();
        const QByteArray start = state();
        const int steps = scene().undoStack()->count();
        select(0);
        QTest::keyClick(&table(), Qt::Key_Down, Qt::AltModifier);
        // Two lines have changed places: the second of them by itself.
        QCOMPARE(column(0, PairTable::Measured), u"154.27"_s);
        QCOMPARE(column(1, PairTable::Measured), u"170.11"_s);
        QCOMPARE(column(1, PairTable::How), u"by hand"_s);
        QCOMPARE(column(0, PairTable::How), QString());
        QVERIFY(panel().summary().contains(u"1 assigned, equal"));
        QVERIFY(panel().summary().contains(u"(paired automatically: 0.64)"));
        QCOMPARE(scene().undoStack()->count(), steps + 1);
        const QStringList byHand = rows();
        const QByteArray changed = state();
        QVERIFY(changed != start);

        // Onto a third site by the mouse: what comes free goes on from there.
        drag(1, 4);
        QCOMPARE(column(4, PairTable::Measured), u"170.11"_s);
        QCOMPARE(column(0, PairTable::Measured), u"154.27"_s);
        scene().undoStack()->undo();
        QCOMPARE(shownRows(), byHand);
        QVERIFY(state() == changed);
        scene().undoStack()->undo();
        QCOMPARE(shownRows(), before);
        QVERIFY(state() == start);
        scene().undoStack()->redo();
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
        QVERIFY(scene().documentItems().size() == 3);
    }

    void sitesShareALine()
    {
        const QString list = m_files.write("few.csv", "position\n170.1\n154.3\n134.5\n120\n22.7\n");
        openPanel(u"candidates/candidate-3.magres"_s, list);
        QVERIFY(panel().summary().contains(u"<b>overlap</b>; 5 lines, 8 sites"));
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
        QAction *line = menuEntry(u"120.00 ppm"_s);
        QVERIFY(line && !line->isChecked() && menuEntry(u"134.50 ppm"_s)->isChecked());
        line->trigger();
        QApplication::activePopupWidget()->close();
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
        // A line that was left out can be given to a site.
        drag(8, 1);
        QCOMPARE(column(1, PairTable::Measured), u"160.00"_s);
        QVERIFY(rows().filter(u"left out"_s).constFirst().contains(u"154.30"));
    }

    void namesThatTheStructureHasNot()
    {
        const QString list = m_files.write("named.csv", "position,label\n170.1,Q7\n22.7,C29\n");
        openPanel(u"candidates/candidate-3.magres"_s, list);
        QVERIFY(panel().summary().contains(u"\"Q7\"") || panel().summary().contains(u"&quot;Q7&quot;"));
        Q_EMIT panel().findChild<QLabel *>(u"compareResult"_s)->linkActivated(u"free"_s);
        QCOMPARE(rows().size(), 8);
        scene().undoStack()->undo();
        QTRY_VERIFY(rows().isEmpty());
    }

    void aRowLightsAtomsAndPeaks()
    {
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        select(7);
        const auto *item = qobject_cast<MoleculeItem *>(scene().currentTableItem()->linkedItems().value(0));
        QVERIFY(item);
        // The methyl carbons are the last of the carbons in the file.
        QCOMPARE(item->selectedAtoms().size(), 4);
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
        window().openFiles({sample(u"paracetamol.magres"_s)});
        m_dialogs.expect(u"MAGRES parameters"_s, [](QDialog *dialog) { dialog->accept(); });
        command(u"Create Spectrum"_s)->trigger();
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
        // Of lists without nuclei the names tell; one of each is chosen to begin with.
        auto *list = dialog.findChild<QTreeWidget *>(u"rankMeasurements"_s);
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(list->topLevelItem(i)->checkState(0), Qt::Checked);
            QCOMPARE(qobject_cast<QComboBox *>(list->itemWidget(list->topLevelItem(i), 1))->currentText(),
                     i ? u"1H"_s : u"13C"_s);
        }
        dialog.findChild<QComboBox *>(u"rankAveraging"_s)->setCurrentIndex(1);
        dialog.setFolder(sample(u"candidates"_s));
        QSignalSpy ranked(&dialog, &RankDialog::ranked);
        const qsizetype items = scene().documentItems().size();
        dialog.start();
        QVERIFY(dialog.isRunning());
        QVERIFY(ranked.wait(60000));
        QVERIFY2(dialog.status().startsWith(u"10 structures. Probabilities"), qPrintable(dialog.status()));
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

    void structuresOfThePageAreRanked()
    {
        QStringList files;
        for (const char *name : {"1", "3", "5"})
            files.append(sample(u"candidates/candidate-%1.magres"_s.arg(QLatin1String(name))));
        window().openFiles(files);
        m_dialogs.expect(u"MAGRES parameters"_s, [](QDialog *dialog) { dialog->accept(); });
        command(u"Create Spectrum"_s)->trigger();
        window().openFiles({sample(u"paracetamol-13C.csv"_s)});
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
        const int steps = scene().undoStack()->index();
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
        QCOMPARE(scene().undoStack()->index(), steps + 5);
        const QString changed = shown();
        QVERIFY(changed != atFirst && changed.startsWith(u"1.25|2|fitted|fixed|CH3|"));
        const QByteArray document = state();

        // Another measurement has its own; the first one's come back with it.
        const QUuid first = scene().currentNmrItem()->nmrData()->activeEntryId();
        window().openFiles({sample(u"paracetamol-1H.csv"_s)});
        panel().showMeasurement(scene().currentNmrItem()->nmrData()->activeEntryId());
        QVERIFY2(shown().startsWith(u"0.33|0|fixed|fitted|no groups|"), qPrintable(shown()));
        panel().showMeasurement(first);
        QCOMPARE(shown(), changed);
        scene().undoStack()->undo(); // of the second list

        for (int i = 0; i < 5; ++i)
            scene().undoStack()->undo();
        QCOMPARE(shown(), atFirst);
        QVERIFY(state() == start);
        for (int i = 0; i < 5; ++i)
            scene().undoStack()->redo();
        QCOMPARE(shown(), changed);

        scene().removeAll();
        QBuffer file;
        file.setData(document);
        file.open(QIODevice::ReadOnly);
        DocumentState::restore(DocumentFile::read(file), scene(), m_host->documentData(), &m_host->plugins());
        command(u"Compare"_s)->trigger();
        QCOMPARE(shown(), changed);
    }

    void aReferenceSetIsTheStart()
    {
        const QString set = m_files.path("set.json");
        m_files.run("calibrate " SAMPLES "/paracetamol.magres=" SAMPLES
                    "/paracetamol-13C.csv --nucleus 13C -o @set.json");
        QCOMPARE(m_files.status, 0);
        openPanel(u"candidates/candidate-3.magres"_s, sample(u"paracetamol-13C.csv"_s));
        window().compareCommands()->useReferenceSet(set);
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
        m_dialogs.expect(u"Interrupted"_s, [](QDialog *dialog) { dialog->accept(); });
        command(u"Create Spectrum"_s)->trigger();
        QVERIFY(offered > 0);
        m_dialogs.expect(u"pairs.txt is no reference set"_s, [](QDialog *dialog) { dialog->accept(); });
        window().compareCommands()->useReferenceSet(m_files.write("pairs.txt", "no set"));
    }

private:
    WMainWindow &window() { return m_host->window(); }
    MainScene &scene() { return m_host->scene(); }
    ComparePanel &panel() { return *window().compareCommands()->panel(); }
    PairTable &table() { return *panel().pairs(); }
    const Spectrum &measured() { return scene().currentNmrItem()->nmrData()->stack().entries.last().spectrum; }

    QAction *command(const QString &text)
    {
        window().workBar()->refresh();
        for (QAction *action : window().workBar()->actions())
            if (action->iconText() == text)
                return action;
        qFatal("no command %s", qPrintable(text));
    }

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
    QAction *menuEntry(const QString &text)
    {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        for (QAction *action : menu ? menu->actions() : QList<QAction *>())
            if (action->text() == text)
                return action;
        return nullptr;
    }
    QByteArray state()
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        DocumentFile::write(buffer, DocumentState::capture(scene(), m_host->documentData(), &m_host->plugins()));
        return buffer.data();
    }

    QTemporaryDir m_settings;
    Program m_files;
    std::unique_ptr<WindowApplication> m_host;
    ModalAnswers m_dialogs;
};

QTEST_MAIN(TestCompareWindow)
#include "tst_comparewindow.moc"
