// SPDX-License-Identifier: MIT
// Tests the dialogs in a Wayland session: place, focus, keyboard, lists and tips, and what they block.
#include "tests/wayland/wayland_bench.h"

using namespace calvorn::test;

namespace {

const QString kSetUp = QStringLiteral("frmSetUp");
const QString kPins = QStringLiteral("frmLPTpin");
const QString kLevel = QStringLiteral("frmCalibraLevel");
const QString kHelp = QStringLiteral("frmHelp");
const QString kBox = QStringLiteral("messageBox");
const QStringList kEscape{QStringLiteral("Escape")};

} // namespace

class TestWaylandDialogs : public WaylandBench
{
    Q_OBJECT

private:
    // Opens a dialog through the menu bar and waits until it is active.
    bool open(const char *menu, const char *entry, const QString &dialog);
    // Clicks a part of the main window that the dialog does not cover. Returns false if it covers all of them.
    bool clickBeside(const QString &dialog);
    // Drags the manual into the lower right corner, mostly out of the screen, so that it covers no other window.
    bool moveHelpAside();

private slots:
    void dialogsOpenOverTheWindow_data();
    void dialogsOpenOverTheWindow();
    void theCloseButtonClosesADialog();
    void theConfigurationShowsItsPages();
    void listsOpenInADialog();
    void tipsAppearInADialog();
    void thePinsOpenOverTheConfiguration();
    void applyingTheConfigurationEndsTheProgram();
    void theCalibrationsReadTheDetector();
    void aRangeIsEnteredAsCentreAndSpan();
    void thePreferencesAreSaved();
    void theHelpWindowLeavesTheWindowUsable();
    void helpOpensOverADialog();
    void theTestPanelWorks();
    void anAuxiliaryOutputIsSwitched();
    void theFloatingPanelOpensListsAndMenus();
    void unreadableSettingsAreReported();
    void aSecondInstanceShowsItsMessage();
};

bool TestWaylandDialogs::open(const char *menu, const char *entry, const QString &dialog)
{
    return program().choose(QString::fromLatin1(menu), QString::fromLatin1(entry)) && program().waitForWindow(dialog);
}

bool TestWaylandDialogs::clickBeside(const QString &dialog)
{
    const QRect covered = program().placeOf(dialog);
    for (const char *part : {"File", "Scale", "Help", "cmdStart", "cmdView_1"}) {
        const QPoint place = program().placeOf(kMain, QString::fromLatin1(part)).center();
        if (!covered.contains(place)) {
            compositor().mouseAt(place, kLeftClick);
            return true;
        }
    }
    return false;
}

bool TestWaylandDialogs::moveHelpAside()
{
    constexpr QPoint kTitle(60, 14);
    const QPoint corner = screen().bottomRight() - QPoint(20, 10);
    compositor().drag(program().placeOf(kHelp).topLeft() + kTitle, corner);
    return WaylandProgram::waitFor("the manual in the corner",
                                   [&] { return program().placeOf(kHelp).topLeft() == corner - kTitle; });
}

void TestWaylandDialogs::dialogsOpenOverTheWindow_data()
{
    QTest::addColumn<QByteArray>("menu");
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("firstFocus");
    QTest::addColumn<QStringList>("reached"); // by Tab
    const auto add = [](const char *menu, const char *entry, const char *dialog, const char *firstFocus,
                        const QString &reached) {
        QTest::newRow(dialog) << QByteArray(menu) << QByteArray(entry) << QString::fromLatin1(dialog)
                              << QString::fromLatin1(firstFocus) << reached.split(u' ');
    };
    add("SetUp", "mnuConfig", "frmSetUp", "cmdInterface",
        QStringLiteral("cmdInterface optInterface_2 cmdDefault1 cmdDefault2 cmdDefault3 cmdApply cmdExit"));
    add("SetUp", "mnuCalibraDDS", "frmCalibraDDS", "txtOffset",
        QStringLiteral("txtOffset VScrollOffset cmdApply cmdExit"));
    add("SetUp", "mnuCalibraDetector", "frmCalibraADC", "txtOffsetVolt",
        QStringLiteral("txtOffsetVolt VScrollOffset cmdApply cmdExit"));
    add("SetUp", "mnuCalibraLevel", "frmCalibraLevel", "spinKnownLevel",
        QStringLiteral("spinKnownLevel spinStep cmdMeasure optLog lstPoints cmdCancel"));
    add("SetUp", "mnuPreferences", "frmPreferences", "optCursor_0",
        QStringLiteral("optCursor_0 chkScalaLogaritmica chkRemote spinRemotePort cmdExit"));
    add("Sweep", "mnuSpan", "frmSpan", "txtCentre", QStringLiteral("txtCentre txtSpan cmdOk cmdCancel"));
    add("Help", "mnuAbout", "frmAbout", "cmdExit", QStringLiteral("cmdExit"));
}

