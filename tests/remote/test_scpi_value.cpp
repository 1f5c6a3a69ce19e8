// SPDX-License-Identifier: MIT
#include "remote/scpi_value.h"

#include <QTest>

#include <array>
#include <cmath>

using namespace calvorn;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Returns the only parameter of a command.
ScpiParameter parameterOf(const QByteArray &text)
{
    ScpiMessage parser("A " + text);
    ScpiUnit unit;
    ScpiError error;
    parser.next(unit, error);
    return unit.parameters.value(0);
}

// Formats a value, or an error as "!-222 detail".
template <typename Value>
QByteArray asText(const std::optional<Value> &value, const ScpiError &error)
{
    if (value.has_value() == error.isError())
        return "neither value nor error, or both";
    if (!value)
        return '!' + QByteArray::number(error.number) + ' ' + error.detail;
    if constexpr (std::is_same_v<Value, QByteArray>)
        return *value;
    else
        return QByteArray::number(*value);
}

} // namespace

class TestScpiValue : public QObject
{
    Q_OBJECT

private slots:
    void numbers_data();
    void numbers();
    void smallUnitsAreExact();
    void ranges_data();
    void ranges();
    void wholeNumbers_data();
    void wholeNumbers();
    void booleans_data();
    void booleans();
    void choices_data();
    void choices();
    void textsAndBlocks_data();
    void textsAndBlocks();
    void writesIntegersBooleansAndStrings();
    void writesBlocks();
    void writesBlocksOfNumbers();
    void whatIsWrittenIsReadBack();
};

void TestScpiValue::numbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<ScpiQuantity>("quantity");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *text, ScpiQuantity quantity, const char *expected) {
        QTest::addRow("%s, %d", text, static_cast<int>(quantity))
            << QByteArray(text) << quantity << QByteArray(expected);
    };
    row("5", ScpiQuantity::Plain, "5");
    row("5 HZ", ScpiQuantity::Plain, "!-138 5 HZ");
    row("5", ScpiQuantity::Hertz, "5");
    row("5 Hz", ScpiQuantity::Hertz, "5");
    row("5kHz", ScpiQuantity::Hertz, "5000");
    row("2.5 mhz", ScpiQuantity::Hertz, "2.5e+06");
    row("2.5 MAHZ", ScpiQuantity::Hertz, "2.5e+06");
    row("1 GHZ", ScpiQuantity::Hertz, "1e+09");
    row("5 S", ScpiQuantity::Hertz, "!-131 5 S");
    row("5 DB", ScpiQuantity::Hertz, "!-131 5 DB");
    row("5 K", ScpiQuantity::Hertz, "!-131 5 K");
    row("5 V", ScpiQuantity::Volts, "5");
    row("5 mV", ScpiQuantity::Volts, "0.005");
    row("5 uV", ScpiQuantity::Volts, "5e-06");
    row("5 HZ", ScpiQuantity::Volts, "!-131 5 HZ");
    row("-3 dB", ScpiQuantity::Decibels, "-3");
    row("-3 DBM", ScpiQuantity::Decibels, "!-131 -3 DBM");
    row("-3 dBm", ScpiQuantity::DecibelMilliwatts, "-3");
    row("-3 DB", ScpiQuantity::DecibelMilliwatts, "!-131 -3 DB");
    row("5 S", ScpiQuantity::Seconds, "5");
    row("5 ms", ScpiQuantity::Seconds, "0.005");
    row("5 US", ScpiQuantity::Seconds, "5e-06");
    row("5 NS", ScpiQuantity::Seconds, "5e-09");
    row("5 MV", ScpiQuantity::Seconds, "!-131 5 MV");
    row("\"5\"", ScpiQuantity::Plain, "!-158 \"5\"");
    row("#115", ScpiQuantity::Plain, "!-168 #115");
    row("FIVE", ScpiQuantity::Plain, "!-141 FIVE");
    row("#H10", ScpiQuantity::Hertz, "16");
}

void TestScpiValue::numbers()
{
    QFETCH(QByteArray, text);
    QFETCH(ScpiQuantity, quantity);
    QFETCH(QByteArray, expected);
    ScpiError error;
    const auto value = readNumber(parameterOf(text), quantity, {}, error);
    QCOMPARE(asText(value, error), expected);
}

