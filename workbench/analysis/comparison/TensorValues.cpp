// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/TensorValues.h"

#include <Eigen/Dense>
#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

Eigen::Matrix3d symmetricPart(const Tensor3 &tensor)
{
    const Eigen::Matrix3d raw = Eigen::Map<const Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(tensor.data());
    return 0.5 * (raw + raw.transpose());
}

} // namespace

Vector3 eigenvalues(const Tensor3 &tensor)
{
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(symmetricPart(tensor), Eigen::EigenvaluesOnly);
    const Eigen::Vector3d &values = solver.eigenvalues();
    return {values[0], values[1], values[2]};
}

GradientValues::GradientValues(const Tensor3 &gradient)
{
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(symmetricPart(gradient));
    const Eigen::Vector3d &values = solver.eigenvalues();
    std::array<int, 3> order{0, 1, 2};
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return std::abs(values[a]) < std::abs(values[b]); });
    Vxx = values[order[0]];
    Vyy = values[order[1]];
    Vzz = values[order[2]];
    const Eigen::Vector3d axis = solver.eigenvectors().col(order[2]);
    zAxis = {axis[0], axis[1], axis[2]};
}

double GradientValues::Cq(double quadrupoleMoment) const
{
    // The same customary number as in the plug-in's table.
    constexpr double megahertzPerAtomicUnitAndFm2 = 2.3489;
    return Vzz * (quadrupoleMoment * megahertzPerAtomicUnitAndFm2);
}

double GradientValues::quadrupolarProduct(double quadrupoleMoment) const
{
    return std::abs(Cq(quadrupoleMoment)) * std::sqrt(1 + eta() * eta() / 3);
}

double quadrupoleInducedShift(double quadrupolarProduct, double larmorFrequency, double spin)
{
    const double twice = 2 * spin;
    const bool isHalfInteger = twice == std::floor(twice) && std::fmod(twice, 2) == 1;
    if (spin < 1.5 || !isHalfInteger || larmorFrequency == 0)
        return 0;
    const double ratio = quadrupolarProduct / larmorFrequency;
    const double divisor = spin * (twice - 1);
    return -3.0 / 40 * ratio * ratio * (spin * (spin + 1) - 0.75) / (divisor * divisor) * 1e6;
}

} // namespace Workbench
