// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/WMainWindow.h"

#include "window/DocumentController.h"
#include "window/ExportMenu.h"
#include "document/UndoCommands.h"
#include "document/UndoRecorder.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "window/MainView.h"
#include "window/GestureHelp.h"
#include "window/PeakAtomLinks.h"
#include "window/PeakMenu.h"
#include "window/PowderCommands.h"
#include "host/PluginManager.h"
#include "window/Progress.h"
#include "window/RecentFiles.h"
#include "window/StackMenu.h"
#include "formats/BrukerReader.h"
#include "formats/DocumentFile.h"
#include "formats/ExperimentFile.h"
#include "items/DocumentItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/PeakEditor.h"
#include "items/table/TableItem.h"
#include "data/Elision.h"
#include "data/Error.h"
#include "data/NaturalOrder.h"
#include "items/molecule/MoleculeItem.h"
#include "window/ContentsDock.h"
#include "window/GuideWindow.h"
#include "window/ItemNotes.h"
#include "window/SpectrumCommands.h"
#include "window/StartHints.h"
#include "window/WorkBar.h"
#include "window/compare/CompareCommands.h"
#include "window/compare/ComparePanel.h"

#include <QAccessible>
#include <QApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QUndoStack>
#include <QDir>

namespace Workbench {

namespace {

const QString geometryKey = QStringLiteral("window/geometry");
const QString stateKey = QStringLiteral("window/state");
const QString previewKey = QStringLiteral("window/pagePreview");
constexpr int contentsWidth = 250;
constexpr std::initializer_list<int> frameDelays{100, 500, 2000}; // ms

} // namespace

WMainWindow::WMainWindow()
    : m_view(new MainView(scene(), this)),
      m_itemMenu(new QMenu(this)),
      m_stackMenu(new StackMenu(scene(), this)),
      m_peakMenu(new PeakMenu(scene(), this)),
      m_document(new DocumentController(scene(), documentData(), this)),
      m_recentFiles(new RecentFiles(this)),
      m_exportMenu(new ExportMenu(scene(), documentData(), this)),
      m_readOut(new QLabel(this)),
      m_spectrumCommands(new SpectrumCommands(scene(), nmrContextMenu(), this)),
      m_itemNotes(new ItemNotes(scene(), m_spectrumCommands)),
      m_powderCommands(new PowderCommands(scene(), documentData(), this)),
      m_tablePowderMenu(new QMenu(this)),
      m_plotPowderMenu(new QMenu(this)),
      m_contents(new ContentsDock(scene(), documentData(), this)),
      m_workBar(new WorkBar(this)),
      m_hints(new StartHints(nullptr))
{
    setAcceptDrops(true);
    setCentralWidget(m_view);
    connect(scene(), &MainScene::itemAdded, this, &WMainWindow::addHostMenu);
    const auto report = [this](const QString &text) { statusBar()->showMessage(text); };
    connect(m_stackMenu, &StackMenu::reported, this, report);
    connect(m_peakMenu, &PeakMenu::reported, this, report);
    connect(m_exportMenu, &ExportMenu::reported, this, report);
    m_exportMenu->setProposal([this](const QString &suffix) { return m_document->proposedPath(suffix); });
    connect(m_document, &DocumentController::reported, this, report);
    connect(m_document, &DocumentController::fileUsed, m_recentFiles, &RecentFiles::add);
    connect(m_recentFiles, &RecentFiles::chosen, this, [this](const QString &file) { openFiles({file}); });
    statusBar()->addPermanentWidget(m_readOut);
    new PeakAtomLinks(scene());
    connect(scene(), &MainScene::activeItemChanged, this, [this](QGraphicsWidget *item) {
        auto *plot = qobject_cast<NmrItem *>(item);
        const NmrData *stack = plot ? plot->nmrData() : nullptr;
        if (stack && stack->entryIds().size() > 1)
            statusBar()->showMessage(tr("%1. %2").arg(plot->title(), PeakEditor::counts(*stack)));
        else if (stack && statusBar()->currentMessage().isEmpty())
            statusBar()->showMessage(tr("Wheel zooms, drag marks what to show, double click shows all; F1 tells more"),
                                     5000);
    });
    connect(m_spectrumCommands, &SpectrumCommands::reported, this, report);
    connect(m_powderCommands, &PowderCommands::reported, this, report);
    connect(m_contents, &ContentsDock::reported, this, report);
    connect(m_hints, &StartHints::openRequested, this, &WMainWindow::chooseFiles);
    connect(m_hints, &StartHints::chosen, this, [this](const QString &file) { openFiles({file}); });
    connect(m_hints, &StartHints::sampleChosen, this, &WMainWindow::openSample);
    addDockWidget(Qt::LeftDockWidgetArea, m_contents);
    addToolBar(m_workBar);
    createMenus();
    createWorkBar();
    m_view->setHints(m_hints);
    restoreLayout();
    m_view->setFocus();
    new UndoRecorder(scene());
    connect(scene(), &MainScene::itemsChanged, this, &WMainWindow::updateActions);
    connect(scene(), &MainScene::currentItemsChanged, this, &WMainWindow::updateActions);
    connect(scene(), &MainScene::activeItemChanged, this, &WMainWindow::tellActiveItem);
    connect(scene()->undoStack(), &QUndoStack::indexChanged, this, &WMainWindow::updateActions);
    updateActions();
    qApp->installEventFilter(this);
}

void WMainWindow::restoreLayout()
{
    QSettings settings;
    constexpr QSize usual(1280, 860);
    resize(usual.boundedTo(screen()->availableSize()));
    restoreGeometry(settings.value(geometryKey).toByteArray());
    if (!restoreState(settings.value(stateKey).toByteArray()))
        resizeDocks({m_contents}, {contentsWidth}, Qt::Horizontal);
    resize(size().boundedTo(screen()->availableSize()));
    if (settings.value(previewKey).toBool())
        m_preview->setChecked(true);
}

void WMainWindow::showEvent(QShowEvent *event)
{
    HostWindow::showEvent(event);
    keepOnScreen();
    // How wide its frame is, the window system says only after a while.
    for (int delay : event->spontaneous() ? std::initializer_list<int>() : frameDelays)
        QTimer::singleShot(delay, this, &WMainWindow::keepOnScreen);
}

bool WMainWindow::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = event->type() == QEvent::Show ? qobject_cast<QDialog *>(watched) : nullptr;
    // Forms of plug-ins bring the corner of the screen along as their place; without one they come up over the window.
    if (dialog && !event->spontaneous() && dialog->pos().isNull())
        dialog->setAttribute(Qt::WA_Moved, false);
    return HostWindow::eventFilter(watched, event);
}

