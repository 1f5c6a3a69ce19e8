// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <vector>

#include <gpsim/gpsim_time.h>
#include <gpsim/trigger.h>

namespace bench {

// Assembles bytes from the bits on RC6.
class Receiver : public TriggerObject
{
public:
    struct Byte
    {
        std::uint64_t began = 0; // the cycle of the start bit's falling edge
        std::uint8_t value = 0;
        bool isFramed = true; // the stop bit was high
    };

    void setBit(double cycles) { bit_ = cycles; }
    void set(bool level);
    void forget(); // discards the byte being received
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
    std::uint64_t due_ = 0;   // callback() in any other cycle belongs to a discarded byte
    std::vector<Edge> edges_; // since the start bit
    std::vector<Byte> bytes_;
};

// Drives RC7 with bytes, damaged bytes and levels of any length, and waits in between.
class Sender : public TriggerObject
{
public:
    struct Item
    {
        enum class Kind { Level, UntilCycle, UntilBytes, Overrun };
        Kind kind = Kind::Level;
        bool level = true;
        double cycles = 0;        // duration of a level
        std::uint64_t target = 0; // a cycle or a number of received bytes
    };

    void setBit(double cycles) { bit_ = cycles; }
    void sendByte(std::uint8_t byte, bool isFramed = true);
    void sendLevel(bool level, double cycles);
    void waitForCycle(std::uint64_t cycle);
    void waitForBytes(std::uint64_t count);
    void sendOverrun(); // simulates a byte lost because two bytes are pending
    bool isIdle() const { return items_.empty() && !isArmed_; }

    // Updates the number of bytes that the receiver has received.
    void countReceived(std::uint64_t count);
    void callback() override;

    std::function<void(bool)> drive; // sets the level of the line
    std::function<void()> overrun;

private:
    void push(const Item &item);
    void next();
    void arm();

    double bit_ = 1;
    double time_ = 0; // end of the current level, in cycles
    bool isArmed_ = false;
    std::uint64_t received_ = 0;
    std::deque<Item> items_;
};

} // namespace bench
