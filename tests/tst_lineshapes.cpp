// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "Literal.h"
#include "TestData.h"
#include "synthesis/LineShapeKernels.h"
#include "synthesis/LineShapes.h"

#include <QTest>

#include <bit>

namespace {

using Crystals::Random;

/// Index of the first point with other bits, -1 for none; all NaN count as the same.
qsizetype firstDifference(const std::vector<double> &a, const std::vector<double> &b)
{
    for (std::size_t i = 0; i < a.size(); ++i) {
        const bool same = std::bit_cast<quint64>(a[i]) == std::bit_cast<quint64>(b[i]);
        if (!same && !(std::isnan(a[i]) && std::isnan(b[i])))
            return qsizetype(i);
    }
    return -1;
}

std::vector<LinePeak> randomPeaks(int count, std::uint64_t seed)
{
    Random random(seed);
    std::vector<LinePeak> peaks(static_cast<std::size_t>(count));
    for (LinePeak &peak : peaks)
        peak = {random.uniform(-1.0, 11.0), random.uniform(-1.0, 11.0), random.uniform(-2.0, 2.0)};
    return peaks;
}

struct Case {
    std::vector<LinePeak> peaks = randomPeaks(20, 1);
    double widthF2 = 0.05;
    double widthF1 = 0.2;
    SpectrumAxis axisF2 = {10.0, -10.0 / 301};
    SpectrumAxis axisF1 = {10.0, -10.0 / 40};
    std::size_t pointsF2 = 301;
    std::size_t pointsF1 = 40;
    double before = 0.25; ///< what the points hold
};

} // namespace

