// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/DocumentChoices.h"

#include "data/Nuclides.h"
#include "host/MainScene.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"

namespace Workbench {

namespace {

bool isPlane(const Spectrum &spectrum)
{
    return spectrum.dimensions() == 2
        || std::any_of(spectrum.peaks.cbegin(), spectrum.peaks.cend(),
                       [](const SpectrumPeak &peak) { return peak.f1 != 0; });
}

} // namespace

QList<StructureChoice> structuresOf(const MainScene &scene)
{
    QList<StructureChoice> choices;
    for (const DocumentItem *item : scene.documentItems()) {
        const auto *table = qobject_cast<const TableItem *>(item);
        const QList<QUuid> data = table ? table->sharedDataIds() : QList<QUuid>();
        if (!data.isEmpty())
            choices.append(
                {table->id(), data.constFirst(),
                 table->givenName().isEmpty() && !table->source().isEmpty() ? table->source() : table->title()});
    }
    return choices;
}

QList<MeasurementChoice> measurementsOf(const NmrItem &item)
{
    QList<MeasurementChoice> choices;
    const NmrData &data = *item.nmrData();
    for (const SpectrumEntry &entry : data.stack().entries) {
        if (entry.isSimulated() || entry.spectrum.peaks.isEmpty() || isPlane(entry.spectrum))
            continue;
        const QString own = entry.nuclei().value(0), name = entry.name.isEmpty() ? item.title() : entry.name;
        const QStringList named = Nuclides::table().namedIn(name);
        choices.append({item.id(), entry.id, name, own.isEmpty() ? data.shownSpectrum().axes.value(0).isotope() : own,
                        named.size() == 1 ? named.constFirst() : QString(), int(entry.spectrum.peaks.size())});
    }
    return choices;
}

QList<MeasurementChoice> measurementsOf(const MainScene &scene)
{
    QList<MeasurementChoice> choices;
    for (const DocumentItem *item : scene.documentItems()) {
        if (const auto *plot = qobject_cast<const NmrItem *>(item))
            choices += measurementsOf(*plot);
    }
    return choices;
}

QUuid structureOf(const MainScene &scene, const NmrItem &item)
{
    const NmrData &data = *item.nmrData();
    const SpectrumEntry &simulated =
        data.stackEntry(data.isSimulated(data.activeEntryId()) ? data.activeEntryId() : data.simulatedEntry());
    const QUuid made = simulated.dataId();
    for (const StructureChoice &choice : structuresOf(scene)) {
        if (choice.data == made)
            return choice.table;
    }
    return {};
}

MoleculeItem *moleculeOf(const TableItem &table)
{
    for (DocumentItem *item : table.linkedItems()) {
        if (auto *molecule = qobject_cast<MoleculeItem *>(item))
            return molecule;
    }
    return nullptr;
}

} // namespace Workbench
