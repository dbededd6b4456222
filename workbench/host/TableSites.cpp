// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/TableSites.h"

#include "analysis/PowderEntry.h"
#include "data/Error.h"
#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"

namespace Workbench {

namespace {

/// Adds what a spectrum of the stack says of the data set's nuclei.
void takeScale(const NmrData &stack, const SpectrumEntry &entry, const QUuid &dataId, SiteTable::Options &options)
{
    if (entry.dataId() != dataId)
        return;
    const auto powder = PowderOrigin::of(entry);
    // A site's curve is made as its sum is, whose name tells people more.
    const QString sum = powder ? stack.entryName(powder->sum) : QString();
    const QString source = Texts::tr("of %1").arg(sum.isEmpty() ? entry.name : sum);
    if (powder) {
        options.frequency = powder->settings.protonFrequency;
        options.setScale(powder->settings.nucleus, {powder->settings.reference, powder->settings.slope, source});
        return;
    }
    const QVariantHash parameters = entry.parameters(QStringLiteral("magres"));
    options.frequency = parameters.value(QStringLiteral("freq"), options.frequency).toDouble();
    const QVariantMap references = parameters.value(QStringLiteral("ref")).toMap();
    const QVariantMap slopes = parameters.value(QStringLiteral("slope")).toMap();
    for (const SpectrumAxis &axis : entry.spectrum.axes) {
        const QString nucleus = axis.isotope();
        if (references.contains(nucleus))
            options.setScale(nucleus,
                             {references.value(nucleus).toDouble(), slopes.value(nucleus, -1).toDouble(), source});
    }
}

} // namespace

TableSites::TableSites(MainScene *scene, DataEngine *data) : QObject(scene), m_scene(scene), m_data(data)
{
    connect(scene, &MainScene::itemAdded, this, &TableSites::watch);
    connect(scene, &MainScene::itemsChanged, this, &TableSites::refresh);
    connect(scene, &MainScene::currentItemsChanged, this, &TableSites::refresh);
    if (data)
        connect(data, &DataEngine::changed, this, [this] {
            m_options.clear();
            for (DocumentItem *item : m_scene->documentItems()) {
                if (auto *table = qobject_cast<TableItem *>(item))
                    table->model()->forgetSites();
            }
        });
}

void TableSites::setStart(const QMap<QString, SiteTable::Scale> &scales)
{
    m_start = scales;
    refresh();
}

void TableSites::watch(DocumentItem *item)
{
    if (auto *table = qobject_cast<TableItem *>(item))
        table->model()->setSiteSource([this, table] { return sitesOf(*table); });
    if (auto *spectra = qobject_cast<NmrItem *>(item)) {
        connect(spectra->nmrData(), &NmrData::entriesChanged, this, &TableSites::refresh);
        connect(spectra->nmrData(), &NmrData::entryChanged, this, &TableSites::refresh);
        connect(spectra->nmrData(), &NmrData::activeEntryChanged, this, &TableSites::refresh);
    }
}

void TableSites::refresh()
{
    for (DocumentItem *item : m_scene->documentItems()) {
        auto *table = qobject_cast<TableItem *>(item);
        const auto known = table ? m_options.constFind(table->id()) : m_options.constEnd();
        if (known == m_options.constEnd() || *known == optionsOf(*table))
            continue;
        m_options.erase(known);
        table->model()->forgetSites();
    }
}

SiteTable::Options TableSites::optionsOf(const TableItem &table) const
{
    SiteTable::Options options;
    options.scales = m_start;
    const QUuid data = table.sharedDataIds().value(0);
    const auto take = [&](const NmrItem &spectra) {
        for (const SpectrumEntry &entry : spectra.nmrData()->stack().entries)
            takeScale(*spectra.nmrData(), entry, data, options);
    };
    // What comes later counts more: the plot that the user works with, and in it the active spectrum.
    const NmrItem *current = m_scene->currentNmrItem();
    for (const DocumentItem *item : m_scene->documentItems()) {
        const auto *spectra = qobject_cast<const NmrItem *>(item);
        if (spectra && spectra != current)
            take(*spectra);
    }
    if (current) {
        take(*current);
        const NmrData &stack = *current->nmrData();
        takeScale(stack, stack.stackEntry(stack.activeEntryId()), data, options);
    }
    return options;
}

std::shared_ptr<const SiteTable> TableSites::sitesOf(const TableItem &table)
{
    const QVariantMap data = m_data ? m_data->getDataMap(table.sharedDataIds().value(0)) : QVariantMap();
    if (data.isEmpty())
        return nullptr;
    const SiteTable::Options options = optionsOf(table);
    m_options.insert(table.id(), options);
    return std::make_shared<const SiteTable>(CrystalStructure::fromData(data), options);
}

} // namespace Workbench

#include "moc_TableSites.cpp"
