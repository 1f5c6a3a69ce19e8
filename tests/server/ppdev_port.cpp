// SPDX-License-Identifier: MIT
// Tests opening a real parallel port: finding the port by its address, claiming it in the right order, reporting every
// system error with a message, and closing every descriptor.
#include "server/links/ppdev_port.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include <fcntl.h>
#include <linux/parport.h>
#include <linux/ppdev.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace calvorn;

namespace {

constexpr unsigned long kOpen = 0; // stands for open() among the ioctl requests

// A fake kernel: requests fail with the configured errno, the configured number of times.
class PlayedSystem : public PortSystem
{
public:
    struct Failure
    {
        int error;
        int times = 1'000'000;
    };

    int open(const QString &path) override
    {
        paths.append(path);
        const int failed = failure(kOpen);
        if (failed != 0)
            return failed;
        descriptors.insert(++last);
        return last;
    }

    int ioctl(int descriptor, unsigned long request, void *argument) override
    {
        if (!descriptors.contains(descriptor))
            return -EBADF;
        requests.push_back(request);
        const int failed = failure(request);
        if (failed != 0)
            return failed;
        if (request == PPGETMODES)
            *static_cast<unsigned *>(argument) = modes;
        else if (request == PPDATADIR)
            direction = *static_cast<int *>(argument);
        else if (request == PPRSTATUS)
            *static_cast<unsigned char *>(argument) = 0xA5;
        else if (request == PPWDATA || request == PPWCONTROL)
            written.push_back(*static_cast<unsigned char *>(argument));
        return 0;
    }

    int ioctlWithin(std::chrono::milliseconds limit, int descriptor, unsigned long request, void *argument) override
    {
        longest = std::max(longest, limit);
        return ioctl(descriptor, request, argument);
    }

    void close(int descriptor) override { descriptors.erase(descriptor); }

    std::map<unsigned long, Failure> failures;
    unsigned modes = PARPORT_MODE_PCSPP | PARPORT_MODE_TRISTATE;
    int direction = -1;
    int last = 2;
    QStringList paths;
    std::vector<unsigned long> requests;
    std::vector<unsigned char> written;
    std::set<int> descriptors;
    std::chrono::milliseconds longest{};

private:
    int failure(unsigned long request)
    {
        const auto found = failures.find(request);
        if (found == failures.end() || found->second.times-- <= 0)
            return 0;
        return -found->second.error;
    }
};

} // namespace

class PpdevPortTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void portsAreListed();
    void opensByAddress();
    void accessesAreRaw();
    void sharedWhenOthersAreThere();
    void failures_data();
    void failures();
    void noDriver();
    void noSuchAddress();
    void usbPrinterIsNamed();
    void modesAreChecked();
    void printerDriverIsNamed();
    void anotherProgramIsNamed();
    void lostPort_data();
    void lostPort();
    void waits();
    void blockedCallIsInterrupted();
    void kernelErrorsComeBack();

private:
    void addPort(int number, const QByteArray &base);
    void addUser(int number, const QString &name);
    QString sentence(int base = 888);

    std::unique_ptr<QTemporaryDir> m_folder;
    ParportPlaces m_places;
    PlayedSystem m_system;
};

void PpdevPortTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_places = {m_folder->filePath(QStringLiteral("parport")), m_folder->filePath(QStringLiteral("dev"))};
    m_system = PlayedSystem();
    addPort(0, "632\t1656\n");
    addPort(11, "888\t1912\n");
    QVERIFY(QDir().mkpath(m_places.ports + QStringLiteral("/default")));
}

