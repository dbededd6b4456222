// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/Vectors.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Magres {

/// Atoms filed by cubic cells, found again by position: every atom within the reach of a point, and some more. Cells
/// are hashed, so the extent of the atoms does not matter. Points that are not finite are near nothing; huge
/// coordinates all share the outermost cells, which is slow for many of them but misses none.
class NeighbourGrid {
public:
    /// `reach`: largest distance at which atoms must be found, positive; atoms are numbered from 0 to atomCount - 1.
    NeighbourGrid(double reach, std::size_t atomCount);

    void insert(qint32 atom, const Position &position);
    /// Does nothing for an atom that is not in the grid.
    void remove(qint32 atom);

    /// Calls visit(atom) once for each atom in the cells about the point, in no particular order, until it returns
    /// true. Returns whether it did.
    template <class Visitor>
    bool visitNear(const Position &point, Visitor visit) const;

    /// Calls visit(a, b) once for each two atoms in the same or in adjacent cells, in no particular order.
    template <class Visitor>
    void visitPairs(Visitor visit) const;

private:
    struct Cell {
        std::int32_t x, y, z;
        bool operator==(const Cell &) const = default;
    };
    struct Entry {
        Cell cell;
        qint32 next = none;
        qint32 previous = none; // none for the first of a bucket
        bool filed = false;
    };
    static constexpr qint32 none = -1;
    static constexpr double outermost = 1 << 30;

    std::int32_t cellIndex(double coordinate) const;
    Cell cellOf(const Position &p) const { return {cellIndex(p[0]), cellIndex(p[1]), cellIndex(p[2])}; }
    class Columns;
    /// Cells that follow each other along z lie side by side.
    std::size_t bucket(const Cell &cell) const;

    double m_inverseEdge;
    std::vector<Entry> m_entries; // per atom
    std::vector<qint32> m_buckets; // first atom; their number is a power of two
};

inline std::int32_t NeighbourGrid::cellIndex(double coordinate) const
{
    const double scaled = coordinate * m_inverseEdge;
    if (!(std::abs(scaled) < outermost))
        return std::int32_t(scaled < 0.0 ? -outermost : outermost);
    const auto truncated = std::int32_t(scaled);
    return truncated - (scaled < truncated ? 1 : 0);
}

inline std::size_t NeighbourGrid::bucket(const Cell &cell) const
{
    const std::uint64_t column = (std::uint64_t(std::uint32_t(cell.x)) << 32 | std::uint32_t(cell.y));
    const std::uint64_t mixed = column * 0x9E3779B97F4A7C15u; // 2^64 / golden ratio: multiplicative hashing
    return std::size_t((mixed >> 32) + std::uint64_t(std::int64_t(cell.z))) & (m_buckets.size() - 1);
}

/// Cells whose atoms are to be visited. They are collected without a branch first: most are empty, and which ones is
/// hard to guess for a processor.
class NeighbourGrid::Columns {
public:
    explicit Columns(const NeighbourGrid &grid) : m_grid(grid) { }

    /// Adds cells that follow each other along z.
    void add(const Cell &first, int cells)
    {
        const std::size_t start = m_grid.bucket(first);
        for (int dz = 0; dz < cells; ++dz) {
            const qint32 atom = m_grid.m_buckets[(start + std::size_t(dz)) & (m_grid.m_buckets.size() - 1)];
            m_cells[m_count] = {first.x, first.y, first.z + dz};
            m_first[m_count] = atom;
            m_count += atom != none ? 1 : 0;
        }
    }

    template <class Visitor>
    bool visit(Visitor visit) const
    {
        for (std::size_t i = 0; i < m_count; ++i) {
            for (qint32 atom = m_first[i]; atom != none; atom = m_grid.m_entries[std::size_t(atom)].next) {
                if (m_grid.m_entries[std::size_t(atom)].cell == m_cells[i] && visit(atom))
                    return true;
            }
        }
        return false;
    }

private:
    const NeighbourGrid &m_grid;
    std::array<Cell, 27 + 1> m_cells; // a place to write to behind the last
    std::array<qint32, 27 + 1> m_first;
    std::size_t m_count = 0;
};

template <class Visitor>
bool NeighbourGrid::visitNear(const Position &point, Visitor visit) const
{
    if (!isFinite(point))
        return false;
    const Cell centre = cellOf(point);
    Columns columns(*this);
    for (std::int32_t x = centre.x - 1; x <= centre.x + 1; ++x) {
        for (std::int32_t y = centre.y - 1; y <= centre.y + 1; ++y)
            columns.add({x, y, centre.z - 1}, 3);
    }
    return columns.visit(visit);
}

template <class Visitor>
void NeighbourGrid::visitPairs(Visitor visit) const
{
    for (qint32 atom = 0; atom < qint32(m_entries.size()); ++atom) {
        const Entry &entry = m_entries[std::size_t(atom)];
        if (!entry.filed)
            continue;
        // The rest of its own cell, and one of each two cells that lie opposite each other.
        const auto [x, y, z] = entry.cell;
        for (qint32 other = entry.next; other != none; other = m_entries[std::size_t(other)].next) {
            if (m_entries[std::size_t(other)].cell == entry.cell)
                visit(atom, other);
        }
        Columns columns(*this);
        columns.add({x, y, z + 1}, 1);
        columns.add({x, y + 1, z - 1}, 3);
        for (std::int32_t dy = -1; dy <= 1; ++dy)
            columns.add({x + 1, y + dy, z - 1}, 3);
        columns.visit([&](qint32 other) {
            visit(atom, other);
            return false;
        });
    }
}

} // namespace Magres
