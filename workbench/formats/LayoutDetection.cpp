// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/LayoutDetection.h"

#include "data/Nuclides.h"
#include "data/ReaderText.h"
#include "formats/ColumnNames.h"
#include "formats/ColumnRoles.h"
#include "formats/PrintedNumber.h"

#include <QRegularExpression>

#include <algorithm>
#include <cctype>
#include <map>
#include <tuple>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::trimmed;
using Role = TextLayout::Role;

namespace {

/// What the table of one way to split the lines looks like.
struct Split {
    TextLayout layout;
    size_t matching = 0; ///< rows
    size_t cutRows = 0; ///< of them, with names that look like numbers cut at the wrong place
    size_t headers = 0; ///< lines above them without numbers that have as many fields
    size_t doubtful = 0; ///< columns whose marks may be decimal or group the digits, the first ones weigh most
    size_t joined = 0; ///< rows whose commas seem to stand within numbers, not between fields

    bool operator<(const Split &other) const
    {
        return std::tuple(matching - cutRows, matching, headers, other.doubtful, other.joined)
            < std::tuple(other.matching - other.cutRows, other.matching, other.headers, doubtful, joined);
    }
};

using Fields = std::vector<std::string_view>;

std::vector<Fields> splitAll(const TextLayout &layout, const std::vector<TextLine> &rows)
{
    std::vector<Fields> all(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        layout.split(rows[i].text, all[i]);
    return all;
}

/// A row of the table by its numbers, some of which may be left empty.
bool matches(const TextLayout &layout, const Fields &fields)
{
    if (!layout.fits(fields.size()))
        return false;
    bool any = false;
    for (size_t i = 0; i < fields.size(); ++i) {
        const bool isNumber = layout.columns[i].numeric && layout.number(i, fields[i]);
        if (layout.columns[i].numeric && !isNumber && !fields[i].empty())
            return false;
        any |= isNumber;
    }
    return any;
}

/// Whether the digits of a column stand in groups, decided for all of its rows at once. Marks that may as well be
/// decimal are doubtful.
void findGrouping(Split &split, size_t column, const std::vector<Fields> &rows)
{
    const bool decimalComma = split.layout.decimalComma;
    const char other = decimalComma ? '.' : ',';
    char mark = 0;
    bool isCertain = false, isDecimal = false, isDoubtful = false;
    for (const Fields &fields : rows) {
        const std::string_view field = PrintedNumber::withoutError(fields[column]);
        if (const auto number = PrintedNumber::grouped(field, decimalComma);
            number && (mark == 0 || number->isCertain)) {
            mark = number->mark;
            isCertain |= number->isCertain;
        } else if (!number && split.layout.number(field)) {
            isDecimal |= field.find(other) != std::string_view::npos;
        }
    }
    split.layout.columns[column].hasPoints = !decimalComma || isDecimal;
    isDoubtful = !isCertain && mark != 0;
    if (mark != 0 && (isCertain || !isDecimal))
        split.layout.columns[column].grouping = mark;
    // Positions stand before heights, and their digits are not grouped.
    if (isDoubtful || (decimalComma && isDecimal))
        split.doubtful += split.layout.columns.size() - column;
}

/// Rows with "C1\t170,2", "170,2 ppm" and "170,2(1)", cut at their commas: a number that another separator or an
/// element's symbol has before it, or the unit or an error behind the latter part alone. "C 1,170" with atoms 1, 2, 3…
/// has names.
size_t joinedRows(const std::vector<Fields> &rows)
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    size_t joined = 0, behindBlank = 0;
    bool doCount = true;
    for (const Fields &fields : rows) {
        bool isJoined = false, isBehindBlank = false;
        for (size_t i = 1; i < fields.size(); ++i) {
            const std::string before = PrintedNumber::asTyped(fields[i - 1], false);
            if (before.empty() || !isDigit(before.back()) || fields[i].empty() || !isDigit(fields[i].front()))
                continue;
            const std::string_view value = PrintedNumber::withoutError(fields[i]);
            isJoined |= fields[i].ends_with(" ppm")
                || (value.size() < fields[i].size() && (before + std::string(value)).find('.') == std::string::npos);
            const size_t at = before.find_last_of("\t; ");
            const std::string number = at == before.npos ? std::string() : before.substr(at + 1);
            if (number.empty() || number.find_first_not_of("0123456789", number.front() == '-' ? 1 : 0) != number.npos)
                continue;
            isJoined |= before[at] != ' ';
            isBehindBlank |= before[at] == ' ';
            if (before[at] == ' ')
                doCount &= number == std::to_string(behindBlank + 1);
        }
        joined += isJoined;
        behindBlank += isBehindBlank;
    }
    return doCount ? joined : joined + behindBlank;
}

/// The number of fields that most rows have, and which of them are numbers in most of these rows.
Split trySplit(char separator, bool decimalComma, bool joinsRanges, const std::vector<TextLine> &rows)
{
    Split split;
    split.layout.joinsRanges = joinsRanges;
    split.layout.separator = separator;
    split.layout.decimalComma = decimalComma;
    const std::vector<Fields> all = splitAll(split.layout, rows);
    std::map<size_t, std::vector<Fields>> rowsOf; // with a number, by the count of fields
    for (const Fields &fields : all) {
        const bool any = std::any_of(fields.begin(), fields.end(), [&](std::string_view field) {
            return split.layout.number(field)
                || (fields.size() > 1 && PrintedNumber::grouped(PrintedNumber::withoutError(field), decimalComma));
        });
        if (any)
            rowsOf[fields.size()].push_back(fields);
    }
    const auto usual = std::max_element(rowsOf.begin(), rowsOf.end(),
                                        [](const auto &a, const auto &b) { return a.second.size() < b.second.size(); });
    if (usual == rowsOf.end())
        return split;
    auto &columns = split.layout.columns;
    columns.resize(usual->first);
    for (size_t i = 0; i < columns.size(); ++i) {
        if (columns.size() > 1)
            findGrouping(split, i, usual->second);
        size_t numbers = 0, empty = 0;
        for (const Fields &fields : usual->second) {
            numbers += split.layout.number(i, fields[i]).has_value();
            empty += fields[i].empty();
        }
        const size_t count = usual->second.size();
        columns[i].isSparse = 2 * numbers <= count;
        columns[i].numeric = !columns[i].isSparse || (numbers > 0 && numbers + empty == count);
    }
    if (std::none_of(columns.begin(), columns.end(), [](const auto &column) { return column.numeric; }))
        return split;
    // A list of peaks may have heights for some of them only.
    const bool allNumeric =
        std::all_of(columns.begin(), columns.end(), [](const auto &column) { return column.numeric; });
    if (allNumeric && separator != ' ' && rows.size() < fewestPoints) {
        const size_t count = columns.size();
        const auto longer = rowsOf.find(count + 1);
        const auto areNumbers = [&](const Fields &fields) {
            return std::all_of(fields.begin(), fields.end(),
                               [&](std::string_view field) { return split.layout.number(field).has_value(); });
        };
        if (longer != rowsOf.end() && std::all_of(longer->second.begin(), longer->second.end(), areNumbers)) {
            columns.push_back(columns.back());
            split.layout.lastIsOptional = true;
        } else {
            split.layout.lastIsOptional = count > 1 && rowsOf.contains(count - 1);
        }
    }
    if (separator == ',' && !decimalComma)
        split.joined = joinedRows(usual->second);
    size_t ranges = 0;
    for (const Fields &fields : all) {
        if (matches(split.layout, fields)) {
            ++split.matching;
            bool cut = false;
            if (separator == ' ' && !joinsRanges) {
                Fields words = fields;
                ranges += PrintedNumber::joinWords(words, decimalComma, true);
            }
            for (size_t i = 0; i < fields.size(); ++i)
                cut |= !columns[i].numeric && PrintedNumber::isCut(fields[i]);
            split.cutRows += cut;
        } else if (fields.size() == columns.size() && split.matching == 0) {
            split.headers += std::none_of(fields.begin(), fields.end(),
                                          [&](std::string_view field) { return split.layout.number(field); });
        }
    }
    // Where each row has one, dashes are no marks of what is missing.
    if (ranges == split.matching && ranges > 0)
        split.cutRows = split.matching;
    return split;
}

/// "173,2" may be a position and its height, or one position with a decimal comma.
bool hasDoubtfulComma(const TextLayout &layout, const std::vector<TextLine> &rows)
{
    const auto isDigits = [](std::string_view field) {
        return !field.empty() && field.find_first_not_of("-0123456789") == std::string_view::npos;
    };
    Fields fields;
    return layout.separator == ',' && layout.columns.size() == 2
        && std::all_of(rows.begin(), rows.end(), [&](const TextLine &row) {
               layout.split(row.text, fields);
               return isDigits(PrintedNumber::asTyped(fields[0], false)) && isDigits(fields.back())
                   && !fields.back().starts_with('-') && row.text.find_first_of(" \t\"") == std::string::npos;
           });
}

/// A position such as "2,6" beside "128.1", which may as well name two atoms; empty where there is none.
std::string_view doubtfulPosition(const TextLayout &layout, const std::vector<TextLine> &rows)
{
    const size_t position = size_t(layout.columnOf(Role::Position));
    Fields fields;
    for (const TextLine &row : rows) {
        layout.split(row.text, fields);
        if (!layout.decimalComma || row.number < layout.firstLine || position >= fields.size()
            || !layout.fits(fields.size()) || fields[position].find(',') == std::string_view::npos)
            continue;
        for (size_t i = 0; i < fields.size(); ++i) {
            if (layout.isUsed(i) && layout.columns[i].grouping == 0 && fields[i].find('.') != std::string_view::npos)
                return fields[position];
        }
    }
    return {};
}

/// What stands above the rows, and where a row begins that must be understood.
class Beginning {
public:
    Beginning(const TextLayout &layout, int namingLine)
        : m_layout(layout), m_namingLine(namingLine), m_position(size_t(layout.columnOf(Role::Position)))
    {
    }

