// SPDX-License-Identifier: MIT
#include "platform/parallel_ports.h"
#include "setup/port_page.h"
#include "tests/support/set_up_bench.h"
#include "tests/support/usb_tree.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

using namespace calvorn;
using calvorn::test::SetUpBench;

namespace {

// A folder in place of /dev, and the section of the settings file that maps COM numbers to it.
class Devices
{
public:
    QString path(int number) const { return m_folder.filePath(QStringLiteral("port%1").arg(number)); }

    void plug(int number) const
    {
        QFile device(path(number));
        if (!device.open(QIODevice::WriteOnly))
            qFatal("cannot create the test's device");
    }
    void pull(int number) const { QFile::remove(path(number)); }

    QByteArray settings(const QByteArray &more = {}) const
    {
        QByteArray text = "[Config]\r\nDDS Device=AD9850\r\n" + more + "[Ports]\r\n";
        for (const int number : {1, 2, 3, 4, 5, 6, 9, 12})
            text += "COM" + QByteArray::number(number) + '=' + path(number).toUtf8() + "\r\n";
        return text;
    }

private:
    QTemporaryDir m_folder;
};

struct Bench : SetUpBench
{
    explicit Bench(const QByteArray &settings)
        : SetUpBench(settings)
    {
        click("cmdPort");
    }

    QStringList captions() const
    {
        QStringList all;
        for (int number = 1; number <= 6; ++number)
            all.append(caption(QStringLiteral("optSerialPort_%1").arg(number).toUtf8().constData()));
        return all;
    }

    QString applied(const char *section, const char *key)
    {
        click("cmdApply");
        return folder.setting(section, key);
    }
};

QByteArray port(int number)
{
    return "[Serial Port]\r\nCommPort=" + QByteArray::number(number) + "\r\n";
}

QByteArray address(const char *text)
{
    return QByteArray("[Parallel Port]\r\nLPT=") + text + "\r\n";
}

} // namespace

class TestPorts : public QObject
{
    Q_OBJECT

private slots:
    void theButtonsTellWhichPortsThereAre();
    void anAdapterIsNoticedWhileThePageIsOpen();
    void toolTipsNameTheDevices();
    void theDevicesStandBesideTheOptions();
    void theDeviceOfTheFreeNumberFollowsTheTyping();
    void aLongDeviceIsElidedInTheMiddle();
    void theParallelPortsAreNamed();
    void thePresetOfTheAddressIsSelected_data();
    void thePresetOfTheAddressIsSelected();
    void anotherAddressIsFree();
    void presetsSetTheAddress_data();
    void presetsSetTheAddress();
    void theFreeAddressFollowsTheTyping();
    void thePortIsSelected_data();
    void thePortIsSelected();
    void aPortAboveSixIsFree();
    void typingWithoutSelectingOnlyLabels();
    void theFreePortFollowsTheTyping();
    void theSimulatedBoardIsOffered();
    void thePinsAreShown();
    void aRuleForTheBoardIsSaved();
    void aRuleThatCannotBeSaved();
};

void TestPorts::theButtonsTellWhichPortsThereAre()
{
    const Devices devices;
    devices.plug(1);
    devices.plug(4);
    Bench bench(devices.settings());
    const QStringList expected{"COM1", "COM2 NOT available", "COM3 NOT available",
                               "COM4", "COM5 NOT available", "COM6 NOT available"};
    QCOMPARE(bench.captions(), expected);
    for (int number = 1; number <= 6; ++number)
        QVERIFY(bench.find(QStringLiteral("optSerialPort_%1").arg(number).toUtf8().constData())->isEnabled());
    QVERIFY(bench.caption("optSerialPort_7").startsWith(QStringLiteral("COMx")));
}

void TestPorts::anAdapterIsNoticedWhileThePageIsOpen()
{
    const Devices devices;
    devices.plug(2);
    Bench bench(devices.settings(port(9)));
    QCOMPARE(bench.caption("optSerialPort_5"), QStringLiteral("COM5 NOT available"));
    QCOMPARE(bench.label("lblAddressRS232"), QStringLiteral(" NOT available"));
    devices.plug(5);
    devices.plug(9);
    QTRY_COMPARE(bench.caption("optSerialPort_5"), QStringLiteral("COM5"));
    QTRY_COMPARE(bench.label("lblAddressRS232"), QString());
    devices.pull(2);
    QTRY_COMPARE(bench.caption("optSerialPort_2"), QStringLiteral("COM2 NOT available"));
    QVERIFY(bench.isChecked("optSerialPort_7"));
    QCOMPARE(bench.text("txtAddressRS232"), QStringLiteral("9"));
}

