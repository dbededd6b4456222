// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSettings>

/// A record that takes its defaults from the application's settings when an operation begins and leaves its values
/// there when the operation ends, however it ends. Copies of the plain record in between do not touch the settings.
template <typename Record>
class SettingsScope : public Record {
public:
    SettingsScope() { this->loadSettings(m_settings); }
    ~SettingsScope() { this->saveSettings(m_settings); }
    Q_DISABLE_COPY_MOVE(SettingsScope)
    void assign(const Record &record) { Record::operator=(record); }

private:
    QSettings m_settings; // one for both: finding the settings' files takes its time
};
