// SPDX-License-Identifier: MIT
#include "analysis/limit_check.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace calvorn;

namespace {

constexpr double kGap = std::numeric_limits<double>::quiet_NaN();
constexpr double kNothing = -std::numeric_limits<double>::infinity();

// The upper limit is 0 dB from 1000 to 2000 Hz; the lower limit falls from -10 dB at 1400 Hz to -20 dB at 1600 Hz.
LimitLines limits()
{
    LimitLines made;
    made.add({1000.0, 0.0, std::nullopt});
    made.add({1400.0, 0.0, -10.0});
    made.add({1600.0, 0.0, -20.0});
    made.add({2000.0, 0.0, std::nullopt});
    return made;
}

} // namespace

class TestLimitCheck : public QObject
{
    Q_OBJECT

private slots:
    void insideIsPassed()
    {
        std::vector<double> frequencies{900.0, 1000.0, 1300.0, 1450.0, 1500.0, 1700.0, 2100.0};
        std::vector<double> amplitudes{5.0, 0.0, -40.0, -11.0, -12.0, -2.0, 5.0};
        for (int falling = 0; falling < 2; ++falling) {
            const LimitVerdict verdict = judge(limits(), frequencies, amplitudes);
            QVERIFY(verdict.hasVerdict() && verdict.hasPassed());
            QCOMPARE(verdict.judged, std::size_t{5});
            QCOMPARE(verdict.outside, std::size_t{0});
            // A value on the limit passes, with a margin of 0.
            QCOMPARE(verdict.frequency, 1000.0);
            QCOMPARE(verdict.value, 0.0);
            QCOMPARE(verdict.limit, 0.0);
            QCOMPARE(verdict.margin, 0.0);
            QVERIFY(verdict.isUpper);
            std::ranges::reverse(frequencies);
            std::ranges::reverse(amplitudes);
        }
    }

    void theWorstPointIsNamed()
    {
        const std::vector<double> frequencies{1100.0, 1450.0, 1500.0, 1550.0, 1700.0};
        const LimitVerdict verdict = judge(limits(), frequencies, std::vector<double>{1.5, -14.0, -20.0, -18.0, -2.5});
        QVERIFY(verdict.hasVerdict() && !verdict.hasPassed());
        QCOMPARE(verdict.judged, std::size_t{5});
        QCOMPARE(verdict.outside, std::size_t{4});
        QCOMPARE(verdict.frequency, 1500.0);
        QCOMPARE(verdict.value, -20.0);
        QCOMPARE(verdict.limit, -15.0); // halfway from -10 to -20
        QCOMPARE(verdict.margin, -5.0);
        QVERIFY(!verdict.isUpper);
    }

    void theNearestLimitOfAnInnerPoint()
    {
        // -4 dB is 4 dB from the upper and 11 dB from the lower limit; -12 dB is 12 dB and 3 dB away from them.
        const std::vector<double> frequencies{1500.0};
        LimitVerdict verdict = judge(limits(), frequencies, std::vector<double>{-4.0});
        QVERIFY(verdict.isUpper);
        QCOMPARE(verdict.margin, 4.0);
        verdict = judge(limits(), frequencies, std::vector<double>{-12.0});
        QVERIFY(!verdict.isUpper);
        QCOMPARE(verdict.margin, 3.0);
        QCOMPARE(verdict.judged, std::size_t{1});
    }

    void withoutALimitThereIsNoVerdict()
    {
        const std::vector<double> amplitudes{5.0, 5.0};
        QVERIFY(!judge(limits(), std::vector<double>{100.0, 9000.0}, amplitudes).hasVerdict());
        const LimitVerdict verdict = judge(LimitLines(), std::vector<double>{1100.0, 1200.0}, amplitudes);
        QVERIFY(!verdict.hasVerdict());
        QVERIFY(!verdict.hasPassed());
        QVERIFY(!judge(limits(), {}, {}).hasVerdict());
    }

    void gapsAreSkipped()
    {
        const std::vector<double> frequencies{1100.0, kGap, 1200.0};
        const LimitVerdict verdict = judge(limits(), frequencies, std::vector<double>{kGap, 9.0, -1.0});
        QCOMPARE(verdict.judged, std::size_t{1});
        QVERIFY(verdict.hasPassed());
        QVERIFY(!judge(limits(), frequencies, std::vector<double>{kGap, kGap, kGap}).hasVerdict());
    }

    void belowTheFloorBreaksALowerLimitOnly()
    {
        const LimitVerdict upper = judge(limits(), std::vector<double>{1100.0}, std::vector<double>{kNothing});
        QVERIFY(upper.hasPassed());
        const LimitVerdict lower = judge(limits(), std::vector<double>{1500.0}, std::vector<double>{kNothing});
        QVERIFY(!lower.hasPassed());
        QCOMPARE(lower.outside, std::size_t{1});
        QVERIFY(std::isinf(lower.margin) && lower.margin < 0.0);
        QCOMPARE(lower.limit, -15.0);
    }
};

QTEST_APPLESS_MAIN(TestLimitCheck)
#include "test_limit_check.moc"
