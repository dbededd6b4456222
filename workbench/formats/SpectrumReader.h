// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/ExperimentalSpectrum.h"

namespace Workbench {

/// Reads a measured spectrum by what lies at the path: a Bruker folder or a file of one, a JCAMP-DX file, or
/// comma-separated text. Errors are std::runtime_error, UTF-8, that name the file, the place and what was expected
/// there.
ExperimentalSpectrum openExperimentalSpectrum(const QString &path);

} // namespace Workbench
