// SPDX-License-Identifier: MIT
// Selecting the range by mouse in the graph, by centre and span, and by stepping through previous ranges.
#include "tests/support/fake_server_control.h"
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/locales.h"
#include "tests/support/own_plot.h"
#include "tests/support/walk_hands.h"
#include "tests/support/while_modal.h"

#include <QDialog>
#include <QRubberBand>

#include <cmath>

using namespace calvorn;
using calvorn::test::WalkBox;
using calvorn::test::WalkHands;
using calvorn::test::whileModal;

namespace {

// Row r is at 1 MHz + (r - 1) x 10 kHz; M1 is in row 51, M2 in row 201.
const QByteArray kSettings = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
                             "[Parallel Port]\r\nLPT=0\r\n[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\n"
                             "Marker 1=1500000\r\nMarker 2=3000000\r\nScale=0\r\nMax scaleV=2.5\r\n";

constexpr int kRowHz = 10000;
constexpr int kPixelHz = 7520; // per pixel, in a graph 534 pixels wide

struct Bench : test::WindowBench
{
    WalkHands hands{*this};

    explicit Bench(const QString &server = test::FakeServerControl::program(), const QByteArray &text = kSettings)
        : WindowBench(server, text)
    {
        updateTimer()->setInterval(0);
        hands.settle();
    }

