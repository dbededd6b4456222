// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

namespace Magres {

/// Dipolar coupling of two nuclei, with the constant factor of the pair computed once.
class DipolarCoupling {
public:
    DipolarCoupling(const QByteArray &nucleusA, const QByteArray &nucleusB);

    /// kHz, for a distance in Angstrom: -mu0 hbar gammaA gammaB / (4 pi^2 r^3), which is twice the usual coupling
    /// constant (M. H. Levitt, Spin Dynamics). Signs of gyromagnetic ratios are not considered:
    /// always negative.
    double operator()(double distance) const
    {
        const double r = distance * 1e-10;
        constexpr double fourPiSquared = 39.47841760436263;
        return m_numerator / (r * fourPiSquared * r * r) / 1000.0;
    }

private:
    double m_numerator;
};

} // namespace Magres
