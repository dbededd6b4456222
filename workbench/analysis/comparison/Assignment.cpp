// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/Assignment.h"

#include <cstddef>
#include <limits>

namespace Workbench {
namespace {

constexpr int nobody = -1;

class Assignment {
public:
    explicit Assignment(const CostMatrix &matrix)
        : m_matrix(matrix),
          m_rowPrice(std::size_t(matrix.rows)),
          m_columnPrice(std::size_t(matrix.columns)),
          m_rowOf(std::size_t(matrix.columns), nobody),
          m_columnOf(std::size_t(matrix.rows), nobody)
    {
    }

    std::vector<int> solve()
    {
        for (int row = 0; row < m_matrix.rows; ++row)
            augment(row);
        return m_columnOf;
    }

private:
    /// What the pair costs beyond the prices of both: never negative, 0 for those that are assigned.
    double reduced(int row, int column) const
    {
        return m_matrix.at(row, column) - m_rowPrice[std::size_t(row)] - m_columnPrice[std::size_t(column)];
    }

    /// Finds the cheapest way from the row to a free column, over columns whose rows would move on (Dijkstra), and goes
    /// it.
    void augment(int start)
    {
        const std::size_t columns = std::size_t(m_matrix.columns);
        std::vector<double> distance(columns, std::numeric_limits<double>::infinity());
        std::vector<int> from(columns, start); // the row from which the way reaches the column
        std::vector<char> isDone(columns);
        std::vector<int> done;
        int row = start, end = nobody;
        double length = 0;
        while (end == nobody) {
            int next = nobody;
            for (int column = 0; column < m_matrix.columns; ++column) {
                const std::size_t c = std::size_t(column);
                if (isDone[c])
                    continue;
                if (const double way = length + reduced(row, column); way < distance[c]) {
                    distance[c] = way;
                    from[c] = row;
                }
                if (next == nobody || distance[c] < distance[std::size_t(next)])
                    next = column;
            }
            if (next == nobody)
                return; // more rows than columns
            length = distance[std::size_t(next)];
            isDone[std::size_t(next)] = true;
            if (m_rowOf[std::size_t(next)] == nobody)
                end = next;
            else {
                done.push_back(next);
                row = m_rowOf[std::size_t(next)];
            }
        }
        // Prices that keep every reduced cost from falling below 0.
        m_rowPrice[std::size_t(start)] += length;
        for (int column : done) {
            const double gain = length - distance[std::size_t(column)];
            m_rowPrice[std::size_t(m_rowOf[std::size_t(column)])] += gain;
            m_columnPrice[std::size_t(column)] -= gain;
        }
        for (int column = end; column != nobody;) {
            const int owner = from[std::size_t(column)];
            m_rowOf[std::size_t(column)] = owner;
            std::swap(m_columnOf[std::size_t(owner)], column);
        }
    }

    const CostMatrix &m_matrix;
    std::vector<double> m_rowPrice, m_columnPrice;
    std::vector<int> m_rowOf, m_columnOf;
};

} // namespace

std::vector<int> cheapestAssignment(const CostMatrix &matrix)
{
    return Assignment(matrix).solve();
}

} // namespace Workbench