void TestWaylandDialogs::dialogsOpenOverTheWindow()
{
    QFETCH(const QByteArray, menu);
    QFETCH(const QByteArray, entry);
    QFETCH(const QString, dialog);
    QFETCH(const QString, firstFocus);
    QFETCH(const QStringList, reached);
    begin();
    QVERIFY(program().start());
    QVERIFY(program().click(kMain, QStringLiteral("txtStop")));
    QTRY_COMPARE(program().focus(), QStringLiteral("txtStop"));

    QVERIFY(open(menu.constData(), entry.constData(), dialog));
    const QRect place = program().placeOf(dialog);
    QVERIFY2(screen().contains(place), QTest::toString(place));
    QVERIFY(isOnTop(dialog));
    QTRY_COMPARE(program().focus(), firstFocus);
    const QStringList round = tabRound();
    for (const QString &name : reached)
        QVERIFY2(round.contains(name), qPrintable(round.join(u' ')));
    QVERIFY(moveByTitle(dialog));

    // The dialog blocks the main window and stays above it.
    QVERIFY(clickBeside(dialog));
    QTRY_VERIFY(program().window(dialog)->active && isOnTop(dialog));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(dialog));
    QVERIFY(program().waitForWindow(kMain));
    QTRY_COMPARE(program().focus(), QStringLiteral("txtStop"));
    QVERIFY(program().popups().isEmpty());
    QCOMPARE(text("cmdStart"), QStringLiteral("Sweep ON"));
    QVERIFY(!program().part(kMain, QStringLiteral("MSFlexGridV")));

    // It opens a second time.
    QVERIFY(open(menu.constData(), entry.constData(), dialog));
    QTRY_COMPARE(program().focus(), firstFocus);
}

void TestWaylandDialogs::theCloseButtonClosesADialog()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("SetUp", "mnuPreferences", QStringLiteral("frmPreferences")));
    const QPoint corner = program().placeOf(QStringLiteral("frmPreferences")).topRight();
    compositor().mouseAt(corner + QPoint(-kCloseButton.x(), kCloseButton.y()), kLeftClick);
    QVERIFY(program().waitUntilGone(QStringLiteral("frmPreferences")));
    QVERIFY(program().waitForWindow(kMain));
    QVERIFY(sweep());
}

void TestWaylandDialogs::theConfigurationShowsItsPages()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("SetUp", "mnuConfig", kSetUp));
    const QRect dialog = program().placeOf(kSetUp);
    struct Page
    {
        const char *button;
        const char *frame;
        const char *key;
        const char *reached; // by Tab
    };
    for (const auto &[button, frame, key, reached] :
         {Page{"cmdDDS", "frameSetUp_1", "alt+t", "txtClk9851"}, Page{"cmdADC", "frameSetUp_2", "alt+d", "cboLaw"},
          Page{"cmdAux", "frameSetUp_3", "alt+l", "txtTitoloAux1"},
          Page{"cmdPort", "frameSetUp_4", "alt+p", "cmdLPTpin"},
          Page{"cmdInterface", "frameSetUp_0", "alt+i", "cmdDefault2"}}) {
        QVERIFY(program().click(kSetUp, QString::fromLatin1(button)));
        QTRY_VERIFY2(program().part(kSetUp, QString::fromLatin1(frame)), frame);
        QVERIFY2(dialog.contains(program().placeOf(kSetUp, QString::fromLatin1(frame))), frame);
        QCOMPARE(program().placeOf(kSetUp), dialog);
        const QStringList round = tabRound();
        QVERIFY2(round.contains(QString::fromLatin1(reached)), qPrintable(round.join(u' ')));
    }
    // The keys of the buttons show the pages, too.
    Compositor::keys({QStringLiteral("alt+p")});
    QTRY_VERIFY(program().part(kSetUp, QStringLiteral("frameSetUp_4")));
    Compositor::keys({QStringLiteral("alt+i")});
    QTRY_VERIFY(program().part(kSetUp, QStringLiteral("frameSetUp_0")));
}

