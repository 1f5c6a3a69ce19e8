// SPDX-License-Identifier: MIT
#include "data/limit_lines.h"

#include "core/runtime_error.h"
#include "tests/support/locales.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <QTest>

using namespace calvorn;

namespace {

LimitLines read(QByteArray csv)
{
    QBuffer device(&csv);
    if (!device.open(QIODevice::ReadOnly))
        qFatal("cannot open a buffer");
    return readLimitLinesCsv(device);
}

QString refusalOf(const QByteArray &csv)
{
    try {
        read(csv);
    } catch (const RuntimeError &error) {
        return error.kind() == RuntimeError::Kind::File ? error.message() : QStringLiteral("another kind");
    }
    return {};
}

const QByteArray kHeading("frequency/Hz,upper/dB,lower/dB\r\n");

} // namespace

class TestLimitLines : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void pointsAreSorted()
    {
        LimitLines lines;
        QVERIFY(lines.isEmpty());
        QCOMPARE(lines.add({2000.0, 1.0, {}}), std::size_t{0});
        QCOMPARE(lines.add({1000.0, 2.0, {}}), std::size_t{0});
        QCOMPARE(lines.add({1500.0, 3.0, {}}), std::size_t{1});
        QCOMPARE(lines.add({1500.0, 4.0, {}}), std::size_t{2}); // after the point with the same frequency
        QCOMPARE(lines.points()[1].upper, std::optional(3.0));
        QCOMPARE(lines.replace(1, {1500.0, 5.0, {}}), std::size_t{1});
        QCOMPARE(lines.points()[1].upper, std::optional(5.0));
        QCOMPARE(lines.replace(0, {3000.0, 2.0, {}}), std::size_t{3});
        QCOMPARE(lines.points().back().frequency, 3000.0);
        lines.remove(3);
        QCOMPARE(lines.points().size(), std::size_t{3});
        lines.clear();
        QVERIFY(lines.isEmpty());
    }

    void straightLinesBetweenNeighbours()
    {
        LimitLines lines;
        lines.add({1000.0, -10.0, {}});
        lines.add({2000.0, -20.0, -40.0});
        lines.add({3000.0, {}, -60.0});
        lines.add({4000.0, 0.0, {}});
        QVERIFY(!lines.upperAt(999.9));
        QCOMPARE(lines.upperAt(1000.0), std::optional(-10.0));
        QCOMPARE(lines.upperAt(1500.0), std::optional(-15.0));
        QCOMPARE(lines.upperAt(2000.0), std::optional(-20.0));
        QVERIFY(!lines.upperAt(2000.1));
        QVERIFY(!lines.upperAt(3000.0));
        QVERIFY(!lines.upperAt(3999.9));
        QCOMPARE(lines.upperAt(4000.0), std::optional(0.0));
        QVERIFY(!lines.upperAt(4000.1));
        QVERIFY(!lines.lowerAt(1500.0));
        QCOMPARE(lines.lowerAt(2250.0), std::optional(-45.0));
        QVERIFY(!lines.lowerAt(3500.0));
        QVERIFY(!LimitLines().upperAt(0.0));
    }

    void aStepTakesTheStricterValue()
    {
        LimitLines lines;
        lines.add({1000.0, 0.0, -50.0});
        lines.add({2000.0, 0.0, -50.0});
        lines.add({2000.0, -30.0, -40.0});
        lines.add({3000.0, -30.0, -40.0});
        QCOMPARE(lines.upperAt(1999.0), std::optional(0.0));
        QCOMPARE(lines.upperAt(2000.0), std::optional(-30.0));
        QCOMPARE(lines.upperAt(2001.0), std::optional(-30.0));
        QCOMPARE(lines.lowerAt(1999.0), std::optional(-50.0));
        QCOMPARE(lines.lowerAt(2000.0), std::optional(-40.0));
    }

    void aThousandPointsAtMost()
    {
        LimitLines lines;
        for (int i = 0; i < 1000; ++i)
            QCOMPARE(lines.add({double(i), 0.0, {}}), static_cast<std::size_t>(i));
        QCOMPARE(lines.add({5.0, 0.0, {}}), LimitLines::kMostPoints);
        QCOMPARE(lines.points().size(), LimitLines::kMostPoints);
        // Moving a point is allowed: it does not add one.
        QCOMPARE(lines.replace(0, {5000.0, 0.0, {}}), std::size_t{999});
        QCOMPARE(read(limitLinesAsCsv(lines)), lines);
    }

    void theFileIsTheSameInEveryLocale_data() { test::addLocaleRows(); }
    void theFileIsTheSameInEveryLocale()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        LimitLines lines;
        lines.add({7000000.0, -3.5, {}});
        lines.add({7100000.25, {}, -1e-7});
        lines.add({1e6, {}, {}});
        lines.unit = LimitUnit::RelativeDecibel;
        const QByteArray csv("frequency/Hz,upper/dB relative,lower/dB relative\r\n"
                             "1000000,,\r\n"
                             "7000000,-3.5,\r\n"
                             "7100000.25,,-0.0000001\r\n");
        QCOMPARE(limitLinesAsCsv(lines), csv);
        QCOMPARE(read(csv), lines);
        lines.unit = LimitUnit::Volt;
        QVERIFY(limitLinesAsCsv(lines).startsWith("frequency/Hz,upper/V,lower/V\r\n"));
        QCOMPARE(read(limitLinesAsCsv(lines)).unit, LimitUnit::Volt);
    }

    void everyNumberComesBack()
    {
        QRandomGenerator random(4711);
        LimitLines lines;
        const auto limit = [&]() {
            return random.bounded(3) == 0 ? std::nullopt : std::optional(random.generateDouble() * 200.0 - 100.0);
        };
        for (int i = 0; i < 900; ++i)
            lines.add({random.generateDouble() * 2e9, limit(), limit()});
        lines.add({0.0, 1e300, -5e-324});
        QCOMPARE(read(limitLinesAsCsv(lines)), lines);
    }

    void whatAnEditorMakesOfItIsRead()
    {
        LimitLines expected;
        expected.add({1000.0, 1.0, {}});
        expected.add({2000.0, {}, -2.5});
        const QByteArray rows("2000,,-2.5\r\n1000,1,\r\n");
        QCOMPARE(read(kHeading + rows), expected);
        QCOMPARE(read("\xEF\xBB\xBF" + kHeading + rows + "\r\n \n\n"), expected);
        QByteArray unix = kHeading + rows;
        unix.replace("\r\n", "\n");
        QCOMPARE(read(unix), expected);
        unix.chop(1); // without the final line ending
        QCOMPARE(read(unix), expected);
        QCOMPARE(read(kHeading + "2e3 , , -2.5\n 1000,1.0,\n"), expected);
        QCOMPARE(read(kHeading), LimitLines());
    }

    void brokenFilesAreRefused_data()
    {
        QTest::addColumn<QByteArray>("csv");
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("why");
        const auto row = [](const char *name, const QByteArray &csv, int line, const char *why) {
            QTest::newRow(name) << csv << QStringLiteral("line %1: ").arg(line) << QString::fromLatin1(why);
        };
        row("empty", "", 1, "first line must be \"frequency/Hz,upper/dB,lower/dB\"");
        row("a sweep", "\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n1,1000,5,12\r\n", 1,
            "first line must be");
        row("two units", "frequency/Hz,upper/dB,lower/V\n", 1, "first line must be");
        row("too few fields", kHeading + "1000,1\n", 2, "three fields");
        row("too many fields", kHeading + "1000,1,,\n", 2, "three fields");
        row("semicolons", kHeading + "1000;1;\n", 2, "three fields");
        row("a decimal comma", kHeading + "1000,1,5,\n", 2, "three fields");
        row("an empty line between", kHeading + "1000,1,\n\n2000,1,\n", 3, "three fields");
        row("no frequency", kHeading + ",1,\n", 2, "\"\" is not a number");
        row("a word", kHeading + "1000,1,\n2000,high,\n", 3, "\"high\" is not a number");
        row("a unit", kHeading + "1000,,1 dB\n", 2, "\"1 dB\" is not a number");
        row("no number", kHeading + "1000,nan,\n", 2, "\"nan\" is not a number");
        row("infinite", kHeading + "inf,1,\n", 2, "\"inf\" is not a number");
        row("too large", kHeading + "1000,1e999,\n", 2, "\"1e999\" is not a number");
        row("negative", kHeading + "-1,1,\n", 2, "negative");
        row("too many", kHeading + QByteArray("1000,1,\n").repeated(1001), 1002, "more than 1000 points");
    }
    void brokenFilesAreRefused()
    {
        QFETCH(QByteArray, csv);
        QFETCH(QString, where);
        QFETCH(QString, why);
        const QString refusal = refusalOf(csv);
        QVERIFY2(refusal.startsWith(QStringLiteral("File error: ") + where), qPrintable(refusal));
        QVERIFY2(refusal.contains(why), qPrintable(refusal));
        QVERIFY2(refusal.size() < 200, qPrintable(refusal));
    }

    void aHugeFileIsRefusedEarly()
    {
        QVERIFY(refusalOf(kHeading + QByteArray(5'000'000, ' ')).contains(QStringLiteral("too large")));
        QVERIFY(refusalOf(kHeading + QByteArray(100'000, '7') + ",,\n").size() < 200);
    }
};

QTEST_APPLESS_MAIN(TestLimitLines)
#include "test_limit_lines.moc"
