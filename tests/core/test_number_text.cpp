// SPDX-License-Identifier: MIT
#include "core/number_text.h"

#include "core/runtime_error.h"
#include "tests/support/locales.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <cstdlib>
#include <random>

using namespace calvorn;
using calvorn::test::inLocale;

namespace {

// Returns the kind of error that a conversion throws, or -1.
template <typename Convert>
int errorOf(Convert convert)
{
    try {
        convert();
    } catch (const RuntimeError &error) {
        return static_cast<int>(error.kind());
    }
    return -1;
}

constexpr int kMismatch = static_cast<int>(RuntimeError::Kind::TypeMismatch);
constexpr int kOverflow = static_cast<int>(RuntimeError::Kind::Overflow);

} // namespace

class TestNumberText : public QObject
{
    Q_OBJECT

private slots:
    void masks_data() { test::addLocaleRows(); }
    void masks();
    void masksRoundHalfToEven();
    void masksOfNumbersOutOfTheOrdinary();
    void ordinaryText_data() { test::addLocaleRows(); }
    void ordinaryText();
    void reads_data() { test::addLocaleRows(); }
    void reads();
    void readsWhatItWrote_data() { test::addLocaleRows(); }
    void readsWhatItWrote();
    void decimalsAreReadToTheLastBit();
    void hexadecimalLiterals();
    void integersRoundHalfToEvenAndOverflow();
    void booleans();
    void notNumbers_data();
    void notNumbers();
    void normalisesTheDecimalSeparator();
    void plainSpacesGroupWhereSpacesDo();
};

void TestNumberText::masks()
{
    QFETCH(QLocale, locale);
    const NumberText numbers(locale);
    const auto check = [&](double value, DisplayMask mask, const char *expected) {
        QCOMPARE(numbers.masked(value, mask), inLocale(locale, QString::fromLatin1(expected)));
    };
    check(0, kMaskHertz, "0");
    check(999, kMaskHertz, "999");
    check(1000, kMaskHertz, "1,000");
    check(10975000, kMaskHertz, "10,975,000");
    check(-25000, kMaskHertz, "-25,000");
    check(1234567890, kMaskHertz, "1,234,567,890");
    check(0.5, kMaskVolt, "0.500");
    check(12.3456, kMaskVolt, "12.346");
    check(-0.0004, kMaskVolt, "0.000");
    check(-6.02, kMaskDb, "-6.0");
    check(-100, kMaskDb, "-100.0");
    check(2, kMaskFullScaleVolt, "2.00");
    check(125000000, kMaskMegahertz, "125,000,000");
    check(500, kMaskMegahertz, "000,500");
    check(0.0, kMaskMegahertz, "000,000");
    check(1, kMaskFixed, "1.00");
    check(1234.5, kMaskFixed, "1234.50");
}

void TestNumberText::masksRoundHalfToEven()
{
    const NumberText numbers(QLocale::c());
    QCOMPARE(numbers.masked(-6.25, kMaskDb), QStringLiteral("-6.2"));
    QCOMPARE(numbers.masked(-6.35, kMaskDb), QStringLiteral("-6.4"));
    QCOMPARE(numbers.masked(0.5, kMaskHertz), QStringLiteral("0"));
    QCOMPARE(numbers.masked(1.5, kMaskHertz), QStringLiteral("2"));
}

void TestNumberText::masksOfNumbersOutOfTheOrdinary()
{
    const NumberText numbers(QLocale::c());
    QCOMPARE(numbers.masked(std::nan(""), kMaskDb), QStringLiteral("NaN"));
    QCOMPARE(numbers.masked(1e20, kMaskDb), QStringLiteral("100000000000000000000.0"));
    const QString largest = numbers.masked(-std::numeric_limits<double>::max(), kMaskVolt);
    QCOMPARE(largest.size(), 1 + 309 + 1 + 3);
    QVERIFY(largest.startsWith(QStringLiteral("-17976931348623157")));
}

