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

} // namespace

QStringList wordsOf(const QString &name)
{
    static const QRegularExpression notLetters(QStringLiteral("[^\\p{L}\\p{N}#]+"));
    return name.toLower().split(notLetters, Qt::SkipEmptyParts);
}

bool isCalculated(const QString &name)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^(?:.*calc|calcd|calculat.*|computed|predicted|gipaw|dft|theo|theor.*|ber|berechn.*|simul.*)$"));
    return hasWordLike(name, pattern);
}

bool isMeasured(const QString &name)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:exp.*|measured|observed|.*obs|gem|gemessen.*|beobacht.*)$"));
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

bool isAxisName(const QString &name)
{
    static const QStringList usual{QStringLiteral("ppm"),      QStringLiteral("hz"),       QStringLiteral("khz"),
                                   QStringLiteral("x"),        QStringLiteral("f2"),       QStringLiteral("chemical"),
                                   QStringLiteral("shift"),    QStringLiteral("shifts"),   QStringLiteral("δ"),
                                   QStringLiteral("position"), QStringLiteral("frequency")};
    const QStringList words = wordsOf(name);
    return std::all_of(words.begin(), words.end(), [](const QString &word) { return usual.contains(word); });
}

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
    const bool isDelta = shiftOf.match(name).hasMatch() && !Nuclides::table().observedIn(name).isEmpty();
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

Unit unitIn(QString line)
{
    static const QRegularExpression amount(QStringLiteral("\\d\\s*(?:ppm|k?Hz)\\b"));
    return meaningOf(line.remove(amount)).unit;
}

} // namespace Workbench::ColumnNames
