// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Commands.h"

namespace Workbench {

/// `compare` in two dimensions: a pair is one of both coordinates. Throws UsageError.
CommandRun prepareCompareCrossPeaks(const CommandLine &line);

} // namespace Workbench
