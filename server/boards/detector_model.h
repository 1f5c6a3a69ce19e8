// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <random>

namespace calvorn {

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
