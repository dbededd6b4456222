// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

namespace Workbench {

/// MAGRES files of many programs, looked at before a plug-in reads them: a plug-in skips what it does not know, and so
/// loses sites without a word where a writer took liberties.
namespace MagresCheck {

/// Whether the text has the first line by which plug-ins know the format.
bool isMagres(const QByteArray &start);

/// Why a file that is named as one is none: whole sentences. Of the start of a file for which isMagres() does not hold.
QString whyNotMagres(const QByteArray &start);

struct Findings {
    /// The whole text with its records as they should be; empty where nothing is to be repaired, or where the repair
    /// is not certain.
    QByteArray repaired;
    /// What was repaired, and what of the file is doubtful: one sentence a kind.
    QStringList warnings;
};

/// Repaired are records `ms` and `efg` whose label and index stand together (`ms H100 …`, written by older programs
/// from the hundredth atom on), if each of them can be taken apart in exactly one way that names an atom of the file;
/// and lines that end in a carriage return alone.
Findings examine(const QByteArray &text);

} // namespace MagresCheck

} // namespace Workbench
