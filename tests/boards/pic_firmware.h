// SPDX-License-Identifier: MIT
#pragma once

// The firmware behind the terminal of pic_board_by_the_page: what it understands, remembers and measures.

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
constexpr std::int64_t kPointWork = 60;                                             // and this besides, at each point
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

// What the control has switched on. It outlives the power of the board.
struct Faults
{
    std::int64_t refuseAny = 0;
    std::map<char, std::int64_t> refuseLetter;
    std::int64_t keep = 0, mute = 0, wrong = 0, noAbort = 0; // 0 or 1
    std::int64_t late = 0, chatter = 0, gap = 0;             // milliseconds
    std::int64_t drop = 0, firstNumber = -1;
    std::string strayOpen;
    // Keeps the plan that it had, or its start or step, and says that it took the new one. 0 or 1.
    std::int64_t stale = 0, staleStart = 0, staleStep = 0;
    std::int64_t oldFrames = 0; // of the former plan, at the begin of each sweep: they stayed in a buffer on the way
    std::int64_t oldCrc = 0;    // 1: a firmware whose CRC begins without the plan
    // How many bytes of the host until one is damaged (a terminal carries no framing errors), or lost and not missed.
    std::int64_t spoil = 0, lose = 0;
    std::int64_t noQuery = 0, endless = 0;
    std::int64_t toldClock = 0; // in the answer to a query; 0: the one that it has
    std::string toldName = "PAGE-PIC", toldChip = "AD9850";
    std::string told; // the whole answer to a query, if there is one
};

struct Plan
{
    std::int64_t start = 0, step = 0;
    bool operator==(const Plan &) const = default;
    std::int64_t at(int point) const { return start + point * step; }

    // With which the CRC of its frames begins.
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

// What a board forgets without power.
struct Memory
{
    std::optional<std::int64_t> generator;
    Plan wanted;
    std::optional<Plan> plan;   // of the last accepted P
    std::optional<Plan> former; // the last one that was another
    bool prepared = false, sweeping = false;
    std::int64_t settling = kSettling;
    std::string line;
    bool spoilt = false;  // the line has lost a byte
    bool talking = false; // in an answer without an end
};

// The firmware: it takes the host's bytes and answers them.
class Board
{
public:
    Board(std::int64_t clock, Faults &faults)
        : clock_(clock)
        , faults_(faults)
    {
    }

    Memory memory;
    unsigned sweepId = 0; // another one after each accepted G

    // Takes one byte and gives the answer, which is empty when there is none.
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
        if (byte != '\r' && memory.line.size() <= kLongestLine) // one character more marks the line as too long
            memory.line += byte;
        if (byte != '\r' || memory.line.empty())
            return "";
        const std::string line = std::exchange(memory.line, "");
        const bool good = command(line);
        if (faults_.wrong != 0)
            return "??\r";
        return good && line == "?" ? identity() : std::string{line[0], good ? '+' : '-', '\r'};
    }

    // A damaged byte, or a break.
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

    // The number behind the letter, which must be all that follows.
    static std::optional<std::int64_t> number(const std::string &line, bool mayBeNegative)
    {
        const bool negative = mayBeNegative && line.size() > 1 && line[1] == '-';
        const std::string digits = line.substr(negative ? 2 : 1);
        if (digits.find_first_not_of("0123456789") != std::string::npos)
            return std::nullopt;
        const auto value = parseInt(digits, 0, INT64_MAX); // nothing that fits into a line is above it
        return value && negative ? -*value : value;
    }

    // Carries out one line; false when it is refused.
    bool command(const std::string &line)
    {
        const char letter = line[0];
        const bool good = !mustRefuse(letter) && line.size() <= kLongestLine && carryOut(letter, line);
        if (letter == '*')
            memory.prepared = false;
        if (letter == 'B' || letter == 'D' || letter == 'P') // an old firmware falls back to its last plan
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
        if (line == "P") { // the points lie on a line, so the first and the last tell of all
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

    // A stale board keeps these, once a plan was prepared.
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