void TestNumberText::ordinaryText()
{
    QFETCH(QLocale, locale);
    const NumberText numbers(locale);
    const auto expect = [&](const char *text) { return inLocale(locale, QString::fromLatin1(text)); };
    QCOMPARE(numbers.fromDouble(0.5), expect("0.5"));
    QCOMPARE(numbers.fromDouble(-0.0), expect("0"));
    QCOMPARE(numbers.fromDouble(1234567.25), expect("1234567.25"));
    QCOMPARE(numbers.fromDouble(0.1 + 0.2), expect("0.3"));
    QCOMPARE(numbers.fromDouble(0.00001), expect("1E-05"));
    QCOMPARE(numbers.fromDouble(1e15), expect("1E+15"));
    QCOMPARE(numbers.fromDouble(123456789012345.0), expect("123456789012345"));
    QCOMPARE(numbers.fromSingle(0.0048F), expect("0.0048"));
    QCOMPARE(numbers.fromSingle(1.5F), expect("1.5"));
    QCOMPARE(numbers.fromSingle(12345678.0F), expect("1.234568E+07"));
    QCOMPARE(NumberText::fromInteger(-2147483648LL), QStringLiteral("-2147483648"));
    QCOMPARE(numbers.generalNumber(expect("1,000,000")), expect("1000000"));
}

void TestNumberText::reads()
{
    QFETCH(QLocale, locale);
    const NumberText numbers(locale);
    const auto read = [&](const char *text) { return numbers.toDouble(inLocale(locale, QString::fromLatin1(text))); };
    QCOMPARE(read("1,000,000"), 1e6);
    QCOMPARE(read("-0.5"), -0.5);
    QCOMPARE(read("  +12.25  "), 12.25);
    QCOMPARE(read(".5"), 0.5);
    QCOMPARE(read("5."), 5.0);
    QCOMPARE(read("1.5E3"), 1500.0);
    QCOMPARE(read("1.5d-3"), 0.0015);
    QCOMPARE(read("1e-400"), 0.0);
    QCOMPARE(numbers.toDouble(QStringLiteral("\u22125")), -5.0);
    QCOMPARE(errorOf([&] { read("1e400"); }), kOverflow);
    QCOMPARE(errorOf([&] { numbers.toSingle(QStringLiteral("1e39")); }), kOverflow);
    QCOMPARE(numbers.toSingle(QStringLiteral("340282346638528859811704183484516925440")), 3.40282347e38F);
    QCOMPARE(numbers.toSingle(inLocale(locale, QStringLiteral("0.0048"))), 0.0048F);
}

void TestNumberText::readsWhatItWrote()
{
    QFETCH(QLocale, locale);
    const NumberText numbers(locale);
    QRandomGenerator random(42);
    for (int i = 0; i < 2000; ++i) {
        const auto hertz = static_cast<std::int32_t>(random.generate());
        QCOMPARE(numbers.toInt32(numbers.masked(hertz, kMaskHertz)), hertz);
        const double thousandths = static_cast<std::int32_t>(random.generate()) / 1000.0;
        QCOMPARE(numbers.toDouble(numbers.masked(thousandths, kMaskVolt)), thousandths);
        QCOMPARE(numbers.toDouble(numbers.fromDouble(thousandths)), thousandths);
    }
}

// Compares the results with the C library's, for numbers of all lengths, including those longer than any display mask.
void TestNumberText::decimalsAreReadToTheLastBit()
{
    const NumberText numbers(QLocale::c());
    std::mt19937_64 random(20261122);
    for (int i = 0; i < 200000; ++i) {
        const auto length = static_cast<qsizetype>(1 + random() % 19);
        QByteArray text = QByteArray::number(static_cast<qulonglong>(random())).left(length);
        text.insert(static_cast<qsizetype>(random() % static_cast<quint64>(text.size() + 1)), '.');
        if (random() % 3 == 0)
            text.prepend('-');
        const double expected = std::strtod(text.constData(), nullptr);
        const double read = numbers.toDouble(QString::fromLatin1(text));
        QVERIFY2(read == expected, text.constData());
    }
    QVERIFY(std::signbit(numbers.toDouble(QStringLiteral("-0.000"))));
}

