// SPDX-License-Identifier: MIT
#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"
#include "tests/support/while_modal.h"
#include "tests/support/window_bench.h"

#include <QListWidget>
#include <QMenuBar>
#include <QRadioButton>
#include <QTimer>

#include <array>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

QByteArray settings(const char *interfaceType, const QByteArray &more = {})
{
    return QByteArray("[Config]\r\nInterface=") + interfaceType +
           "\r\nDDS Device=AD9851\r\nDDS Multiplier=6\r\nDDS Xtal freq=30000000\r\nADC Step=0.001\r\nADC Offset=0\r\n"
           "ADC Channel=3\r\n[Parallel Port]\r\nLPT=0\r\n[Serial Port]\r\nCommPort=100\r\n"
           "[Calvorn]\r\nSweep mode=1\r\n" +
           more;
}

// A change made by the user.
using Change = std::function<void(WindowBench &)>;

void calibrate(const WindowBench &bench, const char *entry, const char *offset)
{
    test::whileModal([offset](QWidget &dialog) {
        auto *box = dialog.findChild<QLineEdit *>();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QString::fromLatin1(offset));
        QTest::mouseClick(dialog.findChild<QAbstractButton *>(QStringLiteral("cmdApply")), Qt::LeftButton);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    bench.window->findChild<QAction *>(QString::fromLatin1(entry))->trigger();
}

} // namespace

Q_DECLARE_METATYPE(Change)

class TestStartUp : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void init()
    {
        m_server.setRules({});
        m_server.takeCalls();
    }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void theParallelPortWindow();
    void theSerialWindows();
    void outputsAreRestoredAfterTheConfiguration();
    void theLogSettingShowsTheTestPanel();
    void aWrongPortLeavesAUsableWindow();
    void aMissingServerLeavesAUsableWindow();
    void badSettingsAreNamedInOneBox();
    void anInterfaceWithoutADriverOpensWithoutHardware();
    void damagedNumbersDoNotPreventAStart();
    void anOverflowOfThePlanIsOneBox();
    void unreadableTextsStayUntilTheyAreChanged_data();
    void unreadableTextsStayUntilTheyAreChanged();
    void aScaleThatIsNoneIsKept_data();
    void aScaleThatIsNoneIsKept();
    void aViewThatIsNoneIsKept_data();
    void aViewThatIsNoneIsKept();
    void closingSavesAndTheNextStartComesUpAsItWasLeft_data() { test::addLocaleRows(); }
    void closingSavesAndTheNextStartComesUpAsItWasLeft();
    void closingStopsAndClosesThePort();
    void closingEndsAStartThatWaits();
    void cancellingAnErrorClosesTheWindow();
    void aFrequencyStillBeingTypedIsTakenByTheKey();
    void thePreferencesShowTheCursorLines();
    void menusHaveNoDeadEntries();
};

void TestStartUp::theParallelPortWindow()
{
    WindowBench bench(test::FakeServerControl::program(), settings("2", "[Debug]\r\nLog=0\r\n"));
    QVERIFY(bench.started);
    QCOMPARE(bench.desktop.boxes.size(), 0);
    QCOMPARE(bench.window->windowTitle(), QStringLiteral("Brenik - Calvorn  v2.0 - AD9851"));
    QCOMPARE(bench.window->size(), QSize(800, 600));
    QVERIFY(bench.isShown("cmdStart"));
    QVERIFY(!bench.isShown("cmdStop"));
    QVERIFY(!bench.isShown("frameTest"));
    QVERIFY(bench.isShown("frmSpeed"));
    QVERIFY(bench.find<QRadioButton>("optSpeed_1")->isChecked());
    for (const char *name : {"cmdView_0", "cmdView_1", "cmdView_2", "cmdView_3"})
        QVERIFY(bench.isShown(name));
    for (const char *name : {"mnuView_2", "mnuView_3"})
        QVERIFY(bench.window->findChild<QAction *>(QString::fromLatin1(name))->isVisible());
    QVERIFY(bench.isShown("frameView_0"));
    QVERIFY(!bench.find("cmdView_0")->isEnabled());
    QCOMPARE(bench.text("txtStart"), QStringLiteral("1,000,000"));
    QCOMPARE(bench.label("lblStart"), QStringLiteral("1,000,000"));
    QCOMPARE(bench.text("txtStep"), QStringLiteral("22,500"));
    const QStringList calls = m_server.takeCalls();
    QCOMPARE(calls.first(), QStringLiteral("aLPT.OpenPort(0)"));
    QCOMPARE(calls.last(), QStringLiteral("aLPT.SetFrequency(1000000)"));
}

