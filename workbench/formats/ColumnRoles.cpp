// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ColumnRoles.h"

#include "data/Nuclides.h"
#include "data/ReaderText.h"
#include "formats/ColumnNames.h"
#include "formats/PrintedNumber.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using Role = TextLayout::Role;
using Unit = TextLayout::Unit;

namespace {

using Fields = std::vector<std::string_view>;

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
        if (std::none_of(names.begin(), names.end(),
                         [](const QString &name) { return ColumnNames::meaningOf(name).known; })
            && (names.isEmpty() || !std::all_of(names.begin(), names.end(), ColumnNames::isNucleus)))
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
        const ColumnNames::Meaning meaning = ColumnNames::meaningOf(column.name);
        // A few numbers are heights where a name says so.
        if (column.isSparse && (!meaning.known || meaning.role == Role::Label))
            column.numeric = false;
        column.role = meaning.role;
        column.unit = meaning.unit;
        column.nucleus = Nuclides::table().observedIn(column.name);
        isNamed |=
            (column.role == Role::Position || column.role == Role::PositionF1) && !ColumnNames::isCounting(column.name);
    }
    for (size_t i = 0; i < layout.columns.size(); ++i) {
        TextLayout::Column &column = layout.columns[i];
        // A trace may have the name of a nucleus, and the positions of a molecule numbers.
        if (!isNamed && ColumnNames::isNucleus(column.name))
            column.role = Role::Position;
        const bool hasShifts = std::any_of(layout.columns.begin(), layout.columns.end(), [&](const auto &other) {
            return &other != &column && (other.isPositional() || ColumnNames::isNucleus(other.name));
        });
        if (ColumnNames::isCounting(column.name) && hasShifts && column.numeric && counts(values[i]))
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

/// The roles of columns that no header names, by what they hold.
class RoleGuess {
public:
    RoleGuess(TextLayout &layout, const std::vector<std::vector<double>> &values, const QString &source,
              const ReadOptions &options)
        : m_layout(layout), m_values(values), m_source(source), m_options(options)
    {
        const bool hasOwnName = std::any_of(layout.columns.begin(), layout.columns.end(), [](const auto &column) {
            return column.numeric && !column.name.isEmpty() && !ColumnNames::meaningOf(column.name).known;
        });
        for (int i = 0; i < int(layout.columns.size()); ++i) {
            TextLayout::Column &column = layout.columns[size_t(i)];
            const ColumnNames::Meaning meaning = ColumnNames::meaningOf(column.name);
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
    bool isLong() const { return values(0).size() >= fewestPoints; }

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
        keep([](const auto *column) { return !ColumnNames::isCalculated(column->name); });
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

/// "site, exp, calc", where no axis stands before them.
bool takeMeasured(TextLayout &layout)
{
    auto &columns = layout.columns;
    const auto of = [&](auto says) {
        return std::find_if(columns.begin(), columns.end(), [&](const auto &column) {
            return column.numeric && (column.role == Role::Ignored || column.isPositional()) && says(column.name)
                && !(ColumnNames::meaningOf(column.name).known && !column.isPositional());
        });
    };
    const auto measured = of(ColumnNames::isMeasured), calculated = of(ColumnNames::isCalculated),
               axis = std::find_if(columns.begin(), columns.end(),
                                   [](const auto &column) { return column.numeric && column.isPositional(); });
    if (measured == columns.end() || calculated == columns.end() || axis <= std::min(measured, calculated)
        || std::any_of(axis, columns.end(),
                       [](const auto &c) { return c.isPositional() && ColumnNames::isAxisName(c.name); }))
        return axis != columns.end();
    for (TextLayout::Column &column : columns) {
        if (column.isPositional() && column.numeric)
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
        if (std::any_of(columns.begin(), columns.end(), [](const auto &c) { return c.numeric && c.isPositional(); }))
            return;
        for (size_t i = 0; i < columns.size(); ++i) {
            if (!columns[i].numeric && columns[i].isPositional() && !isConstant(i))
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
            if (column.isPositional() && !isConstant(i)) {
                const TextLayout::Column &chosen = m_layout.columns[position];
                if (i < position
                    || !(ColumnNames::isCalculated(column.name)
                         || (!column.nucleus.isEmpty() && column.nucleus != chosen.nucleus)))
                    failAt(i);
                column.role = Role::Ignored;
                continue;
            }
            const QStringList words = ColumnNames::wordsOf(column.name);
            // "Signal" may be a name.
            const bool isHeight = words.contains(u"int") || words.contains(u"height") || words.contains(u"höhe")
                || words.contains(u"amplitude") || words.filter(QStringLiteral("intensit")).size() > 0;
            if (column.role == Role::Intensity && (isHeight || holdsNumbers(i)) && !isConstant(i) && !hasHeights())
                failAt(i);
            column.role =
                column.role == Role::Ignored && ColumnNames::meaningOf(column.name).known ? Role::Ignored : Role::Label;
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
        if (!name.isEmpty() && !ColumnNames::meaningOf(name).known)
            layout.notes.append(Texts::tr("Column \"%1\" was taken as the intensity.").arg(name));
        return;
    }
    const bool areShifts = ColumnNames::isMeasured(columns[size_t(layout.columnOf(Role::Position))].name);
    const auto mayBe = [&](const auto &column) {
        return column.numeric && column.role == Role::Ignored && !ColumnNames::meaningOf(column.name).known
            && !(areShifts && ColumnNames::isCalculated(column.name));
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
        if (text.isEmpty() || unit != Unit::Unknown || rows >= fewestPoints)
            column.role = Role::Ignored;
    }
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

} // namespace

void assignRoles(TextLayout &layout, TableSample &table, const QString &source, const ReadOptions &options)
{
    nameColumns(layout, table.headers, table.values);
    const TextColumns textColumns(layout, table.rows, table.namingLine() + 1, source);
    textColumns.checkPositions();
    if (!takeMeasured(layout)) {
        textColumns.checkNames();
        for (TextLayout::Column &column : layout.columns)
            column.role = column.numeric ? Role::Ignored : Role::Label;
        RoleGuess(layout, table.values, source, options).guess();
    }
    sortOutPositions(layout, options);
    textColumns.settle();
    TextLayout::Column &position = layout.columns[size_t(layout.columnOf(Role::Position))];
    // Nobody groups the digits of shifts.
    for (TextLayout::Column &column : layout.columns) {
        if (column.isPositional() && column.isGroupingDoubtful && column.unit != Unit::Hertz)
            column.grouping = 0;
    }
    passOverConstantColumns(layout, table.constants, table.values.front().size());
    findIntensity(layout);
    for (Role role : {Role::Intensity, Role::Imaginary, Role::Count, Role::Number})
        keepFirst(layout, role);
    for (auto header = table.headers.rbegin(); header != table.headers.rend(); ++header) {
        if (position.unit == Unit::Unknown && !header->isNaming)
            position.unit = ColumnNames::unitIn(header->text);
        if (position.nucleus.isEmpty())
            position.nucleus = Nuclides::table().observedIn(header->text);
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

} // namespace Workbench
