// SPDX-License-Identifier: BSD-3-Clause
#include "parameters/MagresTensor.h"

#include "parameters/MapConversion.h"

#include <cmath>

namespace Magres {

MagresTensor::MagresTensor(const QByteArrayList &labels_, qint32 No_, const Tensor &tensor_)
    : labels(labels_), No(No_), tensor(tensor_), principalValues(Magres::principalValues(tensor_))
{
}

double MagresTensor::iso() const
{
    return (tensor[0] + tensor[4] + tensor[8]) / 3.0;
}

double MagresTensor::aniso() const
{
    if (!principalValues)
        return 0.0;
    const auto &[yy, xx, zz] = *principalValues;
    return zz - (xx + yy) * 0.5;
}

double MagresTensor::assym() const
{
    if (!principalValues)
        return 0.0;
    const auto &[yy, xx, zz] = *principalValues;
    return (yy - xx) / (zz - iso());
}

double MagresTensor::eq() const
{
    return principalValues ? std::abs((*principalValues)[2]) : 0.0;
}

double MagresTensor::qassym() const
{
    if (!principalValues)
        return 0.0;
    const auto &[yy, xx, zz] = *principalValues;
    return (std::abs(xx) - std::abs(yy)) / std::abs(zz);
}

double MagresTensor::Cq(double quadrupoleMoment) const
{
    // e Q Vzz / h for Vzz in atomic units and Q in fm^2, in MHz. The customary value of this conversion; the constants
    // of today would make it 2.3496.
    constexpr double megahertzPerAtomicUnitAndFm2 = 2.3489;
    return quadrupoleMoment == 0.0 ? 0.0 : eq() * (quadrupoleMoment * megahertzPerAtomicUnitAndFm2);
}

double MagresTensor::secondOrderQuadShift(const QByteArray &isotope, double quadrupoleMoment, double frequencyMHz,
                                          int m) const
{
    if (isotope != "14N" && isotope != "2H" && isotope != "6Li")
        return 0.0;
    // -(3/40) (C/nu)^2 [I(I+1) - 9m(m-1) - 3] / [I^2 (2I-1)^2] with I = 1, so that I(I+1) = 2 and the divisor is 1
    // (A. Samoson, Chem. Phys. Lett. 119 (1985) 29). The asymmetry enters as 1 + eta^2 rather than 1 + eta^2/3.
    const double eta = qassym();
    const double x = Cq(quadrupoleMoment) * std::sqrt(eta * eta + 1.0) / frequencyMHz;
    return ((2.0 - 9.0 * m * (m - 1)) - 3.0) * (x * (-0.075) * x) * 1e6;
}

QVariantMap MagresTensor::toMap() const
{
    return {{QStringLiteral("labels"), labelsToStrings(labels)},
            {QStringLiteral("No"), No},
            {QStringLiteral("tensor"), QVariant::fromValue(DoubleVector(tensor.begin(), tensor.end()))}};
}

void MagresTensor::fromMap(const QVariantMap &map)
{
    labels = labelsFromStrings(map.value(QStringLiteral("labels")));
    No = map.value(QStringLiteral("No")).toInt();
    tensor = {};
    copyExactly(map.value(QStringLiteral("tensor")).value<DoubleVector>(), tensor);
    principalValues = Magres::principalValues(tensor);
}

} // namespace Magres