void TestStartUp::theSerialWindows()
{
    for (const char *type : {"1", "3"}) {
        WindowBench bench(test::FakeServerControl::program(), settings(type, "Marker 0=3\r\n"));
        QCOMPARE(bench.desktop.boxes.size(), 0);
        QVERIFY(!bench.isShown("frmSpeed"));
        QVERIFY(bench.isShown("cmdView_1"));
        QVERIFY(!bench.isShown("cmdView_2"));
        QVERIFY(!bench.isShown("cmdView_3"));
        for (const char *name : {"mnuView_2", "mnuView_3"})
            QVERIFY(!bench.window->findChild<QAction *>(QString::fromLatin1(name))->isVisible());
        for (const char *name : {"frameView_2", "frameView_3"})
            QVERIFY(!bench.isShown(name));
        // This interface does not have the stored view.
        QVERIFY(bench.isShown("frameView_0"));
        QVERIFY(bench.window->windowTitle().endsWith(*type == '1' ? QStringLiteral(" - AD9851")
                                                                  : QStringLiteral(" - MiniVNA")));
    }
}

void TestStartUp::outputsAreRestoredAfterTheConfiguration()
{
    WindowBench bench(test::FakeServerControl::program(),
                      settings("2", "Aux_1=5\r\nAux_2=3\r\nPot_2=300\r\n[Aux1]\r\nEnabled=1\r\nInverse Logic=1\r\n"
                                    "[Aux2]\r\nEnabled=1\r\nPotMax=255\r\nPotMin=0\r\ni2c_control=80\r\n"
                                    "i2c_command=169\r\n"));
    const QStringList calls = m_server.takeCalls();
    const QStringList expected{QStringLiteral("aLPT.SetFrequency(1000000)"), QStringLiteral("aLPT.SetAux(250, 1)"),
                               QStringLiteral("aLPT.SetAux(3, 2)"), QStringLiteral("aLPT.WriteI2c(80, 169, 255)")};
    QCOMPARE(calls.mid(calls.size() - 4), expected);
}

void TestStartUp::theLogSettingShowsTheTestPanel()
{
    WindowBench bench(test::FakeServerControl::program(), settings("2", "[Debug]\r\nLog=1\r\n"));
    QVERIFY(bench.isShown("frameTest"));
    bench.click("cmdStart");
    auto *list = bench.find<QListWidget>("lstLOG");
    QCOMPARE(list->item(list->count() - 1)->text(), QStringLiteral("L> Start sweep"));
}

void TestStartUp::aWrongPortLeavesAUsableWindow()
{
    m_server.setRules({QStringLiteral("refuse OpenPort")});
    WindowBench bench(test::FakeServerControl::program(), settings("1"));
    QVERIFY(bench.started);
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QCOMPARE(bench.desktop.lastText(),
             QStringLiteral("Wrong serial port number (COM100).\rPlease verify 'SetUp/Configuration/Ports'."));
    QVERIFY(bench.isShown("cmdStart"));
    bench.click("cmdView_1");
    QVERIFY(bench.isShown("frameView_1"));
}

void TestStartUp::aMissingServerLeavesAUsableWindow()
{
    WindowBench bench(QString(), settings("2"));
    QVERIFY(bench.started);
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.desktop.lastText().startsWith(QStringLiteral("Parallel port not initialized.")));
    bench.desktop.boxes.clear();
    bench.click("cmdStart");
    QVERIFY(!bench.desktop.boxes.isEmpty());
    QVERIFY(bench.isShown("cmdStart"));
    QVERIFY(!bench.isShown("cmdStop"));
}

