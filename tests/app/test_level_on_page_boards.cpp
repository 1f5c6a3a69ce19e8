// SPDX-License-Identifier: MIT
// Level meter and generator with the real server and boards written from docs/hardware/ alone: the generator's actual
// frequency, and the effect of a failing board on the meter.
#include "instrument/level_reader.h"
#include "tests/support/interface_rows.h"
#include "tests/support/page_scene.h"
#include "tests/support/quiet_time.h"

#include <QTabWidget>

#include <memory>

using namespace calvorn;
using calvorn::test::Scene;

namespace {

constexpr double kLptClock = 80e6;    // as in test::pageSettings()
constexpr double kVnaClock = 400e6;   // as above
constexpr int kNotCalled = 5'000'000; // Hz; nothing else sets the generator to this frequency
const QString kNoNumber = QStringLiteral("– dBm");

struct Bench
{
    // offset: the generator's calibration offset, in Hz.
    explicit Bench(int interfaceType, double offset = 0.0)
        : interface(static_cast<std::int16_t>(interfaceType))
        , m_offset(offset)
    {
        if (interface == kInterfaceLpt)
            parallel = std::make_unique<test::ParallelPageBoard>();
        else
            serial = std::make_unique<test::SerialPageBoard>(interface == kInterfacePic ? "pic_board_by_the_page"
                                                                                        : "vna_board_by_the_page",
                                                             QStringList{QStringLiteral("--paced")});
        const test::ProgramFolder scratch({}, test::pageSettings(interface, serial ? serial->link() : QString()));
        scratch.set("Config", "DDS Offset", QString::number(offset));
        if (interface == kInterfaceVna)
            scratch.set("Config", "ADC Channel", QStringLiteral("3"));
        QFile settings(scratch.iniPath());
        if (!settings.open(QIODevice::ReadOnly))
            qFatal("the settings cannot be read");
        scene = std::make_unique<Scene>(interface, settings.readAll());
        // Start-up also includes the delayed planning of the range.
        if (!scene->rangeIsTaken())
            qFatal("the range was not planned");
    }

    Scene *operator->() const { return scene.get(); }

    LevelReader &openPage() const
    {
        QTest::keyClick(scene->window.get(), Qt::Key_M, Qt::ControlModifier);
        page(3);
        auto *reader = scene->window->findChild<LevelReader *>();
        if (!reader)
            qFatal("the page has no reader");
        return *reader;
    }
    // Changes the focus first: leaving a range box sets the generator to the start frequency.
    void page(int index) const
    {
        auto *pages = scene->find<QTabWidget>("tabMeasure");
        pages->setFocus();
        if (!scene->rangeIsTaken())
            qFatal("the range was not planned");
        pages->setCurrentIndex(index);
    }
    void type(const char *box, const QString &text) const { scene->WidgetHands::type(box, text); }
    bool isSerial() const { return serial != nullptr; }

