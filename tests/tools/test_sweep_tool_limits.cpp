// SPDX-License-Identifier: MIT
// Tests how calvorn-sweep checks curves against limits, and which inputs it rejects.
#include "tests/support/locales.h"
#include "tests/support/sweep_file_text.h"
#include "tests/support/sweep_tool.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <functional>
#include <sys/stat.h>

using namespace calvorn;
using calvorn::test::contents;
using calvorn::test::makeSweepFile;
using calvorn::test::Tool;

namespace {

constexpr int kStart = 1'000'000;
constexpr int kStep = 10'000;

// Falls from 1 V by 1 mV per sample.
double ramp(double hertz)
{
    return 1.0 - (hertz - kStart) / kStep * 0.001;
}

double decibels(double volts)
{
    return 20.0 * std::log10(volts);
}

// Runs calvorn-sweep with sweep files of a ramp and of half the ramp, and with a limits file.
struct Bench : Tool
{
    explicit Bench(const QByteArray &limits)
        : Tool(test::fineSettings(), QString())
    {
        write("ramp.csv", makeSweepFile(kStart, kStep, ramp));
        write("half.csv", makeSweepFile(kStart, kStep, [](double hertz) { return ramp(hertz) / 2.0; }));
        write("limits.csv", limits);
    }
    int judge(const char *more) { return run(QByteArray("--input ramp.csv --limits limits.csv ") + more); }
};

QJsonObject verdictOf(const Tool &tool)
{
    return QJsonDocument::fromJson(tool.out.toUtf8()).object()[QLatin1String("limits")].toObject();
}

bool isNear(const QJsonValue &value, double expected)
{
    return value.isDouble() && std::abs(value.toDouble() - expected) < 1e-5;
}

} // namespace

class TestSweepToolLimits : public QObject
{
    Q_OBJECT

private slots:
    void volts_data() { test::addLocaleRows(); }
    void volts();
    void decibelsOfEachReference();
    void relativeDecibels();
    void theMeanIsJudged();
    void theVerdictIsPrinted_data() { test::addLocaleRows(); }
    void theVerdictIsPrinted();
    void filesAreWrittenWhateverTheVerdict();
    void limitsAreDrawn();
    void limitsOfAnotherUnitAreRefused_data();
    void limitsOfAnotherUnitAreRefused();
    void noSampleIsNoVerdict();
    void badLimitsAreRefused();
    void badSweepFilesAreRefused_data();
    void badSweepFilesAreRefused();
    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void nothingIsMeasuredForARefusal();
};

void TestSweepToolLimits::volts()
{
    QFETCH(QLocale, locale);
    // The ramp is 0.9 V at 2 MHz and 0.8 V at 3 MHz.
    Bench bench("frequency/Hz,upper/V,lower/V\r\n2000000,0.95,0.7\r\n3000000,0.95,0.7\r\n");
    bench.setLocale(locale);
    QCOMPARE(bench.judge("--scale linear --format json"), 0);
    QJsonObject verdict = verdictOf(bench);
    QCOMPARE(verdict[QLatin1String("passed")], QJsonValue(true));
    QCOMPARE(verdict[QLatin1String("frequency")].toDouble(), 2e6);
    QVERIFY(isNear(verdict[QLatin1String("value")], 0.9));
    QVERIFY(isNear(verdict[QLatin1String("limit")], 0.95));
    QVERIFY(isNear(verdict[QLatin1String("margin")], 0.05));
    QCOMPARE(verdict[QLatin1String("outside")].toInt(-1), 0);
    // Samples from 2.51 MHz on are below 0.85 V.
    bench.write("limits.csv", "frequency/Hz,upper/V,lower/V\r\n2000000,,0.8495\r\n3000000,,0.8495\r\n");
    QCOMPARE(bench.judge("--scale linear --format json"), 8);
    verdict = verdictOf(bench);
    QCOMPARE(verdict[QLatin1String("passed")], QJsonValue(false));
    QCOMPARE(verdict[QLatin1String("frequency")].toDouble(), 3e6);
    QVERIFY(isNear(verdict[QLatin1String("margin")], 0.8 - 0.8495));
    QCOMPARE(verdict[QLatin1String("outside")].toInt(), 50);
    QVERIFY(bench.errors.isEmpty());
}

