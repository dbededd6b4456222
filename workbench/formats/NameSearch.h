// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/TableSample.h"

namespace Workbench {

/// Gives the columns the names that stand in the lines above them, and marks those lines.
void nameColumns(TextLayout &layout, TableSample &table);

} // namespace Workbench
