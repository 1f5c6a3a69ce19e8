// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <vector>

#include <gpsim/gpsim_time.h>
#include <gpsim/trigger.h>

namespace bench {

// Hears the bits of RC6 and makes bytes of them.
class Receiver : public TriggerObject
{
public:
    struct Byte
    {
        std::uint64_t began = 0; // the cycle at which the start bit falls
        std::uint8_t value = 0;
        bool isFramed = true; // the stop bit was high
    };

    void setBit(double cycles) { bit_ = cycles; }
    void set(bool level);
    void forget(); // the byte that is coming in
    void callback() override;

    std::function<void()> received; // called after each byte

    const std::vector<Byte> &bytes() const { return bytes_; }

private:
    struct Edge
    {
        std::uint64_t cycle;
        bool level;
    };

    bool levelAt(double cycle) const;

    double bit_ = 1;
    bool level_ = true;
    bool isBusy_ = false;
    std::uint64_t began_ = 0;
    std::uint64_t due_ = 0;   // a call at another cycle is of a byte that was given up
    std::vector<Edge> edges_; // since the start bit
    std::vector<Byte> bytes_;
};

// Drives RC7: bytes, damaged bytes, levels of any length, and waits between them.
class Sender : public TriggerObject
{
public:
    struct Item
    {
        enum class Kind { Level, UntilCycle, UntilBytes, Overrun };
        Kind kind = Kind::Level;
        bool level = true;
        double cycles = 0;        // of a level
        std::uint64_t target = 0; // cycle, or bytes received
    };

    void setBit(double cycles) { bit_ = cycles; }
    void sendByte(std::uint8_t byte, bool isFramed = true);
    void sendLevel(bool level, double cycles);
    void waitForCycle(std::uint64_t cycle);
    void waitForBytes(std::uint64_t count);
    void sendOverrun(); // a byte that the chip loses because two are waiting
    bool isIdle() const { return items_.empty() && !isArmed_; }

    // The receiver has taken so many bytes.
    void countReceived(std::uint64_t count);
    void callback() override;

    std::function<void(bool)> drive; // the level of the line
    std::function<void()> overrun;

private:
    void push(const Item &item);
    void next();
    void arm();

    double bit_ = 1;
    double time_ = 0; // when the level that is driven ends
    bool isArmed_ = false;
    std::uint64_t received_ = 0;
    std::deque<Item> items_;
};

} // namespace bench
