// SPDX-License-Identifier: MIT
// Tests the simulated devices and the simulated detector: plausible curves, reproducible noise.
#include "server/boards/device_under_test.h"
#include "server/boards/detector_model.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace calvorn;
using namespace std::chrono_literals;

namespace {

double decibels(DeviceKind device, double hertz)
{
    return 20.0 * std::log10(responseOf(device, hertz));
}

bool near(double value, double wanted, double tolerance)
{
    return std::fabs(value - wanted) <= tolerance;
}

} // namespace

class DeviceUnderTestTest : public QObject
{
    Q_OBJECT

private slots:
    void bandpassIs600KilohertzWide();
    void lowpassRipplesAndFalls();
    void notchIsDeepAtItsCentre();
    void crystalHasBothResonances();
    void antennaSendsLeastBackAtItsResonance();
    void aCurveComesFromAFile();
    void aBadCurvePassesNothing_data();
    void aBadCurvePassesNothing();
    void namesAreKnown();
    void detectorSettles();
    void noiseIsReproducibleAndSmall();
    void aLinearDetector();
    void aLogarithmicDetector_data();
    void aLogarithmicDetector();
    void aDiode();
};

void DeviceUnderTestTest::bandpassIs600KilohertzWide()
{
    QVERIFY(near(decibels(DeviceKind::Bandpass, 7.1e6), -1.5, 0.01));
    // The centre is the geometric mean of the corners.
    const double half = 300e3;
    const double root = std::sqrt(7.1e6 * 7.1e6 + half * half);
    QVERIFY(near(decibels(DeviceKind::Bandpass, root - half), -4.51, 0.02));
    QVERIFY(near(decibels(DeviceKind::Bandpass, root + half), -4.51, 0.02));
    QVERIFY(decibels(DeviceKind::Bandpass, 1e6) < -60);
}

void DeviceUnderTestTest::lowpassRipplesAndFalls()
{
    for (double hertz = 1e3; hertz <= 7e6; hertz += 50e3) {
        QVERIFY(decibels(DeviceKind::Lowpass, hertz) <= 1e-9);
        QVERIFY(decibels(DeviceKind::Lowpass, hertz) >= -0.21);
    }
    QVERIFY(decibels(DeviceKind::Lowpass, 14e6) < -35);
    QVERIFY(decibels(DeviceKind::Lowpass, 28e6) < -65);
}

void DeviceUnderTestTest::notchIsDeepAtItsCentre()
{
    QVERIFY(responseOf(DeviceKind::Notch, 7e6) < 1e-6);
    QVERIFY(near(decibels(DeviceKind::Notch, 1e6), 0.0, 0.01));
    QVERIFY(near(decibels(DeviceKind::Notch, 7e6 + 175e3), -3.0, 0.2)); // half the bandwidth, which is 7 MHz / Q
}

void DeviceUnderTestTest::crystalHasBothResonances()
{
    double best = 0.0;
    double worst = 1.0;
    double bestHz = 0.0;
    double worstHz = 0.0;
    for (double hertz = 8.95e6; hertz <= 9.05e6; hertz += 10.0) {
        const double response = responseOf(DeviceKind::Crystal, hertz);
        if (response > best) {
            best = response;
            bestHz = hertz;
        }
        if (response < worst) {
            worst = response;
            worstHz = hertz;
        }
    }
    QVERIFY(near(bestHz, 9e6, 30.0));
    QVERIFY(near(best, 100.0 / 120.0, 0.01));
    QVERIFY(near(worstHz, 9.018e6, 500.0));
    // The 3 dB bandwidth spans several points of a 100 kHz sweep (250 Hz each).
    QVERIFY(responseOf(DeviceKind::Crystal, 9e6 - 500.0) > best / std::sqrt(2.0));
    QVERIFY(responseOf(DeviceKind::Crystal, 9e6 - 750.0) < best / std::sqrt(2.0));
}

// The antenna is a 60-ohm dipole: SWR 1.2.
void DeviceUnderTestTest::antennaSendsLeastBackAtItsResonance()
{
    const DeviceUnderTest antenna(DeviceKind::Antenna);
    QVERIFY(near(antenna.responseAt(7.05e6), 10.0 / 110.0, 1e-9));
    for (const double away : {50e3, 200e3, 1e6, 5e6}) {
        QVERIFY(antenna.responseAt(7.05e6 - away) > antenna.responseAt(7.05e6 - away / 2.0));
        QVERIFY(antenna.responseAt(7.05e6 + away) > antenna.responseAt(7.05e6 + away / 2.0));
        QVERIFY(antenna.responseAt(7.05e6 + away) < 1.0);
        QCOMPARE(antenna.reflectionAt(7.05e6 + away), antenna.responseAt(7.05e6 + away));
    }
    // The other devices are lossless: they reflect everything that they do not pass.
    QVERIFY(near(DeviceUnderTest(DeviceKind::Through).reflectionAt(1e6), 0.0, 1e-9));
    QVERIFY(near(DeviceUnderTest(DeviceKind::Notch).reflectionAt(7e6), 1.0, 1e-6));
}

void DeviceUnderTestTest::aCurveComesFromAFile()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("curve.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    // Points may be in any order and contain spaces; a response above 1 is limited to 1.
    QVERIFY(file.write("# a filter\n\n3e6 , 0.5\r\n1000000,0.1\n2000000, 0.9\n4000000,7\n") > 0);
    file.close();
    const DeviceUnderTest device = DeviceUnderTest::fromFile(file.fileName());
    QCOMPARE(device.kind(), DeviceKind::Curve);
    QCOMPARE(device.responseAt(1e6), 0.1);
    QVERIFY(near(device.responseAt(1.25e6), 0.3, 1e-12));
    QCOMPARE(device.responseAt(2e6), 0.9);
    QVERIFY(near(device.responseAt(2.5e6), 0.7, 1e-12));
    QCOMPARE(device.responseAt(4e6), 1.0);
    QCOMPARE(device.responseAt(0.99e6), 0.0);
    QCOMPARE(device.responseAt(4.01e6), 0.0);
    QVERIFY(near(device.reflectionAt(2e6), std::sqrt(1.0 - 0.81), 1e-12));
}

