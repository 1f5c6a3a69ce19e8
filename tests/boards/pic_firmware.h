// SPDX-License-Identifier: MIT
#pragma once

// The firmware of pic_board_by_the_page: its commands, its state and its measurements.

#include "tests/boards/terminal_board.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace boards::pic {

constexpr int kPoints = 400;
constexpr std::size_t kFrameSize = 505, kFirstSample = 3, kFrameMiddle = 252, kCrcAt = 503;
constexpr std::size_t kLongestLine = 12;
constexpr std::int64_t kSettling = 50, kLeastSettling = 20, kMostSettling = 10'000; // microseconds
constexpr std::int64_t kPointWork = 60; // microseconds per point in addition to the settling time
constexpr unsigned kCrcStart = 0xFFFF;

inline unsigned crc16(const std::uint8_t *data, std::size_t size, unsigned crc = kCrcStart)
{
    for (std::size_t i = 0; i < size; ++i) {
        crc ^= static_cast<unsigned>(data[i]) << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x8000u) ? (crc << 1) ^ 0x1021u : crc << 1;
    }
    return crc & 0xFFFFu;
}

// The active faults. They survive a power cycle of the board.
struct Faults
{
    std::int64_t refuseAny = 0;
    std::map<char, std::int64_t> refuseLetter;
    std::int64_t keep = 0, mute = 0, wrong = 0, noAbort = 0; // 0 or 1
    std::int64_t late = 0, chatter = 0, gap = 0;             // milliseconds
    std::int64_t drop = 0, firstNumber = -1;
    std::string strayOpen;
    // Keeps the old plan, or only its start or step, but claims to have accepted the new one. 0 or 1.
    std::int64_t stale = 0, staleStart = 0, staleStep = 0;
    std::int64_t oldFrames = 0; // frames of the previous plan that precede each sweep, as if left in a buffer
    std::int64_t oldCrc = 0;    // 1: the firmware's CRC does not include the plan
    // Damages or loses the n-th byte from the host; 0: none. A terminal cannot transmit framing errors.
    std::int64_t spoil = 0, lose = 0;
    std::int64_t noQuery = 0, endless = 0;
    std::int64_t toldClock = 0; // the clock in the answer to a query; 0: the true clock
    std::string toldName = "PAGE-PIC", toldChip = "AD9850";
    std::string told; // replaces the complete answer to a query, unless empty
};

struct Plan
{
    std::int64_t start = 0, step = 0;
    bool operator==(const Plan &) const = default;
    std::int64_t at(int point) const { return start + point * step; }

    // Returns the start value for the CRC of this plan's frames.
    unsigned crc() const
    {
        std::array<std::uint8_t, 8> bytes{};
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const auto value = static_cast<std::uint32_t>(i < 4 ? start : step);
            bytes[i] = static_cast<std::uint8_t>(value >> (24 - i % 4 * 8) & 0xFF);
        }
        return crc16(bytes.data(), bytes.size());
    }
};

// The state that the board loses when powered off.
struct Memory
{
    std::optional<std::int64_t> generator;
    Plan wanted;
    std::optional<Plan> plan;   // the plan of the last accepted P
    std::optional<Plan> former; // the previous, different plan
    bool prepared = false, sweeping = false;
    std::int64_t settling = kSettling;
    std::string line;
    bool spoilt = false;  // the current line contains a damaged byte
    bool talking = false; // sending an endless answer
};

// The firmware: receives the host's bytes and returns the answers.
class Board
{
public:
    Board(std::int64_t clock, Faults &faults)
        : clock_(clock)
        , faults_(faults)
    {
    }

    Memory memory;
    unsigned sweepId = 0; // changes with each accepted G

    // Processes one byte and returns the answer, which may be empty.
    std::string receive(char byte)
    {
        if (isDue(faults_.lose))
            return "";
        if (isDue(faults_.spoil)) {
            spoil();
            return "";
        }
        if (byte == '!') {
            memory.line.clear();
            memory.spoilt = memory.sweeping = memory.talking = false;
            return faults_.noAbort != 0 ? "" : "!+\r";
        }
        if (memory.sweeping || byte == '\n')
            return "";
        if (memory.spoilt) {
            memory.spoilt = byte != '\r';
            return "";
        }
        if (byte != '\r' && memory.line.size() <= kLongestLine) // one extra character marks the line as too long
            memory.line += byte;
        if (byte != '\r' || memory.line.empty())
            return "";
        const std::string line = std::exchange(memory.line, "");
        const bool good = command(line);
        if (faults_.wrong != 0)
            return "??\r";
        return good && line == "?" ? identity() : std::string{line[0], good ? '+' : '-', '\r'};
    }

    // Simulates a damaged byte or a break.
    void spoil()
    {
        if (memory.sweeping)
            return;
        memory.spoilt = true;
        memory.line.clear();
    }

private:
    static bool isDue(std::int64_t &count) { return count > 0 && --count == 0; }
    bool below(std::int64_t hertz) const { return hertz >= 0 && hertz < clock_; }

