// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/simulator_settings.h"
#include "server/drivers/pic_identity.h"
#include "server/links/line_settings.h"

#include <QString>

#include <atomic>
#include <memory>
#include <utility>

namespace calvorn {

class ByteLink;
class SerialBoard;

// Opens the serial line with a given COM number. For COM100, runs a simulated board behind a pseudo-terminal until the
// link is destroyed, with the current values from [Simulator]; the "unplug" fault occurs only once in the lifetime of
// this object. Must outlive the links. Main thread only.
class SerialOpener
{
public:
    explicit SerialOpener(QString settingsPath)
        : m_settingsPath(std::move(settingsPath))
    {
    }

    // Both throw std::runtime_error with a message for the user.
    std::shared_ptr<ByteLink> openPic(int port, const LineSettings &line);
    std::shared_ptr<ByteLink> openVna(int port, const LineSettings &line);

private:
    using MakeBoard = std::unique_ptr<SerialBoard> (*)(const SimulatorSettings &);

    // sweepBytes: the number of bytes that this board sends for one sweep.
    std::shared_ptr<ByteLink> open(int port, const LineSettings &line, int sweepBytes, MakeBoard make);

    QString m_settingsPath;
    std::atomic<bool> m_unplugged = false; // set by the board's thread
};

// Reads [Simulator] for the serial boards. They have only a system clock: if "Clock" is missing, it is the configured
// crystal frequency times the configured multiplier.
SimulatorSettings readSerialSimulatorSettings(const QString &settingsPath);

// Reads the PIC board's configuration: chip, crystal and multiplier from [Config], and the settling time.
PicSettings readPicSettings(const QString &settingsPath);

} // namespace calvorn
