// SPDX-License-Identifier: MIT
#pragma once

#include "app/unattended_desktop.h"
#include "core/error_boundary.h"
#include "core/settings.h"
#include "display/plot/markers.h"
#include "instrument/instrument.h"
#include "instrument/signal_generator.h"
#include "platform/desktop.h"

#include <QString>

namespace calvorn {

// Where things stand: the same folder, unless the programs are where a user cannot write.
struct ProgramFolders
{
    QString programs; // holds the acquisition server and the manual
    QString settings; // holds the settings file; one instance runs in it

    QString settingsFile() const;
};

// All that the main window works on and that is no widget. It outlives the window, whose widgets refer to it to their
// last moment.
struct SweepStation
{
    SweepStation(const ProgramFolders &programFolders, Configuration &record, Desktop &person, Clock &time);

    ProgramFolders folders;
    Configuration &configuration;
    UnattendedDesktop unattended; // shows boxes to the user, unless a client is in control
    Desktop &desktop;
    Clock &clock;
    WindowSettings window;
    Messages messages;
    Log log;
    ErrorBoundary boundary;
    SettingsLoader loader;
    Instrument instrument;
    SignalGenerator generator;
    Markers markers;
};

} // namespace calvorn
