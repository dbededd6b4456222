// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/Contacts.h"

#include "data/Nuclides.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Workbench {

namespace {

constexpr double samePlace = 1e-3; // Angstrom

struct Direction {
    QVector3D reciprocal; ///< its dot product with a position counts cells
    double cells = 0; ///< within reach
};

/// None for a crystal without a cell, or with a flat one.
std::vector<Direction> directions(const Molecule &molecule, double reach)
{
    if (!molecule.cell)
        return {};
    const auto &[origin, a, b, c] = *molecule.cell;
    const float volume = QVector3D::dotProduct(a, QVector3D::crossProduct(b, c));
    if (std::abs(volume) < 1e-3f)
        return {};
    std::vector<Direction> found;
    for (const QVector3D &across :
         {QVector3D::crossProduct(b, c), QVector3D::crossProduct(c, a), QVector3D::crossProduct(a, b)})
        found.push_back({across / volume, reach * double(across.length()) / std::abs(double(volume))});
    return found;
}

} // namespace

std::vector<Contact> nearestContacts(const Molecule &molecule, int atom, double reach, size_t most)
{
    std::vector<Contact> found;
    if (atom < 0 || atom >= int(molecule.atoms.size()) || !molecule.atoms[size_t(atom)].drawable)
        return found;
    const std::vector<Direction> axes = directions(molecule, reach);
    const QVector3D from = molecule.atoms[size_t(atom)].position;
    for (int other = 0; other < int(molecule.atoms.size()); ++other) {
        const Molecule::Atom &candidate = molecule.atoms[size_t(other)];
        if (!candidate.drawable)
            continue;
        const QVector3D between = candidate.position - from;
        std::array<int, 3> low{}, high{};
        for (size_t k = 0; k < axes.size(); ++k) {
            const double here = double(QVector3D::dotProduct(between, axes[k].reciprocal));
            low[k] = int(std::ceil(-axes[k].cells - here - 1e-6));
            high[k] = int(std::floor(axes[k].cells - here + 1e-6));
        }
        for (int a = low[0]; a <= high[0]; ++a)
            for (int b = low[1]; b <= high[1]; ++b)
                for (int c = low[2]; c <= high[2]; ++c) {
                    QVector3D moved = between;
                    if (!axes.empty())
                        moved += (*molecule.cell)[1] * float(a) + (*molecule.cell)[2] * float(b)
                            + (*molecule.cell)[3] * float(c);
                    const double distance = double(moved.length());
                    if (distance <= reach && distance > samePlace)
                        found.push_back({{other, {a, b, c}}, distance});
                }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Contact &a, const Contact &b) { return a.distance < b.distance; });
    found.resize(std::min(found.size(), most));
    return found;
}

double dipolarCoupling(const QString &a, const QString &b, double distance)
{
    constexpr double mu0 = 1.25663706212e-6, hbar = 1.054571817e-34; // CODATA 2018, SI
    const double metres = distance * 1e-10;
    return -mu0 * hbar * Nuclides::table()[a].gyromagneticRatio() * Nuclides::table()[b].gyromagneticRatio()
        / (8 * std::numbers::pi * std::numbers::pi * metres * metres * metres);
}

QString usualNucleus(const QString &element)
{
    const Nuclides &table = Nuclides::table();
    QString usual;
    for (const QString &name : table.isotopes(element)) {
        const Nuclide one = table[name], best = table[usual];
        if (one.gyromagneticRatio() == 0)
            continue;
        const bool better =
            one.isQuadrupolar() != best.isQuadrupolar() ? !one.isQuadrupolar() : one.abundance > best.abundance;
        if (usual.isEmpty() || better)
            usual = name;
    }
    return usual;
}

} // namespace Workbench
