// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "analysis/powder/Broadening.h"
#include "analysis/powder/Frequency.h"
#include "analysis/powder/Kernels.h"
#include "analysis/powder/Spectrum.h"
#include "analysis/powder/SpectrumFit.h"
#include "analysis/powder/Trigonometry.h"

#include <Eigen/Geometry>

#include <QFile>

#include <complex>
#include <cstring>
#include <numbers>
#include <numeric>

using namespace Workbench::Powder;
using Eigen::Vector3d;

namespace {

/// Of an atom of a sample, by rows.
Tensor sampleTensor(const char *name, const char *kind, const char *species, int index)
{
    QFile sample(QStringLiteral(SAMPLES "/%1.magres").arg(QLatin1String(name)));
    if (!sample.open(QIODevice::ReadOnly))
        throw std::runtime_error("no sample");
    while (!sample.atEnd()) {
        const QByteArrayList words = sample.readLine().simplified().split(' ');
        if (words.size() < 12 || words[0] != kind || words[1] != species || words[2].toInt() != index)
            continue;
        Tensor tensor;
        for (int i = 0; i < 9; ++i)
            tensor[size_t(i)] = words[3 + i].toDouble();
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
    const Eigen::Matrix3d turn = (Eigen::AngleAxisd(a, Vector3d::UnitZ()) * Eigen::AngleAxisd(b, Vector3d::UnitY())
                                  * Eigen::AngleAxisd(c, Vector3d::UnitZ()))
                                     .toRotationMatrix();
    using Rows = Eigen::Matrix<double, 3, 3, Eigen::RowMajor>;
    Tensor values;
    Eigen::Map<Rows>(values.data()) = turn * Rows(tensor.data()) * turn.transpose();
    return values;
}

Site oxygen()
{
    return {rotated(diagonal(150, 60, 20), 0.3, 1.1, 2.0), rotated(coupling(5.5, 0.4), 1.0, 0.4, 0.2), 1};
}

double area(const Spectrum &spectrum)
{
    return std::accumulate(spectrum.sum.begin(), spectrum.sum.end(), 0.0) * std::abs(spectrum.axis.step());
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

/// In ppm.
double meanOf(const Spectrum &spectrum)
{
    double sum = 0, moment = 0;
    for (size_t i = 0; i < spectrum.sum.size(); ++i) {
        sum += spectrum.sum[i];
        moment += spectrum.sum[i] * spectrum.axis.at(i);
    }
    return moment / sum;
}

/// Numbers without any symmetry, the same at every run.
class Numbers {
public:
    explicit Numbers(unsigned seed) : m_random(seed) { }
    double operator()(double low, double high) { return std::uniform_real_distribution(low, high)(m_random); }

private:
    std::mt19937 m_random;
};

bool isNear(double value, double expected, double tolerance)
{
    if (std::abs(value - expected) <= tolerance)
        return true;
    qWarning("%.15g instead of %.15g", value, expected);
    return false;
}

double frequency(const FrequencyForm &form, const Vector3d &b)
{
    return valueAt(form, {b.x(), b.y(), b.z()});
}

/// The field as the rotor has it, with its axis at the magic angle.
Vector3d turnedField(const Vector3d &axis, double angle)
{
    const Vector3d e1 = axis.unitOrthogonal(), e2 = axis.cross(e1);
    return (axis + std::sqrt(2.0) * (std::cos(angle) * e1 + std::sin(angle) * e2)) / std::sqrt(3.0);
}

} // namespace

class tst_Powder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void functions()
    {
        for (double x : {-745.0, -700.5, -699.5, -12.34, -0.4, -1e-9, 0.0, 0.3466, 0.9, 25.7, 300.0})
            QVERIFY(isNear(exponential(x), x < -700 ? 0 : std::exp(x), 4e-16 * std::exp(x)));
        for (double x : {0.0, 1e-8, 0.3, -0.9, 1.0, 5.5, 1e6})
            QVERIFY(isNear(arcTangent(x), std::atan(x), 5e-16));
        // 2^k, 3 2^k and 5 2^k that have a stage of four.
        const size_t sizes[] = {8, 12, 16, 20, 24, 32, 40, 48, 64, 80, 96, 128, 160, 192, 256, 320, 384, 512, 640, 768};
        for (size_t least = 0; least <= 768; ++least)
            QCOMPARE(transformSize(least), *std::lower_bound(std::begin(sizes), std::end(sizes), least));
    }

    /// Against the phase that the frequency itself accumulates along the rotor's turn.
    void sidebandWeights()
    {
        Numbers random(5);
        FrequencyForm form{};
        const Eigen::Matrix3d coupling =
            Eigen::Map<const Eigen::Matrix3d>(rotated(diagonal(900, -300, -600), 1, 2, 3).data());
        for (int i = 0; i < 6; ++i)
            form.quadratic[i] = random(-4000, 4000);
        for (int i = 0; i < 3; ++i) {
            form.coupling[i] = coupling(i, i);
            form.coupling[3 + i] = 2 * coupling(i < 2 ? 0 : 1, i < 1 ? 1 : 2);
        }
        form.quartic = 0.007;
        form.constant = 777;
        constexpr size_t fine = 64;
        const double rate = 2500, turn = 2 * std::numbers::pi;
        for (size_t steps : {24, 32, 40, 48, 64, 80, 160}) {
            std::vector<double> x, y, z, work(4 * (laneCount * steps + arrayGap)), weights(laneCount * steps);
            for (int l = 0; l < laneCount; ++l) {
                const Vector3d axis = Vector3d(random(-1, 1), random(-1, 1), random(-0.5, 1)).normalized();
                x.push_back(axis.x());
                y.push_back(axis.y());
                z.push_back(axis.z());
            }
            const TwiddleTable table(steps);
            const Twiddles twiddles = table.twiddles();
            kernels().sidebands(&form, rate, &twiddles, x.data(), y.data(), z.data(), work.data(), weights.data());
            for (size_t l = 0; l < size_t(laneCount); ++l) {
                std::complex<double> harmonics[5]; // c - i s
                for (size_t i = 0; i < fine; ++i) {
                    const double angle = turn * double(i) / fine,
                                 value = frequency(form, turnedField({x[l], y[l], z[l]}, angle));
                    for (int h = 1; h < 5; ++h)
                        harmonics[h] += 2.0 / fine * value * std::polar(1.0, -h * angle);
                }
                std::vector<std::complex<double>> signal;
                for (size_t j = 0; j < steps; ++j) {
                    double phase = 0;
                    for (int h = 1; h < 5; ++h)
                        phase += (harmonics[h] * std::polar(1.0, turn * h * double(j) / steps)).imag() / (h * rate);
                    signal.push_back(std::polar(1.0 / steps, phase));
                }
                for (size_t k = 0; k < steps; ++k) {
                    std::complex<double> sum;
                    for (size_t j = 0; j < steps; ++j)
                        sum += signal[j] * std::polar(1.0, -turn * double(j * k) / steps);
                    QVERIFY(isNear(weights[l * steps + k], std::norm(sum), 1e-8));
                }
            }
        }
    }

    /// A line between the points keeps its moments up to the fifth; a row of lines is what they are one by one.
    void linesOnGrids()
    {
        for (double place : {102.0, 102.37, 110.999, 124.9}) {
            FrequencyGrid grid(100, 0.5, 60);
            grid.add(place, 3);
            double expected = 3;
            for (int k = 0; k < 6; ++k, expected = 0) {
                double moment = 0;
                for (size_t i = 0; i < 60; ++i)
                    moment += grid.values()[i] * std::pow(100 + 0.5 * double(i) - place, k);
                QVERIFY(isNear(moment, expected, 1e-12));
            }
        }
        // From two points before it to three behind it, or not at all.
        const std::pair<double, bool> ends[] = {
            {100.99, false}, {101.0, true}, {128.4, true}, {128.5, false}, {1e300, false}};
        for (const auto &[place, isThere] : ends) {
            FrequencyGrid grid(100, 0.5, 60);
            grid.add(place, 3);
            QVERIFY(isNear(std::accumulate(grid.values().begin(), grid.values().end(), 0.0), isThere ? 3 : 0, 1e-12));
        }
        Numbers random(6);
        std::vector<double> values(200);
        for (double &value : values)
            value = random(-1, 1);
        for (int row = 0; row < 96; ++row) {
            const size_t spacing = row % 2 ? 1 : 3, stride = row / 2 % 2 + 1,
                         count = std::array{1, 4, 7, 40}[size_t(row / 4 % 4)];
            const double first = std::array{90.2, 100.2, 101.2, 105.4, 123.3, 108.0}[size_t(row / 16)];
            FrequencyGrid together(100, 0.5, 60), alone(100, 0.5, 60);
            together.add(first, spacing, count, values.data(), stride, 1.7);
            for (size_t i = 0; i < count; ++i)
                alone.add(first + 0.5 * double(i * spacing), 1.7 * values[i * stride]);
            for (size_t i = 0; i < 60; ++i)
                QVERIFY(isNear(together.values()[i], alone.values()[i], 1e-11));
        }
    }

    /// Lines at known places against the functions themselves; wings of wide lines as well, and two grids at once.
    void lineShapes()
    {
        const auto lorentz = [](double x, double w) { return 0.5 * std::numbers::inv_pi * w / (x * x + 0.25 * w * w); };
        const auto gauss = [](double x, double w) {
            return std::sqrt(4 * std::numbers::ln2 / std::numbers::pi) / w
                * std::exp(-4 * std::numbers::ln2 * x * x / (w * w));
        };
        QVERIFY(isNear(fullWidth({40, 0}), 40, 1e-3) && isNear(fullWidth({0, 30}), 30, 1e-12));
        QVERIFY(isNear(fullWidth({40, 30}), 56.6948, 0.01)); // scipy.special.voigt_profile
        for (const LineShape &shape : {LineShape{12, 0}, {0, 11}, {90, 0}, {2500, 0}, {0, 700}}) {
            const double low = -400, high = 1900;
            const Broadening broadening(-1000, 2, 1500, shape, low, high);
            FrequencyGrid grid = broadening.grid(), second = broadening.grid();
            std::vector<double> curve, difference, alone;
            const std::pair<double, double> lines[] = {{-311.3, 2}, {402.9, 1}, {1888.8, 0.5}};
            for (const auto &[place, weight] : lines)
                grid.add(place, weight);
            second = grid;
            second.add(100.6, 0.25);
            second.add(111.7, -0.25);
            broadening.apply(grid, curve, &second, &difference);
            broadening.apply(grid, alone);
            const double w = std::max(shape.lorentzian, shape.gaussian),
                         top = shape.gaussian > 0 ? gauss(0, w) : lorentz(0, w);
            const auto line = [&](double x) { return shape.gaussian > 0 ? gauss(x, w) : lorentz(x, w); };
            const double room = (w > 2000 ? 1e-3 : 1e-4) * top; // wide lines reach round the circle
            QCOMPARE(curve.size(), size_t(1500));
            for (size_t i = 0; i < curve.size(); ++i) {
                const double x = -1000 + 2 * double(i);
                double expected = 0;
                for (const auto &[place, weight] : lines)
                    expected += weight * line(x - place);
                QVERIFY2(isNear(curve[i], expected, room), qPrintable(QStringLiteral("%1 Hz at %2").arg(w).arg(x)));
                QVERIFY(isNear(difference[i], 0.25 * (line(x - 100.6) - line(x - 111.7)), room));
                QVERIFY(isNear(alone[i], curve[i], 1e-12 * top));
            }
        }
    }

    /// Frequencies of one direction, their means and limits.
    void forms()
    {
        // m to m - 1 along the principal axes: 3 (2m - 1) / (4 I (2I - 1)) of the coupling; S (S + 1) - m (m - 1)
        // shares.
        const Site simple{diagonal(10, 20, 60), diagonal(-0.4, -0.8, 1.2), 1};
        for (double spin : {1.0, 3.0}) {
            double total = 0, m = spin;
            const auto found = transitions(simple, Conditions{spin, 50, Rotation::Static});
            for (const Transition &t : found) {
                const double factor = 3 * (2 * m - 1) / (4 * spin * (2 * spin - 1)) * 1e6;
                QVERIFY(isNear(frequency(t.form, Vector3d::UnitX()), 500 - 0.4 * factor, 1e-6));
                QVERIFY(isNear(frequency(t.form, Vector3d::UnitY()), 1000 - 0.8 * factor, 1e-6));
                QVERIFY(isNear(frequency(t.form, Vector3d::UnitZ()), 3000 + 1.2 * factor, 1e-6));
                QVERIFY(isNear(t.weight / found[0].weight, (spin * (spin + 1) - m * (m - 1)) / (2 * spin), 1e-12));
                total += t.weight;
                m -= 1;
            }
            QVERIFY(isNear(total, 1, 1e-14) && m == -spin);
        }
        const std::pair<double, std::optional<Tensor>> single[] = {
            {0.5, simple.coupling}, {1, std::nullopt}, {1, Tensor{}}};
        for (const auto &[spin, tensor] : single)
            QCOMPARE(transitions({simple.shift, tensor, 1}, Conditions{spin, 50, Rotation::Static}).size(), size_t(1));

        for (double spin : {0.5, 1.5, 2.5}) {
            const FrequencyForm form = transitions(oxygen(), Conditions{spin, 54, Rotation::Static})[0].form;
            const FrequencyForm turned = spinningMean(form);
            std::vector<double> values, centres, swings;
            Numbers random(7);
            for (int i = 0; i < 12000; ++i) {
                const Vector3d axis = Vector3d(random(-1, 1), random(-1, 1), random(-1, 1)).normalized();
                values.push_back(frequency(form, axis));
                centres.push_back(frequency(turned, axis));
                double sum = 0;
                for (int k = 0; k < 12; ++k) {
                    const double value = frequency(form, turnedField(axis, std::numbers::pi / 6 * k));
                    swings.push_back(value - centres.back());
                    sum += value / 12;
                }
                QVERIFY(isNear(centres.back(), sum, 1e-5));
            }
            // Exact of forms up to the fifth power: the corners of an icosahedron.
            const double phi = std::numbers::phi;
            double sphere = 0;
            for (const Vector3d &b : {Vector3d(0, 1, phi), Vector3d(0, 1, -phi), Vector3d(1, phi, 0),
                                      Vector3d(1, -phi, 0), Vector3d(phi, 0, 1), Vector3d(phi, 0, -1)})
                sphere += frequency(form, b.normalized()) / 6;
            QVERIFY(isNear(mean(form), sphere, 1e-6));
            QVERIFY(isNear(mean(turned), mean(form), 1e-5));
            // Nothing lies beyond the extremes, and there is something just within them.
            using Limits = std::tuple<std::pair<double, double>, std::vector<double>, double>;
            for (const auto &[found, tried, room] :
                 {Limits(extremes(form), values, 0), Limits(extremes(turned), centres, 0),
                  Limits(modulationExtremes(form), swings, 0.05)}) {
                const auto [low, high] = std::minmax_element(tried.begin(), tried.end());
                const double whole = *high - *low + 1; // Hz
                QVERIFY(found.first < *low + (1e-6 + room) * whole && found.first > *low - (0.01 + room) * whole);
                QVERIFY(found.second > *high - (1e-6 + room) * whole && found.second < *high + (0.01 + room) * whole);
            }
        }
    }

    void referenceCurves()
    {
        // The moment in fm^2.
        for (const auto &[name, sample, species, index, spin, moment, larmor, reference, rate, width] :
             {std::tuple("o-static", "berlinite", "O", 1, 2.5, -2.558, 54.2507, 287.0, 0.0, 200.0),
              std::tuple("o-20kHz", "paracetamol", "O", 5, 2.5, -2.558, 108.5013, 287.0, 20e3, 200.0),
              std::tuple("al-12kHz", "berlinite", "Al", 1, 2.5, 14.66, 104.3147, 560.0, 12e3, 100.0),
              std::tuple("c-4kHz", "paracetamol", "C", 25, 0.5, 0.0, 150.912, 170.0, 4e3, 60.0)}) {
            std::vector<double> hertz, expected;
            QFile file(QStringLiteral(FACTS "/") + QLatin1String(name) + QStringLiteral(".csv"));
            QVERIFY(file.open(QIODevice::ReadOnly));
            for (const QByteArray &line : file.readAll().split('\n')) {
                bool ok = false;
                const double x = line.split(',')[0].toDouble(&ok);
                if (ok) {
                    hertz.push_back(x);
                    expected.push_back(line.split(',').value(1).toDouble());
                }
            }
            const size_t n = hertz.size();
            QVERIFY(n > 1000);
            Site site;
            const Tensor shielding = sampleTensor(sample, "ms", species, index);
            for (size_t i = 0; i < 9; ++i)
                site.shift[i] = (i % 4 == 0 ? reference : 0) - shielding[i];
            if (moment != 0) {
                site.coupling = sampleTensor(sample, "efg", species, index);
                for (double &element : *site.coupling)
                    element *= moment * 2.3489;
            }
            // Three times the width, folded.
            const double step = (hertz.back() - hertz.front()) / double(n - 1), length = step * double(n);
            const Axis axis{(hertz.front() - length) / larmor, (hertz.back() + length) / larmor, 3 * n};
            const auto found =
                spectrum({&site, 1}, Conditions{spin, larmor, rate > 0 ? Rotation::MagicAngle : Rotation::Static, rate},
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
            QVERIFY2(distance(folded, expected) < 0.027, name);
        }
    }

    void means()
    {
        for (double spin : {1.5, 2.5, 3.5, 4.5}) {
            for (double eta : {0.0, 0.3, 1.0}) {
                const double larmor = 81.3, cq = -7.1;
                const Site site{rotated(diagonal(150, 60, 30), 1, 2, 3), rotated(coupling(cq, eta), 0.1, 0.9, 2), 1};
                // In ppm, with Cq and nu0 in MHz.
                const double expected = -3.0 / 40 * 1e6 * (cq / larmor) * (cq / larmor) * (spin * (spin + 1) - 0.75)
                    / (spin * spin * (2 * spin - 1) * (2 * spin - 1)) * (1 + eta * eta / 3);
                const SiteValues values = siteValues(site, Conditions{spin, larmor, Rotation::Static});
                QVERIFY(std::abs(values.quadrupolarShift / expected - 1) < 1e-9);
                QVERIFY(std::abs(values.centre - 80 - expected) < 1e-9 * std::abs(expected));
                const auto [f1, f2] = tripleQuantumPosition(values);
                QVERIFY(isNear(f1, 80 - 10.0 / 17 * expected, 1e-6) && isNear(f2, 80 + expected, 1e-6));
                // With eta = 1 either sign is right.
                QVERIFY(std::abs(std::abs(values.coupling) - std::abs(cq)) < 1e-9);
                QVERIFY(eta == 1 || values.coupling < 0);
                QVERIFY(std::abs(values.asymmetry - eta) < 1e-9);
                QVERIFY(std::abs(values.span - 120) < 1e-9);
                // The same from the curves themselves, however few the directions; Gaussian lines, whose wings do not
                // reach beyond the axis.
                for (Rotation rotation : {Rotation::Static, Rotation::MagicAngle, Rotation::InfiniteRate}) {
                    for (double directions : {0.0, 200.0}) {
                        const auto curve = spectrum({&site, 1}, Conditions{spin, larmor, rotation, 15000}, {0, 100},
                                                    {6000, -6000, 32768}, {1e-3, directions});
                        const double error = (meanOf(*curve) - values.centre) / expected;
                        QVERIFY2(std::abs(error) < 1e-6, qPrintable(QString::number(error)));
                    }
                }
            }
        }
    }

    void staticEdges()
    {
        const double larmor = 100, cq = 5;
        // (nu_Q^2 / 16 nu0) (I (I + 1) - 3/4), nu_Q = 3 Cq / (2I (2I - 1)); C. M. Taylor's and others' tables of the
        // singularities give a breadth of (eta^2 + 22 eta + 25) / 9 of it.
        const double nuQ = 3 * cq / 20, unit = nuQ * nuQ / (16 * larmor) * 8 / larmor * 1e6; // ppm, spin 5/2
        for (double eta : {0.0, 0.5, 1.0}) {
            const Site site{diagonal(10, 10, 10), rotated(coupling(cq, eta), 1, 1, 1), 1};
            const double expected = (eta * eta + 22 * eta + 25) / 9 * unit;
            const double breadth = siteValues(site, Conditions{2.5, larmor, Rotation::Static}).breadth;
            QVERIFY2(std::abs(breadth / expected - 1) < 1e-6, qPrintable(QString::number(breadth / expected)));
        }
        // Almost axial couplings have their summits on a ring, whose crest is nearly level.
        Numbers number(5);
        for (int i = 0; i < 8; ++i) {
            const Site ring{rotated(diagonal(number(2, 9), number(-5, 5), 0), 1, number(0, 3), 2),
                            rotated(coupling(15, number(0, 0.05)), number(0, 3), 1, 2), 1};
            const Conditions field{2.5, larmor, Rotation::Static};
            const FrequencyForm form = transitions(ring, field).front().form;
            double low = INFINITY, high = -INFINITY;
            constexpr int directions = 60000;
            for (int k = 0; k < directions; ++k) {
                const double z = (k + 0.5) / directions, r = std::sqrt(1 - z * z), turn = 2.399963229728653 * k;
                const double f = frequency(form, {r * std::cos(turn), r * std::sin(turn), z});
                low = std::min(low, f);
                high = std::max(high, f);
            }
            const double breadth = siteValues(ring, field).breadth * larmor;
            QVERIFY2(breadth > (high - low) * (1 - 1e-12) && breadth < (high - low) * (1 + 4e-4),
                     qPrintable(QString::number(breadth / (high - low) - 1)));
        }
        // eta = 0: from -16/9 to 1 of the unit about the shift; half of the maximum at the edge of a step.
        const Site site{diagonal(0, 0, 0), coupling(cq, 0), 1};
        const auto found = spectrum({&site, 1}, Conditions{2.5, larmor, Rotation::Static}, {0, 20}, {-100, 100, 8192});
        QVERIFY(found);
        const auto above = [](double value) { return value > 1e-4; };
        const auto first = std::find_if(found->sum.begin(), found->sum.end(), above);
        const auto last = std::find_if(found->sum.rbegin(), found->sum.rend(), above);
        QVERIFY(std::abs(found->axis.at(size_t(first - found->sum.begin())) + 16.0 / 9 * unit) < 0.5);
        QVERIFY(std::abs(found->axis.at(size_t(found->sum.rend() - last) - 1) - unit) < 0.5);

        // Shift anisotropy: the pattern is as wide as the tensor, with its maximum at the middle value.
        const Site csa{rotated(diagonal(200, 120, 50), 1, 2, 3), std::nullopt, 1};
        QVERIFY(std::abs(siteValues(csa, Conditions{0.5, larmor, Rotation::Static}).breadth - 150) < 1e-9);
        const auto pattern = spectrum({&csa, 1}, Conditions{0.5, larmor, Rotation::Static}, {20, 0}, {250, 0, 4096});
        const auto top = std::max_element(pattern->sum.begin(), pattern->sum.end());
        QVERIFY(std::abs(pattern->axis.at(size_t(top - pattern->sum.begin())) - 120) < 0.2);

        // Deuterium: edges 3/2 Cq apart.
        const Site deuterium{{}, coupling(0.16, 0), 1};
        const Conditions field{1, 92, Rotation::Static};
        QVERIFY(std::abs(siteValues(deuterium, field).breadth * field.larmor - 1.5 * 0.16e6) < 1e-3);
    }

    /// Sharp crests and edges against the integral over the one angle that matters where all tensors have the same
    /// axis; the axis along the lattice's as well, where whole rows of triangles are level.
    void axialPatterns()
    {
        const Conditions still{2.5, 108.5, Rotation::Static}, turning{2.5, 208.5, Rotation::InfiniteRate},
            spun{2.5, 208.5, Rotation::MagicAngle, 1e7};
        // The shift tensor that makes the ridge along the equator so flat that its second derivative vanishes.
        const auto flattening = [&] {
            const auto bend = [&](double shift) {
                const FrequencyForm form =
                    transitions({diagonal(-shift, -shift, 2 * shift), coupling(5, 0), 1}, still).front().form;
                const double level = valueAt(form, {1, 0, 0});
                return 16 * (valueAt(form, {std::sqrt(0.75), 0, 0.5}) - level) - (valueAt(form, {0, 0, 1}) - level);
            };
            return -bend(0) / (bend(1) - bend(0));
        }();
        for (const auto &[cq, shift, now, shape] :
             {std::tuple(5.0, 0.0, still, LineShape{100, 0}), std::tuple(5.0, 0.0, still, LineShape{1000, 0}),
              std::tuple(5.0, flattening, still, LineShape{400, 0}),
              std::tuple(5.0, flattening, still, LineShape{0, 100}), std::tuple(4.0, 0.0, turning, LineShape{60, 0}),
              std::tuple(4.0, 0.0, turning, LineShape{600, 0}), std::tuple(4.0, 0.0, spun, LineShape{60, 0})}) {
            const Site aligned{diagonal(-shift, -shift, 2 * shift), coupling(cq, 0), 1};
            FrequencyForm form = transitions(aligned, now).front().form;
            if (now.rotation != Rotation::Static)
                form = spinningMean(form);
            const SiteValues values = siteValues(aligned, now);
            const double width = fullWidth(shape), reach = values.breadth + 8 * width / now.larmor;
            const Axis axis{values.centre + reach, values.centre - reach, 1024};
            std::vector<double> expected(axis.points);
            constexpr int steps = 6000;
            for (int k = 0; k < steps; ++k) {
                const double z = (k + 0.5) / steps;
                const double place = valueAt(form, {std::sqrt(1 - z * z), 0, z});
                for (size_t i = 0; i < axis.points; ++i) {
                    const double x = (axis.at(i) * now.larmor - place) / width;
                    expected[i] += shape.gaussian > 0
                        ? std::exp2(-4 * x * x) * std::sqrt(4 * std::numbers::ln2 / std::numbers::pi)
                        : 2 * std::numbers::inv_pi / (1 + 4 * x * x);
                }
            }
            for (double &value : expected)
                value *= now.larmor / width / steps;
            const Site tilted{rotated(aligned.shift, 0.7, 0.9, 0.3), rotated(*aligned.coupling, 0.7, 0.9, 0.3), 1};
            for (const Site &site : {tilted, aligned}) {
                const auto found = spectrum({&site, 1}, now, shape, axis, {1e-3, 0});
                const double error = distance(found->sum, expected);
                QVERIFY2(error < 1e-3 && error < 1.2 * found->sites[0].estimatedError + 1e-4,
                         qPrintable(QStringLiteral("%1 of %2 Hz: %3, estimated %4")
                                        .arg(now.larmor)
                                        .arg(width)
                                        .arg(error)
                                        .arg(found->sites[0].estimatedError)));
            }
        }
    }

    void sameBits()
    {
        const Site site = oxygen();
        const Kernels &usual = kernels();
        for (Rotation rotation : {Rotation::Static, Rotation::MagicAngle, Rotation::InfiniteRate}) {
            std::vector<double> first;
            for (const Kernels *loops : supportedKernels()) {
                useKernels(*loops);
                const auto found =
                    spectrum({&site, 1}, Conditions{2.5, 54, rotation, 8000}, {150, 50}, {700, -700, 3000}, {2e-3, 0});
                if (first.empty())
                    first = found->sum;
                QVERIFY(std::memcmp(first.data(), found->sum.data(), first.size() * sizeof(double)) == 0);
            }
        }
        useKernels(usual);
    }

    void convergence()
    {
        for (const auto &[rotation, spin] :
             {std::pair(Rotation::Static, 2.5), std::pair(Rotation::MagicAngle, 2.5),
              std::pair(Rotation::InfiniteRate, 2.5), std::pair(Rotation::MagicAngle, 0.5),
              std::pair(Rotation::Static, 1.0), std::pair(Rotation::MagicAngle, 3.0)}) {
            Site site = oxygen();
            if (std::fmod(spin, 1) == 0)
                site.coupling = coupling(0.2, 0.3);
            const Conditions now{spin, 81, rotation, 9000};
            const Axis axis{1500, -1500, 4096};
            const auto converged = spectrum({&site, 1}, now, {100, 0}, axis, {1e-3, 100000});
            const auto checkIt = [&](double tolerance) {
                const auto found = spectrum({&site, 1}, now, {100, 0}, axis, {tolerance, 0});
                QVERIFY2(found->converged && distance(found->sum, converged->sum) < 1.5 * tolerance,
                         qPrintable(
                             QStringLiteral("%1 of spin %2").arg(distance(found->sum, converged->sum)).arg(now.spin)));
            };
            checkIt(1e-2);
            checkIt(1e-3);
            // The powder does not know how the crystal's axes were chosen.
            site.shift = rotated(site.shift, 0.7, 0.8, 2.9);
            site.coupling = rotated(*site.coupling, 0.7, 0.8, 2.9);
            checkIt(1e-3);
        }
    }

    void areas()
    {
        // Per nucleus, in ppm; curves of sites add up to the sum; a descending axis is the ascending one backwards.
        const Site sites[] = {oxygen(), {diagonal(50, 50, 50), std::nullopt, 3}};
        const Conditions now{2.5, 81, Rotation::InfiniteRate};
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
                QVERIFY(
                    std::all_of(coarse->sum.begin(), coarse->sum.end(), [](double value) { return value > -1e-4; }));
            }
        }
        // Wide lines on a short axis are what they are, without images of the circle on which they are added.
        const Site line{diagonal(20, 20, 20), std::nullopt, 1};
        for (const auto &[width, first, last] :
             {std::tuple(30.0, 100.0, -40.0), std::tuple(50.0, 100.0, -40.0), std::tuple(4000.0, 100.0, -40.0),
              std::tuple(30000.0, 100.0, -40.0), std::tuple(1000.0, 23.0, 22.0), std::tuple(81.0, -4.0, -8.0)}) {
            const auto wide = spectrum({&line, 1}, now, {width, 0}, {first, last, 500});
            for (size_t i = 0; i < wide->sum.size(); ++i) {
                const double x = wide->axis.at(i) - 20, w = width / 81;
                const double expected = 0.5 * std::numbers::inv_pi * w / (x * x + 0.25 * w * w);
                QVERIFY2(std::abs(wide->sum[i] - expected) < 3e-3 * expected + 1e-6,
                         qPrintable(QStringLiteral("%1: %2 %3").arg(width).arg(wide->sum[i]).arg(expected)));
            }
        }
        // However wide the line is against the points: nothing is lost at the ends of a pattern.
        for (double eta : {0.0, 0.5, 1.0}) {
            const Site single{rotated(diagonal(20, 5, 1), 1, 2, 3), rotated(coupling(4, eta), 0.4, 1, 2), 1};
            for (Rotation rotation : {Rotation::Static, Rotation::InfiniteRate}) {
                const Conditions field{2.5, 104, rotation};
                const SiteValues values = siteValues(single, field);
                for (double part : {0.05, 0.3, 1.0}) {
                    const double width = part * values.breadth, reach = 0.7 * values.breadth + 2 * width;
                    for (size_t points : {512, 8192}) {
                        const auto wide = spectrum({&single, 1}, field, {0, width * field.larmor},
                                                   {values.centre + reach, values.centre - reach, points});
                        QVERIFY2(isNear(area(*wide), 1, 2e-4)
                                     && isNear(meanOf(*wide), values.centre, 2e-4 * width + 2e-4),
                                 qPrintable(QStringLiteral("%1 %2 %3").arg(eta).arg(part).arg(points)));
                    }
                }
            }
        }
        // A window into a pattern shows what the whole one shows there.
        const auto part = spectrum({sites, 1}, Conditions{2.5, 54, Rotation::Static}, {100, 0}, {100, 50, 1001});
        const auto whole = spectrum({sites, 1}, Conditions{2.5, 54, Rotation::Static}, {100, 0}, {600, -450, 21001});
        for (size_t i = 0; i < 1001; ++i)
            QVERIFY(std::abs(part->sum[i] - whole->sum[10000 + i]) < 0.01 * whole->sum[10000 + i]);
    }

