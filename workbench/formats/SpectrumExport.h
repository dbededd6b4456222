// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <vector>

class QIODevice;

namespace Workbench {

struct SpectrumEntry;

/// A spectrum entry as data files. An entry without data points is an error (std::runtime_error).
namespace SpectrumExport {

/// One line per point in data order (2D: F1 slow) after the header `ppm,intensity` or `ppm_f2,ppm_f1,intensity`; 17
/// significant digits.
void writeCsv(const SpectrumEntry &entry, QIODevice &device);

/// Everything but the points: axes, frequencies (MHz), widths and reference offsets (Hz), peaks (ppm) and the
/// parameters of the plug-in, or the settings of a powder spectrum. Arrays over dimensions hold F2, then F1, one entry
/// per dimension. What rests on a frequency is null where that is unknown.
void writeJson(const SpectrumEntry &entry, QIODevice &device);

/// The suffixes of all formats that are written.
const QStringList &suffixes();

/// In the format of the suffix (lower case, without the dot); another suffix is an error.
void write(const SpectrumEntry &entry, const QString &suffix, QIODevice &device);

} // namespace SpectrumExport

} // namespace Workbench
