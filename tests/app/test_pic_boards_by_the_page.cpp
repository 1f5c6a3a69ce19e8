// SPDX-License-Identifier: MIT
// The window with the real server and a PIC board written from docs/hardware/ alone: plans that the board does not
// apply, lines that lose or change a byte, and what the board reports about itself.
#include "tests/support/page_scene.h"
#include "tests/support/quiet_time.h"

#include <QElapsedTimer>

#include <memory>

using namespace calvorn;
using calvorn::test::Rows;
using calvorn::test::Scene;

namespace {

constexpr int kOperationMs = 2'000;
const auto kEnds = QStringLiteral("The board no longer delivers valid sweeps; the sweep ends.");

// The window with a board that has these faults from the start.
struct PicScene
{
    explicit PicScene(const QList<QByteArray> &faults = {})
    {
        for (const QByteArray &fault : faults)
            board.tell(fault);
        QElapsedTimer clock;
        clock.start();
        scene = std::make_unique<Scene>(kInterfacePic, test::pageSettings(kInterfacePic, board.link()));
        startMs = clock.elapsed();
    }

    Scene *operator->() const { return scene.get(); }
    bool sweepEndsByItself() const
    {
        return QTest::qWaitFor([this] { return scene->logs(kEnds) && scene->isIdle(); }, 15'000);
    }
    QByteArray allOfTheLog() const { return scene->log().join(u'\n').toLocal8Bit(); }

    test::SerialPageBoard board{"pic_board_by_the_page", {QStringLiteral("--paced")}};
    std::unique_ptr<Scene> scene;
    qint64 startMs = 0;
};

} // namespace

class TestPicBoardsByThePage : public QObject
{
    Q_OBJECT

private slots:
    void aPlanThatIsNotTakenShowsNothing_data();
    void aPlanThatIsNotTakenShowsNothing();
    void framesWithoutAPlanShowNothing();
    void framesOfTheFormerPlanAreNotShown();
    void aRestartEndsTheSweep();
    void aSpoiltLineIsSentAgain();
    void aLostByteShowsNoWrongRow();
    void aSlowDetectorIsWaitedFor();
    void aBoardThatRefusesTheQueryWorks();
    void queriesWithoutAGoodAnswer_data();
    void queriesWithoutAGoodAnswer();
    void anotherGeneratorIsToldOnce_data();
    void anotherGeneratorIsToldOnce();
};

void TestPicBoardsByThePage::aPlanThatIsNotTakenShowsNothing_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<bool>("inMidSweep");
    for (const char *fault : {"stale", "stalestart", "stalestep"}) {
        QTest::addRow("%s, idle", fault) << QByteArray(fault) << false;
        QTest::addRow("%s, in mid-sweep", fault) << QByteArray(fault) << true;
    }
}

// The board acknowledges the second plan but sweeps the first one.
void TestPicBoardsByThePage::aPlanThatIsNotTakenShowsNothing()
{
    QFETCH(QByteArray, fault);
    QFETCH(bool, inMidSweep);
    PicScene scene;
    scene->setRange(10'000'000, 20'000'000);
    QVERIFY(scene->rangeIsTaken());
    QVERIFY(scene->sweeps());
    if (!inMidSweep)
        QVERIFY(scene->stops());
    scene.board.tell(fault + " on");
    const int before = scene->right;
    scene->setRange(2'000'000, 9'000'000);
    if (!inMidSweep) {
        QVERIFY(scene->rangeIsTaken());
        scene->click("cmdStart");
    }
    QVERIFY2(scene.sweepEndsByItself(), scene.allOfTheLog().constData());
    QCOMPARE(scene->wrong, 0);
    QVERIFY(scene->right - before <= (inMidSweep ? 30 : 0)); // received before the range changed
    QCOMPARE(test::rowsOf(*scene->table(), kInterfacePic), Rows::Empty);
    QVERIFY(scene->text("txtErrori") != u"0");
    QVERIFY(scene.board.tell("state").contains("sweeping=0"));
    scene.board.tell(fault + " off");
    scene->setRange(1'000'000, 2'000'000);
    QVERIFY(scene->rangeIsTaken());
    QVERIFY(scene->sweeps());
    QCOMPARE(scene->wrong, 0);
}

