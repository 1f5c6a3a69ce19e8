// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/simulator_settings.h"

#include <QString>

#include <functional>
#include <memory>

namespace calvorn {

class ByteLink;
class SerialBoard;

// What answers at COM100.
struct SimulatedSerialBoard
{
    SimulatorSettings settings;
    int sweepBytes; // of one sweep on the line
    std::function<std::unique_ptr<SerialBoard>(const SimulatorSettings &)> make;
};

// Opens COM<port> with these line settings; at COM100 the board runs behind a pseudo-terminal for as long as the link
// lives. The fault "unplug" happens once in the life of the server. Throws std::runtime_error with one sentence for
// the user. Main thread only.
std::shared_ptr<ByteLink> openSerialLine(int port, const QString &lineSettings, const QString &settingsPath,
                                         const SimulatedSerialBoard &board);

// [Simulator] for the serial boards, which know a system clock only: without a "Clock" of its own the board has the
// crystal times the multiplier that the program believes in.
SimulatorSettings readSerialSimulatorSettings(const QString &settingsPath);

// The line to the PIC board. Without a "Clock" of its own in [Simulator] the simulated generator has the system clock
// that the program believes in.
std::shared_ptr<ByteLink> openPicLink(int port, const QString &lineSettings, const QString &settingsPath);

} // namespace calvorn
