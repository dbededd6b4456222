// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QByteArray>

namespace Workbench {

/// Simulated spectra of SIMPSON (M. Bak, J. T. Rasmussen, N. C. Nielsen, J. Magn. Reson. 147 (2000) 296) as text: SIMP,
/// NP=, SW=, REF=, TYPE=SPE, then DATA with a real and an imaginary part a line, END. Point i lies at
/// REF + SW * (i / NP - 1/2) Hz; a frequency must make ppm of them.
namespace SimpsonReader {

bool recognises(const QByteArray &start);
/// Errors are std::runtime_error that name `source` and the line.
ExperimentalSpectrum parse(const QByteArray &text, const QString &source, const ReadOptions &options);
ExperimentalSpectrum read(const QString &path, const ReadOptions &options);

} // namespace SimpsonReader

} // namespace Workbench
