// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"
#include "WorkbenchUser.h"

#include "window/WindowApplication.h"
#include "host/MainScene.h"
#include "window/MainView.h"
#include "host/PluginManager.h"
#include "window/DocumentController.h"
#include "window/WMainWindow.h"
#include "data/AtomSelection.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/StackedTraces.h"
#include "items/table/TableItem.h"

#include <QtTest>
#include <QtWidgets>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

const QString parametersTitle = u"MAGRES parameters"_s;

QString sample(const char *name)
{
    return QStringLiteral(SAMPLES "/") + QLatin1String(name);
}

/// Mnemonics and shortcuts aside; null when there is none.
QAction *action(const QWidget *menu, const QString &text)
{
    for (QAction *found : menu->actions())
        if (found->text().remove(u'&') == text)
            return found;
    return nullptr;
}

QMenu *filled(QMenu *menu)
{
    Q_EMIT menu->aboutToShow();
    return menu;
}

} // namespace

/// The window with the real plug-in in it.
class TestWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_settings.isValid());
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QCoreApplication::setOrganizationName(u"tests"_s);
        QCoreApplication::setApplicationName(u"window"_s);
        m_host = std::make_unique<WindowApplication>();
        m_host->loadPlugins(QStringLiteral(PLUGIN_DIRECTORY));
        QVERIFY(!m_host->plugins().plugins().isEmpty());
        window().show();
        QVERIFY(QTest::qWaitForWindowExposed(&window()));
        window().activateWindow();
        window().view()->setFocus();
        // Nothing that is not in the file.
        window().openFiles({sample("paracetamol.magres")});
        QVERIFY(!window().isWindowModified());
        QVERIFY(createSpectrum() && window().isWindowModified());
    }

    void cleanupTestCase() { m_host.reset(); }

    void init()
    {
        scene().removeAll();
        QSettings().clear();
        window().openFiles({sample("paracetamol.magres")});
        QCOMPARE(scene().documentItems().size(), 2);
    }

    void cleanup() { QCOMPARE(m_dialogs.missing(), QStringList()); }

    void tabWalksOverThePage()
    {
        NmrItem *spectrum = createSpectrum();
        QVERIFY(spectrum);
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
            QVERIFY(action(menu, u"Create spectrum..."_s));
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
        drop(sample("paracetamol-13C.csv"));
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
        trigger(spectrum, u"Edit Spectrum..."_s, parametersTitle);
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

    void activeSpectrumIsChosenFromTheMenu()
    {
        NmrItem *spectrum = createSpectrum();
        window().openFiles({sample("paracetamol-13C.csv")});
        NmrData *data = spectrum->nmrData();
        const QList<QUuid> ids = data->entryIds();
        QCOMPARE(ids.size(), 2);
        QCOMPARE(data->activeEntryId(), ids[0]);
        const auto submenu = [this](const QString &title) {
            return filled(action(shown(u"Spectrum"_s), title)->menu());
        };
        QMenu *choice = submenu(u"Active Spectrum"_s);
        QVERIFY(action(choice, u"paracetamol, simulated"_s)->isChecked());
        action(choice, u"paracetamol-13C.csv"_s)->trigger();
        QCOMPARE(data->activeEntryId(), ids[1]);
        QVERIFY(spectrum->plot()->content()); // the curve stays on show
        shortcut(Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(data->activeEntryId(), ids[0]);

        action(submenu(u"Remove Spectrum"_s), u"paracetamol, simulated"_s)->trigger();
        QCOMPARE(data->entryIds(), QList<QUuid>{ids[1]});
        QVERIFY(spectrum->plot()->content()); // sticks alone
        QVERIFY(!submenu(u"Remove Spectrum"_s)->actions().first()->isEnabled());
        scene().undoStack()->undo();
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

    void menusOfTheBarAreThoseOfTheCurrentItems()
    {
        QMenu *menu = action(window().menuBar(), u"Spectrum"_s)->menu();
        QVERIFY(!action(filled(menu), u"Edit Peaks"_s));
        NmrItem *first = createSpectrum();
        NmrItem *second = createSpectrum();
        QVERIFY(first && second && first != second);
        for (NmrItem *item : {first, second}) {
            scene().setActiveItem(item);
            scene().setActiveItem(table()); // which leaves the spectrum the current one
            QVERIFY(action(filled(menu), u"Edit Peaks"_s));
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
        const int steps = scene().undoStack()->count();
        // Where it falls it cannot go ...
        const QPointF middle = spectrum->mapToScene(spectrum->contentRect().center());
        window().view()->ensureVisible(spectrum, 0, 0);
        const QString text = told(u"paracetamol-1H-difdup.jdx cannot be added"_s, [&] {
            drop(sample("paracetamol-1H-difdup.jdx"),
                 window().view()->viewport()->mapTo(&window(), window().view()->mapFromScene(middle)));
            QTRY_VERIFY(m_dialogs.missing().isEmpty());
        });
        QVERIFY2(text.contains(u"spectrum of 1H"), qPrintable(text));
        QCOMPARE(spectrum->nmrData()->entryIds().size(), 1);
        QCOMPARE(scene().undoStack()->count(), steps);
        // ... and opened without a place it has a plot of its own.
        window().openFiles({sample("paracetamol-1H-difdup.jdx")});
        QVERIFY(scene().currentNmrItem() != spectrum);
        QCOMPARE(spectrum->nmrData()->entryIds().size(), 1);
    }

    /// No box is in the way: what is doubtful stands under the title until it was read, and can be had back.
    void doubtsAreNotes()
    {
        const QTemporaryDir directory;
        QFile whole(sample("acetic-acid.magres"));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QByteArray text = whole.readAll().replace("</magres>", "");
        QStringList files;
        for (const char *name : {"a.magres", "b.magres"}) {
            files.append(directory.filePath(QLatin1String(name)));
            QFile cut(files.last());
            QVERIFY(cut.open(QIODevice::WriteOnly) && cut.write(text) == text.size());
        }
        window().openFiles(files);
        QCOMPARE(scene().documentItems().size(), 6);
        QVERIFY(window().statusBar()->currentMessage().contains(u"2 file"));
        int told = 0;
        for (const DocumentItem *item : scene().documentItems())
            told += item->doubts().join(u'\n').contains(u"is not closed") && item->notes().size() == 1;
        QCOMPARE(told, 2);

        const QString path = directory.filePath(u"kept.magresdoc"_s);
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
        scene().undoStack()->undo();
        QVERIFY(last->notes().size() == 1 && !window().document()->isModified());
    }

    /// Positions in Hz lie nowhere until somebody says what they are divided by.
    void hertzAreAskedFor()
    {
        const QTemporaryDir directory;
        const auto write = [&](const char *name, const QByteArray &text) {
            QFile file(directory.filePath(QLatin1String(name)));
            if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
                qFatal("cannot write");
            return file.fileName();
        };
        QByteArray points = "Hz,intensity\n";
        for (int i = 0; i < 100; ++i)
            points += QByteArray::number(10000 - 100 * i) + ',' + (i == 50 ? "100" : i % 2 ? "1" : "0") + '\n';
        const QString spectrum = write("unknown.csv", points), list = write("si-29Si.csv", "kHz\n-8.5\n-9.25\n");
        const bool modified = window().document()->isModified();
        const int steps = scene().undoStack()->count();

        m_dialogs.expect(u"Frequency of the spectrum"_s, [](QDialog *dialog) { dialog->reject(); });
        window().openFiles({spectrum});
        QVERIFY(scene().documentItems().size() == 2 && scene().undoStack()->count() == steps);
        QCOMPARE(window().document()->isModified(), modified);
        QVERIFY(window().statusBar()->currentMessage().contains(u"was not opened"));

        // One is left out, the next one is there: several files ask one by one.
        const auto answer = [this](const QString &nucleus, double proton, const QString &range) {
            m_dialogs.expect(u"Frequency of the spectrum"_s, [=](QDialog *dialog) {
                auto *box = dialog->findChild<QComboBox *>(u"nucleus"_s);
                auto *ok = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
                QCOMPARE(ok->isEnabled(), proton == 0);
                QVERIFY(!box->currentText().isEmpty());
                if (!nucleus.isEmpty())
                    box->setCurrentText(nucleus);
                if (proton > 0)
                    dialog->findChild<QDoubleSpinBox *>(u"protonFrequency"_s)->setValue(proton);
                QCOMPARE(dialog->findChild<QLabel *>(u"range"_s)->text(), range);
                ok->click();
            });
        };
        m_dialogs.expect(u"Frequency of the spectrum"_s, [](QDialog *dialog) { dialog->reject(); });
        answer(u"13C"_s, 400, u"The positions go from 99.42 to 0.99 ppm."_s);
        window().openFiles({spectrum, spectrum});
        QCOMPARE(scene().documentItems().size(), 3);
        const SpectrumAxis axis = scene().currentNmrItem()->nmrData()->shownSpectrum().axes.at(0);
        // 13C resonates at 25.145020 % of 1H.
        QVERIFY(axis.nucleus() == u"¹³C" && std::abs(axis.ppm(50) - 5000 / 100.58008) < 1e-3);
        QVERIFY(std::abs(axis.frequency - 100.58008) < 1e-5);

        // The file's name and the last answer make the proposal; kHz are not Hz.
        answer({}, 0, u"The positions go from -106.96 to -116.40 ppm."_s);
        window().openFiles({list});
        QCOMPARE(scene().documentItems().size(), 4);
        const QList<SpectrumPeak> peaks = scene().currentNmrItem()->nmrData()->stack().entries[0].spectrum.peaks;
        QVERIFY(peaks.size() == 2 && std::abs(peaks[0].f2 + 8500 / (4 * 19.867187)) < 1e-3);

        // Both dimensions are kept.
        const QString plane = write("plane.csv", "F2 (Hz),F1 (Hz),height\n4000,12000,1\n2000,3000,2\n");
        m_dialogs.expect(u"Frequency of the spectrum"_s, [](QDialog *dialog) {
            dialog->findChild<QComboBox *>(u"nucleus"_s)->setCurrentText(u"1H"_s);
            dialog->findChild<QComboBox *>(u"nucleusF1"_s)->setCurrentText(u"13C"_s);
            dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        window().openFiles({plane});
        const SpectrumPeak cross = scene().currentNmrItem()->nmrData()->stack().entries[0].spectrum.peaks.value(0);
        QVERIFY(std::abs(cross.f2 - 10) < 1e-6 && std::abs(cross.f1 - 12000 / 100.58008) < 1e-3);
        scene().destroy(scene().currentNmrItem());

        // A calculation makes the proposal, and is not taken for granted: 13C beside 600 MHz, as it is simulated.
        NmrItem *simulated = createSpectrum();
        answer(u"1H"_s, 0, u"The positions go from 16.67 to 0.17 ppm."_s);
        window().openFiles({spectrum});
        QCOMPARE(simulated->nmrData()->entryIds().size(), 1);
        answer({}, 0, u"The positions go from 66.28 to 0.66 ppm."_s);
        window().openFiles({spectrum});
        QCOMPARE(simulated->nmrData()->entryIds().size(), 2);
    }

    void oddPeaksAreDrawnAndReported()
    {
        NmrItem *spectrum = createSpectrum();
        QVariantList peaks;
        for (const SpectrumPeak &peak : spectrum->nmrData()->shownSpectrum().peaks)
            peaks.append(QVariantMap{{u"Pos"_s, QVariant::fromValue(DoubleVector{peak.f2 + 1})}});
        const QUuid id = spectrum->nmrData()->addEntry({{u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}}}}, {});
        QVERIFY(spectrum->plot()->content());
        QCOMPARE(trigger(spectrum, u"RMSD"_s, u"RMSD"_s), u"RMSD: 1 ppm"_s);
        spectrum->nmrData()->insertSpectrum(id, {});
        QVERIFY(trigger(spectrum, u"RMSD"_s, u"Error"_s).contains(u"and the experimental spectrum has 0"));
    }

private:
    WMainWindow &window() { return m_host->window(); }
    MainScene &scene() { return m_host->scene(); }
    TableItem *table() { return scene().currentTableItem(); }
    MoleculeItem *molecule() { return qobject_cast<MoleculeItem *>(table()->linkedItems().value(0)); }
    QMenu *shown(const QString &title) { return filled(action(window().menuBar(), title)->menu()); }

    /// Accepts the dialog of this title that an action opens; gives the text, if it is a message box.
    QString told(const QString &title, const std::function<void()> &act)
    {
        QString text;
        m_dialogs.expect(title, [&text](QDialog *dialog) {
            if (auto *box = qobject_cast<QMessageBox *>(dialog))
                text = box->text();
            dialog->accept();
        });
        act();
        return text;
    }

    /// Through the plug-in's dialog with what it offers: carbon in one dimension.
    NmrItem *createSpectrum()
    {
        told(parametersTitle, [this] { action(table()->contextMenu(), u"Create spectrum..."_s)->trigger(); });
        return scene().currentNmrItem();
    }

    /// A command of the plug-in, and what it tells.
    QString trigger(NmrItem *item, const QString &command, const QString &title)
    {
        scene().setActiveItem(item);
        return told(title, [&] { action(action(item->contextMenu(), u"MAGRES"_s)->menu(), command)->trigger(); });
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

    QTemporaryDir m_settings;
    std::unique_ptr<WindowApplication> m_host;
    ModalAnswers m_dialogs;
};

QTEST_MAIN(TestWindow)
#include "tst_window.moc"
