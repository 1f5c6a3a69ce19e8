// SPDX-License-Identifier: MIT
#include "remote/scpi_command.h"
#include "remote/scpi_pattern.h"

#include <QTest>

#include <algorithm>

using namespace calvorn;

namespace {

ScpiUnit unitOf(const QByteArray &header)
{
    ScpiMessage parser(header);
    ScpiUnit unit;
    ScpiError error;
    parser.next(unit, error);
    return unit;
}

QList<QByteArray> sorted(QList<QByteArray> texts)
{
    std::sort(texts.begin(), texts.end());
    return texts;
}

} // namespace

class TestScpiPattern : public QObject
{
    Q_OBJECT

private slots:
    void matches_data();
    void matches();
    void suffixes_data();
    void suffixes();
    void suffixesStayWithoutAMatch();
    void everyFormButNothingInBetween_data();
    void everyFormButNothingInBetween();
    void spellings_data();
    void spellings();
    void everySpellingMatches_data();
    void everySpellingMatches();
    void forms();
    void malformedPatterns_data();
    void malformedPatterns();
    void mnemonics_data();
    void mnemonics();
    void memoryOfTheTree();
    void theTableTakesTheParametersThatItNames();
};

void TestScpiPattern::matches_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<ScpiMatch>("expected");
    const auto row = [](const char *pattern, const char *header, ScpiMatch expected) {
        QTest::addRow("%s %s", pattern, header) << QByteArray(pattern) << QByteArray(header) << expected;
    };
    constexpr auto kYes = ScpiMatch::Yes;
    constexpr auto kNo = ScpiMatch::No;
    constexpr auto kSuffix = ScpiMatch::SuffixOutOfRange;
    const char *const start = "[SENSe:]FREQuency:STARt";
    row(start, "SENS:FREQ:STAR", kYes);
    row(start, ":SENSE:FREQUENCY:START?", kYes);
    row(start, "freq:start", kYes);
    row(start, "FrEqUeNcY:sTaR", kYes);
    row(start, "FREQ1:STAR1", kYes);
    row(start, "SENS1:FREQ:STAR", kYes);
    row(start, "FREQ", kNo);
    row(start, "SENS:FREQ", kNo);
    row(start, "STAR", kNo);
    row(start, "FREQ:STOP", kNo);
    row(start, "SENS:SENS:FREQ:STAR", kNo);
    row(start, "FREQ:STAR:STAR", kNo);
    row(start, "FREQ:SENS:STAR", kNo);
    row(start, "*FREQ", kNo);
    row(start, "FREQ2:STAR", kSuffix);
    row(start, "FREQ0:STAR", kSuffix);
    row(start, "SENS2:FREQ:STAR", kSuffix);
    row(start, "FREQ2:STOP", kNo);
    row("INITiate[:IMMediate]", "INIT", kYes);
    row("INITiate[:IMMediate]", "INIT:IMM", kYes);
    row("INITiate[:IMMediate]", "INITIATE:IMMEDIATE", kYes);
    row("INITiate[:IMMediate]", "INIT:CONT", kNo);
    row("INITiate[:IMMediate]", "IMM", kNo);
    row("*IDN", "*IDN?", kYes);
    row("*IDN", "*idn", kYes);
    row("*IDN", "IDN?", kNo);
    row("*IDN", "*IDN1?", kNo);
    row("*IDN", "*ID?", kNo);
    row("IDN", "*IDN?", kNo);
    const char *const marker = "CALCulate:MARKer<1|2>:X";
    row(marker, "CALC:MARK:X", kYes);
    row(marker, "CALC:MARK1:X?", kYes);
    row(marker, "CALC:MARKER2:X", kYes);
    row(marker, "CALC:MARK02:X", kYes);
    row(marker, "CALC:MARK3:X", kSuffix);
    row(marker, "CALC:MARK0:X", kSuffix);
    row(marker, "CALC2:MARK2:X", kSuffix);
    row(marker, "CALC:MARK3:Y", kNo);
    row("TRACe<2-4|8>", "TRAC2", kYes);
    row("TRACe<2-4|8>", "TRAC3", kYes);
    row("TRACe<2-4|8>", "TRACE4", kYes);
    row("TRACe<2-4|8>", "TRAC8", kYes);
    row("TRACe<2-4|8>", "TRAC", kSuffix);
    row("TRACe<2-4|8>", "TRAC1", kSuffix);
    row("TRACe<2-4|8>", "TRAC5", kSuffix);
    row("TRACe<2-4|8>", "TRAC9", kSuffix);
    row("OUTPut:AUX2", "OUTP:AUX2", kYes);
    row("OUTPut:AUX2", "OUTP:AUX", kSuffix);
    row("OUTPut:AUX1", "OUTP:AUX", kYes);
    row("A[:B[:C]]:D", "A:D", kYes);
    row("A[:B[:C]]:D", "A:B:D", kYes);
    row("A[:B[:C]]:D", "A:B:C:D", kYes);
    row("A[:B[:C]]:D", "A:C:D", kNo);
    row("[A:B:]C", "C", kYes);
    row("[A:B:]C", "A:B:C", kYes);
    row("[A:B:]C", "A:C", kNo);
    row("[A:]B[:C]", "B", kYes);
    row("[A:]B[:C]", "A:B:C", kYes);
    row("[A:]B[:C]", "A", kNo);
    row(":A:B", "A:B", kYes);
    row("LOW_level", "LOW_", kYes);
}

