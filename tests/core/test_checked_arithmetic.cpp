// SPDX-License-Identifier: MIT
#include "core/checked_arithmetic.h"

#include <QTest>

#include <cstdint>

using namespace calvorn;

namespace {
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
} // namespace

class TestCheckedArithmetic : public QObject
{
    Q_OBJECT

private slots:
    void neverWraps()
    {
        QCOMPARE(checkedAdd(kMax - 1, 1), kMax);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, checkedAdd(kMax, 1));
        QCOMPARE(checkedSubtract(kMin + 1, 1), kMin);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, checkedSubtract(kMin, 1));
        QCOMPARE(checkedMultiply(kMax, -1), -kMax);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, checkedMultiply(kMax, 2));
        QCOMPARE(checkedMagnitude(-5), 5);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, checkedMagnitude(kMin));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, checkedAdd<std::int16_t>(32767, 1));
    }

    void roundsHalfToEven()
    {
        QCOMPARE(roundHalfEven(0.5), 0.0);
        QCOMPARE(roundHalfEven(1.5), 2.0);
        QCOMPARE(roundHalfEven(2.5), 2.0);
        QCOMPARE(roundHalfEven(-2.5), -2.0);
        QCOMPARE(roundToDecimals(0.0005, 3), 0.0);
        QCOMPARE(roundToDecimals(0.0015, 3), 0.002);
        QCOMPARE(roundToDecimals(2.665, 2), 2.66);
        QCOMPARE(roundToDecimals(1e300, 3), 1e300);
        QVERIFY(std::isnan(roundToDecimals(std::nan(""), 2)));
    }

    void roundsIntoIntegersOrThrows()
    {
        QCOMPARE(roundToInteger<std::int32_t>(2147483647.4), kMax);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, roundToInteger<std::int32_t>(2147483647.5));
        QCOMPARE(roundToInteger<std::int32_t>(-2147483648.5), kMin);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, roundToInteger<std::int32_t>(std::nan("")));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, roundToInteger<std::int16_t>(32767.5));
    }
};

QTEST_APPLESS_MAIN(TestCheckedArithmetic)
#include "test_checked_arithmetic.moc"
