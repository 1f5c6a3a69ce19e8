// SPDX-License-Identifier: MIT
#include "analysis/sweep_response.h"
#include "analysis/text_plot.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "data/amplitude_writer.h"
#include "tests/support/locales.h"
#include "tests/support/walk_numbers.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

using namespace calvorn;

namespace {

// A table from 1 MHz to 1.399 MHz in steps of 1 kHz, descending if the step is negative.
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

    // Writes amplitudes without counts, as after importing a sweep made with another calibration.
    void fill(std::int16_t scale, const std::function<double(int)> &amplitude)
    {
        configuration.scaleType = scale;
        const test::WalkNumbers numbers{QLocale()};
        for (int row = 1; row <= 400; ++row)
            table.setText(row, SweepTable::AmplitudeColumn, numbers.amplitude(scale == kScaleLinear, amplitude(row)));
        table.sweepWritten(SweepOrigin::Imported, std::nullopt);
    }

    // Writes counts, and the corresponding amplitudes on the scale.
    void measure(std::int16_t scale, const std::function<int(int)> &count)
    {
        configuration.scaleType = scale;
        configuration.adcStep = 0.00244F;
        const test::WalkNumbers numbers{QLocale()};
        const double reference = scale == kScaleDb10V || scale == kScaleDb10VHeadroom ? 10.0 : 1.0;
        for (int row = 1; row <= 400; ++row) {
            // Rounds to millivolts; decibels are rounded to hundredths and then to tenths.
            const double offset = static_cast<double>(configuration.adcOffset);
            const double volts = std::nearbyint((count(row) * 0.00244 + offset) * 1000.0) / 1000.0;
            const double hundredths = std::nearbyint(100.0 * test::walkDecibels(volts, reference));
            table.setText(row, SweepTable::SampleColumn, QString::number(count(row)));
            table.setText(row, SweepTable::AmplitudeColumn,
                          scale == kScaleLinear ? numbers.amplitude(true, volts)
                                                : numbers.amplitude(false, std::nearbyint(hundredths / 10.0) / 10.0));
        }
        table.sweepWritten(SweepOrigin::Measured, detectorOf(configuration));
    }

    // Performs the last step of an import.
    void imported()
    {
        const bool follow = amplitudesFollowFromCounts(table, configuration);
        table.sweepWritten(SweepOrigin::Imported, follow ? std::optional(detectorOf(configuration)) : std::nullopt);
    }

    SweepResponse response() const { return responseOf(table, configuration); }
};

std::vector<ResponseSample> samples(const std::vector<double> &amplitudes, double start = 1000.0, double step = 10.0)
{
    std::vector<ResponseSample> made;
    for (const double amplitude : amplitudes)
        made.push_back({start + step * static_cast<double>(made.size()), amplitude});
    return made;
}