    /// Whether a line that is no row may be passed over before the first row: not if it has a number for a position.
    bool mayPass(int number, const std::string &line, const Fields &fields) const
    {
        if (number <= m_namingLine || !hasText(line))
            return true;
        if (m_position >= fields.size())
            return m_namingLine > 0 ? line.find_first_of("0123456789") == std::string::npos : !areNumbers(fields);
        return m_namingLine > 0 ? isBelowNames(fields) : isTitle(line, fields);
    }

    /// Rules of tables and the mark of spreadsheets for their separator are none.
    static bool hasText(const std::string &line)
    {
        if (line.starts_with('\\') || line.starts_with("sep="))
            return false;
        return std::any_of(line.begin(), line.end(),
                           [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c & 0x80; });
    }

private:
    bool areNumbers(const Fields &fields) const
    {
        return std::all_of(fields.begin(), fields.end(),
                           [&](std::string_view field) { return m_layout.number(field).has_value(); });
    }

    /// Units, or what is said about the columns: no number in any of them, and no name of a peak.
    bool isBelowNames(const Fields &fields) const
    {
        bool hasName = false;
        for (size_t i = 0; i < std::min(fields.size(), m_layout.columns.size()); ++i) {
            if (m_layout.columns[i].numeric && m_layout.number(i, fields[i]))
                return false;
            hasName |= !m_layout.columns[i].numeric && !fields[i].empty();
        }
        static const QRegularExpression remark(
            QStringLiteral("^(?:comments?|kommentare?|units?|einheit(?:en)?|long name)\\b"),
            QRegularExpression::CaseInsensitiveOption);
        const QString position = ReaderText::decoded(fields[m_position]);
        return position.isEmpty() ? fields.size() > 1 && !hasName
                                  : ColumnNames::isUnit(position) || remark.match(position).hasMatch();
    }

