// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/PublishedPeaks.h"

#include "data/Error.h"
#include "data/Nuclides.h"
#include "data/ReaderText.h"
#include "formats/PrintedNumber.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace Workbench {

using namespace Qt::StringLiterals;

namespace PublishedPeaks {

namespace {

/// Letters as they come from print: superscript digits, signs of their own for minus and dashes.
QString plainText(QString text)
{
    static const QString raised = QStringLiteral("⁰¹²³⁴⁵⁶⁷⁸⁹");
    // Behind a number it is the mark of a footnote.
    bool isFootnote = false;
    for (QChar &c : text) {
        const qsizetype digit = raised.indexOf(c);
        if (digit >= 0 && !isFootnote)
            c = QChar(u'0' + char16_t(digit));
        isFootnote = digit < 0 && c.isDigit();
        if (digit >= 0)
            continue;
        if (QStringView(u"‐‑‒–—−").contains(c))
            c = u'-';
        else if (c.isSpace())
            c = u' ';
    }
    // A minus has no blank behind it, and what is about 2.1 ppm is 2.1 ppm.
    static const QRegularExpression minus(QStringLiteral("(^|[,;:=(][ ]*|δ(?:\\([^()]*\\))?[ ]*)-[ ]+(?=\\d)")),
        about(QStringLiteral("(?:(?<![A-Za-z])(?:ca|approx|circa)\\b\\.?[ ]*|[~≈∼][ ]*)(?=[-+]?\\d)"));
    return text.replace(minus, QStringLiteral("\\1-")).remove(about);
}

/// Of a shift with decimals; what stands behind a blank, as in "170.2 (1)", is a name.
const QRegularExpression &errorOfShift()
{
    static const QRegularExpression pattern(QStringLiteral("(?<=\\.\\d|\\.\\d\\d|\\.\\d\\d\\d)\\(\\d{1,3}\\)"));
    return pattern;
}

/// What stands before the first shift: the nucleus with "NMR" and what is said about the measurement, or "δ", or both.
/// A number with decimals is a shift.
const QRegularExpression &head()
{
    static const QRegularExpression pattern(QStringLiteral(
        "(?:(?<![A-Za-z0-9])\\^?(?:\\d{1,3}[A-Z][a-z]?)(?![a-z])(?:[ ]*\\{[^}]*\\})?[-→/ \\w]{0,40}?NMR\\b"
        "(?:(?!\\d+[.,]\\d|(?<![A-Za-z0-9])\\d+[,;][ ]\\d)[^:=δ()]){0,40}"
        "(?:\\([^()]*(?:\\([^()]*\\)[^()]*)*\\))?[ ]*[:;,=]?[ ]*(?:δ[ ]*(?:iso|[A-Z]?[a-z]?))?"
        "|δ(?!\\d)[ ]*_?(?:iso|[HCNFP])?(?:\\(\\d{1,3}[A-Z][a-z]?\\))?(?:[ ]*\\([^()]*MHz[^()]*\\))?)"
        "[ ]*(?:[(\\[/]?[ ]*(?:δ[ ]*[,/]?[ ]*)?ppm[ ]*[)\\]]?)?[ ]*[:=]?[ ]*(?<!\\d)(?=[-+]?\\d)"));
    return pattern;
}

/// What is said about the measurement may name others.
QString nucleusOf(const QRegularExpressionMatch &head)
{
    const QString text = head.captured();
    return Nuclides::table().observedIn(text.left(text.indexOf(QLatin1String("NMR"))));
}

/// The parts between commas and semicolons outside brackets.
QStringList entries(const QString &list)
{
    QStringList parts{{}};
    int depth = 0;
    for (const QChar c : list) {
        depth += c == u'(' || c == u'[' ? 1 : c == u')' || c == u']' ? -1 : 0;
        if (depth <= 0 && (c == u',' || c == u';'))
            parts.append(QString());
        else
            parts.last().append(c);
    }
    for (QString &part : parts)
        part = part.trimmed();
    parts.removeAll(QString());
    return parts;
}

/// The one that ends the list: "br." and "arom." in brackets do not. -1: none
qsizetype fullStop(const QString &list)
{
    int depth = 0;
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QChar c = list[i];
        depth += c == u'(' || c == u'[' ? 1 : c == u')' || c == u']' ? -1 : 0;
        if (depth <= 0 && c == u'.' && (i + 1 == list.size() || list[i + 1] == u' '))
            return i;
    }
    return -1;
}

QString outsideBrackets(const QString &list)
{
    static const QRegularExpression brackets(QStringLiteral("[(\\[][^()\\[\\]]*[)\\]]"));
    return QString(list).remove(brackets);
}

const QRegularExpression &decimalPoint()
{
    static const QRegularExpression pattern(QStringLiteral("\\d\\.\\d"));
    return pattern;
}

const QRegularExpression &betweenShifts()
{
    static const QRegularExpression pattern(QStringLiteral(";|, "));
    return pattern;
}

/// "170,2; 133,3" and "170,2, 133,3" have decimal commas: no decimal point, and another mark between the shifts. The
/// comma of "1,234.5" is none.
QString withDecimalPoints(const QString &list)
{
    static const QRegularExpression comma(QStringLiteral("(\\d),(?=\\d)")),
        thousands(QStringLiteral("(?<![\\d.,])(\\d),(?=\\d{3}\\.\\d)"));
    return !outsideBrackets(list).contains(decimalPoint()) && list.contains(betweenShifts())
        ? QString(list).replace(comma, QStringLiteral("\\1."))
        : QString(list).replace(thousands, QStringLiteral("\\1"));
}

/// "3,10" of "7.26; 3,10; 2.05", which would become two shifts; empty where all have points.
QString decimalCommaAmongPoints(const QString &list)
{
    static const QRegularExpression comma(QStringLiteral("(?<![\\d.,])\\d+,\\d{1,2}(?![\\d.,])"));
    const QString outside = outsideBrackets(list);
    return outside.contains(decimalPoint()) && outside.contains(betweenShifts()) ? comma.match(outside).captured()
                                                                                 : QString();
}

const QString multiplets = QStringLiteral("(?:(?:br|app|appt)\\.?[ ]*)*(?:[sdtqmhp]{1,4}|quint|quin|sept|sext|br)\\.?");

/// "s", "br s", "dd"
bool isMultiplet(const QString &text)
{
    static const QRegularExpression pattern(u'^' + multiplets + u'$');
    return pattern.match(text).hasMatch();
}

/// Remarks between commas, as they stand in "(d, C1)" and "dd (8.1), C1".
QStringList partsOf(const QString &remarks)
{
    static const QRegularExpression around(QStringLiteral("^[(\\[]([^()\\[\\]]*)[)\\]]$")),
        behind(QStringLiteral("^(") + multiplets + QStringLiteral(")[ ]*[(\\[]([^()\\[\\]]*)[)\\]]"));
    return entries(
        remarks.trimmed().replace(around, QStringLiteral("\\1")).replace(behind, QStringLiteral("\\1, \\2")));
}

/// The shift in ppm; a range of a multiplet has its middle.
std::optional<MeasuredPeak> peakOf(const QString &entry, bool &isRange)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:and[ ]+)?(?:(?<name>(?!J\\b)[A-Z][\\w'*-]{0,7})[ ]*[:= ][ ]*)?"
                       "(?<from>[-+]?\\d+(?:\\.\\d+)?)(?:[ ]*(?:-|to)[ ]*(?<to>-?\\d+\\.\\d+))?[ ]*(?:ppm)?"
                       "(?:[ ]*[(\\[](?<text>.*)[)\\]])?[ ]*(?:ppm)?$"));
    const QRegularExpressionMatch match = pattern.match(entry);
    if (!match.hasMatch())
        return {};
    MeasuredPeak peak;
    peak.f2 = match.captured(u"from").toDouble();
    if (match.hasCaptured(u"to")) {
        peak.f2 = PrintedNumber::rangeMiddle(peak.f2, match.captured(u"to").toDouble());
        isRange = true;
    }
    annotate(peak, match.captured(u"text"));
    if (match.hasCaptured(u"name"))
        peak.label = (match.captured(u"name") + u' ' + peak.label).trimmed();
    return peak;
}

