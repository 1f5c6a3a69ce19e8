// SPDX-License-Identifier: MIT
// The window with the real server and boards written from docs/hardware/ alone, both healthy and faulty. On these
// boards, each count encodes the frequency at which it was measured.
#include "tests/support/page_scene.h"
#include "tests/support/quiet_time.h"

#include <QElapsedTimer>

#include <csignal>
#include <memory>

using namespace calvorn;
using calvorn::test::Rows;
using calvorn::test::Scene;

namespace {

constexpr int kBudgetMs = 3'000;                     // for everything triggered by one click
const QStringList kPaced{QStringLiteral("--paced")}; // as slow as the real line

struct SerialScene
{
    explicit SerialScene(std::int16_t interfaceType, bool isThere = true)
        : board(interfaceType == kInterfacePic ? "pic_board_by_the_page" : "vna_board_by_the_page", kPaced)
    {
        if (!isThere)
            board.tell("unplug");
        scene = std::make_unique<Scene>(interfaceType, test::pageSettings(interfaceType, board.link()));
    }

    Scene *operator->() const { return scene.get(); }

    test::SerialPageBoard board;
    std::unique_ptr<Scene> scene;
};

// Waits until the board has received a command since "heard" was last read.
bool owesAReply(test::SerialPageBoard &board)
{
    return QTest::qWaitFor([&board] { return board.tell("heard").trimmed() != "heard"; });
}

QByteArray parallelSettings(const QByteArray &more = {})
{
    return test::pageSettings(kInterfaceLpt) + more;
}

} // namespace

class TestBoardsByThePage : public QObject
{
    Q_OBJECT

private slots:
    void healthyBoards_data();
    void healthyBoards();
    void resetInMidSweep();
    void resetInMidSweepOfTheOthers_data();
    void resetInMidSweepOfTheOthers();
    void modeChangeInMidSweep();
    void closingInMidSweepParksThePic();
    void aRefusedStartFrequencyStartsNothing_data();
    void aRefusedStartFrequencyStartsNothing();
    void strayBytesAreNoLostConnection_data();
    void strayBytesAreNoLostConnection();
    void aBoardThatComesLaterIsFound_data();
    void aBoardThatComesLaterIsFound();
    void aParallelPortThatComesLaterIsFound_data();
    void aParallelPortThatComesLaterIsFound();
    void lateRepliesOfTheMiniVna();
    void aStrayByteWithTheFirstCommand();
    void wrongAnswersCostOneBudget_data();
    void wrongAnswersCostOneBudget();
    void oneAbortAtATime();
    void aRemnantIsNotShown();
    void aParallelPortThatGoesIsTold();
    void outputsAreSetWithOneShift_data();
    void outputsAreSetWithOneShift();
    void settingsThatCannotWork_data();
    void settingsThatCannotWork();
    void anAddressThatDoesNotFit();
    void aFrozenServerIsTold_data();
    void aFrozenServerIsTold();
    void anAccessThatHangsIsTold();
    void closingSwitchesTheGeneratorOff();
};

namespace {

void addInterfaces(std::initializer_list<std::int16_t> interfaces)
{
    QTest::addColumn<int>("interfaceType");
    for (const int type : interfaces)
        QTest::newRow(type == kInterfacePic ? "PIC" : type == kInterfaceVna ? "MiniVNA" : "parallel port") << type;
}

} // namespace

void TestBoardsByThePage::healthyBoards_data()
{
    addInterfaces({kInterfacePic, kInterfaceLpt, kInterfaceVna});
}

