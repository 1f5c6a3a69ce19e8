// SPDX-License-Identifier: MIT
// Tests the levels computed for nonlinear detectors against data-sheet values.
#include "core/detector_law.h"

#include "core/common_functions.h"
#include "core/detector_calibration.h"
#include "tests/support/detector_laws.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace calvorn;
using calvorn::test::isNear;
using calvorn::test::logLaw;
using calvorn::test::tableLaw;

class TestDetectorLaw : public QObject
{
    Q_OBJECT

private slots:
    void levelsAndVolts();
    void aLinearDetectorGivesItsVolts();
    void aLogarithmicDetector_data();
    void aLogarithmicDetector();
    void aTableIsInterpolatedInDecibels();
    void aTableMayFall();
    void beyondATableItsEndsHold();
    void theWayBack();
    void everyLevelIsANumber();
    void twoPointsOrNoVoltsAreInterpolatedOverVolts();
    void calibrationsFromCounts();
    void whatCannotBeUsed();
};

void TestDetectorLaw::levelsAndVolts()
{
    // 1 mW and 1 W into 50 ohms, and 1 V RMS.
    QVERIFY(isNear(voltsOfDbm(0.0), 0.2236068, 1e-7));
    QVERIFY(isNear(voltsOfDbm(30.0), 7.0710678, 1e-7));
    QVERIFY(isNear(dBmOfVolts(1.0), 13.0103, 1e-4));
    for (double level = -120.0; level <= 40.0; level += 7.3)
        QVERIFY(isNear(dBmOfVolts(voltsOfDbm(level)), level, 1e-9));
    QCOMPARE(dBmOfVolts(0.0), -std::numeric_limits<double>::infinity());
    QCOMPARE(dBmOfVolts(-1.0), -std::numeric_limits<double>::infinity());
}

void TestDetectorLaw::aLinearDetectorGivesItsVolts()
{
    const DetectorLaw law;
    QVERIFY(law.isUsable());
    for (const double volts : {-0.1, 0.0, 0.123456789, 2.5}) {
        QCOMPARE(law.inputVolts(volts), volts);
        QVERIFY(!law.isBeyondEnds(volts));
    }
}

void TestDetectorLaw::aLogarithmicDetector_data()
{
    QTest::addColumn<int>("preset");
    QTest::addColumn<double>("volts");
    QTest::addColumn<double>("level"); // dBm
    // 25 mV per dB above -84 dBm.
    QTest::newRow("AD8307, 0 V") << 0 << 0.0 << -84.0;
    QTest::newRow("AD8307, -70 dBm") << 0 << 0.35 << -70.0;
    QTest::newRow("AD8307, 10 dBm") << 0 << 2.35 << 10.0;
    // The voltage falls by 25 mV per dB and reaches 0 V at 20 dBm.
    QTest::newRow("AD8318, -60 dBm") << 1 << 2.0 << -60.0;
    QTest::newRow("AD8318, 0 dBm") << 1 << 0.5 << 0.0;
}

void TestDetectorLaw::aLogarithmicDetector()
{
    QFETCH(int, preset);
    QFETCH(double, volts);
    QFETCH(double, level);
    const DetectorPreset &known = kDetectorPresets[preset];
    const DetectorLaw law = logLaw(known.slope, known.intercept);
    QVERIFY(law.isUsable());
    QVERIFY(isNear(dBmOfVolts(law.inputVolts(volts)), level, 1e-9));
    QVERIFY(!law.isBeyondEnds(volts));
}

void TestDetectorLaw::aTableIsInterpolatedInDecibels()
{
    const DetectorLaw law = tableLaw({{0.01, -30.0}, {0.05, -20.0}, {0.3, -5.0}, {1.2, 10.0}});
    QVERIFY(law.isUsable());
    for (const auto &point : law.points())
        QVERIFY(isNear(dBmOfVolts(law.inputVolts(point.volts)), point.dBm, 1e-9));
    // Halfway in decibels means sqrt(0.01 x 0.05) and sqrt(0.05 x 0.3) volts.
    QVERIFY(isNear(dBmOfVolts(law.inputVolts(0.0223606798)), -25.0, 1e-6));
    QVERIFY(isNear(dBmOfVolts(law.inputVolts(0.1224744871)), -12.5, 1e-6));
    // 0 V has no value in decibels, so these points are interpolated linearly in volts.
    const DetectorLaw fromZero = tableLaw({{0.0, -84.0}, {0.5, -64.0}});
    QVERIFY(isNear(dBmOfVolts(fromZero.inputVolts(0.25)), -74.0, 1e-9));
    QVERIFY(isNear(fromZero.detectorVolts(voltsOfDbm(-74.0)), 0.25, 1e-12));
}

