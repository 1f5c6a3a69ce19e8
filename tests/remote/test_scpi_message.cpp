// SPDX-License-Identifier: MIT
#include "remote/scpi_message.h"

#include <QTest>

using namespace calvorn;

namespace {

// Returns the full header of a unit, with omitted nodes filled in: "A:B2?", "*IDN?".
QByteArray pathOf(const ScpiUnit &unit)
{
    QByteArray text;
    for (const ScpiNode &node : unit.path) {
        text += (text.isEmpty() ? "" : ":") + node.name;
        if (node.suffix >= 0)
            text += QByteArray::number(node.suffix);
    }
    return (unit.isCommon ? "*" : "") + text + (unit.isQuery ? "?" : "");
}

// Formats a parameter by its kind: `5 HZ`, `ON`, `"text"`, `{bytes}`.
QByteArray asText(const ScpiParameter &parameter)
{
    switch (parameter.kind) {
    case ScpiParameter::Kind::Number:
        return QByteArray::number(parameter.number, 'g', 12) +
               (parameter.suffix.isEmpty() ? QByteArray() : ' ' + parameter.suffix);
    case ScpiParameter::Kind::Word:
        return parameter.text;
    case ScpiParameter::Kind::Text:
        return '"' + parameter.text + '"';
    case ScpiParameter::Kind::Block:
        break;
    }
    return '{' + parameter.text + '}';
}

// Formats all units: full headers, parameters joined by "|", units by "; "; "!-113 detail" for an error.
QByteArray unitsOf(const QByteArray &message)
{
    ScpiMessage parser(message);
    QList<QByteArray> parts;
    for (;;) {
        ScpiUnit unit;
        ScpiError error;
        const ScpiMessage::Step step = parser.next(unit, error);
        if (step == ScpiMessage::Step::End)
            break;
        if (step == ScpiMessage::Step::Error) {
            parts.append('!' + QByteArray::number(error.number) + ' ' + error.detail);
            continue;
        }
        QList<QByteArray> parameters;
        for (const ScpiParameter &parameter : unit.parameters)
            parameters.append(asText(parameter));
        parts.append(pathOf(unit) + (parameters.isEmpty() ? "" : " " + parameters.join('|')));
    }
    return parts.join("; ");
}

} // namespace

class TestScpiMessage : public QObject
{
    Q_OBJECT

private slots:
    void units_data();
    void units();
    void treeMemory_data();
    void treeMemory();
    void parameters_data();
    void parameters();
    void errorsOfHeaders_data();
    void errorsOfHeaders();
    void errorsOfParameters_data();
    void errorsOfParameters();
    void everyFieldOfAUnit();
    void errorEndsTheMessage();
    void detailsAreShort();
    void noByteIsWhiteButThese();
    void everyPrefixIsReadSafely();

private:
    void compareUnits();
};

void TestScpiMessage::compareUnits()
{
    QFETCH(QByteArray, message);
    QFETCH(QByteArray, expected);
    QCOMPARE(unitsOf(message), expected);
}

static void addColumns()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QByteArray>("expected");
}

static void addRow(const char *name, const QByteArray &message, const QByteArray &expected)
{
    QTest::newRow(name) << message << expected;
}

