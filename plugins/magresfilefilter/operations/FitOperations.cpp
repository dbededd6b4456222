// SPDX-License-Identifier: BSD-3-Clause
#include "operations/FitOperations.h"

#include "fitting/ReferenceFit.h"
#include "operations/SpectrumOperations.h"
#include "operations/WaitCursor.h"
#include "parameters/Texts.h"
#include "support/TPluginError.h"
#include "ui/SettingsScope.h"

namespace Magres {
namespace {

/// A simulated and an experimental spectrum in one plot.
struct FitStack {
    QUuid magresEntry;
    QUuid experimentalEntry;
    QVariantHash storedParameters; ///< of the simulated spectrum
};

/// Throws TPluginError when the plot holds anything else.
FitStack validStack(const WrNMRData &spectra)
{
    const QList<QUuid> entries = spectra.entryIds();
    if (entries.size() == 1)
        throw TPluginError(Texts::tr("There is 1 spectrum in this plot. Two is expected"));
    if (entries.size() != 2)
        throw TPluginError(Texts::tr("There are %1 spectra in this plot. Two is expected").arg(entries.size()));
    const QVariantHash first = spectra.entryOrigParams(entries[0], QStringLiteral("magres"));
    const QVariantHash second = spectra.entryOrigParams(entries[1], QStringLiteral("magres"));
    if (first.isEmpty() && second.isEmpty())
        throw TPluginError(Texts::tr("Neither of the spectra is generated from MAGRES"));
    if (!first.isEmpty() && !second.isEmpty())
        throw TPluginError(Texts::tr("Both spectra are generated from MAGRES. One should be experimental"));
    return second.isEmpty() ? FitStack{entries[0], entries[1], first} : FitStack{entries[1], entries[0], second};
}

PeakColumns collectPeaks(const WrNMRData &spectra, const FitStack &stack)
{
    const QString peakList = QStringLiteral("PeakList");
    return peakColumns(spectra.entryPeakList(stack.magresEntry).value(peakList).toList(),
                       spectra.entryPeakList(stack.experimentalEntry).value(peakList).toList());
}

AxisUnits unitsOf(const WrNMRData &spectra)
{
    return {spectra.xUnitsString(), spectra.yUnitsString()};
}

template <typename Operation>
void runOnStack(const HostContext &host, Operation operation)
{
    runReportingFailure(
        host, Texts::tr("Error"),
        Texts::tr("This function requires experimental and MAGRES spectra in the same stack. Both spectra "
                  "should have the same number of the compound peaks.\n\n%1"),
        operation);
}

} // namespace

void autoReference(const HostContext &host)
{
    runOnStack(host, [&] {
        const WrNMRData spectra = host.activeSpectra();
        const FitStack stack = validStack(spectra);
        SettingsScope<MagresSpecParams> stored;
        stored.fromMap(stack.storedParameters);
        SettingsScope<MagresData> data;
        data.assign(host.requiredData(stored.magresDataId));

        // A copy, not bound to the settings: a fitted reference belongs to this spectrum alone.
        MagresSpecParams parameters = stored;
        const QString report = fitReference(collectPeaks(spectra, stack), unitsOf(spectra), parameters);
        {
            const WaitCursor cursor;
            replaceSpectrum(host, spectra, stack.magresEntry, data, parameters);
        }
        host.showInformation(Texts::tr("New reference"), report);
    });
}

void showRmsd(const HostContext &host)
{
    runOnStack(host, [&] {
        const WrNMRData spectra = host.activeSpectra();
        const FitStack stack = validStack(spectra);
        SettingsScope<MagresSpecParams> parameters;
        parameters.fromMap(stack.storedParameters);
        host.showInformation(Texts::tr("RMSD"), rmsdReport(collectPeaks(spectra, stack), unitsOf(spectra), parameters));
    });
}

} // namespace Magres
