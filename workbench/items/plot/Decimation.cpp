// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/Decimation.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

/// The smallest block that brings `size` points into `most` cells.
int blockSize(int size, int most)
{
    most = std::max(1, most);
    return (size + most - 1) / most;
}

void appendExtremes(std::span<const double> values, qint64 begin, qint64 end, std::vector<QPointF> &points)
{
    qint64 low = -1;
    qint64 high = -1;
    qint64 first = -1;
    qint64 last = -1;
    for (qint64 i = begin; i < end; ++i) {
        if (!std::isfinite(values[i]))
            continue;
        if (first < 0)
            first = low = high = i;
        last = i;
        if (values[i] < values[low])
            low = i;
        if (values[i] > values[high])
            high = i;
    }
    if (first < 0)
        return;
    qint64 previous = -1;
    for (qint64 i : {first, std::min(low, high), std::max(low, high), last}) {
        if (i != previous)
            points.emplace_back(qreal(i), values[i]);
        previous = i;
    }
}

} // namespace

namespace Decimation {

std::vector<QPointF> envelope(std::span<const double> values, qint64 first, qint64 last, int columns)
{
    first = std::max<qint64>(first, 0);
    last = std::min<qint64>(last, qint64(values.size()) - 1);
    std::vector<QPointF> points;
    const qint64 count = last - first + 1;
    if (count <= 0)
        return points;
    columns = std::max(columns, 1);
    const qint64 groups = count <= 4 * qint64(columns) ? count : columns;
    points.reserve(size_t(std::min(count, 4 * groups)));
    for (qint64 g = 0; g < groups; ++g)
        appendExtremes(values, first + g * count / groups, first + (g + 1) * count / groups, points);
    return points;
}

Grid blockMaxima(std::span<const double> matrix, int width, PointRange columns, PointRange rows, int mostColumns,
                 int mostRows)
{
    Grid grid;
    if (columns.size() <= 0 || rows.size() <= 0)
        return grid;
    const int blockWidth = blockSize(columns.size(), mostColumns);
    const int blockHeight = blockSize(rows.size(), mostRows);
    grid.columns = (columns.size() + blockWidth - 1) / blockWidth;
    grid.rows = (rows.size() + blockHeight - 1) / blockHeight;
    grid.columnStep = blockWidth;
    grid.rowStep = blockHeight;
    grid.firstColumn = columns.first + (blockWidth - 1) / 2.0;
    grid.firstRow = rows.first + (blockHeight - 1) / 2.0;
    grid.cells.assign(size_t(grid.columns) * grid.rows, 0.0);
    for (int y = rows.first; y <= rows.last; ++y) {
        const double *row = matrix.data() + size_t(y) * width;
        double *cells = grid.cells.data() + size_t((y - rows.first) / blockHeight) * grid.columns;
        for (int block = 0; block < grid.columns; ++block) {
            const int begin = columns.first + block * blockWidth;
            const int end = std::min(begin + blockWidth, columns.last + 1);
            double largest = cells[block];
            for (int x = begin; x < end; ++x) {
                if (std::abs(row[x]) > std::abs(largest) && std::isfinite(row[x]))
                    largest = row[x];
            }
            cells[block] = largest;
        }
    }
    return grid;
}

Projections projections(std::span<const double> matrix, int width)
{
    const int height = width > 0 ? int(matrix.size() / width) : 0;
    Projections result{std::vector<double>(width, -HUGE_VAL), std::vector<double>(height, -HUGE_VAL)};
    for (int y = 0; y < height; ++y) {
        const double *row = matrix.data() + size_t(y) * width;
        double rowMax = -HUGE_VAL;
        for (int x = 0; x < width; ++x) {
            if (!std::isfinite(row[x]))
                continue;
            rowMax = std::max(rowMax, row[x]);
            result.columns[x] = std::max(result.columns[x], row[x]);
        }
        result.rows[y] = rowMax;
    }
    return result;
}

} // namespace Decimation

} // namespace Workbench
