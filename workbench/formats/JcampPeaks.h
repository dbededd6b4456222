// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/JcampBlocks.h"
#include "data/Measurement.h"

namespace Workbench {

/// Tables of JCAMP-DX files in which each point has its own X: ##PEAK ASSIGNMENTS= (XYA), ##PEAK TABLE= (XY..XY),
/// ##XYPOINTS= and ##DATA TABLE= of that form, with their variants.
namespace JcampPeaks {

/// The record that holds the table of an NMR block; null when there is none.
const LabelledRecord *table(const JcampBlock &block);

/// A list of peaks; or a spectrum, if the block says that it is one and at least 32 points lie evenly.
Measurement read(const JcampBlock &block, const ReadOptions &options);

} // namespace JcampPeaks

} // namespace Workbench
