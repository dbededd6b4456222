// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/structure/CalculationMethod.h"
#include "data/structure/CrystalStructure.h"

namespace Workbench {

/// A structure as the text of a MAGRES file, numbers with 17 digits. `comments`: lines for its head.
QByteArray magresText(const CrystalStructure &structure, const CalculationMethod &method, const QStringList &comments);

} // namespace Workbench
