// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

namespace Workbench {

/// A matrix of costs, row-major.
struct CostMatrix {
    int rows = 0;
    int columns = 0;
    std::vector<double> costs;

    double at(int row, int column) const
    {
        return costs[std::size_t(row) * std::size_t(columns) + std::size_t(column)];
    }
};

/// A column of its own for each row, so that the sum of costs is least. Needs no more rows than columns; finite costs.
/// O(rows² · columns): shortest augmenting paths with dual prices, as R. Jonker, A. Volgenant, Computing 38 (1987) 325.
std::vector<int> cheapestAssignment(const CostMatrix &matrix);

} // namespace Workbench