// Old firmware did not include the plan in the CRC.
void TestPicBoardsByThePage::framesWithoutAPlanShowNothing()
{
    PicScene scene({"oldcrc on"});
    scene->click("cmdStart");
    QVERIFY2(scene.sweepEndsByItself(), scene.allOfTheLog().constData());
    QCOMPARE(scene->right + scene->wrong, 0);
    QVERIFY(scene->text("txtErrori") != u"0");
}

// Delayed frames from the previous plan look like the first frames of the new plan.
void TestPicBoardsByThePage::framesOfTheFormerPlanAreNotShown()
{
    PicScene scene;
    scene.board.tell("oldframes 3");
    scene->setRange(10'000'000, 20'000'000);
    QVERIFY(scene->rangeIsTaken());
    QVERIFY(scene->sweeps());
    for (const bool inMidSweep : {true, false}) {
        if (!inMidSweep)
            QVERIFY(scene->stops());
        const int damaged = scene->text("txtErrori").toInt();
        scene->setRange(inMidSweep ? 3'000'000 : 4'000'000, 9'000'000);
        QVERIFY(scene->rangeIsTaken());
        QVERIFY(scene->sweeps(3));
        QCOMPARE(scene->wrong, 0);
        QVERIFY(scene->text("txtErrori").toInt() > damaged);
    }
}

// The board briefly loses power while the port remains open.
void TestPicBoardsByThePage::aRestartEndsTheSweep()
{
    PicScene scene;
    QVERIFY(scene->sweeps());
    scene.board.tell("restart");
    QVERIFY2(scene.sweepEndsByItself(), scene.allOfTheLog().constData());
    QVERIFY(scene->sweeps());
    QVERIFY(scene->stops());
    QCOMPARE(scene->wrong, 0);
}

void TestPicBoardsByThePage::aSpoiltLineIsSentAgain()
{
    PicScene scene;
    for (int place = 1; place < 36; place += 3) {
        scene.board.tell("spoil " + QByteArray::number(place));
        scene->setRange(2'000'000 + place, 9'000'000);
        QVERIFY(scene->rangeIsTaken());
        QVERIFY2(scene->sweeps(1), qPrintable(QStringLiteral("byte %1").arg(place)));
        QVERIFY(scene->stops());
    }
    QCOMPARE(scene->wrong, 0);
    QVERIFY(scene->desktop.boxes.isEmpty());
}

