// SPDX-License-Identifier: MIT
// What is being typed counts before anything else that the user does, wherever the focus is by then; and how the boxes
// are entered, read and left.
#include "core/number_text.h"
#include "display/marker_panel.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"
#include "tests/support/walk_hands.h"

using namespace calvorn;
using calvorn::test::WalkBox;
using calvorn::test::WalkHands;
using calvorn::test::WindowBench;

namespace {

// Row r at 1 MHz + (r - 1) x 10 kHz.
const QByteArray kSettings = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
                             "[Debug]\r\nLog=1\r\n[Parallel Port]\r\nLPT=0\r\n"
                             "[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\nScale=0\r\nMax scaleV=2.5\r\n"
                             "Marker 1=1500000\r\nMarker 2=3000000\r\nMarker 3=0.5\r\nMarker 4=1.5\r\n";

constexpr std::array kFrequencyBoxes{WalkBox::Start, WalkBox::Stop, WalkBox::M1X, WalkBox::M2X};

struct Bench : WindowBench
{
    WalkHands hands{*this};

    explicit Bench(const QByteArray &settings = kSettings)
        : WindowBench(test::FakeServerControl::program(), settings)
    {
        hands.settle();
    }

    SweepGraph *graph() const { return hands.graph(); }
    double row(GraphItem marker) const { return graph()->line(marker).x1; }
    double height(GraphItem marker) const { return graph()->line(marker).y1; }

    QPoint place(double row, double y) const
    {
        const QPointF at = graph()->coordinates().toPixel({row, y}, graph()->size());
        return {static_cast<int>(at.x()), static_cast<int>(at.y())};
    }
    double userHeight(QPoint place) const
    {
        return graph()->coordinates().toUser(QPointF(place) + QPointF(0.5, 0.5), graph()->size()).y();
    }
    void clickGraph(QPoint at, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers held = {}) const
    {
        QTest::mouseClick(graph(), button, held, at);
    }

    const QString &cell(int row) const { return table()->text(row, SweepTable::FrequencyColumn); }
    QString shown(WalkBox box) const { return hands.box(box)->text(); }
    double number(WalkBox box) const { return NumberText().toDouble(shown(box)); }
    void tab() const { hands.key(Qt::Key_Tab); }

    // Which boxes show plain digits although they do not have the focus.
    QString unmasked() const
    {
        QStringList names;
        for (const WalkBox which : kFrequencyBoxes) {
            const QLineEdit *box = hands.box(which);
            if (!box->hasFocus() && box->text() != NumberText().masked(number(which), kMaskHertz))
                names.append(box->objectName() + u' ' + box->text());
        }
        return names.join(u',');
    }
};

QString masked(double hertz)
{
    return NumberText().masked(hertz, kMaskHertz);
}

} // namespace

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

    void bothDecimalSeparatorsCount_data();
    void bothDecimalSeparatorsCount();

    void aChangeOfScaleReadsTheFullScale();
    void theFullScaleBoxesCorrectWhatIsTyped_data() { test::addLocaleRows(); }
    void theFullScaleBoxesCorrectWhatIsTyped();

    void theFirstClickSelectsTheNumber_data();
    void theFirstClickSelectsTheNumber();
    void digitsAreSteppedInPlainDigits_data() { test::addLocaleRows(); }
    void digitsAreSteppedInPlainDigits();
    void aDescendingSweepKeepsItsMarkers();
    void theDifferenceFollowsTheBoxesAtZero();
    void theStepIsReadOut();
};

void TestPendingEntries::aClickOnTheGraphComesAfterTheEntry()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    // The clicked marker is that of the box.
    bench.hands.typeOver(WalkBox::M1X, QStringLiteral("4000000"));
    bench.clickGraph(bench.place(51, 500));
    QCOMPARE(bench.row(GraphItem::M1), 51.0);
    QCOMPARE(bench.number(WalkBox::M1X), 1500000.0);
    bench.tab();
    QCOMPARE(bench.row(GraphItem::M1), 51.0);
    QCOMPARE(bench.shown(WalkBox::M1X), masked(1500000));
    // That of another box.
    bench.hands.typeOver(WalkBox::M1X, QStringLiteral("4000000"));
    bench.clickGraph(bench.place(101, 500), Qt::RightButton);
    QCOMPARE(bench.row(GraphItem::M1), 301.0);
    QCOMPARE(bench.row(GraphItem::M2), 101.0);
    bench.tab();
    QCOMPARE(bench.shown(WalkBox::M1X), masked(4000000));
    QCOMPARE(bench.number(WalkBox::M2X), 2000000.0); // which has the focus by now
    // A frequency of the range, with a button that puts no marker.
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
    // What is still being typed is copied, too.
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
    QCOMPARE(bench.shown(WalkBox::M3Y), NumberText().masked(clicked / 1000.0, kMaskVolt));
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
        QCOMPARE(bench.cell(1), masked(3001000)); // nothing has planned the table anew
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