// 5 MS must be the same double as 5e-3, and so on.
void TestScpiValue::smallUnitsAreExact()
{
    for (int number = 1; number < 1000; ++number) {
        ScpiError error;
        const QByteArray digits = QByteArray::number(number);
        const auto seconds = [&](const char *unit) {
            return readNumber(parameterOf(digits + unit), ScpiQuantity::Seconds, {}, error);
        };
        QCOMPARE(seconds("MS"), std::optional((digits + "e-3").toDouble()));
        QCOMPARE(seconds("US"), std::optional((digits + "e-6").toDouble()));
        QCOMPARE(seconds("NS"), std::optional((digits + "e-9").toDouble()));
    }
}

void TestScpiValue::ranges_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("defaultValue");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *text, double defaultValue, const char *expected) {
        QTest::addRow("%s, %g", text, defaultValue) << QByteArray(text) << defaultValue << QByteArray(expected);
    };
    row("1000", 5000, "1000");
    row("1 KHZ", 5000, "1000");
    row("10 KHZ", 5000, "10000");
    row("999.999", 5000, "!-222 999.999");
    row("10.001 KHZ", 5000, "!-222 10.001 KHZ");
    row("-5", 5000, "!-222 -5");
    row("1E308 GHZ", 5000, "!-222 1E308 GHZ");
    row("MIN", 5000, "1000");
    row("minimum", 5000, "1000");
    row("MAX", 5000, "10000");
    row("MAXimum", 5000, "10000");
    row("DEF", 5000, "5000");
    row("default", 5000, "5000");
    row("DEF", kNaN, "!-224 DEF");
    row("MINI", 5000, "!-141 MINI");
    row("MAXIM", 5000, "!-141 MAXIM");
    row("UP", 5000, "!-141 UP");
    row("INF", 5000, "!-141 INF");
    row("NAN", 5000, "!-141 NAN");
}

void TestScpiValue::ranges()
{
    QFETCH(QByteArray, text);
    QFETCH(double, defaultValue);
    QFETCH(QByteArray, expected);
    ScpiError error;
    const auto value = readNumber(parameterOf(text), ScpiQuantity::Hertz, {1000, 10'000, defaultValue}, error);
    QCOMPARE(asText(value, error), expected);
    // Even an infinite range does not accept an infinite number.
    ScpiError tooLarge;
    QVERIFY(!readNumber(parameterOf("1E308 GHZ"), ScpiQuantity::Hertz, {-kInfinity, kInfinity, 0.0}, tooLarge));
    QCOMPARE(tooLarge.number, -222);
}

void TestScpiValue::wholeNumbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *text, const char *expected) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(expected);
    };
    row("5", "5");
    row("2.5", "3");
    row("2.4999", "2");
    row("-2.5", "-3");
    row("-10.4", "-10");
    row("20.4999", "20");
    row("20.5", "!-222 20.5");
    row("-10.5", "!-222 -10.5");
    row("1E300", "!-222 1E300");
    row("#H0F", "15");
    row("MIN", "-10");
    row("MAX", "20");
    row("DEF", "7");
    row("5 HZ", "!-138 5 HZ");
    row("ON", "!-141 ON");
    row("\"5\"", "!-158 \"5\"");
}

void TestScpiValue::wholeNumbers()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, expected);
    ScpiError error;
    QCOMPARE(asText(readWhole(parameterOf(text), {-10, 20, 7}, error), error), expected);
    // Without a range, only numbers that a double holds exactly are accepted.
    ScpiError none;
    QCOMPARE(readWhole(parameterOf("9007199254740992"), {}, none), std::optional(Q_INT64_C(9007199254740992)));
    QCOMPARE(readWhole(parameterOf("MIN"), {}, none), std::optional(Q_INT64_C(-9007199254740992)));
    QVERIFY(!none.isError());
    QVERIFY(!readWhole(parameterOf("9007199254740994"), {}, none));
    QCOMPARE(none.number, -222);
}

void TestScpiValue::booleans_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *text, const char *expected) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(expected);
    };
    row("ON", "1");
    row("on", "1");
    row("OFF", "0");
    row("oFf", "0");
    row("0", "0");
    row("1", "1");
    row("2", "1");
    row("-1", "1");
    row("0.4", "0");
    row("-0.4", "0");
    row("0.5", "1");
    row("1E300", "1");
    row("#B1", "1");
    row("1 V", "!-138 1 V");
    row("YES", "!-141 YES");
    row("MAX", "!-141 MAX");
    row("O", "!-141 O");
    row("\"ON\"", "!-158 \"ON\"");
    row("#12ON", "!-168 #12ON");
}

