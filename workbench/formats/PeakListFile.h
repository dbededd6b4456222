// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <vector>

namespace Workbench {

/// Experimental peak lists: one peak a line, `position[,height]` for a 1D spectrum and `position,position_f1[,height]`
/// for a 2D one, positions in ppm, in any of the shapes that TextReader takes, with names and counts. The height is 1
/// where none is given.
namespace PeakListFile {

using Peak = MeasuredPeak;

/// Errors are std::runtime_error with source (the name to show) and line; a list of another number of dimensions is
/// one.
std::vector<Peak> parse(const QByteArray &text, const QString &source, int dimensions);

/// The peaks in the form in which NMR data keep them.
QVariantMap toPeakMap(const std::vector<Peak> &peaks);

} // namespace PeakListFile

} // namespace Workbench
