// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/PeakAtomLinks.h"

#include "host/MainScene.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"

namespace Workbench {

namespace {

/// Whether the molecule says which of its atoms are behind peaks of the spectra. A spectrum's copy in another plot has
/// the peaks, but not the id that was noted with them.
bool isNoted(const NmrItem &spectra, const MoleculeItem &molecule)
{
    const PeakAssignments &noted = molecule.assignments();
    const QList<SpectrumEntry> &entries = spectra.nmrData()->stack().entries;
    return std::any_of(entries.cbegin(), entries.cend(), [&](const SpectrumEntry &entry) {
        const QList<SpectrumPeak> &peaks = entry.spectrum.peaks;
        return std::any_of(peaks.cbegin(), peaks.cend(),
                           [&](const SpectrumPeak &peak) { return noted.knows(peak.id); });
    });
}

} // namespace

PeakAtomLinks::PeakAtomLinks(MainScene *scene) : QObject(scene), m_scene(scene)
{
    connect(scene, &MainScene::itemAdded, this, &PeakAtomLinks::watch);
    connect(scene, &MainScene::itemsChanged, this, &PeakAtomLinks::link);
}

void PeakAtomLinks::watch(DocumentItem *item)
{
    if (auto *molecule = qobject_cast<MoleculeItem *>(item))
        connect(molecule, &MoleculeItem::assignmentsChanged, this, &PeakAtomLinks::link);
    if (auto *spectrum = qobject_cast<NmrItem *>(item)) {
        connect(spectrum->nmrData(), &NmrData::entriesChanged, this, &PeakAtomLinks::link);
        connect(spectrum->nmrData(), &NmrData::entryChanged, this, &PeakAtomLinks::link);
    }
    link();
}

void PeakAtomLinks::link()
{
    if (!m_scene->isDrawn())
        return;
    const QList<DocumentItem *> items = m_scene->documentItems();
    for (DocumentItem *item : items) {
        auto *spectrum = qobject_cast<NmrItem *>(item);
        if (!spectrum)
            continue;
        QList<DocumentItem *> links;
        for (DocumentItem *linked : spectrum->linkedItems()) {
            if (!qobject_cast<MoleculeItem *>(linked) && !qobject_cast<TableItem *>(linked))
                links.append(linked);
        }
        for (DocumentItem *other : items) {
            if (auto *molecule = qobject_cast<MoleculeItem *>(other); molecule && isNoted(*spectrum, *molecule)) {
                links.append(molecule);
                for (DocumentItem *beside : molecule->linkedItems()) {
                    if (qobject_cast<TableItem *>(beside))
                        links.append(beside);
                }
            }
        }
        spectrum->setLinkedItems(links);
    }
}

} // namespace Workbench

#include "moc_PeakAtomLinks.cpp"
