// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QString>

namespace Workbench {

/// How an element is drawn and named.
namespace ElementStyle {

/// Grey for an atomic number outside 1 to 95.
QColor color(int atomicNumber);
/// Radius of the ball in Angstrom: about half the covalent radius, evened out so that hydrogen stays visible.
double ballRadius(int atomicNumber);
/// "?" for an atomic number outside 1 to 118.
QString symbol(int atomicNumber);

} // namespace ElementStyle

} // namespace Workbench
