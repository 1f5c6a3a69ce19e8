// SPDX-License-Identifier: MIT
// Replaces the acquisition server: answers and logs every call to the three interfaces and obeys the rules in the
// control file. One rule per line:
//   refuse <operation>    the operation returns ok = false
//   fail <operation>      the call returns an error
//   hang <operation>      the call is never answered and the process stops listening
//   die <operation>       the process exits in the middle of the call
//   endless               StopSweep does not stop the sweep
//   vectors <count>       RunSweep sends this many vectors; sample k of vector v is v * 1000 + k
//   complete              RunSweep then completes the sweep
//   rate <per second>     RunSweep sends noisy vectors of a filter at this rate until StopSweep
//   flood <count>         RunSweep sends this many vectors as fast as possible, at most kMostOutstanding of them
//                         unacknowledged; sample k of vector v is v % 600 + k
//   shout <kilobytes>     RunSweep sends error 2 with a message of this length
//   spout <signal>        RunSweep sends this signal endlessly and ignores all calls
#include "tests/support/serve.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QFile>
#include <QRandomGenerator>
#include <QThread>
#include <QTimer>

#include <numeric>
#include <vector>

#include <unistd.h>

namespace {

constexpr int kMostOutstanding = 8; // same as in the real server
constexpr int kReadyVectors = 64;

class FakeObject : public QDBusVirtualObject
{
public:
    explicit FakeObject(const QString &controlFile)
        : m_controlFile(controlFile)
    {
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QString operation = message.member();
        if (operation == u"VectorsTaken") {
            for (int taken = message.arguments().value(0).toInt(); taken > 0; --taken)
                sendFlood(message, connection);
            return true;
        }
        if (operation == u"IsWorking") {
            connection.send(message.createReply(!hasRule(QStringLiteral("refuse"), operation)));
            return true;
        }
        write(message);
        notePlan(message);
        if (hasRule(QStringLiteral("hang"), operation))
            for (;;)
                QThread::sleep(1);
        if (hasRule(QStringLiteral("die"), operation))
            _exit(1);
        if (hasRule(QStringLiteral("fail"), operation)) {
            connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("as told")));
            return true;
        }
        connection.send(message.createReply(results(message)));
        if (operation == u"RunSweep")
            runSweep(message, connection);
        if (operation == u"StopSweep" && m_running && !rules().contains(QStringLiteral("endless")))
            complete(message, connection);
        return true;
    }

