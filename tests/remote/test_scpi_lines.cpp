// SPDX-License-Identifier: MIT
#include "remote/scpi_lines.h"
#include "tests/support/resident_memory.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <random>

using namespace calvorn;

namespace {

using Line = ScpiLines::Line;

Line message(const QByteArray &bytes)
{
    return {bytes, {}};
}

Line overrun()
{
    return {{}, {-363, {}}};
}

qint64 residentKilobytes()
{
    return test::memoryKilobytes(QCoreApplication::applicationPid());
}

// Adds the bytes in chunks of this size and returns all lines.
QList<Line> linesOf(QByteArrayView bytes, qsizetype chunk)
{
    QList<Line> all;
    ScpiLines lines;
    for (qsizetype at = 0; at < bytes.size(); at += chunk) {
        lines.add(bytes.sliced(at, std::min(chunk, bytes.size() - at)));
        while (const auto line = lines.next())
            all.append(*line);
    }
    return all;
}

} // namespace

class TestScpiLines : public QObject
{
    Q_OBJECT

private slots:
    void splits_data();
    void splits();
    void lengthIsLimited_data();
    void lengthIsLimited();
    void chunksMakeNoDifference();
    void anyBytesInAnyChunks();
    void endlessMessagesNeedNoMemory();
    void clearForgetsTheRest();
};

void TestScpiLines::splits_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<Line>>("lines");
    const auto row = [](const char *name, const QByteArray &bytes, const QList<QByteArray> &messages) {
        QList<Line> lines;
        for (const QByteArray &text : messages)
            lines.append(message(text));
        QTest::newRow(name) << bytes << lines;
    };
    row("LF", "*IDN?\n", {"*IDN?"});
    row("CR LF", "*IDN?\r\n", {"*IDN?"});
    row("two", "A\nB\n", {"A", "B"});
    row("unfinished", "A\nB", {"A"});
    row("empty", "\n\r\n\n", {});
    row("blank", " \n", {" "});
    row("one CR of two", "A\r\r\n", {"A\r"});
    row("CR inside", "A\rB\n", {"A\rB"});
    row("CR alone", "A\r", {});
    row("NUL and 8 bits", QByteArray("A\0\xFF\n", 4), {QByteArray("A\0\xFF", 3)});
    row("block with LF", "A #13\n\r\n\n*B\n", {"A #13\n\r\n", "*B"});
    row("CR at the end of a block", "A #12x\r\nB\n", {"A #12x\r", "B"});
    row("CR behind a block", "A #11x\r\nB\n", {"A #11x", "B"});
    row("block behind a comma", "A 1,#11\n,2\n", {"A 1,#11\n,2"});
    row("block behind blanks", "A \t #11\n\n", {"A \t #11\n"});
    row("two blocks", "A #11\n,#11\n\n", {"A #11\n,#11\n"});
    row("empty block", "A #10\nB\n", {"A #10", "B"});
    row("block of ten", "A #210\n\n\n\n\n\n\n\n\n\n\n", {"A #210\n\n\n\n\n\n\n\n\n\n"});
    row("block with quotes", "A #13\"\n'\nB\n", {"A #13\"\n'", "B"});
    row("block with #", "A #15 #19x\nB\n", {"A #15 #19x", "B"});
    row("indefinite block", "A #0xyz\nB\n", {"A #0xyz", "B"});
    row("no length", "A #\nB\n", {"A #", "B"});
    row("short length", "A #3\nB\n", {"A #3", "B"});
    row("broken length", "A #31x3\nB\n", {"A #31x3", "B"});
    row("hexadecimal", "A #H12\nB\n", {"A #H12", "B"});
    row("in a header", "A#12\nB\n", {"A#12", "B"});
    row("in a word", "A B#12\nB\n", {"A B#12", "B"});
    row("at the start", "#12\nB\n", {"#12", "B"});
    row("in a string", "A \" #12\"\nB\n", {"A \" #12\"", "B"});
    row("in a string in '", "A ' #12'\nB\n", {"A ' #12'", "B"});
    row("other quote in a string", "A \"' #12\"\nB\n", {"A \"' #12\"", "B"});
    row("behind a string", "A \"x\", #12\n\n\nB\n", {"A \"x\", #12\n\n", "B"});
    row("behind a doubled quote", "A \"x\"\" #12\"\nB\n", {"A \"x\"\" #12\"", "B"});
    row("open string", "A \"x\nB #12\n\n\n", {"A \"x", "B #12\n\n"});
    row("length in the next message", "A #\n12\nB\n", {"A #", "12", "B"});
}

void TestScpiLines::splits()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QList<Line>, lines);
    for (qsizetype chunk = 1; chunk <= bytes.size(); ++chunk)
        QCOMPARE(linesOf(bytes, chunk), lines);
}

