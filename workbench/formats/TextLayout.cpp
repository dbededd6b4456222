// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/TextLayout.h"

#include "data/NumberText.h"
#include "data/Nuclides.h"
#include "data/ReaderText.h"

#include <QRegularExpression>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <tuple>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::trimmed;
using Role = TextLayout::Role;
using Unit = TextLayout::Unit;

namespace {

constexpr std::string_view commentMarks = "#%!;";
constexpr size_t rowsOfSpectrum = 32;

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

/// A whole comment line's text; empty for another one.
std::string_view commentText(std::string_view line)
{
    line = trimmed(line);
    const size_t start = line.find_first_not_of(commentMarks);
    return start == 0 || start == std::string_view::npos ? std::string_view() : trimmed(line.substr(start));
}

constexpr std::string_view plusMinus = "\xC2\xB1";

bool isPlusMinus(std::string_view field)
{
    return field == plusMinus || field == "+/-" || field == "+-";
}

/// "2.2" of "2.2(1)", "2.2 ± 0.1" and "2.2+/-0.1".
std::string_view withoutError(std::string_view field)
{
    for (std::string_view sign : {plusMinus, std::string_view("+/-")}) {
        // With more than the error behind it the sign stands within a whole row.
        if (const size_t at = field.find(sign); at != std::string_view::npos && at > 0
            && trimmed(field.substr(at + sign.size())).find_first_of(" \t") == std::string_view::npos)
            return trimmed(field.substr(0, at));
    }
    const size_t bracket = field.find('(');
    const bool isError = bracket != std::string_view::npos && bracket > 0 && field.back() == ')'
        && field.find_first_not_of("0123456789.", bracket + 1) == field.size() - 1 && field.size() > bracket + 2;
    return isError ? field.substr(0, bracket) : field;
}

/// With a point for the comma, and the minus signs of print as they are on a keyboard.
std::string asTyped(std::string_view number, bool decimalComma)
{
    std::string text(number);
    if (decimalComma)
        std::replace(text.begin(), text.end(), ',', '.');
    for (std::string_view minus : {"\xE2\x88\x92", "\xE2\x80\x93"}) {
        for (size_t at = text.find(minus); at != std::string::npos; at = text.find(minus, at))
            text.replace(at, minus.size(), 1, '-');
    }
    return text;
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

/// A number whose digits stand in groups of three.
struct Grouped {
    std::string digits; ///< without the marks, with a decimal point
    char mark = 0;
    bool isCertain = false; ///< 1.234 may have three decimals as well; 1.234.567, 1.234,5 and 1 234 may not
};

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

/// What the table of one way to split the lines looks like.
struct Split {
    TextLayout layout;
    size_t matching = 0; ///< rows
    size_t cutRows = 0; ///< of them, with names that look like numbers cut at the wrong place
    size_t headers = 0; ///< lines above them without numbers that have as many fields
    size_t doubtful = 0; ///< columns whose marks may be decimal or group the digits

    bool operator<(const Split &other) const
    {
        return std::tuple(matching - cutRows, matching, headers, other.doubtful)
            < std::tuple(other.matching - other.cutRows, other.matching, other.headers, doubtful);
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

bool isNoNumber(std::string_view field)
{
    const QString text = ReaderText::decoded(field).toLower();
    return text == u"nan" || text == u"inf" || text == u"-inf" || text == u"-nan";
}

/// A number that is damaged rather than a word: 12.3abc, nan. The name of a nucleus is a word.
bool isDamagedNumber(std::string_view field)
{
    if (isNoNumber(field))
        return true;
    static const QRegularExpression nucleus(QStringLiteral("^\\d{1,3}[A-Za-z]{1,2}\\b"));
    return !field.empty() && std::string_view("0123456789.+-").find(field.front()) != std::string_view::npos
        && field.find_first_of("0123456789") != std::string_view::npos
        && !nucleus.match(ReaderText::decoded(field)).hasMatch();
}

/// A number that another separator or decimal mark would not have cut; "7.28 .. 7.24" is a range, 2' an atom.
bool isCut(std::string_view field)
{
    static const QRegularExpression atom(QStringLiteral("^\\d{1,3}['\"′″*]{1,2}$"));
    return isDamagedNumber(field) && field.find("..") == std::string_view::npos
        && !atom.match(ReaderText::decoded(field)).hasMatch();
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
        const std::string_view field = withoutError(fields[column]);
        if (const auto number = grouped(field, decimalComma); number && (mark == 0 || number->isCertain)) {
            mark = number->mark;
            isCertain |= number->isCertain;
        } else if (!number && split.layout.number(field)) {
            isDecimal |= field.find(other) != std::string_view::npos;
        }
    }
    isDoubtful = !isCertain && mark != 0;
    if (mark != 0 && (isCertain || !isDecimal))
        split.layout.columns[column].grouping = mark;
    split.layout.columns[column].isGroupingDoubtful = isDoubtful;
    split.doubtful += isDoubtful || (decimalComma && isDecimal);
}

/// The number of fields that most rows have, and which of them are numbers in most of these rows.
Split trySplit(char separator, bool decimalComma, const std::vector<TextLine> &rows)
{
    Split split;
    split.layout.separator = separator;
    split.layout.decimalComma = decimalComma;
    const std::vector<Fields> all = splitAll(split.layout, rows);
    std::map<size_t, std::vector<Fields>> rowsOf; // with a number, by the count of fields
    for (const Fields &fields : all) {
        const bool any = std::any_of(fields.begin(), fields.end(), [&](std::string_view field) {
            return split.layout.number(field) || (fields.size() > 1 && grouped(withoutError(field), decimalComma));
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
    if (allNumeric && separator != ' ' && rows.size() < rowsOfSpectrum) {
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
    for (const Fields &fields : all) {
        if (matches(split.layout, fields)) {
            ++split.matching;
            bool cut = false;
            for (size_t i = 0; i < fields.size(); ++i)
                cut |= !columns[i].numeric && isCut(fields[i]);
            split.cutRows += cut;
        } else if (fields.size() == columns.size() && split.matching == 0) {
            split.headers += std::none_of(fields.begin(), fields.end(),
                                          [&](std::string_view field) { return split.layout.number(field); });
        }
    }
    return split;
}

/// Text columns that say the same in every row name no peaks: they are empty, behind a separator at the end of the
/// lines, or repeat the unit.
void passOverConstantColumns(TextLayout &layout, const std::vector<std::optional<QString>> &constants, size_t rows)
{
    TextLayout::Column *position = nullptr;
    for (size_t i = 0; i < layout.columns.size(); ++i) {
        TextLayout::Column &column = layout.columns[i];
        if (column.role == Role::Position && !position)
            position = &column;
        if (column.numeric || !constants[i])
            continue;
        const QString text = constants[i]->toLower();
        const Unit unit = text == u"ppm" ? Unit::Ppm
            : text == u"hz"              ? Unit::Hertz
            : text == u"khz"             ? Unit::Kilohertz
                                         : Unit::Unknown;
        if (unit != Unit::Unknown && position && position->unit == Unit::Unknown)
            position->unit = unit;
        if (text.isEmpty() || unit != Unit::Unknown || rows >= rowsOfSpectrum)
            column.role = Role::Ignored;
    }
}

struct Meaning {
    Role role = Role::Ignored;
    Unit unit = Unit::Unknown;
    bool known = false;
};

QStringList wordsOf(const QString &name)
{
    static const QRegularExpression notLetters(QStringLiteral("[^\\p{L}\\p{N}#]+"));
    return name.toLower().split(notLetters, Qt::SkipEmptyParts);
}

/// Also behind a δ: "δexp".
bool hasWordLike(const QString &name, const QRegularExpression &pattern)
{
    const QStringList words = wordsOf(name);
    return std::any_of(words.begin(), words.end(), [&](const QString &word) {
        return pattern.match(word.startsWith(u'δ') ? word.mid(1) : word).hasMatch();
    });
}

/// Shifts of a calculation, which publications put beside the measured ones.
bool isCalculated(const QString &name)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^(?:.*calc|calcd|calculat.*|computed|predicted|gipaw|dft|theo|theor.*|ber|berechn.*|simul.*)$"));
    return hasWordLike(name, pattern);
}

/// "exp", which beside ppm is an intensity and beside "calc" a shift.
bool isMeasured(const QString &name)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:exp.*|measured|observed|.*obs|gem|gemessen.*|beobacht.*)$"));
    return hasWordLike(name, pattern);
}

/// Of the first nuclide that a text names, and the isotope that everybody measures of the element in "δH".
QString nucleusIn(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral("(?<![A-Za-z0-9.])\\^?(\\d{1,3}[A-Z][a-z]?)(?![A-Za-z0-9])")),
        letter(QStringLiteral("δ_?([HCNFP])(?![A-Za-z0-9])"));
    for (auto match = pattern.globalMatch(text); match.hasNext();) {
        if (const QString name = match.next().captured(1); Nuclides::table().contains(name))
            return name;
    }
    const QString element = letter.match(text).captured(1);
    return element == u"H" ? QStringLiteral("1H")
        : element == u"C"  ? QStringLiteral("13C")
        : element == u"N"  ? QStringLiteral("15N")
        : element == u"F"  ? QStringLiteral("19F")
        : element == u"P"  ? QStringLiteral("31P")
                           : QString();
}

/// Differences, errors and widths, which may be in ppm as shifts are.
bool isNoShift(const QString &name, const QStringList &words)
{
    // In lower case the difference would be a shift.
    if (name.contains(u'Δ') || name.contains(u'∆') || name.contains(u'±') || name.contains(QStringLiteral("\\Delta"))
        || name.contains(QStringLiteral("+/-")))
        return true;
    static const QRegularExpression pattern(QStringLiteral("^(?:diff.*|deviat.*|dev|abweich.*|resid.*|errors?|fehler.*|"
                                                           "uncertaint.*|unsicherheit.*|sigma|std|stdev|sd|esd|rmsd"
                                                           "|.*width|.*widths|.*breiten?|fwhm|hwhm|lb|lw\\d*|δν.*)$"));
    return std::any_of(words.begin(), words.end(), [](const QString &word) { return pattern.match(word).hasMatch(); });
}

/// What the name of a column says: "Chemical Shift (ppm)", "δ(1H)", "Hz", "Intensity", "ppm_f1".
Meaning meaningOf(const QString &name)
{
    const QStringList words = wordsOf(name);
    const auto has = [&](std::initializer_list<const char *> any) {
        return std::any_of(any.begin(), any.end(),
                           [&](const char *word) { return words.contains(QString::fromUtf8(word)); });
    };
    if (isNoShift(name, words)
        || has({"integral", "integrals", "area", "fläche", "phase", "coupling", "volume",     "cq",       "pq",  "η",
                "ηq",       "eta",       "csa",  "δcsa",   "δσ",    "span",     "skew",       "δ11",      "δ22", "δ33",
                "δ₁₁",      "δ₂₂",       "δ₃₃",  "δxx",    "δyy",   "δzz",      "anisotropy", "asymmetry"})
        || (has({"δ", "delta"}) && has({"11", "22", "33", "xx", "yy", "zz"})))
        return {Role::Ignored, Unit::Unknown, true};
    // "δH (J in Hz)"
    static const QRegularExpression shiftOf(QStringLiteral("δ_?(?:\\^?\\d{1,3})?[A-Z][a-z]?(?![A-Za-z])"));
    const bool isDelta = shiftOf.match(name).hasMatch() && !nucleusIn(name).isEmpty();
    const Unit unit = isDelta  ? Unit::Ppm
        : has({"khz"})         ? Unit::Kilohertz
        : has({"hz", "hertz"}) ? Unit::Hertz
        : has({"ppm", "shift", "shifts", "verschiebung", "verschiebungen", "δ", "δiso", "δexp", "δobs", "δcalc",
               "delta", "position", "positions", "pos"})
        ? Unit::Ppm
        : Unit::Unknown;
    const bool isShielding =
        std::any_of(words.begin(), words.end(), [](const QString &word) { return word.startsWith(u'σ'); });
    if (isShielding || has({"shielding", "shieldings"}))
        return {Role::Ignored, unit, true};
    // "Index (F1)" counts points along an axis, and "Assign F1" names its atoms.
    if (has({"index", "address"}))
        return {Role::Number, unit, true};
    if (has({"assign", "assignment", "zuordnung"}))
        return {Role::Label, unit, true};
    if (unit != Unit::Unknown || has({"x", "f1", "f2", "w1", "w2", "frequency"}))
        return {has({"f1", "w1"}) ? Role::PositionF1 : Role::Position, unit, true};
    if (has({"imag", "imaginary", "im"}))
        return {Role::Imaginary, unit, true};
    if (has({"intensity", "intensities", "height", "amplitude", "real", "re", "signal", "y", "data", "abundance", "int",
             "spectrum", "intensität", "intensitäten", "höhe"}))
        return {Role::Intensity, unit, true};
    if (has({"count", "sites", "multiplicity"}))
        return {Role::Count, unit, true};
    if (has({"label", "labels", "name", "atom", "atoms", "site", "comment", "annotation"}))
        return {Role::Label, unit, true};
    if (has({"number", "no", "nr", "#", "point", "peak", "id"}))
        return {Role::Number, unit, true};
    return {};
}

/// The unit that a line above the table speaks of; "100 Hz" is the size of something else.
Unit unitIn(QString line)
{
    static const QRegularExpression amount(QStringLiteral("\\d\\s*(?:ppm|k?Hz)\\b"));
    return meaningOf(line.remove(amount)).unit;
}

/// 0, 1, 2… or 1, 2, 3…
bool counts(const std::vector<double> &values)
{
    if (values.size() < 3 || (values[0] != 0.0 && values[0] != 1.0))
        return false;
    for (size_t i = 0; i < values.size(); ++i) {
        if (values[i] != values[0] + double(i))
            return false;
    }
    return true;
}

/// The names in a line above the table; none where it is not split into as many as there are columns.
QStringList namesIn(const QString &header, const TextLayout &layout, bool firstCounts)
{
    // "62.5 MHz" and "9.4 T" are no names.
    static const QRegularExpression quantity(QStringLiteral("\\d\\s*(?:MHz|GHz|T)\\b"));
    if (quantity.match(header).hasMatch())
        return {};
    const qsizetype count = qsizetype(layout.columns.size());
    QStringList names;
    const auto fit = [&] {
        // The column that counts the rows may go without a name, or its "#" pass for the mark of a comment.
        if (names.size() + 1 == count && count > 2 && firstCounts)
            names.prepend(QStringLiteral("#"));
        return names.size() == count;
    };
    const std::string text = header.toStdString();
    Fields fields;
    for (char separator : {layout.separator, ',', '\t', ';', ' '}) {
        TextLayout other;
        other.separator = separator;
        other.split(text, fields);
        names.clear();
        for (std::string_view field : fields)
            names.append(ReaderText::decoded(field));
        if (fit())
            return names;
    }
    // Names of several words have two blanks between them; or the second word is a unit in brackets.
    static const QRegularExpression wide(QStringLiteral("\\s{2,}")), beforeNames(QStringLiteral("\\s+(?![(\\[])"));
    for (const QRegularExpression &between : {wide, beforeNames}) {
        names = header.trimmed().split(between);
        if (fit())
            return names;
    }
    return {};
}

bool isPositional(const TextLayout::Column &column)
{
    return column.role == Role::Position || column.role == Role::PositionF1;
}

/// "Position", which is one along an axis or in a molecule.
bool isCounting(const QString &name)
{
    const QString word = name.trimmed().toLower();
    return word == u"position" || word == u"pos" || word == u"pos.";
}

/// A line above the table.
struct HeaderLine {
    QString text;
    int number = 0;
    bool isNaming = false; ///< it names the columns
};

/// A header may be no more than a nucleus.
bool isNucleus(const QString &name)
{
    static const QRegularExpression notLetters(QStringLiteral("[^A-Za-z0-9]"));
    return Nuclides::table().contains(QString(name).remove(notLetters));
}

/// Names from the lines above the table, the nearest last; several lines may make one name each.
void nameColumns(TextLayout &layout, std::vector<HeaderLine> &headers, const std::vector<std::vector<double>> &values)
{
    constexpr int mostLines = 4;
    const bool firstCounts = counts(values.front());
    int lines = 0;
    Fields fields;
    for (auto header = headers.rbegin(); header != headers.rend() && lines < mostLines; ++header) {
        // Rows that are no good.
        const std::string text = header->text.toStdString();
        layout.split(text, fields);
        const bool hasNumber = fields.size() == layout.columns.size()
            && std::any_of(fields.begin(), fields.end(), [&](auto field) { return layout.number(field).has_value(); });
        lines += !hasNumber;
        // Settings, one beside the other.
        if (hasNumber || header->text.count(u'=') > 1)
            continue;
        const QStringList names = namesIn(header->text, layout, firstCounts);
        // "Nucleus,13C" is a setting.
        if (std::none_of(names.begin(), names.end(), [](const QString &name) { return meaningOf(name).known; })
            && (names.isEmpty() || !std::all_of(names.begin(), names.end(), isNucleus)))
            continue;
        header->isNaming = true;
        for (size_t i = 0; i < layout.columns.size(); ++i) {
            TextLayout::Column &column = layout.columns[i];
            const QString &name = names[qsizetype(i)];
            column.name = column.name.isEmpty() ? name : name + u' ' + column.name;
        }
    }
    bool isNamed = false;
    for (TextLayout::Column &column : layout.columns) {
        const Meaning meaning = meaningOf(column.name);
        // A few numbers are heights where a name says so.
        if (column.isSparse && (!meaning.known || meaning.role == Role::Label))
            column.numeric = false;
        column.role = meaning.role;
        column.unit = meaning.unit;
        column.nucleus = nucleusIn(column.name);
        isNamed |= (column.role == Role::Position || column.role == Role::PositionF1) && !isCounting(column.name);
    }
    for (size_t i = 0; i < layout.columns.size(); ++i) {
        TextLayout::Column &column = layout.columns[i];
        // A trace may have the name of a nucleus, and the positions of a molecule numbers.
        if (!isNamed && isNucleus(column.name))
            column.role = Role::Position;
        const bool hasShifts = std::any_of(layout.columns.begin(), layout.columns.end(), [&](const auto &other) {
            return &other != &column && (isPositional(other) || isNucleus(other.name));
        });
        if (isCounting(column.name) && hasShifts && column.numeric && counts(values[i]))
            column.role = Role::Number;
    }
}

bool areWhole(const std::vector<double> &values)
{
    return std::all_of(values.begin(), values.end(), [](double v) { return v == std::floor(v); });
}

/// The other column is this one times a positive number: Hz and ppm of the same axis.
double commonRatio(const std::vector<double> &numerator, const std::vector<double> &denominator)
{
    double xy = 0.0, xx = 0.0;
    for (size_t i = 0; i < numerator.size(); ++i) {
        xy += numerator[i] * denominator[i];
        xx += denominator[i] * denominator[i];
    }
    const double ratio = xx > 0.0 ? xy / xx : 0.0;
    const auto [low, high] = std::minmax_element(denominator.begin(), denominator.end());
    for (size_t i = 0; i < numerator.size(); ++i) {
        if (!(std::abs(numerator[i] - ratio * denominator[i]) <= 1e-3 * ratio * (*high - *low)))
            return 0.0;
    }
    return ratio;
}

/// One of two coordinates stays while the other one runs, and the run begins again where the first one changes.
bool isGrid(const std::vector<double> &running, const std::vector<double> &staying)
{
    constexpr std::ptrdiff_t leastRow = 4;
    const auto change =
        std::find_if(staying.begin(), staying.end(), [&](double value) { return value != staying.front(); });
    const std::ptrdiff_t row = change - staying.begin();
    return running.size() >= rowsOfSpectrum && change != staying.end() && row >= leastRow
        && running[size_t(row)] == running.front() && looksEven({running.begin(), running.begin() + leastRow});
}

/// The roles of columns that no header names, by what they hold.
class RoleGuess {
public:
    RoleGuess(TextLayout &layout, const std::vector<std::vector<double>> &values, const QString &source,
              const ReadOptions &options)
        : m_layout(layout), m_values(values), m_source(source), m_options(options)
    {
        const bool hasOwnName = std::any_of(layout.columns.begin(), layout.columns.end(), [](const auto &column) {
            return column.numeric && !column.name.isEmpty() && !meaningOf(column.name).known;
        });
        for (int i = 0; i < int(layout.columns.size()); ++i) {
            TextLayout::Column &column = layout.columns[size_t(i)];
            const Meaning meaning = meaningOf(column.name);
            // "Atom d(13C)": atoms may be numbered.
            if (column.numeric && hasOwnName && meaning.role == Role::Label)
                column.role = Role::Label;
            else if (column.numeric && !(meaning.known && meaning.role == Role::Ignored))
                m_numeric.push_back(i);
        }
    }

    void guess()
    {
        switch (m_numeric.size()) {
        case 0:
            fail(m_source, m_layout.firstLine,
                 Texts::tr("no table of numbers was found, expected \"ppm,intensity\" or peaks"));
        case 1:
            return guessOne();
        case 2:
            return guessTwo();
        case 3:
            return guessThree();
        case 4:
            return guessFour();
        case 5:
            if (counts(values(0)) && commonRatio(values(2), values(3)) > 1.0)
                return guessFive();
            [[fallthrough]];
        default:
            fail(m_source, m_layout.firstLine,
                 Texts::tr("%1 columns of numbers need a header line that names them, such as \"ppm,intensity\"")
                     .arg(m_numeric.size()));
        }
    }

private:
    const std::vector<double> &values(size_t i) const { return m_values[size_t(m_numeric[i])]; }
    bool isLong() const { return values(0).size() >= rowsOfSpectrum; }

    void take(std::initializer_list<Role> roles)
    {
        size_t i = 0;
        for (Role role : roles)
            m_layout.columns[size_t(m_numeric[i++])].role = role;
    }

    void guessOne()
    {
        constexpr size_t mostUnnamedPeaks = 256;
        if (values(0).size() > mostUnnamedPeaks) {
            fail(m_source, m_layout.firstLine,
                 Texts::tr(
                     "a single column of numbers without a name: intensities have no axis here; if these are positions "
                     "of peaks, say so in a header line \"ppm\""));
        }
        take({Role::Position});
    }

    void guessTwo()
    {
        const bool numbered = counts(values(0)) && !areWhole(values(1));
        if (isLong() && counts(values(0)) && looksEven(values(0))) {
            fail(m_source, m_layout.firstLine,
                 Texts::tr("the first column counts the points, a position in ppm or Hz was expected; if these are "
                           "positions, say so in a header line \"ppm,intensity\""));
        }
        if (m_options.dimensions == 2)
            return take({Role::Position, Role::PositionF1});
        if (numbered) {
            m_layout.notes.append(
                Texts::tr("The first column was taken as the number of the peak, the second as its position."));
            return take({Role::Number, Role::Position});
        }
        take({Role::Position, Role::Intensity});
    }

    void guessThree()
    {
        if (isGrid(values(0), values(1)) || isGrid(values(1), values(0)))
            return take({Role::Position, Role::PositionF1, Role::Intensity});
        if (isLong() && looksEven(values(0)) && !counts(values(0))) {
            m_layout.notes.append(Texts::tr("The three columns were taken as position, real and imaginary part."));
            return take({Role::Position, Role::Intensity, Role::Imaginary});
        }
        if (counts(values(0))) {
            m_layout.notes.append(Texts::tr("The columns were taken as number, position and height of the peaks."));
            return take({Role::Number, Role::Position, Role::Intensity});
        }
        if (m_options.dimensions == 1)
            fail(m_source, m_layout.firstLine, Texts::tr("expected \"position[,height]\", found 3 fields"));
        m_layout.notes.append(Texts::tr("The columns were taken as position in F2, position in F1 and height."));
        take({Role::Position, Role::PositionF1, Role::Intensity});
    }

    void guessFour()
    {
        const double frequency = commonRatio(values(2), values(3));
        if (!counts(values(0)) || !(frequency > 1.0)) {
            fail(
                m_source, m_layout.firstLine,
                Texts::tr("four columns without names were expected to be number, intensity, Hz and ppm; a header line "
                          "such as \"ppm,intensity\" tells what they are"));
        }
        m_layout.notes.append(Texts::tr("The four columns were taken as number, intensity, Hz and ppm."));
        take({Role::Number, Role::Intensity, Role::Ignored, Role::Position});
        m_layout.columns[size_t(m_numeric[2])].unit = Unit::Hertz;
        m_layout.columns[size_t(m_numeric[3])].unit = Unit::Ppm;
    }

    /// As TopSpin prints its peaks.
    void guessFive()
    {
        m_layout.notes.append(
            Texts::tr("The five columns were taken as number, point, Hz, ppm and height of the peaks."));
        take({Role::Number, Role::Ignored, Role::Ignored, Role::Position, Role::Intensity});
        m_layout.columns[size_t(m_numeric[2])].unit = Unit::Hertz;
        m_layout.columns[size_t(m_numeric[3])].unit = Unit::Ppm;
    }

    TextLayout &m_layout;
    const std::vector<std::vector<double>> &m_values;
    const QString &m_source;
    const ReadOptions &m_options;
    std::vector<int> m_numeric;
};

/// Of several columns with positions along an axis the one in ppm counts, and a measured one before a calculated one; a
/// second one is F1 where it is of another nucleus, or two dimensions are looked for.
void sortOutPositions(TextLayout &layout, const ReadOptions &options)
{
    using Columns = std::vector<TextLayout::Column *>;
    const auto along = [&](Role role) {
        Columns found;
        for (TextLayout::Column &column : layout.columns) {
            if (column.role == role && column.numeric)
                found.push_back(&column);
        }
        const auto keep = [&](auto isBetter) {
            if (std::none_of(found.begin(), found.end(), isBetter))
                return;
            const auto others = std::stable_partition(found.begin(), found.end(), isBetter);
            std::for_each(others, found.end(), [](auto *column) { column->role = Role::Ignored; });
            found.erase(others, found.end());
        };
        keep([](const auto *column) { return !isCalculated(column->name); });
        keep([](const auto *column) { return column->unit == Unit::Ppm; });
        return found;
    };
    Columns f2 = along(Role::Position), f1 = along(Role::PositionF1);
    if (f1.empty() && f2.size() > 1) {
        const auto second = std::find_if(f2.begin() + 1, f2.end(), [&](const auto *column) {
            return options.dimensions == 2
                || (!f2[0]->nucleus.isEmpty() && !column->nucleus.isEmpty() && column->nucleus != f2[0]->nucleus);
        });
        if (second != f2.end()) {
            (*second)->role = Role::PositionF1;
            f2.erase(second);
        }
    }
    // A lone F1 is the only axis.
    if (f2.empty() && !f1.empty())
        f1.front()->role = Role::Position;
    for (const Columns &columns : {f2, f1}) {
        for (size_t i = 1; i < columns.size(); ++i)
            columns[i]->role = Role::Ignored;
    }
}

/// "ppm" and "Shift [ppm]", and nothing else.
bool isAxisName(const QString &name)
{
    static const QStringList usual{QStringLiteral("ppm"),      QStringLiteral("hz"),       QStringLiteral("khz"),
                                   QStringLiteral("x"),        QStringLiteral("f2"),       QStringLiteral("chemical"),
                                   QStringLiteral("shift"),    QStringLiteral("shifts"),   QStringLiteral("δ"),
                                   QStringLiteral("position"), QStringLiteral("frequency")};
    const QStringList words = wordsOf(name);
    return std::all_of(words.begin(), words.end(), [](const QString &word) { return usual.contains(word); });
}

/// "site, exp, calc", where no axis stands before them.
bool takeMeasured(TextLayout &layout)
{
    auto &columns = layout.columns;
    const auto of = [&](auto says) {
        return std::find_if(columns.begin(), columns.end(), [&](const auto &column) {
            return column.numeric && (column.role == Role::Ignored || isPositional(column)) && says(column.name)
                && !(meaningOf(column.name).known && !isPositional(column));
        });
    };
    const auto measured = of(isMeasured), calculated = of(isCalculated),
               axis = std::find_if(columns.begin(), columns.end(),
                                   [](const auto &column) { return column.numeric && isPositional(column); });
    if (measured == columns.end() || calculated == columns.end() || axis <= std::min(measured, calculated)
        || std::any_of(axis, columns.end(), [](const auto &c) { return isPositional(c) && isAxisName(c.name); }))
        return axis != columns.end();
    for (TextLayout::Column &column : columns) {
        if (isPositional(column) && column.numeric)
            column.role = Role::Ignored;
    }
    measured->role = calculated->role = Role::Position;
    return true;
}

/// Text in a column whose name says that it holds positions or heights is an error that names its first line, unless
/// other columns have what counts: the nucleus of the positions, measured ones.
class TextColumns {
public:
    TextColumns(TextLayout &layout, const std::vector<TextLine> &rows, int firstRow, const QString &source)
        : m_layout(layout), m_rows(rows), m_firstRow(firstRow), m_source(source)
    {
    }

    /// Of positions alone, before others are guessed.
    void checkPositions() const
    {
        const auto &columns = m_layout.columns;
        if (std::any_of(columns.begin(), columns.end(), [](const auto &c) { return c.numeric && isPositional(c); }))
            return;
        for (size_t i = 0; i < columns.size(); ++i) {
            if (!columns[i].numeric && isPositional(columns[i]) && !isConstant(i))
                failAt(i);
        }
    }

    void settle() const
    {
        const auto &columns = m_layout.columns;
        const auto found = std::find_if(columns.begin(), columns.end(),
                                        [](const auto &c) { return c.numeric && c.role == Role::Position; });
        const size_t position = size_t(found - columns.begin());
        for (size_t i = 0; i < columns.size(); ++i) {
            TextLayout::Column &column = m_layout.columns[i];
            if (column.numeric)
                continue;
            if (isPositional(column) && !isConstant(i)) {
                const TextLayout::Column &chosen = m_layout.columns[position];
                if (i < position
                    || !(isCalculated(column.name) || (!column.nucleus.isEmpty() && column.nucleus != chosen.nucleus)))
                    failAt(i);
                column.role = Role::Ignored;
                continue;
            }
            const QStringList words = wordsOf(column.name);
            // "Signal" may be a name.
            const bool isHeight = words.contains(u"int") || words.contains(u"height") || words.contains(u"höhe")
                || words.contains(u"amplitude") || words.filter(QStringLiteral("intensit")).size() > 0;
            if (column.role == Role::Intensity && (isHeight || holdsNumbers(i)) && !isConstant(i) && !hasHeights())
                failAt(i);
            column.role = column.role == Role::Ignored && meaningOf(column.name).known ? Role::Ignored : Role::Label;
        }
    }

    /// Without names, numbers that could not be read are no names of peaks.
    void checkNames() const
    {
        static const QRegularExpression decimals(QStringLiteral("^[-+]?\\d+[.,]\\d"));
        forEachField([&](size_t i, int line, std::string_view field) {
            if (!m_layout.columns[i].numeric && decimals.match(ReaderText::decoded(field)).hasMatch())
                fail(m_source, line, Texts::tr("expected a number, found %1").arg(excerpt(field)));
        });
    }

private:
    template <typename Function>
    void forEachField(Function function) const
    {
        Fields fields;
        for (const TextLine &row : m_rows) {
            m_layout.split(row.text, fields);
            if (row.number < m_firstRow || m_layout.isEmptyLine(row.text) || fields.size() != m_layout.columns.size())
                continue;
            for (size_t i = 0; i < fields.size(); ++i)
                function(i, row.number, fields[i]);
        }
    }

    [[noreturn]] void failAt(size_t column) const
    {
        forEachField([&](size_t i, int line, std::string_view field) {
            if (i == column && !m_layout.number(i, field))
                fail(m_source, line, Texts::tr("expected a number, found %1").arg(excerpt(field)));
        });
        fail(m_source, m_firstRow, Texts::tr("expected a number, found %1").arg(excerpt({})));
    }

    /// The unit in each row, or nothing.
    bool isConstant(size_t column) const
    {
        bool all = true;
        forEachField([&](size_t i, int, std::string_view field) {
            all &= i != column || field.empty() || field == "ppm" || field == "Hz" || field == "kHz";
        });
        return all;
    }
    bool holdsNumbers(size_t column) const
    {
        bool any = false;
        forEachField([&](size_t i, int, std::string_view field) {
            any |= i == column && (isDamagedNumber(field) || m_layout.number(field));
        });
        return any;
    }
    bool hasHeights() const
    {
        return std::any_of(m_layout.columns.begin(), m_layout.columns.end(),
                           [](const auto &c) { return c.numeric && c.role == Role::Intensity; });
    }

    TextLayout &m_layout;
    const std::vector<TextLine> &m_rows;
    int m_firstRow;
    const QString &m_source;
};

/// A header may name the position alone, or the intensity by a name of its own ("I", "sample 3").
void findIntensity(TextLayout &layout)
{
    auto &columns = layout.columns;
    if (const int known = layout.columnOf(Role::Intensity); known >= 0 || layout.columnOf(Role::Imaginary) >= 0) {
        const QString name = known >= 0 ? columns[size_t(known)].name.simplified() : QString();
        if (!name.isEmpty() && !meaningOf(name).known)
            layout.notes.append(Texts::tr("Column \"%1\" was taken as the intensity.").arg(name));
        return;
    }
    const bool areShifts = isMeasured(columns[size_t(layout.columnOf(Role::Position))].name);
    const auto mayBe = [&](const auto &column) {
        return column.numeric && column.role == Role::Ignored && !meaningOf(column.name).known
            && !(areShifts && isCalculated(column.name));
    };
    // The column without a name counts the rows.
    auto found =
        std::find_if(columns.begin(), columns.end(), [&](const auto &c) { return mayBe(c) && !c.name.isEmpty(); });
    if (found == columns.end())
        found = std::find_if(columns.begin(), columns.end(), mayBe);
    if (found == columns.end())
        return;
    found->role = Role::Intensity;
    layout.notes.append(Texts::tr("Column \"%1\" was taken as the intensity.").arg(found->name.simplified()));
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
               return isDigits(fields[0]) && isDigits(fields.back()) && !fields.back().starts_with('-')
                   && row.text.find_first_of(" \t\"") == std::string::npos;
           });
}

/// The first of several columns of a role stays.
void keepFirst(TextLayout &layout, Role role)
{
    bool taken = false;
    for (TextLayout::Column &column : layout.columns) {
        if (column.role == role && std::exchange(taken, true))
            column.role = Role::Ignored;
    }
}

/// In MHz, from a column in Hz beside the position in ppm, or the only frequency that the lines above name.
void findFrequency(TextLayout &layout, const std::vector<std::vector<double>> &values,
                   const std::vector<HeaderLine> &headers)
{
    const size_t position = size_t(layout.columnOf(Role::Position));
    for (size_t i = 0; i < layout.columns.size() && layout.columns[position].unit == Unit::Ppm; ++i) {
        if (layout.columns[i].role == Role::Ignored && layout.columns[i].numeric
            && layout.columns[i].unit == Unit::Hertz)
            layout.frequency = commonRatio(values[i], values[position]);
    }
    static const QRegularExpression pattern(QStringLiteral("(?<![\\d.,])(\\d+(?:[.,]\\d+)?)\\s*MHz"));
    QStringList found;
    for (const HeaderLine &header : headers) {
        for (auto match = pattern.globalMatch(header.text); match.hasNext();)
            found.append(match.next().captured(1).replace(u',', u'.'));
    }
    found.removeDuplicates();
    if (layout.frequency == 0.0 && found.size() == 1)
        layout.frequency = found.first().toDouble();
}

/// What stands above the rows, and where a row begins that must be understood.
class Beginning {
public:
    Beginning(const TextLayout &layout, int namingLine)
        : m_layout(layout), m_namingLine(namingLine), m_position(size_t(layout.columnOf(Role::Position)))
    {
    }

