// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace calvorn::test {

// A pseudo-terminal in raw mode. The test plays the board.
class TerminalPair
{
public:
    TerminalPair()
        : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
            qFatal("cannot open a pseudo-terminal");
        path = QString::fromLocal8Bit(ptsname(m_master));
        m_slave = open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios attributes{};
        tcgetattr(m_slave, &attributes);
        cfmakeraw(&attributes);
        tcsetattr(m_slave, TCSANOW, &attributes);
    }
    ~TerminalPair() { hangUp(); }
    TerminalPair(const TerminalPair &) = delete;
    TerminalPair &operator=(const TerminalPair &) = delete;

    // Simulates pulling the cable.
    void hangUp()
    {
        for (int *descriptor : {&m_master, &m_slave}) {
            if (*descriptor >= 0)
                close(std::exchange(*descriptor, -1));
        }
    }

    bool send(const QByteArray &bytes) const
    {
        return write(m_master, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size();
    }

    // Returns `count` bytes from the host, or fewer if nothing arrives for a second.
    QByteArray receive(qsizetype count) const
    {
        QByteArray bytes;
        pollfd ready{m_master, POLLIN, 0};
        while (bytes.size() < count && poll(&ready, 1, 1'000) > 0) {
            char piece[256];
            const ssize_t got = read(m_master, piece, sizeof piece);
            if (got <= 0)
                break;
            bytes.append(piece, got);
        }
        return bytes;
    }

    QString path; // the device that the host opens

private:
    int m_master;
    int m_slave = -1;
};

} // namespace calvorn::test
