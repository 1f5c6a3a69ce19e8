// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "platform/desktop.h"

#include <QStringList>

#include <functional>

namespace calvorn {

// Shows message boxes under the application title, and stores the text in msgText and the answer in msgResult.
class Messages
{
public:
    Messages(Configuration &configuration, Desktop &desktop);

    // Returns kBoxOk or kBoxCancel.
    std::int16_t show(BoxIcon icon, BoxButtons buttons, const QString &text);

    // Uses another title.
    std::int16_t show(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title);

    // A warning with an OK button.
    void warn(const QString &text);

    // Beeps, then warns. Used for hardware faults.
    void beepAndWarn(const QString &text);

    Desktop &desktop() const { return m_desktop; }

private:
    Configuration &m_configuration;
    Desktop &m_desktop;
};

// Queues texts that arrive while a box is open and shows them one after the other. A text that is already shown or
// queued is not added again.
class AlertQueue
{
public:
    // Shows a text. Returns false if the user cancels, which drops the queued texts.
    using Ask = std::function<bool(const QString &text)>;

    void show(const QString &text, const Ask &ask);

private:
    QStringList m_texts; // the first one is being shown
};

} // namespace calvorn
