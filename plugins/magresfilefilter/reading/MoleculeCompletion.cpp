// SPDX-License-Identifier: BSD-3-Clause
#include "reading/MoleculeCompletion.h"

#include "parameters/Texts.h"
#include "reading/BondCriterion.h"
#include "reading/MagresParser.h"
#include "reading/NeighbourGrid.h"
#include "reading/Vectors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace Magres {
namespace {

/// The 26 lattice translations to the neighbouring cells, the multiple of c varying fastest.
std::vector<Position> neighbourTranslations(const QList<double> &lattice)
{
    std::vector<Position> translations;
    for (int i = -1; i <= 1; ++i) {
        for (int j = -1; j <= 1; ++j) {
            for (int l = -1; l <= 1; ++l) {
                if (i == 0 && j == 0 && l == 0)
                    continue;
                Position t;
                for (int axis = 0; axis < 3; ++axis)
                    t[std::size_t(axis)] = i * lattice[axis] + j * lattice[3 + axis] + l * lattice[6 + axis];
                translations.push_back(t);
            }
        }
    }
    return translations;
}

/// The region that atoms fill, as slabs between the lattice's planes. Two sets whose slabs lie farther apart than the
/// longest bond share no bond.
class Slabs {
public:
    /// Directions are the unit normals of the planes; NaN where a degenerate lattice has none, and no slab is apart
    /// then.
    explicit Slabs(const QList<double> &lattice)
    {
        for (std::size_t d = 0; d < 3; ++d) {
            const auto vector = [&](std::size_t i) {
                const qsizetype first = qsizetype(i % 3) * 3;
                return Position{lattice[first], lattice[first + 1], lattice[first + 2]};
            };
            const Position normal = cross(vector(d + 1), vector(d + 2));
            double length = std::sqrt(dot(normal, normal));
            if (!(length > 1e-100 && length < 1e100)) // its square has lost digits
                length = std::numeric_limits<double>::quiet_NaN();
            m_normals[d] = {normal[0] / length, normal[1] / length, normal[2] / length};
        }
        clear();
    }

    void clear()
    {
        m_low.fill(std::numeric_limits<double>::infinity());
        m_high.fill(-std::numeric_limits<double>::infinity());
        m_bounded = true;
    }

    void include(const Position &position)
    {
        for (std::size_t d = 0; d < 3; ++d) {
            const double height = dot(m_normals[d], position);
            m_low[d] = std::min(m_low[d], height);
            m_high[d] = std::max(m_high[d], height);
        }
        // Within these bounds heights are good to better than a thousandth of any bond.
        for (double coordinate : position)
            m_bounded = m_bounded && std::abs(coordinate) < 1e8;
    }

    bool apart(const Slabs &other, const Position &shiftOfOther, double reach) const
    {
        if (!m_bounded || !other.m_bounded)
            return false;
        for (std::size_t d = 0; d < 3; ++d) {
            const double shift = dot(m_normals[d], shiftOfOther);
            if (other.m_low[d] + shift > m_high[d] + reach || other.m_high[d] + shift < m_low[d] - reach)
                return true;
        }
        return false;
    }

    bool apart(const Position &position, double reach) const
    {
        if (!m_bounded)
            return false;
        for (std::size_t d = 0; d < 3; ++d) {
            const double height = dot(m_normals[d], position);
            if (height > m_high[d] + reach || height < m_low[d] - reach)
                return true;
        }
        return false;
    }

private:
    std::array<Position, 3> m_normals;
    std::array<double, 3> m_low;
    std::array<double, 3> m_high;
    bool m_bounded = true;
};

// The result must be, bit for bit, that of this procedure:
//
//     take the atoms in file order; for each that is not handled yet:
//         its molecule is what bonds lead to from it; all atoms of the molecule are handled
//         for each translation t = i a + j b + l c, with i, j, l from -1 to 1 in this nesting, but for 0 0 0:
//             in a copy of all atoms, add t to the positions of the molecule
//             detect all bonds of the copy anew
//             in the copy, find the molecule of the atom begun with
//             if that has at least twice as many atoms as before the move:
//                 the copy becomes the atoms, the molecule grows to what was found, and all its atoms are handled
//     detect all bonds anew
//
// What follows does no more than the moves need. The atoms, their bonds and molecules are kept up to date move by move:
// a move changes nothing but the distances of the moved molecule, so its bonds alone are found anew, with a grid
// instead of all pairs; and nothing moves before the molecules it would meet are known to be large enough.
class Completion {
public:
    Completion(QList<MagresAtom> &atoms, const QList<double> &lattice);
    void run();

private:
    struct Saved {
        Position position;
        QList<qint32> bonds;
    };