void TestStartUp::badSettingsAreNamedInOneBox()
{
    WindowBench bench(test::FakeServerControl::program(), settings("2", "Scale=loud\r\nStart=1e99\r\n"));
    QVERIFY(bench.started);
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.desktop.lastText().contains(QStringLiteral("[Calvorn] \"Scale\"")));
    QVERIFY(bench.desktop.lastText().contains(QStringLiteral("\"loud\"")));
    QVERIFY(bench.desktop.lastText().contains(QStringLiteral("[Calvorn] \"Start\"")));
}

void TestStartUp::anInterfaceWithoutADriverOpensWithoutHardware()
{
    WindowBench bench(test::FakeServerControl::program(), settings("7"));
    QVERIFY(bench.started);
    QCOMPARE(bench.desktop.boxes.size(), 0);
    QCOMPARE(bench.window->windowTitle(), QStringLiteral("Brenik - Calvorn  v2.0"));
    bench.click("cmdStart");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.isShown("cmdStart"));
}

void TestStartUp::damagedNumbersDoNotPreventAStart()
{
    WindowBench weights(test::FakeServerControl::program(),
                        settings("2", "[Aux1]\r\nEnabled=1\r\nStep 0=10dB;99999\r\nStep 1=x;&H1FFFF\r\n"));
    QVERIFY(weights.started);
    WindowBench range(test::FakeServerControl::program(),
                      settings("2", "Start=-100\r\nStop=2147483647\r\nScale=1\r\n")
                          .replace("DDS Device", "DDS Min freq=-100\r\nDDS Max freq=2147483647\r\nDDS Device"));
    QVERIFY(range.started);
    QVERIFY(range.desktop.boxes.first().text.startsWith(QStringLiteral("Overflow")));
    QVERIFY(range.window->findChild<QAction *>(QStringLiteral("mnuScalaLogaritmica1"))->isChecked());

    WindowBench bench(test::FakeServerControl::program(),
                      settings("2",
                               "Scale=99\r\nMarker 0=77\r\nMax scaleV=0\r\nMax scaleDb=2000000000\r\nMarker 1=abc\r\n"
                               "Marker 3=xyz\r\nSweep mode=50\r\nCursor mode=9\r\n"));
    QVERIFY(bench.started);
    bench.window->repaint();
    bench.click("cmdView_1");
    QVERIFY(bench.isShown("frameView_1"));
}

// Setting the scale, the markers and the view fails only as a consequence of the overflow.
void TestStartUp::anOverflowOfThePlanIsOneBox()
{
    WindowBench bench(test::FakeServerControl::program(),
                      settings("2", "Start=-100\r\nStop=2147483647\r\n[Debug]\r\nLog=1\r\n")
                          .replace("DDS Device", "DDS Min freq=-100\r\nDDS Max freq=2147483647\r\nDDS Device"));
    QVERIFY(bench.started);
    QStringList texts;
    for (const auto &box : bench.desktop.boxes)
        texts.append(box.text);
    QCOMPARE(texts, QStringList{QStringLiteral("Overflow.\r(in aggiornaLblFrequenza)")});
    const auto *log = bench.find<QListWidget>("lstLOG");
    for (const char *consequence : {"(in aggiornaScala)", "(in restoreMarkers)", "(in selectView)"})
        QVERIFY2(!log->findItems(QString::fromLatin1(consequence), Qt::MatchEndsWith).isEmpty(), consequence);
    // An error caused by the user's next action shows its own box.
    bench.click("cmdStart");
    QCOMPARE(bench.desktop.boxes.size(), 2);
}