void WMainWindow::keepOnScreen()
{
    if (isMaximized() || isFullScreen())
        return;
    const QRect available = screen()->availableGeometry(), frame = frameGeometry();
    const QSize margins = frame.size() - size();
    if (frame.width() > available.width() || frame.height() > available.height())
        resize(size().boundedTo(available.size() - margins));
    const QRect now(frame.topLeft(), size() + margins);
    if (!available.contains(now))
        move(std::clamp(now.left(), available.left(), std::max(available.left(), available.right() + 1 - now.width())),
             std::clamp(now.top(), available.top(), std::max(available.top(), available.bottom() + 1 - now.height())));
}

void WMainWindow::saveLayout() const
{
    QSettings settings;
    settings.setValue(geometryKey, saveGeometry());
    settings.setValue(stateKey, saveState());
    settings.setValue(previewKey, m_view->isPagePreview());
}

void WMainWindow::tellActiveItem()
{
    // Screen readers know widgets; what is current in the view is told as its name.
    const auto *item = qobject_cast<DocumentItem *>(scene()->activeItem());
    QStringList texts{item ? item->title() : tr("Workspace")};
    for (const ItemNote &note : item ? item->notes() : QList<ItemNote>())
        texts.append(note.text);
    m_view->setAccessibleName(texts.constFirst());
    m_view->setAccessibleDescription(texts.mid(1).join(QLatin1String(". ")));
    QAccessibleEvent changed(m_view, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

MoleculeItem *WMainWindow::currentMolecule() const
{
    if (m_molecule && scene()->isOnPage(m_molecule))
        return m_molecule;
    for (DocumentItem *item : scene()->documentItems()) {
        if (auto *molecule = qobject_cast<MoleculeItem *>(item))
            return molecule;
    }
    return nullptr;
}

void WMainWindow::updateActions()
{
    if (auto *molecule = qobject_cast<MoleculeItem *>(scene()->activeItem()))
        m_molecule = molecule;
    if (scene()->documentItems().isEmpty())
        m_hints->refresh();
    m_workBar->refresh();
}

WMainWindow::~WMainWindow()
{
    scene()->disconnect(this);
    scene()->undoStack()->disconnect(this);
    delete m_document;
}

void WMainWindow::setHost(HostApplication *host)
{
    m_host = host;
    m_compare->setHost(host);
    m_document->setPluginManager(&host->plugins());
}

void WMainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(m_document->mayReplace());
    if (event->isAccepted())
        saveLayout();
}

void WMainWindow::openFiles(const QStringList &fileNames)
{
    openAll(fileNames, nullptr);
}

QStringList WMainWindow::withFoldersOpened(const QStringList &paths) const
{
    const auto isCalculation = [this](const QString &path) {
        try {
            return m_host->fileFilters().matching(path) != nullptr;
        } catch (const std::exception &) {
            return QFileInfo(path).suffix().toLower() == u"magres"; // opening it tells what is wrong
        }
    };
    QStringList files;
    for (const QString &path : paths) {
        // A folder of calculations stands for them; any other is the data set of a spectrometer. It may be both.
        QStringList inside;
        if (QFileInfo(path).isDir())
            inside = QDir(path).entryList(QDir::Files);
        inside.removeIf([&](const QString &name) { return !isCalculation(QDir(path).filePath(name)); });
        std::sort(inside.begin(), inside.end(), naturalOrder());
        for (const QString &name : std::as_const(inside))
            files.append(QDir(path).filePath(name));
        if (inside.isEmpty() || BrukerReader::recognises(path))
            files.append(path);
    }
    return files;
}

void WMainWindow::openAll(const QStringList &paths, const QPointer<NmrItem> &onto)
{
    openEach(withFoldersOpened(paths), onto);
    if (const int doubtful = std::exchange(m_doubtfulFiles, 0))
        statusBar()->showMessage(
            tr("%n file(s) opened with doubts: the note under the title tells them", nullptr, doubtful));
}

void WMainWindow::openEach(const QStringList &paths, const QPointer<NmrItem> &onto)
{
    Progress progress(tr("Opening files..."), this);
    for (qsizetype i = 0; i < paths.size(); ++i) {
        progress.setText(tr("Opening %1").arg(QFileInfo(paths[i]).fileName()));
        if (!progress.step(double(i) / double(paths.size()))) {
            statusBar()->showMessage(tr("Cancelled: %1 of %2 files are open").arg(i).arg(paths.size()));
            return;
        }
        openPath(paths[i], onto);
    }
}

void WMainWindow::openPath(const QString &path, NmrItem *onto)
{
    try {
        if (DocumentFile::isDocument(path)) {
            if (m_document->open(path))
                statusBar()->showMessage(tr("%1 is open").arg(QFileInfo(path).fileName()), 5000);
            return;
        }
        const bool forPlugin = QFileInfo(path).isFile() && m_host->fileFilters().matching(path);
        if (!forPlugin && ExperimentFile::isExperiment(path))
            return openExperiment(path, onto);
        if (!forPlugin && QFileInfo(path).isFile() && QFileInfo(path).suffix().toLower() != u"magres")
            fail(tr("It is not of a kind that is known here. Files that can be opened: %1")
                     .arg(knownFilters().join(QLatin1String(", "))));
        HostApplication::ReadResult result;
        statusBar()->showMessage(tr("Opening %1...").arg(QFileInfo(path).fileName()));
        statusBar()->repaint();
        m_document->read([&] { result = m_host->readFile(path); }, path);
        if (!result.items.isEmpty())
            m_view->ensureVisible(result.items.constFirst());
        m_compare->rememberFile(path, result.items);
        noteDoubts(result.items, path, result.warnings);
        m_recentFiles->add(path);
        statusBar()->showMessage(tr("%1 is open").arg(QFileInfo(path).fileName()), 5000);
    } catch (const std::exception &error) {
        statusBar()->clearMessage();
        QMessageBox::critical(this, tr("%1 cannot be opened").arg(QFileInfo(path).fileName()),
                              tr("%1\n\n%2").arg(path, elided(QString::fromUtf8(error.what()))));
    }
}

void WMainWindow::noteDoubts(const QList<QGraphicsWidget *> &items, const QString &path, const QStringList &doubts)
{
    if (doubts.isEmpty())
        return;
    ++m_doubtfulFiles;
    // Beside the numbers that they are about.
    const auto isTable = [](QGraphicsWidget *item) { return qobject_cast<TableItem *>(item); };
    const auto table = std::find_if(items.begin(), items.end(), isTable);
    auto *item = qobject_cast<DocumentItem *>(table != items.end() ? *table : items.value(0));
    if (item)
        item->setDoubts(doubts);
    else
        QMessageBox::warning(this, tr("Doubts about the file"), path + QLatin1String("\n\n") + doubts.join(u'\n'));
}

void WMainWindow::openExperiment(const QString &path, NmrItem *onto)
{
    if (onto)
        return m_stackMenu->addExperiment(path, onto);
    const auto found = m_stackMenu->find(path);
    if (!found)
        return;
    m_document->read([&] { m_stackMenu->put(*found); }, path);
    m_recentFiles->add(path);
}

void WMainWindow::openSample(const QString &name)
{
    try {
        openFiles({StartHints::sampleFile(name)});
    } catch (const std::exception &error) {
        QMessageBox::critical(this, tr("%1 cannot be opened").arg(name), elided(QString::fromUtf8(error.what())));
    }
}

void WMainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() || event->mimeData()->hasFormat(ContentsDock::mimeType()))
        event->acceptProposedAction();
}

