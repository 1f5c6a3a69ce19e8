// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <random>

namespace calvorn {

// The converter reference on all simulated boards, in volts.
inline constexpr double kConverterReferenceVolts = 2.5;

// Returns the count, 0..counts - 1, from a converter with this number of counts (256 or 1024) and this reference.
int convertedCount(double volts, double referenceVolts, int counts);

// The detectors available on a simulated board.
enum class DetectorKind {
    Linear, // 1 V for a lossless device, 5 mV without a signal
    Log,    // an AD8307: 25 mV per dB above -84 dBm, and -90 dBm of noise at its input
    Diode,  // a biased diode, square-law below 20 mV and linear above, followed by an amplifier with a gain of 2.4
};

// Returns the detector with this name in the settings file, ignoring case; Linear if the name is unknown.
DetectorKind detectorFromName(const QString &name);

struct DetectorCircuit
{
    DetectorKind kind = DetectorKind::Linear;
    double level = 10.0; // input level in dBm for a lossless device; a linear detector outputs 1 V regardless

    // Returns the settled voltage for this fraction (0..1) of the generator's full signal.
    double volts(double signal) const;
};

// A detector with its smoothing capacitor: the voltage follows the level with a time constant of 20 us and includes
// some noise (1.2 mV, half a count of a 10-bit converter at 2.5 V).
class DetectorModel
{
public:
    using Time = std::chrono::nanoseconds;

    explicit DetectorModel(std::uint64_t seed);

    // From this time on, the capacitor voltage approaches this level (volts).
    void setLevel(double volts, Time now);

    // Returns the voltage, including one sample of noise.
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
