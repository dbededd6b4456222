// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariantMap>
#include <QVector3D>

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace Workbench {

/// What is drawn of a molecule description: plain values, no identity.
struct Molecule {
    struct Atom {
        int element = 0; ///< atomic number, 0 unknown
        QVector3D position; ///< Angstrom, relative to the molecule's centre
        bool drawable = false; ///< false for a position that is not finite or absurdly far away
    };

    std::vector<Atom> atoms; ///< in the order of the file, the undrawable ones included
    std::vector<std::pair<int, int>> bonds; ///< each once, first < second, both ends drawable
    /// Cell origin, then the vectors a, b and c; the origin relative to the molecule's centre.
    std::optional<std::array<QVector3D, 4>> cell;

    /// Anything missing or damaged in the description is left out.
    static Molecule fromDescription(const QVariantMap &description);
};

} // namespace Workbench