void TestWaylandDialogs::listsOpenInADialog()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("SetUp", "mnuConfig", kSetUp));
    QVERIFY(program().click(kSetUp, QStringLiteral("cmdADC")));
    QTRY_VERIFY(program().part(kSetUp, QStringLiteral("cboLaw")));
    QVERIFY(!program().part(kSetUp, QStringLiteral("cboPreset"))->enabled);
    QVERIFY(chooseInList(kSetUp, QStringLiteral("cboLaw"), QStringLiteral("Logarithmic")));
    QTRY_VERIFY(program().part(kSetUp, QStringLiteral("cboPreset"))->enabled);
    QVERIFY(chooseInList(kSetUp, QStringLiteral("cboPreset"), QStringLiteral("AD8318")));
    // Escape closes an open list but not the dialog.
    QVERIFY(program().click(kSetUp, QStringLiteral("cboLaw")));
    QVERIFY(program().waitForPopup());
    Compositor::keys(kEscape);
    QVERIFY(program().waitForNoPopup());
    QVERIFY(program().waitForWindow(kSetUp));
    // Return takes the marked entry.
    QVERIFY(program().click(kSetUp, QStringLiteral("cboLaw")));
    QVERIFY(program().waitForPopup());
    Compositor::keys({QStringLiteral("Up"), QStringLiteral("Return")});
    QVERIFY(program().waitForNoPopup());
    QTRY_COMPARE(program().textOf(kSetUp, QStringLiteral("cboLaw")), QStringLiteral("Linear"));
    QVERIFY(program().window(kSetUp));
    // A click elsewhere in the dialog closes a list, too.
    QVERIFY(program().click(kSetUp, QStringLiteral("cboLaw")));
    QVERIFY(program().waitForPopup());
    QVERIFY(program().click(kSetUp, QStringLiteral("lblOffset")));
    QVERIFY(program().waitForNoPopup());
    QVERIFY(program().window(kSetUp));
}

void TestWaylandDialogs::tipsAppearInADialog()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("SetUp", "mnuConfig", kSetUp));
    const QString first = tipOf(kSetUp, QStringLiteral("cmdDDS"));
    QCOMPARE(first, QStringLiteral("The generator chip, its clock and its limits"));
    const QString second = tipOf(kSetUp, QStringLiteral("cmdExit"), first);
    QCOMPARE(second, QStringLiteral("Close without changes"));
    // A tip does not take the keyboard.
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kSetUp));
    QTRY_VERIFY(program().popups().isEmpty());
}

void TestWaylandDialogs::thePinsOpenOverTheConfiguration()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("SetUp", "mnuConfig", kSetUp));
    QVERIFY(program().click(kSetUp, QStringLiteral("cmdPort")));
    QVERIFY(program().click(kSetUp, QStringLiteral("cmdLPTpin")));
    QVERIFY(program().waitForWindow(kPins));
    QVERIFY(screen().contains(program().placeOf(kPins)));
    QVERIFY(isOnTop(kPins));
    QTRY_COMPARE(program().focus(), QStringLiteral("cmdClose"));
    QVERIFY(moveByTitle(kPins));
    // Three windows deep, a click on the lowest one changes nothing.
    QVERIFY(clickBeside(kPins));
    QTRY_VERIFY(program().window(kPins)->active && isOnTop(kPins));
    // The pin at the middle of the drawing has its own tip.
    const QRect drawing = program().placeOf(kPins);
    compositor().rest(drawing.topLeft() + QPoint(40, 160));
    QTRY_VERIFY(!program().popups().isEmpty());
    QVERIFY2(program().popups().first().parts.first().text.startsWith(QStringLiteral("Pin 1")),
             qPrintable(program().popups().first().parts.first().text));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kPins));
    QVERIFY(program().waitForWindow(kSetUp));
    QTRY_COMPARE(program().focus(), QStringLiteral("cmdLPTpin"));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kSetUp));
    QVERIFY(program().waitForWindow(kMain));
}

