// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "tests/support/interface_settings.h"
#include "tests/support/quiet_time.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <cstdint>

namespace calvorn::test {

// The boards in tests/boards/ were written from docs/hardware/ and share no code with the program. Their counts do not
// come from a signal: each count identifies the frequency at which it was measured.

// Returns a board's count, 0 to 1023, at a frequency in Hz (PIC) or a tuning word (other boards).
inline int countAt(std::uint32_t place)
{
    return static_cast<int>(static_cast<std::uint32_t>(std::uint64_t{place} * 2'654'435'761U) >> 22);
}

inline std::uint32_t wordAt(double hertz, double clockHz)
{
    return static_cast<std::uint32_t>(std::llround(hertz * 4'294'967'296.0 / clockHz));
}

inline QString boardFile(const char *name)
{
    return qEnvironmentVariable("CALVORN_BOARDS") + u'/' + QString::fromLatin1(name);
}

// A PIC board or a MiniVNA on a pseudo-terminal, in its own process.
class SerialPageBoard
{
public:
    explicit SerialPageBoard(const char *program, const QStringList &options = {})
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(boardFile(program), QStringList{link()} + options);
        if (readLine() != "ready")
            qFatal("the board %s does not come up", program);
    }
    ~SerialPageBoard()
    {
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished(5'000))
            m_process.kill();
        m_process.waitForFinished(1'000);
    }

    // The device that a host opens; does not exist while the board is unplugged.
    QString link() const { return m_folder.filePath(QStringLiteral("tty")); }

    // Sends a command or a query to the board and returns its answer.
    QByteArray tell(const QByteArray &line)
    {
        m_process.write(line + '\n');
        const QByteArray answer = readLine();
        if (answer.startsWith('?'))
            qFatal("the board does not understand \"%s\": %s", line.constData(), answer.constData());
        return answer;
    }

private:
    QByteArray readLine()
    {
        QDeadlineTimer deadline(20'000);
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
                qFatal("the board says nothing");
        }
        return m_process.readLine().chopped(1);
    }

    QTemporaryDir m_folder;
    QProcess m_process;
};

// While an object exists, new child processes find a parallel port at 0x378 with a board connected.
class ParallelPageBoard
{
public:
    ParallelPageBoard()
    {
        qputenv("LD_PRELOAD", boardFile("liblpt_board_by_the_page.so").toLocal8Bit());
        qputenv("CALVORN_BOARD_LOG", logFile().toLocal8Bit());
        qputenv("CALVORN_BOARD_FAULT", faultFile().toLocal8Bit());
        // Allows the board's library to be loaded before the sanitizer's.
        m_asan = qgetenv("ASAN_OPTIONS");
        qputenv("ASAN_OPTIONS", m_asan + ":verify_asan_link_order=0");
    }
    ~ParallelPageBoard()
    {
        for (const char *name : {"LD_PRELOAD", "CALVORN_BOARD_LOG", "CALVORN_BOARD_FAULT"})
            qunsetenv(name);
        qputenv("ASAN_OPTIONS", m_asan);
    }
    ParallelPageBoard(const ParallelPageBoard &) = delete;
    ParallelPageBoard &operator=(const ParallelPageBoard &) = delete;

    // fault: "busy", "absent", "gone", "hang <ms>", or empty for a healthy port. Returns after the port has read the
    // fault.
    void setFault(const QByteArray &fault) const
    {
        QFile::remove(faultFile());
        if (!fault.isEmpty()) {
            QFile next(faultFile() + QStringLiteral(".next"));
            if (!next.open(QIODevice::WriteOnly) || next.write(fault) < fault.size())
                qFatal("cannot write the fault of the board");
            next.close();
            next.rename(faultFile());
        }
        giveTheBoard(25); // the board checks every 5 ms
    }

    // Returns the events that the board has logged since the start, without time stamps.
    QList<QByteArray> events() const
    {
        QFile file(logFile());
        QList<QByteArray> lines;
        if (file.open(QIODevice::ReadOnly))
            for (const QByteArray &line : file.readAll().split('\n'))
                if (!line.isEmpty())
                    lines.append(line.mid(line.indexOf(' ') + 1));
        return lines;
    }
    QList<QByteArray> events(const QByteArray &kind) const
    {
        QList<QByteArray> found;
        for (const QByteArray &line : events())
            if (line.startsWith(kind + ' ') || line == kind)
                found.append(line.mid(kind.size() + 1));
        return found;
    }

private:
    QString logFile() const { return m_folder.filePath(QStringLiteral("log")); }
    QString faultFile() const { return m_folder.filePath(QStringLiteral("fault")); }

    QTemporaryDir m_folder;
    QByteArray m_asan;
};

// Returns settings with which the program opens the real port of such a board.
inline QByteArray pageSettings(std::int16_t interfaceType, const QString &serialDevice = {})
{
    const ProgramFolder scratch({}, ProgramFolder::preparedSettings());
    scratch.set("Config", "Interface", QString::number(interfaceType));
    const bool isVna = interfaceType == kInterfaceVna;
    scratch.set("Config", "DDS Device", QStringLiteral("AD9850"));
    scratch.set("Config", "DDS Multiplier", isVna ? QStringLiteral("20") : QStringLiteral("1"));
    scratch.set("Config", "DDS Xtal freq", isVna ? QStringLiteral("20000000") : QStringLiteral("80000000"));
    scratch.set("Config", "DDS Max freq", isVna ? QStringLiteral("180000000") : QStringLiteral("100000000"));
    scratch.set("Config", "DDS Min freq", QStringLiteral("1000"));
    scratch.set("Debug", "Log", QStringLiteral("1"));
    scratch.set("Parallel Port", "LPT", QStringLiteral("&H378"));
    scratch.set("Serial Port", "CommPort", QStringLiteral("5"));
    scratch.set("Ports", "COM5", serialDevice);
    scratch.set("Calvorn", "Start", QStringLiteral("1000000"));
    scratch.set("Calvorn", "Stop", QStringLiteral("10000000"));
    QFile file(scratch.iniPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace calvorn::test
