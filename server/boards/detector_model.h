// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <random>

namespace calvorn {

// Of the converters on all simulated boards, in volts.
inline constexpr double kConverterReferenceVolts = 2.5;

// The count of a converter with this many counts (256, 1024) and this reference; 0..counts - 1.
int convertedCount(double volts, double referenceVolts, int counts);

// What a detector settles at when this part (0..1) of the generator's full signal reaches it: 1 V for a piece of cable
// in place of a device, 5 mV without any signal.
double detectorVolts(double signal);

// A linear diode detector with its smoothing capacitor: the voltage follows the level with a time constant of
// 20 us and carries a little noise (1.2 mV, half a count of a 10-bit converter at 2.5 V).
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
