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
/// The name of the file.
inline QString writtenFile(const QTemporaryDir &folder, const QString &name, const QByteArray &bytes)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(file.fileName()));
    return file.fileName();
}

inline void failOnWarningsOfQt()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^Q((?!Xcb)\\w+::|Layout|Paint)")));
}
