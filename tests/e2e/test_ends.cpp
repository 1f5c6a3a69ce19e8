// SPDX-License-Identifier: MIT
// Tests that the program never leaves a generator on, however it exits. The boards in tests/boards/ report the state of
// their generator. CALVORN_ENDS=20 tries each way of exiting twenty times.
#include "tests/e2e/real_program.h"
#include "tests/support/page_boards.h"

#include <QFile>
#include <QTest>

#include <csignal>
#include <functional>
#include <memory>

using namespace calvorn;
using namespace calvorn::test;

namespace {

constexpr int kEndMs = 20'000; // long enough for a loaded machine
constexpr int kAttempts = 4;
constexpr int kHundredthsOfASweep = 3; // processor time in 1/100 s to start a sweep and decode a few vectors
const QString kMainWindow = QStringLiteral("^Brenik - Calvorn  v2.0 - ");
const QString kBox = QStringLiteral("^Brenik - Calvorn  v2.0$");
const QString kSetUp = QStringLiteral("^Configuration$");

// A separate X server with a window manager, which the test can kill.
class Screen
{
public:
    Screen()
    {
        m_process.start(QStringLiteral("Xvfb"),
                        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-noreset"),
                         QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-screen"),
                         QStringLiteral("0"), QStringLiteral("1280x900x24")});
        while (!m_process.canReadLine())
            if (!m_process.waitForReadyRead(30'000))
                qFatal("Xvfb does not come up");
        m_former = qgetenv("DISPLAY");
        qputenv("DISPLAY", ':' + m_process.readLine().trimmed());
        m_windowManager = std::make_unique<WindowManager>();
    }
    ~Screen()
    {
        vanish();
        qputenv("DISPLAY", m_former);
    }
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    void vanish()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    QByteArray m_former; // DISPLAY
    std::unique_ptr<WindowManager> m_windowManager;
};

// A board for one of the three interfaces, with access to its generator's state.
class Board
{
public:
    explicit Board(std::int16_t interfaceType)
        : m_interface(interfaceType)
    {
        if (interfaceType == kInterfaceLpt)
            m_parallel = std::make_unique<ParallelPageBoard>();
        else
            m_serial = std::make_unique<SerialPageBoard>(interfaceType == kInterfacePic ? "pic_board_by_the_page"
                                                                                        : "vna_board_by_the_page",
                                                         QStringList{QStringLiteral("--paced")});
    }

    QByteArray settings() const { return pageSettings(m_interface, m_serial ? m_serial->link() : QString()); }

    bool isGeneratorOn() const
    {
        if (m_interface == kInterfacePic)
            return field("gen") != "off";
        if (m_interface == kInterfaceVna)
            return field("word") != "0";
        return isParallelGeneratorOn();
    }

    // At rest, the PIC board stays at the start frequency and the other boards are off.
    bool isAtRest() const
    {
        if (m_interface == kInterfacePic)
            return field("sweeping") == "0";
        return !isGeneratorOn();
    }

    QByteArray description() const
    {
        return m_serial ? m_serial->tell("state")
                        : m_parallel->events().mid(m_parallel->events().size() - 4).join("; ");
    }

private:
    bool isParallelGeneratorOn() const
    {
        bool on = false;
        for (const QByteArray &event : m_parallel->events())
            if (event.startsWith("word ") || event == "power-down")
                on = event != "power-down";
        return on;
    }
    // Returns a field of "state gen=1000000 start=0 ..."
    QByteArray field(const QByteArray &name) const
    {
        for (const QByteArray &part : m_serial->tell("state").split(' '))
            if (part.startsWith(name + '='))
                return part.mid(name.size() + 1);
        return "missing";
    }

    std::int16_t m_interface;
    std::unique_ptr<SerialPageBoard> m_serial;
    std::unique_ptr<ParallelPageBoard> m_parallel;
};

// The program with such a board.
struct Scene
{
    explicit Scene(std::int16_t interfaceType)
        : board(interfaceType)
        , program(board.settings())
    {
    }

    bool start()
    {
        return program.start({}, kMainWindow) && QTest::qWaitFor([this] { return board.isGeneratorOn(); }, kEndMs);
    }

    // Returns the server's processor time in 1/100 s. It shows whether the server sweeps: an idle server uses almost
    // none.
    int hundredthsUsed() const
    {
        QFile file(QStringLiteral("/proc/%1/stat").arg(server));
        const QList<QByteArray> fields =
            file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QList<QByteArray>();
        return fields.value(13).toInt() + fields.value(14).toInt();
    }
    bool sweep()
    {
        server = program.serverPid();
        const int before = hundredthsUsed();
        press("F5");
        return QTest::qWaitFor([&] { return hundredthsUsed() >= before + kHundredthsOfASweep; }, kEndMs);
    }

    pid_t pid() const { return static_cast<pid_t>(program.pid()); }
    void press(const char *key) const { program.keys({QString::fromLatin1(key)}); }
    // Waits for a dialog or message box and brings it to the front.
    bool waitFor(const QString &title) const
    {
        const QString window = program.waitForWindow(title, kEndMs);
        if (!window.isEmpty())
            RealProgram::activate(window);
        return !window.isEmpty();
    }

