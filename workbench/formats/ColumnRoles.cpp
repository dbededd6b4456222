// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ColumnRoles.h"

#include "data/Nuclides.h"
#include "data/ReaderText.h"
#include "formats/ColumnNames.h"
#include "formats/PrintedNumber.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using Role = TextLayout::Role;
using Unit = TextLayout::Unit;

namespace {

using Fields = std::vector<std::string_view>;

bool areWhole(const std::vector<double> &values)
{
    return std::all_of(values.begin(), values.end(), [](double v) { return v == std::floor(v); });
}

/// 0, 1, 2… or 1, 2, 3…
bool counts(const std::vector<double> &values, size_t least = 3)
{
    if (values.size() < least || (values[0] != 0.0 && values[0] != 1.0))
        return false;
    for (size_t i = 0; i < values.size(); ++i) {
        if (values[i] != values[0] + double(i))
            return false;
    }
    return true;
}

/// Finds the names of the columns in the lines above them. The nearest line that names them counts; lines further away
/// add the names above a line of units.
class NameSearch {
public:
    NameSearch(const TextLayout &layout, const TableSample &table)
        : m_layout(layout), m_values(table.values), m_constants(table.constants)
    {
    }

    /// None where the line is not split into as many as there are columns, or says nothing about them.
    QStringList namesIn(const HeaderLine &line) const
    {
        const QStringList own = ownNames(line);
        if (m_layout.separator != ' ') {
            // A single name may be a title as well.
            const bool isText = line.isComment || (own.size() == 1 && ColumnNames::wordsOf(line.text).size() > 2);
            if (fits(own) && (isText ? namesPositions(own) : namesAny(own)))
                return own;
            if (own.size() == columnCount() && columnCount() > 1)
                return {};
        }
        // A line that is split in another way may be any text: "62.5 MHz" and "LB = 20" are no names.
        static const QRegularExpression quantity(QStringLiteral("\\d\\s*(?:MHz|GHz|T)\\b|=")),
            wide(QStringLiteral("\\s{2,}|\\t"));
        if (quantity.match(line.text).hasMatch())
            return {};
        for (char separator : {',', '\t', ';'}) {
            const QStringList names = completed(splitAt(separator, line.text), line);
            if (separator != m_layout.separator && names.size() > 1 && fits(names) && namesPositions(names))
                return names;
        }
        QStringList names = completed(line.text.trimmed().split(wide), line);
        if (names.size() > 1 && fits(names) && namesPositions(names))
            return names;
        names = completed(ColumnNames::namesBetweenBlanks(line.text, counts(m_values.front(), 1)), line);
        if (names.size() > 1 && fits(names) && namesPositions(names) && areColumns(names))
            return names;
        return {};
    }

    /// The names above a line of units.
    QStringList namesAbove(const HeaderLine &line) const
    {
        static const QRegularExpression wide(QStringLiteral("\\s{2,}"));
        const QStringList names =
            m_layout.separator == ' ' ? completed(line.text.trimmed().split(wide), line) : ownNames(line);
        return fits(names) && (line.isComment || names.size() == 1 ? namesPositions(names) : namesAny(names))
            ? names
            : QStringList();
    }

    /// How many columns the line names, where the rows have another number of them; 0: none.
    qsizetype otherCount(const HeaderLine &line) const
    {
        const QStringList names = m_layout.separator == ' ' ? ColumnNames::namesBetweenBlanks(line.text, false)
                                                            : splitAt(m_layout.separator, line.text);
        bool hasPosition = false, hasHeight = false;
        for (const QString &name : names) {
            const ColumnNames::Meaning meaning = ColumnNames::meaningOf(name);
            hasPosition |= meaning.statesPosition();
            hasHeight |= meaning.role == Role::Intensity;
        }
        // Between blanks a name may have several words.
        const bool isOther = m_layout.separator == ' ' ? names.size() < columnCount() : names.size() != columnCount();
        return hasPosition && hasHeight && isOther ? names.size() : 0;
    }

private:
    qsizetype columnCount() const { return qsizetype(m_layout.columns.size()); }

    QStringList splitAt(char separator, const QString &line) const
    {
        const std::string text = line.toStdString();
        TextLayout layout;
        layout.separator = separator;
        Fields fields;
        layout.split(text, fields);
        QStringList names;
        for (std::string_view field : fields)
            names.append(ReaderText::decoded(field));
        return names;
    }
    QStringList ownNames(const HeaderLine &line) const
    {
        const bool isCut = line.isMarkField && line.text.startsWith(QLatin1Char(m_layout.separator));
        return completed(splitAt(m_layout.separator, line.text.mid(isCut ? 1 : 0)), line);
    }

