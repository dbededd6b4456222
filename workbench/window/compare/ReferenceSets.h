// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/PowderSites.h"
#include "analysis/comparison/SiteTable.h"
#include "formats/ReferenceSet.h"

#include <QStringList>

namespace Workbench {

/// The reference sets that the window works with, by nucleus. They are kept in the user's settings, as the names of
/// their files.
namespace ReferenceSets {

/// From now on the set of its nucleus. New spectra start with its reference and slope. Throws std::runtime_error for a
/// file that is none.
ReferenceSet use(const QString &fileName);

/// None for a nucleus without, or whose file can no longer be read.
std::optional<ReferenceSet> of(const QString &nucleus);
/// All of them, for further columns of tables; by nucleus and by element.
QMap<QString, SiteTable::Scale> scales();
/// What a powder spectrum of the nucleus starts with: reference and slope of its set, or placeholders.
PowderSettings powderStart(const QString &nucleus);
/// Empty for none.
QString fileOf(const QString &nucleus);

} // namespace ReferenceSets

} // namespace Workbench
