// SPDX-License-Identifier: MIT
// Calls arbitrary operations of the MiniVNA driver with arbitrary arguments, while the line delivers, corrupts, adds
// and loses bytes or is disconnected.
#include "fuzz/serial_calls.h"
#include "server/boards/vna_board.h"
#include "server/drivers/vna_driver.h"

using namespace calvorn;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::startApplication();
    FuzzedDataProvider data(bytes, size);
    SimulatorSettings settings;
    settings.clockHz = 400e6;
    settings.fault = data.PickValueInArray({SimulatorFault::None, SimulatorFault::Refuse});
    VnaBoard board(settings);
    fuzz::LinkSource source(board);
    VnaDriver driver([&](int port, const LineSettings &) { return source.open(port); });
    driver.SetXtalFrequency(20e6);
    driver.SetMultiplier(20);
    fuzz::playSerial(driver, source, data);
    return 0;
}
