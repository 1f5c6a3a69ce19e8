// SPDX-License-Identifier: MIT
// Tests levels measured with non-linear detectors, from the generator's words to the numbers in the table, on the three
// simulated boards. The tolerance includes one converter count.
#include "core/configuration.h"
#include "core/detector_settings.h"
#include "core/level_calibration.h"
#include "tests/support/curve_file.h"
#include "tests/support/detector_laws.h"
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/sweep_tool.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace calvorn;
using calvorn::test::Tool;

namespace {

constexpr double kVoltsPerCount = 2.5 / 1024.0;
constexpr double kCentre = 1e6;       // Hz; low enough for the generators to have no loss
constexpr int kSweeps = 8;            // number to average, because the noise is half a count
constexpr double kFor1Volt = 13.0103; // dBm at 0 dB on the scale
constexpr int kPoints = 400;
constexpr double kLowestDbm = -30.0; // lowest level of the calibrated diode, 40 dB below the highest

// Third order, 100 kHz wide; attenuates by 60 dB at half and at twice the centre frequency.
double bandPass(double hertz)
{
    const double x = (hertz / kCentre - kCentre / hertz) * kCentre / 100e3;
    return 1.0 / std::sqrt(1.0 + x * x * x * x * x * x);
}

// Returns the change in level, in dB, that one converter count represents at this level.
double diodeResolution(double dBm)
{
    constexpr double kSmall = 0.001; // dB
    const double slope = (test::diodeVolts(dBm + kSmall) - test::diodeVolts(dBm - kSmall)) / (2.0 * kSmall);
    return kVoltsPerCount / slope;
}

struct Sample
{
    double hertz = 0.0;
    double count = 0.0;
    double decibels = 0.0; // relative to 1 V
};

struct Bench
{
    Tool tool;

    explicit Bench(int interfaceType, const char *detector)
        : tool(test::crystalSettings(static_cast<std::int16_t>(interfaceType)))
    {
        tool.folder.set("Config", "ADC Step", QString::number(kVoltsPerCount, 'g', 17));
        tool.folder.set("Config", "ADC Offset", QStringLiteral("0"));
        tool.folder.set("Config", "ADC Device", QStringLiteral("10bit"));
        tool.folder.set("Calvorn", "Scale", QStringLiteral("2"));
        tool.folder.set("Simulator", "Detector", QString::fromLatin1(detector));
        tool.write("device.csv", test::curveFile(bandPass, 0.4e6, 2.2e6, 20'000));
        tool.folder.set("Simulator", "Curve", tool.inFolder("device.csv"));
    }
    void setLaw(const char *law) { tool.folder.set("Config", "ADC Law", QString::fromLatin1(law)); }
    void setLevel(double dBm) { tool.folder.set("Simulator", "Level", QString::number(dBm)); }
    void connectCable() { tool.folder.set("Simulator", "Device", QStringLiteral("through")); }
    void connectBandPass() { tool.folder.set("Simulator", "Device", QStringLiteral("curve")); }

    std::array<Sample, kPoints> sweep()
    {
        if (tool.run("--start 500000 --stop 2000000 --output sweep.csv") != 0)
            qFatal("calvorn-sweep: %s", qPrintable(tool.errors.join(u'\n')));
        std::array<Sample, kPoints> samples;
        const QList<QByteArray> lines = test::contents(tool.inFolder("sweep.csv")).split('\n');
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const QList<QByteArray> fields = lines.value(static_cast<qsizetype>(i) + 1).trimmed().split(',');
            samples[i] = {fields.value(1).toDouble(), fields.value(2).toDouble(), fields.value(3).toDouble() / 1000.0};
        }
        return samples;
    }

    // Returns the mean of several sweeps with different noise.
    std::array<Sample, kPoints> meanSweep()
    {
        std::array<Sample, kPoints> mean{};
        for (int seed = 1; seed <= kSweeps; ++seed) {
            tool.folder.set("Simulator", "Seed", QString::number(seed));
            const std::array<Sample, kPoints> samples = sweep();
            for (std::size_t i = 0; i < samples.size(); ++i) {
                mean[i].hertz = samples[i].hertz;
                mean[i].count += samples[i].count / kSweeps;
                mean[i].decibels += samples[i].decibels / kSweeps;
            }
        }
        return mean;
    }

    double meanCountAt(double dBm)
    {
        setLevel(dBm);
        const std::array<Sample, kPoints> samples = sweep();
        double sum = 0.0;
        for (const Sample &sample : samples)
            sum += sample.count;
        return sum / kPoints;
    }
};

} // namespace

class TestDetectorLaws : public QObject
{
    Q_OBJECT

private slots:
    void aLogarithmicDetector_data();
    void aLogarithmicDetector();
    void aCalibratedDiode_data() { test::addInterfaceRows(); }
    void aCalibratedDiode();
    void aDamagedTableIsLinear();
};

void TestDetectorLaws::aLogarithmicDetector_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<double>("level"); // dBm at 0 dB
    for (const double level : {10.0, -10.0}) {
        QTest::addRow("PIC, %g dBm", level) << int{kInterfacePic} << level;
        QTest::addRow("parallel port, %g dBm", level) << int{kInterfaceLpt} << level;
        QTest::addRow("MiniVNA, %g dBm", level) << int{kInterfaceVna} << level;
    }
}

