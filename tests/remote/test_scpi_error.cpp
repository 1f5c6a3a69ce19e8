// SPDX-License-Identifier: MIT
#include "remote/scpi_error.h"

#include <QTest>

using namespace calvorn;

class TestScpiError : public QObject
{
    Q_OBJECT

private slots:
    void textsOfTheStandard_data();
    void textsOfTheStandard();
    void unknownNumbersGetTheTextOfTheirClass();
    void detailFollowsTheText_data();
    void detailFollowsTheText();
    void longDetailsLoseTheirEnd();
    void eventBits_data();
    void eventBits();
    void queueKeepsTheOrder();
    void queueOverflows();
    void queueIgnoresNoError();
};

void TestScpiError::textsOfTheStandard_data()
{
    QTest::addColumn<int>("constant");
    QTest::addColumn<QByteArray>("answer");
    const auto row = [](int constant, const char *answer) { QTest::newRow(answer) << constant << QByteArray(answer); };
    row(kScpiNoError, "0,\"No error\"");
    row(kScpiCommandError, "-100,\"Command error\"");
    row(kScpiInvalidCharacter, "-101,\"Invalid character\"");
    row(kScpiSyntaxError, "-102,\"Syntax error\"");
    row(kScpiInvalidSeparator, "-103,\"Invalid separator\"");
    row(kScpiDataTypeError, "-104,\"Data type error\"");
    row(kScpiParameterNotAllowed, "-108,\"Parameter not allowed\"");
    row(kScpiMissingParameter, "-109,\"Missing parameter\"");
    row(kScpiHeaderSeparatorError, "-111,\"Header separator error\"");
    row(kScpiMnemonicTooLong, "-112,\"Program mnemonic too long\"");
    row(kScpiUndefinedHeader, "-113,\"Undefined header\"");
    row(kScpiHeaderSuffixOutOfRange, "-114,\"Header suffix out of range\"");
    row(kScpiNumericDataError, "-120,\"Numeric data error\"");
    row(kScpiInvalidCharacterInNumber, "-121,\"Invalid character in number\"");
    row(kScpiExponentTooLarge, "-123,\"Exponent too large\"");
    row(kScpiTooManyDigits, "-124,\"Too many digits\"");
    row(kScpiNumericDataNotAllowed, "-128,\"Numeric data not allowed\"");
    row(kScpiInvalidSuffix, "-131,\"Invalid suffix\"");
    row(kScpiSuffixTooLong, "-134,\"Suffix too long\"");
    row(kScpiSuffixNotAllowed, "-138,\"Suffix not allowed\"");
    row(kScpiInvalidCharacterData, "-141,\"Invalid character data\"");
    row(kScpiCharacterDataTooLong, "-144,\"Character data too long\"");
    row(kScpiCharacterDataNotAllowed, "-148,\"Character data not allowed\"");
    row(kScpiStringDataError, "-150,\"String data error\"");
    row(kScpiInvalidStringData, "-151,\"Invalid string data\"");
    row(kScpiStringDataNotAllowed, "-158,\"String data not allowed\"");
    row(kScpiInvalidBlockData, "-161,\"Invalid block data\"");
    row(kScpiBlockDataNotAllowed, "-168,\"Block data not allowed\"");
    row(kScpiExpressionDataNotAllowed, "-178,\"Expression data not allowed\"");
    row(kScpiExecutionError, "-200,\"Execution error\"");
    row(kScpiInitIgnored, "-213,\"Init ignored\"");
    row(kScpiSettingsConflict, "-221,\"Settings conflict\"");
    row(kScpiDataOutOfRange, "-222,\"Data out of range\"");
    row(kScpiIllegalParameterValue, "-224,\"Illegal parameter value\"");
    row(kScpiDataCorruptOrStale, "-230,\"Data corrupt or stale\"");
    row(kScpiHardwareError, "-240,\"Hardware error\"");
    row(kScpiHardwareMissing, "-241,\"Hardware missing\"");
    row(kScpiMassStorageError, "-250,\"Mass storage error\"");
    row(kScpiFileNameNotFound, "-256,\"File name not found\"");
    row(kScpiFileNameError, "-257,\"File name error\"");
    row(kScpiDeviceSpecificError, "-300,\"Device-specific error\"");
    row(kScpiSystemError, "-310,\"System error\"");
    row(kScpiQueueOverflow, "-350,\"Queue overflow\"");
    row(kScpiInputBufferOverrun, "-363,\"Input buffer overrun\"");
    row(kScpiQueryError, "-400,\"Query error\"");
    row(kScpiQueryInterrupted, "-410,\"Query INTERRUPTED\"");
    row(kScpiQueryUnterminated, "-420,\"Query UNTERMINATED\"");
    row(kScpiQueryDeadlocked, "-430,\"Query DEADLOCKED\"");
}

void TestScpiError::textsOfTheStandard()
{
    QFETCH(int, constant);
    QFETCH(QByteArray, answer);
    QCOMPARE(answerOf({constant, {}}), answer);
}

