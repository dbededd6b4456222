// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/UndoCommands.h"

#include "data/PeakAssignments.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrItem.h"

#include <QUndoStack>

#include <memory>
#include <vector>

namespace Workbench {

namespace {

PeakNotes peakNotes(const MainScene &scene)
{
    PeakNotes notes;
    for (const DocumentItem *item : scene.documentItems()) {
        if (const auto *molecule = qobject_cast<const MoleculeItem *>(item))
            notes.append({molecule->id(), PeakAssignments::notes(molecule->molMap())});
    }
    return notes;
}

void setPeakNotes(const PeakNotes &notes, const MainScene &scene)
{
    for (const auto &[id, list] : notes) {
        auto *molecule = qobject_cast<MoleculeItem *>(scene.item(id));
        if (molecule && PeakAssignments::notes(molecule->molMap()) != list)
            molecule->setMolMap(PeakAssignments::withNotes(list, molecule->molMap()));
    }
}

} // namespace

ItemPresence::Value ItemPresence::get(const MainScene &scene, const DocumentItem &item)
{
    return {scene.isOnPage(&item), peakNotes(scene)};
}

void ItemPresence::set(MainScene &scene, DocumentItem &item, const Value &value)
{
    scene.setOnPage(&item, value.onPage);
    setPeakNotes(value.notes, scene);
}

DocumentItem::Place ItemPlace::get(const MainScene &scene, const DocumentItem &item)
{
    return scene.placeOf(item);
}

void ItemPlace::set(MainScene &scene, DocumentItem &item, const DocumentItem::Place &place)
{
    scene.setPlace(item, place);
}

QString ItemName::get(const MainScene &, const DocumentItem &item)
{
    return item.givenName();
}

void ItemName::set(MainScene &, DocumentItem &item, const QString &name)
{
    item.setGivenName(name);
}

QStringList ItemDoubts::get(const MainScene &, const DocumentItem &item)
{
    return item.doubts();
}

void ItemDoubts::set(MainScene &, DocumentItem &item, const QStringList &doubts)
{
    item.setDoubts(doubts);
}

ItemSpectra::Value ItemSpectra::get(const MainScene &scene, const DocumentItem &item)
{
    return {qobject_cast<const NmrItem *>(&item)->nmrData()->stack(), peakNotes(scene)};
}

void ItemSpectra::set(MainScene &scene, DocumentItem &item, const Value &value)
{
    qobject_cast<NmrItem *>(&item)->nmrData()->setStack(value.stack);
    setPeakNotes(value.notes, scene);
}

TableColumns ItemColumns::get(const MainScene &, const DocumentItem &item)
{
    return qobject_cast<const TableItem *>(&item)->columns();
}

void ItemColumns::set(MainScene &, DocumentItem &item, const TableColumns &columns)
{
    qobject_cast<TableItem *>(&item)->setColumns(columns);
}

template <typename Property>
ItemCommand<Property>::ItemCommand(MainScene *scene, const DocumentItem *item, const QString &what, Value before,
                                   const MainScene::CurrentItems &currentBefore, const QUuid &part)
    : QUndoCommand(what),
      m_hold(scene, item->id()),
      m_other(std::move(before)),
      m_currentBefore(currentBefore),
      m_part(part)
{
}

template <typename Property>
bool ItemCommand<Property>::mergeWith(const QUndoCommand *next)
{
    // What was there before is kept, and what is there is read when it is undone.
    const auto *other = dynamic_cast<const ItemCommand *>(next);
    return other && m_done && other->m_hold.item() == m_hold.item() && other->m_part == m_part
        && other->text() == text();
}

template <typename Property>
void ItemCommand<Property>::exchange(const MainScene::CurrentItems &current)
{
    if (!m_hold.item())
        return setObsolete(true);
    MainScene &scene = *m_hold.scene();
    Value value = Property::get(scene, *m_hold.item());
    Property::set(scene, *m_hold.item(), m_other);
    scene.setCurrentItems(current);
    m_other = std::move(value);
}

template <typename Property>
void ItemCommand<Property>::redo()
{
    // The history does this once when the command, whose change is made, comes into it.
    if (!m_done)
        exchange(m_currentAfter);
    m_done = true;
}

template <typename Property>
void ItemCommand<Property>::undo()
{
    m_currentAfter = m_hold.scene() ? m_hold.scene()->currentItems() : MainScene::CurrentItems();
    exchange(m_currentBefore);
    m_done = false;
}

template class ItemCommand<ItemPresence>;
template class ItemCommand<ItemPlace>;
template class ItemCommand<ItemName>;
template class ItemCommand<ItemDoubts>;
template class ItemCommand<ItemSpectra>;
template class ItemCommand<ItemColumns>;

void removeWithUndo(MainScene &scene, DocumentItem *item)
{
    const MainScene::CurrentItems current = scene.currentItems();
    auto *command = new ItemCommand<ItemPresence>(&scene, item, MainScene::tr("Delete %1").arg(item->title()),
                                                  ItemPresence::get(scene, *item), current);
    scene.setOnPage(item, false);
    scene.undoStack()->push(command);
}

void renameWithUndo(MainScene &scene, DocumentItem *item, const QString &name)
{
    if (name == item->givenName())
        return;
    auto *command = new ItemCommand<ItemName>(&scene, item, MainScene::tr("Rename %1").arg(item->title()),
                                              item->givenName(), scene.currentItems());
    item->setGivenName(name);
    scene.undoStack()->push(command);
}

void arrangeWithUndo(MainScene &scene, const QString &what)
{
    std::vector<std::unique_ptr<QUndoCommand>> commands;
    for (const DocumentItem *item : scene.documentItems()) {
        if (!item->place().workspace.isEmpty())
            commands.push_back(std::make_unique<ItemCommand<ItemPlace>>(&scene, item, what, scene.placeOf(*item),
                                                                        scene.currentItems()));
    }
    if (commands.empty())
        return;
    scene.arrangeAll();
    scene.undoStack()->beginMacro(what);
    for (auto &command : commands)
        scene.undoStack()->push(command.release());
    scene.undoStack()->endMacro();
}

void dismissDoubtsWithUndo(MainScene &scene, DocumentItem *item)
{
    if (item->doubts().isEmpty())
        return;
    auto *command = new ItemCommand<ItemDoubts>(&scene, item, MainScene::tr("Dismiss Note of %1").arg(item->title()),
                                                item->doubts(), scene.currentItems());
    item->setDoubts({});
    scene.undoStack()->push(command);
}

} // namespace Workbench
