// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"
#include "formats/TextLayout.h"

#include <optional>

namespace Workbench {

/// Peaks in the running text of a publication: "13C NMR (100 MHz, CDCl3): δ 170.2 (C-1), 133.3, 21.5 ppm."
namespace PublishedPeaks {

/// Also the shifts alone, in one line: "[170.2, 133.3, 21.5]". None where the lines are no such text: what follows
/// "NMR" or "δ" on its line is no shift. From there on each entry up to the full stop must be one; the others, and a
/// second list, are errors that name `source` and the line.
std::optional<MeasuredPeaks> parse(const std::vector<TextLine> &lines, const QString &source);

/// What stands in brackets behind a shift, or in a field beside it: "s", "(br d, J = 8.1 Hz)", "dd (8.1), C-1".
bool beginsWithMultiplet(const QString &remarks);

/// What they tell apart from multiplet and couplings: the number of nuclei and names.
void annotate(MeasuredPeak &peak, const QString &remarks);

/// Numbers of nuclei mean something only where all are told; otherwise none is used, and a note says so.
void dropPartialCounts(std::vector<MeasuredPeak> &peaks, QStringList &notes);

} // namespace PublishedPeaks

} // namespace Workbench