void TestPorts::toolTipsNameTheDevices()
{
    const Devices devices;
    devices.plug(3);
    const QString link = devices.path(6);
    QVERIFY(QFile::link(devices.path(3), link));
    Bench bench(devices.settings());
    QCOMPARE(bench.find("optSerialPort_3")->toolTip(), devices.path(3));
    QVERIFY(bench.find("optSerialPort_6")->toolTip().startsWith(link));
    QVERIFY(bench.find("optSerialPort_6")->toolTip().endsWith(QFileInfo(devices.path(3)).canonicalFilePath()));
    bench.type("txtAddressRS232", QStringLiteral("100"));
    QVERIFY(bench.find("txtAddressRS232")->toolTip().contains(QStringLiteral("simulated")));
    bench.type("txtAddressRS232", QStringLiteral("12"));
    QCOMPARE(bench.find("txtAddressRS232")->toolTip(), devices.path(12));
    bench.type("txtAddressRS232", QStringLiteral("50"));
    QVERIFY(bench.find("txtAddressRS232")->toolTip().contains(QStringLiteral("[Ports]")));
    QVERIFY(bench.find("optParallelPort_0")->toolTip().contains(QStringLiteral("simulated")));
}

void TestPorts::theDevicesStandBesideTheOptions()
{
    const Devices devices;
    devices.plug(3);
    const QString link = devices.path(6);
    QVERIFY(QFile::link(devices.path(3), link));
    Bench bench(devices.settings());
    QCOMPARE(bench.label("lblComDevice_1"), devices.path(1));
    QCOMPARE(bench.label("lblComDevice_3"), devices.path(3));
    const QString target = QFileInfo(devices.path(3)).canonicalFilePath();
    QCOMPARE(bench.label("lblComDevice_6"), link + QStringLiteral(" → ") + target);
    for (int number = 1; number <= 6; ++number) {
        const QWidget *option = bench.find(QStringLiteral("optSerialPort_%1").arg(number).toUtf8().constData());
        const QWidget *device = bench.find(QStringLiteral("lblComDevice_%1").arg(number).toUtf8().constData());
        QVERIFY(device->isVisible());
        QVERIFY(option->geometry().right() < device->x());
        QVERIFY(std::abs(option->geometry().center().y() - device->geometry().center().y()) <= 1);
        QCOMPARE(option->accessibleDescription(), device->toolTip());
    }
    // A changed link target is detected while the page is open.
    devices.plug(4);
    QVERIFY(QFile::remove(link));
    QVERIFY(QFile::link(devices.path(4), link));
    const QString other = QFileInfo(devices.path(4)).canonicalFilePath();
    const int place = bench.find("lblComDevice_6")->x();
    QTRY_COMPARE(bench.label("lblComDevice_6"), link + QStringLiteral(" → ") + other);
    // Adding devices does not move the labels.
    for (const int number : {1, 2, 5})
        devices.plug(number);
    QTRY_COMPARE(bench.caption("optSerialPort_5"), QStringLiteral("COM5"));
    QCoreApplication::processEvents();
    QCOMPARE(bench.find("lblComDevice_6")->x(), place);
}

void TestPorts::theDeviceOfTheFreeNumberFollowsTheTyping()
{
    const Devices devices;
    Bench bench(devices.settings(port(9)));
    QCOMPARE(bench.label("lblComDevice_7"), devices.path(9));
    bench.type("txtAddressRS232", QStringLiteral("100"));
    QCOMPARE(bench.label("lblComDevice_7"), QStringLiteral("simulated board"));
    bench.type("txtAddressRS232", QStringLiteral("12"));
    QCOMPARE(bench.label("lblComDevice_7"), devices.path(12));
    QCOMPARE(bench.find("lblComDevice_7")->toolTip(), devices.path(12));
    bench.type("txtAddressRS232", QStringLiteral("50"));
    QCOMPARE(bench.label("lblComDevice_7"), QStringLiteral("no device"));
    QVERIFY(bench.find("lblComDevice_7")->toolTip().contains(QStringLiteral("[Ports]")));
    bench.type("txtAddressRS232", QString());
    QCOMPARE(bench.label("lblComDevice_7"), QString());
}

