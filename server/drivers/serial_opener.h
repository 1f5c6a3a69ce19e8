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

// Decides which line a COM number means. At COM100 a simulated board runs behind a pseudo-terminal for as long as the
// link lives, as [Simulator] of the settings file describes it at the moment of opening; the fault "unplug" happens
// once in the life of this object. Lives as long as the server, and longer than the links. Main thread only.
class SerialOpener
{
public:
    explicit SerialOpener(QString settingsPath)
        : m_settingsPath(std::move(settingsPath))
    {
    }

    // Both throw std::runtime_error with one sentence for the user.
    std::shared_ptr<ByteLink> openPic(int port, const LineSettings &line);
    std::shared_ptr<ByteLink> openVna(int port, const LineSettings &line);

private:
    using MakeBoard = std::unique_ptr<SerialBoard> (*)(const SimulatorSettings &);

    // sweepBytes: of one sweep of the board on the line.
    std::shared_ptr<ByteLink> open(int port, const LineSettings &line, int sweepBytes, MakeBoard make);

    QString m_settingsPath;
    std::atomic<bool> m_unplugged = false; // set by the board's thread
};

// [Simulator] for the serial boards, which know a system clock only: without a "Clock" of its own the board has the
// crystal times the multiplier that the program believes in.
SimulatorSettings readSerialSimulatorSettings(const QString &settingsPath);

// The PIC board as the program believes in it: chip, crystal and multiplier of [Config], and the settling time.
PicSettings readPicSettings(const QString &settingsPath);

} // namespace calvorn
