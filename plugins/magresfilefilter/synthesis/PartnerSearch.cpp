// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/PartnerSearch.h"

#include <algorithm>
#include <numeric>

namespace Magres {
namespace {

constexpr double partnerReach = 3.0; // Angstrom

} // namespace

PartnerSearch::PeriodicGrid::PeriodicGrid(const PositionColumns &sites, const NearestImage &images, double reach)
    : m_images(images)
{
    // A cell is at least as wide as the reach and what rounding can add, and there are not many more than sites.
    std::array<double, 3> cells;
    for (std::size_t axis = 0; axis < 3; ++axis)
        cells[axis] = std::max(1.0, std::floor(images.spacing(axis) / (1.001 * reach)));
    while (cells[0] * cells[1] * cells[2] > double(4 * sites.size() + 1)) {
        double &most = *std::max_element(cells.begin(), cells.end());
        most = std::floor(most / 2.0);
    }
    for (std::size_t axis = 0; axis < 3; ++axis)
        m_cells[axis] = std::size_t(cells[axis]);

    std::vector<std::size_t> place;
    place.reserve(sites.size());
    m_begin.assign(m_cells[0] * m_cells[1] * m_cells[2] + 1, 0);
    for (std::size_t site = 0; site < sites.size(); ++site) {
        const auto [i, j, l] = cellOf(sites[site]);
        place.push_back(index(i, j, l));
        ++m_begin[place.back() + 1];
    }
    std::partial_sum(m_begin.begin(), m_begin.end(), m_begin.begin());
    std::vector<std::size_t> next = m_begin;
    m_sites.resize(sites.size());
    for (std::size_t site = 0; site < sites.size(); ++site)
        m_sites[next[place[site]]++] = qint32(site);
}

/// The first cell for what is nowhere: such points are as near to each other as to any.
std::array<std::size_t, 3> PartnerSearch::PeriodicGrid::cellOf(const Position &point) const
{
    std::array<std::size_t, 3> cell{};
    const Position f = m_images.fractional(point);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double within = (f[axis] - std::floor(f[axis])) * double(m_cells[axis]);
        if (within >= 0.0)
            cell[axis] = std::min(std::size_t(within), m_cells[axis] - 1);
    }
    return cell;
}

void PartnerSearch::PeriodicGrid::findNear(const Position &point, std::vector<qint32> &found) const
{
    const std::array<std::size_t, 3> centre = cellOf(point);
    // Each cell once, also where there are fewer than three.
    const auto firstStep = [&](std::size_t axis) { return m_cells[axis] < 3 ? 0 : m_cells[axis] - 1; };
    const auto steps = [&](std::size_t axis) { return std::min<std::size_t>(m_cells[axis], 3); };
    const auto cell = [&](std::size_t axis, std::size_t step) {
        return (centre[axis] + firstStep(axis) + step) % m_cells[axis];
    };
    for (std::size_t i = 0; i < steps(0); ++i) {
        for (std::size_t j = 0; j < steps(1); ++j) {
            for (std::size_t l = 0; l < steps(2); ++l) {
                const std::size_t at = index(cell(0, i), cell(1, j), cell(2, l));
                found.insert(found.end(), m_sites.begin() + std::ptrdiff_t(m_begin[at]),
                             m_sites.begin() + std::ptrdiff_t(m_begin[at + 1]));
            }
        }
    }
}

PartnerSearch::PartnerSearch(const QList<Site> &sitesF1, const QList<double> &lattice, const DipolarCoupling &coupling,
                             CorrelationMode mode)
    : m_images(lattice), m_coupling(coupling), m_mode(mode)
{
    for (const Site &site : sitesF1)
        m_sites.append(site.atom->pos);
    if (mode == CorrelationMode::RssDipolar)
        return;
    if (m_images.isPeriodic()) {
        m_periodicGrid.emplace(m_sites, m_images, partnerReach);
        return;
    }
    m_grid.emplace(partnerReach, m_sites.size());
    for (std::size_t site = 0; site < m_sites.size(); ++site)
        m_grid->insert(qint32(site), m_sites[site]);
}

Partner PartnerSearch::of(const Position &siteF2) const
{
    return m_mode == CorrelationMode::RssDipolar ? rootSumSquare(siteF2) : strongest(siteF2);
}

/// The sites that may be partners, in list order.
std::vector<qint32> PartnerSearch::near(const Position &siteF2) const
{
    std::vector<qint32> found;
    if (m_periodicGrid) {
        m_periodicGrid->findNear(siteF2, found);
    } else {
        m_grid->visitNear(siteF2, [&](qint32 site) {
            found.push_back(site);
            return false;
        });
    }
    std::sort(found.begin(), found.end());
    return found;
}

bool PartnerSearch::isStronger(double strength, const Partner &best) const
{
    constexpr double equal = 1e-9; // of itself; the images' distances differ by rounding
    return best.site < 0 || strength > (m_images.isPeriodic() ? (1.0 + equal) * best.coupling : best.coupling);
}

Partner PartnerSearch::strongest(const Position &siteF2) const
{
    Partner best;
    for (qint32 site : near(siteF2)) {
        const double r = m_images.distance(siteF2, m_sites[std::size_t(site)]);
        if (!(r > 0.001 && r < partnerReach))
            continue;
        const double strength = std::abs(m_coupling(r));
        if (isStronger(strength, best))
            best = {site, strength};
    }
    return best;
}

Partner PartnerSearch::rootSumSquare(const Position &siteF2) const
{
    std::vector<double> squared(m_sites.size());
    m_images.squaredDistances(siteF2, m_sites, squared);
    double sum = 0.0;
    Partner best;
    for (std::size_t site = 0; site < squared.size(); ++site) {
        const double r = std::sqrt(squared[site]);
        if (!(r > 0.01)) // that is the site itself
            continue;
        const double strength = std::abs(m_coupling(r));
        sum += strength * strength;
        if (isStronger(strength, best))
            best = {qsizetype(site), strength};
    }
    return {best.site, std::sqrt(sum)};
}

} // namespace Magres
