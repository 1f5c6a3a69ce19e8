// SPDX-License-Identifier: MIT
#include "server/links/termination_watch.h"

#include "platform/process_guard.h"

#include <QElapsedTimer>
#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace calvorn;

class TerminationWatchTest : public QObject
{
    Q_OBJECT

private slots:
    void aHungProcessIsEndedLate();
};

// The process hangs, as in a hardware access that never returns, and never handles the signal.
void TerminationWatchTest::aHungProcessIsEndedLate()
{
    int ends[2] = {-1, -1};
    QCOMPARE(pipe(ends), 0);
    const pid_t process = fork();
    if (process == 0) {
        holdTerminationBack();
        const TerminationWatch watch;
        [[maybe_unused]] const ssize_t told = write(ends[1], "r", 1);
        for (;;)
            pause();
    }
    QVERIFY(process > 0);
    close(ends[1]);
    char byte = 0;
    QCOMPARE(read(ends[0], &byte, 1), ssize_t{1});
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(kill(process, SIGTERM), 0);
    int status = 0;
    QCOMPARE(waitpid(process, &status, 0), process);
    QVERIFY(clock.elapsed() >= 9'900);
    QVERIFY(clock.elapsed() < 20'000);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 1);
    close(ends[0]);
}

QTEST_APPLESS_MAIN(TerminationWatchTest)
#include "termination_watch.moc"
