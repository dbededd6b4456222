// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"
#include "reading/MagresData.h"
#include "support/MetaTypes.h"
#include "synthesis/LineShapes.h"
#include "synthesis/MagresSpecParams.h"

namespace Magres {

/// What the host needs to know of one dimension to draw it.
struct SpectrumDimension {
    QByteArray nucleus;
    double frequency = 400.0; ///< of the nucleus, MHz
    double width = 0.0; ///< spectral width, Hz
    double reference = 0.0; ///< centre of the range, Hz
    qint64 points = 1;
    double lineWidth = 0.0; ///< full width at half height, Hz

    double carrier() const { return reference * 1e-6 + frequency; } ///< MHz
    /// Point 0 at the high end of the range; the low end lies one step behind the last point.
    SpectrumAxis axis() const;
    double lineWidthPpm() const { return lineWidth / carrier(); }
};

/// F2, and F1 in 2D. A nucleus without a line width has the width 0.
QList<SpectrumDimension> dimensions(const MagresSpecParams &parameters);

/// The dimensions in the host's terms: the map with "Length", and the map with the rest. Each value is an array of
/// eight entries, entry 0 is F2, entry 1 is F1; dimensions that are not there keep fill values.
struct DimensionDescription {
    QVariantMap lengths;
    QVariantMap specInfo;
};
DimensionDescription describe(const QList<SpectrumDimension> &dimensions, const MagresSpecParams &parameters);

/// The record's peaks as data points: real data, then as many zeros for the imaginary part; F1 index major in 2D.
/// Lorentzian lines in 1D, products of two Gaussians in 2D. Throws TPluginError when there cannot be so many points.
QList<DoubleVector> synthesize(const MagresSpecParams &parameters, const QList<SpectrumDimension> &dimensions);

/// The record's peaks, sorted, in the host's format.
QVariantMap peakRecord(const MagresSpecParams &parameters, const QList<SpectrumDimension> &dimensions);

/// A spectrum as the host takes it. `specInfo` is also in `data`.
struct GeneratedSpectrum {
    QVariantMap specInfo;
    QVariantMap data;
};

/// The number under which the plug-in's own file format is known to the host.
inline constexpr int customFileFormat = 1002;

/// Makes the spectrum that the record describes from the data, and leaves peaks and data identity in the record. Throws
/// TPluginError.
GeneratedSpectrum generateSpectrum(const MagresData &data, MagresSpecParams &parameters,
                                   const NuclearProperties &properties);

} // namespace Magres
