// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/HostWindow.h"

#include <QPointer>

#include <functional>

class QLabel;

namespace Workbench {

class DocumentController;
class DocumentItem;
class ExportMenu;
class HostApplication;
class MainView;
class NmrItem;
class PeakMenu;
class RecentFiles;
class StackMenu;

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

public Q_SLOTS:
    /// Each is a document, a file for a plug-in or a measured spectrum; errors are shown in a message box.
    void openFiles(const QStringList &fileNames);

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void createMenus();
    void createFileMenu();
    void createEditMenu();
    /// A menu of the menu bar with whatever the current item of a kind offers in its context menu.
    void createItemMenu(const QString &title, const std::function<DocumentItem *()> &current, const QString &ifNone);
    /// A measured spectrum goes onto the item, or the current one when that is null.
    void openPath(const QString &path, NmrItem *onto);
    /// As openPath(), one after the other, until the user has enough.
    void openAll(const QStringList &paths, const QPointer<NmrItem> &onto);
    void chooseFiles();
    void deleteActiveItem();
    void showAbout();
    void addHostMenu(DocumentItem *item);

    HostApplication *m_host = nullptr;
    MainView *m_view;
    QMenu *m_itemMenu;
    StackMenu *m_stackMenu;
    PeakMenu *m_peakMenu;
    DocumentController *m_document;
    RecentFiles *m_recentFiles;
    ExportMenu *m_exportMenu;
    QLabel *m_readOut; ///< what is under the cursor
    QString m_lastDirectory;
};

} // namespace Workbench
