// SPDX-License-Identifier: MIT
// Tests the results for known devices on the simulated boards, from the generator's words to the printed number. The
// tolerances cover 10 bits, the board's noise and the spacing of 400 samples: rounding changes a sample by up to half a
// count and noise by up to 1.7 counts; the mean of 64 is less than half a count off.
#include "tests/analysis/curve_models.h"
#include "tests/support/curve_file.h"
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/sweep_tool.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace calvorn;
using calvorn::test::Tool;

namespace {

constexpr double kFullCounts = 409.6; // 1 V of 2.5 V in 10 bits: the level through a cable
constexpr double kOneSweep = 2.3;     // counts
constexpr double kMeanOf64 = 0.5;     // counts
constexpr double kHalfPower = 3.0102999566;
using Curve = std::function<double(double hertz)>;

struct Range
{
    double start; // Hz
    double stop;

    double step() const { return (stop - start) / 399.0; }
};

struct Between
{
    double least;
    double most;
};

// Returns the first frequency between "from" and "to" that meets the condition.
double firstPlace(double from, double to, const std::function<bool(double hertz)> &condition)
{
    constexpr int kParts = 200'000;
    for (int i = 0; i <= kParts; ++i) {
        const double hertz = std::lerp(from, to, static_cast<double>(i) / kParts);
        if (condition(hertz))
            return hertz;
    }
    qFatal("nothing between %.0f and %.0f Hz", from, to);
}

// Returns the bounds of a filter's width at a level below its peak of 1, if each sample and the peak are off by up to
// "counts".
Between widthOf(const Curve &curve, const Range &range, double middle, double decibels, double counts)
{
    const double ratio = std::pow(10.0, -decibels / 20.0);
    const double off = (1.0 + ratio) * counts / kFullCounts;
    const auto edge = [&](double end, double level) {
        return firstPlace(middle, end, [&](double hertz) { return curve(hertz) <= level; });
    };
    const double least = edge(range.stop, ratio + off) - edge(range.start, ratio + off);
    const double most = edge(range.stop, ratio - off) - edge(range.start, ratio - off);
    return {least - 2.0 * range.step(), most + 2.0 * range.step()};
}

// Runs calvorn-sweep with a simulated device and stores its report.
struct Bench
{
    Tool tool;
    QJsonObject report;

    explicit Bench(int interfaceType)
        : tool(test::crystalSettings(static_cast<std::int16_t>(interfaceType)))
    {
    }

