// SPDX-License-Identifier: MIT
#include "server/drivers/serial_opener.h"

#include "platform/profile_file.h"
#include "platform/serial_ports.h"
#include "server/boards/pic_board.h"
#include "server/boards/pty_board.h"
#include "server/drivers/pic_frames.h"
#include "server/links/serial_link.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace calvorn {

namespace {

struct SimulatedLine
{
    SimulatedLine(std::unique_ptr<SerialBoard> made, const SimulatorSettings &settings, int sweepBytes,
                  const LineSettings &line)
        : board(std::move(made), settings, sweepBytes)
        , link(board.devicePath(), line)
    {
    }

    PtyBoard board;
    SerialLink link; // goes first
};

} // namespace

std::shared_ptr<ByteLink> openSerialLine(int port, const QString &lineSettings, const QString &settingsPath,
                                         const SimulatedSerialBoard &board)
{
    const LineSettings line = parseLineSettings(lineSettings);
    if (port != kSimulatedComPort) {
        const QString device = serialDeviceOf(port, settingsPath);
        if (device.isEmpty())
            throw std::runtime_error("There is no serial port COM" + std::to_string(port) + ".");
        return std::make_shared<SerialLink>(device, line);
    }
    static bool unplugged = false;
    SimulatorSettings settings = board.settings;
    if (settings.fault == SimulatorFault::Unplug && std::exchange(unplugged, true))
        settings.fault = SimulatorFault::None;
    auto made = std::make_shared<SimulatedLine>(board.make(settings), settings, board.sweepBytes, line);
    return {made, &made->link};
}

SimulatorSettings readSerialSimulatorSettings(const QString &settingsPath)
{
    SimulatorSettings settings = readSimulatorSettings(settingsPath);
    if (readProfileString(settingsPath, QStringLiteral("Simulator"), QStringLiteral("Clock")).isEmpty()) {
        const QString multiplier =
            readProfileString(settingsPath, QStringLiteral("Config"), QStringLiteral("DDS Multiplier"));
        settings.clockHz *= std::max(multiplier.toInt(), 1);
    }
    return settings;
}

std::shared_ptr<ByteLink> openPicLink(int port, const QString &lineSettings, const QString &settingsPath)
{
    const SimulatorSettings settings = readSerialSimulatorSettings(settingsPath);
    return openSerialLine(port, lineSettings, settingsPath, {settings, kPicFrameBytes, [](const SimulatorSettings &of) {
                                                                 return std::make_unique<PicBoard>(of);
                                                             }});
}

} // namespace calvorn
