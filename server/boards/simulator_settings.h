// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/detector_model.h"
#include "server/boards/device_under_test.h"
#include "server/links/serial_adc.h"
#include "server/synthesiser/dds_clock.h"

#include <QString>

#include <cstdint>

namespace calvorn {

// Misbehaviour that a simulated board can be told to show. What is said of bytes holds for the boards on a serial
// line; docs/hardware/ says what each board makes of each name.
enum class SimulatorFault {
    None,
    Drop,    // every 997th byte to the host is lost; parallel port: every 997th clock edge of the generator
    Corrupt, // every 997th byte has a bit flipped
    Add,     // after every 997th byte comes one that nobody sent
    Refuse,  // every command is refused; parallel port: it cannot be opened
    Silence, // after two sweeps the board says nothing any more
    Half,    // in the middle of a sweep the board stops for ever
    Unplug,  // the port goes away in mid-sweep, once
    Chatter, // the board talks without being asked
    Garbage, // 10,000 random bytes come before the first answer
    Stale,   // PIC: the first plan is kept, later ones are accepted only
};

// By the name in the settings file, in any case; anything else is None.
SimulatorFault simulatorFaultFromName(const QString &name);

// No simulated clock is faster, so that every frequency below it is a whole number of 64 bits.
inline constexpr double kHighestSimulatedClockHz = 1e12;

// The simulated boards as [Simulator] of the settings file describes them:
//   Device  bandpass, lowpass, notch, crystal, antenna, through; curve = as a file says
//   Curve   this file: lines of a frequency in Hz, a comma and a voltage ratio
//   Pace    none = as fast as it can; anything else = at the pace of real hardware
//   Seed    whole number that the noise starts from
//   Fault   none, drop, corrupt, add, refuse, silence, half, unplug, chatter, garbage, stale
//   Detector  linear, log, diode
//   Level   dBm at the detector when nothing is lost on the way, -100 to 40
//   Chip, Clock, ADC  what is on the board: generator chip, its reference clock in Hz (1 to 1e12), converter (8bit,
//           10bit); without them the chip, the crystal and the converter of the configuration
// protocol/simulator_keys.h has the defaults; a text that cannot be read leaves the values below.
struct SimulatorSettings
{
    DeviceUnderTest device = DeviceKind::Bandpass;
    bool paced = true;
    int haste = 1; // how many times faster a paced parallel-port board is than the real one; not in the file
    std::uint64_t seed = 1;
    SimulatorFault fault = SimulatorFault::None;
    DetectorCircuit detector{};
    DdsChip chip = kDefaultDdsChip;
    double clockHz = kDefaultXtalHz;
    SerialAdcType adc = kTlc1549;
};

// path: the settings file; a missing file or key leaves the default. Never writes.
SimulatorSettings readSimulatorSettings(const QString &path);

} // namespace calvorn
