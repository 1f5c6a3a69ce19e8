// SPDX-License-Identifier: MIT
// A number being typed takes effect before the user's next action, wherever the focus is then.
#include "tests/support/entry_bench.h"
#include "tests/support/locales.h"
#include "tests/support/walk_numbers.h"

using namespace calvorn;
using calvorn::test::kFrequencyBoxes;
using calvorn::test::masked;
using calvorn::test::WalkBox;
using calvorn::test::WalkHands;
using Bench = calvorn::test::EntryBench;

class TestPendingEntries : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void aClickOnTheGraphComesAfterTheEntry_data() { test::addLocaleRows(); }
    void aClickOnTheGraphComesAfterTheEntry();
    void theClickedFrequencyBecomesTheStart();
    void aShiftClickKeepsTheOtherEntry_data() { test::addLocaleRows(); }
    void aShiftClickKeepsTheOtherEntry();
    void aShiftClickReplacesItsOwnEntry();
    void aDragComesAfterTheEntry();
    void anImportComesAfterTheEntry_data() { test::addLocaleRows(); }
    void anImportComesAfterTheEntry();
    void aChoiceInAMenuComesAfterTheEntry_data() { test::addLocaleRows(); }
    void aChoiceInAMenuComesAfterTheEntry();
    void aMenuOfTheDesktopComesAfterTheEntry();
    void theShownViewChosenAgainTakesTheEntry();
    void theMenuBarByKeyTakesTheEntry_data();
    void theMenuBarByKeyTakesTheEntry();
    void closingTakesTheEntry_data() { test::addLocaleRows(); }
    void closingTakesTheEntry();
    void anotherWindowTakesNothing();
};

void TestPendingEntries::aClickOnTheGraphComesAfterTheEntry()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    // The click moves the marker of the edited box.
    bench.hands.typeOver(WalkBox::M1X, QStringLiteral("4000000"));
    bench.clickGraph(bench.place(51, 500));
    QCOMPARE(bench.row(GraphItem::M1), 51.0);
    QCOMPARE(bench.number(WalkBox::M1X), 1500000.0);
    bench.tab();
    QCOMPARE(bench.row(GraphItem::M1), 51.0);
    QCOMPARE(bench.shown(WalkBox::M1X), masked(1500000));
    // The click moves another marker.
    bench.hands.typeOver(WalkBox::M1X, QStringLiteral("4000000"));
    bench.clickGraph(bench.place(101, 500), Qt::RightButton);
    QCOMPARE(bench.row(GraphItem::M1), 301.0);
    QCOMPARE(bench.row(GraphItem::M2), 101.0);
    bench.tab();
    QCOMPARE(bench.shown(WalkBox::M1X), masked(4000000));
    QCOMPARE(bench.number(WalkBox::M2X), 2000000.0); // this box has the focus now
    // Types the stop frequency, and presses a mouse button that moves no marker.
    bench.hands.typeOver(WalkBox::Stop, QStringLiteral("6000000"));
    bench.clickGraph(bench.place(101, 500), Qt::MiddleButton);
    QCOMPARE(bench.configuration.stopFreq, 6000000);
    QCOMPARE(bench.unmasked(), QString());
    QCOMPARE(bench.desktop.beeps, 0);
}

void TestPendingEntries::theClickedFrequencyBecomesTheStart()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::M1X, QStringLiteral("4000000"));
    bench.clickGraph(bench.place(51, 500));
    bench.click("cmdCopyM1");
    QCOMPARE(bench.configuration.startFreq, 1500000);
    QCOMPARE(bench.shown(WalkBox::Start), masked(1500000));
    // A number that is still being typed is also copied.
    bench.hands.typeOver(WalkBox::M2X, QStringLiteral("4200000"));
    bench.click("cmdCopyM2");
    QCOMPARE(bench.configuration.stopFreq, 4200000);
}

void TestPendingEntries::aShiftClickKeepsTheOtherEntry()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    bench.hands.typeOver(WalkBox::M3Y, test::inLocale(locale, QStringLiteral("0.75")));
    bench.clickGraph(bench.place(200, 1000), Qt::RightButton, Qt::ShiftModifier);
    QCOMPARE(bench.height(GraphItem::M3), 750.0);
    QCOMPARE(bench.shown(WalkBox::M3Y), test::inLocale(locale, QStringLiteral("0.750")));
    QVERIFY(std::abs(bench.height(GraphItem::M4) - 1000.0) < 8.0);
    bench.tab();
    QCOMPARE(bench.height(GraphItem::M3), 750.0);

    bench.hands.typeOver(WalkBox::M4Y, test::inLocale(locale, QStringLiteral("1.25")));
    bench.clickGraph(bench.place(200, 300), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(bench.height(GraphItem::M4), 1250.0);
    QVERIFY(std::abs(bench.height(GraphItem::M3) - 300.0) < 8.0);
    QCOMPARE(bench.desktop.beeps, 0);
}

