// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>
#include <QPointer>

namespace Workbench {

class MainScene;
class NmrItem;

/// What can be done with the peaks of the measured spectrum in the current NMR item: set them by hand, pick them anew,
/// count equivalent sites.
class PeakMenu : public QMenu {
    Q_OBJECT
public:
    PeakMenu(MainScene *scene, QWidget *window);

Q_SIGNALS:
    /// What was done, for a status bar.
    void reported(const QString &text);

private:
    void watch(NmrItem *item);
    void followActiveItem();
    void edit(bool on);
    void pick();
    void countSites();

    MainScene *m_scene;
    QAction *m_edit;
    QPointer<NmrItem> m_edited; ///< whose peaks are being edited
};

} // namespace Workbench
