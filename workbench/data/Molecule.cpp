// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/Molecule.h"

#include "support/MetaTypes.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

// Angstrom. Farther out is a damaged file, and beyond what single precision could draw.
constexpr double farthestAtom = 1e5;

using Point = std::array<double, 3>;

bool isDrawable(const Point &p)
{
    return std::all_of(p.begin(), p.end(), [](double x) { return std::abs(x) <= farthestAtom; });
}

QVector3D relative(const Point &p, const Point &origin)
{
    return QVector3D(float(p[0] - origin[0]), float(p[1] - origin[1]), float(p[2] - origin[2]));
}

Point centreOf(const std::vector<Point> &points)
{
    Point low{farthestAtom, farthestAtom, farthestAtom};
    Point high{-farthestAtom, -farthestAtom, -farthestAtom};
    bool any = false;
    for (const Point &p : points) {
        if (!isDrawable(p))
            continue;
        any = true;
        for (int k = 0; k < 3; ++k) {
            low[k] = std::min(low[k], p[k]);
            high[k] = std::max(high[k], p[k]);
        }
    }
    return any ? Point{(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, (low[2] + high[2]) / 2} : Point{};
}

std::vector<std::pair<int, int>> bondsOf(const QVariantList &atomMaps, const std::vector<Molecule::Atom> &atoms)
{
    std::vector<std::pair<int, int>> bonds;
    for (int i = 0; i < int(atoms.size()); ++i) {
        const QVariant neighbours = atomMaps.at(i).toMap().value(QStringLiteral("NB.Num"));
        for (int j : neighbours.value<QList<int>>()) {
            if (j >= 0 && j < int(atoms.size()) && j != i && atoms[i].drawable && atoms[j].drawable)
                bonds.emplace_back(std::min(i, j), std::max(i, j));
        }
    }
    std::sort(bonds.begin(), bonds.end());
    bonds.erase(std::unique(bonds.begin(), bonds.end()), bonds.end());
    return bonds;
}

} // namespace

Molecule Molecule::fromDescription(const QVariantMap &description)
{
    const QVariant atomList = description.value(QStringLiteral("Atoms"));
    // Qt would take a text for a list of letters.
    const QVariantList atomMaps = atomList.typeId() == QMetaType::QVariantList ? atomList.toList() : QVariantList();
    std::vector<Point> points;
    points.reserve(atomMaps.size());
    for (const QVariant &value : atomMaps) {
        const QVariantMap atom = value.toMap();
        const auto coordinate = [&](const QString &key) {
            bool isNumber = false;
            const double x = atom.value(key).toDouble(&isNumber);
            return isNumber ? x : std::nan("");
        };
        points.push_back(
            {coordinate(QStringLiteral("X")), coordinate(QStringLiteral("Y")), coordinate(QStringLiteral("Z"))});
    }

    Molecule molecule;
    const Point centre = centreOf(points);
    molecule.atoms.reserve(points.size());
    for (size_t i = 0; i < points.size(); ++i) {
        const int element = atomMaps.at(i).toMap().value(QStringLiteral("El")).toInt();
        const bool drawable = isDrawable(points[i]);
        molecule.atoms.push_back({element, drawable ? relative(points[i], centre) : QVector3D(), drawable});
    }
    molecule.bonds = bondsOf(atomMaps, molecule.atoms);

    const QVariantMap crystal = description.value(QStringLiteral("CrystallographicData")).toMap();
    const auto lattice = crystal.value(QStringLiteral("Lattice")).value<DoubleVector>();
    if (lattice.size() == 9) {
        std::array<QVector3D, 4> cell{relative({}, centre)};
        bool drawable = true;
        for (int k = 0; k < 3; ++k) {
            const Point edge{lattice[3 * k], lattice[3 * k + 1], lattice[3 * k + 2]};
            drawable = drawable && isDrawable(edge);
            cell[k + 1] = relative(edge, {});
        }
        if (drawable)
            molecule.cell = cell;
    }
    return molecule;
}

} // namespace Workbench
