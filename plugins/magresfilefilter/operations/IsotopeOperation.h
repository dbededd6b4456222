// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "operations/HostContext.h"

namespace Magres {

/// Lets the user choose an element's quadrupolar isotope and keeps the choice with the data set. True if it was kept; never
/// without a user.
bool chooseQuadrupolarIsotope(const HostContext &host, const QUuid &dataId);

} // namespace Magres
