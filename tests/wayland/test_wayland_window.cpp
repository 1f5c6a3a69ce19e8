// SPDX-License-Identifier: MIT
// Tests the main window in a Wayland session: what is on the screen, mouse, keyboard, the Measure panel.
#include "tests/wayland/wayland_bench.h"

using namespace calvorn::test;

namespace {

constexpr int kRows = 400;    // of a sweep
constexpr double kHz = 35000; // step of the prepared settings

QStringList withCtrl(const QStringList &actions)
{
    return QStringList{QStringLiteral("keydown"), QStringLiteral("ctrl")} + actions +
           QStringList{QStringLiteral("keyup"), QStringLiteral("ctrl")};
}

} // namespace

class TestWaylandWindow : public WaylandBench
{
    Q_OBJECT

private:
    int number(const char *part) const { return text(part).remove(u',').toInt(); }

private slots:
    void showsASweep();
    void theFrameHasTheIcon();
    void menusOpenAtTheirPlace();
    void menusOpenByKeyboard();
    void theAxesHaveMenus();
    void aMarkerIsDragged();
    void escapeCancelsADrag();
    void theRangeIsDraggedAndZoomed();
    void theBarAboveTheTableIsDragged();
    void toolTipsAppearAtTheMouse();
    void tabReachesEveryBox();
    void aRangeIsTyped();
    void theWindowIsMaximised();
    void theMeasurePanelOpensAndCloses();
    void theMeasurePanelFloatsAndReturns();
    void theMeasurePanelStaysInOnePiece();
    void aFloatingPanelIsRestored();
    void ctrlQSavesTheSettings();
    void theCloseButtonSavesTheSettings();
    void theFirstStartOpensTheConfiguration();
    void fitsAScaledScreen();
};

void TestWaylandWindow::showsASweep()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(QRect(QPoint(), compositor().size()).contains(program().placeOf(kMain)));
    QVERIFY(!showsAPeak());
    QVERIFY(sweep());
}

// The icon is the first thing in the frame, and mostly dark; the frame is light.
void TestWaylandWindow::theFrameHasTheIcon()
{
    begin();
    QVERIFY(program().start());
    const QImage corner = picture(QRect(program().placeOf(kMain).topLeft(), QSize(34, 30)));
    int dark = 0;
    for (int y = 0; y < corner.height(); ++y)
        for (int x = 0; x < corner.width(); ++x)
            dark += qGray(corner.pixel(x, y)) < 60;
    QVERIFY2(dark > 150, QByteArray::number(dark).constData());
    QVERIFY(curvePixels(corner) > 10);
}

void TestWaylandWindow::menusOpenAtTheirPlace()
{
    begin();
    QVERIFY(program().start());
    for (const char *menu : {"File", "View", "Scale", "Sweep", "SetUp", "Help"}) {
        const QRect entry = program().placeOf(kMain, QString::fromLatin1(menu));
        QVERIFY(program().click(kMain, QString::fromLatin1(menu)));
        QVERIFY2(program().waitForPopup(), menu);
        const QRect popup = program().placeOf(program().popups().first());
        QVERIFY2(near(popup.left(), entry.left()) && near(popup.top(), entry.bottom() + 1), both(popup, entry));
        Compositor::keys({QStringLiteral("Escape"), QStringLiteral("Escape")});
        QVERIFY(program().waitForNoPopup());
    }
    QCOMPARE(text("Label5"), QStringLiteral("Volt"));
    QVERIFY(program().choose(QStringLiteral("Scale"), QStringLiteral("mnuScalaLogaritmica1")));
    QTRY_COMPARE(text("Label5"), QStringLiteral("dB"));

    // A menu in a menu opens under a resting mouse.
    QVERIFY(program().click(kMain, QStringLiteral("View")));
    QVERIFY(program().waitForPopup());
    const Window menu = program().popups().first();
    const QRect outer = program().placeOf(menu);
    const QRect entry = menu.part(QStringLiteral("mnuSimulated"))->place.translated(outer.topLeft());
    compositor().rest(entry.center());
    QTRY_COMPARE(program().popups().size(), 2);
    QVERIFY(program().waitForPopup());
    const QRect inner = program().placeOf(program().popups().first());
    QVERIFY2(near(inner.left(), outer.right(), 6) && near(inner.top(), entry.top(), 6), both(inner, entry));
}

