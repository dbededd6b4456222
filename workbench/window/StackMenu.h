// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

#include <functional>

namespace Workbench {

class MainScene;
class NmrData;
class NmrItem;

/// What can be done with the stack of spectra in the current NMR item: put an experiment onto it, choose the active
/// spectrum, take one off.
class StackMenu : public QMenu {
    Q_OBJECT
public:
    StackMenu(MainScene *scene, QWidget *window);

    /// Onto the item, or the current one when that is null. Errors are shown in a message box.
    void addExperiment(const QString &path, NmrItem *item = nullptr);

Q_SIGNALS:
    /// What was done, for a status bar.
    void reported(const QString &text);

private:
    /// Null when there is no NMR item.
    NmrData *data() const;
    void chooseExperiment();
    void activateNext(int direction);
    void fillActiveMenu();
    void fillRemoveMenu();
    void addEntryActions(QMenu *menu, const std::function<void(QAction *, const QUuid &)> &setUp);

    MainScene *m_scene;
    QMenu *m_activeMenu;
    QMenu *m_removeMenu;
    QAction *m_next;
    QAction *m_previous;
    QString m_lastDirectory;
};

} // namespace Workbench
