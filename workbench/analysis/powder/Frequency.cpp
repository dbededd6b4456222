// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Frequency.h"

#include "analysis/powder/Matrices.h"
#include "analysis/powder/Kernels.h"
#include "analysis/powder/Lattice.h"
#include "analysis/powder/Trigonometry.h"

#include <Eigen/Dense>
#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace Workbench::Powder {

namespace {

using Eigen::Matrix3d;
using Eigen::Vector3d;

void setForm(Form &form, const Matrix3d &m)
{
    const double values[] = {m(0, 0), m(1, 1), m(2, 2), 2 * m(0, 1), 2 * m(0, 2), 2 * m(1, 2)};
    std::copy(std::begin(values), std::end(values), form);
}

Matrix3d matrix(const Form &f)
{
    Matrix3d m;
    m << f[0], f[3] / 2, f[4] / 2, f[3] / 2, f[1], f[5] / 2, f[4] / 2, f[5] / 2, f[2];
    return m;
}

Vector3d gradient(const FrequencyForm &form, const Vector3d &b)
{
    const Matrix3d q = matrix(form.coupling);
    const Vector3d qb = q * b;
    return 2 * (matrix(form.quadratic) * b) + 4 * form.quartic * b.dot(qb) * qb;
}

double value(const FrequencyForm &form, const Vector3d &b)
{
    return valueAt(form, {b.x(), b.y(), b.z()});
}

Matrix3d curvature(const FrequencyForm &form, const Vector3d &b)
{
    const Matrix3d q = matrix(form.coupling);
    const Vector3d qb = q * b;
    return 2 * matrix(form.quadratic) + 4 * form.quartic * (b.dot(qb) * q + 2 * qb * qb.transpose());
}

/// Climbs from a direction to the next maximum of sign * form along the sphere: Newton's steps in the tangent plane,
/// damped until they lead upwards, since ridges may be narrow and almost level.
double summit(const FrequencyForm &form, double sign, Vector3d b)
{
    using Eigen::Matrix2d, Eigen::Vector2d;
    double height = sign * value(form, b), damping = 0;
    for (int i = 0; i < 100; ++i) {
        const Vector3d full = sign * gradient(form, b);
        const Vector3d side = b.unitOrthogonal();
        Eigen::Matrix<double, 3, 2> plane;
        plane << side, b.cross(side);
        const Vector2d slope = plane.transpose() * full;
        const Matrix2d bent =
            sign * plane.transpose() * curvature(form, b) * plane - full.dot(b) * Matrix2d::Identity();
        const Vector2d bends = Eigen::SelfAdjointEigenSolver<Matrix2d>(bent).eigenvalues();
        const double scale = bends.cwiseAbs().maxCoeff();
        damping = std::max(damping, 1e-6);
        const double shift = std::max(bends.maxCoeff(), 0.0) + damping * scale;
        const Vector2d step = (shift * Matrix2d::Identity() - bent).inverse() * slope;
        // Less than the last digits are to be gained.
        if (!(slope.dot(step) > 1e-14 * (std::abs(height) + scale)))
            break;
        const Vector3d next = (b + plane * step).normalized();
        const double higher = sign * value(form, next);
        if (higher > height) {
            b = next;
            height = higher;
            damping /= 8;
        } else {
            damping *= 8;
        }
    }
    return height;
}

struct Directions {
    std::vector<double> x, y, z;

    void add(const Vector3d &b)
    {
        x.push_back(b.x());
        y.push_back(b.y());
        z.push_back(b.z());
    }
    Vector3d operator[](size_t i) const { return {x[i], y[i], z[i]}; }

    std::vector<double> frequencies(const FrequencyForm &form) const
    {
        // The loop knows no frequencies below 0.
        const double least = -lowerBound(form);
        FrequencyForm raised = form;
        raised.constant += least;
        std::vector<double> found(x.size());
        kernels().frequencies(&raised, INFINITY, x.size(), x.data(), y.data(), z.data(), found.data());
        for (double &frequency : found)
            frequency -= least;
        return found;
    }

private:
    static double lowerBound(const FrequencyForm &form)
    {
        double quadratic = 0, coupling = 0;
        for (double element : form.quadratic)
            quadratic += std::abs(element);
        for (double element : form.coupling)
            coupling += std::abs(element);
        return form.constant - quadratic - std::abs(form.quartic) * coupling * coupling;
    }
};

/// Spread over a hemisphere.
Directions spread(size_t rows)
{
    Directions directions;
    LatticeRows lattice(rows);
    for (bool more = true; more; more = lattice.advance()) {
        const LatticeRows::Row &row = lattice.row();
        for (const Octant &octant : octants) {
            for (size_t j = 0; j < row.count; ++j)
                directions.add(Vector3d(octant.x * row.x[j], octant.y * row.y[j], row.z[j]));
        }
    }
    return directions;
}

/// Directions of the field at steps of a rotor period, for rotor axes spread over a hemisphere.
struct RotorPeriods {
    static constexpr size_t steps = 16;
    Directions axes = spread(8);
    Directions fields;

