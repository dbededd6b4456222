// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/structure/CrystalStructure.h"

namespace Workbench {

/// Eigenvalues, ascending, and unit eigenvectors of a tensor's symmetric part.
struct PrincipalAxes {
    Vector3 values{};
    std::array<Vector3, 3> axes{};

    explicit PrincipalAxes(const Tensor3 &tensor);
};

} // namespace Workbench
