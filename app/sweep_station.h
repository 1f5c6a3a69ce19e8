// SPDX-License-Identifier: MIT
#pragma once

#include "app/unattended_desktop.h"
#include "core/error_boundary.h"
#include "core/program_folders.h"
#include "core/settings.h"
#include "display/plot/markers.h"
#include "instrument/instrument.h"
#include "instrument/signal_generator.h"
#include "platform/desktop.h"

namespace calvorn {

// Everything that the main window works on, except widgets. Must outlive the window, whose widgets refer to it until
// they are destroyed.
struct SweepStation
{
    SweepStation(const ProgramFolders &programFolders, Configuration &record, Desktop &userDesktop, Clock &time);

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
