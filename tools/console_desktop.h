// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>
#include <QThread>

namespace calvorn {

// Boxes as lines on standard error; nobody is there to answer, so every answer is the one that stops.
class ConsoleDesktop : public Desktop
{
public:
    ConsoleDesktop() { m_clock.start(); }

    std::int16_t messageBox(BoxIcon, BoxButtons buttons, const QString &text, const QString &) override
    {
        QTextStream(stderr) << QString(text).replace(u'\r', u' ') << Qt::endl;
        return buttons == BoxButtons::Ok ? kBoxOk : kBoxCancel;
    }
    QString chooseFileToOpen(const QString &, const QString &) override { return {}; }
    QString chooseFileToSave(const QString &, const QString &) override { return {}; }
    bool choosePrinter(QPrinter &) override { return false; }
    void beep() override {}
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
