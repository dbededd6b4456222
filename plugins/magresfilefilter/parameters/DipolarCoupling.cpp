// SPDX-License-Identifier: BSD-3-Clause
#include "parameters/DipolarCoupling.h"

#include "parameters/Nuclei.h"

namespace Magres {

DipolarCoupling::DipolarCoupling(const QByteArray &nucleusA, const QByteArray &nucleusB)
{
    constexpr double protonGyromagneticRatio = 267522187.44; // rad s^-1 T^-1, CODATA 2018
    constexpr double minusMu0Hbar = -1.3252140299094303e-40; // -mu0 * hbar, SI
    const double fH = isotopeFrequency("1H");
    const double fA = isotopeFrequency(nucleusA);
    const double fB = isotopeFrequency(nucleusB);
    m_numerator = (fA / fH) * protonGyromagneticRatio * minusMu0Hbar * (fB / fH) * protonGyromagneticRatio;
}

} // namespace Magres
