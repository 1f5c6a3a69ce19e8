// SPDX-License-Identifier: MIT
#pragma once

// The measuring board of lpt_board_by_the_page: the chips on the port's pins, the log and the fault file. Nothing here
// calls a function that the library replaces.

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <mutex>
#include <new>
#include <utility>

#include <fcntl.h>
#include <linux/parport.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#pragma GCC visibility push(hidden) // the program must not see these names
namespace lpt {

inline int64_t milliseconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * int64_t{1000} + now.tv_nsec / 1000000;
}

// Appends a line to the log. Opens the file for each line, because the program might close an open descriptor.
[[gnu::format(printf, 1, 2)]] inline void report(const char *format, ...)
{
    const char *file = getenv("CALVORN_BOARD_LOG");
    char line[160];
    int length = snprintf(line, 32, "%lld ", static_cast<long long>(milliseconds(CLOCK_MONOTONIC)));
    va_list list;
    va_start(list, format);
    length += vsnprintf(line + length, 100, format, list);
    va_end(list);
    line[length++] = '\n';
    const long fd = !file ? -1 : syscall(SYS_openat, AT_FDCWD, file, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    syscall(SYS_write, fd, line, length);
    syscall(SYS_close, fd);
}

// ---- The board
// AdcSelect is active low; Scl and Sda are 1 when released. The last three are STROBE, AUTOFD and INIT.
enum Pin : unsigned {
    DdsClock = 0x001,
    DdsUpdate = 0x002,
    DdsData = 0x004,
    DdsReset = 0x008,
    AdcClock = 0x010,
    AdcSelect = 0x020,
    Scl = 0x040,
    Sda = 0x080,
    AuxData = 0x100,
    AuxClock = 0x200,
    AuxLatch = 0x400,
};

// A clock edge latches the data inputs as they were before it: a level that changes together with the edge is too late.
struct Edges
{
    unsigned before, now;
    unsigned rose() const { return now & ~before; }
    unsigned fell() const { return before & ~now; }
};

// An AD9850 with D0 and D1 high, D2 to D6 low, and D7 on the data line.
class Generator
{
public:
    void pins(Edges e)
    {
        if (e.rose() & DdsReset) {
            *this = Generator();
            m_started = true;
        }
        if (!m_started || ((e.now | e.before) & DdsReset))
            return;
        if (e.rose() & DdsUpdate)
            update();
        if (e.rose() & DdsClock) {
            m_latched = true; // in parallel mode this latches x0000011, the code for serial mode
            if (m_serial) {
                m_shift = (m_shift >> 1) | (uint64_t{(e.before & DdsData) != 0} << 39);
                ++m_bits;
            }
        }
    }

    // Returns a 10-bit hash of the word, or 0 without a signal.
    uint32_t count() const { return m_silent ? 0 : static_cast<uint32_t>(uint64_t{m_word} * 2654435761u) >> 22; }

private:
    void update()
    {
        const unsigned bits = std::exchange(m_bits, 0);
        if (!m_serial)
            m_serial = m_latched;
        else if (bits > 0)
            activate(static_cast<unsigned>(m_shift >> 32));
    }

    void activate(unsigned control)
    {
        const int64_t now = milliseconds(CLOCK_MONOTONIC);
        m_word = static_cast<uint32_t>(m_shift);
        m_silent = control & 7;
        if (control & 3) // factory test modes: no signal, and possible damage to the chip
            report("test-code %02X", control);
        if (control & 4)
            report("power-down");
        else if (now - m_lastLoad >= 20)
            report("word %08X", m_word);
        m_lastLoad = now;
    }

    bool m_started = false; // the chip's state is unknown before the first reset
    bool m_silent = true, m_serial = false, m_latched = false;
    unsigned m_bits = 0;
    uint32_t m_word = 0;
    uint64_t m_shift = 0;
    int64_t m_lastLoad = 0;
};

// A TLC1549. Each frame returns the previous frame's sample. The output is pulled up while the chip is deselected.
class Converter
{
public:
    void pins(Edges e, const Generator &source)
    {
        if (e.now & AdcSelect) {
            m_level = true;
        } else if (e.before & AdcSelect) {
            m_clocks = 0;
            m_level = m_result & 0x200;
        } else if ((e.fell() & AdcClock) && m_clocks < 10) {
            ++m_clocks;
            m_level = m_clocks < 10 && (m_result & (0x200u >> m_clocks));
            if (m_clocks == 10)
                m_result = source.count();
        }
    }
    bool level() const { return m_level; }

private:
    uint32_t m_result = 0x3FF; // no conversion yet
    unsigned m_clocks = 10;
    bool m_level = true;
};

// A DS1803 with A2 to A0 low; write-only.
class Potentiometer
{
public:
    bool line(unsigned pins) const { return (pins & Sda) && !m_pull; }

    void pins(Edges e)
    {
        const bool before = line(e.before), now = line(e.now);
        if (e.rose() & Scl) {
            if (m_bits++ < 8)
                m_byte = static_cast<uint8_t>(m_byte << 1 | (before ? 1 : 0));
        } else if (e.fell() & Scl) {
            m_pull = m_listening && m_bits == 8 && take();
            m_bits = m_bits >= 9 ? 0 : m_bits;
        } else if ((e.now & Scl) && before != now) {
            finish();
            m_listening = before; // a falling line is START, a rising line is STOP
            m_bits = 0;
        }
    }

private:
    bool take()
    {
        m_listening = m_length > 0 || m_byte == 0x50;
        if (m_listening && m_length < sizeof m_bytes)
            m_bytes[m_length++] = m_byte;
        return m_listening;
    }

    void finish()
    {
        char text[3 * sizeof m_bytes + 1] = "";
        for (unsigned i = 0; i < m_length; ++i)
            snprintf(text + 3 * i, 4, " %02X", static_cast<unsigned>(m_bytes[i]));
        if (m_length > 0)
            report("pot%s", text);
        m_length = 0;
    }

    bool m_listening = false, m_pull = false;
    unsigned m_bits = 0, m_length = 0;
    uint8_t m_byte = 0, m_bytes[16] = {};
};

// The port's registers and the board on its pins.
class Port
{
public:
    uint8_t data() const { return m_input ? 0xFF : m_data; }
    uint8_t control() const { return m_control; }

    // Open inputs read high, and BUSY is inverted. The lowest three bits have no line and read 1.
    uint8_t status() const
    {
        return static_cast<uint8_t>(PARPORT_STATUS_PAPEROUT | PARPORT_STATUS_ERROR | 0x07 |
                                    (m_converter.level() ? PARPORT_STATUS_ACK : 0) |
                                    (m_potentiometer.line(m_pins) ? PARPORT_STATUS_SELECT : 0));
    }

    void set(uint8_t data, unsigned control, bool input)
    {
        m_data = data;
        m_control = control & 0x0F;
        m_input = input;
        const Edges e{m_pins, this->data() | (m_control ^ 0x0Bu) << 8};
        const unsigned changed = e.before ^ e.now;
        m_pins = e.now;
        if (changed & (DdsClock | DdsUpdate | DdsReset))
            m_generator.pins(e);
        if (changed & (AdcClock | AdcSelect))
            m_converter.pins(e, m_generator);
        if (changed & (Scl | Sda))
            m_potentiometer.pins(e);
        // Two cascaded 74HC595. If both clocks rise together, the latch stores the register's old contents.
        if (e.rose() & AuxLatch)
            report("aux %02X %02X", m_aux & 0xFFu, m_aux >> 8 & 0xFFu);
        if (e.rose() & AuxClock)
            m_aux = m_aux << 1 | ((e.before & AuxData) ? 1 : 0);
    }
    void setData(uint8_t value) { set(value, m_control, m_input); }
    void setControl(unsigned value) { set(m_data, value, m_input); }
    void setInput(bool input) { set(m_data, m_control, input); }
    void claimed() { set(m_data, PARPORT_CONTROL_INIT | PARPORT_CONTROL_SELECT, false); }

private:
    uint8_t m_data = 0x55; // an arbitrary leftover
    uint8_t m_control = PARPORT_CONTROL_INIT | PARPORT_CONTROL_SELECT;
    bool m_input = false;
    unsigned m_pins = 0x755;
    unsigned m_aux = 0x3CA5; // undefined after power-up
    Generator m_generator;
    Converter m_converter;
    Potentiometer m_potentiometer;
};

// ---- Faults
enum Fault { None, Busy, Absent, Gone, Hang };
constexpr const char *faultNames[] = {"", "busy", "absent", "gone", "hang"};

// The file that contains the current fault.
class FaultFile
{
public:
    // Reads the file at most every 5 ms, passes the fault to seen(), and returns the current fault.
    template <typename Seen>
    int look(const Seen &seen)
    {
        const int64_t now = milliseconds(CLOCK_MONOTONIC_COARSE);
        const std::unique_lock lock(m_mutex, std::try_to_lock);
        if (lock && now - m_lastLook >= 5) {
            const int saved = errno;
            m_lastLook = now;
            const Fault fault = readFile(getenv("CALVORN_BOARD_FAULT"));
            seen(fault);
            m_fault = fault;
            errno = saved;
        }
        return m_fault;
    }

    // Returns for how long the port hangs, in milliseconds, and resets the time to 0.
    int takeHang() { return m_hang > 0 ? m_hang.exchange(0) : 0; }

    void inChild() { new (&m_mutex) std::mutex; }

private:
    Fault readFile(const char *file)
    {
        char text[64] = "", word[32] = "";
        int number = 1000;
        struct stat info
        {
        };
        const int fd = static_cast<int>(file ? syscall(SYS_openat, AT_FDCWD, file, O_RDONLY | O_CLOEXEC) : -1);
        if (fd >= 0 && fstat(fd, &info) == 0 && read(fd, text, sizeof text - 1) > 0)
            sscanf(text, "%31s %d", word, &number);
        syscall(SYS_close, fd);
        int now = Hang;
        while (now > None && strcmp(word, faultNames[now]) != 0)
            --now;
        const int64_t changed = info.st_mtim.tv_sec * 1000000000 + info.st_mtim.tv_nsec;
        const int64_t seen = now == Hang ? changed + static_cast<int64_t>(info.st_ino) : 0;
        if (seen != m_hangSeen)
            m_hang = seen != 0 ? number : 0;
        m_hangSeen = seen;
        return static_cast<Fault>(now);
    }

    std::mutex m_mutex;
    std::atomic<int> m_fault{None}, m_hang{0};
    int64_t m_lastLook = -1000;
    int64_t m_hangSeen = 0; // identifies the file's version, so that each version causes one hang
};

} // namespace lpt
#pragma GCC visibility pop