void TestDetectorLaw::aTableMayFall()
{
    const DetectorLaw law = tableLaw({{0.5, 0.0}, {1.0, -20.0}, {2.0, -60.0}});
    QVERIFY(law.isUsable());
    // Plotted against volts, the points lie on a straight line.
    QVERIFY(isNear(dBmOfVolts(law.inputVolts(0.75)), -10.0, 1e-9));
    QVERIFY(isNear(dBmOfVolts(law.inputVolts(1.5)), -40.0, 1e-9));
    QVERIFY(isNear(dBmOfVolts(law.inputVolts(0.4)), 0.0, 1e-9));
}

void TestDetectorLaw::beyondATableItsEndsHold()
{
    const DetectorLaw law = tableLaw({{0.1, -30.0}, {0.5, -10.0}});
    QVERIFY(isNear(dBmOfVolts(law.inputVolts(0.0)), -30.0, 1e-9));
    QVERIFY(isNear(dBmOfVolts(law.inputVolts(9.0)), -10.0, 1e-9));
    QVERIFY(law.isBeyondEnds(0.099) && law.isBeyondEnds(0.501));
    QVERIFY(!law.isBeyondEnds(0.1) && !law.isBeyondEnds(0.3) && !law.isBeyondEnds(0.5));
}

void TestDetectorLaw::theWayBack()
{
    const DetectorLaw rising = tableLaw({{0.01, -30.0}, {0.05, -20.0}, {0.3, -5.0}, {1.2, 10.0}});
    const DetectorLaw falling = tableLaw({{0.5, 0.0}, {1.0, -20.0}, {2.0, -60.0}});
    QVERIFY(rising.isRising() && !falling.isRising());
    QVERIFY(logLaw(25.0, -84.0).isRising() && !logLaw(-25.0, 20.0).isRising());
    for (const DetectorLaw &law : {DetectorLaw(), logLaw(25.0, -84.0), logLaw(-25.0, 20.0), rising, falling})
        for (const double volts : {0.5, 0.77, 1.2})
            QVERIFY(isNear(law.detectorVolts(law.inputVolts(volts)), volts, 1e-12));
    QVERIFY(isNear(rising.detectorVolts(0.0), 0.01, 1e-12));
    QVERIFY(isNear(rising.detectorVolts(1000.0), 1.2, 1e-12));
    QVERIFY(isNear(falling.detectorVolts(0.0), 2.0, 1e-12));
    QVERIFY(isNear(falling.detectorVolts(1000.0), 0.5, 1e-12));
    QCOMPARE(logLaw(25.0, -84.0).detectorVolts(0.0), 0.0);
}

void TestDetectorLaw::everyLevelIsANumber()
{
    // With 1 mV per dB above -200 dBm, a supply of 5 V would give 4800 dBm. Levels are limited to 200 dBm, 2.236 GV.
    const DetectorLaw steep = logLaw(1.0, -200.0);
    QVERIFY(isNear(dBmOfVolts(steep.inputVolts(5.0)), 200.0, 1e-9));
    QVERIFY(isNear(dBmOfVolts(steep.inputVolts(1e300)), 200.0, 1e-9));
    QVERIFY(isNear(dBmOfVolts(logLaw(-1.0, 200.0).inputVolts(5.0)), -200.0, 1e-9));
    // In the inverse conversion, 0 V is treated as -200 dBm.
    QVERIFY(isNear(logLaw(-25.0, 20.0).detectorVolts(0.0), 5.5, 1e-12));
    const DetectorLaw close = tableLaw({{0.1, -30.0}, {std::nextafter(0.1, 1.0), -20.0}, {0.2, -10.0}});
    QVERIFY(close.isUsable());
    const DetectorLaw tiny = tableLaw({{5e-324, -30.0}, {0.1, -20.0}, {1000.0, 10.0}});
    for (const DetectorLaw &law : {steep, logLaw(-1.0, 200.0), logLaw(1000.0, 0.0), close, tiny})
        for (const double volts : {-1e300, -1.0, 0.0, 1e-300, 0.1, std::nextafter(0.1, 1.0), 0.15, 2.5, 1e300}) {
            QVERIFY(std::isfinite(law.inputVolts(volts)) && law.inputVolts(volts) > 0.0);
            QVERIFY(std::isfinite(law.detectorVolts(volts)));
        }
}

void TestDetectorLaw::twoPointsOrNoVoltsAreInterpolatedOverVolts()
{
    QVERIFY(isNear(dBmOfVolts(tableLaw({{0.1, -30.0}, {0.4, 0.0}}).inputVolts(0.2)), -20.0, 1e-9));
    // A square-law detector, without and with a point at 0 V.
    const DetectorLaw square = tableLaw({{0.001, -40.0}, {0.01, -30.0}, {0.1, -20.0}, {1.0, -10.0}});
    QVERIFY(isNear(dBmOfVolts(square.inputVolts(0.03162277660)), -25.0, 1e-6));
    const DetectorLaw fromZero = tableLaw({{0.0, -50.0}, {0.01, -30.0}, {0.1, -20.0}, {1.0, -10.0}});
    QVERIFY(isNear(dBmOfVolts(fromZero.inputVolts(0.055)), -25.0, 1e-9));
    // The interpolation depends only on the current points.
    DetectorLaw again = tableLaw({{0.1, -30.0}, {0.4, 0.0}});
    again.setPoints(square.points());
    QVERIFY(again == square);
    QCOMPARE(again.inputVolts(0.02), square.inputVolts(0.02));
}

