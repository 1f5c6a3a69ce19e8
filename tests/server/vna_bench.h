// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/vna_board.h"
#include "server/drivers/vna_driver.h"
#include "server/links/byte_link.h"
#include "tests/server/error_count.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>

#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace calvorn {

// An in-memory line to a board. It delivers some of the board's bytes in each iteration of the event loop, and can
// damage them.
class MemoryLink : public ByteLink
{
public:
    // Returns the bytes to deliver instead of `byte`; `index` counts the bytes since the link was created.
    using Tamper = std::function<QByteArray(quint64 index, char byte)>;

    MemoryLink(VnaBoard &board, Tamper tamper)
        : m_board(board)
        , m_tamper(std::move(tamper))
    {
        m_timer.setInterval(0);
        connect(&m_timer, &QTimer::timeout, this, &MemoryLink::pass);
    }

    bool isOpen() const override { return m_open; }

    void write(const QByteArray &bytes) override
    {
        if (m_fatal == Call::Write) {
            unplug();
            return;
        }
        if (m_board.isReplying() || !m_arrived.isEmpty())
            ++m_interruptions;
        m_written.append(bytes);
        for (const char byte : bytes)
            m_board.receive(static_cast<std::uint8_t>(byte));
        m_lineBytes = bytes.size();
        m_lineTime.start();
        m_timer.start();
    }

    QByteArray read() override { return std::exchange(m_arrived, QByteArray()); }

    bool waitForBytes(int /*milliseconds*/) override
    {
        for (int piece = 0; m_arrived.isEmpty() && m_board.isReplying() && piece < 10'000; ++piece)
            fetch();
        return !m_arrived.isEmpty();
    }

    void discard() override
    {
        m_arrived.clear();
        if (m_fatal == Call::Discard)
            unplug();
    }

    void close() override
    {
        m_open = false;
        m_timer.stop();
    }

    void unplug()
    {
        close();
        emit lost(QStringLiteral("The device is gone."));
    }

    // Unplugs the device so that only the next call of this kind notices the loss.
    enum class Call { Write, Discard };
    void unplugUnnoticedUntil(Call call) { m_fatal = call; }

    // Delivers unsolicited bytes.
    void inject(const QByteArray &bytes)
    {
        m_arrived += bytes;
        emit bytesArrived();
    }

    // Stops delivery once this many bytes have been delivered since the link was created.
    void holdAfter(quint64 bytes) { m_hold = bytes; }
    void release() { m_hold = std::numeric_limits<quint64>::max(); }

    // Makes each byte take as long as ten bits at 115,200 baud, in both directions.
    void setPaced()
    {
        m_paced = true;
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(1);
    }

    const QList<QByteArray> &written() const { return m_written; }
    // Commands written while reply bytes were still undelivered or unread.
    int interruptions() const { return m_interruptions; }
    quint64 passed() const { return m_index; }

private:
    static constexpr int kPiece = 173; // not a multiple of the sample size

    void pass()
    {
        fetch();
        if (!m_board.isReplying())
            m_timer.stop();
        if (m_open && !m_arrived.isEmpty())
            emit bytesArrived();
    }

    qint64 bytesDue() const
    {
        return m_paced ? m_lineTime.nsecsElapsed() * 11'520 / 1'000'000'000 - m_lineBytes : kPiece;
    }

    void fetch()
    {
        const qint64 due = bytesDue();
        for (qint64 count = 0; m_open && count < due && m_index < m_hold; ++count, ++m_lineBytes) {
            const auto byte = m_board.nextByte();
            if (!byte)
                return;
            const char plain = static_cast<char>(*byte);
            m_arrived += m_tamper ? m_tamper(m_index, plain) : QByteArray(1, plain);
            ++m_index;
        }
    }

    VnaBoard &m_board;
    Tamper m_tamper;
    QTimer m_timer;
    QByteArray m_arrived;
    QList<QByteArray> m_written;
    bool m_open = true;
    std::optional<Call> m_fatal;
    quint64 m_hold = std::numeric_limits<quint64>::max();
    int m_interruptions = 0;
    bool m_paced = false;
    QElapsedTimer m_lineTime;
    qint64 m_lineBytes = 0; // bytes of the command and its reply since m_lineTime started
    quint64 m_index = 0;
};

// A simulated MiniVNA that records its samples.
class ProbedVna : public VnaBoard
{
public:
    using VnaBoard::VnaBoard;