void TestWaylandDialogs::applyingTheConfigurationEndsTheProgram()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("SetUp", "mnuConfig", kSetUp));
    QVERIFY(program().click(kSetUp, QStringLiteral("cmdDDS")));
    QVERIFY(program().click(kSetUp, QStringLiteral("txtMaxFreq")));
    QTRY_COMPARE(program().focus(), QStringLiteral("txtMaxFreq"));
    Compositor::keys({QStringLiteral("ctrl+a")});
    Compositor::typeText(QStringLiteral("60000000"));
    QVERIFY(program().click(kSetUp, QStringLiteral("cmdApply")));
    QVERIFY(program().waitForWindow(kBox));
    QVERIFY(isOnTop(kBox) && screen().contains(program().placeOf(kBox)));
    // Cancelled, the dialog stays as it was.
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kBox));
    QVERIFY(program().waitForWindow(kSetUp));
    QCOMPARE(program().textOf(kSetUp, QStringLiteral("txtMaxFreq")), QStringLiteral("60,000,000"));
    QCOMPARE(program().setting("Config", "DDS Max freq"), QStringLiteral("70000000"));
    QVERIFY(program().click(kSetUp, QStringLiteral("cmdApply")));
    QVERIFY(program().waitForWindow(kBox));
    QVERIFY(program().click(kBox, QStringLiteral("OK")));
    QVERIFY(program().waitForEnd());
    QCOMPARE(program().exitCode(), 0);
    QCOMPARE(program().setting("Config", "DDS Max freq"), QStringLiteral("60000000"));
}

void TestWaylandDialogs::theCalibrationsReadTheDetector()
{
    begin();
    QVERIFY(program().start());
    const QString detector = QStringLiteral("frmCalibraADC");
    QVERIFY(open("SetUp", "mnuCalibraDetector", detector));
    QTRY_VERIFY(!program().textOf(detector, QStringLiteral("lblVolt")).isEmpty());
    // The upper arrow of the scroll bar is one step.
    const QRect bar = program().placeOf(detector, QStringLiteral("VScrollOffset"));
    compositor().mouseAt({bar.center().x(), bar.top() + 5}, kLeftClick);
    QTRY_COMPARE(program().textOf(detector, QStringLiteral("txtOffsetVolt")), QStringLiteral("0.001"));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(detector));

    QVERIFY(open("SetUp", "mnuCalibraLevel", kLevel));
    for (const char *attenuation : {"10", "20"}) {
        QVERIFY(program().click(kLevel, QStringLiteral("spinStep")));
        Compositor::keys({QStringLiteral("ctrl+a")});
        Compositor::typeText(QString::fromLatin1(attenuation));
        QVERIFY(program().click(kLevel, QStringLiteral("cmdMeasure")));
        const QString point = QStringLiteral("-%1.00").arg(QString::fromLatin1(attenuation));
        QTRY_VERIFY2(program().part(kLevel, point), qPrintable(point));
    }
    QCOMPARE(program().part(kLevel, QStringLiteral("-10.00"))->name, QStringLiteral("row0"));
    QVERIFY(program().click(kLevel, QStringLiteral("cmdCancel")));
    QVERIFY(program().waitUntilGone(kLevel));
    QVERIFY(program().waitForWindow(kMain));
}

void TestWaylandDialogs::aRangeIsEnteredAsCentreAndSpan()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("Sweep", "mnuSpan", QStringLiteral("frmSpan")));
    Compositor::typeText(QStringLiteral("9000000"));
    Compositor::keys({QStringLiteral("Tab")});
    QTRY_COMPARE(program().focus(), QStringLiteral("txtSpan"));
    Compositor::keys({QStringLiteral("ctrl+a")});
    Compositor::typeText(QStringLiteral("2000000"));
    Compositor::keys({QStringLiteral("Return")});
    QVERIFY(program().waitUntilGone(QStringLiteral("frmSpan")));
    QTRY_COMPARE(text("txtStart"), QStringLiteral("8,000,000"));
    QCOMPARE(text("txtStop"), QStringLiteral("10,000,000"));
}