    void fittingAxes()
    {
        const Site site = oxygen();
        for (Rotation rotation : {Rotation::Static, Rotation::MagicAngle, Rotation::InfiniteRate}) {
            const Conditions now{2.5, 81, rotation, 12000};
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
        const auto narrow = fittingAxis({&line, 1}, Conditions{0.5, 100, Rotation::InfiniteRate}, {30, 0}, 1024);
        QVERIFY(std::abs(narrow->first - 7 - 15.8 * 0.3) < 0.2 && std::abs(7 - narrow->last - 15.8 * 0.3) < 0.2);
    }

    void badInput()
    {
        const double nan = std::nan("");
        for (const auto &[spin, larmor, rate, shift, width, last, message] :
             {std::tuple(0.7, 80.0, 1e4, 0.0, 10.0, 50.0, "spin"), std::tuple(0.5, 0.0, 1e4, 0.0, 10.0, 50.0, "Larmor"),
              std::tuple(0.5, nan, 1e4, 0.0, 10.0, 50.0, "Larmor"), std::tuple(0.5, 80.0, 0.0, 0.0, 10.0, 50.0, "rate"),
              std::tuple(0.5, 80.0, 1e-3, 0.0, 10.0, 50.0, "sidebands"),
              std::tuple(0.5, 80.0, 1e4, nan, 10.0, 50.0, "shift tensor"),
              std::tuple(0.5, 80.0, 1e4, 1e9, 10.0, 50.0, "shift tensor"),
              std::tuple(0.5, 80.0, 1e4, 0.0, -1.0, 50.0, "width"), std::tuple(0.5, 80.0, 1e4, 0.0, 10.0, 0.0, "range"),
              std::tuple(0.5, 80.0, 1e4, 0.0, 10.0, double(INFINITY), "range")}) {
            const Site site{diagonal(shift, 0, 10), std::nullopt, 1};
            const Conditions now{spin, larmor, Rotation::MagicAngle, rate};
            const QByteArray told = failure([&, width = width, last = last] {
                spectrum({&site, 1}, now, {width, 0}, {0, last, 128});
            });
            QVERIFY2(told.contains(message), told + " instead of " + message);
        }
    }

    void fits()
    {
        const Site site = oxygen();
        const Conditions now{2.5, 81, Rotation::InfiniteRate};
        const auto truth = spectrum({&site, 1}, now, {120, 0}, {200, -50, 2000}, {1e-4, 0});
        Measured measured;
        Numbers random(1);
        for (size_t i = 0; i < truth->sum.size(); ++i) {
            const double noise = random(-5e-3, 5e-3);
            measured.ppm.push_back(truth->axis.at(i));
            measured.intensity.push_back(1000 * (truth->sum[i] + noise * truth->sum[1000]));
        }
        Site start = site;
        for (size_t i : {0, 4, 8})
            start.shift[i] += 7.5;
        for (double &element : *start.coupling)
            element *= 1.02;
        const auto agrees = [](const FittedValue &fitted, double value, double limit) {
            return std::abs(fitted.value - value) < 4 * fitted.error + 1e-3 * std::abs(value) && fitted.error > 0
                && fitted.error < limit;
        };
        // Also from lines that no point would show, and from wide ones.
        for (double width : {0.0, 0.5, 60.0, 9000.0}) {
            const auto found =
                fitSpectrum({&start, 1}, now, {width, 0}, measured, {true, true, false, true}, {-30, 30});
            QVERIFY(found && found->converged);
            QVERIFY(agrees(found->reference, -7.5, 0.05));
            QVERIFY(agrees(found->lorentzian, 120, 3));
            QVERIFY(agrees(found->scale, 1 / 1.02, 1e-3));
            QVERIFY(std::abs(found->intensity - 1000) < 5);
            QCOMPARE(found->gaussian.value, 0.0);
            QCOMPARE(found->curve.size(), measured.ppm.size());
        }
        // Every tenth point, farther apart than half a line, and a range that shows one sideband: what was given
        // decides.
        const Conditions spun{2.5, 81, Rotation::MagicAngle, 6000};
        const auto sharp = spectrum({&site, 1}, spun, {60, 0}, {200, -50, 20000}, {1e-4, 0});
        for (const auto &[first, last, every, width] :
             {std::tuple(0, 20000, 40, 20.0), std::tuple(0, 20000, 40, 300.0), std::tuple(7000, 11000, 1, 60.0)}) {
            Measured part;
            for (int i = first; i < last; i += every) {
                part.ppm.push_back(sharp->axis.at(size_t(i)));
                part.intensity.push_back(sharp->sum[size_t(i)]);
            }
            const auto found = fitSpectrum({&site, 1}, spun, {width, 0}, part, {}, {-200, 200});
            QVERIFY2(
                found && std::abs(found->reference.value) < 0.01 && std::abs(found->lorentzian.value - 60) < 0.5,
                qPrintable(
                    QStringLiteral("%1: %2 %3").arg(width).arg(found->reference.value).arg(found->lorentzian.value)));
        }

        Measured few = measured;
        few.ppm.resize(4);
        few.intensity.resize(4);
        QVERIFY_THROWS_EXCEPTION(std::invalid_argument, fitSpectrum({&site, 1}, now, {60, 0}, few, {}));
    }

    void stops()
    {
        const Site site = oxygen();
        const Conditions now{2.5, 81, Rotation::MagicAngle, 5000};
        QVERIFY(!spectrum({&site, 1}, now, {30, 0}, {500, -500, 1024}, {1e-3, 1e6},
                          [](double part) { return part < 0.01; }));
        std::vector<double> points(12);
        std::iota(points.begin(), points.end(), 1.0);
        QVERIFY(!fitSpectrum({&site, 1}, now, {30, 0}, {points, points}, {}, {-5, 5}, [](double) { return false; }));
    }
};

QTEST_APPLESS_MAIN(tst_Powder)
#include "tst_powder.moc"
