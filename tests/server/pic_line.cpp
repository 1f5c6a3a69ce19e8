// SPDX-License-Identifier: MIT
// Tests what the PIC driver sends and when: no command before the previous answer, and no operation that takes longer
// than the program waits, whatever the board does.
#include "server/drivers/pic_driver.h"
#include "server/links/byte_link.h"
#include "tests/server/error_count.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <functional>
#include <utility>

using namespace calvorn;

namespace {

constexpr int kOperationMs = 2'400;
constexpr int kProgramWaitsMs = 3'000;
constexpr int kTurnMs = 5; // polling interval of waitForBytes()

// A link whose replies are scripted. The driver must poll: bytesArrived() is never emitted.
class ScriptedLink : public ByteLink
{
public:
    // The answer to a command and its delay in milliseconds. An empty string means no answer.
    struct Reply
    {
        QByteArray bytes;
        int afterMs = 0;
    };
    using Script = std::function<Reply(const QByteArray &)>;

    explicit ScriptedLink(Script script)
        : m_script(std::move(script))
    {
    }

    bool isOpen() const override { return m_open; }

    void write(const QByteArray &bytes) override
    {
        written.append(bytes);
        if (bytes == fatal) {
            m_open = false;
            emit lost(QStringLiteral("The device is gone."));
            return;
        }
        if (m_owed)
            ++overtaken;
        const Reply reply = m_script(bytes);
        m_owed = !reply.bytes.isEmpty();
        m_coming = reply;
        m_since.start();
    }

    QByteArray read() override
    {
        look();
        return std::exchange(m_arrived, QByteArray());
    }

    bool waitForBytes(int milliseconds) override
    {
        QElapsedTimer clock;
        clock.start();
        while (m_arrived.isEmpty()) {
            look();
            if (clock.elapsed() >= milliseconds)
                break;
            if (m_arrived.isEmpty())
                QThread::msleep(kTurnMs);
        }
        return !m_arrived.isEmpty();
    }

    void discard() override { m_arrived.clear(); }
    void close() override {}

    QByteArray babble; // received at every poll
    QByteArray fatal;  // writing these bytes fails because the device is gone
    QList<QByteArray> written;
    int overtaken = 0; // writes before the previous answer has arrived

private:
    void look()
    {
        m_arrived += babble;
        if (!m_owed || m_since.elapsed() < m_coming.afterMs)
            return;
        m_owed = false;
        m_arrived += m_coming.bytes;
    }

    Script m_script;
    bool m_open = true;
    Reply m_coming;
    bool m_owed = false;
    QElapsedTimer m_since;
    QByteArray m_arrived;
};

// Returns the acknowledgement for `command`. The answer to `?` matches the bench's settings.
QByteArray accepting(const QByteArray &command)
{
    return command == "?\r" ? QByteArray("?+TEST 1.0 AD9850 80000000 50\r") : command.left(1) + "+\r";
}

// A board that accepts every command after `afterMs` milliseconds.
ScriptedLink::Script obedient(int afterMs = 0)
{
    return [afterMs](const QByteArray &bytes) { return ScriptedLink::Reply{accepting(bytes), afterMs}; };
}

struct Bench
{
    explicit Bench(ScriptedLink::Script script, int settlingUs = 0)
        : link(std::make_shared<ScriptedLink>(std::move(script)))
        , driver([this](int, const LineSettings &) { return link; },
                 [settlingUs] {
                     return PicSettings{{}, settlingUs};
                 })
    {
        driver.OpenPort(5, QStringLiteral("115200,N,8,1"));
    }

    int errorsWith(int wanted) const { return errorsWithCode(errors, wanted); }

    std::shared_ptr<ScriptedLink> link;
    PicDriver driver;
    QSignalSpy errors{&driver, &PicDriver::aErrore};
    QSignalSpy completes{&driver, &PicDriver::aComplete};
};

} // namespace

