// SPDX-License-Identifier: MIT
// The acquisition server with the real drivers and simulated boards. Logs the boards' actions, one event per line, to
// the file named by CALVORN_WATCHED: each generator frequency, each byte latched into the outputs, each potentiometer
// position, and each command on a serial line.
#include "protocol/lpt_wiring.h"
#include "server/boards/pic_board.h"
#include "server/boards/pty_board.h"
#include "server/boards/simulated_parallel_port.h"
#include "server/boards/vna_board.h"
#include "server/drivers/lpt_driver.h"
#include "server/drivers/pic_driver.h"
#include "server/drivers/pic_frames.h"
#include "server/drivers/serial_opener.h"
#include "server/drivers/vna_driver.h"
#include "server/links/line_settings.h"
#include "server/links/serial_link.h"
#include "tests/support/serve.h"

#include "lpt_adaptor.h"
#include "pic_adaptor.h"
#include "vna_adaptor.h"

#include <QFile>

#include <utility>

using namespace calvorn;

namespace {

constexpr int kVnaSweepBytes = 1600;

// Appends an event to the log: "Hz 1000000.000000", "outputs 5 0", "pot 128 0" or "said A1000000".
void record(const QByteArray &event)
{
    QFile file(qEnvironmentVariable("CALVORN_WATCHED"));
    if (file.open(QIODevice::Append))
        file.write(event + '\n');
}

class Watch
{
public:
    void see(double hertz)
    {
        if (hertz == m_last)
            return;
        m_last = hertz;
        record("Hz " + QByteArray::number(hertz, 'f', 6));
    }

private:
    double m_last = 0.0;
};

class WatchedPort : public SimulatedParallelPort
{
public:
    using SimulatedParallelPort::SimulatedParallelPort;

    void writeData(std::uint8_t value) override
    {
        SimulatedParallelPort::writeData(value);
        look();
    }

    void writeControl(std::uint8_t value) override
    {
        SimulatedParallelPort::writeControl(value);
        look();
    }

private:
    void look()
    {
        m_watch.see(dds().output().hertz);
        if (std::exchange(m_latches, latches().latches()) != m_latches)
            record("outputs " + QByteArray::number(latches().aux1()) + ' ' + QByteArray::number(latches().aux2()));
        if (std::exchange(m_stops, pot().stops()) != m_stops)
            record("pot " + QByteArray::number(pot().wiper(0)) + ' ' + QByteArray::number(pot().wiper(1)));
    }

    Watch m_watch;
    std::uint64_t m_latches = 0;
    int m_stops = 0;
};

// Logs the host's commands line by line; "!" needs no line ending.
template <typename Board>
class ListeningBoard : public Board
{
public:
    using Board::Board;

    void receive(std::uint8_t byte) override
    {
        if (byte != '\r')
            m_line.append(static_cast<char>(byte));
        if (byte == '\r' || byte == '!')
            record("said " + std::exchange(m_line, QByteArray()));
        Board::receive(byte);
    }

private:
    QByteArray m_line;
};

class WatchedVna : public ListeningBoard<VnaBoard>
{
public:
    using ListeningBoard::ListeningBoard;

private:
    void sampled(const VnaBoardSample &sample) override { m_watch.see(sample.hertz); }

    Watch m_watch;
};

// Keeps the board alive for as long as its line exists.
struct WatchedLine
{
    WatchedLine(std::unique_ptr<SerialBoard> made, const SimulatorSettings &settings, int sweepBytes)
        : board(std::move(made), settings, sweepBytes)
        , link(board.devicePath(), parseLineSettings(QStringLiteral("115200,N,8,1")))
    {
    }

    PtyBoard board;
    SerialLink link;
};

template <typename Board>
std::shared_ptr<ByteLink> openWatched(const QString &iniPath, int sweepBytes)
{
    const SimulatorSettings settings = readSerialSimulatorSettings(iniPath);
    auto line = std::make_shared<WatchedLine>(std::make_unique<Board>(settings), settings, sweepBytes);
    return {line, &line->link};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString iniPath = QCoreApplication::applicationDirPath() + QStringLiteral("/Calvorn.ini");
    LptDriver lpt([&](int) { return OpenedPort(std::make_unique<WatchedPort>(readSimulatorSettings(iniPath))); });
    VnaDriver vna([&](int, const auto &) { return openWatched<WatchedVna>(iniPath, kVnaSweepBytes); });
    PicDriver pic([&](int, const auto &) { return openWatched<ListeningBoard<PicBoard>>(iniPath, kPicFrameBytes); },
                  [&] { return readPicSettings(iniPath); });
    new LptAdaptor(&lpt);
    new PicAdaptor(&pic);
    new VnaAdaptor(&vna);

    return calvorn::test::serve(application, [&](QDBusConnection &client) {
        client.registerObject(QStringLiteral("/aLPT"), &lpt, QDBusConnection::ExportAdaptors);
        client.registerObject(QStringLiteral("/aPIC"), &pic, QDBusConnection::ExportAdaptors);
        client.registerObject(QStringLiteral("/aVNA"), &vna, QDBusConnection::ExportAdaptors);
    });
}
