// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/ReaderText.h"
#include "formats/TextLayout.h"

namespace Workbench {

/// Text exports of processing software: the region and the size in comments, then one intensity a line.
namespace TextRegion {

/// What the comments say; dimensions is 0 when they describe no region.
struct Region {
    struct Axis {
        double left = 0.0; ///< position of the first point
        double right = 0.0; ///< position of the last point
        qint64 points = 0;
        TextLayout::Unit unit = TextLayout::Unit::Unknown; ///< Unknown: ppm
    };
    int dimensions = 0;
    Axis f2;
    Axis f1;
    double frequency = 0.0; ///< MHz, of F2, where the comments tell one
    QString nucleus; ///< that the comments name, of one dimension
    bool decimalComma = false;
};
Region find(const std::vector<TextLine> &sample);

/// `sample` are the first lines, which `lines` has passed already. A region in Hz needs a frequency, from the comments
/// or the options.
ExperimentalSpectrum read(const Region &region, const std::vector<TextLine> &sample, ReaderText::FileLines &lines,
                          const QString &source, const ReadOptions &options);

} // namespace TextRegion

} // namespace Workbench
