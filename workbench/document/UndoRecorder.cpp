// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/UndoRecorder.h"

#include "host/MainScene.h"
#include "document/UndoCommands.h"
#include "items/plot/NmrItem.h"

#include <QUndoStack>

namespace Workbench {

UndoRecorder::UndoRecorder(MainScene *scene) : QObject(scene), m_scene(scene)
{
    connect(scene, &MainScene::itemAdded, this, &UndoRecorder::watch);
}

void UndoRecorder::watch(DocumentItem *item)
{
    connect(item, &DocumentItem::geometryEdited, this, [this, item](const QRectF &before) {
        const DocumentItem::Place place = m_scene->placeBefore(*item, before);
        m_scene->notePlacedByHand(*item);
        m_scene->undoStack()->push(new ItemCommand<ItemPlace>(
            m_scene, item, MainScene::tr("Move %1").arg(item->title()), place, m_scene->currentItems()));
    });
    connect(item, &DocumentItem::nameEdited, this, [this, item](const QString &before) {
        m_scene->undoStack()->push(new ItemCommand<ItemName>(
            m_scene, item, MainScene::tr("Rename %1").arg(item->title()), before, m_scene->currentItems()));
    });
    if (auto *table = qobject_cast<TableItem *>(item)) {
        connect(table, &TableItem::columnsEdited, this, [this, table](const TableColumns &before) {
            m_scene->undoStack()->push(new ItemCommand<ItemColumns>(
                m_scene, table, MainScene::tr("Columns of %1").arg(table->title()), before, m_scene->currentItems()));
        });
    }
    auto *nmr = qobject_cast<NmrItem *>(item);
    if (!nmr)
        return;
    connect(nmr->nmrData(), &NmrData::aboutToBeEdited, this, [this] { m_currentBefore = m_scene->currentItems(); });
    connect(nmr->nmrData(), &NmrData::edited, this,
            [this, nmr](const QString &what, const NmrStack &before, const QUuid &entry) {
                ItemSpectra::Value value = ItemSpectra::get(*m_scene, *nmr);
                value.stack = before;
                m_scene->undoStack()->push(
                    new ItemCommand<ItemSpectra>(m_scene, nmr, what, value, m_currentBefore, entry));
            });
    // Molecules and tables come with a file and the data behind them; a spectrum is made by a command.
    m_scene->undoStack()->push(new ItemCommand<ItemPresence>(m_scene, item, MainScene::tr("Add %1").arg(item->title()),
                                                             {false, ItemPresence::get(*m_scene, *item).notes},
                                                             m_scene->currentItems()));
}

} // namespace Workbench

#include "moc_UndoRecorder.cpp"
