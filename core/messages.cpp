// SPDX-License-Identifier: MIT
#include "core/messages.h"

namespace calvorn {

Messages::Messages(Configuration &configuration, Desktop &desktop)
    : m_configuration(configuration)
    , m_desktop(desktop)
{
}

std::int16_t Messages::show(BoxIcon icon, BoxButtons buttons, const QString &text)
{
    return show(icon, buttons, text, QString::fromLatin1(kApplicationTitle));
}

std::int16_t Messages::show(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title)
{
    m_configuration.msgText = text;
    m_configuration.msgResult = m_desktop.messageBox(icon, buttons, text, title);
    return m_configuration.msgResult;
}

void Messages::warn(const QString &text)
{
    show(BoxIcon::Warning, BoxButtons::Ok, text);
}

void Messages::beepAndWarn(const QString &text)
{
    m_desktop.beep();
    warn(text);
}

void AlertQueue::show(const QString &text, const Ask &ask)
{
    if (m_texts.contains(text))
        return;
    m_texts.append(text);
    if (m_texts.size() > 1)
        return; // the first call shows it after the earlier messages
    while (!m_texts.isEmpty()) {
        if (ask(m_texts.first()))
            m_texts.removeFirst();
        else
            m_texts.clear();
    }
}

} // namespace calvorn
