// SPDX-License-Identifier: MIT
// Tests the results, means and relative curves that calvorn-sweep computes from sweeps with known results.
#include "tests/support/locales.h"
#include "tests/support/sweep_file_text.h"
#include "tests/support/sweep_tool.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

using namespace calvorn;
using calvorn::test::contents;
using calvorn::test::makeSweepFile;
using calvorn::test::Tool;

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

// A five-resonator Butterworth band-pass with a peak of 0.9 V; the order determines its width at any level.
constexpr double kCentre = 7.1e6;
constexpr double kWidth = 600e3;
constexpr double kOrder = 5.0;

double bandpass(double hertz)
{
    const double x = kCentre / kWidth * (hertz / kCentre - kCentre / hertz);
    return 0.9 / std::sqrt(1.0 + std::pow(x * x, kOrder));
}

double widthAt(double decibels)
{
    return kWidth * std::pow(std::pow(10.0, decibels / 10.0) - 1.0, 0.5 / kOrder);
}

// Slope between -6 and -20 dB, in dB per octave.
double slopeOf(int side)
{
    const auto edge = [side](double decibels) {
        const double half = widthAt(decibels) / 2.0;
        return std::hypot(kCentre, half) + side * half;
    };
    return 14.0 / std::abs(std::log2(edge(6.0) / edge(20.0)));
}

QByteArray bandpassFile()
{
    return makeSweepFile(5'800'000, 7'000, bandpass);
}

// A crystal in series between a 50-ohm source and a 50-ohm load.
constexpr double kSeries = 9e6;
constexpr double kMotionalOhms = 25.0;
constexpr double kMotionalFarads = 20e-15;

double crystal(double hertz)
{
    const double omega = kTurn * hertz;
    const double henries = 1.0 / (std::pow(kTurn * kSeries, 2.0) * kMotionalFarads);
    const double reactance = omega * henries - 1.0 / (omega * kMotionalFarads);
    return std::abs(100.0 / (100.0 + std::complex<double>(kMotionalOhms, reactance)));
}

// A 40-ohm antenna, series-resonant at 14.2 MHz and measured through a bridge.
constexpr double kResonance = 14.2e6;
constexpr double kAntennaOhms = 40.0;
constexpr double kAntennaHenries = 4e-6;

double reflection(double hertz)
{
    const double reactance = kTurn * kAntennaHenries * (hertz - kResonance * kResonance / hertz);
    const std::complex<double> antenna(kAntennaOhms, reactance);
    return std::abs((antenna - 50.0) / (antenna + 50.0));
}

// Returns the spacing of the two frequencies at which |rho| has this value: the reactance there divided by 2 pi L.
double matchWidth(double rho)
{
    const double squared = rho * rho;
    const double reactance = std::sqrt(
        (squared * std::pow(kAntennaOhms + 50.0, 2.0) - std::pow(kAntennaOhms - 50.0, 2.0)) / (1.0 - squared));
    return reactance / (kTurn * kAntennaHenries);
}

QJsonObject reportOf(const Tool &tool)
{
    return QJsonDocument::fromJson(tool.out.toUtf8()).object();
}

bool isNear(const QJsonObject &report, const char *key, double expected, double part = 0.001)
{
    const QJsonValue value = report[QLatin1String(key)];
    const bool isNear = value.isDouble() && std::abs(value.toDouble() - expected) <= std::abs(expected) * part;
    if (!isNear)
        qWarning("%s is %.12g, not %.12g", key, value.toDouble(-1.0), expected);
    return isNear;
}

QString noteOf(const QJsonObject &report, const char *key)
{
    return report[QLatin1String("notes")].toObject()[QLatin1String(key)].toString();
}

// Returns the value after a caption.
QString valueOf(const QString &text, const QString &caption)
{
    for (const QString &line : text.split(u'\n'))
        if (line.startsWith(caption))
            return line.mid(caption.size()).trimmed();
    return {};
}

std::vector<double> columnOf(const QByteArray &csv, int column)
{
    std::vector<double> values;
    for (const QByteArray &line : csv.split('\n').mid(1, kSweepPoints))
        values.push_back(line.trimmed().split(',').value(column).toDouble());
    return values;
}

} // namespace

