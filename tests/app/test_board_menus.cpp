// SPDX-License-Identifier: MIT
// The View menu entries for the board: a simulated board's device and the MiniVNA's mode.
#include "tests/support/crystal_sweep.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/interface_rows.h"
#include "tests/support/window_bench.h"

#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>

#include <algorithm>
#include <cmath>

using namespace calvorn;

namespace {

QByteArray settings(const char *interfaceType, const char *port)
{
    return QByteArray("[Config]\r\nInterface=") + interfaceType +
           "\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\nADC Channel=1\r\n[Debug]\r\nLog=1\r\n" + port +
           "[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\nScale=0\r\nMax scaleV=2.5\r\n";
}

struct Bench : test::WindowBench
{
    using WindowBench::WindowBench;

    QAction *action(const char *name) const { return window->findChild<QAction *>(QString::fromLatin1(name)); }

    // Opens the View menu and the given submenu.
    QMenu *open(const char *submenu) const
    {
        QMenuBar *bar = window->menuBar();
        QAction *entry = action(submenu);
        for (QAction *title : bar->actions()) {
            QMenu *menu = title->menu();
            if (!menu->actions().contains(entry))
                continue;
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(title).center());
            if (!QTest::qWaitFor([menu] { return menu->isVisible(); }))
                qFatal("the menu does not open");
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
            if (!QTest::qWaitFor([entry] { return entry->menu()->isVisible(); }))
                qFatal("the menu of %s does not open", submenu);
            return entry->menu();
        }
        qFatal("there is no %s", submenu);
    }
    void choose(const char *submenu, const char *name) const
    {
        QMenu *menu = open(submenu);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action(name)).center());
    }
    // Returns the object names of the checked entries.
    QString marked(const char *submenu) const
    {
        QMenu *menu = open(submenu);
        QStringList names;
        for (const QAction *entry : menu->actions())
            if (entry->isChecked())
                names.append(entry->objectName());
        while (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        return names.join(u' ');
    }

    // Runs one sweep and returns the difference between its highest and lowest counts.
    double spread() const
    {
        QSignalSpy stored(&station->instrument.conversion(), &SampleConversion::vectorStored);
        QTest::keyClick(window.get(), Qt::Key_F5, Qt::ShiftModifier);
        if (!QTest::qWaitFor([&] { return stored.count() > 0 && isShown("cmdStart"); }, 10'000))
            qFatal("no sweep was stored");
        const Sweep::Column &volts = table()->numbers(SweepTable::SampleColumn);
        const auto [low, high] = std::minmax_element(volts.begin(), volts.end());
        return *high - *low;
    }
};

} // namespace

class TestBoardMenus : public QObject
{
    Q_OBJECT

    test::FakeServerControl m_server;

private slots:
    void theDeviceIsMeasuredAtOnce_data() { test::addInterfaceRows(); }
    void theDeviceIsMeasuredAtOnce();
    void everyDeviceCanBeChosen();
    void theMenuRestsDuringASweep();
    void whatTheHardwareDoesNotHaveIsHidden_data();
    void whatTheHardwareDoesNotHaveIsHidden();
    void theModeIsThatOfTheTestPanel();
};

// A crystal shows a resonance; a piece of cable shows a straight line.
void TestBoardMenus::theDeviceIsMeasuredAtOnce()
{
    QFETCH(int, interfaceType);
    const Bench bench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                      test::crystalSettings(static_cast<std::int16_t>(interfaceType)));
    const double crystal = bench.spread();
    QCOMPARE(bench.marked("mnuSimulated"), QStringLiteral("mnuSimulated_crystal"));
    bench.choose("mnuSimulated", "mnuSimulated_through");
    QCOMPARE(bench.folder.setting("Simulator", "Device"), QStringLiteral("through"));
    QCOMPARE(bench.label("lblStatus"), QStringLiteral("Simulated board: Through, a piece of cable"));
    const double cable = bench.spread();
    QVERIFY2(cable < crystal / 5.0, qPrintable(QStringLiteral("%1 %2").arg(cable).arg(crystal)));
    bench.choose("mnuSimulated", "mnuSimulated_crystal");
    const double again = bench.spread();
    QVERIFY2(std::abs(again - crystal) < crystal / 5.0, qPrintable(QStringLiteral("%1 %2").arg(again).arg(crystal)));
    QCOMPARE(test::peakRow(*bench.table()), test::kCrystalRow);
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
}