class PicLine : public QObject
{
    Q_OBJECT

private slots:
    void whatIsSaid();
    void answersAmongOtherBytes();
    void halfAnAnswer();
    void noAnswerToTheFirstCommand();
    void answerThatComesLate();
    void silenceThatComesBack();
    void refusalIsNoError();
    void lossThatTheAbortFinds();
    void whoTheBoardIs_data();
    void whoTheBoardIs();
    void theAnswerThatNeverEnds();
    void anotherGeneratorIsTold();
    void timeToSettle();
    void refusedTimeToSettle();
    void everyOperationEnds_data();
    void everyOperationEnds();
};

void PicLine::whatIsSaid()
{
    Bench bench(obedient(20));
    QVERIFY(bench.link->written.isEmpty());
    QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    QVERIFY(bench.driver.PrepareSweep(8'980'000, -100));
    QVERIFY(bench.driver.SendFrequency("*", 0));
    // `!` frees the line first: the board may still be sweeping for a previous program.
    const QList<QByteArray> wanted{"!", "?\r", "A7000000\r", "B8980000\r", "D-100\r", "P\r", "*\r"};
    QCOMPARE(bench.link->written, wanted);
    QCOMPARE(bench.link->overtaken, 0);
    QCOMPARE(bench.errors.size(), 0);
}

void PicLine::answersAmongOtherBytes()
{
    Bench bench([](const QByteArray &bytes) {
        return ScriptedLink::Reply{"HELLO\r" + accepting(bytes) + "HELLO\r", 0};
    });
    QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 100));
    QCOMPARE(bench.errors.size(), 0);
}

// The driver frees the line and repeats the command.
void PicLine::halfAnAnswer()
{
    bool isFirst = true;
    Bench bench([&isFirst](const QByteArray &bytes) {
        if (bytes.startsWith('A') && std::exchange(isFirst, false))
            return ScriptedLink::Reply{"A", 0};
        return ScriptedLink::Reply{accepting(bytes), 0};
    });
    QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    const QList<QByteArray> wanted{"!", "?\r", "A7000000\r", "!", "A7000000\r"};
    QCOMPARE(bench.link->written, wanted);
    QCOMPARE(bench.errors.size(), 0);
}

void PicLine::noAnswerToTheFirstCommand()
{
    Bench bench([](const QByteArray &) { return ScriptedLink::Reply{}; });
    QVERIFY(!bench.driver.SendFrequency("A", 7'000'000));
    QCOMPARE(bench.errors.size(), 1);
    QCOMPARE(bench.errors.at(0).at(0).toInt(), 3);
    QCOMPARE(bench.errors.at(0).at(1).toString(), QStringLiteral("The board does not answer."));
    bench.driver.RunSweep();
    QCOMPARE(bench.completes.size(), 1);
    QCOMPARE(bench.errors.last().at(1).toString(), QStringLiteral("The board did not start the sweep."));
}

// An answer that arrives after 0.5 s must not be taken for the answer to another command.
void PicLine::answerThatComesLate()
{
    bool isFirst = true;
    Bench bench([&isFirst](const QByteArray &bytes) {
        const bool isLate = bytes.startsWith('B') && std::exchange(isFirst, false);
        return ScriptedLink::Reply{accepting(bytes), isLate ? 10'000 : 0};
    });
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 100));
    const QList<QByteArray> wanted{"!", "?\r", "B8980000\r", "!", "B8980000\r", "D100\r", "P\r"};
    QCOMPARE(bench.link->written, wanted);
    QCOMPARE(bench.link->overtaken, 1);
}

// The board answers neither the command nor the `!` that follows.
void PicLine::silenceThatComesBack()
{
    QList<QByteArray> unheard{"A7000000\r", "!"};
    Bench bench([&unheard, started = false](const QByteArray &bytes) mutable {
        started = started || bytes != "!";
        if (started && unheard.removeOne(bytes))
            return ScriptedLink::Reply{};
        return ScriptedLink::Reply{accepting(bytes), 0};
    });
    QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    QCOMPARE(bench.link->written, (QList<QByteArray>{"!", "?\r", "A7000000\r", "!", "!", "A7000000\r"}));
    QCOMPARE(bench.errorsWith(code::kBoard), 0);
}