void TestPorts::aLongDeviceIsElidedInTheMiddle()
{
    const QString device = QStringLiteral("/dev/serial/by-id/usb-") + QString(120, u'x') + QStringLiteral("-port0");
    const QByteArray other = QByteArray(device.toUtf8()).replace("x-port0", "y-port0");
    const QByteArray start = "[Config]\r\nDDS Device=AD9850\r\n[Ports]\r\nCOM1=" + device.toUtf8() + "\r\nCOM2=";
    // The third device name differs from the first only by one letter in the middle.
    const QByteArray twin = QByteArray(device.toUtf8()).replace(60, 1, "W");
    Bench bench(start + other + "\r\nCOM3=" + twin + "\r\n");
    const Bench plain("[Config]\r\nDDS Device=AD9850\r\n");
    QCOMPARE(bench.dialog->size(), plain.dialog->size());
    QCOMPARE(bench.label("lblComDevice_1"), device);
    QCOMPARE(bench.find("lblComDevice_1")->toolTip(), device);
    const auto picture = [&bench](const char *name) { return bench.find(name)->grab().toImage(); };
    QVERIFY(picture("lblComDevice_1") != picture("lblComDevice_2"));
    QCOMPARE(picture("lblComDevice_1"), picture("lblComDevice_3"));
}

void TestPorts::theParallelPortsAreNamed()
{
    Bench bench(address("888"));
    QCOMPARE(bench.label("lblLptDevice_0"), QStringLiteral("simulated board"));
    const auto expected = [](int base) {
        for (const ParportEntry &port : listParports({}))
            if (port.base == base)
                return QStringLiteral("/dev/parport%1").arg(port.number);
        return QStringLiteral("no known port");
    };
    QCOMPARE(bench.label("lblLptDevice_1"), expected(0x378));
    QCOMPARE(bench.label("lblLptDevice_2"), expected(0x278));
    QCOMPARE(bench.label("lblLptDevice_3"), expected(0x3BC));
    QCOMPARE(bench.label("lblLptDevice_4"), QString());
    bench.type("txtAddressLPT", QStringLiteral("57360"));
    QCOMPARE(bench.label("lblLptDevice_4"), expected(57360));
    bench.type("txtAddressLPT", QStringLiteral("0"));
    QCOMPARE(bench.label("lblLptDevice_4"), QStringLiteral("simulated board"));
}

void TestPorts::thePresetOfTheAddressIsSelected_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("option");
    QTest::newRow("simulated") << QByteArray("0") << QByteArray("optParallelPort_0");
    QTest::newRow("888") << QByteArray("888") << QByteArray("optParallelPort_1");
    QTest::newRow("0x378") << QByteArray("&H378") << QByteArray("optParallelPort_1");
    QTest::newRow("0x278") << QByteArray("&H278") << QByteArray("optParallelPort_2");
    QTest::newRow("0x3BC") << QByteArray("&H3BC") << QByteArray("optParallelPort_3");
}

void TestPorts::thePresetOfTheAddressIsSelected()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, option);
    const Bench bench(address(text.constData()));
    QVERIFY(bench.isChecked(option.constData()));
    QCOMPARE(bench.text("txtAddressLPT"), QString());
}

void TestPorts::anotherAddressIsFree()
{
    const Bench bench(address("1000"));
    QVERIFY(bench.isChecked("optParallelPort_4"));
    QVERIFY(bench.caption("optParallelPort_4").startsWith(QStringLiteral("LPTx")));
    QCOMPARE(bench.text("txtAddressLPT"), QStringLiteral("1000"));
    QCOMPARE(bench.label("txtLPTHex"), QStringLiteral("(0x3E8)"));
    // An expansion card's address does not fit in a signed 16-bit number.
    const Bench card(address("&HE010"));
    QCOMPARE(card.text("txtAddressLPT"), QStringLiteral("57360"));
    QCOMPARE(card.label("txtLPTHex"), QStringLiteral("(0xE010)"));
}

