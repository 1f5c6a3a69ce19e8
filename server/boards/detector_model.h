// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <random>

namespace calvorn {

// Reference of the converters on all simulated boards, in volts.
inline constexpr double kConverterReferenceVolts = 2.5;

// Returns the count of a converter with this many counts (256, 1024) and this reference; 0..counts - 1.
int convertedCount(double volts, double referenceVolts, int counts);

// The detectors available on a simulated board.
enum class DetectorKind {
    Linear, // 1 V for a device without loss, 5 mV without any signal
    Log,    // an AD8307: 25 mV per dB above -84 dBm, and noise of -90 dBm at its input
    Diode,  // a biased diode, square-law below 20 mV and linear above, followed by an amplifier with a gain of 2.4
};

// Returns the detector with this name in the settings file, ignoring case; Linear for any other name.
DetectorKind detectorFromName(const QString &name);

struct DetectorCircuit
{
    DetectorKind kind = DetectorKind::Linear;
    double level = 10.0; // dBm at the input for a device without loss; a linear detector gives 1 V regardless

    // Returns the settled voltage for this fraction (0..1) of the generator's full signal.
    double volts(double signal) const;
};

// A detector with its smoothing capacitor: the voltage follows the level with a time constant of 20 us and has a little
// noise (1.2 mV, half a count of a 10-bit converter at 2.5 V).
class DetectorModel
{
public:
    using Time = std::chrono::nanoseconds;

    explicit DetectorModel(std::uint64_t seed);

    // From this time on, the capacitor moves towards this level (volts).
    void setLevel(double volts, Time now);

    // Returns the voltage with one sample of noise.
    double read(Time now);

private:
    double settled(Time now) const;
    double noise();

    std::mt19937_64 m_random;
    double m_start = 0.0;
    double m_target = 0.0;
    Time m_since{};
};

} // namespace calvorn
