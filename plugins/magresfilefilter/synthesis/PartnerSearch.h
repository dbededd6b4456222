// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/DipolarCoupling.h"
#include "reading/NearestImage.h"
#include "reading/NeighbourGrid.h"
#include "synthesis/MagresSpecParams.h"
#include "synthesis/Sites.h"

#include <optional>
#include <vector>

namespace Magres {

/// The F1 partner of an F2 site (-1: it has none), and the absolute coupling by which it was chosen or that all
/// partners have together, kHz.
struct Partner {
    qsizetype site = -1;
    double coupling = 0.0;
};

/// Finds the F1 partners of F2 sites by their dipolar couplings, over the distances of nearest images where the lattice
/// makes the structure periodic.
class PartnerSearch {
public:
    PartnerSearch(const QList<Site> &sitesF1, const QList<double> &lattice, const DipolarCoupling &coupling,
                  CorrelationMode mode);

    /// By the strongest coupling: the partner nearer than 3 Angstrom that it is with. By root-sum-square: that of the
    /// couplings to all sites but the site itself, with the partner that contributes most. The first in list order of
    /// equal ones; images of a symmetric crystal count as equal where rounding tells them apart.
    Partner of(const Position &siteF2) const;

private:
    /// The sites by cells of the lattice's parallelepiped, for a search that goes on at the opposite face.
    class PeriodicGrid {
    public:
        PeriodicGrid(const PositionColumns &sites, const NearestImage &images, double reach);
        /// Appends all sites of which an image lies within the reach of the point, and some more.
        void findNear(const Position &point, std::vector<qint32> &found) const;

    private:
        std::array<std::size_t, 3> cellOf(const Position &point) const;
        std::size_t index(std::size_t i, std::size_t j, std::size_t l) const
        {
            return (i * m_cells[1] + j) * m_cells[2] + l;
        }

        NearestImage m_images;
        std::array<std::size_t, 3> m_cells;
        std::vector<std::size_t> m_begin; // of a cell's sites, and one more
        std::vector<qint32> m_sites;
    };

    Partner strongest(const Position &siteF2) const;
    Partner rootSumSquare(const Position &siteF2) const;
    std::vector<qint32> near(const Position &siteF2) const;
    bool isStronger(double strength, const Partner &best) const;

    PositionColumns m_sites;
    NearestImage m_images;
    DipolarCoupling m_coupling;
    CorrelationMode m_mode;
    std::optional<NeighbourGrid> m_grid;
    std::optional<PeriodicGrid> m_periodicGrid;
};

} // namespace Magres
