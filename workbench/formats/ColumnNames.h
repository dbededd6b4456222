// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/TextLayout.h"

#include <QStringList>

/// What the names of columns and the lines above a table say, in English and German.
namespace Workbench::ColumnNames {

struct Meaning {
    TextLayout::Role role = TextLayout::Role::Ignored;
    TextLayout::Unit unit = TextLayout::Unit::Unknown;
    bool known = false;
};
/// What the name of a column says: "Chemical Shift (ppm)", "δ(1H)", "Hz", "Intensity", "ppm_f1".
Meaning meaningOf(const QString &name);

/// In lower case.
QStringList wordsOf(const QString &name);
/// Shifts of a calculation, which publications put beside the measured ones.
bool isCalculated(const QString &name);
/// "exp", which beside ppm is an intensity and beside "calc" a shift.
bool isMeasured(const QString &name);
/// "Position", which is one along an axis or in a molecule.
bool isCounting(const QString &name);
/// A header may be no more than a nucleus.
bool isNucleus(const QString &name);
/// "ppm" and "Shift [ppm]", and nothing else.
bool isAxisName(const QString &name);

/// The unit that a line above the table speaks of; "100 Hz" is the size of something else.
TextLayout::Unit unitIn(QString line);

} // namespace Workbench::ColumnNames
