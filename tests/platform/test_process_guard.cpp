// SPDX-License-Identifier: MIT
#include "platform/process_guard.h"

#include <QTest>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <functional>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace calvorn;

namespace {

struct Pipe
{
    int ends[2] = {-1, -1};

    Pipe()
    {
        if (pipe2(ends, O_CLOEXEC) != 0)
            qFatal("cannot create a pipe");
    }
    ~Pipe()
    {
        closeWriting();
        close(ends[0]);
    }
    void closeWriting()
    {
        if (ends[1] >= 0)
            close(ends[1]);
        ends[1] = -1;
    }
    // Returns true if every process that could write to the pipe has exited.
    bool hasEnded(int milliseconds)
    {
        closeWriting();
        char byte = 0;
        for (;;) {
            pollfd waiting{ends[0], POLLIN, 0};
            if (poll(&waiting, 1, milliseconds) != 1)
                return false;
            if (read(ends[0], &byte, 1) == 0)
                return true;
        }
    }
};

// Runs the function in a child process and returns the status of waitpid(2).
int inChild(const std::function<void()> &act)
{
    const pid_t child = fork();
    if (child == 0) {
        act();
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, WUNTRACED);
    if (WIFSTOPPED(status))
        kill(child, SIGKILL);
    return status;
}

} // namespace

// Each test runs in separate processes.
class TestProcessGuard : public QObject
{
    Q_OBJECT

private slots:
    void theProcessEndsWithItsParent()
    {
        Pipe alive;
        inChild([] {
            Pipe ready;
            if (fork() == 0) {
                alarm(20); // in case nothing else kills it
                if (!endWithParent())
                    _exit(1);
                ready.closeWriting();
                for (;;)
                    pause();
            }
            ready.hasEnded(5'000);
        });
        QVERIFY(alive.hasEnded(5'000));
    }

    void aStopIsHeldBack()
    {
        const int status = inChild([] {
            holdStopBack();
            raise(SIGTSTP);
            sigset_t pending = {};
            sigpending(&pending);
            _exit(sigismember(&pending, SIGTSTP) == 1 ? 7 : 1);
        });
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 7);
    }

    void theStreamsAreFlushedAtTheEnd()
    {
        Pipe output;
        const int status = inChild([&output] {
            std::FILE *stream = fdopen(output.ends[1], "w");
            std::fputs("written", stream);
            endAtOnce(5);
        });
        QCOMPARE(WEXITSTATUS(status), 5);
        output.closeWriting();
        QByteArray text(20, '\0');
        text.resize(std::max<qsizetype>(0, read(output.ends[0], text.data(), 20)));
        QCOMPARE(text, QByteArray("written"));
    }
};

QTEST_APPLESS_MAIN(TestProcessGuard)
#include "test_process_guard.moc"