void WMainWindow::dropEvent(QDropEvent *event)
{
    QStringList files;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    event->acceptProposedAction();
    const QPointF scenePos = m_view->mapToScene(m_view->viewport()->mapFrom(this, event->position().toPoint()));
    auto *under = MainScene::documentItemOf(scene()->itemAt(scenePos, QTransform()));
    const QPointer<NmrItem> onto = qobject_cast<NmrItem *>(under);
    if (event->mimeData()->hasFormat(ContentsDock::mimeType())) {
        m_contents->dropOnto(event->mimeData()->data(ContentsDock::mimeType()), onto);
        return;
    }
    // After the drop has ended: a message box inside would block the program that the file comes from.
    QMetaObject::invokeMethod(
        this, [this, files, onto] { openAll(files, onto); }, Qt::QueuedConnection);
}

void WMainWindow::createMenus()
{
    createFileMenu();
    createEditMenu();
    m_create = m_workBar->add(
        tr("Create Spectrum"), tr("A simulated spectrum of the current table"),
        [this] { m_spectrumCommands->create(); }, [this] { return m_spectrumCommands->whyNoCreate(); });
    m_create->setShortcut(QKeySequence(tr("Ctrl+Shift+N")));
    createPowderActions();
    m_addMeasurement = m_workBar->add(tr("Add Measurement"),
                                      tr("A measured spectrum or peak list, beside the simulated one or on its own"),
                                      [this] { m_stackMenu->chooseExperiment(); });
    m_addMeasurement->setShortcut(QKeySequence(tr("Ctrl+Shift+O")));
    m_autoReference = m_workBar->add(
        tr("Auto Reference"), tr("Fits the reference of the simulated spectrum to the measurement beside it"),
        [this] { m_spectrumCommands->autoReference(); }, [this] { return m_spectrumCommands->whyNoAutoReference(); });
    m_autoReference->setShortcut(QKeySequence(tr("Ctrl+R")));
    m_compare = new CompareCommands(scene(), documentData(), m_workBar, this);
    connect(m_compare, &CompareCommands::reported, this,
            [this](const QString &text) { statusBar()->showMessage(text); });
    connect(m_compare, &CompareCommands::fileWanted, this, [this](const QString &path) { openPath(path, nullptr); });
    createItemMenu(
        tr("&Spectrum"), [this] { return scene()->currentNmrItem(); }, tr("No spectrum on the page"),
        {m_create, m_createPowder, m_addMeasurement, m_compare->referenceSetAction(), m_compare->forgetSetsAction()});
    createItemMenu(
        tr("&Table"), [this] { return scene()->currentTableItem(); }, tr("No table on the page"));
    createItemMenu(
        tr("&Molecule"), [this] { return currentMolecule(); }, tr("No molecule on the page"));
    createViewMenu();
    createHelpMenu();
}

