// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Model.h"

#include "analysis/powder/Matrices.h"
#include "analysis/powder/Frequency.h"

#include <Eigen/Dense>
#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>
#include <complex>
#include <stdexcept>

namespace Workbench::Powder {

namespace {

using Eigen::Matrix3d;

bool isFinite(const Tensor &tensor)
{
    return std::all_of(tensor.begin(), tensor.end(), [](double value) { return std::isfinite(value); });
}

bool isHalfInteger(double spin)
{
    return std::fmod(2 * spin, 2) == 1;
}

} // namespace

void check(const Conditions &conditions)
{
    const double spin = conditions.spin;
    if (!(spin >= 0.5 && spin <= 10) || std::fmod(2 * spin, 1) != 0)
        throw std::invalid_argument("The spin must be a multiple of 1/2 from 1/2 to 10");
    // From the slowest nucleus in the field of the Earth to far beyond any magnet.
    if (!(conditions.larmor >= 1e-6 && conditions.larmor <= 1e5))
        throw std::invalid_argument("The Larmor frequency must be between 0.000001 and 100000 MHz");
    if (conditions.rotation == Rotation::MagicAngle && !(conditions.rate > 0 && conditions.rate <= 1e7))
        throw std::invalid_argument("The spinning rate must be above 0 and at most 10000000 Hz");
}

void check(const Site &site, const Conditions &conditions)
{
    if (!isFinite(site.shift))
        throw std::invalid_argument("The shift tensor holds a value that is not a number");
    if (site.coupling && !isFinite(*site.coupling))
        throw std::invalid_argument("The quadrupole coupling tensor holds a value that is not a number");
    const auto most = [](const Tensor &tensor) {
        return std::abs(*std::max_element(tensor.begin(), tensor.end(),
                                          [](double a, double b) { return std::abs(a) < std::abs(b); }));
    };
    if (most(site.shift) > 1e6)
        throw std::invalid_argument("The shift tensor is larger than 1000000 ppm");
    if (site.coupling && conditions.spin > 0.75 && most(*site.coupling) > 1e5)
        throw std::invalid_argument("The quadrupole coupling is larger than 100000 MHz");
    if (!(site.multiplicity > 0 && std::isfinite(site.multiplicity)))
        throw std::invalid_argument("The number of nuclei of a site must be above 0");
}

SiteValues siteValues(const Site &site, const Conditions &conditions)
{
    SiteValues values;
    const Matrix3d shift = symmetric(site.shift);
    values.shift = shift.trace() / 3;
    const Eigen::SelfAdjointEigenSolver<Matrix3d> shifts(shift, Eigen::EigenvaluesOnly);
    values.span = shifts.eigenvalues()[2] - shifts.eigenvalues()[0];
    if (site.coupling && conditions.spin > 0.75) {
        const Eigen::SelfAdjointEigenSolver<Matrix3d> couplings(withoutTrace(symmetric(*site.coupling)),
                                                                Eigen::EigenvaluesOnly);
        const Eigen::Vector3d &q = couplings.eigenvalues(); // ascending; the sum is 0
        const bool lowest = -q[0] > q[2];
        values.coupling = lowest ? q[0] : q[2];
        if (values.coupling != 0)
            values.asymmetry = (lowest ? q[2] - q[1] : q[1] - q[0]) / std::abs(values.coupling);
    }
    double lowest = INFINITY, highest = -INFINITY;
    for (const Transition &transition : transitions(site, conditions)) {
        values.centre += transition.weight * mean(transition.form) / conditions.larmor;
        const auto [low, high] =
            extremes(conditions.rotation == Rotation::Static ? transition.form : spinningMean(transition.form));
        lowest = std::min(lowest, low);
        highest = std::max(highest, high);
    }
    values.quadrupolarShift = isHalfInteger(conditions.spin) ? values.centre - values.shift : 0;
    values.breadth = (highest - lowest) / conditions.larmor;
    return values;
}

std::optional<double> secondOrderError(const Site &site, const Conditions &conditions)
{
    const double spin = conditions.spin;
    if (!isHalfInteger(spin) || spin < 1 || !site.coupling)
        return std::nullopt;
    using Complex = std::complex<double>;
    using Operator = Eigen::MatrixXcd;
    const int size = int(2 * spin + 1);
    Operator z = Operator::Zero(size, size), plus = z;
    for (int i = 0; i < size; ++i) {
        const double m = spin - i;
        z(i, i) = m;
        if (i > 0)
            plus(i - 1, i) = std::sqrt(spin * (spin + 1) - m * (m + 1));
    }
    const Operator minus = plus.adjoint();
    const Operator axes[] = {0.5 * (plus + minus), Complex(0, -0.5) * (plus - minus), z};
    const Matrix3d q = withoutTrace(symmetric(*site.coupling)) * 1e6;
    if (q.isZero(0))
        return 0;
    Site bare;
    bare.coupling = site.coupling;
    const FrequencyForm form = transitions(bare, conditions).front().form;
    const double larmor = conditions.larmor * 1e6;
    // Principal axes, and directions between them: there the frequency has its turning points.
    const Eigen::SelfAdjointEigenSolver<Matrix3d> principal(q);
    double worst = 0;
    for (int code = 1; code < 27; ++code) {
        const Eigen::Vector3d local(code % 3 - 1, code / 3 % 3 - 1, code / 9 - 1);
        if (local.isZero(0))
            continue;
        const Eigen::Vector3d b = principal.eigenvectors() * local.normalized();
        // Quadrupole tensor in a frame with the field along z: I.q.I / (2 I (2I - 1)).
        const Matrix3d turn = Eigen::Quaterniond::FromTwoVectors(b, Eigen::Vector3d::UnitZ()).toRotationMatrix();
        const Matrix3d turned = turn * q * turn.transpose();
        Operator hamiltonian = larmor * z;
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j)
                hamiltonian += turned(i, j) / (2 * spin * (2 * spin - 1)) * (axes[i] * axes[j]);
        }
        const Eigen::SelfAdjointEigenSolver<Operator> levels(hamiltonian);
        const auto level = [&](int state) -> std::optional<double> {
            int best = 0;
            const double overlap = levels.eigenvectors().row(state).cwiseAbs2().maxCoeff(&best);
            return overlap > 0.5 ? std::optional(levels.eigenvalues()[best]) : std::nullopt;
        };
        const auto upper = level(size / 2 - 1), lower = level(size / 2); // m = 1/2 and -1/2
        if (!upper || !lower)
            return std::nullopt;
        worst = std::max(worst, std::abs(*upper - *lower - larmor - valueAt(form, {b.x(), b.y(), b.z()})));
    }
    return worst;
}

TripleQuantumPosition tripleQuantumPosition(const SiteValues &values)
{
    return {values.shift - 10.0 / 17 * values.quadrupolarShift, values.shift + values.quadrupolarShift};
}

} // namespace Workbench::Powder
