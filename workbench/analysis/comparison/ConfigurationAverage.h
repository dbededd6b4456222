// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/structure/CrystalStructure.h"

namespace Workbench {

/// Mean parameters of configurations of one system: snapshots of its dynamics, members of a thermal ensemble.
class ConfigurationAverage {
public:
    /// Standard errors of an atom's means; none without the tensor, or of a single configuration.
    struct AtomErrors {
        std::optional<double> shielding; ///< of the isotropic shielding, ppm
        std::optional<double> gradient; ///< of the gradient along the axis of the mean's Vzz, atomic units
    };

    /// Atoms match by their order and species; labels and numbers may differ, unless they tell of another order. Throws
    /// std::runtime_error, with the name to show, when atoms differ from those of the first, or one has a tensor that
    /// another lacks; nothing is added then.
    void add(const CrystalStructure &structure, const QString &name);

    int count() const { return m_count; }
    /// Mean tensors, positions (of the images nearest to the first configuration's) and lattice. Needs one
    /// configuration.
    CrystalStructure mean() const;
    /// By atom. Configurations count as independent of each other.
    std::vector<AtomErrors> errors() const;

private:
    /// Of a symmetric tensor's xx, yy, zz, xy, xz, yz, less the first configuration's: sums and sums of products.
    struct Moments {
        std::array<double, 6> sum{};
        std::array<std::array<double, 6>, 6> product{};

        void add(const Tensor3 &tensor, const Tensor3 &first);
        /// Of the mean of the combination of the elements with these factors.
        double standardError(const std::array<double, 6> &factors, int count) const;
    };
    struct Sums {
        Vector3 displacement{};
        Tensor3 shielding{}, gradient{}; ///< less the first configuration's
        Moments shieldingMoments, gradientMoments;
    };

    void check(const CrystalStructure &structure, const QString &name) const;

    int m_count = 0;
    QString m_firstName;
    CrystalStructure m_first;
    LatticeVectors m_latticeSum{};
    std::vector<Sums> m_sums;
};

} // namespace Workbench
