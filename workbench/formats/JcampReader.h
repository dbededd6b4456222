// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QByteArray>

namespace Workbench {

/// NMR spectra and peak lists in JCAMP-DX files: R. S. McDonald, P. A. Wilks, Appl. Spectrosc. 42 (1988) 151 for the
/// tables, A. N. Davies, P. Lampen, Appl. Spectrosc. 47 (1993) 1093 for the NMR records.
///
/// Read are tables (X++(Y..Y)), as XYDATA and as the real page of an NTUPLES block, two-dimensional NTUPLES with a page
/// for each row, and PEAK TABLE and PEAK ASSIGNMENTS. Of a LINK file the first block with data counts, a spectrum
/// before peaks.
///
/// Points are placed by their count between the first and the last X value. Hz become ppm by `$SF` and otherwise by
/// `.OBSERVE FREQUENCY`. The origin comes from the first of these that the file has: `$OFFSET` with `$SF` and `$SW_p`;
/// `.SHIFT REFERENCE`; `$OFFSET` alone, the shift of the high end; 0 Hz is 0 ppm. Statements that disagree by more than
/// a point are noted.
namespace JcampReader {

/// The first thing in the text that is neither blank nor a comment is a labelled record.
bool recognises(const QByteArray &start);

/// Errors are std::runtime_error that name `source` and the line.
Measurement parse(const QByteArray &text, const QString &source, const ReadOptions &options = {});
Measurement read(const QString &path, const ReadOptions &options = {});

} // namespace JcampReader

} // namespace Workbench