void TestPendingEntries::aShiftClickReplacesItsOwnEntry()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::M3Y, QStringLiteral("0.75"));
    const QPoint at = bench.place(200, 1900);
    bench.clickGraph(at, Qt::LeftButton, Qt::ShiftModifier);
    const double clicked = bench.height(GraphItem::M3);
    QVERIFY2(std::abs(clicked - bench.userHeight(at)) <= 0.5001, qPrintable(QString::number(clicked)));
    QCOMPARE(bench.shown(WalkBox::M3Y), test::shownAmplitude(true, clicked / 1000.0));
    bench.tab();
    QCOMPARE(bench.height(GraphItem::M3), clicked);
}

void TestPendingEntries::aDragComesAfterTheEntry()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::M2X, QStringLiteral("4000000"));
    const QPoint from = bench.place(51, 2000);
    const QPoint to = bench.place(151, 2000);
    QTest::mousePress(bench.graph(), Qt::LeftButton, {}, from);
    QCOMPARE(bench.row(GraphItem::M2), 301.0); // before the marker moves
    WalkHands::moveMouse(bench.graph(), (from + to) / 2, Qt::LeftButton);
    WalkHands::moveMouse(bench.graph(), to, Qt::LeftButton);
    QTest::mouseRelease(bench.graph(), Qt::LeftButton, {}, to);
    QCOMPARE(bench.row(GraphItem::M1), 151.0);
    QCOMPARE(bench.row(GraphItem::M2), 301.0);
    bench.tab();
    QCOMPARE(bench.shown(WalkBox::M1X), masked(2500000));
    QCOMPARE(bench.shown(WalkBox::M2X), masked(4000000));
}

void TestPendingEntries::anImportComesAfterTheEntry()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/sweep.csv");
    QFile file(bench.desktop.fileChoice);
    QVERIFY(file.open(QIODevice::WriteOnly));
    // From 3,001,000 Hz to 3,400,000 Hz.
    file.write(test::walk_files::content(test::walk_files::Good, 0, 0.00244, 0.0));
    file.close();
    for (const WalkBox which : {WalkBox::Start, WalkBox::Stop, WalkBox::M1X}) {
        bench.hands.typeOver(which, QStringLiteral("4500000"));
        bench.hands.key(Qt::Key_O, Qt::ControlModifier);
        QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
        for (int leaving = 0; leaving < 2; ++leaving) {
            QCOMPARE(bench.configuration.startFreq, 3001000);
            QCOMPARE(bench.configuration.stopFreq, 3400000);
            QCOMPARE(bench.number(WalkBox::Start), 3001000.0);
            QCOMPARE(bench.number(WalkBox::Stop), 3400000.0);
            QCOMPARE(bench.cell(1), masked(3001000));
            QCOMPARE(bench.cell(400), masked(3400000));
            QCOMPARE(bench.unmasked(), QString());
            bench.tab();
        }
        QVERIFY(!bench.hands.box(which)->hasFocus());
        bench.hands.letTimePass();
        QCOMPARE(bench.cell(1), masked(3001000)); // the range has not been planned again
        QCOMPARE(bench.table()->text(7, SweepTable::SampleColumn), QStringLiteral("49"));
    }
}

void TestPendingEntries::aChoiceInAMenuComesAfterTheEntry()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    bench.hands.typeOver(WalkBox::M3Y, test::inLocale(locale, QStringLiteral("0.9")));
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1"));
    QCOMPARE(bench.shown(WalkBox::M3Y), test::inLocale(locale, QStringLiteral("-0.9")));
    QVERIFY(std::abs(bench.height(GraphItem::M3) - 900.0) < 51.0); // -0.92 dB
    bench.hands.typeOver(WalkBox::MaxDb, QStringLiteral("55"));
    bench.hands.choose(QStringLiteral("mnuScalaLineare"));
    QCOMPARE(bench.configuration.maxScaleDb, -55);
    bench.hands.typeOver(WalkBox::MaxVolt, test::inLocale(locale, QStringLiteral("3.5")));
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica10"));
    QCOMPARE(bench.configuration.maxScaleVolt, 3.5F);
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("2000000"));
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica10dB"));
    QCOMPARE(bench.configuration.startFreq, 2000000);
    QCOMPARE(bench.desktop.beeps, 0);
}

// Some desktops show a program's menus in the desktop's own bar, so the program receives neither the click nor the key.
void TestPendingEntries::aMenuOfTheDesktopComesAfterTheEntry()
{
    Bench bench;
    const auto choose = [&](const char *name) {
        bench.window->findChild<QAction *>(QString::fromLatin1(name))->trigger();
    };
    bench.hands.typeOver(WalkBox::M3Y, QStringLiteral("0.1"));
    choose("mnuScalaLogaritmica1");
    QCOMPARE(bench.shown(WalkBox::M3Y), QStringLiteral("-20.0"));
    bench.hands.typeOver(WalkBox::M3Y, QStringLiteral("-40"));
    choose("mnuScalaLineare");
    QCOMPARE(bench.shown(WalkBox::M3Y), QStringLiteral("0.010"));
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("4500000"));
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/sweep.csv");
    QFile file(bench.desktop.fileChoice);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(test::walk_files::content(test::walk_files::Good, 0, 0.00244, 0.0));
    file.close();
    choose("mnuOpenCSV");
    bench.tab();
    QCOMPARE(bench.configuration.startFreq, 3001000);
    QCOMPARE(bench.shown(WalkBox::Start), masked(3001000));
}

