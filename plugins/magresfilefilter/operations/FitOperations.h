// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "operations/HostContext.h"

namespace Magres {

/// Moves the reference of the simulated spectrum of the active stack onto the experimental one, makes the spectrum anew
/// and reports. Failures are shown; they change nothing.
void autoReference(const HostContext &host);

/// Reports how far the two spectra of the active stack lie apart.
void showRmsd(const HostContext &host);

} // namespace Magres