class tst_lineshapes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void kernelsEqualTheLoops()
    {
        const auto row = [](const char *name, const Case &input) {
            const auto &[peaks, widthF2, widthF1, axisF2, axisF1, pointsF2, pointsF1, before] = input;
            std::vector<double> literal1D(pointsF2, before), literal2D(pointsF2 * pointsF1, before);
            Literal::addLorentzians(peaks, widthF2, axisF2, literal1D);
            Literal::addGaussians(peaks, widthF2, widthF1, axisF2, axisF1, pointsF2, literal2D);
            for (Magres::InstructionSet set : Magres::instructionSets) {
                if (!Magres::isSupported(set))
                    continue;
                std::vector<double> data1D(literal1D.size(), before), data2D(literal2D.size(), before);
                Magres::addLorentzians(set, peaks, widthF2, axisF2, data1D);
                QVERIFY2(firstDifference(data1D, literal1D) == -1, name);
                Magres::addGaussians(set, peaks, widthF2, widthF1, axisF2, axisF1, pointsF2, data2D);
                QVERIFY2(firstDifference(data2D, literal2D) == -1, name);
            }
        };
        row("usual", {});
        row("rising axis", {.axisF2 = {0.0, 10.0 / 301}, .axisF1 = {0.0, 10.0 / 40}});
        row("axis through zero", {.axisF2 = {5.0, -0.03125}, .axisF1 = {5.0, -0.25}});
        row("axis of one place", {.axisF2 = {5.0, 0.0}, .axisF1 = {5.0, 0.0}});
        row("one point", {.pointsF2 = 1, .pointsF1 = 1});
        row("blocks and a remainder", {.axisF2 = {10.0, -10.0 / 5003}, .pointsF2 = 5003, .pointsF1 = 3});
        row("no peaks", {.peaks = {}});
        row("more peaks than are worked on at once", {.peaks = randomPeaks(400, 9), .widthF2 = 1.0, .widthF1 = 0.7});
        row("peaks at points",
            {{{5.0, 5.0, 1.0}, {5.0, 5.0, -1.0}, {2.5, 7.5, 3.0}}, 0.05, 0.2, {10.0, -0.03125}, {10.0, -0.25}});
        row("wide lines", {.widthF2 = 7.0, .widthF1 = 20.0});
        row("narrow lines", {.widthF2 = 1e-4, .widthF1 = 1e-5});
        for (double width : {0.0, -0.0, -0.3, notANumber, infinity, 1e-310, 5e-324, 1e300, 0x1p-101, 0x1p101})
            row("width", {.widthF2 = width, .widthF1 = width});
        for (double odd :
             {notANumber, infinity, -infinity, 1e308, -1e308, 1e-308, 5e-324, 0.0, -0.0, 0x1p-801, 0x1p801}) {
            row("height", {.peaks = {{3.0, 4.0, 1.0}, {5.0, 5.0, odd}}});
            row("position", {.peaks = {{odd, 4.0, 1.0}, {5.0, odd, 2.0}}});
            row("axis start", {.axisF2 = {odd, -0.1}, .axisF1 = {odd, -0.1}});
            row("steps", {.axisF2 = {10.0, odd}, .axisF1 = {10.0, odd}});
            row("all", {{{odd, odd, odd}}, odd, odd, {odd, odd}, {odd, odd}});
        }
        // Ends of the windows where factors or products are below the smallest normal number.
        for (int exponent = -1074; exponent <= 1023; exponent += 53)
            row("height of a power of two",
                {{{5.0, 5.5, std::ldexp(1.5, exponent)}}, 0.25, 0.02, {10.0, -10.0 / 700}, {6.0, -0.02}, 700, 40, 0.0});
        // What such products are added to, and whether they change it; peaks of both signs.
        std::vector<LinePeak> mixed = randomPeaks(24, 3);
        mixed[9].height = -mixed[9].height;
        for (double before : {0x1p-968, -0x1p-968, 0x1p-1020, 0x1p-1021, 0x1.8p-1022, 5e-324, -5e-324})
            row("before", {.peaks = mixed, .widthF2 = 0.2, .widthF1 = 0.1, .before = before});
    }

    /// Divisors and distances of all significands, near powers of two in particular: where a rounding error would show.
    void quotientsByReciprocal()
    {
        Random random(5);
        const auto significand = [&] {
            const double ulp = 0x1p-52;
            switch (random.below(4)) {
            case 0:
                return 1.0 + random.below(8) * ulp;
            case 1:
                return 2.0 - (1 + random.below(8)) * ulp;
            default:
                return random.uniform(1.0, 2.0);
            }
        };
        std::vector<double> x(512);
        for (int round = 0; round < 400; ++round) {
            const double width = std::ldexp(significand(), random.below(200) - 100);
            const LinePeak peak = {round % 2 == 0 ? 0.0 : significand(), 0.0, significand()};
            for (double &value : x)
                value = std::ldexp(significand(), round % 4 < 2 ? random.below(1599) - 799 : random.below(9) - 4);
            std::vector<double> literal(x.size(), 0.0);
            for (std::size_t i = 0; i < x.size(); ++i)
                Literal::addLorentzians({&peak, 1}, width, {x[i], 0.0}, {&literal[i], 1});
            for (Magres::InstructionSet set : Magres::instructionSets) {
                const Magres::LineShapeKernels &kernels = Magres::lineShapeKernels(set);
                if (!Magres::isSupported(set) || !kernels.addLorentzianByReciprocal)
                    continue;
                std::vector<double> data(x.size(), 0.0);
                kernels.addLorentzianByReciprocal(peak, width, x.data(), data.data(), x.size());
                QCOMPARE(firstDifference(data, literal), -1);
            }
        }
    }

    /// Against the formula itself, not against the loop.
    void halfHeight()
    {
        const LinePeak peak = {0.0, 0.0, 3.0};
        const double width = 0.5;
        const SpectrumAxis axisF2 = {2.0, -0.01};
        const SpectrumAxis axisF1 = {4.0, -0.02};
        std::vector<double> plane(401 * 401);
        Magres::addGaussians({&peak, 1}, width, 2 * width, axisF2, axisF1, 401, plane);
        QCOMPARE(plane[200 * 401 + 200], 3.0);
        QCOMPARE(plane[200 * 401 + 225], 1.5); // F2 runs fastest
        QCOMPARE(plane[225 * 401 + 200], 1.5);
    }
};

QTEST_GUILESS_MAIN(tst_lineshapes)
#include "tst_lineshapes.moc"
