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

// Puts a simulated board behind a pseudo-terminal in raw mode, in a thread of its own that sleeps while there is
// nothing to do. Paced, a byte takes ten bits at 115,200 baud in either direction, on average: bytes arrive in batches
// of about 1 ms. The faults that concern bytes are made here.
class PtyBoard
{
public:
    // sweepBytes: how many bytes a sweep of this board has; the faults Silence, Half and Unplug count by it.
    // onUnplugged: called in the board's thread when the fault Unplug takes the port away.
    // Throws std::runtime_error with one sentence for the user when the system gives no pseudo-terminal or no thread.
    PtyBoard(std::unique_ptr<SerialBoard> board, const SimulatorSettings &settings, int sweepBytes,
             std::function<void()> onUnplugged = {});
    ~PtyBoard();

    PtyBoard(const PtyBoard &) = delete;
    PtyBoard &operator=(const PtyBoard &) = delete;

    // The device that the host opens.
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
    int m_slave = -1; // kept open, so that the terminal outlives a host that goes and comes back
    int m_wake = -1;
    QString m_path;
    std::string m_pending;    // made, and not yet taken by the terminal
    std::uint64_t m_made = 0; // bytes of the board so far
    bool m_talking = false;   // the board had a byte when it was asked last
    Clock::time_point m_lineFree;
    std::minstd_rand m_random;
    std::atomic<bool> m_quit{false};
    bool m_unplugged = false; // by the fault; of the board's thread
    std::thread m_thread;
};

} // namespace calvorn
