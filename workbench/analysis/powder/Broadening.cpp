// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Broadening.h"

#include "analysis/powder/Kernels.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Workbench::Powder {

double fullWidth(const LineShape &shape)
{
    const double l = shape.lorentzian, g = shape.gaussian;
    return 0.5346 * l + std::sqrt(0.2166 * l * l + g * g);
}

Broadening::Broadening(double first, double step, size_t points, const LineShape &shape, double low, double high)
    : m_points(points)
{
    constexpr double pointsPerWidth = 7.5;
    const double width = fullWidth(shape);
    m_ratio = size_t(std::ceil(pointsPerWidth * step / std::max(width, step)));
    m_fine = step / double(m_ratio);
    constexpr double coarsest = 1e5;
    m_coarseness = size_t(std::clamp(std::floor(width / (8 * m_fine)), 1.0, coarsest));
    // The sum of a line's values at points is its area but for 2 exp(-decay) of it at most.
    const double g = std::numbers::pi * shape.gaussian / step;
    const double decay = std::numbers::pi * shape.lorentzian / step + g * g / (4 * std::numbers::ln2);
    m_cell = std::clamp(4 - decay, 0.0, 1.0) * double(m_ratio);
    // Intensity outside the axis reaches into it with its wings alone; fifty widths away they are 1e-4 of the line.
    constexpr double widthsAround = 50, mostAround = 2e6;
    const double length = step * double(points);
    const double around = std::max(length, std::min(widthsAround * width, mostAround * m_fine));
    // The bins of a pattern, of m_coarseness points at most, reach beyond the lowest and the highest intensity.
    const ptrdiff_t margin = 8 + 5 * ptrdiff_t(m_coarseness);
    const auto place = [&](double hertz) { return std::clamp(hertz - first, -around, length + around) / m_fine; };
    m_offset = margin - ptrdiff_t(std::floor(place(low)));
    m_count = size_t(ptrdiff_t(std::ceil(place(high))) + margin + m_offset + 1);
    m_start = first - double(m_offset) * m_fine;
    // Farthest of the intensities from a point of the axis.
    const ptrdiff_t last = m_offset + ptrdiff_t((points - 1) * m_ratio), end = ptrdiff_t(m_count) - 1;
    const double reach =
        double(std::max({std::abs(last), std::abs(m_offset), std::abs(last - end), std::abs(m_offset - end)})
               + ptrdiff_t(m_ratio));
    const double blur = std::min(2.5 * std::max(shape.gaussian / m_fine, 4.0), 3 * double(m_count + points * m_ratio));
    // Where wings are all that a short axis shows, no image of a line may lie nearer than the line.
    const double room = around > length ? 2 * reach : 1.15 * reach;
    m_table = TwiddleTable::shared(transformSize(size_t(std::max(room, reach + blur)) + 64));
    makeKernel(shape);
    makeImages(shape.lorentzian / m_fine);
}

void Broadening::makeKernel(const LineShape &shape)
{
    const size_t size = m_table->twiddles().size;
    const double period = double(size);
    // Widths in grid points. A grid cannot hold lines that are much narrower; the mean over cells hides what is added.
    const double lorentzian = shape.lorentzian / m_fine;
    double gaussian = shape.gaussian / m_fine;
    if (m_cell > 0)
        gaussian = std::sqrt(std::max(gaussian * gaussian, 9 - lorentzian * lorentzian));

    // The transform of the line: exp(-pi w t - (pi g t)^2 / (4 ln 2)) at t = i / period, by recurrences.
    m_kernel.assign(size, 0.0);
    const double decay = exponential(-std::numbers::pi * lorentzian / period);
    const double exponent = std::numbers::pi * gaussian / period;
    const double q = exponential(-exponent * exponent / (4 * std::numbers::ln2)), square = q * q;
    double value = 1 / period, ratio = q * decay;
    for (size_t i = 0; i <= size / 2 && value * period > 1e-18; ++i) {
        m_kernel[i] = value;
        m_kernel[i == 0 ? 0 : size - i] = value;
        value *= ratio;
        ratio *= square;
    }
}

void Broadening::makeImages(double lorentzian)
{
    const double period = double(m_table->twiddles().size);
    if (!(lorentzian > 1e-9 * period))
        return;
    m_spacing = std::max<size_t>(m_table->twiddles().size / 128, 1);
    // Those next to the line one by one, the others as if they were spread out.
    constexpr int single = 5;
    const auto beyond = [&](double distance) {
        return std::numbers::inv_pi / period * arcTangent(0.5 * lorentzian / ((single + 0.5) * period + distance));
    };
    const double scale = 0.5 * std::numbers::inv_pi * lorentzian, square = 0.25 * lorentzian * lorentzian;
    const size_t axis = coarsePoints((m_points - 1) * m_ratio + 1), grid = coarsePoints(m_count);
    m_images.resize(axis + grid - 1);
    for (size_t i = 0; i < m_images.size(); ++i) {
        const double distance = double(m_offset) + (double(i) - double(grid - 1)) * double(m_spacing);
        double sum = beyond(distance) + beyond(-distance);
        for (int n = 1; n <= single; ++n) {
            const double above = distance + n * period, below = distance - n * period;
            sum += scale / (above * above + square) + scale / (below * below + square);
        }
        m_images[i] = sum;
    }
}

/// How many coarse points it takes to have one on either side of the nearest of each of so many points.
size_t Broadening::coarsePoints(size_t count) const
{
    return (count - 1 + m_spacing / 2) / m_spacing + 3;
}

