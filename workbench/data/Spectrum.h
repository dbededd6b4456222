// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/MetaTypes.h"

#include <QList>
#include <QString>
#include <QUuid>
#include <QVariantMap>

#include <span>

namespace Workbench {

/// One frequency axis. Point i lies at first + i * step ppm; the step is negative.
struct SpectrumAxis {
    double first = 0.0;
    double step = 0.0;
    int size = 0;
    int massNumber = 0; ///< of the nucleus, 0 unknown
    QString element; ///< symbol of the nucleus, empty unknown
    double frequency = 0.0; ///< of the nucleus in the spectrometer, MHz; 0 unknown

    double ppm(double point) const { return first + point * step; }
    double last() const { return ppm(size - 1); }
    /// The nucleus as it is written in print, with the mass number raised: ¹³C. Empty when unknown.
    QString nucleus() const;
    /// Mass number and symbol, as files and commands name it: 13C. Empty unless both are known.
    QString isotope() const;
    /// Chemical shift and unit, with the nucleus when it is known.
    QString label() const;
};

struct SpectrumPeak {
    QUuid id;
    QString label;
    double f2 = 0.0; ///< ppm
    double f1 = 0.0; ///< ppm, 0 in one dimension
    double height = 0.0;
    double widthF2 = 0.0; ///< ppm, full width at half height; 0 unknown
    double widthF1 = 0.0;
};

/// Typed read access to a spectrum entry's data map. The points are shared with the map, never copied.
struct Spectrum {
    QList<SpectrumAxis> axes; ///< F2, then F1 in two dimensions; empty when there is nothing to show
    QList<DoubleVector> data; ///< real, imaginary; two dimensions row by row, F1 slow
    QList<SpectrumPeak> peaks; ///< those with finite positions and heights, in the list's order
    QString note; ///< why there is nothing to show

    int dimensions() const { return int(axes.size()); }
    bool isEmpty() const { return axes.isEmpty(); }
    /// The real points; as many as the axes say.
    std::span<const double> real() const;

    /// A map with missing or damaged pieces gives an empty spectrum with a note that names the piece.
    static Spectrum fromMap(const QVariantMap &entry);

    /// Hosts count ppm from a frequency, so that an entry must have one, MHz. Where nobody knows it this one stands in,
    /// and the dimension is marked in the entry's "SpecInfo" (SignedCharVector, 1 a stand-in).
    static constexpr double standInFrequency = 400.0;
    static QString standInKey() { return QStringLiteral("StandInFrequencies"); }
};

} // namespace Workbench
