// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/TextLayout.h"

#include "data/NumberText.h"
#include "data/ReaderText.h"
#include "formats/PrintedNumber.h"

#include <algorithm>

namespace Workbench {

using ReaderText::trimmed;

namespace {

constexpr std::string_view commentMarks = "#%!;";

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// Trimmed but for tabs.
std::string_view withoutOuterBlanks(std::string_view text)
{
    constexpr std::string_view blanks = " \r";
    const size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

/// The mark stands alone between two separators: the name of a column.
bool isWholeField(std::string_view line, size_t at, char separator)
{
    return separator != ' ' && at > 0 && at + 1 < line.size() && line[at + 1] == separator;
}

/// The line up to a comment. A mark within a word is none: names may hold one; and a semicolon is one at the start of a
/// line alone, since columns are separated by it.
std::string_view uncommented(std::string_view line, char separator)
{
    bool quoted = false, atStart = true;
    for (size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '"' && quoted && line.substr(i + 1).starts_with('"'))
            ++i; // one of the text
        else if (c == '"' && (quoted || atStart))
            quoted = !quoted;
        else if (!quoted && atStart && c != separator && (c != ';' || i == 0)
                 && commentMarks.find(c) != std::string_view::npos && !isWholeField(line, i, separator))
            return line.substr(0, i);
        atStart = isBlank(c) || c == separator;
    }
    return line;
}

/// Of "|Δ|", whose bars separate nothing; 0 for anything else.
size_t absoluteLength(std::string_view text)
{
    const bool isDifference = text.starts_with("|Δ") || text.starts_with("|∆") || text.starts_with("|δ");
    const size_t end = isDifference ? text.find_first_of("| ", 1) : std::string_view::npos;
    const bool isClosed =
        end != std::string_view::npos && text[end] == '|' && (end + 1 == text.size() || isBlank(text[end + 1]));
    return isClosed ? end + 1 : 0;
}

} // namespace

bool isComment(std::string_view line)
{
    line = trimmed(line);
    return !line.empty() && commentMarks.find(line.front()) != std::string_view::npos;
}

std::string_view commentText(std::string_view line)
{
    line = trimmed(line);
    const size_t start = line.find_first_not_of(commentMarks);
    return start == 0 || start == std::string_view::npos ? std::string_view() : trimmed(line.substr(start));
}

double perPpm(TextLayout::Unit unit, double frequency, const QString &place, int dimensions, QStringList &notes)
{
    const bool isKilohertz = unit == TextLayout::Unit::Kilohertz;
    if (!isKilohertz && unit != TextLayout::Unit::Hertz)
        return 1.0;
    const QString name = isKilohertz ? QStringLiteral("kHz") : QStringLiteral("Hz");
    if (!(frequency > 0.0))
        throw FrequencyNeeded(
            QStringLiteral("%1: %2").arg(
                place,
                Texts::tr("the positions are in %1: the frequency of 0 ppm in MHz is needed to make ppm of them and "
                          "must be given")
                    .arg(name)),
            dimensions);
    notes.append(Texts::tr("Positions in %1 were divided by %2 MHz; 0 Hz was taken as 0 ppm.")
                     .arg(name)
                     .arg(frequency, 0, 'g', 10));
    return isKilohertz ? frequency / 1000.0 : frequency;
}

int TextLayout::columnOf(Role role) const
{
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const Column &column) { return column.role == role; });
    return found == columns.end() ? -1 : int(found - columns.begin());
}

bool TextLayout::isEmptyLine(std::string_view line) const
{
    const std::string_view rest = trimmed(uncommented(line, separator));
    // A rule or the end of a table of TeX.
    if (separator == '&' && rest.starts_with('\\') && rest.find('&') == std::string_view::npos)
        return true;
    return rest.empty() || (separator != ' ' && rest.find_first_not_of(std::string{separator, ' ', '\t'}) == rest.npos);
}

