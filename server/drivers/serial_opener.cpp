// SPDX-License-Identifier: MIT
#include "server/drivers/serial_opener.h"

#include "platform/serial_ports.h"
#include "protocol/simulator_keys.h"
#include "protocol/sweep_points.h"
#include "server/boards/pic_board.h"
#include "server/boards/pty_board.h"
#include "server/boards/vna_board.h"
#include "server/drivers/pic_frames.h"
#include "server/drivers/vna_protocol.h"
#include "server/links/serial_link.h"

#include <QCoreApplication>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace calvorn {

namespace {

constexpr int kVnaSweepBytes = kSweepPoints * VnaReply::kSampleBytes;

struct SimulatedLine
{
    SimulatedLine(std::unique_ptr<SerialBoard> made, const SimulatorSettings &settings, int sweepBytes,
                  const LineSettings &line, std::function<void()> onUnplugged)
        : board(std::move(made), settings, sweepBytes, std::move(onUnplugged))
        , link(board.devicePath(), line)
    {
    }

    PtyBoard board;
    SerialLink link; // uses the board, so it is destroyed first
};

template <typename Board>
std::unique_ptr<SerialBoard> makeBoard(const SimulatorSettings &settings)
{
    return std::make_unique<Board>(settings);
}

} // namespace

std::shared_ptr<ByteLink> SerialOpener::openPic(int port, const LineSettings &line)
{
    return open(port, line, kPicFrameBytes, makeBoard<PicBoard>);
}

std::shared_ptr<ByteLink> SerialOpener::openVna(int port, const LineSettings &line)
{
    return open(port, line, kVnaSweepBytes, makeBoard<VnaBoard>);
}

std::shared_ptr<ByteLink> SerialOpener::open(int port, const LineSettings &line, int sweepBytes, MakeBoard make)
{
    if (port != kSimulatedComPort) {
        const QString device = serialDeviceOf(port, m_settingsPath);
        if (device.isEmpty())
            throw std::runtime_error(
                QCoreApplication::translate("SerialPort", "There is no serial port COM%1.").arg(port).toStdString());
        return std::make_shared<SerialLink>(device, line);
    }
    SimulatorSettings settings = readSerialSimulatorSettings(m_settingsPath);
    if (settings.fault == SimulatorFault::Unplug && m_unplugged)
        settings.fault = SimulatorFault::None;
    auto made =
        std::make_shared<SimulatedLine>(make(settings), settings, sweepBytes, line, [this] { m_unplugged = true; });
    return {made, &made->link};
}

SimulatorSettings readSerialSimulatorSettings(const QString &settingsPath)
{
    SimulatorSettings settings = readSimulatorSettings(settingsPath);
    if (readText(settingsPath, kSimulatedClock).isEmpty())
        settings.clockHz = std::min(settings.clockHz * std::max(readText(settingsPath, kDdsMultiplier).toInt(), 1),
                                    kHighestSimulatedClockHz);
    return settings;
}

PicSettings readPicSettings(const QString &settingsPath)
{
    PicSettings settings;
    DdsClock &clock = settings.clock;
    clock.chip = ddsChipFromName(readText(settingsPath, kDdsDevice)).value_or(clock.chip);
    bool isNumber = false;
    const double xtal = readText(settingsPath, kDdsXtalFreq).toDouble(&isNumber);
    if (isNumber)
        clock.xtalHz = xtal;
    clock.multiplier = readText(settingsPath, kDdsMultiplier).toInt();
    settings.settlingUs = readTextOrDefault(settingsPath, kPicSettling).toInt();
    return settings;
}

} // namespace calvorn
