// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/PrivateSettings.h"

#include "cli/CliErrors.h"
#include "data/Error.h"

#include <QDir>
#include <QSettings>

#include <csignal>
#include <filesystem>
#include <thread>

namespace Workbench {

namespace {

/// Waits for an interruption in a thread of its own, where the directory can be removed by ordinary means, and then
/// lets the signal do what it does.
void removeWhenInterrupted(const std::filesystem::path &directory)
{
    sigset_t signals;
    sigemptyset(&signals);
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([signals, directory] {
        int signal = 0;
        sigwait(&signals, &signal);
        std::error_code ignored;
        std::filesystem::remove_all(directory, ignored);
        pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
        std::raise(signal);
    }).detach();
}

} // namespace

PrivateSettings::PrivateSettings(const QString &within)
    : m_directory((within.isEmpty() ? QDir::tempPath() : within) + QStringLiteral("/magres-workbench-XXXXXX"))
{
    if (!m_directory.isValid()) {
        throw CommandError(Texts::tr("a temporary directory cannot be made in %1: %2")
                               .arg(within.isEmpty() ? QDir::tempPath() : within, m_directory.errorString()));
    }
    removeWhenInterrupted(m_directory.path().toStdString());
    // Qt would make a directory of its own for this, complain, and leave it behind.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_directory.path()));
    // Below a file there can be no other, so nothing is ever written: plug-ins write settings often, and each time Qt
    // would flush them to the disk. Settings objects share what they hold in memory for as long as one of them lives.
    QFile noDirectory(m_directory.filePath(QStringLiteral("settings")));
    if (!noDirectory.open(QIODevice::WriteOnly))
        throw CommandError(
            Texts::tr("%1 cannot be written: %2").arg(noDirectory.fileName(), noDirectory.errorString()));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    for (QSettings::Scope scope : {QSettings::UserScope, QSettings::SystemScope})
        QSettings::setPath(QSettings::IniFormat, scope, noDirectory.fileName());
    m_settings = std::make_unique<QSettings>();
}

} // namespace Workbench
