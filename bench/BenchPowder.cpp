// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"

#include "analysis/powder/Broadening.h"
#include "analysis/powder/Frequency.h"
#include "analysis/powder/Kernels.h"
#include "analysis/powder/Lattice.h"
#include "analysis/powder/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <string>

using namespace Workbench::Powder;

namespace {

constexpr double accuracy = 5e-3; // integral of the absolute difference from the converged curve
constexpr double pi = std::numbers::pi;

struct Sample {
    Site site;
    Conditions conditions;
    LineShape shape{200, 0};
    Axis axis;
};

/// 17O of a carbonyl group, as in paracetamol: Cq 8.4 MHz, eta 0.27, span 500 ppm, tensors at odds with each other.
Site carbonyl()
{
    return {{420, -35, 60, -35, 480, 20, 60, 20, 40}, Tensor{6.1, 3.2, 1.1, 3.2, -0.4, 4.9, 1.1, 4.9, -5.7}, 1};
}

Sample spinning()
{
    return {carbonyl(), {2.5, 108.5, Rotation::MagicAngle, 20e3}, {200, 0}, {1500, -1000, 8192}};
}

Sample resting()
{
    return {carbonyl(), {2.5, 108.5, Rotation::Static, 0}, {200, 0}, {800, -600, 8192}};
}

double distance(const std::vector<double> &a, const std::vector<double> &b)
{
    double difference = 0, area = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        difference += std::abs(a[i] - b[i]);
        area += b[i];
    }
    return difference / area;
}

std::vector<double> computed(const Sample &sample, const Accuracy &wanted)
{
    return spectrum({&sample.site, 1}, sample.conditions, sample.shape, sample.axis, wanted)->sum;
}

/// The plain way: for each of `count` directions, evenly spread over the hemisphere by the golden angle, the frequency
/// at each step of a rotor period, its phase, the sidebands by a transform, each a line in the nearest bin.
class DoubleLoop {
public:
    explicit DoubleLoop(const Sample &sample)
        : m_sample(sample), m_form(transitions(sample.site, sample.conditions).front().form)
    {
        const double larmor = sample.conditions.larmor;
        const double step = std::abs(sample.axis.step()) * larmor;
        m_broadening.emplace(sample.axis.last * larmor, step, sample.axis.points, sample.shape,
                             sample.axis.last * larmor, sample.axis.first * larmor);
        if (sample.conditions.rotation == Rotation::MagicAngle) {
            const auto [low, high] = modulationExtremes(m_form);
            // Four times what the sidebands need: the phase is a sum of trapezoids.
            while (double(m_steps) < 4 * ((high - low) / sample.conditions.rate + 8))
                m_steps *= 2;
            for (std::size_t k = 0; k < m_steps; ++k)
                m_roots.push_back(std::polar(1.0, -2 * pi * double(k) / double(m_steps)));
        }
    }

    std::vector<double> compute(std::size_t count) const
    {
        FrequencyGrid grid = m_broadening->grid();
        std::vector<std::complex<double>> signal(m_steps), bands(m_steps);
        for (std::size_t i = 0; i < count; ++i) {
            const double z = (double(i) + 0.5) / double(count);
            const double angle = double(i) * pi * (3 - std::sqrt(5.0));
            const double sine = std::sqrt(1 - z * z);
            const std::array<double, 3> axis{sine * std::cos(angle), sine * std::sin(angle), z};
            if (m_steps == 1)
                add(grid, valueAt(m_form, axis), 1 / double(count));
            else
                addSidebands(grid, axis, 1 / double(count), signal, bands);
        }
        std::vector<double> curve;
        m_broadening->apply(grid, curve);
        for (double &value : curve)
            value *= m_sample.conditions.larmor;
        std::reverse(curve.begin(), curve.end());
        return curve;
    }

    std::size_t steps() const { return m_steps; }

    /// About as many directions as the accuracy takes.
    std::size_t directionsFor(const std::vector<double> &converged) const
    {
        std::size_t count = 128;
        while (distance(compute(count), converged) > accuracy)
            count += count / 4;
        return count;
    }

private:
    static void add(FrequencyGrid &grid, double frequency, double weight)
    {
        const double place = std::round((frequency - grid.first()) / grid.step());
        if (place >= 0 && place < double(grid.values().size()))
            grid.values()[std::size_t(place)] += weight;
    }

    void addSidebands(FrequencyGrid &grid, const std::array<double, 3> &axis, double weight,
                      std::vector<std::complex<double>> &signal, std::vector<std::complex<double>> &bands) const
    {
        // Two directions across the axis.
        const double length = std::hypot(axis[0], axis[1]);
        const std::array<double, 3> e1{-axis[1] / length, axis[0] / length, 0};
        const std::array<double, 3> e2{axis[1] * e1[2] - axis[2] * e1[1], axis[2] * e1[0] - axis[0] * e1[2],
                                       axis[0] * e1[1] - axis[1] * e1[0]};
        const double along = 1 / std::sqrt(3.0), across = std::sqrt(2.0 / 3);
        const std::size_t n = m_steps;
        std::vector<double> frequency(n);
        double mean = 0;
        for (std::size_t t = 0; t < n; ++t) {
            const double turn = 2 * pi * double(t) / double(n);
            std::array<double, 3> b;
            for (std::size_t k = 0; k < 3; ++k)
                b[k] = along * axis[k] + across * (std::cos(turn) * e1[k] + std::sin(turn) * e2[k]);
            frequency[t] = valueAt(m_form, b);
            mean += frequency[t] / double(n);
        }
        double phase = 0;
        for (std::size_t t = 0; t < n; ++t) {
            signal[t] = std::polar(1.0, phase);
            const double next = frequency[(t + 1) % n];
            phase += 2 * pi * (0.5 * (frequency[t] + next) - mean) / (m_sample.conditions.rate * double(n));
        }
        transform(signal.data(), bands.data(), n, 1);
        for (std::size_t k = 0; k < n; ++k) {
            const double order = k < n / 2 ? double(k) : double(k) - double(n);
            add(grid, mean + order * m_sample.conditions.rate, weight * std::norm(bands[k]) / double(n * n));
        }
    }