void TestPorts::presetsSetTheAddress_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("written");
    QTest::newRow("0") << QByteArray("optParallelPort_0") << QStringLiteral("LPT0 simulated (0x000)")
                       << QStringLiteral("&H0");
    QTest::newRow("1") << QByteArray("optParallelPort_1") << QStringLiteral("LPT1, port 888 (0x378)")
                       << QStringLiteral("&H378");
    QTest::newRow("2") << QByteArray("optParallelPort_2") << QStringLiteral("LPT2, port 632 (0x278)")
                       << QStringLiteral("&H278");
    QTest::newRow("3") << QByteArray("optParallelPort_3") << QStringLiteral("LPT3, port 956 (0x3BC)")
                       << QStringLiteral("&H3BC");
}

void TestPorts::presetsSetTheAddress()
{
    QFETCH(QByteArray, option);
    QFETCH(QString, caption);
    QFETCH(QString, written);
    Bench bench(address("1000"));
    QCOMPARE(bench.caption(option.constData()), caption);
    bench.click(option.constData());
    QCOMPARE(bench.applied("Parallel Port", "LPT"), written);
}

void TestPorts::theFreeAddressFollowsTheTyping()
{
    Bench bench(address("888"));
    bench.type("txtAddressLPT", QStringLiteral("49152"));
    QCOMPARE(bench.label("txtLPTHex"), QStringLiteral("(0xC000)"));
    QVERIFY(bench.isChecked("optParallelPort_1"));
    bench.type("txtAddressLPT", QStringLiteral("x"));
    QCOMPARE(bench.label("txtLPTHex"), QStringLiteral("(0x0)"));
    bench.find<QLineEdit>("txtAddressLPT")->clear();
    QCOMPARE(bench.label("txtLPTHex"), QStringLiteral("(0x0)"));
    bench.click("optParallelPort_4");
    QCOMPARE(bench.text("txtAddressLPT"), QStringLiteral("888"));
    QCOMPARE(bench.label("txtLPTHex"), QStringLiteral("(0x378)"));
    bench.type("txtAddressLPT", QStringLiteral("1000"));
    QCOMPARE(bench.desktop.beeps, 0);
    bench.type("txtAddressLPT", QStringLiteral("99999"));
    QCOMPARE(bench.text("txtAddressLPT"), QStringLiteral("65535"));
    QCOMPARE(bench.desktop.beeps, 1);
    bench.type("txtAddressLPT", QStringLiteral("1000"));
    QCOMPARE(bench.applied("Parallel Port", "LPT"), QStringLiteral("&H3E8"));
}

void TestPorts::thePortIsSelected_data()
{
    QTest::addColumn<int>("number");
    for (int number = 1; number <= 6; ++number)
        QTest::addRow("COM%d", number) << number;
}

void TestPorts::thePortIsSelected()
{
    QFETCH(int, number);
    Bench bench(port(number));
    QVERIFY(bench.isChecked(QStringLiteral("optSerialPort_%1").arg(number).toUtf8().constData()));
    QCOMPARE(bench.text("txtAddressRS232"), QString());
    const int other = number == 6 ? 1 : number + 1;
    bench.click(QStringLiteral("optSerialPort_%1").arg(other).toUtf8().constData());
    QCOMPARE(bench.applied("Serial Port", "CommPort"), QString::number(other));
}

void TestPorts::aPortAboveSixIsFree()
{
    const Devices devices;
    const Bench absent(devices.settings(port(9)));
    QVERIFY(absent.isChecked("optSerialPort_7"));
    QCOMPARE(absent.text("txtAddressRS232"), QStringLiteral("9"));
    QCOMPARE(absent.label("lblAddressRS232"), QStringLiteral(" NOT available"));
    devices.plug(9);
    const Bench present(devices.settings(port(9)));
    QCOMPARE(present.text("txtAddressRS232"), QStringLiteral("9"));
    QCOMPARE(present.label("lblAddressRS232"), QString());
}

void TestPorts::typingWithoutSelectingOnlyLabels()
{
    const Devices devices;
    Bench bench(devices.settings(port(3)));
    bench.type("txtAddressRS232", QStringLiteral("12"));
    QCOMPARE(bench.label("lblAddressRS232"), QStringLiteral(" NOT available"));
    devices.plug(12);
    bench.type("txtAddressRS232", QString());
    bench.type("txtAddressRS232", QStringLiteral("12"));
    QCOMPARE(bench.label("lblAddressRS232"), QString());
    QVERIFY(bench.isChecked("optSerialPort_3"));
    QCOMPARE(bench.applied("Serial Port", "CommPort"), QStringLiteral("3"));
}

