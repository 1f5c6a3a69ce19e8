// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/setting_reader.h"
#include "core/settings_table.h"
#include "platform/profile_file.h"

#include <QStringList>

#include <functional>

namespace calvorn {

// Ended: the first run has ended the program.
enum class LoadOutcome { Loaded, Ended, UnknownDdsDevice, UnknownAdcDevice };

// Reads the settings file into the record, key by key in the order of the table (core/settings_table.h); a key that is
// missing or empty gets its default, which is written into the file unless the reader keeps it out.
//
// A text that does not convert is a run-time error of that key alone: the key gets its default, the bad text stays
// in the file, and faults() names section, key and text.
class SettingsLoader
{
public:
    SettingsLoader(Configuration &configuration, WindowSettings &window,
                   SettingReader::Defaults defaults = SettingReader::Defaults::WriteBack);

    // Called first when the file cannot be used, with the reason as a part of a sentence; all values are defaults then,
    // and nothing is written.
    std::function<void(const QString &reason)> refused;

    // Called once, before the device keys are read, when the file holds no DDS device (the very first start).
    // False: the program ends, and nothing more is read.
    std::function<bool()> firstRun;

    // Everything but the markers; iniPath must be set. Stops at a device that is not supported.
    LoadOutcome load();

    // The marker keys, read later in start-up: 3 and 4 before 1 and 2.
    void loadMarkers();

    // One sentence for each text that did not convert.
    const QStringList &faults() const { return m_reader.faults(); }

    // The file as it was read.
    const Profile &profile() const { return m_reader.profile(); }
    bool wasRefused() const { return profile().isRefused(); }

    // Of what saveSettings() writes: the entries whose text in the file could not be read, as they stand in the record.
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

// Writes what the user can have changed, with one replacement of the file; reals carry the locale's decimal
// separator. Marker texts that are not numbers are written as "0". False when the file could not be written.
//
// untouched: entries that are left out as long as they have this very value. What could not be read stays in the file
// until the user has changed it.
bool saveSettings(const Configuration &configuration, const WindowSettings &window,
                  const QVector<ProfileEntry> &untouched = {});

} // namespace calvorn
