// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/SpectrumRemarks.h"
#include "items/NoteBar.h"

#include <QObject>

#include <functional>

namespace Workbench {

class DocumentItem;
class MainScene;
class NmrItem;
class SpectrumCommands;

/// Keeps the notes of items: what was doubtful in their files, and what one should know before one believes the spectra
/// of a plot, with the command that mends it.
class ItemNotes : public QObject {
    Q_OBJECT
public:
    ItemNotes(MainScene *scene, SpectrumCommands *commands);

    /// What a note on the lines of quadrupolar nuclei offers, and how powder spectra are edited.
    void setPowderCommand(const QString &text, std::function<void(NmrItem *, const QUuid &)> run,
                          std::function<void(NmrItem *, const QUuid &)> edit = {});

private:
    void watch(DocumentItem *item);
    void update(DocumentItem *item) const;
    QList<ItemNote> remarks(NmrItem *item) const;
    void readDoubts(DocumentItem *item) const;

    MainScene *m_scene;
    SpectrumCommands *m_commands;
    QString m_powderText;
    std::function<void(NmrItem *, const QUuid &)> m_powder, m_editPowder;
};

} // namespace Workbench