    // Returns the setting of the board's generator: Hz for the PIC board, a count or a tuning word for the others.
    QByteArray generator() const
    {
        if (interface == kInterfaceLpt) // the count encodes the tuning word
            return QByteArray::number(scene->driver()->readDetectorCount());
        const QByteArray state = serial->tell("state");
        const char *key = interface == kInterfacePic ? "gen=" : "word=";
        const QByteArray rest = state.mid(state.indexOf(key) + static_cast<qsizetype>(qstrlen(key)));
        return rest.left(rest.indexOf(' '));
    }
    // Returns the expected result of generator() at this frequency; 0 Hz means off. The PIC board has no offset.
    QByteArray generatorAt(int hertz) const
    {
        if (interface == kInterfacePic)
            return hertz > 0 ? QByteArray::number(hertz) : QByteArray("off");
        const bool isLpt = interface == kInterfaceLpt;
        const std::uint32_t word = hertz > 0 ? test::wordAt(hertz + m_offset, isLpt ? kLptClock : kVnaClock) : 0;
        return QByteArray::number(isLpt ? static_cast<std::uint32_t>(test::countAt(word)) : word);
    }
    bool gives(int hertz) const
    {
        return QTest::qWaitFor([&] { return generator() == generatorAt(hertz); }, 5'000);
    }
    bool tells(const char *label, const QString &text, int patience = 5'000) const
    {
        return QTest::qWaitFor([&] { return scene->label(label).contains(text); }, patience);
    }

    std::int16_t interface;
    std::unique_ptr<test::ParallelPageBoard> parallel;
    std::unique_ptr<test::SerialPageBoard> serial;
    std::unique_ptr<Scene> scene;

private:
    double m_offset;
};

} // namespace

class TestLevelOnPageBoards : public QObject
{
    Q_OBJECT

private slots:
    void onAndOff_data() { test::addInterfaceRows(); }
    void onAndOff();
    void nothingMovesAGeneratorThatIsOn_data() { test::addInterfaceRows(); }
    void nothingMovesAGeneratorThatIsOn();
    void theClosedPageIsSilent_data() { test::addInterfaceRows(); }
    void theClosedPageIsSilent();
    void othersTakeTheGenerator_data() { test::addInterfaceRows(); }
    void othersTakeTheGenerator();
    void aChangedStartDoesNotTakeIt_data() { test::addInterfaceRows(); }
    void aChangedStartDoesNotTakeIt();
    void readingsStayWithinTheLimits_data() { addSerialInterfaces(); }
    void readingsStayWithinTheLimits();
    void aBoardThatFallsSilent_data() { addSerialInterfaces(); }
    void aBoardThatFallsSilent();
    void aPortThatIsLost_data() { test::addInterfaceRows(); }
    void aPortThatIsLost();
    void aLostPortIsNoReading();
    void lateEndsOfReadings_data() { addSerialInterfaces(); }
    void lateEndsOfReadings();
    void aPhaseIsNoLevel();

private:
    static void addSerialInterfaces()
    {
        QTest::addColumn<int>("interfaceType");
        QTest::newRow("PIC") << int{kInterfacePic};
        QTest::newRow("MiniVNA") << int{kInterfaceVna};
    }
};

void TestLevelOnPageBoards::onAndOff()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType, 150.0);
    bench.openPage();
    bench->click("cmdHold"); // stops the meter, which would sweep
    bench.type("txtGenerator", QString::number(kNotCalled));
    bench->click("cmdGenerator");
    QCOMPARE(bench->label("lblGenerator"), QStringLiteral("The generator is on."));
    QVERIFY(bench.gives(kNotCalled));
    bench->click("cmdGeneratorUp");
    QVERIFY(bench.gives(kNotCalled + 1000));
    bench->click("cmdGenerator");
    QCOMPARE(bench->label("lblGenerator"), QStringLiteral("The generator is off."));
    QVERIFY(bench.gives(0));
    // Switching on again reapplies the offset.
    bench->click("cmdGenerator");
    QVERIFY(bench.gives(kNotCalled + 1000));
    QVERIFY(bench->desktop.boxes.isEmpty());
}

void TestLevelOnPageBoards::nothingMovesAGeneratorThatIsOn()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType);
    bench.openPage();
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 5'000));
    bench.type("txtGenerator", QString::number(kNotCalled));
    bench->click("cmdGenerator");
    QVERIFY(bench.gives(kNotCalled));
    if (bench.isSerial()) {
        QVERIFY(bench.tells("lblLevelWarning", QStringLiteral("only during sweeps")));
        QCOMPARE(bench->label("lblLevel"), kNoNumber);
        bench.serial->tell("heard");
        test::giveTheBoard(1'500);
        QCOMPARE(bench.serial->tell("heard").trimmed(), QByteArray("heard"));
    } else {
        test::giveTheBoard(500);
        QVERIFY(bench->label("lblLevel") != kNoNumber);
    }
    QVERIFY(bench.gives(kNotCalled));
    QCOMPARE(bench->label("lblGenerator"), QStringLiteral("The generator is on."));
    // When the generator is switched off, the meter continues.
    bench->click("cmdGenerator");
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 5'000));
}