    QTimer *updateTimer() const { return window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep")); }
    SweepGraph *graph() const { return hands.graph(); }
    QPoint pixel(double row) const { return test::OwnPlot(configuration, graph()->size()).pixel(row, 1000.0); }
    double row(GraphItem marker) const { return graph()->line(marker).x1; }
    int width() const { return configuration.stopFreq - configuration.startFreq; }
    QString range() const { return QStringLiteral("%1 %2").arg(configuration.startFreq).arg(configuration.stopFreq); }
    QString boxes() const { return text("txtStart") + u' ' + text("txtStop"); }
    // Returns whether the table's plan matches the configuration.
    bool isPlanned() const
    {
        return !updateTimer()->isActive() &&
               table()->text(1, SweepTable::FrequencyColumn) == test::shownHertz(configuration.startFreq);
    }

    void wheel(double atRow, int delta, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const
    {
        const QPoint at = pixel(atRow);
        QWheelEvent event(at, graph()->mapToGlobal(at), {}, QPoint(0, delta), Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(graph(), &event);
    }
    void press(double atRow, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const
    {
        QTest::mousePress(graph(), Qt::LeftButton, modifiers, pixel(atRow));
    }
    void move(double atRow) const { WalkHands::moveMouse(graph(), pixel(atRow), Qt::LeftButton); }
    void release(double atRow) const
    {
        QTest::mouseRelease(graph(), Qt::LeftButton, Qt::ControlModifier, pixel(atRow));
    }
    void drag(double from, double to) const
    {
        press(from);
        move((from + to) / 2.0);
        move(to);
        release(to);
    }
    bool isBandShown() const
    {
        const auto *band = graph()->findChild<QRubberBand *>(QStringLiteral("bandSpan"));
        return band && band->isVisible();
    }

    void typeRange(const QString &start, const QString &stop) const
    {
        type("txtStart", start);
        type("txtStop", stop);
    }
    void back() const { hands.key(Qt::Key_Left, Qt::AltModifier); }
    void forth() const { hands.key(Qt::Key_Right, Qt::AltModifier); }
    QAction *action(const char *name) const { return window->findChild<QAction *>(QString::fromLatin1(name)); }

    void inDialog(const std::function<void(QWidget &)> &act) const
    {
        bool opened = false;
        whileModal([&](QWidget &dialog) {
            opened = dialog.objectName() == u"frmSpan";
            act(dialog);
            if (dialog.isVisible())
                qFatal("the dialog is still open");
        });
        action("mnuSpan")->trigger();
        QVERIFY(opened);
        // Without a window manager, the test must activate the window itself.
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }
    static QLineEdit *box(QWidget &dialog, const char *name)
    {
        return dialog.findChild<QLineEdit *>(QString::fromLatin1(name));
    }
    static void typeInto(QWidget &dialog, const char *name, const QString &text)
    {
        QLineEdit *entry = box(dialog, name);
        QTest::mouseClick(entry, Qt::LeftButton, {}, QPoint(entry->width() - 12, entry->height() / 2));
        QTest::keyClick(entry, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(entry, text);
    }
};

} // namespace

class TestSpanCommands : public QObject
{
    Q_OBJECT

    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void theWheelZoomsAroundThePointer_data();
    void theWheelZoomsAroundThePointer();
    void theWheelStaysInsideTheLimits();
    void partsOfANotchAddUp();
    void theWheelWithoutCtrlZoomsNothing();
    void theWheelTakesWhatIsBeingTypedFirst();

    void aDragTakesTheSpan_data();
    void aDragTakesTheSpan();
    void aSweepDownwardsStaysOne();
    void escapeCancelsADrag();
    void aDragOverAMarkerLeavesItAlone();
    void aClickWithCtrlPutsM1();
    void aDragInASweepReplansIt_data() { test::addInterfaceRows(); }
    void aDragInASweepReplansIt();

    void backAndForthThroughTheSpans();
    void quickStepsLeaveNothingOut();
    void aBoxThatIsEditedTakesItsTextFirst();
    void aSpanFromAFileIsNotRemembered();
    void fiftySpansAreRemembered();

    void centreAndSpanAreTyped_data() { test::addLocaleRows(); }
    void centreAndSpanAreTyped();
    void badEntriesAreCorrected();
    void theDialogCanBeLeft();
    void theFullRangeIsThatOfTheGenerator();
};

void TestSpanCommands::theWheelZoomsAroundThePointer_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("notches");
    QTest::addColumn<int>("width");
    QTest::newRow("in, in the middle") << 201 << 1 << 2000000;
    QTest::newRow("in, at the left") << 21 << 1 << 2000000;
    QTest::newRow("in, at the right") << 380 << 1 << 2000000;
    QTest::newRow("in, two notches") << 101 << 2 << 1000000;
    QTest::newRow("out") << 21 << -1 << 8000000;
    QTest::newRow("out, two notches") << 10 << -2 << 16000000;
}

void TestSpanCommands::theWheelZoomsAroundThePointer()
{
    QFETCH(int, row);
    QFETCH(int, notches);
    QFETCH(int, width);
    const Bench bench;
    const double frequency = 1000000.0 + (row - 1) * kRowHz;
    const double place = (frequency - 1000000.0) / 4000000.0;
    bench.wheel(row, notches * 120);
    QTRY_VERIFY(bench.isPlanned());
    QVERIFY2(std::abs(bench.width() - width) <= 1, qPrintable(bench.range()));
    const double start = frequency - place * width;
    QVERIFY2(std::abs(bench.configuration.startFreq - start) < kPixelHz * std::max(1, width / 4000000),
             qPrintable(bench.range()));
    QCOMPARE(bench.boxes(),
             test::shownHertz(bench.configuration.startFreq) + u' ' + test::shownHertz(bench.configuration.stopFreq));
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestSpanCommands::theWheelStaysInsideTheLimits()
{
    const Bench bench;
    for (int i = 0; i < 8; ++i)
        bench.wheel(201, -120);
    QTRY_VERIFY(bench.isPlanned());
    QCOMPARE(bench.range(), QStringLiteral("10 60000000"));
    for (int i = 0; i < 30; ++i)
        bench.wheel(201, 120);
    QTRY_VERIFY(bench.isPlanned());
    QCOMPARE(bench.width(), 400);
    QVERIFY(bench.desktop.boxes.isEmpty());
    QCOMPARE(bench.desktop.beeps, 0);
}

void TestSpanCommands::partsOfANotchAddUp()
{
    const Bench bench;
    for (int i = 0; i < 3; ++i)
        bench.wheel(201, 30);
    QCOMPARE(bench.width(), 4000000);
    bench.wheel(201, 30);
    QVERIFY2(std::abs(bench.width() - 2000000) <= 1, qPrintable(bench.range()));
}

void TestSpanCommands::theWheelWithoutCtrlZoomsNothing()
{
    const Bench bench;
    bench.wheel(201, 120, Qt::NoModifier);
    bench.wheel(201, 120, Qt::ControlModifier | Qt::ShiftModifier);
    bench.wheel(201, 120, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    QVERIFY(!bench.updateTimer()->isActive());
}

void TestSpanCommands::theWheelTakesWhatIsBeingTypedFirst()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::Stop, QStringLiteral("9000000"));
    bench.wheel(1, 120);
    QVERIFY2(std::abs(bench.width() - 4000000) <= 1, qPrintable(bench.range()));
    QVERIFY2(std::abs(bench.configuration.startFreq - 1000000) < kPixelHz, qPrintable(bench.range()));
}

void TestSpanCommands::aDragTakesTheSpan_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("to the right") << 101 << 301;
    QTest::newRow("to the left") << 301 << 101;
}

void TestSpanCommands::aDragTakesTheSpan()
{
    QFETCH(int, from);
    QFETCH(int, to);
    const Bench bench;
    bench.press(from);
    QVERIFY(!bench.isBandShown());
    bench.move((from + to) / 2.0);
    QVERIFY(bench.isBandShown());
    bench.move(to);
    const QRect band = bench.graph()->findChild<QWidget *>(QStringLiteral("bandSpan"))->geometry();
    QCOMPARE(band.left(), bench.pixel(101).x());
    QCOMPARE(band.right(), bench.pixel(301).x());
    QCOMPARE(band.height(), bench.graph()->height());
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    bench.release(to);
    QVERIFY(!bench.isBandShown());
    QTRY_VERIFY(bench.isPlanned());
    QVERIFY2(std::abs(bench.configuration.startFreq - 2000000) < kPixelHz, qPrintable(bench.range()));
    QVERIFY2(std::abs(bench.configuration.stopFreq - 4000000) < kPixelHz, qPrintable(bench.range()));
    QCOMPARE(bench.row(GraphItem::M1), 51.0);
    QCOMPARE(bench.row(GraphItem::M2), 201.0);
}

void TestSpanCommands::aSweepDownwardsStaysOne()
{
    const Bench bench;
    bench.typeRange(QStringLiteral("5000000"), QStringLiteral("1000000"));
    QTRY_VERIFY(bench.isPlanned());
    bench.drag(101, 301);
    QTRY_VERIFY(bench.isPlanned());
    QVERIFY2(std::abs(bench.configuration.startFreq - 4000000) < kPixelHz, qPrintable(bench.range()));
    QVERIFY2(std::abs(bench.configuration.stopFreq - 2000000) < kPixelHz, qPrintable(bench.range()));
}

void TestSpanCommands::escapeCancelsADrag()
{
    const Bench bench;
    bench.press(101);
    bench.move(200);
    bench.move(301);
    QVERIFY(bench.isBandShown());
    bench.hands.key(Qt::Key_Escape);
    QVERIFY(!bench.isBandShown());
    bench.move(350);
    QVERIFY(!bench.isBandShown());
    bench.release(350);
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    QVERIFY(!bench.updateTimer()->isActive());
    QCOMPARE(bench.row(GraphItem::M1), 51.0);
    // A drag that returns to its starting point selects nothing.
    bench.press(101);
    bench.move(301);
    bench.release(101);
    QVERIFY(!bench.isBandShown());
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    // The next drag works normally.
    bench.drag(101, 301);
    QVERIFY2(std::abs(bench.configuration.startFreq - 2000000) < kPixelHz, qPrintable(bench.range()));
}

void TestSpanCommands::aDragOverAMarkerLeavesItAlone()
{
    const Bench bench;
    bench.drag(51, 301);
    QCOMPARE(bench.row(GraphItem::M1), 51.0);
    QVERIFY2(std::abs(bench.configuration.startFreq - 1500000) < kPixelHz, qPrintable(bench.range()));
}

void TestSpanCommands::aClickWithCtrlPutsM1()
{
    const Bench bench;
    QTest::mouseClick(bench.graph(), Qt::LeftButton, Qt::ControlModifier, bench.pixel(301));
    QCOMPARE(bench.row(GraphItem::M1), 301.0);
    // A click with a slight movement is still a click.
    bench.press(101);
    bench.move(102);
    bench.release(102);
    QVERIFY(std::abs(bench.row(GraphItem::M1) - 102.0) <= 1.0);
    QTest::mouseClick(bench.graph(), Qt::RightButton, Qt::ControlModifier, bench.pixel(331));
    QCOMPARE(bench.row(GraphItem::M2), 331.0);
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
}

void TestSpanCommands::aDragInASweepReplansIt()
{
    QFETCH(int, interfaceType);
    const Bench bench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                      test::crystalSettings(static_cast<std::int16_t>(interfaceType)));
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.table()->hasSweep(), 10'000);
    bench.drag(101, 301);
    QTRY_VERIFY_WITH_TIMEOUT(bench.isPlanned() && bench.table()->hasSweep(), 10'000);
    QVERIFY2(std::abs(bench.configuration.startFreq - 8975000) < 200, qPrintable(bench.range()));
    QVERIFY(bench.isShown("cmdStop"));
    bench.back();
    QTRY_VERIFY_WITH_TIMEOUT(bench.isPlanned() && bench.table()->hasSweep(), 10'000);
    QCOMPARE(bench.range(), QStringLiteral("8950000 9050000"));
    QVERIFY(bench.isShown("cmdStop"));
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isShown("cmdStart"));
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
}

void TestSpanCommands::backAndForthThroughTheSpans()
{
    const Bench bench;
    bench.back();
    bench.forth();
    QCOMPARE(bench.desktop.beeps, 2);
    bench.type("txtStop", QStringLiteral("7000000"));
    QTRY_VERIFY(bench.isPlanned());
    bench.drag(101, 301);
    QTRY_VERIFY(bench.isPlanned());
    const QString dragged = bench.range();
    bench.back();
    QTRY_VERIFY(bench.isPlanned());
    QCOMPARE(bench.range(), QStringLiteral("1000000 7000000"));
    bench.back();
    QTRY_VERIFY(bench.isPlanned());
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    QCOMPARE(bench.desktop.beeps, 2);
    bench.back();
    QCOMPARE(bench.desktop.beeps, 3);
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    bench.forth();
    bench.forth();
    QTRY_VERIFY(bench.isPlanned());
    QCOMPARE(bench.range(), dragged);
    bench.forth();
    QCOMPARE(bench.desktop.beeps, 4);
    // Leaving a box unchanged adds no span to the history.
    bench.back();
    QTRY_VERIFY(bench.isPlanned());
    bench.type("txtStop", QStringLiteral("7000000"));
    QTRY_VERIFY(!bench.updateTimer()->isActive());
    bench.forth();
    QCOMPARE(bench.range(), dragged);
}

// The delayed planning does not run between the steps.
void TestSpanCommands::quickStepsLeaveNothingOut()
{
    const Bench bench;
    bench.hands.holdTime();
    bench.type("txtStop", QStringLiteral("7000000"));
    bench.back();
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    bench.forth();
    QCOMPARE(bench.range(), QStringLiteral("1000000 7000000"));
    bench.back();
    bench.hands.letTimePass();
    QCOMPARE(bench.boxes(), QStringLiteral("1,000,000 5,000,000"));
    QVERIFY(bench.isPlanned());
    bench.forth();
    bench.hands.letTimePass();
    QCOMPARE(bench.range(), QStringLiteral("1000000 7000000"));
}

void TestSpanCommands::aBoxThatIsEditedTakesItsTextFirst()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::Stop, QStringLiteral("7000000"));
    // Moves only the caret.
    bench.hands.key(Qt::Key_Left);
    bench.hands.key(Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(bench.text("txtStop"), QStringLiteral("7000000"));
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    bench.back();
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    bench.forth();
    QCOMPARE(bench.range(), QStringLiteral("1000000 7000000"));
    QVERIFY(bench.find("txtStop")->hasFocus());
}

void TestSpanCommands::aSpanFromAFileIsNotRemembered()
{
    Bench bench;
    bench.type("txtStop", QStringLiteral("7000000"));
    QTRY_VERIFY(bench.isPlanned());
    QFile file(bench.folder.path() + QStringLiteral("/sweep.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(test::walk_files::content(test::walk_files::Good, 0, 0.00244, 0.0));
    file.close();
    bench.desktop.fileChoice = file.fileName();
    bench.action("mnuOpenCSV")->trigger();
    QCOMPARE(bench.configuration.startFreq, 3001000);
    bench.back();
    QTRY_VERIFY(bench.isPlanned());
    QCOMPARE(bench.range(), QStringLiteral("1000000 7000000"));
    bench.back();
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    bench.forth();
    bench.forth();
    QCOMPARE(bench.range(), QStringLiteral("1000000 7000000"));
}

void TestSpanCommands::fiftySpansAreRemembered()
{
    const Bench bench;
    for (int i = 1; i <= 50; ++i) {
        bench.type("txtStop", QString::number(5000000 + i * 1000));
        QTRY_VERIFY(!bench.updateTimer()->isActive());
    }
    for (int i = 0; i < 50; ++i)
        bench.back();
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
}

void TestSpanCommands::centreAndSpanAreTyped()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    bench.inDialog([](QWidget &dialog) {
        QCOMPARE(Bench::box(dialog, "txtCentre")->text(), QStringLiteral("3000000"));
        QCOMPARE(Bench::box(dialog, "txtSpan")->text(), test::shownHertz(4000000));
        QCOMPARE(Bench::box(dialog, "txtCentre")->selectedText(), QStringLiteral("3000000"));
        // The first key replaces the number.
        QTest::keyClicks(Bench::box(dialog, "txtCentre"), QStringLiteral("7100000"));
        QTest::keyClick(Bench::box(dialog, "txtCentre"), Qt::Key_Tab);
        QCOMPARE(Bench::box(dialog, "txtCentre")->text(), test::shownHertz(7100000));
        QVERIFY(Bench::box(dialog, "txtSpan")->hasFocus());
        QTest::keyClicks(Bench::box(dialog, "txtSpan"), QStringLiteral("200001"));
        QTest::keyClick(Bench::box(dialog, "txtSpan"), Qt::Key_Return);
    });
    QTRY_VERIFY(bench.isPlanned());
    QCOMPARE(bench.range(), QStringLiteral("7000000 7200001"));
    QCOMPARE(bench.boxes(), test::shownHertz(7000000) + u' ' + test::shownHertz(7200001));
    QCOMPARE(bench.desktop.beeps, 0);
    // If the dialog is confirmed without a change, the range remains exact to the hertz.
    bench.inDialog([](QWidget &dialog) {
        QTest::mouseClick(dialog.findChild<QWidget *>(QStringLiteral("cmdOk")), Qt::LeftButton);
    });
    QCOMPARE(bench.range(), QStringLiteral("7000000 7200001"));
    QVERIFY(!bench.updateTimer()->isActive());
    bench.back();
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
}

void TestSpanCommands::badEntriesAreCorrected()
{
    Bench bench;
    bench.inDialog([&](QWidget &dialog) {
        Bench::typeInto(dialog, "txtCentre", QStringLiteral("much"));
        QTest::keyClick(Bench::box(dialog, "txtCentre"), Qt::Key_Tab);
        QCOMPARE(Bench::box(dialog, "txtCentre")->text(), QStringLiteral("3,000,000"));
        QCOMPARE(bench.desktop.beeps, 1);
        Bench::typeInto(dialog, "txtSpan", QStringLiteral("90000000"));
        QTest::keyClick(Bench::box(dialog, "txtSpan"), Qt::Key_Tab);
        QCOMPARE(Bench::box(dialog, "txtSpan")->text(), QStringLiteral("5,999,980"));
        QCOMPARE(bench.desktop.beeps, 2);
        Bench::typeInto(dialog, "txtSpan", QStringLiteral("-7"));
        QTest::keyClick(Bench::box(dialog, "txtSpan"), Qt::Key_Tab);
        QCOMPARE(Bench::box(dialog, "txtSpan")->text(), QStringLiteral("400"));
        QCOMPARE(bench.desktop.beeps, 3);
        Bench::typeInto(dialog, "txtSpan", QStringLiteral("1000000"));
        Bench::typeInto(dialog, "txtCentre", QStringLiteral("99000000"));
        QTest::keyClick(Bench::box(dialog, "txtCentre"), Qt::Key_Tab);
        QCOMPARE(Bench::box(dialog, "txtCentre")->text(), QStringLiteral("59,999,800"));
        QCOMPARE(Bench::box(dialog, "txtSpan")->text(), QStringLiteral("400"));
        QTest::mouseClick(dialog.findChild<QWidget *>(QStringLiteral("cmdOk")), Qt::LeftButton);
    });
    QCOMPARE(bench.range(), QStringLiteral("59999600 60000000"));
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestSpanCommands::theDialogCanBeLeft()
{
    const Bench bench;
    bench.inDialog([](QWidget &dialog) {
        QTest::keyClicks(Bench::box(dialog, "txtCentre"), QStringLiteral("7100000"));
        QTest::keyClick(Bench::box(dialog, "txtCentre"), Qt::Key_Escape);
    });
    bench.inDialog([](QWidget &dialog) {
        QCOMPARE(Bench::box(dialog, "txtCentre")->text(), QStringLiteral("3000000"));
        Bench::typeInto(dialog, "txtCentre", QStringLiteral("7100000"));
        QTest::mouseClick(dialog.findChild<QWidget *>(QStringLiteral("cmdCancel")), Qt::LeftButton);
    });
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    QVERIFY(!bench.updateTimer()->isActive());
}

void TestSpanCommands::theFullRangeIsThatOfTheGenerator()
{
    const Bench bench;
    bench.hands.choose(QStringLiteral("mnuFullRange"));
    QTRY_VERIFY(bench.isPlanned());
    QCOMPARE(bench.range(), QStringLiteral("10 60000000"));
    bench.back();
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    bench.typeRange(QStringLiteral("5000000"), QStringLiteral("1000000"));
    bench.hands.choose(QStringLiteral("mnuFullRange"));
    QCOMPARE(bench.range(), QStringLiteral("60000000 10"));
}

QTEST_MAIN(TestSpanCommands)
#include "test_span_commands.moc"