void PicLine::refusalIsNoError()
{
    Bench bench([](const QByteArray &bytes) {
        return ScriptedLink::Reply{bytes.left(1) + (bytes == "!" ? "+\r" : "-\r"), 0};
    });
    QVERIFY(!bench.driver.SendFrequency("A", 7'000'000));
    QVERIFY(!bench.driver.PrepareSweep(8'980'000, 100));
    QCOMPARE(bench.errors.size(), 0);
    bench.driver.RunSweep();
    QCOMPARE(bench.completes.size(), 1);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
}

// No sweep arrives, and sending `!` to abort it fails because the device is gone: two errors, one aComplete.
void PicLine::lossThatTheAbortFinds()
{
    Bench bench(obedient());
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 100));
    bench.driver.RunSweep();
    QCOMPARE(bench.completes.size(), 0);
    bench.link->fatal = "!";
    QTRY_COMPARE(bench.completes.size(), 1);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
    QCOMPARE(bench.errorsWith(code::kPort), 1);
    QCOMPARE(bench.errors.size(), 2);
}

// Whatever the board answers to `?`, the driver asks once, and commands still work.
void PicLine::whoTheBoardIs_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("remark");
    const QString nobody = QStringLiteral("The board did not identify itself: \"%1\".");
    QTest::newRow("as usual") << QByteArray("?+CALVORN-PIC 1.0 AD9850 80000000 50\r") << QString();
    QTest::newRow("refused") << QByteArray("?-\r") << QString();
    QTest::newRow("a trimmed crystal") << QByteArray("?+X 1 ad9850 80001600 10000\r") << QString();
    QTest::newRow("nothing") << QByteArray("?+\r") << nobody.arg(QString());
    QTest::newRow("four words") << QByteArray("?+X 1 AD9850 80000000\r")
                                << nobody.arg(QStringLiteral("X 1 AD9850 80000000"));
    QTest::newRow("no clock") << QByteArray("?+X 1 AD9850 0 50\r") << nobody.arg(QStringLiteral("X 1 AD9850 0 50"));
    QTest::newRow("no time") << QByteArray("?+X 1 AD9850 1 10001\r")
                             << nobody.arg(QStringLiteral("X 1 AD9850 1 10001"));
    QTest::newRow("another chip")
        << QByteArray("?+X 1 AD9851 80000000 50\r")
        << QStringLiteral(
               "The board has an AD9851 with a clock of 80000000 Hz; the settings specify AD9850, 80000000 Hz.");
    QTest::newRow("a chip called %2")
        << QByteArray("?+X 1 %2 80000000 50\r")
        << QStringLiteral("The board has an %2 with a clock of 80000000 Hz; the settings specify AD9850, 80000000 Hz.");
    QTest::newRow("another clock")
        << QByteArray("?+X 1 AD9850 125000000 50\r")
        << QStringLiteral(
               "The board has an AD9850 with a clock of 125000000 Hz; the settings specify AD9850, 80000000 Hz.");
}

void PicLine::whoTheBoardIs()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, remark);
    Bench bench([answer](const QByteArray &bytes) {
        return ScriptedLink::Reply{bytes == "?\r" ? answer : accepting(bytes), 0};
    });
    QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 100));
    QCOMPARE(bench.link->written.count("?\r"), 1);
    QCOMPARE(bench.errors.size(), remark.isEmpty() ? 0 : 1);
    QCOMPARE(bench.errorsWith(code::kNoAction), bench.errors.size());
    if (!remark.isEmpty())
        QCOMPARE(bench.errors.at(0).at(1).toString(), remark);
}

