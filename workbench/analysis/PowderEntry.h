// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/PowderSites.h"
#include "data/SpectrumEntry.h"

namespace Workbench {

/// What a powder spectrum of a document was made from.
struct PowderOrigin {
    QUuid dataId; ///< of the calculation among the document's data
    PowderSettings settings;
    QUuid sum; ///< of a site's curve: the entry that it is a part of

    /// Nothing for entries that are no powder spectra, and for settings that make no sense.
    static std::optional<PowderOrigin> of(const SpectrumEntry &entry);
};

/// The sum over the sites as an entry of a host's NMR data, which remembers its origin.
QVariantMap powderEntry(const PowderSites &sites, const Powder::Spectrum &spectrum, const PowderOrigin &origin);

/// The stack with the sites' curves behind their sum, where the settings ask for them and there are several, but not
/// too many; those of before go. A curve of the same site keeps the id, by which plots know its colour, place and
/// integrals. Each can be told by its origin and remembers how it is made alone.
NmrStack withSiteCurves(NmrStack stack, const QUuid &sum, const PowderSites &sites, const Powder::Spectrum &spectrum,
                        const PowderOrigin &origin);

/// The settings with which a powder spectrum shows what a plug-in's simulated spectrum of one dimension does: its
/// nucleus, frequency, reference and slope.
PowderSettings powderSettingsLike(const SpectrumEntry &simulated);

/// A spectrum of one dimension of a document, as measured spectra of files are.
ExperimentalSpectrum asMeasured(const SpectrumEntry &entry);

} // namespace Workbench