void TestWaylandWindow::menusOpenByKeyboard()
{
    begin();
    QVERIFY(program().start());
    const QList<QPair<QString, QString>> menus{{QStringLiteral("alt+f"), QStringLiteral("mnuSaveCSV")},
                                               {QStringLiteral("alt+v"), QStringLiteral("mnuView_0")},
                                               {QStringLiteral("alt+c"), QStringLiteral("mnuScalaLineare")},
                                               {QStringLiteral("alt+w"), QStringLiteral("mnuSingle")},
                                               {QStringLiteral("alt+s"), QStringLiteral("mnuConfig")},
                                               {QStringLiteral("alt+h"), QStringLiteral("mnuAbout")}};
    for (const auto &[key, entry] : menus) {
        Compositor::keys({key});
        QVERIFY(program().waitForPopup());
        QVERIFY2(program().popups().first().part(entry), qPrintable(key));
        Compositor::keys({QStringLiteral("Escape"), QStringLiteral("Escape")});
        QVERIFY(program().waitForNoPopup());
    }
    // The arrow keys go to the next menu, and Return takes an entry.
    Compositor::keys({QStringLiteral("alt+v"), QStringLiteral("Right")});
    QTRY_VERIFY(!program().popups().isEmpty() && program().popups().first().part(QStringLiteral("mnuScalaLineare")));
    Compositor::keys({QStringLiteral("Down"), QStringLiteral("Down"), QStringLiteral("Return")});
    QTRY_COMPARE(text("Label5"), QStringLiteral("dB"));
}

void TestWaylandWindow::theAxesHaveMenus()
{
    begin();
    QVERIFY(program().start());
    for (const auto &[label, entry] : {std::pair("lblVolt_2", "mnuScalaLineare"), std::pair("lblCentro", "mnuSpan")}) {
        const QPoint place = program().placeOf(kMain, QString::fromLatin1(label)).center();
        compositor().mouseAt(place, kRightClick);
        QVERIFY(program().waitForPopup());
        const Window menu = program().popups().first();
        QVERIFY(menu.part(QString::fromLatin1(entry)));
        const QPoint corner = program().placeOf(menu).topLeft();
        QVERIFY2(near(corner.x(), place.x()) && near(corner.y(), place.y()), QTest::toString(corner));
        // A click elsewhere closes it.
        QVERIFY(program().click(kMain, QStringLiteral("lblSweepTime")));
        QVERIFY(program().waitForNoPopup());
    }
}

void TestWaylandWindow::aMarkerIsDragged()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(sweep());
    const QRect plot = graph();
    const QPoint from(plot.left() + plot.width() / 4, plot.center().y());
    constexpr int kDistance = 90;
    const int before = number("txtM1X");
    compositor().mouseAt(from, kLeftClick);
    QTRY_VERIFY(number("txtM1X") != before);
    const int clicked = number("txtM1X");
    compositor().drag(from, from + QPoint(kDistance, 10));
    const double hertz = kDistance * kRows * kHz / plot.width();
    QTRY_VERIFY2(std::abs(number("txtM1X") - clicked - hertz) < 3 * kHz, qPrintable(text("txtM1X")));

    // The horizontal line of M4, at 0.8 of 1.0 V.
    const QPoint line(plot.left() + plot.width() / 2, plot.top() + plot.height() / 5);
    compositor().drag(line, line + QPoint(0, plot.height() / 10));
    QTRY_VERIFY2(std::abs(text("txtM4Y").toDouble() - 0.7) < 0.02, qPrintable(text("txtM4Y")));
}

void TestWaylandWindow::escapeCancelsADrag()
{
    begin();
    QVERIFY(program().start());
    const QRect plot = graph();
    const QPoint from(plot.left() + plot.width() / 4, plot.center().y());
    const int before = number("txtM1X");
    compositor().mouseAt(from, kLeftClick);
    QTRY_VERIFY(number("txtM1X") != before);
    const QString clicked = text("txtM1X");
    compositor().drag(from, from + QPoint(90, 0), true);
    QTRY_VERIFY(text("txtM1X") != clicked);
    Compositor::keys({QStringLiteral("Escape")});
    QTRY_COMPARE(text("txtM1X"), clicked);
    compositor().mouseAt(from + QPoint(80, 0), {QStringLiteral("mouseup"), QStringLiteral("1")});
    // A later click works again, and its value shows that the release before it placed nothing.
    compositor().mouseAt(from + QPoint(0, 5), kRightClick);
    QTRY_COMPARE(text("txtM2X"), clicked);
    QCOMPARE(text("txtM1X"), clicked);
}

