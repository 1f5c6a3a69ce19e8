// SPDX-License-Identifier: MIT
#include "data/sweep_table.h"

#include "core/common_functions.h"
#include "core/runtime_error.h"
#include "data/amplitude_writer.h"
#include "tests/support/locales.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
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
        for (int row = 1; row <= 400; ++row) {
            QCOMPARE(table.text(row, 1), QStringLiteral("0"));
            QCOMPARE(table.text(row, 2), QStringLiteral("0"));
        }
    }

    void theNumbersAreThoseOfTheCells_data() { test::addLocaleRows(); }
    void theNumbersAreThoseOfTheCells()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Configuration configuration;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 25000;
        SweepTable table(configuration);
        table.inizializzaGrid();
        table.setText(7, SweepTable::AmplitudeColumn, inLocale(locale, QStringLiteral("-12.5")));
        table.setText(8, SweepTable::AmplitudeColumn, QStringLiteral("what?"));
        table.setText(9, SweepTable::AmplitudeColumn, QStringLiteral("1e999"));
        table.setText(400, SweepTable::SampleColumn, QStringLiteral("1023"));
        const Sweep &sweep = table.sweep();
        QCOMPARE(sweep.frequencies[0], 1000000.0);
        QCOMPARE(sweep.frequencies[399], 10975000.0);
        QCOMPARE(sweep.amplitudes[6], -12.5);
        QVERIFY(!Sweep::isNumber(sweep.amplitudes[7]));
        QVERIFY(!Sweep::isNumber(sweep.amplitudes[8]));
        QCOMPARE(sweep.amplitudes[9], 0.0);
        QCOMPARE(sweep.counts[399], 1023.0);
        QCOMPARE(table.frequency(400), 10975000);
        // number() reports why a cell has no number.
        const auto kindOf = [&table](int row) {
            try {
                table.number(row, SweepTable::AmplitudeColumn);
            } catch (const RuntimeError &error) {
                return error.kind();
            }
            return RuntimeError::Kind::Closing;
        };
        QCOMPARE(kindOf(8), RuntimeError::Kind::TypeMismatch);
        QCOMPARE(kindOf(9), RuntimeError::Kind::Overflow);
        QCOMPARE(kindOf(10), RuntimeError::Kind::Closing); // no error
        QCOMPARE(kindOf(401), RuntimeError::Kind::SubscriptOutOfRange);
        // A modified cell is parsed again; other numbers are unchanged.
        table.setText(8, SweepTable::AmplitudeColumn, inLocale(locale, QStringLiteral("0.25")));
        QCOMPARE(table.number(8, SweepTable::AmplitudeColumn), 0.25);
        QCOMPARE(table.number(7, SweepTable::AmplitudeColumn), -12.5);
        table.setText(1, SweepTable::FrequencyColumn, QStringLiteral("3000000000"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, table.frequency(1));
    }

    void everyChangeIsToldOnce()
    {
        Configuration configuration;
        configuration.adcStep = 0.002F;
        configuration.adcOffset = 0.5F;
        SweepTable table(configuration);
        QSignalSpy changed(&table, &SweepTable::changed);
        QVERIFY(!table.hasSweep());
        table.inizializzaGrid();
        QCOMPARE(changed.count(), 1);
        QVERIFY(!table.hasSweep());
        table.setText(1, SweepTable::SampleColumn, QStringLiteral("100"));
        table.cellsWritten(); // individual cells are not a sweep
        QCOMPARE(changed.count(), 1);
        QVERIFY(!table.hasSweep());
        table.sweepWritten(SweepOrigin::Measured, DetectorCalibration{0.002F, 0.5F});
        QCOMPARE(changed.count(), 2);
        QVERIFY(table.hasSweep());
        QVERIFY(std::abs(table.sweep().volts(1) - 0.7) < 1e-6);
        table.amplitudesRewritten({0.002F, 0.25F});
        QCOMPARE(changed.count(), 3);
        QCOMPARE(table.sweep().origin, SweepOrigin::Measured);
        QVERIFY(std::abs(table.sweep().volts(1) - 0.45) < 1e-6);
        // In rows from a file, amplitudes need not match counts.
        table.forgetAxis();
        QVERIFY(!table.sweep().detector);
        table.sweepWritten(SweepOrigin::Imported, std::nullopt);
        QCOMPARE(changed.count(), 4);
        QCOMPARE(table.sweep().origin, SweepOrigin::Imported);
        table.inizializzaGrid();
        QCOMPARE(changed.count(), 5);
        QVERIFY(!table.hasSweep());
    }

    void amplitudesOfOtherCountsAreNoticed()
    {
        for (const std::int16_t scale : {std::int16_t{0}, std::int16_t{1}, std::int16_t{4}}) {
            Configuration configuration;
            configuration.adcStep = 0.005F;
            configuration.scaleType = scale;
            SweepTable table(configuration);
            table.inizializzaGrid();
            for (int row = 1; row <= kSweepPoints; ++row)
                table.setText(row, SweepTable::SampleColumn, QString::number(row));
            QVERIFY(!amplitudesFollowFromCounts(table, configuration));
            AmplitudeWriter(configuration, table).convertAllRows();
            QVERIFY(amplitudesFollowFromCounts(table, configuration));
            table.setText(300, SweepTable::SampleColumn, QStringLiteral("500"));
            QVERIFY(!amplitudesFollowFromCounts(table, configuration));
            table.setText(300, SweepTable::SampleColumn, QStringLiteral("none"));
            QVERIFY(!amplitudesFollowFromCounts(table, configuration));
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
        // A changed range affects the axis only when the rows are rebuilt.
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
        AmplitudeWriter(configuration, table).convertAllRows();
        QCOMPARE(changed.count(), 0); // the caller announces the change
        table.amplitudesRewritten(detectorOf(configuration));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(table.text(1, 1), inLocale(locale, QStringLiteral("4.800")));
        QCOMPARE(table.text(2, 1), inLocale(locale, QStringLiteral("0.000")));
        QCOMPARE(table.text(400, 1), inLocale(locale, QStringLiteral("0.499")));
        configuration.scaleType = 3;
        AmplitudeWriter(configuration, table).convertAllRows();
        QCOMPARE(table.text(1, 1), inLocale(locale, QStringLiteral("-6.4"))); // 20 lg 0.48 = -6.38
        QCOMPARE(table.text(2, 1), inLocale(locale, QStringLiteral("-100.0")));
        QCOMPARE(table.text(400, 1), inLocale(locale, QStringLiteral("-26.0"))); // 20 lg 0.0499 = -26.04
        table.setText(5, 2, QStringLiteral("x"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, AmplitudeWriter(configuration, table).convertAllRows());
    }
};

QTEST_GUILESS_MAIN(TestSweepTable)
#include "test_sweep_table.moc"
