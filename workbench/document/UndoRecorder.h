// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/MainScene.h"

#include <QObject>

namespace Workbench {

class DocumentItem;

/// Writes down for the scene's undo stack what happens to items and their spectra, whoever does it. Hosts without a
/// window do without: every step keeps the spectra of before.
class UndoRecorder : public QObject {
    Q_OBJECT
public:
    explicit UndoRecorder(MainScene *scene);

private:
    void watch(DocumentItem *item);

    MainScene *m_scene;
    MainScene::CurrentItems m_currentBefore; ///< the edit of spectra that is going on
};

} // namespace Workbench
