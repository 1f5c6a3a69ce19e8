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

// A desktop that nobody sits at: it records boxes, answers them from a queue, counts beeps, and its clock stands
// still until it is moved.
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
    QQueue<std::int16_t> answers; // OK when there are none left
    QString fileChoice;           // what the file dialogs answer
    QStringList suggestions;
    std::function<void(QPrinter &)> whenPrinting; // sets the printer up; without it nothing is chosen
    int beeps = 0;
    int sleptMs = 0;
    std::uint32_t ticks = 0;            // ms
    std::function<void()> whilePumping; // called before messages are delivered
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
