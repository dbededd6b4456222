// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/Spectrum.h"

#include <QStringList>

/// Measured spectra and peak lists from files, in the form in which they are stacked onto a simulated spectrum.
namespace ExperimentFile {

/// For file dialogs.
QStringList nameFilters();
/// By the name alone: what does not look like an experiment is a matter of the plug-ins.
bool isExperiment(const QString &path);

/// An entry for NMR data, with its peaks: those of a peak list, or the ones picked from a spectrum. Nuclei that the
/// file does not name are those of the spectrum beside which it goes. Errors, an experiment of other dimensions or
/// nuclei among them, are std::runtime_error (UTF-8).
QVariantMap read(const QString &path, const Spectrum &beside);

/// Comma-separated text that holds peaks and not the points of a spectrum. A header tells: its last column is called
/// intensity for points. Without one, dozens of positions at one distance are points.
bool isPeakList(const QByteArray &text, int dimensions);

} // namespace ExperimentFile
