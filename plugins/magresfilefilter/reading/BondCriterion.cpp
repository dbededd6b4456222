// SPDX-License-Identifier: BSD-3-Clause
#include "reading/BondCriterion.h"

#include "parameters/ElementTable.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Magres {
namespace {

bool bonded(double squared, double radiusSum)
{
    const double distance = std::sqrt(squared);
    return radiusSum > distance || 0.1 * radiusSum > std::abs(distance - radiusSum);
}

} // namespace

double BondCriterion::largestSquaredDistance(double radiusSum)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    // The true limit is a few units in the last place away.
    double squared = 1.1 * radiusSum * (1.1 * radiusSum);
    while (!bonded(squared, radiusSum))
        squared = std::nextafter(squared, 0.0);
    while (bonded(std::nextafter(squared, infinity), radiusSum))
        squared = std::nextafter(squared, infinity);
    return squared;
}

BondCriterion::BondCriterion(const QList<MagresAtom> &atoms)
{
    std::vector<double> radii = {-1.0}; // of each kind
    m_kinds.reserve(std::size_t(atoms.size()));
    const QByteArray *previous = nullptr;
    for (const MagresAtom &atom : atoms) {
        if (previous && atom.type == *previous) {
            m_kinds.push_back(m_kinds.back());
            continue;
        }
        previous = &atom.type;
        const double radius = covalentRadius(atom.type);
        const auto known = radius > 0.0 ? std::find(radii.begin(), radii.end(), radius) : radii.begin();
        m_kinds.push_back(int(known - radii.begin()));
        if (known == radii.end())
            radii.push_back(radius);
    }

    m_longest.assign(radii.size(), -1.0);
    m_limits.assign(radii.size() * radii.size(), -1.0);
    for (std::size_t a = 1; a < radii.size(); ++a) {
        for (std::size_t b = 1; b < radii.size(); ++b) {
            const double squared = largestSquaredDistance(radii[a] + radii[b]);
            m_limits[a * radii.size() + b] = squared;
            m_longest[a] = std::max(m_longest[a], squared);
        }
    }
}

double BondCriterion::longest() const
{
    return *std::max_element(m_longest.begin(), m_longest.end());
}

} // namespace Magres