void TestStartUp::unreadableTextsStayUntilTheyAreChanged_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("saved");
    const auto typing = [](const char *box, const char *text) {
        return [box, text](WindowBench &bench) { bench.type(box, QString::fromLatin1(text)); };
    };
    QTest::newRow("generator offset") << QByteArray("Config") << QByteArray("DDS Offset") << QByteArray("1.234,5")
                                      << Change([](WindowBench &bench) { calibrate(bench, "mnuCalibraDDS", "12.5"); })
                                      << QStringLiteral("12.5");
    QTest::newRow("detector offset") << QByteArray("Config") << QByteArray("ADC Offset") << QByteArray("0.1 V")
                                     << Change(
                                            [](WindowBench &bench) { calibrate(bench, "mnuCalibraDetector", "0.25"); })
                                     << QStringLiteral("0.25");
    QTest::newRow("top of the scale") << QByteArray("Calvorn") << QByteArray("Max scaleV") << QByteArray("abc")
                                      << Change(typing("txtMaxVolt", "2.5")) << QStringLiteral("2.5");
    QTest::newRow("amplitude marker") << QByteArray("Calvorn") << QByteArray("Marker 3") << QByteArray("x")
                                      << Change(typing("txtM3Y", "0.75")) << QStringLiteral("0.750");
    QTest::newRow("frequency marker") << QByteArray("Calvorn") << QByteArray("Marker 2") << QByteArray("3 MHz")
                                      << Change(typing("txtM2X", "5500000")) << QStringLiteral("5500000");
    QTest::newRow("start") << QByteArray("Calvorn") << QByteArray("Start") << QByteArray("nonsense")
                           << Change(typing("txtStart", "3000000")) << QStringLiteral("3000000");
    QTest::newRow("scale") << QByteArray("Calvorn") << QByteArray("Scale") << QByteArray("100000")
                           << Change([](WindowBench &bench) {
                                  bench.window->findChild<QAction *>(QStringLiteral("mnuScalaLogaritmica1"))->trigger();
                              })
                           << QStringLiteral("1");
    QTest::newRow("speed") << QByteArray("Calvorn") << QByteArray("Sweep mode") << QByteArray("fast")
                           << Change([](WindowBench &bench) { bench.click("optSpeed_2"); }) << QStringLiteral("2");
}

void TestStartUp::unreadableTextsStayUntilTheyAreChanged()
{
    QFETCH(QByteArray, section);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, text);
    QFETCH(Change, change);
    QFETCH(QString, saved);
    const QString asItWas = QString::fromLatin1(text);
    QByteArray file = settings("2");
    file.replace("Sweep mode=1\r\n", "Marker 1=2000000\r\n");
    file.replace("ADC Offset=0\r\n", "");
    file.replace('[' + section + "]\r\n", '[' + section + "]\r\n" + key + '=' + text + "\r\n");
    WindowBench bench(test::FakeServerControl::program(), file);
    // Two starts without a change preserve the text, and each shows a box that names its key.
    for (int start = 0; start < 2; ++start) {
        if (start > 0)
            bench.open();
        QCOMPARE(bench.desktop.boxes.size(), 1);
        QVERIFY2(bench.desktop.lastText().contains('[' + section + "] \"" + key + '"'),
                 qPrintable(bench.desktop.lastText()));
        bench.click("cmdStart");
        bench.click("cmdStop");
        QTRY_VERIFY(bench.isShown("cmdStart"));
        QVERIFY(bench.window->close());
        QCOMPARE(bench.folder.setting(section.constData(), key.constData()), asItWas);
        bench.desktop.boxes.clear();
    }
    bench.open();
    bench.desktop.boxes.clear();
    change(bench);
    QVERIFY(bench.window->close());
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    QCOMPARE(bench.folder.setting(section.constData(), key.constData()), saved);
    bench.open();
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
}

void TestStartUp::aScaleThatIsNoneIsKept_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QByteArray>("stored");
    for (const QLocale &locale :
         {QLocale(QLocale::English, QLocale::UnitedStates), QLocale(QLocale::Italian, QLocale::Italy),
          QLocale(QLocale::French, QLocale::France), QLocale::c()})
        for (const char *stored : {"7", "-3", "5"})
            QTest::addRow("%s %s", qPrintable(locale.name()), stored) << locale << QByteArray(stored);
}

