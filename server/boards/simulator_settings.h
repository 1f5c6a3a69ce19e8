// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/detector_model.h"
#include "server/boards/device_under_test.h"
#include "server/links/serial_adc.h"
#include "server/synthesiser/dds_clock.h"

#include <QString>

#include <cstdint>

namespace calvorn {

// Faults that a simulated board can show. Those that concern bytes apply to the boards on a serial line; docs/hardware/
// describes the effect of each name on each board.
enum class SimulatorFault {
    None,
    Drop,    // every 997th byte to the host is lost; parallel port: every 997th clock edge of the generator
    Corrupt, // every 997th byte has a bit flipped
    Add,     // a random byte follows every 997th byte
    Refuse,  // every command is refused; parallel port: opening fails
    Silence, // the board sends nothing more after two sweeps
    Half,    // the board stops for ever in the middle of a sweep
    Unplug,  // the port disappears during a sweep, once
    Chatter, // the board sends text without being asked
    Garbage, // 10,000 random bytes precede the first answer
    Stale,   // PIC: later plans are accepted, but the first one remains in use
};

// Returns the fault with this name in the settings file, ignoring case; None for any other name.
SimulatorFault simulatorFaultFromName(const QString &name);

// The highest simulated clock; every frequency below it, as a whole number, fits into 64 bits.
inline constexpr double kHighestSimulatedClockHz = 1e12;

// The settings of the simulated boards, from [Simulator] in the settings file:
//   Device  bandpass, lowpass, notch, crystal, antenna, through; curve = read from the file "Curve"
//   Curve   path of that file: lines of a frequency in Hz, a comma and a voltage ratio
//   Pace    none = as fast as possible; anything else = at the pace of real hardware
//   Seed    whole number that initialises the noise
//   Fault   none, drop, corrupt, add, refuse, silence, half, unplug, chatter, garbage, stale
//   Detector  linear, log, diode
//   Level   dBm at the detector for a device without loss, -100 to 40
//   Chip, Clock, ADC  the board's parts: generator chip, its reference clock in Hz (1 to 1e12), converter (8bit,
//           10bit); the defaults are the chip, the crystal and the converter of the configuration
// protocol/simulator_keys.h contains the defaults; the values below apply if a text cannot be converted.
struct SimulatorSettings
{
    DeviceUnderTest device = DeviceKind::Bandpass;
    bool paced = true;
    int haste = 1; // speed of a paced parallel-port board as a multiple of real time; not in the file
    std::uint64_t seed = 1;
    SimulatorFault fault = SimulatorFault::None;
    DetectorCircuit detector{};
    DdsChip chip = kDefaultDdsChip;
    double clockHz = kDefaultXtalHz;
    SerialAdcType adc = kTlc1549;
};

// path: the settings file; a missing file or key results in the default. Never writes.
SimulatorSettings readSimulatorSettings(const QString &path);

} // namespace calvorn
