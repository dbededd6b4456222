// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Spectrum.h"

#include <QVariantHash>

namespace Workbench {

/// One spectrum of a stack: its data map as plug-ins and readers hand it over, and what the map says.
struct SpectrumEntry {
    QUuid id;
    QString name;
    QVariantMap data;
    Spectrum spectrum; ///< of `data`

    /// The parameters from which the format's plug-in made the entry, empty for entries that it did not make. Updated
    /// entries hold them in their raw data.
    QVariantHash parameters(const QString &format) const;
    /// Puts them where parameters() finds them.
    void setParameters(const QString &format, const QVariantHash &parameters);
    /// Made by a plug-in, from parameters that it could make it from again.
    bool isSimulated() const;
    /// Of the calculation that it was made from, among a document's data; null for none.
    QUuid dataId() const;
    /// The "Peaks" map.
    QVariantMap peakList() const;
    /// "13C" for each dimension, empty where it is not known; of a list of peaks what its reader has found. None
    /// without points and peaks.
    QStringList nuclei() const;
    /// Of nuclei(): those of the spectrum, or of a list of peaks without points, step and frequency.
    QList<SpectrumAxis> axes() const;
    static QString nucleiKey() { return QStringLiteral("Nuclei"); }
    /// What was assumed in reading a measurement, whole sentences.
    QStringList notes() const { return data.value(notesKey()).toStringList(); }
    static QString notesKey() { return QStringLiteral("Notes"); }
};

/// Whether spectra of these nuclei (nuclei() of each) can stand over the same axes, as far as it is known.
bool shareAxes(const QStringList &nuclei, const QStringList &others);

/// A state of a stack. Copies share the spectra, so that keeping one costs next to nothing.
struct NmrStack {
    using Entry = SpectrumEntry;

    QList<Entry> entries;
    QUuid activeId;

    /// The one whose axes a plot of them has: of those with points, or else of the lists of peaks, or else of all the
    /// active one or the first. Null without entries.
    const SpectrumEntry *shown() const;
};

} // namespace Workbench
