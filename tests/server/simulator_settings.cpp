// SPDX-License-Identifier: MIT
// Tests the keys of [Simulator] and their defaults, and that reading leaves the file unchanged.
#include "server/boards/simulator_settings.h"

#include "server/boards/pic_board.h"
#include "server/drivers/serial_opener.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;

class SimulatorSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void missingFile();
    void everyKey();
    void theDefaultsAreThoseOfTheirTexts();
    void configGivesTheDefaults();
    void impossibleClocks();
    void faultNames();
    void detectors();

private:
    QString write(const QByteArray &text);

    QTemporaryDir m_folder;
};

QString SimulatorSettingsTest::write(const QByteArray &text)
{
    const QString path = m_folder.filePath(QStringLiteral("Calvorn.ini"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

void SimulatorSettingsTest::missingFile()
{
    const QString path = m_folder.filePath(QStringLiteral("nowhere.ini"));
    const SimulatorSettings settings = readSimulatorSettings(path);
    QCOMPARE(settings.device.kind(), DeviceKind::Bandpass);
    QVERIFY(settings.paced);
    QCOMPARE(settings.seed, std::uint64_t{1});
    QCOMPARE(settings.chip, DdsChip::Ad9850);
    QCOMPARE(settings.clockHz, 80e6);
    QCOMPARE(settings.adc.bits, 10);
    QVERIFY(!QFile::exists(path));
}

void SimulatorSettingsTest::everyKey()
{
    const QByteArray text = "[Config]\r\nDDS Device=AD9850\r\n[Simulator]\r\nDevice=crystal\r\nPace=None\r\nSeed=99\r\n"
                            "Fault=none\r\nChip=AD9951\r\nClock=25000000\r\nADC=8bit\r\n"
                            "Detector=Log\r\nLevel=-12.5\r\n";
    const QString path = write(text);
    const SimulatorSettings settings = readSimulatorSettings(path);
    QCOMPARE(settings.device.kind(), DeviceKind::Crystal);
    QVERIFY(!settings.paced);
    QCOMPARE(settings.seed, std::uint64_t{99});
    QCOMPARE(settings.fault, SimulatorFault::None);
    QCOMPARE(settings.chip, DdsChip::Ad9951);
    QCOMPARE(settings.clockHz, 25e6);
    QCOMPARE(settings.adc.bits, 8);
    QCOMPARE(settings.detector.kind, DetectorKind::Log);
    QCOMPARE(settings.detector.level, -12.5);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), text);
}

void SimulatorSettingsTest::theDefaultsAreThoseOfTheirTexts()
{
    const SimulatorSettings missing = readSimulatorSettings(m_folder.filePath(QStringLiteral("nowhere.ini")));
    const SimulatorSettings written = readSimulatorSettings(
        write("[Simulator]\nDevice=bandpass\nPace=real\nSeed=1\nFault=none\nChip=AD9850\nClock=80000000\nADC=10bit\n"));
    QCOMPARE(missing.device.kind(), written.device.kind());
    QCOMPARE(missing.paced, written.paced);
    QCOMPARE(missing.seed, written.seed);
    QCOMPARE(missing.fault, written.fault);
    QCOMPARE(missing.chip, written.chip);
    QCOMPARE(missing.clockHz, written.clockHz);
    QCOMPARE(missing.adc.bits, written.adc.bits);
    // Invalid values yield the same defaults.
    const SimulatorSettings unreadable =
        readSimulatorSettings(write("[Simulator]\nDevice=?\nPace=?\nSeed=?\nFault=?\nChip=?\nClock=?\nADC=?\n"));
    QCOMPARE(unreadable.device.kind(), written.device.kind());
    QCOMPARE(unreadable.paced, written.paced);
    QCOMPARE(unreadable.seed, written.seed);
    QCOMPARE(unreadable.fault, written.fault);
    QCOMPARE(unreadable.chip, written.chip);
    QCOMPARE(unreadable.clockHz, written.clockHz);
    QCOMPARE(unreadable.adc.bits, written.adc.bits);
}

void SimulatorSettingsTest::configGivesTheDefaults()
{
    const SimulatorSettings settings = readSimulatorSettings(
        write("[Config]\nDDS Device=AD9851\nDDS Xtal freq=30000000\nADC Device=8bit\n[Simulator]\nClock=rubbish\n"));
    QCOMPARE(settings.chip, DdsChip::Ad9851);
    QCOMPARE(settings.clockHz, 80e6); // an invalid Clock yields the built-in default, not the clock in [Config]
    QCOMPARE(settings.adc.bits, 8);
    QCOMPARE(readSimulatorSettings(write("[Config]\nDDS Xtal freq=30000000\n")).clockHz, 30e6);
}

void SimulatorSettingsTest::detectors()
{
    const SimulatorSettings missing = readSimulatorSettings(m_folder.filePath(QStringLiteral("nowhere.ini")));
    QCOMPARE(missing.detector.kind, DetectorKind::Linear);
    QCOMPARE(missing.detector.level, 10.0);
    QCOMPARE(readSimulatorSettings(write("[Simulator]\nDetector=diode\n")).detector.kind, DetectorKind::Diode);
    for (const char *level : {"", "loud", "nan", "inf", "-101", "41"}) {
        const QByteArray text = QByteArray("[Simulator]\nDetector=?\nLevel=") + level + '\n';
        QCOMPARE(readSimulatorSettings(write(text)).detector.kind, DetectorKind::Linear);
        QCOMPARE(readSimulatorSettings(write(text)).detector.level, 10.0);
    }
}

// A clock beyond the integer range once caused undefined behaviour in the PIC board.
void SimulatorSettingsTest::impossibleClocks()
{
    for (const char *clock : {"1e30", "inf", "nan", "-1", "0", "1000000000001"})
        QCOMPARE(readSimulatorSettings(write(QByteArray("[Simulator]\nClock=") + clock + '\n')).clockHz, 80e6);
    QCOMPARE(readSimulatorSettings(write("[Simulator]\nClock=1e12\n")).clockHz, 1e12);
    QCOMPARE(readSerialSimulatorSettings(write("[Config]\nDDS Xtal freq=1e12\nDDS Multiplier=2147483647\n")).clockHz,
             1e12);
    PicBoard board(readSerialSimulatorSettings(write("[Simulator]\nClock=1e30\n")));
    for (const char byte : QByteArray("A1000000\r"))
        board.receive(static_cast<std::uint8_t>(byte));
    QByteArray answer;
    while (const auto byte = board.nextByte())
        answer += static_cast<char>(*byte);
    QCOMPARE(answer, QByteArray("A+\r"));
}

void SimulatorSettingsTest::faultNames()
{
    const QStringList names = {"none", "drop",   "corrupt", "add",     "refuse", "silence",
                               "half", "unplug", "chatter", "garbage", "stale"};
    for (int index = 0; index < names.size(); ++index) {
        QCOMPARE(static_cast<int>(simulatorFaultFromName(names.at(index))), index);
        QCOMPARE(static_cast<int>(simulatorFaultFromName(names.at(index).toUpper() + QLatin1Char(' '))), index);
    }
    QCOMPARE(simulatorFaultFromName(QString()), SimulatorFault::None);
    QCOMPARE(simulatorFaultFromName(QStringLiteral("rubbish")), SimulatorFault::None);
    QCOMPARE(readSimulatorSettings(write("[Simulator]\nFault=Unplug\n")).fault, SimulatorFault::Unplug);
}

QTEST_APPLESS_MAIN(SimulatorSettingsTest)
#include "simulator_settings.moc"
