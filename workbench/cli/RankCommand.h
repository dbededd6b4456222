// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Commands.h"

namespace Workbench {

/// `rank`: many candidate structures against one experiment.
Command rankCommand();
/// Its workers, started by the program itself.
Command rankWorkerCommand();

} // namespace Workbench