    bool isTitle(const std::string &line, const Fields &fields) const
    {
        static const QRegularExpression damaged(QStringLiteral(
            "^(?:[^\\d=]{0,6}\\d+[.,]\\d+(?![.,\\d])(?!\\s*(?:[kMG]Hz|T)\\b).*|(?:ca\\.?|[~≈<>])\\s*\\d.*"
            "|\\d+[*?]|\\d+\\s*[-–]\\s*\\d+)$")),
            unit(QStringLiteral("^(?:[kMG]Hz|K|T|°C)[,;)]?$")),
            title(QStringLiteral(
                      "^\\W*(?:table|tab|tabelle|figure|fig|abb|abbildung|sample|probe|compound|verbindung)\\b"),
                  QRegularExpression::CaseInsensitiveOption);
        const std::string_view position = fields[m_position];
        if (m_layout.number(m_position, position)) {
            // "298 K" and "Table 2" are numbers of something else.
            return (m_position + 1 < fields.size()
                    && unit.match(ReaderText::decoded(fields[m_position + 1])).hasMatch())
                || (m_position > 0 && title.match(ReaderText::decoded(line)).hasMatch());
        }
        const auto isNumber = [&](size_t i) {
            return m_layout.columns[i].numeric && m_layout.number(i, fields[i]).has_value();
        };
        bool anyNumber = false;
        for (size_t i = 0; i < std::min(fields.size(), m_layout.columns.size()); ++i)
            anyNumber |= isNumber(i);
        return position.empty() ? !anyNumber : !damaged.match(ReaderText::decoded(position)).hasMatch();
    }