void TestNumberText::hexadecimalLiterals()
{
    const NumberText numbers;
    QCOMPARE(numbers.toInt16(u"&H378"), std::int16_t{888});
    QCOMPARE(numbers.toInt16(u" &h3bc "), std::int16_t{956});
    QCOMPARE(numbers.toInt16(u"&HFFFF"), std::int16_t{-1});
    QCOMPARE(numbers.toInt32(u"&HFFFF"), 65535);
    QCOMPARE(numbers.toInt32(u"&HFFFFFFFF"), -1);
    QCOMPARE(numbers.toDouble(u"&H10"), 16.0);
    QVERIFY(numbers.isNumeric(u"&H378"));
    QVERIFY(!numbers.isNumeric(u"&HXYZ"));
    QVERIFY(!numbers.isNumeric(u"&H"));
    QCOMPARE(errorOf([&] { numbers.toInt16(u"&H10000"); }), kOverflow);
    QCOMPARE(errorOf([&] { numbers.toInt32(u"&H100000000"); }), kOverflow);
    QVERIFY(!numbers.isNumeric(u"&HFFFFFFFFFFFFFFFFFFFFFFFF"));
}

void TestNumberText::integersRoundHalfToEvenAndOverflow()
{
    const NumberText numbers(QLocale::c());
    QCOMPARE(numbers.toInt16(u"2.5"), std::int16_t{2});
    QCOMPARE(numbers.toInt16(u"3.5"), std::int16_t{4});
    QCOMPARE(numbers.toInt16(u"-32768"), std::int16_t{-32768});
    QCOMPARE(errorOf([&] { numbers.toInt16(u"32768"); }), kOverflow);
    QCOMPARE(numbers.toInt32(u"2147483647"), 2147483647);
    QCOMPARE(errorOf([&] { numbers.toInt32(u"2147483648"); }), kOverflow);
}

void TestNumberText::booleans()
{
    const NumberText numbers;
    for (const QStringView text :
         {QStringView(u"1"), QStringView(u"-1"), QStringView(u"True"), QStringView(u"tRUE "), QStringView(u"7")})
        QVERIFY2(numbers.toBoolean(text), qPrintable(text.toString()));
    for (const QStringView text : {QStringView(u"0"), QStringView(u"False"), QStringView(u"&H0")})
        QVERIFY2(!numbers.toBoolean(text), qPrintable(text.toString()));
    QCOMPARE(errorOf([&] { numbers.toBoolean(u"yes"); }), kMismatch);
}

void TestNumberText::notNumbers_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"", " ", "abc", "12abc", "1 2", "--1", "1e", "nan", "inf", "0x10", "1.2.3", ",5", "&", "1e+"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestNumberText::notNumbers()
{
    QFETCH(QString, text);
    const NumberText numbers(QLocale(QLocale::English, QLocale::UnitedStates));
    QVERIFY(!numbers.isNumeric(text));
    QCOMPARE(errorOf([&] { numbers.toDouble(text); }), kMismatch);
}

void TestNumberText::normalisesTheDecimalSeparator()
{
    const NumberText point(QLocale(QLocale::English, QLocale::UnitedStates));
    const NumberText comma(QLocale(QLocale::Italian, QLocale::Italy));
    QCOMPARE(point.normaliseDecimal(QStringLiteral("0,0048")), QStringLiteral("0.0048"));
    QCOMPARE(comma.normaliseDecimal(QStringLiteral("0.0048")), QStringLiteral("0,0048"));
    // Thousands separators are also replaced.
    QCOMPARE(point.normaliseDecimal(QStringLiteral("1,234.5")), QStringLiteral("1.234.5"));
}

void TestNumberText::plainSpacesGroupWhereSpacesDo()
{
    const NumberText english(QLocale(QLocale::English, QLocale::UnitedStates));
    QVERIFY(english.isNumeric(u"12,345,678,901,234,567.5"));
    QCOMPARE(english.toDouble(u"12,345,678,901,234,567.5"), 12345678901234568.0);
    QVERIFY(!english.isNumeric(u"1 000"));
    const NumberText french(QLocale(QLocale::French, QLocale::France));
    QCOMPARE(french.toDouble(u"1 000 000"), 1e6);
    QCOMPARE(french.toDouble(u"1\u00A0000,5"), 1000.5);
}

QTEST_APPLESS_MAIN(TestNumberText)
#include "test_number_text.moc"
