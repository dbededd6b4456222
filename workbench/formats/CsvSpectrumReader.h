// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/ExperimentalSpectrum.h"

#include <QByteArray>

namespace Workbench {

/// Spectra as comma-separated text: `ppm,intensity`, or `ppm_f2,ppm_f1,intensity` row by row for two dimensions. Blank
/// lines, comments from `#` on and one header line, whose first column is called ppm, are passed over. Points lie
/// evenly, from either end. The text names neither nucleus nor frequency.
namespace CsvSpectrumReader {

/// Errors are std::runtime_error that name `source` and the line.
ExperimentalSpectrum parse(const QByteArray &text, const QString &source);
ExperimentalSpectrum read(const QString &path);

} // namespace CsvSpectrumReader

} // namespace Workbench