void DeviceUnderTestTest::aBadCurvePassesNothing_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no number") << QByteArray("1000000,0.5\n2000000,half\n3000000,0.5\n");
    QTest::newRow("three fields") << QByteArray("1000000,0.5\n2000000,0.5,1\n3000000,0.5\n");
    QTest::newRow("one field") << QByteArray("1000000,0.5\n2000000\n3000000,0.5\n");
    QTest::newRow("not finite") << QByteArray("1000000,0.5\ninf,0.5\n3000000,0.5\n");
}

void DeviceUnderTestTest::aBadCurvePassesNothing()
{
    QFETCH(QByteArray, text);
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("curve.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
    file.close();
    for (const double hertz : {1e6, 2e6, 3e6}) {
        QCOMPARE(DeviceUnderTest::fromFile(file.fileName()).responseAt(hertz), 0.0);
        QCOMPARE(DeviceUnderTest::fromFile(folder.filePath(QStringLiteral("nowhere"))).responseAt(hertz), 0.0);
    }
}

void DeviceUnderTestTest::namesAreKnown()
{
    QCOMPARE(deviceFromName(QStringLiteral("Antenna")), DeviceKind::Antenna);
    QCOMPARE(deviceFromName(QStringLiteral("curve")), DeviceKind::Curve);
    QCOMPARE(deviceFromName(QStringLiteral("LowPass")), DeviceKind::Lowpass);
    QCOMPARE(deviceFromName(QStringLiteral("notch")), DeviceKind::Notch);
    QCOMPARE(deviceFromName(QStringLiteral(" crystal ")), DeviceKind::Crystal);
    QCOMPARE(deviceFromName(QStringLiteral("through")), DeviceKind::Through);
    QCOMPARE(deviceFromName(QStringLiteral("bandpass")), DeviceKind::Bandpass);
    QCOMPARE(deviceFromName(QStringLiteral("teapot")), DeviceKind::Bandpass);
}

void DeviceUnderTestTest::detectorSettles()
{
    DetectorModel detector(1);
    detector.setLevel(1.0, 0us);
    QVERIFY(near(detector.read(20us), 1.0 - std::exp(-1.0), 0.006));
    QVERIFY(near(detector.read(400us), 1.0, 0.006));
    detector.setLevel(0.0, 400us);
    QVERIFY(near(detector.read(420us), std::exp(-1.0), 0.006));
}

// A linear detector ignores the simulated source level.
void DeviceUnderTestTest::aLinearDetector()
{
    for (const double level : {-50.0, 10.0}) {
        const DetectorCircuit detector{DetectorKind::Linear, level};
        QVERIFY(near(detector.volts(1.0), 1.0000125, 1e-7));
        QVERIFY(near(detector.volts(0.1), 0.100125, 1e-6));
        QVERIFY(near(detector.volts(0.0), 0.005, 1e-12));
    }
}

void DeviceUnderTestTest::aLogarithmicDetector_data()
{
    QTest::addColumn<double>("level");
    QTest::addColumn<double>("lossDb");
    QTest::addColumn<double>("volts");
    QTest::newRow("10 dBm") << 10.0 << 0.0 << 2.35;
    QTest::newRow("-10 dBm by loss") << 10.0 << 20.0 << 1.85;
    QTest::newRow("-10 dBm by level") << -10.0 << 0.0 << 1.85;
    QTest::newRow("-70 dBm and noise") << -10.0 << 60.0 << 0.35108;
    QTest::newRow("below the noise") << -10.0 << 200.0 << 0.0;
}

void DeviceUnderTestTest::aLogarithmicDetector()
{
    QFETCH(double, level);
    QFETCH(double, lossDb);
    QFETCH(double, volts);
    const DetectorCircuit detector{DetectorKind::Log, level};
    QVERIFY(near(detector.volts(std::pow(10.0, -lossDb / 20.0)), volts, 1e-5));
}

void DeviceUnderTestTest::aDiode()
{
    // 10 dBm into 50 ohms is 1 V peak. Far above the knee the output follows the amplitude, far below it the square.
    const DetectorCircuit detector{DetectorKind::Diode, 10.0};
    QVERIFY(near(detector.volts(1.0), 2.4 * (std::sqrt(1.0004) - 0.02), 1e-9));
    QVERIFY(near(detector.volts(1.0) - detector.volts(0.5), 2.4 * 0.4998, 1e-3));
    QVERIFY(near(detector.volts(0.002) / detector.volts(0.001), 4.0, 0.02));
    QVERIFY(near(detector.volts(0.0), 0.0, 1e-12));
}

void DeviceUnderTestTest::noiseIsReproducibleAndSmall()
{
    DetectorModel one(7);
    DetectorModel same(7);
    DetectorModel other(8);
    double squares = 0.0;
    bool differs = false;
    constexpr int kReadings = 20'000;
    for (int index = 0; index < kReadings; ++index) {
        const double value = one.read(0us);
        QCOMPARE(same.read(0us), value);
        differs = differs || other.read(0us) != value;
        squares += value * value;
    }
    QVERIFY(differs);
    QVERIFY(near(std::sqrt(squares / kReadings), 1.2e-3, 0.05e-3));
}

QTEST_APPLESS_MAIN(DeviceUnderTestTest)
#include "device_under_test.moc"
