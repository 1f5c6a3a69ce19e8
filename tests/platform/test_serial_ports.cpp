// SPDX-License-Identifier: MIT
#include "platform/profile_file.h"
#include "platform/serial_ports.h"

#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;

// Tests the mapping from COM numbers to device files.
class TestSerialPorts : public QObject
{
    Q_OBJECT

private slots:
    void numbersHaveTheirDevices();
    void settingsNameAnotherDevice();
    void onlyWhatIsThereExists();
};

void TestSerialPorts::numbersHaveTheirDevices()
{
    const QString none;
    QCOMPARE(serialDeviceOf(1, none), QStringLiteral("/dev/ttyS0"));
    QCOMPARE(serialDeviceOf(4, none), QStringLiteral("/dev/ttyS3"));
    QCOMPARE(serialDeviceOf(5, none), QStringLiteral("/dev/ttyUSB0"));
    QCOMPARE(serialDeviceOf(8, none), QStringLiteral("/dev/ttyUSB3"));
    QCOMPARE(serialDeviceOf(9, none), QStringLiteral("/dev/ttyACM0"));
    QCOMPARE(serialDeviceOf(12, none), QStringLiteral("/dev/ttyACM3"));
    for (const int number : {-1, 0, 13, 99, 100, 101})
        QCOMPARE(serialDeviceOf(number, none), QString());
}

void TestSerialPorts::settingsNameAnotherDevice()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("settings.ini");
    QVERIFY(writeProfileString(path, "Ports", "COM1", "/dev/serial/by-id/board"));
    QVERIFY(writeProfileString(path, "Ports", "COM20", "/dev/rfcomm0"));
    QCOMPARE(serialDeviceOf(1, path), QStringLiteral("/dev/serial/by-id/board"));
    QCOMPARE(serialDeviceOf(20, path), QStringLiteral("/dev/rfcomm0"));
    QCOMPARE(serialDeviceOf(2, path), QStringLiteral("/dev/ttyS1"));
}

void TestSerialPorts::onlyWhatIsThereExists()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("settings.ini");
    QVERIFY(writeProfileString(path, "Ports", "COM1", folder.path()));
    QVERIFY(writeProfileString(path, "Ports", "COM2", folder.filePath("absent")));
    QVERIFY(comPortExists(1, path));
    QVERIFY(!comPortExists(2, path));
    QVERIFY(!comPortExists(0, path));
    QVERIFY(comPortExists(100, path));
}

QTEST_GUILESS_MAIN(TestSerialPorts)
#include "test_serial_ports.moc"
