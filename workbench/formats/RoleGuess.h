// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"
#include "formats/TableSample.h"

namespace Workbench {

/// The roles of columns that no header names, by what they hold, noted. Columns of which that does not tell are an
/// error that names `source` and the line.
void guessRoles(TextLayout &layout, const TableSample &table, const QString &source, const ReadOptions &options);

} // namespace Workbench
