// SPDX-License-Identifier: MIT
#pragma once

// The instrument of vna_board_by_the_page: receives the host's commands and sends the replies.

#include "tests/boards/terminal_board.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <unistd.h>

namespace boards::vna {

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;
using Bytes = std::vector<std::uint8_t>;
using std::chrono::milliseconds;

constexpr std::size_t Batch = 12; // bytes per write, about 1 ms
constexpr std::size_t ChunkMax = 4096;
constexpr milliseconds PauseAfterReply{2}; // without --paced
constexpr milliseconds RetryWrite{1};
constexpr std::size_t TextMax = 40; // longer numbers are truncated

// One command from the host
struct Command
{
    std::array<std::string, 4> text; // as received; bytes other than digits are shown as %XX
    bool valid = false, muted = false;
    std::uint32_t path = 0, start = 0, samples = 0, step = 0;
    Bytes before; // stray bytes sent before the reply
    Time due;

    void decode()
    {
        constexpr std::array<std::size_t, 4> digits{1, 10, 3, 10};
        const std::array<std::uint32_t *, 4> numbers{&path, &start, &samples, &step};
        valid = true;
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const auto number = text[i].size() <= digits[i] ? parseInt(text[i], 0, UINT32_MAX) : std::nullopt;
            valid = valid && number.has_value();
            *numbers[i] = static_cast<std::uint32_t>(number.value_or(0));
        }
        valid = valid && path <= 1;
    }

    bool answered() const { return valid && !muted && samples > 0; }
    std::string shown() const { return text[0] + '/' + text[1] + '/' + text[2] + '/' + text[3]; }
    std::uint32_t lastWord() const { return samples == 0 ? start : start + (samples - 1) * step; }

    Bytes reply() const
    {
        const std::uint32_t phaseKey = path == 0 ? 0 : 0x77777777;
        const std::uint32_t magnitudeKey = path == 0 ? 0x5A5A5A5A : 0x33333333;
        Bytes bytes;
        for (std::uint32_t k = 0; k < samples; ++k) {
            const std::uint32_t word = start + k * step;
            for (const std::uint32_t count : {countOf(word ^ phaseKey), countOf(word ^ magnitudeKey)}) {
                bytes.push_back(static_cast<std::uint8_t>(count & 0xFF));
                bytes.push_back(static_cast<std::uint8_t>(count >> 8));
            }
        }
        return bytes;
    }
};

// The faults that commands can switch on
struct Faults
{
    int mute = 0; // -1: all
    int late = 0, lateNextCount = 0, lateNext = 0, lateMin = 0, lateMax = 0;
    int chatter = 0, drop = 0, add = 0, gap = 0;
    Bytes strayOpen, strayOnce;
};

// The state that the instrument loses when powered off
struct Memory
{
    // from the host
    Command incoming;
    std::size_t number = 0;
    std::optional<Time> lastByte;
    Time inClock; // arrival time of the last byte; on a paced line, later than the time it was read
    std::deque<Command> commands;

    // to the host
    std::deque<std::uint8_t> first; // sent before the rest of the reply
    Bytes reply;
    std::size_t replySent = 0;
    std::size_t gapAt = 0; // 0: no pending gap
    bool replying = false;
    Bytes wire; // bytes being written to the terminal, faults included
    std::size_t wireSent = 0;
    bool blocked = false;
    Time retryAt, gapUntil, pauseUntil;
    Time outClock; // the line is busy until then

    std::uint32_t word = 0, path = 0;
};

// The instrument
class Board
{
public:
    Board(std::string link, bool paced)
        : terminal_(std::move(link))
        , paced_(paced)
    {
    }

    Faults faults;

    bool plugged() const { return terminal_.isOpen(); }
    int fd() const { return terminal_.fd(); }
    bool plug() { return terminal_.open(); } // sets errno on failure

    void unplug()
    {
        terminal_.close();
        m = Memory{};
    }

    void receive()
    {
        std::array<std::uint8_t, ChunkMax> buffer;
        const ssize_t count = plugged() ? ::read(fd(), buffer.data(), buffer.size()) : 0;
        const Time now = Clock::now();
        for (ssize_t i = 0; i < count; ++i)
            hostByte(buffer[static_cast<std::size_t>(i)], now);
    }

