// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

namespace Magres {

/// Nuclear ground-state properties by nucleus name ("27Al"), which the computation takes from its surroundings.
class NuclearProperties {
public:
    virtual ~NuclearProperties() = default;

    /// As text: "1/2", "3/2", "1"; empty for an unknown nucleus.
    virtual QString spin(const QByteArray &nucleus) const = 0;
    /// fm^2 (1 fm^2 = 10 millibarn); 0 for an unknown nucleus.
    virtual double quadrupoleMoment(const QByteArray &nucleus) const = 0;
    /// Percent of the element; 0 for an unknown nucleus.
    virtual double naturalAbundance(const QByteArray &nucleus) const = 0;
};

} // namespace Magres
