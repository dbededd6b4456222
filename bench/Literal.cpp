// SPDX-License-Identifier: BSD-3-Clause
#include "Literal.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace Literal {

std::vector<double> covalentRadii(const QList<MagresAtom> &atoms)
{
    std::vector<double> radii;
    for (const MagresAtom &atom : atoms)
        radii.push_back(Magres::covalentRadius(atom.type));
    return radii;
}

namespace {

bool isBonded(const MagresAtom &a, const MagresAtom &b, double radiusA, double radiusB)
{
    if (radiusA < 0.0 || radiusB < 0.0)
        return false;
    const double R = radiusA + radiusB;
    const double D = Magres::atomDistance(a, b);
    return R > D || 0.1 * R > std::abs(D - R);
}

} // namespace

void detectBonds(QList<MagresAtom> &atoms, const std::vector<double> &radii)
{
    for (MagresAtom &atom : atoms)
        atom.bonds.clear();
    for (qint32 i = 0; i < atoms.size(); ++i) {
        for (qint32 j = i + 1; j < atoms.size(); ++j) {
            if (isBonded(atoms.at(i), atoms.at(j), radii[std::size_t(i)], radii[std::size_t(j)])) {
                atoms[i].bonds.append(j);
                atoms[j].bonds.append(i);
            }
        }
    }
}

namespace {

std::set<qint32> moleculeOf(qint32 start, const QList<MagresAtom> &atoms)
{
    std::set<qint32> molecule = {start};
    std::vector<qint32> open = {start};
    while (!open.empty()) {
        const qint32 i = open.back();
        open.pop_back();
        for (qint32 j : atoms.at(i).bonds) {
            if (molecule.insert(j).second)
                open.push_back(j);
        }
    }
    return molecule;
}

} // namespace

void completeMolecules(QList<MagresAtom> &atoms, const QList<double> &lattice, const std::vector<double> &radii)
{
    if (lattice.size() != 9)
        return;
    std::set<qint32> handled;
    for (qint32 k = 0; k < atoms.size(); ++k) {
        if (handled.contains(k))
            continue;
        std::set<qint32> molecule = moleculeOf(k, atoms);
        handled.insert(molecule.begin(), molecule.end());
        for (int i = -1; i <= 1; ++i) {
            for (int j = -1; j <= 1; ++j) {
                for (int l = -1; l <= 1; ++l) {
                    if (i == 0 && j == 0 && l == 0)
                        continue;
                    QList<MagresAtom> copy = atoms;
                    for (qint32 m : molecule) {
                        for (int axis = 0; axis < 3; ++axis) {
                            copy[m].pos[std::size_t(axis)] +=
                                i * lattice[axis] + j * lattice[3 + axis] + l * lattice[6 + axis];
                        }
                    }
                    detectBonds(copy, radii);
                    const std::set<qint32> grown = moleculeOf(k, copy);
                    if (grown.size() < 2 * molecule.size())
                        continue;
                    atoms = copy;
                    molecule = grown;
                    handled.insert(molecule.begin(), molecule.end());
                }
            }
        }
    }
    detectBonds(atoms, radii);
}

double shortestImage(const Position &v, const std::array<Position, 3> &cell)
{
    const double volume = Magres::dot(cell[0], Magres::cross(cell[1], cell[2]));
    const double length = std::sqrt(Magres::dot(v, v));
    std::array<double, 3> from, to;
    for (std::size_t i = 0; i < 3; ++i) {
        const Position normal = Magres::cross(cell[(i + 1) % 3], cell[(i + 2) % 3]);
        const double fraction = Magres::dot(v, normal) / volume;
        const double width = length * std::sqrt(Magres::dot(normal, normal)) / std::abs(volume);
        from[i] = std::floor(-fraction - width);
        to[i] = std::ceil(-fraction + width);
    }
    double shortest = Magres::dot(v, v);
    for (double i = from[0]; i <= to[0]; ++i) {
        for (double j = from[1]; j <= to[1]; ++j) {
            for (double l = from[2]; l <= to[2]; ++l) {
                const Position image =
                    Magres::plusScaled(Magres::plusScaled(Magres::plusScaled(v, i, cell[0]), j, cell[1]), l, cell[2]);
                shortest = std::min(shortest, Magres::dot(image, image));
            }
        }
    }
    return std::sqrt(shortest);
}

void addLorentzians(std::span<const LinePeak> peaks, double width, const SpectrumAxis &axis, std::span<double> data)
{
    for (const LinePeak &peak : peaks) {
        for (std::size_t i = 0; i < data.size(); ++i) {
            const double t = 2.0 * (axis.at(std::ptrdiff_t(i)) - peak.positionF2) / width;
            data[i] += peak.height / (1.0 + t * t);
        }
    }
}

namespace {

double gaussian(double x, double position, double height, double width)
{
    const double t = 2.0 * (x - position) / width;
    return height * std::exp(-0.69314718056 * (t * t));
}

} // namespace

void addGaussians(std::span<const LinePeak> peaks, double widthF2, double widthF1, const SpectrumAxis &axisF2,
                  const SpectrumAxis &axisF1, std::size_t pointsF2, std::span<double> data)
{
    const std::size_t pointsF1 = data.size() / pointsF2;
    for (const LinePeak &peak : peaks) {
        for (std::size_t i1 = 0; i1 < pointsF1; ++i1) {
            const double g1 = gaussian(axisF1.at(std::ptrdiff_t(i1)), peak.positionF1, 1.0, widthF1);
            for (std::size_t i2 = 0; i2 < pointsF2; ++i2) {
                data[i1 * pointsF2 + i2] +=
                    gaussian(axisF2.at(std::ptrdiff_t(i2)), peak.positionF2, g1 * peak.height, widthF2);
            }
        }
    }
}

} // namespace Literal
