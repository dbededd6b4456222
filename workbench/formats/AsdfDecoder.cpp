// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/AsdfDecoder.h"

#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <cmath>
#include <utility>

namespace Workbench {

using ReaderText::excerpt;

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isSign(char c)
{
    return c == '+' || c == '-';
}

char at(std::string_view text, size_t i)
{
    return i < text.size() ? text[i] : '\0';
}

/// Sign and first digit for which a letter stands in the squeezed and the difference form; empty for another character.
std::string leadOf(char c, char zero, char firstPositive, char firstNegative)
{
    if (c == zero)
        return "0";
    if (c >= firstPositive && c < firstPositive + 9)
        return {char('1' + (c - firstPositive))};
    if (c >= firstNegative && c < firstNegative + 9)
        return {'-', char('1' + (c - firstNegative))};
    return {};
}

std::string squeezedLead(char c)
{
    return leadOf(c, '@', 'A', 'a');
}

std::string differenceLead(char c)
{
    return leadOf(c, '%', 'J', 'j');
}

std::string duplicateLead(char c)
{
    if (c >= 'S' && c <= 'Z')
        return {char('1' + (c - 'S'))};
    return c == 's' ? "9" : std::string();
}

/// Length of digits with at most one point among them.
size_t digitsLength(std::string_view text, bool &hasPoint)
{
    size_t n = 0;
    for (; n < text.size(); ++n) {
        if (text[n] == '.' && !hasPoint)
            hasPoint = true;
        else if (!isDigit(text[n]))
            break;
    }
    return n;
}

/// Length of the exponent at the start of the text, 0 when there is none. E and e are squeezed digits as well: with a
/// sign and a digit behind it the letter is an exponent; without the sign only if that is allowed.
size_t exponentLength(std::string_view text, bool needsSign)
{
    if (at(text, 0) != 'E' && at(text, 0) != 'e')
        return 0;
    size_t n = 1;
    if (isSign(at(text, n)))
        ++n;
    else if (needsSign)
        return 0;
    const size_t start = n;
    while (isDigit(at(text, n)))
        ++n;
    return n > start ? n : 0;
}

/// A unit in the last written place of a plain number.
double lastPlace(std::string_view text)
{
    const size_t mantissa = std::min(text.find_first_of("Ee"), text.size());
    const size_t point = std::min(text.substr(0, mantissa).find('.'), mantissa);
    const int decimals = point < mantissa ? int(std::min<size_t>(mantissa - point - 1, 300)) : 0;
    const double exponent = mantissa < text.size() ? NumberText::parse<int>(text.substr(mantissa + 1)).value_or(0) : 0;
    return std::pow(10.0, exponent - decimals);
}

} // namespace

AsdfDecoder::AsdfDecoder(const QString &source, const XyAbscissa &abscissa) : m_source(source), m_abscissa(abscissa)
{
}

void AsdfDecoder::fail(const QString &what) const
{
    ReaderText::fail(m_source, m_line, what);
}

double AsdfDecoder::takeNumber(std::string_view &rest, bool exponentNeedsSign) const
{
    size_t n = isSign(at(rest, 0)) ? 1 : 0;
    bool hasPoint = false;
    n += digitsLength(rest.substr(n), hasPoint);
    // Ordinates with a point are plain numbers, not squeezed ones, so their E is an exponent.
    n += exponentLength(rest.substr(n), exponentNeedsSign || !hasPoint);
    const auto number = NumberText::parse<double>(rest.substr(0, n));
    if (!number)
        fail(Texts::tr("expected a number, found %1").arg(excerpt(rest)));
    rest.remove_prefix(n);
    return *number;
}

double AsdfDecoder::takeDigits(std::string_view &rest, std::string lead) const
{
    bool hasPoint = false;
    const size_t n = digitsLength(rest.substr(1), hasPoint);
    lead += rest.substr(1, n);
    const auto number = NumberText::parse<double>(lead);
    if (!number)
        fail(Texts::tr("expected a number, found %1").arg(excerpt(rest)));
    rest.remove_prefix(1 + n);
    return *number;
}

