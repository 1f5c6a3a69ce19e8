// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <random>

namespace calvorn {

// Of the converters on all simulated boards, in volts.
inline constexpr double kConverterReferenceVolts = 2.5;

// The count of a converter with this many counts (256, 1024) and this reference; 0..counts - 1.
int convertedCount(double volts, double referenceVolts, int counts);

// The detectors that a simulated board can carry.
enum class DetectorKind {
    Linear, // 1 V when nothing is lost on the way, 5 mV without any signal
    Log,    // an AD8307: 25 mV for each dB above -84 dBm, and noise of -90 dBm at its input
    Diode,  // a biased diode, square below 20 mV and linear above, with an amplifier of 2.4 behind it
};

// By the name in the settings file, in any case; anything else is linear.
DetectorKind detectorFromName(const QString &name);

struct DetectorCircuit
{
    DetectorKind kind = DetectorKind::Linear;
    double level = 10.0; // dBm at the input when nothing is lost on the way; a linear one gives 1 V whatever it is

    // What it settles at, in volts, when this part (0..1) of the generator's full signal reaches it.
    double volts(double signal) const;
};

// A detector with its smoothing capacitor: the voltage follows the level with a time constant of 20 us and carries a
// little noise (1.2 mV, half a count of a 10-bit converter at 2.5 V).
class DetectorModel
{
public:
    using Time = std::chrono::nanoseconds;

    explicit DetectorModel(std::uint64_t seed);

    // From now on the capacitor moves towards this level (volts).
    void setLevel(double volts, Time now);

    // The voltage with one sample of noise.
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
