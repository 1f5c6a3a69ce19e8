// SPDX-License-Identifier: MIT
#include "app/sweep_station.h"

#include "protocol/server_start.h"
#include "protocol/setting_key.h"

namespace calvorn {

QString ProgramFolders::settingsFile() const
{
    return settings + u'/' + QString::fromLatin1(kSettingsFileName);
}

SweepStation::SweepStation(const ProgramFolders &programFolders, Configuration &record, Desktop &person, Clock &time)
    : folders(programFolders)
    , configuration(record)
    , unattended(person)
    , desktop(unattended)
    , clock(time)
    , messages(record, desktop)
    , log(record)
    , boundary(messages, log)
    , loader(record, window)
    , instrument(record, log, time, folders.programs + u'/' + QLatin1String(kServerName), folders.settingsFile())
    , generator(record, instrument)
{
    configuration.iniPath = folders.settingsFile();
}

} // namespace calvorn
