// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ColumnNames.h"

#include "data/Nuclides.h"

#include <QRegularExpression>

#include <algorithm>

namespace Workbench::ColumnNames {

using Role = TextLayout::Role;
using Unit = TextLayout::Unit;

namespace {

/// Also behind a δ: "δexp".
bool hasWordLike(const QString &name, const QRegularExpression &pattern)
{
    const QStringList words = wordsOf(name);
    return std::any_of(words.begin(), words.end(), [&](const QString &word) {
        return pattern.match(word.startsWith(u'δ') ? word.mid(1) : word).hasMatch();
    });
}

/// What a name names: without what it says about the unit, the standard and the error, "(ppm; std. TMS)" and "± 0.1".
QString withoutRemarks(QString name)
{
    static const QRegularExpression brackets(
        QStringLiteral("(?<=\\S)\\s*[(\\[][^)\\]]*(?:\\bppm\\b|\\bk?Hz\\b|±|\\+/-)[^)\\]]*[)\\]]")),
        behind(QStringLiteral("(?<=\\S)\\s*(?:±|\\+/-|\\b(?:vs|versus|relative to|rel\\. to|gegen)\\b).*$"));
    return name.remove(brackets).remove(behind);
}

/// Differences, errors, widths and the like, which may be in ppm as shifts are.
bool isNoShift(const QString &name)
{
    // In lower case the difference would be a shift, and the span a frequency.
    for (const QString &sign : {QStringLiteral("Δ"), QStringLiteral("∆"), QStringLiteral("±"), QStringLiteral("Ω"),
                                QStringLiteral("\u2126"), QStringLiteral("\\Delta"), QStringLiteral("+/-")}) {
        if (name.contains(sign))
            return true;
    }
    static const QRegularExpression pattern(QStringLiteral(
        "^(?:diff.*|deviat.*|dev|abweich.*|resid.*|err|errors?|fehler.*|uncertaint.*|unsicherheit.*|std|stdev|sd|esd"
        "|rms[de]|ma[de]|.*width|.*widths|.*breiten?|fwhm|hwhm|lb|lw\\d*|δν.*|δ?q[ci]s|δ?aniso.*|δ?csa|span|skew|κ|"
        "kappa"
        "|δ?σ.*|sigma|shieldings?|start|stop|end|left|right|integrals?|area|fläche|phase|coupling|volume|cq|pq|ηq?"
        "|eta|δ(?:11|22|33|₁₁|₂₂|₃₃|xx|yy|zz)|anisotropy|asymmetry)$")),
        component(QStringLiteral("^(?:11|22|33|xx|yy|zz)$"));
    static const QRegularExpression otherUnit(
        QStringLiteral("\\S\\s*[(\\[/]\\s*(?:[mµμu]?s|min|h|K|°C|Å)\\s*[)\\]]?$"));
    if (otherUnit.match(name).hasMatch())
        return true;
    const QStringList words = wordsOf(name);
    const bool isDelta = words.contains(u"δ") || words.contains(QLatin1String("delta"));
    return std::any_of(words.begin(), words.end(), [&](const QString &word) {
        return pattern.match(word).hasMatch() || (isDelta && component.match(word).hasMatch());
    });
}

/// Alone, or with a unit that is no shift's.
bool isOtherAxis(const QString &name)
{
    static const QRegularExpression pattern(
        QStringLiteral(
            "^\\W*(?:time|zeit|t|fid|field|feld|2theta|2θ|wavenumbers?|wellenzahl(?:en)?|wavelength|temperatur[e]?"
            "|delay)\\W*(?:[(\\[/].*)?$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return pattern.match(name).hasMatch();
}

} // namespace

QStringList wordsOf(const QString &name)
{
    static const QRegularExpression notLetters(QStringLiteral("[^\\p{L}\\p{N}#]+"));
    return name.toLower().split(notLetters, Qt::SkipEmptyParts);
}

bool isCalculated(const QString &name)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:.*calc|calcd|computed|predicted|gipaw|dft|castep|vasp|pbe.*|sim|theo|theor.*|"
                       "ber|berechn.*|rechnung|calcul.*|simul.*|fit|fitted|model)$"));
    return hasWordLike(name, pattern);
}

bool isMeasured(const QString &name)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:exp.*|meas|measured|observed|.*obs|gem|gemessen.*|messung|mesur.*|beobacht.*)$"));
    return hasWordLike(name, pattern);
}

bool isCounting(const QString &name)
{
    const QString word = name.trimmed().toLower();
    return word == u"position" || word == u"pos" || word == u"pos.";
}

