// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/TextLayout.h"

#include <QStringList>

namespace Workbench {

/// A line above the table.
struct HeaderLine {
    QString text;
    int number = 0;
    bool isComment = false;
    bool isHash = false; ///< its mark is "#"
    bool isMarkField = false; ///< which "#" has the separator behind it, as the name of a column
    bool isNaming = false; ///< it names the columns
};

/// The first lines of a text whose columns are known, but not what they hold.
struct TableSample {
    std::vector<TextLine> rows; ///< all that are no comments
    std::vector<HeaderLine> headers; ///< from above
    std::vector<std::vector<double>> values; ///< of each column; empty fields are 0
    std::vector<std::optional<QString>> constants; ///< texts of columns that have only one
    struct {
        int line = 0;
        int count = 0;
    } otherNames; ///< of columns, more or fewer than the rows have; count is 0 where there are none
    std::vector<QStringList> texts; ///< of columns that are no numbers

    /// The last one that names columns; 0: none.
    int namingLine() const;
    bool isNaming(int line) const;
};

} // namespace Workbench
