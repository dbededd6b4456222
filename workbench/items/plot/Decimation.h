// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>

#include <span>
#include <vector>

namespace Workbench {

/// Fewer points for the screen, none of the peaks lost.
namespace Decimation {

/// The points first..last (inclusive, clamped) of a trace in at most `columns` groups. Each group gives its first,
/// smallest, largest and last point in their own order; x is the point's index. Points that are not finite are left
/// out. A trace with no more points than 4 * columns is returned whole.
std::vector<QPointF> envelope(std::span<const double> values, qint64 first, qint64 last, int columns);

/// A part of a matrix, reduced to cells. Each cell holds the value of largest magnitude of its block; not finite ones
/// count as 0.
struct Grid {
    int columns = 0;
    int rows = 0;
    double firstColumn = 0; ///< where the centre of the first cell lies, in points of the matrix
    double firstRow = 0;
    double columnStep = 1; ///< points of the matrix per cell
    double rowStep = 1;
    std::vector<double> cells; ///< row by row

    double cell(int column, int row) const { return cells[size_t(row) * columns + column]; }
};

/// A range of points of one axis, both ends included.
struct PointRange {
    int first = 0;
    int last = -1;

    int size() const { return last - first + 1; }
};

/// `width` is the matrix's row length. Ranges lie within the matrix.
Grid blockMaxima(std::span<const double> matrix, int width, PointRange columns, PointRange rows, int mostColumns,
                 int mostRows);

/// The largest value over the other dimension, one per column and one per row.
struct Projections {
    std::vector<double> columns;
    std::vector<double> rows;
};
Projections projections(std::span<const double> matrix, int width);

} // namespace Decimation

} // namespace Workbench
