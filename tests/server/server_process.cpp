// SPDX-License-Identifier: MIT
// Tests the real CalvornAsync from the outside: it serves one program and always exits.
#include "lpt_proxy.h"

#include "tests/server/terminal_pair.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <functional>
#include <memory>
#include <unistd.h>

namespace {

// A server that runs in a temporary program folder with an unpaced simulated board.
class Server
{
public:
    Server()
    {
        const QString built = qEnvironmentVariable("CALVORN_BIN") + QStringLiteral("/CalvornAsync");
        if (!QFile::copy(built, path()))
            qFatal("cannot copy %s", qPrintable(built));
        QFile settings(m_folder.filePath(QStringLiteral("Calvorn.ini")));
        if (!settings.open(QIODevice::WriteOnly))
            qFatal("cannot write the settings");
        settings.write("[Config]\r\nDDS Device=AD9850\r\nDDS Xtal freq=80000000\r\n"
                       "[Simulator]\r\nPace=none\r\nDevice=bandpass\r\n");
        // Keeps this test's sockets apart from all others.
        QDir(m_folder.path()).mkdir(QStringLiteral("run"));
        setRunPath(runPath());
    }
    ~Server()
    {
        leave();
        process.closeWriteChannel();
        process.waitForFinished();
    }

    void setRunPath(const QString &folder)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"XDG_RUNTIME_DIR", "TMPDIR"})
            environment.insert(QString::fromLatin1(name), folder);
        process.setProcessEnvironment(environment);
    }

    QString path() const { return m_folder.filePath(QStringLiteral("CalvornAsync")); }
    QString runPath() const { return m_folder.filePath(QStringLiteral("run")); }
    int socketFolders() const
    {
        return static_cast<int>(QDir(runPath()).entryList({QStringLiteral("calvorn-*")}).size());
    }

    bool start()
    {
        process.start(path(), QStringList());
        return readAddress();
    }

    bool readAddress()
    {
        QElapsedTimer clock;
        clock.start();
        while (!process.canReadLine() && clock.elapsed() < 5'000)
            process.waitForReadyRead(100);
        address = QString::fromUtf8(process.readLine()).trimmed();
        return !address.isEmpty();
    }

    bool join()
    {
        static int count = 0;
        m_name = QStringLiteral("server-%1").arg(++count);
        const QDBusConnection connection = QDBusConnection::connectToPeer(address, m_name);
        if (!connection.isConnected())
            return false;
        lpt = std::make_unique<LptProxy>(QString(), QStringLiteral("/aLPT"), connection);
        // By the time the server answers this call, it has registered its client.
        QDBusPendingReply<> answered = lpt->SetSpeed(0);
        answered.waitForFinished();
        return !answered.isError();
    }

    // Maps COM5 to `device` in the settings and opens it as a MiniVNA.
    bool openVna(const QString &device)
    {
        QFile settings(m_folder.filePath(QStringLiteral("Calvorn.ini")));
        if (!settings.open(QIODevice::Append) || settings.write("[Ports]\r\nCOM5=" + device.toLocal8Bit() + "\r\n") < 0)
            return false;
        settings.close();
        QDBusMessage call = QDBusMessage::createMethodCall(QString(), QStringLiteral("/aVNA"),
                                                           QStringLiteral("calvorn.Vna"), QStringLiteral("OpenPort"));
        call << QVariant::fromValue(short{5}) << QStringLiteral("115200,N,8,1");
        const QDBusReply<bool> opened = QDBusConnection(m_name).call(call);
        return opened.isValid() && opened.value();
    }

    // Does not wait for the reply.
    void callOpenPort(short port, const QString &settings) const
    {
        QDBusMessage call = QDBusMessage::createMethodCall(QString(), QStringLiteral("/aPIC"),
                                                           QStringLiteral("calvorn.Pic"), QStringLiteral("OpenPort"));
        call << QVariant::fromValue(port) << settings;
        QDBusConnection(m_name).asyncCall(call);
    }

    void leave()
    {
        lpt.reset();
        if (!m_name.isEmpty())
            QDBusConnection::disconnectFromPeer(m_name);
        m_name.clear();
    }

    QProcess process;
    QString address;
    std::unique_ptr<LptProxy> lpt;

private:
    QTemporaryDir m_folder;
    QString m_name;
};

// Returns whether the process has exited; a zombie counts as exited.
bool isGone(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = status.readAll();
    return line.mid(line.lastIndexOf(')') + 2, 1) == "Z";
}

} // namespace

class ServerProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void folderIsPrivate();
    void sweepsAndEndsWithTheConnection();
    void secondProgramIsNotLetIn();
    void secondOfTwoAtOnceIsTurnedAway();
    void endsWithStandardInput();
    void endsOnTerminate();
    void endsWhileSweeping();
    void everyOrderlyEndSwitchesTheGeneratorOff_data();
    void everyOrderlyEndSwitchesTheGeneratorOff();
    void endsWhenNobodyComes();
    void endsWithAKilledParent_data();
    void endsWithAKilledParent();
    void endsAfterABurstOfRefusedPorts();
    void foldersOfAnyName_data();
    void foldersOfAnyName();
    void aFolderThatIsTooDeepIsPassedOver();
    void noFolderIsLeftForGood();
    void aSystemWithoutAThread();
};

void ServerProcessTest::folderIsPrivate()
{
    Server server;
    QVERIFY(server.start());
    const QDir run(server.runPath());
    const QStringList folders = run.entryList({QStringLiteral("calvorn-*")});
    QCOMPARE(folders.size(), 1);
    const auto open =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QVERIFY(!(QFileInfo(run.filePath(folders.first())).permissions() & open));
}

void ServerProcessTest::sweepsAndEndsWithTheConnection()
{
    Server server;
    QVERIFY(server.start());
    QVERIFY(server.join());
    QSignalSpy vectors(server.lpt.get(), &LptProxy::aVettore);
    QSignalSpy errors(server.lpt.get(), &LptProxy::aErrore);
    QSignalSpy completes(server.lpt.get(), &LptProxy::aComplete);
    connect(server.lpt.get(), &LptProxy::aVettore, server.lpt.get(), [&server] { server.lpt->VectorsTaken(1); });

    QDBusPendingReply<bool> wrongPort = server.lpt->OpenPort(888);
    QCOMPARE(wrongPort.value(), false);
    QDBusPendingReply<bool> opened = server.lpt->OpenPort(0);
    QCOMPARE(opened.value(), true);
    server.lpt->SetDdsDevice(QStringLiteral("AD9850")).waitForFinished();
    server.lpt->SetAdcDevice(QStringLiteral("10bit")).waitForFinished();
    server.lpt->SetXtalFrequency(80e6).waitForFinished();
    server.lpt->SetMultiplier(1).waitForFinished();
    server.lpt->SetOffset(0.0).waitForFinished();
    server.lpt->SetSpeed(0).waitForFinished();
    server.lpt->ResetDevice().waitForFinished();
    server.lpt->SetFrequency(7'100'000).waitForFinished();
    QDBusPendingReply<short> reading = server.lpt->ReadDetector();
    QVERIFY(reading.value() > 320 && reading.value() < 360);
    server.lpt->SetAux(5, 1).waitForFinished();
    QDBusPendingReply<bool> acknowledged = server.lpt->WriteI2c(0x50, 0xA9, 0x80);
    QCOMPARE(acknowledged.value(), true);

    server.lpt->PrepareSweep(1'000'000, 22'556).waitForFinished();
    server.lpt->RunSweep().waitForFinished();
    QTRY_VERIFY(vectors.count() > 30); // more than the window of 8, so acknowledgements arrive
    server.lpt->StopSweep(2).waitForFinished();
    QTRY_COMPARE(completes.count(), 1);
    const QList<int> vector = vectors.at(0).at(0).value<QList<int>>();
    QCOMPARE(vector.size(), 400);
    QVERIFY(vector.at(270) > 320); // 7.09 MHz
    QVERIFY(vector.first() < 10);
    server.lpt->StopSweep(2).waitForFinished();
    QTRY_COMPARE(errors.count(), 2); // remarks on the wrong port and on the stop without a sweep
    for (const QList<QVariant> &error : errors)
        QCOMPARE(error.at(0).value<short>(), short{4});

    server.leave();
    QVERIFY(server.process.state() == QProcess::NotRunning || server.process.waitForFinished(3'000));
    QCOMPARE(server.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(server.process.exitCode(), 0);
    QCOMPARE(server.socketFolders(), 0);
}

void ServerProcessTest::secondProgramIsNotLetIn()
{
    Server server;
    QVERIFY(server.start());
    QVERIFY(server.join());
    const QDBusConnection second = QDBusConnection::connectToPeer(server.address, QStringLiteral("second"));
    QVERIFY(!second.isConnected());
    QDBusConnection::disconnectFromPeer(QStringLiteral("second"));
    QDBusPendingReply<bool> opened = server.lpt->OpenPort(0);
    QCOMPARE(opened.value(), true);
}

void ServerProcessTest::secondOfTwoAtOnceIsTurnedAway()
{
    Server server;
    QVERIFY(server.start());
    const QString firstName = QStringLiteral("first-of-two");
    const QString secondName = QStringLiteral("second-of-two");
    const QDBusConnection first = QDBusConnection::connectToPeer(server.address, firstName);
    const QDBusConnection second = QDBusConnection::connectToPeer(server.address, secondName);
    LptProxy served(QString(), QStringLiteral("/aLPT"), first);
    LptProxy refused(QString(), QStringLiteral("/aLPT"), second);
    QDBusPendingReply<bool> no = refused.OpenPort(0);
    no.waitForFinished();
    QVERIFY(no.isError());
    QDBusPendingReply<bool> yes = served.OpenPort(0);
    QCOMPARE(yes.value(), true);
    QDBusConnection::disconnectFromPeer(secondName);
    QDBusConnection::disconnectFromPeer(firstName);
}

void ServerProcessTest::endsWithStandardInput()
{
    for (const bool joined : {false, true}) {
        Server server;
        QVERIFY(server.start());
        if (joined)
            QVERIFY(server.join());
        server.process.closeWriteChannel();
        QVERIFY(server.process.waitForFinished(3'000));
        QCOMPARE(server.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(server.process.exitCode(), 0);
        QCOMPARE(server.socketFolders(), 0);
    }
}

void ServerProcessTest::endsOnTerminate()
{
    Server server;
    QVERIFY(server.start());
    server.process.terminate();
    QVERIFY(server.process.waitForFinished(3'000));
    QCOMPARE(server.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(server.process.exitCode(), 0);
    QCOMPARE(server.socketFolders(), 0);
}

void ServerProcessTest::endsWhileSweeping()
{
    Server server;
    QVERIFY(server.start());
    QVERIFY(server.join());
    QSignalSpy vectors(server.lpt.get(), &LptProxy::aVettore);
    server.lpt->OpenPort(0).waitForFinished();
    server.lpt->RunSweep().waitForFinished();
    QTRY_VERIFY(vectors.count() >= 1);
    server.leave();
    QVERIFY(server.process.state() == QProcess::NotRunning || server.process.waitForFinished(3'000));
    QCOMPARE(server.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(server.process.exitCode(), 0);
}

void ServerProcessTest::everyOrderlyEndSwitchesTheGeneratorOff_data()
{
    QTest::addColumn<std::function<void(Server &)>>("end");
    const auto row = [](const char *name, const std::function<void(Server &)> &end) { QTest::newRow(name) << end; };
    const auto signal = [](int number) {
        return [number](Server &server) { ::kill(static_cast<pid_t>(server.process.processId()), number); };
    };
    row("connection", [](Server &server) { server.leave(); });
    row("standard input", [](Server &server) { server.process.closeWriteChannel(); });
    row("SIGTERM", signal(SIGTERM));
    row("SIGINT", signal(SIGINT)); // Ctrl+C in a terminal also reaches the server
    row("SIGHUP", signal(SIGHUP));
}

void ServerProcessTest::everyOrderlyEndSwitchesTheGeneratorOff()
{
    QFETCH(std::function<void(Server &)>, end);
    const calvorn::test::TerminalPair terminal;
    Server server;
    QVERIFY(server.start());
    QVERIFY(server.join());
    QVERIFY(server.openVna(terminal.path));
    end(server);
    QCOMPARE(terminal.receive(8), QByteArray("0\r0\r1\r0\r"));
    QVERIFY(server.process.state() == QProcess::NotRunning || server.process.waitForFinished(3'000));
    QCOMPARE(server.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(server.process.exitCode(), 0);
}

void ServerProcessTest::endsWhenNobodyComes()
{
    Server server;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(server.start());
    QVERIFY(server.process.waitForFinished(20'000));
    QVERIFY(clock.elapsed() >= 9'000);
    QCOMPARE(server.process.exitCode(), 0);
    QCOMPARE(server.socketFolders(), 0);
}

void ServerProcessTest::endsWithAKilledParent_data()
{
    QTest::addColumn<bool>("stopped");
    QTest::newRow("running") << false;
    QTest::newRow("stopped") << true;
}

void ServerProcessTest::endsWithAKilledParent()
{
    QFETCH(bool, stopped);
    Server server;
    // The shell is the server's parent. The server's standard input stays open, so only the shell's death can make the
    // server exit.
    server.process.start(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QStringLiteral("exec 3<&0; \"$0\" <&3 & echo $!; wait"), server.path()});
    QVERIFY(server.process.waitForStarted());
    QVERIFY(server.readAddress());
    const qint64 pid = server.address.toLongLong();
    QVERIFY2(pid > 1, qPrintable(server.address));
    QVERIFY(server.readAddress());
    QVERIFY(server.address.startsWith(QStringLiteral("unix:")));
    QVERIFY(server.join());
    if (stopped)
        QCOMPARE(::kill(static_cast<pid_t>(pid), SIGSTOP), 0);
    server.process.kill();
    QVERIFY(server.process.waitForFinished(3'000));
    QTRY_VERIFY_WITH_TIMEOUT(isGone(pid), 3'000);
    QCOMPARE(server.socketFolders(), 0);
}

// Makes the server exit while its D-Bus thread is still busy.
void ServerProcessTest::endsAfterABurstOfRefusedPorts()
{
    const QString settings(100'000, u'x');
    for (int end = 0; end < 24; ++end) {
        Server server;
        QVERIFY(server.start());
        QVERIFY(server.join());
        for (int call = 0; call < 100; ++call)
            server.callOpenPort(short{77}, settings);
        server.process.closeWriteChannel();
        QVERIFY(server.process.waitForFinished(5'000));
        QCOMPARE(server.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(server.process.exitCode(), 0);
        server.leave();
    }
}

void ServerProcessTest::foldersOfAnyName_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"a space", "caff\u00e8", "semi;colon", "a@b", "a+b", "a~b", "a%b", "100%41", "a,b", "a=b",
                             "a:b", "a'b\"c", "a*b?"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void ServerProcessTest::foldersOfAnyName()
{
    QFETCH(QString, name);
    Server server;
    const QString folder = server.runPath() + u'/' + name;
    QVERIFY(QDir().mkpath(folder));
    server.setRunPath(folder);
    QVERIFY(server.start());
    QDirIterator files(server.runPath(), QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    QString socket;
    while (files.hasNext())
        if (files.next().endsWith(QStringLiteral("/socket")))
            socket = files.filePath();
    QVERIFY2(socket.startsWith(folder + QStringLiteral("/calvorn-run-")), qPrintable(socket));
    QVERIFY(server.join());
    QDBusPendingReply<bool> opened = server.lpt->OpenPort(0);
    QCOMPARE(opened.value(), true);
    server.process.closeWriteChannel();
    QVERIFY(server.process.waitForFinished(5'000));
    QVERIFY(QDir(folder).isEmpty());
}

// Socket paths are limited to about 100 bytes.
void ServerProcessTest::aFolderThatIsTooDeepIsPassedOver()
{
    Server server;
    const QString folder = server.runPath() + u'/' + QString(120, u'd');
    QVERIFY(QDir().mkpath(folder));
    server.setRunPath(folder);
    QVERIFY(server.start());
    QVERIFY(server.join());
    QVERIFY(QDir(folder).isEmpty());
}

// The next server removes the folders of servers that were killed while starting.
void ServerProcessTest::noFolderIsLeftForGood()
{
    Server server;
    int left = 0;
    for (int start = 0; start < 40; ++start) {
        server.process.start(server.path(), QStringList());
        QVERIFY(server.process.waitForStarted());
        if (start % 4 == 0)
            QVERIFY(server.readAddress()); // started, but no program has connected
        else
            QTest::qSleep(2 * start); // interrupts the start a bit later each time
        server.process.kill();
        QVERIFY(server.process.waitForFinished());
        left = std::max(left, server.socketFolders());
    }
    QVERIFY(left > 0);
    QVERIFY(server.start());
    QCOMPARE(server.socketFolders(), 1);
    server.process.closeWriteChannel();
    QVERIFY(server.process.waitForFinished(5'000));
    QCOMPARE(server.socketFolders(), 0);
}

// The stack limit also sets the threads' stack size. With this limit no thread can start.
void ServerProcessTest::aSystemWithoutAThread()
{
    Server server;
    server.process.start(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QStringLiteral("ulimit -s 137438953472 && exec \"$0\""), server.path()});
#ifdef __SANITIZE_THREAD__
    // The sanitizer's own thread cannot start either.
    QVERIFY(server.process.waitForFinished(5'000));
    QVERIFY(server.process.exitCode() != 0);
    QCOMPARE(server.socketFolders(), 0);
    return;
#endif
    QVERIFY(server.readAddress());
    QCOMPARE(server.address,
             QStringLiteral("! The computer cannot start another thread; close other programs and try again."));
    QVERIFY(server.process.waitForFinished(5'000));
    QCOMPARE(server.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(server.process.exitCode(), 1);
    QCOMPARE(server.socketFolders(), 0);
}

QTEST_GUILESS_MAIN(ServerProcessTest)
#include "server_process.moc"
