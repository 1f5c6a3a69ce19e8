// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/program_folder.h"
#include "tests/support/start_as_a_shell.h"

#include <QLocale>
#include <QProcess>
#include <QTest>

namespace calvorn::test {

inline QString builtServer()
{
    return ProgramFolder::builtFile(QStringLiteral("CalvornAsync"));
}

inline QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

// calvorn-sweep in a program folder, with the results of a run.
struct Tool
{
    ProgramFolder folder;
    QProcess process;
    QString out;
    QStringList errors; // lines of standard error

    explicit Tool(const QByteArray &settings, const QString &server = builtServer())
        : folder(server, settings)
    {
        if (!QFile::copy(ProgramFolder::builtFile(QStringLiteral("calvorn-sweep")), inFolder("calvorn-sweep")))
            qFatal("cannot copy calvorn-sweep");
    }

    QString inFolder(const char *name) const { return folder.path() + u'/' + QString::fromLatin1(name); }

    void write(const char *name, const QByteArray &content) const
    {
        QFile file(inFolder(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) < content.size())
            qFatal("cannot write %s", name);
    }

    // Selects this locale's number format; the language stays English.
    void setLocale(const QLocale &locale)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), locale == QLocale::c() ? QStringLiteral("C.UTF-8")
                                                                            : locale.name() + QStringLiteral(".UTF-8"));
        process.setProcessEnvironment(environment);
    }

    void start(const QStringList &arguments)
    {
        process.setWorkingDirectory(folder.path());
        process.setChildProcessModifier(startAsAShell);
        process.start(inFolder("calvorn-sweep"), arguments);
    }
    int run(const QStringList &arguments = {})
    {
        start(arguments);
        if (!process.waitForFinished(60000))
            qFatal("calvorn-sweep does not end");
        out = QString::fromUtf8(process.readAllStandardOutput());
        errors = QString::fromUtf8(process.readAllStandardError()).split(u'\n', Qt::SkipEmptyParts);
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    // The same, with arguments separated by spaces.
    int run(const char *arguments) { return run(QString::fromLatin1(arguments).split(u' ')); }
    // Waits for the second sweep of a tool started with several sweeps.
    bool sweepsTwice()
    {
        QByteArray progress;
        return QTest::qWaitFor(
            [&] {
                process.waitForReadyRead(50);
                progress += process.readAllStandardError();
                return progress.contains("Sweep 2 of");
            },
            20'000);
    }
    // Returns the tool's final error message, ignoring messages from its server.
    QString sentence() const
    {
        const QString prefix = QStringLiteral("calvorn-sweep: ");
        for (const QString &line : errors)
            if (line.startsWith(prefix))
                return line.mid(prefix.size());
        return {};
    }
    int serversRunning() const
    {
        QProcess pgrep;
        pgrep.start(QStringLiteral("pgrep"), {QStringLiteral("-f"), inFolder("CalvornAsync")});
        pgrep.waitForFinished();
        return static_cast<int>(pgrep.readAllStandardOutput().split('\n').size()) - 1;
    }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
};

} // namespace calvorn::test
