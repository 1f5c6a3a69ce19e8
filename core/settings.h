// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/setting_reader.h"
#include "core/settings_table.h"
#include "platform/profile_file.h"

#include <QStringList>

#include <functional>

namespace calvorn {

// Ended: the program ends during the first run.
enum class LoadOutcome { Loaded, Ended, UnknownDdsDevice, UnknownAdcDevice };

// Reads the settings file into the configuration record in the order of the settings table (core/settings_table.h). A
// missing or empty key gets its default, which is also written to the file unless `defaults` is KeepOut.
//
// A text that does not convert affects only its own key: the key gets its default, the bad text stays in the file,
// and faults() names section, key and text.
class SettingsLoader
{
public:
    SettingsLoader(Configuration &configuration, WindowSettings &window,
                   SettingReader::Defaults defaults = SettingReader::Defaults::WriteBack);

    // Called first if the file cannot be used, with the reason as a clause. All values are then defaults and nothing
    // is written.
    std::function<void(const QString &reason)> refused;

    // Called once, before the device keys are read, if the file names no DDS device (the very first start). Returns
    // false to end the program; nothing more is then read.
    std::function<bool()> firstRun;

    // Reads everything except the markers; iniPath must be set. Stops at an unsupported device.
    LoadOutcome load();

    // Reads the marker keys, later during start-up: 3 and 4 before 1 and 2.
    void loadMarkers();

    // One sentence for each text that did not convert.
    const QStringList &faults() const { return m_reader.faults(); }

    // The file as read by load().
    const Profile &profile() const { return m_reader.profile(); }
    bool wasRefused() const { return profile().isRefused(); }

    // Returns the entries of saveSettings() whose text in the file could not be read, with their current values.
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

// Writes the settings that the user can change, in one replacement of the file. Real numbers use the locale's decimal
// separator; marker texts that are not numbers are written as "0". Returns false if the file cannot be written.
//
// untouched: entries to leave out as long as they still have this value. An unreadable text thus stays in the file
// until the user changes the setting.
bool saveSettings(const Configuration &configuration, const WindowSettings &window,
                  const QVector<ProfileEntry> &untouched = {});

} // namespace calvorn