void TestScpiError::unknownNumbersGetTheTextOfTheirClass()
{
    QCOMPARE(textOf(-199).toByteArray(), QByteArray("Command error"));
    QCOMPARE(textOf(-299).toByteArray(), QByteArray("Execution error"));
    QCOMPARE(textOf(-399).toByteArray(), QByteArray("Device-specific error"));
    QCOMPARE(textOf(-499).toByteArray(), QByteArray("Query error"));
    QCOMPARE(textOf(7).toByteArray(), QByteArray("Device-specific error"));
    QCOMPARE(textOf(-1000).toByteArray(), QByteArray("Device-specific error"));
}

void TestScpiError::detailFollowsTheText_data()
{
    QTest::addColumn<QByteArray>("detail");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("word") << QByteArray("FREK") << QByteArray("-113,\"Undefined header;FREK\"");
    QTest::newRow("quotes") << QByteArray("a\"b\"") << QByteArray("-113,\"Undefined header;a\"\"b\"\"\"");
    QTest::newRow("line end") << QByteArray("a\r\nb") << QByteArray("-113,\"Undefined header;a??b\"");
    QTest::newRow("UTF-8") << QByteArray("\xC3\xA4") << QByteArray("-113,\"Undefined header;??\"");
    QTest::newRow("NUL and DEL") << QByteArray("\0\x7F", 2) << QByteArray("-113,\"Undefined header;??\"");
    QTest::newRow("blank and tilde") << QByteArray(" ~") << QByteArray("-113,\"Undefined header; ~\"");
}

void TestScpiError::detailFollowsTheText()
{
    QFETCH(QByteArray, detail);
    QFETCH(QByteArray, answer);
    QCOMPARE(answerOf({-113, detail}), answer);
}

void TestScpiError::longDetailsLoseTheirEnd()
{
    // "Undefined header;" has 17 characters.
    const auto textIn = [](const QByteArray &detail) {
        const QByteArray answer = answerOf({-113, detail});
        return answer.mid(6, answer.size() - 7);
    };
    QCOMPARE(textIn(QByteArray(238, 'x')), "Undefined header;" + QByteArray(238, 'x'));
    QCOMPARE(textIn(QByteArray(239, 'x')).size(), 255);
    QCOMPARE(textIn(QByteArray(10'000, 'x')).size(), 255);
    QCOMPARE(textIn(QByteArray(10'000, '"')), "Undefined header;" + QByteArray(238, '"'));
    // There is no space for the second half of a doubled quote.
    QCOMPARE(textIn(QByteArray(237, 'x') + "\"y"), "Undefined header;" + QByteArray(237, 'x'));
}

void TestScpiError::eventBits_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("bit");
    const auto row = [](int number, int bit) { QTest::addRow("%d", number) << number << bit; };
    row(0, -1);
    row(-1, -1);
    row(-99, -1);
    row(-100, 5);
    row(-113, 5);
    row(-199, 5);
    row(-200, 4);
    row(-222, 4);
    row(-299, 4);
    row(-300, 3);
    row(-350, 3);
    row(-399, 3);
    row(1, 3);
    row(32767, 3);
    row(-400, 2);
    row(-430, 2);
    row(-499, 2);
    row(-500, -1);
    row(-32768, -1);
}

void TestScpiError::eventBits()
{
    QFETCH(int, number);
    QFETCH(int, bit);
    QCOMPARE(esrBitOf(number), bit);
}

void TestScpiError::queueKeepsTheOrder()
{
    ScpiErrorQueue queue;
    QVERIFY(queue.isEmpty());
    QCOMPARE(queue.take(), ScpiError());
    queue.add({-113, "A"});
    queue.add({-222, "B"});
    QCOMPARE(queue.count(), 2);
    QCOMPARE(queue.take(), (ScpiError{-113, "A"}));
    queue.add({-100, "C"});
    QCOMPARE(queue.take(), (ScpiError{-222, "B"}));
    QCOMPARE(queue.take(), (ScpiError{-100, "C"}));
    QCOMPARE(answerOf(queue.take()), QByteArray("0,\"No error\""));
    QCOMPARE(queue.count(), 0);
    queue.add({-113, QByteArray(10'000, 'x')});
    QCOMPARE(queue.take().detail, QByteArray(255, 'x'));
    queue.add({-113, "A"});
    queue.clear();
    QVERIFY(queue.isEmpty());
}

void TestScpiError::queueOverflows()
{
    ScpiErrorQueue queue;
    for (int index = 0; index < 30; ++index)
        queue.add({-113, QByteArray::number(index)});
    QCOMPARE(queue.count(), 30);
    for (int index = 0; index < 5; ++index)
        queue.add({-222, "late"});
    QCOMPARE(queue.count(), 30);
    for (int index = 0; index < 29; ++index)
        QCOMPARE(queue.take(), (ScpiError{-113, QByteArray::number(index)}));
    QCOMPARE(queue.take(), (ScpiError{-350, {}}));
    QCOMPARE(queue.take().number, 0);
    // The queue has space again.
    queue.add({-222, "later"});
    QCOMPARE(queue.take(), (ScpiError{-222, "later"}));
}

void TestScpiError::queueIgnoresNoError()
{
    ScpiErrorQueue queue;
    queue.add({0, "nothing"});
    QCOMPARE(queue.count(), 0);
}

QTEST_APPLESS_MAIN(TestScpiError)
#include "test_scpi_error.moc"
