// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QCoreApplication>
#include <QDir>

/// A file of the build that the running program is part of, by its place beside that. Found at run time, so that a test
/// compiles to the same object wherever it is built.
inline QString built(QStringView file)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(file.toString());
}
