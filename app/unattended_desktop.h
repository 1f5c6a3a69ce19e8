// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop.h"

#include <functional>
#include <utility>

namespace calvorn {

// Forwards all calls to the user's desktop, except during a remote command or a sweep started by one: no box is then
// shown and nothing beeps. The client receives the box text instead; questions are answered with Cancel, errors with
// OK. During a command, a file dialog returns the file named by the command.
class UnattendedDesktop : public Desktop
{
public:
    using Report = std::function<void(const QString &text)>;

    explicit UnattendedDesktop(Desktop &userDesktop)
        : m_userDesktop(userDesktop)
    {
    }

    // While a guard exists, the user is not prompted. Guards can be nested.
    class Guard
    {
    public:
        Guard(UnattendedDesktop &desktop, Report report, const QString &file = {})
            : m_desktop(desktop)
            , m_report(std::exchange(desktop.m_report, std::move(report)))
            , m_file(std::exchange(desktop.m_file, file))
        {
        }
        ~Guard()
        {
            m_desktop.m_report = m_report;
            m_desktop.m_file = m_file;
        }
        Guard(const Guard &) = delete;
        Guard &operator=(const Guard &) = delete;

    private:
        UnattendedDesktop &m_desktop;
        Report m_report;
        QString m_file;
    };

    // Redirects boxes between commands in the same way, until called with an empty function.
    void setStandIn(Report report) { m_standIn = std::move(report); }

    std::int16_t messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title) override;
    QString chooseFileToOpen(const QString &filter, const QString &suggested) override;
    QString chooseFileToSave(const QString &filter, const QString &suggested) override;
    bool choosePrinter(QPrinter &printer) override;
    void beep() override;

private:
    Desktop &m_userDesktop;
    Report m_report;  // during a command
    Report m_standIn; // between commands
    QString m_file;
};

} // namespace calvorn
