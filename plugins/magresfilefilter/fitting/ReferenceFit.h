// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "synthesis/MagresSpecParams.h"

namespace Magres {

/// The peaks of a stack of a simulated and an experimental spectrum as columns, one value per peak; positions in ppm.
/// The order carries no pairing.
struct PeakColumns {
    QList<double> simulatedF2;
    QList<double> simulatedF1;
    QList<double> heights; ///< of the simulated peaks
    QList<double> experimentalF2;
    QList<double> experimentalF1;
};

/// The columns of two peak lists of the host (lists of maps with "Pos" and "Height"). Missing positions count as 0.
/// Throws TPluginError when the lists differ in length.
PeakColumns peakColumns(const QVariantList &simulated, const QVariantList &experimental);

/// The axis unit words behind RMSD values.
struct AxisUnits {
    QString F2;
    QString F1;
};

/// Moves the references of the record's nuclei by the offsets of the peaks (one reference for both dimensions if they
/// have one nucleus: F2 decides then). Returns the report for the user. Throws TPluginError, with the record unchanged,
/// when a position or height is not a number.
QString fitReference(PeakColumns columns, const AxisUnits &units, MagresSpecParams &parameters);

/// How far the two spectra lie apart, as a text for the user. Throws TPluginError as fitReference() does.
QString rmsdReport(const PeakColumns &columns, const AxisUnits &units, const MagresSpecParams &parameters);

} // namespace Magres