// Returns the position of the -3 dB point between two voltages (0: inner, 1: outer), interpolated linearly in dB.
double partToHalfPower(double peak, double inner, double outer)
{
    return std::log(inner * std::sqrt(2.0) / peak) / std::log(inner / outer);
}

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
        bench.fill(kScaleDb1V, [](int row) { return -6.0 + triangle(row, 0.5); });
        const SweepResponse response = bench.response();
        QCOMPARE(response.peak, -6.0);
        QCOMPARE(response.peakFrequency, 1200000.0);
        // At 0.5 dB per kHz, the -3.01 dB points are 6.02 kHz from the peak.
        QVERIFY(response.lower && response.upper && response.bandwidth());
        QVERIFY(std::abs(*response.lower - 1193979.4) < 1.0);
        QVERIFY(std::abs(*response.upper - 1206020.6) < 1.0);
        QVERIFY(std::abs(*response.bandwidth() - 12041.2) < 1.0);
    }

    void halfThePowerInVolts()
    {
        Bench bench;
        bench.fill(kScaleLinear, [](int row) { return 1.0 + triangle(row, 0.01); });
        const SweepResponse response = bench.response();
        QCOMPARE(response.peak, 1.0);
        // 1 V falls to 0.7071 V over 29 rows and part of the step from 0.71 V to 0.70 V.
        const double distance = 1000.0 * (29.0 + partToHalfPower(1.0, 0.71, 0.70));
        QVERIFY(std::abs(*response.lower - (1200000.0 - distance)) < 0.1);
        QVERIFY(std::abs(*response.upper - (1200000.0 + distance)) < 0.1);
    }

    void aFallingSweepHasTheSameEdges()
    {
        Bench bench(-1000);
        bench.fill(kScaleLinear, [](int row) { return 1.0 + triangle(row, 0.01); });
        const SweepResponse response = bench.response();
        QVERIFY(response.lower && response.upper);
        QVERIFY(*response.lower < response.peakFrequency);
        QVERIFY(*response.upper > response.peakFrequency);
        QVERIFY(*response.bandwidth() > 0.0);
    }

    void anEdgeOutsideTheRangeIsNotInvented()
    {
        Bench bench;
        bench.fill(kScaleLinear, [](int row) { return row < 100 ? 1.0 : 1.0 - (row - 100) * 0.003; });
        const SweepResponse lowpass = bench.response();
        QVERIFY(!lowpass.lower);
        QVERIFY(lowpass.upper);
        QVERIFY(!lowpass.bandwidth());
        bench.fill(kScaleLinear, [](int) { return 0.5; });
        QVERIFY(!bench.response().lower && !bench.response().upper);
        bench.fill(kScaleLinear, [](int) { return 0.0; });
        QCOMPARE(bench.response().peak, 0.0);
        QVERIFY(!bench.response().bandwidth());
    }

    void everyScaleGivesTheSameResponse_data() { test::addLocaleRows(); }
    void everyScaleGivesTheSameResponse();
    void everyScaleAgreesThatThereIsNoResponse();
    void amplitudesThatAreNotOfTheirCountsAreKept();
    void thePeakIsTheMiddleOfThePlateau_data();
    void thePeakIsTheMiddleOfThePlateau();
    void aPlateauOfSeveralSamplesHasBothEdges();
    void anEdgeBelowTheFloorIsNotInvented();
    void noSamplesAreNoResponse();

    void aCellThatIsNoNumberIsRefused()
    {
        Bench bench;
        bench.table.setText(400, SweepTable::AmplitudeColumn, QStringLiteral("x"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, bench.response());
        QVERIFY_THROWS_EXCEPTION(RuntimeError, textPlot(bench.table, true));
        bench.measure(kScaleLinear, [](int) { return 100; });
        QCOMPARE(bench.response().peakFrequency, 1199500.0);
        bench.table.setText(400, SweepTable::SampleColumn, QStringLiteral("x"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, bench.response());
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
        bench.fill(kScaleDb1V, [](int row) { return triangle(row, 0.5); });
        const QStringList lines = textPlot(bench.table, false);
        QCOMPARE(lines.size(), 19);
        for (const QString &line : lines)
            QVERIFY2(line.size() <= 80, qPrintable(line));
        QCOMPARE(lines[17].size(), 80);
        QVERIFY(lines[0].startsWith(test::inLocale(locale, QStringLiteral("    0.0 |"))));
        QVERIFY(lines[16].startsWith(test::inLocale(locale, QStringLiteral(" -100.0 |"))));
        QVERIFY(lines[18].endsWith(bench.table.text(400, 0)));
        QVERIFY(lines[18].contains(bench.table.text(200, 0)));
        // The peak is in the middle of the 71 columns, where a character is about 6 dB high; the ends are at the
        // bottom.
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

    void gapsStayBlankInThePlot()
    {
        const std::array<QString, 3> frequencies{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")};
        std::vector<double> ratios(kSweepPoints, 0.5);
        std::fill(ratios.begin() + 200, ratios.end(), Sweep::kNoNumber);
        QString stars = textPlot(frequencies, ratios, true).join(QString());
        QCOMPARE(stars.count(u'*'), 36); // the columns that start before sample 200
        ratios[300] = 1.0;
        const QStringList lines = textPlot(frequencies, ratios, true);
        QCOMPARE(lines[0].indexOf(u'*'), 9 + 300 * 71 / 400);
        QCOMPARE(lines[0].count(u'*'), 1);
        // A linear plot begins at 0: one half is in the middle of the 17 rows.
        QCOMPARE(lines[8].count(u'*'), 36);
        QVERIFY(!lines[16].contains(u'*'));
        std::fill(ratios.begin(), ratios.end(), Sweep::kNoNumber);
        stars = textPlot(frequencies, ratios, false).join(QString());
        QCOMPARE(stars.count(u'*'), 0);
        QVERIFY(stars.endsWith(u'3'));
    }
};

void TestSweepResponse::everyScaleGivesTheSameResponse()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    // 100 counts fall to 70.711 over 29 rows and part of the step from 71 to 70.
    const double distance = 1000.0 * (29.0 + partToHalfPower(100.0, 71.0, 70.0));
    // Rows 200 to 203 share the highest count, 0.244 V.
    const auto hill = [](int row) {
        return row >= 200 && row <= 203 ? 100 : std::max(0, 100 - std::abs(row < 200 ? 200 - row : row - 203));
    };
    for (const std::int16_t scale : {kScaleLinear, kScaleDb1V, kScaleDb1VHeadroom, kScaleDb10V, kScaleDb10VHeadroom}) {
        bench.measure(scale, hill);
        const SweepResponse response = bench.response();
        QCOMPARE(std::lround(response.peakFrequency), 1200500L);
        QVERIFY(response.lower && response.upper && response.bandwidth());
        QVERIFY(std::abs(*response.lower - (1199000.0 - distance)) < 0.1);
        QVERIFY(std::abs(*response.upper - (1202000.0 + distance)) < 0.1);
        QVERIFY(std::abs(*response.bandwidth() - (3000.0 + 2.0 * distance)) < 0.1);
        const double reference = scale == kScaleDb10V || scale == kScaleDb10VHeadroom ? 10.0 : 1.0;
        const double volts = scale == kScaleLinear ? response.peak : reference * std::pow(10.0, response.peak / 20.0);
        QVERIFY2(std::abs(volts - 0.244) < 1e-6, qPrintable(QString::number(volts, 'g', 12)));
    }
}

void TestSweepResponse::everyScaleAgreesThatThereIsNoResponse()
{
    Bench bench;
    bench.configuration.adcOffset = -1.0F;
    for (const std::int16_t scale : {kScaleLinear, kScaleDb1V, kScaleDb10VHeadroom}) {
        bench.measure(scale, [](int row) { return row == 10 ? 50 : 0; });
        const SweepResponse response = bench.response();
        QVERIFY(std::abs(response.peak - (scale == kScaleLinear ? -0.878 : -100.0)) < 1e-6);
        QCOMPARE(response.peakFrequency, 1009000.0);
        QVERIFY(!response.lower && !response.upper && !response.bandwidth());
    }
}

void TestSweepResponse::amplitudesThatAreNotOfTheirCountsAreKept()
{
    Bench bench;
    bench.measure(kScaleLinear, [](int row) { return row == 100 ? 200 : 100; });
    QCOMPARE(bench.response().peakFrequency, 1099000.0);
    // If a single amplitude comes from another calibration, the amplitudes are used instead of the counts.
    bench.table.setText(300, SweepTable::AmplitudeColumn, QStringLiteral("0.900"));
    bench.imported();
    QCOMPARE(bench.response().peak, 0.9);
    QCOMPARE(bench.response().peakFrequency, 1299000.0);
    // Additional zeros do not change an amplitude.
    bench.measure(kScaleDb1V, [](int row) { return row == 100 ? 200 : 199; });
    const double peak = bench.response().peak;
    for (int row = 1; row <= 400; ++row)
        bench.table.setText(row, SweepTable::AmplitudeColumn,
                            bench.table.text(row, SweepTable::AmplitudeColumn) + QStringLiteral("00"));
    bench.imported();
    QCOMPARE(bench.response().peak, peak);
    QCOMPARE(bench.response().peakFrequency, 1099000.0);
}

void TestSweepResponse::thePeakIsTheMiddleOfThePlateau_data()
{
    QTest::addColumn<std::vector<double>>("amplitudes");
    QTest::addColumn<double>("rising");  // 1000 Hz, 1010 Hz, ...
    QTest::addColumn<double>("falling"); // 1000 Hz, 990 Hz, ...
    const auto row = [](const char *name, const std::vector<double> &amplitudes, double rising, double falling) {
        QTest::newRow(name) << amplitudes << rising << falling;
    };
    row("one highest sample", {0.1, 0.5, 0.2}, 1010.0, 990.0);
    row("in the middle", {0.1, 0.5, 0.5, 0.5, 0.2}, 1020.0, 980.0);
    row("between two samples", {0.1, 0.5, 0.5, 0.2}, 1015.0, 985.0);
    row("at the beginning", {0.5, 0.5, 0.5, 0.1, 0.1}, 1010.0, 990.0);
    row("at the end", {0.1, 0.1, 0.5, 0.5, 0.5}, 1030.0, 970.0);
    row("the longest of two", {0.5, 0.1, 0.1, 0.5, 0.5}, 1035.0, 965.0);
    row("of equally long ones that of the lowest frequency", {0.5, 0.5, 0.1, 0.5, 0.5}, 1005.0, 965.0);
    row("flat", {0.5, 0.5, 0.5, 0.5, 0.5}, 1020.0, 980.0);
    row("one sample", {0.5}, 1000.0, 1000.0);
}

void TestSweepResponse::thePeakIsTheMiddleOfThePlateau()
{
    QFETCH(std::vector<double>, amplitudes);
    QFETCH(double, rising);
    QFETCH(double, falling);
    for (const AmplitudeUnit unit : {AmplitudeUnit::Volt, AmplitudeUnit::Decibel}) {
        QCOMPARE(responseOf(samples(amplitudes), unit).peakFrequency, rising);
        QCOMPARE(responseOf(samples(amplitudes, 1000.0, -10.0), unit).peakFrequency, falling);
        QCOMPARE(responseOf(samples(amplitudes), unit).peak, 0.5);
    }
    QVERIFY(!responseOf(samples(amplitudes), AmplitudeUnit::Decibel).bandwidth());
}

void TestSweepResponse::aPlateauOfSeveralSamplesHasBothEdges()
{
    // The dip between the two plateaus is an edge of the longer one.
    const std::vector<double> amplitudes{0.1, 1.0, 1.0, 0.1, 1.0, 1.0, 1.0, 0.1};
    const SweepResponse rising = responseOf(samples(amplitudes), AmplitudeUnit::Volt);
    QCOMPARE(rising.peakFrequency, 1050.0);
    QVERIFY(rising.lower && rising.upper);
    // The curve falls by 20 dB over 10 Hz; the -3.01 dB point is interpolated linearly.
    const double distance = 10.0 * 20.0 * std::log10(std::sqrt(2.0)) / 20.0;
    QVERIFY(std::abs(*rising.lower - (1040.0 - distance)) < 0.001);
    QVERIFY(std::abs(*rising.upper - (1060.0 + distance)) < 0.001);
    const SweepResponse falling = responseOf(samples(amplitudes, 1000.0, -10.0), AmplitudeUnit::Volt);
    QCOMPARE(falling.peakFrequency, 950.0);
    QVERIFY(falling.lower && falling.upper);
    QVERIFY(std::abs(*falling.lower - (940.0 - distance)) < 0.001);
    QVERIFY(std::abs(*falling.upper - (960.0 + distance)) < 0.001);
    const SweepResponse flat = responseOf(samples({1.0, 1.0, 1.0}), AmplitudeUnit::Volt);
    QVERIFY(!flat.lower && !flat.upper);
}

void TestSweepResponse::anEdgeBelowTheFloorIsNotInvented()
{
    // Between a sample and one below the floor, the curve is unknown.
    const SweepResponse volts = responseOf(samples({0.1, 1.0, 0.0}), AmplitudeUnit::Volt);
    QVERIFY(volts.lower && !volts.upper && !volts.bandwidth());
    const SweepResponse decibels = responseOf(samples({-100.0, -1.0, -21.0}), AmplitudeUnit::Decibel);
    QVERIFY(!decibels.lower && decibels.upper);
    // Count 0 is 0.2 V here.
    Bench bench;
    bench.configuration.adcOffset = 0.2F;
    bench.measure(kScaleLinear, [](int row) { return row == 200 ? 100 : row > 200 ? 0 : 1; });
    const SweepResponse measured = bench.response();
    QVERIFY(!measured.upper);
    QVERIFY(measured.lower);
}

void TestSweepResponse::noSamplesAreNoResponse()
{
    const SweepResponse response = responseOf(std::vector<ResponseSample>(), AmplitudeUnit::Volt);
    QCOMPARE(response.peak, 0.0);
    QVERIFY(!response.bandwidth());
}

QTEST_APPLESS_MAIN(TestSweepResponse)
#include "test_sweep_response.moc"