void WMainWindow::createPowderActions()
{
    m_createPowder = m_workBar->add(
        tr("Powder Spectrum"), tr("The powder line shapes of the current table's sites, static or spinning"),
        [this] { m_powderCommands->create(); }, [this] { return m_powderCommands->whyNoCreate(); });
    m_createPowder->setShortcut(QKeySequence(tr("Ctrl+Shift+L")));
    m_createPowder->setText(tr("Create Powder Spectrum..."));
    m_createPowder->setIconText(tr("Powder Spectrum"));
    m_tablePowderMenu->addAction(m_createPowder);
    QAction *edit =
        m_plotPowderMenu->addAction(tr("Edit Powder Spectrum..."), this, [this] { m_powderCommands->edit(); });
    m_itemNotes->setPowderCommand(
        tr("Create Powder Spectrum..."),
        [this](NmrItem *item, const QUuid &entry) { m_powderCommands->createLike(item, entry); },
        [this](NmrItem *item, const QUuid &entry) { m_powderCommands->edit(item, entry); });
    const auto update = [this, edit] { edit->setVisible(m_powderCommands->whyNoEdit().isEmpty()); };
    connect(scene(), &MainScene::currentItemsChanged, this, update);
    connect(scene()->undoStack(), &QUndoStack::indexChanged, this, update);
    update();
}