void TestStartUp::aScaleThatIsNoneIsKept()
{
    QFETCH(QLocale, locale);
    QFETCH(QByteArray, stored);
    QLocale::setDefault(locale);
    constexpr std::array kActions{"mnuScalaLineare", "mnuScalaLogaritmica1", "mnuScalaLogaritmica1dB",
                                  "mnuScalaLogaritmica10", "mnuScalaLogaritmica10dB"};
    WindowBench bench(test::FakeServerControl::program(),
                      settings("2", "Max scaleDb=-40\r\nMarker 3=-10\r\nMarker 4=-20\r\nScale=" + stored + "\r\n"));
    QVERIFY(bench.started);
    const auto action = [&](const char *name) { return bench.window->findChild<QAction *>(QString::fromLatin1(name)); };
    QCOMPARE(bench.configuration.scaleType, stored.toShort());
    for (const char *name : kActions)
        QVERIFY2(!action(name)->isChecked(), name);
    // An unknown scale is treated as dB relative to 1 V, with 0 dB at the top.
    emit bench.driver()->aVettore(QVector<int>(400, 100));
    QCOMPARE(bench.table()->text(0, 1), QStringLiteral("dB"));
    QCOMPARE(bench.table()->text(1, 1), test::inLocale(locale, QStringLiteral("-20.0"))); // 100 mV
    QVERIFY(bench.isShown("txtMaxDb"));
    QVERIFY(!bench.isShown("txtMaxVolt"));
    QCOMPARE(bench.text("Label5"), QStringLiteral("dB"));
    const auto *graph = bench.find<SweepGraph>("picSweep");
    QCOMPARE(graph->coordinates().top(), 0.0);
    QCOMPARE(graph->coordinates().bottom(), 40000.0);
    QCOMPARE(graph->line(GraphItem::M3).y1, 10000.0);
    QVERIFY(bench.window->close());
    QCOMPARE(bench.folder.setting("Calvorn", "Scale").toLatin1(), stored);
    bench.open();
    QCOMPARE(bench.configuration.scaleType, stored.toShort());
    // The user selects another scale.
    action("mnuScalaLogaritmica1")->trigger();
    QVERIFY(action("mnuScalaLogaritmica1")->isChecked());
    QCOMPARE(bench.text("txtM3Y"), test::inLocale(locale, QStringLiteral("-10.0")));
    QVERIFY(bench.window->close());
    QCOMPARE(bench.folder.setting("Calvorn", "Scale"), QStringLiteral("1"));
}

void TestStartUp::aViewThatIsNoneIsKept_data()
{
    QTest::addColumn<QByteArray>("interfaceType");
    QTest::addColumn<QByteArray>("stored");
    QTest::newRow("9") << QByteArray("2") << QByteArray("9");
    QTest::newRow("-1") << QByteArray("2") << QByteArray("-1");
    QTest::newRow("2 on the MiniVNA") << QByteArray("3") << QByteArray("2");
    QTest::newRow("3 on the PIC") << QByteArray("1") << QByteArray("3");
}

void TestStartUp::aViewThatIsNoneIsKept()
{
    QFETCH(QByteArray, interfaceType);
    QFETCH(QByteArray, stored);
    WindowBench bench(test::FakeServerControl::program(),
                      settings(interfaceType.constData(), "Marker 0=" + stored + "\r\n"));
    QVERIFY(bench.isShown("frameView_0"));
    QVERIFY(!bench.find("cmdView_0")->isEnabled());
    QVERIFY(bench.window->close());
    QCOMPARE(bench.folder.setting("Calvorn", "Marker 0").toLatin1(), stored);
    bench.open();
    bench.click("cmdView_1");
    bench.click("cmdView_0");
    QVERIFY(bench.window->close());
    QCOMPARE(bench.folder.setting("Calvorn", "Marker 0"), QStringLiteral("0"));
}

void TestStartUp::closingSavesAndTheNextStartComesUpAsItWasLeft()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    WindowBench bench(test::FakeServerControl::program(), settings("2"));
    bench.type("txtStart", QStringLiteral("2000000"));
    bench.type("txtStop", QStringLiteral("6000000"));
    bench.click("optSpeed_2");
    bench.click("cmdView_1");
    bench.window->findChild<QAction *>(QStringLiteral("mnuScalaLogaritmica10"))->trigger();
    QVERIFY(bench.window->close());
    QCOMPARE(bench.folder.setting("Calvorn", "Start"), QStringLiteral("2000000"));
    QCOMPARE(bench.folder.setting("Calvorn", "Stop"), QStringLiteral("6000000"));
    QCOMPARE(bench.folder.setting("Calvorn", "Scale"), QStringLiteral("3"));
    QCOMPARE(bench.folder.setting("Calvorn", "Sweep mode"), QStringLiteral("2"));
    QCOMPARE(bench.folder.setting("Calvorn", "Marker 0"), QStringLiteral("1"));

    bench.open();
    QCOMPARE(bench.desktop.boxes.size(), 0);
    QCOMPARE(bench.text("txtStart"), test::inLocale(locale, QStringLiteral("2,000,000")));
    QCOMPARE(bench.text("txtStop"), test::inLocale(locale, QStringLiteral("6,000,000")));
    QVERIFY(bench.find<QRadioButton>("optSpeed_2")->isChecked());
    QVERIFY(bench.isShown("frameView_1"));
    QVERIFY(bench.window->findChild<QAction *>(QStringLiteral("mnuScalaLogaritmica10"))->isChecked());
    QCOMPARE(bench.table()->text(0, 1), QStringLiteral("dB"));
}