void TestLevelOnPageBoards::theClosedPageIsSilent()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType);
    bench.openPage();
    bench->click("cmdGenerator");
    QVERIFY(bench.gives(7'000'000));
    bench.page(0);
    QVERIFY(bench.gives(0));
    if (!bench.isSerial())
        return;
    // The page is closed while the meter is sweeping.
    bench.page(3);
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 5'000));
    bench.page(0);
    QVERIFY(bench.gives(0));
    bench.serial->tell("heard");
    test::giveTheBoard(500);
    QCOMPARE(bench.serial->tell("heard").trimmed(), QByteArray("heard"));
    QVERIFY(bench.gives(0));
}

void TestLevelOnPageBoards::othersTakeTheGenerator()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType);
    bench.openPage();
    bench->click("cmdHold");
    const auto isTaken = [&](int hertz) {
        return bench->label("lblGenerator").contains(QLatin1String("not in use as a signal source")) &&
               !bench->isChecked("cmdGenerator") && bench.gives(hertz);
    };
    bench->click("cmdGenerator");
    QVERIFY(bench.gives(7'000'000));
    bench->click("cmdFreqDDS");
    QVERIFY(isTaken(1'000'000));
    bench->click("cmdGenerator");
    QVERIFY(bench.gives(7'000'000));
    bench->click("cmdReset");
    QVERIFY(isTaken(1'000'000));
    bench->click("cmdGenerator");
    QVERIFY(bench.gives(7'000'000));
    QVERIFY((*bench.scene).sweeps());
    QVERIFY(bench->label("lblGenerator").contains(QLatin1String("not in use as a signal source")));
    QVERIFY(bench->stops());
}

void TestLevelOnPageBoards::aChangedStartDoesNotTakeIt()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType);
    bench.openPage();
    bench->click("cmdHold");
    bench->click("cmdGenerator");
    QVERIFY(bench.gives(7'000'000));
    bench->setRange(2'000'000, 3'000'000);
    QVERIFY(bench->rangeIsTaken());
    test::giveTheBoard(200);
    QVERIFY(bench.gives(7'000'000));
    QCOMPARE(bench->label("lblGenerator"), QStringLiteral("The generator is on."));
}