    bool mustRefuse(char letter)
    {
        std::int64_t &ofLetter = faults_.refuseLetter[letter];
        const bool refused = faults_.refuseAny > 0 || ofLetter > 0;
        faults_.refuseAny -= faults_.refuseAny > 0 ? 1 : 0;
        ofLetter -= ofLetter > 0 ? 1 : 0;
        return refused;
    }

    // Returns the number after the letter, or nothing if the rest of the line is not a number.
    static std::optional<std::int64_t> number(const std::string &line, bool mayBeNegative)
    {
        const bool negative = mayBeNegative && line.size() > 1 && line[1] == '-';
        const std::string digits = line.substr(negative ? 2 : 1);
        if (digits.find_first_not_of("0123456789") != std::string::npos)
            return std::nullopt;
        const auto value = parseInt(digits, 0, INT64_MAX); // a line is too short for a larger number
        return value && negative ? -*value : value;
    }

    // Executes one line. Returns false if the line is rejected.
    bool command(const std::string &line)
    {
        const char letter = line[0];
        const bool good = !mustRefuse(letter) && line.size() <= kLongestLine && carryOut(letter, line);
        if (letter == '*')
            memory.prepared = false;
        if (letter == 'B' || letter == 'D' || letter == 'P') // with "keep", a rejected command restores the last plan
            memory.prepared = good ? letter == 'P' : faults_.keep != 0 && memory.plan.has_value();
        return good;
    }

    bool carryOut(char letter, const std::string &line)
    {
        if (letter == 'A' || letter == 'B' || letter == 'D')
            return takeFrequency(letter, number(line, letter == 'D'));
        if (letter == 'S') {
            const auto settling = number(line, false);
            if (!settling || *settling < kLeastSettling || *settling > kMostSettling)
                return false;
            memory.settling = *settling;
            return true;
        }
        if (line == "P") { // the points are equidistant, so checking the first and the last is sufficient
            if (!below(memory.wanted.at(0)) || !below(memory.wanted.at(kPoints - 1)))
                return false;
            if (memory.plan != memory.wanted)
                leavePlan();
            memory.plan = memory.wanted;
            return true;
        }
        if (line == "G" && memory.prepared) {
            memory.sweeping = true;
            ++sweepId;
            return true;
        }
        if (line == "*")
            switchOff();
        return line == "*" || (line == "?" && faults_.noQuery == 0);
    }

    bool takeFrequency(char letter, std::optional<std::int64_t> hertz)
    {
        if (!hertz || !below(*hertz < 0 ? -*hertz : *hertz))
            return false;
        if (letter == 'A')
            memory.generator = hertz;
        else if (letter == 'B')
            setStart(*hertz);
        else
            setStep(*hertz);
        return true;
    }

    // Once a plan has been prepared, a stale board retains its start and step.
    void setStart(std::int64_t hertz)
    {
        if (!memory.plan || (faults_.stale == 0 && faults_.staleStart == 0))
            memory.wanted.start = hertz;
    }
    void setStep(std::int64_t hertz)
    {
        if (!memory.plan || (faults_.stale == 0 && faults_.staleStep == 0))
            memory.wanted.step = hertz;
    }

    void leavePlan()
    {
        if (memory.plan)
            memory.former = std::exchange(memory.plan, std::nullopt);
    }

    void switchOff()
    {
        memory.generator.reset();
        setStart(0);
        setStep(0);
        if (faults_.stale == 0 && faults_.staleStart == 0 && faults_.staleStep == 0)
            leavePlan();
    }

    std::string identity()
    {
        if (!faults_.told.empty())
            return faults_.told;
        memory.talking = faults_.endless != 0;
        if (memory.talking)
            return "?+";
        return "?+" + faults_.toldName + " 2.0 " + faults_.toldChip + ' ' +
               std::to_string(faults_.toldClock != 0 ? faults_.toldClock : clock_) + ' ' +
               std::to_string(memory.settling) + '\r';
    }

    const std::int64_t clock_;
    Faults &faults_;
};

using Frame = std::array<std::uint8_t, kFrameSize>;

inline Frame buildFrame(const Plan &plan, unsigned number, bool remnant, bool oldCrc)
{
    Frame frame{0xA5, 0x5A, static_cast<std::uint8_t>(number)};
    std::size_t at = kFirstSample;
    std::uint32_t bits = 0;
    unsigned waiting = 0;
    for (int point = 0; point < kPoints; ++point) {
        const std::uint32_t count = countOf(static_cast<std::uint64_t>(plan.at(point)));
        bits = bits << 10 | (remnant ? 1023 - count : count);
        for (waiting += 10; waiting >= 8; waiting -= 8)
            frame[at++] = static_cast<std::uint8_t>(bits >> (waiting - 8) & 0xFF);
    }
    const unsigned crc = crc16(&frame[2], kCrcAt - 2, oldCrc ? kCrcStart : plan.crc());
    frame[kCrcAt] = static_cast<std::uint8_t>(crc >> 8);
    frame[kCrcAt + 1] = static_cast<std::uint8_t>(crc & 0xFF);
    return frame;
}

} // namespace boards::pic
