// SPDX-License-Identifier: MIT
#include "remote/scpi_server.h"
#include "tests/support/fake_desktop.h"

#include <QLocalSocket>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;

namespace {

// A target without hardware that ignores all commands.
class IdleTarget : public RemoteTarget
{
public:
    using RemoteTarget::RemoteTarget;

    void setRange(double, double) override {}
    void setSpeed(std::int16_t) override {}
    void start(SweepRun) override {}
    void stop() override {}
    void setScale(std::int16_t) override {}
    void setTopOfLinearScale(double) override {}
    void setBottomOfDbScales(int) override {}
    void placeMarker(GraphItem, double) override {}
    const LimitLines &limits() const override { return m_limits; }
    bool areLimitsOn() const override { return false; }
    void setLimits(const LimitLines &) override {}
    void setLimitsOn(bool) override {}
    void setOutput(int, std::uint8_t) override {}
    void setPotentiometer(std::uint8_t) override {}
    void storeSweep(const QString &) override {}
    void loadSweep(const QString &) override {}
    void storePicture(const QString &) override {}
    QByteArray picture() const override { return {}; }

private:
    LimitLines m_limits;
};

} // namespace

class TestScpiServer : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_runtime;
    Configuration m_configuration;
    test::FakeDesktop m_desktop;
    Log m_log{m_configuration};
    Instrument m_instrument{m_configuration, m_log, m_desktop, QString(), QString()};
    TraceSet m_traces;
    Markers m_markers;
    SignalGenerator m_generator{m_configuration, m_instrument};
    IdleTarget m_target{m_configuration, m_instrument, m_traces, m_markers, m_generator};

private slots:
    void initTestCase() { qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime.path())); }

    void aClosedServerRefusesClients()
    {
        ScpiServer server(m_target);
        QCOMPARE(server.open(0), QString());
        const quint16 port = server.port();
        const QString path = m_runtime.filePath(QStringLiteral("calvorn-%1.scpi").arg(port));
        QTcpSocket tcp;
        tcp.connectToHost(QHostAddress::LocalHost, port);
        QVERIFY(tcp.waitForConnected(3'000));
        QLocalSocket local;
        local.connectToServer(path);
        QVERIFY(local.waitForConnected(3'000));
        QTRY_COMPARE(server.clients(), 2);

        server.close();
        QTRY_COMPARE(tcp.state(), QAbstractSocket::UnconnectedState);
        QTRY_COMPARE(local.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(server.clients(), 0);
        QCOMPARE(server.port(), quint16{0});
        tcp.connectToHost(QHostAddress::LocalHost, port);
        QVERIFY(!tcp.waitForConnected(3'000));
        local.connectToServer(path);
        QVERIFY(!local.waitForConnected(3'000));
    }
};

QTEST_GUILESS_MAIN(TestScpiServer)
#include "test_scpi_server.moc"