void TestSweepToolLimits::decibelsOfEachReference()
{
    Bench bench("frequency/Hz,upper/dB,lower/dB\n2000000,-0.5,\n3000000,-0.5,\n");
    QCOMPARE(bench.judge("--scale 1V --format json"), 0);
    QVERIFY(isNear(verdictOf(bench)[QLatin1String("value")], decibels(0.9)));
    QCOMPARE(bench.judge("--scale 10V --format json"), 0);
    QVERIFY(isNear(verdictOf(bench)[QLatin1String("value")], decibels(0.09)));
    QVERIFY(isNear(verdictOf(bench)[QLatin1String("margin")], -0.5 - decibels(0.09)));
    bench.write("limits.csv", "frequency/Hz,upper/dB,lower/dB\n2000000,-1,\n3000000,-1,\n");
    QCOMPARE(bench.judge("--scale 1V"), 8);
    QCOMPARE(bench.judge("--scale 10V"), 0);
}

void TestSweepToolLimits::relativeDecibels()
{
    Bench bench("frequency/Hz,upper/dB relative,lower/dB relative\n1000000,6.1,6.0\n4990000,6.1,6.0\n");
    QCOMPARE(bench.judge("--scale 10V --reference half.csv --format json"), 0);
    QVERIFY(std::abs(verdictOf(bench)[QLatin1String("margin")].toDouble() - decibels(2.0) + 6.0) < 1e-4);
    QCOMPARE(bench.judge("--scale 1V --reference ramp.csv"), 8);
}

void TestSweepToolLimits::theMeanIsJudged()
{
    Tool tool(test::crystalSettings(kInterfaceLpt));
    tool.write("limits.csv", "frequency/Hz,upper/V,lower/V\n8950000,1.0,\n9050000,1.0,\n");
    QCOMPARE(tool.run("--scale linear --sweeps 3 --limits limits.csv --format json"), 0);
    const double last = verdictOf(tool)[QLatin1String("value")].toDouble();
    QCOMPARE(tool.run("--scale linear --average 3 --limits limits.csv --format json"), 0);
    const QJsonObject report = QJsonDocument::fromJson(tool.out.toUtf8()).object();
    QCOMPARE(report[QLatin1String("averaged")].toInt(), 3);
    // The worst sample is the peak.
    const double peak = std::pow(10.0, report[QLatin1String("peak")].toDouble() / 20.0);
    QVERIFY(isNear(verdictOf(tool)[QLatin1String("value")], peak));
    QVERIFY(peak != last);
}

void TestSweepToolLimits::theVerdictIsPrinted()
{
    QFETCH(QLocale, locale);
    Bench bench("frequency/Hz,upper/dB,lower/dB\n1995000,,-1\n2505000,,-1\n");
    bench.setLocale(locale);
    QCOMPARE(bench.judge("--scale 1V --results notch"), 8);
    // From 2.09 MHz on, the ramp is below 0.8913 V.
    const QString verdict = bench.out.section(QStringLiteral("\n\n"), 1);
    const QStringList lines = verdict.split(u'\n');
    const auto valueOf = [&lines](int line, const char *caption) {
        return lines.value(line).startsWith(QLatin1String(caption))
                   ? lines.value(line).mid(static_cast<qsizetype>(qstrlen(caption))).trimmed()
                   : QStringLiteral("?");
    };
    const auto local = [&locale](const char *text) { return test::inLocale(locale, QString::fromLatin1(text)); };
    QCOMPARE(valueOf(0, "Limits"), QStringLiteral("failed"));
    QCOMPARE(valueOf(1, "Worst at"), local("2,500,000 Hz"));
    QCOMPARE(valueOf(2, "Amplitude"), local("-1.41 dB"));
    QCOMPARE(valueOf(3, "Lower limit"), local("-1.00 dB"));
    QCOMPARE(valueOf(4, "Margin"), local("-0.41 dB"));
    QCOMPARE(valueOf(5, "Outside"), QStringLiteral("42 of 51 points"));
    QCOMPARE(lines.size(), 7);
    // The verdict follows the response.
    QCOMPARE(bench.judge("--scale 1V"), 8);
    QVERIFY(bench.out.startsWith(QStringLiteral("Peak ")));
    QVERIFY(bench.out.endsWith(verdict));
}

