// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>
#include <QPointer>

class QMainWindow;
class QMessageBox;

namespace Workbench {

class ComparePanel;
class DataEngine;
class HostApplication;
class MainScene;
class RankDialog;
class WorkBar;

/// The comparison of structures with measurements as commands of the window: the panel, the ranking, the reference
/// sets. It is a menu for plots, too.
class CompareCommands : public QMenu {
    Q_OBJECT
public:
    /// Adds the steps to the tool bar and the panel to the window.
    CompareCommands(MainScene *scene, DataEngine *engine, WorkBar *bar, QMainWindow *window);

    void setHost(HostApplication *host) { m_host = host; }
    /// That works for the ranking; this program unless another one is given.
    void setRankProgram(const QString &path) { m_rankProgram = path; }

    ComparePanel *panel() const { return m_panel; }
    /// Made when it is first opened.
    RankDialog *rankDialog();
    QAction *referenceSetAction() const { return m_referenceSet; }
    QAction *forgetSetsAction() const { return m_forgetSets; }

    void openRanking();
    /// Errors are shown in a message box.
    void useReferenceSet(const QString &fileName);

    /// What a file was opened as, so that a ranking leads there.
    void rememberFile(const QString &path, const QList<QGraphicsWidget *> &items);

Q_SIGNALS:
    void reported(const QString &text);
    /// To be opened on the page.
    void fileWanted(const QString &path);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void chooseReferenceSet();
    void forgetReferenceSets();
    void followReferenceSets();
    void showRanked(const QUuid &table);
    void openRanked(const QString &path);
    /// Whether the plug-in refuses because the numbers of peaks differ.
    bool isAboutCounts(const QMessageBox &box) const;

    MainScene *m_scene;
    DataEngine *m_data;
    QMainWindow *m_window;
    HostApplication *m_host = nullptr;
    ComparePanel *m_panel;
    RankDialog *m_rank = nullptr;
    QAction *m_referenceSet;
    QAction *m_forgetSets;
    QString m_rankProgram;
    QString m_directory;
    QHash<QString, QUuid> m_opened; ///< the tables of files, by canonical path
};

} // namespace Workbench
