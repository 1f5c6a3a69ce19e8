// SPDX-License-Identifier: MIT
#include "app/unattended_desktop.h"

namespace calvorn {

std::int16_t UnattendedDesktop::messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title)
{
    // Copy the function: the call may end the sweep, which resets m_standIn.
    const Told told = m_told ? m_told : m_standIn;
    if (!told)
        return m_person.messageBox(icon, buttons, text, title);
    told(text);
    // Answering a hardware error with Cancel would close the program.
    return buttons == BoxButtons::OkCancel && icon != BoxIcon::Critical ? kBoxCancel : kBoxOk;
}

QString UnattendedDesktop::chooseFileToOpen(const QString &filter, const QString &suggested)
{
    return m_told ? m_file : m_person.chooseFileToOpen(filter, suggested);
}

QString UnattendedDesktop::chooseFileToSave(const QString &filter, const QString &suggested)
{
    return m_told ? m_file : m_person.chooseFileToSave(filter, suggested);
}

bool UnattendedDesktop::choosePrinter(QPrinter &printer)
{
    return !m_told && m_person.choosePrinter(printer);
}

void UnattendedDesktop::beep()
{
    if (!m_told && !m_standIn)
        m_person.beep();
}

} // namespace calvorn
