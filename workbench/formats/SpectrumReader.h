// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

namespace Workbench {

/// Reads a measurement by what lies at the path: a Bruker folder or one of its files, JCAMP-DX, CSDM, SIMPSON, a Bruker
/// peak list or plain text. The content decides, not the suffix. Formats of other software are refused by name. Errors
/// are std::runtime_error, UTF-8, that name the file, the place and what was expected there.
Measurement readMeasurement(const QString &path, const ReadOptions &options = {});

/// The same where a list of peaks is an error.
ExperimentalSpectrum openExperimentalSpectrum(const QString &path, const ReadOptions &options = {});

} // namespace Workbench
