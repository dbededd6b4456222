// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Model.h"

#include "analysis/powder/Matrices.h"
#include "analysis/powder/Frequency.h"
#include "analysis/powder/GslErrors.h"

#include <Eigen/Dense>
#include <Eigen/Eigenvalues>

#include <gsl/gsl_eigen.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <memory>
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

using Complex = std::complex<double>;

/// Of one spin, in the states of its z component, from the highest on; row by row.
struct Operator {
    explicit Operator(size_t states) : size(states), elements(states * states) { }
    Complex &at(size_t row, size_t column) { return elements[row * size + column]; }
    const Complex &at(size_t row, size_t column) const { return elements[row * size + column]; }

    size_t size;
    std::vector<Complex> elements;
};

Operator product(const Operator &a, const Operator &b)
{
    Operator result(a.size);
    for (size_t i = 0; i < a.size; ++i) {
        for (size_t k = 0; k < a.size; ++k) {
            for (size_t j = 0; j < a.size; ++j)
                result.at(i, j) += a.at(i, k) * b.at(k, j);
        }
    }
    return result;
}

/// x, y and z of the spin.
std::array<Operator, 3> spinOperators(double spin)
{
    const auto size = size_t(2 * spin + 1);
    Operator x(size), y(size), z(size);
    for (size_t i = 0; i < size; ++i) {
        const double m = spin - double(i);
        z.at(i, i) = m;
        if (i == 0)
            continue;
        const double half = 0.5 * std::sqrt(spin * (spin + 1) - m * (m + 1));
        x.at(i - 1, i) = x.at(i, i - 1) = half;
        y.at(i - 1, i) = Complex(0, -half);
        y.at(i, i - 1) = Complex(0, half);
    }
    return {x, y, z};
}

/// The energies of the states that are for the most part the given ones; none where a state is too mixed to say.
std::optional<std::array<double, 2>> levels(Operator hamiltonian, const std::array<size_t, 2> &states)
{
    returnGslErrors();
    const size_t size = hamiltonian.size;
    std::vector<double> energies(size);
    Operator vectors(size); // columns
    const auto view = [size](Operator &of) {
        return gsl_matrix_complex_view_array(reinterpret_cast<double *>(of.elements.data()), size, size);
    };
    gsl_matrix_complex_view matrix = view(hamiltonian), found = view(vectors);
    gsl_vector_view values = gsl_vector_view_array(energies.data(), size);
    const std::unique_ptr<gsl_eigen_hermv_workspace, decltype(&gsl_eigen_hermv_free)> workspace(
        gsl_eigen_hermv_alloc(size), gsl_eigen_hermv_free);
    gsl_eigen_hermv(&matrix.matrix, &values.vector, &found.matrix, workspace.get());

    std::array<double, 2> result{};
    for (size_t i = 0; i < states.size(); ++i) {
        size_t best = 0;
        for (size_t k = 1; k < size; ++k) {
            if (std::norm(vectors.at(states[i], k)) > std::norm(vectors.at(states[i], best)))
                best = k;
        }
        if (!(std::norm(vectors.at(states[i], best)) > 0.5))
            return std::nullopt;
        result[i] = energies[best];
    }
    return result;
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
    const std::array<Operator, 3> axes = spinOperators(spin);
    std::vector<Operator> products; // of each two
    for (const Operator &left : axes) {
        for (const Operator &right : axes)
            products.push_back(product(left, right));
    }
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
        Matrix3d turn;
        turn.row(0) = b.unitOrthogonal();
        turn.row(1) = b.cross(Eigen::Vector3d(turn.row(0)));
        turn.row(2) = b;
        const Matrix3d turned = turn * q * turn.transpose() / (2 * spin * (2 * spin - 1));
        Operator hamiltonian(axes[2].size);
        for (size_t i = 0; i < hamiltonian.elements.size(); ++i) {
            hamiltonian.elements[i] = larmor * axes[2].elements[i];
            for (size_t k = 0; k < products.size(); ++k)
                hamiltonian.elements[i] += turned(ptrdiff_t(k / 3), ptrdiff_t(k % 3)) * products[k].elements[i];
        }
        const size_t upper = axes[2].size / 2 - 1; // m = 1/2
        const auto energies = levels(std::move(hamiltonian), {upper, upper + 1});
        if (!energies)
            return std::nullopt;
        const double exact = (*energies)[0] - (*energies)[1] - larmor;
        worst = std::max(worst, std::abs(exact - valueAt(form, {b.x(), b.y(), b.z()})));
    }
    return worst;
}

TripleQuantumPosition tripleQuantumPosition(const SiteValues &values)
{
    return {values.shift - 10.0 / 17 * values.quadrupolarShift, values.shift + values.quadrupolarShift};
}

} // namespace Workbench::Powder
