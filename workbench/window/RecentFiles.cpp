// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/RecentFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace Workbench {

namespace {

constexpr int mostFiles = 10;
const QString settingsKey = QStringLiteral("recentFiles");

} // namespace

RecentFiles::RecentFiles(QWidget *parent) : QMenu(tr("Open &Recent"), parent)
{
    connect(this, &QMenu::aboutToShow, this, &RecentFiles::fill);
    fill();
}

QStringList RecentFiles::files()
{
    QStringList files = QSettings().value(settingsKey).toStringList();
    files.removeIf([](const QString &file) { return !QFileInfo::exists(file); });
    return files.mid(0, mostFiles);
}

void RecentFiles::add(const QString &fileName)
{
    const QString path = QFileInfo(fileName).absoluteFilePath();
    QStringList list = files();
    list.removeAll(path);
    list.prepend(path);
    QSettings().setValue(settingsKey, list.mid(0, mostFiles));
}

void RecentFiles::fill()
{
    clear();
    const QStringList list = files();
    for (qsizetype i = 0; i < list.size(); ++i) {
        // An ampersand of the name is no shortcut; the number is one.
        const QString name = QDir::toNativeSeparators(list[i]).replace(u'&', QLatin1String("&&"));
        addAction(i < 9 ? QStringLiteral("&%1  %2").arg(i + 1).arg(name) : name, this,
                  [this, file = list[i]] { Q_EMIT chosen(file); });
    }
    addSeparator();
    // A menu bar passes over menus that are empty.
    addAction(tr("&Clear List"), this, [] { QSettings().remove(settingsKey); })->setEnabled(!list.isEmpty());
}

} // namespace Workbench

#include "moc_RecentFiles.cpp"
