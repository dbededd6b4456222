// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Workbench {

/// Rows of a spectrum; fewer are peaks.
constexpr size_t fewestPoints = 32;

/// How the columns of a plain text are written and what they mean, found out from its first lines.
struct TextLayout {
    enum class Role { Ignored, Position, PositionF1, Intensity, Imaginary, Number, Count, Label };
    enum class Unit { Unknown, Ppm, Hertz, Kilohertz };

    struct Column {
        Role role = Role::Ignored;
        Unit unit = Unit::Unknown;
        bool numeric = false;
        bool isSparse = false; ///< half of the rows or more have no number here
        bool hasPoints = true; ///< may have decimal points, also where others have decimal commas
        bool isOfOther = false; ///< of another nucleus than the one that is looked for
        bool saysMultiplets = false; ///< names stand behind them: "s", "(d, C1)"
        char grouping = 0; ///< the mark between groups of three digits: "1.234,5", "1,234", "1'234", "1 234"
        QString name; ///< in the header; empty without one
        QString nucleus; ///< that the name tells

        bool isPositional() const { return role == Role::Position || role == Role::PositionF1; }
    };

    char separator = ','; ///< a blank stands for blanks and tabs
    bool decimalComma = false;
    bool joinsRanges = false; ///< "128.1 – 128.9" between blanks is one field
    bool lastIsOptional = false; ///< the last column, of numbers, is left out in some rows
    bool someHaveNoHeight = false; ///< the field of the height is empty in some rows
    bool someHaveNoPosition = false; ///< rows of atoms without a shift of the nucleus
    int firstLine = 0; ///< of the table
    std::vector<Column> columns;
    double frequency = 0.0; ///< MHz, where the text tells: a column in Hz beside the one in ppm, or "400.13 MHz"
    QStringList notes;

    int columnOf(Role role) const; ///< -1: none
    /// Whether a row may have so many fields.
    bool fits(size_t fields) const
    {
        return fields == columns.size() || (lastIsOptional && fields + 1 == columns.size());
    }
    /// The fields of a line, trimmed, quotes taken off. A comment at its end is no field.
    void split(std::string_view line, std::vector<std::string_view> &fields) const;
    /// Positions, heights and counts: what stands in another column need not be understood.
    bool isUsed(size_t column) const;
    bool hasRoles() const { return columnOf(Role::Position) >= 0; }
    /// Of peaks, by names, counts or positions without a height. A spectrum has none.
    bool isList() const
    {
        return lastIsOptional || someHaveNoHeight || someHaveNoPosition || columnOf(Role::Label) >= 0
            || columnOf(Role::Count) >= 0;
    }
    /// A number where one is used, or the empty height of a peak, or a position that may be lacking.
    bool understands(size_t column, std::string_view field) const;
    /// Of a field in that column.
    std::optional<double> number(size_t column, std::string_view field) const;
    /// Of a field outside the columns.
    std::optional<double> number(std::string_view field) const;
    /// Nothing but blanks or a comment.
    bool isEmptyLine(std::string_view line) const;
};

/// What positions are divided by to be ppm, noted; 1 unless they are in Hz or kHz. `frequency` is that of 0 ppm in MHz;
/// without it the error names the `place`.
double perPpm(TextLayout::Unit unit, double frequency, const QString &place, int dimensions, QStringList &notes);

struct TextLine {
    std::string text;
    int number = 0;
};

/// Its first mark is one of # % ! ;
bool isComment(std::string_view line);
/// A whole comment line's text; empty for another one.
std::string_view commentText(std::string_view line);

} // namespace Workbench
