// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTemporaryDir>

/// Gives this process settings of its own, empty and in a temporary directory, so that a command neither depends on the
/// user's saved settings nor changes them. To be made once and before any other thread: the directory is removed at the
/// end, and also when the process is interrupted (SIGINT, SIGTERM, SIGHUP).
class PrivateSettings {
public:
    /// Inside of this directory; of one in memory where there is such a thing, else of that for temporary files.
    explicit PrivateSettings(const QString &within = {});
    QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
};
