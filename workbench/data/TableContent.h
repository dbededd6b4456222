// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVariantMap>

#include <vector>

namespace Workbench {

/// What a plug-in's table shows and holds.
struct TableContent {
    QStringList titles; ///< of the columns
    std::vector<QStringList> cells; ///< as shown, row by row
    QVariantList rows; ///< the plug-in's row maps, in full precision
    QStringList extraKeys; ///< of the row maps, for what the workbench has added
    QStringList hiddenKeys; ///< of the row maps, for what is not to be seen
};

} // namespace Workbench