    std::unique_ptr<Screen> screen; // null: the program uses the test's display
    Board board;
    RealProgram program;
    qint64 server = 0;
};

// Makes the program exit in some way. Returns false if that is not possible.
using End = std::function<bool(Scene &)>;

End signalled(int number)
{
    return [number](const Scene &scene) { return ::kill(scene.pid(), number) == 0; };
}

// Keys go to the active window. On a busy machine no window may be active for a while, or a message box about a slow
// board may have just opened. This therefore repeats the key, as a user would, after closing any box in the way.
End pressed(const char *key)
{
    return [key](Scene &scene) {
        for (int attempt = 1; attempt <= kAttempts; ++attempt) {
            const bool isActive = RealProgram::activate(scene.program.mainWindow());
            scene.press(isActive ? key : "Escape");
            if (scene.program.waitForEnd(kEndMs / kAttempts))
                return true;
            qInfo("%s, attempt %d: the window was %s; %s", key, attempt, isActive ? "active" : "not active",
                  qPrintable(scene.program.windowsShown()));
        }
        return false;
    };
}

bool signalTheGroup(const Scene &scene)
{
    return ::kill(-scene.pid(), SIGINT) == 0;
}

bool apply(const Scene &scene)
{
    RealProgram::activate(scene.program.mainWindow());
    scene.press("alt+s");
    scene.press("c");
    if (!scene.waitFor(kSetUp))
        return false;
    scene.press("alt+a");
    if (!scene.waitFor(kBox))
        return false;
    scene.press("Return");
    return true;
}

// Terminates only the server. The program keeps running.
bool endTheServer(Scene &scene)
{
    scene.server = scene.program.serverPid();
    if (::kill(static_cast<pid_t>(scene.server), SIGTERM) != 0)
        return false;
    (void)QTest::qWaitFor([&] { return scene.program.serversRunning() == 0; }, kEndMs);
    return true;
}

bool cancelTheBox(Scene &scene)
{
    if (!endTheServer(scene) || !scene.waitFor(kBox))
        return false;
    scene.press("Escape");
    return true;
}

bool loseTheDisplay(const Scene &scene)
{
    scene.screen->vanish();
    return true;
}

} // namespace

Q_DECLARE_METATYPE(End)

class TestEnds : public QObject
{
    Q_OBJECT

private:
    WindowManager m_windowManager;

private slots:
    void initTestCase() { QVERIFY(m_times >= 1); }

    void pic_data() { addRows(); }
    void pic() { tryEnds(kInterfacePic); }
    void parallelPort_data() { addRows(); }
    void parallelPort() { tryEnds(kInterfaceLpt); }
    void miniVna_data() { addRows(); }
    void miniVna() { tryEnds(kInterfaceVna); }

private:
    void addRows() const;
    void tryEnds(std::int16_t interfaceType) const;

    const int m_times = qEnvironmentVariable("CALVORN_ENDS", QStringLiteral("1")).toInt();
};

void TestEnds::addRows() const
{
    QTest::addColumn<End>("end");
    QTest::addColumn<bool>("sweeping");
    QTest::addColumn<bool>("ends");
    const auto row = [](const char *name, const End &end, bool ends = true) {
        for (const bool sweeping : {false, true})
            QTest::addRow("%s, %s", name, sweeping ? "sweeping" : "idle") << end << sweeping << ends;
    };
    row("closed", pressed("alt+F4"));
    row("Ctrl+Q", pressed("ctrl+q"));
    row("SIGTERM", signalled(SIGTERM));
    row("SIGINT", signalled(SIGINT));
    row("SIGINT to the group", signalTheGroup);
    row("SIGHUP", signalled(SIGHUP));
    row("SIGKILL", signalled(SIGKILL));
    row("the display is gone", loseTheDisplay);
    row("the server is ended", endTheServer, false);
    // "Apply" needs an idle generator; the box appears only during a sweep.
    QTest::newRow("Apply, idle") << End(apply) << false << true;
    QTest::newRow("cancelled box, sweeping") << End(cancelTheBox) << true << true;
}

void TestEnds::tryEnds(std::int16_t interfaceType) const
{
    QFETCH(End, end);
    QFETCH(bool, sweeping);
    QFETCH(bool, ends);
    const bool ownScreen = QByteArray(QTest::currentDataTag()).startsWith("the display");
    for (int time = 0; time < m_times; ++time) {
        std::unique_ptr<Screen> screen = ownScreen ? std::make_unique<Screen>() : nullptr;
        Scene scene(interfaceType);
        scene.screen = std::move(screen);
        QVERIFY(scene.start());
        QVERIFY(!sweeping || scene.sweep());
        QVERIFY(end(scene));
        QVERIFY(!ends || scene.program.waitForEnd(kEndMs));
        QVERIFY(QTest::qWaitFor([&] { return scene.program.serversRunning() == 0; }, kEndMs));
        // The server's last bytes are on the line, but on a busy computer the board may not have read them yet.
        QVERIFY2(QTest::qWaitFor([&] { return scene.board.isAtRest(); }, 10'000),
                 qPrintable(QString::fromLatin1(scene.board.description())));
    }
}

QTEST_MAIN(TestEnds)
#include "test_ends.moc"
