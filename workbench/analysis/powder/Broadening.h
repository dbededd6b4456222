// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/PowderAverage.h"
#include "analysis/powder/Trigonometry.h"

#include <memory>

namespace Workbench::Powder {

/// Turns intensities on a fine grid into a curve of lines of a given shape.
///
/// The lines are added in a Fourier transform, that is on a circle, on which every line has images at multiples of its
/// length. The circle is long enough for the Gaussian part; the images' Lorentzian wings are smooth, and taken off.
///
/// The curve is the value at each point of the axis. Where points lie so far apart that lines could fall between them,
/// it turns into the mean over the point's cell: the area is that of the lines to 4 %.
class Broadening {
public:
    /// The axis in Hz, ascending. `low` and `high`: where there is intensity.
    Broadening(double first, double step, size_t points, const LineShape &shape, double low, double high);

    /// An empty one of the right spacing, where there is intensity that the axis can see.
    FrequencyGrid grid() const { return FrequencyGrid(m_start, m_fine, m_count, m_coarseness); }
    /// Per Hz. The second grid, a computation of the same pattern, may be left out; by how much its curve differs costs
    /// next to nothing.
    void apply(const FrequencyGrid &grid, std::vector<double> &curve, const FrequencyGrid *second = nullptr,
               std::vector<double> *difference = nullptr) const;

private:
    void makeKernel(const LineShape &shape);
    void makeImages(double lorentzian);
    std::vector<double> sampled(const double *circle, std::vector<double> images) const;
    size_t coarsePoints(size_t count) const;
    std::vector<double> imagesAt(const FrequencyGrid &grid) const;

    size_t m_points;
    size_t m_ratio = 1; ///< of the axis's step to the grid's
    double m_fine = 1; ///< Hz
    double m_start = 0; ///< of the grid, Hz
    size_t m_count = 0;
    size_t m_coarseness = 1; ///< grid points that a bin of a pattern may hold
    ptrdiff_t m_offset = 0; ///< of the axis's first point from the grid's, grid points
    double m_cell = 0; ///< over how many grid points the mean is taken; 0: none
    std::shared_ptr<const TwiddleTable> m_table;
    std::vector<double> m_kernel; ///< Fourier transform of the line shape
    size_t m_spacing = 0; ///< of coarse points, at which the images of lines are known; 0: there are none to be seen
    std::vector<double>
        m_images; ///< at the distances of coarse points, the first of the axis and the last of the grid on
};

/// Of the whole profile at half height, in good approximation: J. J. Olivero, R. L. Longbothum, J. Quant. Spectrosc.
/// Radiat. Transf. 17 (1977) 233.
double fullWidth(const LineShape &shape);

} // namespace Workbench::Powder
