// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"
#include "reading/MagresData.h"

namespace Magres {

/// The NMR parameters of a data set, one row per distinct atom label.
///
/// A row is a map: "ID" (QUuid), "type" (element), "labels" (string list), "atomNos" (list of the recordNo of every
/// atom that shares the labels); with a shielding "iso", "aniso" (ppm) and "assym"; with an EFG "eq" (atomic units),
/// "qassym", "Cq" (MHz) and "qIso" (the isotope it is for, empty if the element has no quadrupolar one, with "Cq" 0
/// then).
struct ParameterTable {
    QVariantList rows;
    bool hasShielding = false;
    bool hasEfg = false;
};

/// In file order of each row's first atom, whose tensors the row shows: those with its label and index, or with its
/// label where the file has none for that index. Elements without a chosen isotope get their default one in data.QIso.
ParameterTable parameterTable(MagresData &data, const NuclearProperties &properties);

} // namespace Magres
