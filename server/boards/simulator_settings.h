// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/detector_model.h"
#include "server/boards/device_under_test.h"
#include "server/links/serial_adc.h"
#include "server/synthesiser/dds_clock.h"

#include <QString>

#include <cstdint>

namespace calvorn {

// Faults that a simulated board can exhibit. The faults that affect bytes apply to the serial boards; docs/hardware/
// describes the effect of each fault on each board.
enum class SimulatorFault {
    None,
    Drop,    // every 997th byte to the host is lost; parallel port: every 997th generator clock edge
    Corrupt, // every 997th byte has a bit flipped
    Add,     // a random byte follows every 997th byte
    Refuse,  // every command is refused; parallel port: opening fails
    Silence, // the board stops sending after two sweeps
    Half,    // the board stops sending for good in the middle of a sweep
    Unplug,  // the port disappears during a sweep, but only once
    Chatter, // the board sends unsolicited text
    Garbage, // 10,000 random bytes precede the first reply
    Stale,   // PIC: later plans are accepted, but the first one remains in use
};

// Returns the fault with this name in the settings file, ignoring case; None if the name is unknown.
SimulatorFault simulatorFaultFromName(const QString &name);

// The highest simulated clock frequency; lower frequencies, as whole numbers, fit in 64 bits.
inline constexpr double kHighestSimulatedClockHz = 1e12;

// The settings of the simulated boards, from [Simulator] in the settings file:
//   Device  bandpass, lowpass, notch, crystal, antenna, through; curve = read from the "Curve" file
//   Curve   path of that file; each line contains a frequency in Hz, a comma and a voltage ratio
//   Pace    none = as fast as possible; anything else = at the speed of real hardware
//   Seed    whole number that seeds the noise
//   Fault   none, drop, corrupt, add, refuse, silence, half, unplug, chatter, garbage, stale
//   Detector  linear, log, diode
//   Level   detector level in dBm for a lossless device, -100 to 40
//   Chip, Clock, ADC  the board's parts: generator chip, its reference clock in Hz (1 to 1e12), converter (8bit,
//           10bit); the defaults are the configured chip, crystal and converter
// protocol/simulator_keys.h defines the defaults; the values below apply if a value is invalid.
struct SimulatorSettings
{
    DeviceUnderTest device = DeviceKind::Bandpass;
    bool paced = true;
    int haste = 1; // speed of a paced parallel-port board as a multiple of real time; not a file setting
    std::uint64_t seed = 1;
    SimulatorFault fault = SimulatorFault::None;
    DetectorCircuit detector{};
    DdsChip chip = kDefaultDdsChip;
    double clockHz = kDefaultXtalHz;
    SerialAdcType adc = kTlc1549;
};

// path: the settings file; a missing file or key results in the default. Never writes the file.
SimulatorSettings readSimulatorSettings(const QString &path);

} // namespace calvorn
