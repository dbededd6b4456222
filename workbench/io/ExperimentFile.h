// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "io/PeakListFile.h"
#include "items/Spectrum.h"

#include <QStringList>

/// Measured spectra and peak lists from files, in the form in which they are stacked onto a simulated spectrum.
namespace ExperimentFile {

/// For file dialogs.
QStringList nameFilters();
/// By the name alone: what does not look like an experiment is a matter of the plug-ins.
bool isExperiment(const QString &path);

/// An entry for NMR data, with its peaks: those of a peak list, or the ones picked from a spectrum
/// and counted as in countedLike(). Nuclei and frequencies
/// that the file does not name are those of the spectrum beside which it goes. Errors, an experiment of other
/// dimensions or nuclei among them, are std::runtime_error (UTF-8).
QVariantMap read(const QString &path, const Spectrum &beside);

/// Comma-separated text that holds peaks and not the points of a spectrum. A header tells: its last column is called
/// intensity for points. Without one, dozens of positions at one distance are points.
bool isPeakList(const QByteArray &text, int dimensions);

/// Equivalent sites of a crystal are one peak of a measurement and as many simulated ones, and the comparison wants as
/// many measured as simulated peaks. When the peaks are as many as the simulated positions that differ, each is
/// repeated, by rank, as often as its position occurs; otherwise they are left as they are. One dimension.
std::vector<PeakListFile::Peak> countedLike(const QList<SpectrumPeak> &simulated,
                                            std::vector<PeakListFile::Peak> picked);

} // namespace ExperimentFile
