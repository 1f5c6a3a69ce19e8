// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/serial_adc.h"

#include <cstdint>
#include <functional>

namespace calvorn {

// A TLC549 or TLC1549 as seen from its three pins, with the pipeline of one frame. All times are board times.
class SerialAdcModel
{
public:
    using Time = std::chrono::nanoseconds;
    // Returns the input in volts at this time; called once for each conversion, at the instant of hold.
    using Input = std::function<double(Time)>;

    SerialAdcModel(const SerialAdcType &type, double referenceVolts, Input input);

    void drive(bool select, bool clock, Time now);
    bool dataOut() const;

    // Number of conversions since the model was made.
    std::uint64_t conversions() const { return m_conversions; }
    // The count of the latest conversion, even if it has not been read.
    int latestCount() const { return m_pending; }
    // Errors that make a real converter return wrong counts: frames that began during a conversion and therefore return
    // the previous result, and conversions that such a frame aborted.
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
