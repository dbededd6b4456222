// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "operations/HostContext.h"

#include <optional>

namespace Magres {

/// Lets the user choose an element's quadrupolar isotope and keeps the choice with the data set. The data set with the
/// choice; nothing if there was none, as always without a user. Takes a copy of the identity: the table that it comes
/// from may be deleted while the dialog is open.
std::optional<MagresData> chooseQuadrupolarIsotope(const HostContext &host, QUuid dataId);

} // namespace Magres