    // Molecules are rings of atoms that carry the same label, the index of one of them.
    void labelMolecules(const std::vector<qint32> &atoms);
    void uniteMolecules(qint32 a, qint32 b);
    void gather(qint32 start);
    qsizetype reachable(qint32 start, qint32 onlyLabel);

    void tryTranslations(qint32 start);
    bool meetsEnough(const Position &t);
    bool move(qint32 start, const Position &t);
    void place(qint32 atom, const Position &position);
    QList<qint32> findBonds(qint32 atom);
    void link();
    void unlink();
    void relabel(bool connected);

    /// Calls visit(atom) as the grid does, and counts.
    template <class Visitor>
    bool visitNear(const Position &point, Visitor visit)
    {
        return m_grid.visitNear(point, [&](qint32 j) {
            if (++m_visits > m_mostVisits)
                throw MagresParseError(
                    Texts::tr("Too many atoms lie too close together to make molecules whole; are the coordinates and "
                              "the lattice in the units that the file states?"));
            return visit(j);
        });
    }

    MagresAtom &atom(qint32 i) { return m_atoms[i]; }
    qint32 &label(qint32 i) { return m_label[std::size_t(i)]; }
    bool isBonded(qint32 i, const Position &position, qint32 j) const
    {
        return squaredDistance(position, m_atoms[j].pos) <= m_criterion.limit(m_criterion.kind(i), m_criterion.kind(j));
    }

    MagresAtom *m_atoms;
    qint32 m_count;
    std::vector<Position> m_translations;
    BondCriterion m_criterion;
    double m_reach; // longest bond, and a little more than rounding can add
    NeighbourGrid m_grid;
    // Of atoms by atoms, all in all. In matter hundreds lie within reach, and molecules meet others near the cell's
    // faces alone; where a cell is far too small for its atoms, all are in each other's way for every translation.
    qint64 m_visits = 0;
    qint64 m_mostVisits;
    Slabs m_everything; // never shrinks

    std::vector<qint32> m_label;
    std::vector<qint32> m_ring; // the next atom of the same molecule
    std::vector<qint32> m_size; // of the molecule, at its label
    std::vector<char> m_handled;

    // The molecule being tried.
    std::vector<qint32> m_members;
    Slabs m_extent;

