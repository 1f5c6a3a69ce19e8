// SPDX-License-Identifier: MIT
#include "analysis/trace.h"

#include "core/scale_type.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace calvorn;

namespace {

constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

// A sweep from 1 MHz to 1.399 MHz, descending if the step is negative. Row r has the count r and the amplitude r / 100.
Sweep numbered(double step = 1000.0)
{
    Sweep sweep;
    sweep.origin = SweepOrigin::Imported;
    for (std::size_t i = 0; i < sweep.frequencies.size(); ++i) {
        sweep.frequencies[i] = (step > 0.0 ? 1e6 : 1.399e6) + static_cast<double>(i) * step;
        sweep.counts[i] = static_cast<double>(i + 1);
        sweep.amplitudes[i] = static_cast<double>(i + 1) / 100.0;
    }
    return sweep;
}

Trace trace(double start, double step, const std::vector<double> &volts)
{
    return {QString(), start, step, volts, 0.001};
}

bool isNear(double actual, double expected)
{
    return std::abs(actual - expected) <= 1e-9 * std::abs(expected);
}

} // namespace

class TestTrace : public QObject
{
    Q_OBJECT

private slots:
    void voltsComeFromTheCounts()
    {
        Sweep sweep = numbered();
        sweep.detector = DetectorCalibration{0.002F, 0.25F};
        const Trace measured = traceOf(sweep, kScaleDb1V); // the table's scale does not matter
        QCOMPARE(measured.volts.size(), std::size_t{400});
        QCOMPARE(measured.start, 1e6);
        QCOMPARE(measured.step, 1000.0);
        const auto step = static_cast<double>(0.002F);
        QVERIFY(isNear(measured.volts[0], 0.25 + step));
        QVERIFY(isNear(measured.volts[399], 0.25 + 400.0 * step));
        QVERIFY(isNear(measured.floor, 0.25 + step / 2.0));
        // The floor is at least half a count above zero volts, whatever the offset.
        sweep.detector = DetectorCalibration{0.002F, -0.1F};
        QVERIFY(isNear(traceOf(sweep, kScaleLinear).floor, step / 2.0));
        QVERIFY(traceOf(sweep, kScaleLinear).volts[0] < 0.0);
    }

    void voltsComeFromTheAmplitudes_data()
    {
        QTest::addColumn<int>("scale");
        QTest::addColumn<double>("minus20");
        QTest::addColumn<double>("floor");
        QTest::newRow("1 V") << int{kScaleDb1V} << 0.1 << 1e-5;
        QTest::newRow("1 V + 10 dB") << int{kScaleDb1VHeadroom} << 0.1 << 1e-5;
        QTest::newRow("10 V") << int{kScaleDb10V} << 1.0 << 1e-4;
        QTest::newRow("10 V + 10 dB") << int{kScaleDb10VHeadroom} << 1.0 << 1e-4;
        QTest::newRow("volts") << int{kScaleLinear} << -20.0 << 0.0005;
    }
    void voltsComeFromTheAmplitudes()
    {
        QFETCH(int, scale);
        QFETCH(double, minus20);
        QFETCH(double, floor);
        Sweep sweep = numbered();
        sweep.amplitudes[7] = -20.0;
        const Trace imported = traceOf(sweep, static_cast<std::int16_t>(scale));
        QVERIFY(isNear(imported.volts[7], minus20));
        QVERIFY(isNear(imported.floor, floor));
        // On dB scales, -100 dB means below the floor.
        sweep.amplitudes[8] = scale == kScaleLinear ? 0.0 : -100.0;
        QVERIFY(traceOf(sweep, static_cast<std::int16_t>(scale)).volts[8] <= imported.floor);
    }

    void aCellWithoutANumberIsAGap()
    {
        Sweep sweep = numbered();
        sweep.amplitudes[5] = Sweep::kNoNumber;
        sweep.counts[6] = Sweep::kNoNumber;
        QVERIFY(std::isnan(traceOf(sweep, kScaleLinear).volts[5]));
        QVERIFY(std::isnan(traceOf(sweep, kScaleDb1V).volts[5]));
        QVERIFY(!std::isnan(traceOf(sweep, kScaleLinear).volts[6]));
        sweep.detector = DetectorCalibration{0.002F, 0.0F};
        QVERIFY(!std::isnan(traceOf(sweep, kScaleLinear).volts[5]));
        QVERIFY(std::isnan(traceOf(sweep, kScaleLinear).volts[6]));
        sweep.frequencies[399] = Sweep::kNoNumber;
        QVERIFY(traceOf(sweep, kScaleLinear).isEmpty());
        QVERIFY(traceOf(Sweep(), kScaleLinear).isEmpty());
    }

