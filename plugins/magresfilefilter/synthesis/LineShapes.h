// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <cstddef>
#include <span>

/// Evenly spaced points of a spectrum's dimension: point i lies at first + i * step (ppm; step is negative, so that ppm
/// falls from the first point to the last).
struct SpectrumAxis {
    double first = 0.0;
    double step = 0.0;

    double at(std::ptrdiff_t i) const { return first + double(i) * step; }
};

/// What line shapes need of a peak. Positions in ppm.
struct LinePeak {
    double positionF2 = 0.0;
    double positionF1 = 0.0;
    double height = 1.0;
};

namespace Magres {

/// Adds to every point x_i of `data` the Lorentzians height / (1 + (2 (x_i - positionF2) / width)^2), peak by peak in
/// the given order. `width`: full width at half height, ppm.
///
/// Same bits on every processor, and as the plain double loop.
void addLorentzians(std::span<const LinePeak> peaks, double width, const SpectrumAxis &axis, std::span<double> data);

/// Adds to `data` the products of two Gaussians exp(-ln 2 (2 (x - position) / width)^2), one per dimension, times the
/// height, peak by peak in the given order. `data` holds data.size() / pointsF2 rows of pointsF2 points each, F1 index
/// major. Widths: full widths at half height, ppm.
///
/// Same bits as the plain double loop with one exponential per term, except that a negative zero in `data` that nothing
/// but zeros would be added to stays one.
void addGaussians(std::span<const LinePeak> peaks, double widthF2, double widthF1, const SpectrumAxis &axisF2,
                  const SpectrumAxis &axisF1, std::size_t pointsF2, std::span<double> data);

} // namespace Magres
