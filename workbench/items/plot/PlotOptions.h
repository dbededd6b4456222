// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariantMap>

namespace Workbench {

/// Heights of the contour lines of a 2D spectrum: the lowest and a constant factor from one to the next.
struct ContourLevels {
    double lowest = 0.05; ///< of the largest magnitude
    double factor = 1.6;
    int count = 12; ///< at most, of each sign

    /// The nearest settings that can be drawn.
    ContourLevels bounded() const;
    bool operator==(const ContourLevels &) const = default;
};

/// How a user wants an NMR plot to look. It belongs to the item, whatever is in it.
struct PlotOptions {
    bool sticks = false; ///< at the peaks under 1D curves
    bool crosses = true; ///< at the peaks of 2D spectra
    bool labels = true;
    bool legend = true;
    ContourLevels contours;

    QVariantMap toMap() const;
    /// What is missing or makes no sense stays at its default.
    static PlotOptions fromMap(const QVariantMap &map);
    bool operator==(const PlotOptions &) const = default;
};

} // namespace Workbench
