// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/serial_adc.h"

#include <cstdint>
#include <functional>

namespace calvorn {

// TLC549 or TLC1549, seen from its three pins, with the pipeline of one frame. Times are the board's own.
class SerialAdcModel
{
public:
    using Time = std::chrono::nanoseconds;
    // The input in volts at this moment; asked once for each conversion, at the instant of hold.
    using Input = std::function<double(Time)>;

    SerialAdcModel(const SerialAdcType &type, double referenceVolts, Input input);

    void drive(bool select, bool clock, Time now);
    bool dataOut() const;

    // Conversions since the converter was made.
    std::uint64_t conversions() const { return m_conversions; }
    // The count that the latest conversion gives, whether it has been read or not.
    int latestCount() const { return m_pending; }
    // Misuse that a real converter would answer with wrong counts: frames that began while a conversion ran, which show
    // the result before, and conversions that such a frame destroyed.
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
