// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/TableSample.h"

namespace Workbench {

/// Gives the columns names, roles, units and nuclei, by the lines above the table or else by what the columns hold, and
/// the layout its frequency. What was decided without a name is noted. Columns that make no spectrum and no peaks are
/// an error that names `source` and the line.
void assignRoles(TextLayout &layout, TableSample &table, const QString &source, const ReadOptions &options);

} // namespace Workbench