void TestSweepToolLimits::filesAreWrittenWhateverTheVerdict()
{
    Bench bench("frequency/Hz,upper/V,lower/V\n2000000,0.1,\n3000000,0.1,\n");
    QCOMPARE(bench.judge("--scale linear --output again.csv --picture again.svg"), 8);
    QCOMPARE(contents(bench.inFolder("again.csv")), contents(bench.inFolder("ramp.csv")));
    QVERIFY(bench.out.startsWith(QStringLiteral("Limits ")));
    QVERIFY(bench.out.endsWith(bench.inFolder("again.csv") + u'\n' + bench.inFolder("again.svg") + u'\n'));
    // If the verdict cannot be printed, the exit code must not report one.
    bench.process.setStandardOutputFile(QStringLiteral("/dev/full"));
    QCOMPARE(bench.judge("--scale linear"), 6);
}

void TestSweepToolLimits::limitsAreDrawn()
{
    Bench bench("frequency/Hz,upper/V,lower/V\n1000000,1.1,\n2000000,1.1,0.2\n3000000,,0.2\n");
    QCOMPARE(bench.judge("--scale linear --picture limits.svg"), 0);
    QVERIFY(contents(bench.inFolder("limits.svg")).contains("#ff6a5a"));
    for (const char *name : {">ramp<", ">Upper limit<", ">Lower limit<"})
        QVERIFY2(contents(bench.inFolder("limits.svg")).contains(name), name);
    QCOMPARE(bench.run("--input ramp.csv --scale linear --picture plain.svg"), 0);
    QVERIFY(!contents(bench.inFolder("plain.svg")).contains("#ff6a5a"));
}

void TestSweepToolLimits::limitsOfAnotherUnitAreRefused_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QString>("sentence");
    const QString volts =
        QStringLiteral("The limits in limits.csv are in volts: they need --scale linear, and no --reference.");
    const QString decibels =
        QStringLiteral("The limits in limits.csv are in dB: they need a --scale in dB, and no --reference.");
    const QString relative =
        QStringLiteral("The limits in limits.csv are in relative dB: they need a --scale in dB, and a --reference.");
    QTest::newRow("volts, on dB") << QByteArray("V") << QByteArray("--scale 1V") << volts;
    QTest::newRow("volts, of a ratio") << QByteArray("V") << QByteArray("--scale linear --reference half.csv") << volts;
    QTest::newRow("dB, on volts") << QByteArray("dB") << QByteArray("--scale linear") << decibels;
    QTest::newRow("dB, relative") << QByteArray("dB") << QByteArray("--scale 1V --reference half.csv") << decibels;
    QTest::newRow("relative, without") << QByteArray("dB relative") << QByteArray("--scale 1V") << relative;
    QTest::newRow("relative, of a ratio")
        << QByteArray("dB relative") << QByteArray("--scale linear --reference half.csv") << relative;
}

void TestSweepToolLimits::limitsOfAnotherUnitAreRefused()
{
    QFETCH(QByteArray, unit);
    QFETCH(QByteArray, arguments);
    QFETCH(QString, sentence);
    Bench bench("frequency/Hz,upper/" + unit + ",lower/" + unit + "\n1000000,0,\n2000000,0,\n");
    QCOMPARE(bench.judge(arguments + " --output again.csv"), 7);
    QCOMPARE(bench.sentence(), sentence);
    QVERIFY(bench.out.isEmpty());
    QVERIFY(!QFile::exists(bench.inFolder("again.csv")));
}

void TestSweepToolLimits::noSampleIsNoVerdict()
{
    Bench bench("frequency/Hz,upper/V,lower/V\n6000000,0.1,\n7000000,0.1,\n");
    for (const char *format : {"text", "json"}) {
        QCOMPARE(bench.judge(QByteArray("--scale linear --format ") + format), 7);
        QCOMPARE(bench.sentence(), QStringLiteral("The limits in limits.csv do not cover any point of the sweep."));
        QVERIFY(bench.out.isEmpty());
    }
    bench.write("limits.csv", "frequency/Hz,upper/V,lower/V\n");
    QCOMPARE(bench.judge("--scale linear"), 7);
    // The sweep is written anyway.
    QCOMPARE(bench.judge("--scale linear --output again.csv"), 7);
    QCOMPARE(contents(bench.inFolder("again.csv")), contents(bench.inFolder("ramp.csv")));
}

