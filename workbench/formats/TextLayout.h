// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Workbench {

/// How the columns of a plain text are written and what they mean, found out from its first lines.
struct TextLayout {
    enum class Role { Ignored, Position, PositionF1, Intensity, Imaginary, Number, Count, Label };
    enum class Unit { Unknown, Ppm, Hertz, Kilohertz };

    struct Column {
        Role role = Role::Ignored;
        Unit unit = Unit::Unknown;
        bool numeric = false;
        bool isSparse = false; ///< half of the rows or more have no number here
        char grouping = 0; ///< the mark between groups of three digits: "1.234,5", "1,234", "1'234", "1 234"
        bool isGroupingDoubtful = false; ///< the marks may be decimal ones
        QString name; ///< in the header; empty without one
        QString nucleus; ///< that the name tells
    };

    char separator = ','; ///< a blank stands for blanks and tabs
    bool decimalComma = false;
    bool lastIsOptional = false; ///< the last column, of numbers, is left out in some rows
    bool someHaveNoHeight = false; ///< the field of the height is empty in some rows
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
        return lastIsOptional || someHaveNoHeight || columnOf(Role::Label) >= 0 || columnOf(Role::Count) >= 0;
    }
    /// A number where one is used, or the empty height of a peak.
    bool understands(size_t column, std::string_view field) const;
    /// Of a field in that column.
    std::optional<double> number(size_t column, std::string_view field) const;
    /// Also as publications write numbers: the error behind "±" or in brackets is left out, and a range such as
    /// "7.10–7.25" is its middle.
    std::optional<double> number(std::string_view field) const;
    /// Nothing but blanks or a comment.
    bool isEmptyLine(std::string_view line) const;
};

struct TextLine {
    std::string text;
    int number = 0;
};

/// The layout of a text by its first lines; `complete` when these are all. A text that is no table is an error
/// that names `source`, and so is a row among the first lines that does not fit the others. No lines but comments: no
/// columns.
TextLayout detectLayout(const std::vector<TextLine> &sample, bool complete, const QString &source,
                        const ReadOptions &options);

/// The middle of a range as it is printed: -110.2–111.0 has the sign of both in front.
double rangeMiddle(double from, double to);

/// Whether the positions lie evenly, but for the rounding of their texts.
bool looksEven(const std::vector<double> &positions);

} // namespace Workbench
