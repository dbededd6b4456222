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
#include "host/PluginManager.h"
#include "window/Progress.h"
#include "window/RecentFiles.h"
#include "window/StackMenu.h"
#include "formats/DocumentFile.h"
#include "formats/ExperimentFile.h"
#include "items/DocumentItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"
#include "data/Elision.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QUndoStack>

namespace Workbench {

WMainWindow::WMainWindow()
    : m_view(new MainView(scene(), this)),
      m_itemMenu(new QMenu(this)),
      m_stackMenu(new StackMenu(scene(), this)),
      m_peakMenu(new PeakMenu(scene(), this)),
      m_document(new DocumentController(scene(), documentData(), this)),
      m_recentFiles(new RecentFiles(this)),
      m_exportMenu(new ExportMenu(scene(), documentData(), this)),
      m_readOut(new QLabel(this))
{
    setAcceptDrops(true);
    setCentralWidget(m_view);
    connect(scene(), &MainScene::itemAdded, this, &WMainWindow::addHostMenu);
    const auto report = [this](const QString &text) { statusBar()->showMessage(text); };
    connect(m_stackMenu, &StackMenu::reported, this, report);
    connect(m_peakMenu, &PeakMenu::reported, this, report);
    connect(m_exportMenu, &ExportMenu::reported, this, report);
    connect(m_document, &DocumentController::reported, this, report);
    connect(m_document, &DocumentController::fileUsed, m_recentFiles, &RecentFiles::add);
    connect(m_recentFiles, &RecentFiles::chosen, this, [this](const QString &file) { openPath(file, nullptr); });
    statusBar()->addPermanentWidget(m_readOut);
    new PeakAtomLinks(scene());
    connect(scene(), &MainScene::activeItemChanged, this, [this](QGraphicsWidget *item) {
        if (qobject_cast<NmrItem *>(item) && statusBar()->currentMessage().isEmpty())
            statusBar()->showMessage(tr("Wheel zooms, drag marks what to show, double click shows all; F1 tells more"),
                                     5000);
    });
    createMenus();
    resize(1100, 900);
    m_view->setFocus();
    new UndoRecorder(scene());
}

WMainWindow::~WMainWindow()
{
    scene()->disconnect(this);
    delete m_document;
}

void WMainWindow::setHost(HostApplication *host)
{
    m_host = host;
    m_document->setPluginManager(&host->plugins());
}

void WMainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(m_document->mayReplace());
}

void WMainWindow::openFiles(const QStringList &fileNames)
{
    openAll(fileNames, nullptr);
}

void WMainWindow::openAll(const QStringList &paths, const QPointer<NmrItem> &onto)
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
            return m_stackMenu->addExperiment(path, onto);
        QList<QGraphicsWidget *> items;
        m_document->read([&] { items = m_host->readFile(path).items; });
        if (!items.isEmpty())
            m_view->ensureVisible(items.constFirst());
        m_recentFiles->add(path);
        statusBar()->showMessage(tr("%1 is open").arg(QFileInfo(path).fileName()), 5000);
    } catch (const std::exception &error) {
        QMessageBox::critical(this, tr("%1 cannot be opened").arg(QFileInfo(path).fileName()),
                              tr("%1\n\n%2").arg(path, elided(QString::fromUtf8(error.what()))));
    }
}

void WMainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
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
    const QPointF scenePos = m_view->mapToScene(m_view->mapFrom(this, event->position().toPoint()));
    auto *under = MainScene::documentItemOf(scene()->itemAt(scenePos, QTransform()));
    const QPointer<NmrItem> onto = qobject_cast<NmrItem *>(under);
    // After the drop has ended: a message box inside would block the program that the file comes from.
    QMetaObject::invokeMethod(
        this, [this, files, onto] { openAll(files, onto); }, Qt::QueuedConnection);
}

void WMainWindow::createMenus()
{
    createFileMenu();
    createEditMenu();
    createItemMenu(
        tr("&Spectrum"), [this] { return scene()->currentNmrItem(); }, tr("No spectrum on the page"));
    createItemMenu(
        tr("&Table"), [this] { return scene()->currentTableItem(); }, tr("No table on the page"));

    QMenu *viewMenu = menuBar()->addMenu(tr("&View"));
    viewMenu->addAction(tr("Zoom &In"), QKeySequence::ZoomIn, this, [this] { m_view->zoom(1.25); });
    viewMenu->addAction(tr("Zoom &Out"), QKeySequence::ZoomOut, this, [this] { m_view->zoom(0.8); });
    viewMenu->addAction(tr("&Page Width"), QKeySequence(tr("Ctrl+0")), m_view, &MainView::fitPageWidth);

    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&Keyboard and Mouse..."), QKeySequence::HelpContents, this,
                    [this] { GestureHelp(this).exec(); });
    help->addAction(tr("&About and Plug-ins..."), this, &WMainWindow::showAbout);
}

void WMainWindow::createFileMenu()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&New"), QKeySequence::New, m_document, &DocumentController::newDocument);
    file->addAction(tr("&Open..."), QKeySequence::Open, this, &WMainWindow::chooseFiles);
    file->addMenu(m_recentFiles);
    file->addSeparator();
    file->addAction(tr("&Save"), QKeySequence::Save, m_document, &DocumentController::save);
    file->addAction(tr("Save &As..."), QKeySequence::SaveAs, m_document, &DocumentController::saveAs);
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
    redo->setShortcut(QKeySequence::Redo);
    edit->addActions({undo, redo});
    edit->addSeparator();
    QAction *remove = edit->addAction(tr("&Delete Item"), QKeySequence::Delete, this, &WMainWindow::deleteActiveItem);
    m_itemMenu->addAction(remove);
    const auto enable = [this, remove] { remove->setEnabled(scene()->activeItem() != nullptr); };
    connect(scene(), &MainScene::activeItemChanged, this, enable);
    enable();
}

void WMainWindow::createItemMenu(const QString &title, const std::function<DocumentItem *()> &current,
                                 const QString &ifNone)
{
    QMenu *menu = menuBar()->addMenu(title);
    // A menu bar passes over menus that are empty.
    menu->addAction(ifNone)->setEnabled(false);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, current, ifNone] {
        menu->clear();
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
    if (auto *spectrum = qobject_cast<NmrItem *>(item)) {
        item->addContextMenu(nmrContextMenu());
        item->addContextMenu(m_stackMenu);
        item->addContextMenu(m_peakMenu);
        connect(spectrum, &NmrItem::pointed, m_readOut, &QLabel::setText);
    }
    connect(item, &DocumentItem::reported, this, [this](const QString &text) { statusBar()->showMessage(text); });
    item->addContextMenu(m_itemMenu);
}

void WMainWindow::chooseFiles()
{
    QStringList filters = m_host->fileFilters().nameFilters();
    filters.prepend(DocumentController::nameFilter());
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