// Some desktops show the menus of a program in their own bar, and the program sees neither click nor key.
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
    // By the window's own button, by key and by its button.
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
        QCOMPARE(NumberText().toDouble(saved), 0.75);

        const Bench typed;
        typed.hands.typeOver(WalkBox::Stop, QStringLiteral("6000000"));
        close(typed);
        QCOMPARE(typed.folder.setting("Calvorn", "Stop"), QStringLiteral("6000000"));

        const Bench marker;
        marker.hands.typeOver(WalkBox::M2X, QStringLiteral("4000000"));
        close(marker);
        QCOMPARE(NumberText().toDouble(marker.folder.setting("Calvorn", "Marker 2")), 4000000.0);

        const Bench top;
        top.hands.typeOver(WalkBox::MaxVolt, test::inLocale(locale, QStringLiteral("3.5")));
        close(top);
        QCOMPARE(NumberText().toDouble(top.folder.setting("Calvorn", "Max scaleV")), 3.5);
    }
}

// The user goes on typing when the window comes back.
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

void TestPendingEntries::bothDecimalSeparatorsCount_data()
{
    test::addLocaleRows();
    QTest::newRow("de_DE") << QLocale(QLocale::German, QLocale::Germany);
}

void TestPendingEntries::bothDecimalSeparatorsCount()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    const std::array<std::pair<QString, double>, 4> entries{{{QStringLiteral("0.5"), 0.5},
                                                             {QStringLiteral("1,25"), 1.25},
                                                             {QStringLiteral("0,5"), 0.5},
                                                             {QStringLiteral("1.25"), 1.25}}};
    for (const auto &[text, volts] : entries) {
        bench.hands.typeOver(WalkBox::M3Y, text);
        bench.tab();
        QCOMPARE(bench.height(GraphItem::M3), volts * 1000.0);
        QCOMPARE(bench.shown(WalkBox::M3Y), NumberText().masked(volts, kMaskVolt));
        bench.hands.typeOver(WalkBox::M4Y, text);
        bench.hands.key(Qt::Key_Return);
        QCOMPARE(bench.height(GraphItem::M4), volts * 1000.0);
        bench.hands.typeOver(WalkBox::MaxVolt, text);
        bench.tab();
        QCOMPARE(static_cast<double>(bench.configuration.maxScaleVolt), volts);
        QCOMPARE(bench.graph()->coordinates().fullScaleVolt(), volts);
    }
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1"));
    for (const QString &text : {QStringLiteral("40.4"), QStringLiteral("40,4"), QStringLiteral("-40.4")}) {
        bench.hands.typeOver(WalkBox::MaxDb, QStringLiteral("60"));
        bench.tab();
        bench.hands.typeOver(WalkBox::MaxDb, text);
        bench.tab();
        QCOMPARE(bench.configuration.maxScaleDb, -40);
        QCOMPARE(bench.shown(WalkBox::MaxDb), test::inLocale(locale, QStringLiteral("-40.4")));
    }
    bench.hands.typeOver(WalkBox::M3Y, QStringLiteral("-12,5"));
    bench.tab();
    bench.hands.typeOver(WalkBox::M4Y, QStringLiteral("-12.5"));
    bench.tab();
    QCOMPARE(bench.height(GraphItem::M3), 12500.0);
    QCOMPARE(bench.height(GraphItem::M4), 12500.0);
    QCOMPARE(bench.desktop.beeps, 0);
}

// The record takes what its box shows at that moment, which may have fewer digits or another sign.
void TestPendingEntries::aChangeOfScaleReadsTheFullScale()
{
    QByteArray settings = kSettings;
    settings.replace("Max scaleV=2.5", "Max scaleV=1.23456\r\nMax scaleDb=-60");
    const Bench bench(settings);
    QCOMPARE(bench.shown(WalkBox::MaxVolt), QStringLiteral("1.23"));
    QCOMPARE(bench.configuration.maxScaleVolt, 1.23456F);
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1"));
    bench.hands.typeOver(WalkBox::MaxDb, QStringLiteral("40.4"));
    bench.tab();
    QCOMPARE(bench.shown(WalkBox::MaxDb), QStringLiteral("-40.4"));
    bench.hands.choose(QStringLiteral("mnuScalaLineare"));
    QCOMPARE(bench.configuration.maxScaleVolt, 1.23F);
    QCOMPARE(bench.graph()->coordinates().fullScaleVolt(), static_cast<double>(1.23F));
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1dB"));
    QCOMPARE(bench.configuration.maxScaleDb, -40);
    QCOMPARE(bench.desktop.beeps, 0);
}

