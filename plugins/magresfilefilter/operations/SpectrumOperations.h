// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "operations/HostContext.h"
#include "reading/MagresData.h"
#include "synthesis/MagresSpecParams.h"

namespace Magres {

/// Makes a new spectrum of a data set of the document, with parameters that the user is asked for. Failures are shown.
void createSpectrum(const HostContext &host, const QUuid &dataId);

/// Makes the active spectrum anew, with parameters that the user may change. Failures are shown; they leave the
/// spectrum as it was.
void updateSpectrum(const HostContext &host);

/// Generates the spectrum that the record describes and puts it into an existing entry. Throws TPluginError with the
/// entry unchanged.
void replaceSpectrum(const HostContext &host, const WrNMRData &spectra, const QUuid &entry, const MagresData &data,
                     MagresSpecParams &parameters);

} // namespace Magres
