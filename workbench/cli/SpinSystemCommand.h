// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Commands.h"

namespace Workbench {

/// `spinsystem`: the sites of chosen nuclei as the input of a simulation program.
Command spinSystemCommand();

} // namespace Workbench
