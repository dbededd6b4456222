// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The fields of a table as programs and publications print numbers: errors behind them, ranges, groups of digits.
namespace Workbench::PrintedNumber {

/// Also with the minus signs and blanks of print and the exponents of Fortran. The "~" and "ca." before them, the
/// error behind "±" or in brackets, "%", "ppm" and a multiplet in brackets are left out, and a range such as
/// "7.10–7.25" or "7.1 to 7.3" is its middle.
std::optional<double> parse(std::string_view field, bool decimalComma);

/// With a point for the comma, and the signs, blanks and ranges of print as they are on a keyboard.
std::string asTyped(std::string_view number, bool decimalComma);

/// A number whose digits stand in groups of three.
struct Grouped {
    std::string digits; ///< without the marks, with a decimal point
    char mark = 0; ///< also for the typographic apostrophe: '
    bool isCertain = false; ///< 1.234 may have three decimals as well; 1.234.567, 1.234,5 and 1 234 may not
};
std::optional<Grouped> grouped(std::string_view field, bool decimalComma);

/// "2.2" of "2.2(1)", "2.2 ± 0.1" and "2.2+/-0.1".
std::string_view withoutError(std::string_view field);
/// The sign alone.
bool isPlusMinus(std::string_view field);
bool hasPlusMinus(std::string_view text);

/// A hyphen or the dash of print alone, which are no minus: "T1 - 110.2".
bool isDash(std::string_view field);
/// What stands in a table where there is no number: nothing, a dash, "n.d.", "n/a".
bool isLacking(std::string_view field);
/// Joins words between blanks that are one number: "− 110.2", "ca. 110.2" or, as ranges, "128.1 – 128.9" and "128.1 to
/// 128.9". All are parts of the same line. Whether there were ranges.
bool joinWords(std::vector<std::string_view> &words, bool decimalComma, bool ranges);

bool isRange(std::string_view field, bool decimalComma);
/// The middle of a range as it is printed: -110.2–111.0 has the sign of both in front.
double rangeMiddle(double from, double to);

/// "nan" and "inf".
bool isNoNumber(std::string_view field);
/// A number that is damaged rather than a word: 12.3abc, nan. The name of a nucleus is a word.
bool isDamaged(std::string_view field);
/// A number that another separator or decimal mark would not have cut; "7.28 .. 7.24" is a range, 2' an atom.
bool isCut(std::string_view field);

} // namespace Workbench::PrintedNumber
