// SPDX-License-Identifier: MIT
// Tests computing detector laws from measurements at known levels.
#include "core/level_calibration.h"

#include "tests/support/detector_laws.h"

#include <QTest>

#include <cmath>

using namespace calvorn;
using calvorn::test::diodeVolts;
using calvorn::test::fallingLogVolts;
using calvorn::test::isNear;
using calvorn::test::logDetectorVolts;

namespace {

using DetectorVolts = double (*)(double dBm);

DetectorLaw calibrated(DetectorVolts volts, double lowest, double highest, double step)
{
    std::vector<CalibrationPoint> points;
    for (double dBm = highest; dBm >= lowest; dBm -= step)
        points.push_back({dBm, volts(dBm), 0.0});
    return tableLawOf(points).value();
}

// Returns the law's largest error between two levels, in dB.
double worstError(const DetectorLaw &law, DetectorVolts volts, double lowest, double highest)
{
    double worst = 0.0;
    for (double dBm = lowest; dBm <= highest; dBm += 0.01)
        worst = std::max(worst, std::abs(dBmOfVolts(law.inputVolts(volts(dBm))) - dBm));
    return worst;
}

} // namespace

class TestLevelCalibration : public QObject
{
    Q_OBJECT

private slots:
    void twoPointsMakeALine();
    void manyPointsMakeTheBestLine();
    void whatMakesNoLine();
    void slopesAndInterceptsHaveEnds();
    void eightStepsMakeATableOfADiode();
    void aTableFollowsItsDetectorBetweenThePoints_data();
    void aTableFollowsItsDetectorBetweenThePoints();
    void whatMakesNoTable();
};

void TestLevelCalibration::twoPointsMakeALine()
{
    const std::optional<DetectorLaw> law = logLawOf({{-10.0, 1.85, 0.0}, {-60.0, 0.6, 0.0}});
    QVERIFY(law);
    QVERIFY(isNear(law->slope, 25.0, 1e-9));
    QVERIFY(isNear(law->intercept, -84.0, 1e-9));
    const std::optional<DetectorLaw> falling = logLawOf({{0.0, 0.5, 0.0}, {-60.0, 2.0, 0.0}});
    QVERIFY(falling);
    QVERIFY(isNear(falling->slope, -25.0, 1e-9));
    QVERIFY(isNear(falling->intercept, 20.0, 1e-9));
}

void TestLevelCalibration::manyPointsMakeTheBestLine()
{
    // Computed by hand: the mean is (-20 dBm, 1.6 V), the sum of squares 2000 dB², the sum of products 50 V dB.
    const std::vector<CalibrationPoint> points{
        {-50.0, 0.85, 0.0}, {-30.0, 1.34, 0.0}, {-20.0, 1.62, 0.0}, {-10.0, 1.84, 0.0}, {10.0, 2.35, 0.0}};
    const std::optional<DetectorLaw> law = logLawOf(points);
    QVERIFY(law);
    QVERIFY(isNear(law->slope, 25.0, 1e-9));
    QVERIFY(isNear(law->intercept, -84.0, 1e-9));
    QVERIFY(isNear(residualOf(*law, points[0]), 0.0, 1e-9));
    QVERIFY(isNear(residualOf(*law, points[1]), -0.4, 1e-9));
    QVERIFY(isNear(residualOf(*law, points[2]), 0.8, 1e-9));
}

void TestLevelCalibration::whatMakesNoLine()
{
    QVERIFY(!logLawOf({}));
    QVERIFY(!logLawOf({{-10.0, 1.0, 0.0}}));
    QVERIFY(!logLawOf({{-10.0, 1.0, 0.0}, {-10.0, 1.2, 0.0}}));
    QVERIFY(!logLawOf({{-10.0, 1.0, 0.0}, {-20.0, 1.0, 0.0}}));
}

