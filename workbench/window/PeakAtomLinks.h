// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace Workbench {

class DocumentItem;
class MainScene;

/// Links spectra to the molecules, and to the tables beside them, whose atoms stand behind their peaks, so that a
/// selection in one shows in all. These links follow from the notes of the molecules alone.
class PeakAtomLinks : public QObject {
    Q_OBJECT
public:
    explicit PeakAtomLinks(MainScene *scene);

private:
    void watch(DocumentItem *item);
    void link();

    MainScene *m_scene;
};

} // namespace Workbench