void TestWaylandDialogs::thePreferencesAreSaved()
{
    const QString preferences = QStringLiteral("frmPreferences");
    begin();
    QVERIFY(program().start());
    QVERIFY(open("SetUp", "mnuPreferences", preferences));
    QVERIFY(program().click(preferences, QStringLiteral("optCursor_1")));
    QTRY_VERIFY(program().part(preferences, QStringLiteral("optCursor_1"))->checked);
    QVERIFY(program().click(preferences, QStringLiteral("cmdExit")));
    QVERIFY(program().waitUntilGone(preferences));
    QTRY_COMPARE(program().setting("Calvorn", "Cursor mode"), QStringLiteral("1"));
}

void TestWaylandDialogs::theHelpWindowLeavesTheWindowUsable()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("Help", "mnuHelpContent", kHelp));
    QVERIFY(screen().contains(program().placeOf(kHelp)));
    QVERIFY(isOnTop(kHelp));
    QTRY_VERIFY(program().textOf(kHelp, QStringLiteral("txtHelp")).startsWith(QStringLiteral("Calvorn")));
    QVERIFY(moveByTitle(kHelp));
    QVERIFY(program().click(kHelp, QStringLiteral("The main window")));
    Compositor::keys({QStringLiteral("Return")});
    QTRY_VERIFY(program().textOf(kHelp, QStringLiteral("txtHelp")).startsWith(QStringLiteral("The main window")));
    Compositor::keys({QStringLiteral("alt+Left")});
    QTRY_VERIFY(program().textOf(kHelp, QStringLiteral("txtHelp")).startsWith(QStringLiteral("Calvorn")));
    QVERIFY(program().click(kHelp, QStringLiteral("Index")));
    QTRY_COMPARE(program().focus(), QStringLiteral("txtHelpIndex"));
    Compositor::typeText(QStringLiteral("marker"));
    Compositor::keys({QStringLiteral("Return")});
    QTRY_VERIFY(program().textOf(kHelp, QStringLiteral("txtHelp")).startsWith(QStringLiteral("The main window")));

    // The manual does not block the main window.
    QVERIFY(moveHelpAside());
    QVERIFY(program().click(kMain, QStringLiteral("cmdStart")));
    QTRY_VERIFY(showsAPeak());
    QVERIFY(program().click(kMain, QStringLiteral("Sweep OFF")));
    QTRY_COMPARE(text("cmdStart"), QStringLiteral("Sweep ON"));
    // It stays above the window.
    QVERIFY(isOnTop(kHelp));
    compositor().mouseAt(program().placeOf(kHelp).topLeft() + QPoint(60, 14), kLeftClick);
    QVERIFY(program().waitForWindow(kHelp));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kHelp));
    QVERIFY(program().waitForWindow(kMain));
}

// A modal dialog blocks all windows but its own, so the manual moves to the dialog and back.
void TestWaylandDialogs::helpOpensOverADialog()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("SetUp", "mnuCalibraLevel", kLevel));
    Compositor::keys({QStringLiteral("F1")});
    QVERIFY(program().waitForWindow(kHelp));
    QVERIFY(isOnTop(kHelp));
    QTRY_VERIFY(program().textOf(kHelp, QStringLiteral("txtHelp")).startsWith(QStringLiteral("Calibrating")));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kHelp));
    QVERIFY(program().waitForWindow(kLevel));
    QTRY_COMPARE(program().focus(), QStringLiteral("spinKnownLevel"));
    // The manual stays when its dialog closes, and belongs to the main window then.
    Compositor::keys({QStringLiteral("F1")});
    QVERIFY(program().waitForWindow(kHelp));
    QVERIFY(moveHelpAside());
    QVERIFY(program().click(kLevel, QStringLiteral("cmdCancel")));
    QVERIFY(program().waitUntilGone(kLevel));
    QVERIFY(program().waitForWindow(kHelp));
    QVERIFY(isOnTop(kHelp));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kHelp));
    QVERIFY(program().waitForWindow(kMain));
}