void TestLevelCalibration::slopesAndInterceptsHaveEnds()
{
    const auto through = [](double slope, double intercept) { // mV per dB, dBm
        const auto volts = [&](double dBm) { return (dBm - intercept) * slope / 1000.0; };
        return logLawOf({{0.0, volts(0.0), 0.0}, {-20.0, volts(-20.0), 0.0}});
    };
    QVERIFY(through(1.01, -80.0) && through(-1.01, 20.0) && through(999.0, -80.0) && through(-999.0, 20.0));
    QVERIFY(!through(0.99, -80.0) && !through(-0.99, 20.0) && !through(1001.0, -80.0) && !through(-1001.0, 20.0));
    QVERIFY(through(5.0, -199.0) && through(-5.0, 199.0));
    QVERIFY(!through(5.0, -201.0) && !through(-5.0, 201.0));
}

void TestLevelCalibration::eightStepsMakeATableOfADiode()
{
    std::vector<CalibrationPoint> points;
    for (int step = 0; step <= 8; ++step)
        points.push_back({10.0 - 5.0 * step, diodeVolts(10.0 - 5.0 * step), 0.0});
    const std::optional<DetectorLaw> law = tableLawOf(points);
    QVERIFY(law);
    QCOMPARE(law->points().size(), std::size_t{9});
    for (const CalibrationPoint &point : points)
        QVERIFY(isNear(residualOf(*law, point), 0.0, 1e-9));
}

void TestLevelCalibration::aTableFollowsItsDetectorBetweenThePoints_data()
{
    QTest::addColumn<DetectorVolts>("volts");
    QTest::addColumn<double>("lowest"); // dBm
    QTest::addColumn<double>("highest");
    QTest::addColumn<double>("step");  // dB
    QTest::addColumn<double>("bound"); // dB
    QTest::newRow("logarithmic, 5 dB") << &logDetectorVolts << -80.0 << 10.0 << 5.0 << 0.01;
    QTest::newRow("logarithmic, 10 dB") << &logDetectorVolts << -80.0 << 10.0 << 10.0 << 0.01;
    QTest::newRow("falling, 5 dB") << &fallingLogVolts << -60.0 << 0.0 << 5.0 << 0.01;
    QTest::newRow("falling, 10 dB") << &fallingLogVolts << -60.0 << 0.0 << 10.0 << 0.01;
    QTest::newRow("diode, 5 dB") << &diodeVolts << -30.0 << 10.0 << 5.0 << 0.088;
    QTest::newRow("diode, 10 dB") << &diodeVolts << -30.0 << 10.0 << 10.0 << 0.318;
    QTest::newRow("diode down to its square law, 5 dB") << &diodeVolts << -60.0 << 10.0 << 5.0 << 0.088;
}

void TestLevelCalibration::aTableFollowsItsDetectorBetweenThePoints()
{
    QFETCH(DetectorVolts, volts);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(double, step);
    QFETCH(double, bound);
    const DetectorLaw law = calibrated(volts, lowest, highest, step);
    const double worst = worstError(law, volts, lowest, highest);
    QVERIFY2(worst <= bound, qPrintable(QString::number(worst)));
    for (double dBm = lowest; dBm <= highest; dBm += 0.37) {
        const double detector = volts(dBm);
        QVERIFY(isNear(law.detectorVolts(law.inputVolts(detector)), detector, 1e-12));
    }
}

void TestLevelCalibration::whatMakesNoTable()
{
    QVERIFY(!tableLawOf({}));
    QVERIFY(!tableLawOf({{-10.0, 1.0, 0.0}, {-20.0, 0.5, 0.0}}));
    QVERIFY(tableLawOf({{-10.0, 1.0, 0.0}, {-20.0, 0.5, 0.0}, {-30.0, 0.2, 0.0}}));
    QVERIFY(tableLawOf({{-30.0, 1.0, 0.0}, {-20.0, 0.5, 0.0}, {-10.0, 0.2, 0.0}}));
    QVERIFY(!tableLawOf({{-10.0, 1.0, 0.0}, {-20.0, 0.5, 0.0}, {-15.0, 0.2, 0.0}}));
    QVERIFY(!tableLawOf({{-10.0, 1.0, 0.0}, {-20.0, 0.5, 0.0}, {-30.0, 0.5, 0.0}}));
}

QTEST_APPLESS_MAIN(TestLevelCalibration)
#include "test_level_calibration.moc"