void TestBoardsByThePage::healthyBoards()
{
    QFETCH(int, interfaceType);
    const auto type = static_cast<std::int16_t>(interfaceType);
    std::unique_ptr<test::ParallelPageBoard> parallel;
    std::unique_ptr<test::SerialPageBoard> serial;
    if (type == kInterfaceLpt)
        parallel = std::make_unique<test::ParallelPageBoard>();
    else
        serial = std::make_unique<test::SerialPageBoard>(
            type == kInterfacePic ? "pic_board_by_the_page" : "vna_board_by_the_page", kPaced);
    Scene scene(type, test::pageSettings(type, serial ? serial->link() : QString()));
    for (const auto &[start, stop] : {std::pair{1'000'000, 10'000'000}, {6'500'000, 7'700'000}, {20'000'000, 1'000}}) {
        scene.setRange(start, stop);
        QVERIFY(scene.rangeIsTaken());
        QVERIFY(scene.sweeps(5));
        QVERIFY(scene.stops());
    }
    QCOMPARE(scene.wrong, 0);
    QVERIFY(scene.desktop.boxes.isEmpty());
    QCOMPARE(scene.text("txtErrori"), QStringLiteral("0"));
}

void TestBoardsByThePage::resetInMidSweep()
{
    SerialScene scene(kInterfacePic);
    scene->setRange(6'000'000, 8'000'000);
    QVERIFY(scene->rangeIsTaken());
    QVERIFY(scene->sweeps());
    scene->click("cmdReset");
    // The board has stopped sweeping, its generator is at 1 MHz, and the buttons are enabled again.
    QVERIFY(scene.board.tell("state").startsWith("state gen=1000000 start=0 step=0 prepared=0 sweeping=0"));
    QTRY_VERIFY(scene->isIdle());
    const int before = scene->right;
    scene->setRange(7'000'000, 8'000'000);
    test::nothingHappensFor(200);
    QCOMPARE(scene->right, before);
    QVERIFY(scene->sweeps());
    QCOMPARE(scene->wrong, 0);
    QVERIFY(scene->desktop.boxes.isEmpty());
}

void TestBoardsByThePage::resetInMidSweepOfTheOthers_data()
{
    addInterfaces({kInterfaceLpt, kInterfaceVna});
}

// These boards continue sweeping after a reset, and every sweep remains correct.
void TestBoardsByThePage::resetInMidSweepOfTheOthers()
{
    QFETCH(int, interfaceType);
    const auto type = static_cast<std::int16_t>(interfaceType);
    const test::ParallelPageBoard parallel;
    test::SerialPageBoard serial("vna_board_by_the_page", kPaced);
    Scene scene(type, test::pageSettings(type, serial.link()));
    QVERIFY(scene.sweeps());
    for (int round = 0; round < 5; ++round) {
        scene.click("cmdReset");
        scene.setRange(1'000'000 + round, 5'000'000);
        QVERIFY(scene.rangeIsTaken());
        QVERIFY(scene.sweeps());
    }
    QVERIFY(scene.stops());
    QCOMPARE(scene.wrong, 0);
}

// A sweep that began in the previous mode is not converted according to the new mode.
void TestBoardsByThePage::modeChangeInMidSweep()
{
    SerialScene scene(kInterfaceVna);
    QVERIFY(scene->sweeps());
    for (int change = 0; change < 30; ++change) {
        test::pauseOfAPerson(change % 7);
        scene->click("cmdMisura");
        if (change % 5 == 0)
            QVERIFY(scene->sweeps(1));
    }
    QVERIFY(scene->sweeps(3));
    QCOMPARE(scene->wrong, 0);
}

void TestBoardsByThePage::closingInMidSweepParksThePic()
{
    SerialScene scene(kInterfacePic);
    QVERIFY(scene->sweeps());
    scene->window->close();
    QVERIFY(scene.board.tell("state").startsWith("state gen=1000000 "));
    QVERIFY(scene.board.tell("state").contains("sweeping=0"));
}

void TestBoardsByThePage::aRefusedStartFrequencyStartsNothing_data()
{
    QTest::addColumn<bool>("inMidSweep");
    QTest::newRow("idle") << false;
    QTest::newRow("in mid-sweep") << true;
}

// The board retains its previous preparation, as undocumented firmware may do.
void TestBoardsByThePage::aRefusedStartFrequencyStartsNothing()
{
    QFETCH(bool, inMidSweep);
    SerialScene scene(kInterfacePic);
    scene.board.tell("keep on");
    scene->setRange(10'000'000, 20'000'000);
    QVERIFY(scene->rangeIsTaken());
    QVERIFY(scene->sweeps());
    if (!inMidSweep)
        QVERIFY(scene->stops());
    const int before = scene->right;
    scene->setRange(90'000'000, 100'000'000);
    if (!inMidSweep) {
        QVERIFY(scene->rangeIsTaken());
        scene->click("cmdStart");
    }
    QTRY_VERIFY(scene->isIdle());
    test::nothingHappensFor(100);
    QVERIFY(scene->isIdle());
    QVERIFY(scene.board.tell("state").contains("sweeping=0"));
    QVERIFY(scene->right - before <= (inMidSweep ? 30 : 0)); // received before the range changed
    QCOMPARE(test::rowsOf(*scene->table(), kInterfacePic), Rows::Empty);
    QVERIFY(scene->logs(QStringLiteral("Errore inizializza ciclo sweep")));
    scene->setRange(1'000'000, 2'000'000);
    QVERIFY(scene->rangeIsTaken());
    QVERIFY(scene->sweeps());
    QCOMPARE(scene->wrong, 0);
}

void TestBoardsByThePage::strayBytesAreNoLostConnection_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QByteArray>("stray");
    QTest::newRow("PIC, a stale answer at the opening") << int{kInterfacePic} << QByteArray("strayopen 212B0D");
    QTest::newRow("PIC, chatter") << int{kInterfacePic} << QByteArray("chatter 1");
    QTest::newRow("MiniVNA, stray bytes at the opening") << int{kInterfaceVna} << QByteArray("strayopen 55AA");
}

void TestBoardsByThePage::strayBytesAreNoLostConnection()
{
    QFETCH(int, interfaceType);
    QFETCH(QByteArray, stray);
    const auto type = static_cast<std::int16_t>(interfaceType);
    test::SerialPageBoard board(type == kInterfacePic ? "pic_board_by_the_page" : "vna_board_by_the_page", kPaced);
    board.tell(stray);
    Scene scene(type, test::pageSettings(type, board.link()));
    QVERIFY2(scene.sweeps(), qPrintable(scene.log().join(u'\n')));
    QVERIFY(scene.stops());
    QVERIFY2(!scene.logs(QStringLiteral("was lost")), qPrintable(scene.log().join(u'\n')));
    QVERIFY(scene.desktop.boxes.isEmpty());
    QCOMPARE(scene.wrong, 0);
}

void TestBoardsByThePage::aBoardThatComesLaterIsFound_data()
{
    addInterfaces({kInterfacePic, kInterfaceVna});
}

void TestBoardsByThePage::aBoardThatComesLaterIsFound()
{
    QFETCH(int, interfaceType);
    SerialScene scene(static_cast<std::int16_t>(interfaceType), false);
    QCOMPARE(scene->boxesWith(QStringLiteral("Wrong serial port number (COM5).")), 1);
    scene->click("cmdStart");
    QTRY_VERIFY(scene->isIdle());
    // The log contains the actual reason.
    QVERIFY(scene->logs(QStringLiteral("2 There is no device ") + scene.board.link()));
    QVERIFY(!scene->logs(QStringLiteral("is not open")));
    scene.board.tell("plug");
    QVERIFY(scene->sweeps());
    QVERIFY(scene->stops());
    QCOMPARE(scene->wrong, 0);
    QCOMPARE(scene->desktop.boxes.size(), 1);
}

void TestBoardsByThePage::aParallelPortThatComesLaterIsFound_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("absent") << QByteArray("absent")
                            << QStringLiteral("There is no parallel port at the address 888 (0x378).");
    QTest::newRow("busy") << QByteArray("busy") << QStringLiteral("/dev/parport0 is in use by another program.");
}