    /// Whether a line that is no row may be passed over before the first row.
    bool mayPass(int number, const std::string &line, const Fields &fields) const
    {
        const auto isLetterOrDigit = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c & 0x80; };
        if (number <= m_namingLine || std::none_of(line.begin(), line.end(), isLetterOrDigit) || line.starts_with('\\'))
            return true;
        return m_namingLine > 0 ? isBelowNames(line, fields) : isTitle(line, fields);
    }

private:
    std::string_view position(const Fields &fields) const
    {
        return m_position < fields.size() ? fields[m_position] : std::string_view();
    }

    /// Units.
    bool isBelowNames(const std::string &line, const Fields &fields) const
    {
        if (line.find_first_of("0123456789") != std::string::npos)
            return false;
        static const QRegularExpression unit(QStringLiteral("^(?:[\\[(].*[\\])]|ppm|k?Hz|)$"));
        return fields.size() != m_layout.columns.size() || unit.match(ReaderText::decoded(position(fields))).hasMatch();
    }

    bool isTitle(const std::string &line, const Fields &fields) const
    {
        static const QRegularExpression damaged(QStringLiteral("^[^\\d=]{0,6}\\d+[.,]\\d+[^\\d=]{0,6}$")),
            quantity(QStringLiteral("\\d\\s*(?:[kMG]Hz|K|T|°C)\\b"));
        bool hasWord = false, allNumbers = true, anyNumber = false;
        for (size_t i = 0; i < std::min(fields.size(), m_layout.columns.size()); ++i) {
            const bool isNumber = m_layout.number(i, fields[i]).has_value();
            if (!m_layout.columns[i].numeric)
                continue;
            allNumbers &= isNumber;
            anyNumber |= isNumber;
            hasWord |= !isNumber && !fields[i].empty() && !isDamagedNumber(fields[i]);
        }
        const std::string_view first = position(fields);
        const bool isNumber = m_position < fields.size() && m_layout.number(m_position, first).has_value();
        if (quantity.match(ReaderText::decoded(line)).hasMatch())
            return true;
        const bool isWhole = first.find_first_of(".,") >= first.size() - std::min<size_t>(first.size(), 1);
        if (fields.size() != m_layout.columns.size()) {
            const bool isAll = std::all_of(fields.begin(), fields.end(),
                                           [&](std::string_view field) { return m_layout.number(field).has_value(); });
            return !isAll && !(isNumber && !isWhole && allNumbers);
        }
        if (isNumber)
            return m_layout.separator == ' ' && isWhole && hasWord;
        if (first.empty())
            return !anyNumber;
        return !damaged.match(ReaderText::decoded(first)).hasMatch() && hasWord;
    }