void TestScpiValue::booleans()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, expected);
    ScpiError error;
    QCOMPARE(asText(readBoolean(parameterOf(text), error), error), expected);
}

void TestScpiValue::choices_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *text, const char *expected) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(expected);
    };
    row("FILT", "0");
    row("filter", "0");
    row("XTAL", "1");
    row("CRYS", "2");
    row("CRYSTAL", "2");
    row("FILTE", "!-224 FILTE");
    row("FIL", "!-224 FIL");
    row("OTHER", "!-224 OTHER");
    row("1", "!-128 1");
    row("\"FILT\"", "!-158 \"FILT\"");
    row("#14FILT", "!-168 #14FILT");
}

void TestScpiValue::choices()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, expected);
    constexpr std::array kChoices = {"FILTer", "XTAL", "CRYStal"};
    ScpiError error;
    QCOMPARE(asText(readChoice(parameterOf(text), kChoices, error), error), expected);
}

void TestScpiValue::textsAndBlocks_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("asString");
    QTest::addColumn<QByteArray>("asBlock");
    const auto row = [](const char *text, const char *asString, const char *asBlock) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(asString) << QByteArray(asBlock);
    };
    row("\"a\"\"b\"", "a\"b", "!-158 \"a\"\"b\"");
    row("#13a\"b", "!-168 #13a\"b", "a\"b");
    row("ON", "!-148 ON", "!-148 ON");
    row("5 V", "!-128 5 V", "!-128 5 V");
}

void TestScpiValue::textsAndBlocks()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, asString);
    QFETCH(QByteArray, asBlock);
    ScpiError error;
    const auto string = readText(parameterOf(text), error);
    QCOMPARE(asText(string, error), asString);
    error = {};
    const auto bytes = readBlock(parameterOf(text), error);
    QCOMPARE(asText(bytes, error), asBlock);
}

void TestScpiValue::writesIntegersBooleansAndStrings()
{
    QCOMPARE(nr1(0), QByteArray("0"));
    QCOMPARE(nr1(-7), QByteArray("-7"));
    QCOMPARE(nr1(std::numeric_limits<qint64>::min()), QByteArray("-9223372036854775808"));
    QCOMPARE(boolean(true), QByteArray("1"));
    QCOMPARE(boolean(false), QByteArray("0"));
    QCOMPARE(quoted(""), QByteArray("\"\""));
    QCOMPARE(quoted("it's \"so\""), QByteArray("\"it's \"\"so\"\"\""));
    // An LF would terminate the answer.
    QCOMPARE(quoted("a\nb"), QByteArray("\"a b\""));
}

void TestScpiValue::writesBlocks()
{
    QCOMPARE(block(""), QByteArray("#10"));
    QCOMPARE(block("a\nb"), QByteArray("#13a\nb"));
    QCOMPARE(block(QByteArray("\0\0", 2)), QByteArray("#12\0\0", 5));
    QCOMPARE(block(QByteArray(10, 'x')), "#210" + QByteArray(10, 'x'));
    QCOMPARE(block(QByteArray(123456, 'x')), "#6123456" + QByteArray(123456, 'x'));
}

void TestScpiValue::writesBlocksOfNumbers()
{
    QCOMPARE(realBlock({}), QByteArray("#10"));
    const std::array values = {1.0, -2.0, 0.1};
    QCOMPARE(realBlock(values), "#224" + QByteArray::fromHex("3ff0000000000000c0000000000000003fb999999999999a"));
    const std::array others = {kNaN, kInfinity, -kInfinity};
    const std::array instead = {9.91e37, 9.9e37, -9.9e37};
    QCOMPARE(realBlock(others), realBlock(instead));
    QCOMPARE(realBlock(std::array{9.91e37}), "#18" + QByteArray::fromHex("47d2a37dced46143"));
}

void TestScpiValue::whatIsWrittenIsReadBack()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    ScpiError error;
    QCOMPARE(readBlock(parameterOf(block(bytes)), error), std::optional(bytes));
    QCOMPARE(readText(parameterOf(quoted(bytes)), error), std::optional(QByteArray(bytes).replace('\n', ' ')));
    QCOMPARE(readBoolean(parameterOf(boolean(true)), error), std::optional(true));
    QCOMPARE(readWhole(parameterOf(nr1(-12345)), {}, error), std::optional(Q_INT64_C(-12345)));
    QVERIFY(!error.isError());
}

QTEST_APPLESS_MAIN(TestScpiValue)
#include "test_scpi_value.moc"
