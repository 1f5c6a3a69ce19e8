// SPDX-License-Identifier: MIT
// The acquisition server with its own drivers and simulated boards, which writes down every frequency that the
// generator of a board makes: one number in Hz for each change, into the file that CALVORN_WATCHED names.
#include "platform/lpt_wiring.h"
#include "server/boards/pty_board.h"
#include "server/boards/simulated_parallel_port.h"
#include "server/boards/simulator_settings.h"
#include "server/boards/vna_board.h"
#include "server/drivers/lpt_driver.h"
#include "server/drivers/vna_driver.h"
#include "server/links/line_settings.h"
#include "server/links/serial_link.h"

#include "lpt_adaptor.h"
#include "vna_adaptor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServer>
#include <QFile>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTextStream>

#include <unistd.h>

using namespace calvorn;

namespace {

constexpr int kVnaSweepBytes = 1600;

class Watch
{
public:
    void see(double hertz)
    {
        if (hertz == m_last)
            return;
        m_last = hertz;
        QFile file(qEnvironmentVariable("CALVORN_WATCHED"));
        if (file.open(QIODevice::Append))
            file.write(QByteArray::number(hertz, 'f', 6) + '\n');
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
        m_watch.see(dds().output().hertz);
    }

private:
    Watch m_watch;
};

class WatchedVna : public VnaBoard
{
public:
    using VnaBoard::VnaBoard;

    std::optional<std::uint8_t> nextByte() override
    {
        const auto byte = VnaBoard::nextByte();
        m_watch.see(generatorHz());
        return byte;
    }

private:
    Watch m_watch;
};

// The board goes with its line.
struct WatchedLine
{
    explicit WatchedLine(const SimulatorSettings &settings)
        : board(std::make_unique<WatchedVna>(settings), settings, kVnaSweepBytes)
        , link(board.devicePath(), parseLineSettings(QStringLiteral("115200,N,8,1")))
    {
    }

    PtyBoard board;
    SerialLink link;
};

std::shared_ptr<ByteLink> openWatchedVna(const QString &iniPath)
{
    SimulatorSettings settings = readSimulatorSettings(iniPath);
    settings.clockHz = 400e6;
    auto line = std::make_shared<WatchedLine>(settings);
    return {line, &line->link};
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QString iniPath = QCoreApplication::applicationDirPath() + QStringLiteral("/Calvorn.ini");
    LptDriver lpt([&](int) { return OpenedPort(std::make_unique<WatchedPort>(readSimulatorSettings(iniPath))); });
    VnaDriver vna([&](int, const auto &) { return openWatchedVna(iniPath); });
    new LptAdaptor(&lpt);
    new VnaAdaptor(&vna);

    const QTemporaryDir folder;
    QDBusServer server(QStringLiteral("unix:path=") + folder.filePath(QStringLiteral("socket")));
    QDBusConnection client(QString{});
    QObject::connect(&server, &QDBusServer::newConnection, &application, [&](const QDBusConnection &connection) {
        client = connection;
        client.registerObject(QStringLiteral("/aLPT"), &lpt, QDBusConnection::ExportAdaptors);
        client.registerObject(QStringLiteral("/aVNA"), &vna, QDBusConnection::ExportAdaptors);
    });
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [] { QCoreApplication::exit(0); });
    QTextStream(stdout) << server.address() << Qt::endl;
    return QCoreApplication::exec();
}
