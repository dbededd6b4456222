// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/PrintedNumber.h"

#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace Workbench::PrintedNumber {

using ReaderText::trimmed;

namespace {

constexpr std::string_view plusMinus = "\xC2\xB1", printedMinus = "\xE2\x88\x92", enDash = "\xE2\x80\x93";

void replaceAll(std::string &text, std::string_view from, char to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at))
        text.replace(at, from.size(), 1, to);
}

/// Of the dash between two numbers that both have decimals, so that 3-4 stays a name.
size_t rangeDash(std::string_view text)
{
    const size_t dash = text.find('-', 1);
    if (dash == std::string_view::npos || text.find_first_not_of("0123456789.- ") != std::string_view::npos
        || text.substr(0, dash).find('.') == std::string_view::npos || text.find('.', dash) == std::string_view::npos)
        return std::string_view::npos;
    return dash;
}

/// "170.1" of "170.1 (s)" and "170.1 (br d)".
std::string_view withoutMultiplet(std::string_view field)
{
    constexpr size_t longest = 8;
    const size_t bracket = field.find('(');
    const bool isMultiplet = bracket != std::string_view::npos && bracket > 0 && field.back() == ')'
        && field.size() > bracket + 2 && field.size() <= bracket + longest
        && field.find_first_not_of("sdtqmhpbr. ", bracket + 1) == field.size() - 1;
    return isMultiplet ? trimmed(field.substr(0, bracket)) : field;
}

constexpr std::string_view aboutMarks[] = {"~", "\xE2\x89\x88", "\xE2\x88\xBC", "ca.", "ca"};

/// "2.1" of "~2.1", "≈2.1" and "ca. 2.1".
std::string_view withoutAbout(std::string_view field)
{
    for (std::string_view mark : aboutMarks) {
        if (field.starts_with(mark))
            return trimmed(field.substr(mark.size()));
    }
    return field;
}

} // namespace

std::string asTyped(std::string_view number, bool decimalComma)
{
    std::string text(number);
    if (decimalComma)
        std::replace(text.begin(), text.end(), ',', '.');
    if (std::any_of(text.begin(), text.end(), [](char c) { return c & 0x80; })) {
        for (std::string_view blank : {"\xC2\xA0", "\xE2\x80\x89", "\xE2\x80\xAF"})
            replaceAll(text, blank, ' ');
        // Hyphens and dashes.
        for (std::string_view sign : {printedMinus, enDash, std::string_view("\xE2\x80\x90"),
                                      std::string_view("\xE2\x80\x91"), std::string_view("\xE2\x80\x92")})
            replaceAll(text, sign, '-');
    }
    if (text.find(' ') != std::string::npos) {
        for (std::string_view word : {" to ", " bis "})
            replaceAll(text, word, '-');
    }
    if (text.starts_with("- "))
        text.erase(1, text.find_first_not_of(' ', 1) - 1);
    return text;
}

bool isPlusMinus(std::string_view field)
{
    return field == plusMinus || field == "+/-" || field == "+-";
}

bool hasPlusMinus(std::string_view text)
{
    return text.find(plusMinus) != std::string_view::npos;
}

std::string_view withoutError(std::string_view field)
{
    const auto isMark = [](char c) { return c == '.' || c == ','; };
    for (std::string_view sign : {plusMinus, std::string_view("+/-")}) {
        const size_t at = field.find(sign);
        if (at == std::string_view::npos || at == 0)
            continue;
        // With more than the error behind it the sign stands within a whole row.
        const std::string_view error = trimmed(field.substr(at + sign.size()));
        if (error.find_first_of(" \t;|") == std::string_view::npos && std::ranges::count_if(error, isMark) <= 1)
            return trimmed(field.substr(0, at));
    }
    const size_t bracket = field.find('(');
    const bool isError = bracket != std::string_view::npos && bracket > 0 && field.back() == ')'
        && field.find_first_not_of("0123456789.", bracket + 1) == field.size() - 1 && field.size() > bracket + 2;
    return isError ? field.substr(0, bracket) : field;
}

bool isDash(std::string_view field)
{
    return field == "-" || field == enDash;
}

bool isLacking(std::string_view field)
{
    constexpr std::string_view marks[] = {"", "—", "−", "--", "---", "n.d.", "n.o.", "n/a", "n.a.", "nd", "na", "/"};
    const auto isMark = [&](std::string_view mark) {
        return std::equal(field.begin(), field.end(), mark.begin(), mark.end(),
                          [](char a, char b) { return (a >= 'A' && a <= 'Z' ? char(a - 'A' + 'a') : a) == b; });
    };
    return isDash(field) || std::any_of(std::begin(marks), std::end(marks), isMark);
}

