// SPDX-License-Identifier: MIT
// Writes arbitrary values to the registers of the simulated parallel port; the simulated chips must stay within the
// limits of real chips. Each step uses two bytes: operation and value.
#include "fuzz/require.h"
#include "server/boards/simulated_parallel_port.h"

using namespace calvorn;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const unsigned make = data[0];
    constexpr DdsChip kChips[] = {DdsChip::Ad9850, DdsChip::Ad9851, DdsChip::Ad9951, DdsChip::Ad9951};
    SimulatorSettings settings;
    settings.paced = false;
    settings.chip = kChips[make & 3U];
    settings.adc = (make & 4U) != 0 ? kTlc549 : kTlc1549;
    settings.fault = (make & 8U) != 0 ? SimulatorFault::Drop : SimulatorFault::None;
    BoardWiring wiring;
    if ((make & 16U) != 0)
        wiring = {kByteWideLptWiring, DdsLoading::Bytes};
    SimulatedParallelPort port(settings, wiring);

    constexpr double kHighestMultiplier = 20.0;
    for (std::size_t at = 1; at + 1 < size; at += 2) {
        const std::uint8_t value = data[at + 1];
        switch (data[at] & 3U) {
        case 0:
            port.writeData(value);
            break;
        case 1:
            port.writeControl(value);
            break;
        case 2:
            require((port.readStatus() & 7U) == 0);
            break;
        default:
            port.wait(std::chrono::microseconds(value));
            break;
        }
        const DdsOutput &output = port.dds().output();
        require(output.hertz >= 0.0 && output.hertz <= settings.clockHz * kHighestMultiplier / 2.0);
        require(output.amplitude >= 0.0 && output.amplitude <= 1.0);
        require(port.adc().latestCount() >= 0 && port.adc().latestCount() < settings.adc.counts());
        // The potentiometer stores each byte at the eighth of nine clock pulses.
        require(port.pot().bytes().size() == static_cast<std::size_t>(port.pot().pulses() + 1) / 9);
    }
    return 0;
}
