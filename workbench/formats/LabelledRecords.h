// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace Workbench {

/// One `##LABEL= value` record of a JCAMP-DX text (R. S. McDonald, P. A. Wilks, Appl. Spectrosc. 42 (1988) 151). The
/// value goes on over the following lines up to the next record.
struct LabelledRecord {
    std::string label; ///< as normalisedLabel() makes it
    std::string_view value; ///< from behind the equals sign, comments and line ends as they stand
    int line = 0; ///< number of the line with the label

    /// The value without comments and the blanks around it, its lines joined by blanks.
    std::string text() const;
    /// The same of the first line alone.
    std::string_view firstLine() const;
};

/// Capitals without blanks, dashes, slashes and underlines, which mean nothing in a label.
std::string normalisedLabel(std::string_view label);

/// A line without its comment, from `$$` on, and without blanks around it.
std::string_view withoutComment(std::string_view line);

/// In the order of the text, which must outlive them. Text before the first record is passed over, and so is a
/// line that begins with ## and has no equals sign. More records than any file needs are an error that names `source`.
std::vector<LabelledRecord> labelledRecords(std::string_view text, const QString &source);

/// The last record of a label that is already normalised; null when there is none.
const LabelledRecord *findRecord(const std::vector<LabelledRecord> &records, std::string_view label);

} // namespace Workbench
