// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/UndoCommands.h"

#include "host/MainScene.h"
#include "items/molecule/MoleculeItem.h"

#include <QUndoStack>

namespace Workbench {

ItemPresenceCommand::ItemPresenceCommand(MainScene *scene, DocumentItem *item, Change change)
    : QUndoCommand((change == Added ? MainScene::tr("Add %1") : MainScene::tr("Delete %1")).arg(item->title())),
      m_scene(scene),
      m_item(item),
      m_change(change)
{
}

ItemPresenceCommand::~ItemPresenceCommand()
{
    if (m_item && !m_item->scene())
        delete m_item;
}

void ItemPresenceCommand::redo()
{
    setPresent(m_change == Added);
}

void ItemPresenceCommand::undo()
{
    setPresent(m_change == Removed);
}

void ItemPresenceCommand::setPresent(bool present)
{
    if (!m_item) {
        setObsolete(true);
        return;
    }
    if (present == (m_item->scene() != nullptr))
        return;
    if (present)
        m_scene->attach(m_item);
    else
        m_scene->detach(m_item);
}

void removeWithUndo(MainScene &scene, DocumentItem *item)
{
    scene.undoStack()->push(new ItemPresenceCommand(&scene, item, ItemPresenceCommand::Removed));
}

ItemGeometryCommand::ItemGeometryCommand(MainScene *scene, DocumentItem *item, const QRectF &before,
                                         const QRectF &after)
    : QUndoCommand(MainScene::tr("Move %1").arg(item->title())),
      m_scene(scene),
      m_item(item),
      m_before(before),
      m_after(after)
{
}

void ItemGeometryCommand::setGeometry(const QRectF &geometry)
{
    if (m_item)
        m_item->setGeometry(geometry);
    else
        setObsolete(true);
    m_scene->updatePages();
}

StackCommand::StackCommand(MainScene *scene, NmrData *data, const QString &what, const NmrStack &before)
    : QUndoCommand(what), m_scene(scene), m_data(data), m_before(before), m_after(data->stack())
{
    for (const NmrStack *stack : {&m_before, &m_after}) {
        for (const auto &entry : stack->entries) {
            if (!m_ids.contains(entry.id))
                m_ids.append(entry.id);
        }
    }
    m_notesBefore = notes();
}

StackCommand::Notes StackCommand::notes() const
{
    Notes notes;
    for (DocumentItem *item : m_scene->documentItems()) {
        if (auto *molecule = qobject_cast<MoleculeItem *>(item))
            notes.append({molecule, PeakAssignments::notesOn(m_ids, molecule->molMap())});
    }
    return notes;
}

void StackCommand::setNotes(const Notes &notes) const
{
    for (const auto &[molecule, list] : notes) {
        if (molecule)
            molecule->setMolMap(PeakAssignments::withNotesOn(m_ids, list, molecule->molMap()));
    }
}

void StackCommand::redo()
{
    if (!m_data) {
        setObsolete(true);
    } else if (!m_done) {
        m_data->setStack(m_after);
        setNotes(m_notesAfter);
    }
    m_done = true;
}

void StackCommand::undo()
{
    m_done = false;
    if (!m_data)
        return setObsolete(true);
    m_notesAfter = notes();
    m_data->setStack(m_before);
    setNotes(m_notesBefore);
}

} // namespace Workbench