    /// Empty names at the end, of columns that are empty: rows may end with a separator where the names do not.
    QStringList padded(QStringList names) const
    {
        while (names.size() > 1 && names.size() > columnCount() && names.back().isEmpty())
            names.removeLast();
        while (names.size() > 1 && names.size() < columnCount() && m_constants[size_t(names.size())] == QString())
            names.append(QString());
        return names;
    }

    /// The column that counts the rows may go without a name, or its "#" pass for the mark of a comment; and where it
    /// has one, the last column may go without.
    QStringList completed(const QStringList &names, const HeaderLine &line) const
    {
        if (names.isEmpty())
            return names;
        const std::vector<double> &first = m_values.front();
        const Role role = ColumnNames::meaningOf(names.front()).role;
        // Numbers of rows leave few gaps.
        const auto [low, high] = std::minmax_element(first.begin(), first.end());
        const bool isText = !m_layout.columns.front().numeric;
        const bool areNumbers = !isText && areWhole(first) && *low >= 0 && *high <= 2.0 * double(first.size()) + 20;
        const bool isRising = areNumbers && first.front() <= 1 && std::is_sorted(first.begin(), first.end());
        const QStringList own = padded(names), all = padded(QStringList{QStringLiteral("#")} + names);
        const bool hasNumber =
            role == Role::Number || (role == Role::Label && columnCount() > 1 && m_layout.columns[1].numeric);
        const bool mayBeNamed = line.isMarkField ? areNumbers || isText : line.isHash && columnCount() > 2;
        if (mayBeNamed && columnCount() > 1 && all.size() == columnCount()
            && ((line.isMarkField && own.size() != columnCount()) || (isRising && !hasNumber)))
            return all;
        if (own.size() + 1 != columnCount() || columnCount() < 3 || !counts(first))
            return own;
        return hasNumber ? own + QStringList{QString()} : all;
    }

    /// As many as the columns, and none a number. Behind an axis traces may be named by amounts, "ppm,298 K,310 K".
    bool fits(const QStringList &names) const
    {
        const bool isAxisFirst = !names.isEmpty() && !names.front().isEmpty() && ColumnNames::isAxisName(names.front());
        return names.size() == columnCount() && std::none_of(names.begin(), names.end(), [&](const QString &name) {
                   return (!isAxisFirst && ColumnNames::isAmount(name)) || m_layout.number(name.toStdString());
               });
    }

    bool namesAny(const QStringList &names) const
    {
        bool states = false, isMeasured = false, isCompared = false;
        for (qsizetype i = 0; i < names.size(); ++i) {
            const ColumnNames::Meaning meaning = ColumnNames::meaningOf(names[i]);
            states |= meaning.statesRole() && (meaning.role != Role::Number || counts(m_values[size_t(i)], 1));
            isMeasured |= ColumnNames::isMeasured(names[i]);
            isCompared |= ColumnNames::isCalculated(names[i]) || meaning.isOther;
        }
        const auto isOther = [](const QString &name) { return ColumnNames::meaningOf(name).isOther; };
        return states || (isMeasured && isCompared) || std::all_of(names.begin(), names.end(), isOther)
            || std::all_of(names.begin(), names.end(), ColumnNames::isNucleus);
    }

    /// What any text must say to pass for names: which column holds the positions, or the names of the peaks.
    bool namesPositions(const QStringList &names) const
    {
        for (qsizetype i = 0; i < names.size(); ++i) {
            const ColumnNames::Meaning meaning = ColumnNames::meaningOf(names[i]);
            if (meaning.statesPosition() || (meaning.role == Role::Label && !m_layout.columns[size_t(i)].numeric))
                return true;
        }
        return std::all_of(names.begin(), names.end(), ColumnNames::isNucleus);
    }

    /// Not the words of a title, "peak shifts": before the positions stand named columns, or one that counts.
    bool areColumns(const QStringList &names) const
    {
        for (size_t i = 0; i < m_layout.columns.size(); ++i) {
            const ColumnNames::Meaning meaning = ColumnNames::meaningOf(names[qsizetype(i)]);
            const bool isBefore =
                i + 1 < m_layout.columns.size() && ColumnNames::meaningOf(names[qsizetype(i + 1)]).statesPosition();
            const auto isShift = [&](size_t k) {
                return ColumnNames::meaningOf(names[qsizetype(k)]).statesPosition() && !areWhole(m_values[k]);
            };
            const bool hasShifts = areWhole(m_values[i]) && i + 1 < m_layout.columns.size() && isShift(i + 1);
            if (m_layout.columns[i].numeric && !counts(m_values[i], 1) && !hasShifts
                && (meaning.role == Role::Number || (!meaning.isKnown() && isBefore)))
                return false;
        }
        return true;
    }

