// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/SiteTensors.h"

#include <QMap>

#include <Eigen/Dense>
#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

/// Tensors belong to an atom by label and index.
QMap<std::pair<QStringList, int>, DoubleVector> tensorsOf(const QVariantMap &data, const char *key)
{
    QMap<std::pair<QStringList, int>, DoubleVector> tensors;
    for (const QVariant &value : data.value(QLatin1String(key)).toMap()) {
        const QVariantMap map = value.toMap();
        const auto tensor = map.value(QStringLiteral("tensor")).value<DoubleVector>();
        const bool isTensor = tensor.size() == 9
            && std::all_of(tensor.begin(), tensor.end(), [](double element) { return std::isfinite(element); });
        if (isTensor)
            tensors.insert(
                {map.value(QStringLiteral("labels")).toStringList(), map.value(QStringLiteral("No")).toInt()}, tensor);
    }
    return tensors;
}

} // namespace

std::vector<SiteTensors> SiteTensors::fromData(const QVariantMap &data)
{
    const auto shieldings = tensorsOf(data, "shieldings");
    const auto gradients = tensorsOf(data, "EFG");
    const bool numbered = data.value(QStringLiteral("numberToLabel")).toBool();
    std::vector<SiteTensors> atoms;
    for (const QVariant &value : data.value(QStringLiteral("atoms")).toMap()) {
        const QVariantMap map = value.toMap();
        SiteTensors atom;
        const QStringList labels = map.value(QStringLiteral("labels")).toStringList();
        const int number = map.value(QStringLiteral("No")).toInt();
        atom.record = map.value(QStringLiteral("recordNo")).toInt();
        atom.element = QString::fromLatin1(map.value(QStringLiteral("type")).toByteArray());
        atom.label = labels.value(0) + (numbered ? QString() : QStringLiteral(".%1").arg(number));
        const auto position = map.value(QStringLiteral("pos")).value<DoubleVector>();
        if (position.size() == 3)
            std::copy(position.begin(), position.end(), atom.position.begin());
        atom.shielding = shieldings.value({labels, number});
        atom.gradient = gradients.value({labels, number});
        atoms.push_back(atom);
    }
    // The map has its entries in the order of their keys as texts.
    std::sort(atoms.begin(), atoms.end(),
              [](const SiteTensors &a, const SiteTensors &b) { return a.record < b.record; });
    return atoms;
}

PrincipalAxes::PrincipalAxes(const DoubleVector &tensor)
{
    const Eigen::Matrix3d raw = Eigen::Map<const Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(tensor.data());
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(Eigen::Matrix3d(0.5 * (raw + raw.transpose())));
    for (int k = 0; k < 3; ++k) {
        values[size_t(k)] = solver.eigenvalues()[k];
        for (int axis = 0; axis < 3; ++axis)
            axes[size_t(k)][size_t(axis)] = solver.eigenvectors()(axis, k);
    }
}

} // namespace Workbench
