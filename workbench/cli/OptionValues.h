// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <utility>

namespace Workbench {

/// Values of command line options. All functions throw UsageError with the option's name, the value given and what was
/// expected.
namespace OptionValues {

double number(const QString &option, const QString &text);
double positive(const QString &option, const QString &text);

/// "FROM:TO", two different numbers in any order.
std::pair<double, double> range(const QString &option, const QString &text);

/// A whole number from `least` to `most`.
int count(const QString &option, const QString &text, int most, int least = 1);

/// One of the offered point counts, the powers of two from 128 to 67108864.
int points(const QString &option, const QString &text);

/// "El=NUC", e.g. "O=17O": element and isotope. Whether there is such an isotope is for the caller to say.
std::pair<QString, QString> isotope(const QString &option, const QString &text);

/// The position of the text in the list of words.
int choice(const QString &option, const QString &text, const QStringList &words);

/// Mass number and element symbol, "13C". Only the form is checked.
QString nucleus(const QString &option, const QString &text);

} // namespace OptionValues

} // namespace Workbench
