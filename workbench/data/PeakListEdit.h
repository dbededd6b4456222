// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Spectrum.h"

namespace Workbench {

/// Changes to a host's peak map {"PeakList", "ID", "PosUnits"}. Whatever else a peak holds stays with it.
namespace PeakListEdit {

/// Places in ppm (F1 is 0 in one dimension) and height of a peak.
struct Place {
    double f2 = 0.0;
    double f1 = 0.0;
    double height = 0.0;
};

QVariantMap added(const QVariantMap &peaks, const Place &place);
QVariantMap moved(const QVariantMap &peaks, const QList<QUuid> &which, const Place &to);
QVariantMap removed(const QVariantMap &peaks, const QList<QUuid> &which);
/// Peaks that are not named keep their labels.
QVariantMap labelled(const QVariantMap &peaks, const QHash<QUuid, QString> &labels);

} // namespace PeakListEdit

} // namespace Workbench
