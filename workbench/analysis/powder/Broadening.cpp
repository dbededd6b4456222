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
    m_cell = std::clamp(2 * step - width, 0.0, step) / m_fine;
    // Intensity outside the axis reaches into it with its wings alone, from farther away than its length not even so.
    const double length = step * double(points);
    const auto margin = [&](double reach) { return size_t(std::clamp(reach, 0.0, length) / m_fine) + 8; };
    m_lead = margin(first - low);
    m_start = first - double(m_lead) * m_fine;
    m_count = m_lead + (points - 1) * m_ratio + 1 + margin(high - (first + step * double(points - 1)));
    size_t size = 8;
    while (size < 2 * m_count)
        size *= 2;
    m_table = TwiddleTable::shared(size);
    makeKernel(shape);
}

void Broadening::makeKernel(const LineShape &shape)
{
    const Twiddles twiddles = m_table->twiddles();
    const size_t size = twiddles.size;
    const double period = double(size);
    // Widths in grid points. A grid cannot hold lines that are much narrower; the mean over cells hides what is added.
    const double lorentzian = shape.lorentzian / m_fine;
    double gaussian = shape.gaussian / m_fine;
    if (m_cell > 0)
        gaussian = std::sqrt(std::max(gaussian * gaussian, 9 - lorentzian * lorentzian));

    // The transform of the line: exp(-pi w t - (pi g t)^2 / (4 ln 2)) at t = i / period, by recurrences.
    std::vector<double> re(size), im(size), work(2 * size);
    const double decay = exponential(-std::numbers::pi * lorentzian / period);
    const double exponent = std::numbers::pi * gaussian / period;
    const double q = exponential(-exponent * exponent / (4 * std::numbers::ln2)), square = q * q;
    double lorentz = 1, gauss = 1, ratio = q;
    for (size_t i = 0; i <= size / 2; ++i) {
        re[i] = lorentz * gauss;
        re[(size - i) & (size - 1)] = re[i];
        lorentz *= decay;
        gauss *= ratio;
        ratio *= square;
        if (lorentz * gauss < 1e-200)
            break;
    }
    m_kernel.resize(size);
    // That is a line repeated with the period. Where the repetitions' wings can be seen they are taken off.
    if (lorentzian < 1e-4 * period) {
        for (size_t i = 0; i < size; ++i)
            m_kernel[i] = re[i] / period;
        return;
    }
    kernels().transform(&twiddles, 1, re.data(), im.data(), work.data());
    const double growth = exponential(std::numbers::pi * lorentzian / period), shrink = 1 / growth;
    const double sinh = 0.5 * (growth - shrink), cosh = 0.5 * (growth + shrink);
    for (size_t i = 0; i < size; ++i) {
        const double offset = double(i <= size / 2 ? i : size - i);
        double wings = 0;
        if (lorentzian > 0 && offset > 0) {
            const double repeated = sinh / (cosh - twiddles.cosines[i]) / period;
            const double alone =
                0.5 * std::numbers::inv_pi * lorentzian / (offset * offset + 0.25 * lorentzian * lorentzian);
            wings = repeated - alone;
        }
        // Near the middle the difference of two large numbers is less accurate than its value there.
        if (offset < 0.02 * period && lorentzian > 0)
            wings = std::numbers::pi / 6 * lorentzian / (period * period);
        re[i] = re[i] / period - wings;
        im[i] = 0;
    }
    kernels().transform(&twiddles, 1, re.data(), im.data(), work.data());
    for (size_t i = 0; i < size; ++i)
        m_kernel[i] = re[i] / period;
}

std::vector<double> Broadening::sampled(const double *fine) const
{
    std::vector<double> curve(m_points);
    const double scale = 1 / m_fine;
    if (m_cell == 0) {
        for (size_t i = 0; i < m_points; ++i)
            curve[i] = scale * fine[m_lead + i * m_ratio];
        return curve;
    }
    // Whole grid points around the middle one, and parts of those at both ends.
    const double side = 0.5 * std::max(m_cell - 1, 0.0);
    const size_t whole = size_t(side);
    const double part = side - double(whole);
    const double norm = scale / (1 + 2 * side);
    for (size_t i = 0; i < m_points; ++i) {
        const double *middle = fine + m_lead + i * m_ratio;
        double sum = part * (middle[-ptrdiff_t(whole) - 1] + middle[whole + 1]);
        for (const double *at = middle - whole; at <= middle + whole; ++at)
            sum += *at;
        curve[i] = norm * sum;
    }
    return curve;
}

void Broadening::apply(const FrequencyGrid &grid, std::vector<double> &curve, const FrequencyGrid *second,
                       std::vector<double> *secondCurve) const
{
    const size_t size = m_kernel.size();
    std::vector<double> re(size), im(size), work(2 * size);
    std::copy(grid.values().begin(), grid.values().end(), re.begin());
    if (second)
        std::copy(second->values().begin(), second->values().end(), im.begin());
    const Twiddles twiddles = m_table->twiddles();
    kernels().transform(&twiddles, 1, re.data(), im.data(), work.data());
    for (size_t i = 0; i < size; ++i) {
        re[i] *= m_kernel[i];
        im[i] *= m_kernel[i];
    }
    // The inverse: real and imaginary parts changed places.
    kernels().transform(&twiddles, 1, im.data(), re.data(), work.data());
    curve = sampled(re.data());
    if (second)
        *secondCurve = sampled(im.data());
}

} // namespace Workbench::Powder
