// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OptionValues.h"

#include "cli/CliErrors.h"
#include "data/NumberText.h"
#include "data/Error.h"

#include <QRegularExpression>
#include <QStringList>

namespace Workbench {

namespace OptionValues {

namespace {

constexpr int fewestPoints = 1 << 7;
constexpr int mostPoints = 1 << 26;

[[noreturn]] void fail(const QString &option, const QString &text, const QString &expected)
{
    throw UsageError(Texts::tr("option %1: \"%2\" is not %3").arg(option, text, expected));
}

template <typename Number>
std::optional<Number> parsed(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    return NumberText::parse<Number>({bytes.constData(), size_t(bytes.size())});
}

QString offeredPoints()
{
    QStringList list;
    for (int n = fewestPoints; n <= mostPoints; n *= 2)
        list.append(QString::number(n));
    return list.join(QLatin1String(", "));
}

} // namespace

double number(const QString &option, const QString &text)
{
    const auto value = parsed<double>(text);
    if (!value)
        fail(option, text, Texts::tr("a number"));
    return *value;
}

double positive(const QString &option, const QString &text)
{
    const double value = number(option, text);
    if (!(value > 0))
        fail(option, text, Texts::tr("a number above 0"));
    return value;
}

std::pair<double, double> range(const QString &option, const QString &text)
{
    const QStringList bounds = text.split(u':');
    const auto expected = Texts::tr("a range FROM:TO of two different numbers in ppm, such as 200:-20");
    if (bounds.size() != 2)
        fail(option, text, expected);
    const auto from = parsed<double>(bounds[0]);
    const auto to = parsed<double>(bounds[1]);
    if (!from || !to || *from == *to)
        fail(option, text, expected);
    return {*from, *to};
}

int count(const QString &option, const QString &text, int most, int least)
{
    const auto value = parsed<int>(text);
    if (!value || *value < least || *value > most)
        fail(option, text, Texts::tr("a whole number from %1 to %2").arg(least).arg(most));
    return *value;
}

int points(const QString &option, const QString &text)
{
    const auto value = parsed<int>(text);
    if (!value || *value < fewestPoints || *value > mostPoints || (*value & (*value - 1)) != 0)
        fail(option, text, Texts::tr("one of the point counts %1").arg(offeredPoints()));
    return *value;
}

std::pair<QString, QString> isotope(const QString &option, const QString &text)
{
    const qsizetype equals = text.indexOf(u'=');
    if (equals < 1)
        fail(option, text, Texts::tr("of the form El=NUC, such as O=17O"));
    return {text.left(equals), nucleus(option, text.mid(equals + 1))};
}

int choice(const QString &option, const QString &text, const QStringList &words)
{
    const qsizetype index = words.indexOf(text);
    if (index < 0)
        fail(option, text, Texts::tr("one of: %1").arg(words.join(QLatin1String(", "))));
    return int(index);
}

QString nucleus(const QString &option, const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(QStringLiteral("[1-9][0-9]*[A-Z][a-z]?")));
    if (!form.match(text).hasMatch())
        fail(option, text, Texts::tr("a nucleus such as 13C"));
    return text;
}

} // namespace OptionValues

} // namespace Workbench
