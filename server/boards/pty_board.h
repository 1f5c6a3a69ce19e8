// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/serial_board.h"
#include "server/boards/simulator_settings.h"

#include <QString>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <thread>

namespace calvorn {

// Runs a simulated board behind a pseudo-terminal in raw mode, in its own thread, which sleeps while there is nothing
// to do. When paced, a byte takes ten bits at 115,200 baud in either direction, on average: bytes arrive in batches of
// about 1 ms. Also simulates the faults that concern bytes.
class PtyBoard
{
public:
    // sweepBytes: the size of one sweep of this board; the faults Silence, Half and Unplug depend on it.
    // onUnplugged: called in the board's thread when the fault Unplug removes the port.
    // Throws std::runtime_error with one sentence for the user when the system cannot provide a pseudo-terminal or a
    // thread.
    PtyBoard(std::unique_ptr<SerialBoard> board, const SimulatorSettings &settings, int sweepBytes,
             std::function<void()> onUnplugged = {});
    ~PtyBoard();

    PtyBoard(const PtyBoard &) = delete;
    PtyBoard &operator=(const PtyBoard &) = delete;

    // Path of the device that the host opens.
    QString devicePath() const { return m_path; }

private:
    using Clock = std::chrono::steady_clock;

    void openTerminal();
    void closeTerminal();
    void run();
    int sleepTime() const;
    bool takeFromHost();
    void produce(Clock::time_point now);
    void makeFault(std::uint8_t byte);
    bool isMute() const;
    bool flush();

    std::unique_ptr<SerialBoard> m_board;
    SimulatorSettings m_settings;
    std::uint64_t m_sweepBytes;
    std::function<void()> m_onUnplugged;
    int m_master = -1;
    int m_slave = -1; // stays open, so that the terminal survives a host that closes and reopens it
    int m_wake = -1;
    QString m_path;
    std::string m_pending;    // produced, but not yet taken by the terminal
    std::uint64_t m_made = 0; // number of bytes from the board so far
    bool m_talking = false;   // the board had a byte at the last request
    Clock::time_point m_lineFree;
    std::minstd_rand m_random;
    std::atomic<bool> m_quit{false};
    bool m_unplugged = false; // by the fault; used only by the board's thread
    std::thread m_thread;
};

} // namespace calvorn