void TestSweepToolLimits::badLimitsAreRefused()
{
    Bench bench("frequency/Hz,upper/V,lower/V\n6000000,0.1,\n7000000,\"0,1\",\n");
    QCOMPARE(bench.judge("--scale linear"), 7);
    QVERIFY2(bench.sentence().startsWith(QStringLiteral("limits.csv: ")) &&
                 bench.sentence().contains(QStringLiteral("line 3")),
             qPrintable(bench.sentence()));
    bench.write("limits.csv", contents(bench.inFolder("ramp.csv")));
    QCOMPARE(bench.judge("--scale linear"), 7);
    QVERIFY2(bench.sentence().contains(QStringLiteral("line 1")), qPrintable(bench.sentence()));
    QVERIFY(QFile::remove(bench.inFolder("limits.csv")));
    QCOMPARE(bench.judge("--scale linear"), 7);
    QCOMPARE(bench.sentence(), QStringLiteral("limits.csv cannot be read: No such file or directory."));
}

void TestSweepToolLimits::badSweepFilesAreRefused_data()
{
    using Make = std::function<void(const Tool &tool)>;
    QTest::addColumn<Make>("make");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char *name, const Make &make, const char *sentence) {
        QTest::newRow(name) << make << QString::fromLatin1(sentence);
    };
    const auto with = [](const QByteArray &content) {
        return [content](const Tool &tool) { tool.write("bad.csv", content); };
    };
    const QByteArray good = makeSweepFile(kStart, kStep, ramp);
    const auto replaced = [&](const char *text, const char *other) {
        if (good.count(text) != 1)
            qFatal("the file has no such text");
        return with(QByteArray(good).replace(text, other));
    };
    row(
        "missing", [](const Tool &) {}, "bad.csv cannot be read: No such file or directory.");
    row(
        "a folder", [](const Tool &tool) { QDir(tool.folder.path()).mkdir(QStringLiteral("bad.csv")); },
        "bad.csv cannot be read: it is not a file.");
    row(
        "a pipe", [](const Tool &tool) { mkfifo(QFile::encodeName(tool.inFolder("bad.csv")).constData(), 0600); },
        "bad.csv cannot be read: it is not a file.");
    row("empty", with({}), "bad.csv, line 1: File error: the file ends unexpectedly");
    row("cut off", with(good.left(good.indexOf("\r\n300,") + 6)),
        "bad.csv, line 301: File error: the file ends unexpectedly");
    row("limits", with("frequency/Hz,upper/V,lower/V\r\n"), "bad.csv, line 1: File error: the file ends unexpectedly");
    row("no number", replaced("\r\n7,1060000,", "\r\n7,many,"), "bad.csv, line 8: Type mismatch: \"many\"");
    row("row 4000", replaced("\r\n400,", "\r\n4000,"),
        "bad.csv, line 401: Subscript out of range: table row 4000, column 0");
    row("unequal distances", replaced(",1060000,", ",1065000,"), "bad.csv: the frequencies are not equally spaced.");
    row("rows left out", with("a,b,c,d\r\n400,1000000,5,12\r\n"), "bad.csv: the frequencies are not equally spaced.");
    row("one frequency", with(makeSweepFile(kStart, 0, ramp)), "bad.csv: the frequencies are not equally spaced.");
}

void TestSweepToolLimits::badSweepFilesAreRefused()
{
    QFETCH(std::function<void(const Tool &)>, make);
    QFETCH(QString, sentence);
    Bench bench({});
    make(bench);
    for (const char *arguments : {"--input bad.csv --output again.csv", "--input ramp.csv --reference bad.csv",
                                  "--input ramp.csv --traces ramp.csv,bad.csv --picture again.png"}) {
        QCOMPARE(bench.run(arguments), 7);
        QCOMPARE(bench.sentence(), sentence);
        QCOMPARE(bench.errors.size(), 1);
        QVERIFY(bench.out.isEmpty());
        QVERIFY(!QFile::exists(bench.inFolder("again.csv")) && !QFile::exists(bench.inFolder("again.png")));
    }
}

