// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace Workbench {

class DocumentItem;
class MainScene;

/// Writes down for the scene's undo stack what happens to items and their spectra, whoever does it. Hosts without a
/// window do without: every step keeps the spectra of before.
class UndoRecorder : public QObject {
    Q_OBJECT
public:
    explicit UndoRecorder(MainScene *scene);

private:
    void watch(DocumentItem *item);

    MainScene *m_scene;
};

} // namespace Workbench
