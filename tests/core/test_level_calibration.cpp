// SPDX-License-Identifier: MIT
// Laws of detectors from levels that are known.
#include "core/level_calibration.h"

#include <QTest>

#include <cmath>

using namespace calvorn;

namespace {

bool isNear(double value, double expected, double bound)
{
    return std::abs(value - expected) <= bound;
}

// A diode, square below 20 mV and linear above.
double diodeVolts(double dBm)
{
    const double peak = std::sqrt(0.1 * std::pow(10.0, dBm / 10.0));
    return 2.4 * (std::sqrt(peak * peak + 0.0004) - 0.02);
}

} // namespace

class TestLevelCalibration : public QObject
{
    Q_OBJECT

private slots:
    void twoPointsMakeALine();
    void manyPointsMakeTheBestLine();
    void whatMakesNoLine();
    void eightStepsMakeATableOfADiode();
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
    // By hand: the mean is (-20 dBm, 1.6 V), the squares are 2000 dB², the products 50 V dB.
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

void TestLevelCalibration::eightStepsMakeATableOfADiode()
{
    std::vector<CalibrationPoint> points;
    for (int step = 0; step <= 8; ++step)
        points.push_back({10.0 - 5.0 * step, diodeVolts(10.0 - 5.0 * step), 0.0});
    const std::optional<DetectorLaw> law = tableLawOf(points);
    QVERIFY(law);
    QCOMPARE(law->points.size(), std::size_t{9});
    for (const CalibrationPoint &point : points)
        QVERIFY(isNear(residualOf(*law, point), 0.0, 1e-9));
    double worst = 0.0;
    for (double dBm = -30.0; dBm <= 10.0; dBm += 0.01)
        worst = std::max(worst, std::abs(dBmOfVolts(law->inputVolts(diodeVolts(dBm))) - dBm));
    QVERIFY2(worst < 0.1, qPrintable(QString::number(worst)));
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