bool isNucleus(const QString &name)
{
    static const QRegularExpression notLetters(QStringLiteral("[^A-Za-z0-9]"));
    return Nuclides::table().contains(QString(name).remove(notLetters));
}

int shiftRank(const QString &name)
{
    static const QRegularExpression shift(QStringLiteral("^(?:δ.*|delta|shifts?|.*verschiebung(?:en)?|chemical)$")),
        isotropic(QStringLiteral("^(?:δ?iso|isotrop.*)$"));
    int rank = 0;
    for (const QString &word : wordsOf(name))
        rank = std::max(rank, isotropic.match(word).hasMatch() ? 2 : shift.match(word).hasMatch() ? 1 : 0);
    return rank;
}

bool isUnit(const QString &name)
{
    static const QRegularExpression unit(QStringLiteral("^(?:[\\[(].*[\\])]|ppm|k?Hz|a\\.? ?u\\.?|arb\\..*|%|)$"),
                                         QRegularExpression::CaseInsensitiveOption);
    return unit.match(name.trimmed()).hasMatch();
}

bool isAmount(const QString &name)
{
    static const QRegularExpression amount(
        QStringLiteral("^[-+]?\\d+(?:[.,]\\d+)?\\s*(?:%|ppm|[kMG]?Hz|K|T|°C|m?s|min|h)?$"));
    return amount.match(name.trimmed()).hasMatch();
}

bool isAxisName(const QString &name)
{
    static const QStringList usual{QStringLiteral("ppm"),      QStringLiteral("hz"),       QStringLiteral("khz"),
                                   QStringLiteral("x"),        QStringLiteral("f2"),       QStringLiteral("chemical"),
                                   QStringLiteral("shift"),    QStringLiteral("shifts"),   QStringLiteral("δ"),
                                   QStringLiteral("position"), QStringLiteral("frequency")};
    static const QRegularExpression nucleus(QStringLiteral("^δ?\\d{0,3}[a-z]{1,2}$"));
    const QStringList words = wordsOf(name);
    const bool hasNucleus = !Nuclides::table().observedIn(name).isEmpty();
    return std::all_of(words.begin(), words.end(), [&](const QString &word) {
        return usual.contains(word) || (hasNucleus && nucleus.match(word).hasMatch());
    });
}

QStringList namesBetweenBlanks(QString line, bool firstCounts)
{
    static const QRegularExpression slash(QStringLiteral("\\s*/\\s*")), blanks(QStringLiteral("\\s+(?![(\\[])")),
        qualifier(
            QStringLiteral("^(?:chem(?:ical|\\.)?|isotropic|peak|signal|line|resonance|measured|observed|experimental"
                           "|\\^?\\d{1,3}[A-Z][a-z]?)$"),
            QRegularExpression::CaseInsensitiveOption),
        axis(QStringLiteral("^(?:chem(?:ical|\\.)?|shifts?|positions?|ppm|δ)\\b"),
             QRegularExpression::CaseInsensitiveOption);
    QStringList names;
    bool isOpen = false;
    for (const QString &word : line.replace(slash, QStringLiteral("/")).trimmed().split(blanks)) {
        if (isOpen && axis.match(word).hasMatch())
            names.last() += u' ' + word;
        else
            names.append(word);
        isOpen = qualifier.match(word).hasMatch() && !(names.size() == 1 && firstCounts);
    }
    return names;
}