bool joinWords(std::vector<std::string_view> &words, bool decimalComma, bool ranges)
{
    const auto joined = [](std::string_view first, std::string_view last) {
        return std::string_view(first.data(), size_t(last.data() + last.size() - first.data()));
    };
    // Without decimals a dash is none of a range, and another number behind a dash may be a height.
    const auto isRangeOf = [&](std::string_view from, std::string_view to, bool isNear) {
        const char mark = decimalComma ? ',' : '.';
        if (isNear && (from.find(mark) == std::string_view::npos || to.find(mark) == std::string_view::npos))
            return false;
        const auto a = parse(from, decimalComma), b = parse(to, decimalComma);
        constexpr double widest = 0.1;
        return a && b && (!isNear || std::abs(*a - *b) <= widest * std::max(std::abs(*a), std::abs(*b)));
    };
    bool any = false;
    for (size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string_view word = words[i];
        if (word.size() > printedMinus.size())
            continue;
        const bool isMinus = word == printedMinus, isTo = word == "to" || word == "bis";
        const bool isAbout = std::ranges::find(aboutMarks, word) != std::end(aboutMarks);
        if (!isMinus && !isTo && !isAbout && !isDash(word))
            continue;
        if (ranges && i > 0 && isRangeOf(words[i - 1], words[i + 1], !isTo)) {
            words[i - 1] = joined(words[i - 1], words[i + 1]);
            words.erase(words.begin() + std::ptrdiff_t(i), words.begin() + std::ptrdiff_t(i) + 2);
            --i;
            any = true;
        } else if ((isMinus || isAbout) && !words[i + 1].empty() && words[i + 1].front() >= '0'
                   && words[i + 1].front() <= '9') {
            words[i] = joined(word, words[i + 1]);
            words.erase(words.begin() + std::ptrdiff_t(i) + 1);
        }
    }
    return any;
}

bool isRange(std::string_view field, bool decimalComma)
{
    return rangeDash(asTyped(withoutError(field), decimalComma)) != std::string::npos;
}

double rangeMiddle(double from, double to)
{
    // Multiplets are narrow.
    const bool isNegative = from < 0 && to > 0 && std::abs(from + to) < -0.1 * from;
    return 0.5 * (from + (isNegative ? -to : to));
}

std::optional<double> parse(std::string_view field, bool decimalComma)
{
    if (const auto plain = NumberText::parse<double>(field))
        return plain;
    std::string text = asTyped(withoutError(withoutMultiplet(withoutAbout(field))), decimalComma);
    if (text.size() > 1 && text.ends_with('%'))
        text.pop_back();
    if (text.ends_with("ppm"))
        text.resize(trimmed(std::string_view(text).substr(0, text.size() - 3)).size());
    if (const size_t dash = rangeDash(text); dash != std::string::npos) {
        const auto from = NumberText::parse<double>(trimmed(std::string_view(text).substr(0, dash)));
        const auto to = NumberText::parse<double>(trimmed(std::string_view(text).substr(dash + 1)));
        return from && to ? std::optional(rangeMiddle(*from, *to)) : std::nullopt;
    }
    // Fortran's.
    const size_t exponent = text.find_first_of("dD");
    if (exponent != std::string::npos && exponent > 0)
        text[exponent] = 'e';
    return text == field ? std::nullopt : NumberText::parse<double>(text);
}

std::optional<Grouped> grouped(std::string_view field, bool decimalComma)
{
    const auto isDigit = [&](size_t i) { return i < field.size() && field[i] >= '0' && field[i] <= '9'; };
    Grouped result;
    size_t at = 0;
    if (field.starts_with('-') || field.starts_with('+'))
        result.digits += field[at++];
    const size_t first = at;
    while (isDigit(at))
        result.digits += field[at++];
    if (at == first || at - first > 3 || field[first] == '0' || at == field.size())
        return {};
    constexpr std::string_view typographic = "\xE2\x80\x99";
    size_t groups = 0;
    while (at < field.size()) {
        const bool isApostrophe = field[at] == '\'' || field.substr(at).starts_with(typographic);
        const char mark = isApostrophe ? '\'' : field[at];
        if ((mark != '\'' && mark != ' ' && mark != (decimalComma ? '.' : ',')) || (groups > 0 && mark != result.mark))
            break;
        at += field[at] == typographic.front() ? typographic.size() : 1;
        // A blank that does not break has become several.
        while (mark == ' ' && at < field.size() && field[at] == ' ')
            ++at;
        if (!isDigit(at) || !isDigit(at + 1) || !isDigit(at + 2) || isDigit(at + 3))
            return {};
        result.digits += field.substr(at, 3);
        result.mark = mark;
        at += 3;
        ++groups;
    }
    if (groups == 0)
        return {};
    const bool hasDecimals = at < field.size();
    if (hasDecimals) {
        if (field[at++] != (decimalComma ? ',' : '.'))
            return {};
        result.digits += '.';
        while (isDigit(at))
            result.digits += field[at++];
        if (at != field.size())
            return {};
    }
    result.isCertain = groups > 1 || hasDecimals || result.mark == '\'' || result.mark == ' ';
    return result;
}

bool isNoNumber(std::string_view field)
{
    const QString text = ReaderText::decoded(field).toLower();
    return text == u"nan" || text == u"inf" || text == u"-inf" || text == u"-nan";
}

bool isDamaged(std::string_view field)
{
    if (isNoNumber(field))
        return true;
    static const QRegularExpression nucleus(QStringLiteral("^\\d{1,3}[A-Za-z]{1,2}\\b"));
    const std::string typed = asTyped(field, false);
    return !typed.empty() && std::string_view("0123456789.+-").find(typed.front()) != std::string_view::npos
        && field.find_first_of("0123456789") != std::string_view::npos
        && !nucleus.match(ReaderText::decoded(field)).hasMatch();
}

bool isCut(std::string_view field)
{
    static const QRegularExpression atom(QStringLiteral("^\\d{1,3}['\"′″*]{1,2}$"));
    return isDamaged(field) && field.find("..") == std::string_view::npos
        && !atom.match(ReaderText::decoded(field)).hasMatch();
}

} // namespace Workbench::PrintedNumber
