// SPDX-License-Identifier: MIT
#include "app/unattended_desktop.h"

namespace calvorn {

std::int16_t UnattendedDesktop::messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title)
{
    // Copy the function: the call may end the sweep, which resets m_standIn.
    const Report report = m_report ? m_report : m_standIn;
    if (!report)
        return m_userDesktop.messageBox(icon, buttons, text, title);
    report(text);
    // Answering a hardware error with Cancel would close the program.
    return buttons == BoxButtons::OkCancel && icon != BoxIcon::Critical ? kBoxCancel : kBoxOk;
}

QString UnattendedDesktop::chooseFileToOpen(const QString &filter, const QString &suggested)
{
    return m_report ? m_file : m_userDesktop.chooseFileToOpen(filter, suggested);
}

QString UnattendedDesktop::chooseFileToSave(const QString &filter, const QString &suggested)
{
    return m_report ? m_file : m_userDesktop.chooseFileToSave(filter, suggested);
}

bool UnattendedDesktop::choosePrinter(QPrinter &printer)
{
    return !m_report && m_userDesktop.choosePrinter(printer);
}

void UnattendedDesktop::beep()
{
    if (!m_report && !m_standIn)
        m_userDesktop.beep();
}

} // namespace calvorn