QString expectedShift(const QString &entry)
{
    return Texts::tr("expected a shift such as 7.26 or 7.26 (2H), found %1")
        .arg(ReaderText::excerpt(entry.toStdString()));
}

/// "[170.2, 133.3, 20.4]", "13C: 170,2; 133,3; 20,4" or the numbers alone, the only line but for comments. Three or
/// four numbers in another order may as well be the columns of one peak.
std::optional<MeasuredPeaks> onlyLine(const std::vector<TextLine> &lines, const QString &source)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^(?:(?<nucleus>\\d{1,3}[A-Z][a-z]?)(?![A-Za-z])(?:[ ]+[^:=,;]{1,40}?)?[ ]*[:=])?[ ]*(?<open>[\\[({])?"
        "(?<list>[-+.,;\\d ]+|(?:[A-Z][\\w'*-]{0,7}[ ]*[:= ][ ]*[-+]?\\d+(?:[.,]\\d+)?[ ]*(?:[,;][ ]+|$|(?=[\\])}])))+)"
        "[\\])}]?[ ]*(?:ppm)?[ ;,.]*$")),
        blanks(QStringLiteral("[ ]+")), error(QStringLiteral("(?<=\\d)\\(\\d{1,3}\\)")),
        nameOrDecimals(QStringLiteral("[A-Za-z]\\d|\\d[.,]\\d")); // not "Sample 1, batch 2"
    bool hasErrors = false;
    QRegularExpressionMatch match;
    for (const TextLine &line : lines) {
        QString text = plainText(ReaderText::decoded(line.text)).trimmed();
        hasErrors |= text.contains(error);
        text.remove(error);
        if (text.isEmpty() || QStringView(u"#%!;").contains(text.front()))
            continue;
        if (match.hasMatch() || !(match = pattern.match(text)).hasMatch())
            return {};
    }
    QString list = match.captured(u"list").trimmed();
    if (!list.contains(QStringLiteral(", ")) && !list.contains(u';'))
        list.replace(blanks, QStringLiteral("; "));
    MeasuredPeaks result;
    for (const QString &entry : entries(withDecimalPoints(list))) {
        bool isRange = false;
        const auto peak = peakOf(entry, isRange);
        if (!peak)
            return {};
        result.peaks.push_back(*peak);
    }
    const auto &peaks = result.peaks;
    const auto isLower = [](const MeasuredPeak &a, const MeasuredPeak &b) { return a.f2 < b.f2; };
    const bool falls = std::is_sorted(peaks.rbegin(), peaks.rend(), isLower);
    const bool isSorted = falls || std::is_sorted(peaks.begin(), peaks.end(), isLower);
    const bool isNamed = !peaks.empty() && !peaks[0].label.isEmpty();
    const bool isMarked = match.hasCaptured(u"nucleus") || match.hasCaptured(u"open") || isNamed;
    const size_t least = isMarked ? 2 : falls ? 3 : isSorted ? 4 : 5;
    constexpr size_t most = 64; // more are a row of a map
    if (peaks.size() < least || peaks.size() > most || (isNamed && !list.contains(nameOrDecimals)))
        return {};
    result.title = QFileInfo(source).completeBaseName();
    result.format = Texts::tr("text peak list");
    result.nuclei[0] = match.captured(u"nucleus");
    result.notes = {Texts::tr("Read as a list of %1 peaks: %2.")
                        .arg(QString::number(peaks.size()), Texts::tr("the numbers of the only line are shifts"))};
    if (!match.captured().contains(u"ppm"))
        result.notes.append(Texts::tr("The file names no unit: the positions were taken as ppm."));
    if (hasErrors)
        result.notes.append(Texts::tr("Errors of the positions were left out."));
    return result;
}

