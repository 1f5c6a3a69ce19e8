// SPDX-License-Identifier: MIT
// Calls arbitrary operations of the PIC driver with arbitrary arguments, while the line delivers, corrupts, adds and
// loses bytes or is disconnected.
#include "fuzz/serial_calls.h"
#include "server/boards/pic_board.h"
#include "server/drivers/pic_driver.h"

using namespace calvorn;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::startApplication();
    FuzzedDataProvider data(bytes, size);
    SimulatorSettings settings;
    settings.fault = data.PickValueInArray({SimulatorFault::None, SimulatorFault::Refuse, SimulatorFault::Stale});
    const PicSettings configured{{}, data.ConsumeIntegralInRange<int>(-1, 10'001)};
    PicBoard board(settings);
    fuzz::LinkSource source(board);
    PicDriver driver([&](int port, const LineSettings &) { return source.open(port); },
                     [configured] { return configured; });
    fuzz::playSerial(driver, source, data);
    return 0;
}