void TestPorts::theFreePortFollowsTheTyping()
{
    Bench bench(port(9));
    bench.type("txtAddressRS232", QStringLiteral("12"));
    QCOMPARE(bench.applied("Serial Port", "CommPort"), QStringLiteral("12"));
    Bench nonsense(port(9));
    nonsense.type("txtAddressRS232", QStringLiteral("x7"));
    QCOMPARE(nonsense.label("lblAddressRS232"), QStringLiteral(" NOT available"));
    QCOMPARE(nonsense.applied("Serial Port", "CommPort"), QStringLiteral("0"));
    QCOMPARE(nonsense.desktop.boxes.size(), 1); // the confirmation
}

void TestPorts::theSimulatedBoardIsOffered()
{
    Bench bench(port(2));
    bench.click("optSerialPort_7");
    QCOMPARE(bench.text("txtAddressRS232"), QStringLiteral("100"));
    QCOMPARE(bench.label("lblAddressRS232"), QString());
    QCOMPARE(bench.applied("Serial Port", "CommPort"), QStringLiteral("100"));
}

void TestPorts::thePinsAreShown()
{
    Bench bench(address("0"));
    QString shown;
    QTimer::singleShot(0, qApp, [&shown] {
        QWidget *window = QApplication::activeModalWidget();
        shown = window ? window->objectName() : QString();
        if (window)
            QTest::keyClick(window, Qt::Key_Escape);
    });
    bench.click("cmdLPTpin");
    QCOMPARE(shown, QStringLiteral("frmLPTpin"));
    QVERIFY(bench.dialog->isVisible());
}

// COM5 and COM6 are ttyUSB0 and ttyUSB1 unless [Ports] maps them to other devices.
void TestPorts::aRuleForTheBoardIsSaved()
{
    const test::UsbTree tree;
    tree.plug("ttyUSB0", test::UsbTree::Depth::Adapter, {"0403", "6001", "A50285BI", "FT232R"});
    Bench bench(port(6));
    bench.dialog->findChild<PortPage *>()->lookForUsbIn(tree.ttyClass());
    QVERIFY(!bench.find<QPushButton>("cmdAccessRule")->isEnabled());
    QVERIFY(bench.find<QPushButton>("cmdAccessRule")->toolTip().contains(QStringLiteral("connected USB board")));
    bench.click("optSerialPort_5");
    QVERIFY(bench.find<QPushButton>("cmdAccessRule")->isEnabled());

    const QTemporaryDir folder;
    bench.desktop.fileChoice = folder.filePath(QStringLiteral("my.rules"));
    bench.click("cmdAccessRule");
    QCOMPARE(bench.desktop.suggestions, QStringList(QStringLiteral("60-calvorn-board.rules")));
    QFile file(bench.desktop.fileChoice);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("ATTRS{serial}==\"A50285BI\""));
    QVERIFY(bench.desktop.boxes.isEmpty());

    // The page polls once a second and disables the button after the board is unplugged.
    tree.pull("ttyUSB0");
    QTRY_VERIFY_WITH_TIMEOUT(!bench.find<QPushButton>("cmdAccessRule")->isEnabled(), 10'000);
}

void TestPorts::aRuleThatCannotBeSaved()
{
    const test::UsbTree tree;
    tree.plug("ttyUSB0", test::UsbTree::Depth::Adapter, {"0403", "6001", "A50285BI", "FT232R"});
    Bench bench(port(5));
    bench.dialog->findChild<PortPage *>()->lookForUsbIn(tree.ttyClass());
    bench.desktop.fileChoice = QString();
    bench.click("cmdAccessRule");
    QVERIFY(bench.desktop.boxes.isEmpty());
    bench.desktop.fileChoice = QStringLiteral("/nowhere/my.rules");
    bench.click("cmdAccessRule");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.desktop.boxes.constFirst().text.contains(QStringLiteral("/nowhere/my.rules")));
}

QTEST_MAIN(TestPorts)
#include "test_ports.moc"