// The driver frees the line and sends the pending command.
void PicLine::theAnswerThatNeverEnds()
{
    Bench bench([](const QByteArray &bytes) {
        return ScriptedLink::Reply{bytes == "?\r" ? "?+" + QByteArray(1'000, 'x') : accepting(bytes), 0};
    });
    QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    QCOMPARE(bench.link->written, (QList<QByteArray>{"!", "?\r", "!", "A7000000\r"}));
    QCOMPARE(bench.errors.size(), 0);
}

void PicLine::anotherGeneratorIsTold()
{
    Bench bench([](const QByteArray &bytes) {
        return ScriptedLink::Reply{bytes == "?\r" ? "?+X 1 AD9851 180000000 50\r" : accepting(bytes), 0};
    });
    for (int round = 0; round < 3; ++round)
        QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    QCOMPARE(bench.errors.size(), 1);
}

// The driver sends the settling time with each plan, because the board may have been reset in the meantime.
void PicLine::timeToSettle()
{
    Bench bench(obedient(), 400);
    QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 100));
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 200));
    const QList<QByteArray> wanted{"!",   "?\r",    "A7000000\r", "S400\r", "B8980000\r", "D100\r",
                                   "P\r", "S400\r", "B8980000\r", "D200\r", "P\r"};
    QCOMPARE(bench.link->written, wanted);
    QCOMPARE(bench.errors.size(), 0);
}

void PicLine::refusedTimeToSettle()
{
    Bench bench(
        [](const QByteArray &bytes) {
            return ScriptedLink::Reply{bytes.startsWith('S') ? QByteArray("S-\r") : accepting(bytes), 0};
        },
        20'000);
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 100));
    QCOMPARE(bench.errors.size(), 1);
    QCOMPARE(bench.errors.at(0).at(0).toInt(), code::kSetting);
    QCOMPARE(bench.errors.at(0).at(1).toString(),
             QStringLiteral("The board does not support a settling time of 20000 µs."));
}

void PicLine::everyOperationEnds_data()
{
    QTest::addColumn<QByteArray>("answered"); // letters of the commands that the board answers, after afterMs
    QTest::addColumn<int>("afterMs");
    QTest::addColumn<QByteArray>("babble");
    QTest::newRow("silent") << QByteArray() << 0 << QByteArray();
    QTest::newRow("never stops talking") << QByteArray() << 0 << QByteArray("U");
    QTest::newRow("talks, and aborts") << QByteArray("!") << 0 << QByteArray("U");
    QTest::newRow("slow, then silent") << QByteArray("!BD") << 450 << QByteArray();
    QTest::newRow("slow, and never stops talking") << QByteArray("!BD") << 450 << QByteArray("U");
}

void PicLine::everyOperationEnds()
{
    QFETCH(QByteArray, answered);
    QFETCH(int, afterMs);
    QFETCH(QByteArray, babble);
    Bench bench([answered, afterMs](const QByteArray &bytes) {
        return answered.contains(bytes.at(0)) ? ScriptedLink::Reply{accepting(bytes), afterMs} : ScriptedLink::Reply{};
    });
    bench.link->babble = babble;
    const auto takesMs = [](const auto &operation) {
        QElapsedTimer clock;
        clock.start();
        operation();
        return clock.elapsed();
    };
    const qint64 prepareMs = takesMs([&bench] { QVERIFY(!bench.driver.PrepareSweep(8'980'000, 100)); });
    const qint64 sendMs = takesMs([&bench] { QVERIFY(!bench.driver.SendFrequency("A", 7'000'000)); });
    const qint64 runMs = takesMs([&bench] { bench.driver.RunSweep(); });
    qInfo("prepare %lld ms, send %lld ms, run %lld ms of %d", prepareMs, sendMs, runMs, kOperationMs);
    QVERIFY(prepareMs < kProgramWaitsMs);
    QVERIFY(sendMs < kProgramWaitsMs);
    QVERIFY(runMs < kProgramWaitsMs);
    QCOMPARE(bench.completes.size(), 1);
    QVERIFY(bench.errorsWith(code::kBoard) >= 2);
    QCOMPARE(bench.errorsWith(code::kBoard), bench.errors.size());
}

QTEST_GUILESS_MAIN(PicLine)
#include "pic_line.moc"