void TestScpiPattern::matches()
{
    QFETCH(QByteArray, pattern);
    QFETCH(QByteArray, header);
    QFETCH(ScpiMatch, expected);
    const ScpiPattern read(pattern.constData());
    QVERIFY(read.isValid());
    QCOMPARE(read.text(), pattern);
    QCOMPARE(read.match(unitOf(header)), expected);
    QCOMPARE(read.matches(unitOf(header)), expected == ScpiMatch::Yes);
}

void TestScpiPattern::suffixes_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QList<int>>("expected");
    const auto row = [](const char *pattern, const char *header, const QList<int> &expected) {
        QTest::addRow("%s %s", pattern, header) << QByteArray(pattern) << QByteArray(header) << expected;
    };
    row("CALCulate:MARKer<1|2>:X", "CALC:MARK2:X", {2});
    row("CALCulate:MARKer<1|2>:X", "CALC:MARK:X", {1});
    row("CALCulate<1-4>:MARKer<1-9>:X", "CALC3:MARK7:X", {3, 7});
    row("CALCulate<1-4>:MARKer<1-9>:X", "CALC:MARK7:X", {1, 7});
    row("CALCulate<1-4>:MARKer<1-9>:X", "CALC3:MARK:X", {3, 1});
    row("[CALCulate<1-4>:]MARKer<1-9>", "MARK5", {1, 5});
    row("[CALCulate<1-4>:]MARKer<1-9>", "CALC2:MARK5", {2, 5});
    row("MARKer<1-9>[:AOFF<1-2>]", "MARK5", {5, 1});
    row("TRACe<10-99999>", "TRAC99999", {99999});
    row("FREQuency", "FREQ1", {});
    row("AUX2", "AUX2", {});
    row("*IDN", "*IDN", {});
}

void TestScpiPattern::suffixes()
{
    QFETCH(QByteArray, pattern);
    QFETCH(QByteArray, header);
    QFETCH(QList<int>, expected);
    QList<int> found = {99, 99, 99};
    QVERIFY(ScpiPattern(pattern.constData()).matches(unitOf(header), &found));
    QCOMPARE(found, expected);
}

void TestScpiPattern::suffixesStayWithoutAMatch()
{
    QList<int> found = {42};
    const ScpiPattern pattern("MARKer<1|2>");
    QCOMPARE(pattern.match(unitOf("MARK3"), &found), ScpiMatch::SuffixOutOfRange);
    QCOMPARE(pattern.match(unitOf("MARKE2"), &found), ScpiMatch::No);
    QCOMPARE(found, QList<int>{42});
}

