// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QIODevice;

namespace Workbench {

struct SpectrumEntry;

/// A spectrum as a JCAMP-DX 5.01 file.
namespace JcampExport {

/// One block of data type NMR SPECTRUM with the points as (X++(Y..Y)), X in ppm from high to low, Y as whole numbers of
/// which the largest is near 2^31 (YFACTOR makes intensities of them). Peaks and the plug-in's parameters are labelled
/// records of our own: ##$PEAKS and ##$MAGRES_… (JSON). One dimension only; errors are std::runtime_error.
void write(const SpectrumEntry &entry, QIODevice &device);

} // namespace JcampExport

} // namespace Workbench
