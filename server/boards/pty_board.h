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
// to do. With pacing, a byte takes ten bit times at 115,200 baud in either direction, on average: bytes are delivered
// in batches of about 1 ms. Also simulates the faults that affect bytes.
class PtyBoard
{
public:
    // sweepBytes: the size of one sweep from this board; the faults Silence, Half and Unplug depend on it.
    // onUnplugged: called in the board's thread when the Unplug fault removes the port.
    // Throws std::runtime_error with a message for the user if the system cannot provide a pseudo-terminal or a
    // thread.
    PtyBoard(std::unique_ptr<SerialBoard> board, const SimulatorSettings &settings, int sweepBytes,
             std::function<void()> onUnplugged = {});
    ~PtyBoard();

    PtyBoard(const PtyBoard &) = delete;
    PtyBoard &operator=(const PtyBoard &) = delete;

    // The path of the terminal device for the host to open.
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
    int m_slave = -1; // kept open so that the terminal still exists after the host closes it
    int m_wake = -1;
    QString m_path;
    std::string m_pending;    // produced, but not yet accepted by the terminal
    std::uint64_t m_made = 0; // number of bytes from the board so far
    bool m_talking = false;   // nextByte() last returned a byte
    Clock::time_point m_lineFree;
    std::minstd_rand m_random;
    std::atomic<bool> m_quit{false};
    bool m_unplugged = false; // set by the Unplug fault; used only in the board's thread
    std::thread m_thread;
};

} // namespace calvorn