class TestSweepToolResults : public QObject
{
    Q_OBJECT

private slots:
    void aFilterIsComputed_data() { test::addLocaleRows(); }
    void aFilterIsComputed();
    void aFilterIsPrinted_data() { test::addLocaleRows(); }
    void aFilterIsPrinted();
    void aNotchIsComputed();
    void aCrystalIsComputed();
    void anAntennaIsComputed();
    void whatIsMissingHasAReason();
    void jsonWithoutResultsIsThatOfAFilter();
    void aFileNeedsNoServer();
    void theScaleOfAFileDoesNotMatter_data();
    void theScaleOfAFileDoesNotMatter();
    void aFileOfAnotherDetectorKeepsItsAmplitudes();
    void aFallingSweepIsTheSame();
    void theMeanIsThatOfTheSweeps();
    void theMeanIsPrintedAndDrawn();
    void aCurveRelativeToItselfIsFlat();
    void aReferenceOfAnotherRangeLeavesGaps();
    void aPictureShowsTheReference();
    void aPictureShowsTheTraces();
};

void TestSweepToolResults::aFilterIsComputed()
{
    QFETCH(QLocale, locale);
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    tool.setLocale(locale);
    QCOMPARE(tool.run("--input filter.csv --scale 1V --results filter --format json"), 0);
    const QJsonObject report = reportOf(tool);
    QVERIFY(isNear(report, "bw3", kWidth));
    QVERIFY(isNear(report, "bw6", widthAt(6.0)));
    QVERIFY(isNear(report, "bw60", widthAt(60.0)));
    QVERIFY(isNear(report, "shape", widthAt(60.0) / widthAt(6.0)));
    QVERIFY(isNear(report, "centre", std::hypot(kCentre, kWidth / 2.0)));
    QVERIFY(isNear(report, "q", std::hypot(kCentre, kWidth / 2.0) / kWidth));
    QVERIFY(isNear(report, "slopeLow", slopeOf(-1)));
    QVERIFY(isNear(report, "slopeHigh", slopeOf(1)));
    QVERIFY(isNear(report, "peak", 20.0 * std::log10(0.9)));
    QVERIFY(report[QLatin1String("loss")].isNull());
    QCOMPARE(noteOf(report, "loss"), QStringLiteral("no reference"));
    QCOMPARE(report[QLatin1String("notes")].toObject().size(), 1);
    QCOMPARE(report[QLatin1String("kind")].toString(), QStringLiteral("filter"));
    QCOMPARE(report[QLatin1String("start")].toDouble(), 5.8e6);
    QCOMPARE(report[QLatin1String("stop")].toDouble(), 5.8e6 + 399 * 7e3);
    QCOMPARE(report[QLatin1String("points")].toInt(), kSweepPoints);
    QCOMPARE(report[QLatin1String("averaged")].toInt(), 1);
    QCOMPARE(report[QLatin1String("relative")], QJsonValue(false));
    QCOMPARE(report[QLatin1String("decibelReference")].toString(), QStringLiteral("1 V"));
    // JSON is identical in every locale.
    const QString out = tool.out;
    tool.setLocale(QLocale::c());
    QCOMPARE(tool.run("--input filter.csv --scale 1V --results filter --format json"), 0);
    QCOMPARE(out, tool.out);
    QCOMPARE(tool.run("--input filter.csv --scale 10V --results filter --format json"), 0);
    QVERIFY(isNear(reportOf(tool), "peak", 20.0 * std::log10(0.09)));
    QCOMPARE(reportOf(tool)[QLatin1String("decibelReference")].toString(), QStringLiteral("10 V"));
}

