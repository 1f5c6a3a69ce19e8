// SPDX-License-Identifier: MIT
// Follows the manual's measuring pages step by step on the simulated boards: their numbers match the display.
#include "tests/support/walk_numbers.h"
#include "tests/support/window_bench.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

// Returns a page as a single line without markup.
QString textOf(const char *page)
{
    QFile file(QStringLiteral(CALVORN_SOURCE_DIR "/help/") + QString::fromLatin1(page));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", page);
    static const QRegularExpression markup(QStringLiteral("<[^>]*>"));
    return QString::fromUtf8(file.readAll()).replace(markup, QStringLiteral(" ")).simplified();
}

// Returns the numbers captured by the pattern in a page. The pattern must match.
std::vector<double> numbersIn(const char *page, const char *pattern)
{
    const auto match = QRegularExpression(QString::fromLatin1(pattern)).match(textOf(page));
    if (!match.hasMatch())
        qFatal("%s does not contain \"%s\"", page, pattern);
    std::vector<double> numbers;
    for (int i = 1; i <= match.lastCapturedIndex(); ++i)
        numbers.push_back(match.captured(i).remove(u',').toDouble());
    return numbers;
}

QString whole(double hertz)
{
    return QString::number(hertz, 'f', 0);
}

struct Bench : WindowBench
{
    explicit Bench(const char *device)
        : WindowBench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                      test::ProgramFolder::preparedSettings()
                          .replace("Pace=real", "Pace=none")
                          .replace("Device=bandpass", QByteArray("Device=") + device))
    {
    }

    void sweep(const char *scale) const
    {
        window->findChild<QAction *>(QString::fromLatin1(scale))->trigger();
        click("cmdStart");
        if (!QTest::qWaitFor([this] { return table()->text(400, 2) != QStringLiteral("0"); }, 10000))
            qFatal("no sweep arrived");
        click("cmdStop");
        if (!QTest::qWaitFor([this] { return isShown("cmdStart"); }, 10000))
            qFatal("the sweep did not end");
    }

    void sweep(double start, double stop, const char *scale) const
    {
        type("txtStart", whole(start));
        type("txtStop", whole(stop));
        sweep(scale);
    }

    double number(const char *box) const { return test::readNumber(text(box)); }
    double amplitude(int row) const { return test::readNumber(table()->text(row, SweepTable::AmplitudeColumn)); }
    double frequency(int row) const { return test::readNumber(table()->text(row, SweepTable::FrequencyColumn)); }

    template <typename Condition>
    std::vector<double> frequenciesWhere(Condition condition) const
    {
        std::vector<double> found;
        for (int row = 1; row <= 400; ++row)
            if (condition(amplitude(row)))
                found.push_back(frequency(row));
        if (found.empty())
            qFatal("no sample meets the condition");
        return found;
    }

    // Moves M1 to this frequency (Hz) and returns the level shown in the box beside it.
    double levelAtM1(double hertz) const
    {
        type("txtM1X", whole(hertz));
        return number("txtM1Y");
    }
};

#define QCOMPARE_NEAR(actual, expected, tolerance)                                                                     \
    QVERIFY2(std::abs((actual) - (expected)) <= (tolerance),                                                           \
             qPrintable(QStringLiteral("%1, but the page says %2").arg(actual).arg(expected)))

constexpr char kLinear[] = "mnuScalaLineare";
constexpr char kLog1V[] = "mnuScalaLogaritmica1";
constexpr char kLog1VPlus10[] = "mnuScalaLogaritmica1dB";

} // namespace

class TestManualSteps : public QObject
{
    Q_OBJECT

private slots:
    void firstSweep();
    void aLowPassFilter();
    void aCrystalFilter();
    void aSingleCrystal();
    void anAntennaWithABridge();
    void theTableOfReturnLosses();
};

void TestManualSteps::firstSweep()
{
    const auto band = numbersIn("first-sweep.html", R"(passes ([\d.]+) to ([\d.]+) MHz)");
    const Bench bench("bandpass");
    bench.sweep(kLinear);
    const auto passing = bench.frequenciesWhere([](double volts) { return volts > 0.6; });
    QCOMPARE_NEAR(passing.front() / 1e6, band[0], 0.05);
    QCOMPARE_NEAR(passing.back() / 1e6, band[1], 0.05);
}

void TestManualSteps::aLowPassFilter()
{
    const char *page = "measure-low-pass.html";
    const auto range = numbersIn(page, R"(\(([\d,]+) and ([\d,]+)\))");
    const double flat = numbersIn(page, R"(shows its level \((-[\d.]+) dB\))")[0];
    const double lower = numbersIn(page, R"(3 dB lower \((-[\d.]+)\))")[0];
    const Bench bench("lowpass");
    bench.sweep(range[0], range[1], kLog1V);
    QCOMPARE_NEAR(bench.levelAtM1(3e6), flat, 0.15);
    bench.type("txtM3Y", QString::number(flat));
    bench.type("txtM4Y", QString::number(lower));
    QCOMPARE(bench.number("txtM4M3"), numbersIn(page, R"("M4 - M3" shows (-[\d.]+))")[0]);

    const auto above = bench.frequenciesWhere([lower](double level) { return level > lower; });
    QCOMPARE_NEAR(above.back() / 1e6, numbersIn(page, R"(cut-off frequency \(([\d.]+) MHz\))")[0], 0.06);
    bench.type("txtM2X", whole(numbersIn(page, R"(of a transmitter \(([\d,]+)\))")[0]));
    QCOMPARE_NEAR(bench.number("txtM2Y"), numbersIn(page, R"(level beside M2 \((-[\d.]+) dB\))")[0], 3.0);

    std::vector<double> bottom;
    for (int row = 350; row <= 400; ++row)
        bottom.push_back(bench.amplitude(row));
    std::nth_element(bottom.begin(), bottom.begin() + 25, bottom.end());
    QCOMPARE_NEAR(bottom[25], numbersIn(page, R"(ends at (-[\d.]+) dB)")[0], 1.0);
}

