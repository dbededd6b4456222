// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>

#include <stdexcept>

namespace Workbench {

/// Texts of code that is no QObject: Texts::tr("…").
class Texts {
    Q_DECLARE_TR_FUNCTIONS(Texts)
};

/// A text for the user as std::runtime_error, UTF-8.
[[noreturn]] inline void fail(const QString &text)
{
    throw std::runtime_error(text.toStdString());
}

/// "source: what"
[[noreturn]] inline void fail(const QString &source, const QString &what)
{
    fail(QStringLiteral("%1: %2").arg(source, what));
}

/// "source, line N: what"
[[noreturn]] inline void fail(const QString &source, int line, const QString &what)
{
    fail(Texts::tr("%1, line %2: %3").arg(source, QString::number(line), what));
}

} // namespace Workbench