    /// By halves.
    void transform(const std::complex<double> *in, std::complex<double> *out, std::size_t n, std::size_t stride) const
    {
        if (n == 1) {
            out[0] = in[0];
            return;
        }
        transform(in, out, n / 2, 2 * stride);
        transform(in + stride, out + n / 2, n / 2, 2 * stride);
        for (std::size_t k = 0; k < n / 2; ++k) {
            const std::complex<double> odd = m_roots[k * stride] * out[k + n / 2];
            const std::complex<double> even = out[k];
            out[k] = even + odd;
            out[k + n / 2] = even - odd;
        }
    }

    const Sample &m_sample;
    FrequencyForm m_form;
    std::size_t m_steps = 1;
    std::vector<std::complex<double>> m_roots;
    std::optional<Broadening> m_broadening;
};

void add(const std::string &name, const Sample &given)
{
    static std::vector<std::unique_ptr<Sample>> samples;
    samples.push_back(std::make_unique<Sample>(given));
    const Sample &sample = *samples.back();
    const auto fast = [&sample, name](benchmark::State &state) {
        const std::vector<double> converged = computed(sample, {1e-3, 3e5});
        Accuracy wanted{accuracy, 0};
        Bench::require(distance(computed(sample, wanted), converged) < accuracy, name.c_str());
        for (auto _ : state)
            benchmark::DoNotOptimize(computed(sample, wanted));
    };
    const auto literal = [&sample, name](benchmark::State &state) {
        const DoubleLoop loop(sample);
        const std::vector<double> converged = computed(sample, {1e-3, 3e5});
        const std::size_t count = loop.directionsFor(converged);
        for (auto _ : state)
            benchmark::DoNotOptimize(loop.compute(count));
        state.counters["directions"] = double(count);
        state.counters["steps"] = double(loop.steps());
    };
    // As many frequencies as the curve takes, those of both lattices.
    const auto bare = [&sample](benchmark::State &state) {
        const FrequencyForm form = transitions(sample.site, sample.conditions).front().form;
        const std::size_t steps =
            PowderPattern(transitions(sample.site, sample.conditions).front(), sample.conditions).steps();
        const auto found = spectrum({&sample.site, 1}, sample.conditions, sample.shape, sample.axis, {accuracy, 0});
        const double directions = 1.25 * found->sites.front().directions;
        constexpr std::size_t block = 1024;
        std::vector<double> x(block), y(block), z(block), nu(block);
        for (std::size_t i = 0; i < block; ++i) {
            const double height = (double(i) + 0.5) / block;
            x[i] = std::sqrt(1 - height * height) * std::cos(double(i));
            y[i] = std::sqrt(1 - height * height) * std::sin(double(i));
            z[i] = height;
        }
        const std::size_t blocks = std::size_t(directions * double(steps) / block) + 1;
        for (auto _ : state) {
            for (std::size_t i = 0; i < blocks; ++i) {
                kernels().frequencies(&form, 1e12, block, x.data(), y.data(), z.data(), nu.data());
                benchmark::ClobberMemory();
            }
        }
        state.counters["evaluations"] = double(blocks * block);
    };
    benchmark::RegisterBenchmark(name.c_str(), fast)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/literal").c_str(), literal)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/bare").c_str(), bare)->Unit(benchmark::kMillisecond);
}

/// Ten sites as a dialog shows them while a value is being changed.
void preview(benchmark::State &state)
{
    std::vector<Site> sites(10, carbonyl());
    for (std::size_t i = 0; i < sites.size(); ++i) {
        for (double &element : *sites[i].coupling)
            element *= 0.4 + 0.05 * double(i);
        for (std::size_t k : {0, 4, 8})
            sites[i].shift[k] += 15 * double(i);
    }
    const Conditions conditions = spinning().conditions;
    const LineShape shape{200, 0};
    const Accuracy rough{2e-2, 0};
    for (auto _ : state) {
        const auto axis = fittingAxis(sites, conditions, shape, 1024);
        const auto found = spectrum(sites, conditions, shape, *axis, rough);
        Bench::require(found && found->converged, "powder/preview");
    }
}

} // namespace

void Bench::registerPowder()
{
    add("powder/mas/O", spinning());
    add("powder/static/O", resting());
    benchmark::RegisterBenchmark("powder/preview", preview)->Unit(benchmark::kMillisecond);
}
