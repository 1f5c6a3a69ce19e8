// SPDX-License-Identifier: MIT
#pragma once

// Shared by the simulated boards on a serial line: a pseudo-terminal with a symbolic link to it, commands on standard
// input, termination by signals, and the computed counts.

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace boards {

constexpr std::chrono::nanoseconds ByteTime{86'806}; // ten bits at 115,200 baud
constexpr std::chrono::milliseconds HostPause{300};  // a longer pause counts as reopening the port

// Returns a 10-bit hash of a frequency or a tuning word.
inline std::uint32_t countOf(std::uint64_t number)
{
    return static_cast<std::uint32_t>(number * 2654435761u) >> 22;
}

// Converts the complete string to a number. Returns nothing if that fails or the number is outside the limits.
inline std::optional<std::int64_t> parseInt(const std::string &text, std::int64_t least, std::int64_t most,
                                            int base = 10)
{
    std::int64_t value = 0;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, base);
    if (result.ec != std::errc() || result.ptr != end || value < least || value > most)
        return std::nullopt;
    return value;
}

// A pseudo-terminal pair and a symbolic link to it.
class Terminal
{
public:
    // The flags are control modes (c_cflag) set in addition to raw mode.
    explicit Terminal(std::string link, tcflag_t flags = 0)
        : link_(std::move(link))
        , flags_(flags)
    {
    }
    ~Terminal() { close(); }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    int fd() const { return master_; } // negative while closed
    bool isOpen() const { return master_ >= 0; }

    // Returns false on failure, with the terminal closed and errno set.
    bool open()
    {
        if (openPair() && makeLink())
            return true;
        const int error = errno;
        close();
        errno = error;
        return false;
    }

    void close()
    {
        if (!name_.empty())
            removeLink();
        name_.clear();
        for (int *descriptor : {&slave_, &master_})
            if (*descriptor >= 0)
                ::close(std::exchange(*descriptor, -1));
    }

private:
    bool openPair()
    {
        master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
        std::array<char, 128> name{};
        if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0 ||
            ::ptsname_r(master_, name.data(), name.size()) != 0)
            return false;
        name_ = name.data();
        slave_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios settings{};
        if (slave_ < 0 || ::tcgetattr(slave_, &settings) != 0)
            return false;
        ::cfmakeraw(&settings);
        settings.c_cflag |= flags_;
        ::cfsetspeed(&settings, B115200);
        return ::tcsetattr(slave_, TCSANOW, &settings) == 0;
    }

    bool makeLink() const
    {
        const std::string fresh = link_ + ".new";
        ::unlink(fresh.c_str());
        return ::symlink(name_.c_str(), fresh.c_str()) == 0 && ::rename(fresh.c_str(), link_.c_str()) == 0;
    }

    // Removes the link only if it points to this terminal.
    void removeLink() const
    {
        std::array<char, 256> target{};
        const ssize_t length = ::readlink(link_.c_str(), target.data(), target.size());
        if (length > 0 && name_ == std::string_view(target.data(), static_cast<std::size_t>(length)))
            ::unlink(link_.c_str());
    }

    const std::string link_;
    const tcflag_t flags_;
    std::string name_;
    int master_ = -1;
    int slave_ = -1; // stays open, so that the terminal exists while no host has opened it
};

// Reads command lines from standard input.
class ControlInput
{
public:
    // Reads once and prints the result of answer() for each complete line. Returns false at the end of the input.
    template <typename Answer>
    bool serve(const Answer &answer)
    {
        std::array<char, 4096> buffer;
        const ssize_t size = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (size <= 0)
            return size < 0 && (errno == EAGAIN || errno == EINTR);
        pending_.append(buffer.data(), static_cast<std::size_t>(size));
        for (std::size_t end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
            std::cout << answer(pending_.substr(0, end)) << std::endl;
            pending_.erase(0, end + 1);
        }
        return std::cout.good();
    }

private:
    std::string pending_;
};

constexpr std::array<int, 3> EndSignals{SIGINT, SIGTERM, SIGHUP};

inline volatile std::sig_atomic_t stopRequested = 0;

// Makes these signals stop the event loop, so that the link is removed.
inline void stopOnSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    for (const int number : EndSignals)
        std::signal(number, [](int) { stopRequested = 1; });
}

// The inputs that have data to read.
struct Readable
{
    bool control = false, host = false;
};

// Waits for standard input and the terminal. A mask replaces the set of blocked signals during the wait. Returns
// nothing if a signal interrupts the wait.
inline std::optional<Readable> waitForInput(int terminal, std::chrono::nanoseconds wait, const sigset_t *mask = nullptr)
{
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t left = std::max<std::int64_t>(wait.count(), 0);
    const timespec timeout{left / second, left % second};
    std::array<pollfd, 2> watched{{{STDIN_FILENO, POLLIN, 0}, {terminal, POLLIN, 0}}};
    if (::ppoll(watched.data(), watched.size(), &timeout, mask) < 0)
        return std::nullopt;
    return Readable{watched[0].revents != 0, watched[1].revents != 0};
}

} // namespace boards
