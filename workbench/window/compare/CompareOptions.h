// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariantMap>

#include <optional>

namespace Workbench {

/// How a measurement is compared with structures, as it is kept with the measurement.
struct CompareOptions {
    enum Scale { Fitted, Given, OfSet };

    QString nucleus; ///< "13C"
    int averaging = 0; ///< UniqueSites::Averaging
    Scale referenceKind = Fitted;
    double reference = 0; ///< ppm; of no meaning when it is fitted
    Scale slopeKind = Given;
    double slope = -1;
    double sigma = 0; ///< ppm; 0: not known
    int unmatched = 0; ///< lines that may be left out

    QVariantMap toMap() const;
    /// Nothing for an empty map and for values that make no sense.
    static std::optional<CompareOptions> fromMap(const QVariantMap &map);

    /// In the data map of the measured entry.
    static QString key() { return QStringLiteral("Comparison"); }
};

} // namespace Workbench
