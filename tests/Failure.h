// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtTest>

#include <exception>

/// The message with which the call fails; empty when it does not.
template <typename Call>
QByteArray failure(const Call &call)
{
    try {
        call();
    } catch (const std::exception &error) {
        return error.what();
    }
    return {};
}

/// The running test fails with what Qt warns of: painters that are not restored, texts without their arguments, things
/// that are added twice, connections to nothing.
inline void failOnWarningsOfQt()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^Q((?!Xcb)\\w+::|Layout|Paint)")));
}
