// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSettings>

/// A record that takes its defaults from the application's settings when an operation begins and leaves its values
/// there when the operation ends, however it ends. Copies of the plain record in between do not touch the settings.
template <typename Record>
class SettingsScope : public Record {
public:
    SettingsScope() { this->loadSettings(QSettings()); }
    ~SettingsScope()
    {
        QSettings settings;
        this->saveSettings(settings);
    }
    Q_DISABLE_COPY_MOVE(SettingsScope)
};
