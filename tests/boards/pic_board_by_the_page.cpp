// SPDX-License-Identifier: MIT
//
// Simulates a measuring board behind a pseudo-terminal. Written solely from the protocol description.
//
//     pic_board_by_the_page LINK [--paced] [--clock HZ]
//
// LINK becomes a symbolic link to the terminal. Commands on standard input make the board misbehave; see Control.
// The counts do not come from a signal: each is a hash of the frequency at which it was measured.

#include "tests/boards/pic_firmware.h"
#include "tests/boards/terminal_board.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <termios.h>
#include <unistd.h>

namespace {

using namespace boards;
using namespace boards::pic;

using Nanos = std::int64_t;

constexpr Nanos kMicrosecond = 1'000, kMs = 1'000'000;
constexpr Nanos kLongestWait = 1000 * kMs;
constexpr Nanos kByteTime = ByteTime.count();
constexpr Nanos kCatchUp = 50 * kMs;   // the longest scheduling delay that a paced board makes up for
constexpr Nanos kFramePause = 2 * kMs; // the pause of an unpaced board after each frame
constexpr Nanos kRetry = 2 * kMs;      // the pause before the next attempt when the terminal is full
constexpr Nanos kOpenSilence = std::chrono::nanoseconds(HostPause).count();
constexpr std::size_t kChunk = 128;

Nanos now()
{
    static const auto start = std::chrono::steady_clock::now();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() - start).count();
}

// Outgoing bytes. Unplugging discards them.
struct Queues
{
    std::string wire;                               // ready to be sent, but not yet written to the terminal
    std::string urgent;                             // stray bytes, sent before everything else
    std::string out;                                // answers and chatter
    std::deque<std::pair<Nanos, std::string>> held; // delayed answers with their due times
};

// Decides when each byte is sent, and writes it to the terminal.
class Sender
{
public:
    Sender(Board &board, const Faults &faults, bool paced)
        : board_(board)
        , faults_(faults)
        , paced_(paced)
    {
    }

    Queues queues;
    Nanos nextChatter = 0;
    std::int64_t dropCount = 0;
    std::int64_t frames = 0; // completely sent frames

    void answer(const std::string &bytes, Nanos time)
    {
        const Nanos due = time + faults_.late * kMs;
        auto &held = queues.held;
        if (!bytes.empty())
            held.emplace_back(held.empty() ? due : std::max(due, held.back().first), bytes);
    }

    // Sends all bytes that are due and returns when to call again.
    Nanos pump(int fd, Nanos time)
    {
        auto &held = queues.held;
        for (; !held.empty() && held.front().first <= time; held.pop_front())
            queues.out += held.front().second;
        chat(time);
        do {
            if (!flush(fd)) {
                busy_ = false;
                return time + kRetry;
            }
        } while (fill(time));
        return wake(time);
    }

private:
    void chat(Nanos time)
    {
        if (faults_.chatter == 0 || time < nextChatter)
            return;
        nextChatter = std::max(nextChatter + faults_.chatter * kMs, time);
        const bool quiet = queues.wire.empty() && queues.urgent.empty() && queues.out.empty();
        if (quiet && !board_.memory.sweeping && !board_.memory.talking)
            queues.out = "HELLO\r";
    }

    // Writes queues.wire to the terminal. Returns false if the terminal is full.
    bool flush(int fd)
    {
        std::string &wire = queues.wire;
        while (!wire.empty()) {
            const ssize_t written = ::write(fd, wire.data(), wire.size());
            if (written <= 0)
                return false;
            wire.erase(0, static_cast<std::size_t>(written));
        }
        return true;
    }

    // Refills the empty queues.wire. Returns whether more bytes may be due.
    bool fill(Nanos time)
    {
        for (std::size_t i = 0; i < kChunk; ++i) {
            if (isPaced() && lineFree_ > time)
                return !queues.wire.empty();
            const std::optional<char> byte = nextByte(time);
            lineFree_ = std::max(lineFree_, busy_ ? time - kCatchUp : time);
            busy_ = byte.has_value();
            if (!busy_)
                return !queues.wire.empty();
            lineFree_ += isPaced() ? byteTime_ : 0;
            if (faults_.mute == 0 && (faults_.drop == 0 || ++dropCount % faults_.drop != 0))
                queues.wire += *byte;
        }
        return true;
    }