void TestScpiPattern::everyFormButNothingInBetween_data()
{
    QTest::addColumn<QByteArray>("mnemonic");
    QTest::addColumn<int>("shortLength");
    QTest::newRow("FREQuency") << QByteArray("FREQuency") << 4;
    QTest::newRow("SENSe") << QByteArray("SENSe") << 4;
    QTest::newRow("CALibration") << QByteArray("CALibration") << 3;
    QTest::newRow("ALL") << QByteArray("ALL") << 3;
    QTest::newRow("X") << QByteArray("X") << 1;
}

void TestScpiPattern::everyFormButNothingInBetween()
{
    QFETCH(QByteArray, mnemonic);
    QFETCH(int, shortLength);
    const ScpiPattern pattern(mnemonic.constData());
    for (int length = 1; length <= mnemonic.size(); ++length) {
        const bool isForm = length == shortLength || length == mnemonic.size();
        const QByteArray start = mnemonic.first(length);
        for (const QByteArray &written : {start, start.toLower(), start.toUpper()})
            QCOMPARE(pattern.matches(unitOf(written)), isForm);
    }
    QVERIFY(!pattern.matches(unitOf(mnemonic + 'Z')));
    QVERIFY(!pattern.matches(unitOf(mnemonic + '_')));
}

void TestScpiPattern::spellings_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<QList<QByteArray>>("expected");
    const auto row = [](const char *pattern, const QList<QByteArray> &expected) {
        QTest::newRow(pattern) << QByteArray(pattern) << expected;
    };
    row("*IDN", {"*IDN"});
    row("ALL", {"ALL"});
    row("INITiate[:IMMediate]",
        {"INIT", "INITIATE", "INIT:IMM", "INIT:IMMEDIATE", "INITIATE:IMM", "INITIATE:IMMEDIATE"});
    row("[SENSe:]STARt", {"STAR", "START", "SENS:STAR", "SENS:START", "SENSE:STAR", "SENSE:START"});
    row("MARK<1|2>", {"MARK", "MARK1", "MARK2"});
    row("MARKer<2-5>", {"MARK2", "MARK5", "MARKER2", "MARKER5"});
    row("AUX2:X", {"AUX2:X"});
}

void TestScpiPattern::spellings()
{
    QFETCH(QByteArray, pattern);
    QFETCH(QList<QByteArray>, expected);
    QCOMPARE(sorted(ScpiPattern(pattern.constData()).spellings()), sorted(expected));
}

void TestScpiPattern::everySpellingMatches_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<int>("count");
    QTest::newRow("optional in front") << QByteArray("[SENSe:]FREQuency:STARt") << 4 + 8;
    QTest::newRow("nested") << QByteArray("ABc[:DEf[:GHi]]") << 2 + 4 + 8;
    QTest::newRow("group") << QByteArray("[ABc:DEf:]GHi<1-3>") << 6 + 24;
    QTest::newRow("two groups") << QByteArray("[ABc:]DEf[:GHi]") << 2 + 4 + 4 + 8;
}

void TestScpiPattern::everySpellingMatches()
{
    QFETCH(QByteArray, pattern);
    QFETCH(int, count);
    const ScpiPattern read(pattern.constData());
    const QList<QByteArray> spellings = read.spellings();
    QCOMPARE(spellings.size(), count);
    for (const QByteArray &spelling : spellings) {
        QVERIFY2(read.matches(unitOf(spelling)), spelling.constData());
        QVERIFY2(read.matches(unitOf(':' + spelling.toLower() + '?')), spelling.constData());
        QCOMPARE(spellings.count(spelling), 1);
    }
}

void TestScpiPattern::forms()
{
    QCOMPARE(ScpiPattern("[SENSe:]FREQuency:STARt").longForm(), QByteArray("SENSE:FREQUENCY:START"));
    QCOMPARE(ScpiPattern("[SENSe:]FREQuency:STARt").shortForm(), QByteArray("SENS:FREQ:STAR"));
    QCOMPARE(ScpiPattern("*IDN").longForm(), QByteArray("*IDN"));
    QVERIFY(ScpiPattern("*IDN").isCommon());
    QVERIFY(!ScpiPattern("IDN").isCommon());
}