void TestSweepToolLimits::badArgumentsAreRefused_data()
{
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char *arguments, const char *sentence) {
        QTest::newRow(arguments) << QString::fromLatin1(sentence);
    };
    row("--input=", "--input takes the name of a file.");
    row("--reference=", "--reference takes the name of a file.");
    row("--limits=", "--limits takes the name of a file.");
    row("--picture=a.png --traces=ramp.csv,", "--traces takes the name of a file.");
    row("--listen 5025 --start 2000000", "--listen and --start cannot be combined.");
    row("--listen 5025 --output a.csv", "--listen and --output cannot be combined.");
    row("--listen 0", "--listen takes a port from 1 to 65535, not \"0\".");
    row("--listen 65536", "--listen takes a port from 1 to 65535, not \"65536\".");
    row("--listen scpi", "--listen takes a port from 1 to 65535, not \"scpi\".");
    row("--input ramp.csv --start 2000000", "--input and --start cannot be combined.");
    row("--input ramp.csv --stop 2000000", "--input and --stop cannot be combined.");
    row("--input ramp.csv --sweeps 1", "--input and --sweeps cannot be combined.");
    row("--input ramp.csv --average 2", "--input and --average cannot be combined.");
    row("--average 2 --sweeps 2", "--average and --sweeps cannot be combined.");
    row("--average 1", "--average takes a whole number from 2 to 999, not \"1\".");
    row("--average 1000", "--average takes a whole number from 2 to 999, not \"1000\".");
    row("--average 2.5", "--average takes a whole number from 2 to 999, not \"2.5\".");
    row("--results quartz", "--results takes one of filter, notch, crystal, match, not \"quartz\".");
    row("--format xml", "--format takes one of text, json, not \"xml\".");
    row("--fixture 50", "--fixture needs --results crystal.");
    row("--fixture 50 --results filter", "--fixture needs --results crystal.");
    row("--results crystal --fixture 0", "--fixture takes a number of ohms above 0, not \"0\".");
    row("--results crystal --fixture 12,5", "--fixture takes a number of ohms above 0, not \"12,5\".");
    row("--results crystal --fixture inf", "--fixture takes a number of ohms above 0, not \"inf\".");
    row("--results crystal --fixture nan", "--fixture takes a number of ohms above 0, not \"nan\".");
    row("--traces ramp.csv", "--traces needs --picture.");
    row("--output - --results filter", "--output and --results cannot both use standard output.");
    row("--output /dev/stdout --limits limits.csv", "--output and --limits cannot both use standard output.");
    row("--output - --format json", "--output and --format cannot both use standard output.");
    row("--input ramp.csv --output ./ramp.csv", "--output and --input name the same file.");
    row("--input ramp.csv --reference half.csv --output half.csv", "--output and --reference name the same file.");
    row("--input ramp.csv --limits limits.csv --output limits.csv", "--output and --limits name the same file.");
    row("--input ramp.csv --traces half.csv --picture a.png --output half.csv",
        "--output and --traces name the same file.");
    row("--input ramp.png --picture ramp.png", "--picture and --input name the same file.");
}

void TestSweepToolLimits::badArgumentsAreRefused()
{
    QFETCH(QString, sentence);
    Bench bench({});
    const QStringList files = bench.files();
    QCOMPARE(bench.run(QTest::currentDataTag()), 1);
    QCOMPARE(bench.sentence(), sentence);
    QCOMPARE(bench.errors.size(), 1);
    QVERIFY(bench.out.isEmpty());
    QCOMPARE(bench.files(), files);
}

// The limits and the reference are checked before the measurement.
void TestSweepToolLimits::nothingIsMeasuredForARefusal()
{
    Tool tool(test::crystalSettings(kInterfaceLpt));
    tool.write("limits.csv", "frequency/Hz,upper/V,lower/V\n1000000,1,\n90000000,1,\n");
    QCOMPARE(tool.run("--scale 1V --limits limits.csv"), 7);
    QCOMPARE(tool.errors.size(), 1);
    QCOMPARE(tool.run("--reference missing.csv"), 7);
    QCOMPARE(tool.errors.size(), 1);
    QCOMPARE(tool.run("--scale linear --limits limits.csv"), 0);
    QCOMPARE(tool.errors.size(), 2); // progress messages
}

QTEST_GUILESS_MAIN(TestSweepToolLimits)
#include "test_sweep_tool_limits.moc"
