// SPDX-License-Identifier: BSD-3-Clause
#include "analysis/powder/Frequency.h"
#include "analysis/powder/Kernels.h"
#include "analysis/powder/Spectrum.h"
#include "analysis/powder/SpectrumFit.h"

#include <Eigen/Geometry>

#include <QFile>
#include <QTest>

#include <cmath>
#include <cstring>
#include <numbers>

using namespace Workbench::Powder;

namespace {

/// Of an atom of a sample, by rows.
Tensor sampleTensor(const QString &file, const QString &kind, const QString &species, int index)
{
    QFile sample(QStringLiteral(SAMPLES "/") + file);
    if (!sample.open(QIODevice::ReadOnly))
        throw std::runtime_error("no sample");
    while (!sample.atEnd()) {
        const QStringList words = QString::fromUtf8(sample.readLine()).split(u' ', Qt::SkipEmptyParts);
        if (words.size() < 12 || words[0] != kind || words[1] != species || words[2].toInt() != index)
            continue;
        Tensor tensor;
        for (int i = 0; i < 9; ++i)
            tensor[size_t(i)] = words[3 + i].trimmed().toDouble();
        return tensor;
    }
    throw std::runtime_error("no such tensor");
}

Tensor diagonal(double x, double y, double z)
{
    return {x, 0, 0, 0, y, 0, 0, 0, z};
}

/// Principal values (-C/2 (1 - eta), -C/2 (1 + eta), C).
Tensor coupling(double cq, double eta)
{
    return diagonal(-cq / 2 * (1 - eta), -cq / 2 * (1 + eta), cq);
}

Tensor rotated(const Tensor &tensor, double a, double b, double c)
{
    using Eigen::Vector3d;
    const Eigen::Matrix3d turn = (Eigen::AngleAxisd(a, Vector3d::UnitZ()) * Eigen::AngleAxisd(b, Vector3d::UnitY())
                                  * Eigen::AngleAxisd(c, Vector3d::UnitZ()))
                                     .toRotationMatrix();
    const Eigen::Matrix<double, 3, 3, Eigen::RowMajor> original(tensor.data());
    const Eigen::Matrix<double, 3, 3, Eigen::RowMajor> result = turn * original * turn.transpose();
    Tensor values;
    std::copy_n(result.data(), 9, values.begin());
    return values;
}

Site oxygen()
{
    return {rotated(diagonal(150, 60, 20), 0.3, 1.1, 2.0), rotated(coupling(5.5, 0.4), 1.0, 0.4, 0.2), 1};
}

Conditions conditions(double spin, double larmor, Rotation rotation, double rate = 0)
{
    return {spin, larmor, rotation, rate};
}

double area(const Spectrum &spectrum)
{
    double sum = 0;
    for (double value : spectrum.sum)
        sum += value;
    return sum * std::abs(spectrum.axis.step());
}

/// Integral of the absolute difference over the area.
double distance(const std::vector<double> &a, const std::vector<double> &b)
{
    double difference = 0, sum = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        difference += std::abs(a[i] - b[i]);
        sum += b[i];
    }
    return difference / sum;
}

struct Moments {
    double mean, variance; ///< ppm
};

Moments moments(const Spectrum &spectrum)
{
    double sum = 0, first = 0, second = 0;
    for (size_t i = 0; i < spectrum.sum.size(); ++i) {
        const double x = spectrum.axis.at(i);
        sum += spectrum.sum[i];
        first += spectrum.sum[i] * x;
        second += spectrum.sum[i] * x * x;
    }
    return {first / sum, second / sum - first / sum * first / sum};
}

class KernelChoice {
public:
    explicit KernelChoice(const Kernels &chosen) : m_before(kernels()) { useKernels(chosen); }
    ~KernelChoice() { useKernels(m_before); }

private:
    const Kernels &m_before;
};

} // namespace

class tst_Powder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void referenceCurves_data();
    void referenceCurves();
    void means();
    void staticEdges();
    void doublesCentre();
    void sidebandMoments();
    void slowSpinningIsStatic();
    void sameBits();
    void convergence_data();
    void convergence();
    void areas();
    void fittingAxes();
    void secondOrderLimits();
    void tripleQuantum();
    void badInput_data();
    void badInput();
    void fits();
    void stops();
};

