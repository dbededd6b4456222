// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"

namespace Magres {

/// The map from which the host makes a molecule item: all atoms in list order with their bonds, and the lattice if
/// there is one.
QVariantMap moleculeDescription(const MagresData &data);

} // namespace Magres
