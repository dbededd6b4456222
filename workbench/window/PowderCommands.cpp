// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/PowderCommands.h"

#include "analysis/PowderEntry.h"
#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"
#include "window/PowderDialog.h"
#include "window/compare/ReferenceSets.h"

#include <QMainWindow>
#include <QMessageBox>

namespace Workbench {

/// What a dialog was left with.
struct PowderMade {
    PowderOrigin origin;
    PowderSites sites;
    Powder::Spectrum spectrum;

    QVariantMap entry() const { return powderEntry(sites, spectrum, origin); }
};

namespace {

/// The measured curves of the plot: whatever nobody has computed.
std::vector<ExperimentalSpectrum> measurementsIn(const NmrItem *item)
{
    std::vector<ExperimentalSpectrum> found;
    if (!item)
        return found;
    for (const SpectrumEntry &entry : item->nmrData()->stack().entries) {
        if (entry.spectrum.dimensions() == 1 && !entry.isSimulated())
            found.push_back(asMeasured(entry));
    }
    return found;
}

} // namespace

PowderCommands::PowderCommands(MainScene *scene, DataEngine *data, QMainWindow *window)
    : QObject(window), m_scene(scene), m_data(data), m_window(window)
{
}

QString PowderCommands::whyNoCreate() const
{
    const TableItem *table = m_scene->currentTableItem();
    if (!table)
        return tr("Open a MAGRES file first: powder spectra are made from its table");
    return table->sharedDataIds().isEmpty() ? tr("The current table holds no calculation") : QString();
}

QString PowderCommands::whyNoEdit() const
{
    return powderIn(m_scene->currentNmrItem()).isNull() ? tr("The current plot holds no powder spectrum") : QString();
}

QUuid PowderCommands::powderIn(const NmrItem *item) const
{
    if (!item)
        return {};
    const NmrData &data = *item->nmrData();
    if (PowderOrigin::of(data.stackEntry(data.activeEntryId())))
        return data.activeEntryId();
    for (const SpectrumEntry &entry : data.stack().entries) {
        if (PowderOrigin::of(entry))
            return entry.id;
    }
    return {};
}

QString PowderCommands::nameOf(const PowderOrigin &origin, const QVariantMap &entry) const
{
    const QString source = m_scene->sourceOf({{}, {}, entry, {}});
    const QString what = tr("%1 powder").arg(origin.settings.nucleus);
    return source.isEmpty() ? what : tr("%1, %2").arg(source, what);
}

std::optional<PowderMade> PowderCommands::ask(const PowderOrigin &origin, const NmrItem *item, const QUuid &itself)
{
    const QVariantMap data = m_data->getDataMap(origin.dataId);
    if (data.isEmpty()) {
        QMessageBox::critical(m_window, tr("Powder Spectrum"),
                              tr("The calculation that this spectrum is made from is no longer in the document."));
        return std::nullopt;
    }
    try {
        PowderDialog dialog(CrystalStructure::fromData(data), origin.settings, measurementsIn(item), m_window);
        dialog.setObjectName(QStringLiteral("powderDialog"));
        if (!itself.isNull())
            dialog.setWindowTitle(tr("Edit Powder Spectrum"));
        if (dialog.exec() != QDialog::Accepted)
            return std::nullopt;
        return PowderMade{{origin.dataId, dialog.settings(), {}}, dialog.sites(), dialog.spectrum()};
    } catch (const std::exception &error) {
        QMessageBox::critical(m_window, tr("Powder Spectrum"), QString::fromUtf8(error.what()));
        return std::nullopt;
    }
}

void PowderCommands::putSiteCurves(NmrItem *item, const QUuid &sum, const PowderMade &made)
{
    NmrData &data = *item->nmrData();
    data.setStack(withSiteCurves(data.stack(), sum, made.sites, made.spectrum, made.origin));
}

void PowderCommands::create()
{
    if (const QString reason = whyNoCreate(); !reason.isEmpty())
        return Q_EMIT reported(reason);
    PowderOrigin origin;
    origin.dataId = m_scene->currentTableItem()->sharedDataIds().constFirst();
    // A measurement that stands alone waits for what is computed.
    const NmrItem *plot = m_scene->currentNmrItem();
    const bool waits = plot && plot->nmrData()->entryIds().size() == 1 && plot->nmrData()->simulatedEntry().isNull();
    if (waits) {
        const PowderSettings like = powderSettingsLike(plot->nmrData()->stack().entries.constFirst());
        origin.settings = ReferenceSets::powderStart(like.nucleus);
        origin.settings.protonFrequency = like.protonFrequency;
    }
    origin.settings.siteCurves = true;
    const auto made = ask(origin, waits ? plot : nullptr, {});
    if (!made)
        return;
    const QVariantMap entry = made->entry();
    auto *item = qobject_cast<NmrItem *>(m_scene->createNMRItem(m_scene->getEmptyRect(), entry, true));
    if (!item)
        return;
    NmrData &data = *item->nmrData();
    const QUuid sum = data.entryIds().constLast();
    data.setEntryName(sum, nameOf(made->origin, entry));
    putSiteCurves(item, sum, *made);
    Q_EMIT reported(tr("Powder spectrum of %1").arg(made->origin.settings.nucleus));
}

void PowderCommands::createLike(NmrItem *item, const QUuid &simulated)
{
    const SpectrumEntry &like = item->nmrData()->stackEntry(simulated);
    PowderOrigin origin{like.parameters(QStringLiteral("magres")).value(QStringLiteral("magresDataId")).toUuid(),
                        powderSettingsLike(like),
                        {}};
    origin.settings.siteCurves = true;
    const bool isOneDimensional = like.spectrum.dimensions() == 1;
    const QPointer<NmrItem> still = item;
    const auto made = ask(origin, item, {});
    if (!made || !still)
        return;
    const QVariantMap entry = made->entry();
    if (!isOneDimensional)
        item = qobject_cast<NmrItem *>(m_scene->createNMRItem(m_scene->getEmptyRect(), entry, true));
    if (!item)
        return;
    NmrData &data = *item->nmrData();
    const QString name = nameOf(made->origin, entry);
    if (isOneDimensional)
        data.setActiveEntryId(data.addEntry(entry, name));
    else
        data.setEntryName(data.entryIds().constLast(), name);
    putSiteCurves(item, data.entryIds().constLast(), *made);
}

void PowderCommands::edit()
{
    NmrItem *item = m_scene->currentNmrItem();
    const QUuid entry = powderIn(item);
    if (entry.isNull())
        return Q_EMIT reported(whyNoEdit());
    edit(item, entry);
}

void PowderCommands::edit(NmrItem *item, const QUuid &id)
{
    const auto origin = PowderOrigin::of(item->nmrData()->stackEntry(id));
    if (!origin)
        return;
    // A site's curve is edited with the sum that it belongs to.
    if (!origin->sum.isNull() && item->nmrData()->entryIds().contains(origin->sum))
        return edit(item, origin->sum);
    const QString nameBefore = nameOf(*origin, item->nmrData()->entry(id));
    const QPointer<NmrItem> still = item;
    const auto made = ask(*origin, item, id);
    if (!made || !still)
        return;
    const QVariantMap entry = made->entry();
    NmrData &data = *item->nmrData();
    const QString name = nameOf(made->origin, entry);
    data.announceEdit(tr("Edit Powder Spectrum"));
    // A name that the user has given stays.
    if (data.entryName(id) == nameBefore)
        data.setEntryName(id, name);
    data.insertSpectrum(id, entry);
    putSiteCurves(item, id, *made);
}

} // namespace Workbench

#include "moc_PowderCommands.cpp"
