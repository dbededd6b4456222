// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

namespace Magres {

/// -1 for a symbol that the table does not hold.
int atomicNumber(const QByteArray &symbol);
/// Angstrom; -1.0 for a symbol that the table does not hold.
double covalentRadius(const QByteArray &symbol);

} // namespace Magres