void TestLevelOnPageBoards::readingsStayWithinTheLimits()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType);
    bench.openPage();
    QSignalSpy planned(bench->driver(), &AcquisitionDriver::readingTaken);
    bench.type("txtGenerator", QStringLiteral("1000"));
    QVERIFY(QTest::qWaitFor([&] { return planned.count() > 2; }, 5'000));
    // The lowest configured frequency is 1000 Hz, so the sweep starts there.
    const QByteArray heard = bench.serial->tell("heard") + bench.serial->tell("state");
    if (interfaceType == kInterfacePic)
        QVERIFY2(heard.contains("start=1000 "), heard.constData());
    else
        QVERIFY2(heard.contains(QByteArray::number(test::wordAt(1000.0, kVnaClock))), heard.constData());
}

void TestLevelOnPageBoards::aBoardThatFallsSilent()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType);
    const LevelReader &reader = bench.openPage();
    QSignalSpy failed(&reader, &LevelReader::failed);
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 5'000));
    bench.serial->tell(interfaceType == kInterfacePic ? "mute on" : "mute -1");
    QVERIFY(QTest::qWaitFor([&] { return failed.count() > 0; }, 15'000));
    QCOMPARE(bench->label("lblLevel"), kNoNumber);
    QVERIFY2(!bench->label("lblLevelWarning").isEmpty(), "no reason is shown");
    const qsizetype lines = bench->log().size();
    test::giveTheBoard(8'000);
    // The meter retries, but not continuously.
    QVERIFY(failed.count() >= 2);
    QVERIFY(failed.count() <= 4);
    QVERIFY(bench->log().size() - lines <= 12);
    bench.serial->tell(interfaceType == kInterfacePic ? "mute off" : "mute 0");
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 20'000));
    QCOMPARE(bench->label("lblLevelWarning"), QString());
    QVERIFY((*bench.scene).sweeps());
    QVERIFY(bench->stops());
}

void TestLevelOnPageBoards::aPortThatIsLost()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType);
    bench.openPage();
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 5'000));
    if (bench.isSerial())
        bench.serial->tell("unplug");
    else
        bench.parallel->setFault("gone");
    QVERIFY(bench.tells("lblLevelWarning", QStringLiteral("The hardware is not connected."), 10'000));
    QCOMPARE(bench->label("lblLevel"), kNoNumber);
    // Switching the generator on reports the same error.
    bench->click("cmdGenerator");
    QCOMPARE(bench->label("lblGenerator"), QStringLiteral("The hardware is not connected."));
    QVERIFY(!bench->isChecked("cmdGenerator"));
    if (bench.isSerial())
        bench.serial->tell("plug");
    else
        bench.parallel->setFault({});
    // "Sweep ON" reopens the port, and then the meter continues.
    QVERIFY((*bench.scene).sweeps());
    QVERIFY(bench->stops());
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 10'000));
}

void TestLevelOnPageBoards::aLostPortIsNoReading()
{
    const Bench bench(kInterfaceLpt);
    bench.parallel->setFault("gone");
    LevelReader reader(bench->station->instrument);
    QSignalSpy taken(&reader, &LevelReader::taken);
    QSignalSpy failed(&reader, &LevelReader::failed);
    QSignalSpy paused(&reader, &LevelReader::paused);
    reader.start(1'000'000, 64);
    // Either the failed reading or the lost connection may be reported first.
    QVERIFY(QTest::qWaitFor([&] { return failed.count() + paused.count() > 0; }, 10'000));
    test::giveTheBoard(500);
    QCOMPARE(taken.count(), 0);
}

// A stopped reading may end only after the next one has been requested.
void TestLevelOnPageBoards::lateEndsOfReadings()
{
    QFETCH(int, interfaceType);
    const Bench bench(interfaceType);
    const LevelReader &reader = bench.openPage();
    QSignalSpy taken(&reader, &LevelReader::taken);
    QSignalSpy failed(&reader, &LevelReader::failed);
    QVERIFY(QTest::qWaitFor([&] { return taken.count() > 0; }, 5'000));
    for (int change = 0; change < 25; ++change) {
        bench->click(change % 2 == 0 ? "cmdGeneratorUp" : "cmdGeneratorDown");
        test::pauseOfAPerson(17 * (change % 7));
    }
    const qsizetype before = taken.count();
    QVERIFY(QTest::qWaitFor([&] { return taken.count() >= before + 5; }, 5'000));
    QCOMPARE(failed.count(), 0);
    // A sweep for the table starts after a stopped reading; the late end of that reading must not stop the sweep.
    bench->click("cmdGeneratorUp");
    QVERIFY((*bench.scene).sweeps(5));
    QVERIFY(!bench->isIdle());
    QVERIFY(bench->stops());
    QCOMPARE(bench->wrong, 0);
}

void TestLevelOnPageBoards::aPhaseIsNoLevel()
{
    const Bench bench(kInterfaceVna);
    bench.openPage();
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 5'000));
    while (bench->mode() != 1)
        bench->click("cmdMisura");
    QVERIFY(bench.tells("lblLevelWarning", QStringLiteral("phase")));
    QCOMPARE(bench->label("lblLevel"), kNoNumber);
    bench->click("cmdMisura");
    QVERIFY(QTest::qWaitFor([&] { return bench->label("lblLevel") != kNoNumber; }, 5'000));
}

QTEST_MAIN(TestLevelOnPageBoards)
#include "test_level_on_page_boards.moc"