void TestDetectorLaw::calibrationsFromCounts()
{
    DetectorCalibration linear{0.0025F, 0.1F, {}, 1023};
    QVERIFY(isNear(linear.volts(100.0), 0.35, 1e-6));
    QVERIFY(isNear(linear.countOf(0.3511), 100.0, 0.0));
    QVERIFY(isNear(linear.countOf(0.0), 0.0, 0.0));
    QVERIFY(isNear(linear.floor(), 0.10125, 1e-6));
    // One count, 2.5 mV, is 0.1 dB; the floor is half a count above 0 V.
    DetectorCalibration log{0.0025F, 0.0F, logLaw(25.0, -84.0), 1023};
    QVERIFY(isNear(dBmOfVolts(log.volts(840.0)), 0.0, 1e-5));
    QVERIFY(isNear(log.countOf(voltsOfDbm(-70.02)), 140.0, 0.0));
    QVERIFY(isNear(dBmOfVolts(log.floor()), -83.95, 1e-5));
    // Without a signal, the detector outputs 2.55 V (8-bit full scale at 10 mV per count), corresponding to -82 dBm.
    DetectorCalibration falling{0.01F, 0.0F, logLaw(-25.0, 20.0), 255};
    QVERIFY(isNear(dBmOfVolts(falling.floor()), -81.8, 1e-4));
    DetectorCalibration ends{0.0025F, 0.0F, tableLaw({{0.1, -30.0}, {0.5, -10.0}}), 1023};
    QVERIFY(isNear(dBmOfVolts(ends.floor()), -30.0, 1e-9));
    QCOMPARE(DetectorCalibration().floor(), 0.0);

    Configuration configuration;
    configuration.adcStep = 0.01F;
    configuration.adcDevice = QStringLiteral("8bit");
    QCOMPARE(detectorOf(configuration).highestCount, 255);
    configuration.adcDevice = QStringLiteral("10bit");
    configuration.detectorLaw = logLaw(25.0, -84.0);
    QCOMPARE(detectorOf(configuration).highestCount, 1023);
    QVERIFY(detectorOf(configuration).law == configuration.detectorLaw);
    // For table cells, the detector voltage is rounded first; the input voltage is not rounded.
    QVERIFY(isNear(dBmOfVolts(static_cast<double>(countToInputVolts(configuration, 84.0))), -50.4, 1e-4));
    configuration.detectorLaw = {};
    QCOMPARE(countToInputVolts(configuration, 84.0), 0.84F);
}

void TestDetectorLaw::whatCannotBeUsed()
{
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(!logLaw(0.0, -84.0).isUsable());
    QVERIFY(!logLaw(kNone, -84.0).isUsable());
    for (const double sign : {-1.0, 1.0}) {
        QVERIFY(logLaw(sign * 1.0, -84.0).isUsable() && logLaw(sign * 1000.0, -84.0).isUsable());
        QVERIFY(!logLaw(sign * 0.999, -84.0).isUsable() && !logLaw(sign * 1000.1, -84.0).isUsable());
        QVERIFY(logLaw(25.0, sign * 200.0).isUsable() && !logLaw(25.0, sign * 200.1).isUsable());
    }
    QVERIFY(isNear(dBmOfVolts(logLaw(25.0, -84.0).inputVolts(-0.3)), -84.0, 1e-9));
    QVERIFY(logLaw(25.0, -84.0).isBeyondEnds(-0.001));
    QVERIFY(!logLaw(25.0, kNone).isUsable());
    QVERIFY(!tableLaw({}).isUsable());
    QVERIFY(!tableLaw({{0.1, -30.0}}).isUsable());
    QVERIFY(!tableLaw({{0.1, -30.0}, {0.1, -20.0}}).isUsable());
    QVERIFY(!tableLaw({{0.2, -30.0}, {0.1, -20.0}}).isUsable());
    QVERIFY(!tableLaw({{0.1, -30.0}, {0.2, -30.0}}).isUsable());
    QVERIFY(!tableLaw({{0.1, -30.0}, {0.2, -20.0}, {0.3, -25.0}}).isUsable());
    QVERIFY(!tableLaw({{0.1, -30.0}, {0.2, kNone}}).isUsable());
    std::vector<DetectorLaw::Point> many;
    for (int i = 0; i < 32; ++i)
        many.push_back({0.01 * i, -40.0 + i});
    QVERIFY(tableLaw(many).isUsable());
    many.push_back({1.0, 20.0});
    QVERIFY(!tableLaw(many).isUsable());
}

QTEST_APPLESS_MAIN(TestDetectorLaw)
#include "test_detector_law.moc"
