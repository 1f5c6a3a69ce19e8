// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"
#include "platform/desktop.h"

#include <QCoreApplication>
#include <QList>
#include <QQueue>
#include <QString>
#include <QStringList>

#include <functional>

namespace calvorn::test {

// A desktop without a user: records boxes, answers them from a queue and counts beeps. Its clock advances only on
// request.
class FakeDesktop : public Desktop, public Clock
{
public:
    struct Box
    {
        BoxIcon icon;
        BoxButtons buttons;
        QString text;
        QString title;
    };

    QList<Box> boxes;
    QQueue<std::int16_t> answers; // OK if empty
    QString fileChoice;           // the path that the file dialogs return
    QStringList suggestions;
    std::function<void(QPrinter &)> whenPrinting; // sets up the printer; if empty, the dialog is cancelled
    int beeps = 0;
    int sleptMs = 0;
    std::uint32_t ticks = 0;            // ms
    std::function<void()> whilePumping; // called before messages are processed
    std::function<void()> whileBoxOpen; // called before a box is answered

    std::int16_t messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title) override
    {
        boxes.append({icon, buttons, text, title});
        if (whileBoxOpen)
            whileBoxOpen();
        return answers.isEmpty() ? kBoxOk : answers.dequeue();
    }
    QString chooseFileToOpen(const QString &, const QString &suggested) override
    {
        suggestions.append(suggested);
        return fileChoice;
    }
    QString chooseFileToSave(const QString &, const QString &suggested) override
    {
        suggestions.append(suggested);
        return fileChoice;
    }
    bool choosePrinter(QPrinter &printer) override
    {
        if (whenPrinting)
            whenPrinting(printer);
        return static_cast<bool>(whenPrinting);
    }
    void beep() override { ++beeps; }
    std::uint32_t tickCount() override { return ticks; }
    void sleep(int milliseconds) override { sleptMs += milliseconds; }
    void pumpMessages(int milliseconds) override
    {
        if (whilePumping)
            whilePumping();
        QCoreApplication::processEvents(QEventLoop::AllEvents, milliseconds);
    }

    QString lastText() const { return boxes.isEmpty() ? QString() : boxes.last().text; }
};

} // namespace calvorn::test
