// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/PowderSites.h"
#include "analysis/comparison/SiteTable.h"
#include "data/SpectrumEntry.h"
#include "formats/ReferenceSet.h"

#include <QStringList>

namespace Workbench {

class MainScene;

/// The reference sets that the window works with, by nucleus. They are kept in the user's settings as they were when
/// they were chosen: what becomes of their files later changes nothing.
namespace ReferenceSets {

/// From now on the set of its nucleus. New spectra start with its reference and slope. Throws std::runtime_error for a
/// file that is none.
ReferenceSet use(const QString &fileName);

/// No set any more; the nuclei of those that there were.
QStringList forget();

/// None for a nucleus without.
std::optional<ReferenceSet> of(const QString &nucleus);
/// All of them, for further columns of tables; by nucleus and by element.
QMap<QString, SiteTable::Scale> scales();
/// What a powder spectrum of the nucleus starts with: reference and slope of its set, or placeholders.
PowderSettings powderStart(const QString &nucleus);
/// What is wrong with reference and slope of a simulated spectrum: they are those of a set, but the calculation was
/// made in another way.
QStringList doubtsAbout(const SpectrumEntry &entry, const MainScene &scene);
/// Where the set came from; empty for none.
QString fileOf(const QString &nucleus);

} // namespace ReferenceSets

} // namespace Workbench
