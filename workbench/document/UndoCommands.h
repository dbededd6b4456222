// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/NmrData.h"

#include <QPointer>
#include <QRectF>
#include <QUndoCommand>

#include <utility>

namespace Workbench {

class DocumentItem;
class MainScene;
class MoleculeItem;

/// An item that comes onto the page or goes from it. While it is off the page it belongs to the command.
class ItemPresenceCommand : public QUndoCommand {
public:
    enum Change { Added, Removed };

    /// An added item is on the page already.
    ItemPresenceCommand(MainScene *scene, DocumentItem *item, Change change);
    ~ItemPresenceCommand() override;

    void redo() override;
    void undo() override;

private:
    void setPresent(bool present);

    MainScene *m_scene;
    QPointer<DocumentItem> m_item;
    Change m_change;
};

/// Takes the item off the page; undoable.
void removeWithUndo(MainScene &scene, DocumentItem *item);

/// An item that the user has moved or resized.
class ItemGeometryCommand : public QUndoCommand {
public:
    ItemGeometryCommand(MainScene *scene, DocumentItem *item, const QRectF &before, const QRectF &after);

    void redo() override { setGeometry(m_after); }
    void undo() override { setGeometry(m_before); }

private:
    void setGeometry(const QRectF &geometry);

    MainScene *m_scene;
    QPointer<DocumentItem> m_item;
    QRectF m_before;
    QRectF m_after;
};

/// A stack of spectra that was changed already when the command is made. What the molecules on the page note about the
/// stack's peaks goes with it; plug-ins note that after the change.
class StackCommand : public QUndoCommand {
public:
    StackCommand(MainScene *scene, NmrData *data, const QString &what, const NmrStack &before);

    void redo() override;
    void undo() override;

private:
    /// By molecule.
    using Notes = QList<std::pair<QPointer<MoleculeItem>, QVariantList>>;

    Notes notes() const;
    void setNotes(const Notes &notes) const;

    MainScene *m_scene;
    QPointer<NmrData> m_data;
    QList<QUuid> m_ids; ///< of before and after
    Notes m_notesBefore;
    Notes m_notesAfter;
    NmrStack m_before;
    NmrStack m_after;
    bool m_done = true;
};

} // namespace Workbench
