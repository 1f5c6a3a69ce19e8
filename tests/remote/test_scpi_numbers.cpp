// SPDX-License-Identifier: MIT
// Tests reading and writing numbers under locales with a decimal comma.
#include "remote/scpi_message.h"
#include "remote/scpi_value.h"

#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <bit>
#include <clocale>
#include <cmath>
#include <limits>
#include <random>

using namespace calvorn;

namespace {

// Returns the only parameter of a message, or nothing.
std::optional<ScpiParameter> parameterOf(const QByteArray &text)
{
    ScpiMessage parser("A " + text);
    ScpiUnit unit;
    ScpiError error;
    if (parser.next(unit, error) != ScpiMessage::Step::Unit || unit.parameters.size() != 1)
        return std::nullopt;
    return unit.parameters.first();
}

std::optional<double> numberOf(const QByteArray &text)
{
    const auto parameter = parameterOf(text);
    if (!parameter || parameter->kind != ScpiParameter::Kind::Number || !parameter->suffix.isEmpty())
        return std::nullopt;
    return parameter->number;
}

// Returns a parameter's error number, or 0 if there is no error.
int errorOf(const QByteArray &text)
{
    ScpiMessage parser("A " + text);
    ScpiUnit unit;
    ScpiError error;
    parser.next(unit, error);
    return error.number;
}

quint64 bitsOf(double value)
{
    return std::bit_cast<quint64>(value);
}

} // namespace

class TestScpiNumbers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void reads_data();
    void reads();
    void everyFormUnderEveryLocale_data() { addLocaleRows(); }
    void everyFormUnderEveryLocale();
    void limitsOfDigits();
    void limitsOfExponents();
    void writes_data();
    void writes();
    void writesUnderEveryLocale_data() { addLocaleRows(); }
    void writesUnderEveryLocale();
    void everyDoubleReadsBack_data() { addLocaleRows(); }
    void everyDoubleReadsBack();
    void everyClientReadsTheForm();

private:
    static void addLocaleRows();
    static void useLocale();
    QTemporaryDir m_locales;
};

// Compiles a locale with a decimal comma for the C library, so that the test does not depend on installed locales.
void TestScpiNumbers::initTestCase()
{
    QFile source(m_locales.filePath("comma.txt"));
    QVERIFY(source.open(QIODevice::WriteOnly));
    source.write("comment_char %\nescape_char /\nLC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\n"
                 "grouping 3;3\nEND LC_NUMERIC\n");
    source.close();
    QProcess compiler;
    compiler.setStandardErrorFile(QProcess::nullDevice());
    // -c: ignore the missing categories.
    compiler.start("/usr/bin/localedef", {"-c", "-i", source.fileName(), m_locales.filePath("comma")});
    QVERIFY(compiler.waitForFinished());
    qputenv("LOCPATH", m_locales.path().toLocal8Bit());
}

void TestScpiNumbers::addLocaleRows()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("C") << QLocale::c();
    QTest::newRow("de_DE") << QLocale(QLocale::German, QLocale::Germany);
    QTest::newRow("it_IT") << QLocale(QLocale::Italian, QLocale::Italy);
}

// Sets the row's locale in Qt, and a locale with the same decimal separator in the C library.
void TestScpiNumbers::useLocale()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const bool hasComma = locale.decimalPoint() == ",";
    QVERIFY(std::setlocale(LC_NUMERIC, hasComma ? "comma" : "C"));
    QCOMPARE(QByteArray(std::localeconv()->decimal_point), QByteArray(hasComma ? "," : "."));
}

void TestScpiNumbers::cleanup()
{
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_NUMERIC, "C");
}