void PpdevPortTest::addPort(int number, const QByteArray &base)
{
    const QString folder = QStringLiteral("%1/parport%2").arg(m_places.ports).arg(number);
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/devices")));
    QFile file(folder + QStringLiteral("/base-addr"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(base), qint64{base.size()});
}

void PpdevPortTest::addUser(int number, const QString &name)
{
    QVERIFY(QDir().mkpath(QStringLiteral("%1/parport%2/devices/%3").arg(m_places.ports).arg(number).arg(name)));
}

// Returns the error message if the port cannot be opened, otherwise "opened".
QString PpdevPortTest::sentence(int base)
{
    try {
        PpdevPort::open(base, m_places, m_system);
    } catch (const PortError &error) {
        return QString::fromUtf8(error.what());
    }
    return QStringLiteral("opened");
}

void PpdevPortTest::portsAreListed()
{
    addPort(2, "0\t0\n"); // a USB adapter
    const QVector<ParportEntry> entries = listParports(m_places);
    QCOMPARE(entries.size(), 3);
    QCOMPARE(entries.at(0).number, 0);
    QCOMPARE(entries.at(0).base, 0x278);
    QCOMPARE(entries.at(1).number, 2);
    QCOMPARE(entries.at(1).base, 0);
    QCOMPARE(entries.at(2).number, 11);
    QCOMPARE(entries.at(2).base, 0x378);
    QVERIFY(listParports({m_folder->filePath(QStringLiteral("nowhere")), {}}).isEmpty());
}

void PpdevPortTest::opensByAddress()
{
    {
        const auto port = PpdevPort::open(0x378, m_places, m_system);
        QCOMPARE(m_system.paths, QStringList(m_places.devices + QStringLiteral("/parport11")));
        const std::vector<unsigned long> wanted = {PPGETMODES, PPEXCL, PPCLAIM, PPDATADIR};
        QCOMPARE(m_system.requests, wanted);
        QCOMPARE(m_system.direction, 0);
        QCOMPARE(m_system.descriptors.size(), std::size_t{1});
        QVERIFY(m_system.longest <= std::chrono::seconds(1)); // longest wait while another process uses the port
    }
    QCOMPARE(m_system.requests.back(), static_cast<unsigned long>(PPRELEASE));
    QVERIFY(m_system.descriptors.empty());
}

void PpdevPortTest::accessesAreRaw()
{
    const auto port = PpdevPort::open(0x278, m_places, m_system);
    m_system.requests.clear();
    port->writeData(0x5A);
    port->writeControl(0x0B);
    QCOMPARE(port->readStatus(), std::uint8_t{0xA5});
    const std::vector<unsigned long> wanted = {PPWDATA, PPWCONTROL, PPRSTATUS};
    QCOMPARE(m_system.requests, wanted);
    const std::vector<unsigned char> bytes = {0x5A, 0x0B};
    QCOMPARE(m_system.written, bytes);
}

void PpdevPortTest::sharedWhenOthersAreThere()
{
    m_system.failures[PPCLAIM] = {ENXIO, 1};
    addUser(11, QStringLiteral("lp"));
    {
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("shared with another driver \\(lp\\)")));
        const auto port = PpdevPort::open(888, m_places, m_system);
        // The second claim is not exclusive: it uses a new descriptor without PPEXCL.
        const std::vector<unsigned long> wanted = {PPGETMODES, PPEXCL, PPCLAIM, PPCLAIM, PPDATADIR};
        QCOMPARE(m_system.requests, wanted);
        QCOMPARE(m_system.paths.size(), 2);
        QCOMPARE(m_system.descriptors, std::set<int>{4});
    }
    QVERIFY(m_system.descriptors.empty());
}

void PpdevPortTest::failures_data()
{
    QTest::addColumn<qulonglong>("request");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, unsigned long request, int error, const char *words) {
        QTest::newRow(name) << static_cast<qulonglong>(request) << error << QString::fromLatin1(words);
    };
    row("open ENOENT", kOpen, ENOENT, "/parport11 does not exist: an administrator must run \"modprobe ppdev\".");
    row("open EACCES", kOpen, EACCES, "add you to the group \"lp\"; then log in again.");
    row("open EPERM", kOpen, EPERM, "add you to the group \"lp\"; then log in again.");
    row("open ENXIO", kOpen, ENXIO, "/parport11 has disappeared.");
    row("open ENODEV", kOpen, ENODEV, "/parport11 has disappeared.");
    row("open EMFILE", kOpen, EMFILE, "/parport11 cannot be opened: Too many open files.");
    row("modes ENODEV", PPGETMODES, ENODEV, "/parport11 has disappeared.");
    row("modes ENOTTY", PPGETMODES, ENOTTY, "/parport11 is not a parallel port: Inappropriate ioctl for device.");
    row("exclusive EINVAL", PPEXCL, EINVAL, "/parport11 cannot be used: Invalid argument.");
    row("claim ENXIO", PPCLAIM, ENXIO, "/parport11 has disappeared.");
    row("claim EINVAL", PPCLAIM, EINVAL, "/parport11 cannot be used: Invalid argument.");
    row("claim ENOMEM", PPCLAIM, ENOMEM, "/parport11 cannot be used: Cannot allocate memory.");
    row("claim EINTR", PPCLAIM, EINTR, "/parport11 is in use by another program.");
    row("claim EBUSY", PPCLAIM, EBUSY, "/parport11 is in use by another program.");
    row("claim EAGAIN", PPCLAIM, EAGAIN, "/parport11 is in use by another program.");
    row("direction EIO", PPDATADIR, EIO, "cannot be used as outputs: Input/output error.");
}

