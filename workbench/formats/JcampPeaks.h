// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/JcampBlocks.h"
#include "data/Measurement.h"

namespace Workbench {

/// Peak lists of JCAMP-DX files: ##PEAK TABLE= (XY..XY) and ##PEAK ASSIGNMENTS= (XYA), with their variants.
namespace JcampPeaks {

/// The record that holds the peaks of an NMR block; null when there is none.
const LabelledRecord *table(const JcampBlock &block);

MeasuredPeaks read(const JcampBlock &block, const ReadOptions &options);

} // namespace JcampPeaks

} // namespace Workbench
