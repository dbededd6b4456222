// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Trigonometry.h"

#include <cmath>
#include <deque>
#include <mutex>
#include <numbers>
#include <utility>

namespace Workbench::Powder {

namespace {

/// Of an angle up to a quarter of pi: Taylor series.
std::pair<double, double> cosineAndSine(double angle)
{
    const double s = angle * angle;
    double cosine = 1, sine = 1;
    for (int k = 9; k >= 1; --k) {
        cosine = 1 - s / double((2 * k - 1) * (2 * k)) * cosine;
        sine = 1 - s / double((2 * k) * (2 * k + 1)) * sine;
    }
    return {cosine, angle * sine};
}

} // namespace

double exponential(double x)
{
    if (x < -700)
        return 0;
    const double whole = std::floor(x * std::numbers::log2e + 0.5);
    // ln 2 in two parts: the product with the first is exact.
    const double rest = (x - whole * 0x1.62e42feep-1) - whole * 0x1.a39ef35793c76p-33;
    double sum = 1;
    for (int k = 16; k >= 1; --k)
        sum = 1 + rest / k * sum;
    return std::ldexp(sum, int(whole));
}

double arcTangent(double x)
{
    // Half the angle three times, then the series.
    for (int i = 0; i < 3; ++i)
        x = x / (1 + std::sqrt(1 + x * x));
    const double s = x * x;
    double sum = 0;
    for (int k = 21; k >= 1; k -= 2)
        sum = 1.0 / k - s * sum;
    return 8 * x * sum;
}

size_t transformSize(size_t least)
{
    size_t size = 8;
    while (size < least)
        size *= 2;
    for (size_t candidate : {size / 8 * 5, size / 4 * 3}) {
        if (candidate >= least && candidate % 4 == 0)
            return candidate;
    }
    return size;
}

TwiddleTable::TwiddleTable(size_t size) : m_cosines(size), m_sines(size)
{
    for (size_t i = 0; i < size; ++i) {
        // Folded into the first eighth of a turn.
        const size_t quadrant = 4 * i / size, place = i - (quadrant * size) / 4;
        const bool upper = 8 * place > size;
        const double part = upper ? double(size) / 4 - double(place) : double(place);
        auto [cosine, sine] = cosineAndSine(2 * std::numbers::pi * part / double(size));
        if (upper)
            std::swap(cosine, sine);
        for (size_t turn = 0; turn < quadrant; ++turn)
            cosine = -std::exchange(sine, cosine);
        m_cosines[i] = cosine;
        m_sines[i] = sine;
    }
}

std::shared_ptr<const TwiddleTable> TwiddleTable::shared(size_t size)
{
    // The few last ones stay: a preview computes the same axis again and again.
    static std::mutex mutex;
    static std::deque<std::shared_ptr<const TwiddleTable>> kept;
    const std::lock_guard lock(mutex);
    for (const auto &table : kept) {
        if (table->m_cosines.size() == size)
            return table;
    }
    kept.push_back(std::make_shared<const TwiddleTable>(size));
    if (kept.size() > 4)
        kept.pop_front();
    return kept.back();
}

} // namespace Workbench::Powder