void WMainWindow::createViewMenu()
{
    QMenu *viewMenu = menuBar()->addMenu(tr("&View"));
    viewMenu->addAction(tr("Zoom &In"), QKeySequence::ZoomIn, this, [this] { m_view->zoom(1.25); });
    viewMenu->addAction(tr("Zoom &Out"), QKeySequence::ZoomOut, this, [this] { m_view->zoom(0.8); });
    viewMenu->addAction(tr("&Fit Window"), QKeySequence(tr("Ctrl+0")), m_view, &MainView::fitWidth);
    viewMenu
        ->addAction(tr("&Arrange Items"), this,
                    [this] {
                        arrangeWithUndo(*scene(), tr("Arrange Items"));
                        m_view->fitWidth();
                    })
        ->setToolTip(tr("Puts items that were moved by hand into their rows again"));
    viewMenu->addSeparator();
    m_preview = viewMenu->addAction(tr("&Page Preview"));
    m_preview->setShortcut(QKeySequence(tr("Ctrl+Shift+P")));
    m_preview->setCheckable(true);
    connect(m_preview, &QAction::toggled, m_view, &MainView::setPagePreview);
    viewMenu->addSeparator();
    viewMenu->addAction(m_contents->toggleViewAction());
    viewMenu->addAction(m_compare->panel()->toggleViewAction());
    viewMenu->addAction(m_workBar->toggleViewAction());
}

void WMainWindow::createHelpMenu()
{
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&User Guide"), this, [this] { (new GuideWindow(this))->show(); });
    help->addAction(tr("&Keyboard and Mouse..."), QKeySequence(Qt::Key_F1), this, [this] { GestureHelp(this).exec(); });
    help->addAction(tr("&About and Plug-ins..."), this, &WMainWindow::showAbout);
}

