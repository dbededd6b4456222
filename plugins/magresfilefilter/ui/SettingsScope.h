// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSettings>

#include <memory>

namespace Magres {

/// The application's settings, one object for all who hold it at a time: finding the settings' files, which each new
/// object does, takes its time.
inline std::shared_ptr<QSettings> sharedSettings()
{
    static std::weak_ptr<QSettings> shared;
    std::shared_ptr<QSettings> settings = shared.lock();
    if (!settings)
        shared = settings = std::make_shared<QSettings>();
    return settings;
}

/// A record that takes its defaults from the application's settings when an operation begins and leaves its values
/// there when the operation ends, however it ends. Copies of the plain record in between do not touch the settings.
template <typename Record>
class SettingsScope : public Record {
public:
    SettingsScope() { this->loadSettings(*m_settings); }
    ~SettingsScope() { this->saveSettings(*m_settings); }
    Q_DISABLE_COPY_MOVE(SettingsScope)
    void assign(const Record &record) { Record::operator=(record); }

private:
    std::shared_ptr<QSettings> m_settings = sharedSettings();
};

} // namespace Magres