void TestPendingEntries::theFullScaleBoxesCorrectWhatIsTyped()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    const auto leaves = [&](WalkBox box, const char *typed, const char *shown, bool beeps) {
        const int before = bench.desktop.beeps;
        bench.hands.typeOver(box, QString::fromLatin1(typed));
        bench.tab();
        QCOMPARE(bench.shown(box), test::inLocale(locale, QString::fromLatin1(shown)));
        QCOMPARE(bench.desktop.beeps > before, beeps);
    };
    leaves(WalkBox::MaxVolt, "0", "2.50", true);
    leaves(WalkBox::MaxVolt, "-1", "2.50", true);
    leaves(WalkBox::MaxVolt, "many", "2.50", true);
    leaves(WalkBox::MaxVolt, "10", "10.00", false);
    leaves(WalkBox::MaxVolt, "3", "3.00", false);
    leaves(WalkBox::MaxVolt, "12", "10.00", true);
    QCOMPARE(bench.configuration.maxScaleVolt, 10.0F);
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1"));
    leaves(WalkBox::MaxDb, "15", "-15.0", false);
    leaves(WalkBox::MaxDb, "many", "-15.0", true);
    leaves(WalkBox::MaxDb, "-90", "-90.0", false);
    leaves(WalkBox::MaxDb, "-30", "-30.0", false);
    leaves(WalkBox::MaxDb, "120", "-90.0", true);
    QCOMPARE(bench.configuration.maxScaleDb, -90);
    // The value counts as it is typed, not as it was rounded for the box.
    leaves(WalkBox::MaxDb, "90.04", "-90.0", true);
}

void TestPendingEntries::theFirstClickSelectsTheNumber_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"txtStart", "txtStop", "txtM1X", "txtM2X", "txtM3Y", "txtMaxVolt"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestPendingEntries::theFirstClickSelectsTheNumber()
{
    QFETCH(QString, name);
    const Bench bench;
    auto *box = bench.find<QLineEdit>(qPrintable(name));
    bench.find("cmdStart")->setFocus();
    const QPoint inside(box->width() - 14, box->height() / 2);
    QTest::mouseClick(box, Qt::LeftButton, {}, inside);
    QVERIFY(box->hasFocus());
    QCOMPARE(box->selectedText(), box->text());
    QVERIFY(!box->text().contains(u',')); // plain digits to edit
    // The second one puts the caret there.
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(box, Qt::LeftButton, {}, inside);
    QVERIFY(!box->hasSelectedText());
    QVERIFY(box->cursorPosition() > 0);
    QTest::keyClick(box, Qt::Key_Backspace);
    QTest::keyClick(box, Qt::Key_Escape);
    // Dragging selects a part, also when it enters the box.
    bench.find("cmdStart")->setFocus();
    const int digit = box->fontMetrics().horizontalAdvance(u'8');
    const QPoint further(box->width() - 8 - 3 * digit / 2, box->height() / 2);
    QTest::mousePress(box, Qt::LeftButton, {}, QPoint(box->width() - 2, box->height() / 2));
    WalkHands::moveMouse(box, further, Qt::LeftButton);
    QTest::mouseRelease(box, Qt::LeftButton, {}, further);
    QVERIFY2(box->hasSelectedText() && box->selectedText().size() < box->text().size(),
             qPrintable(box->selectedText()));
}