// Covers 10 dBm to -70 dBm.
void TestDetectorLaws::aLogarithmicDetector()
{
    QFETCH(int, interfaceType);
    QFETCH(double, level);
    Bench bench(interfaceType, "log");
    bench.setLaw("log");
    bench.setLevel(level);
    bench.connectBandPass();
    constexpr double kOneCount = kVoltsPerCount / 25e-3; // dB
    double worst = 0.0;
    double lowest = level;
    for (const Sample &sample : bench.meanSweep()) {
        const double expected = level + 20.0 * std::log10(bandPass(sample.hertz));
        if (expected < level - 60.0)
            continue;
        lowest = std::min(lowest, expected);
        worst = std::max(worst, std::abs(sample.decibels + kFor1Volt - expected));
    }
    QVERIFY2(lowest < level - 59.0, qPrintable(QString::number(lowest)));
    QVERIFY2(worst <= 0.15 + kOneCount, qPrintable(QStringLiteral("off by %1 dB").arg(worst)));
}

// Tolerance: 0.3 dB for the mean of a cable sweep at each level; for a row of a filter curve (mean of eight samples),
// 0.3 dB plus one converter count.
void TestDetectorLaws::aCalibratedDiode()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType, "diode");
    bench.connectCable();
    // Nine levels in steps of 5 dB, measured without a law.
    std::vector<CalibrationPoint> points;
    for (int step = 0; step <= 8; ++step) {
        const double dBm = 10.0 - 5.0 * step;
        points.push_back({dBm, bench.meanCountAt(dBm) * kVoltsPerCount, 0.0});
    }
    const std::optional<DetectorLaw> law = tableLawOf(points);
    QVERIFY(law);
    // Between the calibrated levels.
    for (double dBm = 9.0; dBm >= kLowestDbm; dBm -= 3.5) {
        const double found = dBmOfVolts(law->inputVolts(bench.meanCountAt(dBm) * kVoltsPerCount));
        QVERIFY2(std::abs(found - dBm) <= 0.3, qPrintable(QStringLiteral("%1 dBm, not %2").arg(found).arg(dBm)));
    }
    // Each row of a filter's curve.
    const QString settings = bench.tool.folder.iniPath();
    QVERIFY(writeProfileStrings(settings, detectorLawEntries(*law, Profile(settings))));
    bench.setLevel(10.0);
    bench.connectBandPass();
    int rows = 0;
    int fineRows = 0;
    for (const Sample &sample : bench.meanSweep()) {
        const double expected = 10.0 + 20.0 * std::log10(bandPass(sample.hertz));
        if (expected < kLowestDbm)
            continue;
        const double resolution = diodeResolution(expected);
        const double off = std::abs(sample.decibels + kFor1Volt - expected);
        QVERIFY2(off <= 0.3 + resolution,
                 qPrintable(
                     QStringLiteral("%1 dBm: off by %2 dB, a count is %3 dB").arg(expected).arg(off).arg(resolution)));
        ++rows;
        fineRows += resolution < 0.1 ? 1 : 0;
    }
    QVERIFY2(rows > 100 && fineRows > 20, qPrintable(QStringLiteral("%1 rows, %2 fine").arg(rows).arg(fineRows)));
}

void TestDetectorLaws::aDamagedTableIsLinear()
{
    Bench bench(kInterfaceLpt, "linear");
    bench.connectCable();
    bench.setLaw("linear");
    const std::array<Sample, kPoints> linear = bench.sweep();
    bench.setLaw("table");
    bench.tool.folder.set("Detector", "Point 1", QStringLiteral("0.1;-30"));
    bench.tool.folder.set("Detector", "Point 2", QStringLiteral("0.2;-10"));
    bench.tool.folder.set("Detector", "Point 3", QStringLiteral("0.3;-20"));
    const std::array<Sample, kPoints> damaged = bench.sweep();
    const QString told = bench.tool.errors.join(u'\n');
    QVERIFY2(told.contains(QLatin1String("[Detector] \"Point 3\"")), qPrintable(told));
    QCOMPARE(told.count(QLatin1String("is treated as linear")), 1);
    for (std::size_t i = 0; i < linear.size(); ++i)
        QVERIFY(std::abs(damaged[i].decibels - linear[i].decibels) < 0.2);
}

QTEST_GUILESS_MAIN(TestDetectorLaws)
#include "test_detector_laws.moc"
