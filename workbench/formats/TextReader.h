// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QByteArray>

class QIODevice;

namespace Workbench {

/// Spectra and peak lists as plain text in every usual shape: columns separated by commas, tabs, semicolons or blanks,
/// decimal points or commas, comments of # ; % !, header lines with or without names; and one intensity a line below
/// a comment that gives the region (LEFT = … ppm. RIGHT = … ppm.), row by row in two dimensions.
///
/// At least 32 evenly spaced positions are a spectrum, anything else is a list of peaks; names in any column stay with
/// their peaks. What was decided, and how columns without names were understood, is noted. Positions in Hz and kHz
/// need a frequency.
namespace TextReader {

/// Errors are std::runtime_error that name `source` and the line. The text is read in pieces: in memory are the points
/// alone.
Measurement parse(QIODevice &text, const QString &source, const ReadOptions &options = {});
Measurement parse(const QByteArray &text, const QString &source, const ReadOptions &options = {});
Measurement read(const QString &path, const ReadOptions &options = {});

} // namespace TextReader

} // namespace Workbench
