// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <vector>

namespace Workbench {

/// Where labels go so that none covers another.
namespace LabelPlacement {

/// Positions at least `spacing` apart and within low..high, as near to the wanted ones as can be (least squares).
/// `wanted` ascends; there must be room for all.
std::vector<double> spread(const std::vector<double> &wanted, double spacing, double low, double high);

/// A place for a label beside a rectangle, inside `area` and clear of everything in `taken`; none if there is no such
/// place.
std::optional<QRectF> beside(const QRectF &what, const QSizeF &size, double distance, const QRectF &area,
                             const std::vector<QRectF> &taken);

} // namespace LabelPlacement

} // namespace Workbench