    const TextLayout &m_layout;
    int m_namingLine;
    size_t m_position;
};

/// The first row, from which on every line must be one.
void findRows(TextLayout &layout, const std::vector<TextLine> &sample, int namingLine, bool isShort,
              const QString &source)
{
    const Beginning beginning(layout, namingLine);
    Fields fields;
    int passedOver = 0, without = 0;
    layout.firstLine = 0;
    const int height = layout.columnOf(Role::Intensity);
    for (const TextLine &line : sample) {
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
            ++passedOver;
            continue;
        }
        if (!layout.fits(fields.size()) && (layout.firstLine > 0 || odd() < 0)) {
            fail(source, line.number,
                 Texts::tr("expected %1 fields as in the lines before, found %2")
                     .arg(layout.columns.size())
                     .arg(fields.size()));
        }
        if (const int i = odd(); i >= 0)
            fail(source, line.number, Texts::tr("expected a number, found %1").arg(excerpt(fields[size_t(i)])));
        if (layout.firstLine == 0)
            layout.firstLine = line.number;
        const bool isWithout = fields.size() < layout.columns.size() || (height >= 0 && fields[size_t(height)].empty());
        layout.someHaveNoHeight |= isWithout;
        without += isWithout;
    }
    if (without > 0)
        layout.notes.append(Texts::tr("Peaks without a height (%1) were given the height 1.").arg(without));
    if (passedOver > 1)
        layout.notes.append(Texts::tr("%1 lines above the table were passed over.").arg(passedOver));
}