void TestScpiMessage::units_data()
{
    addColumns();
    addRow("empty", "", "");
    addRow("blank", " \t\r", "");
    addRow("separators alone", " ;; ; ", "");
    addRow("common", "*IDN?", "*IDN?");
    addRow("common command", "*RST", "*RST");
    addRow("common with parameter", "*ESE 32", "*ESE 32");
    addRow("digits of a common header", "*ABC1?", "*ABC1?");
    addRow("case stays", "*idn?;Freq", "*idn?; Freq");
    addRow("compound", "SENS:FREQ:STAR 1", "SENS:FREQ:STAR 1");
    addRow("absolute", ":FREQ?", "FREQ?");
    addRow("query with parameter", "FREQ? MAX", "FREQ? MAX");
    addRow("suffixes", "CALC1:MARK02:X99999?", "CALC1:MARK2:X99999?");
    addRow("suffix 0", "MARK0", "MARK0");
    addRow("digits inside", "A2B:C_3D4", "A2B:C_3D4");
    addRow("underscore at the end", "A_1", "A_1");
    addRow("12 characters", "ABCDEFGHIJKL:A1", "ABCDEFGHIJKL:A1");
    addRow("12 characters and a suffix", "ABCDEFGHIJKL12345", "ABCDEFGHIJKL12345");
    addRow("12 characters of a common header", "*ABCDEFGHIJ12", "*ABCDEFGHIJ12");
    addRow("blanks around", " \t*CLS \r ; \x01 *RST\t", "*CLS; *RST");
    addRow("NUL is white space",
           QByteArray("A\0"
                      "1\0;\0B",
                      7),
           "A 1; B");
    addRow("empty units", ";*CLS;;*RST;", "*CLS; *RST");
    addRow("blanks behind a header", "A  ;B", "A; B");
}

void TestScpiMessage::units()
{
    compareUnits();
}

void TestScpiMessage::treeMemory_data()
{
    addColumns();
    addRow("same level", "FREQ:STAR 1;STOP 2", "FREQ:STAR 1; FREQ:STOP 2");
    addRow("deeper", "SENS:FREQ:STAR 1;STOP 2;CENT?", "SENS:FREQ:STAR 1; SENS:FREQ:STOP 2; SENS:FREQ:CENT?");
    addRow("goes down", "A:B 1;C:D 2;E 3", "A:B 1; A:C:D 2; A:C:E 3");
    addRow("root", "A:B 1;:C:D 2;E 3", "A:B 1; C:D 2; C:E 3");
    addRow("one node leaves the root", "A;B:C;D", "A; B:C; B:D");
    addRow("common does not disturb", "A:B 1;*WAI;C 2", "A:B 1; *WAI; A:C 2");
    addRow("common first", "*CLS;A:B;C", "*CLS; A:B; A:C");
    addRow("empty units do not disturb", "A:B;;C", "A:B; A:C");
    addRow("suffix stays", "CALC2:MARK1:X?;Y?", "CALC2:MARK1:X?; CALC2:MARK1:Y?");
    addRow("query", "A:B?;C?", "A:B?; A:C?");
}

void TestScpiMessage::treeMemory()
{
    compareUnits();
    // A new message starts at the root.
    QCOMPARE(unitsOf("STOP 2"), QByteArray("STOP 2"));
}

void TestScpiMessage::parameters_data()
{
    addColumns();
    addRow("several", "A 1,ON , \"x\" ,#12ab", "A 1|ON|\"x\"|{ab}");
    addRow("word in upper case", "A min,Max_2", "A MIN|MAX_2");
    addRow("word of 12", "A ABCDEFGHIJ12", "A ABCDEFGHIJ12");
    addRow("units", "A 1hz,2 MHz,3\tdbm,4 M/S,5 /S2,6 V.S-1", "A 1 HZ|2 MHZ|3 DBM|4 M/S|5 /S2|6 V.S-1");
    addRow("unit of 12", "A 1 ABCDEFGHIJKL", "A 1 ABCDEFGHIJKL");
    addRow("unit that begins with E", "A 1EXA,2 EV,3 E/S", "A 1 EXA|2 EV|3 E/S");
    addRow("exponent and unit", "A 1E3HZ,1 E 3 HZ", "A 1000 HZ|1000 HZ");
    addRow("empty strings", "A \"\",''", "A \"\"|\"\"");
    addRow("doubled quotes", "A \"a\"\"b\",'c''d','\"',\"'\"", "A \"a\"b\"|\"c'd\"|\"\"\"|\"'\"");
    addRow("separators in a string", "A \"1,2;3:4?\";B", "A \"1,2;3:4?\"; B");
    addRow("UTF-8 in a string", "A \"\xC3\xA4\"", "A \"\xC3\xA4\"");
    addRow("hash in a string", "A \" #19\"", "A \" #19\"");
    addRow("bytes of a block", QByteArray("A #15\n;,\0\"", 10), QByteArray("A {\n;,\0\"}", 9));
    addRow("long length", "A #3002ab,#10", "A {ab}|{}");
    addRow("unit behind a block", "A:B #12ab ;C", "A:B {ab}; A:C");
    addRow("bit patterns", "A #H1F,#hff,#Q17,#q7,#B101,#b0", "A 31|255|15|7|5|0");
    addRow("64 bits", "A #H8000000000000000", "A 9.22337203685e+18");
    addRow("zeros before bits", "A #B" + QByteArray(100, '0') + "11", "A 3");
}

