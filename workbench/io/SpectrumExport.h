// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class NmrData;
class QIODevice;
class QUuid;

/// A spectrum entry as data files. An entry without data points is an error (std::runtime_error).
namespace SpectrumExport {

/// One line per point in data order (2D: F1 slow) after the header `ppm,intensity` or `ppm_f2,ppm_f1,intensity`; 17
/// significant digits.
void writeCsv(const NmrData &data, const QUuid &entry, QIODevice &device);

/// Everything but the points: axes, frequencies (MHz), widths and reference offsets (Hz), peaks (ppm) and the
/// parameters of the plug-in. Arrays over dimensions hold F2, then F1, one entry per dimension.
void writeJson(NmrData &data, const QUuid &entry, QIODevice &device);

} // namespace SpectrumExport
