// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/PrincipalAxes.h"

#include <Eigen/Dense>
#include <Eigen/Eigenvalues>

namespace Workbench {

PrincipalAxes::PrincipalAxes(const Tensor3 &tensor)
{
    const Eigen::Matrix3d raw = Eigen::Map<const Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(tensor.data());
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(Eigen::Matrix3d(0.5 * (raw + raw.transpose())));
    for (int k = 0; k < 3; ++k) {
        values[std::size_t(k)] = solver.eigenvalues()[k];
        for (int axis = 0; axis < 3; ++axis)
            axes[std::size_t(k)][std::size_t(axis)] = solver.eigenvectors()(axis, k);
    }
}

} // namespace Workbench