void TestWaylandDialogs::theTestPanelWorks()
{
    begin({1280, 900}, 1, settingsWith("Log=0", "Log=1"));
    QVERIFY(program().start());
    QVERIFY(program().placeOf(kMain).contains(program().placeOf(kMain, QStringLiteral("frameTest"))));
    QVERIFY(program().click(kMain, QStringLiteral("cmdDraw")));
    QTRY_VERIFY(curvePixels(picture(graph())) > 2000);
    QVERIFY(program().click(kMain, QStringLiteral("cmdClear")));
    QTRY_VERIFY(curvePixels(picture(graph())) < 200);
    // The menu of the log opens at the mouse.
    const QPoint place = program().placeOf(kMain, QStringLiteral("lstLOG")).center();
    compositor().mouseAt(place, kRightClick);
    QVERIFY(program().waitForPopup());
    const QRect menu = program().placeOf(program().popups().first());
    QVERIFY2(near(menu.left(), place.x()) && near(menu.top(), place.y()), both(menu, {place, QSize()}));
    QVERIFY(program().chooseInPopup(QStringLiteral("mnuSelectLog")));
}

void TestWaylandDialogs::anAuxiliaryOutputIsSwitched()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(program().click(kMain, QStringLiteral("cmdView_2")));
    // From off through half to on.
    QVERIFY(program().click(kMain, QStringLiteral("chkAux1_0")));
    QVERIFY(program().click(kMain, QStringLiteral("chkAux1_0")));
    QTRY_COMPARE(text("lblAux1"), QStringLiteral("10"));
    Compositor::keys({QStringLiteral("ctrl+q")});
    QVERIFY(program().waitForEnd());
    QCOMPARE(program().setting("Calvorn", "Aux_1"), QStringLiteral("1"));
}

void TestWaylandDialogs::theFloatingPanelOpensListsAndMenus()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(floatPanel());
    QVERIFY(chooseInList(kPanel, QStringLiteral("cboResults"), QStringLiteral("Crystal")));
    QVERIFY(program().click(kPanel, QStringLiteral("Traces")));
    QTRY_VERIFY(program().part(kPanel, QStringLiteral("cmdTrace_1")));
    const QRect button = program().placeOf(kPanel, QStringLiteral("cmdTrace_1"));
    QVERIFY(program().click(kPanel, QStringLiteral("cmdTrace_1")));
    QVERIFY(program().waitForPopup());
    const QRect menu = program().placeOf(program().popups().first());
    QVERIFY2(menu.adjusted(-2, -2, 2, 2).intersects(button), both(menu, button));
    Compositor::keys(kEscape);
    QVERIFY(program().waitForNoPopup());
    // A dialog of the main window opens above the panel.
    QVERIFY(open("SetUp", "mnuPreferences", QStringLiteral("frmPreferences")));
    QVERIFY(isOnTop(QStringLiteral("frmPreferences")));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(QStringLiteral("frmPreferences")));
    QVERIFY(program().window(kPanel));
}

void TestWaylandDialogs::unreadableSettingsAreReported()
{
    begin({1280, 900}, 1, settingsWith("Marker 3=0.5", "Marker 3=half"));
    QVERIFY(program().start(kBox));
    QVERIFY(isOnTop(kBox) && screen().contains(program().placeOf(kBox)));
    QVERIFY(program().window(kMain));
    QVERIFY(moveByTitle(kBox));
    Compositor::keys({QStringLiteral("Return")});
    QVERIFY(program().waitUntilGone(kBox));
    QVERIFY(program().waitForWindow(kMain));
    QVERIFY(sweep());
}

void TestWaylandDialogs::aSecondInstanceShowsItsMessage()
{
    begin();
    QVERIFY(program().start());
    QProcess second;
    QVERIFY(program().startSecond(second, kBox));
    QVERIFY(program().waitForWindow(kBox));
    QVERIFY(isOnTop(kBox) && screen().contains(program().placeOf(kBox)));
    QVERIFY(program()
                .textOf(kBox, QStringLiteral("qt_msgbox_label"))
                .startsWith(QStringLiteral("The program is already running")));
    Compositor::keys({QStringLiteral("Return")});
    QVERIFY(second.waitForFinished());
    QCOMPARE(second.exitCode(), 0);
    // The first instance gets the keyboard back.
    Compositor::keys({QStringLiteral("ctrl+q")});
    QVERIFY(program().waitForEnd());
    QCOMPARE(program().exitCode(), 0);
}

QTEST_MAIN(TestWaylandDialogs)
#include "test_wayland_dialogs.moc"