void TestScpiMessage::parameters()
{
    compareUnits();
}

void TestScpiMessage::errorsOfHeaders_data()
{
    addColumns();
    addRow("number first", "1A", "!-102 1");
    addRow("string first", "\"A\"", "!-102 \"");
    addRow("only colon", ":", "!-102 :");
    addRow("only star", "*", "!-102 *");
    addRow("star and digit", "*1", "!-102 *1");
    addRow("star and blank", "* IDN", "!-102 * ");
    addRow("colon at the end", "A:", "!-102 A:");
    addRow("colon before a blank", "A: B", "!-102 A: ");
    addRow("two colons", "A::B", "!-102 A::");
    addRow("only question mark", "?", "!-102 ?");
    addRow("8 bits", "\xC3\xA4", "!-101 \xC3");
    addRow("8 bits inside", "A:\xC3", "!-101 A:\xC3");
    addRow("8 bits behind", "AB\xC3", "!-101 AB\xC3");
    addRow("DEL", "\x7F", "!-101 \x7F");
    addRow("ampersand", "SETUP&", "!-101 SETUP&");
    addRow("two question marks", "A??", "!-101 A??");
    addRow("LF", "A\nB", "!-101 A\n");
    addRow("no blank before a string", "A\"x\"", "!-111 A\"");
    addRow("no blank before a sign", "A-1", "!-111 A-");
    addRow("no blank before a block", "A#11x", "!-111 A#");
    addRow("no blank behind ?", "A?MAX", "!-111 A?M");
    addRow("comma", "A,1", "!-111 A,");
    addRow("colon behind a common header", "*IDN:A", "!-111 *IDN:");
    addRow("14 characters", "A:BCDEFGHIJKLMNO", "!-112 A:BCDEFGHIJKLMNO");
    addRow("14 characters of a common header", "*ABCDEFGHIJKLMN", "!-112 *ABCDEFGHIJKLMN");
    addRow("6 digits", "A123456", "!-114 A123456");
    addRow("6 digits with zeros", "A000001?", "!-114 A000001?");
}

void TestScpiMessage::errorsOfHeaders()
{
    compareUnits();
}

