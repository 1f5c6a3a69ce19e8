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
    , desktop(person)
    , clock(time)
    , messages(record, person)
    , log(record)
    , boundary(messages, log)
    , loader(record, window)
    , instrument(record, log, time, folders.programs + u'/' + QLatin1String(kServerName), folders.settingsFile())
{
    configuration.iniPath = folders.settingsFile();
}

} // namespace calvorn
