// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/PeakListFile.h"
#include "data/Measurement.h"
#include "data/Spectrum.h"

#include <QStringList>

namespace Workbench {

/// An experiment in memory, which can be put beside any number of simulated spectra of the same nuclei.
class Experiment {
public:
    /// `nuclei` and `frequencies` (MHz, of 0 ppm) are those of the simulated spectra, F2 first; an empty name fits any,
    /// and frequencies may be unknown. They stand in where the file is silent. Errors, an experiment of other
    /// dimensions or nuclei among them, are std::runtime_error (UTF-8).
    Experiment(const QString &path, const QStringList &nuclei, const std::vector<double> &frequencies = {});

    /// An entry for NMR data, with its peaks: those of a peak list, or the ones picked from a spectrum and counted as
    /// in countedLike().
    QVariantMap beside(const QList<SpectrumPeak> &simulated) const;

    /// What was assumed in reading it, in whole sentences.
    const QStringList &notes() const { return m_notes; }

private:
    void take(ExperimentalSpectrum measured);
    void take(MeasuredPeaks measured);

    QVariantMap m_entry; ///< with the peaks as they are in the file
    std::vector<PeakListFile::Peak> m_picked; ///< in one dimension, where they are counted
    QStringList m_notes;
};

/// Measured spectra and peak lists from files, in the form in which they are stacked onto a simulated spectrum.
namespace ExperimentFile {

/// For file dialogs.
QStringList nameFilters();
/// By the name alone: what does not look like an experiment is a matter of the plug-ins.
bool isExperiment(const QString &path);

/// Experiment(path, its nuclei).beside(its peaks), for a spectrum that has points.
QVariantMap read(const QString &path, const Spectrum &beside);

/// Equivalent sites of a crystal are one peak of a measurement and as many simulated ones, and the comparison wants as
/// many measured as simulated peaks. When the peaks are as many as the simulated positions that differ, each is
/// repeated, by rank, as often as its position occurs; otherwise they are left as they are. One dimension.
std::vector<PeakListFile::Peak> countedLike(const QList<SpectrumPeak> &simulated,
                                            std::vector<PeakListFile::Peak> picked);

} // namespace ExperimentFile

} // namespace Workbench
