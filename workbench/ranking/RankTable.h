// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/TableExport.h"

#include <optional>

namespace Workbench {

/// What became of one candidate structure.
struct RankRow {
    /// In ppm. Of one nucleus, or of one dimension of a 2D spectrum.
    struct Part {
        std::optional<double> reference; ///< that fits best
        std::optional<double> offset; ///< by how much that is off the one given
        std::optional<double> rmsd; ///< with that reference
        QString pairing; ///< how lines and sites were paired
        std::optional<double> sites, lines;
        std::optional<double> sigma; ///< error of a calculated shift
        std::optional<double> chiSquare, degreesOfFreedom, p;
    };

    QString file;
    std::vector<Part> parts; ///< by nucleus, or F2 and F1; empty for a structure that failed
    std::optional<double> rmsd; ///< ppm, of a single nucleus or of both dimensions
    std::optional<double> simulatedPeaks, experimentalPeaks;
    std::optional<double> chiSquare, degreesOfFreedom, p; ///< over all nuclei
    std::optional<double> logLikelihood, wideLogLikelihood; ///< the latter with errors half as large again
    std::optional<double> logPrior; ///< without a common constant; by energies, else 0
    std::optional<double> probability, wideProbability; ///< in the pool
    /// What else the numbers hang on, "13C lines=5d1f08aa; 13C window=20…": those of other bases are not comparable.
    QString basis;
    QString fit; ///< "bad": the differences are larger than errors explain; else "ok", or empty where nobody knows
    QString message; ///< one line: why the structure failed; of others, what is doubtful about their sites

    bool failed() const { return parts.empty(); }
    /// Notes why; of the numbers those of peaks stay.
    void fail(const std::exception &error);
};

/// What the rows of a ranking have.
struct RankLayout {
    QStringList nuclei; ///< a single one has no name
    bool plane = false; ///< by 2D spectra

    bool operator==(const RankLayout &) const = default;
    int parts() const { return plane ? 2 : int(nuclei.size()); }
};

/// The table of ranked structures. As CSV, it is read back to the same bits.
namespace RankTable {

/// Below this probability of a χ² as large by chance a structure fits badly.
constexpr double smallestP = 0.001;

/// Of one nucleus, and in 2D, by rmsd, smallest first; of several, or with energies, by probability. What is equal
/// goes by file name, so that parts that are merged have the order of a single run. Structures that failed go last. The
/// rows then have their probabilities in the pool.
void sort(std::vector<RankRow> &rows, const RankLayout &layout);

/// Throws std::runtime_error when a number of the row is not finite, so that it could neither be sorted nor read back.
void checkNumbers(const RankRow &row, const RankLayout &layout);

/// What whoever reads the table should know first: structures of doubtful sites, and numbers of sites that differ.
QStringList notesOn(const std::vector<RankRow> &rows, const RankLayout &layout);

/// What tells sets of texts apart in RankRow::basis, whatever their order.
QString digest(QStringList texts);

/// Rows that are sorted; text is rounded, csv and json are in full precision. A row that failed has no rank.
QByteArray write(const std::vector<RankRow> &rows, const RankLayout &layout, TableExport::Format format);

/// One row of the CSV form with its line end; `rank` 0 for none.
QByteArray csvRow(const RankRow &row, const RankLayout &layout, int rank);

struct Part {
    RankLayout layout;
    std::vector<RankRow> rows;
    std::vector<int> lines; ///< where each row begins
    bool hasBasis = true; ///< older tables have none
};
/// Reads the CSV form. Errors are std::runtime_error with `source`, the line and what was expected.
Part parse(const QByteArray &text, const QString &source);
/// Rows without a header.
Part parseRows(const QByteArray &text, const QString &source, const RankLayout &layout);

/// Reads parts and joins their rows, not sorted yet. Parts of different measurements, and a structure that occurs
/// twice, are errors.
Part merge(const QStringList &files);

} // namespace RankTable

} // namespace Workbench