void TestSweepToolResults::aFilterIsPrinted()
{
    QFETCH(QLocale, locale);
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    tool.setLocale(locale);
    QCOMPARE(tool.run("--input filter.csv --scale linear --results filter"), 0);
    QCOMPARE(tool.out.count(u'\n'), 12);
    QVERIFY(tool.errors.isEmpty());
    QCOMPARE(valueOf(tool.out, QStringLiteral("Peak ")), test::inLocale(locale, QStringLiteral("-0.9 dB")));
    QString width = valueOf(tool.out, QStringLiteral("\u22123 dB bandwidth"));
    QVERIFY2(width.endsWith(QStringLiteral(" Hz")), qPrintable(width));
    width.chop(3);
    QVERIFY2(std::abs(width.remove(locale.groupSeparator()).toDouble() - kWidth) < kWidth * 0.001, qPrintable(width));
    QCOMPARE(valueOf(tool.out, QStringLiteral("Insertion loss")), QStringLiteral("–  no reference"));
}

void TestSweepToolResults::aNotchIsComputed()
{
    Tool tool(test::fineSettings());
    // 0.8 V outside the notch, 40 dB less at its minimum.
    const auto notch = [](double hertz) {
        const double x = 35.5 * (hertz / 7.1e6 - 7.1e6 / hertz);
        return 0.8 * std::sqrt((1e-4 + x * x) / (1.0 + x * x));
    };
    tool.write("notch.csv", makeSweepFile(6'102'500, 5'000, notch));
    QCOMPARE(tool.run("--input notch.csv --results notch --format json"), 0);
    const QJsonObject report = reportOf(tool);
    const double outside = notch(6'102'500);
    // x is where 2 (1e-4 + x^2) / (1 + x^2) = (outside / 0.8)^2, 3 dB below the level outside the notch.
    const double squared = outside * outside / 0.64 / 2.0;
    const double x = std::sqrt((squared - 1e-4) / (1.0 - squared));
    QVERIFY(isNear(report, "bw3", x * 200e3));
    QVERIFY(isNear(report, "notchFreq", 7.1e6));
    QVERIFY(report[QLatin1String("depth")].toDouble() > 30.0);
    QCOMPARE(report[QLatin1String("kind")].toString(), QStringLiteral("notch"));
}

void TestSweepToolResults::aCrystalIsComputed()
{
    Tool tool(test::fineSettings());
    tool.write("crystal.csv", makeSweepFile(8'995'000, 25, crystal));
    tool.write("through.csv", makeSweepFile(8'000'000, 10'000, [](double) { return 1.0; }));
    const char *const arguments = "--input crystal.csv --reference through.csv --results crystal --format json";
    QCOMPARE(tool.run(arguments), 0);
    const QJsonObject report = reportOf(tool);
    QVERIFY(isNear(report, "fs", kSeries, 1e-6));
    QVERIFY(isNear(report, "rm", kMotionalOhms));
    QVERIFY(isNear(report, "cm", kMotionalFarads));
    QVERIFY(isNear(report, "lm", 1.0 / (std::pow(kTurn * kSeries, 2.0) * kMotionalFarads)));
    QVERIFY(isNear(report, "q", 1.0 / (kTurn * kSeries * kMotionalFarads * kMotionalOhms)));
    // This crystal has no parallel capacitance.
    QVERIFY(report[QLatin1String("fp")].isNull() && report[QLatin1String("c0")].isNull());
    QCOMPARE(noteOf(report, "fp"), QStringLiteral("no parallel resonance inside the range"));
    QCOMPARE(report[QLatin1String("relative")], QJsonValue(true));
    QCOMPARE(report[QLatin1String("decibelReference")].toString(), QStringLiteral("reference"));
    // With half the fixture's resistance, all resistances halve and the capacitance doubles.
    QStringList other = QString::fromLatin1(arguments).split(u' ');
    other.append(QStringLiteral("--fixture=25.0"));
    QCOMPARE(tool.run(other), 0);
    QVERIFY(isNear(reportOf(tool), "rm", report[QLatin1String("rm")].toDouble() / 2.0, 1e-9));
    QVERIFY(isNear(reportOf(tool), "cm", report[QLatin1String("cm")].toDouble() * 2.0, 1e-9));
}

void TestSweepToolResults::anAntennaIsComputed()
{
    Tool tool(test::fineSettings());
    tool.write("antenna.csv", makeSweepFile(12'205'000, 10'000, reflection));
    tool.write("open.csv", makeSweepFile(12'205'000, 10'000, [](double) { return 1.0; }));
    QCOMPARE(tool.run("--input antenna.csv --reference open.csv --results match --format json"), 0);
    const QJsonObject report = reportOf(tool);
    QVERIFY(isNear(report, "swr", 50.0 / kAntennaOhms));
    QVERIFY(isNear(report, "rho", 10.0 / 90.0));
    QVERIFY(isNear(report, "freq", kResonance));
    QVERIFY(isNear(report, "bw15", matchWidth(0.2)));
    QVERIFY(isNear(report, "bw20", matchWidth(1.0 / 3.0)));
}

void TestSweepToolResults::whatIsMissingHasAReason()
{
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    QCOMPARE(tool.run("--input filter.csv --results crystal --format json"), 0);
    const QJsonObject report = reportOf(tool);
    for (const char *key : {"fs", "fp", "rm", "lm", "cm", "c0", "q"}) {
        QVERIFY2(report[QLatin1String(key)].isNull(), key);
        QCOMPARE(noteOf(report, key), QStringLiteral("no reference"));
    }
    QCOMPARE(tool.run("--input filter.csv --results match"), 0);
    QCOMPARE(tool.out.count(QStringLiteral("–  no reference\n")), 6);
    // A low-pass filter has no lower edge.
    tool.write("lowpass.csv", makeSweepFile(1'000'000, 10'000, [](double hertz) { return 1e6 / hertz; }));
    QCOMPARE(tool.run("--input lowpass.csv --format json"), 0);
    QVERIFY(reportOf(tool)[QLatin1String("bw3")].isNull());
    QCOMPARE(noteOf(reportOf(tool), "bw3"), QStringLiteral("outside the sweep range"));
}

void TestSweepToolResults::jsonWithoutResultsIsThatOfAFilter()
{
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    QCOMPARE(tool.run("--input filter.csv --results FILTER --format JSON"), 0);
    const QString out = tool.out;
    QCOMPARE(tool.run("--input filter.csv --format json --output again.csv --picture again.svg"), 0);
    QCOMPARE(tool.out, out);
    QCOMPARE(tool.errors, (QStringList{tool.inFolder("again.csv"), tool.inFolder("again.svg")}));
}

void TestSweepToolResults::aFileNeedsNoServer()
{
    Tool tool(test::fineSettings(), QString());
    tool.write("filter.csv", bandpassFile());
    QCOMPARE(tool.run("--input filter.csv --scale linear --output again.csv"), 0);
    QCOMPARE(contents(tool.inFolder("again.csv")), bandpassFile());
    QCOMPARE(tool.run("--input filter.csv"), 0);
    QVERIFY(tool.out.startsWith(QStringLiteral("Peak ")));
    QVERIFY(tool.errors.isEmpty());
    QCOMPARE(tool.run(QStringList()), 3);
}

void TestSweepToolResults::theScaleOfAFileDoesNotMatter_data()
{
    QTest::addColumn<QString>("written");
    for (const char *scale : {"linear", "1V", "1V+10dB", "10V", "10V+10dB"})
        QTest::newRow(scale) << QString::fromLatin1(scale);
}

void TestSweepToolResults::theScaleOfAFileDoesNotMatter()
{
    QFETCH(QString, written);
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    QCOMPARE(tool.run({QStringLiteral("--input=filter.csv"), QStringLiteral("--scale"), written,
                       QStringLiteral("--output=other.csv")}),
             0);
    for (const char *scale : {"--scale=linear", "--scale=1V", "--scale=10V+10dB"}) {
        const QString read = QString::fromLatin1(scale);
        QCOMPARE(tool.run({QStringLiteral("--input=filter.csv"), read}), 0);
        const QString out = tool.out;
        QCOMPARE(tool.run({QStringLiteral("--input=other.csv"), read}), 0);
        QCOMPARE(tool.out, out);
        QVERIFY(tool.errors.isEmpty());
    }
}

void TestSweepToolResults::aFileOfAnotherDetectorKeepsItsAmplitudes()
{
    QByteArray settings = test::fineSettings();
    Tool tool(settings.replace("ADC Step=0.000001", "ADC Step=0.1"));
    tool.write("filter.csv", bandpassFile());
    QCOMPARE(tool.run("--input filter.csv --scale linear --format json"), 0);
    QVERIFY(isNear(reportOf(tool), "peak", 20.0 * std::log10(0.9)));
    QVERIFY(isNear(reportOf(tool), "bw3", kWidth, 0.002)); // the file contains whole millivolts
    QCOMPARE(tool.errors, QStringList(QStringLiteral(
                              "filter.csv: the amplitudes do not match the counts; they are read as volts.")));
    QCOMPARE(tool.run("--input filter.csv --scale 1V --format json"), 0);
    QVERIFY(isNear(reportOf(tool), "peak", 0.9)); // dB
    QVERIFY(tool.errors.value(0).endsWith(QStringLiteral("they are read as dB.")));
}

void TestSweepToolResults::aFallingSweepIsTheSame()
{
    Tool tool(test::fineSettings());
    tool.write("rising.csv", bandpassFile());
    tool.write("falling.csv", makeSweepFile(5'800'000 + 399 * 7'000, -7'000, bandpass));
    QCOMPARE(tool.run("--input rising.csv --results filter"), 0);
    const QString out = tool.out;
    QCOMPARE(tool.run("--input falling.csv --results filter"), 0);
    QCOMPARE(tool.out, out);
    QCOMPARE(tool.run("--input falling.csv --reference rising.csv"), 0);
    QCOMPARE(valueOf(tool.out, QStringLiteral("Peak ")), QStringLiteral("0.0 dB"));
}

// A simulated board's noise is reproducible, so the sweeps behind a mean can be run individually.
void TestSweepToolResults::theMeanIsThatOfTheSweeps()
{
    const QByteArray settings = test::crystalSettings(kInterfaceLpt);
    Tool tool(settings);
    constexpr int kSweeps = 4;
    std::vector<double> mean(kSweepPoints, 0.0);
    std::vector<double> counts;
    for (int sweeps = 1; sweeps <= kSweeps; ++sweeps) {
        QCOMPARE(tool.run({QStringLiteral("--output=one.csv"), QStringLiteral("--sweeps=%1").arg(sweeps)}), 0);
        counts = columnOf(contents(tool.inFolder("one.csv")), 2);
        for (std::size_t i = 0; i < mean.size(); ++i)
            mean[i] += counts[i] / kSweeps;
    }
    QVERIFY(mean != counts); // noise changes some samples
    QCOMPARE(tool.run("--average 4 --scale 1V --results filter --format json --output last.csv"), 0);
    const double volts = *std::max_element(mean.begin(), mean.end()) * static_cast<double>(0.00244F);
    QVERIFY(isNear(reportOf(tool), "peak", 20.0 * std::log10(volts), 1e-9));
    QCOMPARE(reportOf(tool)[QLatin1String("averaged")].toInt(), kSweeps);
    QCOMPARE(tool.errors.filter(QStringLiteral(" of 4")).size(), kSweeps);
    // The file contains the integer counts of the last sweep.
    QCOMPARE(columnOf(contents(tool.inFolder("last.csv")), 2), counts);
}

void TestSweepToolResults::theMeanIsPrintedAndDrawn()
{
    Tool tool(test::crystalSettings(kInterfaceLpt));
    QCOMPARE(tool.run("--average 8 --scale 1V"), 0);
    const QString text = tool.out;
    QVERIFY(valueOf(text, QStringLiteral("Peak ")).endsWith(QStringLiteral(" dB")));
    QCOMPARE(text.count(u'\n'), 5 + 1 + 19);
    QCOMPARE(tool.run("--sweeps 8 --scale 1V"), 0);
    QVERIFY(tool.out != text);
    const auto curveOf = [&tool] {
        const QByteArray svg = contents(tool.inFolder("curve.svg"));
        const qsizetype from = svg.indexOf("<polyline", svg.indexOf("stroke=\"#ffff00\""));
        return svg.mid(from, svg.indexOf("/>", from) - from);
    };
    QCOMPARE(tool.run("--sweeps 8 --scale 1V --picture curve.svg"), 0);
    const QByteArray last = curveOf();
    QVERIFY(last.size() > 1000);
    QCOMPARE(tool.run("--average 8 --scale 1V --picture curve.svg"), 0);
    QVERIFY(curveOf() != last);
    QCOMPARE(tool.run("--sweeps 1 --scale 1V --output one.csv"), 0);
    QCOMPARE(tool.run("--average 8 --scale 1V --picture curve.svg --traces one.csv"), 0);
    for (const char *name : {">Mean of 8 sweeps<", ">one<"})
        QVERIFY2(contents(tool.inFolder("curve.svg")).contains(name), name);
}

void TestSweepToolResults::aCurveRelativeToItselfIsFlat()
{
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    tool.write("half.csv", makeSweepFile(5'800'000, 7'000, [](double hertz) { return bandpass(hertz) / 2.0; }));
    QCOMPARE(tool.run("--input filter.csv --reference filter.csv --results filter --format json"), 0);
    QCOMPARE(reportOf(tool)[QLatin1String("peak")].toDouble(), 0.0);
    QCOMPARE(reportOf(tool)[QLatin1String("loss")].toDouble(), 0.0);
    QCOMPARE(tool.run("--input half.csv --reference filter.csv --scale 10V --results filter"), 0);
    QCOMPARE(valueOf(tool.out, QStringLiteral("Insertion loss")), QStringLiteral("6.0 dB"));
    QVERIFY(tool.errors.isEmpty());
    QCOMPARE(tool.run("--input half.csv --reference filter.csv --scale 10V"), 0);
    QCOMPARE(valueOf(tool.out, QStringLiteral("Peak ")), QStringLiteral("-6.0 dB"));
    // Ratios have no unit.
    QCOMPARE(tool.run("--input half.csv --reference filter.csv --scale linear"), 0);
    QVERIFY2(valueOf(tool.out, QStringLiteral("Peak ")).contains(QRegularExpression(QStringLiteral("^0\\.50\\d$"))),
             qPrintable(tool.out.section(u'\n', 0, 0)));
    QCOMPARE(valueOf(tool.out, QStringLiteral("-3 dB to")), QStringLiteral("outside the range"));
}

void TestSweepToolResults::aReferenceOfAnotherRangeLeavesGaps()
{
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    const auto half = [](double hertz) { return hertz > 7.5e6 ? 0.0 : 0.5; };
    tool.write("lower.csv", makeSweepFile(6'000'000, 2'500, half));
    QCOMPARE(tool.run("--input filter.csv --reference lower.csv --scale 1V"), 0);
    QCOMPARE(tool.errors, QStringList(QStringLiteral("The reference does not cover the whole range: there are gaps.")));
    QCOMPARE(valueOf(tool.out, QStringLiteral("-3 dB from")).right(3), QStringLiteral(" Hz"));
    QCOMPARE(valueOf(tool.out, QStringLiteral("-3 dB to")), QStringLiteral("outside the range"));
    tool.write("elsewhere.csv", makeSweepFile(20'000'000, 2'500, half));
    QCOMPARE(tool.run("--input filter.csv --reference elsewhere.csv --scale 1V"), 7);
    QCOMPARE(tool.errors, QStringList(QStringLiteral(
                              "calvorn-sweep: The reference in elsewhere.csv does not cover any point of the sweep.")));
    QVERIFY(tool.out.isEmpty());
    QCOMPARE(tool.run("--input filter.csv --reference lower.csv --scale 1V"), 0);
    // The plot is empty to the right of the gap.
    for (const QString &line : tool.out.split(u'\n').mid(6, 17))
        QVERIFY2(line.lastIndexOf(u'*') <= 9 + 71 * 171 / 400, qPrintable(line));
    tool.write("dead.csv", makeSweepFile(5'800'000, 7'000, half));
    QCOMPARE(tool.run("--input filter.csv --reference dead.csv --scale 1V --results filter --format json"), 0);
    QCOMPARE(tool.errors,
             QStringList(QStringLiteral("The reference is partly below the detector's floor: there are gaps.")));
    QCOMPARE(noteOf(reportOf(tool), "bw60"), QStringLiteral("a gap in the curve"));
    QVERIFY(isNear(reportOf(tool), "bw3", kWidth));
}

void TestSweepToolResults::aPictureShowsTheReference()
{
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    tool.write("cable.csv", makeSweepFile(5'800'000, 7'000, [](double) { return 0.5; }));
    QCOMPARE(tool.run("--input filter.csv --scale 1V+10dB --picture plain.svg"), 0);
    QCOMPARE(tool.run("--input filter.csv --scale 1V+10dB --reference cable.csv --picture relative.svg"), 0);
    // The curve is 6 dB higher, about 1/12 of the plot, which shows 70 dB in a height of 480.
    const auto highest = [&tool](const char *name) {
        const QByteArray svg = contents(tool.inFolder(name));
        const qsizetype from =
            svg.indexOf("points=\"", svg.indexOf("<polyline", svg.indexOf("stroke=\"#ffff00\""))) + 8;
        double least = 1e9;
        for (const QByteArray &point : svg.mid(from, svg.indexOf('"', from) - from).trimmed().split(' '))
            least = std::min(least, point.split(',').value(1).toDouble());
        return least;
    };
    QVERIFY(contents(tool.inFolder("relative.svg")).contains("relative to cable"));
    const double height = 480.0 * 20.0 * std::log10(2.0) / 70.0;
    QVERIFY2(std::abs(highest("plain.svg") - highest("relative.svg") - height) < 1.5,
             qPrintable(QString::number(highest("plain.svg") - highest("relative.svg"))));
}

void TestSweepToolResults::aPictureShowsTheTraces()
{
    Tool tool(test::fineSettings());
    tool.write("filter.csv", bandpassFile());
    tool.write("before.csv", makeSweepFile(5'900'000, 6'000, [](double) { return 0.5; }));
    tool.write("a,b.csv", makeSweepFile(5'900'000, 6'000, [](double) { return 0.3; }));
    QCOMPARE(tool.run("--input filter.csv --picture plain.svg"), 0);
    QVERIFY(!contents(tool.inFolder("plain.svg")).contains("#8fd3ff"));
    QCOMPARE(tool.run("--input filter.csv --picture two.svg --traces before.csv,filter.csv --traces a,b.csv"), 0);
    const QByteArray picture = contents(tool.inFolder("two.svg"));
    for (const char *colour : {"#8fd3ff", "#f0a020", "#e8b4d0"})
        QVERIFY2(picture.contains(colour), colour);
    QVERIFY(!picture.contains("#4f6bff"));
    for (const char *name : {">filter<", ">before<", ">a,b<"})
        QVERIFY2(picture.contains(name), name);
    QCOMPARE(picture.count(">filter<"), 2); // the sweep and the trace
    QCOMPARE(tool.run("--input filter.csv --picture five.svg --traces filter.csv,filter.csv,filter.csv "
                      "--traces filter.csv,filter.csv"),
             1);
    QCOMPARE(tool.sentence(), QStringLiteral("--traces takes at most 4 files."));
}

QTEST_GUILESS_MAIN(TestSweepToolResults)
#include "test_sweep_tool_results.moc"
