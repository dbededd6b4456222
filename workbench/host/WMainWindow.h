// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>

#include <functional>

class DataEngine;
class DocumentController;
class DocumentItem;
class ExportMenu;
class FileFilterRegistry;
class MainScene;
class MainView;
class NmrItem;
class PeakMenu;
class PluginManager;
class QLabel;
class RecentFiles;
class StackMenu;

/// The window, and the object through which plug-ins find the rest of the host. Headless hosts have it too and never
/// show it.
class WMainWindow : public QMainWindow {
    Q_OBJECT
    Q_PROPERTY(QString language READ language)
    Q_PROPERTY(QMenu *nmrContextMenu READ nmrContextMenu)
public:
    struct ReadResult {
        QObject *filter; ///< the plug-in that read the file
        QList<QGraphicsWidget *> items;
    };

    explicit WMainWindow(FileFilterRegistry *filters);
    ~WMainWindow() override;

    // What plug-ins call by name.
    Q_INVOKABLE QObject *dataEngine() const;
    /// The data of the current NMR item; null when there is none.
    Q_INVOKABLE QObject *getNMRData() const;
    /// The plot of the current NMR item; null when there is none.
    Q_INVOKABLE QObject *nmrPlot() const;
    /// The workbench sells nothing: every product is licensed.
    Q_INVOKABLE bool checkProductLicense(QString product) const;

    /// Two letters, "en".
    QString language() const;
    QMenu *nmrContextMenu() const { return m_nmrContextMenu; }

    MainScene *scene() const { return m_scene; }
    MainView *view() const { return m_view; }
    DataEngine *documentData() const { return m_data; }
    DocumentController *document() const { return m_document; }

    /// For the About box and the tables in documents; the window works without.
    void setPluginManager(const PluginManager *plugins);

    /// Reads the file into the document through the filter that takes it. Throws std::exception with a text for the
    /// user; the document is then as before.
    ReadResult readFile(const QString &fileName);

public Q_SLOTS:
    /// Each is a document, a file for readFile() or a measured spectrum; errors are shown in a message box.
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

    FileFilterRegistry *m_filters;
    const PluginManager *m_plugins = nullptr;
    DataEngine *m_data;
    MainScene *m_scene;
    MainView *m_view;
    QMenu *m_nmrContextMenu;
    QMenu *m_itemMenu;
    StackMenu *m_stackMenu;
    PeakMenu *m_peakMenu;
    DocumentController *m_document;
    RecentFiles *m_recentFiles;
    ExportMenu *m_exportMenu;
    QLabel *m_readOut; ///< what is under the cursor
    QString m_lastDirectory;
};
