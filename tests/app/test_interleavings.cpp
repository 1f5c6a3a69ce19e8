// SPDX-License-Identifier: MIT
// No sweep may contain rows from another plan, whatever the order of events: random actions drive the whole window with
// the real server and a board that shares no code with them. Each of the board's counts encodes the frequency at which
// it was measured, so the test compares each stored vector with the frequencies in its rows.
#include "tests/support/interface_rows.h"
#include "tests/support/page_rows.h"
#include "tests/support/quiet_time.h"
#include "tests/support/window_bench.h"

#include <QListWidget>
#include <QRandomGenerator>

#include <memory>

using namespace calvorn;
using calvorn::test::Rows;
using calvorn::test::WindowBench;

namespace {

#ifdef CALVORN_SANITIZED
constexpr int kSequences = 100; // builds without sanitizers run all 1000
#else
constexpr int kSequences = 1'000;
#endif
constexpr int kStepsOfASequence = 5;
// All generators accept these frequencies.
constexpr std::array kStarts{1'000'000, 2'500'000, 6'500'000, 12'000'000, 3'210'987};
constexpr std::array kStops{3'000'000, 7'700'000, 10'000'000, 20'000'000, 8'000'600};
constexpr int kRefusedStop = 90'000'000; // at or above the clock frequency of the PIC and parallel-port boards

// A board that misbehaves on request, on one of the three interfaces.
class Board
{
public:
    explicit Board(std::int16_t interfaceType)
        : m_interface(interfaceType)
    {
        if (interfaceType == kInterfaceLpt)
            m_parallel = std::make_unique<test::ParallelPageBoard>();
        else
            m_serial = std::make_unique<test::SerialPageBoard>(
                interfaceType == kInterfacePic ? "pic_board_by_the_page" : "vna_board_by_the_page");
    }

    QByteArray settings() const { return test::pageSettings(m_interface, m_serial ? m_serial->link() : QString()); }

    void refuse() const
    {
        if (m_interface == kInterfacePic)
            m_serial->tell("refuse 2");
        else if (m_interface == kInterfaceVna)
            m_serial->tell("mute 1");
    }

    // Makes a PIC board retain its previous plan after a rejection, as old firmware does, or delays the MiniVNA's next
    // reply.
    void keepPreparation(bool keeps) const
    {
        if (m_interface == kInterfacePic)
            m_serial->tell(keeps ? "keep on" : "keep off");
        else if (m_interface == kInterfaceVna)
            m_serial->tell(keeps ? "latenext 1 150" : "latenext 0 0");
    }

