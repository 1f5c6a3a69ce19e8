// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/setting_reader.h"
#include "core/settings_table.h"
#include "platform/profile_file.h"

#include <QStringList>

#include <functional>

namespace calvorn {

// Ended: the program exits during the first run.
enum class LoadOutcome { Loaded, Ended, UnknownDdsDevice, UnknownAdcDevice };

// Reads the settings file into the configuration record in the order of the settings table (core/settings_table.h). A
// missing or empty key gets its default, which is also written to the file unless `defaults` is KeepOut.
//
// An invalid value affects only its own key: the key gets its default, the invalid value stays in the file, and
// faults() names section, key and value.
class SettingsLoader
{
public:
    SettingsLoader(Configuration &configuration, WindowSettings &window,
                   SettingReader::Defaults defaults = SettingReader::Defaults::WriteBack);

    // Called first if the file cannot be used. reason: a clause that completes an error message. All values are then
    // defaults, and nothing is written.
    std::function<void(const QString &reason)> refused;

    // Called once, before the device keys are read, if the file names no DDS device (the very first start). Returns
    // false to exit the program; no further keys are then read.
    std::function<bool()> firstRun;

    // Reads everything except the markers; iniPath must be set. Stops at an unsupported device.
    LoadOutcome load();

    // Reads the marker keys, which are needed only later during start-up: 3 and 4 before 1 and 2.
    void loadMarkers();

    // Returns one error message for each invalid value.
    const QStringList &faults() const { return m_reader.faults(); }

    // The file as read by load().
    const Profile &profile() const { return m_reader.profile(); }
    bool wasRefused() const { return profile().isRefused(); }

    // Returns the entries of saveSettings() whose values in the file are invalid, with their current values.
    QVector<ProfileEntry> unreadableEntries() const;

private:
    LoadOutcome readAll();
    void readRows(const SettingKey &first, const SettingKey &last);
    void read(const SettingRow &row);
    LoadOutcome announceFirstRun();
    void clampFrequencies();

    Configuration &m_configuration;
    WindowSettings &m_window;
    SettingReader::Defaults m_defaults;
    SettingReader m_reader;
};

// Writes the settings that the user can change, replacing the file once. Real numbers use the locale's decimal
// separator; marker texts that are not numbers are written as "0". Returns false if the file cannot be written.
//
// untouched: entries to omit while they still have this value, so that an invalid value stays in the file until the
// user changes the setting.
bool saveSettings(const Configuration &configuration, const WindowSettings &window,
                  const QVector<ProfileEntry> &untouched = {});

} // namespace calvorn
