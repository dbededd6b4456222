// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/TextLayout.h"

#include <QStringList>

/// What the names of columns and the lines above a table say, in English and German.
namespace Workbench::ColumnNames {

struct Meaning {
    TextLayout::Role role = TextLayout::Role::Ignored; ///< Ignored: none is stated
    TextLayout::Unit unit = TextLayout::Unit::Unknown;
    bool isOther = false; ///< an error, a width, a shielding...: neither shift nor height, whatever its unit

    bool statesRole() const { return role != TextLayout::Role::Ignored; }
    bool statesPosition() const { return role == TextLayout::Role::Position || role == TextLayout::Role::PositionF1; }
    bool isKnown() const { return isOther || statesRole(); }
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
/// "δ" and "shift" say more than a unit, and "δiso" says more than they do: 0 to 2.
int shiftRank(const QString &name);
/// "ppm", "[Hz]", "a.u." and nothing, which stand below the name of a column.
bool isUnit(const QString &name);
/// A number, which may have a unit: "20", "100.6 MHz".
bool isAmount(const QString &name);
/// A header may be no more than a nucleus.
bool isNucleus(const QString &name);
/// "ppm", "Shift [ppm]" and "δ(13C)", and nothing else.
bool isAxisName(const QString &name);
/// The words of a line, one for each column; those of "chemical shift" and "δ (ppm)" belong together, and those of
/// "peak position" unless the first column counts.
QStringList namesBetweenBlanks(QString line, bool firstCounts);

/// "ppm", "Hz" and "kHz", in any case.
TextLayout::Unit unitNamed(const QString &text);
/// In MHz, the only frequency that the lines name; 0 where there is none, or several.
double frequencyIn(const QStringList &lines);
/// The unit of the positions in a line above the table: of its own, or behind a word for them.
TextLayout::Unit unitIn(const QString &line);

} // namespace Workbench::ColumnNames