    void togglePlug()
    {
        m_plugged = !m_plugged;
        if (m_serial)
            m_serial->tell(m_plugged ? "plug" : "unplug");
        else
            m_parallel->setFault(m_plugged ? "" : "gone");
    }
    bool isPlugged() const { return m_plugged; }

private:
    std::int16_t m_interface;
    bool m_plugged = true;
    std::unique_ptr<test::SerialPageBoard> m_serial;
    std::unique_ptr<test::ParallelPageBoard> m_parallel;
};

class Scene
{
public:
    Scene(std::int16_t interfaceType, quint32 seed)
        : m_interface(interfaceType)
        , m_random(seed)
        , m_board(interfaceType)
        , m_window(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")), m_board.settings())
    {
        m_update = m_window.window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
        QObject::connect(m_window.table(), &SweepTable::dataChanged, m_window.window.get(), [this] { check(); });
    }

    bool isStarted() const { return m_window.started && m_update; }

    void sequence()
    {
        if (!m_board.isPlugged())
            m_board.togglePlug();
        for (int step = 0; step < kStepsOfASequence && wrong.isEmpty(); ++step) {
            act();
            m_did.append(QStringLiteral("pump"));
            test::pauseOfAPerson(m_random.bounded(4) == 0 ? m_random.bounded(30) : m_random.bounded(3));
        }
        if (m_random.bounded(5) == 0 && m_board.isPlugged())
            letASweepCome();
        m_did = m_did.mid(std::max<qsizetype>(0, m_did.size() - 60));
    }

    // Restores the board, sets a plan that the board accepts, and returns whether sweeps are received.
    bool recovers()
    {
        if (!m_board.isPlugged())
            m_board.togglePlug();
        m_board.keepPreparation(false);
        const int before = right;
        for (int attempt = 0; attempt < 20 && right == before; ++attempt) {
            m_window.type("txtStart", QStringLiteral("1000000"));
            m_window.type("txtStop", QStringLiteral("7000000"));
            static_cast<void>(QTest::qWaitFor([&] { return !m_update->isActive(); }));
            if (m_window.isShown("cmdStart"))
                m_window.click("cmdStart");
            static_cast<void>(QTest::qWaitFor([&] { return right > before; }, 1'500));
        }
        return right > before;
    }

    int right = 0; // stored vectors
    QString wrong; // the actions that led to the first wrong vector

private:
    // On a busy machine, a parallel-port sweep takes a second. The first attempt after the loss of a port may only
    // report the loss and end.
    void letASweepCome()
    {
        const int before = right;
        for (int attempt = 0; attempt < 2 && right == before; ++attempt) {
            press("cmdStart");
            static_cast<void>(QTest::qWaitFor([&] { return right > before || m_window.isShown("cmdStart"); }, 2'000));
        }
    }

    std::int16_t mode() const
    {
        const QString caption = m_window.caption("cmdMisura");
        return caption == u"Angle" ? std::int16_t{1} : caption == u"RetLoss" ? std::int16_t{2} : std::int16_t{3};
    }

    void check()
    {
        const Rows rows = test::rowsOf(*m_window.table(), m_interface, mode());
        right += rows == Rows::Right ? 1 : 0;
        if (rows == Rows::Wrong && wrong.isEmpty())
            wrong = m_did.join(QStringLiteral(", "));
    }

    void press(const char *button)
    {
        m_did.append(QString::fromLatin1(button));
        if (m_window.isShown(button))
            m_window.click(button);
    }

    void changeRange()
    {
        const bool refused = m_random.bounded(6) == 0;
        const int start = kStarts[static_cast<std::size_t>(m_random.bounded(int(kStarts.size())))];
        const int stop =
            refused ? kRefusedStop : kStops[static_cast<std::size_t>(m_random.bounded(int(kStops.size())))];
        m_did.append(QStringLiteral("range %1..%2").arg(start).arg(stop));
        m_update->setInterval(m_random.bounded(3) == 0 ? 400 : m_random.bounded(4) * 5);
        m_window.type("txtStart", QString::number(start));
        if (m_random.bounded(3) == 0)
            QCoreApplication::processEvents();
        m_window.type("txtStop", QString::number(stop));
    }

    void act()
    {
        switch (m_random.bounded(16)) {
        case 0:
        case 1:
        case 2:
        case 3:
            press("cmdStart");
            break;
        case 4:
        case 5:
            press("cmdStop");
            break;
        case 6:
            press("cmdSwStop");
            break;
        case 7:
        case 8:
            press("cmdReset");
            break;
        case 9:
        case 10:
        case 11:
            changeRange();
            break;
        case 12:
            press(m_random.bounded(3) == 0 ? "cmdFreqStart" : "cmdClear");
            break;
        case 13:
            press("cmdMisura");
            break;
        case 14:
            m_did.append(QStringLiteral("refuse"));
            m_board.refuse();
            m_board.keepPreparation(m_random.bounded(2) == 0);
            break;
        default:
            m_did.append(QStringLiteral("plug"));
            m_board.togglePlug();
            break;
        }
    }

    std::int16_t m_interface;
    QRandomGenerator m_random;
    Board m_board;
    WindowBench m_window;
    QTimer *m_update = nullptr;
    QStringList m_did;
};

} // namespace

class TestInterleavings : public QObject
{
    Q_OBJECT

private slots:
    void noRowOfAnotherPlan_data() { test::addInterfaceRows(); }
    void noRowOfAnotherPlan();
};

void TestInterleavings::noRowOfAnotherPlan()
{
    QFETCH(int, interfaceType);
    // CALVORN_SEED repeats a run or selects another one.
    const auto seed = static_cast<quint32>(qEnvironmentVariableIntValue("CALVORN_SEED"));
    Scene scene(static_cast<std::int16_t>(interfaceType), seed);
    QVERIFY(scene.isStarted());
    for (int sequence = 0; sequence < kSequences && scene.wrong.isEmpty(); ++sequence)
        scene.sequence();
    QVERIFY2(scene.wrong.isEmpty(), qPrintable(QStringLiteral("seed %1: ").arg(seed) + scene.wrong));
    QVERIFY(scene.recovers());
    qInfo("%d vectors were stored in %d sequences of %d steps, all of them right", scene.right, kSequences,
          kStepsOfASequence);
    QVERIFY(scene.right > kSequences / 10);
}

QTEST_MAIN(TestInterleavings)
#include "test_interleavings.moc"