    void receive(std::uint8_t byte) override
    {
        if (isReplying())
            ++m_bytesWhileReplying;
        else
            hear(static_cast<char>(byte));
        VnaBoard::receive(byte);
    }

    double generatorHz() const { return m_hertz; } // 0: off
    // Bytes that the board received while it was replying.
    std::uint64_t bytesWhileReplying() const { return m_bytesWhileReplying; }

    // Discards the records, then records the next `atMost` samples of sweeps. Commands with fewer than 400 samples
    // set the generator or check the line and are not recorded.
    void recordSamples(std::size_t atMost)
    {
        m_recordAtMost = atMost;
        m_records.clear();
        m_records.reserve(atMost);
    }
    const std::vector<VnaBoardSample> &samples() const { return m_records; }

private:
    // A command consists of four numbers; the third is the number of samples.
    void hear(char byte)
    {
        m_command += byte;
        if (m_command.count('\r') < 4)
            return;
        m_isSweep = m_command.split('\r').at(2) == "400";
        m_command.clear();
    }

    void sampled(const VnaBoardSample &sample) override
    {
        m_hertz = sample.hertz;
        if (m_isSweep && m_records.size() < m_recordAtMost)
            m_records.push_back(sample);
    }

    QByteArray m_command;
    bool m_isSweep = false;
    double m_hertz = 0.0;
    std::uint64_t m_bytesWhileReplying = 0;
    std::size_t m_recordAtMost = 0;
    std::vector<VnaBoardSample> m_records;
};

inline SimulatorSettings vnaSettings(DeviceKind device = DeviceKind::Bandpass)
{
    SimulatorSettings settings;
    settings.paced = false;
    settings.clockHz = 400e6;
    settings.device = device;
    return settings;
}

// The driver, its signals, and a simulated MiniVNA at COM100.
struct VnaBench
{
    static constexpr int kPort = 100;
    static constexpr int kPoints = 400;
    static constexpr int kWindow = 8; // the maximum number of unacknowledged vectors

    explicit VnaBench(const SimulatorSettings &made = vnaSettings(), MemoryLink::Tamper tamper = {})
        : board(made)
        , driver([this, tamper](int port, const LineSettings &) -> std::shared_ptr<ByteLink> {
            if (port != kPort)
                throw std::runtime_error("There is no such port.");
            auto opened = std::make_shared<MemoryLink>(board, tamper);
            link = opened.get();
            return opened;
        })
    {
        driver.SetXtalFrequency(20e6);
        driver.SetMultiplier(20);
        // Acknowledges every vector, as the program does. The queued connection delays the acknowledgement.
        QObject::connect(
            &driver, &VnaDriver::aVettore, &driver, [this] { driver.VectorsTaken(1); }, Qt::QueuedConnection);
    }

    bool open() { return driver.OpenPort(kPort, QStringLiteral("115200,N,8,1")); }

    // Calls the driver in the program's order. Modes: 1 angle, 2 return loss, 3 device under test.
    void start(int startHz, int stepHz, short mode = 3)
    {
        driver.SetMode(mode);
        driver.PrepareSweep(startHz, stepHz, kPoints);
        driver.RunSweep();
    }

    QList<int> vector(qsizetype index) { return vectors.at(index).at(0).value<QList<int>>(); }

    int errorsWith(int wanted) const { return errorsWithCode(errors, wanted); }

    ProbedVna board;
    MemoryLink *link = nullptr; // valid while the port is open
    VnaDriver driver;
    QSignalSpy vectors{&driver, &VnaDriver::aVettore};
    QSignalSpy errors{&driver, &VnaDriver::aErrore};
    QSignalSpy completes{&driver, &VnaDriver::aComplete};
};

} // namespace calvorn