    const TextLayout &m_layout;
    int m_namingLine;
    size_t m_position;
};

/// "# 1H" or "# δ(1H), ppm" and nothing else, among rows of another nucleus.
bool headsList(const std::string &comment, const QString &nucleus)
{
    static const QRegularExpression head(QStringLiteral("^\\W*(?:δ\\W*)?\\^?\\d{1,3}[A-Z][a-z]?\\b(?:\\W|NMR|CP|MAS|"
                                                        "CPMAS|δ|iso|ppm|chemical|shifts?|peaks?|list)*$"),
                                         QRegularExpression::UseUnicodePropertiesOption);
    const QString text = ReaderText::decoded(commentText(comment));
    const QString named = head.match(text).hasMatch() ? Nuclides::table().observedIn(text) : QString();
    return !named.isEmpty() && named != nucleus;
}

/// The first row, from which on every line must be one.
void findRows(TextLayout &layout, const std::vector<TextLine> &sample, const TableSample &table, const QString &source)
{
    const int namingLine = table.namingLine();
    const bool isShort = table.rows.size() < fewestPoints;
    const Beginning beginning(layout, namingLine);
    Fields fields;
    QStringList passedOver;
    int without = 0, otherList = 0;
    layout.firstLine = 0;
    const int height = layout.columnOf(Role::Intensity);
    const QString nucleus = layout.columns[size_t(layout.columnOf(Role::Position))].nucleus;
    for (const TextLine &line : sample) {
        if (layout.firstLine > 0 && !nucleus.isEmpty() && isComment(line.text) && headsList(line.text, nucleus))
            otherList = line.number;
        if (layout.isEmptyLine(line.text))
            continue;
        layout.split(line.text, fields);
        const auto odd = [&] {
            for (size_t i = 0; i < fields.size() && i < layout.columns.size(); ++i) {
                const bool mayLackHeight = fields[i].empty() && int(i) == height && (isShort || layout.isList());
                if (!mayLackHeight && !layout.understands(i, fields[i]))
                    return int(i);
            }
            return -1;
        };
        const bool isOver = line.number > namingLine && layout.fits(fields.size()) && odd() < 0;
        if (!isOver && layout.firstLine == 0 && beginning.mayPass(line.number, line.text, fields)) {
            const bool isUsed = table.isNaming(line.number)
                || ColumnNames::unitIn(ReaderText::decoded(line.text)) != TextLayout::Unit::Unknown;
            if (!isUsed && Beginning::hasText(line.text))
                passedOver.append(excerpt(line.text));
            continue;
        }
        if (!layout.fits(fields.size()) && layout.firstLine > 0)
            fail(source, line.number,
                 Texts::tr("expected %1 fields as in the lines before, found %2")
                     .arg(layout.columns.size())
                     .arg(fields.size()));
        if (!layout.fits(fields.size()) && odd() < 0)
            fail(source, line.number,
                 Texts::tr("expected %1 fields as in the lines below, found %2; if this is a title, begin it with #")
                     .arg(layout.columns.size())
                     .arg(fields.size()));
        const bool isLikeTitle = layout.firstLine == 0 && namingLine == 0;
        if (const int i = odd(); i > layout.columnOf(Role::Position) && isLikeTitle)
            fail(source, line.number,
                 Texts::tr("expected a number, found %1; if this is a title, begin it with #")
                     .arg(excerpt(fields[size_t(i)])));
        if (const int i = odd(); i >= 0)
            fail(source, line.number, Texts::tr("expected a number, found %1").arg(excerpt(fields[size_t(i)])));
        if (otherList > 0)
            fail(source, otherList, Texts::tr("there is more than one list of shifts: each needs a file of its own"));
        if (layout.firstLine == 0)
            layout.firstLine = line.number;
        const bool isWithout = height >= 0 && (size_t(height) >= fields.size() || fields[size_t(height)].empty());
        layout.someHaveNoHeight |= isWithout;
        without += isWithout;
    }
    if (without > 0)
        layout.notes.append(Texts::tr("Peaks without a height (%1) were given the height 1.").arg(without));
    constexpr qsizetype mostTold = 5;
    const qsizetype count = passedOver.size();
    if (count > mostTold)
        passedOver = passedOver.mid(0, mostTold) << QStringLiteral("…");
    if (count > 0)
        layout.notes.append(Texts::tr("Lines above the table that were passed over (%1): %2.")
                                .arg(QString::number(count), passedOver.join(QStringLiteral(", "))));
}

/// Each line of "T1 - 110.2" may be negative or not, and so may those of "- 110.2".
void refuseDashes(const TextLayout &layout, const TableSample &table, const QString &source)
{
    const int position = layout.columnOf(Role::Position);
    const bool isBetween = layout.separator == ' ' && position > 0 && table.namingLine() == 0;
    Fields fields;
    const TextLine *last = nullptr;
    for (const TextLine &row : table.rows) {
        layout.split(row.text, fields);
        if (row.number < layout.firstLine || !layout.fits(fields.size()))
            continue;
        const std::string_view first = fields.front();
        const bool isSigned = isBetween && fields[size_t(position)].find_first_of("0123456789") != 0;
        const bool isDash = isBetween
            ? !isSigned && PrintedNumber::isDash(fields[size_t(position) - 1])
            : layout.columns.size() == 1 && PrintedNumber::isDash(first.substr(0, first.find(' ')));
        if (!isDash)
            return;
        last = &row;
    }
    if (last)
        fail(source, last->number,
             Texts::tr("a minus must stand right before its number, and a dash cannot separate columns: found %1")
                 .arg(excerpt(last->text)));
}

/// What of the positions' texts is no number: the unit is known then, and what is left out is told.
void noteNotation(TextLayout &layout, const std::vector<TextLine> &rows)
{
    const size_t position = size_t(layout.columnOf(Role::Position));
    Fields fields;
    bool hasErrors = false, hasRanges = false, haveUnit = true;
    for (const TextLine &row : rows) {
        layout.split(row.text, fields);
        if (row.number < layout.firstLine || position >= fields.size())
            continue;
        haveUnit &= fields[position].ends_with("ppm");
        hasErrors |= PrintedNumber::hasPlusMinus(row.text)
            || PrintedNumber::withoutError(fields[position]).size() < fields[position].size();
        hasRanges |= PrintedNumber::isRange(fields[position], layout.decimalComma);
    }
    TextLayout::Unit &unit = layout.columns[position].unit;
    if (haveUnit && unit == TextLayout::Unit::Unknown)
        unit = TextLayout::Unit::Ppm;
    if (hasErrors)
        layout.notes.append(Texts::tr("Errors of the positions were left out."));
    if (hasRanges)
        layout.notes.append(Texts::tr("Ranges of shifts were replaced by their middles."));
}

void noteIgnored(TextLayout &layout)
{
    QStringList names;
    for (const TextLayout::Column &column : layout.columns) {
        if (column.role == Role::Ignored && !column.name.isEmpty())
            names.append(u'"' + column.name.simplified() + u'"');
    }
    if (!names.isEmpty())
        layout.notes.append(Texts::tr("Columns that were not used: %1.").arg(names.join(QStringLiteral(", "))));
}

/// Separator and decimal mark by which most rows have numbers in the same places.
Split bestSplit(const std::vector<TextLine> &rows)
{
    Split best;
    for (const auto &[separator, decimalComma] :
         {std::pair('\t', false), std::pair(';', false), std::pair(',', false), std::pair('|', false),
          std::pair('&', false), std::pair(' ', false), std::pair('\t', true), std::pair(';', true),
          std::pair('|', true), std::pair('&', true), std::pair(' ', true), std::pair(',', true)}) {
        for (bool joinsRanges : {false, true}) {
            if (joinsRanges && separator != ' ')
                continue;
            if (Split split = trySplit(separator, decimalComma, joinsRanges, rows); best < split)
                best = std::move(split);
        }
    }
    return best;
}

/// A sentence with a number in it, or shifts in one with words.
bool isProse(const Split &split, size_t rows)
{
    const bool blanks = split.layout.separator == ' ';
    const std::ptrdiff_t mostWords = blanks ? 2 : 1;
    const auto &columns = split.layout.columns;
    return split.matching == 1 && (split.cutRows > 0 || rows == 1 || blanks)
        && std::count_if(columns.begin(), columns.end(), [](const auto &c) { return !c.numeric; }) > mostWords;
}

bool isMarkField(std::string_view comment, char separator)
{
    return comment.size() > 1 && comment[0] == '#' && separator != ' ' && comment[1] == separator;
}

/// Header lines, numbers and texts of the first lines; the layout gets its first line.
TableSample readSample(TextLayout &layout, const std::vector<TextLine> &sample, const QString &source)
{
    TableSample table;
    table.values.resize(layout.columns.size());
    table.constants.resize(layout.columns.size());
    table.texts.resize(layout.columns.size());
    Fields fields;
    size_t started = 0;
    for (const TextLine &line : sample) {
        if (const std::string_view comment = commentText(line.text); !comment.empty() && started == 0)
            table.headers.push_back({ReaderText::decoded(comment), line.number, true,
                                     trimmed(line.text).starts_with('#'),
                                     isMarkField(trimmed(line.text), layout.separator)});
        if (layout.isEmptyLine(line.text))
            continue;
        layout.split(line.text, fields);
        if (!matches(layout, fields)) {
            if (started == 0)
                table.headers.push_back({ReaderText::decoded(line.text), line.number, false, false, false});
            continue;
        }
        if (started++ == 0)
            layout.firstLine = line.number;
        for (size_t i = 0; i < layout.columns.size(); ++i) {
            table.values[i].push_back(i < fields.size() ? layout.number(i, fields[i]).value_or(0.0) : 0.0);
            if (!layout.columns[i].numeric) {
                const QString text = ReaderText::decoded(fields[i]);
                auto &constant = table.constants[i];
                constant = started == 1 || constant == text ? std::optional(text) : std::nullopt;
                table.texts[i].append(text);
                if (PrintedNumber::isNoNumber(fields[i]))
                    fail(source, line.number, Texts::tr("expected a number, found %1").arg(excerpt(fields[i])));
            }
        }
    }
    return table;
}

} // namespace