void TestBoardMenus::everyDeviceCanBeChosen()
{
    const Bench bench(m_server.program(), settings("2", "[Parallel Port]\r\nLPT=0\r\n"));
    QCOMPARE(bench.marked("mnuSimulated"), QStringLiteral("mnuSimulated_bandpass"));
    for (const char *name : {"lowpass", "notch", "crystal", "antenna", "through", "bandpass"}) {
        m_server.takeCalls();
        const QByteArray entry = QByteArray("mnuSimulated_") + name;
        bench.choose("mnuSimulated", entry.constData());
        QCOMPARE(bench.folder.setting("Simulator", "Device"), QString::fromLatin1(name));
        QCOMPARE(bench.marked("mnuSimulated"), QString::fromLatin1(entry));
        QVERIFY(m_server.takeCalls().contains(QStringLiteral("aLPT.OpenPort(0)")));
    }
}

void TestBoardMenus::theMenuRestsDuringASweep()
{
    const Bench bench(m_server.program(), settings("2", "[Parallel Port]\r\nLPT=0\r\n"));
    QVERIFY(bench.action("mnuSimulated")->isEnabled());
    bench.click("cmdStart");
    QVERIFY(!bench.action("mnuSimulated")->isEnabled());
    bench.click("cmdStop");
    QTRY_VERIFY(bench.action("mnuSimulated")->isEnabled());
}

void TestBoardMenus::whatTheHardwareDoesNotHaveIsHidden_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("simulated");
    QTest::addColumn<bool>("mode");
    QTest::newRow("PIC") << settings("1", "[Serial Port]\r\nCommPort=5\r\n") << false << false;
    QTest::newRow("PIC, simulated") << settings("1", "[Serial Port]\r\nCommPort=100\r\n") << true << false;
    QTest::newRow("parallel port") << settings("2", "[Parallel Port]\r\nLPT=&H378\r\n[Serial Port]\r\nCommPort=100\r\n")
                                   << false << false;
    QTest::newRow("parallel port, simulated")
        << settings("2", "[Parallel Port]\r\nLPT=0\r\n[Serial Port]\r\nCommPort=5\r\n") << true << false;
    QTest::newRow("MiniVNA") << settings("3", "[Parallel Port]\r\nLPT=0\r\n[Serial Port]\r\nCommPort=5\r\n") << false
                             << true;
    QTest::newRow("MiniVNA, simulated") << settings("3", "[Serial Port]\r\nCommPort=100\r\n") << true << true;
    QTest::newRow("none") << settings("7", "[Parallel Port]\r\nLPT=0\r\n[Serial Port]\r\nCommPort=100\r\n") << false
                          << false;
}

void TestBoardMenus::whatTheHardwareDoesNotHaveIsHidden()
{
    QFETCH(QByteArray, text);
    const Bench bench(m_server.program(), text);
    QTEST(bench.action("mnuSimulated")->isVisible(), "simulated");
    QTEST(bench.action("mnuVnaMode")->isVisible(), "mode");
}

void TestBoardMenus::theModeIsThatOfTheTestPanel()
{
    const Bench bench(m_server.program(), settings("3", "[Serial Port]\r\nCommPort=100\r\n"));
    QCOMPARE(bench.marked("mnuVnaMode"), QStringLiteral("mnuVnaMode_1"));
    QCOMPARE(bench.action("mnuVnaMode_1")->text(), QStringLiteral("&1  Angle"));
    QCOMPARE(bench.action("mnuVnaMode_3")->text(), QStringLiteral("&3  DUT"));
    m_server.takeCalls();
    bench.choose("mnuVnaMode", "mnuVnaMode_3");
    QCOMPARE(bench.configuration.measuringMode, std::int16_t{3});
    QVERIFY(m_server.takeCalls().contains(QStringLiteral("aVNA.SetMode(3)")));
    QCOMPARE(bench.caption("cmdMisura"), QStringLiteral("DUT"));
    QCOMPARE(bench.label("lblStatus"), QStringLiteral("Mode: DUT"));
    bench.click("cmdMisura");
    QCOMPARE(bench.configuration.measuringMode, std::int16_t{1});
    QCOMPARE(bench.marked("mnuVnaMode"), QStringLiteral("mnuVnaMode_1"));
    QCOMPARE(bench.label("lblStatus"), QStringLiteral("Mode: Angle"));
}

QTEST_MAIN(TestBoardMenus)
#include "test_board_menus.moc"
