// SPDX-License-Identifier: MIT
// Measures how fast the whole window responds to a remote client: the time to receive the 400 numbers returned by
// CALCulate:DATA? as a REAL,64 block, and the delay between the vector of a single sweep and the response that it has
// ended. Baseline for the former: a bare server in the same event loop that sends the same number of prepared bytes.
// Usage: remote_speed <folder with CalvornAsync> <initial settings file>. Prints one line for each:
// name,median ms,95th percentile ms,median ms of the baseline.
#include "app/frm_sweep.h"
#include "platform/profile_file.h"
#include "platform/qt_desktop.h"

#include <QApplication>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace calvorn;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kQueries = 2'000;
constexpr int kSweeps = 200;
constexpr std::size_t kAnswer = 2 + 4 + 400 * 8 + 1; // "#43200", the numbers, LF

double milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

// A client that waits for each response.
class Client
{
public:
    explicit Client(quint16 port)
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const int on = 1;
        m_isIn = connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0 &&
                 setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on) == 0;
    }
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;
    ~Client() { close(m_socket); }

    bool tell(const QByteArray &message)
    {
        return m_isIn && send(m_socket, message.data(), static_cast<std::size_t>(message.size()), 0) == message.size();
    }

    // Returns false unless the response has exactly this many bytes and ends with a line feed.
    bool ask(const QByteArray &message, std::size_t bytes)
    {
        std::vector<char> answer(bytes);
        return tell(message) && recv(m_socket, answer.data(), bytes, MSG_WAITALL) == static_cast<ssize_t>(bytes) &&
               answer.back() == '\n';
    }

private:
    int m_socket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    bool m_isIn = false;
};

// The results of the client thread; a list is empty if a response was wrong.
struct Found
{
    std::vector<double> floor;
    std::vector<double> queries;
    std::vector<Clock::time_point> ends;
};

std::vector<double> timesOf(Client &client, const QByteArray &query)
{
    std::vector<double> times;
    for (int i = 0; i < kQueries; ++i) {
        const Clock::time_point began = Clock::now();
        if (!client.ask(query, kAnswer))
            return {};
        times.push_back(milliseconds(Clock::now() - began));
    }
    return times;
}

Found measure(quint16 port, quint16 barePort)
{
    Found found;
    Client client(port);
    Client bare(barePort);
    if (!client.tell("FORM REAL;:FREQ:STAR 6.5 MHZ;STOP 7.7 MHZ\n"))
        return found;
    for (int i = 0; i < kSweeps; ++i) {
        if (!client.ask("INIT;*OPC?\n", 2))
            return found;
        found.ends.push_back(Clock::now());
    }
    found.floor = timesOf(bare, "CALC:DATA?\n");
    found.queries = timesOf(client, "CALC:DATA?\n");
    return found;
}

double quantile(std::vector<double> times, double share)
{
    const auto place = times.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(times.size() - 1));
    std::nth_element(times.begin(), place, times.end());
    return *place;
}

quint16 freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

bool prepare(const QTemporaryDir &folder, const QString &programs, const QString &settings, quint16 port)
{
    const QString path = folder.filePath(QStringLiteral("Calvorn.ini"));
    if (!QFile::copy(programs + QStringLiteral("/CalvornAsync"), folder.filePath(QStringLiteral("CalvornAsync"))) ||
        !QFile::copy(settings, path) || !QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner))
        return false;
    writeProfileString(path, QStringLiteral("Simulator"), QStringLiteral("Pace"), QStringLiteral("none"));
    writeProfileString(path, QStringLiteral("Remote"), QStringLiteral("On"), QStringLiteral("1"));
    writeProfileString(path, QStringLiteral("Remote"), QStringLiteral("Port"), QString::number(port));
    return true;
}

int run(const QString &programs, const QString &settings)
{
    const QTemporaryDir folder;
    const quint16 port = freePort();
    if (!prepare(folder, programs, settings, port))
        return 1;
    Configuration configuration;
    QtDesktop desktop;
    SweepStation station({folder.path(), folder.path(), folder.path()}, configuration, desktop, desktop);
    FrmSweep window(station);
    if (!window.start())
        return 1;

    // The bare server: sends prepared bytes for each line received.
    QTcpServer bare;
    bare.listen(QHostAddress::LocalHost);
    QObject::connect(&bare, &QTcpServer::newConnection, &bare, [&bare] {
        QTcpSocket *socket = bare.nextPendingConnection();
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            while (socket->canReadLine()) {
                socket->readLine();
                socket->write(QByteArray(kAnswer - 1, ' ') + '\n');
            }
        });
    });
    std::vector<Clock::time_point> vectors;
    QObject::connect(station.instrument.driver(), &AcquisitionDriver::aVettore, &window,
                     [&vectors] { vectors.push_back(Clock::now()); });

    Found found;
    std::thread client([&found, port, barePort = bare.serverPort()] {
        found = measure(port, barePort);
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QApplication::exec();
    client.join();
    window.close();
    if (found.queries.empty() || found.floor.empty() || vectors.size() < found.ends.size())
        return 1;

    std::vector<double> late;
    for (const Clock::time_point end : found.ends)
        late.push_back(milliseconds(end - *std::prev(std::upper_bound(vectors.begin(), vectors.end(), end))));
    std::printf("CALC:DATA? of 400 numbers as REAL 64,%.3f,%.3f,%.3f\n", quantile(found.queries, 0.5),
                quantile(found.queries, 0.95), quantile(found.floor, 0.5));
    std::printf("INIT;*OPC? after the vector,%.3f,%.3f,\n", quantile(late, 0.5), quantile(late, 0.95));
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: remote_speed <folder with CalvornAsync> <settings file>\n");
        return 2;
    }
    const int code = run(arguments[1], arguments[2]);
    if (code != 0)
        std::fprintf(stderr, "the window does not answer as it should\n");
    return code;
}