void TestPendingEntries::digitsAreSteppedInPlainDigits()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    QLineEdit *box = bench.hands.box(WalkBox::Start);
    bench.hands.enter(WalkBox::Start);
    QCOMPARE(box->text(), QStringLiteral("1000000"));
    bench.hands.wheel(QStringLiteral("VScrollStart_3"), true);
    QCOMPARE(box->text(), QStringLiteral("1001000"));
    bench.hands.key(Qt::Key_End);
    bench.hands.key(Qt::Key_Up);
    QCOMPARE(box->text(), QStringLiteral("1001001"));
    bench.hands.key(Qt::Key_Left);
    bench.hands.key(Qt::Key_Down);
    QCOMPARE(box->text(), QStringLiteral("1000991"));
    QCOMPARE(box->cursorPosition(), 6); // the caret stays at its digit
    bench.hands.arrow(QStringLiteral("VScrollStart_6"), true);
    QCOMPARE(box->text(), QStringLiteral("2000991"));
    QVERIFY(box->hasFocus());
    QVERIFY(!box->isModified());
    // A digit of what is being typed.
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("1500000"));
    bench.hands.wheel(QStringLiteral("txtStart"), true);
    QCOMPARE(box->text().size(), 7);
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("1500000"));
    bench.hands.arrow(QStringLiteral("VScrollStart_0"), true);
    QCOMPARE(box->text(), QStringLiteral("1500001"));
    // The plan comes while the box is open.
    bench.hands.letTimePass();
    QCOMPARE(box->text(), QStringLiteral("1500001"));
    QCOMPARE(bench.cell(1), masked(1500001));
    bench.tab();
    QCOMPARE(box->text(), masked(1500001));
    // Without the focus the mask stays.
    bench.hands.wheel(QStringLiteral("VScrollStart_0"), true);
    QCOMPARE(box->text(), masked(1500002));
    QCOMPARE(bench.configuration.startFreq, 1500002);
    QCOMPARE(bench.desktop.beeps, 0);
}

// The first row that is not below a frequency is row 1 of them all.
void TestPendingEntries::aDescendingSweepKeepsItsMarkers()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("5000000"));
    bench.hands.typeOver(WalkBox::Stop, QStringLiteral("1000000"));
    bench.tab();
    bench.hands.letTimePass();
    QCOMPARE(bench.cell(1), masked(5000000));
    QCOMPARE(bench.cell(101), masked(4000000));
    bench.clickGraph(bench.place(101, 500));
    bench.clickGraph(bench.place(301, 500), Qt::RightButton);
    for (const auto &[box, marker] : {std::pair(WalkBox::M1X, GraphItem::M1), std::pair(WalkBox::M2X, GraphItem::M2)}) {
        const double before = bench.row(marker);
        bench.hands.enter(box);
        bench.tab();
        QCOMPARE(bench.row(marker), before);
        bench.hands.enter(box);
        bench.hands.key(Qt::Key_Return);
        QCOMPARE(bench.row(marker), before);
        bench.hands.key(Qt::Key_Alt);
        bench.hands.key(Qt::Key_Escape);
        bench.tab();
        QCOMPARE(bench.row(marker), before);
        QCOMPARE(bench.unmasked(), QString());
    }
}

void TestPendingEntries::theDifferenceFollowsTheBoxesAtZero()
{
    QByteArray settings = kSettings;
    settings.replace("Scale=0", "Scale=2\r\nMax scaleDb=-10");
    const Bench bench(settings);
    bench.hands.typeOver(WalkBox::M4Y, QStringLiteral("-5"));
    bench.tab();
    const int zero = bench.place(200, 0.0).y();
    int zeros = 0;
    for (int y = zero - 12; y <= zero + 12; ++y) {
        // Moved there while the button is held, and put there by the release.
        const int from = bench.place(200, bench.height(GraphItem::M3)).y();
        QTest::mousePress(bench.graph(), Qt::LeftButton, {}, QPoint(300, from));
        WalkHands::moveMouse(bench.graph(), QPoint(300, from + 40), Qt::LeftButton);
        for (int held = 1; held >= 0; --held) {
            if (held)
                WalkHands::moveMouse(bench.graph(), QPoint(300, y), Qt::LeftButton);
            else
                QTest::mouseRelease(bench.graph(), Qt::LeftButton, {}, QPoint(300, y));
            const double m3 = bench.number(WalkBox::M3Y);
            const double m4 = bench.number(WalkBox::M4Y);
            zeros += m3 == 0.0 ? 1 : 0;
            QCOMPARE(bench.text("txtM4M3"), NumberText().masked(markerDifference(false, m3, m4), kMaskDb));
        }
    }
    QVERIFY(zeros > 2);
}

void TestPendingEntries::theStepIsReadOut()
{
    const Bench bench;
    QWidget *step = bench.find("txtStep");
    QCOMPARE(bench.text("txtStep"), masked(10000));
    bench.hands.enter(WalkBox::Start);
    QTest::mouseClick(step, Qt::LeftButton, {}, step->rect().center());
    QVERIFY(!step->hasFocus());
    QVERIFY(bench.hands.box(WalkBox::Start)->hasFocus());
    QVERIFY(step->cursor().shape() != Qt::IBeamCursor);
    QTest::keyClicks(step, QStringLiteral("5"));
    QCOMPARE(bench.text("txtStep"), masked(10000));
    for (int i = 0; i < 60; ++i) {
        bench.tab();
        QVERIFY(!step->hasFocus());
    }
}

QTEST_MAIN(TestPendingEntries)
#include "test_pending_entries.moc"
