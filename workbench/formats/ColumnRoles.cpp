// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ColumnRoles.h"

#include "data/Nuclides.h"
#include "data/ReaderText.h"
#include "formats/ColumnNames.h"
#include "formats/ColumnValues.h"
#include "formats/NameSearch.h"
#include "formats/PrintedNumber.h"
#include "formats/PublishedPeaks.h"
#include "formats/RoleGuess.h"

#include <QRegularExpression>

#include <algorithm>
#include <tuple>

namespace Workbench {

using namespace ColumnValues;
using ReaderText::excerpt;
using ReaderText::fail;
using Role = TextLayout::Role;
using Unit = TextLayout::Unit;

namespace {

using Fields = std::vector<std::string_view>;

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

TextLayout::Column *bestHeights(const TextLayout &layout, const std::vector<TextLayout::Column *> &columns)
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
    TextLayout::Column *const found = bestHeights(layout, named.empty() ? all : named);
    if (!found)
        return;
    found->role = Role::Intensity;
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

/// "s", "(d, C1)", "t, J = 7 Hz": columns whose every field begins with a multiplet, unless they are named as labels.
void findMultiplets(TextLayout &layout, const std::vector<QStringList> &texts)
{
    const auto isMultiplet = [](const QString &field) {
        return field.isEmpty() || PublishedPeaks::beginsWithMultiplet(field);
    };
    for (size_t i = 0; i < layout.columns.size(); ++i) {
        TextLayout::Column &column = layout.columns[i];
        column.saysMultiplets = column.role == Role::Label && ColumnNames::meaningOf(column.name).role != Role::Label
            && std::all_of(texts[i].begin(), texts[i].end(), isMultiplet);
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
        guessRoles(layout, table, source, options);
    }
    sortOutPositions(layout, table.values, options);
    textColumns.settle();
    findMultiplets(layout, table.texts);
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

} // namespace Workbench
