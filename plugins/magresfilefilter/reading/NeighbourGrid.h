// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresAtom.h"

#include <cmath>
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

    static bool isFinite(const Position &p)
    {
        return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
    }
    std::int32_t cellIndex(double coordinate) const;
    Cell cellOf(const Position &p) const { return {cellIndex(p[0]), cellIndex(p[1]), cellIndex(p[2])}; }
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

template <class Visitor>
bool NeighbourGrid::visitNear(const Position &point, Visitor visit) const
{
    if (!isFinite(point))
        return false;
    const Cell centre = cellOf(point);
    for (std::int32_t x = centre.x - 1; x <= centre.x + 1; ++x) {
        for (std::int32_t y = centre.y - 1; y <= centre.y + 1; ++y) {
            const std::size_t first = bucket({x, y, centre.z - 1});
            for (std::int32_t dz = 0; dz < 3; ++dz) {
                const Cell cell = {x, y, centre.z - 1 + dz};
                qint32 atom = m_buckets[(first + std::size_t(dz)) & (m_buckets.size() - 1)];
                for (; atom != none; atom = m_entries[std::size_t(atom)].next) {
                    if (m_entries[std::size_t(atom)].cell == cell && visit(atom))
                        return true;
                }
            }
        }
    }
    return false;
}

} // namespace Magres