/// Where the shifts stand in the file, and what stands before them.
struct ShiftText {
    QString text; ///< empty: nowhere; without the errors of shifts
    QString nucleus;
    int line = 0; ///< where it begins
    bool hasUnit = true;
    bool hasErrors = false;
};

/// From a head on, whatever follows.
ShiftText headedText(const std::vector<TextLine> &lines)
{
    QRegularExpressionMatch start;
    QString nucleusAbove;
    ShiftText found;
    for (size_t i = 0; i < lines.size(); ++i) {
        QString plain = plainText(ReaderText::decoded(lines[i].text));
        if (start.hasMatch()) {
            found.text += u' ' + plain;
            continue;
        }
        found.line = lines[i].number;
        start = head().match(plain);
        // The head may stand alone above the only other line.
        const QString next = i + 2 == lines.size() ? plainText(ReaderText::decoded(lines.back().text)) : QString();
        const QString alone = outsideBrackets(plain);
        const bool mayGoOn = !isComment(lines[i].text) && !alone.contains(u',') && !alone.contains(u';')
            && Nuclides::table().namedIn(alone).size() < 2;
        if (!start.hasMatch() && !next.isEmpty() && mayGoOn && !head().match(next).hasMatch()) {
            plain += u' ' + next;
            ++i;
            found.line = lines[i].number;
            start = head().match(plain);
        }
        if (start.hasMatch())
            found.text = plain.mid(start.capturedEnd());
        else if (const QString named = Nuclides::table().observedIn(plain); !named.isEmpty())
            nucleusAbove = named;
    }
    found.nucleus = nucleusOf(start);
    if (found.nucleus.isEmpty())
        found.nucleus = nucleusAbove;
    return found;
}

