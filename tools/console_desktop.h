// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>
#include <QThread>

namespace calvorn {

// A desktop without anybody: boxes are kept for whoever composes the message, and every answer is the one that stops.
class ConsoleDesktop : public Desktop
{
public:
    ConsoleDesktop() { m_clock.start(); }

    // Progress, on standard error.
    static void note(const QString &line) { QTextStream(stderr) << line << Qt::endl; }

    // Of a text for a box, whose lines end with a carriage return.
    static QString firstLine(const QString &text) { return text.section(u'\r', 0, 0); }

    // The first line of the last box.
    QString lastText() const { return m_lastText; }

    std::int16_t messageBox(BoxIcon, BoxButtons buttons, const QString &text, const QString &) override
    {
        m_lastText = firstLine(text);
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
    QString m_lastText;
};

} // namespace calvorn