/// The wings of the images at the points of the axis, from intensities shared out among coarse points. Parabolas
/// through three of these lead there and back.
std::vector<double> Broadening::imagesAt(const FrequencyGrid &grid) const
{
    const size_t coarse = coarsePoints(m_count), axis = coarsePoints((m_points - 1) * m_ratio + 1);
    const size_t half = m_spacing / 2;
    const double part = 1 / double(m_spacing);
    std::vector<double> intensities(coarse), wings(axis), curve(m_points);
    for (size_t k = 0, first = 0; first < m_count; ++k) {
        const size_t end = std::min((k + 1) * m_spacing - half, m_count);
        double sum = 0, moment = 0, second = 0;
        for (size_t i = first; i < end; ++i) {
            const double t = (double(i) - double(k * m_spacing)) * part, value = grid.values()[i];
            sum += value;
            moment += value * t;
            second += value * (t * t);
        }
        intensities[k] += 0.5 * (second - moment);
        intensities[k + 1] += sum - second;
        intensities[k + 2] += 0.5 * (second + moment);
        first = end;
    }
    for (size_t k = 0; k < coarse; ++k) {
        const double intensity = intensities[k], *image = m_images.data() + (coarse - 1 - k);
        for (size_t j = 0; j < axis; ++j)
            wings[j] += intensity * image[j];
    }
    // Between two coarse points at a time.
    const double step = double(m_ratio) * part;
    for (size_t i = 0, j = 1, rest = half; i < m_points;) {
        j += rest / m_spacing;
        rest %= m_spacing;
        const double middle = wings[j], slope = 0.5 * (wings[j + 1] - wings[j - 1]),
                     curvature = 0.5 * (wings[j + 1] - 2 * middle + wings[j - 1]);
        const double start = (double(rest) - double(half)) * part;
        const int run = int(std::min(m_points - i, (m_spacing - rest + m_ratio - 1) / m_ratio));
        for (int k = 0; k < run; ++k) {
            const double t = start + k * step;
            curve[i + size_t(k)] = middle + t * (slope + t * curvature);
        }
        i += size_t(run);
        rest += size_t(run) * m_ratio;
    }
    return curve;
}

/// At the points of the axis: what is on the circle, less the wings of images.
std::vector<double> Broadening::sampled(const double *circle, std::vector<double> curve) const
{
    const double scale = 1 / m_fine;
    const ptrdiff_t size = ptrdiff_t(m_kernel.size());
    const auto wrapped = [size](ptrdiff_t i) { return i < 0 ? i + size : i < size ? i : i - size; };
    ptrdiff_t at = (m_offset % size + size) % size;
    const ptrdiff_t stride = ptrdiff_t(m_ratio) % size;
    if (m_cell == 0) {
        // In runs that do not go round the circle.
        for (size_t i = 0; i < curve.size();) {
            const size_t run = std::min(curve.size() - i, size_t((size - at + stride - 1) / stride));
            for (size_t j = 0; j < run; ++j)
                curve[i + j] = scale * (circle[at + ptrdiff_t(j) * stride] - curve[i + j]);
            i += run;
            at = (at + ptrdiff_t(run) * stride) % size;
        }
        return curve;
    }
    // Whole grid points around the middle one, and parts of those at both ends.
    const double side = 0.5 * std::max(m_cell - 1, 0.0);
    const ptrdiff_t whole = ptrdiff_t(side);
    const double part = side - double(whole);
    const double norm = 1 / (1 + 2 * side);
    for (double &value : curve) {
        double sum = part * (circle[wrapped(at - whole - 1)] + circle[wrapped(at + whole + 1)]);
        for (ptrdiff_t i = at - whole; i <= at + whole; ++i)
            sum += circle[wrapped(i)];
        value = scale * (norm * sum - value);
        at = wrapped(at + stride);
    }
    return curve;
}

void Broadening::apply(const FrequencyGrid &grid, std::vector<double> &curve, const FrequencyGrid *second,
                       std::vector<double> *difference) const
{
    const size_t size = m_kernel.size();
    // Fresh memory from the system would take as long as one of the transforms.
    constexpr size_t mostKept = size_t(1) << 19; // 4 MB
    static thread_local std::vector<double> kept;
    std::vector<double> own;
    const size_t length = size + arrayGap;
    std::vector<double> &room = 4 * length <= mostKept ? kept : own;
    if (room.size() < 4 * length)
        room.resize(4 * length);
    double *re = room.data(), *im = re + length, *otherRe = im + length, *otherIm = otherRe + length;
    std::fill(re, otherRe, 0.0);
    const size_t count = grid.values().size();
    for (size_t first = 0; first < count; first += size) {
        const size_t here = std::min(size, count - first);
        const double *values = grid.values().data() + first;
        for (size_t i = 0; i < here; ++i)
            re[i] += values[i];
        if (!second)
            continue;
        const double *others = second->values().data() + first;
        for (size_t i = 0; i < here; ++i)
            im[i] += others[i] - values[i];
    }
    const Twiddles twiddles = m_table->twiddles();
    const bool isMoved = kernels().transform(&twiddles, 1, re, im, otherRe, otherIm);
    const double *fromRe = isMoved ? otherRe : re, *fromIm = isMoved ? otherIm : im;
    for (size_t i = 0; i < size; ++i) {
        re[i] = fromRe[i] * m_kernel[i];
        im[i] = fromIm[i] * m_kernel[i];
    }
    // The inverse: real and imaginary parts changed places.
    if (kernels().transform(&twiddles, 1, im, re, otherIm, otherRe)) {
        re = otherRe;
        im = otherIm;
    }
    curve = sampled(re, m_spacing > 0 ? imagesAt(grid) : std::vector<double>(m_points));
    // Of the same area and all but the same place, both have the same images.
    if (second)
        *difference = sampled(im, std::vector<double>(m_points));
}

} // namespace Workbench::Powder
