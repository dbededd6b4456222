// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/MetaTypes.h"

#include <QStringList>
#include <QVariantMap>

#include <array>
#include <vector>

namespace Workbench {

/// An atom of a data set with its tensors: 9 finite values, row by row, or none.
struct SiteTensors {
    int record = 0; ///< position in the file, from 0
    QString element;
    QString label; ///< as in the file, with the index where labels are shared
    std::array<double, 3> position{}; ///< Angstrom
    DoubleVector shielding; ///< ppm
    DoubleVector gradient; ///< of the electric field, atomic units

    /// From the map form of a data set, in the order of the file.
    static std::vector<SiteTensors> fromData(const QVariantMap &data);
};

/// Eigenvalues, ascending, and unit eigenvectors of a tensor's symmetric part.
struct PrincipalAxes {
    std::array<double, 3> values{};
    std::array<std::array<double, 3>, 3> axes{};

    explicit PrincipalAxes(const DoubleVector &tensor);
};

} // namespace Workbench
