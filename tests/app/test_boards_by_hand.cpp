// SPDX-License-Identifier: MIT
// The test panel's buttons and the auxiliary outputs, down to their effect on the simulated boards.
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/quiet_time.h"
#include "tests/support/watched.h"
#include "tests/support/window_bench.h"

#include "display/sweep_graph.h"

#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

// Values of Instrument::sweepState().
constexpr std::int16_t kIdle = 0;
constexpr std::int16_t kSweeping = 4;

// Returns an interface's settings with some values changed; each change is {"section", "key", "value"}.
QByteArray settings(std::int16_t interfaceType, const QList<std::array<const char *, 3>> &changes = {})
{
    const test::ProgramFolder scratch({}, test::crystalSettings(interfaceType));
    for (const auto &[section, key, value] : changes)
        scratch.set(section, key, QString::fromLatin1(value));
    QFile file(scratch.iniPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The window with the real drivers. Discards the boards' events during start-up.
struct Bench
{
    explicit Bench(const QByteArray &ini)
        : window(test::Watched::program(), ini)
    {
        // The MiniVNA reads in a separate thread and acknowledges nothing, so the first frequency may be set late.
        if (window.configuration.interfaceType == kInterfaceVna)
            (void)QTest::qWaitFor(
                [this] { return boards.events(QStringLiteral("said")).size() >= 4 && boards.last() > 0.0; });
        settle();
        atStart = boards.events();
        boards.forget();
    }

    // Waits until the boards have been quiet for a while.
    void settle() const
    {
        QStringList before;
        do {
            before = boards.events();
            test::nothingHappensFor(50);
        } while (boards.events() != before);
    }

    // Clicks the button and returns the resulting events of the boards.
    QStringList after(const char *button, const QString &kind = {}) const
    {
        boards.forget();
        window.click(button);
        return boards.events(kind);
    }

    test::Watched boards;
    WindowBench window;
    QStringList atStart;
};

QStringList vnaCommand(const char *word)
{
    return {QStringLiteral("said 0"), QStringLiteral("said ") + QString::fromLatin1(word), QStringLiteral("said 1"),
            QStringLiteral("said 0")};
}

} // namespace

class TestBoardsByHand : public QObject
{
    Q_OBJECT

private slots:
    void thePicIsSentItsCommands();
    void thePicForgetsItsSweep();
    void thePicThatRefusesIsTold();
    void theParallelPortFollows();
    void theMiniVnaFollows();
    void theMiniVnaChangesItsMode();
    void otherInterfacesHaveNoModes();
    void theForcedStopGivesTheButtonsBack_data() { test::addInterfaceRows(); }
    void theForcedStopGivesTheButtonsBack();
    void drawAndClearTouchNoBoard_data() { test::addInterfaceRows(); }
    void drawAndClearTouchNoBoard();
    void everyBoxReachesItsLatch_data();
    void everyBoxReachesItsLatch();
    void storedOutputsAreThereAtStartUp();
    void thePotentiometerFollows();
    void outputsOfOtherInterfacesDoNotReact();
};

void TestBoardsByHand::thePicIsSentItsCommands()
{
    const Bench bench(settings(kInterfacePic));
    QCOMPARE(bench.after("cmdFreqDDS"), QStringList{QStringLiteral("said A8950000")});
    QCOMPARE(bench.after("cmdFreqStart"), QStringList{QStringLiteral("said B8950000")});
    QCOMPARE(bench.after("cmdFreqStep"), QStringList{QStringLiteral("said D250")});
    QCOMPARE(bench.window.desktop.sleptMs, 0);
    QCOMPARE(bench.after("cmdReset"), (QStringList{QStringLiteral("said *"), QStringLiteral("said A1000000")}));
    QCOMPARE(bench.window.desktop.sleptMs, 1000);
    QCOMPARE(bench.window.configuration.msgResult, std::int16_t{-1});
    QCOMPARE(bench.window.station->instrument.sweepState(), kIdle);
    QCOMPARE(bench.window.desktop.boxes.size(), 0);
}

void TestBoardsByHand::thePicForgetsItsSweep()
{
    const Bench bench(settings(kInterfacePic));
    const Instrument &instrument = bench.window.station->instrument;
    bench.window.click("cmdStart");
    QCOMPARE(instrument.sweepState(), kSweeping);
    QTRY_VERIFY(bench.boards.events(QStringLiteral("said")).contains(QStringLiteral("said G")));
    // The command that stops the sweep is the first to reach the board.
    QCOMPARE(bench.after("cmdReset"),
             (QStringList{QStringLiteral("said !"), QStringLiteral("said *"), QStringLiteral("said A1000000")}));
    QCOMPARE(bench.window.configuration.msgResult, std::int16_t{-1});
    QCOMPARE(instrument.sweepState(), kIdle);
    QTRY_VERIFY(bench.window.isShown("cmdStart"));
    QCOMPARE(instrument.sweepState(), kIdle);
    QCOMPARE(bench.window.desktop.boxes.size(), 0);
}

void TestBoardsByHand::thePicThatRefusesIsTold()
{
    Bench bench(settings(kInterfacePic, {{"Simulator", "Fault", "refuse"}}));
    test::FakeDesktop &desktop = bench.window.desktop;
    desktop.boxes.clear();
    desktop.beeps = 0;
    bench.window.click("cmdFreqDDS");
    QCOMPARE(desktop.lastText(), QStringLiteral("DDS frequency not initialized"));
    bench.window.click("cmdFreqStart");
    QCOMPARE(desktop.lastText(), QStringLiteral("Start frequency not initialized"));
    bench.window.click("cmdFreqStep");
    QCOMPARE(desktop.lastText(), QStringLiteral("Step frequency not initialized"));
    QCOMPARE(desktop.boxes.size(), 3);
    for (const auto &box : desktop.boxes) {
        QCOMPARE(box.icon, BoxIcon::Warning);
        QCOMPARE(box.title, QStringLiteral("Brenik - Calvorn  v2.0"));
    }
    bench.window.click("cmdReset");
    QCOMPARE(desktop.boxes.size(), 3);
    QCOMPARE(bench.window.configuration.msgResult, std::int16_t{0});
    QCOMPARE(desktop.beeps, 0);
}

void TestBoardsByHand::theParallelPortFollows()
{
    const Bench bench(settings(kInterfaceLpt));
    // The reset line stops the generator before the driver sets it to 1 MHz.
    const QStringList reset = bench.after("cmdReset");
    QCOMPARE(reset.first(), QStringLiteral("Hz 0.000000"));
    QVERIFY(std::abs(bench.boards.last() - 1e6) < 0.05);
    for (const char *button : {"cmdFreqDDS", "cmdFreqStart"}) {
        QCOMPARE(bench.after(button, QStringLiteral("Hz")).size(), 1);
        QVERIFY(std::abs(bench.boards.last() - 8950000.0) < 0.05);
        bench.window.click("cmdReset");
    }
    QCOMPARE(bench.after("cmdFreqStep"), QStringList());
    QCOMPARE(bench.window.desktop.boxes.size(), 0);
    QCOMPARE(bench.window.desktop.sleptMs, 0);
}

void TestBoardsByHand::theMiniVnaFollows()
{
    const Bench bench(settings(kInterfaceVna));
    const QString said = QStringLiteral("said");
    bench.after("cmdReset");
    QTRY_COMPARE(bench.boards.events(said), vnaCommand("10737418"));
    QTRY_VERIFY(std::abs(bench.boards.last() - 1e6) < 0.05);
    for (const char *button : {"cmdFreqDDS", "cmdFreqStart"}) {
        bench.after(button);
        QTRY_COMPARE(bench.boards.events(said), vnaCommand("96099893"));
        QTRY_VERIFY(std::abs(bench.boards.last() - 8950000.0) < 0.05);
        bench.after("cmdReset");
        QTRY_COMPARE(bench.boards.events(said), vnaCommand("10737418"));
        QTRY_VERIFY(std::abs(bench.boards.last() - 1e6) < 0.05);
    }
    // The board reads in a separate thread: any command caused by the step would be received before the next one.
    bench.boards.forget();
    bench.window.click("cmdFreqStep");
    bench.window.click("cmdFreqDDS");
    QTRY_VERIFY(bench.boards.events(said).size() >= 4);
    QTRY_VERIFY(std::abs(bench.boards.last() - 8950000.0) < 0.05);
    QCOMPARE(bench.boards.events(said), vnaCommand("96099893"));
    QCOMPARE(bench.window.desktop.boxes.size(), 0);
}

void TestBoardsByHand::theMiniVnaChangesItsMode()
{
    const Bench bench(settings(kInterfaceVna));
    struct Mode
    {
        const char *caption;
        std::int16_t mode;
        const char *path; // 1: through the device; 0: back to the bridge
    };
    QCOMPARE(bench.window.caption("cmdMisura"), QStringLiteral("DUT"));
    for (const Mode &expected : {Mode{"Angle", 1, "0"}, Mode{"RetLoss", 2, "0"}, Mode{"DUT", 3, "1"}}) {
        bench.settle();
        bench.boards.forget();
        bench.window.click("cmdMisura");
        QCOMPARE(bench.window.caption("cmdMisura"), QString::fromLatin1(expected.caption));
        // The server stores the mode and sends it to the instrument with the next sweep.
        QCOMPARE(bench.boards.events(), QStringList());
        bench.boards.forget();
        bench.window.click("cmdStart");
        QTRY_VERIFY(bench.boards.events(QStringLiteral("said")).size() >= 4);
        QCOMPARE(bench.boards.events(QStringLiteral("said")).first(),
                 QStringLiteral("said ") + QString::fromLatin1(expected.path));
        bench.window.click("cmdStop");
        QTRY_VERIFY(bench.window.isShown("cmdStart"));
    }
}

void TestBoardsByHand::otherInterfacesHaveNoModes()
{
    for (const std::int16_t interfaceType : {kInterfacePic, kInterfaceLpt}) {
        const Bench bench(settings(interfaceType));
        QCOMPARE(bench.after("cmdMisura"), QStringList());
        QCOMPARE(bench.window.caption("cmdMisura"), QStringLiteral("DUT"));
        QCOMPARE(bench.window.desktop.boxes.size(), 0);
    }
}

void TestBoardsByHand::theForcedStopGivesTheButtonsBack()
{
    QFETCH(int, interfaceType);
    const Bench bench(settings(static_cast<std::int16_t>(interfaceType)));
    const Instrument &instrument = bench.window.station->instrument;
    bench.window.click("cmdStart");
    QTRY_VERIFY(bench.window.table()->text(400, SweepTable::SampleColumn) != QStringLiteral("0"));
    QVERIFY(bench.window.isShown("cmdStop"));
    bench.window.click("cmdSwStop");
    // The buttons change immediately, whatever the hardware does.
    QVERIFY(bench.window.isShown("cmdStart"));
    QVERIFY(!bench.window.isShown("cmdStop"));
    QVERIFY(bench.window.find<QAction>("mnuSaveCSV")->isEnabled());
    const auto *log = bench.window.find<QListWidget>("lstLOG");
    QCOMPARE(log->findItems(QStringLiteral("Stop sweep forzato"), Qt::MatchExactly).size(), 1);
    // The board also stops, and then stays idle.
    QTRY_COMPARE(instrument.sweepState(), kIdle);
    bench.settle();
    bench.boards.forget();
    test::nothingHappensFor(100);
    QCOMPARE(bench.boards.events(), QStringList());
    QCOMPARE(bench.window.desktop.boxes.size(), 0);
}

void TestBoardsByHand::drawAndClearTouchNoBoard()
{
    QFETCH(int, interfaceType);
    const Bench bench(settings(static_cast<std::int16_t>(interfaceType)));
    const auto *graph = bench.window.find<SweepGraph>("picSweep");
    const SweepTable *table = bench.window.table();
    const auto highest = [graph] {
        const QPolygonF curve = graph->curve();
        return curve.isEmpty() ? 0.0 : std::abs(curve.boundingRect().height());
    };
    bench.window.type("txtM1X", QStringLiteral("8975000"));
    QCOMPARE(highest(), 0.0);
    QCOMPARE(bench.after("cmdDraw"), QStringList());
    QVERIFY(highest() > 0.5);
    for (int row = 1; row <= 400; ++row) {
        const int count = table->text(row, SweepTable::SampleColumn).toInt();
        QVERIFY2(count >= 0 && count <= 1023, qPrintable(QString::number(count)));
    }
    // Row 101 is at 8,975,000 Hz.
    QCOMPARE(bench.window.text("txtM1Y"), table->text(101, SweepTable::AmplitudeColumn));

    bench.window.find<QLineEdit>("txtRX")->setText(QStringLiteral("400:1"));
    QCOMPARE(bench.after("cmdClear"), QStringList());
    QVERIFY(bench.window.find<QLineEdit>("txtRX")->text().isEmpty());
    QCOMPARE(highest(), 0.0);
    QCOMPARE(table->text(101, SweepTable::SampleColumn), QStringLiteral("0"));
    QCOMPARE(bench.window.text("txtM1Y"), table->text(101, SweepTable::AmplitudeColumn));
    test::nothingHappensFor(50);
    QCOMPARE(bench.boards.events(), QStringList());
    QCOMPARE(bench.window.desktop.boxes.size(), 0);
}

void TestBoardsByHand::everyBoxReachesItsLatch_data()
{
    QTest::addColumn<bool>("inverse");
    QTest::newRow("straight") << false;
    QTest::newRow("inverse") << true;
}

void TestBoardsByHand::everyBoxReachesItsLatch()
{
    QFETCH(bool, inverse);
    const char *logic = inverse ? "1" : "0";
    const Bench bench(settings(kInterfaceLpt, {{"Aux1", "Inverse Logic", logic}, {"Aux2", "Inverse Logic", logic}}));
    const int flip = inverse ? 255 : 0;
    std::array<int, 2> values{};
    const auto latched = [&] {
        return QStringList{QStringLiteral("outputs %1 %2").arg(values[0] ^ flip).arg(values[1] ^ flip)};
    };
    for (int output = 1; output <= 2; ++output) {
        bench.window.click(output == 1 ? "cmdView_2" : "cmdView_3");
        int total = 0;
        for (int i = 0; i < 8; ++i) {
            const QByteArray box = QStringLiteral("chkAux%1_%2").arg(output).arg(i).toLatin1();
            // The first click leaves the box partially checked, which still means off.
            QCOMPARE(bench.after(box.constData()), latched());
            values[static_cast<std::size_t>(output - 1)] |= 1 << i;
            total += (i + 1) * 10;
            QCOMPARE(bench.after(box.constData()), latched());
            QCOMPARE(bench.window.label(output == 1 ? "lblAux1" : "lblAux2"), QString::number(total));
        }
    }
    QCOMPARE(bench.window.configuration.aux1, std::int16_t{255});
    QCOMPARE(bench.window.configuration.aux2, std::int16_t{255});
    values[0] = 254;
    QCOMPARE(bench.after("chkAux1_0"), latched());
}

void TestBoardsByHand::storedOutputsAreThereAtStartUp()
{
    const Bench bench(settings(kInterfaceLpt, {{"Aux1", "Inverse Logic", "1"},
                                               {"Calvorn", "Aux_1", "5"},
                                               {"Calvorn", "Aux_2", "9"},
                                               {"Calvorn", "Pot_2", "77"}}));
    QVERIFY2(bench.atStart.contains(QStringLiteral("outputs 250 9")), qPrintable(bench.atStart.join(u'|')));
    QVERIFY(bench.atStart.contains(QStringLiteral("pot 77 0")));
    QCOMPARE(bench.window.label("lblPot2"), QStringLiteral("77"));
}

void TestBoardsByHand::thePotentiometerFollows()
{
    const Bench bench(settings(kInterfaceLpt, {{"Calvorn", "Pot_2", "0"}}));
    bench.window.click("cmdView_3");
    auto *bar = bench.window.find<QScrollBar>("VScrollPot2");
    bar->setFocus();
    bench.boards.forget();
    QTest::keyClick(bar, Qt::Key_End);
    QCOMPARE(bench.boards.events(), QStringList{QStringLiteral("pot 255 0")});
    QTest::keyClick(bar, Qt::Key_Up);
    QCOMPARE(bench.boards.events().last(), QStringLiteral("pot 254 0"));
    QCOMPARE(bench.window.label("lblPot2"), QStringLiteral("254"));
    QCOMPARE(bench.window.configuration.msgResult, std::int16_t{-1});
    QVERIFY(bench.window.window->close());
    QCOMPARE(bench.window.folder.setting("Calvorn", "Pot_2"), QStringLiteral("254"));
}

void TestBoardsByHand::outputsOfOtherInterfacesDoNotReact()
{
    for (const std::int16_t interfaceType : {kInterfacePic, kInterfaceVna}) {
        const Bench bench(settings(interfaceType));
        QTest::mouseClick(bench.window.find("chkAux1_0"), Qt::LeftButton);
        QTest::mouseClick(bench.window.find("chkAux1_0"), Qt::LeftButton);
        QCOMPARE(bench.window.configuration.aux1, std::int16_t{0});
        QCOMPARE(bench.boards.events(), QStringList());
    }
}

QTEST_MAIN(TestBoardsByHand)
#include "test_boards_by_hand.moc"