void TestScpiNumbers::reads_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("value");
    const auto row = [](const char *text, double value) { QTest::newRow(text) << QByteArray(text) << value; };
    row("0", 0.0);
    row("-0", -0.0);
    row("7", 7.0);
    row("+7", 7.0);
    row("-7", -7.0);
    row("007", 7.0);
    row("7.", 7.0);
    row(".5", 0.5);
    row("-.5", -0.5);
    row("+.5", 0.5);
    row("7.125", 7.125);
    row("1E3", 1000.0);
    row("1e3", 1000.0);
    row("1E+3", 1000.0);
    row("1E-3", 0.001);
    row("1.E3", 1000.0);
    row(".1E3", 100.0);
    row("1 E3", 1000.0);
    row("1E 3", 1000.0);
    row("1 E 3", 1000.0);
    row("1 E -3", 0.001);
    row("1\tE\t+3", 1000.0);
    row("1E0003", 1000.0);
    row("0E32000", 0.0);
    row("1E-32000", 0.0);
    row("-1E-400", -0.0);
    row("0.1", 0.1);
    row("123456789012345678", 123456789012345678.0);
    row("1.7976931348623157E308", std::numeric_limits<double>::max());
    row("4.9406564584124654E-324", std::numeric_limits<double>::denorm_min());
    row("2.2250738585072014E-308", std::numeric_limits<double>::min());
    // Just below the midpoint between the largest double and the next power of two.
    row("1.797693134862315807E308", std::numeric_limits<double>::max());
    row("#H0", 0.0);
    row("#H1F", 31.0);
    row("#hFfFf", 65535.0);
    row("#Q17", 15.0);
    row("#B101", 5.0);
    row("#HFFFFFFFFFFFFFFFF", 18446744073709551615.0);
}

void TestScpiNumbers::reads()
{
    QFETCH(QByteArray, text);
    QFETCH(double, value);
    const auto number = numberOf(text);
    QVERIFY(number);
    QCOMPARE(bitsOf(*number), bitsOf(value));
}

void TestScpiNumbers::everyFormUnderEveryLocale()
{
    useLocale();
    QCOMPARE(numberOf("1.5"), std::optional(1.5));
    QCOMPARE(numberOf("-2.5E-1"), std::optional(-0.25));
    QCOMPARE(numberOf(".5"), std::optional(0.5));
    QCOMPARE(numberOf("1234567.5"), std::optional(1234567.5));
    QCOMPARE(numberOf("#H1F"), std::optional(31.0));
    // A comma separates parameters; thousands separators are not allowed.
    QVERIFY(!numberOf("1,5"));
    QCOMPARE(errorOf("1.234.567"), -121);
    const auto withUnit = parameterOf("10.7 mHz");
    QVERIFY(withUnit);
    QCOMPARE(withUnit->number, 10.7);
    QCOMPARE(withUnit->suffix, QByteArray("MHZ"));
}

void TestScpiNumbers::limitsOfDigits()
{
    QCOMPARE(numberOf(QByteArray(255, '1') + "E-254"), std::optional(1.0 + 1.0 / 9.0));
    QCOMPARE(errorOf(QByteArray(256, '1') + "E-254"), -124);
    QCOMPARE(errorOf("1." + QByteArray(255, '0')), -124);
    QCOMPARE(numberOf("1." + QByteArray(254, '0')), std::optional(1.0));
    // Leading zeros do not count.
    QCOMPARE(numberOf(QByteArray(1000, '0') + "7"), std::optional(7.0));
    QCOMPARE(numberOf("0." + QByteArray(300, '0') + "7E301"), std::optional(7.0));
    QCOMPARE(numberOf(QByteArray(1000, '0') + "." + QByteArray(1000, '0')), std::optional(0.0));
    QCOMPARE(numberOf("#B" + QByteArray(64, '1')), std::optional(18446744073709551615.0));
    QCOMPARE(errorOf("#B" + QByteArray(65, '1')), -124);
}

