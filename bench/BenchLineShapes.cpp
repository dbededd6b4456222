// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"
#include "Crystals.h"
#include "DivisionLimit.h"
#include "Literal.h"

#include "synthesis/LineShapes.h"

#include <vector>

namespace {

constexpr double protonFrequency = 600.0; // MHz: turns Hz into ppm
constexpr double range = 10.0; // ppm, in both dimensions

SpectrumAxis axisOf(int points)
{
    return {range, -range / double(points)};
}

std::vector<LinePeak> randomPeaks(int count)
{
    Crystals::Random random(7);
    std::vector<LinePeak> peaks(static_cast<std::size_t>(count));
    for (LinePeak &peak : peaks)
        peak = {random.uniform(0.5, 9.5), random.uniform(0.5, 9.5), random.uniform(0.5, 2.0)};
    return peaks;
}

struct Lorentz1d {
    Lorentz1d(int peakCount, int points)
        : peaks(randomPeaks(peakCount)), axis(axisOf(points)), data(std::size_t(points))
    {
    }
    void literal() { Literal::addLorentzians(peaks, width, axis, data); }
    void fast() { Magres::addLorentzians(peaks, width, axis, data); }

    std::vector<LinePeak> peaks;
    double width = 30.0 / protonFrequency;
    SpectrumAxis axis;
    std::vector<double> data;
};

struct Gauss2d {
    Gauss2d(int peakCount, int points2, int points1, double hertzF2, double hertzF1)
        : peaks(randomPeaks(peakCount)),
          widthF2(hertzF2 / protonFrequency),
          widthF1(hertzF1 / protonFrequency),
          axisF2(axisOf(points2)),
          axisF1(axisOf(points1)),
          pointsF2(std::size_t(points2)),
          data(std::size_t(points2) * std::size_t(points1))
    {
    }
    void literal() { Literal::addGaussians(peaks, widthF2, widthF1, axisF2, axisF1, pointsF2, data); }
    void fast() { Magres::addGaussians(peaks, widthF2, widthF1, axisF2, axisF1, pointsF2, data); }

    std::vector<LinePeak> peaks;
    double widthF2, widthF1;
    SpectrumAxis axisF2, axisF1;
    std::size_t pointsF2;
    std::vector<double> data;
};

/// Registers the benchmark and, as "name/literal", the plain loops.
template <class Spectrum, class... Arguments>
void add(const std::string &name, Arguments... arguments)
{
    const auto fast = [=](benchmark::State &state) {
        Spectrum spectrum(arguments...);
        Spectrum literal = spectrum;
        literal.literal();
        spectrum.fast();
        Bench::require(Bench::sameBits(spectrum.data, literal.data), name.c_str());
        for (auto _ : state) {
            spectrum.fast();
            benchmark::ClobberMemory();
        }
    };
    const auto literal = [=](benchmark::State &state) {
        Spectrum spectrum(arguments...);
        for (auto _ : state) {
            spectrum.literal();
            benchmark::ClobberMemory();
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), fast)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/literal").c_str(), literal)->Unit(benchmark::kMillisecond);
}

/// As many divisions as lorentz1d/100/8192 has terms, on a block that stays in the cache.
void division(benchmark::State &state)
{
    std::vector<double> x(1024);
    Crystals::Random random(3);
    for (double &value : x)
        value = random.uniform(1.0, 100.0);
    std::vector<double> quotients(x.size());
    Bench::divide(3.0, x.data(), quotients.data(), x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        Bench::require(quotients[i] == 3.0 / x[i], "limit/division");
    for (auto _ : state) {
        for (std::size_t done = 0; done < 100 * 8192; done += x.size()) {
            Bench::divide(3.0, x.data(), quotients.data(), x.size());
            benchmark::ClobberMemory();
        }
    }
}

} // namespace

void Bench::registerLineShapes()
{
    add<Lorentz1d>("lorentz1d/100/8192", 100, 8192);
    add<Lorentz1d>("lorentz1d/400/65536", 400, 65536);
    benchmark::RegisterBenchmark("limit/division", division)->Unit(benchmark::kMillisecond);
    add<Gauss2d>("gauss2d/100/1024/512", 100, 1024, 512, 30.0, 1.0);
    add<Gauss2d>("gauss2d/100/1024/512/wide", 100, 1024, 512, 300.0, 100.0);
}
