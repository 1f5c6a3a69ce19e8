// SPDX-License-Identifier: MIT
#include "core/error_boundary.h"

#include "platform/desktop.h"

#include <QTest>
#include <QTimer>

#include <functional>

using namespace calvorn;

namespace {

// Counts boxes and can act while one is open.
class CountingDesktop : public Desktop
{
public:
    QStringList texts;
    QStringList titles;
    std::function<void()> whileOpen;

    std::int16_t messageBox(BoxIcon, BoxButtons, const QString &text, const QString &title) override
    {
        texts.append(text);
        titles.append(title);
        if (whileOpen)
            whileOpen();
        return kBoxOk;
    }
    QString chooseFileToOpen(const QString &, const QString &) override { return {}; }
    QString chooseFileToSave(const QString &, const QString &) override { return {}; }
    bool choosePrinter(QPrinter &) override { return false; }
    void beep() override {}
    std::uint32_t tickCount() override { return 0; }
    void sleep(int) override {}
    void pumpMessages(int) override {}
};

} // namespace

class TestErrorBoundary : public QObject
{
    Q_OBJECT

private slots:
    void anErrorIsShownOnceWithItsPlace()
    {
        CountingDesktop desktop;
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
        QCOMPARE(desktop.texts, QStringList{QStringLiteral("Overflow.\r(in cmdStart_Click)")});
        QCOMPARE(desktop.titles, QStringList{QStringLiteral("Brenik - Calvorn  v2.0")});
        QCOMPARE(configuration.msgText, desktop.texts.first());
        QVERIFY(boundary.run("next", [] {}));
        QCOMPARE(desktop.texts.size(), 1);
    }

    void boxesOfOneProcedureDoNotPileUp()
    {
        CountingDesktop desktop;
        Configuration configuration;
        configuration.logDebug = true;
        Messages messages(configuration, desktop);
        Log log(configuration);
        ErrorBoundary boundary(messages, log);
        const auto fail = [] { throw RuntimeError(RuntimeError::Kind::TypeMismatch, QStringLiteral("\"x\"")); };
        desktop.whileOpen = [&] { boundary.run("timer", fail); };
        boundary.run("timer", fail);
        QCOMPARE(desktop.texts.size(), 1);
        QCOMPARE(log.takeEarlyLines(), QStringList{QStringLiteral("Type mismatch: \"x\" (in timer)")});
    }

    void aLogThatFailsDoesNotGoRoundInCircles()
    {
        CountingDesktop desktop;
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
        desktop.whileOpen = [&] { log.writeLog(QStringLiteral("while the box is open")); };
        log.writeLog(QStringLiteral("first"));
        QCOMPARE(desktop.texts.size(), 1);
        QCOMPARE(attempts, 3);
    }

    void handlersAreConnectedInsideTheBoundary()
    {
        CountingDesktop desktop;
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
        QCOMPARE(desktop.texts, QStringList{QStringLiteral("File error: gone\r(in withoutArgument)")});
    }
};

QTEST_GUILESS_MAIN(TestErrorBoundary)
#include "test_error_boundary.moc"
