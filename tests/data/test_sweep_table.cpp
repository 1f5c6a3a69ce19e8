// SPDX-License-Identifier: MIT
#include "data/sweep_table.h"

#include "core/common_functions.h"
#include "core/runtime_error.h"
#include "data/amplitude_column.h"
#include "tests/support/locales.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace calvorn;
using calvorn::test::inLocale;

class TestSweepTable : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void aRebuildShowsThePlan_data() { test::addLocaleRows(); }
    void aRebuildShowsThePlan()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Configuration configuration;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 25000;
        SweepTable table(configuration);
        QSignalSpy rebuilt(&table, &SweepTable::rebuilt);
        table.inizializzaGrid();
        QCOMPARE(rebuilt.count(), 1);
        QCOMPARE(table.text(1, 0), inLocale(locale, QStringLiteral("1,000,000")));
        QCOMPARE(table.text(400, 0), inLocale(locale, QStringLiteral("10,975,000")));
        for (int row = 1; row <= kSweepPoints; ++row) {
            QCOMPARE(table.text(row, 1), QStringLiteral("0"));
            QCOMPARE(table.text(row, 2), QStringLiteral("0"));
        }
    }

    void theAxisIsThatOfTheRows()
    {
        Configuration configuration;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 2500;
        SweepTable table(configuration);
        QVERIFY(!table.axis());
        table.inizializzaGrid();
        QCOMPARE(table.axis()->start, 1000000);
        QCOMPARE(table.axis()->step, 2500);
        // A changed range counts when the rows show it.
        configuration.startFreq = 2000000;
        QCOMPARE(table.axis()->start, 1000000);
        table.forgetAxis();
        QVERIFY(!table.axis());
        configuration.startFreq = std::numeric_limits<std::int32_t>::max() - 2500;
        QVERIFY_THROWS_EXCEPTION(RuntimeError, table.inizializzaGrid());
        QVERIFY(!table.axis());
    }

    void theHeaderFollowsTheScale()
    {
        Configuration configuration;
        SweepTable table(configuration);
        for (const std::int16_t scale : {std::int16_t{0}, std::int16_t{1}, std::int16_t{4}, std::int16_t{9}}) {
            configuration.scaleType = scale;
            table.inizializzaGrid();
            QCOMPARE(table.text(0, 0), QStringLiteral("Frequency"));
            QCOMPARE(table.text(0, 1), scale == 0 ? QStringLiteral("Volt") : QStringLiteral("dB"));
            QCOMPARE(table.text(0, 2), QStringLiteral("Sample"));
        }
    }

    void aNegativeStepFallsDownTheTable()
    {
        Configuration configuration;
        configuration.startFreq = 1000200;
        configuration.stepFreq = -1;
        SweepTable table(configuration);
        table.inizializzaGrid();
        QCOMPARE(table.text(2, 0), QStringLiteral("1,000,199"));
        QCOMPARE(table.text(400, 0), QStringLiteral("999,801"));
    }

    void aFrequencyThatDoesNotFitStopsTheRebuild()
    {
        Configuration configuration;
        configuration.startFreq = 2147483000;
        configuration.stepFreq = 600;
        SweepTable table(configuration);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, table.inizializzaGrid());
        QCOMPARE(table.text(2, 0), QStringLiteral("2,147,483,600"));
        QCOMPARE(table.text(3, 0), QString());
    }

    void cellsOutsideAreRefused()
    {
        const Configuration configuration;
        const SweepTable table(configuration);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, table.text(-1, 0));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, table.text(401, 0));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, table.text(1, 3));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, table.text(1, -1));
        QCOMPARE(table.text(400, 2), QStringLiteral("0"));
    }

    void theViewsSeeTheCells()
    {
        Configuration configuration;
        configuration.startFreq = 1000;
        configuration.stepFreq = 1;
        SweepTable table(configuration);
        const QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);
        table.inizializzaGrid();
        QCOMPARE(table.rowCount(), 400);
        QCOMPARE(table.columnCount(), 3);
        QCOMPARE(table.data(table.index(0, 0), Qt::DisplayRole).toString(), QStringLiteral("1,000"));
        QCOMPARE(table.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Volt"));
    }

    void amplitudesComeFromTheCounts_data() { test::addLocaleRows(); }
    void amplitudesComeFromTheCounts()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Configuration configuration;
        configuration.adcStep = 0.0048F;
        configuration.adcOffset = 0.0F;
        SweepTable table(configuration);
        table.inizializzaGrid();
        table.setText(1, 2, QStringLiteral("1000"));
        table.setText(400, 2, QStringLiteral("104"));
        QSignalSpy changed(&table, &SweepTable::dataChanged);
        AmplitudeColumn(configuration, table).convertAllRows();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(table.text(1, 1), inLocale(locale, QStringLiteral("4.800")));
        QCOMPARE(table.text(2, 1), inLocale(locale, QStringLiteral("0.000")));
        QCOMPARE(table.text(400, 1), inLocale(locale, QStringLiteral("0.499")));
        configuration.scaleType = 3;
        AmplitudeColumn(configuration, table).convertAllRows();
        QCOMPARE(table.text(1, 1), inLocale(locale, QStringLiteral("-6.4"))); // 20 lg 0.48 = -6.38
        QCOMPARE(table.text(2, 1), inLocale(locale, QStringLiteral("-100.0")));
        QCOMPARE(table.text(400, 1), inLocale(locale, QStringLiteral("-26.0"))); // 20 lg 0.0499 = -26.04
        table.setText(5, 2, QStringLiteral("x"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, AmplitudeColumn(configuration, table).convertAllRows());
    }
};

QTEST_GUILESS_MAIN(TestSweepTable)
#include "test_sweep_table.moc"