void TestScpiNumbers::limitsOfExponents()
{
    QCOMPARE(numberOf("0.0E32000"), std::optional(0.0));
    QCOMPARE(errorOf("0.0E32001"), -123);
    QCOMPARE(numberOf("1E-32000"), std::optional(0.0));
    QCOMPARE(errorOf("1E-32001"), -123);
    QCOMPARE(errorOf("1E4294967297"), -123);
    QCOMPARE(errorOf("1E308" + QByteArray(300, '0')), -123);
    QCOMPARE(errorOf("1E309"), -123);
    QCOMPARE(errorOf("-1E309"), -123);
    QCOMPARE(errorOf("1.8E308"), -123);
    QCOMPARE(errorOf(QByteArray(250, '9') + "E60"), -123);
    QCOMPARE(numberOf("0." + QByteArray(3000, '0') + "1E3001"), std::optional(1.0));
    QCOMPARE(numberOf("0." + QByteArray(3000, '0') + "1"), std::optional(0.0));
    QCOMPARE(numberOf("0." + QByteArray(3000, '0') + "1E2500"), std::optional(0.0));
    QCOMPARE(errorOf("0." + QByteArray(3000, '0') + "1E3400"), -123);
}

void TestScpiNumbers::writes_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](double value, const char *text) { QTest::newRow(text) << value << QByteArray(text); };
    row(0.0, "0.0E+00");
    row(-0.0, "-0.0E+00");
    row(1.0, "1.0E+00");
    row(-1.0, "-1.0E+00");
    row(7.1e6, "7.1E+06");
    row(10.0, "1.0E+01");
    row(0.1, "1.0E-01");
    row(123456789.0, "1.23456789E+08");
    row(1.0 / 3.0, "3.333333333333333E-01");
    row(1e100, "1.0E+100");
    row(std::numeric_limits<double>::max(), "1.7976931348623157E+308");
    row(std::numeric_limits<double>::denorm_min(), "5.0E-324");
    row(std::numeric_limits<double>::quiet_NaN(), "9.91E+37");
    row(std::numeric_limits<double>::infinity(), "9.9E+37");
    row(-std::numeric_limits<double>::infinity(), "-9.9E+37");
}

void TestScpiNumbers::writes()
{
    QFETCH(double, value);
    QFETCH(QByteArray, text);
    QCOMPARE(nr3(value), text);
}

void TestScpiNumbers::writesUnderEveryLocale()
{
    useLocale();
    QCOMPARE(nr3(1234567.5), QByteArray("1.2345675E+06"));
    QCOMPARE(nr3(1e-3F), QByteArray("1.0E-03"));
    QCOMPARE(nr3(std::numeric_limits<float>::infinity()), QByteArray("9.9E+37"));
    QCOMPARE(nr1(-1234567), QByteArray("-1234567"));
}

void TestScpiNumbers::everyDoubleReadsBack()
{
    constexpr int kNumbers = 100'000;
    useLocale();
    std::mt19937_64 random(20'240'101);
    int count = 0;
    while (count < kNumbers) {
        const auto value = std::bit_cast<double>(static_cast<quint64>(random()));
        if (!std::isfinite(value))
            continue;
        const QByteArray text = nr3(value);
        const auto again = numberOf(text);
        QVERIFY2(again && bitsOf(*again) == bitsOf(value), text.constData());
        ++count;
    }
}

// Format: a digit, a point, digits, E, a sign, and two or three digits.
void TestScpiNumbers::everyClientReadsTheForm()
{
    std::mt19937_64 random(7);
    for (int count = 0; count < 10'000; ++count) {
        const QByteArray text = nr3(std::bit_cast<double>(static_cast<quint64>(random())));
        qsizetype at = text.startsWith('-') ? 1 : 0;
        const auto digits = [&] {
            const qsizetype start = at;
            while (at < text.size() && text[at] >= '0' && text[at] <= '9')
                ++at;
            return at - start;
        };
        QCOMPARE(digits(), 1);
        QCOMPARE(text[at++], '.');
        QVERIFY(digits() >= 1);
        QCOMPARE(text[at++], 'E');
        QVERIFY(text[at] == '+' || text[at] == '-');
        ++at;
        const qsizetype exponent = digits();
        QVERIFY(exponent == 2 || exponent == 3);
        QCOMPARE(at, text.size());
    }
}

QTEST_APPLESS_MAIN(TestScpiNumbers)
#include "test_scpi_numbers.moc"