void TestWaylandWindow::theRangeIsDraggedAndZoomed()
{
    begin();
    QVERIFY(program().start());
    const QRect plot = graph();
    const auto frequencyAt = [&](int x) { return 1e6 + (x - plot.left()) * kRows * kHz / plot.width(); };
    const QPoint from(plot.left() + plot.width() / 4, plot.center().y());
    const QPoint to(plot.left() + plot.width() / 2, plot.center().y());
    compositor().mouseAt(from, {QStringLiteral("keydown"), QStringLiteral("ctrl")});
    compositor().drag(from, to, true);
    QTRY_VERIFY(program().part(kMain, QStringLiteral("bandSpan")));
    compositor().mouseAt(
        to, {QStringLiteral("mouseup"), QStringLiteral("1"), QStringLiteral("keyup"), QStringLiteral("ctrl")});
    QTRY_VERIFY(number("txtStart") > 1'000'000);
    QVERIFY2(std::abs(number("txtStart") - frequencyAt(from.x())) < 3 * kHz, qPrintable(text("txtStart")));
    QVERIFY2(std::abs(number("txtStop") - frequencyAt(to.x())) < 3 * kHz, qPrintable(text("txtStop")));

    const int range = number("txtStop") - number("txtStart");
    compositor().mouseAt(plot.center(), withCtrl({QStringLiteral("click"), QStringLiteral("4")}));
    QTRY_VERIFY(number("txtStop") - number("txtStart") < range);
    compositor().mouseAt(plot.center(), withCtrl({QStringLiteral("click"), QStringLiteral("5")}));
    QTRY_VERIFY(std::abs(number("txtStop") - number("txtStart") - range) < 1000);
}

void TestWaylandWindow::theBarAboveTheTableIsDragged()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(program().click(kMain, QStringLiteral("cmdView_1")));
    QTRY_VERIFY(program().part(kMain, QStringLiteral("MSFlexGridV")));
    const auto height = [this] { return program().placeOf(kMain, QStringLiteral("MSFlexGridV")).height(); };
    const int before = height();
    const QPoint bar = program().placeOf(kMain, QStringLiteral("splitView")).center();
    compositor().drag(bar, bar - QPoint(0, 70));
    QTRY_VERIFY2(near(height(), before + 70), QByteArray::number(height() - before).constData());
    compositor().mouseAt(bar - QPoint(0, 70), kDoubleClick);
    QTRY_COMPARE(height(), before);
}

// Each tip appears where the mouse is, even if the mouse comes from a control whose tip is still visible.
void TestWaylandWindow::toolTipsAppearAtTheMouse()
{
    begin();
    QVERIFY(program().start());
    QString last;
    for (const char *name : {"cmdView_1", "txtStart", "cmdExit"}) {
        const QString shown = tipOf(kMain, QString::fromLatin1(name), last);
        QVERIFY2(!shown.isEmpty(), name);
        last = shown;
    }
}

void TestWaylandWindow::tabReachesEveryBox()
{
    begin();
    QVERIFY(program().start());
    QTRY_COMPARE(program().focus(), QStringLiteral("cmdStart"));
    const QStringList reached = tabRound();
    QTRY_COMPARE(program().focus(), QStringLiteral("cmdStart"));
    for (const char *name : {"txtStart", "txtStop", "optSpeed_0", "cmdExit", "txtMaxVolt", "picSweep", "txtM1X",
                             "txtM2X", "txtM3Y", "txtM4Y", "cmdCopyM1", "cmdCopyM2"})
        QVERIFY2(reached.contains(QString::fromLatin1(name)), qPrintable(reached.join(u' ')));
    Compositor::keys({QStringLiteral("shift+Tab")});
    QTRY_COMPARE(program().focus(), reached.last());
}

void TestWaylandWindow::aRangeIsTyped()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(program().click(kMain, QStringLiteral("txtStart")));
    QTRY_COMPARE(program().focus(), QStringLiteral("txtStart"));
    Compositor::keys({QStringLiteral("ctrl+a")});
    Compositor::typeText(QStringLiteral("6000000"));
    Compositor::keys({QStringLiteral("Tab")});
    QTRY_COMPARE(text("txtStart"), QStringLiteral("6,000,000"));
    QCOMPARE(program().focus(), QStringLiteral("txtStop"));
    Compositor::keys({QStringLiteral("alt+Left")});
    QTRY_COMPARE(text("txtStart"), QStringLiteral("1,000,000"));
}

