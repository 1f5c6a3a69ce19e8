// SPDX-License-Identifier: MIT
#include "server/boards/pty_board.h"

#include "server/links/thread_start.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace calvorn {

namespace {

constexpr std::chrono::nanoseconds kByteTime{86'806}; // ten bits at 115,200 baud
constexpr int kBatchMs = 1;
constexpr int kChatterMs = 50;
constexpr int kUnpacedBatch = 2048;
constexpr std::uint64_t kFaultEvery = 997;
constexpr int kGarbageBytes = 10'000;
constexpr auto kChatter = "HELLO\r";

} // namespace

PtyBoard::PtyBoard(std::unique_ptr<SerialBoard> board, const SimulatorSettings &settings, int sweepBytes,
                   std::function<void()> onUnplugged)
    : m_board(std::move(board))
    , m_settings(settings)
    , m_sweepBytes(static_cast<std::uint64_t>(sweepBytes))
    , m_onUnplugged(std::move(onUnplugged))
    , m_lineFree(Clock::now())
    , m_random(static_cast<std::minstd_rand::result_type>(settings.seed))
{
    openTerminal();
    try {
        m_thread = startThread([this] { run(); });
    } catch (...) {
        closeTerminal();
        throw;
    }
}

PtyBoard::~PtyBoard()
{
    m_quit = true;
    eventfd_write(m_wake, 1);
    m_thread.join();
    closeTerminal();
}

void PtyBoard::openTerminal()
{
    std::array<char, 64> name{};
    m_wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (m_wake >= 0 && m_master >= 0 && grantpt(m_master) == 0 && unlockpt(m_master) == 0 &&
        ptsname_r(m_master, name.data(), name.size()) == 0)
        m_slave = open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios attributes{};
    if (m_slave < 0 || tcgetattr(m_slave, &attributes) != 0) {
        closeTerminal();
        throw std::runtime_error(
            QCoreApplication::translate("SerialPort", "The system has no pseudo-terminal for the simulated board.")
                .toStdString());
    }
    // A new terminal echoes, so it would send the board's own bytes back to the board.
    cfmakeraw(&attributes);
    tcsetattr(m_slave, TCSANOW, &attributes);
    m_path = QString::fromLocal8Bit(name.data());
}

void PtyBoard::closeTerminal()
{
    for (int *descriptor : {&m_master, &m_slave, &m_wake}) {
        if (*descriptor >= 0)
            close(std::exchange(*descriptor, -1));
    }
}

void PtyBoard::run()
{
    while (!m_quit && !m_unplugged) {
        const auto wanted = static_cast<short>(POLLIN | (m_pending.empty() ? 0 : POLLOUT));
        std::array<pollfd, 2> descriptors{{{m_master, wanted, 0}, {m_wake, POLLIN, 0}}};
        const int ready = poll(descriptors.data(), descriptors.size(), sleepTime());
        if (ready < 0 && errno != EINTR)
            break;
        if ((descriptors[0].revents & (POLLERR | POLLHUP)) != 0)
            break;
        const bool asked = (descriptors[0].revents & POLLIN) != 0 && takeFromHost();
        if (!flush())
            continue;
        if (m_talking || asked || ready == 0)
            produce(Clock::now());
        flush();
    }
    if (m_unplugged)
        close(std::exchange(m_master, -1));
}

// Returns -1 (no time limit) while the board has nothing to send.
int PtyBoard::sleepTime() const
{
    if (!m_pending.empty())
        return -1;
    if (m_talking)
        return m_settings.paced ? kBatchMs : 0;
    return m_settings.fault == SimulatorFault::Chatter ? kChatterMs : -1;
}

bool PtyBoard::takeFromHost()
{
    std::array<char, 256> bytes{};
    const ssize_t count = ::read(m_master, bytes.data(), bytes.size());
    for (ssize_t index = 0; index < count; ++index)
        m_board->receive(static_cast<std::uint8_t>(bytes[static_cast<std::size_t>(index)]));
    // The board's reply starts after it has received the last bit of the command.
    if (!m_talking && count > 0)
        m_lineFree = std::max(m_lineFree, Clock::now()) + count * kByteTime;
    return count > 0;
}

// Fetches from the board all bytes whose transmission would be complete by now.
void PtyBoard::produce(Clock::time_point now)
{
    const bool chatters = !m_talking && m_settings.fault == SimulatorFault::Chatter;
    m_talking = !isMute();
    for (int count = 0; count < kUnpacedBatch && m_talking && !m_unplugged; ++count) {
        if (m_settings.paced && m_lineFree + kByteTime > now)
            return;
        const auto byte = m_board->nextByte();
        if (!byte) {
            m_talking = false;
            if (chatters && count == 0)
                m_pending += kChatter;
            return;
        }
        makeFault(*byte);
        m_lineFree += kByteTime + m_board->idleTime();
    }
}

void PtyBoard::makeFault(std::uint8_t byte)
{
    if (m_made == 0 && m_settings.fault == SimulatorFault::Garbage) {
        for (int count = 0; count < kGarbageBytes; ++count)
            m_pending += static_cast<char>(m_random() >> 8);
        m_lineFree += kGarbageBytes * kByteTime;
    }
    ++m_made;
    if (isMute()) {
        m_talking = false;
        return;
    }
    const bool struck = m_made % kFaultEvery == 0;
    if (struck && m_settings.fault == SimulatorFault::Drop)
        return;
    if (struck && m_settings.fault == SimulatorFault::Corrupt)
        byte = static_cast<std::uint8_t>(byte ^ 0x10U);
    m_pending += static_cast<char>(byte);
    if (struck && m_settings.fault == SimulatorFault::Add)
        m_pending += static_cast<char>(m_random() >> 8);
    if (m_settings.fault != SimulatorFault::Unplug || 2 * m_made <= 3 * m_sweepBytes)
        return;
    if (!std::exchange(m_unplugged, true) && m_onUnplugged)
        m_onUnplugged();
}

bool PtyBoard::isMute() const
{
    return (m_settings.fault == SimulatorFault::Silence && m_made > 2 * m_sweepBytes) ||
           (m_settings.fault == SimulatorFault::Half && 2 * m_made > 3 * m_sweepBytes);
}

// Returns false if the terminal accepts no more bytes because the host does not read.
bool PtyBoard::flush()
{
    while (!m_pending.empty()) {
        const ssize_t count = ::write(m_master, m_pending.data(), m_pending.size());
        if (count <= 0) {
            m_lineFree = Clock::now();
            return false;
        }
        m_pending.erase(0, static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace calvorn
