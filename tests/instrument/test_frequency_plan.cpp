// SPDX-License-Identifier: MIT
#include "instrument/frequency_plan.h"

#include "core/runtime_error.h"
#include "tests/support/locales.h"

#include <QTest>

#include <limits>

using namespace calvorn;
using calvorn::test::inLocale;

class TestFrequencyPlan : public QObject
{
    Q_OBJECT

private:
    static Configuration range(std::int32_t start, std::int32_t stop, std::int32_t maximum = 60000000)
    {
        Configuration configuration;
        configuration.startFreq = start;
        configuration.stopFreq = stop;
        configuration.ddsMaxFreq = maximum;
        return configuration;
    }

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void aLargeEnoughRangeIsLeftAlone()
    {
        Configuration c = range(1000000, 1000400);
        c.stopNotice = QStringLiteral("old");
        QVERIFY(!correctRange(c));
        QCOMPARE(c.startFreq, 1000000);
        QCOMPARE(c.stopFreq, 1000400);
        QVERIFY(c.startNotice.isEmpty() && c.stopNotice.isEmpty());
        c = range(1000400, 1000000);
        QVERIFY(!correctRange(c));
    }

    void anAscendingRangeGrowsUpwards_data() { test::addLocaleRows(); }
    void anAscendingRangeGrowsUpwards()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Configuration c = range(1000, 1200);
        QVERIFY(correctRange(c));
        QCOMPARE(c.startFreq, 1000);
        QCOMPARE(c.stopFreq, 1400);
        QCOMPARE(c.startNotice, QString());
        QCOMPARE(c.stopNotice, QStringLiteral("Stop frequency will be set to ") +
                                   inLocale(locale, QStringLiteral("1,400")) + QStringLiteral(" Hz"));
        QCOMPARE(stepOfRange(c.startFreq, c.stopFreq), 1);
    }

    void atTheMaximumItGrowsDownwards()
    {
        Configuration c = range(59999800, 59999900);
        QVERIFY(correctRange(c));
        QCOMPARE(c.stopFreq, 60000000);
        QCOMPARE(c.startFreq, 59999600);
        QCOMPARE(c.startNotice, QStringLiteral("Start frequency will be set to 59,999,600 Hz"));
        QCOMPARE(c.stopNotice, QStringLiteral("Stop frequency will be set to 60,000,000 Hz"));
    }

    void aDescendingRangeGrowsDownwards()
    {
        Configuration c = range(1000200, 1000000);
        QVERIFY(correctRange(c));
        QCOMPARE(c.startFreq, 1000200);
        QCOMPARE(c.stopFreq, 999800);
        QCOMPARE(c.startNotice, QString());
        QCOMPARE(c.stopNotice, QStringLiteral("Stop frequency will be set to 999,800 Hz"));
        QCOMPARE(stepOfRange(c.startFreq, c.stopFreq), -1);
    }

    void atTheBottomADescendingRangeIsMoved()
    {
        Configuration c = range(300, 100);
        QVERIFY(correctRange(c));
        QCOMPARE(c.startFreq, 401);
        QCOMPARE(c.stopFreq, 1);
        QCOMPARE(c.startNotice, QStringLiteral("Start frequency will be set to 401 Hz"));
        QCOMPARE(c.stopNotice, QStringLiteral("Stop frequency will be set to 1 Hz"));
    }

    void theStepRoundsHalfToEven()
    {
        QCOMPARE(stepOfRange(1000000, 1000600), 2); // 1.5
        QCOMPARE(stepOfRange(1000000, 1001000), 2); // 2.5
        QCOMPARE(stepOfRange(1001000, 1000000), -2);
        QCOMPARE(stepOfRange(1000000, 10000000), 22500);
    }

    void overflowIsAnErrorAndNeverAWrap()
    {
        constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
        Configuration c = range(kMax, -2);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, correctRange(c));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, stepOfRange(-2, kMax));
        c = range(kMax - 100, kMax - 50, kMax);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, correctRange(c));
    }
};

QTEST_APPLESS_MAIN(TestFrequencyPlan)
#include "test_frequency_plan.moc"
