// SPDX-License-Identifier: BSD-3-Clause
#include "ForeignHost.h"

namespace ForeignHost {

QVariant variantOf(const std::vector<double> &values)
{
    return QVariant::fromValue(values);
}

QVariant variantOf(const QList<std::vector<double>> &lists)
{
    return QVariant::fromValue(lists);
}

std::vector<double> numbers(const QVariant &variant)
{
    return variant.value<std::vector<double>>();
}

QList<std::vector<double>> lists(const QVariant &variant)
{
    return variant.value<QList<std::vector<double>>>();
}

void useTypes()
{
    qRegisterMetaType<std::vector<double>>();
    qRegisterMetaType<QList<std::vector<double>>>();
}

} // namespace ForeignHost
