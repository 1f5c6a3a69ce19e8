// SPDX-License-Identifier: MIT
#include "server/drivers/vna_link.h"

#include "server/boards/vna_board.h"
#include "server/drivers/serial_opener.h"
#include "server/links/byte_link.h"

namespace calvorn {

namespace {

constexpr int kSweepBytes = 1'600;

} // namespace

std::shared_ptr<ByteLink> openVnaLink(int port, const QString &lineSettings, const QString &settingsPath)
{
    return openSerialLine(port, lineSettings, settingsPath,
                          {readSerialSimulatorSettings(settingsPath), kSweepBytes,
                           [](const SimulatorSettings &settings) { return std::make_unique<VnaBoard>(settings); }});
}

} // namespace calvorn