void PpdevPortTest::failures()
{
    QFETCH(qulonglong, request);
    QFETCH(int, error);
    QFETCH(QString, words);
    m_system.failures[static_cast<unsigned long>(request)] = {error};
    const QString said = sentence();
    QVERIFY2(said.endsWith(words), qPrintable(said));
    QVERIFY(m_system.descriptors.empty());
}

void PpdevPortTest::noDriver()
{
    QVERIFY(QDir(m_places.ports).removeRecursively());
    QCOMPARE(sentence(), QStringLiteral("No parallel-port driver is loaded: an administrator must run "
                                        "\"modprobe -a parport_pc ppdev\"."));
    QVERIFY(m_system.paths.isEmpty());
}

void PpdevPortTest::noSuchAddress()
{
    addPort(3, "0\t0\n");
    QCOMPARE(sentence(0x3BC), QStringLiteral("There is no parallel port at the address 956 (0x3BC). This computer "
                                             "has: 632 (0x278), 888 (0x378)."));
    QVERIFY(QDir(m_places.ports).removeRecursively());
    addPort(0, "rubbish");
    QCOMPARE(sentence(0x3BC),
             QStringLiteral(
                 "There is no parallel port at the address 956 (0x3BC). The driver has found none in this computer."));
    QVERIFY(m_system.paths.isEmpty());
}

void PpdevPortTest::usbPrinterIsNamed()
{
    QVERIFY(QDir().mkpath(m_places.devices + QStringLiteral("/usb")));
    QFile printer(m_places.devices + QStringLiteral("/usb/lp0"));
    QVERIFY(printer.open(QIODevice::WriteOnly));
    const QString hint = QStringLiteral(" A USB printer cable is not a parallel port.");
    QVERIFY(sentence(0x3BC).endsWith(hint));
    QCOMPARE(sentence(0x378), QStringLiteral("opened"));
    QVERIFY(QDir(m_places.ports).removeRecursively());
    QVERIFY(sentence().endsWith(hint));
}

void PpdevPortTest::modesAreChecked()
{
    m_system.modes = PARPORT_MODE_EPP;
    QVERIFY(sentence().endsWith(QStringLiteral("does not support setting its lines individually.")));
    QVERIFY(m_system.descriptors.empty());
}

void PpdevPortTest::printerDriverIsNamed()
{
    addUser(11, QStringLiteral("lp"));
    addUser(11, QStringLiteral("ppdev11"));
    for (const int error : {ENXIO, EINTR}) {
        m_system.failures[PPCLAIM] = {error};
        QVERIFY(sentence().endsWith(QStringLiteral("is in use by the printer driver (lp): stop the printer service, or "
                                                   "ask an administrator to run \"rmmod lp\".")));
        QVERIFY(m_system.descriptors.empty());
    }
}

void PpdevPortTest::anotherProgramIsNamed()
{
    addUser(11, QStringLiteral("i2c-parport"));
    m_system.failures[PPCLAIM] = {ENXIO};
    QVERIFY(sentence().endsWith(QStringLiteral("/parport11 is in use by another program.")));
    QCOMPARE(otherParportUsers(m_places, 11), QStringList(QStringLiteral("i2c-parport")));
}