void tst_Powder::referenceCurves_data()
{
    QTest::addColumn<QString>("sample");
    QTest::addColumn<QString>("species");
    QTest::addColumn<int>("index");
    QTest::addColumn<double>("spin");
    QTest::addColumn<double>("moment"); // fm^2
    QTest::addColumn<double>("larmor");
    QTest::addColumn<double>("reference");
    QTest::addColumn<double>("rate");
    QTest::addColumn<double>("width");
    QTest::newRow("o-static") << "berlinite.magres"
                              << "O" << 1 << 2.5 << -2.558 << 54.2507 << 287.0 << 0.0 << 200.0;
    QTest::newRow("o-20kHz") << "paracetamol.magres"
                             << "O" << 5 << 2.5 << -2.558 << 108.5013 << 287.0 << 20e3 << 200.0;
    QTest::newRow("al-12kHz") << "berlinite.magres"
                              << "Al" << 1 << 2.5 << 14.66 << 104.3147 << 560.0 << 12e3 << 100.0;
    QTest::newRow("c-4kHz") << "paracetamol.magres"
                            << "C" << 25 << 0.5 << 0.0 << 150.912 << 170.0 << 4e3 << 60.0;
}

void tst_Powder::referenceCurves()
{
    QFETCH(QString, sample);
    QFETCH(QString, species);
    QFETCH(int, index);
    QFETCH(double, spin);
    QFETCH(double, moment);
    QFETCH(double, larmor);
    QFETCH(double, reference);
    QFETCH(double, rate);
    QFETCH(double, width);
    std::vector<double> hertz, expected;
    QFile file(QStringLiteral(FACTS "/") + QLatin1String(QTest::currentDataTag()) + QStringLiteral(".csv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    while (!file.atEnd()) {
        const QList<QByteArray> fields = file.readLine().trimmed().split(',');
        bool ok = false;
        const double x = fields[0].toDouble(&ok);
        if (!ok || fields.size() != 2)
            continue;
        hertz.push_back(x);
        expected.push_back(fields[1].toDouble());
    }
    const size_t n = hertz.size();
    QVERIFY(n > 1000);
    Site site;
    const Tensor shielding = sampleTensor(sample, QStringLiteral("ms"), species, index);
    for (size_t i = 0; i < 9; ++i)
        site.shift[i] = (i % 4 == 0 ? reference : 0) - shielding[i];
    if (moment != 0) {
        site.coupling = sampleTensor(sample, QStringLiteral("efg"), species, index);
        for (double &element : *site.coupling)
            element *= moment * 2.3489;
    }
    // Three times the width, folded.
    const double step = (hertz.back() - hertz.front()) / double(n - 1), length = step * double(n);
    const Axis axis{(hertz.front() - length) / larmor, (hertz.back() + length) / larmor, 3 * n};
    const auto found =
        spectrum({&site, 1}, conditions(spin, larmor, rate > 0 ? Rotation::MagicAngle : Rotation::Static, rate),
                 {width, 0}, axis);
    QVERIFY(found && found->converged);
    std::vector<double> folded(n);
    double sum = 0, expectedSum = 0;
    for (size_t i = 0; i < 3 * n; ++i) {
        folded[i % n] += found->sum[i];
        sum += found->sum[i];
    }
    for (double value : expected)
        expectedSum += value;
    for (double &value : folded)
        value *= expectedSum / sum;
    QVERIFY2(distance(folded, expected) < 0.027, qPrintable(QString::number(distance(folded, expected))));
}

void tst_Powder::means()
{
    for (double spin : {1.5, 2.5, 3.5, 4.5}) {
        for (double eta : {0.0, 0.3, 1.0}) {
            const double larmor = 81.3, cq = -7.1;
            const Site site{rotated(diagonal(150, 60, 30), 1, 2, 3), rotated(coupling(cq, eta), 0.1, 0.9, 2), 1};
            // In ppm, with Cq and nu0 in MHz.
            const double expected = -3.0 / 40 * 1e6 * (cq / larmor) * (cq / larmor) * (spin * (spin + 1) - 0.75)
                / (spin * spin * (2 * spin - 1) * (2 * spin - 1)) * (1 + eta * eta / 3);
            const SiteValues values = siteValues(site, conditions(spin, larmor, Rotation::Static));
            QVERIFY(std::abs(values.quadrupolarShift / expected - 1) < 1e-9);
            QVERIFY(std::abs(values.centre - 80 - expected) < 1e-9 * std::abs(expected));
            // With eta = 1 either sign is right.
            QVERIFY(std::abs(std::abs(values.coupling) - std::abs(cq)) < 1e-9);
            QVERIFY(eta == 1 || values.coupling < 0);
            QVERIFY(std::abs(values.asymmetry - eta) < 1e-9);
            QVERIFY(std::abs(values.span - 120) < 1e-9);
            // The same from the curves themselves, however few the directions; Gaussian lines, whose wings do not reach
            // beyond the axis.
            for (Rotation rotation : {Rotation::Static, Rotation::MagicAngle, Rotation::InfiniteRate}) {
                for (double directions : {0.0, 200.0}) {
                    const auto curve = spectrum({&site, 1}, conditions(spin, larmor, rotation, 15000), {0, 100},
                                                {6000, -6000, 32768}, {1e-3, directions});
                    const double error = (moments(*curve).mean - values.centre) / expected;
                    QVERIFY2(std::abs(error) < 1e-6, qPrintable(QString::number(error)));
                }
            }
        }
    }
}

void tst_Powder::staticEdges()
{
    const double larmor = 100, cq = 5;
    // (nu_Q^2 / 16 nu0) (I (I + 1) - 3/4), nu_Q = 3 Cq / (2I (2I - 1)); C. M. Taylor's and others' tables of the
    // singularities give a breadth of (eta^2 + 22 eta + 25) / 9 of it.
    const double nuQ = 3 * cq / 20, unit = nuQ * nuQ / (16 * larmor) * 8 / larmor * 1e6; // ppm, spin 5/2
    for (double eta : {0.0, 0.5, 1.0}) {
        const Site site{diagonal(10, 10, 10), rotated(coupling(cq, eta), 1, 1, 1), 1};
        const double expected = (eta * eta + 22 * eta + 25) / 9 * unit;
        const double breadth = siteValues(site, conditions(2.5, larmor, Rotation::Static)).breadth;
        QVERIFY2(std::abs(breadth / expected - 1) < 1e-6, qPrintable(QString::number(breadth / expected)));
    }
    // eta = 0: from -16/9 to 1 of the unit about the shift; half of the maximum at the edge of a step.
    const Site site{diagonal(0, 0, 0), coupling(cq, 0), 1};
    const auto found = spectrum({&site, 1}, conditions(2.5, larmor, Rotation::Static), {0, 20}, {-100, 100, 8192});
    QVERIFY(found);
    const auto above = [](double value) { return value > 1e-4; };
    const auto first = std::find_if(found->sum.begin(), found->sum.end(), above);
    const auto last = std::find_if(found->sum.rbegin(), found->sum.rend(), above);
    QVERIFY(std::abs(found->axis.at(size_t(first - found->sum.begin())) + 16.0 / 9 * unit) < 0.5);
    QVERIFY(std::abs(found->axis.at(size_t(found->sum.rend() - last) - 1) - unit) < 0.5);

    // Shift anisotropy: the pattern is as wide as the tensor, with its maximum at the middle value.
    const Site csa{rotated(diagonal(200, 120, 50), 1, 2, 3), std::nullopt, 1};
    QVERIFY(std::abs(siteValues(csa, conditions(0.5, larmor, Rotation::Static)).breadth - 150) < 1e-9);
    const auto pattern = spectrum({&csa, 1}, conditions(0.5, larmor, Rotation::Static), {20, 0}, {250, 0, 4096});
    const auto top = std::max_element(pattern->sum.begin(), pattern->sum.end());
    QVERIFY(std::abs(pattern->axis.at(size_t(top - pattern->sum.begin())) - 120) < 0.2);

    // Deuterium: horns 3/4 Cq apart, edges 3/2 Cq.
    const Site deuterium{{}, coupling(0.16, 0), 1};
    const Conditions field = conditions(1, 92, Rotation::Static);
    QVERIFY(std::abs(siteValues(deuterium, field).breadth * field.larmor - 1.5 * 0.16e6) < 1e-3);
    const auto horns = spectrum({&deuterium, 1}, field, {500, 0}, {2000, -2000, 8001});
    const size_t highest = size_t(std::max_element(horns->sum.begin(), horns->sum.begin() + 4000) - horns->sum.begin());
    QVERIFY(std::abs(horns->axis.at(highest) * field.larmor - 0.375 * 0.16e6) < 500);
    // Symmetric about the shift.
    for (size_t i = 0; i < 4000; ++i)
        QVERIFY(std::abs(horns->sum[i] - horns->sum[8000 - i]) < 2e-3 * horns->sum[highest]);
}

void tst_Powder::doublesCentre()
{
    // First order: at an infinite rate all of it is gone.
    const Site nitrogen{diagonal(10, 20, 60), coupling(3, 0.5), 1};
    const SiteValues values = siteValues(nitrogen, conditions(1, 43, Rotation::InfiniteRate));
    QVERIFY(std::abs(values.centre - 30) < 1e-9 && std::abs(values.breadth) < 1e-9);
    const auto line = spectrum({&nitrogen, 1}, conditions(1, 43, Rotation::InfiniteRate), {43, 0}, {50, 10, 4001});
    const double pi = std::numbers::pi;
    for (size_t i = 0; i < line->sum.size(); i += 7) {
        const double x = line->axis.at(i) - 30;
        QVERIFY(std::abs(line->sum[i] - 0.5 / pi / (x * x + 0.25)) < 1e-3);
    }
}

void tst_Powder::sidebandMoments()
{
    // The spectrum keeps its second moment under rotation, whatever the rate: <(b.A.b)^2> = 2/15 tr A^2.
    const Site csa{rotated(diagonal(-70, 10, 60), 1, 2, 3), std::nullopt, 1};
    for (double rate : {900.0, 2500.0, 11000.0}) {
        const auto found = spectrum({&csa, 1}, conditions(0.5, 75, Rotation::MagicAngle, rate), {0, 40},
                                    {800, -800, 32768}, {1e-3, 20000});
        const double line = 40 / 75.0 / 2.3548200450309493; // standard deviation of the lines
        const double expected = 2.0 / 15 * (4900 + 100 + 3600);
        QVERIFY(std::abs((moments(*found).variance - line * line) / expected - 1) < 2e-4);
        QVERIFY(std::abs(area(*found) - 1) < 1e-6);
    }
}

void tst_Powder::slowSpinningIsStatic()
{
    const Site site = oxygen();
    const Axis axis{600, -600, 2048};
    const auto still = spectrum({&site, 1}, conditions(2.5, 54, Rotation::Static), {0, 600}, axis);
    const auto slow = spectrum({&site, 1}, conditions(2.5, 54, Rotation::MagicAngle, 60), {0, 600}, axis, {1e-3, 4000});
    QVERIFY2(distance(slow->sum, still->sum) < 0.02, qPrintable(QString::number(distance(slow->sum, still->sum))));
    const auto fast = spectrum({&site, 1}, conditions(2.5, 54, Rotation::MagicAngle, 1e6), {100, 0}, axis);
    const auto infinite = spectrum({&site, 1}, conditions(2.5, 54, Rotation::InfiniteRate), {100, 0}, axis);
    QVERIFY2(distance(fast->sum, infinite->sum) < 5e-3,
             qPrintable(QString::number(distance(fast->sum, infinite->sum))));
}

void tst_Powder::sameBits()
{
    const Site site = oxygen();
    for (Rotation rotation : {Rotation::Static, Rotation::MagicAngle, Rotation::InfiniteRate}) {
        std::vector<double> first;
        for (const Kernels *loops : supportedKernels()) {
            const KernelChoice choice(*loops);
            const auto found =
                spectrum({&site, 1}, conditions(2.5, 54, rotation, 8000), {150, 50}, {700, -700, 3000}, {2e-3, 0});
            if (first.empty())
                first = found->sum;
            QVERIFY(std::memcmp(first.data(), found->sum.data(), first.size() * sizeof(double)) == 0);
        }
    }
}

void tst_Powder::convergence_data()
{
    QTest::addColumn<int>("rotation");
    QTest::addColumn<double>("spin");
    QTest::newRow("static") << int(Rotation::Static) << 2.5;
    QTest::newRow("sidebands") << int(Rotation::MagicAngle) << 2.5;
    QTest::newRow("infinite rate") << int(Rotation::InfiniteRate) << 2.5;
    QTest::newRow("spin 1/2") << int(Rotation::MagicAngle) << 0.5;
    QTest::newRow("spin 1") << int(Rotation::Static) << 1.0;
    QTest::newRow("spin 3") << int(Rotation::MagicAngle) << 3.0;
}

void tst_Powder::convergence()
{
    QFETCH(int, rotation);
    QFETCH(double, spin);
    Site site = oxygen();
    if (std::fmod(spin, 1) == 0)
        site.coupling = coupling(0.2, 0.3);
    const Conditions now = conditions(spin, 81, Rotation(rotation), 9000);
    const Axis axis{1500, -1500, 4096};
    const auto converged = spectrum({&site, 1}, now, {100, 0}, axis, {1e-3, 100000});
    const auto checkIt = [&](double tolerance) {
        const auto found = spectrum({&site, 1}, now, {100, 0}, axis, {tolerance, 0});
        QVERIFY(found->converged);
        QVERIFY2(distance(found->sum, converged->sum) < 1.5 * tolerance,
                 qPrintable(QString::number(distance(found->sum, converged->sum))));
    };
    checkIt(1e-2);
    checkIt(1e-3);
    // The powder does not know how the crystal's axes were chosen.
    site.shift = rotated(site.shift, 0.7, 0.8, 2.9);
    site.coupling = rotated(*site.coupling, 0.7, 0.8, 2.9);
    checkIt(1e-3);
}

void tst_Powder::areas()
{
    // Per nucleus, in ppm; curves of sites add up to the sum; a descending axis is the ascending one backwards.
    const Site sites[] = {oxygen(), {diagonal(50, 50, 50), std::nullopt, 3}};
    const Conditions now = conditions(2.5, 81, Rotation::InfiniteRate);
    const auto found = spectrum(sites, now, {0, 50}, {500, -500, 8192});
    QVERIFY(std::abs(area(*found) - 4) < 1e-4);
    const auto backwards = spectrum(sites, now, {0, 50}, {-500, 500, 8192});
    for (size_t i = 0; i < found->sum.size(); ++i) {
        QVERIFY(std::abs(found->sum[i] - found->sites[0].values[i] - found->sites[1].values[i]) < 1e-12);
        QVERIFY(std::abs(found->sum[i] - backwards->sum[8191 - i]) < 1e-9);
    }
    // A line much narrower than the distance of points is not lost between them, wherever it lies.
    for (double shift : {0.0, 1.0, 2.3, 4.9}) {
        const Site sharp{diagonal(shift, shift, shift), std::nullopt, 1};
        for (double width : {0.0, 5.0, 300.0, 900.0}) {
            const auto coarse = spectrum({&sharp, 1}, now, {0, width}, {-500, 500, 101});
            QVERIFY(std::abs(area(*coarse) - 1) < 4e-2);
            const auto top = std::max_element(coarse->sum.begin(), coarse->sum.end());
            QVERIFY(std::abs(coarse->axis.at(size_t(top - coarse->sum.begin())) - shift) < 5.1);
            QVERIFY(std::all_of(coarse->sum.begin(), coarse->sum.end(), [](double value) { return value > -1e-4; }));
        }
    }
    // Wide lines on a short axis are what they are, without images of the circle on which they are added.
    const Site line{diagonal(20, 20, 20), std::nullopt, 1};
    for (double width : {30.0, 50.0, 4000.0, 30000.0}) {
        const auto wide = spectrum({&line, 1}, now, {width, 0}, {100, -40, 500});
        for (size_t i = 0; i < wide->sum.size(); ++i) {
            const double x = wide->axis.at(i) - 20, w = width / 81;
            const double expected = 0.5 * std::numbers::inv_pi * w / (x * x + 0.25 * w * w);
            QVERIFY2(std::abs(wide->sum[i] - expected) < 3e-3 * expected + 1e-6,
                     qPrintable(QStringLiteral("%1: %2 %3").arg(width).arg(wide->sum[i]).arg(expected)));
        }
    }
    // A window into a pattern shows what the whole one shows there.
    const auto part = spectrum({sites, 1}, conditions(2.5, 54, Rotation::Static), {100, 0}, {100, 50, 1001});
    const auto whole = spectrum({sites, 1}, conditions(2.5, 54, Rotation::Static), {100, 0}, {600, -450, 21001});
    for (size_t i = 0; i < 1001; ++i)
        QVERIFY(std::abs(part->sum[i] - whole->sum[10000 + i]) < 0.01 * whole->sum[10000 + i]);
}

void tst_Powder::fittingAxes()
{
    const Site site = oxygen();
    for (Rotation rotation : {Rotation::Static, Rotation::MagicAngle, Rotation::InfiniteRate}) {
        const Conditions now = conditions(2.5, 81, rotation, 12000);
        const auto axis = fittingAxis({&site, 1}, now, {30, 0}, 8192);
        QVERIFY(axis && axis->first > axis->last && axis->points == 8192);
        const auto shown = spectrum({&site, 1}, now, {30, 0}, *axis);
        QVERIFY(area(*shown) > 0.99);
        const double highest = *std::max_element(shown->sum.begin(), shown->sum.end());
        // All above 0.1 %, and not much more.
        QVERIFY(shown->sum.front() < 1.5e-3 * highest && shown->sum.back() < 1.5e-3 * highest);
        QVERIFY(shown->sum[200] > 5e-4 * highest || rotation == Rotation::MagicAngle);
    }
    const Site line{diagonal(7, 7, 7), std::nullopt, 1};
    const auto narrow = fittingAxis({&line, 1}, conditions(0.5, 100, Rotation::InfiniteRate), {30, 0}, 1024);
    QVERIFY(std::abs(narrow->first - 7 - 15.8 * 0.3) < 0.2 && std::abs(7 - narrow->last - 15.8 * 0.3) < 0.2);
}

void tst_Powder::secondOrderLimits()
{
    const Conditions now = conditions(2.5, 80, Rotation::InfiniteRate);
    // The first order left out is the fourth: the error grows with the third power of the field that is missing.
    const double small = *secondOrderError({{}, coupling(4, 0.5), 1}, now);
    const double large = *secondOrderError({{}, coupling(8, 0.5), 1}, now);
    QVERIFY(small > 0 && std::abs(std::log2(large / small) - 4) < 0.2);
    const double high = *secondOrderError({{}, coupling(8, 0.5), 1}, conditions(2.5, 160, Rotation::Static));
    QVERIFY(std::abs(std::log2(large / high) - 3) < 0.2);
    QVERIFY(!secondOrderError({{}, coupling(4, 0.5), 1}, conditions(1, 80, Rotation::Static)));
    QVERIFY(!secondOrderError({{}, std::nullopt, 1}, now));
}

void tst_Powder::tripleQuantum()
{
    SiteValues values;
    values.shift = 60;
    values.quadrupolarShift = -17;
    QCOMPARE(tripleQuantumPosition(values).f1, 70.0);
    QCOMPARE(tripleQuantumPosition(values).f2, 43.0);
}

void tst_Powder::badInput_data()
{
    QTest::addColumn<double>("spin");
    QTest::addColumn<double>("larmor");
    QTest::addColumn<double>("rate");
    QTest::addColumn<double>("shift");
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("last");
    QTest::addColumn<QString>("message");
    const double nan = std::nan("");
    QTest::newRow("spin") << 0.7 << 80.0 << 1e4 << 0.0 << 10.0 << 50.0 << "spin";
    QTest::newRow("field") << 0.5 << 0.0 << 1e4 << 0.0 << 10.0 << 50.0 << "Larmor";
    QTest::newRow("field nan") << 0.5 << nan << 1e4 << 0.0 << 10.0 << 50.0 << "Larmor";
    QTest::newRow("rate") << 0.5 << 80.0 << 0.0 << 0.0 << 10.0 << 50.0 << "rate";
    QTest::newRow("slow") << 0.5 << 80.0 << 1e-3 << 0.0 << 10.0 << 50.0 << "sidebands";
    QTest::newRow("shift") << 0.5 << 80.0 << 1e4 << nan << 10.0 << 50.0 << "shift tensor";
    QTest::newRow("huge shift") << 0.5 << 80.0 << 1e4 << 1e9 << 10.0 << 50.0 << "shift tensor";
    QTest::newRow("width") << 0.5 << 80.0 << 1e4 << 0.0 << -1.0 << 50.0 << "width";
    QTest::newRow("empty range") << 0.5 << 80.0 << 1e4 << 0.0 << 10.0 << 0.0 << "range";
    QTest::newRow("endless range") << 0.5 << 80.0 << 1e4 << 0.0 << 10.0 << double(INFINITY) << "range";
}

void tst_Powder::badInput()
{
    QFETCH(double, spin);
    QFETCH(double, larmor);
    QFETCH(double, rate);
    QFETCH(double, shift);
    QFETCH(double, width);
    QFETCH(double, last);
    QFETCH(QString, message);
    const Site site{diagonal(shift, 0, 10), std::nullopt, 1};
    try {
        spectrum({&site, 1}, conditions(spin, larmor, Rotation::MagicAngle, rate), {width, 0}, {0, last, 128});
        QFAIL("no message");
    } catch (const std::invalid_argument &error) {
        QVERIFY2(QLatin1String(error.what()).contains(message), error.what());
    }
}

void tst_Powder::fits()
{
    const Site site = oxygen();
    const Conditions now = conditions(2.5, 81, Rotation::InfiniteRate);
    const auto truth = spectrum({&site, 1}, now, {120, 0}, {200, -50, 2000}, {1e-4, 0});
    Measured measured;
    quint32 state = 1;
    for (size_t i = 0; i < truth->sum.size(); ++i) {
        state = state * 1664525 + 1013904223;
        const double noise = 1e-2 * (double(state >> 8) / double(1 << 24) - 0.5);
        measured.ppm.push_back(truth->axis.at(i));
        measured.intensity.push_back(1000 * (truth->sum[i] + noise * truth->sum[1000]));
    }
    Site start = site;
    for (size_t i : {0, 4, 8})
        start.shift[i] += 7.5;
    for (double &element : *start.coupling)
        element *= 1.02;
    const auto found = fitSpectrum({&start, 1}, now, {60, 0}, measured, {true, true, false, true}, 30);
    QVERIFY(found && found->converged);
    const auto agrees = [](const FittedValue &fitted, double value, double limit) {
        return std::abs(fitted.value - value) < 4 * fitted.error + 1e-3 * std::abs(value) && fitted.error > 0
            && fitted.error < limit;
    };
    QVERIFY(agrees(found->reference, -7.5, 0.05));
    QVERIFY(agrees(found->lorentzian, 120, 3));
    QVERIFY(agrees(found->scale, 1 / 1.02, 1e-3));
    QVERIFY(std::abs(found->intensity - 1000) < 5);
    QCOMPARE(found->gaussian.value, 0.0);
    QCOMPARE(found->curve.size(), measured.ppm.size());

    Measured few = measured;
    few.ppm.resize(4);
    few.intensity.resize(4);
    QVERIFY_THROWS_EXCEPTION(std::invalid_argument, fitSpectrum({&site, 1}, now, {60, 0}, few, {}));
}

void tst_Powder::stops()
{
    const Site site = oxygen();
    int calls = 0;
    const auto stop = [&](double part) {
        ++calls;
        return part < 0.01;
    };
    QVERIFY(!spectrum({&site, 1}, conditions(2.5, 81, Rotation::MagicAngle, 5000), {30, 0}, {500, -500, 1024},
                      {1e-3, 1e6}, stop));
    QVERIFY(calls > 0);
    Measured measured{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}};
    QVERIFY(!fitSpectrum({&site, 1}, conditions(2.5, 81, Rotation::InfiniteRate), {30, 0}, measured, {}, 5,
                         [](double) { return false; }));
}

QTEST_APPLESS_MAIN(tst_Powder)
#include "tst_powder.moc"
