// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "operations/HostContext.h"

namespace Magres {

/// Lets the user choose an element's quadrupolar isotope and keeps the choice with the data set. True if it was kept;
/// never without a user. Takes a copy of the identity: the table that it comes from may be deleted while the dialog is
/// open.
bool chooseQuadrupolarIsotope(const HostContext &host, QUuid dataId);

} // namespace Magres
