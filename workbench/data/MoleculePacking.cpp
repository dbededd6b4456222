// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/MoleculePacking.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <map>

namespace Workbench {

namespace {

constexpr float onFace = 0.01f; // Angstrom from a face of the cell
constexpr float bondSlack = 1.05f;

/// Fractional coordinates in a cell, by its reciprocal vectors; null vectors for a flat cell.
class Fractions {
public:
    explicit Fractions(const std::array<QVector3D, 4> &cell) : m_origin(cell[0])
    {
        const QVector3D bc = QVector3D::crossProduct(cell[2], cell[3]);
        const float volume = QVector3D::dotProduct(cell[1], bc);
        if (std::abs(volume) < 1e-3f)
            return;
        m_rows = {bc / volume, QVector3D::crossProduct(cell[3], cell[1]) / volume,
                  QVector3D::crossProduct(cell[1], cell[2]) / volume};
    }
    bool isFlat() const { return m_rows[0].isNull(); }
    float of(const QVector3D &position, int axis) const
    {
        return QVector3D::dotProduct(position - m_origin, m_rows[size_t(axis)]);
    }
    /// A distance from a face, Angstrom, as a fraction.
    float depth(float distance, int axis) const { return distance * m_rows[size_t(axis)].length(); }

private:
    QVector3D m_origin;
    std::array<QVector3D, 3> m_rows;
};

using Lengths = std::map<std::pair<int, int>, float>;

/// The longest bond of each pair of elements.
Lengths longestBonds(const Molecule &molecule)
{
    Lengths longest;
    for (const auto &[i, j] : molecule.bonds) {
        const auto &a = molecule.atoms[size_t(i)], &b = molecule.atoms[size_t(j)];
        float &length = longest[std::minmax(a.element, b.element)];
        length = std::max(length, (a.position - b.position).length());
    }
    return longest;
}

/// Pairs of images in different cells that are as near as bonded atoms are; of all cells if asked for.
void addBonds(PackedMolecule &packed, const Lengths &lengths, bool all)
{
    float reach = 0;
    for (const auto &[elements, length] : lengths)
        reach = std::max(reach, length * bondSlack);
    if (reach <= 0)
        return;
    const auto &atoms = packed.molecule.atoms;
    using Box = std::array<int, 3>;
    const auto boxOf = [reach](const QVector3D &p) {
        return Box{int(std::floor(p.x() / reach)), int(std::floor(p.y() / reach)), int(std::floor(p.z() / reach))};
    };
    const auto key = [](const Box &box) { return (qint64(box[0]) * 2097152 + box[1]) * 2097152 + box[2]; };
    QHash<qint64, std::vector<int>> boxes;
    for (int i = 0; i < int(atoms.size()); ++i) {
        if (!atoms[size_t(i)].drawable)
            continue;
        const Box box = boxOf(atoms[size_t(i)].position);
        // Those met before: each pair once.
        for (int neighbour = 0; neighbour < 27; ++neighbour) {
            const auto there = boxes.constFind(
                key({box[0] + neighbour % 3 - 1, box[1] + neighbour / 3 % 3 - 1, box[2] + neighbour / 9 - 1}));
            for (int j : there == boxes.constEnd() ? std::vector<int>() : *there) {
                if (!all && packed.images[size_t(i)].cell == packed.images[size_t(j)].cell)
                    continue;
                const auto length = lengths.find(std::minmax(atoms[size_t(i)].element, atoms[size_t(j)].element));
                if (length == lengths.end())
                    continue;
                const float distance = (atoms[size_t(i)].position - atoms[size_t(j)].position).length();
                if (distance <= length->second * bondSlack && distance > 0.1f)
                    packed.molecule.bonds.emplace_back(j, i);
            }
        }
        boxes[key(box)].push_back(i);
    }
}

QVector3D translation(const std::array<QVector3D, 4> &cell, const std::array<int, 3> &counts)
{
    return cell[1] * float(counts[0]) + cell[2] * float(counts[1]) + cell[3] * float(counts[2]);
}

/// No more cells than there is room for atoms.
std::array<int, 3> bounded(std::array<int, 3> cells, size_t atoms)
{
    for (int &count : cells)
        count = std::clamp(count, 1, 99);
    while (atoms * size_t(cells[0]) * size_t(cells[1]) * size_t(cells[2]) > PackedMolecule::mostAtoms) {
        int &most = *std::max_element(cells.begin(), cells.end());
        if (most == 1)
            break;
        --most;
    }
    return cells;
}

PackedMolecule unpacked(const Molecule &original)
{
    PackedMolecule same{original, {}, {}, {1, 1, 1}, {}};
    for (int atom = 0; atom < int(original.atoms.size()); ++atom) {
        same.images.push_back({atom, {}});
        same.first.push_back(atom);
    }
    return same;
}

/// Puts the middle of everything at the origin.
void centre(PackedMolecule &packed)
{
    QVector3D low(1e30f, 1e30f, 1e30f), high = -low;
    const auto include = [&](const QVector3D &p) {
        for (int k = 0; k < 3; ++k) {
            low[k] = std::min(low[k], p[k]);
            high[k] = std::max(high[k], p[k]);
        }
    };
    for (const auto &atom : packed.molecule.atoms)
        if (atom.drawable)
            include(atom.position);
    if (low.x() > high.x())
        return;
    packed.shift = -(low + high) / 2;
    for (auto &atom : packed.molecule.atoms)
        atom.position += packed.shift;
    (*packed.molecule.cell)[0] += packed.shift;
}

} // namespace

PackedMolecule PackedMolecule::of(const Molecule &original, const Packing &packing)
{
    if (!original.cell || packing == Packing())
        return unpacked(original);
    const Fractions fractions(*original.cell);
    const bool inCell = packing.contents == Packing::Contents::Cell;
    if (fractions.isFlat())
        return unpacked(original);

    PackedMolecule packed;
    packed.molecule.cell = original.cell;
    packed.cells = bounded(packing.cells, original.atoms.size());
    packed.first.assign(original.atoms.size(), -1);
    for (int atom = 0; atom < int(original.atoms.size()); ++atom) {
        const Molecule::Atom &source = original.atoms[size_t(atom)];
        std::array<int, 3> from{}, count = packed.cells;
        for (int axis = 0; inCell && axis < 3; ++axis) {
            const float f = fractions.of(source.position, axis), tolerance = fractions.depth(onFace, axis);
            const float whole = std::floor(f + tolerance);
            from[size_t(axis)] = -int(whole);
            count[size_t(axis)] += f - whole <= tolerance ? 1 : 0;
        }
        if (!source.drawable)
            count = {1, 1, 1};
        for (int c = 0; c < count[2]; ++c)
            for (int b = 0; b < count[1]; ++b)
                for (int a = 0; a < count[0]; ++a) {
                    const std::array<int, 3> cell{from[0] + a, from[1] + b, from[2] + c};
                    if (packed.first[size_t(atom)] < 0)
                        packed.first[size_t(atom)] = int(packed.images.size());
                    packed.images.push_back({atom, cell});
                    packed.molecule.atoms.push_back(
                        {source.element, source.position + translation(*original.cell, cell), source.drawable});
                }
    }
    if (!inCell) {
        // The images of an atom follow one another, in the same order for all.
        const int copies = packed.cells[0] * packed.cells[1] * packed.cells[2];
        for (const auto &[i, j] : original.bonds)
            for (int copy = 0; copy < copies; ++copy)
                packed.molecule.bonds.emplace_back(packed.first[size_t(i)] + copy, packed.first[size_t(j)] + copy);
    }
    addBonds(packed, longestBonds(original), inCell);
    centre(packed);
    return packed;
}

} // namespace Workbench
