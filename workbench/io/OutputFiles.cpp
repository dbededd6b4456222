// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/OutputFiles.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <stdexcept>

namespace {

[[noreturn]] void fail(const QString &fileName, const QString &reason)
{
    throw std::runtime_error(QCoreApplication::translate("OutputFiles", "File %1 cannot be written: %2")
                                 .arg(fileName, reason)
                                 .toStdString());
}

} // namespace

OutputFiles::OutputFiles() = default;
OutputFiles::~OutputFiles() = default;

QIODevice &OutputFiles::open(const QString &fileName)
{
    if (QFileInfo(fileName).isDir())
        fail(fileName, QCoreApplication::translate("OutputFiles", "it is a directory"));
    auto file = std::make_unique<QSaveFile>(fileName);
    if (!file->open(QIODevice::WriteOnly))
        fail(fileName, file->errorString());
    m_files.push_back(std::move(file));
    return *m_files.back();
}

void OutputFiles::commit()
{
    // Everything that can fail for want of space has to have failed before the first file appears.
    for (const auto &file : m_files) {
        if (!file->flush() || file->error() != QFileDevice::NoError)
            fail(file->fileName(), file->errorString());
    }
    for (const auto &file : m_files) {
        if (!file->commit())
            fail(file->fileName(), file->errorString());
    }
    m_files.clear();
}