void WMainWindow::createWorkBar()
{
    QUndoStack *stack = scene()->undoStack();
    QAction *open =
        m_workBar->add(tr("Open"), tr("Calculations, measured spectra and documents"), [this] { chooseFiles(); });
    m_workBar->insertAction(m_create, open);
    m_workBar->insertSeparator(m_create);
    m_workBar->addSeparator();
    m_workBar->add(
        tr("Undo"), tr("Takes the last change back"), [stack] { stack->undo(); },
        [stack] { return stack->canUndo() ? QString() : tr("there is nothing to take back"); });
    m_workBar->add(
        tr("Redo"), tr("Makes the change again that was taken back"), [stack] { stack->redo(); },
        [stack] { return stack->canRedo() ? QString() : tr("nothing was taken back"); });
    m_workBar->addSeparator();
    m_workBar->add(tr("Fit"), tr("The workspace as wide as the window"), [this] { m_view->fitWidth(); });
    m_workBar->add(
        tr("Export"), tr("The page, a spectrum or a table as a file"),
        [this] { m_exportMenu->popup(m_workBar->mapToGlobal(m_workBar->rect().bottomRight() - QPoint(200, 0))); },
        [this] { return scene()->documentItems().isEmpty() ? tr("there is nothing on the page") : QString(); });
}

void WMainWindow::createFileMenu()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&New"), QKeySequence::New, m_document, &DocumentController::newDocument);
    file->addAction(tr("&Open..."), QKeySequence::Open, this, &WMainWindow::chooseFiles);
    file->addAction(tr("Open &Folder..."), this, &WMainWindow::chooseFolder)
        ->setToolTip(tr("A measured spectrum that is a folder of files"));
    file->addMenu(m_recentFiles);
    QMenu *samples = file->addMenu(tr("Open Sa&mple"));
    for (const auto &[name, what] : StartHints::samples())
        samples->addAction(name, this, [this, sample = name] { openSample(sample); })->setToolTip(what);
    file->addSeparator();
    file->addAction(tr("&Save"), QKeySequence::Save, m_document, &DocumentController::save);
    // Not every desktop has a key of its own for it.
    const QList<QKeySequence> saveAsKeys = QKeySequence::keyBindings(QKeySequence::SaveAs);
    file->addAction(tr("Save &As..."), saveAsKeys.value(0, QKeySequence(QStringLiteral("Ctrl+Shift+S"))), m_document,
                    &DocumentController::saveAs);
    file->addSeparator();
    file->addMenu(m_exportMenu);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
}

void WMainWindow::createEditMenu()
{
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    QAction *undo = scene()->undoStack()->createUndoAction(this);
    undo->setShortcut(QKeySequence::Undo);
    QAction *redo = scene()->undoStack()->createRedoAction(this);
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    for (const QKeySequence &keys : {QKeySequence(tr("Ctrl+Y")), QKeySequence(tr("Ctrl+Shift+Z"))}) {
        if (!redoKeys.contains(keys))
            redoKeys.append(keys);
    }
    redo->setShortcuts(redoKeys);
    edit->addActions({undo, redo});
    edit->addSeparator();
    QAction *rename =
        edit->addAction(tr("&Rename Item..."), QKeySequence(Qt::Key_F2), this, &WMainWindow::renameActiveItem);
    m_itemMenu->addAction(rename);
    QAction *remove = edit->addAction(tr("&Delete Item"), QKeySequence::Delete, this, &WMainWindow::deleteActiveItem);
    m_itemMenu->addAction(remove);
    const auto enable = [this, remove, rename] {
        for (QAction *action : {remove, rename})
            action->setEnabled(scene()->activeItem() != nullptr);
    };
    connect(scene(), &MainScene::activeItemChanged, this, enable);
    enable();
}

void WMainWindow::createItemMenu(const QString &title, const std::function<DocumentItem *()> &current,
                                 const QString &ifNone, const QList<QAction *> &always)
{
    QMenu *menu = menuBar()->addMenu(title);
    // A menu bar passes over menus that are empty.
    menu->addActions(always);
    menu->addAction(ifNone)->setEnabled(false);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, current, ifNone, always] {
        menu->clear();
        menu->addActions(always);
        menu->addSeparator();
        DocumentItem *item = current();
        if (!item) {
            menu->addAction(ifNone)->setEnabled(false);
            return;
        }
        // Plug-ins' commands work on the active item.
        scene()->setActiveItem(item);
        menu->addActions(item->contextMenu()->actions());
    });
}

