// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/device_under_test.h"
#include "server/links/serial_adc.h"
#include "server/synthesiser/dds_clock.h"

#include <QString>

#include <cstdint>

namespace calvorn {

// Misbehaviour that a simulated board can be told to show.
enum class SimulatorFault { None };

// The simulated boards as [Simulator] of the settings file describes them:
//   Device  bandpass, lowpass, notch, crystal, through; default bandpass
//   Pace    none = as fast as it can; anything else, or nothing = at the pace of real hardware
//   Seed    whole number that the noise starts from; default 1
//   Fault   none
//   Chip, Clock, ADC  what is on the board: generator chip, its reference clock in Hz, converter (8bit, 10bit);
//           defaults are the program's own [Config] keys "DDS Device", "DDS Xtal freq" and "ADC Device"
struct SimulatorSettings
{
    DeviceKind device = DeviceKind::Bandpass;
    bool paced = true;
    std::uint64_t seed = 1;
    SimulatorFault fault = SimulatorFault::None;
    DdsChip chip = DdsChip::Ad9850;
    double clockHz = 80'000'000.0;
    SerialAdcType adc = kTlc1549;
};

// path: the settings file; a missing file or key leaves the default. Never writes.
SimulatorSettings readSimulatorSettings(const QString &path);

} // namespace calvorn