    void equalDistances()
    {
        for (const double step : {1000.0, -1000.0}) {
            Sweep sweep = numbered(step);
            QVERIFY(isEquallySpaced(sweep));
            // In a table of whole hertz, frequencies may deviate by 1 % of the step plus 1 Hz.
            sweep.frequencies[100] += 10.9;
            QVERIFY(isEquallySpaced(sweep));
            sweep.frequencies[100] += 0.2;
            QVERIFY(!isEquallySpaced(sweep));
            sweep.frequencies[100] = Sweep::kNoNumber;
            QVERIFY(!isEquallySpaced(sweep));
        }
        Sweep standing = numbered();
        standing.frequencies.fill(5e6);
        QVERIFY(isEquallySpaced(standing));
    }

    void voltsBetweenSamples()
    {
        const Trace rising = trace(1000.0, 10.0, {1.0, 2.0, 4.0, kGap, 8.0});
        const Trace falling = trace(1040.0, -10.0, {8.0, kGap, 4.0, 2.0, 1.0});
        for (const Trace &each : {rising, falling}) {
            QCOMPARE(each.voltsAt(1000.0), std::optional(1.0));
            QVERIFY(isNear(each.voltsAt(1005.0).value_or(0.0), 1.5));
            QVERIFY(isNear(each.voltsAt(1017.5).value_or(0.0), 3.5));
            QCOMPARE(each.voltsAt(1020.0), std::optional(4.0));
            QVERIFY(!each.voltsAt(1021.0)); // next to a gap
            QVERIFY(!each.voltsAt(1030.0));
            QCOMPARE(each.voltsAt(1040.0), std::optional(8.0));
            QVERIFY(!each.voltsAt(999.9));
            QVERIFY(!each.voltsAt(1040.1));
        }
        QVERIFY(!Trace().voltsAt(0.0));
        QCOMPARE(trace(5.0, 0.0, {3.0, 4.0}).voltsAt(5.0), std::optional(3.0));
        QVERIFY(!trace(5.0, 0.0, {3.0, 4.0}).voltsAt(5.1));
    }

    void everySampleIsFoundAtItsOwnFrequency()
    {
        // Tests fractional steps, up to the highest frequencies.
        for (const double step : {0.1, 1234.567, 2999999.0 / 7.0, -33.3}) {
            Trace each = trace(1.5e9, step, {});
            for (int i = 0; i < 400; ++i)
                each.volts.push_back(i % 2 == 0 ? i : kGap);
            for (std::size_t i = 0; i < 400; i += 2)
                QCOMPARE(each.voltsAt(each.frequencyAt(i)), std::optional(each.volts[i]));
        }
    }

    void relativeToItselfIsOne()
    {
        const Trace each = trace(1000.0, 10.0, {1.0, 2.0, 4.0});
        const RelativeTrace relative = relativeTo(each, each);
        QCOMPARE(relative.ratios, (std::vector<double>{1.0, 1.0, 1.0}));
        QVERIFY(!relative.isOutsideReference && !relative.isReferenceBelowFloor);
    }

    void relativeToAnotherRange()
    {
        // The reference runs downwards, from 1060 Hz (1 V) to 1010 Hz (3.5 V).
        const Trace reference = trace(1060.0, -25.0, {1.0, 2.25, 3.5});
        const RelativeTrace relative = relativeTo(trace(1000.0, 10.0, {1, 7, 6, 5, 4, 3, 2, 1}), reference);
        QCOMPARE(relative.start, 1000.0);
        QCOMPARE(relative.step, 10.0);
        QCOMPARE(relative.frequencyAt(3), 1030.0);
        QCOMPARE(relative.ratios.size(), std::size_t{8});
        QVERIFY(std::isnan(relative.ratios[0]));
        QVERIFY(isNear(relative.ratios[1], 2.0));       // 7 / 3.5
        QVERIFY(isNear(relative.ratios[2], 2.0));       // 6 / 3.0
        QVERIFY(isNear(relative.ratios[5], 3.0 / 1.5)); // at 1050 Hz
        QVERIFY(isNear(relative.ratios[6], 2.0));
        QVERIFY(std::isnan(relative.ratios[7]));
        QVERIFY(relative.isOutsideReference);
        QVERIFY(!relative.isReferenceBelowFloor);
    }

    void whereTheReferenceSawNothing()
    {
        const Trace reference = trace(1000.0, 10.0, {1.0, 0.001, kGap, 1.0});
        const RelativeTrace relative = relativeTo(trace(1000.0, 10.0, {-0.5, 1.0, 1.0, 0.5}), reference);
        QCOMPARE(relative.ratios[0], -0.5);
        QVERIFY(std::isnan(relative.ratios[1]));
        QVERIFY(std::isnan(relative.ratios[2]));
        QCOMPARE(relative.ratios[3], 0.5);
        QVERIFY(!relative.isOutsideReference);
        QVERIFY(relative.isReferenceBelowFloor);
        // A gap does not count as below the floor.
        QVERIFY(!relativeTo(trace(1000.0, 10.0, {1.0, kGap}), trace(1000.0, 10.0, {kGap, 1.0})).isReferenceBelowFloor);
    }
};

QTEST_APPLESS_MAIN(TestTrace)
#include "test_trace.moc"
