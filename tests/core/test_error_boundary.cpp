// SPDX-License-Identifier: MIT
#include "core/error_boundary.h"

#include "tests/support/fake_desktop.h"

#include <QTest>

#include <utility>

using namespace calvorn;

class TestErrorBoundary : public QObject
{
    Q_OBJECT

private slots:
    void anErrorIsShownOnceWithItsPlace()
    {
        test::FakeDesktop desktop;
        Configuration configuration;
        Messages messages(configuration, desktop);
        Log log(configuration);
        ErrorBoundary boundary(messages, log);
        bool after = false;
        const bool ok = boundary.run("cmdStart_Click", [&] {
            throw RuntimeError(RuntimeError::Kind::Overflow);
            after = true;
        });
        QVERIFY(!ok);
        QVERIFY(!after);
        QCOMPARE(desktop.boxes.size(), 1);
        QCOMPARE(desktop.lastText(), QStringLiteral("Overflow.\r(in cmdStart_Click)"));
        QCOMPARE(desktop.boxes.first().title, QStringLiteral("Brenik - Calvorn  v2.0"));
        QCOMPARE(configuration.msgText, desktop.lastText());
        QVERIFY(boundary.run("next", [] {}));
        QCOMPARE(desktop.boxes.size(), 1);
    }

    void boxesOfOneProcedureDoNotPileUp()
    {
        test::FakeDesktop desktop;
        Configuration configuration;
        configuration.logDebug = true;
        Messages messages(configuration, desktop);
        Log log(configuration);
        ErrorBoundary boundary(messages, log);
        const auto fail = [] { throw RuntimeError(RuntimeError::Kind::TypeMismatch, QStringLiteral("\"x\"")); };
        desktop.whileBoxOpen = [&] { boundary.run("timer", fail); };
        boundary.run("timer", fail);
        QCOMPARE(desktop.boxes.size(), 1);
        QCOMPARE(log.takeEarlyLines(), QStringList{QStringLiteral("Type mismatch: \"x\" (in timer)")});
    }

    void aLogThatFailsDoesNotGoRoundInCircles()
    {
        test::FakeDesktop desktop;
        Configuration configuration;
        configuration.logDebug = true;
        Messages messages(configuration, desktop);
        Log log(configuration);
        ErrorBoundary boundary(messages, log);
        int attempts = 0;
        boundary.connect(&log, &Log::lineWritten, this, "writeLog", [&] {
            ++attempts;
            throw RuntimeError(RuntimeError::Kind::Overflow);
        });
        desktop.whileBoxOpen = [&] { log.writeLog(QStringLiteral("while the box is open")); };
        log.writeLog(QStringLiteral("first"));
        QCOMPARE(desktop.boxes.size(), 1);
        QCOMPARE(attempts, 3);
    }

    void whatFollowsAFailureOnlyGoesToTheLog()
    {
        test::FakeDesktop desktop;
        Configuration configuration;
        configuration.logDebug = true;
        Messages messages(configuration, desktop);
        Log log(configuration);
        ErrorBoundary boundary(messages, log);
        bool ran = false;
        boundary.runAfterFailure("selectView", [&] {
            ran = true;
            throw RuntimeError(RuntimeError::Kind::Overflow);
        });
        QVERIFY(ran);
        QCOMPARE(desktop.boxes.size(), 0);
        QCOMPARE(log.takeEarlyLines(), QStringList{QStringLiteral("Overflow. (in selectView)")});
    }

    void theEndOfTheProgramIsNoError()
    {
        test::FakeDesktop desktop;
        Configuration configuration;
        configuration.logDebug = true;
        Messages messages(configuration, desktop);
        Log log(configuration);
        ErrorBoundary boundary(messages, log);
        QVERIFY(!boundary.run("Form_Unload", [] { throw RuntimeError(RuntimeError::Kind::Closing); }));
        QCOMPARE(desktop.boxes.size(), 0);
        QCOMPARE(log.takeEarlyLines(), QStringList());
    }

    void alertsAreShownOneAfterTheOther()
    {
        AlertQueue queue;
        QStringList shown;
        QStringList meanwhile{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("b")};
        bool cancels = false;
        const AlertQueue::Ask ask = [&](const QString &text) {
            shown.append(text);
            for (const QString &next : std::exchange(meanwhile, {}))
                queue.show(next, ask);
            return !cancels || text != u"b";
        };
        queue.show(QStringLiteral("a"), ask);
        QCOMPARE(shown.join(u' '), QStringLiteral("a b c"));
        queue.show(QStringLiteral("a"), ask);
        QCOMPARE(shown.join(u' '), QStringLiteral("a b c a"));
        // Cancelling an alert discards the pending ones.
        shown.clear();
        cancels = true;
        meanwhile = QStringList{QStringLiteral("b"), QStringLiteral("c")};
        queue.show(QStringLiteral("a"), ask);
        QCOMPARE(shown.join(u' '), QStringLiteral("a b"));
        queue.show(QStringLiteral("c"), ask);
        QCOMPARE(shown.join(u' '), QStringLiteral("a b c"));
    }

    void handlersAreConnectedInsideTheBoundary()
    {
        test::FakeDesktop desktop;
        Configuration configuration;
        Messages messages(configuration, desktop);
        Log log(configuration);
        ErrorBoundary boundary(messages, log);
        QString received;
        QObject sender;
        boundary.connect(&sender, &QObject::objectNameChanged, this, "withArgument",
                         [&](const QString &name) { received = name; });
        boundary.connect(&sender, &QObject::objectNameChanged, this, "withoutArgument",
                         [] { throw RuntimeError(RuntimeError::Kind::File, QStringLiteral("gone")); });
        sender.setObjectName(QStringLiteral("new"));
        QCOMPARE(received, QStringLiteral("new"));
        QCOMPARE(desktop.boxes.size(), 1);
        QCOMPARE(desktop.lastText(), QStringLiteral("File error: gone\r(in withoutArgument)"));
    }
};

QTEST_GUILESS_MAIN(TestErrorBoundary)
#include "test_error_boundary.moc"