    const TextLayout &m_layout;
    const std::vector<std::vector<double>> &m_values;
    const std::vector<std::optional<QString>> &m_constants;
};

void nameColumns(TextLayout &layout, TableSample &table)
{
    const NameSearch header(layout, table);
    const auto isPosition = [](const QString &name) { return ColumnNames::meaningOf(name).statesPosition(); };
    QStringList names;
    for (auto line = table.headers.rbegin(); line != table.headers.rend(); ++line) {
        const bool areUnits = std::all_of(names.begin(), names.end(), [](const QString &name) {
            return ColumnNames::isUnit(name) || ColumnNames::isAxisName(name);
        });
        if (!areUnits && std::any_of(names.begin(), names.end(), isPosition))
            break;
        const QStringList found = names.isEmpty() ? header.namesIn(*line) : header.namesAbove(*line);
        if (found.isEmpty())
            continue;
        line->isNaming = true;
        if (names.isEmpty())
            names = QStringList(found.size());
        for (qsizetype i = 0; i < found.size(); ++i)
            names[i] = QString(found[i] + u' ' + names[i]).trimmed();
    }
    for (size_t i = 0; i < layout.columns.size() && !names.isEmpty(); ++i)
        layout.columns[i].name = names[qsizetype(i)];
    for (const HeaderLine &line : table.headers) {
        if (const qsizetype count = names.isEmpty() ? header.otherCount(line) : 0; count > 0)
            table.otherNames = {line.number, int(count)};
    }
}

/// What the names of the columns say, each by itself and beside the others.
void takeNamedRoles(TextLayout &layout, const std::vector<std::vector<double>> &values)
{
    bool isNamed = false;
    for (TextLayout::Column &column : layout.columns) {
        const ColumnNames::Meaning meaning = ColumnNames::meaningOf(column.name);
        // A few numbers are heights where a name says so.
        if (column.isSparse && (!meaning.isKnown() || meaning.role == Role::Label))
            column.numeric = false;
        column.role = meaning.role;
        column.unit = meaning.unit;
        column.nucleus = Nuclides::table().observedIn(column.name);
        isNamed |= column.isPositional() && !ColumnNames::isCounting(column.name);
    }
    for (TextLayout::Column &column : layout.columns) {
        // A trace may have the name of a nucleus.
        if (!isNamed && ColumnNames::isNucleus(column.name))
            column.role = Role::Position;
    }
    // The positions of a molecule, beside the shifts.
    const bool isTrace = !isNamed && values.front().size() >= fewestPoints;
    const bool hasShifts = std::any_of(layout.columns.begin(), layout.columns.end(), [](const auto &column) {
        return column.role == Role::Position
            && (!column.nucleus.isEmpty() || ColumnNames::shiftRank(column.name) > 0
                || ColumnNames::wordsOf(column.name).contains(u"ppm"));
    });
    for (TextLayout::Column &column : layout.columns) {
        if (ColumnNames::isCounting(column.name) && hasShifts && !isTrace)
            column.role = column.numeric ? Role::Number : Role::Label;
    }
}

/// "|:---|---:|" below the names.
bool isRule(std::string_view line)
{
    return line.find_first_not_of("|:-+= \t\r") == std::string_view::npos;
}

/// A table of atoms with the shifts of several nuclei is read for one of them. An atom may lack its shift.
void chooseNucleus(TextLayout &layout, const TableSample &table, const QString &nucleus)
{
    auto &columns = layout.columns;
    const auto any = [&](auto isSo) { return std::any_of(columns.begin(), columns.end(), isSo); };
    const auto hasShifts = [](const auto &c) {
        return !c.nucleus.isEmpty()
            && (c.role == Role::Position || ColumnNames::isNucleus(c.name) || ColumnNames::isMeasured(c.name)
                || ColumnNames::isCalculated(c.name));
    };
    const auto isOwn = [&](const auto &c) { return hasShifts(c) && c.nucleus == nucleus; };
    const auto isOther = [&](const auto &c) { return hasShifts(c) && c.nucleus != nucleus; };
    // Cross peaks have both shifts and heights or an axis F1; without names or with numbers they may be either.
    const auto isRole = [](Role role) { return [role](const auto &c) { return c.role == role; }; };
    Fields fields;
    const bool someLack = std::any_of(table.rows.begin(), table.rows.end(), [&](const TextLine &row) {
        layout.split(row.text, fields);
        bool lacks = false;
        for (size_t i = 0; i < std::min(fields.size(), columns.size()); ++i)
            lacks |= hasShifts(columns[i]) && PrintedNumber::isLacking(fields[i]) && !isRule(row.text);
        return lacks;
    });
    const bool haveNames = any(isRole(Role::Label)) || (any(isRole(Role::Number)) && someLack);
    if (nucleus.isEmpty() || !haveNames || any(isRole(Role::Intensity)) || any(isRole(Role::PositionF1)) || !any(isOwn)
        || !any(isOther))
        return;
    for (size_t i = 0; i < columns.size(); ++i) {
        columns[i].isOfOther = isOther(columns[i]);
        if (columns[i].isOfOther)
            columns[i].role = Role::Ignored;
        if (!isOwn(columns[i]))
            continue;
        columns[i].role = Role::Position;
        columns[i].numeric = std::all_of(table.rows.begin(), table.rows.end(), [&](const TextLine &row) {
            layout.split(row.text, fields);
            return i >= fields.size() || row.number <= table.namingLine() || PrintedNumber::isLacking(fields[i])
                || layout.number(i, fields[i]) || isRule(row.text);
        });
    }
    layout.someHaveNoPosition = true;
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

/// Whether the positions lie evenly, but for the rounding of their texts.
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

/// One of two coordinates stays while the other one runs, and the run begins again where the first one changes.
bool isGrid(const std::vector<double> &running, const std::vector<double> &staying)
{
    constexpr std::ptrdiff_t leastRow = 4;
    const auto change =
        std::find_if(staying.begin(), staying.end(), [&](double value) { return value != staying.front(); });
    const std::ptrdiff_t row = change - staying.begin();
    return running.size() >= fewestPoints && change != staying.end() && row >= leastRow
        && running[size_t(row)] == running.front() && looksEven({running.begin(), running.begin() + leastRow});
}

/// The shifts of another form or of a calculation, no heights.
bool areAlike(const std::vector<double> &positions, const std::vector<double> &others)
{
    if (positions.size() < 2)
        return false;
    const auto [low, high] = std::minmax_element(positions.begin(), positions.end());
    const double most = 0.05 * (*high - *low);
    return std::equal(positions.begin(), positions.end(), others.begin(),
                      [&](double a, double b) { return std::abs(a - b) <= most; });
}

bool areElements(const QStringList &texts)
{
    return !texts.isEmpty() && std::none_of(texts.begin(), texts.end(), [](const QString &text) {
        return Nuclides::table().isotopes(text).isEmpty();
    });
}

/// "C 1 170.2" has the name of the atom in two columns.
void takeAtomNumbers(TextLayout &layout, const TableSample &table)
{
    for (size_t i = 1; i + 1 < layout.columns.size(); ++i) {
        const QStringList &elements = table.texts[i - 1];
        const std::vector<double> &numbers = table.values[i], &next = table.values[i + 1];
        TextLayout::Column &column = layout.columns[i];
        if (!areElements(elements) || !column.numeric || !column.name.isEmpty() || !layout.columns[i + 1].numeric
            || !areWhole(numbers) || areWhole(next))
            continue;
        // Of each element rising, with few gaps.
        QHash<QString, double> last;
        bool isRising = true;
        for (size_t row = 0; row < numbers.size(); ++row)
            isRising &= numbers[row] > std::exchange(last[elements[qsizetype(row)]], numbers[row]);
        for (auto element = last.cbegin(); element != last.cend(); ++element)
            isRising &= element.value() <= 3.0 * double(elements.count(element.key())) + 3;
        if (!isRising)
            continue;
        column.numeric = false;
        layout.notes.append(Texts::tr("Numbers behind the symbols of elements were taken as those of the atoms."));
    }
}

/// The roles of columns that no header names, by what they hold.
class RoleGuess {
public:
    RoleGuess(TextLayout &layout, const TableSample &table, const QString &source, const ReadOptions &options)
        : m_layout(layout), m_table(table), m_values(table.values), m_source(source), m_options(options)
    {
        // What has a name for something else keeps it. Numbers and names of peaks come last, then calculated shifts.
        std::array<std::vector<int>, 3> ranked;
        for (int i = 0; i < int(layout.columns.size()); ++i) {
            TextLayout::Column &column = layout.columns[size_t(i)];
            const ColumnNames::Meaning meaning = ColumnNames::meaningOf(column.name);
            if (!column.numeric)
                column.role = Role::Label;
            m_isTold |= meaning.isKnown();
            if (!column.numeric || meaning.isOther)
                continue;
            const bool isNumber =
                (meaning.role == Role::Number || meaning.role == Role::Label) && areWhole(m_values[size_t(i)]);
            if (isNumber || !meaning.statesRole() || meaning.statesPosition() || meaning.role == Role::Number
                || meaning.role == Role::Label)
                ranked[isNumber ? 2 : ColumnNames::isCalculated(column.name) ? 1 : 0].push_back(i);
            else
                m_hasHeights = true;
        }
        const auto best = std::find_if(ranked.begin(), ranked.end(), [](const auto &some) { return !some.empty(); });
        m_numeric = best == ranked.end() ? std::vector<int>() : *best;
        // "Point,Intensity" has no axis.
        if (m_hasHeights && best == ranked.begin() + 2 && m_numeric.size() == 1 && counts(values(0), 2))
            m_numeric.clear();
    }

    void guess()
    {
        if (m_hasHeights && m_numeric.size() == 2 && counts(values(0)))
            m_numeric.erase(m_numeric.begin());
        if (m_numeric.empty() && m_isTold)
            failUntold();
        if (liesOnItsSide())
            fail(m_source, m_layout.firstLine, Texts::tr("the table lies on its side, one peak a line was expected"));
        if (namesCompounds())
            failUnnamed();
        if (m_hasHeights && m_numeric.size() == 1)
            return take({Role::Position});
        if (m_hasHeights && m_numeric.size() == 2 && m_options.dimensions == 2)
            return take({Role::Position, Role::PositionF1});
        switch (m_hasHeights ? 0 : m_numeric.size()) {
        case 0:
            if (m_isTold)
                failUntold();
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
            failUnnamed();
        }
    }

private:
    const std::vector<double> &values(size_t i) const { return m_values[size_t(m_numeric[i])]; }
    bool isLong() const { return values(0).size() >= fewestPoints; }

    /// None of the columns may be the positions by its name, or several.
    [[noreturn]] void failUntold() const
    {
        QStringList names;
        for (const TextLayout::Column &column : m_layout.columns)
            names.append(u'"' + column.name.simplified() + u'"');
        fail(m_source, m_layout.firstLine,
             Texts::tr(
                 "none of the columns %1 is named as that of the positions: a name such as \"ppm\" or \"δ\" in the "
                 "header line tells which one it is")
                 .arg(names.join(QStringLiteral(", "))));
    }

    [[noreturn]] void failUnnamed() const
    {
        fail(m_source, m_layout.firstLine,
             Texts::tr("%1 columns of numbers need a header line that names them, such as \"ppm,intensity\"")
                 .arg(m_numeric.size()));
    }

    /// "δ/ppm 170.2 133.3 20.4" above "I 5 4 3", "exp 170.2 133.3 20.4" above "calc 171.2 134.1 21".
    bool liesOnItsSide() const
    {
        const auto isShift = [](const QString &text) {
            return ColumnNames::meaningOf(text).unit != Unit::Unknown || ColumnNames::isMeasured(text);
        };
        const auto isName = [&](const QString &text) {
            return isShift(text) || ColumnNames::isCalculated(text)
                || ColumnNames::meaningOf(text).role == Role::Intensity;
        };
        return m_numeric.size() > 2
            && std::any_of(m_table.texts.begin(), m_table.texts.end(), [&](const QStringList &texts) {
                   return !texts.isEmpty() && texts.size() <= 3 && isShift(texts.front())
                       && std::all_of(texts.begin(), texts.end(), isName)
                       && (texts.size() == 1 || texts.count(texts.front()) == 1);
               });
    }

    /// "Atom 1 2" above "C1 170.2 171.2": the numbers are those of compounds.
    bool namesCompounds() const
    {
        double number = 0;
        const bool doCount = std::all_of(m_numeric.begin(), m_numeric.end(),
                                         [&](int column) { return m_values[size_t(column)].front() == ++number; });
        return doCount && m_numeric.size() > 1 && !m_isTold
            && std::any_of(m_table.texts.begin(), m_table.texts.end(), [](const QStringList &texts) {
                   const Role role = texts.empty() ? Role::Ignored : ColumnNames::meaningOf(texts.front()).role;
                   return texts.size() > 1
                       && (role == Role::Label || role == Role::Number || ColumnNames::isCounting(texts.front()));
               });
    }

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
        const auto hasTexts = [](const QStringList &texts) { return !texts.isEmpty(); };
        if (areAlike(values(0), values(1)) && std::any_of(m_table.texts.begin(), m_table.texts.end(), hasTexts)) {
            if (m_isTold)
                failUntold();
            failUnnamed();
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
        if (m_table.otherNames.count > 0)
            fail(m_source, m_table.otherNames.line,
                 Texts::tr("%1 names of columns stand above rows of %2 fields")
                     .arg(m_table.otherNames.count)
                     .arg(m_layout.columns.size()));
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
    const TableSample &m_table;
    const std::vector<std::vector<double>> &m_values;
    const QString &m_source;
    const ReadOptions &m_options;
    std::vector<int> m_numeric; ///< columns that may hold positions
    bool m_isTold = false; ///< some are named
    bool m_hasHeights = false; ///< a name says so
};

/// Of several columns with positions along an axis a measured one counts, then one that is not calculated, one in ppm,
/// and one whose name says more than the unit; a
/// second one is F1 where it is of another nucleus, or two dimensions are looked for.
void sortOutPositions(TextLayout &layout, const std::vector<std::vector<double>> &values, const ReadOptions &options)
{
    using Columns = std::vector<TextLayout::Column *>;
    const auto along = [&](Role role) {
        Columns found;
        for (TextLayout::Column &column : layout.columns) {
            if (column.role == role && column.numeric)
                found.push_back(&column);
        }
        // What is worse than another one of its nucleus gives way.
        const auto keep = [&](auto rank) {
            Columns kept;
            for (TextLayout::Column *column : found) {
                const bool isWorse = std::any_of(found.begin(), found.end(), [&](const TextLayout::Column *other) {
                    return rank(*other) > rank(*column)
                        && (other->nucleus.isEmpty() || column->nucleus.isEmpty() || other->nucleus == column->nucleus);
                });
                if (!isWorse)
                    kept.push_back(column);
            }
            for (TextLayout::Column *column : found) {
                if (std::find(kept.begin(), kept.end(), column) == kept.end())
                    column->role = Role::Ignored;
            }
            found = kept;
        };
        keep([](const auto &column) { return int(ColumnNames::isMeasured(column.name)); });
        keep([](const auto &column) { return int(!ColumnNames::isCalculated(column.name)); });
        keep([](const auto &column) { return int(column.unit == Unit::Ppm); });
        keep([](const auto &column) { return ColumnNames::shiftRank(column.name); });
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
    // "Atom,δ1,δ2" has the shifts of two compounds.
    const auto valuesOf = [&](const TextLayout::Column *column) {
        return values[size_t(column - layout.columns.data())];
    };
    if (!f1.empty() && !f2.empty() && layout.columnOf(Role::Label) >= 0 && areAlike(valuesOf(f2[0]), valuesOf(f1[0]))) {
        if (f1[0] < f2[0])
            std::swap(f1, f2);
        f1[0]->role = Role::Ignored;
        f2[0]->role = Role::Position;
        f1.erase(f1.begin());
    }
    // A lone F1 is the only axis.
    if (f2.empty() && !f1.empty())
        f1.front()->role = Role::Position;
    for (const Columns &columns : {f2, f1}) {
        for (size_t i = 1; i < columns.size(); ++i)
            columns[i]->role = Role::Ignored;
    }
}

/// "site, exp, calc" has shifts in the column "exp", and "ppm, exp" heights. Whether an axis is named.
bool takeMeasured(TextLayout &layout)
{
    auto &columns = layout.columns;
    const bool isList = std::any_of(columns.begin(), columns.end(), [](const auto &column) { return !column.numeric; });
    const auto measured = std::find_if(columns.begin(), columns.end(), [](const auto &column) {
        return column.numeric && !column.isOfOther
            && (column.isPositional() || !ColumnNames::meaningOf(column.name).isKnown())
            && ColumnNames::isMeasured(column.name);
    });
    const bool hasCalculated = std::any_of(columns.begin(), columns.end(), [](const auto &column) {
        return column.numeric && ColumnNames::isCalculated(column.name) && !ColumnNames::meaningOf(column.name).isOther;
    });
    bool hasAny = false, hasAxis = false;
    for (auto column = columns.begin(); column != columns.end(); ++column) {
        const bool isAxis = column->numeric && column->isPositional();
        hasAny |= isAxis;
        hasAxis |= isAxis && !ColumnNames::isCalculated(column->name)
            && (ColumnNames::isAxisName(column->name)
                || (column <= measured && !(isList && hasCalculated && column != measured)));
    }
    if (measured == columns.end() || hasAxis)
        return hasAny;
    for (TextLayout::Column &column : columns) {
        if (column.isPositional() && column.numeric)
            column.role = Role::Ignored;
    }
    measured->role = Role::Position;
    return true;
}

/// Text in a column whose name says that it holds positions or heights is an error that names its first line, unless
/// other columns have what counts: the nucleus of the positions, measured ones.
class TextColumns {
public:
    TextColumns(TextLayout &layout, const TableSample &table, const QString &source)
        : m_layout(layout), m_table(table), m_firstRow(table.namingLine() + 1), m_source(source)
    {
    }

    /// Of positions alone, before others are guessed.
    void checkPositions() const
    {
        const auto &columns = m_layout.columns;
        if (std::any_of(columns.begin(), columns.end(), [](const auto &c) { return c.numeric && c.isPositional(); }))
            return;
        for (size_t i = 0; i < columns.size(); ++i) {
            if (!columns[i].numeric && columns[i].isPositional() && !isUnit(i))
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
            if (column.numeric || column.isOfOther)
                continue;
            if (column.isPositional() && !isUnit(i)) {
                const TextLayout::Column &chosen = m_layout.columns[position];
                if (i < position
                    || !(ColumnNames::isCalculated(column.name)
                         || (column.unit == Unit::Hertz && chosen.unit == Unit::Ppm)
                         || (!column.nucleus.isEmpty() && column.nucleus != chosen.nucleus)))
                    failAt(i);
                column.role = Role::Ignored;
                continue;
            }
            const QStringList words = ColumnNames::wordsOf(column.name);
            // "Signal" may be a name.
            const bool isHeight = words.contains(u"int") || words.contains(u"height") || words.contains(u"höhe")
                || words.contains(u"amplitude") || words.filter(QStringLiteral("intensit")).size() > 0;
            if (column.role == Role::Intensity && (isHeight || holdsNumbers(i)) && !isUnit(i) && !hasHeights())
                failAt(i);
            column.role = ColumnNames::meaningOf(column.name).isOther ? Role::Ignored : Role::Label;
        }
    }

    /// Without names, numbers that could not be read are no names of peaks, nor are those in Hz.
    void checkNames() const
    {
        static const QRegularExpression decimals(
            QStringLiteral("^[-+−–]?\\d+[.,]\\d(?!\\d*\\s*(?:[-–]\\s*\\p{L}|['′]))|[:=]\\s*[-+]?\\d+[.,]\\d+$"
                           "|^k?Hz[,;]|\\s[-+−]?\\d+[.,]\\d+$"));
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
        for (const TextLine &row : m_table.rows) {
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

    /// Nothing but the unit, in some rows or in all.
    bool isUnit(size_t column) const
    {
        const std::optional<QString> &text = m_table.constants[column];
        return text && (text->isEmpty() || ColumnNames::unitNamed(*text) != Unit::Unknown);
    }
    bool holdsNumbers(size_t column) const
    {
        bool any = false;
        forEachField([&](size_t i, int, std::string_view field) {
            any |= i == column && (PrintedNumber::isDamaged(field) || m_layout.number(field));
        });
        return any;
    }
    bool hasHeights() const
    {
        return std::any_of(m_layout.columns.begin(), m_layout.columns.end(),
                           [](const auto &c) { return c.numeric && c.role == Role::Intensity; });
    }

    TextLayout &m_layout;
    const TableSample &m_table;
    int m_firstRow;
    const QString &m_source;
};

const TextLayout::Column *bestHeights(const TextLayout &layout, const std::vector<TextLayout::Column *> &columns)
{
    const TextLayout::Column *position = &layout.columns[size_t(layout.columnOf(Role::Position))];
    const auto rank = [&](const TextLayout::Column *column) {
        return std::tuple(ColumnNames::isMeasured(column->name), !ColumnNames::isCalculated(column->name),
                          column > position);
    };
    const auto best = std::max_element(columns.begin(), columns.end(),
                                       [&](const auto *a, const auto *b) { return rank(a) < rank(b); });
    return best == columns.end() ? nullptr : *best;
}

/// A header may name the position alone, or the intensity by a name of its own ("I", "sample 3").
void findIntensity(TextLayout &layout, const std::vector<std::vector<double>> &values)
{
    auto &columns = layout.columns;
    const std::vector<double> &positions = values[size_t(layout.columnOf(Role::Position))];
    if (const int known = layout.columnOf(Role::Intensity); known >= 0 || layout.columnOf(Role::Imaginary) >= 0) {
        const QString name = known >= 0 ? columns[size_t(known)].name.simplified() : QString();
        if (!name.isEmpty() && !ColumnNames::meaningOf(name).isKnown())
            layout.notes.append(Texts::tr("Column \"%1\" was taken as the intensity.").arg(name));
        return;
    }
    // Beside measured shifts stand those of calculations.
    const QString &position = columns[size_t(layout.columnOf(Role::Position))].name;
    const bool areShifts = ColumnNames::isMeasured(position);
    const bool isSimulated = ColumnNames::meaningOf(position).statesPosition() && layout.columnOf(Role::Label) < 0;
    const auto mayBe = [&](const auto &column) {
        const QStringList words = ColumnNames::wordsOf(column.name);
        return column.numeric && !column.isOfOther && column.role == Role::Ignored
            && !ColumnNames::meaningOf(column.name).isKnown() && (!areShifts || words.contains(u"i"))
            && (isSimulated || !ColumnNames::isCalculated(column.name))
            && !areAlike(positions, values[size_t(&column - columns.data())]);
    };
    // The column without a name counts the rows.
    std::vector<TextLayout::Column *> named, all;
    for (TextLayout::Column &column : columns) {
        if (mayBe(column))
            (column.name.isEmpty() ? all : named).push_back(&column);
    }
    const TextLayout::Column *const found = bestHeights(layout, named.empty() ? all : named);
    if (!found)
        return;
    columns[size_t(found - columns.data())].role = Role::Intensity;
    layout.notes.append(found->name.isEmpty()
                            ? Texts::tr("The column without a name was taken as the intensity.")
                            : Texts::tr("Column \"%1\" was taken as the intensity.").arg(found->name.simplified()));
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
        const Unit unit = ColumnNames::unitNamed(*constants[i]);
        // Behind another column it is that one's: "7.26 d 8.0 Hz".
        if (unit != Unit::Unknown && position && position + 1 == &column && position->unit == Unit::Unknown)
            position->unit = unit;
        if (constants[i]->isEmpty() || unit != Unit::Unknown || rows >= fewestPoints)
            column.role = Role::Ignored;
    }
}

/// Of several columns of a role one stays: measured before calculated, then the first behind the positions.
void keepOne(TextLayout &layout, Role role)
{
    std::vector<TextLayout::Column *> found;
    for (TextLayout::Column &column : layout.columns) {
        if (column.role == role)
            found.push_back(&column);
    }
    const TextLayout::Column *best = bestHeights(layout, found);
    for (TextLayout::Column *column : found) {
        if (column != best)
            column->role = Role::Ignored;
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
    QStringList texts;
    for (const HeaderLine &header : headers)
        texts.append(header.text);
    if (layout.frequency == 0.0)
        layout.frequency =
            Nuclides::table()[layout.columns[position].nucleus].observedFrequency(ColumnNames::frequencyIn(texts));
}

} // namespace

void assignRoles(TextLayout &layout, TableSample &table, const QString &source, const ReadOptions &options)
{
    nameColumns(layout, table);
    takeNamedRoles(layout, table.values);
    chooseNucleus(layout, table, options.nucleus);
    const TextColumns textColumns(layout, table, source);
    textColumns.checkPositions();
    if (!takeMeasured(layout)) {
        textColumns.checkNames();
        takeAtomNumbers(layout, table);
        RoleGuess(layout, table, source, options).guess();
    }
    sortOutPositions(layout, table.values, options);
    textColumns.settle();
    TextLayout::Column &position = layout.columns[size_t(layout.columnOf(Role::Position))];
    passOverConstantColumns(layout, table.constants, table.values.front().size());
    findIntensity(layout, table.values);
    for (Role role : {Role::Intensity, Role::Imaginary, Role::Count, Role::Number})
        keepOne(layout, role);
    for (auto header = table.headers.rbegin(); header != table.headers.rend(); ++header) {
        if (position.unit == Unit::Unknown && !header->isNaming)
            position.unit = ColumnNames::unitIn(header->text);
        // In "1H-13C" of two dimensions either one may be F2.
        if (position.nucleus.isEmpty()
            && (layout.columnOf(Role::PositionF1) < 0 || Nuclides::table().namedIn(header->text).size() == 1))
            position.nucleus = Nuclides::table().observedIn(header->text);
    }
    // Nobody groups the digits of shifts: "128 127" are two.
    for (TextLayout::Column &column : layout.columns) {
        const bool isHertz = options.unit.isEmpty() ? column.unit == Unit::Hertz || column.unit == Unit::Kilohertz
                                                    : options.unit != u"ppm";
        if (column.isPositional() && !isHertz) {
            column.grouping = 0;
            column.hasPoints = true;
        }
    }
    findFrequency(layout, table.values, table.headers);
}

int TableSample::namingLine() const
{
    int line = 0;
    for (const HeaderLine &header : headers)
        line = header.isNaming ? header.number : line;
    return line;
}

bool TableSample::isNaming(int line) const
{
    return std::any_of(headers.begin(), headers.end(),
                       [&](const HeaderLine &header) { return header.isNaming && header.number == line; });
}

} // namespace Workbench
