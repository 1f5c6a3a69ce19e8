// SPDX-License-Identifier: MIT
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "data/sweep_response.h"
#include "data/text_plot.h"
#include "tests/support/locales.h"

#include <QTest>

#include <cmath>
#include <functional>

using namespace calvorn;

namespace {

// 1 MHz to 1.399 MHz in steps of 1 kHz, or the other way round.
struct Bench
{
    Configuration configuration;
    SweepTable table{configuration};

    explicit Bench(std::int32_t step = 1000)
    {
        configuration.startFreq = step > 0 ? 1000000 : 1399000;
        configuration.stepFreq = step;
        table.inizializzaGrid();
    }

    void fill(DisplayMask mask, const std::function<double(int)> &amplitude)
    {
        const NumberText numbers;
        for (int row = 1; row <= kSweepPoints; ++row)
            table.setText(row, SweepTable::AmplitudeColumn, numbers.masked(amplitude(row), mask));
    }
};

double triangle(int row, double slope)
{
    return -std::abs(row - 201) * slope;
}

} // namespace

class TestSweepResponse : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void peakAndBandwidthInDecibels_data() { test::addLocaleRows(); }
    void peakAndBandwidthInDecibels()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Bench bench;
        bench.fill(kMaskDb, [](int row) { return -6.0 + triangle(row, 0.5); });
        const SweepResponse response = responseOf(bench.table, false);
        QCOMPARE(response.peak, -6.0);
        QCOMPARE(response.peakFrequency, 1200000.0);
        // 0.5 dB for each kHz: 3.01 dB are 6.02 kHz to either side.
        QVERIFY(response.lower && response.upper && response.bandwidth());
        QVERIFY(std::abs(*response.lower - 1193979.4) < 1.0);
        QVERIFY(std::abs(*response.upper - 1206020.6) < 1.0);
        QVERIFY(std::abs(*response.bandwidth() - 12041.2) < 1.0);
    }

    void halfThePowerInVolts()
    {
        Bench bench;
        bench.fill(kMaskVolt, [](int row) { return 1.0 + triangle(row, 0.01); });
        const SweepResponse response = responseOf(bench.table, true);
        QCOMPARE(response.peak, 1.0);
        // 1 V falls to 0.7071 V over 29.29 rows.
        QVERIFY(std::abs(*response.lower - 1170710.7) < 1.0);
        QVERIFY(std::abs(*response.upper - 1229289.3) < 1.0);
    }

    void aFallingSweepHasTheSameEdges()
    {
        Bench bench(-1000);
        bench.fill(kMaskVolt, [](int row) { return 1.0 + triangle(row, 0.01); });
        const SweepResponse response = responseOf(bench.table, true);
        QVERIFY(response.lower && response.upper);
        QVERIFY(*response.lower < response.peakFrequency);
        QVERIFY(*response.upper > response.peakFrequency);
        QVERIFY(*response.bandwidth() > 0.0);
    }

    void anEdgeOutsideTheRangeIsNotInvented()
    {
        Bench bench;
        bench.fill(kMaskVolt, [](int row) { return row < 100 ? 1.0 : 1.0 - (row - 100) * 0.003; });
        const SweepResponse lowpass = responseOf(bench.table, true);
        QVERIFY(!lowpass.lower);
        QVERIFY(lowpass.upper);
        QVERIFY(!lowpass.bandwidth());
        bench.fill(kMaskVolt, [](int) { return 0.5; });
        QVERIFY(!responseOf(bench.table, true).lower && !responseOf(bench.table, true).upper);
        bench.fill(kMaskVolt, [](int) { return 0.0; });
        QCOMPARE(responseOf(bench.table, true).peak, 0.0);
        QVERIFY(!responseOf(bench.table, true).bandwidth());
    }

    void aCellThatIsNoNumberIsRefused()
    {
        Bench bench;
        bench.table.setText(400, SweepTable::AmplitudeColumn, QStringLiteral("x"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, responseOf(bench.table, true));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, textPlot(bench.table, true));
    }

    void thePlotIsEightyColumnsWide_data() { test::addLocaleRows(); }
    void thePlotIsEightyColumnsWide()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Bench bench;
        bench.configuration.startFreq = 1999000000;
        bench.configuration.stepFreq = 300000;
        bench.table.inizializzaGrid();
        bench.fill(kMaskDb, [](int row) { return triangle(row, 0.5); });
        const QStringList lines = textPlot(bench.table, false);
        QCOMPARE(lines.size(), 19);
        for (const QString &line : lines)
            QVERIFY2(line.size() <= 80, qPrintable(line));
        QCOMPARE(lines[17].size(), 80);
        QVERIFY(lines[0].startsWith(test::inLocale(locale, QStringLiteral("    0.0 |"))));
        QVERIFY(lines[16].startsWith(test::inLocale(locale, QStringLiteral(" -100.0 |"))));
        QVERIFY(lines[18].endsWith(bench.table.text(400, 0)));
        QVERIFY(lines[18].contains(bench.table.text(200, 0)));
        // The peak stands in the middle of the 71 columns, a letter being 6 dB high; the ends at the bottom.
        QCOMPARE(lines[0].indexOf(u'*'), 9 + 34);
        QCOMPARE(lines[0].lastIndexOf(u'*'), 9 + 36);
        QCOMPARE(lines[16].indexOf(u'*'), 9);
        QCOMPARE(lines[16].lastIndexOf(u'*'), 79);
    }

    void aFlatCurveIsOneLine()
    {
        Bench bench;
        const QStringList lines = textPlot(bench.table, true);
        QCOMPARE(lines[16].count(u'*'), 71);
        QCOMPARE(lines.join(QString()).count(u'*'), 71);
    }
};

QTEST_APPLESS_MAIN(TestSweepResponse)
#include "test_sweep_response.moc"
