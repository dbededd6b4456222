// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/PowderSites.h"

#include <QByteArray>

namespace Workbench {

/// The par, pulseq and main sections with which SIMPSON (M. Bak, J. T. Rasmussen, N. C. Nielsen, J. Magn. Reson. 147
/// (2000) 296) makes the powder spectrum of a spin system of one site: NAME.spe, frequencies from that of the nucleus.
/// Spectral width and time are chosen to hold the spectrum and its decay. Throws std::runtime_error for more or fewer
/// sites than one and for an infinite spinning rate.
QByteArray simpsonExperiment(const PowderSites &sites, const PowderSettings &settings);

} // namespace Workbench
