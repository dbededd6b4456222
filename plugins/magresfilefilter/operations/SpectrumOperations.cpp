// SPDX-License-Identifier: BSD-3-Clause
#include "operations/SpectrumOperations.h"

#include "operations/PeakAssignment.h"
#include "operations/WaitCursor.h"
#include "support/TPluginError.h"
#include "support/WrBaseGraphicsItem.h"
#include "support/WrNMRPlot.h"
#include "synthesis/ParameterStep.h"
#include "synthesis/SpectrumRecord.h"
#include "ui/SettingsScope.h"

#include <QCoreApplication>

namespace Magres {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(MagresOperations)
};

/// Lets the user set the parameters; without a user, as if the dialog had been accepted at once. Throws TPluginError when
/// it was cancelled.
void askForParameters(const HostContext &host, const MagresData &data, MagresSpecParams &parameters)
{
    completeParameters(data, parameters, host.nuclearProperties());
}

} // namespace

void createSpectrum(const HostContext &host, const QUuid &dataId)
{
    runReportingFailure(host, Texts::tr("Interrupted"), Texts::tr("The spectrum cannot be generated: %1"), [&] {
        SettingsScope<MagresData> data;
        data.fromMap(host.requiredDataMap(dataId));
        SettingsScope<MagresSpecParams> parameters;
        askForParameters(host, data, parameters);

        const WaitCursor cursor;
        const GeneratedSpectrum spectrum = generateSpectrum(data, parameters, host.nuclearProperties());
        QGraphicsWidget *item = host.scene().createNMRItem(host.scene().getEmptyRect(), spectrum.data, true);
        const WrNMRData spectra(WrBaseGraphicsItem(item).getNMRData());
        assignPeaks(host.scene(), data, parameters, spectra.activeEntryId());
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
        data.fromMap(host.requiredDataMap(parameters.magresDataId));
        askForParameters(host, data, parameters);

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
