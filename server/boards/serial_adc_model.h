// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/serial_adc.h"

#include <cstdint>
#include <functional>

namespace calvorn {

// A TLC549 or TLC1549 as observed at its three pins, including its one-frame delay. All times are board times.
class SerialAdcModel
{
public:
    using Time = std::chrono::nanoseconds;
    // Returns the input in volts at this time; called once per conversion, when the input is held.
    using Input = std::function<double(Time)>;

    SerialAdcModel(const SerialAdcType &type, double referenceVolts, Input input);

    void drive(bool select, bool clock, Time now);
    bool dataOut() const;

    // Number of conversions since the model was created.
    std::uint64_t conversions() const { return m_conversions; }
    // The result of the latest conversion, even if it has not been read.
    int latestCount() const { return m_pending; }
    // The number of errors that make a real converter return wrong counts: frames that began during a conversion and
    // therefore return the previous result, and conversions aborted by such a frame.
    std::uint64_t earlyFrames() const { return m_earlyFrames; }
    std::uint64_t aborted() const { return m_aborted; }

private:
    void beginFrame(Time now);
    void fallingClock(Time now);

    SerialAdcType m_type;
    double m_referenceVolts;
    Input m_input;
    bool m_select = true; // level of the active-low pin
    bool m_clock = false;
    int m_edges = 0;
    int m_result = 0;
    int m_pending = 0;
    bool m_converting = false;
    Time m_hold{};
    std::uint64_t m_conversions = 0;
    std::uint64_t m_earlyFrames = 0;
    std::uint64_t m_aborted = 0;
};

} // namespace calvorn