/// "170.1 (s, C=O); 154.3; 134.5 (d)", cut out behind its head, or a line for each: what brackets say with letters
/// tells it from columns.
ShiftText unheadedText(const std::vector<TextLine> &lines)
{
    static const QRegularExpression beginning(QStringLiteral("^[ (\\[]*[-+]?\\d+[.,]\\d")),
        remark(QStringLiteral("\\d[ ]*(?:ppm[ ]*)?[(\\[][^()\\[\\]]*[A-Za-z]")),
        endsBetween(QStringLiteral("[,;]$|\\band$")), prefix(QStringLiteral("^(\\d{1,3}[A-Z][a-z]?)[ ]*[:=][ ]*"));
    ShiftText found{{}, {}, 0, false, false};
    qsizetype ends = 0, joined = 0;
    for (const TextLine &line : lines) {
        QString plain = plainText(ReaderText::decoded(line.text)).trimmed();
        if (plain.isEmpty())
            continue;
        found.hasErrors |= plain.contains(errorOfShift());
        plain.remove(errorOfShift());
        if (const auto match = prefix.match(plain); match.hasMatch() && found.text.isEmpty()) {
            found.nucleus = Nuclides::table().observedIn(match.captured());
            plain.remove(0, match.capturedLength());
        }
        found.hasUnit |= plain.contains(u"ppm");
        if (found.text.isEmpty() && (isComment(line.text) || !beginning.match(plain).hasMatch())) {
            if (const QString named = Nuclides::table().observedIn(plain); !named.isEmpty())
                found.nucleus = named;
            continue;
        }
        if (found.text.isEmpty())
            found.line = line.number;
        found.text += plain;
        const bool isOpen = found.text.count(u'(') > found.text.count(u')') || endsBetween.match(plain).hasMatch();
        ++(isOpen ? joined : ends);
        found.text += isOpen ? u" "_s : u"; "_s;
    }
    if (!remark.match(found.text).hasMatch() || !found.text.endsWith(u"; "_s))
        return {};
    found.text.chop(2);
    if (ends == 1)
        return found;
    const QStringList shifts = entries(withDecimalPoints(found.text));
    bool isRange = false;
    const bool areLines = joined == 0 && shifts.size() == ends
        && std::all_of(shifts.begin(), shifts.end(), [&](const QString &shift) { return peakOf(shift, isRange); });
    return areLines ? found : ShiftText();
}

} // namespace

bool beginsWithMultiplet(const QString &remarks)
{
    const QStringList parts = partsOf(remarks);
    return !parts.isEmpty() && isMultiplet(parts.constFirst());
}

void annotate(MeasuredPeak &peak, const QString &remarks)
{
    static const QRegularExpression coupling(QStringLiteral("^\\^?\\d?J\\b|\\bHz$")),
        decimal(QStringLiteral("^\\d+[.,]\\d+$")), nuclei(QStringLiteral("^(\\d{1,3})[ ]*(?:×[ ]*)?[A-Z][a-z]?$"));
    const QStringList parts = partsOf(remarks);
    const bool tellsCouplings = !parts.isEmpty() && isMultiplet(parts.constFirst());
    QStringList names;
    for (const QString &part : parts) {
        if (tellsCouplings && decimal.match(part).hasMatch())
            continue;
        if (const auto match = nuclei.match(part); match.hasMatch())
            peak.count = match.captured(1).toInt();
        else if (!isMultiplet(part) && !coupling.match(part).hasMatch())
            names.append(part);
    }
    peak.label = names.join(u' ');
}