// Single bytes are not acknowledged, so after a loss the board may read a different number.
void TestPicBoardsByThePage::aLostByteShowsNoWrongRow()
{
    PicScene scene;
    for (int place = 1; place < 36; place += 3) {
        scene.board.tell("lose " + QByteArray::number(place));
        scene->setRange(2'000'000 + place, 9'000'000);
        QVERIFY(scene->rangeIsTaken());
        const int before = scene->right;
        scene->click("cmdStart");
        QVERIFY(QTest::qWaitFor([&] { return scene->right > before || scene->isIdle(); }, 10'000));
        QVERIFY(scene->stops());
    }
    scene.board.tell("lose 0");
    QVERIFY(scene->sweeps());
    QCOMPARE(scene->wrong, 0);
}

// A frame takes 1.2 s, longer than the timeout for a fast board.
void TestPicBoardsByThePage::aSlowDetectorIsWaitedFor()
{
    PicScene scene({"settling 3000"});
    QVERIFY2(scene->sweeps(), scene.allOfTheLog().constData());
    QVERIFY(!scene->isIdle());
    QVERIFY(scene->stops());
    QVERIFY(!scene->logs(kEnds));
    QCOMPARE(scene->wrong, 0);
    QCOMPARE(scene->text("txtErrori"), QStringLiteral("0"));
}

void TestPicBoardsByThePage::aBoardThatRefusesTheQueryWorks()
{
    PicScene scene({"noquery on"});
    QVERIFY(scene.board.tell("heard").contains("?;"));
    QVERIFY(scene->sweeps(5));
    QVERIFY(scene->stops());
    QCOMPARE(scene->wrong, 0);
    QVERIFY(scene->desktop.boxes.isEmpty());
    QCOMPARE(scene->text("txtErrori"), QStringLiteral("0"));
}

void TestPicBoardsByThePage::queriesWithoutAGoodAnswer_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QByteArray>("good");
    const auto told = [](const char *name, const QByteArray &bytes) {
        QTest::newRow(name) << "told " + bytes.toHex() << QByteArray("told");
    };
    QTest::newRow("no end") << QByteArray("endless on") << QByteArray("endless off");
    QTest::newRow("a long name") << "toldname " + QByteArray(60, 'N') << QByteArray("toldname PAGE-PIC");
    told("60 bytes, then silence", "?+" + QByteArray(58, 'N'));
    told("half, then silence", "?+PAGE-PIC 2.0 AD9850");
    told("no words", "?+\r");
    told("four words", "?+PAGE-PIC 2.0 AD9850 80000000\r");
    told("six words", "?+PAGE-PIC 2.0 AD9850 80000000 50 1\r");
    told("no numbers", "?+PAGE-PIC 2.0 AD9850 fast soon\r");
    told("numbers beyond 64 bits", "?+P 2 AD9850 99999999999999999999 99999999999999999\r");
    told("a settling time below all", "?+PAGE-PIC 2.0 AD9850 80000000 -1\r");
    told("garbage", QByteArray::fromHex("3F2B00FF1B5B324AA55A80C0E0F8FEC3280A09200D"));
    told("another answer", "A+\r");
}

// Neither start-up nor a click takes longer than with a silent board, and the board works afterwards.
void TestPicBoardsByThePage::queriesWithoutAGoodAnswer()
{
    QFETCH(QByteArray, fault);
    QFETCH(QByteArray, good);
    PicScene scene({fault});
    QVERIFY2(scene.startMs <= 2 * kOperationMs, // opening the port, and setting the frequency
             qPrintable(QStringLiteral("the start took %1 ms").arg(scene.startMs)));
    QVERIFY(scene.board.tell("heard").contains("?;"));
    QElapsedTimer clock;
    clock.start();
    scene->click("cmdFreqDDS");
    QVERIFY2(clock.elapsed() <= kOperationMs, qPrintable(QStringLiteral("the click took %1 ms").arg(clock.elapsed())));
    scene.board.tell(good);
    test::pauseOfAPerson(200);
    QVERIFY2(scene->sweeps(), scene.allOfTheLog().constData());
    QVERIFY(scene->stops());
    QCOMPARE(scene->wrong, 0);
}

void TestPicBoardsByThePage::anotherGeneratorIsToldOnce_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("word");
    QTest::newRow("chip") << QByteArray("toldchip AD9851") << QStringLiteral("AD9851");
    QTest::newRow("clock") << QByteArray("toldclock 125000000") << QStringLiteral("125000000");
}

void TestPicBoardsByThePage::anotherGeneratorIsToldOnce()
{
    QFETCH(QByteArray, fault);
    QFETCH(QString, word);
    PicScene scene({fault});
    QVERIFY2(QTest::qWaitFor([&] { return scene->logs(word); }, 5'000), scene.allOfTheLog().constData());
    test::nothingHappensFor(100);
    const qsizetype lines = scene->log().filter(word).size();
    for (int round = 0; round < 2; ++round) {
        QVERIFY(scene->sweeps());
        QVERIFY(scene->stops());
    }
    QCOMPARE(scene->log().filter(word).size(), lines);
    QCOMPARE(scene->wrong, 0);
    QVERIFY(scene->desktop.boxes.isEmpty());
}

QTEST_MAIN(TestPicBoardsByThePage)
#include "test_pic_boards_by_the_page.moc"