void TestScpiMessage::errorsOfParameters_data()
{
    addColumns();
    addRow("comma first", "A ,1", "!-102 ,");
    addRow("two commas", "A 1,,2", "!-102 ,");
    addRow("comma last", "A 1,", "!-102 ");
    addRow("comma before ;", "A 1,;B", "!-102 ;");
    addRow("question mark behind a blank", "A ?", "!-102 ?");
    addRow("colon behind a blank", "A :B", "!-102 :");
    addRow("8 bits", "A \xC3", "!-101 \xC3");
    addRow("LF", "A \n", "!-101 \n");
    addRow("two numbers", "A 1 2", "!-103 1 2");
    addRow("no semicolon", "*EMC 1:CH1:VOLTS 5", "!-103 1:");
    addRow("two words", "A ON OFF", "!-103 ON O");
    addRow("text behind a string", "A \"x\"y", "!-103 \"x\"y");
    addRow("string behind a word", "A ON\"x\"", "!-103 ON\"");
    addRow("text behind a block", "A #12abc", "!-103 #12abc");
    addRow("sign alone", "A +", "!-121 +");
    addRow("two signs", "A --1", "!-121 --");
    addRow("blank behind a sign", "A - 1", "!-121 - ");
    addRow("point alone", "A .", "!-121 .");
    addRow("two points", "A 1.2.3", "!-121 1.2.");
    addRow("comma of decimals is a separator", "A 1,5", "A 1|5");
    addRow("underscore", "A 1_000", "!-121 1_");
    addRow("sign inside", "A 5-3", "!-121 5-");
    addRow("exponent without digits", "A 1E", "!-121 1E");
    addRow("exponent with a sign alone", "A 1E+", "!-121 1E+");
    addRow("exponent with a blank behind the sign", "A 1E+ 3", "!-121 1E+ ");
    addRow("exponent with a point", "A 1E5.5", "!-121 1E5.");
    addRow("wrong digit of a bit pattern", "A #B12", "!-121 #B12");
    addRow("wrong digit of an octal number", "A #Q8", "!-121 #Q8");
    addRow("bit pattern without digits", "A #H", "!-121 #H");
    addRow("exponent of 32001", "A 1E32001", "!-123 1E32001");
    addRow("exponent of -32001", "A 1E-32001", "!-123 1E-32001");
    addRow("exponent of many digits", "A 1E99999999999999999999", "!-123 1E99999999999999999999");
    addRow("beyond a double", "A 1E309", "!-123 1E309");
    addRow("65 bits", "A #H10000000000000000", "!-124 #H10000000000000000");
    addRow("64 bits and one octal digit", "A #Q2000000000000000000000", "!-124 #Q2000000000000000000000");
    addRow("unit without letters", "A 1 /", "!-131 /");
    addRow("unit with a minus alone", "A 1 DB-", "!-131 DB-");
    addRow("unit with two digits", "A 1 S22", "!-131 S22");
    addRow("unit with two points", "A 1 M..S", "!-131 M..S");
    addRow("unit with an underscore", "A 1 M_S", "!-131 M_");
    addRow("unit of 13", "A 1 ABCDEFGHIJKLM", "!-134 ABCDEFGHIJKLM");
    addRow("unit of a bit pattern", "A #H1F HZ", "!-138 #H1F H");
    addRow("word with a minus", "A ON-OFF", "!-141 ON-");
    addRow("word with a point", "A file.s1p", "!-141 file.");
    addRow("word with 8 bits", "A B\xC3", "!-141 B\xC3");
    addRow("word of 13", "A ABCDEFGHIJKLM", "!-144 ABCDEFGHIJKLM");
    addRow("open string", "A \"x", "!-151 \"x");
    addRow("open string in '", "A 'x\"", "!-151 'x\"");
    addRow("string that ends with a doubled quote", "A \"x\"\"", "!-151 \"x\"\"");
    addRow("LF in a string", "A \"x\ny\"", "!-151 \"x\n");
    addRow("quote alone", "A \"", "!-151 \"");
    addRow("indefinite block", "A #0abc", "!-161 #0a");
    addRow("short block", "A #15abcd", "!-161 #15a");
    addRow("no length of a block", "A #2", "!-161 #2");
    addRow("wrong length of a block", "A #2x5", "!-161 #2x");
    addRow("hash alone", "A #", "!-161 #");
    addRow("hash and a letter", "A #X1", "!-161 #X1");
    addRow("expression", "A (@1)", "!-178 (");
}

void TestScpiMessage::errorsOfParameters()
{
    compareUnits();
}

