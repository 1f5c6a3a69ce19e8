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
constexpr std::size_t kLongestLine = 12, kMostDigits = 10;

inline unsigned crc16(const std::uint8_t *data, std::size_t size)
{
    unsigned crc = 0xFFFF;
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
};

struct Plan
{
    std::int64_t start = 0, step = 0;
    std::int64_t at(int point) const { return start + point * step; }
};

// What a board forgets without power.
struct Memory
{
    std::optional<std::int64_t> generator;
    Plan wanted;
    std::optional<Plan> plan; // of the last accepted P
    bool prepared = false, sweeping = false;
    std::string line;
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
        if (byte == '!') {
            memory.line.clear();
            memory.sweeping = false;
            return faults_.noAbort != 0 ? "" : "!+\r";
        }
        if (memory.sweeping || byte == '\n')
            return "";
        if (byte != '\r' && memory.line.size() <= kLongestLine) // one character more marks the line as too long
            memory.line += byte;
        if (byte != '\r' || memory.line.empty())
            return "";
        const std::string line = std::exchange(memory.line, "");
        const char verdict = command(line) ? '+' : '-';
        return faults_.wrong != 0 ? "??\r" : std::string{line[0], verdict, '\r'};
    }

private:
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
        if (digits.size() > kMostDigits || digits.find_first_not_of("0123456789") != std::string::npos)
            return std::nullopt;
        const auto value = parseInt(digits, 0, INT64_MAX);
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
        if (letter == 'A' || letter == 'B' || letter == 'D') {
            const auto hertz = number(line, letter == 'D');
            if (!hertz || !below(*hertz < 0 ? -*hertz : *hertz))
                return false;
            if (letter == 'A')
                memory.generator = hertz;
            else
                (letter == 'B' ? memory.wanted.start : memory.wanted.step) = *hertz;
            return true;
        }
        if (line == "P") { // the points lie on a line, so the first and the last tell of all
            if (!below(memory.wanted.at(0)) || !below(memory.wanted.at(kPoints - 1)))
                return false;
            memory.plan = memory.wanted;
            return true;
        }
        if (line == "G" && memory.prepared) {
            memory.sweeping = true;
            ++sweepId;
            return true;
        }
        if (line == "*")
            memory = Memory();
        return line == "*";
    }

    const std::int64_t clock_;
    Faults &faults_;
};

using Frame = std::array<std::uint8_t, kFrameSize>;

inline Frame buildFrame(const Plan &plan, unsigned number, bool remnant)
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
    const unsigned crc = crc16(&frame[2], kCrcAt - 2);
    frame[kCrcAt] = static_cast<std::uint8_t>(crc >> 8);
    frame[kCrcAt + 1] = static_cast<std::uint8_t>(crc & 0xFF);
    return frame;
}

} // namespace boards::pic