void TestWaylandWindow::theWindowIsMaximised()
{
    begin();
    QVERIFY(program().start());
    const QRect before = program().placeOf(kMain);
    const auto corner = [this] { return program().placeOf(kMain).topRight(); };
    compositor().mouseAt(corner() + QPoint(-kMaximiseButton.x(), kMaximiseButton.y()), kLeftClick);
    QTRY_COMPARE(program().placeOf(kMain), QRect(QPoint(), compositor().size()));
    QVERIFY(sweep());
    compositor().mouseAt(corner() + QPoint(-kMaximiseButton.x(), kMaximiseButton.y()), kLeftClick);
    QTRY_COMPARE(program().placeOf(kMain), before);
}

void TestWaylandWindow::theMeasurePanelOpensAndCloses()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(moveToCorner());
    QVERIFY(program().choose(QStringLiteral("View"), QStringLiteral("mnuMeasure")));
    QVERIFY(program().placeOf(kMain).contains(program().placeOf(kMain, kPanel)));
    QVERIFY(sweep());
    QTRY_VERIFY(text("lblResult_peakFreq").endsWith(QStringLiteral("Hz")));

    // The list of a combo box covers the box.
    const QRect box = program().placeOf(kMain, QStringLiteral("cboResults"));
    QVERIFY(program().click(kMain, QStringLiteral("cboResults")));
    QVERIFY(program().waitForPopup());
    const QRect list = program().placeOf(program().popups().first());
    QVERIFY2(near(list.left(), box.left(), 4) && list.intersects(box), both(list, box));
    Compositor::keys({QStringLiteral("Escape")});
    QVERIFY(program().waitForNoPopup());
    for (const char *tab : {"tab0", "tab2", "tab3", "tab1"}) {
        QVERIFY(program().click(kMain, QString::fromLatin1(tab)));
        QTRY_VERIFY(program().part(kMain, QString::fromLatin1(tab))->checked);
    }
    QVERIFY(program().click(kMain, QStringLiteral("qt_dockwidget_closebutton")));
    QTRY_VERIFY(!program().part(kMain, kPanel));
}

// The compositor draws or asks for the frame of a floating panel, so the panel has no title bar of Qt with which it
// could return.
void TestWaylandWindow::theMeasurePanelFloatsAndReturns()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(floatPanel());
    QVERIFY(!program().window(kPanel)->frame.isNull());

    // The title bar moves it.
    QVERIFY(moveByTitle(kPanel));
    // An edge changes its size.
    const QRect moved = program().placeOf(kPanel);
    const QPoint edge = moved.bottomRight() - QPoint(1, moved.height() / 2);
    compositor().drag(edge, edge + QPoint(40, 0));
    QTRY_VERIFY2(near(program().placeOf(kPanel).width(), moved.width() + 40, 4), QTest::toString(moved));

    QVERIFY(program().click(kPanel, QStringLiteral("cmdDock")));
    QVERIFY(!program().placeOf(kMain, kPanel).isEmpty());
    QVERIFY(!program().part(kMain, QStringLiteral("cmdDock")));
    // The shortcut works from the floating panel, too.
    QVERIFY(program().click(kMain, QStringLiteral("qt_dockwidget_floatbutton")));
    QVERIFY(program().waitForWindow(kPanel));
    Compositor::keys({QStringLiteral("ctrl+m")});
    QVERIFY(program().waitUntilGone(kPanel));
}

// A program cannot move its windows under Wayland, so a panel that is dragged out would have neither frame nor title
// bar.
void TestWaylandWindow::theMeasurePanelStaysInOnePiece()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(openPanel());
    const QRect panel = program().placeOf(kMain, kPanel);
    const QPoint title = panel.topLeft() + QPoint(100, 9);
    compositor().drag(title, title - QPoint(300, -100));
    // The sweep gives a drag time to take effect.
    QVERIFY(sweep());
    QCOMPARE(program().placeOf(kMain, kPanel), panel);
    QVERIFY(!program().window(kPanel));
}