void TestScpiMessage::everyFieldOfAUnit()
{
    ScpiMessage parser(" :Calc2:x? 2.5 kHz , 'It''s' ; y");
    ScpiUnit unit;
    ScpiError error{-1, "untouched"};
    QCOMPARE(parser.next(unit, error), ScpiMessage::Step::Unit);
    const ScpiParameter number{ScpiParameter::Kind::Number, 2.5, "KHZ", {}, "2.5 kHz"};
    const ScpiParameter text{ScpiParameter::Kind::Text, 0.0, {}, "It's", "'It''s'"};
    const ScpiUnit first{":Calc2:x?", false, true, true, {{"Calc", 2}, {"x", -1}}, {number, text}};
    QCOMPARE(unit, first);
    QCOMPARE(parser.next(unit, error), ScpiMessage::Step::Unit);
    const ScpiUnit second{"y", false, false, false, {{"Calc", 2}, {"y", -1}}, {}};
    QCOMPARE(unit, second);
    QCOMPARE(parser.next(unit, error), ScpiMessage::Step::End);
    QCOMPARE(parser.next(unit, error), ScpiMessage::Step::End);
    QCOMPARE(unit, second);
    QCOMPARE(error, (ScpiError{-1, "untouched"}));
    QCOMPARE(parser.position(), 32);

    ScpiMessage common("*IDN?");
    QCOMPARE(common.next(unit, error), ScpiMessage::Step::Unit);
    const ScpiUnit identify{"*IDN?", true, true, false, {{"IDN", -1}}, {}};
    QCOMPARE(unit, identify);
}

void TestScpiMessage::errorEndsTheMessage()
{
    QCOMPARE(unitsOf("*CLS;A:B 1;C 1.2.3;D 4"), QByteArray("*CLS; A:B 1; !-121 1.2."));
    QCOMPARE(unitsOf("A 1,2,$;B"), QByteArray("!-102 $"));
    ScpiMessage parser("A&;B");
    ScpiUnit unit;
    unit.header = "untouched";
    ScpiError error;
    QCOMPARE(parser.next(unit, error), ScpiMessage::Step::Error);
    QCOMPARE(parser.next(unit, error), ScpiMessage::Step::End);
    QCOMPARE(unit.header, QByteArray("untouched"));
}

void TestScpiMessage::detailsAreShort()
{
    QCOMPARE(unitsOf("A \"" + QByteArray(4000, 'x')), "!-151 \"" + QByteArray(39, 'x'));
    ScpiMessage parser("A \"" + QByteArray(4000, 'x') + '"');
    ScpiUnit unit;
    ScpiError error;
    QCOMPARE(parser.next(unit, error), ScpiMessage::Step::Unit);
    QCOMPARE(unit.parameters.first().text.size(), 4000);
    QCOMPARE(unit.parameters.first().written, '"' + QByteArray(39, 'x'));
}

void TestScpiMessage::noByteIsWhiteButThese()
{
    for (int byte = 0; byte < 256; ++byte) {
        const bool isWhite = byte <= 32 && byte != 10;
        const QByteArray message = "A" + QByteArray(1, static_cast<char>(byte)) + "1";
        QCOMPARE(unitsOf(message) == "A 1", isWhite);
    }
}

void TestScpiMessage::everyPrefixIsReadSafely()
{
    const QByteArray message = ":CALC2:X? -1.5 E -3 MHZ,#H1F;*ESE 'a''b',#13abc;MARK1:Y MAX,\"c\"\"d\",#Q7,#B1";
    QCOMPARE(unitsOf(message),
             QByteArray("CALC2:X? -0.0015 MHZ|31; *ESE \"a'b\"|{abc}; CALC2:MARK1:Y MAX|\"c\"d\"|7|1"));
    for (qsizetype length = 0; length < message.size(); ++length) {
        ScpiMessage parser(message.first(length));
        ScpiUnit unit;
        ScpiError error;
        int units = 0;
        while (parser.next(unit, error) == ScpiMessage::Step::Unit)
            ++units;
        QVERIFY(units <= 3);
        QVERIFY(parser.position() <= length);
        // Either everything is read or there is an error.
        QVERIFY(parser.position() == length || error.number < -100);
    }
}

QTEST_APPLESS_MAIN(TestScpiMessage)
#include "test_scpi_message.moc"
