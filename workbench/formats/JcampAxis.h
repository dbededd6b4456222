// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/AsdfDecoder.h"
#include "formats/JcampBlocks.h"
#include "data/Measurement.h"

namespace Workbench {

/// What a table says of one of its axes.
struct JcampAbscissa {
    XyAbscissa x;
    std::string units; ///< as normalisedLabel() makes them
    int unitsLine = 0;
    QString nucleus;
    int dimension = 0; ///< 0 F2, 1 F1
};

/// The axis in ppm, by the first of the file's statements in the order that JcampReader names. What was assumed, and
/// statements of the file that put a point more than a point away, are added to `notes`.
SpectrumDimension jcampAxis(const JcampBlock &block, const JcampAbscissa &abscissa, const ReadOptions &options,
                            QStringList &notes);

/// What X values of the units are divided by to be ppm; `notes` as above. Other units are an error.
double jcampUnitsPerPpm(const JcampBlock &block, const JcampAbscissa &abscissa, double frequency);

/// MHz of 0 ppm in one dimension; 0 where nothing tells.
double jcampFrequency(const JcampBlock &block, const JcampAbscissa &abscissa, const ReadOptions &options,
                      QStringList &notes);

} // namespace Workbench