void TestBoardsByThePage::aParallelPortThatComesLaterIsFound()
{
    QFETCH(QByteArray, fault);
    QFETCH(QString, sentence);
    const test::ParallelPageBoard board;
    board.setFault(fault);
    Scene scene(kInterfaceLpt, parallelSettings("[Aux1]\r\nEnabled=1\r\n"));
    QCOMPARE(scene.boxesWith(QStringLiteral("Parallel port not initialized.")), 1);
    scene.click("cmdStart");
    QTRY_VERIFY(scene.isIdle());
    QTRY_COMPARE(scene.boxesWith(sentence), 1);
    board.setFault({});
    QVERIFY(scene.sweeps());
    QVERIFY(scene.stops());
    QCOMPARE(scene.wrong, 0);
    QCOMPARE(scene.desktop.boxes.size(), 2);
}

void TestBoardsByThePage::lateRepliesOfTheMiniVna()
{
    SerialScene scene(kInterfaceVna);
    QVERIFY(scene->sweeps());
    for (const int late : {1'650, 1'800, 2'200}) {
        scene.board.tell("heard");
        scene.board.tell("latenext 1 " + QByteArray::number(late));
        QVERIFY(owesAReply(scene.board));
        scene->setRange(2'000'000 + late, 9'000'000);
        // On a busy machine, three replies in a row may be cut off; the sweep then ends and the test restarts it.
        QVERIFY2(scene->sweeps(3) || (scene->isIdle() && scene->sweeps(3)), qPrintable(scene->log().join(u'\n')));
    }
    scene.board.tell("heard");
    scene.board.tell("lateeach 1650 2200");
    QVERIFY(owesAReply(scene.board));
    scene->setRange(3'000'000, 9'000'000);
    QTRY_VERIFY_WITH_TIMEOUT(scene->isIdle(), 20'000); // gave up
    scene.board.tell("lateeach 0 0");
    test::giveTheBoard(2'500); // to send the remaining replies
    QVERIFY(scene->sweeps(3));
    QCOMPARE(scene->wrong, 0);
}

void TestBoardsByThePage::aStrayByteWithTheFirstCommand()
{
    test::SerialPageBoard board("vna_board_by_the_page", kPaced);
    board.tell("strayonce 00");
    Scene scene(kInterfaceVna, test::pageSettings(kInterfaceVna, board.link()));
    test::nothingHappensFor(600);
    QVERIFY(!scene.logs(QStringLiteral("does not answer")));
    // The generator is nevertheless set to 1 MHz by the last word of the last command.
    QVERIFY(board.tell("state").startsWith("state word=10737418 "));
    QVERIFY(scene.sweeps());
    QCOMPARE(scene.wrong, 0);
}

void TestBoardsByThePage::wrongAnswersCostOneBudget_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::newRow("answers wrongly") << QByteArray("wrong on");
    QTest::newRow("says nothing") << QByteArray("mute on");
    QTest::newRow("answers after 450 ms") << QByteArray("late 450");
    QTest::newRow("does not answer the abort") << QByteArray("noabort on");
}

void TestBoardsByThePage::wrongAnswersCostOneBudget()
{
    QFETCH(QByteArray, fault);
    SerialScene scene(kInterfacePic);
    QVERIFY(scene->sweeps());
    QVERIFY(scene->stops());
    scene.board.tell(fault);
    for (const char *button : {"cmdStart", "cmdReset", "cmdFreqDDS"}) {
        QElapsedTimer clock;
        clock.start();
        if (scene->isShown(button))
            scene->click(button);
        // FakeDesktop counts the one-second sleep of a reset instead of sleeping.
        const int slept = std::exchange(scene->desktop.sleptMs, 0);
        QVERIFY2(clock.elapsed() + slept <= kBudgetMs, qPrintable(QString::number(clock.elapsed())));
        static_cast<void>(scene->stops());
        test::pauseOfAPerson(1'600); // so that the next click is separate
    }
    QCOMPARE(scene->wrong, 0);
}

// The driver waits for the reply to an abort before it sends another one, even while closing.
void TestBoardsByThePage::oneAbortAtATime()
{
    SerialScene scene(kInterfacePic);
    QVERIFY(scene->sweeps());
    scene.board.tell("late 120"); // well below the half second after which an abort is repeated
    scene.board.tell("heard");
    scene->window->close();
    const QByteArray heard = scene.board.tell("heard");
    QCOMPARE(heard.count('!'), 1);
    QVERIFY(heard.contains("!A1000000;"));
}

void TestBoardsByThePage::aRemnantIsNotShown()
{
    SerialScene scene(kInterfacePic);
    scene.board.tell("firstnumber 57");
    for (int round = 0; round < 5; ++round) {
        QVERIFY(scene->sweeps());
        QVERIFY(scene->stops());
    }
    QCOMPARE(scene->wrong, 0);
    QCOMPARE(scene->text("txtErrori"), QStringLiteral("5"));
}

void TestBoardsByThePage::aParallelPortThatGoesIsTold()
{
    const test::ParallelPageBoard board;
    Scene scene(kInterfaceLpt, parallelSettings());
    QVERIFY(scene.sweeps());
    board.setFault("gone");
    QTRY_VERIFY(scene.isIdle());
    QCOMPARE(scene.boxesWith(QStringLiteral("The parallel port /dev/parport0 has disappeared.")), 1);
    QCOMPARE(scene.wrong, 0);
    QCOMPARE(test::rowsOf(*scene.table(), kInterfaceLpt), Rows::Right); // the last good sweep remains
    board.setFault({});
    QVERIFY(scene.sweeps());
    QCOMPARE(scene.wrong, 0);
}

void TestBoardsByThePage::outputsAreSetWithOneShift_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QByteArray>("bytes"); // on Aux1 and Aux2
    QTest::newRow("both") << QByteArray("[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=1\r\n") << QByteArray("05 09");
    QTest::newRow("inverse") << QByteArray("[Aux1]\r\nEnabled=1\r\nInverse Logic=1\r\n"
                                           "[Aux2]\r\nEnabled=1\r\nInverse Logic=1\r\n")
                             << QByteArray("FA F6");
    QTest::newRow("one is not enabled") << QByteArray("[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=0\r\n")
                                        << QByteArray("05 00");
    QTest::newRow("one is not enabled, inverse")
        << QByteArray("[Aux1]\r\nEnabled=0\r\nInverse Logic=1\r\n[Aux2]\r\nEnabled=1\r\nInverse Logic=1\r\n")
        << QByteArray("FF F6");
}

// From opening the port until the program exits, the outputs carry no other byte.
void TestBoardsByThePage::outputsAreSetWithOneShift()
{
    QFETCH(QByteArray, settings);
    QFETCH(QByteArray, bytes);
    const test::ParallelPageBoard board;
    QByteArray all = test::pageSettings(kInterfaceLpt);
    all = all.left(all.indexOf("[Aux1]")) + settings;
    all.replace("Aux_1=0", "Aux_1=5").replace("Aux_2=0", "Aux_2=9");
    Scene scene(kInterfaceLpt, all);
    QVERIFY(scene.sweeps());
    QVERIFY(scene.stops());
    scene.window->close();
    // Claiming the port itself latches the registers' power-up contents.
    const QList<QByteArray> shown = board.events("aux");
    QVERIFY(shown.contains(bytes));
    for (const QByteArray &pair : shown.mid(shown.first() == bytes ? 0 : 1))
        QCOMPARE(pair, bytes);
}

void TestBoardsByThePage::settingsThatCannotWork_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("AD9850 with a multiplier")
        << QByteArray("DDS Multiplier=1") << QByteArray("DDS Multiplier=6")
        << QStringLiteral("[Config] DDS Multiplier=6: the AD9850 has no multiplier; the value must be 1.");
    QTest::newRow("AD9851 with a wrong multiplier")
        << QByteArray("DDS Device=AD9850\r\nDDS Multiplier=1") << QByteArray("DDS Device=AD9851\r\nDDS Multiplier=4")
        << QStringLiteral("[Config] DDS Multiplier=4: for an AD9851, the value must be 1 or 6.");
    QTest::newRow("AD9951 with a wrong multiplier")
        << QByteArray("DDS Device=AD9850\r\nDDS Multiplier=1") << QByteArray("DDS Device=AD9951\r\nDDS Multiplier=30")
        << QStringLiteral("[Config] DDS Multiplier=30: for an AD9951, the value must be 1 or 4 to 20.");
}

// Such settings are reported at start-up and at every sweep, and no tuning word is loaded.
void TestBoardsByThePage::settingsThatCannotWork()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, sentence);
    const test::ParallelPageBoard board;
    QByteArray settings = parallelSettings();
    QVERIFY(settings.contains(from));
    settings.replace(settings.indexOf(from), from.size(), to);
    Scene scene(kInterfaceLpt, settings);
    QTRY_COMPARE(scene.boxesWith(sentence), 1);
    test::nothingHappensFor(100);
    QCOMPARE(scene.desktop.boxes.size(), 1);
    scene.click("cmdStart");
    QTRY_COMPARE(scene.boxesWith(sentence), 2);
    QTRY_VERIFY(scene.isIdle());
    QCOMPARE(scene.right + scene.wrong, 0);
    QVERIFY(board.events("word").isEmpty());
}