void TestPendingEntries::theShownViewChosenAgainTakesTheEntry()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::M4Y, QStringLiteral("0.25"));
    bench.hands.choose(QStringLiteral("mnuView_0"));
    QCOMPARE(bench.height(GraphItem::M4), 250.0);
    QCOMPARE(bench.shown(WalkBox::M4Y), QStringLiteral("0.250"));
}

void TestPendingEntries::theMenuBarByKeyTakesTheEntry_data()
{
    QTest::addColumn<int>("way");
    QTest::addColumn<int>("after");
    int row = 0;
    for (const char *way : {"Alt", "Alt and a letter", "the mouse"})
        for (int after = 0; after < 3; ++after)
            QTest::addRow("%s, then %s", way,
                          std::array{"the graph", "another box", "Escape and another box"}[std::size_t(after)])
                << row++ / 3 << after;
}

void TestPendingEntries::theMenuBarByKeyTakesTheEntry()
{
    QFETCH(int, way);
    QFETCH(int, after);
    for (const WalkBox which : kFrequencyBoxes) {
        const Bench bench;
        QMenuBar *bar = bench.window->menuBar();
        bench.hands.typeOver(which, QStringLiteral("4000000"));
        if (way == 0) {
            bench.hands.key(Qt::Key_Alt);
            QVERIFY(bar->hasFocus());
        } else if (way == 1) {
            bench.hands.key(Qt::Key_C, Qt::AltModifier);
            QTRY_VERIFY(QApplication::activePopupWidget());
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        } else {
            bench.hands.lookIntoAMenu(false);
        }
        QVERIFY(!QApplication::activePopupWidget());
        const bool second = which == WalkBox::Stop;
        if (after == 2)
            bench.hands.key(Qt::Key_Escape);
        if (after == 0)
            bench.clickGraph(bench.place(200, 700), Qt::MiddleButton);
        else
            bench.hands.enter(second ? WalkBox::Start : WalkBox::Stop);
        QCOMPARE(bench.number(which), 4000000.0);
        QCOMPARE(bench.unmasked(), QString());
        bench.tab();
        QCOMPARE(bench.unmasked(), QString());
        QCOMPARE(bench.number(which), 4000000.0);
        if (which == WalkBox::Start)
            QCOMPARE(bench.configuration.startFreq, 4000000);
        else if (which == WalkBox::Stop)
            QCOMPARE(bench.configuration.stopFreq, 4000000);
        else
            QCOMPARE(bench.row(which == WalkBox::M1X ? GraphItem::M1 : GraphItem::M2), 301.0);
        QVERIFY(!bench.hands.box(which)->isModified());
        QCOMPARE(bench.desktop.beeps, 0);
    }
}

void TestPendingEntries::closingTakesTheEntry()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    // Closes the window with the title bar's button, with a key and with the Exit button.
    for (int way = 0; way < 3; ++way) {
        const auto close = [way](const Bench &bench) {
            if (way == 0)
                bench.window->close();
            else if (way == 1)
                bench.hands.key(Qt::Key_Q, Qt::ControlModifier);
            else
                bench.click("cmdExit");
        };
        const Bench half;
        half.hands.typeOver(WalkBox::M3Y, test::inLocale(locale, QStringLiteral("0.75")));
        half.tab();
        half.hands.typeOver(WalkBox::M3Y, QStringLiteral("-"));
        close(half);
        QVERIFY(!half.window->isVisible());
        const QString saved = half.folder.setting("Calvorn", "Marker 3");
        QCOMPARE(test::readNumber(saved), 0.75);

        const Bench typed;
        typed.hands.typeOver(WalkBox::Stop, QStringLiteral("6000000"));
        close(typed);
        QCOMPARE(typed.folder.setting("Calvorn", "Stop"), QStringLiteral("6000000"));

        const Bench marker;
        marker.hands.typeOver(WalkBox::M2X, QStringLiteral("4000000"));
        close(marker);
        QCOMPARE(test::readNumber(marker.folder.setting("Calvorn", "Marker 2")), 4000000.0);

        const Bench top;
        top.hands.typeOver(WalkBox::MaxVolt, test::inLocale(locale, QStringLiteral("3.5")));
        close(top);
        QCOMPARE(test::readNumber(top.folder.setting("Calvorn", "Max scaleV")), 3.5);
    }
}

// The user continues typing when the window is active again.
void TestPendingEntries::anotherWindowTakesNothing()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::M1X, QStringLiteral("40"));
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QCOMPARE(bench.shown(WalkBox::M1X), QStringLiteral("40"));
    other.hide();
    bench.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(bench.window.get()));
    QTest::keyClicks(bench.hands.box(WalkBox::M1X), QStringLiteral("00000"));
    bench.tab();
    QCOMPARE(bench.row(GraphItem::M1), 301.0);
}

QTEST_MAIN(TestPendingEntries)
#include "test_pending_entries.moc"