/// What of the positions' texts was left out.
void noteNotation(TextLayout &layout, const std::vector<TextLine> &rows)
{
    const size_t position = size_t(layout.columnOf(Role::Position));
    Fields fields;
    bool hasErrors = false, hasRanges = false;
    for (const TextLine &row : rows) {
        layout.split(row.text, fields);
        if (row.number < layout.firstLine || position >= fields.size())
            continue;
        hasErrors |= row.text.find(plusMinus) != std::string::npos
            || withoutError(fields[position]).size() < fields[position].size();
        hasRanges |= rangeDash(asTyped(withoutError(fields[position]), layout.decimalComma)) != std::string::npos;
    }
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

double rangeMiddle(double from, double to)
{
    // Multiplets are narrow.
    const bool isNegative = from < 0 && to > 0 && std::abs(from + to) < -0.1 * from;
    return 0.5 * (from + (isNegative ? -to : to));
}

bool looksEven(const std::vector<double> &positions)
{
    if (positions.size() < 3)
        return positions.size() == 2 && positions[0] != positions[1];
    const double step = (positions.back() - positions.front()) / double(positions.size() - 1);
    for (size_t i = 0; i < positions.size(); ++i) {
        // Rounded positions lie off by up to half of their last place, which may be several steps.
        if (std::abs(positions[i] - positions.front() - step * double(i)) > 3.0 * std::abs(step))
            return false;
    }
    return step != 0.0;
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
    if (separator == '&' && rest.ends_with("\\\\"))
        rest = trimmed(rest.substr(0, rest.size() - 2));
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
        if (blanks && !fields.empty() && isPlusMinus(field))
            isError = true;
        else if (!std::exchange(isError, false))
            fields.push_back(field);
        if (end == rest.size())
            break;
        rest.remove_prefix(end + 1);
        if (blanks)
            rest = trimmed(rest);
    }
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
    return !isUsed(column) || (field.empty() && mayBeEmpty) || number(column, field);
}

