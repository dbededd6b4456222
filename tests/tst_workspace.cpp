// SPDX-License-Identifier: BSD-3-Clause
#include "ItemData.h"
#include "Shapes.h"
#include "WindowTest.h"

#include "document/PageExport.h"
#include "document/UndoCommands.h"
#include "host/PageLayout.h"
#include "window/ContentsDock.h"
#include "window/RecentFiles.h"
#include "window/SpectrumCommands.h"

/// The window as a place to work in: what is where, what it says, and that nothing of it is lost.
class TestWorkspace : public WindowTest {
    Q_OBJECT

    /// The note of the current plot that begins or goes on so; -1 when there is none.
    qsizetype note(QStringView part)
    {
        const QList<ItemNote> &notes = plot()->notes();
        for (qsizetype i = 0; i < notes.size(); ++i)
            if (notes[i].text.contains(part))
                return i;
        return -1;
    }

    /// With the mouse, where the note offers it.
    void clickNote(qsizetype index)
    {
        const QRectF action = plot()->noteBar()->actionRect(index);
        QGraphicsView *view = window().view();
        view->ensureVisible(plot(), 0, 0);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->mapFromScene(plot()->noteBar()->mapToScene(action.center())));
    }

    QStringList contents()
    {
        QCoreApplication::processEvents();
        QStringList lines;
        for (QTreeWidgetItemIterator it(window().contents()->tree()); *it; ++it)
            lines.append(QString((*it)->parent() ? u"  "_s : QString()) + (*it)->text(0));
        return lines;
    }