    // An endless answer is always paced; otherwise it would flood the terminal.
    bool isPaced() const { return paced_ || board_.memory.talking; }

    // The time per frame byte is determined by the line or, if slower, by the detector.
    Nanos frameByteTime() const
    {
        const Nanos frame = kPoints * (board_.memory.settling + kPointWork) * kMicrosecond;
        return std::max(kByteTime, frame / static_cast<Nanos>(kFrameSize));
    }

    std::optional<char> nextByte(Nanos time)
    {
        byteTime_ = kByteTime;
        std::string &queue = queues.urgent.empty() ? queues.out : queues.urgent;
        if (queue.empty() && queues.held.empty() && board_.memory.talking)
            return 'X';
        if (queue.empty())
            return board_.memory.sweeping && queues.held.empty() ? nextFrameByte(time) : std::nullopt;
        const char byte = queue.front();
        queue.erase(0, 1);
        return byte;
    }

    std::optional<char> nextFrameByte(Nanos time)
    {
        if (begun_ != board_.sweepId) {
            begun_ = board_.sweepId;
            position_ = kFrameSize;
            number_ = 0;
            remnant_ = faults_.firstNumber >= 0;
            restUntil_ = time;
        }
        if (restUntil_ > time)
            return std::nullopt;
        const Plan &plan = *board_.memory.plan;
        if (position_ == kFrameSize) {
            const bool remnant = std::exchange(remnant_, false);
            const unsigned number = remnant ? static_cast<unsigned>(faults_.firstNumber) : number_++;
            const bool old = number < faults_.oldFrames;
            frame_ = buildFrame(old ? board_.memory.former.value_or(plan) : plan, number, remnant, faults_.oldCrc != 0);
            position_ = 0;
            whole_ = true;
        }
        // The board measures four points before their five bytes are sent.
        const int group = position_ < kFirstSample ? 0 : static_cast<int>(position_ - kFirstSample) / 5;
        board_.memory.generator = plan.at(std::min(group * 4 + 3, kPoints - 1));
        whole_ = whole_ && faults_.mute == 0;
        const auto byte = static_cast<char>(frame_[position_++]);
        byteTime_ = frameByteTime();
        if (position_ == kFrameMiddle)
            restUntil_ = time + faults_.gap * kMs;
        if (position_ == kFrameSize) {
            frames += whole_ ? 1 : 0;
            restUntil_ = paced_ ? time : time + kFramePause;
        }
        return byte;
    }

    Nanos wake(Nanos time) const
    {
        Nanos next = time + kLongestWait;
        if (!queues.held.empty())
            next = std::min(next, queues.held.front().first);
        if (faults_.chatter > 0)
            next = std::min(next, nextChatter);
        const Nanos lineReady = isPaced() ? lineFree_ + kMs : time; // sends one-millisecond batches
        const bool talks = board_.memory.talking && queues.held.empty();
        if (!queues.urgent.empty() || !queues.out.empty() || talks)
            next = std::min(next, lineReady);
        else if (board_.memory.sweeping && queues.held.empty())
            next = std::min(next, std::max(lineReady, restUntil_));
        return next;
    }

    Board &board_;
    const Faults &faults_;
    const bool paced_;
    Frame frame_{};
    std::size_t position_ = kFrameSize;
    unsigned number_ = 0, begun_ = 0; // the number of the next frame and the sweep it belongs to
    bool remnant_ = false, whole_ = true, busy_ = false;
    Nanos restUntil_ = 0, lineFree_ = 0, byteTime_ = kByteTime; // byteTime_: duration of the next byte
};

// The board with its pseudo-terminal.
class Device
{
public:
    Device(const std::string &link, std::int64_t clock, bool paced)
        : board(clock, faults)
        , sender(board, faults, paced)
        , terminal_(link, CREAD | CLOCAL)
    {
    }

    Faults faults;
    Board board;
    Sender sender;

    int master() const { return terminal_.fd(); } // negative while unplugged
    bool plugged() const { return terminal_.isOpen(); }

    bool power(bool on)
    {
        restart();
        lastByte_.reset();
        if (on)
            return terminal_.open();
        terminal_.close();
        return true;
    }

