// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QMap>
#include <QPointF>
#include <QUuid>
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

/// How one spectrum of a plot was changed by hand.
struct TraceStyle {
    double scale = 1.0; ///< of its height
    double offset = 0.0; ///< upwards, in heights of an unscaled spectrum
    int color = -1; ///< of the palette; -1: by its place in the stack

    bool operator==(const TraceStyle &) const = default;
};

/// A region of a 1D spectrum whose area is wanted.
struct IntegralMark {
    QUuid entry;
    double from = 0.0; ///< ppm, the higher one
    double to = 0.0;

    bool operator==(const IntegralMark &) const = default;
};

/// Two places whose distance is wanted. x: F2 in ppm; y: F1 in ppm, or in 1D the part of the plot's height from its
/// top.
struct DistanceMark {
    QPointF from;
    QPointF to;

    bool operator==(const DistanceMark &) const = default;
};

/// How a user wants an NMR plot to look. It belongs to the item, whatever is in it.
struct PlotOptions {
    bool sticks = false; ///< at the peaks under 1D curves
    bool crosses = true; ///< at the peaks of 2D spectra
    bool labels = true;
    bool legend = true;
    bool overlay = false; ///< 1D spectra on one base line instead of one above the other
    bool hertz = false; ///< the axes in Hz instead of ppm
    bool sharesRange = false; ///< of F2, with the other plots of the nucleus that share theirs
    ContourLevels contours;
    QMap<QUuid, TraceStyle> traces; ///< by entry, those that were changed
    QList<IntegralMark> integrals;
    int integralReference = 0; ///< the integral that is set, to `referenceValue`
    double referenceValue = 1.0;
    QList<DistanceMark> distances;

    /// Removes those after the first ones. When the one that was set goes, the first one is 1 again.
    void keepIntegrals(qsizetype count);

    QVariantMap toMap() const;
    /// What is missing or makes no sense stays at its default.
    static PlotOptions fromMap(const QVariantMap &map);
    bool operator==(const PlotOptions &) const = default;
};

} // namespace Workbench