void TestScpiPattern::malformedPatterns_data()
{
    QTest::addColumn<QByteArray>("pattern");
    for (const char *const pattern : {"",
                                      ":",
                                      "*",
                                      "[]",
                                      "[:A]",
                                      "A:",
                                      "A::B",
                                      "A[",
                                      "A[:B",
                                      "A]",
                                      "A:B]",
                                      "A[:B]]",
                                      "freq",
                                      "1A",
                                      "A B",
                                      "A?",
                                      "A<",
                                      "A<>",
                                      "A<1",
                                      "A<1|>",
                                      "A<|1>",
                                      "A<x>",
                                      "A<2-1>",
                                      "A<1-",
                                      "A<1-2-3>",
                                      "A<123456>",
                                      "A2<1>",
                                      "A2b",
                                      "_A",
                                      "A123456",
                                      "*A:B",
                                      "ABCDEFGHIJKLMN",
                                      "A[:B[:C[:D[:E[:F]]]]]",
                                      "A;B"}) {
        QTest::newRow(pattern) << QByteArray(pattern);
    }
}

void TestScpiPattern::malformedPatterns()
{
    QFETCH(QByteArray, pattern);
    const ScpiPattern read(pattern.constData());
    QVERIFY(!read.isValid());
    QVERIFY(read.spellings().isEmpty());
    for (const char *const header : {"A", "A:B", "*A", "FREQ"})
        QCOMPARE(read.match(unitOf(header)), ScpiMatch::No);
    QCOMPARE(read.match(ScpiUnit()), ScpiMatch::No);
}

void TestScpiPattern::mnemonics_data()
{
    QTest::addColumn<QByteArray>("mnemonic");
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<bool>("expected");
    const auto row = [](const char *mnemonic, const char *written, bool expected) {
        QTest::addRow("%s %s", mnemonic, written) << QByteArray(mnemonic) << QByteArray(written) << expected;
    };
    row("FILTer", "FILT", true);
    row("FILTer", "FILTER", true);
    row("FILTer", "filter", true);
    row("FILTer", "FILTE", false);
    row("FILTer", "FIL", false);
    row("FILTer", "FILTERS", false);
    row("FILTer", "", false);
    row("S1P", "s1p", true);
    row("AUXiliary2", "AUX2", true);
    row("AUXiliary2", "AUXILIARY2", true);
    row("AUXiliary2", "AUX", false);
}

void TestScpiPattern::mnemonics()
{
    QFETCH(QByteArray, mnemonic);
    QFETCH(QByteArray, written);
    QFETCH(bool, expected);
    QCOMPARE(matchesMnemonic(mnemonic, written), expected);
}

void TestScpiPattern::memoryOfTheTree()
{
    const ScpiPattern stop("[SENSe:]FREQuency:STOP");
    for (const char *const message : {"FREQ:STAR 1;STOP 2", "SENS:FREQ:STAR 1;STOP 2", "SENS:X;FREQ:STOP 2"}) {
        ScpiMessage parser(message);
        ScpiUnit unit;
        ScpiError error;
        QCOMPARE(parser.next(unit, error), ScpiMessage::Step::Unit);
        QVERIFY(!stop.matches(unit));
        QCOMPARE(parser.next(unit, error), ScpiMessage::Step::Unit);
        QVERIFY(stop.matches(unit));
    }
}

void TestScpiPattern::theTableTakesTheParametersThatItNames()
{
    // "<frequency>[,<dB>]" names two.
    const auto named = [](const char *parameters) {
        const QByteArray text(parameters);
        return text.isEmpty() ? 0 : static_cast<int>(text.count(',')) + 1;
    };
    for (const ScpiCommand &command : scpiCommands()) {
        QVERIFY2(command.mostParameters == named(command.parameters), command.pattern);
        QVERIFY2(command.mostQueryParameters == named(command.queryParameters), command.pattern);
    }
}

QTEST_APPLESS_MAIN(TestScpiPattern)
#include "test_scpi_pattern.moc"
