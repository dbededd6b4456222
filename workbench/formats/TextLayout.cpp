// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/TextLayout.h"

#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <QRegularExpression>

#include <algorithm>
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

/// The line up to a comment. A mark within a word is none: names may hold one; and a semicolon is one at the start of a
/// line alone, since columns are separated by it.
std::string_view uncommented(std::string_view line, char separator)
{
    bool quoted = false, atStart = true;
    for (size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '"')
            quoted = !quoted;
        else if (!quoted && atStart && c != separator && (c != ';' || i == 0)
                 && commentMarks.find(c) != std::string_view::npos)
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
    if (const size_t comma = text.find(','); decimalComma && comma != std::string::npos)
        text[comma] = '.';
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

/// What the table of one way to split the lines looks like.
struct Split {
    TextLayout layout;
    size_t matching = 0; ///< rows
    size_t cutNumbers = 0; ///< names that look like numbers cut at the wrong place
    size_t headers = 0; ///< lines without numbers that have as many fields

    bool operator<(const Split &other) const
    {
        return std::tuple(matching, other.cutNumbers, headers) < std::tuple(other.matching, cutNumbers, other.headers);
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

bool matches(const TextLayout &layout, const Fields &fields)
{
    if (!layout.fits(fields.size()))
        return false;
    for (size_t i = 0; i < fields.size(); ++i) {
        const bool isLeftOut = layout.lastIsOptional && i + 1 == layout.columns.size() && fields[i].empty();
        if (layout.columns[i].numeric && !isLeftOut && !layout.number(fields[i]))
            return false;
    }
    return true;
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

/// The number of fields that most rows have, and which of them are numbers in most of these rows.
Split trySplit(char separator, bool decimalComma, const std::vector<TextLine> &rows)
{
    Split split;
    split.layout.separator = separator;
    split.layout.decimalComma = decimalComma;
    const std::vector<Fields> all = splitAll(split.layout, rows);
    std::map<size_t, std::vector<size_t>> numbers; // by the count of fields, how many rows have a number in each
    std::map<size_t, size_t> rowsOf;
    for (const Fields &fields : all) {
        std::vector<size_t> &counts = numbers[fields.size()];
        counts.resize(fields.size());
        bool any = false;
        for (size_t i = 0; i < fields.size(); ++i) {
            const bool isNumber = split.layout.number(fields[i]).has_value();
            counts[i] += isNumber;
            any |= isNumber;
        }
        rowsOf[fields.size()] += any;
    }
    const auto usual = std::max_element(rowsOf.begin(), rowsOf.end(),
                                        [](const auto &a, const auto &b) { return a.second < b.second; });
    if (usual == rowsOf.end() || usual->second == 0)
        return split;
    split.layout.columns.resize(usual->first);
    for (size_t i = 0; i < usual->first; ++i)
        split.layout.columns[i].numeric = 2 * numbers[usual->first][i] > usual->second;
    auto &columns = split.layout.columns;
    if (std::none_of(columns.begin(), columns.end(), [](const auto &column) { return column.numeric; }))
        return split;
    // A list of peaks may have heights for some of them only.
    const bool allNumeric =
        std::all_of(columns.begin(), columns.end(), [](const auto &column) { return column.numeric; });
    if (allNumeric && separator != ' ' && rows.size() < rowsOfSpectrum) {
        const size_t count = columns.size();
        const auto &longer = numbers[count + 1];
        if (!longer.empty() && std::find(longer.begin(), longer.end(), 0u) == longer.end()) {
            columns.push_back(columns.back());
            split.layout.lastIsOptional = true;
        } else {
            const auto isOpen = [&](const Fields &fields) { return fields.size() == count && fields.back().empty(); };
            split.layout.lastIsOptional = count > 1
                && ((rowsOf.contains(count - 1) && rowsOf[count - 1] > 0)
                    || std::any_of(all.begin(), all.end(), isOpen));
        }
    }
    for (const Fields &fields : all) {
        if (matches(split.layout, fields)) {
            ++split.matching;
            for (size_t i = 0; i < fields.size(); ++i)
                split.cutNumbers += !columns[i].numeric && isDamagedNumber(fields[i]);
        } else if (fields.size() == columns.size()) {
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

/// Shifts of a calculation, which publications put beside the measured ones.
bool isCalculated(const QString &name)
{
    const QStringList words = wordsOf(name);
    return std::any_of(words.begin(), words.end(), [](const QString &word) {
        return word.endsWith(u"calc") || word.startsWith(u"calculat") || word == u"computed" || word == u"predicted"
            || word == u"gipaw" || word == u"dft";
    });
}

/// "exp", which beside ppm is an intensity and beside "calc" a shift.
bool isMeasured(const QString &name)
{
    const QStringList words = wordsOf(name);
    return std::any_of(words.begin(), words.end(), [](const QString &word) {
        return word.startsWith(u"exp") || word == u"measured" || word == u"observed" || word == u"obs";
    });
}

/// What the name of a column says: "Chemical Shift (ppm)", "δ(1H)", "Hz", "Intensity", "ppm_f1".
Meaning meaningOf(const QString &name)
{
    const QStringList words = wordsOf(name);
    const auto has = [&](std::initializer_list<const char *> any) {
        return std::any_of(any.begin(), any.end(),
                           [&](const char *word) { return words.contains(QString::fromUtf8(word)); });
    };
    if (has({"width", "fwhm",     "linewidth", "error", "sigma", "integral",   "integrals", "area",
             "phase", "coupling", "volume",    "cq",    "pq",    "η",          "ηq",        "eta",
             "csa",   "δcsa",     "δσ",        "span",  "skew",  "anisotropy", "asymmetry", "δ11",
             "δ22",   "δ33",      "δ₁₁",       "δ₂₂",   "δ₃₃",   "δxx",        "δyy",       "δzz"})
        || (has({"δ", "delta"}) && has({"11", "22", "33", "xx", "yy", "zz"})))
        return {Role::Ignored, Unit::Unknown, true};
    const Unit unit = has({"khz"}) ? Unit::Kilohertz
        : has({"hz", "hertz"})     ? Unit::Hertz
        : has({"ppm", "shift", "shifts", "δ", "δiso", "δexp", "δobs", "δcalc", "delta", "position", "positions", "pos"})
        ? Unit::Ppm
        : Unit::Unknown;
    const bool isShielding =
        std::any_of(words.begin(), words.end(), [](const QString &word) { return word.startsWith(u'σ'); });
    if (isShielding || has({"shielding", "shieldings"}))
        return {Role::Ignored, unit, true};
    // "Index (F1)" counts points along an axis.
    if (has({"index", "address"}))
        return {Role::Number, unit, true};
    if (unit != Unit::Unknown || has({"x", "f1", "f2", "w1", "w2", "frequency"}))
        return {has({"f1", "w1"}) ? Role::PositionF1 : Role::Position, unit, true};
    if (has({"imag", "imaginary", "im"}))
        return {Role::Imaginary, unit, true};
    if (has({"intensity", "intensities", "height", "amplitude", "real", "re", "signal", "y", "data", "abundance", "int",
             "spectrum"}))
        return {Role::Intensity, unit, true};
    if (has({"count", "sites", "multiplicity"}))
        return {Role::Count, unit, true};
    if (has({"label", "labels", "name", "assignment", "assign", "atom", "atoms", "site", "comment", "annotation"}))
        return {Role::Label, unit, true};
    if (has({"number", "no", "nr", "#", "point", "peak", "id"}))
        return {Role::Number, unit, true};
    return {};
}

/// The first nucleus that a text names.
QString nucleusIn(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral("(?<![A-Za-z0-9.])\\^?(\\d{1,3})([A-Z][a-z]?)(?![A-Za-z0-9])"));
    const QRegularExpressionMatch match = pattern.match(text);
    return match.hasMatch() && match.captured(2) != u"D" ? match.captured(1) + match.captured(2) : QString();
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
void nameColumns(TextLayout &layout, const std::vector<QString> &headers,
                 const std::vector<std::vector<double>> &values)
{
    const bool firstCounts = counts(values.front());
    for (auto header = headers.rbegin(); header != headers.rend() && header - headers.rbegin() < 4; ++header) {
        // Settings, one beside the other.
        if (header->count(u'=') > 1)
            continue;
        const QStringList names = namesIn(*header, layout, firstCounts);
        if (std::none_of(names.begin(), names.end(), [](const QString &name) { return meaningOf(name).known; }))
            continue;
        for (size_t i = 0; i < layout.columns.size(); ++i) {
            TextLayout::Column &column = layout.columns[i];
            const QString &name = names[qsizetype(i)];
            column.name = column.name.isEmpty() ? name : name + u' ' + column.name;
        }
    }
    for (TextLayout::Column &column : layout.columns) {
        const Meaning meaning = meaningOf(column.name);
        column.role = column.numeric ? meaning.role : Role::Label;
        column.unit = meaning.unit;
        column.nucleus = nucleusIn(column.name);
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
        for (int i = 0; i < int(layout.columns.size()); ++i) {
            if (layout.columns[size_t(i)].numeric)
                m_numeric.push_back(i);
        }
    }

    void guess()
    {
        switch (m_numeric.size()) {
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
/// second one of the kind is F1.
void sortOutPositions(TextLayout &layout)
{
    using Columns = std::vector<TextLayout::Column *>;
    const auto along = [&](Role role) {
        Columns found;
        for (TextLayout::Column &column : layout.columns) {
            if (column.role == role)
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
        f2[1]->role = Role::PositionF1;
        f2.erase(f2.begin() + 1);
    }
    // A lone F1 is the only axis.
    if (f2.empty() && !f1.empty())
        f1.front()->role = Role::Position;
    for (const Columns &columns : {f2, f1}) {
        for (size_t i = 1; i < columns.size(); ++i)
            columns[i]->role = Role::Ignored;
    }
}

/// "site, exp, calc"
bool takeMeasured(TextLayout &layout)
{
    const auto of = [&](auto says) {
        return std::find_if(layout.columns.begin(), layout.columns.end(),
                            [&](const auto &column) { return column.numeric && says(column.name); });
    };
    const auto measured = of(isMeasured), calculated = of(isCalculated);
    if (measured == layout.columns.end() || calculated == layout.columns.end())
        return false;
    measured->role = calculated->role = Role::Position;
    return true;
}

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
                   const std::vector<QString> &headers)
{
    const size_t position = size_t(layout.columnOf(Role::Position));
    for (size_t i = 0; i < layout.columns.size() && layout.columns[position].unit == Unit::Ppm; ++i) {
        if (layout.columns[i].role == Role::Ignored && layout.columns[i].numeric
            && layout.columns[i].unit == Unit::Hertz)
            layout.frequency = commonRatio(values[i], values[position]);
    }
    static const QRegularExpression pattern(QStringLiteral("(\\d+(?:\\.\\d+)?)\\s*MHz"));
    QStringList found;
    for (const QString &header : headers) {
        for (auto match = pattern.globalMatch(header); match.hasNext();)
            found.append(match.next().captured(1));
    }
    found.removeDuplicates();
    if (layout.frequency == 0.0 && found.size() == 1)
        layout.frequency = found.first().toDouble();
}

bool hasWordForNumber(const TextLayout &layout, const Fields &fields)
{
    for (size_t i = 0; i < std::min(fields.size(), layout.columns.size()); ++i) {
        if (layout.columns[i].numeric && !fields[i].empty() && !layout.number(fields[i]) && !isDamagedNumber(fields[i]))
            return true;
    }
    return false;
}

/// What of the positions' texts was left out.
void noteNotation(TextLayout &layout, const std::vector<TextLine> &rows)
{
    const size_t position = size_t(layout.columnOf(Role::Position));
    Fields fields;
    bool hasErrors = false, hasRanges = false;
    for (const TextLine &row : rows) {
        layout.split(row.text, fields);
        if (!matches(layout, fields))
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
    return trimmed(uncommented(line, separator)).empty();
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
            if (rest[end] == '"')
                quoted = !quoted;
            else if (!quoted && (blanks ? isBlank(rest[end]) : rest[end] == separator))
                break;
        }
        std::string_view field = trimmed(rest.substr(0, end));
        if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
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
    if (lastIsOptional && fields.size() == columns.size() && fields.back().empty())
        fields.pop_back();
    while (fields.size() < columns.size() && !lastIsOptional && !columns[fields.size()].numeric)
        fields.emplace_back();
}

std::optional<double> TextLayout::number(std::string_view field) const
{
    if (const auto plain = NumberText::parse<double>(field))
        return plain;
    std::string text = asTyped(withoutError(field), decimalComma);
    if (const size_t dash = rangeDash(text); dash != std::string::npos) {
        const auto from = NumberText::parse<double>(trimmed(std::string_view(text).substr(0, dash)));
        const auto to = NumberText::parse<double>(trimmed(std::string_view(text).substr(dash + 1)));
        return from && to ? std::optional(rangeMiddle(*from, *to)) : std::nullopt;
    }
    static const QRegularExpression thousands(QStringLiteral("^[-+]?\\d{1,3}(?:,\\d{3}){2,}(?:\\.\\d+)?$"));
    if (field.find(',') != std::string::npos && thousands.match(ReaderText::decoded(field)).hasMatch()) {
        text = field;
        std::erase(text, ',');
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
    // A sentence with a number in it.
    constexpr std::ptrdiff_t mostWords = 2;
    const bool isProse = best.matching == 1 && layout.separator == ' '
        && std::count_if(layout.columns.begin(), layout.columns.end(), [](const auto &c) { return !c.numeric; })
            > mostWords;
    if (best.matching == 0 || isProse) {
        for (const TextLine &row : rows) {
            if (isDamagedNumber(trimmed(row.text)))
                fail(source, row.number, Texts::tr("expected a number, found %1").arg(excerpt(row.text)));
        }
        if (complete && rows.size() <= 2)
            return {}; // a header alone
        fail(source, rows.front().number,
             Texts::tr("no table of numbers was found, expected \"ppm,intensity\" or peaks"));
    }

    constexpr size_t mostColumns = 64;
    if (layout.columns.size() > mostColumns)
        fail(source, rows.front().number,
             Texts::tr("a row has %1 fields: a position and an intensity a line were expected")
                 .arg(layout.columns.size()));

    std::vector<QString> headers;
    std::vector<std::vector<double>> values(layout.columns.size());
    std::vector<std::optional<QString>> constants(layout.columns.size()); // texts of columns that have only one
    Fields fields;
    int passedOver = 0, without = 0;
    bool started = false;
    for (const TextLine &line : sample) {
        if (const std::string_view comment = commentText(line.text); !comment.empty() && !started)
            headers.push_back(ReaderText::decoded(comment));
        if (layout.isEmptyLine(line.text))
            continue;
        layout.split(line.text, fields);
        if (matches(layout, fields)) {
            if (!std::exchange(started, true))
                layout.firstLine = line.number;
            for (size_t i = 0; i < layout.columns.size(); ++i) {
                const bool isNumber = layout.columns[i].numeric && i < fields.size();
                values[i].push_back(isNumber ? *layout.number(fields[i]) : 0.0);
                if (!layout.columns[i].numeric) {
                    const QString text = ReaderText::decoded(fields[i]);
                    constants[i] = values[i].size() == 1 || constants[i] == text ? std::optional(text) : std::nullopt;
                }
                if (!layout.columns[i].numeric && isNoNumber(fields[i]))
                    fail(source, line.number, Texts::tr("expected a number, found %1").arg(excerpt(fields[i])));
            }
            without += fields.size() < layout.columns.size();
            continue;
        }
        // A title may hold a number with a unit.
        const bool isTitle = !started && hasWordForNumber(layout, fields);
        for (size_t i = 0; i < std::min(fields.size(), layout.columns.size()) && !isTitle; ++i) {
            if ((started || fields.size() == layout.columns.size()) && layout.columns[i].numeric
                && !layout.number(fields[i]) && (started || isDamagedNumber(fields[i])))
                fail(source, line.number, Texts::tr("expected a number, found %1").arg(excerpt(fields[i])));
        }
        if (started) {
            fail(source, line.number,
                 Texts::tr("expected %1 fields as in the lines before, found %2")
                     .arg(layout.columns.size())
                     .arg(fields.size()));
        }
        headers.push_back(ReaderText::decoded(line.text));
        ++passedOver;
    }
    nameColumns(layout, headers, values);
    const bool named = layout.columnOf(Role::Position) >= 0 || layout.columnOf(Role::PositionF1) >= 0;
    if (!named && !takeMeasured(layout)) {
        for (TextLayout::Column &column : layout.columns)
            column.role = column.numeric ? Role::Ignored : Role::Label;
        RoleGuess(layout, values, source, options).guess();
    }
    sortOutPositions(layout);
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
    TextLayout::Column &position = layout.columns[size_t(layout.columnOf(Role::Position))];
    for (auto header = headers.rbegin(); header != headers.rend() && position.unit == Unit::Unknown; ++header)
        position.unit = meaningOf(*header).unit;
    for (auto header = headers.rbegin(); header != headers.rend() && position.nucleus.isEmpty(); ++header)
        position.nucleus = nucleusIn(*header);
    findFrequency(layout, values, headers);
    noteIgnored(layout);
    // Without its position a row is none.
    layout.lastIsOptional &=
        layout.columns.back().role != Role::Position && layout.columns.back().role != Role::PositionF1;
    if (without > 0 && layout.columns.back().role == Role::Intensity)
        layout.notes.append(Texts::tr("Peaks without a height (%1) were given the height 1.").arg(without));
    noteNotation(layout, rows);
    if (passedOver > 1)
        layout.notes.append(Texts::tr("%1 lines above the table were passed over.").arg(passedOver));
    return std::move(layout);
}

} // namespace Workbench
