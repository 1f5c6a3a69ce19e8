// SPDX-License-Identifier: MIT
// Calls arbitrary operations of the parallel-port driver with arbitrary arguments, on a simulated board with or without
// a fault. The driver's signals must be valid, and no more sweeps may complete than were started.
#include "fuzz/driver_calls.h"
#include "server/boards/simulated_parallel_port.h"
#include "server/drivers/lpt_driver.h"

#include <QThread>

using namespace calvorn;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::startApplication();
    FuzzedDataProvider data(bytes, size);
    SimulatorSettings settings;
    settings.paced = false;
    settings.chip = data.PickValueInArray({DdsChip::Ad9850, DdsChip::Ad9851, DdsChip::Ad9951});
    settings.fault = data.PickValueInArray({SimulatorFault::None, SimulatorFault::Drop, SimulatorFault::Silence,
                                            SimulatorFault::Half, SimulatorFault::Unplug});
    BoardWiring wiring;
    if (data.ConsumeBool())
        wiring = {kByteWideLptWiring, DdsLoading::Bytes};
    LptDriver driver([&](int address) -> OpenedPort {
        if (address % 2 != 0)
            throw PortError("There is no such port.");
        return {std::make_unique<SimulatedParallelPort>(settings, wiring), wiring};
    });

    constexpr int kMostSteps = 48;
    constexpr int kMostWaits = 4;
    fuzz::DriverCalls calls(driver);
    int waits = 0;
    for (int step = 0; step < kMostSteps && data.remaining_bytes() > 0; ++step) {
        // A sweep thread needs a few milliseconds for a sweep.
        if (data.ConsumeIntegralInRange<int>(0, 7) == 0 && ++waits < kMostWaits)
            QThread::msleep(10);
        else
            calls.call(data);
        QCoreApplication::processEvents();
    }
    calls.end();
    return 0;
}