void PpdevPortTest::lostPort_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("words");
    QTest::newRow("ENODEV") << ENODEV << "/parport11 has disappeared.";
    QTest::newRow("ENXIO") << ENXIO << "/parport11 has disappeared.";
    QTest::newRow("EIO") << EIO << "/parport11 has disappeared.";
    QTest::newRow("EINVAL") << EINVAL << "/parport11 refused an access: Invalid argument.";
}

void PpdevPortTest::lostPort()
{
    QFETCH(int, error);
    QFETCH(QString, words);
    const auto port = PpdevPort::open(888, m_places, m_system);
    const auto said = [&](unsigned long request, const std::function<void()> &access) -> QString {
        m_system.failures[request] = {error, 1};
        try {
            access();
        } catch (const PortError &lost) {
            return QString::fromUtf8(lost.what());
        }
        return QStringLiteral("nothing");
    };
    QVERIFY(said(PPWDATA, [&] { port->writeData(1); }).endsWith(words));
    QVERIFY(said(PPWCONTROL, [&] { port->writeControl(1); }).endsWith(words));
    QVERIFY(said(PPRSTATUS, [&] { port->readStatus(); }).endsWith(words));
}

// A wait is never shorter than requested. The excess depends on the machine, so the test only prints the median.
void PpdevPortTest::waits()
{
    const auto port = PpdevPort::open(888, m_places, m_system);
    for (const std::chrono::nanoseconds asked : {std::chrono::nanoseconds(1'400), std::chrono::nanoseconds(21'000),
                                                 std::chrono::nanoseconds(60'000), std::chrono::nanoseconds(850'000)}) {
        constexpr int kRounds = 101;
        std::vector<qint64> took;
        for (int round = 0; round < kRounds; ++round) {
            QElapsedTimer clock;
            clock.start();
            port->wait(asked);
            took.push_back(clock.nsecsElapsed());
            QVERIFY(took.back() >= asked.count());
        }
        std::sort(took.begin(), took.end());
        qInfo("wait of %.1f us: median %.1f us", static_cast<double>(asked.count()) / 1e3,
              static_cast<double>(took[kRounds / 2]) / 1e3);
    }
}

void PpdevPortTest::blockedCallIsInterrupted()
{
    int ends[2];
    QCOMPARE(::pipe2(ends, O_CLOEXEC), 0);
    QElapsedTimer clock;
    clock.start();
    char byte = 0;
    {
        const CallLimit limit(std::chrono::milliseconds(100));
        QCOMPARE(::read(ends[0], &byte, 1), ssize_t{-1}); // blocks: nothing writes to the pipe
        QCOMPARE(errno, EINTR);
    }
    QVERIFY(clock.elapsed() >= 99);
    QVERIFY(clock.elapsed() < 3'000);
    // Destroying the CallLimit removes the limit: nothing interrupts a wait any more.
    pollfd nothing{ends[0], POLLIN, 0};
    QCOMPARE(::poll(&nothing, 1, 200), 0);
    QCOMPARE(::write(ends[1], "x", 1), ssize_t{1});
    QTest::qSleep(150);
    QCOMPARE(::read(ends[0], &byte, 1), ssize_t{1});
    ::close(ends[0]);
    ::close(ends[1]);
}

void PpdevPortTest::kernelErrorsComeBack()
{
    PortSystem &kernel = kernelPortSystem();
    QCOMPARE(kernel.open(m_folder->filePath(QStringLiteral("nowhere"))), -ENOENT);
    const int null = kernel.open(QStringLiteral("/dev/null"));
    QVERIFY(null >= 0);
    unsigned modes = 0;
    QCOMPARE(kernel.ioctl(null, PPGETMODES, &modes), -ENOTTY);
    QCOMPARE(kernel.ioctlWithin(std::chrono::seconds(1), null, PPCLAIM, nullptr), -ENOTTY);
    kernel.close(null);
    QCOMPARE(kernel.ioctl(null, PPGETMODES, &modes), -EBADF);
}

QTEST_APPLESS_MAIN(PpdevPortTest)
#include "ppdev_port.moc"
