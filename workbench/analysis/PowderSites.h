// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/UniqueSites.h"
#include "analysis/powder/Spectrum.h"
#include "analysis/powder/SpectrumFit.h"
#include "data/ExperimentalSpectrum.h"
#include "data/structure/CrystalStructure.h"

namespace Workbench {

/// What a user asks of the powder spectrum of one nucleus.
struct PowderSettings {
    QString nucleus; ///< "27Al"
    double protonFrequency = 600; ///< MHz
    Powder::Rotation rotation = Powder::Rotation::InfiniteRate;
    double rate = 0; ///< Hz
    QStringList labels; ///< of the sites wanted, as in CrystalStructure::isNamed; empty: all
    double reference = 100; ///< ppm; shift = reference + slope * shielding, as tensors
    double slope = -1;
    double couplingScale = 1; ///< of all quadrupole couplings
    Powder::LineShape shape;
    int points = 8192;
    std::optional<std::pair<double, double>> range; ///< ppm; nothing: all that is above 0.1 % of the highest point
    double directions = 0; ///< 0: as many as it takes
    double tolerance = 1e-3; ///< as Powder::Accuracy's
    bool siteCurves = false; ///< each site's curve stands beside the sum

    bool operator==(const PowderSettings &) const = default;
};

/// As many curves of sites as a plot has room for.
inline constexpr size_t mostSiteCurves = 12;

/// A site of the crystal: an atom and those that are equivalent to it.
struct PowderSite {
    QString name; ///< "O1 ×12"
    QString label; ///< "O1"
    int nuclei = 1;
    Powder::Site site; ///< with the nuclei as its multiplicity
    Powder::SiteValues values;
};

/// The sites of a powder spectrum.
struct PowderSites {
    QString nucleus;
    Powder::Conditions conditions;
    std::vector<PowderSite> sites; ///< in the order of the file
    QStringList notes; ///< what is missing or not to be trusted, in whole sentences

    /// Throws std::runtime_error with what is wrong about the input.
    static PowderSites of(const CrystalStructure &structure, const PowderSettings &settings);
    /// With the structure's unique sites, which need to be found but once.
    static PowderSites of(const CrystalStructure &structure, const UniqueSites &unique, const PowderSettings &settings);

    std::vector<Powder::Site> plain() const;
    /// What the model leaves out, in a sentence.
    QString limits() const;
};

/// Which line the points of an axis are too far apart for, in a sentence; empty where they are not.
QString tooFewPoints(const PowderSites &sites, const Powder::Axis &axis, const Powder::LineShape &shape);

/// The 1H frequency (MHz, to 0.01) of the spectrometer on which a nucleus has this one: its own differs by its
/// carrier's offset at most. 0 where that is not known.
double protonFrequencyOf(const QString &nucleus, double frequency);

/// That a spectrum was measured in another field than is computed for, in a sentence; empty where the two agree within
/// 2 %, or the spectrum does not tell.
QString otherField(const PowderSites &sites, const ExperimentalSpectrum &measured);

/// Throws as Powder::spectrum() does; nothing when the progress function asked to stop. The axis falls.
std::optional<Powder::Spectrum> powderSpectrum(const PowderSites &sites, const PowderSettings &settings,
                                               const Powder::Progress &progress = {});

/// One curve over the axis of a spectrum, as spectra of files are. Throws std::runtime_error where the axis reaches as
/// far as the frequency itself.
ExperimentalSpectrum powderCurve(const PowderSites &sites, const Powder::Axis &axis, const std::vector<double> &values,
                                 const QString &title);

/// Triple-quantum MAS, sheared, at infinite rate: ridges along F2 at the isotropic positions of F1, which the line
/// width broadens. F1 is slow; both axes fall. The nucleus has a half-integer spin above 1/2.
ExperimentalSpectrum tripleQuantumSpectrum(const PowderSites &sites, const PowderSettings &settings);

/// A fit to a measured spectrum of one dimension, and the settings that it leads to.
struct PowderFit {
    Powder::SpectrumFit fit;
    PowderSettings settings;
};
std::optional<PowderFit> fitPowder(const PowderSites &sites, const PowderSettings &settings,
                                   const ExperimentalSpectrum &measured, bool withScale,
                                   const Powder::Progress &progress = {});

} // namespace Workbench