private Q_SLOTS:
    void init() { start(); }

    void emptyWindowSaysWhatToDo()
    {
        auto *hints = window().findChild<QWidget *>(u"startHints"_s);
        QVERIFY(hints && hints->isVisible());
        RecentFiles recent(nullptr);
        for (int i = 0; i < 12; ++i)
            recent.add(m_files.write("r&" + QByteArray::number(i) + ".csv", "x"));
        Q_EMIT recent.aboutToShow();
        QCOMPARE(entriesOf(&recent).remove(m_files.path("") + u'/'),
                 u"&1  r&&11.csv; &2  r&&10.csv; &3  r&&9.csv; &4  r&&8.csv; &5  r&&7.csv; &6  r&&6.csv; &7  r&&5.csv; "
                 "&8  r&&4.csv; &9  r&&3.csv; r&&2.csv; /; &Clear List"_s);
        Q_EMIT scene().itemsChanged(); // the empty window looks at the list anew
        QCoreApplication::processEvents();
        QCOMPARE(linesOf(hints).mid(1).join(u"; "_s),
                 u"<Open...>; <Recent: r&&11.csv>; <Recent: r&&10.csv>; <Recent: r&&9.csv>; <Recent: r&&8.csv>; "
                 "<Sample: paracetamol.magres>; <Sample: paracetamol-13C-points.csv>"_s);
        recent.actions().constLast()->trigger();
        QVERIFY(RecentFiles::files().isEmpty());
        const QAction *create = command(u"Create Spectrum"_s);
        for (QAbstractButton *button : hints->findChildren<QAbstractButton *>())
            if (button->text() == u"Sample: paracetamol.magres")
                button->click();
        QCOMPARE(scene().documentItems().size(), 2);
        QVERIFY(!hints->isVisible() && create->isEnabled() && !create->toolTip().contains(u"Not now"));
        QVERIFY(window().windowTitle().startsWith(u"paracetamol[*]") && !window().isWindowModified());
        // Beside the structure, never where measurements lie.
        QCOMPARE(QFileInfo(window().document()->proposedPath(u"pdf"_s)).fileName(), u"paracetamol.pdf"_s);
    }

    void itemsFillTheWindow()
    {
        open(u"paracetamol.magres"_s);
        createSpectrum();
        const auto *table = scene().currentTableItem();
        const auto *molecule = table->linkedItems().constFirst();
        for (const QSize &size : {QSize(1280, 720), QSize(1600, 1000)}) {
            window().resize(size);
            QCoreApplication::processEvents();
            const double width = window().view()->viewport()->width();
            QVERIFY(molecule->geometry().left() < 10 && table->geometry().right() > width - 10);
            QVERIFY(molecule->geometry().right() < table->geometry().left());
            QCOMPARE(molecule->geometry().height(), table->geometry().height());
            QVERIFY(plot()->geometry().width() > width - 20 && plot()->geometry().top() > table->geometry().bottom());
            QVERIFY(plot()->geometry().bottom() <= window().view()->viewport()->height());
        }
        // By hand, and what follows the window stays out of its way of being put there.
        const QRectF before = plot()->geometry();
        const QRectF put = before.adjusted(40, 30, -80, 0);
        plot()->setGeometry(put);
        Q_EMIT plot()->geometryEdited(before, put);
        window().resize(1300, 800);
        QCoreApplication::processEvents();
        QCOMPARE(plot()->geometry(), put);
        history().undo();
        QVERIFY(plot()->geometry().width() > window().view()->viewport()->width() - 20);

        // The page is as it was, whatever the window is.
        const QRectF onPage = scene().placeOf(*plot()).page;
        QVERIFY(PageLayout::page(0).contains(onPage));
        entry(menu(u"View"_s), u"Page Preview"_s)->setChecked(true);
        QCOMPARE(plot()->geometry(), onPage);
        QVERIFY(!plot()->notes().isEmpty() && !plot()->noteBar()->isVisible());
        entry(menu(u"View"_s), u"Page Preview"_s)->setChecked(false);
        QVERIFY(plot()->noteBar()->isVisible());
    }

    void notesSayWhatIsNotToBeBelieved()
    {
        open(u"paracetamol.magres"_s);
        createSpectrum();
        QVERIFY(plot()->title() == u"\u00b9\u00b3C of paracetamol, simulated" && note(u"points a line width") < 0);
        const qsizetype reference = note(u"The reference of \u00b9\u00b3C is a placeholder, 100 ppm");
        QVERIFY(reference >= 0);
        QCOMPARE(plot()->notes()[reference].action, u"Set Reference..."_s);

        // Too few points for so narrow lines; the note's own number mends it.
        accept(u"MAGRES parameters"_s, {{"fSpLwF2", 1.0}});
        clickNote(reference);
        qsizetype narrow = note(u"points a line width, so that lines are missing");
        QVERIFY(narrow >= 0);
        const QString text = plot()->notes()[narrow].text;
        const double width = QRegularExpression(u"a line width of ([0-9.]+) Hz"_s).match(text).captured(1).toDouble();
        QVERIFY2(width > 1, qPrintable(text));
        accept(u"MAGRES parameters"_s, {{"fSpLwF2", width}});
        clickNote(narrow);
        QVERIFY(note(u"points a line width") < 0);

        // A measurement whose plot becomes one of another nucleus is told, and one click and one undo move it.
        open(u"paracetamol-13C-affn.jdx"_s);
        accept(u"MAGRES parameters"_s, {{"fCbNucF2", u"1H"_s}});
        window().findChild<SpectrumCommands *>()->edit();
        const qsizetype other = note(u"paracetamol-13C-affn.jdx is a spectrum of other nuclei or dimensions");
        QVERIFY(other == 0 && plot()->notes()[note(u"placeholder")].action == u"Set Reference...");
        QVERIFY(window().findChild<SpectrumCommands *>()->whyNoAutoReference().contains(u"of other nuclei"));
        const QByteArray mixed = state();
        const auto items = scene().documentItems().size();
        const NmrItem *simulated = plot();
        clickNote(other);
        QCOMPARE(scene().documentItems().size(), items + 1);
        QCOMPARE(simulated->nmrData()->entryIds().size(), 1);
        const NmrData &own = *scene().currentNmrItem()->nmrData();
        QCOMPARE(own.entryName(own.activeEntryId()), u"paracetamol-13C-affn.jdx"_s);
        history().undo();
        QVERIFY(state() == mixed);
        history().undo();
        history().undo();

        // Auto reference leaves lines outside of the range, which one click mends and one undo brings back.
        open(u"paracetamol-13C.csv"_s);
        QCOMPARE(plot()->notes()[note(u"placeholder")].action, u"Auto reference"_s);
        accept(u"New reference"_s);
        clickNote(note(u"placeholder"));
        QVERIFY(note(u"placeholder") < 0);
        const qsizetype beyond = note(u"peaks lie outside of the computed range");
        QVERIFY(beyond >= 0 && plot()->notes()[beyond].action == u"Fit Range");
        const QByteArray before = state();
        // The reference that was fitted to this measurement is no start for other crystals.
        const auto settings = [] {
            QSettings all;
            QStringList texts;
            for (const QString &key : all.allKeys())
                if (key.startsWith(u"magresPlugin/"))
                    texts.append(key + u'=' + QDebug::toString(all.value(key)));
            return texts;
        };
        const QStringList kept = settings();
        clickNote(beyond);
        QVERIFY(note(u"outside of the computed range") < 0);
        QVERIFY(!kept.isEmpty());
        QCOMPARE(settings(), kept);
        QCOMPARE(history().undoText(), u"Fit Range"_s);
        history().undo();
        QVERIFY(state() == before);

        // In pictures only when they are wanted.
        const auto page = [this](PageExport::Notes notes) {
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            PageExport::writePage(scene(), buffer, PageExport::Format::Svg, notes);
            return buffer.data();
        };
        QVERIFY(!page(PageExport::Notes::Hidden).contains("outside of"));
        QVERIFY(page(PageExport::Notes::Shown).contains("outside of"));
        QVERIFY(plot()->noteBar()->isVisible() && scene().layout() == MainScene::Layout::Workspace);
    }

    void contentsAreListed()
    {
        open(u"paracetamol.magres"_s);
        QTreeWidget *tree = window().contents()->tree();
        const auto cell = [&] {
            contents();
            return tree->findItems(u"Unit cell"_s, Qt::MatchStartsWith | Qt::MatchRecursive).value(0);
        };
        tree->setCurrentItem(cell());
        const DocumentItem *molecule = scene().item(cell()->data(0, Qt::UserRole).toUuid());
        for (const auto &[check, isVisible] : {std::pair(Qt::Unchecked, false), std::pair(Qt::Checked, true)}) {
            cell()->setCheckState(0, check);
            QCOMPARE(molecule->isVisible(), isVisible);
        }
        m_dialogs.expect(u"Rename"_s, [&](QDialog *dialog) {
            Q_EMIT scene().itemsChanged();
            contents(); // is filled anew under the dialog
            qobject_cast<QInputDialog *>(dialog)->setTextValue(u"form I"_s);
            dialog->accept();
        });
        QTest::keyClick(tree, Qt::Key_F2);
        QCOMPARE(molecule->title(), u"form I"_s);
        QVERIFY(contents().contains(u"  form I"_s));
        history().undo();
        QCOMPARE(molecule->title(), u"paracetamol – Unit cell: C₃₂H₃₆N₄O₈"_s);
        tree->setCurrentItem(cell());
        QTest::keyClick(tree, Qt::Key_Delete);
        QVERIFY(!cell() && !scene().isOnPage(molecule));
        history().undo();
        QVERIFY(cell());
    }

    void contentsTellEverything()
    {
        window().openFiles({sample(u"berlinite.magres"_s), sample(u"paracetamol.magres"_s)});
        createSpectrum();
        window().openFiles({sample(u"paracetamol-13C-points.csv"_s), sample(u"paracetamol-1H.csv"_s)});
        contents();
        QStringList lines, tips;
        QTreeWidget *tree = window().contents()->tree();
        for (QTreeWidgetItemIterator it(tree); *it; ++it) {
            const QVariant box = (*it)->data(0, Qt::CheckStateRole);
            lines.append(((*it)->isExpanded() ? u"v "_s : QString())
                         + (box.isValid() ? box.toInt() ? u"[x] "_s : u"[ ] "_s : QString())
                         + ((*it)->flags() & Qt::ItemIsSelectable ? QString() : u"- "_s) + (*it)->text(0));
            tips.append((*it)->toolTip(0).replace(u'\n', u'|'));
        }
        QCOMPARE(lines.join(u"; "_s),
                 u"v berlinite; - Al3O12P3, Z = 3; - a, b, c = 4.94, 4.94, 10.94 Å; - α, β, γ = 90.0°, 90.0°, "
                 "120.0°; [x] Unit cell: Al₃O₁₂P₃; [x] MAGRES Table; v paracetamol; - C32H36N4O8, Z = 4; - a, b, c "
                 "= 7.02, 8.22, 12.73 Å; - α, β, γ = 90.0°, 95.6°, 90.0°; [x] Unit cell: C₃₂H₃₆N₄O₈; [x] MAGRES "
                 "Table; ¹³C, simulated; v paracetamol-13C-points.csv; ¹³C, 150.9 MHz; v paracetamol-1H.csv; "
                 "peak list"_s);
        QCOMPARE(tips[0], u"Al3O12P3, Z = 3|a, b, c = 4.94, 4.94, 10.94 Å|α, β, γ = 90.0°, 90.0°, 120.0°"_s);
        QCOMPARE(tips[13],
                 u"paracetamol-13C-points.csv|¹³C, 150.9 MHz|32 peak(s)|in the plot \"¹³C of paracetamol, "
                 "simulated\"; can be dragged onto another one|As it was read:|– Read as a spectrum: 1024 evenly "
                 "spaced positions."_s);
        QCOMPARE(tips[15],
                 u"paracetamol-1H.csv|28 peak(s)|in the plot \"paracetamol-1H.csv\"; can be dragged onto another "
                 "one|As it was read:|– Read as a list of 28 peaks: a spectrum has 32 rows at least."_s);
        // The menu does what the keys do.
        const auto menuOf = [&](const QString &text) {
            tree->setCurrentItem(nullptr);
            const QTreeWidgetItem *node = tree->findItems(text, Qt::MatchStartsWith | Qt::MatchRecursive).value(0);
            tree->scrollToItem(node);
            Q_EMIT tree->customContextMenuRequested(tree->visualItemRect(node).center());
            return qobject_cast<QMenu *>(QApplication::activePopupWidget());
        };
        const auto choose = [&](const QString &text, int entry) {
            const QPointer<QMenu> menu = menuOf(text);
            menu->actions()[entry]->trigger();
            if (menu) // newer Qt closes it, and it goes when it is closed
                menu->close();
            contents();
        };
        QVERIFY(!menuOf(u"berlinite"_s) && !menuOf(u"Al3O12P3"_s));
        const DocumentItem *cell = scene().documentItems().constFirst();
        choose(u"Unit cell"_s, 2);
        QVERIFY(!cell->isVisible() && scene().documentItems()[2]->isVisible());
        QCOMPARE(entriesOf(menuOf(u"Unit cell"_s)), u"&Go There Enter; &Rename... F2; [ ] &Show; Re&move Del"_s);
        QApplication::activePopupWidget()->close();
        choose(u"Unit cell"_s, 2);
        choose(u"Unit cell"_s, 0);
        QVERIFY(cell->isVisible() && scene().activeItem() == cell);
        QCOMPARE(entriesOf(menuOf(u"paracetamol-13C-points.csv"_s)), u"&Go There Enter; &Rename... F2; Re&move Del"_s);
        QApplication::activePopupWidget()->close();
        choose(u"paracetamol-13C-points.csv"_s, 0);
        QCOMPARE(plot()->nmrData()->entryIds().indexOf(plot()->nmrData()->activeEntryId()), 1);
        m_dialogs.expect(u"Rename"_s, [](QDialog *dialog) {
            auto *input = qobject_cast<QInputDialog *>(dialog);
            QCOMPARE(input->labelText() + input->textValue(), u"Name:paracetamol-13C-points.csv"_s);
            input->setTextValue(u" form I "_s);
            dialog->accept();
        });
        choose(u"paracetamol-13C-points.csv"_s, 1);
        QCOMPARE(data()->entryName(data()->activeEntryId()), u"form I"_s);
        QCOMPARE(history().undoText(), u"Rename Spectrum"_s);
        history().undo();
        contents();
        const qsizetype items = scene().documentItems().size();
        choose(u"paracetamol-13C-points.csv"_s, 2); // one of two in this plot
        QVERIFY(scene().documentItems().size() == items && plot()->nmrData()->entryIds().size() == 1);
        choose(u"paracetamol-1H.csv"_s, 2); // with its plot
        QCOMPARE(scene().documentItems().size(), items - 1);
    }

    /// Calculations have the same name in many folders, which may be opened as a whole.
    void foldersAndNames()
    {
        for (const char *name : {"a/calc2.magres", "a/calc10.magres", "b/calc2.magres"}) {
            QDir().mkpath(QFileInfo(m_files.path(name)).path());
            QFile::copy(sample(u"acetic-acid.magres"_s), m_files.path(name));
        }
        window().openFiles({m_files.path("a"), m_files.path("b/calc2.magres"), m_files.path("b/calc2.magres")});
        QStringList sources;
        for (const DocumentItem *item : scene().documentItems()) {
            if (qobject_cast<const TableItem *>(item))
                sources.append(item->title());
        }
        QCOMPARE(sources.join(u'|'),
                 u"calc2 – MAGRES Table|calc10 – MAGRES Table|b/calc2 – MAGRES Table|b/calc2 (2) – "
                 "MAGRES Table"_s);
        // A folder may be that of a measurement as well.
        const QString both = m_files.path("both");
        QVERIFY(QDir().mkpath(both + u"/pdata/1"_s));
        for (const char *name : {"acqus", "pdata/1/1r", "pdata/1/procs"})
            QFile::copy(sample(u"paracetamol-13C-bruker/"_s) + QLatin1String(name), both + u'/' + QLatin1String(name));
        QFile::copy(sample(u"acetic-acid.magres"_s), both + u"/other.magres"_s);
        window().openFiles({both});
        QVERIFY(contents().contains(u"other"_s) && contents().contains(u"both"_s));
        m_dialogs.expect(u"n.xyz cannot be opened"_s, [](QDialog *dialog) {
            const QString shown = qobject_cast<QMessageBox *>(dialog)->text();
            QVERIFY2(shown.contains(u"*.magres") && shown.contains(u"*.jdx"), qPrintable(shown));
            dialog->accept();
        });
        window().openFiles({m_files.write("n.xyz", "1\n")});
        QCOMPARE(m_dialogs.missing(), QStringList());
    }

    /// Notes are no part of the page: not in its preview, but again after it, wherever the item was meanwhile.
    void notesKnowThePreview()
    {
        open(u"paracetamol.magres"_s);
        createSpectrum({{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 100.0}}); // a placeholder, of which a note tells
        QCoreApplication::processEvents();
        NmrItem *item = plot();
        const auto preview = [this](bool on) { entry(menu(u"View"_s), u"Page Preview"_s)->setChecked(on); };
        const auto isNoted = [&] { return item->isVisible() && item->noteBar()->isVisible(); };
        QVERIFY(isNoted());
        preview(true);
        item->setNotes(item->notes());
        QVERIFY(!isNoted());
        removeWithUndo(scene(), item);
        preview(false);
        history().undo();
        QVERIFY(isNoted());
        removeWithUndo(scene(), item);
        preview(true);
        history().undo();
        QVERIFY(!isNoted());
    }

    void pagesAndZoomOfTheView()
    {
        MainView &view = *window().view();
        const auto scale = [&] { return view.transform().m11(); };
        QMenu *viewMenu = menu(u"View"_s);
        open(u"paracetamol.magres"_s);
        createSpectrum();
        entry(viewMenu, u"Zoom In"_s)->trigger();
        QCOMPARE(scale(), 1.25);
        entry(viewMenu, u"Zoom Out"_s)->trigger();
        entry(viewMenu, u"Zoom Out"_s)->trigger();
        QVERIFY(scale() == 0.8 && view.transform().m22() == 0.8);
        QCOMPARE(scene().sceneRect().width(), view.viewport()->width()); // the items have not grown
        entry(viewMenu, u"Fit Window"_s)->trigger();
        QCOMPARE(scale(), 1.0);
        for (const auto &[factor, found] : {std::pair(99.0, 10.0), std::pair(0.001, 0.1)}) {
            view.zoom(factor);
            QCOMPARE(scale(), found);
        }
        // Paper fills the width with a gap on both sides.
        entry(viewMenu, u"Page Preview"_s)->setChecked(true);
        QVERIFY(std::abs(scale() - view.viewport()->width() / (793.7 + 28)) < 1e-9);
        // Two pages on grey, parted by a dashed line.
        scene().setPlace(*plot(), {QRectF(38, 1300, 700, 300), {}});
        const auto draw = [&](QPainter *painter) {
            const QRect all = view.mapFromScene(scene().sceneRect()).boundingRect().adjusted(-10, -10, 10, 10);
            view.render(painter, QRectF({}, all.size()), all);
        };
        const QStringList paper =
            Shapes::of({800, 900}, draw).filter(QRegularExpression(u"^(rect - #(8a9098|ffffff) |line #c8c8c8)"_s));
        const auto number = [&](int word) { return paper.value(1).section(u' ', word, word).toDouble(); };
        QVERIFY(std::abs(number(6) / number(5) - 2 * std::sqrt(2)) < 0.01);
        VERIFY_DRAWN(paper.mid(0, 3),
                     filled(u"rect - #8a9098 * * * *\nrect - #ffffff * * * *\nline #c8c8c8:0:2 %1 %2 %3 %2"_s,
                            {number(3), number(4) + number(6) / 2, number(3) + number(5)}));
        entry(viewMenu, u"Page Preview"_s)->setChecked(false);
        for (const auto &[turn, modifiers, found] : {std::tuple(120, Qt::ControlModifier, 1.2),
                                                     {-240, Qt::ControlModifier, 1 / 1.2},
                                                     {120, Qt::NoModifier, 1 / 1.2}}) {
            QWheelEvent event(QPointF(9, 9), view.viewport()->mapToGlobal(QPointF(9, 9)), {}, {0, turn}, Qt::NoButton,
                              modifiers, Qt::NoScrollPhase, false);
            QApplication::sendEvent(view.viewport(), &event);
            QVERIFY(std::abs(scale() - found) < 1e-9);
        }
        // Sharp at every scale, within limits.
        for (const auto &[zoom, pixels] : {std::pair(2.0, 2.0), {9.0, 4.0}, {0.5, 1.0}}) {
            entry(viewMenu, u"Fit Window"_s)->trigger();
            view.zoom(zoom);
            view.centerOn(plot());
            QTRY_COMPARE(plot()->plot()->bufferDevicePixelRatio(), pixels);
        }
    }

    /// A spectrum is dragged from the list onto a plot: the view hands it over and says where it is let go.
    void spectraAreDraggedOntoPlots()
    {
        open(u"paracetamol.magres"_s);
        createSpectrum({{"fCbNucF2", u"1H"_s}});
        NmrItem *hydrogen = plot();
        createSpectrum();
        NmrItem *first = plot();
        createSpectrum();
        NmrItem *second = plot();
        QVERIFY(first != hydrogen && second != first);
        QTreeWidget *tree = window().contents()->tree();
        const auto drag = [&](const NmrItem *from, NmrItem *onto) {
            QCoreApplication::processEvents(); // The plots are laid out and listed.
            const QList<QTreeWidgetItem *> lines = tree->findItems(u"*"_s, Qt::MatchWildcard | Qt::MatchRecursive);
            const auto line = std::find_if(lines.begin(), lines.end(), [&](const QTreeWidgetItem *candidate) {
                return scene().item(candidate->data(0, Qt::UserRole).toUuid()) == from;
            });
            QVERIFY(line != lines.end());
            const std::unique_ptr<QMimeData> dragged(tree->model()->mimeData({tree->indexFromItem(*line)}));
            QVERIFY(dragged);
            MainView *view = window().view();
            view->centerOn(onto);
            const QPoint inView = view->mapFromScene(onto->sceneBoundingRect().center());
            const QPointF where = view->viewport()->mapTo(&window(), inView);
            QDragEnterEvent enter(where.toPoint(), Qt::CopyAction, dragged.get(), Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&window(), &enter);
            QDropEvent event(where, Qt::CopyAction, dragged.get(), Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&window(), &event);
        };
        const auto count = [](NmrItem *item) { return item->nmrData()->entryIds().size(); };
        drag(hydrogen, second);
        QCOMPARE(count(second), 1);
        QCOMPARE(said(), u"paracetamol, simulated is a spectrum of other nuclei or dimensions than this plot"_s);
        drag(second, second);
        QCOMPARE(count(second), 1);
        QCOMPARE(said(), u"paracetamol, simulated is in this plot already"_s);
        drag(first, second);
        QCOMPARE(count(second), 2);
        QCOMPARE(said(), u"paracetamol, simulated is in the plot \""_s + second->title() + u"\" now, too"_s);
        QVERIFY(plot() == second && second->isCurrent());
        history().undo();
        QCOMPARE(count(second), 1);
        QCOMPARE(count(first), 1);
        // So are lists of peaks, by what is known of them.
        const auto list = [this](const QStringList &nuclei, double f1) {
            auto *item = new NmrItem;
            const QVariantMap peaks{{u"PeakList"_s, QVariantList{peak(1, u"C1"_s, 20, f1, 1)}}};
            item->nmrData()->addEntry({{u"Peaks"_s, peaks}, {SpectrumEntry::nucleiKey(), nuclei}}, u"list"_s);
            scene().addNew(item, scene().getEmptyRect());
            return item;
        };
        NmrItem *silent = list({}, 0);
        for (NmrItem *other : {list({u"1H"_s}, 0), list({}, 5)}) {
            drag(other, second);
            QCOMPARE(said(), u"list is a spectrum of other nuclei or dimensions than this plot"_s);
        }
        NmrItem *plane = list({u"1H"_s, u"13C"_s}, 5);
        drag(list({u"13C"_s, u"1H"_s}, 5), plane);
        QCOMPARE(said(), u"list has its axes the other way round: F2 is 13C, in this plot 1H"_s);
        open(u"paracetamol-hetcor.jdx"_s);
        QVERIFY2(said().startsWith(u"paracetamol-hetcor.jdx has a plot of its own: its axes lie the other way round. A "
                                   "spectrum that is created with 13C as its direct nucleus (F2) joins it."_s),
                 qPrintable(said()));
        history().undo();
        drag(silent, second);
        drag(first, silent);
        QVERIFY(count(second) == 2 && count(silent) == 2);
        // Its peaks go on selecting their atoms.
        MoleculeItem *paracetamol = molecule();
        open(u"acetic-acid.magres"_s);
        NmrItem *acid = createSpectrum();
        QVERIFY(acid->linkedItems().contains(molecule()) && !acid->linkedItems().contains(paracetamol));
        QVERIFY(acid->linkedItems().contains(table()));
        drag(first, acid);
        QVERIFY(acid->linkedItems().contains(molecule()) && acid->linkedItems().contains(paracetamol));
        history().undo();
        QVERIFY(!acid->linkedItems().contains(paracetamol));
    }
};

QTEST_MAIN(TestWorkspace)
#include "tst_workspace.moc"
