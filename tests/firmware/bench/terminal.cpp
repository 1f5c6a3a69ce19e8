// SPDX-License-Identifier: MIT
#include "terminal.h"

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace bench {

bool Terminal::plug(const std::string &link)
{
    unplug();
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0)
        return false;
    const std::string name = ::ptsname(master_);
    slave_ = ::open(name.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (slave_ < 0 || ::tcgetattr(slave_, &settings) != 0)
        return false;
    ::cfmakeraw(&settings);
    ::unlink(link.c_str());
    link_ = link;
    return ::tcsetattr(slave_, TCSANOW, &settings) == 0 && ::symlink(name.c_str(), link.c_str()) == 0;
}

void Terminal::unplug()
{
    if (!link_.empty())
        ::unlink(link_.c_str());
    for (int *file : {&slave_, &master_})
        if (*file >= 0)
            ::close(*file);
    master_ = slave_ = -1;
    link_.clear();
}

std::vector<std::uint8_t> Terminal::read() const
{
    std::array<std::uint8_t, 256> bytes{};
    const ssize_t count = master_ < 0 ? 0 : ::read(master_, bytes.data(), bytes.size());
    return {bytes.begin(), bytes.begin() + (count > 0 ? count : 0)};
}

void Terminal::write(std::uint8_t byte) const
{
    if (master_ >= 0 && ::write(master_, &byte, 1) != 1)
        ::tcflush(master_, TCIOFLUSH); // no reader: empties the port for the next host that opens it
}

} // namespace bench