void TestManualSteps::aCrystalFilter()
{
    const char *page = "measure-crystal.html";
    const auto range = numbersIn(page, R"(\(([\d,]+) to ([\d,]+)\))");
    const double top = numbersIn(page, R"(shows its level \((-[\d.]+) dB\))")[0];
    const double flank = numbersIn(page, R"(6 dB less \((-[\d.]+)\))")[0];
    const Bench bench("crystal");
    bench.sweep(range[0], range[1], kLog1V);
    QCOMPARE(bench.number("txtStep"), numbersIn(page, R"(steps of ([\d.]+) Hz)")[0]);
    QCOMPARE_NEAR(bench.levelAtM1(9e6), top, 0.1);
    const auto pass = bench.frequenciesWhere([flank](double level) { return level >= flank; });
    bench.type("txtM1X", whole(pass.front()));
    bench.type("txtM2X", whole(pass.back()));
    QCOMPARE_NEAR(bench.number("txtM2M1"), numbersIn(page, R"(the bandwidth \(([\d,]+) Hz\))")[0], 100.0);
}

void TestManualSteps::aSingleCrystal()
{
    const auto numbers = numbersIn("measure-crystal.html", R"(\(from ([\d,]+) to ([\d,]+) Hz: about ([\d,]+) Hz)");
    const Bench bench("crystal");
    bench.sweep(numbers[0], numbers[1], kLog1V);
    const auto dip = bench.frequenciesWhere([](double level) { return level < -45.0; });
    const auto peak = bench.frequenciesWhere([](double level) { return level > -2.0; });
    // The dip is deeper than the detector can measure, and less steep above than below.
    QCOMPARE_NEAR((dip.front() + dip.back()) / 2.0 - peak.front(), numbers[2], 3000.0);
}

void TestManualSteps::anAntennaWithABridge()
{
    const char *page = "measure-antenna.html";
    const auto range = numbersIn(page, R"(for instance ([\d,]+) to ([\d,]+) Hz)");
    const double open = numbersIn(page, R"(shows this level \(([\d.]+) dB\))")[0];
    {
        const Bench bench("through");
        bench.sweep(range[0], range[1], kLog1VPlus10);
        QCOMPARE_NEAR(bench.levelAtM1(7e6), open, 0.1);
    }
    const Bench bench("notch");
    bench.sweep(range[0], range[1], kLog1VPlus10);
    const double resonance = numbersIn(page, R"(shows its frequency \(([\d.]+) MHz\))")[0];
    const auto low = bench.frequenciesWhere([](double level) { return level < -35.0; });
    QCOMPARE_NEAR(low.front() / 1e6, resonance, 0.01);
    QCOMPARE_NEAR(low.back() / 1e6, resonance, 0.01);
    const double dip = numbersIn(page, R"(the level \(about (-[\d.]+) dB\))")[0];
    QCOMPARE_NEAR(bench.levelAtM1(resonance * 1e6), dip, 6.0);
    bench.type("txtM3Y", QString::number(open));
    bench.type("txtM4Y", QString::number(dip));
    QCOMPARE(std::abs(bench.number("txtM4M3")), open - dip);

    const double limit = numbersIn(page, R"(dB below M3 \((-[\d.]+)\))")[0];
    const auto band = numbersIn(page, R"(below M4 \(([\d.]+) to ([\d.]+) MHz\))");
    const auto usable = bench.frequenciesWhere([limit](double level) { return level < limit; });
    QCOMPARE_NEAR(usable.front() / 1e6, band[0], 0.008);
    QCOMPARE_NEAR(usable.back() / 1e6, band[1], 0.008);
}

void TestManualSteps::theTableOfReturnLosses()
{
    static const QRegularExpression row(QStringLiteral(R"(([\d.]+) dB ([\d.]+)(?= |$))"));
    const QString page = textOf("measure-antenna.html");
    const qsizetype table = page.indexOf(QStringLiteral("Return loss SWR"));
    QVERIFY(table > 0);
    int rows = 0;
    for (auto match = row.globalMatch(page, table); match.hasNext(); ++rows) {
        const auto found = match.next();
        const double reflected = std::pow(10.0, -found.captured(1).toDouble() / 20.0);
        QCOMPARE_NEAR((1.0 + reflected) / (1.0 - reflected), found.captured(2).toDouble(), 0.05);
    }
    QCOMPARE(rows, 5);
}

QTEST_MAIN(TestManualSteps)
#include "test_manual_steps.moc"
