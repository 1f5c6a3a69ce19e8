// SPDX-License-Identifier: MIT
// Tests each interface and mode: its count range, and whether the counts follow the detector's law.
#include "core/common_functions.h"
#include "core/detector_calibration.h"

#include <QTest>

using namespace calvorn;

class TestDetectorCalibration : public QObject
{
    Q_OBJECT

private slots:
    void rangeOfCounts_data()
    {
        QTest::addColumn<int>("interfaceType");
        QTest::addColumn<QString>("converter");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("lowest");
        QTest::addColumn<int>("highest");
        QTest::addColumn<bool>("isLevel");
        QTest::newRow("parallel port, 10 bits") << 2 << "10bit" << 1 << 0 << 1023 << true;
        QTest::newRow("parallel port, 8 bits") << 2 << "8bit" << 1 << 0 << 255 << true;
        // These boards have ten-bit converters. The "ADC Device" key applies only to the parallel port.
        QTest::newRow("PIC") << 1 << "8bit" << 1 << 0 << 1023 << true;
        QTest::newRow("MiniVNA, angle") << 3 << "8bit" << 1 << 0 << 1023 << false;
        QTest::newRow("MiniVNA, return loss") << 3 << "10bit" << 2 << 0 << 1023 << true;
        // The program shows 1024 - count; the board sends 0 to 1023.
        QTest::newRow("MiniVNA, device") << 3 << "8bit" << 3 << 1 << 1024 << true;
        QTest::newRow("MiniVNA, no mode") << 3 << "10bit" << 0 << 0 << 1023 << false;
    }

    void rangeOfCounts()
    {
        QFETCH(int, interfaceType);
        QFETCH(QString, converter);
        QFETCH(int, mode);
        QFETCH(bool, isLevel);
        Configuration configuration;
        configuration.interfaceType = static_cast<std::int16_t>(interfaceType);
        configuration.adcDevice = converter;
        configuration.measuringMode = static_cast<std::int16_t>(mode);
        configuration.adcStep = 0.0025F;
        configuration.detectorLaw.kind = DetectorLaw::Kind::Log;
        const DetectorCalibration detector = detectorOf(configuration);
        QTEST(detector.lowestCount, "lowest");
        QTEST(detector.highestCount, "highest");
        QCOMPARE(detector.law.kind, isLevel ? DetectorLaw::Kind::Log : DetectorLaw::Kind::Linear);
        // 400 counts are 1 V, which the law converts to 1000 / 25 - 84 = -44 dBm.
        const double expected = isLevel ? voltsOfDbm(-44.0) : 1.0;
        QVERIFY(std::abs(detector.volts(400.0) / expected - 1.0) < 1e-6);
        QVERIFY(std::abs(static_cast<double>(countToInputVolts(configuration, 400.0)) / expected - 1.0) < 1e-6);
    }

    void theFloorIsHalfACountAboveTheLowest()
    {
        Configuration configuration;
        configuration.interfaceType = kInterfaceVna;
        configuration.measuringMode = 3;
        configuration.adcStep = 0.0025F;
        QVERIFY(std::abs(detectorOf(configuration).floor() - 1.5 * 0.0025) < 1e-8);
        configuration.measuringMode = 2;
        QVERIFY(std::abs(detectorOf(configuration).floor() - 0.5 * 0.0025) < 1e-8);
    }
};

QTEST_APPLESS_MAIN(TestDetectorCalibration)
#include "test_detector_calibration.moc"
