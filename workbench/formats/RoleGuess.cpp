// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/RoleGuess.h"

#include "data/Nuclides.h"
#include "data/ReaderText.h"
#include "formats/ColumnNames.h"
#include "formats/ColumnValues.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <utility>

namespace Workbench {

using namespace ColumnValues;
using ReaderText::fail;
using Role = TextLayout::Role;
using Unit = TextLayout::Unit;

namespace {

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

} // namespace

void guessRoles(TextLayout &layout, const TableSample &table, const QString &source, const ReadOptions &options)
{
    takeAtomNumbers(layout, table);
    RoleGuess(layout, table, source, options).guess();
}

} // namespace Workbench
