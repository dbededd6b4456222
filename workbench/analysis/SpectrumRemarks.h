// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/SpectrumEntry.h"

namespace Workbench {

/// What one should know before one believes a simulated spectrum, and what would mend it.
struct SpectrumRemark {
    enum Kind {
        Undersampled, ///< lines narrower than two points
        BeyondRange, ///< lines outside of the computed range
        PlaceholderReference, ///< nobody has given the reference
        QuadrupolarLines, ///< drawn as simple lines, which those of quadrupolar nuclei are not
        CrossPeaksOnOneAxis, ///< a list of them, without a plane to be drawn in
        OtherAxes, ///< a measurement in a plot of other nuclei or dimensions
    };
    Kind kind;
    QUuid entry;
    QString text;
};

/// Of one spectrum of a stack, the gravest first; none of measured spectra.
QList<SpectrumRemark> remarksOn(const SpectrumEntry &entry);

/// Of all spectra of a stack, first measurements that do not belong to what is simulated there. Where it holds several
/// simulated ones the texts begin with their names.
QList<SpectrumRemark> remarksOn(const NmrStack &stack);

/// The reference that stands where nobody has given one, ppm.
inline constexpr double placeholderReference = 100;

/// More points than these take many seconds and gigabytes.
inline constexpr qint64 manyPoints = qint64(1) << 24;

} // namespace Workbench
