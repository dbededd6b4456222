// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/ExperimentalSpectrum.h"

#include <QByteArray>

namespace Workbench {

/// One-dimensional NMR spectra in JCAMP-DX files: R. S. McDonald, P. A. Wilks, Appl. Spectrosc. 42 (1988) 151 for the
/// tables, A. N. Davies, P. Lampen, Appl. Spectrosc. 47 (1993) 1093 for the NMR records.
///
/// Read are tables (X++(Y..Y)), as XYDATA and as the real page of an NTUPLES block. Of a LINK file the first block with
/// an NMR spectrum counts. X values in Hz become ppm by `.OBSERVE FREQUENCY`; `.SHIFT REFERENCE` says which point has
/// which shift, and where it is missing the vendor record `$OFFSET`, the shift of the high end. Without both, 0 Hz is 0
/// ppm.
namespace JcampReader {

/// The first thing in the text that is neither blank nor a comment is a record label.
bool recognises(const QByteArray &start);

/// Errors are std::runtime_error that name `source` and the line.
ExperimentalSpectrum parse(const QByteArray &text, const QString &source);
ExperimentalSpectrum read(const QString &path);

} // namespace JcampReader

} // namespace Workbench