    // Resets the board but keeps the terminal open.
    void restart()
    {
        board.memory = Memory();
        sender.queues = Queues();
    }

    // Reads the host's bytes. Returns false if the terminal has failed.
    bool readHost()
    {
        char buffer[1024];
        for (int rounds = 0; rounds < 16 && plugged(); ++rounds) {
            const ssize_t size = ::read(master(), buffer, sizeof buffer);
            if (size <= 0)
                return size < 0 && (errno == EAGAIN || errno == EINTR);
            const Nanos time = now();
            if (!lastByte_ || time - *lastByte_ >= kOpenSilence)
                sender.queues.urgent += faults.strayOpen;
            lastByte_ = time;
            for (ssize_t i = 0; i < size; ++i) {
                note(buffer[i], time);
                sender.answer(board.receive(buffer[i]), time);
            }
        }
        return true;
    }

    Nanos pump() { return plugged() ? sender.pump(master(), now()) : now() + kLongestWait; }

    std::string takeHeard() { return "heard " + std::exchange(heard_, "") + ' ' + std::exchange(stamps_, ""); }

    std::string state() const
    {
        const Memory &memory = board.memory;
        return "state gen=" + (memory.generator ? std::to_string(*memory.generator) : "off") +
               " start=" + std::to_string(memory.wanted.start) + " step=" + std::to_string(memory.wanted.step) +
               " prepared=" + (memory.prepared ? '1' : '0') + " sweeping=" + (memory.sweeping ? '1' : '0') +
               " frames=" + std::to_string(sender.frames) + " settling=" + std::to_string(memory.settling);
    }

private:
    void note(char byte, Nanos time)
    {
        static const std::string digits = "0123456789ABCDEF";
        const auto value = static_cast<std::uint8_t>(byte);
        if (byte > ' ' && byte <= '~') // excludes the space, which would end the word
            heard_ += byte;
        else
            heard_ += byte == '\r' ? ";" : std::string("\\x") + digits[value >> 4] + digits[value & 15];
        if (byte == '!')
            stamps_ += (stamps_.empty() ? "" : ",") + std::to_string(time / kMs);
    }

    Terminal terminal_;
    std::optional<Nanos> lastByte_;
    std::string heard_, stamps_;
};

// Executes the commands from standard input. Each returns one line.
class Control
{
public:
    explicit Control(Device &device)
        : device_(device)
        , faults_(device.faults)
    {
    }

    std::string run(const std::string &line)
    {
        std::istringstream stream(line);
        Words words(1);
        stream >> words[0];
        for (std::string word; stream >> word;)
            words.push_back(word);
        const std::string &name = words[0];
        if (name == "heard" || name == "state")
            return name == "heard" ? device_.takeHeard() : device_.state();
        bool good = false;
        if (settings_.contains(name))
            good = set(settings_.at(name), words);
        else if (name == "refuse")
            good = refuse(words);
        else if (name == "stray" || name == "strayopen" || name == "told")
            good = bytes(words);
        else if (name == "toldname" || name == "toldchip")
            good = word(words);
        else if (name == "break" || name == "restart")
            good = event(words);
        else if (name == "plug" || name == "unplug")
            good = device_.plugged() != (name == "plug") && device_.power(name == "plug");
        return good ? "ok" : "? cannot do this: " + line;
    }

private:
    using Words = std::vector<std::string>; // the first word is the command name

    struct Setting
    {
        std::int64_t &value;
        std::int64_t least = 0, most = 1; // the default is an on/off switch
    };

    bool set(const Setting &setting, const Words &words)
    {
        const std::string text = words.size() == 2 ? words[1] : "";
        std::optional<std::int64_t> given;
        if (setting.most > 1)
            given = parseInt(text, setting.least, setting.most);
        else if (text == "on" || text == "off")
            given = text == "on";
        setting.value = given.value_or(setting.value);
        if (faults_.mute != 0)
            device_.sender.queues.wire.clear();
        if (words[0] == "drop")
            device_.sender.dropCount = 0;
        if (words[0] == "chatter")
            device_.sender.nextChatter = now() + setting.value * kMs;
        return given.has_value();
    }