void TextLayout::split(std::string_view line, std::vector<std::string_view> &fields) const
{
    fields.clear();
    // Tabs at the ends of a line have empty fields beside them.
    const bool blanks = separator == ' ';
    std::string_view rest = uncommented(line, separator);
    rest = separator == '\t' ? withoutOuterBlanks(rest) : trimmed(rest);
    // Tables of Markdown and TeX have marks at the ends of their lines.
    if (separator == '|' && rest.size() > 1 && rest.front() == '|' && rest.back() == '|')
        rest = rest.substr(1, rest.size() - 2);
    if (const size_t end = rest.rfind("\\\\");
        separator == '&' && end != std::string_view::npos && (end + 2 == rest.size() || rest[end + 2] == '['))
        rest = trimmed(rest.substr(0, end));
    bool isError = false;
    while (!rest.empty() || (!blanks && !fields.empty())) {
        size_t end = 0;
        for (bool quoted = false; end < rest.size(); ++end) {
            if (rest[end] == '"' && quoted && rest.substr(end + 1).starts_with('"'))
                ++end; // one of the text
            else if (rest[end] == '"' && (quoted || trimmed(rest.substr(0, end)).empty()))
                quoted = !quoted;
            else if (!quoted && separator == '|' && absoluteLength(rest.substr(end)) > 0)
                end += absoluteLength(rest.substr(end)) - 1;
            else if (!quoted && (blanks ? isBlank(rest[end]) : rest[end] == separator))
                break;
        }
        std::string_view field = trimmed(rest.substr(0, end));
        if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
            field = trimmed(field.substr(1, field.size() - 2));
        if (separator == '&' && field.size() > 2 && field.front() == '$' && field.back() == '$')
            field = trimmed(field.substr(1, field.size() - 2));
        // An error with blanks about its sign belongs to the number before.
        if (blanks && !fields.empty() && PrintedNumber::isPlusMinus(field))
            isError = true;
        else if (!std::exchange(isError, false))
            fields.push_back(field);
        if (end == rest.size())
            break;
        rest.remove_prefix(end + 1);
        if (blanks)
            rest = trimmed(rest);
    }
    if (blanks)
        PrintedNumber::joinWords(fields, decimalComma, joinsRanges);
    // Empty fields at the end may be more or fewer than those of the other rows.
    if (columns.empty() || fields.empty())
        return;
    while (fields.size() > columns.size() && fields.back().empty())
        fields.pop_back();
    const auto mayBeEmpty = [&](const Column &column, size_t i) {
        return !column.numeric || (!blanks && hasRoles() && understands(i, {}));
    };
    while (fields.size() < columns.size() && !lastIsOptional && mayBeEmpty(columns[fields.size()], fields.size()))
        fields.emplace_back();
}

bool TextLayout::isUsed(size_t column) const
{
    const Role role = columns[column].role;
    return role == Role::Position || role == Role::PositionF1 || role == Role::Intensity || role == Role::Imaginary
        || role == Role::Count;
}

bool TextLayout::understands(size_t column, std::string_view field) const
{
    const Role role = columns[column].role;
    const bool mayBeEmpty = (role == Role::Intensity || role == Role::Count) && isList();
    const bool mayLack = role == Role::Position && someHaveNoPosition && PrintedNumber::isLacking(field);
    return !isUsed(column) || (field.empty() && mayBeEmpty) || mayLack || number(column, field);
}

std::optional<double> TextLayout::number(size_t column, std::string_view field) const
{
    // Groups may begin behind the lines that were looked at.
    const bool mayBeGrouped = decimalComma && !columns[column].hasPoints && field.find('.') != std::string_view::npos;
    const char mark = columns[column].grouping != 0 || !mayBeGrouped ? columns[column].grouping : '.';
    if (mark == 0)
        return number(field);
    const std::string_view value = PrintedNumber::withoutError(field);
    if (const auto digits = PrintedNumber::grouped(value, decimalComma))
        return digits->mark == mark ? NumberText::parse<double>(digits->digits) : std::nullopt;
    // A point in a column where points group the digits.
    const bool isOdd = mark == (decimalComma ? '.' : ',') && value.find(mark) != std::string_view::npos;
    return isOdd ? std::nullopt : number(field);
}

std::optional<double> TextLayout::number(std::string_view field) const
{
    return PrintedNumber::parse(field, decimalComma);
}

} // namespace Workbench
