// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QVariant>

#include <vector>

/// The part of a host that handles numbers in variants, in a library that is built without any header of the plug-ins.
namespace ForeignHost {

Q_DECL_EXPORT QVariant variantOf(const std::vector<double> &values);
Q_DECL_EXPORT QVariant variantOf(const QList<std::vector<double>> &lists);
Q_DECL_EXPORT std::vector<double> numbers(const QVariant &variant);
Q_DECL_EXPORT QList<std::vector<double>> lists(const QVariant &variant);

/// As a host does that has been working for a while.
Q_DECL_EXPORT void useTypes();

} // namespace ForeignHost
