// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "Built.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

/// Runs the workbench's program on files of a directory of its own.
class Program {
public:
    int status = 0;
    QByteArray errors;

    QString path(const QByteArray &name) const { return m_directory.filePath(QString::fromUtf8(name)); }

    /// The name of the file.
    QString write(const QByteArray &name, const QByteArray &text) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("a file of the test cannot be written");
        return file.fileName();
    }

    QByteArray read(const QByteArray &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The output of a line of arguments, run in the directory; an @ stands for that.
    QByteArray run(const QByteArray &line, const QStringList &more = {}, const QByteArray &input = {})
    {
        QProcess process;
        process.setWorkingDirectory(m_directory.path());
        const QString all = QString::fromUtf8(line).replace(u'@', m_directory.path() + u'/');
        process.start(built(u"magres-workbench"), all.split(u' ', Qt::SkipEmptyParts) + more);
        process.write(input);
        process.closeWriteChannel();
        status = process.waitForFinished(120000) && !process.exitStatus() ? process.exitCode() : -1;
        errors = process.readAllStandardError();
        return process.readAllStandardOutput();
    }

private:
    QTemporaryDir m_directory;
};
