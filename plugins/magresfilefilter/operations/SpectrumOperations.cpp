// SPDX-License-Identifier: BSD-3-Clause
#include "operations/SpectrumOperations.h"

#include "operations/PeakAssignment.h"
#include "operations/WaitCursor.h"
#include "parameters/Texts.h"
#include "support/TPluginError.h"
#include "support/WrBaseGraphicsItem.h"
#include "support/WrNMRPlot.h"
#include "synthesis/ParameterStep.h"
#include "synthesis/SpectrumRecord.h"
#include "ui/SettingsScope.h"
#include "ui/WMagresDialog.h"

#include <QPointer>

namespace Magres {
namespace {

/// Lets the user set the parameters; without a user, as if the dialog had been accepted at once. Throws TPluginError
/// when it was cancelled, or when the data set was deleted meanwhile.
void askForParameters(const HostContext &host, const MagresData &data, MagresSpecParams &parameters)
{
    if (host.isHeadless()) {
        completeParameters(data, parameters, host.nuclearProperties());
        return;
    }
    // The window may go, and take its dialogs along, while the user looks at this one.
    QPointer<WMagresDialog> dialog = new WMagresDialog(data, parameters, host.nuclearProperties(), host.window());
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    if (accepted)
        dialog->copyToRecord();
    delete dialog;
    if (!accepted)
        throw TPluginError(Texts::tr("Canceled"));
    host.requiredDataMap(data.ID);
}

} // namespace

void createSpectrum(const HostContext &host, const QUuid &dataId)
{
    runReportingFailure(host, Texts::tr("Interrupted"), Texts::tr("The spectrum cannot be generated: %1"), [&] {
        SettingsScope<MagresData> data;
        data.assign(host.requiredData(dataId));
        SettingsScope<MagresSpecParams> parameters;
        askForParameters(host, data, parameters);

        const WaitCursor cursor;
        const GeneratedSpectrum spectrum = generateSpectrum(data, parameters, host.nuclearProperties());
        QGraphicsWidget *item = host.scene().createNMRItem(host.scene().getEmptyRect(), spectrum.data, true);
        const QUuid entry = WrNMRData(WrBaseGraphicsItem(item).getNMRData()).activeEntryId();
        if (entry.isNull())
            throw TPluginError(Texts::tr("The document has not taken the spectrum"));
        assignPeaks(host.scene(), data, parameters, entry);
    });
}

void updateSpectrum(const HostContext &host)
{
    runReportingFailure(host, Texts::tr("Interrupted"), Texts::tr("The spectrum cannot be updated: %1"), [&] {
        const WrNMRData spectra = host.currentSpectra();
        const QUuid entry = spectra.activeEntryId();
        SettingsScope<MagresSpecParams> parameters;
        const QVariantHash stored = spectra.entryOrigParams(entry, QStringLiteral("magres"));
        if (stored.isEmpty())
            throw TPluginError(Texts::tr("The active NMR spectrum is not a MAGRES spectrum"));
        parameters.fromMap(stored);
        SettingsScope<MagresData> data;
        data.assign(host.requiredData(parameters.magresDataId));
        const QPointer<QObject> stillThere = spectra.object();
        askForParameters(host, data, parameters);
        if (!stillThere)
            throw TPluginError(Texts::tr("The active NMR spectrum is not a MAGRES spectrum"));

        const WaitCursor cursor;
        replaceSpectrum(host, spectra, entry, data, parameters);
        WrNMRPlot(host.mainWindow().nmrPlot()).fullReset();
    });
}

void replaceSpectrum(const HostContext &host, const WrNMRData &spectra, const QUuid &entry, const MagresData &data,
                     MagresSpecParams &parameters)
{
    GeneratedSpectrum spectrum = generateSpectrum(data, parameters, host.nuclearProperties());
    // The parameters stay with the raw data; the entry's own description holds none.
    QVariantMap entryMap = spectrum.data;
    entryMap.insert(QStringLiteral("RawData"), spectrum.data);
    spectrum.specInfo.insert(QStringLiteral("OriginalParameters"), QVariant());
    entryMap.insert(QStringLiteral("SpecInfo"), spectrum.specInfo);
    spectra.insertSpectrum(entry, entryMap);
    assignPeaks(host.scene(), data, parameters, entry);
}

} // namespace Magres
