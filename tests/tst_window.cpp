// SPDX-License-Identifier: BSD-3-Clause
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/MainView.h"
#include "host/PluginManager.h"
#include "host/WMainWindow.h"
#include "items/AtomSelection.h"
#include "items/MoleculeItem.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"
#include "items/NmrPlot.h"
#include "items/StackedTraces.h"
#include "items/TableItem.h"
#include "items/TableModel.h"

#include <QApplication>
#include <QDialog>
#include <QDropEvent>
#include <QItemSelectionModel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

using namespace Qt::StringLiterals;

namespace {

QString sample(const char *name)
{
    return QStringLiteral(SAMPLES "/") + QLatin1String(name);
}

/// Does something with each modal dialog that opens, as a user would.
class Answer : public QObject {
public:
    using Action = std::function<void(QDialog *)>;

    explicit Answer(Action action = [](QDialog *dialog) { dialog->accept(); }) : m_action(std::move(action))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!dialog || dialog == m_last)
                return;
            m_last = dialog;
            if (auto *box = qobject_cast<QMessageBox *>(dialog))
                texts.append(box->text());
            m_action(dialog);
        });
        m_timer.start(10);
    }

    QStringList texts;

private:
    Action m_action;
    QTimer m_timer;
    QPointer<QDialog> m_last;
};

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
        m_host = std::make_unique<HostApplication>(false);
        m_host->loadPlugins(QStringLiteral(PLUGIN_DIRECTORY));
        QVERIFY(!m_host->plugins().plugins().isEmpty());
        window().show();
        QVERIFY(QTest::qWaitForWindowExposed(&window()));
        window().activateWindow();
        window().view()->setFocus();
    }

    void cleanupTestCase() { m_host.reset(); }

    void init()
    {
        scene().undoStack()->clear();
        for (DocumentItem *item : scene().documentItems()) {
            scene().detach(item);
            delete item;
        }
        QSettings().clear();
        window().openFiles({sample("paracetamol.magres")});
        QCOMPARE(scene().documentItems().size(), 2);
    }

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

    void keysOpenTheMenuOfTheActiveItem_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("Return") << int(Qt::Key_Return) << int(Qt::NoModifier);
        QTest::newRow("Enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier);
        QTest::newRow("menu key") << int(Qt::Key_Menu) << int(Qt::NoModifier);
        QTest::newRow("Shift+F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier);
    }
    void keysOpenTheMenuOfTheActiveItem()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        scene().setActiveItem(table());
        QTest::keyClick(window().view(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QVERIFY(action(menu, u"Create spectrum..."_s));
        QVERIFY(menu->activeAction() && menu->activeAction()->isEnabled());
        menu->close();
    }

    void rowsAreChosenByArrowKeys()
    {
        scene().setActiveItem(table());
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(window().view(), Qt::Key_Down, i == 2 ? Qt::ShiftModifier : Qt::NoModifier);
        const QModelIndexList rows = table()->view()->selectionModel()->selectedRows();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(molecule()->selectedAtoms().size(), 2);
    }

    void selectionGoesBothWays()
    {
        QItemSelectionModel *selection = table()->view()->selectionModel();
        const auto select = [&](int row, QItemSelectionModel::SelectionFlags flags) {
            selection->select(table()->model()->index(row, 0), flags | QItemSelectionModel::Rows);
        };
        select(3, QItemSelectionModel::ClearAndSelect);
        QCOMPARE(molecule()->selectedAtoms(), QSet<int>{3});
        select(7, QItemSelectionModel::Toggle);
        QCOMPARE(molecule()->selectedAtoms(), (QSet<int>{3, 7}));
        select(3, QItemSelectionModel::Toggle);
        QCOMPARE(molecule()->selectedAtoms(), QSet<int>{7});

        const auto light = [&](const QSet<int> &atoms) {
            molecule()->setSelectedAtoms(atoms);
            molecule()->sendMessage(AtomSelection::toMessage(atoms));
        };
        light({2, 5});
        QSet<int> rows;
        for (const QModelIndex &index : selection->selectedRows())
            rows.insert(index.row());
        QCOMPARE(rows, (QSet<int>{2, 5}));
        QCOMPARE(molecule()->selectedAtoms(), (QSet<int>{2, 5}));
        light({});
        QVERIFY(selection->selectedRows().isEmpty());
    }

    void menuBarOffersTheItemsMenus()
    {
        QVERIFY(!action(shown(u"Spectrum"_s), u"MAGRES"_s));
        NmrItem *spectrum = createSpectrum();
        scene().setActiveItem(table());
        QMenu *menu = shown(u"Spectrum"_s);
        QCOMPARE(scene().activeItem(), spectrum);
        QMenu *commands = action(menu, u"MAGRES"_s)->menu();
        for (const char *name : {"Edit Spectrum...", "Auto reference", "RMSD"})
            QVERIFY2(action(commands, QLatin1String(name)), name);
        QVERIFY(action(menu, u"Add Experimental Spectrum..."_s));
        QVERIFY(action(shown(u"Table"_s), u"Create spectrum..."_s));
        QCOMPARE(scene().activeItem(), table());
    }

    void fromFileToReferencedSpectrum()
    {
        NmrItem *spectrum = createSpectrum();
        NmrData *data = spectrum->nmrData();
        drop(sample("paracetamol-13C.csv"));
        QTRY_COMPARE(data->entryIds().size(), 2);
        const QUuid simulated = data->activeEntryId();
        const double before = data->spectrum(simulated).peaks.first().f2;

        // Both spectra show, and after the reference has moved the peaks do that lie beyond the curve.
        const auto visible = [&](double ppm) { return spectrum->plot()->content()->ranges().first().contains(ppm); };
        QVERIFY(visible(170) && visible(before));
        const QStringList report = trigger(spectrum, u"Auto reference"_s);
        QCOMPARE(report.size(), 1);
        QVERIFY2(report.first().startsWith(u"Reference is changed from 100 ppm to 172.457 ppm"), qPrintable(report[0]));
        const double after = data->spectrum(simulated).peaks.first().f2;
        QVERIFY(std::abs(after - before - 72.457) < 1e-3);
        QVERIFY(visible(170) && visible(after));

        // Editing makes the curve anew, where the peaks are now.
        trigger(spectrum, u"Edit Spectrum..."_s);
        const SpectrumAxis edited = data->spectrum(simulated).axes.first();
        QVERIFY(edited.first > after && edited.last() < 24);

        // Everything can be taken back and done again: edit, reference, experiment, spectrum.
        QUndoStack *stack = scene().undoStack();
        QCOMPARE(stack->count(), 4);
        stack->undo();
        stack->undo();
        QCOMPARE(data->spectrum(simulated).peaks.first().f2, before);
        QCOMPARE(data->entryOrigParams(simulated, u"magres"_s).value(u"ref"_s).toMap().value(u"13C"_s),
                 QVariant(100.0));
        stack->undo();
        QCOMPARE(data->entryIds(), QList<QUuid>{simulated});
        stack->undo();
        QVERIFY(!scene().currentNmrItem());
        for (int i = 0; i < 3; ++i)
            stack->redo();
        QCOMPARE(scene().currentNmrItem(), spectrum);
        QCOMPARE(data->spectrum(simulated).peaks.first().f2, after);
    }

    void activeSpectrumIsChosenFromTheMenu()
    {
        NmrItem *spectrum = createSpectrum();
        window().openFiles({sample("paracetamol-13C.csv")});
        NmrData *data = spectrum->nmrData();
        const QList<QUuid> ids = data->entryIds();
        QCOMPARE(ids.size(), 2);
        QCOMPARE(data->activeEntryId(), ids[0]);

        QMenu *choice = filled(action(shown(u"Spectrum"_s), u"Active Spectrum"_s)->menu());
        QVERIFY(action(choice, u"Simulated"_s)->isChecked());
        action(choice, u"paracetamol-13C.csv"_s)->trigger();
        QCOMPARE(data->activeEntryId(), ids[1]);
        QVERIFY(spectrum->plot()->content()); // the curve stays on show
        shortcut(Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(data->activeEntryId(), ids[0]);

        action(filled(action(shown(u"Spectrum"_s), u"Remove Spectrum"_s)->menu()), u"Simulated"_s)->trigger();
        QCOMPARE(data->entryIds(), QList<QUuid>{ids[1]});
        QVERIFY(spectrum->plot()->content()); // sticks alone
        QVERIFY(!filled(action(shown(u"Spectrum"_s), u"Remove Spectrum"_s)->menu())->actions().first()->isEnabled());
        scene().undoStack()->undo();
        QCOMPARE(data->entryIds(), ids);
        QCOMPARE(data->activeEntryId(), ids[0]);
    }

    void zoomIsKeptWhenTheSpectrumChanges()
    {
        NmrItem *spectrum = createSpectrum();
        const QUuid entry = spectrum->nmrData()->activeEntryId();
        spectrum->plot()->content()->setRanges({QCPRange(40, 60)});
        spectrum->nmrData()->insertSpectrum(entry, spectrum->nmrData()->entry(entry));
        QCOMPARE(spectrum->plot()->content()->ranges().first(), QCPRange(40, 60));
    }

    void experimentsThatCannotBeAddedChangeNothing()
    {
        const Answer answer;
        window().openFiles({sample("paracetamol-13C.csv")});
        QCOMPARE(answer.texts.size(), 1);
        QVERIFY2(answer.texts.last().contains(u"simulate one first"), qPrintable(answer.texts.last()));
        NmrItem *spectrum = createSpectrum();
        const int steps = scene().undoStack()->count();
        window().openFiles({sample("paracetamol-1H-difdup.jdx")});
        QVERIFY2(answer.texts.last().contains(u"spectrum of 1H"), qPrintable(answer.texts.last()));
        QCOMPARE(spectrum->nmrData()->entryIds().size(), 1);
        QCOMPARE(scene().undoStack()->count(), steps);
    }

    void peaksWithOnePositionAreDrawnAndReported()
    {
        NmrItem *spectrum = createSpectrum();
        QVariantList peaks;
        for (const SpectrumPeak &peak : spectrum->nmrData()->shownSpectrum().peaks)
            peaks.append(QVariantMap{{u"Pos"_s, QVariant::fromValue(DoubleVector{peak.f2 + 1})}});
        spectrum->nmrData()->addEntry({{u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}}}}, u"one position"_s);
        QVERIFY(spectrum->plot()->content());
        QCOMPARE(trigger(spectrum, u"RMSD"_s), QStringList{u"RMSD: 1 ppm"_s});
        spectrum->nmrData()->insertSpectrum(spectrum->nmrData()->entryIds().last(), {});
        QVERIFY(trigger(spectrum, u"RMSD"_s).first().contains(u"and the experimental spectrum has 0"));
    }

    void deletedItemsComeBack()
    {
        TableItem *item = table();
        scene().setActiveItem(item);
        shortcut(Qt::Key_Delete);
        QVERIFY(!scene().currentTableItem());
        scene().undoStack()->undo();
        QCOMPARE(scene().currentTableItem(), item);
        QCOMPARE(scene().activeItem(), item);
    }

    void itemsGoWhileTheirDialogIsOpen_data()
    {
        QTest::addColumn<bool>("fromTable");
        QTest::newRow("table") << true;
        QTest::newRow("spectrum") << false;
    }
    void itemsGoWhileTheirDialogIsOpen()
    {
        QFETCH(bool, fromTable);
        QPointer<NmrItem> spectrum = fromTable ? nullptr : createSpectrum();
        QPointer<DocumentItem> item = fromTable ? static_cast<DocumentItem *>(table()) : spectrum;
        const qsizetype items = scene().documentItems().size();
        const Answer answer([&](QDialog *dialog) {
            delete item;
            dialog->accept();
        });
        if (fromTable)
            action(table()->contextMenu(), u"Create spectrum..."_s)->trigger();
        else
            trigger(spectrum, u"Edit Spectrum..."_s);
        QVERIFY(!item);
        // A table without its item still knows its data: the spectrum is made, or the user is told why not.
        QVERIFY(scene().documentItems().size() == items || answer.texts.size() == 1);
    }

private:
    WMainWindow &window() { return m_host->window(); }
    MainScene &scene() { return m_host->scene(); }

    template <typename Item>
    Item *first()
    {
        for (DocumentItem *item : scene().documentItems()) {
            if (auto *found = qobject_cast<Item *>(item))
                return found;
        }
        return nullptr;
    }
    MoleculeItem *molecule() { return first<MoleculeItem>(); }
    TableItem *table() { return first<TableItem>(); }

    /// Mnemonics and shortcuts aside; null when there is none.
    static QAction *action(const QMenu *menu, const QString &text)
    {
        for (QAction *found : menu->actions()) {
            if (found->text().remove(u'&') == text)
                return found;
        }
        return nullptr;
    }

    static QMenu *filled(QMenu *menu)
    {
        Q_EMIT menu->aboutToShow();
        return menu;
    }

    QMenu *shown(const QString &title)
    {
        for (QAction *found : window().menuBar()->actions()) {
            if (found->text().remove(u'&') == title)
                return filled(found->menu());
        }
        return nullptr;
    }

    /// Through the plug-in's dialog with what it offers: carbon in one dimension.
    NmrItem *createSpectrum()
    {
        const Answer answer;
        action(table()->contextMenu(), u"Create spectrum..."_s)->trigger();
        return scene().currentNmrItem();
    }

    /// A command of the plug-in; gives the texts of the message boxes.
    QStringList trigger(NmrItem *item, const QString &command)
    {
        const Answer answer;
        scene().setActiveItem(item);
        action(action(item->contextMenu(), u"MAGRES"_s)->menu(), command)->trigger();
        return answer.texts;
    }

    /// Shortcuts need the active window, which a dialog may have been.
    void shortcut(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window()));
        QTest::keyClick(&window(), key, modifiers);
    }

    void drop(const QString &path)
    {
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &enter);
        QDropEvent event(QPointF(3, 3), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &event);
    }

    QTemporaryDir m_settings;
    std::unique_ptr<HostApplication> m_host;
};

QTEST_MAIN(TestWindow)
#include "tst_window.moc"
