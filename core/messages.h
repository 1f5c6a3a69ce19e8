// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "platform/desktop.h"

#include <QStringList>

#include <functional>

namespace calvorn {

// Shows message boxes with the application title, and stores the message in msgText and the result in msgResult.
class Messages
{
public:
    Messages(Configuration &configuration, Desktop &desktop);

    // Returns kBoxOk or kBoxCancel.
    std::int16_t show(BoxIcon icon, BoxButtons buttons, const QString &text);

    // Does the same with another title.
    std::int16_t show(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title);

    // Shows a warning with an OK button.
    void warn(const QString &text);

    // Beeps, then warns. Used for hardware faults.
    void beepAndWarn(const QString &text);

    Desktop &desktop() const { return m_desktop; }

private:
    Configuration &m_configuration;
    Desktop &m_desktop;
};

// Queues messages while a box is open and shows them one after the other. A message that is already shown or queued is
// not added again.
class AlertQueue
{
public:
    // Shows a message. Returns false if the user cancels; the queued messages are then discarded.
    using Ask = std::function<bool(const QString &text)>;

    void show(const QString &text, const Ask &ask);

private:
    QStringList m_texts; // the first one is being shown
};

} // namespace calvorn