// The server does not open another port instead of the intended one.
void TestBoardsByThePage::anAddressThatDoesNotFit()
{
    const test::ParallelPageBoard board;
    Scene scene(kInterfaceLpt, parallelSettings().replace("LPT=&H378", "LPT=&H10378"));
    QCOMPARE(scene.boxesWith(QStringLiteral("[Parallel Port] \"LPT\": ")), 1);
    QCOMPARE(scene.boxesWith(QStringLiteral("No port is opened.")), 1);
    QCOMPARE(scene.boxesWith(QStringLiteral("Parallel port not initialized.")), 1);
    scene.click("cmdStart");
    QTRY_VERIFY(scene.isIdle());
    QVERIFY(board.events("claim").isEmpty());
}

void TestBoardsByThePage::aFrozenServerIsTold_data()
{
    addInterfaces({kInterfacePic, kInterfaceLpt, kInterfaceVna});
}

void TestBoardsByThePage::aFrozenServerIsTold()
{
    QFETCH(int, interfaceType);
    const auto type = static_cast<std::int16_t>(interfaceType);
    const test::ParallelPageBoard parallel;
    test::SerialPageBoard serial(type == kInterfacePic ? "pic_board_by_the_page" : "vna_board_by_the_page", kPaced);
    Scene scene(type, test::pageSettings(type, serial.link()));
    QVERIFY(scene.sweeps());
    QCOMPARE(::kill(static_cast<pid_t>(scene.serverPid()), SIGSTOP), 0);
    QElapsedTimer clock;
    clock.start();
    QTRY_COMPARE_WITH_TIMEOUT(
        scene.boxesWith(QStringLiteral("The acquisition server did not answer and was terminated.")), 1, 5'000);
    qInfo("reported after %lld ms", clock.elapsed());
    QTRY_VERIFY(scene.isIdle());
    QVERIFY(scene.sweeps()); // with a new server
    QCOMPARE(scene.wrong, 0);
}

void TestBoardsByThePage::anAccessThatHangsIsTold()
{
    const test::ParallelPageBoard board;
    Scene scene(kInterfaceLpt, parallelSettings());
    QVERIFY(scene.sweeps());
    QElapsedTimer clock;
    clock.start();
    board.setFault("hang 60000");
    QTRY_COMPARE_WITH_TIMEOUT(
        scene.boxesWith(QStringLiteral("The acquisition server did not answer and was terminated.")), 1, 5'000);
    qInfo("reported after %lld ms", clock.elapsed());
    QTRY_VERIFY(scene.isIdle());
    board.setFault({});
    QVERIFY(scene.sweeps());
    QCOMPARE(scene.wrong, 0);
}

void TestBoardsByThePage::closingSwitchesTheGeneratorOff()
{
    const test::ParallelPageBoard board;
    Scene scene(kInterfaceLpt, parallelSettings());
    QVERIFY(scene.sweeps());
    QVERIFY(board.events("power-down").isEmpty());
    scene.window->close();
    const QList<QByteArray> events = board.events();
    QCOMPARE(board.events("power-down").size(), 1);
    QCOMPARE(events.mid(events.indexOf("power-down") + 1), (QList<QByteArray>{"release", "close"}));
}

QTEST_MAIN(TestBoardsByThePage)
#include "test_boards_by_the_page.moc"
