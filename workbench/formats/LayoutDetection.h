// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/TextLayout.h"

namespace Workbench {

/// The layout of a text by its first lines; `complete` when these are all. A text that is no table is an error
/// that names `source`, and so is a row among the first lines that does not fit the others. No lines but comments: no
/// columns.
TextLayout detectLayout(const std::vector<TextLine> &sample, bool complete, const QString &source,
                        const ReadOptions &options);

} // namespace Workbench
