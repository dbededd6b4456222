// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QVariantMap>

#include <vector>

namespace Workbench {

namespace PeakListFile {

using Peak = MeasuredPeak;

/// The peaks in the form in which NMR data keep them.
QVariantMap toPeakMap(const std::vector<Peak> &peaks);

} // namespace PeakListFile

} // namespace Workbench