private:
    QStringList rules() const
    {
        QFile file(m_controlFile);
        if (m_controlFile.isEmpty() || !file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }

    bool hasRule(const QString &verb, const QString &operation) const
    {
        return rules().contains(verb + u' ' + operation);
    }

    void write(const QDBusMessage &message) const
    {
        if (m_controlFile.isEmpty())
            return;
        QStringList arguments;
        for (const QVariant &argument : message.arguments())
            arguments.append(argument.typeId() == QMetaType::QString ? argument.toString()
                                                                     : QString::number(argument.toDouble(), 'g', 12));
        QFile log(m_controlFile + QStringLiteral(".log"));
        if (log.open(QIODevice::Append))
            QTextStream(&log) << message.path().mid(1) << '.' << message.member() << '(' << arguments.join(u", ")
                              << ")\n";
    }

    // Stores the plan to announce with the vectors of the next sweep.
    void notePlan(const QDBusMessage &message)
    {
        if (message.member() == u"PrepareSweep") {
            m_start = message.arguments().value(0).toInt();
            m_step = message.arguments().value(1).toInt();
        }
        if (message.member() == u"SetMode" && message.arguments().value(0).toInt() > 0)
            m_mode = message.arguments().value(0).value<short>();
    }

    QVariantList results(const QDBusMessage &message) const
    {
        const QString operation = message.member();
        const bool ok = !hasRule(QStringLiteral("refuse"), operation);
        const bool pic = message.path() == u"/aPIC";
        if (operation == u"OpenPort" || operation == u"SendFrequency" || operation == u"WriteI2c" ||
            (pic && operation == u"PrepareSweep"))
            return {ok};
        if (operation == u"ReadDetector")
            return {QVariant::fromValue<short>(512)};
        return {};
    }

    void runSweep(const QDBusMessage &message, const QDBusConnection &connection)
    {
        m_running = true;
        send(message, connection, QStringLiteral("PlanOfVectors"), {m_start, m_step, QVariant::fromValue(m_mode)});
        for (const QString &rule : rules()) {
            if (rule.startsWith(u"flood ")) {
                m_floodLeft = m_floodCount = rule.mid(6).toInt();
                for (int ahead = 0; ahead < kMostOutstanding; ++ahead)
                    sendFlood(message, connection);
            }
            if (rule.startsWith(u"shout "))
                send(message, connection, QStringLiteral("aErrore"),
                     {QVariant::fromValue<short>(2), QString(rule.mid(6).toInt() * 1000, u'x')});
            if (rule.startsWith(u"spout "))
                sendWithoutEnd(message, connection, rule.mid(6));
            if (rule.startsWith(u"rate "))
                sendAtRate(message, connection, rule.mid(5).toInt());
            if (!rule.startsWith(u"vectors "))
                continue;
            const int count = rule.mid(8).toInt();
            for (int v = 0; v < count; ++v) {
                QList<int> samples;
                for (int k = 0; k < 400; ++k)
                    samples.append(v * 1000 + k);
                send(message, connection, QStringLiteral("aVettore"), {QVariant::fromValue(samples)});
            }
        }
        if (rules().contains(QStringLiteral("complete")))
            complete(message, connection);
    }

    void sendAtRate(const QDBusMessage &message, const QDBusConnection &connection, int perSecond)
    {
        std::vector<QDBusMessage> ready;
        for (int v = 0; v < kReadyVectors; ++v) {
            QList<int> samples;
            for (int k = 0; k < 400; ++k) {
                const double distance = (k - 200) / 30.0;
                samples.append(static_cast<int>(900.0 / (1.0 + distance * distance)) + m_noise.bounded(9));
            }
            ready.push_back(signalOf(message, QStringLiteral("aVettore"), {QVariant::fromValue(samples)}));
        }
        m_timer.disconnect();
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [connection, ready, next = std::size_t{0}]() mutable {
            connection.send(ready[next++ % ready.size()]);
        });
        m_timer.start(1000 / perSecond);
    }

    [[noreturn]] static void sendWithoutEnd(const QDBusMessage &message, const QDBusConnection &connection,
                                            const QString &name)
    {
        QVariantList arguments;
        if (name == u"aVettore")
            arguments = {QVariant::fromValue(QList<int>(400, 100))};
        if (name == u"aErrore")
            arguments = {QVariant::fromValue<short>(2), QStringLiteral("once more")};
        for (;;) {
            send(message, connection, name, arguments);
            QThread::usleep(20);
        }
    }

    void sendFlood(const QDBusMessage &message, const QDBusConnection &connection)
    {
        if (m_floodLeft == 0)
            return;
        QList<int> samples(400);
        std::iota(samples.begin(), samples.end(), (m_floodCount - m_floodLeft--) % 600);
        send(message, connection, QStringLiteral("aVettore"), {QVariant::fromValue(samples)});
    }

    void complete(const QDBusMessage &message, const QDBusConnection &connection)
    {
        m_running = false;
        m_timer.stop();
        send(message, connection, QStringLiteral("aComplete"), {});
    }

    static QDBusMessage signalOf(const QDBusMessage &call, const QString &name, const QVariantList &arguments)
    {
        QDBusMessage signal = QDBusMessage::createSignal(call.path(), call.interface(), name);
        signal.setArguments(arguments);
        return signal;
    }
    static void send(const QDBusMessage &call, const QDBusConnection &connection, const QString &name,
                     const QVariantList &arguments)
    {
        connection.send(signalOf(call, name, arguments));
    }

    QString m_controlFile;
    bool m_running = false;
    int m_start = 0;
    int m_step = 0;
    short m_mode = 0;
    int m_floodCount = 0;
    int m_floodLeft = 0;
    QTimer m_timer;
    QRandomGenerator m_noise{1};
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    FakeObject object(qEnvironmentVariable("CALVORN_FAKE_CONTROL"));
    return calvorn::test::serve(application, [&](QDBusConnection &client) {
        client.registerVirtualObject(QStringLiteral("/"), &object, QDBusConnection::SubPath);
    });
}