void WMainWindow::addHostMenu(DocumentItem *item)
{
    if (qobject_cast<TableItem *>(item))
        item->addContextMenu(m_tablePowderMenu);
    if (auto *spectrum = qobject_cast<NmrItem *>(item)) {
        item->addContextMenu(m_plotPowderMenu);
        item->addContextMenu(nmrContextMenu());
        item->addContextMenu(m_stackMenu);
        item->addContextMenu(m_peakMenu);
        item->addContextMenu(m_compare);
        connect(spectrum, &NmrItem::pointed, m_readOut, &QLabel::setText);
    }
    connect(item, &DocumentItem::reported, this, [this](const QString &text) { statusBar()->showMessage(text); });
    item->addContextMenu(m_itemMenu);
    connect(item, &DocumentItem::titleChanged, this, &WMainWindow::tellActiveItem);
    connect(item, &DocumentItem::notesChanged, this, &WMainWindow::tellActiveItem);
}

QStringList WMainWindow::knownFilters() const
{
    return QStringList(DocumentController::nameFilter()) + m_host->fileFilters().nameFilters()
        + ExperimentFile::nameFilters();
}

void WMainWindow::chooseFiles()
{
    QStringList filters = knownFilters();
    QStringList patterns;
    for (const QString &filter : std::as_const(filters))
        patterns.append(filter.section(u'(', -1).section(u')', 0, 0));
    filters.prepend(tr("All known files (%1)").arg(patterns.join(u' ')));
    filters.append(tr("All files (*)"));
    const QStringList files =
        QFileDialog::getOpenFileNames(this, tr("Open"), m_lastDirectory, filters.join(QLatin1String(";;")));
    if (files.isEmpty())
        return;
    m_lastDirectory = QFileInfo(files.constFirst()).path();
    openFiles(files);
}

void WMainWindow::chooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Open Folder"), m_lastDirectory);
    if (folder.isEmpty())
        return;
    m_lastDirectory = QFileInfo(folder).path();
    openFiles({folder});
}

void WMainWindow::renameActiveItem()
{
    const QPointer<DocumentItem> item = qobject_cast<DocumentItem *>(scene()->activeItem());
    if (!item)
        return;
    bool accepted = false;
    const QString name = QInputDialog::getText(this, tr("Rename"), tr("Title (empty: the item's own):"),
                                               QLineEdit::Normal, item->title(), &accepted)
                             .trimmed();
    if (accepted && item && name != item->title())
        renameWithUndo(*scene(), item, name);
}

void WMainWindow::deleteActiveItem()
{
    if (auto *item = qobject_cast<DocumentItem *>(scene()->activeItem()))
        removeWithUndo(*scene(), item);
}

void WMainWindow::showAbout()
{
    QString text = tr("<h3>Magres Workbench %1</h3><p>NMR parameters of crystals: molecules, tables and simulated "
                      "spectra from calculated shieldings.</p><h4>Plug-ins</h4>")
                       .arg(QCoreApplication::applicationVersion());
    const PluginManager &plugins = m_host->plugins();
    if (plugins.plugins().isEmpty() && plugins.failures().isEmpty())
        text += tr("<p>None found.</p>");
    for (const PluginManager::Plugin &plugin : plugins.plugins()) {
        text += tr("<p><b>%1</b> %2<br>%3<br><small>%4</small></p>")
                    .arg(plugin.name.toHtmlEscaped(), plugin.version, plugin.description, plugin.file.toHtmlEscaped());
    }
    for (const PluginManager::Failure &failure : plugins.failures()) {
        text +=
            tr("<p><b>Not loaded:</b> %1<br>%2</p>").arg(failure.file.toHtmlEscaped(), failure.reason.toHtmlEscaped());
    }
    QMessageBox::about(this, tr("About"), text);
}

} // namespace Workbench

#include "moc_WMainWindow.cpp"
