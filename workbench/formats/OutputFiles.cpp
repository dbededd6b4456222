// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/OutputFiles.h"

#include "data/Error.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <stdexcept>

namespace Workbench {

namespace {

[[noreturn]] void failToWrite(const QString &fileName, const QString &reason)
{
    fail(Texts::tr("File %1 cannot be written: %2").arg(fileName, reason));
}

} // namespace

OutputFiles::OutputFiles() = default;
OutputFiles::~OutputFiles() = default;

QIODevice &OutputFiles::open(const QString &fileName)
{
    if (QFileInfo(fileName).isDir())
        failToWrite(fileName, Texts::tr("it is a directory"));
    // A device or a pipe would be replaced by a file.
    if (QFileInfo(fileName).exists() && !QFileInfo(fileName).isFile())
        failToWrite(fileName, Texts::tr("it is a device or a pipe"));
    auto file = std::make_unique<QSaveFile>(fileName);
    if (!file->open(QIODevice::WriteOnly))
        failToWrite(fileName, file->errorString());
    m_files.push_back(std::move(file));
    return *m_files.back();
}

void OutputFiles::commit()
{
    // Everything that can fail for want of space has to have failed before the first file appears.
    for (const auto &file : m_files) {
        if (!file->flush() || file->error() != QFileDevice::NoError)
            failToWrite(file->fileName(), file->errorString());
    }
    for (const auto &file : m_files) {
        if (!file->commit())
            failToWrite(file->fileName(), file->errorString());
    }
    m_files.clear();
}

} // namespace Workbench
