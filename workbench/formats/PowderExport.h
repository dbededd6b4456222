// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/PowderSites.h"

class QIODevice;
class QJsonObject;

namespace Workbench {

/// Powder spectra as data files.
namespace PowderExport {

/// What the user asked for: nucleus, field, spinning, reference and slope, widths.
QJsonObject settingsJson(const PowderSettings &settings);

/// Settings, values of the sites and notes; of a spectrum also its axis and how far it has converged.
QJsonObject json(const PowderSites &sites, const PowderSettings &settings, const Powder::Spectrum *spectrum);

/// The same of a triple quantum spectrum, with the positions of the sites and the axes of the plane.
QJsonObject tripleQuantumJson(const PowderSites &sites, const PowderSettings &settings,
                              const ExperimentalSpectrum &plane);

/// The curve of every site: `ppm` and the sites' names, 17 significant digits. The curves add up to the spectrum.
void writeSitesCsv(const PowderSites &sites, const Powder::Spectrum &spectrum, QIODevice &device);

} // namespace PowderExport

} // namespace Workbench
