// SPDX-License-Identifier: BSD-3-Clause
#include "reading/NeighbourGrid.h"

#include <bit>

namespace Magres {

// The edge exceeds the reach by more than any rounding of squared distances and of scaled coordinates below `outermost`
// can amount to, so that atoms within the reach lie in the same or in adjacent cells.
// There are many more buckets than atoms, so that most of the empty cells about an atom have an empty one.
NeighbourGrid::NeighbourGrid(double reach, std::size_t atomCount)
    : m_inverseEdge(1.0 / (1.001 * reach)), m_entries(atomCount), m_buckets(std::bit_ceil(8 * atomCount + 1), none)
{
}

void NeighbourGrid::insert(qint32 atom, const Position &position)
{
    if (!isFinite(position))
        return;
    Entry &entry = m_entries[std::size_t(atom)];
    entry.cell = cellOf(position);
    qint32 &first = m_buckets[bucket(entry.cell)];
    entry.next = first;
    entry.previous = none;
    entry.filed = true;
    if (first != none)
        m_entries[std::size_t(first)].previous = atom;
    first = atom;
}

void NeighbourGrid::remove(qint32 atom)
{
    Entry &entry = m_entries[std::size_t(atom)];
    if (!entry.filed)
        return;
    if (entry.previous != none)
        m_entries[std::size_t(entry.previous)].next = entry.next;
    else
        m_buckets[bucket(entry.cell)] = entry.next;
    if (entry.next != none)
        m_entries[std::size_t(entry.next)].previous = entry.previous;
    entry.filed = false;
}

} // namespace Magres
