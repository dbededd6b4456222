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
    QUndoStack *stack = m_scene->undoStack();
    connect(item, &DocumentItem::geometryEdited, this, [this, stack, item](const QRectF &before, const QRectF &after) {
        stack->push(new ItemGeometryCommand(m_scene, item, before, after));
    });
    auto *nmr = qobject_cast<NmrItem *>(item);
    if (!nmr)
        return;
    NmrData *data = nmr->nmrData();
    connect(data, &NmrData::edited, this, [this, stack, data](const QString &what, const NmrStack &before) {
        stack->push(new StackCommand(m_scene, data, what, before));
    });
    // Molecules and tables come with a file and the data behind them; a spectrum is made by a command.
    stack->push(new ItemPresenceCommand(m_scene, item, ItemPresenceCommand::Added));
}

} // namespace Workbench
