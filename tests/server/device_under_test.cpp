// SPDX-License-Identifier: MIT
// Guards the simulated devices and the detector: plausible curves, reproducible noise.
#include "server/boards/device_under_test.h"
#include "server/boards/detector_model.h"

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
    void namesAreKnown();
    void detectorSettles();
    void noiseIsReproducibleAndSmall();
};

void DeviceUnderTestTest::bandpassIs600KilohertzWide()
{
    QVERIFY(near(decibels(DeviceKind::Bandpass, 7.1e6), -1.5, 0.01));
    // The corners lie geometrically around the centre.
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
    QVERIFY(near(decibels(DeviceKind::Notch, 7e6 + 175e3), -3.0, 0.2)); // half of 7 MHz / Q
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
    // Between the points 3 dB below the peak there are several of a 100 kHz sweep (250 Hz each).
    QVERIFY(responseOf(DeviceKind::Crystal, 9e6 - 500.0) > best / std::sqrt(2.0));
    QVERIFY(responseOf(DeviceKind::Crystal, 9e6 - 750.0) < best / std::sqrt(2.0));
}

void DeviceUnderTestTest::namesAreKnown()
{
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