void dropPartialCounts(std::vector<MeasuredPeak> &peaks, QStringList &notes)
{
    const auto told =
        std::count_if(peaks.begin(), peaks.end(), [](const MeasuredPeak &peak) { return peak.count > 0; });
    if (told == std::ptrdiff_t(peaks.size()))
        return;
    for (MeasuredPeak &peak : peaks)
        peak.count = 0;
    notes.append(Texts::tr("Counts are told of %1 of the %2 peaks: they were not used.").arg(told).arg(peaks.size()));
}

std::optional<MeasuredPeaks> parse(const std::vector<TextLine> &lines, const QString &source)
{
    if (auto list = onlyLine(lines, source))
        return list;
    ShiftText found = headedText(lines);
    if (found.text.isEmpty())
        found = unheadedText(lines);
    QString &text = found.text;
    const int line = found.line;
    const bool hasErrors = found.hasErrors || text.contains(errorOfShift());
    text.remove(errorOfShift());
    // "7.26 (s, 1 H) 3.10 (s, 3 H)" has no mark between the shifts.
    static const QRegularExpression unmarked(QStringLiteral("(?<=[)\\]])[ ]+(?=[-+]?\\d+\\.\\d)"));
    text.replace(unmarked, QStringLiteral(", "));
    static const QRegularExpression conjunction(QStringLiteral("[ ]+and[ ]+"));
    const qsizetype end = fullStop(text);
    const QString rest = end < 0 ? QString() : text.mid(end + 1).trimmed();
    QString list = text.left(end < 0 ? text.size() : end);
    const QStringList shifts = entries(withDecimalPoints(list.replace(conjunction, QStringLiteral(", "))));
    bool isRange = false;
    // The title of a table may go on with a number.
    const auto isShift = [&](const QString &entry) { return peakOf(entry, isRange).has_value(); };
    static const QRegularExpression footnote(QStringLiteral("^[-+]?\\d+(?:\\.\\d+)?[⁰¹²³⁴⁵⁶⁷⁸⁹]"));
    for (const QString &entry : shifts) {
        if (footnote.match(entry).hasMatch())
            fail(source, line, expectedShift(entry));
    }
    if (shifts.size() < 2 || 2 * std::count_if(shifts.begin(), shifts.end(), isShift) <= shifts.size())
        return {};

    if (const QString odd = decimalCommaAmongPoints(list); !odd.isEmpty())
        fail(source, line, expectedShift(odd));
    if (head().match(text).hasMatch())
        fail(source, line, Texts::tr("there is more than one list of shifts: each needs a file of its own"));

    MeasuredPeaks result;
    result.title = QFileInfo(source).completeBaseName();
    result.format = Texts::tr("text of a publication");
    result.nuclei[0] = found.nucleus;
    for (const QString &entry : shifts) {
        const auto peak = peakOf(entry, isRange);
        if (!peak)
            fail(source, line, expectedShift(entry));
        result.peaks.push_back(*peak);
    }
    result.notes.append(Texts::tr("Read as the list of %1 shifts of a publication.").arg(result.peaks.size()));
    if (!found.hasUnit)
        result.notes.append(Texts::tr("The file names no unit: the positions were taken as ppm."));
    if (std::any_of(result.peaks.begin(), result.peaks.end(), [](const auto &peak) { return peak.count > 0; }))
        dropPartialCounts(result.peaks, result.notes);
    if (hasErrors)
        result.notes.append(Texts::tr("Errors of the positions were left out."));
    if (isRange)
        result.notes.append(Texts::tr("Ranges of shifts were replaced by their middles."));
    if (!rest.isEmpty())
        result.notes.append(
            Texts::tr("What follows the full stop was left out: %1.").arg(ReaderText::excerpt(rest.toStdString())));
    return result;
}

} // namespace PublishedPeaks

} // namespace Workbench