    bool refuse(const Words &words)
    {
        const bool letter = words.size() == 3 && words[1].size() == 1 && words[1] != "!";
        const auto count = parseInt(letter || words.size() == 2 ? words.back() : "", 0, INT32_MAX);
        if (count)
            (letter ? faults_.refuseLetter[words[1][0]] : faults_.refuseAny) = *count;
        return count.has_value();
    }

    bool word(const Words &words)
    {
        if (words.size() == 2)
            (words[0] == "toldname" ? faults_.toldName : faults_.toldChip) = words[1];
        return words.size() == 2;
    }

    // Causes an immediate event: a damaged byte or a restart.
    bool event(const Words &words)
    {
        if (words.size() != 1 || !device_.plugged())
            return false;
        if (words[0] == "break")
            device_.board.spoil();
        else
            device_.restart();
        return true;
    }

    // Sets the bytes to send, given in hexadecimal. An empty list disables the stray bytes at opening or restores the
    // usual answer to a query.
    bool bytes(const Words &words)
    {
        std::string given;
        const std::string hex = words.size() == 2 ? words[1] : "";
        for (std::size_t i = 0; i < hex.size(); i += 2) {
            const auto value = parseInt(i + 1 < hex.size() ? hex.substr(i, 2) : "", 0, 255, 16);
            if (!value)
                return false;
            given += static_cast<char>(*value);
        }
        if (words[0] != "stray") {
            (words[0] == "told" ? faults_.told : faults_.strayOpen) = given;
            return true;
        }
        device_.sender.queues.urgent += given;
        device_.pump();
        return device_.plugged() && !given.empty();
    }

    Device &device_;
    Faults &faults_;
    const std::map<std::string, Setting> settings_ = {
        {"keep", {faults_.keep}},
        {"mute", {faults_.mute}},
        {"wrong", {faults_.wrong}},
        {"noabort", {faults_.noAbort}},
        {"stale", {faults_.stale}},
        {"stalestart", {faults_.staleStart}},
        {"stalestep", {faults_.staleStep}},
        {"oldcrc", {faults_.oldCrc}},
        {"oldframes", {faults_.oldFrames, 0, 255}},
        {"noquery", {faults_.noQuery}},
        {"endless", {faults_.endless}},
        {"spoil", {faults_.spoil, 0, INT32_MAX}},
        {"lose", {faults_.lose, 0, INT32_MAX}},
        {"toldclock", {faults_.toldClock, 0, 9'999'999'999}},
        {"settling", {device_.board.memory.settling, kLeastSettling, kMostSettling}},
        {"late", {faults_.late, 0, INT32_MAX}},
        {"chatter", {faults_.chatter, 0, INT32_MAX}},
        {"gap", {faults_.gap, 0, INT32_MAX}},
        {"drop", {faults_.drop, 0, INT32_MAX}},
        {"firstnumber", {faults_.firstNumber, -1, 255}}};
};

int serve(Device &device)
{
    stopOnSignals();
    if (!device.power(true)) {
        std::cerr << "cannot create the terminal or the link\n";
        return 1;
    }
    std::cout << "ready" << std::endl;
    Control control(device);
    ControlInput lines;
    const auto answer = [&](const std::string &line) {
        device.readHost(); // handles the bytes that arrived before the command
        return control.run(line);
    };
    while (stopRequested == 0) {
        const Nanos wait = device.pump() - now();
        const auto readable = waitForInput(device.master(), std::chrono::nanoseconds(wait));
        if (!readable)
            continue;
        if (readable->host && !device.readHost())
            ::usleep(kRetry / 1000);
        if (readable->control && !lines.serve(answer))
            break;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    now(); // sets the time origin
    std::string link;
    std::optional<std::int64_t> clock = 80'000'000;
    bool paced = false, good = true;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--clock" && i + 1 < argc)
            clock = parseInt(argv[++i], 1, 9'999'999'999);
        else if (word == "--paced")
            paced = true;
        else if (link.empty() && !word.starts_with("--"))
            link = word;
        else
            good = false;
    }
    if (!good || link.empty() || !clock) {
        std::cerr << "usage: pic_board_by_the_page LINK [--paced] [--clock HZ]\n";
        return 2;
    }
    Device device(link, *clock, paced);
    return serve(device);
}