Meaning meaningOf(const QString &fullName)
{
    // "10 kHz" is the size of something else.
    static const QRegularExpression amount(QStringLiteral("(?<![\\w.,±])\\d+(?:[.,]\\d+)?\\s*(?:ppm|k?Hz)\\b"));
    const QString name = QString(fullName).remove(amount);
    const QStringList words = wordsOf(name);
    const auto has = [&](std::initializer_list<const char *> any) {
        return std::any_of(any.begin(), any.end(),
                           [&](const char *word) { return words.contains(QString::fromUtf8(word)); });
    };
    // "δH (J in Hz)"
    static const QRegularExpression shiftOf(QStringLiteral("δ_?(?:\\^?\\d{1,3})?[A-Z][a-z]?(?![A-Za-z])"));
    const bool isDelta = shiftOf.match(name).hasMatch() && !Nuclides::table().observedIn(name).isEmpty();
    const Unit unit = isDelta  ? Unit::Ppm
        : has({"khz"})         ? Unit::Kilohertz
        : has({"hz", "hertz"}) ? Unit::Hertz
        : has({"ppm", "shift", "shifts", "verschiebung", "verschiebungen", "δ", "δiso", "δexp", "δobs", "δcalc",
               "delta", "position", "positions", "pos"})
        ? Unit::Ppm
        : Unit::Unknown;
    static const QRegularExpression counts(
        QStringLiteral(
            "^\\W*(?:(?:(?:no|nr|num)\\.?|number)[ ]+of[ ]+(?:nuclei|atoms|sites|protons|hydrogens|carbons|[HCNFP])"
            "|nuclei|anzahl|(?-i:nH)|[HCNFP]['’]s)\\W*$"),
        QRegularExpression::CaseInsensitiveOption);
    const bool isCount = counts.match(name).hasMatch();
    if (isNoShift(withoutRemarks(name)) || (unit == Unit::Unknown && isOtherAxis(name)))
        return {Role::Ignored, Unit::Unknown, true};
    // "Index (F1)" counts points along an axis, and "Assign F1" names its atoms.
    if (has({"index", "address"}))
        return {Role::Number, unit};
    if (has({"assign", "assignment", "zuordnung"}))
        return {Role::Label, unit};
    // "Form I" is no intensity.
    static const QRegularExpression letter(
        QStringLiteral("^[\\W_]*[iyIY](?:[\\W_]*(?:rel|norm|arb|a\\.?u|%).*)?[\\W_]*$"));
    const bool isLetterAlone = letter.match(name).hasMatch();
    // The indirect dimension of correlations, of double quanta and of MQMAS.
    const bool isIndirect =
        has({"f1", "w1", "ω1", "δf1", "δ1", "indirect", "δdq"}) || (unit != Unit::Unknown && has({"dq"}));
    if (unit != Unit::Unknown || isIndirect
        || has({"x", "f2", "w2", "ω2", "δf2", "δ2", "direct", "δsq", "frequency", "center", "centre"}))
        return {isIndirect ? Role::PositionF1 : Role::Position, unit};
    if (has({"imag", "imaginary", "im"}))
        return {Role::Imaginary, unit};
    if (has({"intensity", "intensities", "height", "amplitude", "amp", "ampl", "rel", "real", "re", "signal", "data",
             "abundance", "int", "spectrum", "intensität", "intensitäten", "höhe"})
        || isLetterAlone)
        return {Role::Intensity, unit};
    if (has({"count", "sites", "multiplicity"}) || isCount)
        return {Role::Count, unit};
    if (has({"label", "labels", "name", "atom", "atoms", "site", "comment", "annotation"}))
        return {Role::Label, unit};
    if (has({"number", "no", "nr", "#", "point", "peak", "id"}))
        return {Role::Number, unit};
    return {};
}

Unit unitIn(const QString &line)
{
    static const QRegularExpression pattern(
        QStringLiteral("(?:^\\W*frequen(?:cy|cies|z|zen)\\b|\\b(?:shifts?|positions?|axis|achse|verschiebung(?:en)?|"
                       "positionen|x)\\b|δ\\w*)[ :=]*"
                       "(?:(?:is|are|given|in)[ ]+)*[(\\[/]*[ ]*(ppm|k?Hz)\\b|^\\W*(ppm|k?Hz)\\W*$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    const auto match = pattern.match(line);
    return meaningOf(match.captured(1) + match.captured(2)).unit;
}

double frequencyIn(const QStringList &lines)
{
    static const QRegularExpression pattern(QStringLiteral("(?<![\\d.,])(\\d+(?:[.,]\\d+)?)\\s*MHz"
                                                           "|MHz[)\\]]?\\s*[,:=]\\s*(\\d+(?:[.,]\\d+)?)(?!.*MHz)")),
        other(QStringLiteral("\\b(?:[CPν]_?Q|nu_?Q|filter|band\\w*|SW|sweep|width)\\b\\D{0,8}\\d+(?:[.,]\\d+)?\\s*MHz"),
              QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    QStringList found;
    for (QString line : lines) {
        line.remove(other);
        for (auto match = pattern.globalMatch(line); match.hasNext();) {
            const QRegularExpressionMatch next = match.next();
            found.append(QString(next.captured(1) + next.captured(2)).replace(u',', u'.'));
        }
    }
    found.removeDuplicates();
    return found.size() == 1 ? found.first().toDouble() : 0.0;
}

Unit unitNamed(const QString &text)
{
    const QString unit = text.toLower();
    return unit == u"ppm" ? Unit::Ppm : unit == u"hz" ? Unit::Hertz : unit == u"khz" ? Unit::Kilohertz : Unit::Unknown;
}

} // namespace Workbench::ColumnNames
