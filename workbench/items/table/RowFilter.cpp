// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/table/RowFilter.h"

#include "data/Error.h"
#include "data/NaturalOrder.h"

#include <cmath>
#include <limits>

namespace Workbench {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The key in the row maps of the quantity that a user calls so; empty for none.
QString keyOf(const QString &name)
{
    static const QHash<QString, QString> keys{{QStringLiteral("iso"), QStringLiteral("iso")},
                                              {QStringLiteral("aniso"), QStringLiteral("aniso")},
                                              {QStringLiteral("eta"), QStringLiteral("assym")},
                                              {QStringLiteral("\u03b7"), QStringLiteral("assym")},
                                              {QStringLiteral("eq"), QStringLiteral("eq")},
                                              {QStringLiteral("etaq"), QStringLiteral("qassym")},
                                              {QStringLiteral("\u03b7(q)"), QStringLiteral("qassym")},
                                              {QStringLiteral("cq"), QStringLiteral("Cq")}};
    return keys.value(name.toLower());
}

double number(const QString &text, const QString &word)
{
    bool isNumber = false;
    const double value = QString(text).replace(QChar(0x2212), u'-').toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        fail(Texts::tr("\"%1\": \"%2\" is no number").arg(word, text));
    return value;
}

} // namespace

RowFilter RowFilter::parse(const QString &text)
{
    RowFilter filter;
    for (const QString &condition : text.simplified().split(u' ', Qt::SkipEmptyParts)) {
        QList<Alternative> alternatives;
        for (const QString &word : condition.split(u',', Qt::SkipEmptyParts))
            alternatives.append(parseAlternative(word));
        if (!alternatives.isEmpty())
            filter.m_conditions.append(alternatives);
    }
    return filter;
}

RowFilter::Alternative RowFilter::parseAlternative(const QString &word)
{
    Alternative made;
    static const QRegularExpression comparison(QStringLiteral("^([^<>=]*)(<=|>=|<|>|=)(.*)$"));
    const QRegularExpressionMatch match = comparison.match(word);
    if (match.hasMatch()) {
        made.key = keyOf(match.captured(1));
        if (made.key.isEmpty())
            fail(Texts::tr("\"%1\": the numbers are iso, aniso, eta, eq, etaq and cq").arg(word));
        const QString sign = match.captured(2), value = match.captured(3);
        const qsizetype dots = value.indexOf(QLatin1String(".."));
        if (sign == u"=" && dots >= 0) {
            made.lower = number(value.left(dots), word);
            made.upper = number(value.mid(dots + 2), word);
            if (made.lower > made.upper)
                std::swap(made.lower, made.upper);
        } else {
            const double bound = number(value, word);
            made.lower = sign.startsWith(u'<') ? -infinity : bound;
            made.upper = sign.startsWith(u'>') ? infinity : bound;
            made.includesLower = sign != u">";
            made.includesUpper = sign != u"<";
        }
        return made;
    }
    const qsizetype dots = word.indexOf(QLatin1String(".."));
    made.from = dots < 0 ? word : word.left(dots);
    made.to = dots < 0 ? QString() : word.mid(dots + 2);
    if (made.from.isEmpty() || (dots >= 0 && made.to.isEmpty()))
        fail(Texts::tr("\"%1\": a range of labels has two ends, as in C2..C10").arg(word));
    if (word.contains(u'*'))
        made.pattern = QRegularExpression(QRegularExpression::wildcardToRegularExpression(word),
                                          QRegularExpression::CaseInsensitiveOption);
    return made;
}

bool RowFilter::holds(const Alternative &wanted, const QVariantMap &row)
{
    if (!wanted.key.isEmpty()) {
        bool isNumber = false;
        const double value = row.value(wanted.key).toDouble(&isNumber);
        return isNumber && (wanted.includesLower ? value >= wanted.lower : value > wanted.lower)
            && (wanted.includesUpper ? value <= wanted.upper : value < wanted.upper);
    }
    const bool one = wanted.to.isEmpty();
    const bool isPattern = !wanted.pattern.pattern().isEmpty();
    if (one && !isPattern
        && row.value(QStringLiteral("type")).toString().compare(wanted.from, Qt::CaseInsensitive) == 0)
        return true;
    static const QCollator order = [] {
        QCollator made = naturalOrder();
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    const QStringList labels = row.value(QStringLiteral("labels")).toStringList();
    return std::any_of(labels.begin(), labels.end(), [&](const QString &label) {
        if (isPattern)
            return wanted.pattern.match(label).hasMatch();
        if (one)
            return label.compare(wanted.from, Qt::CaseInsensitive) == 0;
        return order.compare(wanted.from, label) <= 0 && order.compare(label, wanted.to) <= 0;
    });
}

bool RowFilter::accepts(const QVariantMap &row) const
{
    return std::all_of(m_conditions.begin(), m_conditions.end(), [&](const QList<Alternative> &alternatives) {
        return std::any_of(alternatives.begin(), alternatives.end(),
                           [&](const Alternative &wanted) { return holds(wanted, row); });
    });
}

} // namespace Workbench
