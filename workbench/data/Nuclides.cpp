// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/Nuclides.h"

#include <QFile>
#include <QRegularExpression>

#include <cmath>
#include <utility>

// The resource lies in a static library, from which nothing else would draw it into the program.
static void initResources()
{
    Q_INIT_RESOURCE(data);
}

namespace Workbench {

double Nuclide::spinNumber() const
{
    const qsizetype slash = spin.indexOf(u'/');
    return slash < 0 ? spin.toDouble() : spin.left(slash).toDouble() / spin.mid(slash + 1).toDouble();
}

double Nuclide::gyromagneticRatio() const
{
    constexpr double proton = 2.6752218744e8; // CODATA 2018
    return proton * frequencyRatio / 100;
}

double Nuclide::larmorFrequency(double protonFrequency) const
{
    constexpr double proton = 750; // MHz, of the table
    return protonFrequency * (gammaFrequency > 0 ? gammaFrequency / proton : std::abs(frequencyRatio) / 100);
}

const Nuclides &Nuclides::table()
{
    static const Nuclides nuclides;
    return nuclides;
}

Nuclides::Nuclides()
{
    initResources();
    QFile file(QStringLiteral(":/workbench/nuclides.tsv"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the nucleus table is missing from the program's resources");
    bool header = true;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (std::exchange(header, false))
            continue;
        const QList<QByteArray> fields = line.split('\t');
        if (fields.size() != 6)
            qFatal("the nucleus table has a line without six fields: %s", line.constData());
        const QString name = QString::fromLatin1(fields[0]);
        m_nuclei.insert(name,
                        {QString::fromLatin1(fields[1]), fields[2].toDouble(), fields[3].toDouble(),
                         fields[4].toDouble(), fields[5].toDouble()});
        m_order.append(name);
    }
}

QString Nuclides::element(const QString &nucleus)
{
    qsizetype digits = 0;
    while (digits < nucleus.size() && nucleus[digits] >= u'0' && nucleus[digits] <= u'9')
        ++digits;
    return nucleus.mid(digits);
}

QStringList Nuclides::isotopes(const QString &wanted) const
{
    QStringList found;
    for (const QString &name : m_order) {
        if (element(name) == wanted)
            found.append(name);
    }
    return found;
}

QStringList Nuclides::quadrupolarIsotopes(const QString &wanted) const
{
    QStringList found = isotopes(wanted);
    found.removeIf([this](const QString &name) { return !m_nuclei.value(name).isQuadrupolar(); });
    return found;
}

QString Nuclides::usualQuadrupolarIsotope(const QString &element) const
{
    const QStringList names = quadrupolarIsotopes(element);
    QString best = names.size() == 1 ? names.constFirst() : QString();
    int wholePercents = 0;
    for (const QString &name : names) {
        if (const double abundance = m_nuclei.value(name).abundance; abundance > wholePercents) {
            best = name;
            wholePercents = int(abundance);
        }
    }
    return best;
}

double Nuclide::observedFrequency(double told) const
{
    constexpr double highest = 1300; // of 1H
    const double own = larmorFrequency(told);
    return own > 0 && told * told / own > highest ? own : told;
}

QStringList Nuclides::namedIn(const QString &text) const
{
    static const QRegularExpression nucleus(QStringLiteral("(?<!\\d)(\\d{1,3})([A-Z][a-z]?)(?![a-zA-Z])"));
    QStringList named;
    for (auto it = nucleus.globalMatch(text); it.hasNext();) {
        const QString name = it.next().captured(0);
        if (contains(name) && !named.contains(name))
            named.append(name);
    }
    return named;
}

bool Nuclides::namesOtherThan(const QString &nucleus, const QString &text) const
{
    const QStringList named = nucleus.isEmpty() ? QStringList() : namedIn(text);
    return !named.isEmpty() && !named.contains(nucleus);
}

QString Nuclides::observedIn(const QString &text) const
{
    static const QString raised = QStringLiteral("⁰¹²³⁴⁵⁶⁷⁸⁹");
    static const QRegularExpression others(
        QStringLiteral("\\{[^}]*\\}|\\^?\\d{1,3}[A-Z][a-z]?[- ]*(?:broadband[- ]*)?(?:decoupl|dec\\b|entkoppel|lock\\b)"
                       "|(?<![A-Za-z0-9.])\\^?\\d{1,3}[A-Z][a-z]?\\s*(?:->|[-‐‑–→>])\\s*"
                       // Correlations that observe the former.
                       "(?=\\^?\\d{1,3}[A-Z](?!.*\\b(?:HSQC|HMQC|HMBC)))")),
        nuclide(QStringLiteral("(?<![A-Za-z0-9.])\\^?(\\d{1,3}[A-Z][a-z]?)(?![A-Za-z0-9])")),
        reversed(QStringLiteral("(?<![A-Za-z0-9])([A-Z][a-z]?)-(\\d{1,3})(?=[- ]*NMR\\b)")),
        letter(QStringLiteral("δ_?([HCNFP])(?![A-Za-z0-9])"));
    QString plain = text;
    for (QChar &c : plain) {
        if (const qsizetype digit = raised.indexOf(c); digit >= 0)
            c = QChar(u'0' + char16_t(digit));
    }
    plain.replace(reversed, QStringLiteral("\\2\\1")).replace(others, QStringLiteral(" "));
    QStringList found;
    for (auto match = nuclide.globalMatch(plain); match.hasNext();) {
        if (const QString name = match.next().captured(1); contains(name) && !found.contains(name))
            found.append(name);
    }
    if (!found.isEmpty())
        return found.size() == 1 ? found.first() : QString();
    // Of an element the isotope that everybody measures.
    static const QHash<QString, QString> usual{{QStringLiteral("H"), QStringLiteral("1H")},
                                               {QStringLiteral("C"), QStringLiteral("13C")},
                                               {QStringLiteral("N"), QStringLiteral("15N")},
                                               {QStringLiteral("F"), QStringLiteral("19F")},
                                               {QStringLiteral("P"), QStringLiteral("31P")}};
    return usual.value(letter.match(plain).captured(1));
}

} // namespace Workbench
