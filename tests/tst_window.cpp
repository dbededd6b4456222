// SPDX-License-Identifier: BSD-3-Clause
#include "WindowTest.h"

#include "data/AtomSelection.h"
#include "items/plot/StackedTraces.h"
#include "window/ContentsDock.h"
#include "window/FrequencyDialog.h"

/// The window with the real plug-in in it.
class TestWindow : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        clear();
        open(u"paracetamol.magres"_s);
        QCOMPARE(scene().documentItems().size(), 2);
    }

    void barsAndMenusOfTheWindow()
    {
        const auto bar = [this] {
            QStringList texts;
            for (const QAction *action : window().workBar()->actions())
                texts.append(action->isSeparator() ? u"/"_s : action->iconText() + u": "_s + action->toolTip());
            return texts.replaceInStrings(u"\n"_s, u" "_s);
        };
        QVERIFY(!window().isWindowModified()); // nothing that is not in the file
        scene().removeAll();
        QCOMPARE(bar().join(u"; "_s),
                 u"Open: Calculations, measured spectra and documents; /; Create Spectrum: A simulated spectrum of "
                 "the current table (Ctrl+Shift+N) Not now: Open a MAGRES file first: spectra are made from its "
                 "table; Powder Spectrum: The powder line shapes of the current table's sites, static or spinning "
                 "(Ctrl+Shift+L) Not now: Open a MAGRES file first: powder spectra are made from its table; Add "
                 "Measurement: A measured spectrum or peak list, beside the simulated one or on its own "
                 "(Ctrl+Shift+O); Auto Reference: Fits the reference of the simulated spectrum to the measurement "
                 "beside it (Ctrl+R) Not now: There is no plot on the page: create a spectrum and add a "
                 "measurement to it; Compare: Pairs the lines of a measurement with the sites of a structure, "
                 "whatever their numbers (Ctrl+Shift+C) Not now: There is no structure: open a MAGRES file first; "
                 "Rank Structures: Which of many structures fits the measured lines best, and how surely "
                 "(Ctrl+Shift+R) Not now: There is no measurement in one dimension: add a spectrum or a peak list; "
                 "/; Undo: Takes the last change back Not now: there is nothing to take back; Redo: Makes the "
                 "change again that was taken back Not now: nothing was taken back; /; Fit: The workspace as wide "
                 "as the window; Export: The page, a spectrum or a table as a file Not now: there is nothing on "
                 "the page"_s);
        QCOMPARE(
            entriesOf(menu(u"File"_s)).remove(u" Ctrl+Q"_s).remove(u" Ctrl+Shift+S"_s), // by Qt's version
            u"&New Ctrl+N; &Open... Ctrl+O; Open &Folder...; Open &Recent >; Open Sa&mple >; /; &Save Ctrl+S; Save "
            "&As...; /; &Export >; /; &Quit"_s);
        QCOMPARE(entriesOf(menu(u"Edit"_s)),
                 u"(Undo Ctrl+Z); (Redo Ctrl+Y); /; (&Rename Item... F2); (&Delete Item Del)"_s);
        QCOMPARE(entriesOf(menu(u"Spectrum"_s)),
                 u"(Create Spectrum Ctrl+Shift+N); (Create Powder Spectrum... Ctrl+Shift+L); Add Measurement "
                 "Ctrl+Shift+O; Reference Se&t...; (Forget Reference Sets); /; (No spectrum on the page)"_s);
        QCOMPARE(entriesOf(menu(u"Table"_s)) + entriesOf(menu(u"Molecule"_s)),
                 u"/; (No table on the page)/; (No molecule on the page)"_s);
        QCOMPARE(entriesOf(menu(u"View"_s)),
                 u"Zoom &In Ctrl++; Zoom &Out Ctrl+-; &Fit Window Ctrl+0; &Arrange Items; /; [ ] &Page Preview "
                 "Ctrl+Shift+P; /; [x] Contents; [ ] Compare; [x] Tool Bar"_s);
        QCOMPARE(entriesOf(menu(u"Help"_s)), u"&User Guide; &Keyboard and Mouse... F1; &About and Plug-ins..."_s);
        open(u"paracetamol.magres"_s);
        QVERIFY(createSpectrum() && window().isWindowModified());
        QCOMPARE(
            bar()[5].mid(16),
            u"Fits the reference of the simulated spectrum to the measurement beside it (Ctrl+R) Not now: It needs "
            "one simulated spectrum and one measurement in the plot; the current plot holds 1 and 0"_s);
        QCOMPARE(entriesOf(menu(u"Spectrum"_s)),
                 u"Create Spectrum Ctrl+Shift+N; Create Powder Spectrum... Ctrl+Shift+L; Add Measurement Ctrl+Shift+O; "
                 "Reference Se&t...; (Forget Reference Sets); /; Set Reference...; /; Show Full Range Home; Show >; "
                 "Appearance >; Measure >; Edit "
                 "Title...; Copy Numbers; Picture >; /; /; MAGRES >; /; Add &Experimental Spectrum...; Add Bruker "
                 "&Folder...; Active &Spectrum >; Remo&ve Spectrum >; /; [ ] Edit &Peaks Ctrl+Shift+E; Pic&k Peaks... "
                 "Ctrl+Shift+K; &Count Equivalent Sites; /; (Co&mpare... Ctrl+Shift+C); (Ra&nk Structures... "
                 "Ctrl+Shift+R); /; &Rename Item... F2; &Delete Item Del"_s);
        open(u"paracetamol-13C.csv"_s);
        QCOMPARE(
            said(),
            u"paracetamol-13C.csv: 32 peak(s) added. Number of peaks: 32 measured, 32 simulated. Read as a list of "
            "32 peaks: the positions are not evenly spaced."_s);
        QCOMPARE(window().view()->accessibleName(), u"¹³C of paracetamol, simulated"_s);
        QCOMPARE(window().view()->accessibleDescription(),
                 u"The reference of ¹³C is a placeholder, 100 ppm: positions mean nothing yet, only distances do"_s);
        QCOMPARE(doubledMnemonicsOfMenus().join(QString()), QString());
    }

    void frequenciesFollowTheirInputs()
    {
        const QString list = m_files.write("si.csv", "position\n-8.5\n-9.25\n-8.75\n");
        {
            FrequencyDialog dialog(list, FrequencyNeeded({}, 1, false), {}, nullptr);
            dialog.show();
            QCOMPARE(dialog.focusWidget()->objectName(), u"nucleus"_s);
            QCOMPARE(linesOf(&dialog).join(u"; "_s),
                     u"The positions in si.csv are frequencies. Of which nucleus is it, and what is the frequency "
                     "of 0 ppm?; &Unit: [Hz: Hz, kHz, ppm]; &Nucleus: [choose: choose, 1H, 13C, 15N, 17O, 19F, "
                     "23Na, 27Al, 29Si, 31P, , 2H]; &Spectrometer (1H): [not known: 0.0000 to 3000.0000]; &0 ppm "
                     "at: [not known: 0.000000 to 3000.000000]; The nucleus and a frequency are needed; (<OK>) "
                     "<Cancel>"_s);
            fill(&dialog, {{"nucleus", u"15N"_s}, {"protonFrequency", 400.0}, {"unit", u"kHz"_s}});
            QCOMPARE(linesOf(&dialog)[5], u"The positions go from -209.63 to -228.13 ppm."_s);
            QCOMPARE(dialog.readOptions().unit, u"kHz"_s);
            fill(&dialog, {{"frequency", 81.0}, {"unit", u"ppm"_s}}); // to the spectrometer
            QCOMPARE(linesOf(&dialog).mid(3).join(u"; "_s),
                     u"&Spectrometer (1H): ([799.0713 MHz: 0.0000 to 3000.0000]); &0 ppm at: ([81.000000 MHz: "
                     "0.000000 to 3000.000000]); The positions go from -8.50 to -9.25 ppm.; <OK> <Cancel>"_s);
        }
        FrequencyDialog dialog(m_files.write("hsqc-1H-13C.csv", "F2 (Hz),F1 (Hz)\n4000,12000\n2000,3000\n"),
                               FrequencyNeeded({}, 2, true), {u"29Si"_s, 500}, nullptr);
        dialog.show();
        QCOMPARE(dialog.focusWidget()->objectName(), u"protonFrequency"_s);
        QVERIFY(part<QDoubleSpinBox>(&dialog, "protonFrequency")->findChild<QLineEdit *>()->hasSelectedText());
        QCOMPARE(linesOf(&dialog).mid(1).join(u"; "_s),
                 u"&Nucleus of F2: [1H: choose, 1H, 13C, 15N, 17O, 19F, 23Na, 27Al, 29Si, 31P, , 2H]; Nucleus of "
                 "F&1: [13C: choose, 1H, 13C, 15N, 17O, 19F, 23Na, 27Al, 29Si, 31P, , 2H]; &Spectrometer (1H): "
                 "[500.0000 MHz: 0.0000 to 3000.0000]; &0 ppm at: [500.000000 MHz: 0.000000 to 3000.000000]; The "
                 "positions go from 8.00 to 4.00 ppm.; <OK> <Cancel>"_s);
        QCOMPARE(dialog.nuclei(), (QStringList{u"1H"_s, u"13C"_s}));
        QVERIFY(dialog.readOptions().unit.isEmpty() && dialog.readOptions().frequency[0] == 500);
        QVERIFY(std::abs(dialog.readOptions().frequency[1] - 5 * 25.145020) < 1e-5);
        fill(&dialog, {{"nucleusF1", u"choose"_s}});
        QCOMPARE(linesOf(&dialog).mid(5).join(u' '), u"The nucleus and a frequency are needed (<OK>) <Cancel>"_s);
    }

    void tabWalksOverThePage()
    {
        NmrItem *spectrum = createSpectrum();
        scene().setActiveItem(nullptr);
        QSignalSpy activated(&scene(), &MainScene::activeItemChanged);
        const QList<QGraphicsWidget *> order{molecule(), table(), spectrum, molecule()};
        for (QGraphicsWidget *item : order) {
            QTest::keyClick(window().view(), Qt::Key_Tab);
            QCOMPARE(scene().activeItem(), item);
            QVERIFY(qobject_cast<DocumentItem *>(item)->isCurrent());
        }
        QTest::keyClick(window().view(), Qt::Key_Backtab);
        QCOMPARE(scene().activeItem(), spectrum);
        QCOMPARE(activated.size(), order.size() + 1);
    }

    void keysOpenTheMenuOfTheActiveItem()
    {
        scene().setActiveItem(table());
        for (const auto &[key, modifiers] :
             {std::pair(Qt::Key_Return, Qt::NoModifier), std::pair(Qt::Key_Enter, Qt::KeypadModifier),
              std::pair(Qt::Key_Menu, Qt::NoModifier), std::pair(Qt::Key_F10, Qt::ShiftModifier)}) {
            QTest::keyClick(window().view(), key, modifiers);
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            QVERIFY(entry(menu, u"Create spectrum..."_s));
            QVERIFY(menu->activeAction() && menu->activeAction()->isEnabled());
            menu->close();
        }
    }

    void selectionGoesBothWays()
    {
        QItemSelectionModel *selection = table()->view()->selectionModel();
        scene().setActiveItem(table());
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(window().view(), Qt::Key_Down, i == 2 ? Qt::ShiftModifier : Qt::NoModifier);
        // One atom a row in this file, in the same order.
        QCOMPARE(selection->selectedRows().size(), 2);
        QCOMPARE(molecule()->selectedAtoms(),
                 (QSet<int>{selection->selectedRows()[0].row(), selection->selectedRows()[1].row()}));
        for (const QSet<int> &atoms : {QSet<int>{2, 5}, QSet<int>()}) {
            molecule()->setSelectedAtoms(atoms);
            molecule()->sendMessage(AtomSelection::toMessage(atoms));
            QSet<int> rows;
            for (const QModelIndex &index : selection->selectedRows())
                rows.insert(index.row());
            QCOMPARE(rows, atoms);
            QCOMPARE(molecule()->selectedAtoms(), atoms);
        }
    }

    void fromFileToReferencedSpectrum()
    {
        NmrItem *spectrum = createSpectrum();
        NmrData *data = spectrum->nmrData();
        drop(sample(u"paracetamol-13C.csv"_s));
        QTRY_COMPARE(data->entryIds().size(), 2);
        const QUuid simulated = data->activeEntryId();
        const auto firstPeak = [&] { return data->spectrum(simulated).peaks.first().f2; };
        const double before = firstPeak();

        // Both spectra show, and after the reference has moved the peaks do that lie beyond the curve.
        const auto visible = [&](double ppm) { return spectrum->plot()->content()->ranges().first().contains(ppm); };
        QVERIFY(visible(170) && visible(before));
        const QString report = trigger(spectrum, u"Auto reference"_s, u"New reference"_s);
        QVERIFY2(report.startsWith(u"Reference is changed from 100 ppm to 172.457 ppm"), qPrintable(report));
        const double after = firstPeak();
        QVERIFY(std::abs(after - before - 72.457) < 1e-3);
        QVERIFY(visible(170) && visible(after));

        // Editing makes the curve anew, where the peaks are now.
        trigger(spectrum, u"Edit Spectrum..."_s, u"MAGRES parameters"_s);
        const SpectrumAxis edited = data->spectrum(simulated).axes.first();
        QVERIFY(edited.first > after && edited.last() < 24);

        // Everything can be taken back and done again: edit, reference, experiment, spectrum.
        QUndoStack *stack = scene().undoStack();
        QCOMPARE(stack->count(), 4);
        stack->undo();
        stack->undo();
        QCOMPARE(firstPeak(), before);
        QCOMPARE(data->entryOrigParams(simulated, u"magres"_s).value(u"ref"_s).toMap().value(u"13C"_s), 100.0);
        stack->undo();
        QCOMPARE(data->entryIds(), QList<QUuid>{simulated});
        stack->undo();
        QVERIFY(!scene().currentNmrItem());
        for (int i = 0; i < 3; ++i)
            stack->redo();
        QCOMPARE(scene().currentNmrItem(), spectrum);
        QCOMPARE(firstPeak(), after);
    }

    void filesAreWrittenByTheirDialogs()
    {
        createSpectrum({{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 172.4}});
        const auto choose = [this](const QString &title, const QString &filters, const QString &proposed,
                                   const char *name) {
            m_dialogs.expect(title, [=, this](QDialog *dialog) {
                auto *files = qobject_cast<QFileDialog *>(dialog);
                QCOMPARE(files->nameFilters().join(u"; "_s), filters);
                QCOMPARE(QFileInfo(files->selectedFiles().value(0)).fileName(), proposed);
                files->selectNameFilter(files->nameFilters().last());
                files->selectFile(m_files.path(name));
                dialog->accept();
            });
        };
        const auto run = [this](const QString &text) {
            entry(entry(menu(u"File"_s), u"Export"_s)->menu(), text)->trigger();
            return said().remove(m_files.path("") + u'/');
        };
        choose(u"Export Page"_s, u"PDF document (*.pdf); SVG image (*.svg); PNG image (*.png)"_s, u"paracetamol.pdf"_s,
               "page");
        QCOMPARE(run(u"Page..."_s), u"page.png is written"_s);
        QVERIFY(m_files.read("page.png").startsWith("\x89PNG"));
        // A name without suffix means the file that would be written.
        m_files.write("page.png", "precious");
        const auto keep = [this](const QString &title) {
            m_dialogs.expect(title, [this, title](QDialog *dialog) {
                auto *files = qobject_cast<QFileDialog *>(dialog);
                files->selectNameFilter(files->nameFilters().filter(u"*.png"_s).constFirst());
                files->selectFile(m_files.path("page"));
                m_dialogs.expect(title, [](QDialog *asked) {
                    auto *box = qobject_cast<QMessageBox *>(asked);
                    QVERIFY(box->text().startsWith(u"page.png already exists"_s));
                    box->button(QMessageBox::No)->click();
                });
                dialog->accept();
                dialog->reject();
            });
        };
        keep(u"Export Page"_s);
        run(u"Page..."_s);
        keep(u"Save Picture"_s);
        entry(entry(table()->contextMenu(), u"Picture"_s)->menu(), u"Save..."_s)->trigger();
        QCOMPARE(m_files.read("page.png"), "precious");
        choose(u"Export Spectrum"_s,
               u"PDF document (*.pdf); SVG image (*.svg); PNG image (*.png); JCAMP-DX (*.jdx); CSDM (*.csdf); JSON: "
               "axes, peaks, parameters (*.json); text: data points (*.csv)"_s,
               u"paracetamol.pdf"_s, "curve");
        QCOMPARE(run(u"Spectrum..."_s), u"curve.csv is written"_s);
        QCOMPARE(m_files.read("curve.csv").count('\n'), 8193);
        choose(u"Export Table"_s, u"Comma-separated values (*.csv); JSON (*.json)"_s, u"paracetamol.csv"_s, "t.csv");
        QCOMPARE(run(u"Table..."_s), u"t.csv is written"_s);
        QCOMPARE(m_files.read("t.csv").count('\n'), 81);
        choose(u"Export Table"_s, u"Comma-separated values (*.csv); JSON (*.json)"_s, u"paracetamol.csv"_s, "t.doc");
        m_dialogs.expectBox(QMessageBox::Critical, u"t.doc cannot be written"_s,
                            u"The file name must end in .csv or .json"_s);
        run(u"Table..."_s);

        const auto nuclei = [this](const QString &asked, const QString &offered, const QString &text) {
            m_dialogs.expect(u"Export Spin System"_s, [=](QDialog *dialog) {
                auto *input = qobject_cast<QInputDialog *>(dialog);
                QCOMPARE(input->labelText(), u"Nuclei, such as 13C, 1H. "_s + asked);
                QCOMPARE(input->textValue(), offered);
                input->setTextValue(text);
                dialog->accept();
            });
        };
        const QString types = u"SIMPSON input (*.in); mrsimulator spin systems (*.mrsim)"_s;
        nuclei(
            u"All their atoms are taken; rows selected in the table restrict them.\nSites that would be written: 32 of "
            "C, 36 of H, 4 of N, 8 of O:"_s,
            u"13C"_s, u"1H; 13C"_s);
        choose(u"Export Spin System"_s, types, u"paracetamol.in"_s, "all.in");
        QCOMPARE(run(u"Spin System..."_s),
                 u"The spin system is written: 68 site(s): 36 of 1H, 32 of 13C; 1H: Reference 100.00 ppm, slope -1: "
                 "placeholders, only differences mean something; 13C: Reference 172.40 ppm, slope -1: of paracetamol, "
                 "simulated"_s);
        // C1 in ppm with the reference of the spectrum.
        QVERIFY(m_files.read("all.in").contains("shift 1 ") && m_files.read("all.in").contains("# Note: 13C: Ref"));
        table()->view()->selectRow(37);
        nuclei(u"Only atoms in the selected rows of the table are taken.\nSites that would be written: 1 of C:"_s,
               u"1H; 13C"_s, u"13C"_s);
        choose(u"Export Spin System"_s, types, u"paracetamol.in"_s, "one");
        QCOMPARE(run(u"Spin System..."_s),
                 u"The spin system is written: 1 site(s): 1 of 13C; 13C: Reference 172.40 ppm, slope -1: of "
                 "paracetamol, simulated"_s);
        QVERIFY(m_files.read("one.mrsim").startsWith('{'));
        nuclei(u"Only atoms in the selected rows of the table are taken.\nSites that would be written: 1 of C:"_s,
               u"13C"_s, u"1H"_s);
        choose(u"Export Spin System"_s, types, u"paracetamol.in"_s, "no.in");
        m_dialogs.expectBox(QMessageBox::Critical, u"no.in cannot be written"_s,
                            u"The selected rows of the table hold no site of 1H. Select some, or no row at all for all "
                            "sites"_s);
        run(u"Spin System..."_s);
        QVERIFY(m_files.read("no.in").isEmpty());

        // What is no document is not written over, whatever it is called.
        const QString documents = u"Magres Workbench documents (*.magresdoc)"_s;
        for (const char *name : {"a.magres", "b.magresdoc"})
            m_files.write(name, "precious");
        m_dialogs.expect(u"Save As"_s, [this](QDialog *dialog) {
            qobject_cast<QFileDialog *>(dialog)->selectFile(m_files.path("b"));
            m_dialogs.expect(u"Save As"_s, [](QDialog *asked) {
                qobject_cast<QMessageBox *>(asked)->button(QMessageBox::Yes)->click();
            });
            m_dialogs.expectBox(QMessageBox::Critical, u"The document cannot be saved"_s,
                                m_files.path("b.magresdoc") + u" is a file of another kind: choose another name"_s);
            dialog->accept();
        });
        entry(menu(u"File"_s), u"Save"_s)->trigger();
        choose(u"Save As"_s, documents, u"paracetamol.magresdoc"_s, "a.magres");
        entry(menu(u"File"_s), u"Save As..."_s)->trigger();
        QCOMPARE(said(), u"a.magres.magresdoc is saved"_s);
        QCOMPARE(m_files.read("a.magres") + m_files.read("b.magresdoc"), "preciousprecious");
        choose(u"Save As"_s, documents, u"a.magres.magresdoc"_s, "kept");
        entry(menu(u"File"_s), u"Save As..."_s)->trigger();
        QCOMPARE(said(), u"kept.magresdoc is saved"_s);
        QCOMPARE(window().windowTitle(), u"kept.magresdoc[*] – Magres Workbench"_s);
        QVERIFY(!window().isWindowModified());
        QCOMPARE(window().document()->proposedPath(u"pdf"_s), m_files.path("kept.pdf"));
        window().document()->newDocument();
    }

    void peaksNeedAMeasurement()
    {
        shortcut(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(said(), u"There is no spectrum on the page"_s);
        shortcut(Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(said(), u"There is no measured spectrum to pick peaks from"_s);
        QVERIFY(createSpectrum() && !entry(menu(u"Spectrum"_s), u"Edit Peaks"_s)->isChecked());
        entry(menu(u"Spectrum"_s), u"Count Equivalent Sites"_s)->trigger();
        QCOMPARE(said(), u"There is no measured spectrum whose peaks could be counted"_s);
        open(u"paracetamol-13C-points.csv"_s);
        m_dialogs.expect(u"Pick peaks"_s, [&](QDialog *dialog) {
            const auto found = [&] { return part<QLabel>(dialog, "result")->text(); };
            QCOMPARE(linesOf(dialog).join(u"; "_s),
                     u"Spectrum: paracetamol-13C-points.csv; Above the &noise: [6.0 standard deviations: 1.0 to "
                     "1000.0]; Least &height: [3.00 % of the highest peak: 0.00 to 100.00]; Least &distance: [3 "
                     "points: 0 to 1000000]; [x] &Count equivalent sites as the simulated spectrum does; Positions "
                     "found: 8\nNumber of peaks: 32 measured, 32 simulated; <OK> <Cancel>"_s);
            fill(dialog, {{"leastHeight", 2.0}, {"countSites", false}, {"leastDistance", 200.0}});
            QCOMPARE(found(), u"Positions found: 3\nNumber of peaks: 3 measured, 32 simulated"_s);
            dialog->reject();
        });
        const int steps = history().count();
        shortcut(Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(history().count(), steps);
    }

    void activeSpectrumIsChosenFromTheMenu()
    {
        NmrItem *spectrum = createSpectrum();
        open(u"paracetamol-13C.csv"_s);
        NmrData *data = spectrum->nmrData();
        const QList<QUuid> ids = data->entryIds();
        QCOMPARE(ids.size(), 2);
        QCOMPARE(data->activeEntryId(), ids[0]);
        const auto submenu = [this](const QString &title) {
            QMenu *found = entry(menu(u"Spectrum"_s), title)->menu();
            Q_EMIT found->aboutToShow();
            return found;
        };
        QMenu *choice = submenu(u"Active Spectrum"_s);
        QVERIFY(entry(choice, u"paracetamol, simulated"_s)->isChecked());
        entry(choice, u"paracetamol-13C.csv"_s)->trigger();
        QCOMPARE(data->activeEntryId(), ids[1]);
        QVERIFY(spectrum->plot()->content()); // the curve stays on show
        shortcut(Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(data->activeEntryId(), ids[0]);
        QCOMPARE(said(), u"Active spectrum: paracetamol, simulated"_s);
        QCOMPARE(entriesOf(submenu(u"Active Spectrum"_s)),
                 u"[x] paracetamol, simulated; [ ] paracetamol-13C.csv; /; &Next Ctrl+PgDown; &Previous Ctrl+PgUp"_s);

        entry(submenu(u"Remove Spectrum"_s), u"paracetamol, simulated"_s)->trigger();
        QCOMPARE(data->entryIds(), QList<QUuid>{ids[1]});
        QVERIFY(spectrum->plot()->content()); // sticks alone
        QVERIFY(!submenu(u"Remove Spectrum"_s)->actions().first()->isEnabled());
        history().undo();
        QCOMPARE(data->entryIds(), ids);
        QCOMPARE(data->activeEntryId(), ids[0]);
    }

    void gesturesAreListedWithTheirEffects()
    {
        QString list;
        m_dialogs.expect(u"Keyboard and mouse"_s, [&](QDialog *dialog) {
            list = dialog->findChild<QTextBrowser *>()->toPlainText().simplified();
            dialog->reject();
        });
        shortcut(Qt::Key_F1);
        for (const QString &row :
             {u"Ctrl+Z, Ctrl+Y takes changes back"_s, u"Tab, Shift+Tab next or previous item"_s, u"Drop files opens"_s})
            QVERIFY2(list.contains(row.simplified()), qPrintable(list));
        QVERIFY(!list.contains(u'%'));
    }

    void filesAreChosen()
    {
        const auto choose = [this](const char *command, const QString &title, const QString &filters,
                                   const QString &chosen) {
            m_dialogs.expect(title, [=](QDialog *dialog) {
                auto *files = qobject_cast<QFileDialog *>(dialog);
                QVERIFY2(filters.isEmpty() || files->nameFilters().join(u"; "_s) == filters,
                         qPrintable(files->nameFilters().join(u"; "_s)));
                files->selectFile(chosen);
                dialog->accept();
            });
            entry(menu(u"File"_s), QLatin1String(command))->trigger();
        };
        const QString known =
            u"All known files (*.magresdoc *.magres 1r 2rr procs proc2s *.jdx *.dx *.jcamp *.jcm *.csdf *.csdfe *.spe "
            "peaklist.xml *.csv *.txt *.tsv *.asc *.dat); Magres Workbench documents (*.magresdoc); MAGRES files "
            "(*.magres); Spectra and peak lists (1r 2rr procs proc2s *.jdx *.dx *.jcamp *.jcm *.csdf *.csdfe *.spe "
            "peaklist.xml *.csv *.txt *.tsv *.asc *.dat); All files (*)"_s;
        choose("Open...", u"Open"_s, known, sample(u"berlinite.magres"_s));
        QCOMPARE(said(), u"berlinite.magres is open"_s);
        choose("Open Folder...", u"Open Folder"_s, {}, sample(u"paracetamol-13C-bruker"_s));
        QCOMPARE(
            said(),
            u"paracetamol-13C-bruker has a plot of its own; a spectrum that is created now joins it. 8 peak(s)."_s);
        m_dialogs.expectBox(QMessageBox::Critical, u"nowhere cannot be opened"_s,
                            u"/nowhere\n\nFile /nowhere does not exist"_s);
        window().openFiles({u"/nowhere"_s});
    }

    void aboutTellsThePlugins()
    {
        m_host->loadPlugins(u"/no/such"_s);
        QString text;
        accept(u"About"_s, {}, &text);
        entry(menu(u"Help"_s), u"About and Plug-ins..."_s)->trigger();
        static const QRegularExpression description(u"<br>[^\n]*<br><small>[^\n]*/(?=lib)"_s);
        QCOMPARE(
            text.replace(description, u"<br>…<br><small>"_s),
            u"<h3>Magres Workbench </h3><p>NMR parameters of crystals: molecules, tables and simulated spectra from "
            "calculated shieldings.</p><h4>Plug-ins</h4><p><b>MAGRES File Filter Plugin</b> 2.1<br>…<br><small>"
            "libmagresfilefilter.so</small></p><p><b>Not loaded:</b> /no/such<br>there is no such directory</p>"_s);
        m_host.reset(); // which keeps what it could not load
    }

    void activeItemsAreNamedAndTold()
    {
        // Renamed, with undo; an empty name is the item's own again.
        scene().setActiveItem(molecule());
        const auto rename = [this](const QString &name, const QString &before) {
            m_dialogs.expect(u"Rename"_s, [=](QDialog *dialog) {
                auto *input = qobject_cast<QInputDialog *>(dialog);
                QCOMPARE(input->labelText() + u' ' + input->textValue(), u"Title (empty: the item's own): "_s + before);
                input->setTextValue(name);
                dialog->accept();
            });
            shortcut(Qt::Key_F2);
        };
        const int steps = history().count();
        const QString own = molecule()->title();
        rename(u" form II "_s, own);
        QCOMPARE(window().view()->accessibleName(), u"form II"_s);
        rename(u"form II"_s, u"form II"_s);
        QCOMPARE(history().count(), steps + 1);
        rename({}, u"form II"_s);
        QCOMPARE(molecule()->title(), own);
        scene().setActiveItem(nullptr);
        QCOMPARE(window().view()->accessibleName() + window().view()->accessibleDescription(), u"Workspace"_s);
        QVERIFY(!entry(menu(u"Edit"_s), u"Delete Item"_s)->isEnabled());

        window().statusBar()->clearMessage();
        NmrItem *spectrum = createSpectrum();
        const auto activated = [&] {
            window().statusBar()->clearMessage();
            scene().setActiveItem(table());
            scene().setActiveItem(spectrum);
            return said();
        };
        QCOMPARE(activated(), u"Wheel zooms, drag marks what to show, double click shows all; F1 tells more"_s);
        open(u"paracetamol-13C.csv"_s);
        QCOMPARE(activated(), u"¹³C of paracetamol, simulated. Number of peaks: 32 measured, 32 simulated"_s);
        // The title that was entered last is the plot's, wherever that was.
        const auto retitle = [&](const QString &title, const QString &before) {
            m_dialogs.expect(u"Title"_s, [=](QDialog *dialog) {
                auto *input = qobject_cast<QInputDialog *>(dialog);
                QCOMPARE(input->textValue(), before);
                input->setTextValue(title);
                dialog->accept();
            });
            entry(spectrum->contextMenu(), u"Edit Title..."_s)->trigger();
        };
        const QString made = spectrum->title();
        retitle(u"a"_s, made);
        rename(u"b"_s, u"a"_s);
        retitle(u"c"_s, u"b"_s);
        QCOMPARE(spectrum->title(), u"c"_s);
        history().undo();
        retitle({}, u"b"_s);
        QCOMPARE(spectrum->title(), made);
    }

    void windowStaysOnTheScreenAndComesBack()
    {
        const QRect screen = window().screen()->availableGeometry(), before = window().geometry();
        for (const QRect &place : {QRect(screen.bottomRight(), QSize(600, 500)), QRect(-400, -300, 600, 500),
                                   QRect(0, 0, 2 * screen.width(), 2 * screen.height())}) {
            window().hide();
            window().setGeometry(place);
            window().show();
            QTRY_VERIFY(screen.contains(window().frameGeometry()));
        }
        window().setGeometry(before);
        entry(menu(u"View"_s), u"Page Preview"_s)->setChecked(true);
        window().contents()->hide();
        createSpectrum();
        m_dialogs.expect(u"Unsaved Changes"_s, [](QDialog *dialog) {
            qobject_cast<QMessageBox *>(dialog)->button(QMessageBox::Discard)->click();
        });
        QVERIFY(window().close());
        start();
        QVERIFY(window().view()->isPagePreview() && !window().contents()->isVisible());
        start(); // not closed, not saved
        QVERIFY(window().view()->isPagePreview());
        m_host.reset();
    }

    void menusOfTheBarAreThoseOfTheCurrentItems()
    {
        NmrItem *first = createSpectrum();
        NmrItem *second = createSpectrum();
        QVERIFY(first && second && first != second);
        for (NmrItem *item : {first, second}) {
            scene().setActiveItem(item);
            scene().setActiveItem(table()); // which leaves the spectrum the current one
            QVERIFY(entry(menu(u"Spectrum"_s), u"Edit Peaks"_s));
            QCOMPARE(scene().currentNmrItem(), item);
            QCOMPARE(scene().activeItem(), item);
        }
        shortcut(Qt::Key_Delete);
        QCOMPARE(scene().currentNmrItem(), first);
        shortcut(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(scene().documentItems().contains(second));
    }

    void experimentsThatCannotBeAddedChangeNothing()
    {
        NmrItem *spectrum = createSpectrum();
        const int steps = history().count();
        // Where it falls it cannot go ...
        QString text;
        accept(u"paracetamol-1H-difdup.jdx cannot be added"_s, {}, &text);
        dropOnto(sample(u"paracetamol-1H-difdup.jdx"_s), *spectrum);
        QTRY_VERIFY(m_dialogs.missing().isEmpty());
        QVERIFY2(text.contains(u"spectrum of 1H"), qPrintable(text));
        QCOMPARE(spectrum->nmrData()->entryIds().size(), 1);
        QCOMPARE(history().count(), steps);
        // ... and opened without a place it has a plot of its own.
        open(u"paracetamol-1H-difdup.jdx"_s);
        QVERIFY(scene().currentNmrItem() != spectrum);
        QCOMPARE(spectrum->nmrData()->entryIds().size(), 1);
    }

    /// ... where the list, or else its name, does not speak of another nucleus or of a plane.
    void spectraJoinListsThatWereOpenedFirst()
    {
        QByteArray points = "ppm,intensity\n";
        for (int i = 0; i < 100; ++i)
            points += QByteArray::number(200 - 2 * i) + (i == 50 ? ",100\n" : i % 2 ? ",1\n" : ",0\n");
        const std::tuple<const char *, QByteArray, bool> lists[] = {
            {"points-13C.csv", points, true},
            {"points-1H.csv", points, false},
            {"peaks.txt", "13C: 170.2; 133.3; 20.4\n", true},
            {"13C.txt", "1H: 9.2; 7.1; 2.0\n", false},
            {"list.txt", "ppm\n170.2\n20.4\n", true},
            {"list-1H.txt", "ppm\n9.2\n2.0\n", false},
            {"plane.txt", "f2,f1\n9.2,133.3\n2.0,20.4\n", false}};
        for (const auto &[name, text, joins] : lists) {
            clear();
            open(u"acetic-acid.magres"_s);
            window().openFiles({m_files.write(name, text)});
            const NmrItem *list = plot();
            QVERIFY2(list && list->nmrData()->entryIds().size() == 1, name);
            QVERIFY2((createSpectrum() == list) == joins, name);
            // The other order comes to the same; by hand a silent one joins all the same.
            clear();
            open(u"acetic-acid.magres"_s);
            NmrItem *simulated = createSpectrum();
            window().openFiles({m_files.path(name)});
            QVERIFY2((simulated->nmrData()->entryIds().size() == 2) == joins, name);
        }
        dropOnto(m_files.write("1H.txt", "ppm\n9.2\n2.0\n"), *createSpectrum());
        QTRY_COMPARE(data()->entryIds().size(), 2);
    }

    /// No box is in the way: what is doubtful stands under the title until it was read, and can be had back.
    void doubtsAreNotes()
    {
        QFile whole(sample(u"acetic-acid.magres"_s));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QByteArray text = whole.readAll().replace("</magres>", "");
        window().openFiles({m_files.write("a.magres", text), m_files.write("b.magres", text)});
        QCOMPARE(scene().documentItems().size(), 6);
        QCOMPARE(said(), u"2 file(s) opened with doubts: the note under the title tells them"_s);
        int told = 0;
        for (const DocumentItem *item : scene().documentItems())
            told += item->doubts().join(u'\n').contains(u"is not closed") && item->notes().size() == 1;
        QCOMPARE(told, 2);

        const QString path = m_files.path("kept.magresdoc");
        QVERIFY(window().document()->saveTo(path));
        window().openFiles({path});
        TableItem *last = table();
        QVERIFY(last->notes().value(0).text.contains(u"is not closed"));
        const auto read = [&](const QString &button) {
            m_dialogs.expect(u"Doubts about the file"_s, [&](QDialog *dialog) {
                auto *box = qobject_cast<QMessageBox *>(dialog);
                QVERIFY(box->informativeText().contains(u"is not closed"));
                for (QAbstractButton *candidate : box->buttons()) {
                    if (candidate->text().remove(u'&') == button)
                        return candidate->click();
                }
                QFAIL(qPrintable(button));
            });
            last->notes().constFirst().run();
        };
        read(u"Close"_s);
        QVERIFY(last->notes().size() == 1 && !window().document()->isModified());
        read(u"Dismiss Note"_s);
        QVERIFY(last->notes().isEmpty() && window().document()->isModified());
        history().undo();
        QVERIFY(last->notes().size() == 1 && !window().document()->isModified());
    }

    /// Positions in Hz lie nowhere until somebody says what they are divided by.
    void hertzAreAskedFor()
    {
        QByteArray points = "Hz,intensity\n";
        for (int i = 0; i < 100; ++i)
            points += QByteArray::number(10000 - 100 * i) + ',' + (i == 50 ? "100" : i % 2 ? "1" : "0") + '\n';
        const QString spectrum = m_files.write("unknown.csv", points),
                      list = m_files.write("si-29Si.csv", "kHz\n-8.5\n-9.25\n");
        const bool modified = window().document()->isModified();
        const int steps = history().count();

        m_dialogs.expect(u"Frequency of the spectrum"_s, [](QDialog *dialog) { dialog->reject(); });
        window().openFiles({spectrum});
        QVERIFY(scene().documentItems().size() == 2 && history().count() == steps);
        QCOMPARE(window().document()->isModified(), modified);
        QVERIFY(said().contains(u"was not opened"));

        // One is left out, the next one is there: several files ask one by one.
        const auto answer = [this](const Inputs &inputs, const QString &range) {
            m_dialogs.expect(u"Frequency of the spectrum"_s, [=](QDialog *dialog) {
                fill(dialog, inputs);
                QCOMPARE(part<QLabel>(dialog, "range")->text(), range);
                press(dialog, QDialogButtonBox::Ok);
            });
        };
        const auto opened = [this](const QString &file) {
            window().openFiles({file});
            return data()->stack().entries.constLast().spectrum;
        };
        m_dialogs.expect(u"Frequency of the spectrum"_s, [](QDialog *dialog) { dialog->reject(); });
        answer({{"nucleus", u"13C"_s}, {"protonFrequency", 400.0}}, u"The positions go from 99.42 to 0.99 ppm."_s);
        window().openFiles({spectrum, spectrum});
        QCOMPARE(scene().documentItems().size(), 3);
        const SpectrumAxis axis = data()->shownSpectrum().axes.at(0);
        // 13C resonates at 25.145020 % of 1H.
        QVERIFY(axis.nucleus() == u"¹³C" && std::abs(axis.ppm(50) - 5000 / 100.58008) < 1e-3);
        QVERIFY(std::abs(axis.frequency - 100.58008) < 1e-5);

        // The file's name and the last answer make the proposal; kHz are not Hz.
        answer({}, u"The positions go from -106.96 to -116.40 ppm."_s);
        const QList<SpectrumPeak> peaks = opened(list).peaks;
        QVERIFY(peaks.size() == 2 && std::abs(peaks[0].f2 + 8500 / (4 * 19.867187)) < 1e-3);

        // Both dimensions are kept.
        answer({{"nucleus", u"1H"_s}, {"nucleusF1", u"13C"_s}}, u"The positions go from 10.00 to 5.00 ppm."_s);
        const SpectrumPeak cross =
            opened(m_files.write("plane.csv", "F2 (Hz),F1 (Hz),height\n4000,12000,1\n2000,3000,2\n")).peaks.value(0);
        QVERIFY(std::abs(cross.f2 - 10) < 1e-6 && std::abs(cross.f1 - 12000 / 100.58008) < 1e-3);
        scene().destroy(plot());

        // A measurement whose spectrometer is unknown does not tell it either.
        window().openFiles({m_files.write("ppm.csv", QByteArray(points).replace("Hz", "ppm"))});
        QCOMPARE(data()->shownSpectrum().axes.value(0).frequency, 0.0);
        QCoreApplication::processEvents();
        QCOMPARE(window().contents()->tree()->findItems(u"nucleus unknown"_s, Qt::MatchRecursive).size(), 1);
        m_dialogs.expect(u"Frequency of the spectrum"_s, [](QDialog *dialog) { dialog->reject(); });
        dropOnto(spectrum, *plot());
        QTRY_VERIFY(m_dialogs.missing().isEmpty());
        scene().destroy(plot());

        // A calculation makes the proposal, and is not taken for granted: 13C beside 600 MHz, as it is simulated.
        NmrItem *simulated = createSpectrum();
        answer({{"nucleus", u"1H"_s}}, u"The positions go from 16.67 to 0.17 ppm."_s);
        opened(spectrum);
        QCOMPARE(simulated->nmrData()->entryIds().size(), 1);
        answer({}, u"The positions go from 66.28 to 0.66 ppm."_s);
        opened(spectrum);
        QCOMPARE(simulated->nmrData()->entryIds().size(), 2);
    }

    /// Nor is one whose plot goes while its dialog is open.
    void measuredSpectraAreNotEdited()
    {
        NmrItem *spectrum = createSpectrum();
        open(u"paracetamol-13C.csv"_s);
        const QList<QUuid> ids = data()->entryIds();
        data()->setActiveEntryId(ids[1]);
        const QString refusal = u"The spectrum cannot be updated: The active NMR spectrum is not a MAGRES spectrum"_s;
        m_dialogs.expectBox(QMessageBox::Critical, u"Interrupted"_s, refusal);
        choose(window(), spectrum, {u"MAGRES"_s, u"Edit Spectrum..."_s});
        data()->setActiveEntryId(ids[0]);
        m_dialogs.expect(u"MAGRES parameters"_s, [this](QDialog *dialog) {
            delete plot();
            dialog->accept();
        });
        m_dialogs.expectBox(QMessageBox::Critical, u"Interrupted"_s, refusal);
        // By name, as hosts may call it: the menu would go together with its item.
        QVERIFY(QMetaObject::invokeMethod(m_host->plugins().plugins().first().object, "updateSpectrum"));
    }

    /// A right click on a title: columns are switched one after the other while the menu stays.
    void columnsAreSwitchedAtTheirTitles()
    {
        const QHeaderView *header = table()->view()->horizontalHeader();
        const QPointF title = table()->mapToScene(table()->contentRect().topLeft() + QPointF(40, 34));
        QTest::mouseClick(window().windowHandle(), Qt::RightButton, {},
                          window().view()->viewport()->mapTo(&window(), window().view()->mapFromScene(title)));
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QList<int> hidden{header->hiddenSectionCount(), history().index()};
        for (QAction *column : menu->actions().mid(3, 2)) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(column).center());
            hidden.append(header->hiddenSectionCount() - hidden[0]);
        }
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            QTest::keyClick(menu, key);
            hidden.append(header->hiddenSectionCount() - hidden[0]);
        }
        QVERIFY(menu->isVisible());
        menu->close();
        QCOMPARE(hidden.mid(2), (QList{1, 2, 1, 2, 1}));
        history().setIndex(hidden[1]);
        QCOMPARE(header->hiddenSectionCount(), hidden[0]);
    }

    /// Dialogs of items: what they offer, take and refuse.
    void dialogsOfItems()
    {
        const auto cells = [&](const QString &before, const QString &text) {
            m_dialogs.expect(u"Supercell"_s, [=](QDialog *dialog) {
                auto *input = qobject_cast<QInputDialog *>(dialog);
                QCOMPARE(input->labelText() + input->textValue(), u"Numbers of cells along a, b and c:"_s + before);
                input->setTextValue(text);
                dialog->accept();
            });
            window().statusBar()->clearMessage();
            entry(entry(molecule()->contextMenu(), u"Crystal"_s)->menu(), u"Other Numbers of Cells..."_s)->trigger();
            const auto &now = molecule()->packing().cells;
            return u"%1 %2 %3|"_s.arg(now[0]).arg(now[1]).arg(now[2]) + said();
        };
        QCOMPARE(cells(u"1 1 1"_s, u" 2x1 × 3"_s), u"2 1 3|"_s);
        for (const QString &odd : {u"2 2"_s, u"2 0 1"_s, u"1 1 1 1"_s})
            QCOMPARE(cells(u"2 1 3"_s, odd),
                     u"2 1 3|\"%1\" is not understood: three whole numbers such as 2 2 1 are wanted"_s.arg(odd));

        NmrItem *spectrum = createSpectrum();
        PlotOptions options;
        options.integrals = {{data()->activeEntryId(), 90, 60}, {data()->activeEntryId(), 50, 40}};
        spectrum->plot()->setOptions(options);
        for (const double value : {-2.5, 0.0}) {
            m_dialogs.expect(u"Set Integral"_s, [=](QDialog *dialog) {
                auto *input = qobject_cast<QInputDialog *>(dialog);
                QCOMPARE(input->labelText(), u"Value of this integral:"_s);
                QCOMPARE(linesOf(dialog)[1], u"[1.000: -1000000.000 to 1000000.000]"_s);
                input->setDoubleValue(value);
                dialog->accept();
            });
            choose(window(), spectrum, {u"Measure"_s, u"Set Integral"_s, u"50.00 to 40.00 ppm..."_s});
            const PlotOptions &now = spectrum->plot()->options();
            QVERIFY(now.integralReference == 1 && now.referenceValue == -2.5);
        }
        QCOMPARE(said(), u"An integral cannot be set to 0: all others are measured by it"_s);
        m_dialogs.expect(u"Supercell"_s, [&](QDialog *dialog) { // the item goes while it asks
            scene().removeAll();
            dialog->accept();
        });
        entry(entry(molecule()->contextMenu(), u"Crystal"_s)->menu(), u"Other Numbers of Cells..."_s)->trigger();
    }

private:
    /// A command of the plug-in, and what it tells.
    QString trigger(NmrItem *item, const QString &command, const QString &title)
    {
        QString text;
        accept(title, {}, &text);
        scene().setActiveItem(item);
        entry(entry(item->contextMenu(), u"MAGRES"_s)->menu(), command)->trigger();
        return text;
    }

    /// Shortcuts need the active window, which a dialog may have been.
    void shortcut(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window()));
        QTest::keyClick(&window(), key, modifiers);
    }

    void drop(const QString &path, const QPoint &where = QPoint(3, 3))
    {
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(where, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &enter);
        QDropEvent event(QPointF(where), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &event);
    }

    void dropOnto(const QString &path, const NmrItem &item)
    {
        QGraphicsView *view = window().view();
        view->ensureVisible(&item, 0, 0);
        const QPointF middle = item.mapToScene(item.contentRect().center());
        drop(path, view->viewport()->mapTo(&window(), view->mapFromScene(middle)));
    }
};

QTEST_MAIN(TestWindow)
#include "tst_window.moc"
