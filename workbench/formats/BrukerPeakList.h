// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QByteArray>

namespace Workbench {

/// The peaks that were picked in a Bruker data set: `peaklist.xml` beside the processed data, with elements Peak1D
/// (F1 in ppm, intensity, annotation) or Peak2D (F1, F2).
namespace BrukerPeakList {

bool recognises(const QByteArray &start);
/// Errors are std::runtime_error that name `source` and the line.
MeasuredPeaks parse(const QByteArray &text, const QString &source);
/// The title and the nuclei come from the data set that the file lies in, if it does.
MeasuredPeaks read(const QString &path);

/// The file beside the data that a path stands for as BrukerReader sees it; none there is an error.
QString beside(const QString &path);

} // namespace BrukerPeakList

} // namespace Workbench
