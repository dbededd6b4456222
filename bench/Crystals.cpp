// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>

namespace Crystals {
namespace {

struct Site {
    const char *species;
    Position position;
};

// Idealised geometry: tetrahedral angles, C-C 1.51, C-O 1.43, C-H 1.09, O-H 0.97 Angstrom. Every non-hydrogen atom and
// its hydrogens lie on the corners of cubes, so that distances along a corner direction are its component times
// sqrt(3).
std::array<Site, 9> ethanol()
{
    const double s = 1.0 / std::numbers::sqrt3;
    const double cc = 1.51 * s, co = 1.43 * s, ch = 1.09 * s, oh = 0.97 * s;
    const Position c2 = {cc, cc, cc};
    const Position o = {c2[0] + co, c2[1] - co, c2[2] + co};
    return {{{"C", {0, 0, 0}},
             {"C", c2},
             {"O", o},
             {"H", {ch, -ch, -ch}},
             {"H", {-ch, ch, -ch}},
             {"H", {-ch, -ch, ch}},
             {"H", {c2[0] - ch, c2[1] + ch, c2[2] + ch}},
             {"H", {c2[0] + ch, c2[1] + ch, c2[2] - ch}},
             {"H", {o[0] + oh, o[1] + oh, o[2] + oh}}}};
}

using Matrix = std::array<Position, 3>; // rows

/// The rotation of a random unit quaternion: K. Shoemake, Graphics Gems III (1992) 124.
Matrix randomRotation(Random &random)
{
    const double u = random.uniform(0, 1);
    const double a = random.uniform(0, 2 * std::numbers::pi), b = random.uniform(0, 2 * std::numbers::pi);
    const double x = std::sqrt(1 - u) * std::sin(a), y = std::sqrt(1 - u) * std::cos(a);
    const double z = std::sqrt(u) * std::sin(b), w = std::sqrt(u) * std::cos(b);
    return {{{1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)},
             {2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)},
             {2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)}}};
}

Position times(const Matrix &m, const Position &p)
{
    Position result{};
    for (std::size_t r = 0; r < 3; ++r)
        result[r] = m[r][0] * p[0] + m[r][1] * p[1] + m[r][2] * p[2];
    return result;
}

Position centroid(const std::array<Site, 9> &sites)
{
    Position sum{};
    for (const Site &site : sites) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            sum[axis] += site.position[axis] / double(sites.size());
    }
    return sum;
}

/// A cell with a along x and b in the xy plane, so that fractional coordinates follow by back substitution.
struct Cell {
    Position a, b, c;

    Position point(const Position &f) const
    {
        return {f[0] * a[0] + f[1] * b[0] + f[2] * c[0], f[1] * b[1] + f[2] * c[1], f[2] * c[2]};
    }
    Position wrapped(const Position &p) const
    {
        Position f;
        f[2] = p[2] / c[2];
        f[1] = (p[1] - f[2] * c[1]) / b[1];
        f[0] = (p[0] - f[1] * b[0] - f[2] * c[0]) / a[0];
        return point({f[0] - std::floor(f[0]), f[1] - std::floor(f[1]), f[2] - std::floor(f[2])});
    }
    QList<double> lattice() const { return {a[0], a[1], a[2], b[0], b[1], b[2], c[0], c[1], c[2]}; }
};

void add(QList<MagresAtom> &atoms, const char *species, const Position &position)
{
    MagresAtom atom;
    atom.type = species;
    atom.labels = {species};
    atom.pos = position;
    atoms.append(atom);
}

/// Sorts by species as calculations do, and numbers the atoms.
Crystal finished(QList<MagresAtom> atoms, const Cell &cell)
{
    std::stable_sort(atoms.begin(), atoms.end(),
                     [](const MagresAtom &a, const MagresAtom &b) { return a.type < b.type; });
    std::map<QByteArray, int> numbers;
    qint32 record = 0;
    for (MagresAtom &atom : atoms) {
        atom.No = ++numbers[atom.type];
        atom.recordNo = record++;
    }
    return {atoms, cell.lattice()};
}

} // namespace

Crystal molecular(int atoms, std::uint64_t seed)
{
    // Wide enough that molecules, however turned, share no bond with their neighbours.
    constexpr double spacing = 6.7;
    Random random(seed);
    const auto shape = ethanol();
    const int molecules = atoms / int(shape.size());
    const int singles = atoms % int(shape.size());
    const int edge = int(std::ceil(std::cbrt(molecules + singles)));
    const double length = spacing * edge;
    const Cell cell = {{length, 0, 0}, {0.05 * length, length, 0}, {-0.04 * length, 0.06 * length, length}};
    const Position centre = centroid(shape);
    const Position offset = {random.uniform(0, 1), random.uniform(0, 1), random.uniform(0, 1)};
    QList<MagresAtom> list;
    for (int n = 0; n < molecules + singles; ++n) {
        const Position middle = cell.point({(n % edge + offset[0]) / edge, (n / edge % edge + offset[1]) / edge,
                                            (n / edge / edge + offset[2]) / edge});
        if (n >= molecules) {
            add(list, "Ne", cell.wrapped(middle));
            continue;
        }
        const Matrix rotation = randomRotation(random);
        for (const Site &site : shape) {
            Position p = times(
                rotation, {site.position[0] - centre[0], site.position[1] - centre[1], site.position[2] - centre[2]});
            for (std::size_t axis = 0; axis < 3; ++axis)
                p[axis] += middle[axis];
            add(list, site.species, cell.wrapped(p));
        }
    }
    return finished(list, cell);
}

Crystal framework(int atoms, std::uint64_t seed)
{
    constexpr double spacing = 3.2; // Si-O 1.6 Angstrom
    Random random(seed);
    const int edge = std::max(1, int(std::lround(std::cbrt(atoms / 4.0))));
    const double length = spacing * edge;
    const Cell cell = {{length, 0, 0}, {0, length, 0}, {0, 0, length}};
    constexpr std::array<Site, 4> motif = {
        {{"Si", {0, 0, 0}}, {"O", {0.5, 0, 0}}, {"O", {0, 0.5, 0}}, {"O", {0, 0, 0.5}}}};
    QList<MagresAtom> list;
    for (int n = 0; n < edge * edge * edge; ++n) {
        const Position corner = {double(n % edge), double(n / edge % edge), double(n / edge / edge)};
        for (const Site &site : motif) {
            Position p;
            for (std::size_t axis = 0; axis < 3; ++axis)
                p[axis] = (corner[axis] + site.position[axis]) * spacing + random.uniform(-0.05, 0.05);
            add(list, site.species, cell.wrapped(p));
        }
    }
    return finished(list, cell);
}

} // namespace Crystals
