// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/TableExport.h"

#include <optional>

namespace Workbench {

/// What became of one candidate structure.
struct RankRow {
    /// In ppm.
    struct Dimension {
        double reference = 0; ///< as Auto reference has left it
        double offset = 0; ///< by how much Auto reference has moved it
        double rmsd = 0; ///< after the move
    };

    QString file;
    std::vector<Dimension> dimensions; ///< F2, then F1; empty for a structure that failed
    double rmsd = 0; ///< ppm; the number by which structures are ranked
    std::optional<int> simulatedPeaks;
    std::optional<int> experimentalPeaks;
    QString message; ///< one line: why the structure failed

    bool failed() const { return dimensions.empty(); }
};

/// The table of ranked structures. As CSV, it is read back to the same bits.
namespace RankTable {

/// By rmsd, smallest first; what is equal keeps its order. Structures that failed go last.
void sort(std::vector<RankRow> &rows);

/// Rows that are sorted; text is rounded, csv and json are in full precision. A row that failed has no rank.
QByteArray write(const std::vector<RankRow> &rows, int dimensions, TableExport::Format format);

/// One row of the CSV form with its line end; `rank` 0 for none.
QByteArray csvRow(const RankRow &row, int dimensions, int rank);

struct Part {
    int dimensions = 0;
    std::vector<RankRow> rows;
    std::vector<int> lines; ///< where each row begins
};
/// Reads the CSV form. Errors are std::runtime_error with `source`, the line and what was expected.
Part parse(const QByteArray &text, const QString &source);
/// Rows without a header.
Part parseRows(const QByteArray &text, const QString &source, int dimensions);

/// Reads parts and joins their rows, not sorted yet. Parts of different dimensions, and a structure that occurs twice,
/// are errors.
Part merge(const QStringList &files);

} // namespace RankTable

} // namespace Workbench
