// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QCustomPlot;
class QPainter;
class QRectF;

namespace Workbench {

/// Draws the plot into the rectangle, laid out for its size: as vectors on devices that keep them, but for colour maps.
void paintPlot(QCustomPlot &plot, QPainter *painter, const QRectF &target);

} // namespace Workbench