void TestWaylandWindow::aFloatingPanelIsRestored()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(floatPanel());
    const QSize size = program().window(kPanel)->size;
    Compositor::keys({QStringLiteral("ctrl+q")});
    QVERIFY(program().waitForEnd());
    QVERIFY(program().start(kPanel));
    QVERIFY(!program().window(kPanel)->frame.isNull());
    QCOMPARE(program().window(kPanel)->size, size);
    // The panel belongs to the main window and therefore stays above it.
    QVERIFY(isOnTop(kPanel));
    compositor().mouseAt(program().placeOf(kMain).topLeft() + QPoint(200, 12), kLeftClick);
    QTRY_VERIFY(isOnTop(kPanel));
    QVERIFY(sweep());
    QVERIFY(program().click(kPanel, QStringLiteral("cmdDock")));
    QVERIFY(!program().placeOf(kMain, kPanel).isEmpty());
}

void TestWaylandWindow::ctrlQSavesTheSettings()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(program().choose(QStringLiteral("Scale"), QStringLiteral("mnuScalaLogaritmica1")));
    QTRY_COMPARE(text("Label5"), QStringLiteral("dB"));
    Compositor::keys({QStringLiteral("ctrl+q")});
    QVERIFY(program().waitForEnd());
    QCOMPARE(program().exitCode(), 0);
    QCOMPARE(program().setting("Calvorn", "Scale"), QStringLiteral("1"));
}

void TestWaylandWindow::theCloseButtonSavesTheSettings()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(program().choose(QStringLiteral("Scale"), QStringLiteral("mnuScalaLogaritmica1")));
    QTRY_COMPARE(text("Label5"), QStringLiteral("dB"));
    compositor().mouseAt(program().placeOf(kMain).topRight() + QPoint(-kCloseButton.x(), kCloseButton.y()), kLeftClick);
    QVERIFY(program().waitForEnd());
    QCOMPARE(program().exitCode(), 0);
    QCOMPARE(program().setting("Calvorn", "Scale"), QStringLiteral("1"));
}

void TestWaylandWindow::theFirstStartOpensTheConfiguration()
{
    begin({1280, 900}, 1, {});
    expectComplaint(QStringLiteral("No parallel-port driver is loaded: an administrator must run \"modprobe -a "
                                   "parport_pc ppdev\".\n"));
    QVERIFY(program().start(QStringLiteral("frmSetUp")));
    QVERIFY(QRect(QPoint(), compositor().size()).contains(program().placeOf(QStringLiteral("frmSetUp"))));
    Compositor::keys({QStringLiteral("Escape")});
    QVERIFY(program().waitForWindow(QStringLiteral("messageBox")));
    Compositor::keys({QStringLiteral("Return")});
    QVERIFY(program().waitForWindow(kMain));
}

// A screen of 950 x 590 logical pixels with two pixels for each.
void TestWaylandWindow::fitsAScaledScreen()
{
    begin({1900, 1180}, 2);
    QVERIFY(program().start());
    const QRect place = program().placeOf(kMain);
    QVERIFY2(place.width() <= 950 && place.height() <= 590, QTest::toString(place));
    QVERIFY(sweep());
    // Texts and curve are drawn at the full resolution: in a magnified picture, every block of 2 x 2 has one colour.
    const QImage shown = picture(place);
    int fine = 0;
    for (int y = 0; y + 1 < shown.height(); y += 2)
        for (int x = 0; x + 1 < shown.width(); x += 2)
            fine += shown.pixel(x, y) != shown.pixel(x + 1, y) || shown.pixel(x, y) != shown.pixel(x, y + 1);
    QVERIFY2(fine > 2000, QByteArray::number(fine).constData());

    const QRect entry = program().placeOf(kMain, QStringLiteral("Scale"));
    QVERIFY(program().click(kMain, QStringLiteral("Scale")));
    QVERIFY(program().waitForPopup());
    const QRect popup = program().placeOf(program().popups().first());
    QVERIFY2(near(popup.left(), entry.left()) && near(popup.top(), entry.bottom() + 1), both(popup, entry));
    QVERIFY(program().chooseInPopup(QStringLiteral("mnuScalaLogaritmica1")));
    QTRY_COMPARE(text("Label5"), QStringLiteral("dB"));
}

QTEST_MAIN(TestWaylandWindow)
#include "test_wayland_window.moc"
