// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/NameSearch.h"

#include "data/ReaderText.h"
#include "formats/ColumnNames.h"
#include "formats/ColumnValues.h"

#include <QRegularExpression>

#include <algorithm>

namespace Workbench {

using namespace ColumnValues;
using Role = TextLayout::Role;

namespace {

using Fields = std::vector<std::string_view>;

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
            || std::all_of(names.begin(), names.end(), ColumnNames::isNucleus)
            || std::count_if(names.begin(), names.end(), ColumnNames::isNucleus) > 1;
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

} // namespace

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

} // namespace Workbench