    void advance(Time now)
    {
        if (!plugged())
            return;
        while (!m.replying && !m.commands.empty() && now >= std::max(m.commands.front().due, m.pauseUntil)) {
            const Command command = std::move(m.commands.front());
            m.commands.pop_front();
            takeUp(command, now);
        }
        tick(now);
        send(now);
    }

    Time wakeAt(Time now) const
    {
        Time wake = now + milliseconds(1000);
        if (!plugged())
            return wake;
        if (faults.chatter > 0)
            wake = std::min(wake, nextTick_);
        if (!m.replying && !m.commands.empty())
            wake = std::min(wake, std::max(m.commands.front().due, m.pauseUntil));
        if (m.blocked)
            return std::min(wake, m.retryAt);
        if (inGap(now))
            wake = std::min(wake, m.gapUntil);
        const std::size_t count = std::min(available(now), Batch);
        if (count > 0)
            wake = std::min(wake, paced_ ? m.outClock + ByteTime * static_cast<int>(count) : now);
        return wake;
    }

    // Queues bytes ahead of all unsent bytes
    void sendFirst(const Bytes &bytes, Time now)
    {
        if (m.first.empty() && m.wire.empty() && (!m.replying || inGap(now)))
            m.outClock = std::max(m.outClock, now);
        m.first.insert(m.first.end(), bytes.begin(), bytes.end());
    }

    // Restarts a setting's counter or timer
    void settingChanged(const std::string &name)
    {
        if (name == "chatter")
            nextTick_ = Clock::now() + milliseconds(faults.chatter);
        else if (name == "drop")
            dropCount_ = 0;
        else if (name == "add")
            addCount_ = 0;
    }

    std::string takeHeard()
    {
        std::string line = "heard ";
        for (std::size_t i = 0; i < heard_.size(); ++i)
            line += (i > 0 ? " " : "") + heard_[i];
        heard_.clear();
        return line;
    }

    std::string state() const
    {
        return "state word=" + std::to_string(m.word) + " path=" + std::to_string(m.path) +
               " replies=" + std::to_string(replies_);
    }

private:
    void hostByte(std::uint8_t byte, Time now)
    {
        if (!m.lastByte || now - *m.lastByte >= HostPause) {
            Bytes &before = m.incoming.before;
            before.insert(before.end(), faults.strayOnce.begin(), faults.strayOnce.end());
            before.insert(before.end(), faults.strayOpen.begin(), faults.strayOpen.end());
            faults.strayOnce.clear();
        }
        m.lastByte = now;
        m.inClock = paced_ ? std::max(m.inClock, now) + ByteTime : now;
        if (byte == '\r') {
            if (++m.number == m.incoming.text.size())
                complete();
            return;
        }
        std::string &text = m.incoming.text[m.number];
        if (text.size() >= TextMax)
            return;
        constexpr std::string_view digits = "0123456789ABCDEF";
        if (byte >= '0' && byte <= '9')
            text += static_cast<char>(byte);
        else
            text += {'%', digits[byte >> 4], digits[byte & 15]};
    }

    void complete()
    {
        Command command = std::move(m.incoming);
        m.incoming = Command{};
        m.number = 0;
        command.decode();
        heard_.push_back(command.shown());
        if (command.valid && faults.mute != 0) {
            command.muted = true;
            faults.mute -= faults.mute > 0 ? 1 : 0;
        }
        command.due = m.inClock + milliseconds(command.answered() ? lateness() : 0);
        m.commands.push_back(std::move(command));
    }

    int lateness()
    {
        if (faults.lateNextCount > 0) {
            --faults.lateNextCount;
            return faults.lateNext;
        }
        if (faults.lateMax > 0)
            return std::uniform_int_distribution<int>(faults.lateMin, faults.lateMax)(random_);
        return faults.late;
    }

