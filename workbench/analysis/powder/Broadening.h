// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/PowderAverage.h"
#include "analysis/powder/Trigonometry.h"

#include <memory>

namespace Workbench::Powder {

/// Turns intensities on a fine grid into a curve of lines of a given shape.
///
/// The curve is the value at each point of the axis. Where points lie farther apart than half a line width, so that
/// lines could fall between them, it turns by and by into the mean over the point's cell: the area stays what it is.
class Broadening {
public:
    /// The axis in Hz, ascending. `low` and `high`: where there is intensity.
    Broadening(double first, double step, size_t points, const LineShape &shape, double low, double high);

    /// An empty one of the right spacing.
    FrequencyGrid grid() const { return FrequencyGrid(m_start, m_fine, m_count); }
    /// Per Hz. The second grid may be left out; two cost no more than one.
    void apply(const FrequencyGrid &grid, std::vector<double> &curve, const FrequencyGrid *second = nullptr,
               std::vector<double> *secondCurve = nullptr) const;

private:
    void makeKernel(const LineShape &shape);
    std::vector<double> sampled(const double *fine) const;

    size_t m_points;
    size_t m_ratio = 1; ///< of the axis's step to the grid's
    double m_fine = 1; ///< Hz
    double m_start = 0;
    size_t m_lead = 0; ///< grid points before the axis
    size_t m_count = 0;
    double m_cell = 0; ///< over how many grid points the mean is taken; 0: none
    std::shared_ptr<const TwiddleTable> m_table;
    std::vector<double> m_kernel; ///< Fourier transform of the line shape
};

/// Of the whole profile at half height, in good approximation: J. J. Olivero, R. L. Longbothum, J. Quant. Spectrosc.
/// Radiat. Transf. 17 (1977) 233.
double fullWidth(const LineShape &shape);

} // namespace Workbench::Powder