void TestStartUp::closingStopsAndClosesThePort()
{
    WindowBench bench(test::FakeServerControl::program(), settings("2"));
    bench.click("cmdStart");
    m_server.takeCalls();
    bench.window->close();
    QCOMPARE(m_server.takeCalls(),
             (QStringList{QStringLiteral("aLPT.StopSweep(2)"), QStringLiteral("aLPT.ClosePort()")}));
}

void TestStartUp::closingEndsAStartThatWaits()
{
    m_server.setRules({QStringLiteral("endless")});
    WindowBench bench(test::FakeServerControl::program(), settings("2", "[Debug]\r\nLog=1\r\n"));
    bench.click("cmdStart");
    bench.click("cmdSwStop");
    QVERIFY(bench.isShown("cmdStart"));
    int pumps = 0;
    bench.desktop.whilePumping = [&] {
        if (++pumps == 3)
            bench.window->close();
    };
    bench.click("cmdStart");
    QCOMPARE(pumps, 3);
    QVERIFY(!bench.window->isVisible());
    QCOMPARE(bench.desktop.boxes.size(), 0);
}

void TestStartUp::cancellingAnErrorClosesTheWindow()
{
    WindowBench bench(test::FakeServerControl::program(), settings("2"));
    bench.desktop.answers.enqueue(kBoxCancel);
    auto *driver = bench.driver();
    emit driver->aErrore(2, QStringLiteral("The port is gone."));
    QVERIFY(!bench.window->isVisible());
}

void TestStartUp::aFrequencyStillBeingTypedIsTakenByTheKey()
{
    WindowBench bench(test::FakeServerControl::program(), settings("2"));
    auto *box = bench.find<QLineEdit>("txtStart");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("2000000"));
    m_server.takeCalls();
    QTest::keyClick(box, Qt::Key_F5);
    QVERIFY(bench.isShown("cmdStop"));
    QVERIFY(m_server.takeCalls().contains(QStringLiteral("aLPT.PrepareSweep(2000000, 20000)")));
}

void TestStartUp::thePreferencesShowTheCursorLines()
{
    WindowBench bench(test::FakeServerControl::program(), settings("2"));
    const auto *graph = bench.find<SweepGraph>("picSweep");
    QVERIFY(!graph->line(GraphItem::CursorV).visible);
    QTimer::singleShot(0, bench.window.get(), [&] {
        auto *cross = bench.find<QRadioButton>("optCursor_1");
        QTest::mouseClick(cross, Qt::LeftButton, {}, QPoint(10, cross->height() / 2));
        QTest::keyClick(bench.find("frmPreferences"), Qt::Key_Escape);
    });
    bench.window->findChild<QAction *>(QStringLiteral("mnuPreferences"))->trigger();
    QVERIFY(graph->line(GraphItem::CursorV).visible);
    QVERIFY(graph->line(GraphItem::CursorH).visible);
    QCOMPARE(bench.folder.setting("Calvorn", "Cursor mode"), QStringLiteral("1"));
}

void TestStartUp::menusHaveNoDeadEntries()
{
    WindowBench bench(test::FakeServerControl::program(), settings("2"));
    int entries = 0;
    for (const QAction *menu : bench.window->menuBar()->actions()) {
        QVERIFY2(menu->menu() && !menu->menu()->actions().isEmpty(), qPrintable(menu->text()));
        for (const QAction *entry : menu->menu()->actions()) {
            QVERIFY2(!entry->objectName().isEmpty() || entry->isSeparator(), qPrintable(entry->text()));
            ++entries;
        }
    }
    QVERIFY(entries >= 11);
}

QTEST_MAIN(TestStartUp)
#include "test_start_up.moc"