    void takeUp(const Command &command, Time now)
    {
        sendFirst(command.before, now);
        if (!command.valid)
            return;
        m.word = command.lastWord();
        m.path = command.path;
        if (!command.answered())
            return;
        m.reply = command.reply();
        m.replySent = 0;
        m.gapAt = faults.gap > 0 ? m.reply.size() / 2 : 0;
        m.gapUntil = Time{};
        m.outClock = std::max(m.outClock, command.due);
        m.replying = true;
    }

    // Sends the chatter when due, except during a reply
    void tick(Time now)
    {
        if (faults.chatter == 0 || now < nextTick_)
            return;
        const milliseconds every(faults.chatter);
        nextTick_ = now - nextTick_ < every ? nextTick_ + every : now + every;
        if (!m.replying && m.first.empty() && m.wire.empty())
            sendFirst({'H', 'E', 'L', 'L', 'O', '\r'}, now);
    }

    bool inGap(Time now) const { return m.replying && now < m.gapUntil; }

    std::size_t available(Time now) const
    {
        if (!m.first.empty())
            return m.first.size();
        if (!m.replying || inGap(now))
            return 0;
        return (m.gapAt > m.replySent ? m.gapAt : m.reply.size()) - m.replySent;
    }

    // Returns how many bytes may be sent now: all, or on a paced line as many as it could have transmitted by now
    std::size_t allowed(Time now) const
    {
        const std::size_t count = std::min(available(now), ChunkMax);
        if (!paced_)
            return count;
        const auto carried = now > m.outClock ? static_cast<std::size_t>((now - m.outClock) / ByteTime) : 0;
        return carried >= std::min(count, Batch) ? std::min(count, carried) : 0;
    }

    void put(std::uint8_t byte)
    {
        m.outClock += ByteTime;
        if (faults.drop > 0 && ++dropCount_ >= faults.drop) {
            dropCount_ = 0;
            return;
        }
        m.wire.push_back(byte);
        if (faults.add > 0 && ++addCount_ >= faults.add) {
            addCount_ = 0;
            m.wire.push_back(static_cast<std::uint8_t>(random_() >> 24));
            m.outClock += ByteTime;
        }
    }

    bool fill(Time now)
    {
        const std::size_t count = allowed(now);
        const bool fromFirst = !m.first.empty();
        for (std::size_t i = 0; i < count; ++i)
            put(fromFirst ? m.first[i] : m.reply[m.replySent + i]);
        if (fromFirst)
            m.first.erase(m.first.begin(), m.first.begin() + static_cast<std::ptrdiff_t>(count));
        else
            m.replySent += count;
        return count > 0;
    }

    // Writes the pending bytes. Returns true if none are left.
    bool flush(Time now)
    {
        while (m.wireSent < m.wire.size()) {
            const ssize_t count = ::write(fd(), m.wire.data() + m.wireSent, m.wire.size() - m.wireSent);
            if (count <= 0) {
                m.blocked = true;
                m.retryAt = now + RetryWrite;
                return false;
            }
            m.wireSent += static_cast<std::size_t>(count);
        }
        if (m.blocked)
            m.outClock = std::max(m.outClock, now);
        m.blocked = false;
        m.wire.clear();
        m.wireSent = 0;
        return true;
    }

    // Handles the middle and the end of a reply after its bytes were written
    void settle(Time now)
    {
        if (!m.replying)
            return;
        if (m.replySent == m.reply.size()) {
            m.replying = false;
            m.pauseUntil = paced_ ? Time{} : now + PauseAfterReply;
            ++replies_;
        } else if (m.gapAt > 0 && m.replySent == m.gapAt) {
            m.gapAt = 0;
            m.gapUntil = now + milliseconds(faults.gap);
            m.outClock = std::max(m.outClock, m.gapUntil);
        }
    }

    void send(Time now)
    {
        if (m.blocked && now < m.retryAt)
            return;
        do {
            if (!flush(now))
                return;
            settle(now);
        } while (fill(now));
    }

    Terminal terminal_;
    const bool paced_;
    Memory m;
    std::mt19937 random_{1};
    std::vector<std::string> heard_;
    unsigned long replies_ = 0;
    int dropCount_ = 0, addCount_ = 0;
    Time nextTick_;
};

} // namespace boards::vna
