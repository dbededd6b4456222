// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QIODevice;

namespace Workbench {

struct SpectrumEntry;

/// A spectrum as a JCAMP-DX file: 5.01 in one dimension, 6.0 in two.
namespace JcampExport {

/// One block, X in ppm from high to low, Y as whole numbers of which the largest is near 2^31 (a factor makes
/// intensities of them): data type NMR SPECTRUM with the points as (X++(Y..Y)), or nD NMR SPECTRUM as NTUPLES with a
/// page for each row of F2 along F1. Peaks and the plug-in's parameters are labelled records of our own: ##$PEAKS and
/// ##$MAGRES_… (JSON). Errors are std::runtime_error.
void write(const SpectrumEntry &entry, QIODevice &device);

} // namespace JcampExport

} // namespace Workbench
