// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/FileFilterRegistry.h"

#include "data/Error.h"
#include "data/PluginCall.h"

#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace Workbench {

namespace {

/// A filter can only say no; why a file cannot be read at all is for the host to say.
void checkReadable(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        fail(FileFilterRegistry::tr("File %1 does not exist").arg(fileName));
    if (info.isDir())
        fail(FileFilterRegistry::tr("%1 is a directory, a file was expected").arg(fileName));
    // Opening a pipe would wait for somebody to write to it.
    if (!info.isFile())
        fail(FileFilterRegistry::tr("%1 is a device or a pipe, a file was expected").arg(fileName));
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        fail(FileFilterRegistry::tr("File %1 cannot be opened: %2").arg(fileName, file.errorString()));
    if (file.size() == 0)
        fail(FileFilterRegistry::tr("File %1 is empty").arg(fileName));
}

} // namespace

void FileFilterRegistry::addPluginFilter(QObject *filter)
{
    if (filter && !m_filters.contains(filter))
        m_filters.append(filter);
}

void FileFilterRegistry::removePluginFilter(const QObject *filter)
{
    m_filters.removeIf([filter](const QPointer<QObject> &f) { return f.isNull() || f == filter; });
}

QList<QObject *> FileFilterRegistry::filters() const
{
    QList<QObject *> alive;
    for (const QPointer<QObject> &filter : m_filters) {
        if (filter)
            alive.append(filter);
    }
    return alive;
}

QStringList FileFilterRegistry::nameFilters() const
{
    QStringList names;
    for (QObject *filter : filters()) {
        const QString name = callPlugin<QString>(filter, "fileFilter_name()");
        const QString extensions = callPlugin<QString>(filter, "fileFilter_extensions()");
        if (!extensions.isEmpty())
            names.append(QStringLiteral("%1 (%2)").arg(name, extensions));
    }
    return names;
}

QObject *FileFilterRegistry::matching(const QString &fileName) const
{
    checkReadable(fileName);
    for (QObject *filter : filters()) {
        if (callPlugin<bool>(filter, "fileFilter_canRead()")
            && callPlugin<bool>(filter, "fileFilter_matching(QString)", fileName))
            return filter;
    }
    return nullptr;
}

QList<QGraphicsWidget *> FileFilterRegistry::read(QObject *filter, const QString &fileName, const QRectF &rect)
{
    return callPlugin<QList<QGraphicsWidget *>>(filter, "fileFilter_read(QString,QRectF)", fileName, rect);
}

} // namespace Workbench

#include "moc_FileFilterRegistry.cpp"
