// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace Workbench::Powder {

struct Octant {
    double x, y; ///< signs
};
/// Of the hemisphere z >= 0.
inline constexpr std::array<Octant, 4> octants = {{{1, 1}, {-1, 1}, {-1, -1}, {1, -1}}};

/// The directions of an octahedron's faces, divided into n rows of triangles, row by row from the equator to the pole;
/// one octant, the others are its mirror images.
class LatticeRows {
public:
    struct Row {
        size_t count = 0;
        std::vector<double> x, y, z; ///< unit vectors
        std::vector<double> inverse; ///< of the length on the flat face
    };

    /// n >= 1. Stands on row 0. Rows have room for `padding` more directions, which point to the pole.
    explicit LatticeRows(size_t n, size_t padding = 0);

    const Row &row() const { return m_rows[m_current]; }
    const Row &previous() const { return m_rows[1 - m_current]; }

    /// To the next row; false behind the last.
    bool advance();
    /// Of the triangles between previous() and row(), as parts of a hemisphere: those with a side on previous() and
    /// those with a side on row().
    const std::vector<double> &up() const { return m_up; }
    const std::vector<double> &down() const { return m_down; }

private:
    void fill(Row &row);

    size_t m_size;
    size_t m_padding;
    size_t m_index = 0;
    int m_current = 0;
    std::array<Row, 2> m_rows;
    std::vector<double> m_up, m_down;
};

/// Different directions on the hemisphere, where those on the equator that lie opposite count once.
constexpr double directionCount(size_t n)
{
    return 2.0 * double(n) * double(n) + 1;
}

} // namespace Workbench::Powder
