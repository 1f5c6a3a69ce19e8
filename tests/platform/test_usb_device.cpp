// SPDX-License-Identifier: MIT
#include "platform/usb_device.h"

#include "tests/support/usb_tree.h"

#include <QTest>

using namespace calvorn;
using calvorn::test::UsbTree;

class TestUsbDevice : public QObject
{
    Q_OBJECT

private slots:
    void aSerialAdapter();
    void aBoardWithItsOwnUsb();
    void aLinkThatUdevMade();
    void portsWithoutUsb();
    void aRuleForOneBoard();
    void aRuleWithoutSerialNumber();
    void aSerialNumberCannotBreakTheRule();
};

// In sysfs, an adapter's bridge is one level deeper than the interface of a board with native USB.
void TestUsbDevice::aSerialAdapter()
{
    const UsbTree tree;
    tree.plug("ttyUSB0", UsbTree::Depth::Adapter, {"0403", "6001", "A50285BI", "FTDI FT232R USB UART"});
    const auto device = usbDeviceOf(QStringLiteral("/dev/ttyUSB0"), tree.ttyClass());
    QVERIFY(device);
    QCOMPARE(device->vendor, QStringLiteral("0403"));
    QCOMPARE(device->product, QStringLiteral("6001"));
    QCOMPARE(device->serial, QStringLiteral("A50285BI"));
    QCOMPARE(device->name, QStringLiteral("FTDI FT232R USB UART"));
}

void TestUsbDevice::aBoardWithItsOwnUsb()
{
    const UsbTree tree;
    tree.plug("ttyACM1", UsbTree::Depth::OwnUsb, {"04d8", "000a", "", "Microchip CDC"});
    const auto device = usbDeviceOf(QStringLiteral("/dev/ttyACM1"), tree.ttyClass());
    QVERIFY(device);
    QCOMPARE(device->vendor, QStringLiteral("04d8"));
    QCOMPARE(device->serial, QString());
}

void TestUsbDevice::aLinkThatUdevMade()
{
    const UsbTree tree;
    tree.plug("ttyUSB3", UsbTree::Depth::Adapter, {"10c4", "ea60", "0001", "CP2102"});
    const QString link = tree.linkTo("ttyUSB3");
    const auto device = usbDeviceOf(link, tree.ttyClass());
    QVERIFY(device);
    QCOMPARE(device->vendor, QStringLiteral("10c4"));
}

void TestUsbDevice::portsWithoutUsb()
{
    const UsbTree tree;
    tree.plugWithoutUsb("ttyS0");
    QVERIFY(!usbDeviceOf(QStringLiteral("/dev/ttyS0"), tree.ttyClass()));
    QVERIFY(!usbDeviceOf(QStringLiteral("/dev/ttyUSB0"), tree.ttyClass()));
    QVERIFY(!usbDeviceOf(QString(), tree.ttyClass()));
}

void TestUsbDevice::aRuleForOneBoard()
{
    const QByteArray rule = accessRule({"0403", "6001", "A50285BI", "FTDI FT232R USB UART"});
    const QByteArrayList lines = rule.split('\n');
    QCOMPARE(lines.count(QByteArray("SUBSYSTEM==\"tty\", ATTRS{idVendor}==\"0403\", ATTRS{idProduct}==\"6001\", "
                                    "ATTRS{serial}==\"A50285BI\", TAG+=\"uaccess\"")),
             1);
    for (const QByteArray &line : lines)
        QVERIFY2(line.isEmpty() || line.startsWith('#') || line.startsWith("SUBSYSTEM"), line.constData());
    QVERIFY(rule.contains("60-calvorn-board.rules"));
    QVERIFY(rule.contains("FTDI FT232R USB UART"));
}

void TestUsbDevice::aRuleWithoutSerialNumber()
{
    const QByteArray rule = accessRule({"1a86", "7523", "", "USB Serial"});
    QVERIFY(rule.contains("\nSUBSYSTEM==\"tty\", ATTRS{idVendor}==\"1a86\", ATTRS{idProduct}==\"7523\", "
                          "TAG+=\"uaccess\"\n"));
    QVERIFY(!rule.contains("ATTRS{serial}"));
    QVERIFY(rule.contains("no serial number"));
}

// The device supplies its own serial number and name.
void TestUsbDevice::aSerialNumberCannotBreakTheRule()
{
    const QByteArray rule = accessRule({"0403", "6001", "a\"*\\[1]", "Board\nRUN+=\"/bin/sh\""});
    QVERIFY(rule.contains("ATTRS{serial}==\"a????1?\""));
    int actions = 0;
    for (const QByteArray &line : rule.split('\n'))
        actions += line.isEmpty() || line.startsWith('#') ? 0 : 1;
    QCOMPARE(actions, 1);
}

QTEST_GUILESS_MAIN(TestUsbDevice)
#include "test_usb_device.moc"
