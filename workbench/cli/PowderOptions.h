// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/PowderSites.h"
#include "cli/CommandLine.h"

namespace Workbench {

/// The options that say which powder spectrum is wanted.
const std::vector<OptionSpec> &powderSpecs();

/// Throw UsageError. The conditions are nucleus, fields and rates, and widths.
PowderSettings parsePowderConditions(const CommandLine &line);
PowderSettings parsePowder(const CommandLine &line);

} // namespace Workbench
