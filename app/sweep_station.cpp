// SPDX-License-Identifier: MIT
#include "app/sweep_station.h"

namespace calvorn {

SweepStation::SweepStation(const ProgramFolders &programFolders, Configuration &record, Desktop &userDesktop,
                           Clock &time)
    : folders(programFolders)
    , configuration(record)
    , unattended(userDesktop)
    , desktop(unattended)
    , clock(time)
    , messages(record, desktop)
    , log(record)
    , boundary(messages, log)
    , loader(record, window)
    , instrument(record, log, time, folders.serverFile(), folders.settingsFile())
    , generator(record, instrument)
{
    configuration.iniPath = folders.settingsFile();
}

} // namespace calvorn
