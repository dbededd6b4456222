// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/Model.h"

#include <Eigen/Dense>

namespace Workbench::Powder {

/// The symmetric part.
inline Eigen::Matrix3d symmetric(const Tensor &tensor)
{
    const Eigen::Matrix3d raw = Eigen::Map<const Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(tensor.data());
    return 0.5 * (raw + raw.transpose());
}

inline Eigen::Matrix3d withoutTrace(const Eigen::Matrix3d &matrix)
{
    return matrix - matrix.trace() / 3 * Eigen::Matrix3d::Identity();
}

} // namespace Workbench::Powder
