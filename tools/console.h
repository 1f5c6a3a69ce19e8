// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>
#include <QThread>

namespace calvorn {

// Writes a line for the user to standard error.
inline void note(const QString &line)
{
    QTextStream(stderr) << line << Qt::endl;
}

// Clock for a program without a window.
class ConsoleClock : public Clock
{
public:
    ConsoleClock() { m_clock.start(); }

    std::uint32_t tickCount() override { return static_cast<std::uint32_t>(m_clock.elapsed()); }
    void sleep(int milliseconds) override { QThread::msleep(static_cast<unsigned long>(milliseconds)); }
    void pumpMessages(int milliseconds) override
    {
        QCoreApplication::processEvents(QEventLoop::AllEvents, milliseconds);
    }

private:
    QElapsedTimer m_clock;
};

} // namespace calvorn