void AsdfDecoder::addLine(std::string_view line, int number)
{
    m_line = number;
    std::string_view rest = line;
    const double x = takeNumber(rest, true);
    checkAbscissa(line.substr(0, line.size() - rest.size()), x);
    m_previous = Form::None;
    m_duplicated = false;
    for (;;) {
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t,;"), rest.size()));
        if (rest.empty())
            break;
        const char c = rest.front();
        if (isDigit(c) || isSign(c) || c == '.')
            addToken(Form::Value, takeNumber(rest, false));
        else if (const std::string squeezed = squeezedLead(c); !squeezed.empty())
            addToken(Form::Value, takeDigits(rest, squeezed));
        else if (const std::string difference = differenceLead(c); !difference.empty())
            addToken(Form::Difference, takeDigits(rest, difference));
        else if (const std::string count = duplicateLead(c); !count.empty())
            addToken(Form::Duplicate, takeDigits(rest, count));
        else if (c == '?')
            fail(Texts::tr("a point has no ordinate (\"?\"), a number was expected"));
        else
            fail(Texts::tr("expected an ordinate, found %1").arg(excerpt(rest)));
    }
    if (m_previous == Form::None)
        fail(Texts::tr("no ordinate follows the X value"));
    m_checkDue = m_previous == Form::Difference;
}

void AsdfDecoder::addToken(Form form, double number)
{
    switch (form) {
    case Form::Difference:
        if (m_previous == Form::None)
            fail(Texts::tr("the line begins with a difference, an ordinate was expected"));
        m_difference = number;
        append(m_last + m_difference);
        break;
    case Form::Duplicate:
        if (m_previous == Form::None || m_duplicated)
            fail(Texts::tr("a repeat count stands where an ordinate was expected"));
        repeat(number);
        break;
    default:
        addValue(number);
        break;
    }
    m_duplicated = form == Form::Duplicate;
    if (!m_duplicated)
        m_previous = form;
}

void AsdfDecoder::addValue(double value)
{
    if (!std::exchange(m_checkDue, false)) {
        append(value);
    } else if (value != m_last) {
        fail(Texts::tr("the Y-check fails: the line begins with %1 where the line before ended with %2")
                 .arg(value, 0, 'g', 15)
                 .arg(m_last, 0, 'g', 15));
    }
}

void AsdfDecoder::append(double value)
{
    if (m_ordinates.size() >= size_t(m_abscissa.points))
        fail(Texts::tr("there are more points than the %1 that were announced").arg(m_abscissa.points));
    m_ordinates.push_back(value);
    m_last = value;
}

void AsdfDecoder::repeat(double count)
{
    const double room = m_abscissa.points - double(m_ordinates.size());
    if (count != std::floor(count) || count - 1.0 > room) {
        fail(Texts::tr("an ordinate is repeated %1 times where %2 points are left of the %3 announced")
                 .arg(count, 0, 'g', 15)
                 .arg(room)
                 .arg(m_abscissa.points));
    }
    // The count includes the ordinate that is already there.
    for (int i = 1; i < int(count); ++i)
        append(m_previous == Form::Difference ? m_last + m_difference : m_last);
}

void AsdfDecoder::checkAbscissa(std::string_view text, double x)
{
    // Files differ in whether a repeated ordinate is counted in the X value, and round that value and its factor.
    const double due = m_abscissa.first + (double(m_ordinates.size()) - (m_checkDue ? 1.0 : 0.0)) * m_abscissa.step;
    const double found = x * m_abscissa.factor;
    const double tolerance = 1.5 * std::abs(m_abscissa.step) + lastPlace(text) * std::abs(m_abscissa.factor)
        + 1e-5 * std::max(std::abs(due), std::abs(found));
    if (!(std::abs(found - due) <= tolerance) && !m_disagreement)
        m_disagreement = Disagreement{m_line, found, due};
}

std::vector<double> AsdfDecoder::finish(int number)
{
    m_line = number;
    if (m_ordinates.size() != size_t(m_abscissa.points)) {
        fail(Texts::tr("the data end after %1 points where %2 were announced")
                 .arg(m_ordinates.size())
                 .arg(m_abscissa.points));
    }
    return std::move(m_ordinates);
}

} // namespace Workbench