    std::vector<unsigned> m_visited; // when, by m_visit
    unsigned m_visit = 0;
    std::vector<qint32> m_stack;
};

Completion::Completion(QList<MagresAtom> &atoms, const QList<double> &lattice)
    : m_atoms(atoms.data()),
      m_count(qint32(atoms.size())),
      m_translations(neighbourTranslations(lattice)),
      m_criterion(atoms),
      m_reach(1.001 * std::sqrt(std::max(m_criterion.longest(), 1.0))),
      m_grid(m_reach, std::size_t(m_count)),
      m_mostVisits(10'000'000 + 3000 * qint64(m_count)),
      m_everything(lattice),
      m_label(std::size_t(m_count), -1),
      m_ring(std::size_t(m_count)),
      m_size(std::size_t(m_count), 0),
      m_handled(std::size_t(m_count), false),
      m_extent(lattice),
      m_visited(std::size_t(m_count), 0)
{
    std::vector<qint32> all(static_cast<std::size_t>(m_count));
    for (qint32 i = 0; i < m_count; ++i) {
        all[std::size_t(i)] = i;
        // An atom that is never bonded, because of its element or because it is nowhere, cannot be met.
        if (m_criterion.longest(m_criterion.kind(i)) < 0.0 || !isFinite(atom(i).pos))
            continue;
        m_grid.insert(i, atom(i).pos);
        m_everything.include(atom(i).pos);
    }
    labelMolecules(all);
}

void Completion::run()
{
    for (qint32 i = 0; i < m_count; ++i) {
        if (!m_handled[std::size_t(i)])
            tryTranslations(i);
    }
}

/// Finds the molecules of the given atoms by their bonds; the atoms must be all those of some molecules.
void Completion::labelMolecules(const std::vector<qint32> &atoms)
{
    for (qint32 i : atoms)
        label(i) = -1;
    for (qint32 start : atoms) {
        if (label(start) >= 0)
            continue;
        label(start) = start;
        m_ring[std::size_t(start)] = start;
        m_size[std::size_t(start)] = 1;
        m_stack.assign(1, start);
        while (!m_stack.empty()) {
            const qint32 i = m_stack.back();
            m_stack.pop_back();
            for (qint32 j : std::as_const(atom(i).bonds)) {
                if (label(j) >= 0)
                    continue;
                label(j) = start;
                m_ring[std::size_t(j)] = m_ring[std::size_t(start)];
                m_ring[std::size_t(start)] = j;
                ++m_size[std::size_t(start)];
                m_stack.push_back(j);
            }
        }
    }
}

void Completion::uniteMolecules(qint32 a, qint32 b)
{
    qint32 larger = label(a);
    qint32 smaller = label(b);
    if (larger == smaller)
        return;
    if (m_size[std::size_t(larger)] < m_size[std::size_t(smaller)])
        std::swap(larger, smaller);
    qint32 i = smaller;
    do {
        label(i) = larger;
        i = m_ring[std::size_t(i)];
    } while (i != smaller);
    m_size[std::size_t(larger)] += m_size[std::size_t(smaller)];
    std::swap(m_ring[std::size_t(larger)], m_ring[std::size_t(smaller)]);
}

/// Makes the molecule of `start` the one being tried.
void Completion::gather(qint32 start)
{
    m_members.clear();
    m_extent.clear();
    qint32 i = start;
    do {
        m_members.push_back(i);
        m_handled[std::size_t(i)] = true;
        m_extent.include(atom(i).pos);
        i = m_ring[std::size_t(i)];
    } while (i != start);
}

/// Number of atoms that bonds lead to, within the molecule of that label only unless it is negative.
qsizetype Completion::reachable(qint32 start, qint32 onlyLabel)
{
    ++m_visit;
    qsizetype count = 1;
    m_visited[std::size_t(start)] = m_visit;
    m_stack.assign(1, start);
    while (!m_stack.empty()) {
        const qint32 i = m_stack.back();
        m_stack.pop_back();
        for (qint32 j : std::as_const(atom(i).bonds)) {
            if (m_visited[std::size_t(j)] == m_visit || (onlyLabel >= 0 && label(j) != onlyLabel))
                continue;
            m_visited[std::size_t(j)] = m_visit;
            ++count;
            m_stack.push_back(j);
        }
    }
    return count;
}

void Completion::tryTranslations(qint32 start)
{
    gather(start);
    for (const Position &t : m_translations) {
        if (2 * m_members.size() > std::size_t(m_count))
            return; // the other atoms are too few
        // Where the translation is not finite the moved atoms have no bonds at all.
        if (isFinite(t) && meetsEnough(t) && move(start, t))
            gather(start);
    }
}

/// Whether the other molecules that the moved one would have bonds with are as large as it in total.
bool Completion::meetsEnough(const Position &t)
{
    if (m_everything.apart(m_extent, t, m_reach))
        return false;
    const qint32 own = label(m_members.front());
    ++m_visit;
    std::size_t met = 0;
    for (qint32 i : m_members) {
        const Position moved = plus(atom(i).pos, t);
        if (m_everything.apart(moved, m_reach))
            continue;
        const bool enough = visitNear(moved, [&](qint32 j) {
            const auto other = std::size_t(label(j));
            if (label(j) == own || m_visited[other] == m_visit || !isBonded(i, moved, j))
                return false;
            m_visited[other] = m_visit;
            met += std::size_t(m_size[other]);
            return met >= m_members.size();
        });
        if (enough)
            return true;
    }
    return false;
}

/// Moves the molecule being tried, unless it turns out not to double. That takes a bond that the rounding of the new
/// positions breaks.
bool Completion::move(qint32 start, const Position &t)
{
    const qint32 own = label(start);
    std::vector<Saved> saved;
    saved.reserve(m_members.size());
    for (qint32 i : m_members) {
        saved.push_back({atom(i).pos, atom(i).bonds});
        place(i, plus(atom(i).pos, t));
    }
    for (qint32 i : m_members)
        atom(i).bonds = findBonds(i);
    link();

    const bool connected = std::size_t(reachable(start, own)) == m_members.size();
    if (!connected && std::size_t(reachable(start, -1)) < 2 * m_members.size()) {
        unlink();
        for (std::size_t m = 0; m < m_members.size(); ++m) {
            place(m_members[m], saved[m].position);
            atom(m_members[m]).bonds = saved[m].bonds;
        }
        return false;
    }
    for (qint32 i : m_members) {
        if (isFinite(atom(i).pos))
            m_everything.include(atom(i).pos);
    }
    relabel(connected);
    return true;
}

void Completion::place(qint32 i, const Position &position)
{
    m_grid.remove(i);
    atom(i).pos = position;
    m_grid.insert(i, position);
}

QList<qint32> Completion::findBonds(qint32 i)
{
    QList<qint32> bonds;
    visitNear(m_atoms[i].pos, [&](qint32 j) {
        if (j != i && isBonded(i, m_atoms[i].pos, j))
            bonds.append(j);
        return false;
    });
    std::sort(bonds.begin(), bonds.end());
    return bonds;
}

/// Enters the new bonds of the molecule being tried on their other ends.
void Completion::link()
{
    const qint32 own = label(m_members.front());
    for (qint32 i : m_members) {
        for (qint32 j : std::as_const(atom(i).bonds)) {
            if (label(j) == own)
                continue;
            QList<qint32> &others = atom(j).bonds;
            others.insert(std::lower_bound(others.begin(), others.end(), i), i);
        }
    }
}

void Completion::unlink()
{
    const qint32 own = label(m_members.front());
    for (qint32 i : m_members) {
        for (qint32 j : std::as_const(atom(i).bonds)) {
            if (label(j) != own)
                atom(j).bonds.removeOne(i);
        }
    }
}

/// Brings the molecules up to date after a move.
void Completion::relabel(bool connected)
{
    if (connected) {
        for (qint32 i : m_members) {
            for (qint32 j : std::as_const(atom(i).bonds))
                uniteMolecules(i, j);
        }
        return;
    }
    // It fell apart: start over with all molecules that have a part in it.
    ++m_visit;
    std::vector<qint32> affected;
    const auto addMoleculeOf = [&](qint32 i) {
        for (; m_visited[std::size_t(i)] != m_visit; i = m_ring[std::size_t(i)]) {
            m_visited[std::size_t(i)] = m_visit;
            affected.push_back(i);
        }
    };
    for (qint32 i : m_members) {
        addMoleculeOf(i);
        for (qint32 j : std::as_const(atom(i).bonds))
            addMoleculeOf(j);
    }
    labelMolecules(affected);
}

} // namespace

void completeMolecules(QList<MagresAtom> &atoms, const QList<double> &lattice)
{
    if (lattice.size() == 9)
        Completion(atoms, lattice).run();
}

} // namespace Magres
