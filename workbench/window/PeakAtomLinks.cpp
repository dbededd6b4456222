// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/PeakAtomLinks.h"

#include "host/MainScene.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"

namespace Workbench {

PeakAtomLinks::PeakAtomLinks(MainScene *scene) : QObject(scene), m_scene(scene)
{
    connect(scene, &MainScene::itemAdded, this, &PeakAtomLinks::watch);
}

void PeakAtomLinks::watch(DocumentItem *item)
{
    if (auto *molecule = qobject_cast<MoleculeItem *>(item))
        connect(molecule, &MoleculeItem::assignmentsChanged, this, &PeakAtomLinks::link);
    else if (auto *spectrum = qobject_cast<NmrItem *>(item))
        connect(spectrum->nmrData(), &NmrData::entriesChanged, this, &PeakAtomLinks::link);
    link();
}

void PeakAtomLinks::link()
{
    if (!m_scene->isDrawn())
        return;
    const QList<DocumentItem *> items = m_scene->documentItems();
    for (DocumentItem *molecule : items) {
        const auto *withAtoms = qobject_cast<MoleculeItem *>(molecule);
        if (!withAtoms || withAtoms->assignments().entries().isEmpty())
            continue;
        for (DocumentItem *item : items) {
            const auto *spectrum = qobject_cast<NmrItem *>(item);
            const QList<QUuid> ids = spectrum ? spectrum->nmrData()->entryIds() : QList<QUuid>();
            if (std::none_of(ids.cbegin(), ids.cend(),
                             [&](const QUuid &id) { return withAtoms->assignments().entries().contains(id); }))
                continue;
            item->linkObject(molecule);
            for (DocumentItem *linked : molecule->linkedItems()) {
                if (qobject_cast<TableItem *>(linked))
                    item->linkObject(linked);
            }
        }
    }
}

} // namespace Workbench