void TestScpiLines::lengthIsLimited_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<Line>>("lines");
    const QByteArray full(4096, 'x');
    const auto row = [](const char *name, const QByteArray &bytes, const QList<Line> &lines) {
        QTest::newRow(name) << bytes + "*B\n" << lines + QList<Line>{message("*B")};
    };
    row("longest", full + '\n', {message(full)});
    row("longest with CR LF", full + "\r\n", {message(full)});
    row("one more", full + "x\n", {overrun()});
    row("one more with CR LF", full + "x\r\n", {overrun()});
    row("two CR", full + "\r\r\n", {overrun()});
    row("CR inside", full + "\rx\n", {overrun()});
    row("much more", full + full + full + '\n', {overrun()});
    row("twice", full + "x\n" + full + "x\n", {overrun(), overrun()});

    const QByteArray head = "A #44088"; // 8 bytes
    const QByteArray bytes(4088, '\n');
    row("longest block", head + bytes + '\n', {message(head + bytes)});
    row("longest block with CR LF", head + bytes + "\r\n", {message(head + bytes)});
    const QByteArray endsWithCr = bytes.chopped(1) + '\r';
    row("longest block that ends with CR", head + endsWithCr + '\n', {message(head + endsWithCr)});
    row("block with text behind", head + bytes + ",1\n", {overrun()});
    row("long block", "A #44089" + bytes + "\n\n", {overrun()});
    row("long block that ends with CR", "A #44089" + bytes + "\r\n", {overrun()});
    row("block beyond the limit", full + " #13\n\n\n\n", {overrun()});
    row("string beyond the limit", full + " \" #13\n", {overrun()});
}

void TestScpiLines::lengthIsLimited()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QList<Line>, lines);
    for (const qsizetype chunk : {qsizetype(1), qsizetype(7), qsizetype(4096), qsizetype(4097), bytes.size()})
        QCOMPARE(linesOf(bytes, chunk), lines);
}

void TestScpiLines::chunksMakeNoDifference()
{
    const QByteArray bytes = "*IDN?\r\nFREQ:STAR 1 MHZ;STOP 2E6\n\n" + QByteArray(4096, 'x') + "\r\n" +
                             QByteArray(4097, 'y') + "\r\nDATA #214\n\r\"'#19\n\r\"'#19,\"a\"\"#12b\",'x\nLAST\n";
    const QList<Line> expected = {message("*IDN?"),
                                  message("FREQ:STAR 1 MHZ;STOP 2E6"),
                                  message(QByteArray(4096, 'x')),
                                  overrun(),
                                  message("DATA #214\n\r\"'#19\n\r\"'#19,\"a\"\"#12b\",'x"),
                                  message("LAST")};
    for (qsizetype chunk = 1; chunk <= bytes.size(); ++chunk)
        QCOMPARE(linesOf(bytes, chunk), expected);
}

void TestScpiLines::anyBytesInAnyChunks()
{
    constexpr int kRuns = 2000;
    const QByteArray alphabet("A #0123\"',\n\r\n x");
    std::mt19937 random(1);
    int messages = 0;
    for (int run = 0; run < kRuns; ++run) {
        QByteArray bytes;
        for (int count = 0; count < 200; ++count)
            bytes += alphabet[static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size()))];
        const QList<Line> whole = linesOf(bytes, bytes.size());
        for (const qsizetype chunk : {1, 2, 3, 5, 64})
            QCOMPARE(linesOf(bytes, chunk), whole);
        messages += static_cast<int>(whole.size());
    }
    QVERIFY(messages > kRuns);
}

void TestScpiLines::endlessMessagesNeedNoMemory()
{
    constexpr int kChunks = 1600; // of 64 KiB: 100 MB
    const QByteArray chunk(65536, 'x');
    for (const char *const start : {"", "A #9999999999"}) {
        ScpiLines lines;
        lines.add(start);
        const qint64 before = residentKilobytes();
        int errors = 0;
        for (int count = 0; count < kChunks; ++count) {
            lines.add(chunk);
            while (const auto line = lines.next()) {
                QCOMPARE(*line, overrun());
                ++errors;
            }
        }
        QCOMPARE(errors, 1);
        QVERIFY(before > 0);
        QVERIFY(residentKilobytes() - before < 16 * 1024);
    }
}

void TestScpiLines::clearForgetsTheRest()
{
    ScpiLines lines;
    lines.add("A\nB #15x");
    lines.clear();
    QVERIFY(!lines.next());
    lines.add("C\n");
    QCOMPARE(lines.next(), std::optional<Line>(message("C")));
    QVERIFY(!lines.next());
}

QTEST_APPLESS_MAIN(TestScpiLines)
#include "test_scpi_lines.moc"