std::optional<double> TextLayout::number(size_t column, std::string_view field) const
{
    const char mark = columns[column].grouping;
    if (mark == 0)
        return number(field);
    const std::string_view value = withoutError(field);
    if (const auto digits = grouped(value, decimalComma))
        return digits->mark == mark ? NumberText::parse<double>(digits->digits) : std::nullopt;
    // A point in a column where points group the digits.
    const bool isOdd = mark == (decimalComma ? '.' : ',') && value.find(mark) != std::string_view::npos;
    return isOdd ? std::nullopt : number(field);
}

std::optional<double> TextLayout::number(std::string_view field) const
{
    if (const auto plain = NumberText::parse<double>(field))
        return plain;
    std::string text = asTyped(withoutError(field), decimalComma);
    if (text.size() > 1 && text.ends_with('%'))
        text.pop_back();
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

TextLayout detectLayout(const std::vector<TextLine> &sample, bool complete, const QString &source,
                        const ReadOptions &options)
{
    std::vector<TextLine> rows;
    for (const TextLine &line : sample) {
        if (!trimmed(line.text).empty() && commentText(line.text).empty()
            && commentMarks.find(trimmed(line.text).front()) == std::string_view::npos)
            rows.push_back(line);
    }
    if (rows.empty())
        return {};
    Split best;
    for (const auto &[separator, decimalComma] :
         {std::pair('\t', false), std::pair(';', false), std::pair(',', false), std::pair('|', false),
          std::pair('&', false), std::pair(' ', false), std::pair('\t', true), std::pair(';', true),
          std::pair(' ', true), std::pair(',', true)}) {
        if (Split split = trySplit(separator, decimalComma, rows); best < split)
            best = std::move(split);
    }
    TextLayout &layout = best.layout;
    // A sentence with a number in it, or shifts in one with words.
    constexpr std::ptrdiff_t mostWords = 2;
    const bool isProse = best.matching == 1 && (best.cutRows > 0 || rows.size() == 1 || layout.separator == ' ')
        && std::count_if(layout.columns.begin(), layout.columns.end(), [](const auto &c) { return !c.numeric; })
            > (layout.separator == ' ' ? mostWords : 1);
    if (best.matching == 0 || isProse) {
        for (const TextLine &row : rows) {
            if (isDamagedNumber(trimmed(row.text)))
                fail(source, row.number, Texts::tr("expected a number, found %1").arg(excerpt(row.text)));
        }
        if (complete && rows.size() <= 2 && !isProse)
            return {}; // a header alone
        fail(source, rows.front().number,
             Texts::tr("no table of numbers was found, expected \"ppm,intensity\" or peaks"));
    }

    constexpr size_t mostColumns = 64;
    if (layout.columns.size() > mostColumns)
        fail(source, rows.front().number,
             Texts::tr("a row has %1 fields: a position and an intensity a line were expected")
                 .arg(layout.columns.size()));

    std::vector<HeaderLine> headers;
    std::vector<std::vector<double>> values(layout.columns.size()); // empty fields are 0
    std::vector<std::optional<QString>> constants(layout.columns.size()); // texts of columns that have only one
    Fields fields;
    size_t started = 0;
    for (const TextLine &line : sample) {
        if (const std::string_view comment = commentText(line.text); !comment.empty() && started == 0)
            headers.push_back({ReaderText::decoded(comment), line.number});
        if (layout.isEmptyLine(line.text))
            continue;
        layout.split(line.text, fields);
        if (!matches(layout, fields)) {
            if (started == 0)
                headers.push_back({ReaderText::decoded(line.text), line.number});
            continue;
        }
        if (started++ == 0)
            layout.firstLine = line.number;
        for (size_t i = 0; i < layout.columns.size(); ++i) {
            values[i].push_back(i < fields.size() ? layout.number(i, fields[i]).value_or(0.0) : 0.0);
            if (!layout.columns[i].numeric) {
                const QString text = ReaderText::decoded(fields[i]);
                constants[i] = started == 1 || constants[i] == text ? std::optional(text) : std::nullopt;
                if (isNoNumber(fields[i]))
                    fail(source, line.number, Texts::tr("expected a number, found %1").arg(excerpt(fields[i])));
            }
        }
    }
    nameColumns(layout, headers, values);
    int namingLine = 0;
    for (const HeaderLine &header : headers)
        namingLine = header.isNaming ? header.number : namingLine;
    const TextColumns textColumns(layout, rows, namingLine + 1, source);
    textColumns.checkPositions();
    if (!takeMeasured(layout)) {
        textColumns.checkNames();
        for (TextLayout::Column &column : layout.columns)
            column.role = column.numeric ? Role::Ignored : Role::Label;
        RoleGuess(layout, values, source, options).guess();
    }
    sortOutPositions(layout, options);
    textColumns.settle();
    TextLayout::Column &position = layout.columns[size_t(layout.columnOf(Role::Position))];
    // Nobody groups the digits of shifts.
    for (size_t i = 0; i < layout.columns.size(); ++i) {
        TextLayout::Column &column = layout.columns[i];
        if (isPositional(column) && column.isGroupingDoubtful && column.unit != Unit::Hertz)
            column.grouping = 0;
    }
    passOverConstantColumns(layout, constants, values.front().size());
    findIntensity(layout);
    if (hasDoubtfulComma(layout, rows)) {
        layout.notes.append(
            Texts::tr("Commas were taken to separate positions and heights, so that %1 is a peak at %2; if they "
                      "are decimal commas, a header line \"ppm\" tells so.")
                .arg(ReaderText::excerpt(rows.front().text), QString::number(values.front().front(), 'g', 10)));
    }
    for (Role role : {Role::Intensity, Role::Imaginary, Role::Count, Role::Number})
        keepFirst(layout, role);
    for (auto header = headers.rbegin(); header != headers.rend() && position.unit == Unit::Unknown; ++header) {
        if (!header->isNaming)
            position.unit = unitIn(header->text);
    }
    for (auto header = headers.rbegin(); header != headers.rend() && position.nucleus.isEmpty(); ++header)
        position.nucleus = nucleusIn(header->text);
    findFrequency(layout, values, headers);
    noteIgnored(layout);
    // Without its position a row is none.
    layout.lastIsOptional &=
        layout.columns.back().role != Role::Position && layout.columns.back().role != Role::PositionF1;
    findRows(layout, sample, namingLine, rows.size() < rowsOfSpectrum, source);
    noteNotation(layout, rows);
    return std::move(layout);
}

} // namespace Workbench
