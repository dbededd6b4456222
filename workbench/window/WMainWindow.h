// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/HostWindow.h"

#include <QPointer>

#include <functional>

class QGraphicsWidget;
class QLabel;

namespace Workbench {

class CompareCommands;
class ContentsDock;
class DocumentController;
class DocumentItem;
class ExportMenu;
class HostApplication;
class ItemNotes;
class MainView;
class MoleculeItem;
class NmrItem;
class PeakMenu;
class PowderCommands;
class RecentFiles;
class SpectrumCommands;
class StackMenu;
class StartHints;
class WorkBar;

/// The window in which users work.
class WMainWindow : public HostWindow {
    Q_OBJECT
public:
    WMainWindow();
    ~WMainWindow() override;

    /// The host that this is the window of; to be set before anything is opened.
    void setHost(HostApplication *host);

    MainView *view() const { return m_view; }
    DocumentController *document() const { return m_document; }
    WorkBar *workBar() const { return m_workBar; }
    ContentsDock *contents() const { return m_contents; }
    SpectrumCommands *spectrumCommands() const { return m_spectrumCommands; }
    CompareCommands *compareCommands() const { return m_compare; }
    ItemNotes *itemNotes() const { return m_itemNotes; }
    PowderCommands *powderCommands() const { return m_powderCommands; }

public Q_SLOTS:
    /// Each is a document, a file for a plug-in or a measured spectrum; errors are shown in a message box.
    void openFiles(const QStringList &fileNames);

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void createMenus();
    void createFileMenu();
    void createEditMenu();
    void createViewMenu();
    void createHelpMenu();
    void createWorkBar();
    void createPowderActions();
    void updateActions();
    void restoreLayout();
    void saveLayout() const;
    /// With frame and status line.
    void keepOnScreen();
    void openSample(const QString &name);
    void chooseFolder();
    void renameActiveItem();
    void tellActiveItem();
    MoleculeItem *currentMolecule() const;
    /// As a note of the item that the file is told by.
    void noteDoubts(const QList<QGraphicsWidget *> &items, const QString &path, const QStringList &doubts);
    /// On a plot that takes it, or one of its own.
    void openExperiment(const QString &path, NmrItem *onto);
    /// A menu of the menu bar with whatever the current item of a kind offers in its context menu.
    void createItemMenu(const QString &title, const std::function<DocumentItem *()> &current, const QString &ifNone,
                        const QList<QAction *> &always = {});
    /// A measured spectrum goes onto the item, or the current one when that is null.
    void openPath(const QString &path, NmrItem *onto);
    /// As openPath(), one after the other, until the user has enough.
    void openAll(const QStringList &paths, const QPointer<NmrItem> &onto);
    QStringList withFoldersOpened(const QStringList &paths) const;
    void openEach(const QStringList &paths, const QPointer<NmrItem> &onto);
    /// What can be opened, as in file dialogs.
    QStringList knownFilters() const;
    void chooseFiles();
    void deleteActiveItem();
    void showAbout();
    void addHostMenu(DocumentItem *item);

    HostApplication *m_host = nullptr;
    MainView *m_view;
    QMenu *m_itemMenu;
    StackMenu *m_stackMenu;
    int m_doubtfulFiles = 0; ///< of those that are being opened
    PeakMenu *m_peakMenu;
    DocumentController *m_document;
    RecentFiles *m_recentFiles;
    ExportMenu *m_exportMenu;
    QLabel *m_readOut; ///< what is under the cursor
    SpectrumCommands *m_spectrumCommands;
    ItemNotes *m_itemNotes;
    CompareCommands *m_compare = nullptr;
    PowderCommands *m_powderCommands;
    QMenu *m_tablePowderMenu; ///< of tables
    QMenu *m_plotPowderMenu; ///< of plots
    ContentsDock *m_contents;
    WorkBar *m_workBar;
    StartHints *m_hints;
    QAction *m_create = nullptr;
    QAction *m_createPowder = nullptr;
    QAction *m_addMeasurement = nullptr;
    QAction *m_autoReference = nullptr;
    QAction *m_preview = nullptr;
    QPointer<MoleculeItem> m_molecule; ///< the one that was active last
    QString m_lastDirectory;
};

} // namespace Workbench
