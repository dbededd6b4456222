// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>
#include <QTemporaryDir>

#include <memory>

namespace Workbench {

/// Gives this process settings of its own, empty and in memory alone, so that a command neither depends on the user's
/// saved settings nor changes them. To be made once and before any other thread: its directory is removed at the end,
/// and also when the process is interrupted (SIGINT, SIGTERM, SIGHUP).
class PrivateSettings {
public:
    /// The directory lies inside of this one, by default that for temporary files.
    explicit PrivateSettings(const QString &within = {});
    QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
    std::unique_ptr<QSettings> m_settings;
};

} // namespace Workbench