    RotorPeriods()
    {
        static const TwiddleTable table(steps);
        const Twiddles circle = table.twiddles();
        const double cosine = std::sqrt(1.0 / 3), sine = std::sqrt(2.0 / 3);
        for (size_t k = 0; k < axes.x.size(); ++k) {
            const Vector3d a = axes[k];
            const Vector3d other = std::abs(a.x()) < 0.6 ? Vector3d::UnitX() : Vector3d::UnitY();
            const Vector3d e1 = a.cross(other).normalized(), e2 = a.cross(e1);
            for (size_t i = 0; i < steps; ++i)
                fields.add(cosine * a + sine * (circle.cosines[i] * e1 + circle.sines[i] * e2));
        }
    }
};

} // namespace

std::vector<Transition> transitions(const Site &site, const Conditions &conditions)
{
    const double larmor = conditions.larmor * 1e6, spin = conditions.spin;
    const Matrix3d shift = symmetric(site.shift) * conditions.larmor; // Hz
    FrequencyForm form{};
    form.constant = shift.trace() / 3;
    setForm(form.quadratic, withoutTrace(shift));
    if (spin < 0.75 || !site.coupling)
        return {{form, 1}};
    const Matrix3d q = withoutTrace(symmetric(*site.coupling)) * 1e6;
    if (q.isZero(0))
        return {{form, 1}};
    std::vector<Transition> found;
    if (std::fmod(spin, 1) == 0) {
        // m to m - 1, first order: 3 (2m - 1) / (4 I (2I - 1)) b.q.b
        for (double m = spin; m > -spin; --m) {
            const double factor = 3 * (2 * m - 1) / (4 * spin * (2 * spin - 1));
            FrequencyForm shifted = form;
            setForm(shifted.quadratic, withoutTrace(shift) + factor * q);
            // Of the matrix elements of I-; their sum is 2/3 I (I + 1) (2I + 1).
            const double weight = (spin + m) * (spin - m + 1) / (2.0 / 3 * spin * (spin + 1) * (2 * spin + 1));
            found.push_back({shifted, weight});
        }
        return found;
    }
    // Central transition to second order: K [tr q^2 / 4 - 3/8 p^2 - 3/2 (b.q^2.b - p^2)] with p = b.q.b.
    const double root = 4 * spin * (2 * spin - 1);
    const double k = 2 / larmor * (4 * spin * (spin + 1) - 3) / (root * root);
    const Matrix3d square = q * q;
    setForm(form.quadratic, withoutTrace(shift - 1.5 * k * square));
    form.constant += k * square.trace() * (0.25 - 0.5);
    setForm(form.coupling, q);
    form.quartic = 9.0 / 8 * k;
    return {{form, 1}};
}

FrequencyForm spinningMean(const FrequencyForm &form)
{
    const Matrix3d q = matrix(form.coupling), square = q * q;
    FrequencyForm result = form;
    // Of p = b.q.b the constant part is 0, and <p^2> = tr q^2 / 9 + 2/9 a.q^2.a - 7/18 (a.q.a)^2 for the axis a.
    result.constant += form.quartic * square.trace() * (1.0 / 9 + 2.0 / 27);
    result.quartic = -7.0 / 18 * form.quartic;
    setForm(result.quadratic, form.quartic * 2 / 9 * withoutTrace(square));
    return result;
}

double mean(const FrequencyForm &form)
{
    const Matrix3d q = matrix(form.coupling);
    return form.constant + form.quartic * 2 / 15 * (q * q).trace();
}

double valueAt(const FrequencyForm &form, const std::array<double, 3> &direction)
{
    const Vector3d b(direction[0], direction[1], direction[2]);
    const double p = b.dot(matrix(form.coupling) * b);
    return form.constant + b.dot(matrix(form.quadratic) * b) + form.quartic * p * p;
}

std::pair<double, double> extremes(const FrequencyForm &form)
{
    static const Directions directions = spread(12);
    const std::vector<double> found = directions.frequencies(form);
    // Of several summits the highest may lie between the directions.
    constexpr size_t starts = 4;
    const auto highest = [&](double sign) {
        std::vector<size_t> order(found.size());
        std::iota(order.begin(), order.end(), size_t(0));
        const auto middle = order.begin() + ptrdiff_t(std::min(starts, order.size()));
        std::partial_sort(order.begin(), middle, order.end(),
                          [&](size_t a, size_t b) { return sign * found[a] > sign * found[b]; });
        double height = -INFINITY;
        for (auto i = order.begin(); i != middle; ++i)
            height = std::max(height, summit(form, sign, directions[*i]));
        return height;
    };
    return {-highest(-1), highest(1)};
}

std::pair<double, double> modulationExtremes(const FrequencyForm &form)
{
    static const RotorPeriods periods;
    const std::vector<double> centres = periods.axes.frequencies(spinningMean(form));
    const std::vector<double> found = periods.fields.frequencies(form);
    double lowest = 0, highest = 0;
    for (size_t i = 0; i < found.size(); ++i) {
        const double difference = found[i] - centres[i / RotorPeriods::steps];
        lowest = std::min(lowest, difference);
        highest = std::max(highest, difference);
    }
    return {lowest, highest};
}

} // namespace Workbench::Powder
