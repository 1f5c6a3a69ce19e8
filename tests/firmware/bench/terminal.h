// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// A pseudo-terminal and a symbolic link to it, which the program under test opens as a serial port.
class Terminal
{
public:
    Terminal() = default;
    ~Terminal() { unplug(); }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    bool plug(const std::string &link);
    void unplug();
    bool isPlugged() const { return master_ >= 0; }

    std::vector<std::uint8_t> read() const;
    void write(std::uint8_t byte) const; // the byte is lost if nobody reads

private:
    int master_ = -1;
    int slave_ = -1; // keeps the terminal alive while no program has it open
    std::string link_;
};

} // namespace bench
