// SPDX-License-Identifier: MIT
// Tests the serial link on a pseudo-terminal: bytes pass unchanged, a lost port is reported once and then uses no
// processor time, and a failed attempt to open a port reports the reason.
#include "server/links/serial_link.h"

#include "server/drivers/serial_opener.h"
#include "tests/server/terminal_pair.h"
#include "tests/support/quiet_time.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>
#include <stdexcept>

using namespace calvorn;
using calvorn::test::TerminalPair;

namespace {

// Returns the error message if the device cannot be opened, otherwise an empty string.
QString failureOf(const QString &device, const LineSettings &line = {})
{
    try {
        const SerialLink link(device, line);
    } catch (const std::runtime_error &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

double cpuSecondsOfASecond()
{
    const std::clock_t before = std::clock();
    test::nothingHappensFor(1'000);
    return static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
}

} // namespace

class SerialLinkTest : public QObject
{
    Q_OBJECT

private slots:
    void bytesPassUnchanged();
    void waitsForBytes();
    void discards();
    void missingModemLinesAreNoError();
    void hangUpIsOneErrorAndCostsNothing();
    void hangUpWhileWaiting();
    void writingAfterTheHangUp();
    void discardingAfterTheHangUp();
    void closingIsNoLoss();
    void noSuchDevice();
    void noSerialPort();
    void inUse();
    void lineSettingsThatItCannotDo();
    void everyFailureHasItsSentence();
    void nameOfAPortInTheSettings();
    void numbersWithoutAPort();
};

void SerialLinkTest::bytesPassUnchanged()
{
    const QByteArray bytes = QByteArray::fromHex("00010D0A1113031AFF7F80215E");
    const TerminalPair terminal;
    SerialLink link(terminal.path, {});
    link.write(bytes);
    QCOMPARE(terminal.receive(bytes.size()), bytes);
    QSignalSpy arrived(&link, &SerialLink::bytesArrived);
    QVERIFY(terminal.send(bytes));
    QTRY_VERIFY(!arrived.isEmpty());
    QByteArray heard;
    QTRY_VERIFY((heard += link.read()).size() >= bytes.size());
    QCOMPARE(heard, bytes);
}

void SerialLinkTest::waitsForBytes()
{
    const TerminalPair terminal;
    SerialLink link(terminal.path, {});
    QVERIFY(!link.waitForBytes(20));
    QVERIFY(link.isOpen());
    QVERIFY(terminal.send("x"));
    QVERIFY(link.waitForBytes(1'000));
    QVERIFY(link.waitForBytes(0)); // waiting does not consume the byte
    QCOMPARE(link.read(), QByteArray("x"));
}

void SerialLinkTest::discards()
{
    const TerminalPair terminal;
    SerialLink link(terminal.path, {});
    QVERIFY(terminal.send("old"));
    QVERIFY(link.waitForBytes(1'000));
    link.discard();
    QCOMPARE(link.read(), QByteArray());
    QVERIFY(terminal.send("new"));
    QVERIFY(link.waitForBytes(1'000));
    QCOMPARE(link.read(), QByteArray("new"));
}

// A pseudo-terminal has no DTR or RTS; the link works without them.
void SerialLinkTest::missingModemLinesAreNoError()
{
    const TerminalPair terminal;
    QSerialPort bare;
    bare.setPortName(terminal.path);
    QVERIFY(bare.open(QIODevice::ReadWrite));
    QVERIFY(!bare.setDataTerminalReady(true));
    QCOMPARE(bare.error(), QSerialPort::UnsupportedOperationError);
    bare.close();

    SerialLink link(terminal.path, {});
    QSignalSpy lost(&link, &SerialLink::lost);
    test::nothingHappensFor(50);
    QCOMPARE(lost.count(), 0);
    QVERIFY(link.isOpen());
}

void SerialLinkTest::hangUpIsOneErrorAndCostsNothing()
{
    TerminalPair terminal;
    SerialLink link(terminal.path, {});
    QSignalSpy lost(&link, &SerialLink::lost);
    terminal.hangUp();
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!link.isOpen());
    QCOMPARE(lost.at(0).at(0).toString(), QStringLiteral("The connection to %1 was lost.").arg(terminal.path));
    const double seconds = cpuSecondsOfASecond();
    QVERIFY2(seconds < 0.05, qPrintable(QString::number(seconds)));
    QCOMPARE(lost.count(), 1);
    link.write("x");
    QCOMPARE(link.read(), QByteArray());
    QVERIFY(!link.waitForBytes(10));
    QCOMPARE(lost.count(), 1);
}

void SerialLinkTest::hangUpWhileWaiting()
{
    TerminalPair terminal;
    SerialLink link(terminal.path, {});
    QSignalSpy lost(&link, &SerialLink::lost);
    terminal.hangUp();
    QVERIFY(!link.waitForBytes(1'000));
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!link.isOpen());
    QVERIFY(cpuSecondsOfASecond() < 0.05);
    QCOMPARE(lost.count(), 1);
}

void SerialLinkTest::writingAfterTheHangUp()
{
    TerminalPair terminal;
    SerialLink link(terminal.path, {});
    QSignalSpy lost(&link, &SerialLink::lost);
    terminal.hangUp();
    link.write(QByteArray(1'000, 'x'));
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!link.isOpen());
    QVERIFY(cpuSecondsOfASecond() < 0.05);
    QCOMPARE(lost.count(), 1);
}

// discard() emits lost() before it returns, so its caller must expect the signal.
void SerialLinkTest::discardingAfterTheHangUp()
{
    TerminalPair terminal;
    SerialLink link(terminal.path, {});
    QSignalSpy lost(&link, &SerialLink::lost);
    terminal.hangUp();
    link.discard();
    QCOMPARE(lost.count(), 1);
    QVERIFY(!link.isOpen());
    QCOMPARE(link.read(), QByteArray());
    test::nothingHappensFor(50);
    QCOMPARE(lost.count(), 1);
}

void SerialLinkTest::closingIsNoLoss()
{
    TerminalPair terminal;
    SerialLink link(terminal.path, {});
    QSignalSpy lost(&link, &SerialLink::lost);
    link.close();
    link.close();
    terminal.hangUp();
    test::nothingHappensFor(50);
    QCOMPARE(lost.count(), 0);
}

void SerialLinkTest::noSuchDevice()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("ttyUSB7"));
    QCOMPARE(failureOf(path), QStringLiteral("There is no device %1; is the cable plugged in?").arg(path));
}

void SerialLinkTest::noSerialPort()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(failureOf(file.fileName()), file.fileName() + QStringLiteral(" is not a serial port."));
}

void SerialLinkTest::inUse()
{
    const TerminalPair terminal;
    {
        const SerialLink first(terminal.path, {});
        QCOMPARE(failureOf(terminal.path),
                 QStringLiteral("The port %1 is in use by another program.").arg(terminal.path));
    }
    QCOMPARE(failureOf(terminal.path), QString()); // free again
}

// A pseudo-terminal has no parity.
void SerialLinkTest::lineSettingsThatItCannotDo()
{
    const TerminalPair terminal;
    LineSettings even;
    even.parity = LineParity::Even;
    QCOMPARE(failureOf(terminal.path, even),
             QStringLiteral("The port %1 does not support these line settings.").arg(terminal.path));
    QCOMPARE(failureOf(terminal.path), QString());
}

// Calls the function directly, because some errors cannot be provoked everywhere: root may open any device.
void SerialLinkTest::everyFailureHasItsSentence()
{
    const QString device = QStringLiteral("/dev/ttyUSB0");
    const auto sentence = [&device](QSerialPort::SerialPortError error, DeviceAccess access) {
        return QString::fromStdString(serialOpeningFailure(device, error, access));
    };
    QCOMPARE(sentence(QSerialPort::DeviceNotFoundError, DeviceAccess::Absent),
             QStringLiteral("There is no device /dev/ttyUSB0; is the cable plugged in?"));
    QCOMPARE(sentence(QSerialPort::PermissionError, DeviceAccess::Forbidden),
             QStringLiteral(
                 "You have no permission to use /dev/ttyUSB0; add your user to the group dialout and log in again."));
    QCOMPARE(sentence(QSerialPort::PermissionError, DeviceAccess::Allowed),
             QStringLiteral("The port /dev/ttyUSB0 is in use by another program."));
    QCOMPARE(sentence(QSerialPort::UnsupportedOperationError, DeviceAccess::Allowed),
             QStringLiteral("/dev/ttyUSB0 is not a serial port."));
}

void SerialLinkTest::nameOfAPortInTheSettings()
{
    const TerminalPair terminal;
    const QTemporaryDir folder;
    QFile settings(folder.filePath(QStringLiteral("Calvorn.ini")));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write("[Ports]\r\nCOM6=" + terminal.path.toLocal8Bit() + "\r\nCOM27=" + terminal.path.toLocal8Bit() +
                   "\r\n");
    settings.close();
    SerialOpener opener(settings.fileName());
    for (const int number : {6, 27}) {
        const std::shared_ptr<ByteLink> link = opener.openPic(number, {});
        link->write("P\r");
        QCOMPARE(terminal.receive(2), QByteArray("P\r"));
        QVERIFY(terminal.send("P+\r"));
        QVERIFY(link->waitForBytes(1'000));
    }
}

void SerialLinkTest::numbersWithoutAPort()
{
    const QTemporaryDir folder;
    SerialOpener opener(folder.filePath(QStringLiteral("Calvorn.ini")));
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, opener.openVna(13, {}));
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, opener.openPic(0, {}));
    try {
        opener.openVna(99, {});
        QFAIL("opened");
    } catch (const std::runtime_error &error) {
        QCOMPARE(error.what(), "There is no serial port COM99.");
    }
}

QTEST_GUILESS_MAIN(SerialLinkTest)
#include "serial_link.moc"