    void connect(const Curve &curve, const Range &range)
    {
        // Uses much finer steps than the sweep.
        tool.write("device.csv", test::curveFile(curve, range.start - range.step(), range.stop + range.step(), 40'000));
        tool.folder.set("Simulator", "Device", QStringLiteral("curve"));
        tool.folder.set("Simulator", "Curve", tool.inFolder("device.csv"));
    }
    // Leaves the MiniVNA's bridge open, so that it reflects the full signal.
    void connectOpen()
    {
        tool.folder.set("Config", "ADC Channel", QStringLiteral("2"));
        tool.folder.set("Simulator", "Device", QStringLiteral("curve"));
        tool.folder.set("Simulator", "Curve", QString());
    }
    void connectCable() { tool.folder.set("Simulator", "Device", QStringLiteral("through")); }

    int sweep(const Range &range, const QStringList &options)
    {
        QStringList arguments{QStringLiteral("--start"), QString::number(range.start, 'f', 0), QStringLiteral("--stop"),
                              QString::number(range.stop, 'f', 0)};
        const int code = tool.run(arguments + options);
        report = QJsonDocument::fromJson(tool.out.toUtf8()).object();
        return code;
    }

    double value(const char *key) const { return report[QLatin1String(key)].toDouble(std::nan("")); }
    bool isWithin(const char *key, const Between &bounds) const
    {
        const double found = value(key);
        if (found >= bounds.least && found <= bounds.most)
            return true;
        qWarning("%s is %.10g, not %.10g to %.10g", key, found, bounds.least, bounds.most);
        return false;
    }
    bool isNear(const char *key, double expected, double part) const
    {
        return isWithin(key, {expected * (1.0 - part), expected * (1.0 + part)});
    }
};

const QStringList kOfAFilter{QStringLiteral("--results=filter"), QStringLiteral("--format=json")};

QStringList relative(const char *results)
{
    return {QStringLiteral("--average=64"), QStringLiteral("--reference=cable.csv"), QStringLiteral("--format=json"),
            QStringLiteral("--results=") + QString::fromLatin1(results)};
}

} // namespace

class TestResultsOfBoards : public QObject
{
    Q_OBJECT

private slots:
    void aFilter_data();
    void aFilter();
    void aCrystal_data() { test::addInterfaceRows(); }
    void aCrystal();
    void anAntenna_data() { test::addInterfaceRows(); }
    void anAntenna();
    void theAntennaOfTheBoard_data() { test::addInterfaceRows(); }
    void theAntennaOfTheBoard();
};

void TestResultsOfBoards::aFilter_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<int>("order");
    for (int order = 2; order <= 5; ++order) {
        QTest::addRow("Butterworth %d, PIC", order) << int{kInterfacePic} << order;
        QTest::addRow("Butterworth %d, parallel port", order) << int{kInterfaceLpt} << order;
        QTest::addRow("Butterworth %d, MiniVNA", order) << int{kInterfaceVna} << order;
    }
}

void TestResultsOfBoards::aFilter()
{
    QFETCH(int, interfaceType);
    QFETCH(int, order);
    const test::Butterworth filter{order, 7.1e6, 0.05};
    const Range range{6.55e6, 7.65e6};
    const auto curve = [&](double hertz) { return filter.at(hertz); };
    Bench bench(interfaceType);
    bench.connect(curve, range);
    QCOMPARE(bench.sweep(range, kOfAFilter), 0);

    const Between half = widthOf(curve, range, filter.middle, kHalfPower, kOneSweep);
    const Between six = widthOf(curve, range, filter.middle, 6.0, kOneSweep);
    // The closed-form width is inside the tolerance, which is at most a twelfth of the width to either side.
    QVERIFY(half.least < filter.bandwidth(kHalfPower) && half.most > filter.bandwidth(kHalfPower));
    QVERIFY(half.most - half.least < filter.bandwidth(kHalfPower) / 6.0);
    QVERIFY(six.most - six.least < filter.bandwidth(6.0) / 6.0);
    QVERIFY(bench.isWithin("bw3", half));
    QVERIFY(bench.isWithin("bw6", six));
    const double centre = (filter.lower(kHalfPower) + filter.upper(kHalfPower)) / 2.0;
    const double off = (half.most - half.least) / 2.0;
    QVERIFY(bench.isWithin("centre", {centre - off, centre + off}));
    QVERIFY(bench.isWithin("q", {(centre - off) / half.most, (centre + off) / half.least}));
    // 0 dB is 1 V; the parallel port's generator loses a few thousandths up to this frequency.
    const double peak = 20.0 * std::log10(1.0 + kOneSweep / kFullCounts);
    QVERIFY(bench.isWithin("peak", {-1.5 * peak - 0.15, peak}));
    // 10 bits cannot resolve 60 dB.
    QVERIFY(bench.report[QLatin1String("bw60")].isNull());
}

void TestResultsOfBoards::aCrystal()
{
    QFETCH(int, interfaceType);
    // Like a ceramic resonator: the resonances are far enough apart to distinguish them with 10 bits.
    constexpr double kOhms = 10.0;
    constexpr double kFarads = 100e-15;
    const double henries = 1.0 / (std::pow(2.0 * test::kPi * 9e6, 2.0) * kFarads);
    const test::Crystal crystal{kOhms, henries, kFarads, 20e-12, 50.0};
    const Range range{8.98e6, 9.05e6};
    const auto curve = [&](double hertz) { return crystal.at(hertz); };
    Bench bench(interfaceType);
    bench.connectCable();
    QCOMPARE(bench.sweep(range, {QStringLiteral("--output=cable.csv")}), 0);
    bench.connect(curve, range);
    QCOMPARE(bench.sweep(range, relative("crystal")), 0);

    // Near the peak, noise hides differences below two counts.
    const double top = curve(crystal.series()) - 2.0 * kMeanOf64 / kFullCounts;
    const Between fs{firstPlace(range.start, crystal.series(), [&](double f) { return curve(f) >= top; }),
                     firstPlace(range.stop, crystal.series(), [&](double f) { return curve(f) >= top; })};
    QVERIFY(bench.isWithin("fs", {fs.least - range.step(), fs.most + range.step()}));
    // The reference is a single sweep, whose 2.3 counts add to the error.
    const double ratio = 100.0 / (100.0 + kOhms);
    const double part = kMeanOf64 / (ratio * kFullCounts) + kOneSweep / kFullCounts;
    const double ohmsOff = 100.0 / ratio * part;
    QVERIFY(ohmsOff < 0.1 * kOhms);
    QVERIFY(bench.isWithin("rm", {kOhms - ohmsOff, kOhms + ohmsOff}));
    const double loaded = (100.0 + kOhms) / (2.0 * test::kPi * henries);
    const double widthOff = 4.0 * part + 2.0 * range.step() / loaded;
    QVERIFY(widthOff < 0.15);
    QVERIFY(bench.isNear("lm", henries, widthOff));
    QVERIFY(bench.isNear("cm", kFarads, widthOff));
    QVERIFY(bench.isNear("q", 2.0 * test::kPi * 9e6 * henries / kOhms, widthOff + ohmsOff / kOhms));
    // The dip is within the detector's range or below its floor.
    const double seen = 5.0 / kFullCounts;
    const Between fp{firstPlace(crystal.series(), range.stop, [&](double f) { return curve(f) <= seen; }),
                     firstPlace(range.stop, crystal.series(), [&](double f) { return curve(f) <= seen; })};
    QVERIFY(bench.isWithin("fp", fp));
    const double apart = crystal.parallel() - crystal.series();
    QVERIFY(bench.isNear("c0", 20e-12, widthOff + (fp.most - fp.least) / apart));
}

void TestResultsOfBoards::anAntenna()
{
    QFETCH(int, interfaceType);
    const test::Antenna antenna{40.0, 7.05e6, 600.0};
    const Range range{6.45e6, 7.65e6};
    const auto curve = [&](double hertz) { return antenna.reflectionAt(hertz); };
    Bench bench(interfaceType);
    bench.connectCable(); // an open bridge has the same level
    QCOMPARE(bench.sweep(range, {QStringLiteral("--output=cable.csv")}), 0);
    bench.connect(curve, range);
    QCOMPARE(bench.sweep(range, relative("match")), 0);

    const double lowest = 10.0 / 90.0;
    // The detector reads 5 mV without a signal; this adds a thousandth here.
    const double off = (kMeanOf64 + lowest * kOneSweep + 0.1) / kFullCounts;
    QVERIFY(off < 0.03 * lowest);
    const Between rho{lowest - off, lowest + off};
    QVERIFY(bench.isWithin("rho", rho));
    QVERIFY(bench.isWithin("swr", {(1.0 + rho.least) / (1.0 - rho.least), (1.0 + rho.most) / (1.0 - rho.most)}));
    QVERIFY(bench.isWithin("returnLoss", {-20.0 * std::log10(rho.most), -20.0 * std::log10(rho.least)}));
    const double level = lowest + 2.0 * off;
    QVERIFY(bench.isWithin("freq", {firstPlace(range.start, range.stop, [&](double f) { return curve(f) <= level; }),
                                    firstPlace(range.stop, range.start, [&](double f) { return curve(f) <= level; })}));
    for (const double swr : {1.5, 2.0}) {
        const double g = (swr - 1.0) / (swr + 1.0);
        const double gOff = (kMeanOf64 + g * kOneSweep + 0.1) / kFullCounts;
        const auto width = [&](double ratio) { return antenna.bandwidth((1.0 + ratio) / (1.0 - ratio)); };
        const Between bounds{width(g - gOff) - 2.0 * range.step(), width(g + gOff) + 2.0 * range.step()};
        QVERIFY(bounds.most - bounds.least < 0.15 * antenna.bandwidth(swr));
        QVERIFY(bench.isWithin(swr < 2.0 ? "bw15" : "bw20", bounds));
    }
}

// The "antenna" device in the menu: 60 ohms at 7.05 MHz, Q 12. The MiniVNA measures it in reflection, the other boards
// through a bridge.
void TestResultsOfBoards::theAntennaOfTheBoard()
{
    QFETCH(int, interfaceType);
    const Range range{6.45e6, 7.65e6};
    Bench bench(interfaceType);
    if (interfaceType == kInterfaceVna)
        bench.connectOpen();
    else
        bench.connectCable();
    QCOMPARE(bench.sweep(range, {QStringLiteral("--output=cable.csv")}), 0);
    bench.tool.folder.set("Simulator", "Device", QStringLiteral("antenna"));
    QCOMPARE(bench.sweep(range, relative("match")), 0);
    QVERIFY(bench.isWithin("swr", {1.19, 1.21}));
    QVERIFY(bench.isWithin("freq", {7.01e6, 7.09e6}));
    const test::Antenna antenna{60.0, 7.05e6, 720.0};
    QVERIFY(bench.isNear("bw20", antenna.bandwidth(2.0), 0.03));
}

QTEST_GUILESS_MAIN(TestResultsOfBoards)
#include "test_results_of_boards.moc"
