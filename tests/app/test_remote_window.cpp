// SPDX-License-Identifier: MIT
// The window under remote control: a command does what the matching control does, and no box is shown.
#include "app/frm_preferences.h"
#include "app/remote_control.h"
#include "app/unattended_desktop.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "remote/scpi_server.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/settings_page.h"
#include "tests/support/window_bench.h"

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QSpinBox>
#include <QTabWidget>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <filesystem>
#include <memory>

using namespace calvorn;

namespace {

quint16 freePort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost) ? probe.serverPort() : quint16{0};
}

int openSockets()
{
    const QDir folder(QStringLiteral("/proc/self/fd"));
    const QStringList names = folder.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
    return static_cast<int>(std::ranges::count_if(names, [&folder](const QString &name) {
        std::error_code gone;
        return std::filesystem::read_symlink(folder.filePath(name).toStdString(), gone).string().starts_with("socket:");
    }));
}

int runningThreads()
{
    return static_cast<int>(
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::NoDotAndDotDot | QDir::Dirs).size());
}

struct Bench : test::WindowBench
{
    explicit Bench(int interfaceType = kInterfaceLpt,
                   const QString &server = test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")))
        : WindowBench(server, test::crystalSettings(static_cast<std::int16_t>(interfaceType)))
        , port(freePort())
    {
    }

    // Restarts the program with remote control switched on and connects to it.
    void startRemoteControl()
    {
        window->close();
        folder.set("Remote", "On", QStringLiteral("1"));
        folder.set("Remote", "Port", QString::number(port));
        open();
        enter();
    }
    void enter()
    {
        client = std::make_unique<QTcpSocket>();
        client->connectToHost(QHostAddress::LocalHost, port);
        if (!client->waitForConnected(3'000))
            qFatal("cannot connect: %s", qPrintable(client->errorString()));
    }

    // Performs an action in the Preferences dialog and closes the dialog.
    void inPreferences(const std::function<void(FrmPreferences &)> &act) const
    {
        QTimer::singleShot(0, window.get(), [&] {
            auto *preferences = window->findChild<FrmPreferences *>();
            act(*preferences);
            preferences->accept();
        });
        window->findChild<QAction *>(QStringLiteral("mnuPreferences"))->trigger();
    }

    void tell(const QByteArray &command) const { client->write(command + '\n'); }
    // Waits for the reply while the window processes its events.
    QByteArray ask(const QByteArray &query) const
    {
        tell(query);
        if (!QTest::qWaitFor([this] { return client->canReadLine(); }, 10'000))
            return "no answer";
        return client->readLine().trimmed();
    }
    QByteArray error() const { return ask("SYST:ERR?"); }

    quint16 port;
    std::unique_ptr<QTcpSocket> client;
};

const QByteArray kNoError("0,\"No error\"");

} // namespace

class TestRemoteWindow : public QObject
{
    Q_OBJECT

private slots:
    void closedAtFirst();
    void thePreferencesOpenAndCloseIt();
    void closedItCostsNothing();
    void aPortThatIsTaken();
    void anotherPortMovesTheServer();
    void thePortLeftAsItIsKeepsTheClients();
    void aCompletionIsToldOnce();
    void storingKeepsTheNameOfATrace();
    void commandsMoveTheControls();
    void sweeps_data() { test::addInterfaceRows(); }
    void sweeps();
    void aBoardThatNeverStopsIsNotAwaitedForever();
    void boxesBecomeErrors();
    void aDialogComesFirst();
    void thePersonIsStillAsked();
    void aCommandInsideACommandHasItsOwnFile();
    void theServerClosesWithTheWindow();
    void theSettingsAreExplained();
};

void TestRemoteWindow::closedAtFirst()
{
    Bench bench;
    QVERIFY(bench.started);
    QVERIFY(bench.window->findChildren<ScpiServer *>().isEmpty());
    QTcpSocket nobody;
    nobody.connectToHost(QHostAddress::LocalHost, ScpiServer::kUsualPort);
    QVERIFY(!nobody.waitForConnected(500));
    bench.window->close();
    QCOMPARE(bench.folder.setting("Remote", "On"), QString());
    QCOMPARE(bench.folder.setting("Remote", "Port"), QString());
}

void TestRemoteWindow::thePreferencesOpenAndCloseIt()
{
    Bench bench;
    QVERIFY(!bench.label("lblStatus").contains(QLatin1String("SCPI")));
    bench.inPreferences([&bench](FrmPreferences &preferences) {
        preferences.findChild<QSpinBox *>(QStringLiteral("spinRemotePort"))->setValue(bench.port);
        preferences.findChild<QAbstractButton *>(QStringLiteral("chkRemote"))->click();
    });
    QVERIFY(bench.label("lblStatus").contains(QStringLiteral("SCPI: port %1").arg(bench.port)));
    bench.enter();
    QVERIFY(bench.ask("*IDN?").startsWith("Brenik,Calvorn,0,"));
    QVERIFY(QTest::qWaitFor([&] { return bench.label("lblStatus").contains(QLatin1String("clients: 1")); }));
    QCOMPARE(bench.folder.setting("Remote", "On"), QStringLiteral("1"));
    QCOMPARE(bench.folder.setting("Remote", "Port"), QString::number(bench.port));
    bench.inPreferences([](FrmPreferences &preferences) {
        preferences.findChild<QAbstractButton *>(QStringLiteral("chkRemote"))->click();
    });
    QVERIFY(QTest::qWaitFor([&] { return bench.client->state() == QAbstractSocket::UnconnectedState; }));
    QVERIFY(!bench.label("lblStatus").contains(QLatin1String("SCPI")));
    QCOMPARE(bench.folder.setting("Remote", "On"), QStringLiteral("0"));
}

// Remote control uses no socket and no thread before it is switched on or after it is switched off.
void TestRemoteWindow::closedItCostsNothing()
{
    Bench bench;
    const auto click = [&bench](FrmPreferences &preferences) {
        preferences.findChild<QSpinBox *>(QStringLiteral("spinRemotePort"))->setValue(bench.port);
        preferences.findChild<QAbstractButton *>(QStringLiteral("chkRemote"))->click();
    };
    // Excludes whatever the first dialog allocates permanently.
    bench.inPreferences([](FrmPreferences &) {});
    const int sockets = openSockets();
    const int threads = runningThreads();
    bench.inPreferences(click);
    QVERIFY(openSockets() >= sockets + 2);
    QCOMPARE(runningThreads(), threads);
    bench.inPreferences(click);
    QCOMPARE(openSockets(), sockets);
    QCOMPARE(runningThreads(), threads);
}

void TestRemoteWindow::aPortThatIsTaken()
{
    Bench bench;
    QTcpServer other;
    QVERIFY(other.listen(QHostAddress::LocalHost));
    bench.window->close();
    bench.folder.set("Remote", "On", QStringLiteral("1"));
    bench.folder.set("Remote", "Port", QString::number(other.serverPort()));
    bench.open();
    QVERIFY(bench.started);
    QVERIFY2(bench.label("lblStatus").contains(QStringLiteral("cannot use the port %1").arg(other.serverPort())),
             qPrintable(bench.label("lblStatus")));
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestRemoteWindow::anotherPortMovesTheServer()
{
    Bench bench;
    bench.startRemoteControl();
    QCOMPARE(bench.error(), kNoError);
    bench.port = freePort();
    bench.inPreferences([&bench](FrmPreferences &preferences) {
        auto *box = preferences.findChild<QSpinBox *>(QStringLiteral("spinRemotePort"));
        box->setValue(bench.port);
        emit box->editingFinished();
    });
    QVERIFY(QTest::qWaitFor([&] { return bench.client->state() == QAbstractSocket::UnconnectedState; }));
    bench.enter();
    QCOMPARE(bench.error(), kNoError);
    QCOMPARE(bench.folder.setting("Remote", "Port"), QString::number(bench.port));
}

void TestRemoteWindow::thePortLeftAsItIsKeepsTheClients()
{
    Bench bench;
    bench.startRemoteControl();
    bench.tell("NONSENSE");
    QVERIFY(QTest::qWaitFor([&] { return bench.label("lblStatus").contains(QLatin1String("clients: 1")); }));
    bench.inPreferences([](FrmPreferences &preferences) {
        emit preferences.findChild<QSpinBox *>(QStringLiteral("spinRemotePort"))->editingFinished();
    });
    QVERIFY(bench.error().startsWith("-113,"));
}

void TestRemoteWindow::aCompletionIsToldOnce()
{
    Bench bench;
    bench.startRemoteControl();
    QCOMPARE(bench.ask("*CLS;INIT;*OPC;*OPC?"), QByteArray("1"));
    QCOMPARE(bench.ask("*ESR?"), QByteArray("1"));
    QCOMPARE(bench.ask("INIT;*OPC?"), QByteArray("1"));
    QCOMPARE(bench.ask("*ESR?"), QByteArray("0"));
}

void TestRemoteWindow::storingKeepsTheNameOfATrace()
{
    Bench bench;
    bench.startRemoteControl();
    QCOMPARE(bench.ask("INIT;*OPC?;TRAC:STOR 1;CAT?"), QByteArray("1;1,\"Trace 1\""));
    QTest::keyClick(bench.window.get(), Qt::Key_M, Qt::ControlModifier);
    bench.find<QTabWidget>("tabMeasure")->setCurrentIndex(0);
    bench.type("txtTrace_0", QStringLiteral("filter"));
    QCOMPARE(bench.ask("TRAC:STOR 1;CAT?"), QByteArray("1,\"filter\""));
    // A crystal fixture may have at most 10 kohms.
    QVERIFY(!bench.ask("CALC:RES? CRYS,LIVE,10000").isEmpty());
    QCOMPARE(bench.error(), kNoError);
    bench.tell("CALC:RES? CRYS,LIVE,10001");
    QVERIFY(bench.error().startsWith("-222,"));
}

void TestRemoteWindow::commandsMoveTheControls()
{
    Bench bench;
    bench.startRemoteControl();
    bench.tell("FREQ:STAR 8.97 MHZ;STOP 9030000");
    QCOMPARE(bench.ask("FREQ:STEP?"), QByteArray("150"));
    QCOMPARE(bench.text("txtStart"), QStringLiteral("8,970,000"));
    QCOMPARE(bench.text("txtStop"), QStringLiteral("9,030,000"));
    QCOMPARE(bench.table()->frequency(1), 8'970'000);
    QCOMPARE(bench.ask("DISP:SCAL DB10V;SCAL?"), QByteArray("DB10V"));
    QVERIFY(bench.window->findChild<QAction *>(QStringLiteral("mnuScalaLogaritmica10"))->isChecked());
    QCOMPARE(bench.ask("DISP:BOTT -70;BOTT?"), QByteArray("-70"));
    QCOMPARE(bench.configuration.maxScaleDb, -70);
    QCOMPARE(bench.ask("SWE:SPE SLOW;SPE?"), QByteArray("SLOW"));
    QVERIFY(bench.isChecked("optSpeed_1"));
    QCOMPARE(bench.ask("CALC:MARK1:X 9 MHZ;X?"), QByteArray("9.0E+06"));
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("9,000,000"));
    QCOMPARE(bench.ask("OUTP:AUX1 129;AUX1?"), QByteArray("129"));
    QCOMPARE(bench.configuration.aux1, std::int16_t{129});
    QCOMPARE(bench.error(), kNoError);
    // A value beyond a limit is clamped and reported.
    QCOMPARE(bench.ask("FREQ:STOP 1 GHZ;STOP?"), QByteArray::number(bench.configuration.ddsMaxFreq));
    QVERIFY(bench.error().startsWith("-222,"));
    QCOMPARE(bench.desktop.beeps, 0);
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestRemoteWindow::sweeps()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType);
    bench.startRemoteControl();
    QCOMPARE(bench.ask("INST:SEL?"), QByteArray(interfaceType == kInterfacePic   ? "\"PIC\""
                                                : interfaceType == kInterfaceLpt ? "\"LPT\""
                                                                                 : "\"VNA\""));
    bench.tell("CALC:DATA?");
    QVERIFY(bench.error().startsWith("-230,"));
    for (int sweep = 0; sweep < 3; ++sweep) {
        bench.tell("INIT");
        QCOMPARE(bench.ask("*OPC?"), QByteArray("1"));
        QVERIFY(bench.table()->hasSweep());
    }
    QCOMPARE(bench.ask("CALC:DATA?").count(','), 399);
    QCOMPARE(bench.ask("CALC:COUN?").count(','), 399);
    // The crystal's peak.
    const double peak = bench.ask("CALC:MARK1:MAX;X?").toDouble();
    QVERIFY2(std::abs(peak - 9e6) < 5'000, qPrintable(QString::number(peak)));
    QCOMPARE(NumberText().toDouble(bench.text("txtM1X")), peak);
    // Continuous sweeps show the buttons of a running sweep, and the user can stop them.
    QCOMPARE(bench.ask("INIT:CONT ON;CONT?"), QByteArray("1"));
    QVERIFY(bench.isShown("cmdStop"));
    QVERIFY(QTest::qWaitFor([&] { return bench.ask("SWE:COUN?").toInt() >= 3; }, 10'000));
    bench.tell("INIT");
    QVERIFY(bench.error().startsWith("-213,"));
    bench.click("cmdStop");
    QVERIFY(QTest::qWaitFor([&] { return bench.ask("INIT:CONT?") == "0"; }, 5'000));
    QCOMPARE(bench.ask("*TST?"), QByteArray("0"));
    QCOMPARE(bench.error(), kNoError);
    QVERIFY(bench.desktop.boxes.isEmpty());
}

// After 10 s the client gets an error and the rest of its message is carried out.
void TestRemoteWindow::aBoardThatNeverStopsIsNotAwaitedForever()
{
    const test::FakeServerControl server;
    Bench bench(kInterfaceLpt, server.program());
    bench.startRemoteControl();
    server.setRules({QStringLiteral("endless")});
    QCOMPARE(bench.ask("INIT:CONT ON;CONT?"), QByteArray("1"));
    QElapsedTimer clock;
    clock.start();
    bench.tell("ABOR;*IDN?");
    QVERIFY(QTest::qWaitFor([&] { return bench.client->canReadLine(); }, 20'000));
    // The program's timer is precise to 5 %.
    QVERIFY2(clock.elapsed() >= 9'400, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(bench.client->readLine().startsWith("Brenik,Calvorn,"));
    QCOMPARE(bench.error(), QByteArray("-200,\"Execution error;time limit exceeded\""));
    QCOMPARE(bench.error(), kNoError);
}

void TestRemoteWindow::boxesBecomeErrors()
{
    Bench bench;
    bench.startRemoteControl();
    bench.tell("FREQ:STAR 9 MHZ;STOP 9000100");
    const QByteArray error = bench.error();
    QVERIFY2(error.startsWith("-200,") && error.contains("400 Hz"), error.constData());
    QCOMPARE(bench.ask("FREQ:SPAN?"), QByteArray("400"));
    QCOMPARE(bench.error(), kNoError);
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestRemoteWindow::aDialogComesFirst()
{
    Bench bench;
    bench.startRemoteControl();
    QDialog dialog(bench.window.get());
    dialog.setWindowTitle(QStringLiteral("Something"));
    dialog.open();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    bench.tell("FREQ:STAR 5 MHZ");
    QCOMPARE(bench.error(), QByteArray("-200,\"Execution error;Something is open\""));
    QCOMPARE(bench.ask("FREQ:STAR?"), QByteArray("8950000"));
    bench.tell("INIT");
    QVERIFY(bench.error().startsWith("-200,"));
    dialog.reject();
    QCOMPARE(bench.ask("FREQ:STAR 5 MHZ;STAR?"), QByteArray("5000000"));
    QCOMPARE(bench.error(), kNoError);
}

// Errors caused by the user's own actions are still shown to the user.
void TestRemoteWindow::thePersonIsStillAsked()
{
    Bench bench;
    bench.startRemoteControl();
    QCOMPARE(bench.ask("FREQ:STAR 9.1 MHZ;STAR?"), QByteArray("9100000"));
    bench.type("txtStart", QStringLiteral("9000000"));
    bench.type("txtStop", QStringLiteral("9000001"));
    QVERIFY(QTest::qWaitFor([&] { return !bench.desktop.boxes.isEmpty(); }, 5'000));
    QVERIFY(bench.desktop.lastText().contains(QLatin1String("400 Hz")));
    QCOMPARE(bench.error(), kNoError);
}

void TestRemoteWindow::aCommandInsideACommandHasItsOwnFile()
{
    test::FakeDesktop person;
    person.fileChoice = QStringLiteral("chosen");
    UnattendedDesktop desktop(person);
    QStringList told;
    const auto tell = [&told](const QString &text) { told.append(text); };
    const auto show = [&desktop] {
        desktop.messageBox(BoxIcon::Information, BoxButtons::Ok, QStringLiteral("text"), {});
    };
    {
        const UnattendedDesktop::Guard outer(desktop, tell, QStringLiteral("outer"));
        {
            const UnattendedDesktop::Guard inner(desktop, {}, QStringLiteral("inner"));
            show();
            QCOMPARE(person.boxes.size(), 1);
        }
        QCOMPARE(desktop.chooseFileToSave({}, {}), QStringLiteral("outer"));
        QCOMPARE(desktop.chooseFileToOpen({}, {}), QStringLiteral("outer"));
        show();
        QCOMPARE(told, QStringList{QStringLiteral("text")});
    }
    QCOMPARE(desktop.chooseFileToSave({}, {}), QStringLiteral("chosen"));
    show();
    QCOMPARE(person.boxes.size(), 2);
}

void TestRemoteWindow::theServerClosesWithTheWindow()
{
    Bench bench;
    bench.startRemoteControl();
    bench.tell("INIT:CONT ON");
    QVERIFY(QTest::qWaitFor([&] { return bench.station->instrument.isSweeping(); }, 5'000));
    bench.window->close();
    QVERIFY(QTest::qWaitFor([&] { return bench.client->state() == QAbstractSocket::UnconnectedState; }));
    QTcpSocket nobody;
    nobody.connectToHost(QHostAddress::LocalHost, bench.port);
    QVERIFY(!nobody.waitForConnected(500));
}

void TestRemoteWindow::theSettingsAreExplained()
{
    QCOMPARE(test::keysOfPage(QStringLiteral("Remote")), test::keysOf({kRemoteOn, kRemotePort}));
}

QTEST_MAIN(TestRemoteWindow)
#include "test_remote_window.moc"
