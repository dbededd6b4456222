// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QByteArray>

namespace Workbench {

/// Core Scientific Dataset Model (D. J. Srivastava et al., PLOS ONE 15 (2020) e0225953): spectra with one or two linear
/// or evenly spaced monotonic dimensions in Hz or ppm, the first one running fastest, with internal values (numbers or
/// base64) or external raw ones. The first component of the first dependent variable counts, of complex numbers the
/// real part.
///
/// A coordinate X in Hz lies at X / (o - c) with the origin offset o and c the coordinate of the middle, X_{N/2}: the
/// origin offset is the frequency of the spectrum's middle, and o - c that of 0 ppm.
namespace CsdmFile {

bool recognises(const QByteArray &start);
/// Errors are std::runtime_error that name `source`. External values are looked for beside `source`.
ExperimentalSpectrum parse(const QByteArray &text, const QString &source, const ReadOptions &options = {});
ExperimentalSpectrum read(const QString &path, const ReadOptions &options = {});

/// With base64 values in double precision.
QByteArray written(const ExperimentalSpectrum &spectrum);

} // namespace CsdmFile

} // namespace Workbench