TextLayout detectLayout(const std::vector<TextLine> &sample, bool complete, const QString &source,
                        const ReadOptions &options)
{
    std::vector<TextLine> rows;
    std::copy_if(sample.begin(), sample.end(), std::back_inserter(rows),
                 [](const TextLine &line) { return !trimmed(line.text).empty() && !isComment(line.text); });
    if (rows.empty()) {
        const auto isRow = [](const TextLine &line) {
            return line.text.starts_with(';') && line.text.find_first_of("0123456789") != std::string::npos;
        };
        if (std::count_if(sample.begin(), sample.end(), isRow) > 1)
            fail(source, sample.front().number,
                 Texts::tr("lines that begin with \";\" are comments: an empty first column must be taken away"));
        return {};
    }
    Split best = bestSplit(rows);
    TextLayout &layout = best.layout;
    const bool prose = isProse(best, rows.size());
    if (best.matching == 0 || prose) {
        for (const TextLine &row : rows) {
            if (PrintedNumber::isDamaged(trimmed(row.text)))
                fail(source, row.number, Texts::tr("expected a number, found %1").arg(excerpt(row.text)));
        }
        if (complete && rows.size() <= 2 && !prose)
            return {}; // a header alone
        fail(source, rows.front().number,
             Texts::tr("no table of numbers was found, expected \"ppm,intensity\" or peaks"));
    }
    constexpr size_t mostColumns = 64;
    if (layout.columns.size() > mostColumns)
        fail(source, rows.front().number,
             Texts::tr("a row has %1 fields: a position and an intensity a line were expected")
                 .arg(layout.columns.size()));

    TableSample table = readSample(layout, sample, source);
    table.rows = std::move(rows);
    assignRoles(layout, table, source, options);
    if (hasDoubtfulComma(layout, table.rows)) {
        layout.notes.append(
            Texts::tr("Commas were taken to separate positions and heights, so that %1 is a peak at %2; if they "
                      "are decimal commas, a header line \"ppm\" tells so.")
                .arg(excerpt(table.rows.front().text), QString::number(table.values.front().front(), 'g', 10)));
    }
    if (const std::string_view doubtful = doubtfulPosition(layout, table.rows);
        !doubtful.empty() && table.namingLine() == 0) {
        layout.notes.append(
            Texts::tr("%1 was taken as a position with a decimal comma, though other numbers have points; "
                      "if it names atoms, a header line \"Atom,ppm\" tells so.")
                .arg(excerpt(doubtful)));
    }
    noteIgnored(layout);
    refuseDashes(layout, table, source);
    // Without its position a row is none.
    layout.lastIsOptional &= !layout.columns.back().isPositional();
    findRows(layout, sample, table, source);
    noteNotation(layout, table.rows);
    return std::move(layout);
}

} // namespace Workbench
