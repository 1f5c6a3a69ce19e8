// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop.h"

#include <functional>
#include <utility>

namespace calvorn {

// The desktop of the person, except while a command from afar is carried out, or a sweep runs that one has started:
// then no box shows and nothing beeps. What a box would say goes to whoever asked, and is answered with Cancel where it
// asks for something, and with OK where it tells an error; the file is the one that the command names.
class UnattendedDesktop : public Desktop
{
public:
    using Told = std::function<void(const QString &text)>;

    explicit UnattendedDesktop(Desktop &person)
        : m_person(person)
    {
    }

    // While it lives, the person is not asked. Can be nested.
    class Guard
    {
    public:
        Guard(UnattendedDesktop &desktop, Told told, const QString &file = {})
            : m_desktop(desktop)
            , m_told(std::exchange(desktop.m_told, std::move(told)))
            , m_file(std::exchange(desktop.m_file, file))
        {
        }
        ~Guard()
        {
            m_desktop.m_told = m_told;
            m_desktop.m_file = m_file;
        }
        Guard(const Guard &) = delete;
        Guard &operator=(const Guard &) = delete;

    private:
        UnattendedDesktop &m_desktop;
        Told m_told;
        QString m_file;
    };

    // The same until it is ended by an empty function, for what comes by itself.
    void setStandIn(Told told) { m_standIn = std::move(told); }

    std::int16_t messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title) override;
    QString chooseFileToOpen(const QString &filter, const QString &suggested) override;
    QString chooseFileToSave(const QString &filter, const QString &suggested) override;
    bool choosePrinter(QPrinter &printer) override;
    void beep() override;

private:
    Desktop &m_person;
    Told m_told;    // during a command
    Told m_standIn; // between commands
    QString m_file;
};

} // namespace calvorn
